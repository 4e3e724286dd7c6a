#ifndef DATAMGR_RECORDS_DATAITEMMGR_H_
#define DATAMGR_RECORDS_DATAITEMMGR_H_

#include <cstddef>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/records/DataItem.h"
#include "DataMgr/types/Money.h"
#include "DataMgr/types/NextIDMgr.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

// All items of a document in row order (the order the user gave them until
// a sort rearranges it), with the allocator of their IDs. Once IDs have
// been given they are distinct and not negative, the allocator is above
// every one of them, and each sub-item's parent ID is its item's ID.
//
// Ownership: the collection owns every item in its list (and through it the
// item's sub-items) and destroys it in Delete, DeleteAll and its destructor.
// Create(source, false, ...) returns an item that the caller owns and must
// delete; with add true the collection owns it. Remove takes an item out
// without destroying it: the caller owns it from then on. An item passed to
// Add or Insert belongs to the collection. It never holds null and never
// holds an item of another collection. A document has one collection of
// items, so it cannot be copied.
//
// Results: GetAt and GetByID give null, GetIndex the count, when there is
// no such item; Move gives false when an index is out of range. An item's ID
// is -1 (none) until the collection gives it one: a fresh item created
// without bAssignID keeps -1, and loading renumbers the list when an item
// comes with a negative ID. Nothing here throws but the archive.
class VAXO057_API DataItemMgr {
 public:
  DataItemMgr();
  DataItemMgr(const DataItemMgr& other) = delete;
  DataItemMgr& operator=(const DataItemMgr& other) = delete;
  ~DataItemMgr();

  size_t GetCount() const { return m_vecRecords.size(); }
  bool IsEmpty() const { return m_vecRecords.empty(); }
  // The item at nIndex; null when nIndex is not less than the count.
  DataItem* GetAt(size_t nIndex) const { return nIndex < GetCount() ? m_vecRecords[nIndex] : nullptr; }
  // The first item with that ID (a linear scan); null when none has it.
  DataItem* GetByID(int nID) const;
  // The index of pItem; the count when it is not in the list.
  size_t GetIndex(const DataItem* pItem) const;

  // SetData(nColumnID, value, true) on every item of this list: each
  // change is undoable and stamps the item's modification time; sub-items are
  // not reached.
  void SetAllData(int nColumnID, bool value);
  void SetAllData(int nColumnID, int value);
  void SetAllData(int nColumnID, double value);
  void SetAllData(int nColumnID, const Money& value);
  void SetAllData(int nColumnID, const DateTime& value);
  void SetAllData(int nColumnID, const CString& value);
  void SetAllData(int nColumnID, const char* value);

  // Destroys the item at nIndex and takes it out; nothing when nIndex is
  // out of range.
  void Delete(size_t nIndex);
  // Destroys pItem when it is in the list; null or one of another
  // collection does nothing.
  void Delete(DataItem* pItem);
  // Destroys every item with its sub-items; bResetIDs sets the allocator back to 0.
  void DeleteAll(bool bResetIDs);

  // A copy of *pSource or, for null, a fresh item; appended when bAdd; given
  // the next ID when bAssignID, even when not added. A copy then takes the
  // current time as its modification time and drops its undo history, and
  // its sub-items take its ID as their parent ID when it has one.
  DataItem* Create(const DataItem* pSource, bool bAdd, bool bAssignID);

  // Takes pItem out of the list without destroying it; the caller owns it
  // then. Null or an item of another collection does nothing.
  void Remove(DataItem* pItem);

  // Puts the item at nFrom at index nTo (the items between shift by one
  // place) and returns true; false, with no change, when nFrom or nTo is
  // not less than the count.
  bool Move(size_t nFrom, size_t nTo);

  // Renumbers the items 0, 1, 2, ... in list order, each item's sub-items
  // taking its new ID as their parent ID. IDs stored elsewhere are not
  // updated.
  void RefreshNextID();

  // See the layout above the definition; version 4 is current.
  void Serialize(CArchive& ar);

 protected:
  // Appends pItem, which the collection then owns; null is ignored.
  void Add(DataItem* pItem);
  // Inserts pItem before nIndex, or appends it when nIndex is not less than
  // the count; the collection then owns it. bAssignID gives it the next ID.
  // Null is ignored.
  void Insert(size_t nIndex, DataItem* pItem, bool bAssignID);

 private:
  // The sort engine reorders the list through it (see RecordOrder.h).
  friend class RecordOrder;

  const std::vector<DataItem*>& Records() const { return m_vecRecords; }
  std::vector<DataItem*>& EditRecords() { return m_vecRecords; }

  std::vector<DataItem*> m_vecRecords;
  NextIDMgr m_nextID;
};

#endif  // DATAMGR_RECORDS_DATAITEMMGR_H_
