// Value entry in one call: what the two steps would let through unchecked
// (an unknown entry of a select list, a forbidden negative, a text that is
// no yes/no) is rejected with the old value kept, and an entry that changes
// nothing is told apart from one that does.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/support/LocaleTestSupport.h"

namespace {

using document_test::AddColumn;
using document_test::KeptCounts;
using document_test::Shown;

class DataMgmtSafeEntryTest : public test_support::UsLocaleTest {};

TEST_F(DataMgmtSafeEntryTest, EntryIsRejectedUnchangedOrChanged) {
  const auto blueOrGreen = [](DataProp& p) {
    p.GetListItemByValue("blue", true);
    p.GetListItemByValue("green", true);
  };
  const auto noNegatives = [](DataProp& p) { p.SetCanBeNegative(false); };
  const struct {
    DataType::Type nType;
    std::function<void(DataProp&)> setUp;
    const char* pszOld;  // entered first
    const char* pszTyped;
    DataMgmt::EntryResult nResult;
    std::string normalized;
    std::string shown;  // the cell afterwards
  } rows[] = {
      {DataType::ValueListSelect, blueOrGreen, "blue", "red", DataMgmt::EntryRejected, "red", "blue"},
      {DataType::Number, noNegatives, "5", "-3", DataMgmt::EntryRejected, "-3", "5"},
      {DataType::Monetary, noNegatives, "2.5", "-1", DataMgmt::EntryRejected, "-1", "2.50"},
      {DataType::YesNo, nullptr, "yes", "abc", DataMgmt::EntryRejected, "abc", "Y"},
      {DataType::Text, [](DataProp& p) { p.SetUserChangeValue(false); }, "", "x", DataMgmt::EntryRejected, "x", ""},
      {DataType::ValueListSelect, blueOrGreen, "blue", " blue ", DataMgmt::EntryUnchanged, "blue", "blue"},
      {DataType::Number, nullptr, "1234", "1234 ", DataMgmt::EntryUnchanged, "1234", "1,234"},
      {DataType::ValueListSelect, blueOrGreen, "blue", "green", DataMgmt::EntryChanged, "green", "green"},
      {DataType::Date, nullptr, "", "2011-05-01", DataMgmt::EntryChanged, "5/1/2011", "5/1/2011"},
      {DataType::Monetary, nullptr, "2.5", "-1", DataMgmt::EntryChanged, "-1.00", "-1.00"},
  };
  for (const auto& row : rows) {
    const std::string name = std::string(DataType::GetText(row.nType)) + " " + row.pszOld + " -> " + row.pszTyped;
    DataMgmt doc;
    DataProp& prop = AddColumn(doc, row.nType);
    DataItem& item = *doc.CreateDataItem(nullptr, true, true);
    if (row.setUp) row.setUp(prop);
    CString normalized;
    if (*row.pszOld != '\0') {
      EXPECT_NE(doc.EnterValue(item, prop.GetID(), row.pszOld, normalized), DataMgmt::EntryRejected) << name;
    }
    const std::vector<int> counts = KeptCounts(prop);
    EXPECT_EQ(doc.EnterValue(item, prop.GetID(), row.pszTyped, normalized), row.nResult) << name;
    EXPECT_EQ(normalized.GetStdString(), row.normalized) << name;
    EXPECT_EQ(Shown(doc, item, prop), row.shown) << name;
    if (row.nResult != DataMgmt::EntryChanged) {
      EXPECT_EQ(KeptCounts(prop), counts) << name;
    }
  }
}

TEST_F(DataMgmtSafeEntryTest, UnknownColumnRejectsEveryText) {
  DataMgmt doc;
  DataItem& item = *doc.CreateDataItem(nullptr, true, true);
  CString normalized;
  EXPECT_EQ(doc.EnterValue(item, -1, "x", normalized), DataMgmt::EntryRejected);
  EXPECT_EQ(doc.EnterValue(item, 5000, "x", normalized), DataMgmt::EntryRejected);
  EXPECT_FALSE(item.HaveDataProp(5000));
}

TEST_F(DataMgmtSafeEntryTest, ChangedValueCanBeUndone) {
  DataMgmt doc;
  const DataProp& prop = AddColumn(doc, DataType::Number);
  DataItem& item = *doc.CreateDataItem(nullptr, true, true);
  CString normalized;
  ASSERT_EQ(doc.EnterValue(item, prop.GetID(), "7", normalized), DataMgmt::EntryChanged);
  ASSERT_EQ(doc.EnterValue(item, prop.GetID(), "8", normalized), DataMgmt::EntryChanged);
  std::vector<int> undo;
  item.GetUndoData(prop.GetID(), undo);
  EXPECT_EQ(undo, (std::vector<int>{0, 7}));
}

}  // namespace
