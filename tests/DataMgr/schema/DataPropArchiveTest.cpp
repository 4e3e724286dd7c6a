#include <gtest/gtest.h>

#include <vector>

#include "DataMgr/schema/DataProp.h"
#include "DataMgr/schema/ListItemTextDesc.h"
#include "tests/DataMgr/schema/SchemaArchiveWriter.h"
#include "tests/support/LocaleTestSupport.h"

using schema_test::AddressBookRecord;
using schema_test::AddressFields;
using schema_test::AddressRecord;
using schema_test::ColumnArchive;
using schema_test::NumberEntry;
using schema_test::TextDescEntry;
using schema_test::TextEntry;
using test_support::ByteWriter;
using test_support::Bytes;
using test_support::ExpectArchiveForm;
using test_support::ExpectEveryCutThrowsEndOfFile;
using test_support::Load;

namespace {

class DataPropArchiveTest : public test_support::UsLocaleTest {};

const unsigned TEXT = DataType::Text;
const unsigned NUMBER = DataType::Number;
const unsigned DECIMAL = DataType::Decimal;

ColumnArchive Version(unsigned nVersion, unsigned nType) {
  ColumnArchive column;
  column.nVersion = nVersion;
  column.nType = nType;
  column.name = "Col";
  return column;
}

// The 32-bit word that columns without entries end in before version 14.
Bytes NoEntries(const ColumnArchive& column) { return column.Head().Int(0).Get(); }

}  // namespace

TEST_F(DataPropArchiveTest, StoresAValueListColumnAsVersionFifteen) {
  DataProp column;
  column.SetDataType(DataType::ValueListSelect);
  column.SetID(5001);
  column.SetName("Size");
  column.SetDesc("d");
  column.SetDefaultValue("M");
  column.SetPrefix("<");
  column.SetSuffix(">");
  column.SetCanBeSummed(true);
  column.SetShowSignAlways(true);
  column.SetHiddenFromUI(true);
  column.SetUseWithDataSubItem(true);
  column.SetUserCanDelete(false, true);
  column.SetCustomColWidth(120);
  column.SetColWidth(DataProp::ColWidth(2));
  column.SetColAlignment(DataProp::ColAlign(0x101));
  column.GetListItemByValue("S", true);
  column.GetListItemByValue("M", true)->RegisterUsage();

  ColumnArchive expected = Version(15, DataType::ValueListSelect);
  expected.nID = 5001;
  expected.name = "Size";
  expected.desc = "d";
  expected.defaultValue = "M";
  expected.prefix = "<";
  expected.suffix = ">";
  expected.bCanBeSummed = true;
  expected.bShowSignAlways = true;
  expected.bHiddenFromUI = true;
  expected.bUseWithDataSubItem = true;
  expected.bUserCanDelete = false;
  expected.bUserCanDeleteWarning = true;
  expected.nNextListItemID = 2;
  expected.nCustomColWidth = 120;
  expected.nColWidth = 2;
  expected.nColAlign = 0x101;
  ExpectArchiveForm(column,
                    expected.Head().Counter(2, false).Raw(TextEntry(0, 0, "S")).Raw(TextEntry(1, 1, "M")).Get());
}

TEST_F(DataPropArchiveTest, StoresAddressBookAndPlainColumns) {
  DataProp book;
  book.SetDataType(DataType::AddressBookSelect);
  book.SetName("Col");
  book.CreateAddress(4)->SetData(Address::Name, "Ann");
  ExpectArchiveForm(
      book, Version(15, DataType::AddressBookSelect)
                .Head()
                .Raw(AddressBookRecord({AddressRecord(7, true, 4, 0, AddressFields("Ann", "United States"))}, true))
                .Get());

  DataProp text;
  text.SetName("Col");
  text.SetTimeShowHours(true);
  ColumnArchive expected = Version(15, TEXT);
  expected.bTimeShowHours = true;
  ExpectArchiveForm(text, expected.Head().Get());
}

TEST_F(DataPropArchiveTest, LoadsVersionOne) {
  ColumnArchive v1 = Version(1, NUMBER);
  v1.bCanBeSummed = true;
  v1.bDisplayed = false;
  v1.bThousandsSep = false;
  v1.bDateTimeNumbers = false;
  v1.bUserCanDelete = false;
  v1.bUserChangeDataType = false;
  v1.bUserChangeValue = false;
  v1.nID = 3;
  v1.nNextListItemID = 2;
  v1.nCustomColWidth = 50;
  v1.desc = "about";
  v1.name = "Pages No.";
  v1.defaultValue = "1";
  DataProp column = test_support::Loaded<DataProp>(NoEntries(v1));
  EXPECT_EQ(column.GetDataType(), DataType::Number);
  EXPECT_TRUE(column.GetCanBeSummed());
  EXPECT_FALSE(column.GetCanBeAveraged());
  EXPECT_FALSE(column.GetDisplayed());
  EXPECT_FALSE(column.GetThousandsSep());
  EXPECT_FALSE(column.GetDateTimeNumbers());
  EXPECT_FALSE(column.GetUserCanDelete());
  EXPECT_FALSE(column.GetUserChangeDataType());
  EXPECT_FALSE(column.GetUserChangeValue());
  EXPECT_TRUE(column.GetUserChangeDefValue());
  EXPECT_EQ(column.GetID(), 3);
  EXPECT_EQ(column.GetCustomColWidth(), 50u);
  EXPECT_EQ(column.GetDesc(), "about");
  EXPECT_EQ(column.GetName(), "Pages No.");
  EXPECT_EQ(column.GetWebTag(), "{PAGES_NO}");
  EXPECT_EQ(column.GetDefaultValue(), "1");
}

TEST_F(DataPropArchiveTest, LoadsVersionsTwoToFiveFlags) {
  ColumnArchive v2 = Version(2, TEXT);
  v2.bCanBeAveraged = true;
  EXPECT_TRUE(test_support::Loaded<DataProp>(NoEntries(v2)).GetCanBeAveraged());

  ColumnArchive v4 = Version(4, TEXT);
  v4.bTimeShowSeconds = true;
  v4.bUserChangeDefValue = false;
  DataProp column4 = test_support::Loaded<DataProp>(NoEntries(v4));
  EXPECT_TRUE(column4.GetTimeShowSeconds());
  EXPECT_FALSE(column4.GetUserChangeDefValue());

  ColumnArchive v5 = Version(5, TEXT);
  v5.bCanBeNegative = false;
  v5.bZeroIsEmpty = false;
  v5.bUserCanDeleteWarning = true;
  DataProp column5 = test_support::Loaded<DataProp>(NoEntries(v5));
  EXPECT_FALSE(column5.GetCanBeNegative());
  EXPECT_FALSE(column5.GetZeroIsEmpty());
  EXPECT_TRUE(column5.GetUserCanDeleteWarning());
}

TEST_F(DataPropArchiveTest, ObsoleteFlagAMakesAnOldDecimalColumnMonetary) {
  ColumnArchive set = Version(4, DECIMAL);
  set.bObsoleteA = true;
  EXPECT_EQ(test_support::Loaded<DataProp>(NoEntries(set)).GetDataType(), DataType::Monetary);
  set.nVersion = 1;
  EXPECT_EQ(test_support::Loaded<DataProp>(NoEntries(set)).GetDataType(), DataType::Monetary);
  set.nType = NUMBER;
  EXPECT_EQ(test_support::Loaded<DataProp>(NoEntries(set)).GetDataType(), DataType::Number);

  ColumnArchive clear = Version(4, DECIMAL);
  EXPECT_EQ(test_support::Loaded<DataProp>(NoEntries(clear)).GetDataType(), DataType::Decimal);
  ColumnArchive v5 = Version(5, DECIMAL);
  EXPECT_EQ(test_support::Loaded<DataProp>(NoEntries(v5)).GetDataType(), DataType::Decimal);
}

TEST_F(DataPropArchiveTest, CanBeSummedOfNonNumberColumnsIsResetBeforeVersionEight) {
  ColumnArchive v7 = Version(7, TEXT);
  v7.bCanBeSummed = true;
  v7.bSortValuesByListOrder = true;
  DataProp text7 = test_support::Loaded<DataProp>(NoEntries(v7));
  EXPECT_FALSE(text7.GetCanBeSummed());
  EXPECT_TRUE(text7.GetSortValuesByListOrder());
  for (unsigned nType : {0u, 1u, 2u, 3u, 28u, 30u, 31u}) {
    v7.nType = nType;
    EXPECT_TRUE(test_support::Loaded<DataProp>(NoEntries(v7)).GetCanBeSummed()) << "type " << nType;
  }
  ColumnArchive v8 = Version(8, TEXT);
  v8.bCanBeSummed = true;
  EXPECT_TRUE(test_support::Loaded<DataProp>(NoEntries(v8)).GetCanBeSummed());
}

TEST_F(DataPropArchiveTest, ObsoleteFlagBMakesNumberWithRomanOrText) {
  for (unsigned nVersion : {8u, 11u}) {
    ColumnArchive set = Version(nVersion, TEXT);
    set.bObsoleteB = true;
    set.bHiddenFromUI = true;
    DataProp column = test_support::Loaded<DataProp>(NoEntries(set));
    EXPECT_EQ(column.GetDataType(), DataType::NumberWithRomanOrText) << nVersion;
    EXPECT_EQ(column.GetHiddenFromUI(), nVersion >= 11);

    ColumnArchive clear = Version(nVersion, TEXT);
    EXPECT_EQ(test_support::Loaded<DataProp>(NoEntries(clear)).GetDataType(), DataType::Text);

    ColumnArchive list = Version(nVersion, DataType::NumberListSelect);
    list.bObsoleteB = true;
    EXPECT_EQ(test_support::Loaded<DataProp>(list.Head().Counter(0, true).Get()).GetDataType(), DataType::NumberListSelect);
  }
}

TEST_F(DataPropArchiveTest, LoadsVersionNineAndThirteenFields) {
  ColumnArchive v9 = Version(9, NUMBER);
  v9.bFractional = true;
  v9.bShowDecimalZeroes = false;
  v9.bShowSignAlways = true;
  v9.prefix = "$";
  v9.suffix = " kg";
  DataProp column9 = test_support::Loaded<DataProp>(NoEntries(v9));
  EXPECT_TRUE(column9.GetFractional());
  EXPECT_FALSE(column9.GetShowDecimalZeroes());
  EXPECT_TRUE(column9.GetShowSignAlways());
  EXPECT_EQ(column9.GetPrefix(), "$");
  EXPECT_EQ(column9.GetSuffix(), " kg");

  ColumnArchive v13 = Version(13, TEXT);
  v13.bKeepListItemsSorted = true;
  v13.bTimeShowHours = true;
  DataProp column13 = test_support::Loaded<DataProp>(NoEntries(v13));
  EXPECT_TRUE(column13.GetKeepListItemsSorted());
  EXPECT_TRUE(column13.GetTimeShowHours());
}

TEST_F(DataPropArchiveTest, ListEntriesInOldAndNewCounterForm) {
  ColumnArchive v13 = Version(13, DataType::NumberListSelect);
  v13.nNextListItemID = 0;
  DataProp old = test_support::Loaded<DataProp>(v13.Head().Counter(2, true).Raw(NumberEntry(4, 1, 40)).Raw(NumberEntry(2, 0, 20)).Get());
  ASSERT_EQ(old.GetListItemsCount(), 2u);
  EXPECT_EQ(old.GetListItemByID(4)->GetTextRepresentation(), "40");
  EXPECT_EQ(old.GetListItemByID(4)->GetUsageCount(), 1);
  EXPECT_EQ(old.CreateListItem(true, -1)->GetID(), 5);

  ColumnArchive v14 = Version(14, DataType::DescValueListSuggested);
  v14.nNextListItemID = 9;
  DataProp current = test_support::Loaded<DataProp>(v14.Head().Counter(1, false).Raw(TextDescEntry(0, 0, "S", "small")).Get());
  auto* entry = dynamic_cast<ListItemTextDesc*>(current.GetListItemByID(0));
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->GetDesc(), "small");
  EXPECT_EQ(current.CreateListItem(true, -1)->GetID(), 9);
}

TEST_F(DataPropArchiveTest, OldFilesWithUnnumberedEntriesCanBeRenumbered) {
  ColumnArchive v13 = Version(13, DataType::ValueListSelect);
  DataProp column = test_support::Loaded<DataProp>(v13.Head().Counter(2, true).Raw(TextEntry(0, 0, "a")).Raw(TextEntry(0, 0, "b")).Get());
  column.RefreshNextListItemID();
  EXPECT_EQ(column.GetListItemByID(0)->GetTextRepresentation(), "a");
  EXPECT_EQ(column.GetListItemByID(1)->GetTextRepresentation(), "b");
}

TEST_F(DataPropArchiveTest, AddressBookColumnsOfVersionFiveReadOldAddressRecords) {
  const Bytes address = AddressRecord(7, true, 99, 0, AddressFields("Ann", ""));
  const Bytes counted = AddressRecord(7, true, 99, 3, AddressFields("Bo", ""));
  ColumnArchive v5 = Version(5, DataType::AddressBookSuggested);
  ByteWriter w = v5.Head();
  w.Counter(3, true);
  w.Word(1).Int(4).Word(0).Raw(address);
  w.Word(2).Int(7).Int(5).Word(0).Raw(address);
  w.Word(2).Int(8).Int(5).Word(0).Raw(counted);
  DataProp column = test_support::Loaded<DataProp>(w.Get());
  const AddressBook& book = column.GetAddressBook();
  ASSERT_EQ(book.GetCount(), 3u);
  EXPECT_EQ(book.GetAt(0)->GetID(), 4);
  EXPECT_EQ(book.GetAt(0)->GetUsageCount(), 0);
  EXPECT_EQ(book.GetAt(1)->GetID(), 7);
  EXPECT_EQ(book.GetAt(1)->GetUsageCount(), 5);
  EXPECT_EQ(book.GetAt(2)->GetUsageCount(), 3);
  EXPECT_EQ(book.GetAt(2)->GetData(Address::Name), "Bo");
  EXPECT_EQ(column.CreateAddress(-1)->GetID(), 9);
}

TEST_F(DataPropArchiveTest, AddressBookColumnsFromVersionSixHoldTheBook) {
  ColumnArchive v6 = Version(6, DataType::AddressBookSelect);
  const Bytes book = AddressBookRecord({AddressRecord(6, false, 2, 1, AddressFields("Cy", ""))}, false);
  DataProp column = test_support::Loaded<DataProp>(v6.Head().Raw(book).Get());
  ASSERT_EQ(column.GetAddressBook().GetCount(), 1u);
  EXPECT_FALSE(column.GetAddressBook().GetIsBusiness());
  EXPECT_EQ(column.GetAddressBook().GetByID(2)->GetData(Address::Name), "Cy");
}

TEST_F(DataPropArchiveTest, ColumnsWithoutEntriesEndAfterTheirTextsFromVersionFourteen) {
  ColumnArchive v14 = Version(14, TEXT);
  v14.bHiddenFromUI = true;
  DataProp column = test_support::Loaded<DataProp>(v14.Head().Get());
  EXPECT_TRUE(column.GetHiddenFromUI());
  EXPECT_FALSE(column.GetUseWithDataSubItem());

  ColumnArchive v15 = Version(15, TEXT);
  v15.bUseWithDataSubItem = true;
  EXPECT_TRUE(test_support::Loaded<DataProp>(v15.Head().Get()).GetUseWithDataSubItem());
}

TEST_F(DataPropArchiveTest, NewerVersionsAreReadWithTheNewestRules) {
  ColumnArchive v16 = Version(16, DataType::ValueListSelect);
  v16.bUseWithDataSubItem = true;
  DataProp column = test_support::Loaded<DataProp>(v16.Head().Counter(1, false).Raw(TextEntry(0, 0, "x")).Get());
  EXPECT_TRUE(column.GetUseWithDataSubItem());
  EXPECT_EQ(column.GetListItemByID(0)->GetTextRepresentation(), "x");
}

// Before version 14 a text column ends in an ignored word, from 14 on in
// nothing; either way it holds no entries or addresses once loaded.
TEST_F(DataPropArchiveTest, LoadingReplacesEntriesAndAddresses) {
  for (const Bytes& text : {NoEntries(Version(13, TEXT)), Version(15, TEXT).Head().Get()}) {
    DataProp column;
    column.SetDataType(DataType::ValueListSelect);
    column.GetListItemByValue("old", true);
    column.CreateAddress(-1);
    EXPECT_EQ(Load(text, [&](CArchive& ar) { column.Serialize(ar); }), 0u);
    EXPECT_EQ(column.GetDataType(), DataType::Text);
    EXPECT_EQ(column.GetListItemsCount(), 0u);
    EXPECT_EQ(column.GetListItemByID(0), nullptr);
    EXPECT_EQ(column.GetAddressBook().GetCount(), 0u);
  }
}

TEST_F(DataPropArchiveTest, EveryFixtureCutShortThrows) {
  ColumnArchive v1 = Version(1, TEXT);
  ColumnArchive v5 = Version(5, DataType::AddressBookSuggested);
  ColumnArchive v13 = Version(13, DataType::NumberListSelect);
  ColumnArchive v15 = Version(15, DataType::AddressBookSelect);
  ColumnArchive v15list = Version(15, DataType::DescValueListSelect);
  const std::vector<Bytes> fixtures = {
      NoEntries(v1),
      NoEntries(Version(8, TEXT)),
      v5.Head().Counter(1, true).Word(2).Int(1).Int(2).Word(0).Raw(AddressRecord(7, true, 0, 0, {"a"})).Get(),
      v13.Head().Counter(1, true).Raw(NumberEntry(0, 0, 3)).Get(),
      v15.Head().Raw(AddressBookRecord({AddressRecord(7, true, 0, 0, {"a", "b"})}, true)).Get(),
      v15list.Head().Counter(1, false).Raw(TextDescEntry(0, 0, "t", "d")).Get(),
  };
  for (const Bytes& fixture : fixtures) {
    ExpectEveryCutThrowsEndOfFile(fixture, [](CArchive& ar) {
      DataProp column;
      column.Serialize(ar);
    });
  }
}

TEST_F(DataPropArchiveTest, OversizedCountsThrowBeforeAllocating) {
  ColumnArchive list = Version(15, DataType::ValueListSelect);
  DataProp column;
  EXPECT_THROW(Load(list.Head().Counter(1ull << 40, false).Get(), [&](CArchive& ar) { column.Serialize(ar); }),
               CArchiveException);
  ColumnArchive old = Version(5, DataType::AddressBookSelect);
  EXPECT_THROW(Load(old.Head().Counter(0xFFFFFFFFu, true).Get(), [&](CArchive& ar) { column.Serialize(ar); }),
               CArchiveException);
}
