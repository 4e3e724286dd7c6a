// The document's life cycle: aliases, columns added with their values,
// records created, copied and deleted with their default values and usage
// counts, and the document archive.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/DataMgr/schema/SchemaArchiveWriter.h"
#include "tests/support/ArchiveTestSupport.h"
#include "tests/support/LocaleTestSupport.h"

namespace {

using document_test::AddColumn;
using document_test::Enter;
using document_test::IntOf;
using document_test::KeptCounts;
using document_test::Shown;
using test_support::ByteWriter;
using test_support::Bytes;
using test_support::ToHex;

// An alias is set once and kept until DeleteAll clears aliases; asking the
// type of an unknown column leaves the type alone.
TEST(DataMgmtTest, AliasesAndColumnTypes) {
  DataMgmt doc;
  const int nID = AddColumn(doc, DataType::Monetary).GetID();
  DataType::Type nType = DataType::Icon;
  EXPECT_FALSE(doc.GetDataPropType(-1, nType) || doc.GetDataPropType(nID + 1, nType));
  EXPECT_TRUE(nType == DataType::Icon && doc.GetDataPropType(nID, nType) && nType == DataType::Monetary);
  EXPECT_EQ(doc.GetAliasDataProp(7), 7);
  doc.SetAliasDataProp(7, 9);
  doc.SetAliasDataProp(7, 12);
  doc.DeleteAll(true, false);
  EXPECT_EQ(doc.GetAliasDataProp(7), 9);
  doc.DeleteAll(true, true);
  EXPECT_TRUE(doc.GetAliasDataPropMap().empty());
}

// A new item takes the defaults of the columns as they are when it is
// made, whatever the items made before it took. Each change returns the ID
// of a Number column it adds, or -1.
TEST(DataMgmtTest, NewItemTakesTheColumnsDefaultsAsTheyAreNow) {
  const struct {
    const char* pszChange;
    int (*change)(DataMgmt& doc, DataProp& column);
    bool bHasInt;
    bool bHasText;
    const char* pszText;
  } rows[] = {
      {"nothing", [](DataMgmt&, DataProp&) { return -1; }, false, true, ""},
      {"type changed to Number", [](DataMgmt&, DataProp& c) { c.SetDataType(DataType::Number); return -1; },
       true, false, ""},
      {"default text set", [](DataMgmt&, DataProp& c) { c.SetDefaultValue("seven"); return -1; }, false, true,
       "seven"},
      {"column added", [](DataMgmt& doc, DataProp&) { return AddColumn(doc, DataType::Number).GetID(); },
       false, true, ""},
      {"column deleted", [](DataMgmt& doc, DataProp& c) { doc.DeleteDataProp(&c); return -1; }, false, false, ""},
  };
  for (const auto& row : rows) {
    DataMgmt doc;
    DataProp& column = AddColumn(doc, DataType::Text);
    const int nID = column.GetID();
    doc.CreateDataItem(nullptr, true, true);
    const int nAddedID = row.change(doc, column);
    const DataItem& item = *doc.CreateDataItem(nullptr, true, true);
    CString text;
    item.GetData(nID, text);
    EXPECT_EQ(item.HaveDataPropInt(nID), row.bHasInt) << row.pszChange;
    EXPECT_EQ(item.HaveDataPropString(nID), row.bHasText) << row.pszChange;
    EXPECT_EQ(text, row.pszText) << row.pszChange;
    EXPECT_TRUE(nAddedID < 0 || item.HaveDataPropInt(nAddedID)) << row.pszChange;
  }
}

// The default entry of a list column gains one usage per record filled.
TEST(DataMgmtTest, AddedColumnFillsEitherTheItemsOrTheirSubItems) {
  DataMgmt doc;
  std::vector<int> noColumns;
  DataItem& item = *doc.CreateDataItem(nullptr, true, true);
  const DataSubItem& subItem = *doc.CreateDataSubItem(item, noColumns, nullptr, true, true);
  for (bool bSubItems : {false, true}) {
    auto* p = new DataProp;
    p->SetDataType(DataType::ValueListSelect);
    p->SetDefaultValue("red");
    p->GetListItemByValue("red", true);
    doc.AddDataProp(p, true, false, true, bSubItems);
    const Data& filled = bSubItems ? static_cast<const Data&>(subItem) : item;
    const Data& passedOver = bSubItems ? static_cast<const Data&>(item) : subItem;
    EXPECT_EQ(IntOf(filled, p->GetID()), p->GetListItemAt(0)->GetID()) << bSubItems;
    EXPECT_FALSE(passedOver.HaveDataProp(p->GetID())) << bSubItems;
    EXPECT_EQ(KeptCounts(*p), std::vector<int>({1})) << bSubItems;
  }
}

class DataMgmtDefaultsTest : public test_support::UsLocaleTest {};

// A fresh record looks an address up by name (and creates it, select
// columns too); a column added to existing records reads its default as an
// address ID and creates nothing. The address taken gains one usage.
TEST_F(DataMgmtDefaultsTest, DefaultValuesOfAFreshRecordAndOfAnAddedColumn) {
  struct Row {
    DataType::Type nType;
    const char* pszDefault;
    const char* pszFreshRecord;
    const char* pszAddedColumn;
    std::vector<int> freshCounts;  // of the addresses Zed, Ann and any created, of an address column
    std::vector<int> addedCounts;
  };
  const Row rows[] = {
      {DataType::Number, "42", "42", "42", {}, {}},
      {DataType::NumberWithText, "Vol. 03", "Vol. 03", "3", {}, {}},  // the number alone
      {DataType::AddressBookSuggested, "ann", "Ann", "Zed", {0, 1}, {1, 0}},  // "ann" reads as ID 0
      {DataType::AddressBookSelect, "5", "5", "", {0, 0, 1}, {0, 0}},  // no address has ID 5
      {DataType::AddressBookSelect, "-1", "", "", {0, 0}, {0, 0}},
  };
  for (const Row& row : rows) {
    for (bool bAdded : {false, true}) {
      DataMgmt doc;
      if (bAdded) doc.CreateDataItem(nullptr, true, true);
      auto* p = new DataProp;
      p->SetDataType(row.nType);
      p->SetDefaultValue(row.pszDefault);
      p->GetAddressByName("Zed", true);
      p->GetAddressByName("Ann", true);
      doc.AddDataProp(p, true, false, true, false);
      const DataItem& item = bAdded ? *doc.GetDataItemMgr().GetAt(0) : *doc.CreateDataItem(nullptr, true, true);
      const std::string name = std::string(row.pszDefault) + (bAdded ? ", added column" : ", fresh record");
      EXPECT_EQ(Shown(doc, item, *p), bAdded ? row.pszAddedColumn : row.pszFreshRecord) << name;
      EXPECT_EQ(KeptCounts(*p), bAdded ? row.addedCounts : row.freshCounts) << name;
    }
  }
}

// Copying an item raises, and deleting it lowers, the counts of its own
// cells only; a copied sub-item is not counted at all. A recount finds every
// usage in items and sub-items; a cell of an aliased column counts for the
// alias column, or nowhere when that column is gone.
TEST(DataMgmtTest, UsageCountsFollowCopiesDeletesAndRecounts) {
  DataMgmt doc;
  DataProp& list = AddColumn(doc, DataType::ValueListSuggested);
  DataProp& book = AddColumn(doc, DataType::AddressBookSuggested);
  DataProp& alias = AddColumn(doc, DataType::ValueListSuggested);
  DataProp& orphan = AddColumn(doc, DataType::ValueListSuggested);
  AddColumn(doc, DataType::Text);  // holds no entries
  doc.SetAliasDataProp(alias.GetID(), list.GetID());
  doc.SetAliasDataProp(orphan.GetID(), 9999);
  std::vector<int> columns = {list.GetID(), book.GetID()};
  DataItem* pFirst = doc.CreateDataItem(nullptr, true, true);
  Enter(doc, *pFirst, list, "red");
  Enter(doc, *pFirst, book, "Ann");
  DataSubItem* pSubItem = doc.CreateDataSubItem(*pFirst, columns, nullptr, true, true);
  Enter(doc, *pSubItem, list, "blue");
  doc.CreateDataSubItem(*pFirst, columns, pSubItem, true, true);
  EXPECT_EQ(KeptCounts(list), std::vector<int>({1, 1}));

  DataItem* pCopy = doc.CreateDataItem(pFirst, true, true);
  ASSERT_EQ(pCopy->GetSubItemsMgr().GetCount(), 2u);
  EXPECT_EQ(KeptCounts(list), std::vector<int>({2, 1}));
  EXPECT_EQ(KeptCounts(book), std::vector<int>({2}));
  Enter(doc, *pCopy, list, "green");
  doc.DeleteDataItem(pFirst);
  EXPECT_EQ(KeptCounts(list), std::vector<int>({0, 1, 1}));
  EXPECT_EQ(KeptCounts(book), std::vector<int>({1}));

  Enter(doc, *pCopy, alias, "red");
  Enter(doc, *pCopy, orphan, "x");
  doc.ResetUsageCounters();
  EXPECT_EQ(KeptCounts(list), std::vector<int>({1, 2, 1}));
  EXPECT_EQ(KeptCounts(orphan), std::vector<int>({0}));
  EXPECT_EQ(KeptCounts(book), std::vector<int>({1}));
}

// Archive fixtures: a document of one user column (ID 5000) and items that
// each hold one text in it (none when empty), written field by field.
const int COLUMN = DataProp::DEFAULT_USER_ID;

Bytes DocumentBytes(unsigned nVersion, unsigned nType, const std::string& defaultValue,
                    const std::vector<std::string>& texts) {
  schema_test::ColumnArchive column;
  column.nID = COLUMN;
  column.nType = nType;
  column.name = "Column";
  column.defaultValue = defaultValue;
  ByteWriter w;
  w.Word(nVersion).Text("/exports/");
  w.Word(4).Int(0).Counter(0, false).Counter(1, false).Raw(column.Head().Get()).Counter(1, false).Int(COLUMN);
  w.Word(4).Counter(texts.size(), false);
  for (size_t i = 0; i < texts.size(); ++i) {
    w.Word(3).Int(static_cast<int>(i)).Int(2455683).Int(3600);  // version, ID, modified on day and second
    w.Word(6).Int64(0).Int64(0).Int64(0).Int64(0).Int64(0);  // bools, ints, doubles, dates, flagged
    if (texts[i].empty()) {
      w.Int64(0);
    } else {
      w.Int64(1).Int(COLUMN).Text(texts[i]);  // one text
    }
    w.Int64(0);                          // Money
    w.Word(3).Int64(0).Bool(true);       // no sub-items
  }
  if (nVersion == 2) w.Counter(2, true).Int(8).Int(9);
  return w.Get();
}

// Every version loads the export path and the items with their texts.
// Versions 2 and 3 reset a stale folder in a file-path column to the
// column's default; version 2 also holds an int vector that is dropped, read
// with its count checked against the data left. The current version stores
// the same bytes again; every cut of every version ends in an exception.
TEST(DataMgmtArchiveTest, EveryVersionLoads) {
  const struct {
    unsigned nVersion;
    const char* pszLoaded;
  } rows[] = {{1, "/no/such/folder/"}, {2, "/default.jpg"}, {3, "/default.jpg"}, {4, "/no/such/folder/"}};
  for (const auto& row : rows) {
    const Bytes fixture =
        DocumentBytes(row.nVersion, DataType::PhotoFilePath, "/default.jpg", {"/no/such/folder/", "", "c"});
    DataMgmt doc;
    EXPECT_EQ(test_support::Load(fixture, [&](CArchive& ar) { doc.Serialize(ar); }), 0u) << row.nVersion;
    EXPECT_EQ(doc.GetMRUExportPath(), "/exports/") << row.nVersion;
    ASSERT_EQ(doc.GetDataItemMgr().GetCount(), 3u) << row.nVersion;
    std::vector<std::string> texts;
    for (size_t i = 0; i < 3; ++i) {
      CString value;
      doc.GetDataItemMgr().GetAt(i)->GetData(COLUMN, value);
      texts.push_back(value.GetStdString());
    }
    EXPECT_EQ(texts, std::vector<std::string>({row.pszLoaded, "", "c"})) << row.nVersion;
    if (row.nVersion == 4) {
      EXPECT_EQ(ToHex(test_support::Stored(doc)), ToHex(fixture));
    }
    test_support::ExpectEveryCutThrowsEndOfFile(fixture, [](CArchive& ar) { DataMgmt().Serialize(ar); });
  }
  ByteWriter oversized;
  oversized.Raw(test_support::SetByte(DocumentBytes(3, DataType::Text, "", {"a"}), 0, 2)).Counter(0x7FFFFFFF, true);
  DataMgmt doc;
  EXPECT_THROW(test_support::Load(oversized.Get(), [&](CArchive& ar) { doc.Serialize(ar); }), CArchiveException);
}

}  // namespace
