#ifndef TESTS_DATAMGR_DOCUMENT_DOCUMENTFIXTURES_H_
#define TESTS_DATAMGR_DOCUMENT_DOCUMENTFIXTURES_H_

// Helpers of the document tests: columns added as a host adds them, values
// entered and read as text, and the usage counts of entry columns.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/schema/Address.h"
#include "DataMgr/schema/ListItem.h"

namespace document_test {

// A user (or application) column of type nType named after it, owned by doc.
inline DataProp& AddColumn(DataMgmt& doc, DataType::Type nType, const CString& defaultValue = CString(),
                           bool bApp = false) {
  auto* p = new DataProp;
  p->SetDataType(nType);
  p->SetName(DataType::GetText(nType));
  p->SetDefaultValue(defaultValue);
  doc.AddDataProp(p, true, bApp, false, false);
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

inline int IntOf(const Data& record, int nColumn) {
  int n = -1;
  record.GetData(nColumn, n);
  return n;
}

inline bool IsAddressBook(DataType::Type nType) {
  return nType == DataType::AddressBookSuggested || nType == DataType::AddressBookSelect;
}

// The usage counts kept by an entry column, entry by entry in order.
inline std::vector<int> KeptCounts(const DataProp& prop) {
  std::vector<int> counts;
  if (IsAddressBook(prop.GetDataType())) {
    const AddressBook& book = prop.GetAddressBook();
    for (size_t i = 0; i < book.GetCount(); ++i) counts.push_back(book.GetAt(i)->GetUsageCount());
  } else {
    for (size_t i = 0; i < prop.GetListItemsCount(); ++i) counts.push_back(prop.GetListItemAt(i)->GetUsageCount());
  }
  return counts;
}

}  // namespace document_test

#endif  // TESTS_DATAMGR_DOCUMENT_DOCUMENTFIXTURES_H_
