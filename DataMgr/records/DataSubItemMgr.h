#ifndef DATAMGR_RECORDS_DATASUBITEMMGR_H_
#define DATAMGR_RECORDS_DATASUBITEMMGR_H_

#include <cstddef>
#include <memory>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/records/DataSubItem.h"
#include "DataMgr/types/Money.h"
#include "DataMgr/types/NextIDMgr.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

// The sub-items of one item, in their order, with the allocator of their
// IDs and the flag that lets the sort engine reorder them (true in a fresh
// collection). Every item embeds one; it costs no allocation until it gets
// its first sub-item.
//
// Ownership: the collection owns every sub-item in its list and destroys it
// in Delete, DeleteAll and its destructor. Create(source, false, ...)
// returns a sub-item that the caller owns and must delete; with add true the
// collection owns it. A sub-item passed to AddDataSubItem belongs to the
// collection from then on. It never holds null and never holds a sub-item
// of another collection.
//
// Results: GetAt and GetByID give null, GetIndex the count, when there is
// no such sub-item. IDs and parent IDs are -1 (none) until given: a fresh
// sub-item created without bAssignID keeps ID -1, and loading gives the next
// ID to every sub-item stored with ID -1. Swap is the one operation that
// throws: std::out_of_range when the list has two or more sub-items and an
// index is outside it.
//
// Copies are deep: the sort flag, the allocator and a copy of every
// sub-item (IDs and parent IDs kept, undo histories empty); assignment
// destroys the target's own sub-items.
class VAXO057_API DataSubItemMgr {
 public:
  DataSubItemMgr();
  DataSubItemMgr(const DataSubItemMgr& other);
  DataSubItemMgr& operator=(const DataSubItemMgr& other);
  ~DataSubItemMgr();

  size_t GetCount() const { return m_pRecords ? m_pRecords->size() : 0; }
  bool IsEmpty() const { return GetCount() == 0; }
  // The sub-item at nIndex; null when nIndex is not less than the count.
  DataSubItem* GetAt(size_t nIndex) const { return nIndex < GetCount() ? (*m_pRecords)[nIndex] : nullptr; }
  // The first sub-item with that ID (a linear scan); null when none has it.
  DataSubItem* GetByID(int nID) const;
  // The index of pSubItem; the count when it is not in the list.
  size_t GetIndex(const DataSubItem* pSubItem) const;

  // SetData(nColumnID, value, true) on every sub-item of this list: each
  // change is undoable.
  void SetAllData(int nColumnID, bool value);
  void SetAllData(int nColumnID, int value);
  void SetAllData(int nColumnID, double value);
  void SetAllData(int nColumnID, const Money& value);
  void SetAllData(int nColumnID, const DateTime& value);
  void SetAllData(int nColumnID, const CString& value);
  void SetAllData(int nColumnID, const char* value);

  // Destroys the sub-item at nIndex and takes it out; nothing when nIndex is
  // out of range.
  void Delete(size_t nIndex);
  // Destroys pSubItem when it is in the list; null or one of another
  // collection does nothing.
  void Delete(DataSubItem* pSubItem);
  // Destroys every sub-item; bResetIDs sets the allocator back to 0.
  void DeleteAll(bool bResetIDs);

  // A copy of *pSource (ID and parent ID kept, undo history empty) or, for
  // null, a fresh sub-item; appended when bAdd; given the next ID when
  // bAssignID, even when not added. The caller sets the parent ID.
  DataSubItem* Create(const DataSubItem* pSource, bool bAdd, bool bAssignID);

  bool GetSort() const { return m_bSort; }
  void SetSort(bool bSort) { m_bSort = bSort; }

  void SetAllParentID(int nParentID);

  // The record operation of the same name on every sub-item.
  void DeleteData(int nColumnID);
  void DeleteDataBool(int nColumnID);
  void DeleteDataInt(int nColumnID);
  void DeleteDataDouble(int nColumnID);
  void DeleteDataMoney(int nColumnID);
  void DeleteDataDateTime(int nColumnID);
  void DeleteDataString(int nColumnID);

  // Exchanges two sub-items; nothing with fewer than two. Throws
  // std::out_of_range("invalid vector<T> subscript") when there are two or
  // more and nA or nB is not less than the count.
  void Swap(size_t nA, size_t nB);
  // Puts the sub-item at nFrom at index nTo, those between shifting by one
  // place; nothing with fewer than two sub-items, when nFrom equals nTo or
  // when either index is out of range.
  void Move(size_t nFrom, size_t nTo);

  // See the layout above the definition; version 3 is current.
  void Serialize(CArchive& ar);

 protected:
  // Appends pSubItem, which the collection then owns; null is ignored.
  void AddDataSubItem(DataSubItem* pSubItem);

 private:
  // The sort engine reorders the list through it (see RecordOrder.h).
  friend class RecordOrder;

  // Calls (subItem.*pDelete)(nColumnID) on every sub-item.
  void DeleteFromEach(void (DataSubItem::*pDelete)(int), int nColumnID);

  // The sub-items in row order: an empty list when there are none.
  const std::vector<DataSubItem*>& Records() const;
  // The same for a change; creates the list when there is none.
  std::vector<DataSubItem*>& EditRecords();
  // Drops the list when it holds no sub-item.
  void DropEmptyRecords();

  // Most items have no sub-items, so the list exists only while it holds
  // one: an item without sub-items pays one pointer for it. In this order,
  // so that the flag fills the padding at the end.
  std::unique_ptr<std::vector<DataSubItem*>> m_pRecords;
  NextIDMgr m_nextID;
  bool m_bSort = true;
};

#endif  // DATAMGR_RECORDS_DATASUBITEMMGR_H_
