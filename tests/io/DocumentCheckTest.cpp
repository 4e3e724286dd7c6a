// The checks of a document: usage counts that differ from a recount, cells
// that name no entry, IDs held twice and sub-items of another parent are
// each reported.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "io/DocumentCheck.h"

namespace {

std::vector<std::string> Problems(const DataMgmt& doc) {
  std::vector<std::string> texts;
  for (const auto& problem : DocumentCheck::Run(doc)) texts.push_back(problem.text.GetStdString());
  return texts;
}

TEST(DocumentCheckTest, EachProblemIsReported) {
  // Two items whose Genre (column 5000) is Fantasy, entered as typed.
  const auto twoFantasies = [](DataMgmt& doc) {
    auto* pProp = new DataProp;
    pProp->SetName("Genre");
    pProp->SetDataType(DataType::ValueListSuggested);
    doc.AddDataProp(pProp, true, false, false, false);
    for (int i = 0; i < 2; ++i) {
      CString normalized;
      doc.EnterValue(*doc.CreateDataItem(nullptr, true, true), 5000, "Fantasy", normalized);
    }
  };
  const auto item = [](DataMgmt& doc, size_t i) -> DataItem& { return *doc.GetDataItemMgr().GetAt(i); };
  const struct {
    const char* pszName;
    std::function<void(DataMgmt&)> damage;
    std::vector<std::string> problems;
  } rows[] = {
      {"untouched", [](DataMgmt&) {}, {}},
      {"count tampered",
       [](DataMgmt& doc) { doc.GetDataPropMgr().GetByID(5000)->GetListItemAt(0)->SetUsageCount(5); },
       {"the column \"Genre\": entry 0 (\"Fantasy\") has the usage count 5, but 2 cells name it"}},
      {"cell names no entry",
       [&](DataMgmt& doc) {
         item(doc, 1).SetData(5000, 9, false);
         doc.GetDataPropMgr().GetByID(5000)->GetListItemAt(0)->UnregisterUsage();
       },
       {"item 1: the column \"Genre\" names entry 9, which does not exist"}},
      {"item ID twice", [&](DataMgmt& doc) { item(doc, 1).SetID(0); }, {"2 items have the ID 0"}},
      {"sub-item of another parent",
       [&](DataMgmt& doc) {
         DataSubItem& subItem = *item(doc, 0).GetSubItemsMgr().Create(nullptr, true, true);
         subItem.SetParentID(7);
         item(doc, 0).GetSubItemsMgr().Create(&subItem, true, false);
       },
       {"item 0, sub-item 0: its parent ID is 7, not its item's",
        "item 0, sub-item 0: its parent ID is 7, not its item's", "2 sub-items of item 0 have the ID 0"}},
  };
  for (const auto& row : rows) {
    DataMgmt doc;
    twoFantasies(doc);
    row.damage(doc);
    EXPECT_EQ(Problems(doc), row.problems) << row.pszName;
  }
}

}  // namespace
