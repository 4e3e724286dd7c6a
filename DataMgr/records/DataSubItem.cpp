#include "DataMgr/records/DataSubItem.h"

namespace {

const WORD DATASUBITEM_VERSION = 2;
// The parent ID is stored from this version on.
const WORD FIRST_PARENT_VERSION = 2;

}  // namespace

DataSubItem::DataSubItem() = default;

DataSubItem::DataSubItem(const DataSubItem& other) : DataRecord(other, false), m_nParentID(other.m_nParentID) {}

DataSubItem::DataSubItem(DataSubItem&& other) : DataRecord(other, true), m_nParentID(other.m_nParentID) {}

DataSubItem& DataSubItem::operator=(const DataSubItem& other) {
  AssignValues(other, false);
  m_nParentID = other.m_nParentID;
  return *this;
}

DataSubItem& DataSubItem::operator=(DataSubItem&& other) {
  AssignValues(other, true);
  m_nParentID = other.m_nParentID;
  return *this;
}

DataSubItem::~DataSubItem() = default;

// Layout (version 2, current):
//   WORD   version
//   int    ID
//   int    parent ID
//   values the record values' form
// Changelog:
//   1: ID and values; loading leaves the parent ID as it was.
//   2: the parent ID after the ID.
void DataSubItem::Serialize(CArchive& ar) {
  const WORD nVersion = SerializeVersionAndID(ar, DATASUBITEM_VERSION);
  if (nVersion >= FIRST_PARENT_VERSION) {
    if (ar.IsStoring()) {
      ar << m_nParentID;
    } else {
      ar >> m_nParentID;
    }
  }
  SerializeValues(ar);
}
