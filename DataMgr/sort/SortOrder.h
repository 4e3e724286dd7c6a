#ifndef DATAMGR_SORT_SORTORDER_H_
#define DATAMGR_SORT_SORTORDER_H_

#include <cstddef>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/sort/SortOrderInfo.h"
#include "framework/CArchive.h"
#include "framework/CString.h"

// A named list of sort keys in priority order (the first is the primary
// key), with the ID its SortOrderMgr gave it (-1 until then). Keys refer to
// columns by ID; nothing here checks that a column exists, and the same
// column may be listed twice (AddDataPropID does not look).
//
// The order owns its keys and never holds a null one. Copies are deep (ID,
// name and every key); a move takes the keys over and leaves the source
// without keys. Index accessors return -1, false or the key count for an
// index out of range; only Swap throws.
class VAXO057_API SortOrder {
 public:
  SortOrder();
  SortOrder(const SortOrder& other);
  SortOrder(SortOrder&& other) noexcept;
  SortOrder& operator=(const SortOrder& other);
  SortOrder& operator=(SortOrder&& other) noexcept;
  ~SortOrder();

  // Same name (case-sensitive) and the same keys in the same order; the ID
  // does not count.
  bool operator==(const SortOrder& other) const;
  bool operator!=(const SortOrder& other) const { return !(*this == other); }
  // By name, case-sensitive.
  bool operator<(const SortOrder& other) const { return m_strName.Compare(other.m_strName) < 0; }

  int GetID() const { return m_nID; }
  void SetID(int nID) { m_nID = nID; }
  const CString& GetName() const { return m_strName; }
  void SetName(const CString& name) { m_strName = name; }

  size_t GetDataPropIDCount() const { return m_vecSortOrderInfo.size(); }
  bool HaveDataProps() const { return !m_vecSortOrderInfo.empty(); }
  // The column of the key at nIndex and its flags; -1, with both flags
  // false, when nIndex is out of range.
  int GetDataPropIDAt(size_t nIndex, bool& bAscending, bool& bCaseSensitive) const;
  // The index of the first key on nDataPropID, and its flags; the key
  // count, flags untouched, when there is none.
  size_t FindDataPropID(int nDataPropID, bool& bAscending, bool& bCaseSensitive) const;
  // Whether any key's column is one of ids.
  bool HaveDataProp(const std::vector<int>& ids) const;

  void AddDataPropID(int nDataPropID, bool bAscending, bool bCaseSensitive);
  // Adds the key as the primary key; the others keep their order.
  void AddDataPropIDToTop(int nDataPropID, bool bAscending, bool bCaseSensitive);
  // Overwrites the key at nIndex; appends for an index at or past the end.
  void SetDataPropIDAt(size_t nIndex, int nDataPropID, bool bAscending, bool bCaseSensitive);
  // Inserts the key before nIndex (appends for an index at or past the
  // end), unless a key on nDataPropID exists: then nothing changes.
  void InsertDataPropIDAt(size_t nIndex, int nDataPropID, bool bAscending, bool bCaseSensitive);
  // Removes the first key on nDataPropID; false when there is none.
  bool RemoveDataPropID(int nDataPropID);
  bool RemoveDataPropAt(size_t nIndex);
  void RemoveAllDataProps() { DeleteSortOrderInfo(); }
  // Exchanges two keys; equal indexes do nothing. Throws
  // std::out_of_range("invalid vector<T> subscript") for an index out of
  // range.
  void Swap(size_t nA, size_t nB);

  // Whether the keys differ from an edited copy held as three parallel
  // lists: a different length of any list, or any position with another
  // column or flag.
  bool IsDifferent(const std::vector<int>& ids, const std::vector<bool>& ascending,
                   const std::vector<bool>& caseSensitive) const;

  // See the layout above the definition; version 3 is current.
  void Serialize(CArchive& ar);

 protected:
  // Replaces the keys by copies of other's.
  void CopyArray(const SortOrder& other);
  // Replaces the keys by other's, which is left without keys.
  void MoveArray(SortOrder& other);
  // Destroys every key.
  void DeleteSortOrderInfo();

 private:
  // Inserts a copy of info before nIndex, or appends it.
  void InsertKey(size_t nIndex, const SortOrderInfo& info);
  void LoadParallelVectors(CArchive& ar);
  void SerializeKeys(CArchive& ar, bool bOldFormat);

  int m_nID = -1;
  CString m_strName;
  std::vector<SortOrderInfo*> m_vecSortOrderInfo;  // owned, never null, priority order
};

#endif  // DATAMGR_SORT_SORTORDER_H_
