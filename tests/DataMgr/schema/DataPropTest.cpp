#include "DataMgr/schema/DataProp.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/schema/ListItemText.h"
#include "DataMgr/schema/ListItemTextDesc.h"
#include "tests/DataMgr/schema/SchemaArchiveWriter.h"
#include "tests/support/LocaleTestSupport.h"
#include "tests/support/TableTestSupport.h"

using schema_test::AddressBookRecord;
using schema_test::AddressFields;
using schema_test::AddressRecord;
using schema_test::ColumnArchive;
using schema_test::Entry;
using schema_test::TextDescEntry;
using schema_test::TextEntry;
using test_support::ByteWriter;
using test_support::Bytes;
using test_support::ExpectEveryCutThrowsEndOfFile;
using test_support::Load;
using test_support::Loaded;
using test_support::Stored;
using test_support::ToHex;

namespace {

class DataPropTest : public test_support::UsLocaleTest {};

// A column of nType with entries of these texts, IDs 0, 1, ... in order.
DataProp Listing(std::initializer_list<const char*> texts, DataType::Type nType = DataType::ValueListSelect) {
  DataProp column;
  column.SetDataType(nType);
  for (const char* text : texts) column.CreateListItem(true, -1)->SetTextRepresentation(text);
  return column;
}

// A value list with the entries created by these IDs (-1: the next one).
DataProp WithEntries(std::initializer_list<int> ids) {
  DataProp column = Listing({});
  for (int nID : ids) column.CreateListItem(true, nID);
  return column;
}

std::vector<int> IDs(const DataProp& column) {
  std::vector<int> ids;
  for (size_t i = 0; i < column.GetListItemsCount(); ++i) ids.push_back(column.GetListItemAt(i)->GetID());
  return ids;
}

DataProp AddressColumn(std::initializer_list<const char*> names) {
  DataProp column = Listing({}, DataType::AddressBookSuggested);
  for (const char* name : names) column.CreateAddress(-1)->SetData(Address::Name, name);
  return column;
}

const unsigned TEXT = DataType::Text;
const unsigned NUMBER = DataType::Number;
const unsigned DECIMAL = DataType::Decimal;
const unsigned MONETARY = DataType::Monetary;

// Every field of a column record set to differ from its default.
void ChangeEveryField(ColumnArchive& c) {
  c.nID = 5001;
  c.name = "Size";
  c.desc = "d";
  c.defaultValue = "M";
  c.prefix = "<";
  c.suffix = ">";
  c.bCanBeSummed = c.bCanBeAveraged = c.bFractional = c.bShowSignAlways = c.bUserCanDeleteWarning = true;
  c.bTimeShowHours = c.bTimeShowSeconds = c.bSortValuesByListOrder = c.bHiddenFromUI = true;
  c.bKeepListItemsSorted = c.bUseWithDataSubItem = true;
  c.bCanBeNegative = c.bDisplayed = c.bThousandsSep = c.bShowDecimalZeroes = c.bZeroIsEmpty = false;
  c.bDateTimeNumbers = c.bUserCanDelete = c.bUserChangeDataType = c.bUserChangeValue = false;
  c.bUserChangeDefValue = false;
  c.nNextListItemID = 2;
  c.nCustomColWidth = 120;
  c.nColWidth = 2;
  c.nColAlign = 0x101;
}

void ExpectEveryCutThrows(const Bytes& bytes) {
  ExpectEveryCutThrowsEndOfFile(bytes, [](CArchive& ar) { DataProp().Serialize(ar); });
}

// A column of an old version, with the fields that version holds set by
// set, and how the current version stores it once loaded: the same fields,
// changed by then if given, and the same entries (after a counter, 32-bit
// before version 14, for the list types) or address book, stored as given
// in stored if that differs.
struct FieldsCase {
  const char* name;
  unsigned nVersion, nType;
  std::function<void(ColumnArchive&)> set, then = nullptr;
  int nEntries = -1;  // -1: not a list type
  Bytes entries = {};
  Bytes stored = {};
};

}  // namespace

// The stored fields' defaults in one comparison: the writer's defaults are
// the documented ones.
TEST_F(DataPropTest, NewColumnHasTheDefaults) {
  DataProp column;
  EXPECT_EQ(ToHex(Stored(column)), ToHex(ColumnArchive().Head().Get()));
  EXPECT_EQ(column.GetWebTag(), "");
  EXPECT_TRUE(column.GetAddressBook().GetIsBusiness());
}

TEST_F(DataPropTest, WebTagAndNameWithDescFollowTheName) {
  DataProp column;
  const auto tagOf = [&](const char* pszName) {
    column.SetName(pszName);
    return column.GetWebTag();
  };
  test_support::ExpectRows<const char*>(tagOf, {{"a.b/c-d e", "{AB_C_D_E}"}, {"Cost / Unit No.", "{COST___UNIT_NO}"},
      {"Rock & Roll", "{ROCK&ROLL}"}, {"Issue #", "{ISSUE#}"}, {"Why? back\\slash", "{WHY_BACK_SLASH}"}});
  column.SetName("Size");
  column.AdjustWebTag("2");
  EXPECT_EQ(column.GetWebTag(), "{SIZE2}");
  // An application column shows only the first sentence of its description.
  column.SetID(5000);
  EXPECT_EQ(column.GetNameWithDesc(), "Size");
  column.SetDesc("Large. Really.");
  EXPECT_EQ(column.GetNameWithDesc(), "Size - Large. Really.");
  column.SetID(3);
  EXPECT_EQ(column.GetNameWithDesc(), "Size - Large.");
}

TEST_F(DataPropTest, EqualByTypeAndExactNameOrderedByID) {
  DataProp a, b;
  a.SetName("X");
  a.SetID(2);
  b.SetID(1);
  b.SetName("x");
  EXPECT_FALSE(a == b);
  b.SetName("X");
  EXPECT_TRUE(a == b && b < a);
  b.SetDataType(DataType::LargeText);
  EXPECT_FALSE(a == b);
}

// Copies are deep, every field taken: entries and addresses of their own.
// The copy constructor takes the ID, assignment keeps the target's, and
// assigning a column without entries drops the target's.
TEST_F(DataPropTest, CopiesAreDeepAndAssignmentKeepsTheID) {
  ColumnArchive changed(15, DataType::ValueListSelect);
  ChangeEveryField(changed);
  const Bytes entries = ByteWriter().Raw(TextEntry(0, 0, "M")).Raw(TextEntry(20, 1, "S")).Get();
  DataProp source = Loaded<DataProp>(changed.Head().Counter(2, false).Raw(entries).Get());
  DataProp target = Listing({"x"});
  target.SetID(40);
  target = source;
  EXPECT_EQ(target.GetID(), 40);
  target.SetID(5001);
  EXPECT_EQ(ToHex(Stored(target)), ToHex(Stored(source)));
  EXPECT_EQ(target.GetWebTag(), "{SIZE}");
  EXPECT_NE(target.GetListItemAt(0), source.GetListItemAt(0));
  EXPECT_EQ(target.CreateListItem(true, -1)->GetID(), 21);
  DataProp copy(source);
  EXPECT_EQ(ToHex(Stored(copy)), ToHex(Stored(source)));
  EXPECT_EQ(copy.GetListItemByID(20), copy.GetListItemAt(1));

  target = DataProp();
  EXPECT_EQ(target.GetListItemsCount(), 0u);
  EXPECT_EQ(target.GetListItemByID(0), nullptr);

  DataProp book = AddressColumn({"Ann"});
  DataProp bookCopy(book);
  AddressBook out;
  bookCopy.GetAddressBook(out);
  EXPECT_EQ(out.GetByID(0)->GetData(Address::Name), "Ann");
}

// Each row changes one setting of the other column: whether CopyFrom
// reports it (every setting the user sees, one row each; two of those the
// user does not see), and whether it is taken (all but the ID and the user
// rights; every field: the copies' test, as CopyFrom takes them alike).
// A column that stays hidden (both hidden first) reports nothing, whatever
// changes; one shown again reports it.
TEST_F(DataPropTest, CopyFromTakesAllButIDAndUserRightsAndReportsWhatTheUserSees) {
  const struct {
    const char* name;
    void (*change)(DataProp&);
    bool bReported, bTaken;
    bool bHidden = false;
  } rows[] = {
      {"summed", [](DataProp& c) { c.SetCanBeSummed(true); }, true, true},
      {"averaged", [](DataProp& c) { c.SetCanBeAveraged(true); }, true, true},
      {"thousands", [](DataProp& c) { c.SetThousandsSep(false); }, true, true},
      {"fractional", [](DataProp& c) { c.SetFractional(true); }, true, true},
      {"decimal zeroes", [](DataProp& c) { c.SetShowDecimalZeroes(false); }, true, true},
      {"zero is empty", [](DataProp& c) { c.SetZeroIsEmpty(false); }, true, true},
      {"date numbers", [](DataProp& c) { c.SetDateTimeNumbers(false); }, true, true},
      {"hours", [](DataProp& c) { c.SetTimeShowHours(true); }, true, true},
      {"seconds", [](DataProp& c) { c.SetTimeShowSeconds(true); }, true, true},
      {"custom width", [](DataProp& c) { c.SetCustomColWidth(80); }, true, true},
      {"width", [](DataProp& c) { c.SetColWidth(DataProp::ColWidth(2)); }, true, true},
      {"alignment", [](DataProp& c) { c.SetColAlignment(DataProp::ColAlign(1)); }, true, true},
      {"type", [](DataProp& c) { c.SetDataType(DataType::Date); }, true, true},
      {"name", [](DataProp& c) { c.SetName("n"); }, true, true},
      {"negative", [](DataProp& c) { c.SetCanBeNegative(false); }, false, true},
      {"description", [](DataProp& c) { c.SetDesc("d"); }, false, true},
      {"ID", [](DataProp& c) { c.SetID(8); }, false, false},
      {"delete", [](DataProp& c) { c.SetUserCanDelete(false, true); }, false, false},
      {"name, hidden", [](DataProp& c) { c.SetName("n"); }, false, true, true},
      {"shown again", [](DataProp& c) { c.SetDisplayed(true); }, true, true, true},
  };
  for (const auto& row : rows) {
    DataProp own, other, expected;
    for (DataProp* pColumn : {&own, &other, &expected}) pColumn->SetDisplayed(!row.bHidden);
    row.change(other);
    EXPECT_EQ(own.CopyFrom(other), row.bReported) << row.name;
    if (row.bTaken) row.change(expected);
    EXPECT_EQ(ToHex(Stored(own)), ToHex(Stored(expected))) << row.name;
  }
}

// Entries move over (other keeps none); their texts and count are a
// change, case counting. Addresses are copied; theirs count too.
TEST_F(DataPropTest, CopyFromMovesEntriesAndCopiesAddresses) {
  DataProp own = Listing({"a", "b"});
  DataProp same = Listing({"a", "b"});
  EXPECT_FALSE(own.CopyFrom(same));
  EXPECT_EQ(same.GetListItemsCount(), 0u);
  EXPECT_EQ(same.GetListItemByID(0), nullptr);
  EXPECT_EQ(own.GetListItemByID(1)->GetTextRepresentation(), "b");
  DataProp recased = Listing({"a", "B"});
  EXPECT_TRUE(own.CopyFrom(recased));
  DataProp longer = Listing({"a", "B", "c"});
  EXPECT_TRUE(own.CopyFrom(longer));
  EXPECT_EQ(own.CreateListItem(true, -1)->GetID(), 3);

  DataProp book = AddressColumn({"Ann"});
  DataProp other(book);
  EXPECT_FALSE(book.CopyFrom(other));
  other.GetAddressBook().GetAt(0)->SetData(Address::Name, "ANN");
  EXPECT_TRUE(book.CopyFrom(other));
  EXPECT_EQ(book.GetAddressBook().GetAt(0)->GetData(Address::Name), "ANN");
  EXPECT_EQ(other.GetAddressBook().GetCount(), 1u);
}

// Usage counts reach entries and addresses alike; the address book
// operations of the column reach its book.
TEST_F(DataPropTest, UsageCountsAndAddressBookOperations) {
  DataProp list = Listing({"a", "b"});
  DataProp column = AddressColumn({"Ann Lee", "b"});
  for (DataProp* pColumn : {&list, &column}) {
    for (int nID : {1, 1, 9}) pColumn->AddUsageCountFor(nID);
  }
  EXPECT_EQ(list.GetListItemByID(1)->GetUsageCount(), 2);
  column.AdjustAddressUsageCounts(1, 0);
  column.AdjustAddressUsageCounts(-1, 7);
  EXPECT_EQ(column.GetAddressBook().GetByID(0)->GetUsageCount(), 1);
  EXPECT_EQ(column.GetAddressBook().GetByID(1)->GetUsageCount(), 1);
  for (DataProp* pColumn : {&list, &column}) pColumn->ClearUsageCounts();
  EXPECT_EQ(list.GetListItemByID(1)->GetUsageCount(), 0);
  EXPECT_EQ(column.GetAddressBook().GetByID(0)->GetUsageCount(), 0);

  column.CreateAddress(6)->SetData(Address::Name, "Bo");
  column.CreateAddress(-1)->SetData(Address::Name, "Lee Roy");
  std::vector<int> ids = {99};
  column.FindAddressIDsContaining("Lee", ids);
  column.FindAddressIDsContaining("lee", ids);
  EXPECT_EQ(ids, (std::vector<int>{99, 0, 7}));
  EXPECT_EQ(column.GetAddressByName("bo", false)->GetID(), 6);
  column.SetAddressBookFlag(false);
  EXPECT_FALSE(column.GetAddressBook().GetByID(6)->GetIsBusiness());
  column.DeleteAddress(6);
  EXPECT_EQ(column.GetAddressBook().GetCount(), 3u);
  column.ClearAddressBook();
  EXPECT_EQ(column.CreateAddress(-1)->GetID(), 0);
}

// Own book A B C D (A used), other A2 C2 (private) d E (E used): A and C
// change, B goes, D only differs in case, E is added as a copy that takes
// the book's business flag and keeps its usage count; the own usage count
// of A is not kept. Reports come in reverse book order. Addresses without
// an ID are never matched: the own one is deleted, other's added.
TEST_F(DataPropTest, SyncAddressesMakesTheBookEqualToTheOther) {
  DataProp column = AddressColumn({"A", "B", "C", "D"});
  column.GetAddressBook().GetByID(0)->RegisterUsage();
  DataProp source = AddressColumn({"A2", "gone", "C2", "d"});
  source.DeleteAddress(1);
  source.CreateAddress(9)->SetData(Address::Name, "E");
  AddressBook& other = source.GetAddressBook();
  other.GetByID(2)->SetIsBusiness(false);
  other.GetByID(9)->SetIsBusiness(false);
  other.GetByID(9)->RegisterUsage();
  std::vector<int> changed = {42};
  std::vector<int> deleted = {42};
  bool bAdded = false;
  const auto sync = [&](std::vector<int> changedIDs, std::vector<int> deletedIDs, bool bAddedOne) {
    column.SyncAddresses(other, changed, deleted, bAdded);
    EXPECT_EQ(changed, changedIDs);
    EXPECT_EQ(deleted, deletedIDs);
    EXPECT_EQ(bAdded, bAddedOne);
  };
  sync({2, 0}, {1}, true);
  const auto address = [](bool bBusiness, int nID, int nCount, const char* pszName) {
    return AddressRecord(7, bBusiness, nID, nCount, AddressFields(pszName, "United States"));
  };
  EXPECT_EQ(ToHex(Stored(column.GetAddressBook())),
            ToHex(AddressBookRecord({address(true, 0, 0, "A2"), address(false, 2, 0, "C2"), address(true, 3, 0, "D"),
                                     address(true, 9, 1, "E")}, true)));
  EXPECT_EQ(column.CreateAddress(-1)->GetID(), 10);
  // The added copy now differs from other's in its flag; the address made
  // after the first sync is not in other.
  sync({9}, {10}, false);

  EXPECT_EQ(column.CreateAddress(-2)->GetID(), -1);
  other.Add(new Address, false);
  sync({}, {-1}, true);
  EXPECT_EQ(column.GetAddressBook().GetAt(4)->GetID(), -1);
  EXPECT_EQ(column.CreateAddress(-1)->GetID(), 11);
}

// Types without entries make none, also when asked for one by its text.
// (Each list type's entry class shows in its archive form and its texts.)
TEST_F(DataPropTest, TypesWithoutEntriesMakeNone) {
  for (DataType::Type nType : {DataType::Text, DataType::AddressBookSelect}) {
    DataProp column = Listing({}, nType);
    EXPECT_EQ(column.CreateListItem(true, -1), nullptr) << DataType::GetText(nType);
    EXPECT_EQ(column.GetListItemByValue("x", true), nullptr) << DataType::GetText(nType);
  }
}

// New entries take the next ID past every one given; an entry made under
// a taken ID is the one found by it; a column deletes only its own.
TEST_F(DataPropTest, EntriesAreNumberedAndOwnedByTheirColumn) {
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
TEST_F(DataPropTest, ValueLookupFindAndTypeChanges) {
  DataProp column = Listing({"Red", "red", "sky blue", "red"});
  ListItem* second = column.GetListItemAt(1);
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
// new entry is placed by its value. (The document's list upkeep places
// entries created by their texts.)
TEST_F(DataPropTest, KeptSortedEntriesArePlacedByValue) {
  DataProp numbers = Listing({"30", "-5", "7"}, DataType::NumberListSelect);
  numbers.SetKeepListItemsSorted(false);
  EXPECT_EQ(IDs(numbers), (std::vector<int>{0, 1, 2}));
  numbers.SetKeepListItemsSorted(true);
  EXPECT_EQ(IDs(numbers), (std::vector<int>{1, 2, 0}));
  numbers.CreateListItem(true, -1);
  EXPECT_EQ(IDs(numbers), (std::vector<int>{1, 3, 2, 0}));
}

// One row per kind of entry (by value: 2 before 10, "apple" before "Banana"),
// per type without entries of the kind, and per missing entry.
TEST_F(DataPropTest, CompareListItemsByTheColumnsType) {
  ListItemNumber n2, n10;
  n2.SetNumber(2);
  n10.SetNumber(10);
  ListItemText apple;
  ListItemTextDesc banana;
  apple.SetTextRepresentation("apple");
  banana.SetTextRepresentation("Banana");
  ListItemDouble half, quarter;
  half.SetNumber(0.5);
  quarter.SetNumber(0.25);
  const struct {
    const ListItem *a, *b;
    DataType::Type nType;
    bool bBefore;
  } rows[] = {{&n2, &n10, DataType::NumberListSuggested, true},      {&n2, &n10, DataType::ValueListSelect, false},
              {&n2, &n10, DataType::Number, false},                  {&apple, &banana, DataType::DescValueListSelect, true},
              {&quarter, &half, DataType::DecimalListSelect, true},  {nullptr, &half, DataType::DecimalListSelect, true},
              {&half, nullptr, DataType::DecimalListSelect, false}, {nullptr, nullptr, DataType::DecimalListSelect, false}};
  for (size_t i = 0; i < sizeof rows / sizeof rows[0]; ++i) {
    EXPECT_EQ(DataProp::CompareListItems(rows[i].a, rows[i].b, rows[i].nType), rows[i].bBefore) << "row " << i;
  }
}

TEST_F(DataPropTest, DisplayOrderSwapAndPosition) {
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

  EXPECT_FALSE(WithEntries({}).SwapListItemArrayPosition(0, 1));
  DataProp column = WithEntries({-1, -1, -1});
  for (size_t b : {1, 3}) EXPECT_FALSE(column.SwapListItemArrayPosition(1, b) || column.SwapListItemArrayPosition(b, 1));
  EXPECT_TRUE(column.SwapListItemArrayPosition(0, 2));
  EXPECT_EQ(IDs(column), (std::vector<int>{2, 1, 0}));
  EXPECT_EQ(column.GetDisplayOrderForListItemID(0), 2u);
  EXPECT_EQ(column.GetDisplayOrderForListItemID(5), 3u);
  EXPECT_EQ(column.GetDisplayOrderForListItemID(-1), 3u);
}

// The column takes over the given entries and leaves those it held to the
// caller; an empty vector deletes every entry.
TEST_F(DataPropTest, ReplaceListItemsTakesOverTheGivenEntries) {
  DataProp column = Listing({"kept", "dropped"});
  ListItem* kept = column.GetListItemAt(0);
  std::unique_ptr<ListItem> dropped(column.GetListItemAt(1));
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
TEST_F(DataPropTest, RefreshRenumbersOnlyEntriesThatWereNeverNumbered) {
  const struct {
    std::vector<int> created;
    int nDeleted;  // the ID deleted before the refresh, or -1
    std::vector<int> ids;
    int nNext;
  } rows[] = {{{0, 0, -2}, -1, {0, 1, 2}, 3}, {{5, 0, 30}, 30, {5, 0}, 6}, {{0}, -1, {0}, 1}, {{8}, 8, {}, 0}};
  for (const auto& row : rows) {
    DataProp column = Listing({});
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

TEST_F(DataPropTest, EveryVersionLoadsTheFieldsItHolds) {
  const FieldsCase rows[] = {
      {"1: flag A leaves Number", 1, NUMBER, [](ColumnArchive& c) { c.bObsoleteA = true; }},
      {"2: CanBeAveraged", 2, TEXT, [](ColumnArchive& c) { c.bCanBeAveraged = true; }},
      {"3: TimeShowSeconds", 3, TEXT, [](ColumnArchive& c) { c.bTimeShowSeconds = true; }},
      {"4: UserChangeDefValue", 4, TEXT, [](ColumnArchive& c) { c.bUserChangeDefValue = false; }},
      {"4: flag A makes Decimal Monetary", 4, DECIMAL, [](ColumnArchive& c) { c.bObsoleteA = true; },
       [](ColumnArchive& c) { c.nType = MONETARY; }},
      {"4: Decimal without flag A", 4, DECIMAL, [](ColumnArchive&) {}},
      {"5: CanBeNegative, ZeroIsEmpty, UserCanDeleteWarning", 5, TEXT,
       [](ColumnArchive& c) {
         c.bCanBeNegative = c.bZeroIsEmpty = false;
         c.bUserCanDeleteWarning = true;
       }},
      {"6: no address book in a text column", 6, TEXT, [](ColumnArchive&) {}},
      {"7: CanBeSummed of Text is reset", 7, TEXT,
       [](ColumnArchive& c) { c.bCanBeSummed = c.bSortValuesByListOrder = true; },
       [](ColumnArchive& c) { c.bCanBeSummed = false; }},
      {"7: CanBeSummed of Monetary kept", 7, MONETARY, [](ColumnArchive& c) { c.bCanBeSummed = true; }},
      {"8: CanBeSummed of Text kept", 8, TEXT, [](ColumnArchive& c) { c.bCanBeSummed = true; }},
      {"8: flag B makes Roman numbers", 8, TEXT, [](ColumnArchive& c) { c.bObsoleteB = true; },
       [](ColumnArchive& c) { c.nType = DataType::NumberWithRomanOrText; }},
      {"9: number display and texts", 9, NUMBER,
       [](ColumnArchive& c) {
         c.bFractional = c.bShowSignAlways = true;
         c.bShowDecimalZeroes = false;
         c.prefix = "$";
         c.suffix = " kg";
       }},
      {"10: TimeShowHours", 10, TEXT, [](ColumnArchive& c) { c.bTimeShowHours = true; }},
      {"11: flag B and HiddenFromUI", 11, TEXT, [](ColumnArchive& c) { c.bObsoleteB = c.bHiddenFromUI = true; },
       [](ColumnArchive& c) { c.nType = DataType::NumberWithRomanOrText; }},
      {"11: Text without flag B", 11, TEXT, [](ColumnArchive&) {}},
      {"13: KeepListItemsSorted", 13, TEXT, [](ColumnArchive& c) { c.bKeepListItemsSorted = true; }},
      {"14: nothing after the texts", 14, TEXT, [](ColumnArchive& c) { c.bHiddenFromUI = true; }},
      {"15: every field differs from the default", 15, DataType::ValueListSelect, ChangeEveryField, nullptr, 2,
       ByteWriter().Raw(TextEntry(0, 0, "M")).Raw(TextEntry(1, 1, "S")).Get()},
      {"6: an address book, each address with its own flag", 6, DataType::AddressBookSelect,
       [](ColumnArchive&) {}, nullptr, -1,
       AddressBookRecord({AddressRecord(7, false, 2, 1, AddressFields("Cy", ""))}, true)},
      {"11: flag B leaves a list type", 11, DataType::NumberListSelect,
       [](ColumnArchive& c) { c.bObsoleteB = true; }, nullptr, 0},
      {"13: entries raise the next ID past theirs", 13, DataType::NumberListSelect, [](ColumnArchive&) {},
       [](ColumnArchive& c) { c.nNextListItemID = 5; }, 2,
       ByteWriter().Raw(Entry(4, 1).Int(40).Get()).Raw(Entry(2, 0).Int(20).Get()).Get()},
      {"14: described entries", 14, DataType::DescValueListSuggested,
       [](ColumnArchive& c) { c.nNextListItemID = 9; }, nullptr, 1, TextDescEntry(0, 0, "S", "small")},
      // Entries of version 1 (version, ID, text part) have no usage count; the
      // number part's own version word (9 here) is read and ignored.
      {"12: an entry of version 1", 12, DataType::ValueListSelect, [](ColumnArchive& c) { c.nNextListItemID = 5; },
       nullptr, 1, ByteWriter().Word(1).Int(4).Word(1).Text("old").Get(), TextEntry(4, 0, "old")},
      {"12: a number part of another version", 12, DataType::NumberListSelect,
       [](ColumnArchive& c) { c.nNextListItemID = 2; }, nullptr, 1,
       ByteWriter().Word(2).Int(1).Int(3).Word(9).Int(5).Get(), Entry(1, 3).Int(5).Get()},
      {"14: decimal entries", 14, DataType::DecimalListSelect, [](ColumnArchive& c) { c.nNextListItemID = 1; },
       nullptr, 1, Entry(0, 0).Double(2.5).Get()},
      {"16: read as the current version", 16, DataType::ValueListSelect,
       [](ColumnArchive& c) { c.bUseWithDataSubItem = true; }, [](ColumnArchive& c) { c.nNextListItemID = 1; }, 2,
       ByteWriter().Raw(TextEntry(0, 0, "a")).Raw(TextEntry(0, 0, "b")).Get()},
  };
  for (const FieldsCase& row : rows) {
    SCOPED_TRACE(row.name);
    ColumnArchive old(row.nVersion, row.nType);
    row.set(old);
    ColumnArchive current = old;
    current.nVersion = 15;
    if (row.then) row.then(current);
    ByteWriter bytes = old.Head();
    ByteWriter expected = current.Head();
    if (row.nEntries >= 0) {
      bytes.Counter(static_cast<unsigned>(row.nEntries), row.nVersion < 14);
      expected.Counter(static_cast<unsigned>(row.nEntries), false);
    } else if (row.entries.empty() && row.nVersion < 14) {
      bytes.Int(0);  // the unused word of a column without entries
    }
    DataProp column = Loaded<DataProp>(bytes.Raw(row.entries).Get());
    EXPECT_EQ(ToHex(Stored(column)), ToHex(expected.Raw(row.stored.empty() ? row.entries : row.stored).Get()));
    ExpectEveryCutThrows(bytes.Get());
  }
}

// Before version 6 an address-book column holds old-address records (from
// record version 2 with a usage count, taken when the address has none).
TEST_F(DataPropTest, AddressBookColumnsBeforeVersionSix) {
  const Bytes address = AddressRecord(7, true, 99, 0, AddressFields("Ann", ""));
  ByteWriter v5 = ColumnArchive(5, DataType::AddressBookSuggested).Head();
  v5.Counter(3, true);
  v5.Word(1).Int(4).Word(0).Raw(address);                                                   // record 1: ID
  v5.Word(2).Int(7).Int(5).Word(0).Raw(address);                                            // record 2: ID, count
  v5.Word(2).Int(8).Int(5).Word(0).Raw(AddressRecord(7, true, 99, 3, AddressFields("Bo", "")));  // own count
  DataProp column = Loaded<DataProp>(v5.Get());
  const Bytes book = AddressBookRecord({AddressRecord(7, true, 4, 0, AddressFields("Ann", "")),
                                        AddressRecord(7, true, 7, 5, AddressFields("Ann", "")),
                                        AddressRecord(7, true, 8, 3, AddressFields("Bo", ""))}, true);
  EXPECT_EQ(ToHex(Stored(column)), ToHex(ColumnArchive(15, DataType::AddressBookSuggested).Head().Raw(book).Get()));
  EXPECT_EQ(column.CreateAddress(-1)->GetID(), 9);
  ExpectEveryCutThrows(v5.Get());
}

// Loading replaces entries and addresses, whatever the type loaded.
TEST_F(DataPropTest, LoadingReplacesEntriesAndAddresses) {
  // Text columns without entries; before version 14 they end in a 32-bit word.
  for (const Bytes& text : {ColumnArchive(13, TEXT).Head().Int(0).Get(), ColumnArchive(15, TEXT).Head().Get()}) {
    DataProp column;
    column.SetDataType(DataType::ValueListSelect);
    column.GetListItemByValue("old", true);
    column.CreateAddress(-1);
    EXPECT_EQ(Load(text, [&](CArchive& ar) { column.Serialize(ar); }), 0u);
    EXPECT_EQ(column.GetListItemsCount(), 0u);
    EXPECT_EQ(column.GetListItemByID(0), nullptr);
    EXPECT_EQ(column.GetAddressBook().GetCount(), 0u);
  }
}

TEST_F(DataPropTest, OversizedCountsThrowBeforeAllocating) {
  for (const Bytes& bytes : {ColumnArchive(15, DataType::ValueListSelect).Head().Counter(1ull << 40, false).Get(),
                             ColumnArchive(5, DataType::AddressBookSelect).Head().Counter(0xFFFFFFFFu, true).Get()}) {
    EXPECT_THROW(Loaded<DataProp>(bytes), CArchiveException);
  }
}
