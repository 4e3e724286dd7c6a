#include "DataMgr/records/DataItemMgr.h"

#include "DataMgr/types/NextIDMgr.h"

namespace {

const WORD DATAITEMMGR_VERSION = 4;
// Item IDs of this version cannot be trusted.
const WORD RENUMBERED_VERSION = 2;
// The loop counter is 64-bit from this version on, 32-bit before.
const WORD FIRST_NEW_COUNTER_VERSION = 4;
// The fewest bytes of an item: its version word, ID and time.
const size_t MIN_ITEM_BYTES = 2 + 4 + 8;

// Sub-items follow their item's ID once it has one.
void AdoptSubItems(DataItem& item) {
  if (!item.GetSubItemsMgr().IsEmpty() && NextIDMgr::IsValidID(item.GetID())) {
    item.GetSubItemsMgr().SetAllParentID(item.GetID());
  }
}

}  // namespace

DataItemMgr::DataItemMgr() = default;

DataItemMgr::~DataItemMgr() = default;

DataItem* DataItemMgr::Create(const DataItem* pSource, bool bAdd, bool bAssignID) {
  DataItem* pItem = CreateRecord(pSource, bAdd, bAssignID);
  if (pSource) {
    pItem->SetLastModified();
    pItem->ClearUndoData();
  }
  AdoptSubItems(*pItem);
  return pItem;
}

void DataItemMgr::Insert(size_t nIndex, DataItem* pItem, bool bAssignID) {
  if (!pItem) return;
  InsertAt(nIndex, pItem);
  if (bAssignID) pItem->SetID(TakeNextID());
}

void DataItemMgr::RefreshNextID() {
  ResetNextID();
  ForEach([this](DataItem& item) {
    item.SetID(TakeNextID());
    item.GetSubItemsMgr().SetAllParentID(item.GetID());
  });
}

// Layout (version 4, current):
//   WORD     version
//   counter  number of items (64-bit)
//   records  each item in its own form
// Changelog:
//   1: 32-bit counter.
//   2: IDs of this version cannot be trusted: loading renumbers every item.
//   3: IDs kept as stored.
//   4: 64-bit counter.
// Loading renumbers every item as well when one of them has a negative ID.
void DataItemMgr::Serialize(CArchive& ar) {
  WORD nVersion = DATAITEMMGR_VERSION;
  if (ar.IsStoring()) {
    ar << nVersion;
  } else {
    ar >> nVersion;
  }
  const bool bMissingIDs = SerializeRecords(ar, nVersion < FIRST_NEW_COUNTER_VERSION, MIN_ITEM_BYTES);
  if (ar.IsLoading() && (bMissingIDs || nVersion == RENUMBERED_VERSION)) RefreshNextID();
}
