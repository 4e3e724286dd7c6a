#ifndef DATAMGR_SORT_SORTORDERMGR_H_
#define DATAMGR_SORT_SORTORDERMGR_H_

#include <cstddef>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/sort/SortOrder.h"
#include "DataMgr/types/NextIDMgr.h"
#include "framework/CArchive.h"
#include "utility/TextArray.h"

// The named sort orders of a document in display order, with the allocator
// of their IDs.
//
// Ownership: the set owns every sort order in it and destroys it in Delete,
// DeleteAll, RemoveDataProp, SetDisplayOrder (those it drops) and its
// destructor. Create(false, ...) returns a sort order that the caller owns
// and must delete; with true the set owns it. The set never holds null.
// Pointers handed out stay the set's and die with the sort order.
//
// Results: GetAt and GetByID give null, GetIndexByID the count, when there
// is no such sort order. Swap is the one operation that throws
// (std::out_of_range for an index out of range). Copies are deep (the
// allocator and a copy of every sort order, IDs kept); a move takes the
// sort orders over and leaves the source empty.
class VAXO057_API SortOrderMgr {
 public:
  SortOrderMgr();
  SortOrderMgr(const SortOrderMgr& other);
  SortOrderMgr(SortOrderMgr&& other) noexcept;
  SortOrderMgr& operator=(const SortOrderMgr& other);
  SortOrderMgr& operator=(SortOrderMgr&& other) noexcept;
  ~SortOrderMgr();

  size_t GetCount() const { return m_vecSortOrders.size(); }
  SortOrder* GetAt(size_t nIndex) const { return nIndex < GetCount() ? m_vecSortOrders[nIndex] : nullptr; }
  // The first sort order with that ID.
  SortOrder* GetByID(int nID) const { return GetAt(GetIndexByID(nID)); }
  size_t GetIndexByID(int nID) const;

  // A new sort order, a copy of *pCopyFrom when that is not null; it gets
  // the next ID in either case. Appended when bAddToSet (the set owns it),
  // else the caller owns it.
  SortOrder* Create(bool bAddToSet, const SortOrder* pCopyFrom);
  // Destroys the first sort order with that ID; an unknown ID does nothing.
  void Delete(int nID);
  // Destroys every sort order; bResetIDs starts the IDs again at 0.
  void DeleteAll(bool bResetIDs);
  // Takes the first key on nDataPropID out of every sort order, then
  // destroys every sort order left without keys (also one that had none
  // before). True when a key or a sort order went.
  bool RemoveDataProp(int nDataPropID);
  // Exchanges two sort orders; equal indexes do nothing. Throws
  // std::out_of_range("invalid vector<T> subscript") for an index out of
  // range.
  void Swap(size_t nA, size_t nB);
  // Rebuilds the set in the order of ids: each ID takes the first sort order
  // with that ID not taken yet, an ID that finds none is skipped, and the
  // sort orders not taken are destroyed. An empty list changes nothing.
  void SetDisplayOrder(const std::vector<int>& ids);
  // Appends every name, in display order.
  void GetSortOrderNames(TextArray& names) const;

  // See the layout above the definition; version 4 is current.
  void Serialize(CArchive& ar);

 protected:
  // Replaces the sort orders by copies of other's.
  void CopyArray(const SortOrderMgr& other);
  // Replaces the sort orders by other's, which is left empty.
  void MoveArray(SortOrderMgr& other);

 private:
  void SerializeNextID(CArchive& ar, WORD nVersion);
  // Gives every sort order whose ID an earlier one holds the next ID.
  void RenumberDuplicateIDs();

  NextIDMgr m_nextID;
  std::vector<SortOrder*> m_vecSortOrders;  // owned, display order
};

#endif  // DATAMGR_SORT_SORTORDERMGR_H_
