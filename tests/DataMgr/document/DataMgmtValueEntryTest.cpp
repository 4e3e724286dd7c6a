// Value entry and rendering as a host runs them: typed text judged, entered,
// shown, saved and loaded; entry in one call; prefixes and suffixes; earlier
// values; line breaks; and file paths that follow a moved folder.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/document/DocumentFile.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/support/LocaleTestSupport.h"
#include "tests/support/TableTestSupport.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TextArraySupport.h"

namespace {

using document_test::AddColumn;
using document_test::KeptCounts;
using document_test::Shown;
using T = DataType;
using PropSetup = void (*)(DataProp&);

class DataMgmtValueEntryTest : public test_support::UsLocaleTest {
 protected:
  std::string File(const std::string& name) const { return m_folder / name; }
  void MakeFile(const std::string& name) {
    std::filesystem::create_directories(std::filesystem::path(File(name)).parent_path());
    test_support::WriteRaw(File(name), "x");
  }
  static std::string TextOf(const Data& record, const DataProp& prop) {
    CString text;
    record.GetData(prop.GetID(), text);
    return text.GetStdString();
  }

  test_support::TempFolder m_folder;
  DataMgmt m_doc;
};

// Each row is a column of one item: the typed text is judged (its normal
// form, or null when rejected), entered as typed and shown; the document is
// then saved to a file and loaded, and every cell shows the same text again.
// Prefix and suffix are cut from the text as typed, so with both present the
// suffix cut wins and the prefix stays.
TEST_F(DataMgmtValueEntryTest, TypedTextJudgedEnteredShownSavedAndLoaded) {
  const PropSetup sign = [](DataProp& p) { p.SetShowSignAlways(true); p.SetTimeShowSeconds(true); };
  const PropSetup affixes = [](DataProp& p) { p.SetPrefix("$"); p.SetSuffix(" kg"); };
  MakeFile("photo.jpg");
  const std::string photo = File("photo.jpg");
  struct Row {
    T::Type nType;
    std::string typed;
    const char* pszNormal;
    bool bStored;
    std::string shown;
    PropSetup setup = nullptr;
  };
  const Row rows[] = {
      {T::Number, "5", "5", true, "+5", sign},  // "+" only before a value above zero
      {T::Number, "0", "", true, "0", sign},
      {T::Duration, "0:01", "0:01", true, "+0:01", sign},
      {T::Decimal, "0.5", "0.50", true, "+0.50", sign},
      {T::Decimal, "0.75", "3/4", true, "3/4", [](DataProp& p) { p.SetFractional(true); }},
      {T::Monetary, "3", "3.00", true, "+3.00", sign},
      {T::Date, "2011-05-01", "5/1/2011", true, "5/1/2011"},
      {T::Time, "13:05:09", "1:05:09 PM", true, "1:05:09 PM", sign},
      {T::Time, "25:00", nullptr, false, ""},
      {T::Text, "x", nullptr, true, "x", [](DataProp& p) { p.SetUserChangeValue(false); }},
      {T::PhotoFilePath, photo, photo.c_str(), true, photo},
      {T::PhotoFilePath, "/no/such/file.jpg", nullptr, true, ""},  // a missing file shows as no value
      {T::DirectoryPath, "/no/such/", "/no/such/", true, "/no/such/"},
      {T::DirectoryPath, "/no/such", nullptr, true, "/no/such"},
      {T::EmailAddress, " ann@example.com ", "ann@example.com", true, "ann@example.com"},
      {T::EmailAddress, "x@", nullptr, false, ""},
      {T::WebSiteAddress, "www.example.com", "http://www.example.com", true, "http://www.example.com"},
      {T::WebSiteAddress, "report.txt", nullptr, true, "report.txt"},
      {T::ValueListSelect, "Blue", nullptr, true, "", [](DataProp& p) { p.GetListItemByValue("blue", true); }},
      {T::AddressBookSelect, "bob", "bob", true, "Bob", [](DataProp& p) { p.GetAddressByName("Bob", true); }},
      {T::Icon, "", nullptr, false, ""},
      {T::Text, "$5 kg", "$5 kg", true, "$$5 kg", affixes},
      {T::Text, "5 kg", "5 kg", true, "$5 kg", affixes},
      {T::Text, "$5", "$5", true, "$5 kg", affixes},
  };
  DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
  std::vector<int> columns;
  for (const Row& row : rows) {
    DataProp& prop = AddColumn(m_doc, row.nType);
    columns.push_back(prop.GetID());
    if (row.setup != nullptr) row.setup(prop);
    const std::string name = std::string(T::GetText(row.nType)) + " \"" + row.typed + "\"";
    CString text = row.typed.c_str();
    EXPECT_EQ(m_doc.IsValueAcceptable(text, prop), row.pszNormal != nullptr) << name;
    if (row.pszNormal != nullptr) {
      EXPECT_EQ(text, row.pszNormal) << name;
    }
    bool bRedisplay = false;
    EXPECT_EQ(m_doc.SetData(item, prop.GetID(), row.typed.c_str(), bRedisplay, true), row.bStored) << name;
    EXPECT_EQ(Shown(m_doc, item, prop), row.shown) << name;
    EXPECT_TRUE(row.setup != affixes || bRedisplay) << name << ": a column with affixes redisplays every entry";
  }
  ASSERT_TRUE(DocumentFile(File("list.dat")).Save(m_doc));
  DataMgmt loaded;
  ASSERT_TRUE(DocumentFile(File("list.dat")).Load(loaded));
  for (size_t i = 0; i < columns.size(); ++i) {
    const DataProp* pLoaded = loaded.GetDataPropMgr().GetByID(columns[i]);
    ASSERT_NE(pLoaded, nullptr) << rows[i].typed;
    EXPECT_EQ(Shown(loaded, *loaded.GetDataItemMgr().GetAt(0), *pLoaded), rows[i].shown) << rows[i].typed;
  }
}

// In one call, what the two steps would let through unchecked is rejected
// with the old value and usage counts kept; an entry that changes nothing is
// told apart from one that does.
TEST_F(DataMgmtValueEntryTest, EntryInOneCallIsRejectedUnchangedOrChanged) {
  const PropSetup blueOrGreen = [](DataProp& p) {
    p.GetListItemByValue("blue", true);
    p.GetListItemByValue("green", true);
  };
  const struct {
    T::Type nType;
    PropSetup setUp;
    const char* pszOld;  // entered first
    const char* pszTyped;
    DataMgmt::EntryResult nResult;
    const char* pszNormalized;
    const char* pszShown;  // the cell afterwards
  } rows[] = {
      {T::ValueListSelect, blueOrGreen, "blue", "red", DataMgmt::EntryRejected, "red", "blue"},
      {T::Number, [](DataProp& p) { p.SetCanBeNegative(false); }, "5", "-3", DataMgmt::EntryRejected, "-3", "5"},
      {T::ValueListSelect, blueOrGreen, "blue", " blue ", DataMgmt::EntryUnchanged, "blue", "blue"},
      {T::Number, nullptr, "1234", "1234 ", DataMgmt::EntryUnchanged, "1234", "1,234"},
      {T::ValueListSelect, blueOrGreen, "blue", "green", DataMgmt::EntryChanged, "green", "green"},
  };
  DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
  for (const auto& row : rows) {
    const std::string name = std::string(T::GetText(row.nType)) + " " + row.pszOld + " -> " + row.pszTyped;
    DataProp& prop = AddColumn(m_doc, row.nType);
    if (row.setUp != nullptr) row.setUp(prop);
    CString normalized;
    EXPECT_EQ(m_doc.EnterValue(item, prop.GetID(), row.pszOld, normalized), DataMgmt::EntryChanged) << name;
    const std::vector<int> counts = KeptCounts(prop);
    EXPECT_EQ(m_doc.EnterValue(item, prop.GetID(), row.pszTyped, normalized), row.nResult) << name;
    EXPECT_EQ(normalized, row.pszNormalized) << name;
    EXPECT_EQ(Shown(m_doc, item, prop), row.pszShown) << name;
    if (row.nResult != DataMgmt::EntryChanged) {
      EXPECT_EQ(KeptCounts(prop), counts) << name;
    }
  }
  CString normalized;
  EXPECT_EQ(m_doc.EnterValue(item, -1, "x", normalized), DataMgmt::EntryRejected);
  bool bRedisplay = false;
  EXPECT_FALSE(m_doc.SetData(item, 9999, "x", bRedisplay, true));
}

TEST_F(DataMgmtValueEntryTest, EarlierValuesAsTextWithoutAffixesOrSign) {
  struct Row {
    T::Type nType;
    PropSetup setup;
    void (*fill)(DataItem&, int);  // a first value, then edits
    std::vector<std::string> texts;
  };
  const Row rows[] = {
      {T::YesNo, nullptr, [](DataItem& r, int n) { r.RegisterDataProp(n, true); r.SetData(n, false, true); }, {"Y"}},
      {T::Decimal, nullptr, [](DataItem& r, int n) { r.RegisterDataProp(n, 2.5); r.SetData(n, 1.0, true); }, {"2.50"}},
      {T::Number, [](DataProp& p) { p.SetShowSignAlways(true); p.SetPrefix("#"); },
       [](DataItem& r, int n) { r.RegisterDataProp(n, 1234); r.SetData(n, 0, true); r.SetData(n, 5, true); },
       {"1,234", ""}},
      {T::Decimal, [](DataProp& p) { p.SetFractional(true); },
       [](DataItem& r, int n) { r.RegisterDataProp(n, -1.5); r.SetData(n, 0.0, true); r.SetData(n, 2.0, true); },
       {"-1 1/2", ""}},
      {T::AddressBookSelect, [](DataProp& p) { p.GetAddressByName("Ann", true); },
       [](DataItem& r, int n) {
         r.RegisterDataProp(n, 0);
         for (int nEntryID : {-1, 3, 0}) r.SetData(n, nEntryID, true);  // only 0 names an address
       },
       {"Ann"}},
      {T::PhotoFilePath, nullptr,
       [](DataItem& r, int n) { r.RegisterDataProp(n, "/gone/a.jpg", false); r.SetData(n, "/gone/b.jpg", true); },
       {"/gone/a.jpg"}},
      {T::Date, nullptr,
       [](DataItem& r, int n) { r.RegisterDataProp(n, DateTime(2011, 5, 1)); r.SetData(n, DateTime(), true); },
       {"5/1/2011"}},
      {T::Monetary, nullptr,
       [](DataItem& r, int n) { r.RegisterDataProp(n, Money(0)); r.SetData(n, Money(3), true); }, {""}},
      {T::Icon, nullptr, [](DataItem& r, int n) { r.RegisterDataProp(n, 1); r.SetData(n, 2, true); }, {}},
  };
  for (const Row& row : rows) {
    DataProp& prop = AddColumn(m_doc, row.nType);
    if (row.setup != nullptr) row.setup(prop);
    DataItem item;
    row.fill(item, prop.GetID());
    TextArray texts;
    DataMgmt::GetUndoBufferTexts(item, prop, texts, true);
    EXPECT_EQ(test_support::Elements(texts), row.texts) << T::GetText(row.nType);
  }
}

TEST_F(DataMgmtValueEntryTest, LineBreaksBecomeSingleBlanksAndNumbersReadAsIntegers) {
  const auto replaced = [&](const char* pszText) {
    CString text = pszText;
    m_doc.ReplaceCRLF(text);
    return text.GetStdString();
  };
  test_support::ExpectRows<std::string>(replaced, {{"a\r\n\r\nb", "a b"}, {"a\n\nb", "a b"}, {"a\n\n\n\nb", "a b"},
                                                   {"a\r\nb\rc", "a b c"}, {"a\n\n\nb", "a  b"}, {"a  b", "a  b"}});
  DataProp number;
  number.SetDataType(T::Number);
  DataProp duration;
  duration.SetDataType(T::Duration);
  EXPECT_EQ(DataMgmt::ConvertToInteger("12abc", number), 12);
  EXPECT_EQ(DataMgmt::ConvertToInteger("1:30", duration), 90);
  duration.SetTimeShowHours(true);
  EXPECT_EQ(DataMgmt::ConvertToInteger("1:30", duration), 5400);
  EXPECT_EQ(DataMgmt::ConvertToInteger("12", DataProp()), 0);
}

// Pointing one value from a missing file to the same file name in another
// folder moves every item's missing file of the old folder that exists in
// the new one; another file name moves nothing.
TEST_F(DataMgmtValueEntryTest, PathsFollowAFileMovedToAnotherFolder) {
  for (const char* pszName : {"new/a.jpg", "new/b.jpg", "new/c.jpg"}) MakeFile(pszName);
  DataProp& photo = AddColumn(m_doc, T::PhotoFilePath);
  DataProp& data = AddColumn(m_doc, T::DataFilePath);
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
TEST_F(DataMgmtValueEntryTest, StaleFoldersAreResetToTheDefault) {
  const std::string existing = m_folder.Path() + "/";
  const std::string missing = File("missing/");
  DataProp& app = AddColumn(m_doc, T::PhotoFilePath, "/default.jpg", true);
  DataProp& user = AddColumn(m_doc, T::DataFilePath);
  std::vector<int> columns;
  DataItem& first = *m_doc.CreateDataItem(nullptr, true, true);
  DataSubItem& firstSub = *m_doc.CreateDataSubItem(first, columns, nullptr, true, true);
  DataItem& second = *m_doc.CreateDataItem(nullptr, true, true);
  DataSubItem& secondSub = *m_doc.CreateDataSubItem(second, columns, nullptr, true, true);
  first.SetData(app.GetID(), existing.c_str(), false);
  firstSub.RegisterDataProp(app.GetID(), missing.c_str(), false);
  first.SetData(user.GetID(), existing.c_str(), false);
  firstSub.RegisterDataProp(user.GetID(), missing.c_str(), false);
  second.SetData(user.GetID(), missing.c_str(), false);
  secondSub.RegisterDataProp(user.GetID(), existing.c_str(), false);
  second.SetData(app.GetID(), "/default.jpg", false);
  m_doc.ResetFileBasedDefaultValues();
  const std::vector<std::string> expected = {"/default.jpg", "/default.jpg", existing, missing, "", existing};
  EXPECT_EQ(std::vector<std::string>({TextOf(first, app), TextOf(firstSub, app), TextOf(first, user),
                                      TextOf(firstSub, user), TextOf(second, user), TextOf(secondSub, user)}),
            expected);
}

// The first usable candidate wins, made the nearest existing folder: the
// item's value, the column's most used folder (a tie goes to the first in
// order; only the items given, when given), the other photo columns the
// user can see, the default, the item modified last, lastUsedDir, "C:\".
TEST_F(DataMgmtValueEntryTest, BestStartingFolder) {
  for (const char* pszName : {"a/1.jpg", "a/2.jpg", "b/1.jpg", "b/2.jpg", "c/1.jpg", "h/1.jpg", "q/1.jpg"}) {
    MakeFile(pszName);
  }
  DataProp& hidden = AddColumn(m_doc, T::PhotoFilePath, "", true);
  hidden.SetHiddenFromUI(true);
  const int nPhoto = AddColumn(m_doc, T::PhotoFilePath).GetID();
  const int nOther = AddColumn(m_doc, T::PhotoFilePath).GetID();
  std::vector<DataItem*> items;
  for (const char* pszPhoto : {"b/1.jpg", "a/1.jpg", "b/2.jpg", "a/2.jpg", ""}) {
    items.push_back(m_doc.CreateDataItem(nullptr, true, true));
    if (*pszPhoto) items.back()->SetData(nPhoto, File(pszPhoto).c_str(), false);
  }
  items[0]->SetData(hidden.GetID(), File("h/1.jpg").c_str(), false);
  items[3]->SetData(nOther, File("q/1.jpg").c_str(), false);
  const int nData = AddColumn(m_doc, T::DataFilePath, File("c/").c_str()).GetID();
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
