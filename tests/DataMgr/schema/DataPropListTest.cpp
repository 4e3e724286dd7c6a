#include <gtest/gtest.h>

#include <memory>
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

ListItem* Add(DataProp& column, int nID, const char* text) {
  ListItem* item = column.CreateListItem(true, nID);
  item->SetTextRepresentation(text);
  return item;
}

std::vector<int> IDs(const DataProp& column) {
  std::vector<int> ids;
  for (size_t i = 0; i < column.GetListItemsCount(); ++i) ids.push_back(column.GetListItemAt(i)->GetID());
  return ids;
}

std::vector<CString> Texts(const DataProp& column) {
  std::vector<CString> texts;
  for (size_t i = 0; i < column.GetListItemsCount(); ++i) {
    texts.push_back(column.GetListItemAt(i)->GetTextRepresentation());
  }
  return texts;
}

}  // namespace

TEST_F(DataPropListTest, EachListTypeCreatesItsEntryClass) {
  for (auto nType : {DataType::NumberListSuggested, DataType::NumberListSelect}) {
    EXPECT_NE(dynamic_cast<ListItemNumber*>(Column(nType).CreateListItem(true, -1)), nullptr);
  }
  for (auto nType : {DataType::DecimalListSuggested, DataType::DecimalListSelect}) {
    EXPECT_NE(dynamic_cast<ListItemDouble*>(Column(nType).CreateListItem(true, -1)), nullptr);
  }
  for (auto nType : {DataType::DescValueListSuggested, DataType::DescValueListSelect}) {
    EXPECT_NE(dynamic_cast<ListItemTextDesc*>(Column(nType).CreateListItem(true, -1)), nullptr);
  }
  DataProp values = Column(DataType::ValueListSuggested);
  ListItem* item = values.CreateListItem(true, -1);
  EXPECT_NE(dynamic_cast<ListItemText*>(item), nullptr);
  EXPECT_EQ(dynamic_cast<ListItemTextDesc*>(item), nullptr);
  for (auto nType : {DataType::Text, DataType::AddressBookSelect, DataType::Icon}) {
    DataProp other = Column(nType);
    EXPECT_EQ(other.CreateListItem(true, -1), nullptr);
    EXPECT_EQ(other.GetListItemByValue("x", true), nullptr);
  }
}

TEST_F(DataPropListTest, CreatedEntriesAreNumberedInOrder) {
  DataProp column = Column(DataType::ValueListSelect);
  EXPECT_EQ(column.CreateListItem(true, -1)->GetID(), 0);
  EXPECT_EQ(column.CreateListItem(true, -1)->GetID(), 1);
  EXPECT_EQ(column.CreateListItem(true, 10)->GetID(), 10);
  EXPECT_EQ(column.CreateListItem(true, 4)->GetID(), 4);
  EXPECT_EQ(column.CreateListItem(true, -1)->GetID(), 11);

  std::unique_ptr<ListItem> loose(column.CreateListItem(false, -1));
  EXPECT_EQ(loose->GetID(), 12);
  EXPECT_EQ(column.GetListItemsCount(), 5u);
  EXPECT_EQ(column.GetListItemByID(12), nullptr);
  EXPECT_EQ(column.GetListItemByID(10), column.GetListItemAt(2));
  EXPECT_EQ(column.GetListItemByID(-1), nullptr);
  EXPECT_EQ(column.GetListItemAt(5), nullptr);
}

TEST_F(DataPropListTest, AnEntryCreatedUnderATakenIDIsTheOneFoundByIt) {
  DataProp column = Column(DataType::ValueListSelect);
  ListItem* first = Add(column, 4, "first");
  ListItem* second = Add(column, 4, "second");
  EXPECT_EQ(column.GetListItemByID(4), second);
  EXPECT_TRUE(column.DeleteListItem(first));
  EXPECT_EQ(column.GetListItemByID(4), second);
  EXPECT_EQ(column.GetListItemsCount(), 1u);
}

TEST_F(DataPropListTest, DeleteOnlyTheColumnsOwnEntries) {
  DataProp a = Column(DataType::ValueListSelect);
  DataProp b = Column(DataType::ValueListSelect);
  ListItem* mine = Add(a, -1, "x");
  ListItem* theirs = Add(b, -1, "y");
  EXPECT_FALSE(a.DeleteListItem(theirs));
  EXPECT_FALSE(a.DeleteListItem(nullptr));
  EXPECT_EQ(b.GetListItemByID(0), theirs);
  EXPECT_TRUE(a.DeleteListItem(mine));
  EXPECT_EQ(a.GetListItemsCount(), 0u);
  EXPECT_EQ(a.GetListItemByID(0), nullptr);
  EXPECT_FALSE(a.DeleteListItem(theirs));
}

TEST_F(DataPropListTest, ValueLookupIsExactAndInDisplayOrder) {
  DataProp column = Column(DataType::ValueListSelect);
  Add(column, -1, "Red");
  ListItem* second = Add(column, -1, "red");
  Add(column, -1, "red");
  const DataProp& view = column;
  EXPECT_EQ(view.GetListItemByValue("red"), second);
  EXPECT_EQ(view.GetListItemByValue("RED"), nullptr);
  EXPECT_EQ(column.GetListItemByValue("RED", false), nullptr);

  ListItem* created = column.GetListItemByValue("RED", true);
  ASSERT_NE(created, nullptr);
  EXPECT_EQ(created->GetID(), 3);
  EXPECT_EQ(created->GetTextRepresentation(), "RED");
  EXPECT_EQ(column.GetListItemByID(3), created);
  EXPECT_EQ(column.GetListItemAt(3), created);
}

TEST_F(DataPropListTest, CreatedEntryIsPlacedByItsValueWhenKeptSorted) {
  DataProp column = Column(DataType::ValueListSuggested);
  Add(column, -1, "b");
  Add(column, -1, "d");
  column.SetKeepListItemsSorted(true);
  column.GetListItemByValue("c", true);
  column.GetListItemByValue("A", true);
  EXPECT_EQ(Texts(column), (std::vector<CString>{"A", "b", "c", "d"}));
}

TEST_F(DataPropListTest, KeepingSortedSortsAtOnceAndOnEveryCreation) {
  DataProp column = Column(DataType::NumberListSelect);
  Add(column, -1, "30");
  Add(column, -1, "-5");
  Add(column, -1, "7");
  column.SetKeepListItemsSorted(false);
  EXPECT_EQ(IDs(column), (std::vector<int>{0, 1, 2}));
  column.SetKeepListItemsSorted(true);
  EXPECT_EQ(IDs(column), (std::vector<int>{1, 2, 0}));
  column.CreateListItem(true, -1);
  EXPECT_EQ(IDs(column), (std::vector<int>{1, 3, 2, 0}));
}

TEST_F(DataPropListTest, CompareListItemsByType) {
  ListItemNumber n1;
  ListItemNumber n2;
  n1.SetNumber(2);
  n2.SetNumber(10);
  EXPECT_TRUE(DataProp::CompareListItems(&n1, &n2, DataType::NumberListSuggested));
  EXPECT_FALSE(DataProp::CompareListItems(&n2, &n1, DataType::NumberListSelect));
  EXPECT_FALSE(DataProp::CompareListItems(&n1, &n2, DataType::ValueListSelect));
  EXPECT_FALSE(DataProp::CompareListItems(&n1, &n2, DataType::Number));

  ListItemText apple;
  ListItemTextDesc banana;
  apple.SetTextRepresentation("apple");
  banana.SetTextRepresentation("Banana");
  EXPECT_TRUE(DataProp::CompareListItems(&apple, &banana, DataType::ValueListSuggested));
  EXPECT_TRUE(DataProp::CompareListItems(&apple, &banana, DataType::DescValueListSelect));
  EXPECT_FALSE(DataProp::CompareListItems(&banana, &apple, DataType::ValueListSelect));

  ListItemDouble d1;
  ListItemDouble d2;
  d1.SetNumber(0.5);
  d2.SetNumber(0.25);
  EXPECT_TRUE(DataProp::CompareListItems(&d2, &d1, DataType::DecimalListSelect));
  EXPECT_FALSE(DataProp::CompareListItems(&d1, &d2, DataType::DecimalListSuggested));

  EXPECT_TRUE(DataProp::CompareListItems(nullptr, &d1, DataType::DecimalListSelect));
  EXPECT_FALSE(DataProp::CompareListItems(&d1, nullptr, DataType::DecimalListSelect));
  EXPECT_FALSE(DataProp::CompareListItems(nullptr, nullptr, DataType::DecimalListSelect));
}

TEST_F(DataPropListTest, SetToDisplayOrderLeavesAnAgreeingOrderAlone) {
  DataProp empty = Column(DataType::ValueListSelect);
  EXPECT_FALSE(empty.SetToDisplayOrder({1, 0}));

  DataProp column = Column(DataType::ValueListSelect);
  for (int i = 0; i < 3; ++i) column.CreateListItem(true, -1);
  EXPECT_FALSE(column.SetToDisplayOrder({0, 1, 2}));
  EXPECT_FALSE(column.SetToDisplayOrder({0, 1}));
  EXPECT_FALSE(column.SetToDisplayOrder({}));
  EXPECT_FALSE(column.SetToDisplayOrder({0, 1, 2, 7}));
  EXPECT_EQ(IDs(column), (std::vector<int>{0, 1, 2}));
}

TEST_F(DataPropListTest, SetToDisplayOrderPutsUnnamedEntriesLast) {
  DataProp column = Column(DataType::ValueListSelect);
  for (int i = 0; i < 4; ++i) column.CreateListItem(true, -1);
  EXPECT_TRUE(column.SetToDisplayOrder({2, 9, 0}));
  EXPECT_EQ(IDs(column), (std::vector<int>{2, 0, 1, 3}));
  EXPECT_EQ(column.GetListItemByID(3), column.GetListItemAt(3));
}

TEST_F(DataPropListTest, SwapAndDisplayPosition) {
  DataProp column = Column(DataType::ValueListSelect);
  EXPECT_FALSE(column.SwapListItemArrayPosition(0, 1));
  for (int i = 0; i < 3; ++i) column.CreateListItem(true, -1);
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
  ListItem* kept = Add(column, -1, "kept");
  std::unique_ptr<ListItem> dropped(Add(column, -1, "dropped"));
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

TEST_F(DataPropListTest, RefreshRenumbersEntriesThatWereNeverNumbered) {
  DataProp column = Column(DataType::ValueListSelect);
  column.CreateListItem(true, 0);
  column.CreateListItem(true, 0);
  column.CreateListItem(true, -2);
  column.RefreshNextListItemID();
  EXPECT_EQ(IDs(column), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(column.GetListItemByID(1), column.GetListItemAt(1));
  EXPECT_EQ(column.CreateListItem(true, -1)->GetID(), 3);
}

TEST_F(DataPropListTest, RefreshKeepsNumberedEntries) {
  DataProp column = Column(DataType::ValueListSelect);
  column.CreateListItem(true, 5);
  column.CreateListItem(true, 0);
  column.CreateListItem(true, 30);
  column.DeleteListItem(column.GetListItemByID(30));
  column.RefreshNextListItemID();
  EXPECT_EQ(IDs(column), (std::vector<int>{5, 0}));
  EXPECT_EQ(column.CreateListItem(true, -1)->GetID(), 6);

  DataProp single = Column(DataType::ValueListSelect);
  single.CreateListItem(true, 0);
  single.RefreshNextListItemID();
  EXPECT_EQ(single.CreateListItem(true, -1)->GetID(), 1);

  DataProp none = Column(DataType::ValueListSelect);
  none.CreateListItem(true, 8);
  none.DeleteListItem(none.GetListItemByID(8));
  none.RefreshNextListItemID();
  EXPECT_EQ(none.CreateListItem(true, -1)->GetID(), 0);
}

TEST_F(DataPropListTest, FindIDsContainingIsCaseSensitiveAndAppends) {
  DataProp column = Column(DataType::ValueListSelect);
  Add(column, -1, "Blue sky");
  Add(column, -1, "sky blue");
  Add(column, -1, "grey");
  std::vector<int> ids = {-7};
  column.FindListItemIDsContaining("blue", ids);
  EXPECT_EQ(ids, (std::vector<int>{-7, 1}));
  column.FindListItemIDsContaining("", ids);
  EXPECT_EQ(ids.size(), 2u);
}

TEST_F(DataPropListTest, ChangingToATypeWithoutEntriesDropsThem) {
  DataProp column = Column(DataType::ValueListSelect);
  Add(column, -1, "x");
  column.SetDataType(DataType::ValueListSuggested);
  EXPECT_EQ(column.GetListItemsCount(), 1u);
  column.SetDataType(DataType::Text);
  EXPECT_EQ(column.GetListItemsCount(), 0u);
  EXPECT_EQ(column.GetListItemByID(0), nullptr);
}
