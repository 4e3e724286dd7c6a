#include "DataMgr/records/DataItemMgr.h"

#include "DataMgr/records/RecordList.h"

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

DataItemMgr::~DataItemMgr() { record_list::DeleteAll(m_vecRecords); }

DataItem* DataItemMgr::GetByID(int nID) const { return record_list::GetByID(m_vecRecords, nID); }
size_t DataItemMgr::GetIndex(const DataItem* pItem) const { return record_list::GetIndex(m_vecRecords, pItem); }

void DataItemMgr::SetAllData(int nColumnID, bool value) { record_list::SetAll(m_vecRecords, nColumnID, value); }
void DataItemMgr::SetAllData(int nColumnID, int value) { record_list::SetAll(m_vecRecords, nColumnID, value); }
void DataItemMgr::SetAllData(int nColumnID, double value) { record_list::SetAll(m_vecRecords, nColumnID, value); }
void DataItemMgr::SetAllData(int nColumnID, const Money& value) {
  record_list::SetAll(m_vecRecords, nColumnID, value);
}
void DataItemMgr::SetAllData(int nColumnID, const DateTime& value) {
  record_list::SetAll(m_vecRecords, nColumnID, value);
}
void DataItemMgr::SetAllData(int nColumnID, const CString& value) {
  record_list::SetAll(m_vecRecords, nColumnID, value);
}
void DataItemMgr::SetAllData(int nColumnID, const char* value) {
  record_list::SetAll(m_vecRecords, nColumnID, CString(value));
}

void DataItemMgr::Delete(size_t nIndex) { record_list::Delete(m_vecRecords, nIndex); }
void DataItemMgr::Delete(DataItem* pItem) { record_list::Delete(m_vecRecords, GetIndex(pItem)); }

void DataItemMgr::DeleteAll(bool bResetIDs) {
  record_list::DeleteAll(m_vecRecords);
  if (bResetIDs) m_nextID.ResetNextID();
}

DataItem* DataItemMgr::Create(const DataItem* pSource, bool bAdd, bool bAssignID) {
  DataItem* pItem = record_list::CreateRecord(m_vecRecords, m_nextID, pSource, bAdd, bAssignID);
  if (pSource) {
    pItem->SetLastModified();
    pItem->ClearUndoData();
  }
  AdoptSubItems(*pItem);
  return pItem;
}

void DataItemMgr::Remove(DataItem* pItem) { record_list::Detach(m_vecRecords, pItem); }

bool DataItemMgr::Move(size_t nFrom, size_t nTo) { return record_list::MoveEntry(m_vecRecords, nFrom, nTo); }

void DataItemMgr::Add(DataItem* pItem) { record_list::InsertAt(m_vecRecords, GetCount(), pItem); }

void DataItemMgr::Insert(size_t nIndex, DataItem* pItem, bool bAssignID) {
  if (!pItem) return;
  record_list::InsertAt(m_vecRecords, nIndex, pItem);
  if (bAssignID) pItem->SetID(m_nextID.GetNextID());
}

void DataItemMgr::RefreshNextID() {
  m_nextID.ResetNextID();
  for (DataItem* pItem : m_vecRecords) {
    pItem->SetID(m_nextID.GetNextID());
    pItem->GetSubItemsMgr().SetAllParentID(pItem->GetID());
  }
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
  const bool bMissingIDs =
      record_list::SerializeRecords<DataItem>(ar, [this]() -> std::vector<DataItem*>& { return m_vecRecords; },
                                              GetCount(), m_nextID, nVersion < FIRST_NEW_COUNTER_VERSION,
                                              MIN_ITEM_BYTES);
  if (ar.IsLoading() && (bMissingIDs || nVersion == RENUMBERED_VERSION)) RefreshNextID();
}
