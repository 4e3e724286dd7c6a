#include "DataMgr/records/DataItem.h"

namespace {

const WORD DATAITEM_VERSION = 3;

}  // namespace

DataItem::DataItem() { SetLastModified(); }

DataItem::DataItem(ForLoading) {}

DataItem::DataItem(const DataItem& other)
    : DataRecord(other, true), m_dtLastModified(other.m_dtLastModified), m_subItems(other.m_subItems) {}

DataItem::DataItem(DataItem&& other) : DataItem(static_cast<const DataItem&>(other)) {}

DataItem& DataItem::operator=(const DataItem& other) {
  if (this != &other) {
    m_subItems = other.m_subItems;
    AssignValues(other, false);
    m_dtLastModified = other.m_dtLastModified;
  }
  return *this;
}

DataItem& DataItem::operator=(DataItem&& other) {
  if (this != &other) {
    m_subItems = other.m_subItems;
    AssignValues(other, true);
    m_dtLastModified = other.m_dtLastModified;
  }
  return *this;
}

DataItem::~DataItem() = default;

bool DataItem::Stamp(bool bChanged, bool bRecord) {
  if (bChanged && bRecord) SetLastModified();
  return bChanged;
}

bool DataItem::SetData(int nID, const CString& value, bool bRecord) {
  return Stamp(DataRecord::SetData(nID, value, bRecord), bRecord);
}
bool DataItem::SetData(int nID, const DateTime& value, bool bRecord) {
  return Stamp(DataRecord::SetData(nID, value, bRecord), bRecord);
}
bool DataItem::SetData(int nID, const Money& value, bool bRecord) {
  return Stamp(DataRecord::SetData(nID, value, bRecord), bRecord);
}
bool DataItem::SetData(int nID, double value, bool bRecord) {
  return Stamp(DataRecord::SetData(nID, value, bRecord), bRecord);
}
bool DataItem::SetData(int nID, int value, bool bRecord) {
  return Stamp(DataRecord::SetData(nID, value, bRecord), bRecord);
}
bool DataItem::SetData(int nID, bool value, bool bRecord) {
  return Stamp(DataRecord::SetData(nID, value, bRecord), bRecord);
}

void DataItem::DeleteData(int nID) {
  DataRecord::DeleteData(nID);
  m_subItems.DeleteData(nID);
}
void DataItem::DeleteDataBool(int nID) {
  DataRecord::DeleteDataBool(nID);
  m_subItems.DeleteDataBool(nID);
}
void DataItem::DeleteDataInt(int nID) {
  DataRecord::DeleteDataInt(nID);
  m_subItems.DeleteDataInt(nID);
}
void DataItem::DeleteDataDouble(int nID) {
  DataRecord::DeleteDataDouble(nID);
  m_subItems.DeleteDataDouble(nID);
}
void DataItem::DeleteDataMoney(int nID) {
  DataRecord::DeleteDataMoney(nID);
  m_subItems.DeleteDataMoney(nID);
}
void DataItem::DeleteDataDateTime(int nID) {
  DataRecord::DeleteDataDateTime(nID);
  m_subItems.DeleteDataDateTime(nID);
}
void DataItem::DeleteDataString(int nID) {
  DataRecord::DeleteDataString(nID);
  m_subItems.DeleteDataString(nID);
}

// Layout (version 3, current):
//   WORD      version
//   int       ID
//   DateTime  last modified
//   values    the record values' form
//   sub-items DataSubItemMgr's form
// Changelog:
//   1 to 3: the same fields; loading reads every version alike. The undo
//   history is not stored, and loading leaves it as it was.
void DataItem::Serialize(CArchive& ar) {
  SerializeVersionAndID(ar, DATAITEM_VERSION);
  m_dtLastModified.Serialize(ar);
  SerializeValues(ar);
  m_subItems.Serialize(ar);
}
