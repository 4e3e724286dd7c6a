#include "DataMgr/records/DataSubItemMgr.h"

#include <stdexcept>

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

DataSubItemMgr::DataSubItemMgr(const DataSubItemMgr& other) : RecordList(), m_bSort(other.m_bSort) {
  CopyFrom(other);
}

DataSubItemMgr& DataSubItemMgr::operator=(const DataSubItemMgr& other) {
  if (this != &other) {
    CopyFrom(other);
    m_bSort = other.m_bSort;
  }
  return *this;
}

DataSubItemMgr::~DataSubItemMgr() = default;

DataSubItem* DataSubItemMgr::Create(const DataSubItem* pSource, bool bAdd, bool bAssignID) {
  return CreateRecord(pSource, bAdd, bAssignID);
}

void DataSubItemMgr::SetAllParentID(int nParentID) {
  ForEach([nParentID](DataSubItem& subItem) { subItem.SetParentID(nParentID); });
}

void DataSubItemMgr::DeleteFromEach(void (DataSubItem::*pDelete)(int), int nColumnID) {
  ForEach([pDelete, nColumnID](DataSubItem& subItem) { (subItem.*pDelete)(nColumnID); });
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
  SwapEntries(nA, nB);
}

void DataSubItemMgr::Move(size_t nFrom, size_t nTo) {
  if (GetCount() < 2 || nFrom == nTo) return;
  MoveEntry(nFrom, nTo);
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
  if (SerializeRecords(ar, nVersion < FIRST_NEW_COUNTER_VERSION, MIN_SUBITEM_BYTES)) {
    ForEach([this](DataSubItem& subItem) {
      if (subItem.GetID() == -1) subItem.SetID(TakeNextID());
    });
  }
  if (nVersion >= FIRST_SORT_FLAG_VERSION) SerializeData::Serialize(ar, m_bSort);
}
