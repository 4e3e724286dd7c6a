#ifndef DATAMGR_RECORDS_DATAITEMMGR_H_
#define DATAMGR_RECORDS_DATAITEMMGR_H_

#include <cstddef>

#include "DataMgr/Export.h"
#include "DataMgr/records/DataItem.h"
#include "DataMgr/records/RecordList.h"
#include "framework/CArchive.h"

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
class VAXO057_API DataItemMgr : public RecordList<DataItem> {
 public:
  DataItemMgr();
  DataItemMgr(const DataItemMgr& other) = delete;
  DataItemMgr& operator=(const DataItemMgr& other) = delete;
  ~DataItemMgr();

  // A copy of *pSource or, for null, a fresh item; appended when bAdd; given
  // the next ID when bAssignID, even when not added. A copy then takes the
  // current time as its modification time and drops its undo history, and
  // its sub-items take its ID as their parent ID when it has one.
  DataItem* Create(const DataItem* pSource, bool bAdd, bool bAssignID);

  // Takes pItem out of the list without destroying it; the caller owns it
  // then. Null or an item of another collection does nothing.
  void Remove(DataItem* pItem) { Detach(pItem); }

  // Puts the item at nFrom at index nTo (the items between shift by one
  // place) and returns true; false, with no change, when nFrom or nTo is
  // not less than the count.
  bool Move(size_t nFrom, size_t nTo) { return MoveEntry(nFrom, nTo); }

  // Renumbers the items 0, 1, 2, ... in list order, each item's sub-items
  // taking its new ID as their parent ID. IDs stored elsewhere are not
  // updated.
  void RefreshNextID();

  // See the layout above the definition; version 4 is current.
  void Serialize(CArchive& ar);

 protected:
  // Appends pItem, which the collection then owns; null is ignored.
  void Add(DataItem* pItem) { Append(pItem); }
  // Inserts pItem before nIndex, or appends it when nIndex is not less than
  // the count; the collection then owns it. bAssignID gives it the next ID.
  // Null is ignored.
  void Insert(size_t nIndex, DataItem* pItem, bool bAssignID);
};

#endif  // DATAMGR_RECORDS_DATAITEMMGR_H_
