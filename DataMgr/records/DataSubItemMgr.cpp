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
  if (!other.IsEmpty()) record_list::CopyFrom(EditRecords(), other.Records());
}

DataSubItemMgr& DataSubItemMgr::operator=(const DataSubItemMgr& other) {
  if (this != &other) {
    record_list::CopyFrom(EditRecords(), other.Records());
    DropEmptyRecords();
    m_nextID = other.m_nextID;
    m_bSort = other.m_bSort;
  }
  return *this;
}

DataSubItemMgr::~DataSubItemMgr() { DeleteAll(false); }

const std::vector<DataSubItem*>& DataSubItemMgr::Records() const {
  static const std::vector<DataSubItem*> EMPTY;
  return m_pRecords ? *m_pRecords : EMPTY;
}

std::vector<DataSubItem*>& DataSubItemMgr::EditRecords() {
  if (!m_pRecords) m_pRecords = std::make_unique<std::vector<DataSubItem*>>();
  return *m_pRecords;
}

void DataSubItemMgr::DropEmptyRecords() {
  if (m_pRecords && m_pRecords->empty()) m_pRecords.reset();
}

DataSubItem* DataSubItemMgr::GetByID(int nID) const { return record_list::GetByID(Records(), nID); }
size_t DataSubItemMgr::GetIndex(const DataSubItem* pSubItem) const {
  return record_list::GetIndex(Records(), pSubItem);
}

void DataSubItemMgr::SetAllData(int nColumnID, bool value) { record_list::SetAll(EditRecords(), nColumnID, value); }
void DataSubItemMgr::SetAllData(int nColumnID, int value) { record_list::SetAll(EditRecords(), nColumnID, value); }
void DataSubItemMgr::SetAllData(int nColumnID, double value) { record_list::SetAll(EditRecords(), nColumnID, value); }
void DataSubItemMgr::SetAllData(int nColumnID, const Money& value) {
  record_list::SetAll(EditRecords(), nColumnID, value);
}
void DataSubItemMgr::SetAllData(int nColumnID, const DateTime& value) {
  record_list::SetAll(EditRecords(), nColumnID, value);
}
void DataSubItemMgr::SetAllData(int nColumnID, const CString& value) {
  record_list::SetAll(EditRecords(), nColumnID, value);
}
void DataSubItemMgr::SetAllData(int nColumnID, const char* value) {
  record_list::SetAll(EditRecords(), nColumnID, CString(value));
}

void DataSubItemMgr::Delete(size_t nIndex) {
  if (nIndex >= GetCount()) return;
  record_list::Delete(*m_pRecords, nIndex);
  DropEmptyRecords();
}
void DataSubItemMgr::Delete(DataSubItem* pSubItem) { Delete(GetIndex(pSubItem)); }

void DataSubItemMgr::DeleteAll(bool bResetIDs) {
  if (m_pRecords) record_list::DeleteAll(*m_pRecords);
  m_pRecords.reset();
  if (bResetIDs) m_nextID.ResetNextID();
}

DataSubItem* DataSubItemMgr::Create(const DataSubItem* pSource, bool bAdd, bool bAssignID) {
  std::vector<DataSubItem*> none;
  return record_list::CreateRecord(bAdd ? EditRecords() : none, m_nextID, pSource, bAdd, bAssignID);
}

void DataSubItemMgr::AddDataSubItem(DataSubItem* pSubItem) {
  if (pSubItem) record_list::InsertAt(EditRecords(), GetCount(), pSubItem);
}

void DataSubItemMgr::SetAllParentID(int nParentID) {
  for (DataSubItem* pSubItem : Records()) pSubItem->SetParentID(nParentID);
}

void DataSubItemMgr::DeleteFromEach(void (DataSubItem::*pDelete)(int), int nColumnID) {
  for (DataSubItem* pSubItem : Records()) (pSubItem->*pDelete)(nColumnID);
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
  std::swap((*m_pRecords)[nA], (*m_pRecords)[nB]);
}

void DataSubItemMgr::Move(size_t nFrom, size_t nTo) {
  if (GetCount() < 2 || nFrom == nTo) return;
  record_list::MoveEntry(*m_pRecords, nFrom, nTo);
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
  const bool bMissingIDs = record_list::SerializeRecords<DataSubItem>(
      ar, [this]() -> std::vector<DataSubItem*>& { return EditRecords(); }, GetCount(), m_nextID,
      nVersion < FIRST_NEW_COUNTER_VERSION, MIN_SUBITEM_BYTES);
  DropEmptyRecords();
  if (bMissingIDs) {
    for (DataSubItem* pSubItem : Records()) {
      if (pSubItem->GetID() == -1) pSubItem->SetID(m_nextID.GetNextID());
    }
  }
  if (nVersion >= FIRST_SORT_FLAG_VERSION) SerializeData::Serialize(ar, m_bSort);
}
