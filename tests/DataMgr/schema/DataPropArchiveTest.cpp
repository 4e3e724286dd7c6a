#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "DataMgr/schema/DataProp.h"
#include "tests/DataMgr/schema/SchemaArchiveWriter.h"
#include "tests/support/LocaleTestSupport.h"

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
using test_support::Store;
using test_support::ToHex;

namespace {

class DataPropArchiveTest : public test_support::UsLocaleTest {};

const unsigned TEXT = DataType::Text;
const unsigned NUMBER = DataType::Number;
const unsigned DECIMAL = DataType::Decimal;
const unsigned MONETARY = DataType::Monetary;

ColumnArchive Version(unsigned nVersion, unsigned nType) {
  ColumnArchive column;
  column.nVersion = nVersion;
  column.nType = nType;
  column.name = "Col";
  return column;
}

// A column without entries: before version 14 it ends in a 32-bit word.
Bytes NoEntries(const ColumnArchive& column) {
  return column.nVersion < 14 ? column.Head().Int(0).Get() : column.Head().Get();
}

Bytes Stored(DataProp& column) {
  return Store([&](CArchive& ar) { column.Serialize(ar); });
}

void ExpectEveryCutThrows(const Bytes& bytes) {
  ExpectEveryCutThrowsEndOfFile(bytes, [](CArchive& ar) { DataProp().Serialize(ar); });
}

// A column of an old version, with the fields that version holds set by
// set, and how the current version stores it once loaded: the same fields,
// changed by then if given, and the same entries (after a counter, 32-bit
// before version 14, for the list types) or address book.
struct FieldsCase {
  const char* name;
  unsigned nVersion, nType;
  std::function<void(ColumnArchive&)> set, then = nullptr;
  int nEntries = -1;  // -1: not a list type
  Bytes entries = {};
};

const std::vector<FieldsCase>& FieldsCases() {
  static const std::vector<FieldsCase> cases = {
      {"1: every field it has", 1, NUMBER,
       [](ColumnArchive& c) {
         c.bCanBeSummed = true;
         c.bDisplayed = c.bThousandsSep = c.bDateTimeNumbers = c.bUserCanDelete = false;
         c.bUserChangeDataType = c.bUserChangeValue = false;
         c.nID = 3;
         c.nNextListItemID = 2;
         c.nCustomColWidth = 50;
         c.nColWidth = 1;
         c.nColAlign = 2;
         c.desc = "about";
         c.name = "Pages No.";
         c.defaultValue = "1";
       }},
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
      {"15: UseWithDataSubItem", 15, TEXT, [](ColumnArchive& c) { c.bUseWithDataSubItem = true; }},
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
      {"16: read as the current version", 16, DataType::ValueListSelect,
       [](ColumnArchive& c) { c.bUseWithDataSubItem = true; }, [](ColumnArchive& c) { c.nNextListItemID = 1; }, 2,
       ByteWriter().Raw(TextEntry(0, 0, "a")).Raw(TextEntry(0, 0, "b")).Get()},
  };
  return cases;
}

}  // namespace

TEST_F(DataPropArchiveTest, EveryVersionLoadsTheFieldsItHolds) {
  for (const FieldsCase& row : FieldsCases()) {
    SCOPED_TRACE(row.name);
    ColumnArchive old = Version(row.nVersion, row.nType);
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
    EXPECT_EQ(ToHex(Stored(column)), ToHex(expected.Raw(row.entries).Get()));
    ExpectEveryCutThrows(bytes.Get());
  }
}

// The current form of an entry-list column and of an address-book column
// (each address keeps its own business flag); every field differs from
// the default in one of them.
TEST_F(DataPropArchiveTest, CurrentFormsRoundTrip) {
  ColumnArchive list = Version(15, DataType::ValueListSelect);
  list.nID = 5001;
  list.name = "Size";
  list.desc = "d";
  list.defaultValue = "M";
  list.prefix = "<";
  list.suffix = ">";
  list.bCanBeSummed = list.bCanBeAveraged = list.bFractional = list.bShowSignAlways = list.bUserCanDeleteWarning = true;
  list.bTimeShowHours = list.bTimeShowSeconds = list.bSortValuesByListOrder = list.bHiddenFromUI = true;
  list.bUseWithDataSubItem = true;
  list.bCanBeNegative = list.bDisplayed = list.bThousandsSep = list.bShowDecimalZeroes = list.bZeroIsEmpty = false;
  list.bDateTimeNumbers = list.bUserCanDelete = list.bUserChangeDataType = list.bUserChangeValue = false;
  list.bUserChangeDefValue = false;
  list.nNextListItemID = 2;
  list.nCustomColWidth = 120;
  list.nColWidth = 2;
  list.nColAlign = 0x101;
  ColumnArchive book = Version(15, DataType::AddressBookSelect);
  book.bKeepListItemsSorted = true;
  const Bytes forms[] = {
      list.Head().Counter(2, false).Raw(TextEntry(0, 0, "S")).Raw(TextEntry(1, 1, "M")).Get(),
      book.Head().Raw(AddressBookRecord({AddressRecord(7, true, 4, 0, AddressFields("Ann", "US"))}, false)).Get()};
  for (const Bytes& form : forms) {
    DataProp column = Loaded<DataProp>(form);
    EXPECT_EQ(ToHex(Stored(column)), ToHex(form));
    ExpectEveryCutThrows(form);
  }
}

// Before version 6 an address-book column holds old-address records (from
// record version 2 with a usage count, taken when the address has none).
TEST_F(DataPropArchiveTest, AddressBookColumnsBeforeVersionSix) {
  const Bytes address = AddressRecord(7, true, 99, 0, AddressFields("Ann", ""));
  ByteWriter v5 = Version(5, DataType::AddressBookSuggested).Head();
  v5.Counter(3, true);
  v5.Word(1).Int(4).Word(0).Raw(address);                                                   // record 1: ID
  v5.Word(2).Int(7).Int(5).Word(0).Raw(address);                                            // record 2: ID, count
  v5.Word(2).Int(8).Int(5).Word(0).Raw(AddressRecord(7, true, 99, 3, AddressFields("Bo", "")));  // own count
  DataProp column = Loaded<DataProp>(v5.Get());
  const AddressBook& book = column.GetAddressBook();
  ASSERT_EQ(book.GetCount(), 3u);
  EXPECT_EQ(book.GetAt(0)->GetID(), 4);
  EXPECT_EQ(book.GetAt(0)->GetUsageCount(), 0);
  EXPECT_EQ(book.GetAt(1)->GetUsageCount(), 5);
  EXPECT_EQ(book.GetAt(2)->GetUsageCount(), 3);
  EXPECT_EQ(book.GetAt(2)->GetData(Address::Name), "Bo");
  EXPECT_EQ(column.CreateAddress(-1)->GetID(), 9);
  ExpectEveryCutThrows(v5.Get());
}

// Loading replaces entries and addresses, whatever the type loaded.
TEST_F(DataPropArchiveTest, LoadingReplacesEntriesAndAddresses) {
  for (const Bytes& text : {NoEntries(Version(13, TEXT)), NoEntries(Version(15, TEXT))}) {
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

TEST_F(DataPropArchiveTest, OversizedCountsThrowBeforeAllocating) {
  for (const Bytes& bytes : {Version(15, DataType::ValueListSelect).Head().Counter(1ull << 40, false).Get(),
                             Version(5, DataType::AddressBookSelect).Head().Counter(0xFFFFFFFFu, true).Get()}) {
    EXPECT_THROW(Loaded<DataProp>(bytes), CArchiveException);
  }
}
