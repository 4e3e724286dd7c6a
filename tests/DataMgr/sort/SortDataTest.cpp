// Sorting as a host does it: a document built through DataMgmt, values
// typed as text, a sort order built and the items' order read back.
#include "DataMgr/sort/SortData.h"

#include <gtest/gtest.h>

#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/support/LocaleTestSupport.h"

namespace {

using document_test::AddColumn;

// A host's document that sorts part of its items.
class PartlySortingDocument : public DataMgmt {
 public:
  using DataMgmt::DoPartialSort;
};

class SortDataTest : public test_support::UsLocaleTest {
 protected:
  // One item per row of texts, texts[i][c] typed into columns[c].
  void AddItems(const std::vector<DataProp*>& columns, const std::vector<std::vector<const char*>>& texts) {
    for (const std::vector<const char*>& row : texts) {
      DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
      for (size_t c = 0; c < columns.size(); ++c) {
        bool bRedisplay = false;
        if (row[c] != nullptr) m_doc.SetData(item, columns[c]->GetID(), row[c], bRedisplay, true);
      }
    }
  }

  // Item IDs (creation order) in row order.
  std::vector<int> ItemIDs() const {
    std::vector<int> ids;
    for (size_t i = 0; i < m_doc.GetDataItemMgr().GetCount(); ++i) ids.push_back(m_doc.GetDataItemMgr().GetAt(i)->GetID());
    return ids;
  }

  PartlySortingDocument m_doc;
};

}  // namespace

TEST_F(SortDataTest, EachTypeSortsByItsRule) {
  const struct {
    DataType::Type nType;
    bool bByListOrder;
    std::vector<const char*> typed;
    bool bAscending;
    bool bCaseSensitive;
    std::vector<int> sorted;  // item IDs, the first item typed being 0
  } rows[] = {
      {DataType::Date, false, {"1/1/2010", "5/1/2011", "5/1/2011"}, true, false, {1, 2, 0}},  // newest first
      {DataType::Time, false, {"9:00 AM", "1:00 PM"}, true, false, {1, 0}},
      {DataType::Number, false, {"2", "1", "10"}, true, false, {1, 0, 2}},
      {DataType::Duration, false, {"2", "1", "10"}, false, false, {2, 0, 1}},
      {DataType::YesNo, false, {"n", "y", "n"}, true, false, {1, 0, 2}},  // checked first
      {DataType::Decimal, false, {"1.00002", "1.00001", "0.5"}, true, false, {2, 0, 1}},  // within 0.0001: tie
      {DataType::Text, false, {"b", "B", "a"}, true, false, {2, 0, 1}},
      {DataType::Text, false, {"b", "B", "a"}, true, true, {1, 2, 0}},
      {DataType::NumberWithText, false, {"Vol. 10", "Vol. 2", "Part 3"}, true, false, {2, 1, 0}},
      {DataType::NumberWithRomanOrText, false, {"Part IV", "Part II", "5"}, true, false, {2, 1, 0}},
      {DataType::Monetary, false, {"-5", "3", "-10"}, true, false, {2, 0, 1}},
      {DataType::DataFilePath, false, {"C:\\b\\a.jpg", "C:\\a\\z.jpg", "C:\\a\\img10.jpg", "C:\\a\\img2.jpg"},
       true, false, {3, 2, 1, 0}},  // directories first, then natural order of names
      {DataType::ValueListSuggested, false, {"beta", "Alpha", "alpha"}, true, false, {1, 2, 0}},
      {DataType::ValueListSuggested, true, {"zeta", "alpha", "zeta"}, true, false, {0, 2, 1}},
      {DataType::NumberListSuggested, false, {"10", "9"}, true, false, {1, 0}},
      {DataType::DecimalListSuggested, false, {"2.5", "10.25"}, true, false, {0, 1}},
      {DataType::AddressBookSuggested, false, {"bob", "Ann"}, true, false, {1, 0}},
  };
  for (size_t r = 0; r < std::size(rows); ++r) {
    m_doc.DeleteAll(true, true);
    DataProp& prop = AddColumn(m_doc, rows[r].nType);
    prop.SetSortValuesByListOrder(rows[r].bByListOrder);
    for (const char* pszTyped : rows[r].typed) AddItems({&prop}, {{pszTyped}});
    SortOrder order;
    order.AddDataPropID(prop.GetID(), rows[r].bAscending, rows[r].bCaseSensitive);
    m_doc.Sort(order, true);
    EXPECT_EQ(ItemIDs(), rows[r].sorted) << "row " << r << ": " << DataType::GetText(rows[r].nType);
  }
}

// Keys on a column an item lacks, or on a type without a rule, are passed
// over for that pair; a list entry that no longer exists sorts first.
TEST_F(SortDataTest, KeysWithoutValuesPassToTheNextKey) {
  DataProp& thumbnail = AddColumn(m_doc, DataType::EmbeddedThumbnail);
  DataProp& number = AddColumn(m_doc, DataType::Number);
  DataProp& text = AddColumn(m_doc, DataType::Text);
  AddItems({&number, &text}, {{"1", "c"}, {nullptr, "b"}, {"1", "a"}});
  m_doc.GetDataItemMgr().GetAt(1)->DeleteData(number.GetID());
  SortOrder order;
  for (const DataProp* pProp : {&thumbnail, &number, &text}) order.AddDataPropID(pProp->GetID(), true, false);
  m_doc.Sort(order, true);
  EXPECT_EQ(ItemIDs(), (std::vector<int>{2, 1, 0}));

  DataProp& list = AddColumn(m_doc, DataType::ValueListSelect);
  list.CreateListItem(true, -1)->SetTextRepresentation("a");
  for (size_t i = 0; i < 3; ++i) m_doc.GetDataItemMgr().GetAt(i)->SetData(list.GetID(), i == 1 ? 7 : 0, false);
  SortOrder byList;
  byList.AddDataPropID(list.GetID(), true, false);
  m_doc.Sort(byList, true);
  EXPECT_EQ(ItemIDs(), (std::vector<int>{1, 2, 0}));
  byList.SetDataPropIDAt(0, list.GetID(), false, false);
  m_doc.Sort(byList, true);
  EXPECT_EQ(ItemIDs(), (std::vector<int>{2, 0, 1}));
}

// Items in groups 2, 1, 2, 1 named d, c, b, a; group 1 sorted by name.
TEST_F(SortDataTest, PartialSortsMoveTheMatchingItemsFirst) {
  DataProp& group = AddColumn(m_doc, DataType::Number);
  DataProp& name = AddColumn(m_doc, DataType::Text);
  AddItems({&group, &name}, {{"2", "d"}, {"1", "c"}, {"2", "b"}, {"1", "a"}});
  SortOrder order;
  order.AddDataPropID(name.GetID(), true, false);
  std::vector<Data*> records;
  for (size_t i = 0; i < 4; ++i) records.push_back(m_doc.GetDataItemMgr().GetAt(i));
  const std::vector<Data*> items = records;
  SortData sorter;
  EXPECT_EQ(sorter.PartialSort(records, group.GetID(), 1, order, std::vector<DataProp*>{&name}), 2u);
  EXPECT_EQ(records, (std::vector<Data*>{items[3], items[1], items[2], items[0]}));  // the rest exchanged
  EXPECT_EQ(m_doc.DoPartialSort(group.GetID(), 1, order, true), 2u);
  EXPECT_EQ(ItemIDs(), (std::vector<int>{3, 1, 0, 2}));  // the rest kept in order

  // Every item matching: the registry form counts them all, the list form
  // 0; neither sorts.
  m_doc.GetDataItemMgr().SetAllData(group.GetID(), 1);
  EXPECT_EQ(sorter.PartialSort(records, group.GetID(), 1, order, std::vector<DataProp*>{&name}), 0u);
  EXPECT_EQ(m_doc.DoPartialSort(group.GetID(), 1, order, true), 4u);
  EXPECT_EQ(ItemIDs(), (std::vector<int>{3, 1, 0, 2}));
}

TEST_F(SortDataTest, SubItemsSortWithinTheirItem) {
  DataProp& number = AddColumn(m_doc, DataType::Number);
  DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
  for (int nValue : {3, 1, 2}) {
    item.GetSubItemsMgr().Create(nullptr, true, true)->SetData(number.GetID(), nValue, false);
  }
  SortOrder order;
  order.AddDataPropID(number.GetID(), false, false);
  SortData().Sort(item.GetSubItemsMgr(), order, m_doc.GetDataPropMgr());
  std::vector<int> ids;
  for (size_t i = 0; i < 3; ++i) ids.push_back(item.GetSubItemsMgr().GetAt(i)->GetID());
  EXPECT_EQ(ids, (std::vector<int>{0, 2, 1}));
}
