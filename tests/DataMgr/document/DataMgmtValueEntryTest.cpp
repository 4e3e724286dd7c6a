// Value entry and rendering: every data type entered as text and shown
// again, typed text checked and normalised, prefixes and suffixes, aliases
// as list owners, earlier values, line breaks, and file paths that follow a
// moved folder.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/support/LocaleTestSupport.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TextArraySupport.h"

namespace {

using document_test::AddColumn;
using document_test::Enter;
using document_test::KeptCounts;
using document_test::Shown;

void NoSetup(DataProp&) {}

class DataMgmtValueEntryTest : public test_support::UsLocaleTest {
 protected:
  DataMgmt m_doc;
};

TEST_F(DataMgmtValueEntryTest, EachTypeParsesStoresAndShowsItsValue) {
  struct Row {
    DataType::Type nType;
    void (*setup)(DataProp&);
    const char* pszTyped;
    bool bStored;
    bool bRedisplay;
    const char* pszShown;
  };
  const Row rows[] = {
      {DataType::YesNo, NoSetup, "t", true, false, "Y"},
      {DataType::Number, NoSetup, "1234", true, true, "1,234"},
      {DataType::Number, [](DataProp& p) { p.SetThousandsSep(false); }, "12", true, false, "12"},
      {DataType::Number, [](DataProp& p) { p.SetShowSignAlways(true); }, "5", true, true, "+5"},
      {DataType::Duration, [](DataProp& p) { p.SetTimeShowHours(true); }, "1:30", true, true, "1:30"},
      {DataType::Duration, NoSetup, "1:30", true, true, "2"},  // 90 seconds in whole minutes
      {DataType::Decimal, [](DataProp& p) { p.SetFractional(true); }, "1 1/2", true, true, "1 1/2"},
      {DataType::Decimal, [](DataProp& p) { p.SetShowDecimalZeroes(false); }, "2.50", true, true, "2.5"},
      {DataType::Date, [](DataProp& p) { p.SetDateTimeNumbers(false); }, "5/1/2011", true, true, "May 1, 2011"},
      {DataType::Time, [](DataProp& p) { p.SetTimeShowSeconds(true); }, "13:05:09", true, true, "1:05:09 PM"},
      {DataType::Text, NoSetup, " a ", true, true, "a"},
      {DataType::Text, NoSetup, "a", true, false, "a"},
      {DataType::EmailAddress, NoSetup, "not an address", false, false, ""},
      {DataType::EmailAddress, NoSetup, " ann@example.com ", true, false, "ann@example.com"},
      {DataType::WebSiteAddress, NoSetup, "not a site", true, false, "not a site"},
      {DataType::Monetary, NoSetup, "-3", true, true, "-3.00"},
      {DataType::EmbeddedThumbnail, NoSetup, "x", false, false, ""},
  };
  DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
  for (const Row& row : rows) {
    DataProp& prop = AddColumn(m_doc, row.nType);
    row.setup(prop);
    bool bRedisplay = !row.bRedisplay;
    EXPECT_EQ(m_doc.SetData(item, prop.GetID(), row.pszTyped, bRedisplay, true), row.bStored) << row.pszTyped;
    EXPECT_EQ(bRedisplay, row.bRedisplay) << row.pszTyped;
    EXPECT_EQ(Shown(m_doc, item, prop), row.pszShown) << row.pszTyped;
  }
}

TEST_F(DataMgmtValueEntryTest, UnknownColumnsAndUnchangedValuesAreNotStored) {
  DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
  const DataProp& prop = AddColumn(m_doc, DataType::Text);
  bool bRedisplay = false;
  EXPECT_FALSE(m_doc.SetData(item, -1, "x", bRedisplay, true));
  EXPECT_FALSE(m_doc.SetData(item, prop.GetID() + 1, "x", bRedisplay, true));
  EXPECT_TRUE(m_doc.SetData(item, prop.GetID(), "x", bRedisplay, true));
  EXPECT_FALSE(m_doc.SetData(item, prop.GetID(), "x", bRedisplay, true));
}

// Both cuts are made on the text as typed, so with both present the suffix
// cut wins and the prefix stays.
TEST_F(DataMgmtValueEntryTest, PrefixAndSuffixAreCutFromTheTypedText) {
  DataProp& prop = AddColumn(m_doc, DataType::Text);
  prop.SetPrefix("$");
  prop.SetSuffix(" kg");
  DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
  const struct {
    const char* pszTyped;
    const char* pszStored;
  } rows[] = {{"$5 kg", "$5"}, {"5 kg", "5"}, {"$5", "5"}, {"6", "6"}};
  for (const auto& row : rows) {
    bool bRedisplay = false;
    m_doc.SetData(item, prop, row.pszTyped, bRedisplay, true);
    CString stored;
    item.GetData(prop.GetID(), stored);
    EXPECT_EQ(stored, row.pszStored) << row.pszTyped;
    EXPECT_TRUE(bRedisplay) << row.pszTyped;
  }
  EXPECT_EQ(Shown(m_doc, item, prop), "$6 kg");
}

TEST_F(DataMgmtValueEntryTest, ZeroValuesAndAffixesWithBlankZero) {
  const struct {
    DataType::Type nType;
    const char* pszTyped;
    const char* pszShown;
  } rows[] = {{DataType::Number, "0", "#0"},
              {DataType::Duration, "0", "#0"},
              {DataType::Decimal, "0.0004", "#0.00"},
              {DataType::Monetary, "0", "#0.00"}};
  DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
  for (const auto& row : rows) {
    DataProp& prop = AddColumn(m_doc, row.nType);
    prop.SetPrefix("#");
    bool bRedisplay = false;
    m_doc.SetData(item, prop, row.pszTyped, bRedisplay, false);
    ASSERT_TRUE(item.HaveDataProp(prop.GetID())) << row.pszTyped;
    EXPECT_EQ(m_doc.GetTextRepresentation(item, prop.GetID(), true), "") << row.pszTyped;
    EXPECT_EQ(m_doc.GetTextRepresentation(item, prop.GetID(), false), row.pszShown) << row.pszTyped;
  }
}

// "+" goes only before a value above zero: a whole number or duration of
// at least 1, a decimal or amount greater than zero. A missing file shows
// as no value, without prefix.
TEST_F(DataMgmtValueEntryTest, SignAlwaysShownAndMissingFiles) {
  struct Row {
    DataType::Type nType;
    void (*fill)(DataItem&, int);
    const char* pszShown;
  };
  const Row rows[] = {
      {DataType::Number, [](DataItem& r, int n) { r.RegisterDataProp(n, 1); }, "<+1"},
      {DataType::Number, [](DataItem& r, int n) { r.RegisterDataProp(n, 0); }, "<0"},
      {DataType::Number, [](DataItem& r, int n) { r.RegisterDataProp(n, -2); }, "<-2"},
      {DataType::Duration, [](DataItem& r, int n) { r.RegisterDataProp(n, 1); }, "<+0:01"},
      {DataType::Duration, [](DataItem& r, int n) { r.RegisterDataProp(n, 0); }, "<0:00"},
      {DataType::Duration, [](DataItem& r, int n) { r.RegisterDataProp(n, -1); }, "<-0:01"},
      {DataType::Decimal, [](DataItem& r, int n) { r.RegisterDataProp(n, 0.5); }, "<+0.50"},
      {DataType::Decimal, [](DataItem& r, int n) { r.RegisterDataProp(n, 0.0); }, "<0.00"},
      {DataType::Decimal, [](DataItem& r, int n) { r.RegisterDataProp(n, -0.5); }, "<-0.50"},
      {DataType::Monetary, [](DataItem& r, int n) { r.RegisterDataProp(n, Money(3)); }, "<+3.00"},
      {DataType::Monetary, [](DataItem& r, int n) { r.RegisterDataProp(n, Money(0)); }, "<0.00"},
      {DataType::Monetary, [](DataItem& r, int n) { r.RegisterDataProp(n, Money(-3)); }, "<-3.00"},
      {DataType::PhotoFilePath, [](DataItem& r, int n) { r.RegisterDataProp(n, "/no/such/a.jpg", false); }, ""},
      {DataType::Icon, [](DataItem& r, int n) { r.RegisterDataProp(n, 1); }, ""},
  };
  for (const Row& row : rows) {
    DataProp prop;
    prop.SetID(DataProp::DEFAULT_USER_ID);
    prop.SetDataType(row.nType);
    prop.SetShowSignAlways(true);
    prop.SetTimeShowSeconds(true);
    prop.SetPrefix("<");
    DataItem item;
    row.fill(item, prop.GetID());
    EXPECT_EQ(DataMgmt::GetTextRepresentation(item, prop.GetID(), prop, false), row.pszShown)
        << DataType::GetText(row.nType) << " " << row.pszShown;
  }
}

TEST_F(DataMgmtValueEntryTest, SelectFromListStoresMinusOneForUnknownTextAndReleasesTheOldEntry) {
  DataProp& prop = AddColumn(m_doc, DataType::ValueListSelect);
  prop.GetListItemByValue("blue", true);
  prop.GetListItemByValue("green", true);
  DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
  Enter(m_doc, item, prop, "blue");
  EXPECT_EQ(KeptCounts(prop), std::vector<int>({1, 0}));
  bool bRedisplay = true;
  EXPECT_TRUE(m_doc.SetData(item, prop, "purple", bRedisplay, true));
  int nStored = 0;
  item.GetData(prop.GetID(), nStored);
  EXPECT_EQ(nStored, -1);
  EXPECT_EQ(KeptCounts(prop), std::vector<int>({0, 0}));
  EXPECT_FALSE(bRedisplay);
}

// A suggested-as-typed list takes the empty text as an entry of its own;
// an address book never makes a nameless address. Whether to create is
// the list owner's to say, even when the owner is no column of the
// document (then the column's own list is used).
TEST_F(DataMgmtValueEntryTest, SuggestedListsCreateEntriesAsTheListOwnerSays) {
  DataProp& list = AddColumn(m_doc, DataType::ValueListSuggested);
  DataProp& book = AddColumn(m_doc, DataType::AddressBookSuggested);
  DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
  Enter(m_doc, item, list, "");
  ASSERT_EQ(list.GetListItemsCount(), 1u);
  EXPECT_EQ(list.GetListItemAt(0)->GetTextRepresentation(), "");
  EXPECT_EQ(KeptCounts(list), std::vector<int>({1}));
  Enter(m_doc, item, book, "Ann");
  Enter(m_doc, item, book, "");
  EXPECT_EQ(KeptCounts(book), std::vector<int>({0}));

  DataProp selectOwner;
  selectOwner.SetDataType(DataType::ValueListSelect);
  bool bRedisplay = false;
  EXPECT_TRUE(DataMgmt::SetDataNoFilePathAdjust(item, list, selectOwner, "red", bRedisplay, true));
  EXPECT_EQ(list.GetListItemsCount(), 1u);
  EXPECT_EQ(Shown(m_doc, item, list), "");
}

// Entries, formatting and acceptance come from the alias column.
TEST_F(DataMgmtValueEntryTest, AnAliasColumnOwnsTheEntries) {
  DataProp& typed = AddColumn(m_doc, DataType::ValueListSuggested);
  DataProp& owner = AddColumn(m_doc, DataType::ValueListSuggested);
  DataProp& select = AddColumn(m_doc, DataType::ValueListSelect);
  DataProp& decimal = AddColumn(m_doc, DataType::Decimal);
  DataProp& fractional = AddColumn(m_doc, DataType::Decimal);
  fractional.SetFractional(true);
  m_doc.SetAliasDataProp(typed.GetID(), owner.GetID());
  m_doc.SetAliasDataProp(select.GetID(), owner.GetID());
  m_doc.SetAliasDataProp(decimal.GetID(), fractional.GetID());
  DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);

  Enter(m_doc, item, typed, "red");
  EXPECT_EQ(typed.GetListItemsCount(), 0u);
  EXPECT_EQ(KeptCounts(owner), std::vector<int>({1}));
  EXPECT_EQ(Shown(m_doc, item, typed), "red");
  CString text = "red";
  EXPECT_TRUE(m_doc.IsValueAcceptable(text, select));
  Enter(m_doc, item, decimal, "1 1/2");
  EXPECT_EQ(Shown(m_doc, item, decimal), "1 1/2");
}

TEST_F(DataMgmtValueEntryTest, TypedTextIsJudgedAndNormalised) {
  struct Row {
    DataType::Type nType;
    void (*setup)(DataProp&);
    const char* pszTyped;
    bool bAccepted;
    const char* pszNormal;  // when accepted
  };
  const auto noNegatives = [](DataProp& p) { p.SetCanBeNegative(false); };
  const auto withBlue = [](DataProp& p) { p.GetListItemByValue("blue", true); };
  const auto withBob = [](DataProp& p) { p.GetAddressByName("Bob", true); };
  const Row rows[] = {
      {DataType::YesNo, NoSetup, "Nope", true, "Nope"},
      {DataType::YesNo, NoSetup, "1", true, "1"},
      {DataType::YesNo, NoSetup, "maybe", true, "maybe"},  // holds a "y"
      {DataType::YesNo, NoSetup, "abc", false, ""},
      {DataType::Number, noNegatives, "-5", false, ""},
      {DataType::NumberListSuggested, noNegatives, "-5", false, ""},
      {DataType::Number, NoSetup, " 1,234 ", true, "1234"},
      {DataType::Number, NoSetup, "0", true, ""},
      {DataType::Duration, noNegatives, "-0:05", true, ""},
      {DataType::Duration, [](DataProp& p) { p.SetCanBeNegative(false); p.SetZeroIsEmpty(false); }, "-0:05", true,
       "0"},
      {DataType::Duration, [](DataProp& p) { p.SetTimeShowSeconds(true); }, "-1:30", true, "-1:30"},
      {DataType::Decimal, NoSetup, "1234.567", true, "1,234.57"},
      {DataType::DecimalListSuggested, noNegatives, "-0.5", false, ""},
      {DataType::Decimal, [](DataProp& p) { p.SetFractional(true); }, "0.75", true, "3/4"},
      {DataType::Date, NoSetup, "2011-05-01", true, "5/1/2011"},
      {DataType::Date, NoSetup, "2/30/2011", false, ""},
      {DataType::Time, NoSetup, "13:05", true, "1:05 PM"},
      {DataType::Time, NoSetup, "25:00", false, ""},
      {DataType::Text, NoSetup, "  x ", true, "x"},
      {DataType::Text, [](DataProp& p) { p.SetUserChangeValue(false); }, "x", false, ""},
      {DataType::PhotoFilePath, NoSetup, "/no/such/file.jpg", false, ""},
      {DataType::PhotoFilePath, NoSetup, "http://example.com/a.jpg", true, "http://example.com/a.jpg"},
      {DataType::DirectoryPath, NoSetup, "/no/such/", true, "/no/such/"},
      {DataType::DirectoryPath, NoSetup, "/no/such", false, ""},
      {DataType::EmailAddress, NoSetup, "x@", false, ""},
      {DataType::WebSiteAddress, NoSetup, "www.example.com", true, "http://www.example.com"},
      {DataType::WebSiteAddress, NoSetup, "report.txt", false, ""},
      {DataType::ValueListSelect, withBlue, "blue", true, "blue"},
      {DataType::ValueListSelect, withBlue, "Blue", false, ""},
      {DataType::ValueListSelect, NoSetup, "", true, ""},
      {DataType::AddressBookSelect, NoSetup, "Bob", false, ""},
      {DataType::AddressBookSelect, withBob, "bob", true, "bob"},
      {DataType::Monetary, NoSetup, "1234.5", true, "1,234.50"},
      {DataType::Monetary, noNegatives, "-0.00", false, ""},  // negative zero
      {DataType::Icon, NoSetup, "", false, ""},
  };
  for (const Row& row : rows) {
    DataProp& prop = AddColumn(m_doc, row.nType);
    row.setup(prop);
    CString text = row.pszTyped;
    EXPECT_EQ(m_doc.IsValueAcceptable(text, prop), row.bAccepted) << DataType::GetText(row.nType) << ": " << row.pszTyped;
    if (row.bAccepted) {
      EXPECT_EQ(text, row.pszNormal) << row.pszTyped;
    }
  }
}

TEST_F(DataMgmtValueEntryTest, EarlierValuesAsTextWithoutAffixesOrSign) {
  struct Row {
    DataType::Type nType;
    void (*setup)(DataProp&);
    void (*fill)(DataItem&, int);  // a first value, then edits
    std::vector<std::string> texts;
  };
  const Row rows[] = {
      {DataType::YesNo, NoSetup,
       [](DataItem& r, int n) { r.RegisterDataProp(n, true); r.SetData(n, false, true); }, {"Y"}},
      {DataType::Number, [](DataProp& p) { p.SetShowSignAlways(true); p.SetPrefix("#"); },
       [](DataItem& r, int n) { r.RegisterDataProp(n, 1234); r.SetData(n, 0, true); r.SetData(n, 5, true); },
       {"1,234", ""}},
      {DataType::Decimal, [](DataProp& p) { p.SetShowDecimalZeroes(false); },
       [](DataItem& r, int n) { r.RegisterDataProp(n, 2.5); r.SetData(n, 0.0004, true); r.SetData(n, 1.0, true); },
       {"2.50", ""}},
      {DataType::Decimal, [](DataProp& p) { p.SetFractional(true); },
       [](DataItem& r, int n) { r.RegisterDataProp(n, -1.5); r.SetData(n, 0.75, true); r.SetData(n, 2.0, true); },
       {"-1 1/2", "3/4"}},
      {DataType::Duration, [](DataProp& p) { p.SetTimeShowSeconds(true); },
       [](DataItem& r, int n) { r.RegisterDataProp(n, 90); r.SetData(n, 0, true); r.SetData(n, 5, true); },
       {"1:30", ""}},
      {DataType::AddressBookSelect, [](DataProp& p) { p.GetAddressByName("Ann", true); },
       [](DataItem& r, int n) {
         r.RegisterDataProp(n, 0);
         for (int nEntryID : {-1, 3, 0}) r.SetData(n, nEntryID, true);  // only 0 names an address
       },
       {"Ann"}},
      {DataType::Date, NoSetup,
       [](DataItem& r, int n) { r.RegisterDataProp(n, DateTime(2011, 5, 1)); r.SetData(n, DateTime(), true); },
       {"5/1/2011"}},
      {DataType::PhotoFilePath, NoSetup,
       [](DataItem& r, int n) { r.RegisterDataProp(n, "/gone/a.jpg", false); r.SetData(n, "/gone/b.jpg", true); },
       {"/gone/a.jpg"}},
      {DataType::ValueListSelect, [](DataProp& p) { p.GetListItemByValue("blue", true); },
       [](DataItem& r, int n) { r.RegisterDataProp(n, 0); r.SetData(n, 7, true); r.SetData(n, 0, true); },
       {"blue"}},
      {DataType::Monetary, NoSetup,
       [](DataItem& r, int n) { r.RegisterDataProp(n, Money(0)); r.SetData(n, Money(3), true); }, {""}},
      {DataType::Icon, NoSetup, [](DataItem& r, int n) { r.RegisterDataProp(n, 1); r.SetData(n, 2, true); }, {}},
  };
  for (const Row& row : rows) {
    DataProp& prop = AddColumn(m_doc, row.nType);
    row.setup(prop);
    DataItem item;
    row.fill(item, prop.GetID());
    TextArray texts;
    DataMgmt::GetUndoBufferTexts(item, prop, texts, true);
    EXPECT_EQ(test_support::Elements(texts), row.texts) << DataType::GetText(row.nType);
  }
}

TEST_F(DataMgmtValueEntryTest, LineBreaksBecomeSingleBlanks) {
  const struct {
    const char* pszText;
    const char* pszResult;
  } rows[] = {{"a\r\n\r\nb", "a b"}, {"a\n\nb", "a b"},         {"a\n\n\n\nb", "a b"},
              {"a\r\nb\rc", "a b c"}, {"a\n\n\nb", "a  b"},  {"a  b", "a  b"}};
  for (const auto& row : rows) {
    CString text = row.pszText;
    m_doc.ReplaceCRLF(text);
    EXPECT_EQ(text, row.pszResult);
  }
}

TEST_F(DataMgmtValueEntryTest, IntegerValueOfNumbersAndDurations) {
  DataProp number;
  number.SetDataType(DataType::Number);
  DataProp duration;
  duration.SetDataType(DataType::Duration);
  DataProp text;
  EXPECT_EQ(DataMgmt::ConvertToInteger("12abc", number), 12);
  EXPECT_EQ(DataMgmt::ConvertToInteger("1:30", duration), 90);
  duration.SetTimeShowHours(true);
  EXPECT_EQ(DataMgmt::ConvertToInteger("1:30", duration), 5400);
  EXPECT_EQ(DataMgmt::ConvertToInteger("12", text), 0);
}

class DataMgmtFilePathTest : public DataMgmtValueEntryTest {
 protected:
  std::string File(const std::string& name) { return m_folder / name; }
  void MakeFile(const std::string& name) {
    std::filesystem::create_directories(std::filesystem::path(File(name)).parent_path());
    test_support::WriteRaw(File(name), "x");
  }
  std::string TextOf(const Data& record, const DataProp& prop) {
    CString text;
    record.GetData(prop.GetID(), text);
    return text.GetStdString();
  }

  test_support::TempFolder m_folder;
};

// Pointing one value from a missing file to the same file name in another
// folder moves every item's missing file of the old folder that exists in
// the new one; another file name moves nothing.
TEST_F(DataMgmtFilePathTest, PathsFollowAFileMovedToAnotherFolder) {
  for (const char* pszName : {"new/a.jpg", "new/b.jpg", "new/c.jpg"}) MakeFile(pszName);
  DataProp& photo = AddColumn(m_doc, DataType::PhotoFilePath);
  DataProp& data = AddColumn(m_doc, DataType::DataFilePath);
  DataItem& edited = *m_doc.CreateDataItem(nullptr, true, true);
  DataItem& sameFolder = *m_doc.CreateDataItem(nullptr, true, true);
  DataItem& otherFolder = *m_doc.CreateDataItem(nullptr, true, true);
  edited.SetData(photo.GetID(), File("old/a.jpg").c_str(), false);
  sameFolder.SetData(photo.GetID(), File("old/c.jpg").c_str(), false);
  sameFolder.SetData(data.GetID(), File("old/c.jpg").c_str(), false);
  otherFolder.SetData(photo.GetID(), File("other/c.jpg").c_str(), false);

  bool bRedisplay = true;
  EXPECT_TRUE(m_doc.SetData(edited, photo, File("new/b.jpg").c_str(), bRedisplay, true));
  EXPECT_FALSE(bRedisplay);
  EXPECT_EQ(TextOf(sameFolder, photo), File("old/c.jpg"));

  edited.SetData(photo.GetID(), File("old/a.jpg").c_str(), false);
  EXPECT_TRUE(m_doc.SetData(edited, photo, File("new/a.jpg").c_str(), bRedisplay, true));
  EXPECT_TRUE(bRedisplay);
  EXPECT_EQ(TextOf(sameFolder, photo), File("new/c.jpg"));
  EXPECT_EQ(TextOf(sameFolder, data), File("new/c.jpg"));
  EXPECT_EQ(TextOf(otherFolder, photo), File("other/c.jpg"));
  TextArray history;
  DataMgmt::GetUndoBufferTexts(sameFolder, photo, history, false);
  EXPECT_EQ(test_support::Elements(history), std::vector<std::string>({File("old/c.jpg")}));
}

// An application column resets an existing folder too; a user column only
// a missing one; sub-items only under an item that was reset.
TEST_F(DataMgmtFilePathTest, StaleFoldersAreResetToTheDefault) {
  const std::string existing = m_folder.Path() + "/";
  const std::string missing = File("missing/");
  auto* pApp = new DataProp;
  pApp->SetDataType(DataType::PhotoFilePath);
  pApp->SetDefaultValue("/default.jpg");
  m_doc.AddDataProp(pApp, true, true, false, false);
  DataProp& user = AddColumn(m_doc, DataType::DataFilePath);
  std::vector<int> columns;
  DataItem& first = *m_doc.CreateDataItem(nullptr, true, true);
  DataSubItem& firstSub = *m_doc.CreateDataSubItem(first, columns, nullptr, true, true);
  DataItem& second = *m_doc.CreateDataItem(nullptr, true, true);
  DataSubItem& secondSub = *m_doc.CreateDataSubItem(second, columns, nullptr, true, true);
  first.SetData(pApp->GetID(), existing.c_str(), false);
  firstSub.RegisterDataProp(pApp->GetID(), missing.c_str(), false);
  first.SetData(user.GetID(), existing.c_str(), false);
  firstSub.RegisterDataProp(user.GetID(), missing.c_str(), false);
  second.SetData(user.GetID(), missing.c_str(), false);
  secondSub.RegisterDataProp(user.GetID(), existing.c_str(), false);
  second.SetData(pApp->GetID(), "/default.jpg", false);

  m_doc.ResetFileBasedDefaultValues();
  EXPECT_EQ(TextOf(first, *pApp), "/default.jpg");
  EXPECT_EQ(TextOf(firstSub, *pApp), "/default.jpg");
  EXPECT_EQ(TextOf(first, user), existing);
  EXPECT_EQ(TextOf(firstSub, user), missing);
  EXPECT_EQ(TextOf(second, user), "");
  EXPECT_EQ(TextOf(secondSub, user), existing);
}

// The first usable candidate wins, made the nearest existing folder: the
// item's value, the column's most used folder (a tie goes to the first in
// order; only the items given, when given), the other photo columns the
// user can see, the default, the item modified last, lastUsedDir, "C:\".
TEST_F(DataMgmtFilePathTest, BestStartingFolder) {
  for (const char* pszName : {"a/1.jpg", "a/2.jpg", "b/1.jpg", "b/2.jpg", "c/1.jpg", "h/1.jpg", "q/1.jpg"}) {
    MakeFile(pszName);
  }
  auto* pHidden = new DataProp;
  pHidden->SetDataType(DataType::PhotoFilePath);
  pHidden->SetHiddenFromUI(true);
  m_doc.AddDataProp(pHidden, true, true, false, false);
  const int nPhoto = AddColumn(m_doc, DataType::PhotoFilePath).GetID();
  const int nOther = AddColumn(m_doc, DataType::PhotoFilePath).GetID();
  std::vector<DataItem*> items;
  for (const char* pszPhoto : {"b/1.jpg", "a/1.jpg", "b/2.jpg", "a/2.jpg", ""}) {
    items.push_back(m_doc.CreateDataItem(nullptr, true, true));
    if (*pszPhoto) items.back()->SetData(nPhoto, File(pszPhoto).c_str(), false);
  }
  items[0]->SetData(pHidden->GetID(), File("h/1.jpg").c_str(), false);
  items[3]->SetData(nOther, File("q/1.jpg").c_str(), false);
  const int nData = AddColumn(m_doc, DataType::DataFilePath, File("c/").c_str()).GetID();

  const struct {
    int nColumn;
    DataItem* pItem;
    std::string lastUsed;
    std::vector<DataItem*> items;
    std::string best;
  } rows[] = {
      {-1, nullptr, "", {}, "C:\\"},
      {-1, nullptr, File("a/1.jpg"), {}, File("a/")},
      {-1, nullptr, File("gone/deeper/x.jpg"), {}, File("")},
      {-1, nullptr, "  ", {}, "  "},
      {nPhoto, items[0], "", {}, File("b/")},
      {nPhoto, nullptr, "", {}, File("a/")},
      {nPhoto, nullptr, "", {items[0]}, File("b/")},
      {nOther, nullptr, "", {items[0]}, File("b/")},  // not the hidden column's h/
      {nOther, nullptr, "", {items[4]}, File("q/")},  // the item modified last
      {nData, nullptr, "", {}, File("c/")},
      {4242, nullptr, File("c/1.jpg"), {}, File("c/")},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(m_doc.GetBestLastUsedDir(row.nColumn, row.pItem, row.lastUsed.c_str(), row.items), row.best.c_str())
        << row.nColumn << " " << row.best;
  }
}

}  // namespace
