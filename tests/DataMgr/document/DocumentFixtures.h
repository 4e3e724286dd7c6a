#ifndef TESTS_DATAMGR_DOCUMENT_DOCUMENTFIXTURES_H_
#define TESTS_DATAMGR_DOCUMENT_DOCUMENTFIXTURES_H_

// Helpers of the document tests: columns added as a host adds them, values
// entered and read as text, and usage counts recounted from the records.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/schema/Address.h"
#include "DataMgr/schema/ListItem.h"

namespace document_test {

// A user column of type nType named after it, owned by doc.
inline DataProp& AddColumn(DataMgmt& doc, DataType::Type nType, const CString& defaultValue = CString()) {
  auto* p = new DataProp;
  p->SetDataType(nType);
  p->SetName(DataType::GetText(nType));
  p->SetDefaultValue(defaultValue);
  doc.AddDataProp(p, true, false, false, false);
  return *p;
}

// SetData by column ID that must report a change.
inline void Enter(DataMgmt& doc, Data& record, const DataProp& prop, const CString& text) {
  bool bRedisplay = false;
  EXPECT_TRUE(doc.SetData(record, prop.GetID(), text, bRedisplay, true)) << prop.GetName() << ": " << text;
}

inline std::string Shown(const DataMgmt& doc, const Data& record, const DataProp& prop) {
  return doc.GetTextRepresentation(record, prop.GetID(), false).GetStdString();
}

// The usage counts kept by an entry column, entry by entry in order, and
// the same counts recounted from the cells of every item and sub-item.
inline std::vector<int> KeptCounts(const DataProp& prop) {
  std::vector<int> counts;
  if (prop.GetDataType() == DataType::AddressBookSuggested || prop.GetDataType() == DataType::AddressBookSelect) {
    const AddressBook& book = prop.GetAddressBook();
    for (size_t i = 0; i < book.GetCount(); ++i) counts.push_back(book.GetAt(i)->GetUsageCount());
  } else {
    for (size_t i = 0; i < prop.GetListItemsCount(); ++i) counts.push_back(prop.GetListItemAt(i)->GetUsageCount());
  }
  return counts;
}

inline int CellsReferring(const DataMgmt& doc, int nColumn, int nEntryID) {
  int nCount = 0;
  const auto count = [&](const Data& record) {
    int nValue = -1;
    record.GetData(nColumn, nValue);
    if (record.HaveDataProp(nColumn) && nValue == nEntryID) ++nCount;
  };
  const DataItemMgr& items = doc.GetDataItemMgr();
  for (size_t i = 0; i < items.GetCount(); ++i) {
    count(*items.GetAt(i));
    const DataSubItemMgr& subItems = items.GetAt(i)->GetSubItemsMgr();
    for (size_t j = 0; j < subItems.GetCount(); ++j) count(*subItems.GetAt(j));
  }
  return nCount;
}

inline std::vector<int> RecountedCounts(const DataMgmt& doc, const DataProp& prop) {
  std::vector<int> counts;
  if (prop.GetDataType() == DataType::AddressBookSuggested || prop.GetDataType() == DataType::AddressBookSelect) {
    const AddressBook& book = prop.GetAddressBook();
    for (size_t i = 0; i < book.GetCount(); ++i) counts.push_back(CellsReferring(doc, prop.GetID(), book.GetAt(i)->GetID()));
  } else {
    for (size_t i = 0; i < prop.GetListItemsCount(); ++i) {
      counts.push_back(CellsReferring(doc, prop.GetID(), prop.GetListItemAt(i)->GetID()));
    }
  }
  return counts;
}

}  // namespace document_test

#endif  // TESTS_DATAMGR_DOCUMENT_DOCUMENTFIXTURES_H_
