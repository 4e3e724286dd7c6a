// Keeping records in step with their columns: type changes, edited and
// removed entries, and moves between application and user columns.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/support/LocaleTestSupport.h"

namespace {

using document_test::AddColumn;
using document_test::Enter;
using document_test::IntOf;
using document_test::KeptCounts;
using document_test::Shown;

// Publishes the protected members the tests call.
class TestDocument : public DataMgmt {
 public:
  using DataMgmt::MakeAppDataPropIntoUserDefined;
  using DataMgmt::MakeUserDataPropIntoAppDefined;
};

// The texts of the column's entries, or the names of its addresses.
std::vector<std::string> EntryTexts(const DataProp& prop) {
  std::vector<std::string> texts;
  const AddressBook& book = prop.GetAddressBook();
  for (size_t i = 0; i < book.GetCount(); ++i) texts.push_back(book.GetAt(i)->GetData(Address::Name).GetStdString());
  for (size_t i = 0; i < prop.GetListItemsCount(); ++i) {
    texts.push_back(prop.GetListItemAt(i)->GetTextRepresentation().GetStdString());
  }
  return texts;
}

// One item per text, each with one sub-item, both given the text; a
// select-from-list column is offered the texts first.
void Fill(DataMgmt& doc, DataProp& prop, const std::vector<const char*>& texts) {
  std::vector<int> columns = {prop.GetID()};
  for (const char* pszText : texts) {
    if (document_test::IsAddressBook(prop.GetDataType())) {
      prop.GetAddressByName(pszText, true);
    } else if (DataType::IsListType(prop.GetDataType())) {
      prop.GetListItemByValue(pszText, true);
    }
  }
  for (const char* pszText : texts) {
    DataItem& item = *doc.CreateDataItem(nullptr, true, true);
    bool bRedisplay = false;
    doc.SetData(item, prop, pszText, bRedisplay, true);
    doc.SetData(*doc.CreateDataSubItem(item, columns, nullptr, true, true), prop, pszText, bRedisplay, true);
  }
}

class DataMgmtListUpkeepTest : public test_support::UsLocaleTest {};

TEST_F(DataMgmtListUpkeepTest, TypeChangesConvertItemsAndDropSubItemCells) {
  struct Row {
    DataType::Type nFrom;
    DataType::Type nTo;
    const char* pszNewDefault;
    std::vector<const char*> typed;
    bool bResult;
    std::vector<std::string> shown;    // item by item, afterwards
    std::vector<bool> subItemCells;    // whether each item's sub-item still has a cell
    std::vector<std::string> entries;  // the column's entries or addresses afterwards
    std::vector<int> counts;
    std::map<int, int> entryIDMap;
    bool bKeepSorted = false;
  };
  const Row rows[] = {
      // Similar entry types share their entries: nothing changes.
      {DataType::ValueListSelect, DataType::ValueListSuggested, "", {"red", "blue"}, false, {"red", "blue"},
       {true, true}, {"red", "blue"}, {2, 2}, {}},
      // One address per name, ignoring case; "Red" finds the address "red".
      {DataType::ValueListSelect, DataType::AddressBookSelect, "", {"red", "Red", "blue"}, true, {"red", "red", "blue"},
       {false, false, false}, {"red", "blue"}, {2, 1}, {{0, 0}, {1, 0}, {2, 1}}},
      // Number lists do not convert to addresses: the empty default finds none.
      {DataType::NumberListSelect, DataType::AddressBookSelect, "", {"7", "3"}, true, {"", ""}, {false, false}, {}, {},
       {}},
      {DataType::AddressBookSuggested, DataType::ValueListSelect, "", {"Ann", "Bob"}, true, {"Ann", "Bob"},
       {false, false}, {"Ann", "Bob"}, {1, 1}, {{0, 0}, {1, 1}}},
      // By the display text: "1,234" read as a decimal; a zero reads as blank.
      {DataType::Number, DataType::Decimal, "", {"1234", "0"}, true, {"1,234.00", "0.00"}, {false, false}, {}, {}, {}},
      // A list kept sorted places each new entry by its text; an empty text names none.
      {DataType::Text, DataType::ValueListSuggested, "", {"a", "c", "b", "c", ""}, true, {"a", "c", "b", "c", ""},
       {false, false, false, false, false}, {"a", "b", "c"}, {1, 1, 2}, {}, true},
      // Each text is looked for as typed: "01" and "001" each make a new "1",
      // sorted before the older ones, and "1" finds the first of them.
      {DataType::ValueListSuggested, DataType::NumberListSuggested, "", {"01", "001", "1"}, true, {"1", "1", "1"},
       {false, false, false}, {"1", "1", "1", "1"}, {2, 1, 0, 0}, {{0, 2}, {1, 3}, {2, 3}}, true},
      {DataType::DecimalListSuggested, DataType::Text, "", {"1.25", "0.5"}, true, {"1.25", "0.50"}, {false, false}, {},
       {}, {}},
      // Similar: 90 seconds kept as they are, shown in whole minutes; a text kept as it is.
      {DataType::Number, DataType::Duration, "", {"90"}, true, {"2"}, {false}, {}, {}, {}},
      {DataType::Text, DataType::LargeText, "", {"a"}, true, {"a"}, {false}, {}, {}, {}},
      {DataType::YesNo, DataType::Number, "42", {"yes", "no"}, true, {"42", "42"}, {false, false}, {}, {}, {}},
      // No value kind: the first item's cell is gone, the rest untouched.
      {DataType::Text, DataType::Icon, "", {"a", "b"}, false, {"", ""}, {false, true}, {}, {}, {}},
  };
  for (const Row& row : rows) {
    const std::string name = std::to_string(row.nFrom) + " to " + std::to_string(row.nTo);
    DataMgmt doc;
    DataProp& prop = AddColumn(doc, row.nFrom, row.pszNewDefault);
    Fill(doc, prop, row.typed);
    prop.SetKeepListItemsSorted(row.bKeepSorted);
    std::map<int, int> entryIDMap;
    DataProp oldProp(prop);  // the host keeps the old definition, then changes the type
    prop.SetDataType(row.nTo);
    EXPECT_EQ(doc.DoDataTypeChange(oldProp, prop, entryIDMap), row.bResult) << name;
    std::vector<std::string> shown;
    std::vector<bool> subItemCells;
    for (size_t i = 0; i < doc.GetDataItemMgr().GetCount(); ++i) {
      const DataItem& item = *doc.GetDataItemMgr().GetAt(i);
      shown.push_back(Shown(doc, item, prop));
      subItemCells.push_back(item.GetSubItemsMgr().GetAt(0)->HaveDataProp(prop.GetID()));
    }
    EXPECT_EQ(shown, row.shown) << name;
    EXPECT_EQ(subItemCells, row.subItemCells) << name;
    EXPECT_EQ(EntryTexts(prop), row.entries) << name;
    EXPECT_EQ(KeptCounts(prop), row.counts) << name;
    EXPECT_EQ(entryIDMap, row.entryIDMap) << name;
  }
}

// Removing blue: cells of the column and of its alias that refer to blue
// take the default entry, undoably, and the default entry gains their
// usages. Under an item without the column its sub-items are scanned up to
// the first one without it; under an item with it, not at all. Items
// referring to the changed green, or with a sub-item cell replaced, are
// stamped as modified.
TEST_F(DataMgmtListUpkeepTest, RemovedEntriesGiveWayToTheDefaultEntry) {
  const struct {
    const char* pszDefault;
    const char* pszReplaced;
    std::vector<int> counts;  // red, green
  } rows[] = {{"red", "red", {5, 2}}, {"purple", "", {2, 2}}};
  for (const auto& row : rows) {
    DataMgmt doc;
    DataItem& bare = *doc.CreateDataItem(nullptr, true, true);  // made before the columns: holds none
    DataProp& list = AddColumn(doc, DataType::ValueListSelect, row.pszDefault);
    DataProp& alias = AddColumn(doc, DataType::ValueListSelect);
    doc.SetAliasDataProp(alias.GetID(), list.GetID());
    doc.SetAliasDataProp(list.GetID(), list.GetID());  // listed, and looked at, twice
    Fill(doc, list, {"red", "blue", "green"});
    DataItem& red = *doc.GetDataItemMgr().GetAt(1);
    DataItem& blue = *doc.GetDataItemMgr().GetAt(2);
    DataItem& green = *doc.GetDataItemMgr().GetAt(3);
    Enter(doc, blue, alias, "blue");
    std::vector<int> withList = {list.GetID()};
    std::vector<int> without;
    for (const char* pszText : {"blue", "", "blue"}) {
      DataSubItem& subItem = *doc.CreateDataSubItem(bare, *pszText ? withList : without, nullptr, true, true);
      if (*pszText) Enter(doc, subItem, list, pszText);
    }
    const int nBlue = list.GetListItemByValue("blue")->GetID();
    const int nGreen = list.GetListItemByValue("green")->GetID();
    list.DeleteListItem(list.GetListItemByValue("blue"));
    const DateTime old(2000, 1, 1);
    for (DataItem* pItem : {&red, &green, &bare}) pItem->SetLastModified(old);
    const auto modified = [&](const DataItem& item) {
      DateTime time;
      item.GetLastModified(time);
      return time > old;
    };

    std::vector<int> touched = {99};
    doc.ListItemsModified(list, {nGreen}, {nBlue}, touched);
    EXPECT_EQ(touched, std::vector<int>({list.GetID(), list.GetID(), alias.GetID()})) << row.pszDefault;
    EXPECT_EQ(Shown(doc, blue, list), row.pszReplaced) << row.pszDefault;
    EXPECT_EQ(Shown(doc, blue, alias), row.pszReplaced) << row.pszDefault;
    std::vector<int> earlier;
    blue.GetUndoData(list.GetID(), earlier);
    EXPECT_EQ(earlier.back(), nBlue) << row.pszDefault;
    EXPECT_EQ(IntOf(*blue.GetSubItemsMgr().GetAt(0), list.GetID()), nBlue) << row.pszDefault;
    EXPECT_EQ(Shown(doc, *bare.GetSubItemsMgr().GetAt(0), list), row.pszReplaced) << row.pszDefault;
    EXPECT_EQ(IntOf(*bare.GetSubItemsMgr().GetAt(2), list.GetID()), nBlue) << row.pszDefault;
    EXPECT_EQ(KeptCounts(list), row.counts) << row.pszDefault;
    const std::vector<bool> stamped = {modified(red), modified(green), modified(bare)};
    EXPECT_EQ(stamped, std::vector<bool>({false, true, true})) << row.pszDefault;
  }
}

// A column keeps its place in the display order and its values in the items
// (not in the sub-items, whose usages stay counted) when it moves between an
// application and a user ID; an unknown column or a taken slot moves nothing.
TEST_F(DataMgmtListUpkeepTest, ColumnsMoveBetweenApplicationAndUserIDs) {
  TestDocument doc;
  auto* pApp = new DataProp;
  pApp->SetID(2);
  pApp->SetDataType(DataType::ValueListSuggested);
  doc.AddDataProp(pApp, false, true, false, false);
  const int nUser = AddColumn(doc, DataType::Number).GetID();
  Fill(doc, *pApp, {"red"});
  DataItem& item = *doc.GetDataItemMgr().GetAt(0);
  Enter(doc, item, *doc.GetDataPropMgr().GetByID(nUser), "7");
  EXPECT_EQ(doc.MakeAppDataPropIntoUserDefined(3), -1);
  const int nMoved = doc.MakeAppDataPropIntoUserDefined(2);
  EXPECT_EQ(nMoved, nUser + 1);
  const DataProp& moved = *doc.GetDataPropMgr().GetByID(nMoved);
  EXPECT_EQ(Shown(doc, item, moved), "red");
  EXPECT_TRUE(item.GetSubItemsMgr().GetAt(0)->HaveDataProp(2));
  EXPECT_EQ(KeptCounts(moved), std::vector<int>({2}));
  EXPECT_EQ(doc.MakeUserDataPropIntoAppDefined(nUser, 2), 2);
  EXPECT_EQ(Shown(doc, item, *doc.GetDataPropMgr().GetByID(2)), "7");
  EXPECT_EQ(doc.MakeUserDataPropIntoAppDefined(nMoved, 2), -1);  // slot taken
  EXPECT_EQ(doc.MakeUserDataPropIntoAppDefined(4242, 5), -1);
  std::vector<int> order;
  doc.GetDataPropMgr().GetDisplayOrder(order);
  EXPECT_EQ(order, std::vector<int>({nMoved, 2}));
}

}  // namespace
