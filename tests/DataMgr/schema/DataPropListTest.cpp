#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>
#include <vector>

#include "DataMgr/schema/DataProp.h"
#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/schema/ListItemText.h"
#include "DataMgr/schema/ListItemTextDesc.h"
#include "tests/support/LocaleTestSupport.h"

namespace {

class DataPropListTest : public test_support::UsLocaleTest {};

DataProp Column(DataType::Type nType) {
  DataProp column;
  column.SetDataType(nType);
  return column;
}

// A value list of select type with the entries created by these IDs (-1:
// the next one).
DataProp WithEntries(std::initializer_list<int> ids) {
  DataProp column = Column(DataType::ValueListSelect);
  for (int nID : ids) column.CreateListItem(true, nID);
  return column;
}

ListItem* Add(DataProp& column, const char* text) {
  ListItem* item = column.CreateListItem(true, -1);
  item->SetTextRepresentation(text);
  return item;
}

std::vector<int> IDs(const DataProp& column) {
  std::vector<int> ids;
  for (size_t i = 0; i < column.GetListItemsCount(); ++i) ids.push_back(column.GetListItemAt(i)->GetID());
  return ids;
}

}  // namespace

TEST_F(DataPropListTest, EachListTypeCreatesItsEntryClass) {
  const struct {
    DataType::Type nType;
    const std::type_info* pClass;  // null: no entries
  } rows[] = {{DataType::NumberListSelect, &typeid(ListItemNumber)},
              {DataType::DecimalListSuggested, &typeid(ListItemDouble)},
              {DataType::DescValueListSelect, &typeid(ListItemTextDesc)},
              {DataType::ValueListSuggested, &typeid(ListItemText)},
              {DataType::Text, nullptr},
              {DataType::AddressBookSelect, nullptr}};
  for (const auto& row : rows) {
    DataProp column = Column(row.nType);
    const ListItem* item = column.CreateListItem(true, -1);
    EXPECT_EQ(item ? &typeid(*item) : nullptr, row.pClass) << DataType::GetText(row.nType);
    if (!row.pClass) {
      EXPECT_EQ(column.GetListItemByValue("x", true), nullptr) << DataType::GetText(row.nType);
    }
  }
}

// New entries take the next ID past every one given; an entry made under
// a taken ID is the one found by it; a column deletes only its own.
TEST_F(DataPropListTest, EntriesAreNumberedAndOwnedByTheirColumn) {
  DataProp column = WithEntries({-1, -1, 10, 4, -1});
  EXPECT_EQ(IDs(column), (std::vector<int>{0, 1, 10, 4, 11}));
  std::unique_ptr<ListItem> loose(column.CreateListItem(false, -1));
  EXPECT_EQ(loose->GetID(), 12);
  EXPECT_EQ(column.GetListItemsCount(), 5u);
  EXPECT_EQ(column.GetListItemByID(12), nullptr);
  EXPECT_EQ(column.GetListItemByID(10), column.GetListItemAt(2));
  EXPECT_EQ(column.GetListItemByID(-1), nullptr);
  EXPECT_EQ(column.GetListItemAt(5), nullptr);

  ListItem* first = column.GetListItemByID(4);
  ListItem* second = column.CreateListItem(true, 4);
  EXPECT_EQ(column.GetListItemByID(4), second);
  EXPECT_TRUE(column.DeleteListItem(first));
  EXPECT_EQ(column.GetListItemByID(4), second);
  EXPECT_FALSE(column.DeleteListItem(first));

  DataProp other = WithEntries({-1});
  EXPECT_FALSE(column.DeleteListItem(other.GetListItemAt(0)));
  EXPECT_FALSE(column.DeleteListItem(nullptr));
  EXPECT_EQ(other.GetListItemByID(0), other.GetListItemAt(0));
}

// Lookup by value is exact and in display order; finding by a part of the
// text heeds case; a type without entries drops them.
TEST_F(DataPropListTest, ValueLookupFindAndTypeChanges) {
  DataProp column = Column(DataType::ValueListSelect);
  Add(column, "Red");
  ListItem* second = Add(column, "red");
  Add(column, "sky blue");
  Add(column, "red");
  const DataProp& view = column;
  EXPECT_EQ(view.GetListItemByValue("red"), second);
  EXPECT_EQ(view.GetListItemByValue("RED"), nullptr);
  EXPECT_EQ(column.GetListItemByValue("RED", false), nullptr);
  ListItem* created = column.GetListItemByValue("Blue sky", true);
  EXPECT_EQ(created->GetTextRepresentation(), "Blue sky");
  EXPECT_EQ(column.GetListItemByID(4), created);
  EXPECT_EQ(column.GetListItemAt(4), created);
  std::vector<int> ids = {-7};
  column.FindListItemIDsContaining("blue", ids);
  column.FindListItemIDsContaining("", ids);
  EXPECT_EQ(ids, (std::vector<int>{-7, 2}));
  column.SetDataType(DataType::ValueListSuggested);
  EXPECT_EQ(column.GetListItemsCount(), 5u);
  column.SetDataType(DataType::Text);
  EXPECT_EQ(column.GetListItemsCount(), 0u);
  EXPECT_EQ(column.GetListItemByID(0), nullptr);
}

// Turning KeepListItemsSorted on sorts at once (numbers by value); then each
// new entry is placed by its value, also one created by its text.
TEST_F(DataPropListTest, KeptSortedEntriesArePlacedByValue) {
  DataProp numbers = Column(DataType::NumberListSelect);
  Add(numbers, "30");
  Add(numbers, "-5");
  Add(numbers, "7");
  numbers.SetKeepListItemsSorted(false);
  EXPECT_EQ(IDs(numbers), (std::vector<int>{0, 1, 2}));
  numbers.SetKeepListItemsSorted(true);
  EXPECT_EQ(IDs(numbers), (std::vector<int>{1, 2, 0}));
  numbers.CreateListItem(true, -1);
  EXPECT_EQ(IDs(numbers), (std::vector<int>{1, 3, 2, 0}));

  DataProp texts = Column(DataType::ValueListSuggested);
  Add(texts, "b");
  Add(texts, "d");
  texts.SetKeepListItemsSorted(true);
  texts.GetListItemByValue("c", true);
  texts.GetListItemByValue("A", true);
  EXPECT_EQ(IDs(texts), (std::vector<int>{3, 0, 2, 1}));
}

TEST_F(DataPropListTest, CompareListItemsByTheColumnsType) {
  ListItemNumber n2;
  ListItemNumber n10;
  n2.SetNumber(2);
  n10.SetNumber(10);
  ListItemText apple;
  ListItemTextDesc banana;
  apple.SetTextRepresentation("apple");
  banana.SetTextRepresentation("Banana");
  ListItemDouble half;
  ListItemDouble quarter;
  half.SetNumber(0.5);
  quarter.SetNumber(0.25);
  const struct {
    const ListItem *a, *b;
    DataType::Type nType;
    bool bBefore;
  } rows[] = {{&n2, &n10, DataType::NumberListSuggested, true},   {&n10, &n2, DataType::NumberListSelect, false},
              {&n2, &n10, DataType::ValueListSelect, false},      {&n2, &n10, DataType::Number, false},
              {&apple, &banana, DataType::ValueListSuggested, true}, {&apple, &banana, DataType::DescValueListSelect, true},
              {&banana, &apple, DataType::ValueListSelect, false}, {&quarter, &half, DataType::DecimalListSelect, true},
              {&half, &quarter, DataType::DecimalListSuggested, false}, {nullptr, &half, DataType::DecimalListSelect, true},
              {&half, nullptr, DataType::DecimalListSelect, false}, {nullptr, nullptr, DataType::DecimalListSelect, false}};
  for (size_t i = 0; i < sizeof rows / sizeof rows[0]; ++i) {
    EXPECT_EQ(DataProp::CompareListItems(rows[i].a, rows[i].b, rows[i].nType), rows[i].bBefore) << "row " << i;
  }
}

TEST_F(DataPropListTest, DisplayOrderSwapAndPosition) {
  EXPECT_FALSE(WithEntries({}).SetToDisplayOrder({1, 0}));
  const struct {
    std::vector<int> order;
    bool bChanged;
    std::vector<int> ids;
  } rows[] = {{{0, 1, 2, 3}, false, {0, 1, 2, 3}}, {{0, 1}, false, {0, 1, 2, 3}}, {{}, false, {0, 1, 2, 3}},
              {{0, 1, 2, 3, 7}, false, {0, 1, 2, 3}}, {{2, 9, 0}, true, {2, 0, 1, 3}}};
  for (const auto& row : rows) {
    DataProp column = WithEntries({-1, -1, -1, -1});
    EXPECT_EQ(column.SetToDisplayOrder(row.order), row.bChanged) << row.order.size();
    EXPECT_EQ(IDs(column), row.ids) << row.order.size();
    EXPECT_EQ(column.GetListItemByID(3), column.GetListItemAt(3)) << row.order.size();
  }

  DataProp column = WithEntries({});
  EXPECT_FALSE(column.SwapListItemArrayPosition(0, 1));
  column = WithEntries({-1, -1, -1});
  EXPECT_FALSE(column.SwapListItemArrayPosition(1, 1));
  EXPECT_FALSE(column.SwapListItemArrayPosition(0, 3));
  EXPECT_FALSE(column.SwapListItemArrayPosition(3, 0));
  EXPECT_TRUE(column.SwapListItemArrayPosition(0, 2));
  EXPECT_EQ(IDs(column), (std::vector<int>{2, 1, 0}));
  EXPECT_EQ(column.GetDisplayOrderForListItemID(0), 2u);
  EXPECT_EQ(column.GetDisplayOrderForListItemID(5), 3u);
  EXPECT_EQ(column.GetDisplayOrderForListItemID(-1), 3u);
}

TEST_F(DataPropListTest, ReplaceListItemsTakesOverTheGivenEntries) {
  DataProp column = Column(DataType::ValueListSelect);
  ListItem* kept = Add(column, "kept");
  std::unique_ptr<ListItem> dropped(Add(column, "dropped"));
  auto* added = new ListItemText;
  added->SetID(7);
  std::vector<ListItem*> items = {added, kept};
  column.SetKeepListItemsSorted(true);
  column.ReplaceListItems(items);
  EXPECT_TRUE(items.empty());
  EXPECT_EQ(IDs(column), (std::vector<int>{7, 0}));
  EXPECT_EQ(column.GetListItemByID(1), nullptr);
  EXPECT_EQ(column.GetListItemByID(7), added);
  column.ReplaceListItems(items);
  EXPECT_EQ(column.GetListItemsCount(), 0u);
}

// Entries never numbered (IDs 0 or -1, two or more) are numbered anew in
// display order; otherwise the next ID goes past the highest, never below 0.
TEST_F(DataPropListTest, RefreshRenumbersOnlyEntriesThatWereNeverNumbered) {
  const struct {
    std::vector<int> created;
    int nDeleted;  // the ID deleted before the refresh, or -1
    std::vector<int> ids;
    int nNext;
  } rows[] = {{{0, 0, -2}, -1, {0, 1, 2}, 3}, {{5, 0, 30}, 30, {5, 0}, 6}, {{0}, -1, {0}, 1}, {{8}, 8, {}, 0}};
  for (const auto& row : rows) {
    DataProp column = Column(DataType::ValueListSelect);
    for (int nID : row.created) column.CreateListItem(true, nID);
    if (row.nDeleted >= 0) column.DeleteListItem(column.GetListItemByID(row.nDeleted));
    column.RefreshNextListItemID();
    EXPECT_EQ(IDs(column), row.ids) << row.created.size() << " entries";
    if (!row.ids.empty()) {
      EXPECT_EQ(column.GetListItemByID(row.ids.back()), column.GetListItemAt(row.ids.size() - 1));
    }
    EXPECT_EQ(column.CreateListItem(true, -1)->GetID(), row.nNext) << row.created.size() << " entries";
  }
}
