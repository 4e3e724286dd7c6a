#include "DataMgr/records/DataSubItemMgr.h"

#include <stdexcept>
#include <utility>

#include "DataMgr/records/RecordList.h"
#include "utility/SerializeData.h"

namespace {

const WORD DATASUBITEMMGR_VERSION = 3;
// The sort flag is stored from this version on.
const WORD FIRST_SORT_FLAG_VERSION = 2;
// The loop counter is 64-bit from this version on, 32-bit before.
const WORD FIRST_NEW_COUNTER_VERSION = 3;
// The fewest bytes of a sub-item: its version word and ID.
const size_t MIN_SUBITEM_BYTES = 2 + 4;

}  // namespace

DataSubItemMgr::DataSubItemMgr() = default;

DataSubItemMgr::DataSubItemMgr(const DataSubItemMgr& other) : m_nextID(other.m_nextID), m_bSort(other.m_bSort) {
  record_list::CopyFrom(m_vecRecords, other.m_vecRecords);
}

DataSubItemMgr& DataSubItemMgr::operator=(const DataSubItemMgr& other) {
  if (this != &other) {
    record_list::CopyFrom(m_vecRecords, other.m_vecRecords);
    m_nextID = other.m_nextID;
    m_bSort = other.m_bSort;
  }
  return *this;
}

DataSubItemMgr::~DataSubItemMgr() { record_list::DeleteAll(m_vecRecords); }

DataSubItem* DataSubItemMgr::GetByID(int nID) const { return record_list::GetByID(m_vecRecords, nID); }
size_t DataSubItemMgr::GetIndex(const DataSubItem* pSubItem) const {
  return record_list::GetIndex(m_vecRecords, pSubItem);
}

void DataSubItemMgr::SetAllData(int nColumnID, bool value) { record_list::SetAll(m_vecRecords, nColumnID, value); }
void DataSubItemMgr::SetAllData(int nColumnID, int value) { record_list::SetAll(m_vecRecords, nColumnID, value); }
void DataSubItemMgr::SetAllData(int nColumnID, double value) { record_list::SetAll(m_vecRecords, nColumnID, value); }
void DataSubItemMgr::SetAllData(int nColumnID, const Money& value) {
  record_list::SetAll(m_vecRecords, nColumnID, value);
}
void DataSubItemMgr::SetAllData(int nColumnID, const DateTime& value) {
  record_list::SetAll(m_vecRecords, nColumnID, value);
}
void DataSubItemMgr::SetAllData(int nColumnID, const CString& value) {
  record_list::SetAll(m_vecRecords, nColumnID, value);
}
void DataSubItemMgr::SetAllData(int nColumnID, const char* value) {
  record_list::SetAll(m_vecRecords, nColumnID, CString(value));
}

void DataSubItemMgr::Delete(size_t nIndex) { record_list::Delete(m_vecRecords, nIndex); }
void DataSubItemMgr::Delete(DataSubItem* pSubItem) { record_list::Delete(m_vecRecords, GetIndex(pSubItem)); }

void DataSubItemMgr::DeleteAll(bool bResetIDs) {
  record_list::DeleteAll(m_vecRecords);
  if (bResetIDs) m_nextID.ResetNextID();
}

DataSubItem* DataSubItemMgr::Create(const DataSubItem* pSource, bool bAdd, bool bAssignID) {
  return record_list::CreateRecord(m_vecRecords, m_nextID, pSource, bAdd, bAssignID);
}

void DataSubItemMgr::AddDataSubItem(DataSubItem* pSubItem) {
  record_list::InsertAt(m_vecRecords, GetCount(), pSubItem);
}

void DataSubItemMgr::SetAllParentID(int nParentID) {
  for (DataSubItem* pSubItem : m_vecRecords) pSubItem->SetParentID(nParentID);
}

void DataSubItemMgr::DeleteFromEach(void (DataSubItem::*pDelete)(int), int nColumnID) {
  for (DataSubItem* pSubItem : m_vecRecords) (pSubItem->*pDelete)(nColumnID);
}

void DataSubItemMgr::DeleteData(int nColumnID) { DeleteFromEach(&DataSubItem::DeleteData, nColumnID); }
void DataSubItemMgr::DeleteDataBool(int nColumnID) { DeleteFromEach(&DataSubItem::DeleteDataBool, nColumnID); }
void DataSubItemMgr::DeleteDataInt(int nColumnID) { DeleteFromEach(&DataSubItem::DeleteDataInt, nColumnID); }
void DataSubItemMgr::DeleteDataDouble(int nColumnID) { DeleteFromEach(&DataSubItem::DeleteDataDouble, nColumnID); }
void DataSubItemMgr::DeleteDataMoney(int nColumnID) { DeleteFromEach(&DataSubItem::DeleteDataMoney, nColumnID); }
void DataSubItemMgr::DeleteDataDateTime(int nColumnID) {
  DeleteFromEach(&DataSubItem::DeleteDataDateTime, nColumnID);
}
void DataSubItemMgr::DeleteDataString(int nColumnID) { DeleteFromEach(&DataSubItem::DeleteDataString, nColumnID); }

void DataSubItemMgr::Swap(size_t nA, size_t nB) {
  if (GetCount() < 2) return;
  if (nA >= GetCount() || nB >= GetCount()) throw std::out_of_range("invalid vector<T> subscript");
  std::swap(m_vecRecords[nA], m_vecRecords[nB]);
}

void DataSubItemMgr::Move(size_t nFrom, size_t nTo) {
  if (GetCount() < 2 || nFrom == nTo) return;
  record_list::MoveEntry(m_vecRecords, nFrom, nTo);
}

// Layout (version 3, current):
//   WORD     version
//   counter  number of sub-items (64-bit)
//   records  each sub-item in its own form
//   bool     sort flag
// Changelog:
//   1: 32-bit counter, no sort flag (loading keeps the current flag).
//   2: the sort flag after the sub-items.
//   3: 64-bit counter.
// Loading gives each sub-item whose ID is -1 the next ID after the highest
// one loaded; other negative IDs stay as they are.
void DataSubItemMgr::Serialize(CArchive& ar) {
  WORD nVersion = DATASUBITEMMGR_VERSION;
  if (ar.IsStoring()) {
    ar << nVersion;
  } else {
    ar >> nVersion;
  }
  if (record_list::SerializeRecords(ar, m_vecRecords, m_nextID, nVersion < FIRST_NEW_COUNTER_VERSION,
                                    MIN_SUBITEM_BYTES)) {
    for (DataSubItem* pSubItem : m_vecRecords) {
      if (pSubItem->GetID() == -1) pSubItem->SetID(m_nextID.GetNextID());
    }
  }
  if (nVersion >= FIRST_SORT_FLAG_VERSION) SerializeData::Serialize(ar, m_bSort);
}
