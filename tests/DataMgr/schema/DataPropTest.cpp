#include "DataMgr/schema/DataProp.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/DataMgr/schema/SchemaArchiveWriter.h"
#include "tests/support/LocaleTestSupport.h"

using schema_test::ColumnArchive;
using test_support::Store;
using test_support::ToHex;

namespace {

class DataPropTest : public test_support::UsLocaleTest {};

DataProp ValueList(int nID, std::initializer_list<const char*> values) {
  DataProp column;
  column.SetID(nID);
  column.SetDataType(DataType::ValueListSelect);
  for (const char* value : values) column.GetListItemByValue(value, true);
  return column;
}

DataProp AddressColumn() {
  DataProp column;
  column.SetDataType(DataType::AddressBookSuggested);
  return column;
}

Address* AddNamed(DataProp& column, const char* name, int nID) {
  Address* address = column.CreateAddress(nID);
  address->SetData(Address::Name, name);
  return address;
}

}  // namespace

// The stored fields' defaults in one comparison: the writer's defaults are
// the documented ones.
TEST_F(DataPropTest, NewColumnHasTheDefaults) {
  DataProp column;
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { column.Serialize(ar); })), ToHex(ColumnArchive().Head().Get()));
  EXPECT_EQ(column.GetWebTag(), "");
  EXPECT_TRUE(column.GetAddressBook().GetIsBusiness());
  EXPECT_EQ(column.GetListItemsCount(), 0u);
  EXPECT_EQ(DataProp::DEFAULT_USER_ID, 5000);
}

TEST_F(DataPropTest, WebTagFollowsTheName) {
  DataProp column;
  column.SetName("a.b/c-d e");
  EXPECT_EQ(column.GetWebTag(), "{AB_C_D_E}");
  column.SetName("Cost / Unit No.");
  EXPECT_EQ(column.GetWebTag(), "{COST___UNIT_NO}");
  column.SetName("Rock & Roll");
  EXPECT_EQ(column.GetWebTag(), "{ROCK&ROLL}");
  column.SetName("Issue #");
  EXPECT_EQ(column.GetWebTag(), "{ISSUE#}");
  column.SetName("Why? back\\slash");
  EXPECT_EQ(column.GetWebTag(), "{WHY_BACK_SLASH}");
  column.SetName("Price");
  column.AdjustWebTag("2");
  EXPECT_EQ(column.GetWebTag(), "{PRICE2}");
}

TEST_F(DataPropTest, NameWithDescParsesSentencesOfApplicationColumnsOnly) {
  DataProp column;
  column.SetName("Size");
  column.SetID(5000);
  EXPECT_EQ(column.GetNameWithDesc(), "Size");
  column.SetDesc("Large. Really.");
  EXPECT_EQ(column.GetNameWithDesc(), "Size - Large. Really.");
  column.SetID(3);
  EXPECT_EQ(column.GetNameWithDesc(), "Size - Large.");
}

TEST_F(DataPropTest, EqualityByTypeAndNameOrderByID) {
  DataProp a;
  DataProp b;
  a.SetName("X");
  b.SetName("X");
  a.SetID(2);
  b.SetID(1);
  EXPECT_TRUE(a == b);
  EXPECT_TRUE(b < a);
  b.SetName("x");
  EXPECT_FALSE(a == b);
  b.SetName("X");
  b.SetDataType(DataType::LargeText);
  EXPECT_FALSE(a == b);
}

TEST_F(DataPropTest, AssignmentKeepsTheTargetsIdentity) {
  DataProp source = ValueList(12, {"a", "b"});
  source.SetName("Colour");
  source.SetThousandsSep(false);
  source.SetUserCanDelete(false, true);
  source.CreateListItem(true, 20);
  DataProp target;
  target.SetID(40);
  target.CreateListItem(true, -1);
  target = source;
  EXPECT_EQ(target.GetID(), 40);
  EXPECT_EQ(target.GetName(), "Colour");
  EXPECT_EQ(target.GetWebTag(), "{COLOUR}");
  EXPECT_EQ(target.GetDataType(), DataType::ValueListSelect);
  EXPECT_FALSE(target.GetThousandsSep());
  EXPECT_FALSE(target.GetUserCanDelete());
  EXPECT_TRUE(target.GetUserCanDeleteWarning());
  ASSERT_EQ(target.GetListItemsCount(), 3u);
  EXPECT_NE(target.GetListItemAt(0), source.GetListItemAt(0));
  EXPECT_EQ(target.GetListItemByID(1)->GetTextRepresentation(), "b");
  EXPECT_EQ(target.CreateListItem(true, -1)->GetID(), 21);

  DataProp copy(source);
  EXPECT_EQ(copy.GetID(), 12);
  EXPECT_EQ(copy.GetListItemByID(20), copy.GetListItemAt(2));
}

TEST_F(DataPropTest, AssigningATextColumnDropsTheEntries) {
  DataProp target = ValueList(1, {"a"});
  DataProp text;
  target = text;
  EXPECT_EQ(target.GetDataType(), DataType::Text);
  EXPECT_EQ(target.GetListItemsCount(), 0u);
}

TEST_F(DataPropTest, CopyOfAnAddressColumnCopiesItsBook) {
  DataProp source = AddressColumn();
  AddNamed(source, "Ann", -1);
  DataProp copy(source);
  ASSERT_EQ(copy.GetAddressBook().GetCount(), 1u);
  EXPECT_NE(copy.GetAddressBook().GetAt(0), source.GetAddressBook().GetAt(0));
  AddressBook book;
  copy.GetAddressBook(book);
  EXPECT_EQ(book.GetByID(0)->GetData(Address::Name), "Ann");
}

TEST_F(DataPropTest, CopyFromReportsNoChangeForAColumnThatStaysHidden) {
  DataProp own;
  own.SetDisplayed(false);
  DataProp other;
  other.SetDisplayed(false);
  other.SetName("Renamed");
  other.SetDataType(DataType::Number);
  EXPECT_FALSE(own.CopyFrom(other));
  EXPECT_EQ(own.GetName(), "Renamed");
  EXPECT_EQ(own.GetDataType(), DataType::Number);

  DataProp shown;
  EXPECT_TRUE(shown.CopyFrom(other));
  DataProp hidden;
  hidden.SetDisplayed(false);
  DataProp visible;
  EXPECT_TRUE(hidden.CopyFrom(visible));
}

TEST_F(DataPropTest, CopyFromIgnoresFlagsThatDoNotCountAndKeepsUserRights) {
  DataProp own;
  own.SetID(7);
  DataProp other;
  other.SetID(8);
  other.SetCanBeNegative(false);
  other.SetShowSignAlways(true);
  other.SetHiddenFromUI(true);
  other.SetSortValuesByListOrder(true);
  other.SetUseWithDataSubItem(true);
  other.SetUserCanDelete(false, true);
  other.SetUserChangeDataType(false);
  other.SetUserChangeValue(false);
  other.SetUserChangeDefValue(false);
  other.SetDesc("d");
  other.SetDefaultValue("v");
  other.SetPrefix("p");
  other.SetSuffix("s");
  EXPECT_FALSE(own.CopyFrom(other));
  EXPECT_EQ(own.GetID(), 7);
  EXPECT_FALSE(own.GetCanBeNegative());
  EXPECT_TRUE(own.GetShowSignAlways());
  EXPECT_TRUE(own.GetHiddenFromUI());
  EXPECT_TRUE(own.GetSortValuesByListOrder());
  EXPECT_TRUE(own.GetUseWithDataSubItem());
  EXPECT_TRUE(own.GetUserCanDelete());
  EXPECT_FALSE(own.GetUserCanDeleteWarning());
  EXPECT_TRUE(own.GetUserChangeDataType());
  EXPECT_TRUE(own.GetUserChangeValue());
  EXPECT_TRUE(own.GetUserChangeDefValue());
  EXPECT_EQ(own.GetSuffix(), "s");
}

TEST_F(DataPropTest, CopyFromCountsEachVisibleSetting) {
  std::vector<void (*)(DataProp&)> changes = {
      [](DataProp& c) { c.SetCanBeSummed(true); },      [](DataProp& c) { c.SetCanBeAveraged(true); },
      [](DataProp& c) { c.SetThousandsSep(false); },    [](DataProp& c) { c.SetFractional(true); },
      [](DataProp& c) { c.SetShowDecimalZeroes(false); }, [](DataProp& c) { c.SetZeroIsEmpty(false); },
      [](DataProp& c) { c.SetDateTimeNumbers(false); }, [](DataProp& c) { c.SetTimeShowHours(true); },
      [](DataProp& c) { c.SetTimeShowSeconds(true); },  [](DataProp& c) { c.SetCustomColWidth(80); },
      [](DataProp& c) { c.SetColWidth(DataProp::ColWidth(2)); },
      [](DataProp& c) { c.SetColAlignment(DataProp::ColAlign(1)); },
      [](DataProp& c) { c.SetDataType(DataType::Date); }, [](DataProp& c) { c.SetName("n"); },
  };
  for (size_t i = 0; i < changes.size(); ++i) {
    DataProp own;
    DataProp other;
    changes[i](other);
    EXPECT_TRUE(own.CopyFrom(other)) << "change " << i;
  }
}

TEST_F(DataPropTest, CopyFromMovesTheEntriesAndCountsTheirDifferences) {
  DataProp own = ValueList(1, {"a", "b"});
  DataProp same = ValueList(1, {"a", "b"});
  EXPECT_FALSE(own.CopyFrom(same));
  EXPECT_EQ(same.GetListItemsCount(), 0u);
  EXPECT_EQ(same.GetListItemByID(0), nullptr);
  ASSERT_EQ(own.GetListItemsCount(), 2u);
  EXPECT_EQ(own.GetListItemByID(1)->GetTextRepresentation(), "b");

  DataProp recased = ValueList(1, {"a", "B"});
  EXPECT_TRUE(own.CopyFrom(recased));
  DataProp longer = ValueList(1, {"a", "B", "c"});
  EXPECT_TRUE(own.CopyFrom(longer));
  EXPECT_EQ(own.CreateListItem(true, -1)->GetID(), 3);
}

TEST_F(DataPropTest, CopyFromCountsAddressDifferences) {
  DataProp own = AddressColumn();
  AddNamed(own, "Ann", -1);
  DataProp other(own);
  EXPECT_FALSE(own.CopyFrom(other));
  other.GetAddressBook().GetAt(0)->SetData(Address::Name, "ANN");
  EXPECT_TRUE(own.CopyFrom(other));
  EXPECT_EQ(own.GetAddressBook().GetAt(0)->GetData(Address::Name), "ANN");
  EXPECT_EQ(other.GetAddressBook().GetCount(), 1u);
}

TEST_F(DataPropTest, UsageCountsOfEntries) {
  DataProp column = ValueList(1, {"a", "b"});
  column.AddUsageCountFor(1);
  column.AddUsageCountFor(1);
  column.AddUsageCountFor(9);
  EXPECT_EQ(column.GetListItemByID(1)->GetUsageCount(), 2);
  column.ClearUsageCounts();
  EXPECT_EQ(column.GetListItemByID(1)->GetUsageCount(), 0);
}

TEST_F(DataPropTest, UsageCountsOfAddresses) {
  DataProp column = AddressColumn();
  AddNamed(column, "a", -1);
  AddNamed(column, "b", -1);
  column.AddUsageCountFor(0);
  column.AdjustAddressUsageCounts(0, 1);
  column.AdjustAddressUsageCounts(0, 1);
  EXPECT_EQ(column.GetAddressBook().GetByID(0)->GetUsageCount(), 0);
  EXPECT_EQ(column.GetAddressBook().GetByID(1)->GetUsageCount(), 2);
  column.AdjustAddressUsageCounts(-1, 7);
  column.ClearUsageCounts();
  EXPECT_EQ(column.GetAddressBook().GetByID(1)->GetUsageCount(), 0);
}

TEST_F(DataPropTest, AddressBookOperations) {
  DataProp column = AddressColumn();
  EXPECT_EQ(AddNamed(column, "Ann Lee", -1)->GetID(), 0);
  EXPECT_EQ(AddNamed(column, "Bo", 6)->GetID(), 6);
  EXPECT_EQ(AddNamed(column, "Lee Roy", -1)->GetID(), 7);
  std::vector<int> ids = {99};
  column.FindAddressIDsContaining("Lee", ids);
  EXPECT_EQ(ids, (std::vector<int>{99, 0, 7}));
  column.FindAddressIDsContaining("lee", ids);
  EXPECT_EQ(ids.size(), 3u);
  EXPECT_EQ(column.GetAddressByName("bo", false)->GetID(), 6);
  column.SetAddressBookFlag(false);
  EXPECT_FALSE(column.GetAddressBook().GetIsBusiness());
  EXPECT_FALSE(column.GetAddressBook().GetByID(6)->GetIsBusiness());
  column.DeleteAddress(6);
  EXPECT_EQ(column.GetAddressBook().GetCount(), 2u);
  column.ClearAddressBook();
  EXPECT_EQ(AddNamed(column, "new", -1)->GetID(), 0);
}

TEST_F(DataPropTest, SyncAddressesWalksTheOwnBookBackwards) {
  DataProp column = AddressColumn();
  AddNamed(column, "A", -1);
  AddNamed(column, "B", -1);
  AddNamed(column, "C", -1);
  AddNamed(column, "D", -1);
  column.GetAddressBook().GetByID(0)->RegisterUsage();

  AddressBook other;
  const struct {
    int nID;
    const char* name;
    bool bBusiness;
  } addresses[] = {{0, "A2", true}, {2, "C2", false}, {3, "d", true}, {9, "E", false}};
  for (const auto& row : addresses) {
    auto* address = new Address;
    address->SetID(row.nID);
    address->SetData(Address::Name, row.name);
    address->SetIsBusiness(row.bBusiness);
    other.Add(address, false);
  }
  other.GetByID(9)->RegisterUsage();

  std::vector<int> changed = {42};
  std::vector<int> deleted = {42};
  bool bAdded = false;
  column.SyncAddresses(other, changed, deleted, bAdded);
  EXPECT_EQ(changed, (std::vector<int>{2, 0}));
  EXPECT_EQ(deleted, (std::vector<int>{1}));
  EXPECT_TRUE(bAdded);

  const AddressBook& book = column.GetAddressBook();
  ASSERT_EQ(book.GetCount(), 4u);
  EXPECT_EQ(book.GetAt(0)->GetData(Address::Name), "A2");
  EXPECT_EQ(book.GetAt(0)->GetUsageCount(), 0);
  EXPECT_FALSE(book.GetAt(1)->GetIsBusiness());
  EXPECT_EQ(book.GetAt(1)->GetID(), 2);
  EXPECT_EQ(book.GetAt(2)->GetData(Address::Name), "D");
  EXPECT_EQ(book.GetAt(3)->GetID(), 9);
  EXPECT_TRUE(book.GetAt(3)->GetIsBusiness());
  EXPECT_EQ(book.GetAt(3)->GetUsageCount(), 1);
  EXPECT_EQ(AddNamed(column, "next", -1)->GetID(), 10);

  // The added copy took the book's business flag, so it now differs from
  // other's; the address made after the first sync is not in other.
  column.SyncAddresses(other, changed, deleted, bAdded);
  EXPECT_EQ(changed, (std::vector<int>{9}));
  EXPECT_EQ(deleted, (std::vector<int>{10}));
  EXPECT_FALSE(bAdded);
  EXPECT_EQ(column.GetAddressBook().GetCount(), 4u);
}

// Addresses without an ID are never matched: the own one is deleted and
// other's is added as a copy, its ID kept.
TEST_F(DataPropTest, SyncAddressesMatchesOnlyValidIDs) {
  DataProp column = AddressColumn();
  EXPECT_EQ(AddNamed(column, "own", -2)->GetID(), -1);
  AddressBook other;
  auto* address = new Address;
  address->SetData(Address::Name, "theirs");
  other.Add(address, false);

  std::vector<int> changed;
  std::vector<int> deleted;
  bool bAdded = false;
  column.SyncAddresses(other, changed, deleted, bAdded);
  EXPECT_TRUE(changed.empty());
  EXPECT_EQ(deleted, (std::vector<int>{-1}));
  EXPECT_TRUE(bAdded);
  ASSERT_EQ(column.GetAddressBook().GetCount(), 1u);
  EXPECT_EQ(column.GetAddressBook().GetAt(0)->GetData(Address::Name), "theirs");
  EXPECT_EQ(column.GetAddressBook().GetAt(0)->GetID(), -1);
  EXPECT_EQ(AddNamed(column, "next", -1)->GetID(), 0);
}
