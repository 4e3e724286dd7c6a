// Search as a host runs it: a small document searched in every way, each
// hit checked through a short description of it; then the hit lists and
// found words a host keeps, and the archives of hits in both versions.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "DataMgr/document/DataFindMgr.h"
#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/document/FoundWordMgr.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "DataMgr/report/Report.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/DataMgr/filter/FilterFixtures.h"
#include "tests/support/ArchiveTestSupport.h"
#include "tests/support/LocaleTestSupport.h"

namespace {

using document_test::AddColumn;
using document_test::Enter;
using test_support::ByteWriter;

// "item[/sub-item] column@start", then the line count and path, and the
// replaced length, where the hit holds them.
std::string Described(const DataFind& hit, const std::string& column) {
  std::string text = std::to_string(hit.GetDataItemID());
  if (hit.GetDataSubItemID() != -1) text += "/" + std::to_string(hit.GetDataSubItemID());
  text += " " + column + "@" + std::to_string(hit.GetStartIndex());
  if (hit.GetLineCount() != -1 || !hit.GetFilePath().IsEmpty()) {
    text += " " + std::to_string(hit.GetLineCount()) + " " + hit.GetFilePath().GetStdString();
  }
  return hit.GetReplacedLength() == -1 ? text : text + " replaced " + std::to_string(hit.GetReplacedLength());
}

// A hit of item 7 in column 5001 as a host keeps it.
DataFind MakeHit(int nID, int nStart, int nLineCount = -1, const char* pszPath = "", int nReplacedLength = -1) {
  DataFind hit;
  hit.SetID(nID);
  hit.SetDataItemID(7);
  hit.SetDataPropID(5001);
  hit.SetStartIndex(nStart);
  hit.SetLineCount(nLineCount);
  hit.SetFilePath(pszPath);
  hit.SetReplacedLength(nReplacedLength);
  return hit;
}

// "ID:" and the hit described with its column ID.
std::string Listed(const DataFind& hit) {
  return std::to_string(hit.GetID()) + ":" + Described(hit, std::to_string(hit.GetDataPropID()));
}

// A hit record of nVersion: ID nID, item 7, the item itself, column 5001,
// start 3; from version 2 the line count 2 and the path "p".
ByteWriter& WriteHit(ByteWriter& out, unsigned nVersion, int nID) {
  out.Word(nVersion).Int(nID).Int(7).Int(-1).Int(5001).Int(3);  // version, ID, item, sub-item, column, start
  if (nVersion >= 2) out.Int(2).Text("p");                       // line count, path
  return out;
}

// Columns: the application column A (added last but searched first),
// then the user columns T (text), Y (yes/no), P (number shown with "$"),
// H (hidden from the user interface) and N (not displayed).
// Items: 0 holds T "aaa", Y yes, P 5 and "aaa" in H and N; 1 holds T "Red
// and dark blue", P 12 and A "red"; 2 holds T "x" and two sub-items, the
// first holding T "aaa" only, the second T "b" and A "aaa".
class DataMgmtFindTest : public test_support::UsLocaleTest {
 protected:
  void SetUp() override {
    UsLocaleTest::SetUp();
    m_p.SetPrefix("$");
    m_h.SetHiddenFromUI(true);
    m_n.SetDisplayed(false);
    for (int i = 0; i < 3; ++i) m_doc.CreateDataItem(nullptr, true, true);
    std::vector<int> firstColumns = {m_t.GetID()};
    std::vector<int> secondColumns = {m_t.GetID(), m_a.GetID()};
    Data& first = *m_doc.CreateDataSubItem(Item(2), firstColumns, nullptr, true, true);
    Data& second = *m_doc.CreateDataSubItem(Item(2), secondColumns, nullptr, true, true);
    const struct {
      Data& record;
      const DataProp& column;
      const char* pszText;
    } values[] = {{Item(0), m_t, "aaa"}, {Item(0), m_y, "yes"},   {Item(0), m_p, "5"},
                  {Item(0), m_h, "aaa"}, {Item(0), m_n, "aaa"},   {Item(1), m_t, "Red and dark blue"},
                  {Item(1), m_p, "12"},  {Item(1), m_a, "red"}, {Item(2), m_t, "x"},
                  {first, m_t, "aaa"},   {second, m_t, "b"},      {second, m_a, "aaa"}};
    for (const auto& value : values) Enter(m_doc, value.record, value.column, value.pszText);
  }

  DataItem& Item(size_t i) { return *m_doc.GetDataItemMgr().GetAt(i); }

  // The hits described and joined by ", "; also checks that they are
  // numbered from 1.
  std::string Describe(const std::vector<DataFind>& hits) const {
    const DataProp* columns[] = {&m_a, &m_t, &m_y, &m_p, &m_h, &m_n};
    std::string text;
    for (size_t i = 0; i < hits.size(); ++i) {
      EXPECT_EQ(hits[i].GetID(), static_cast<int>(i) + 1);
      std::string letter = "?";
      for (size_t c = 0; c < 6; ++c) {
        if (columns[c]->GetID() == hits[i].GetDataPropID()) letter = std::string(1, "ATYPHN"[c]);
      }
      text += (i > 0 ? ", " : "") + Described(hits[i], letter);
    }
    return text;
  }

  DataMgmt m_doc;
  DataProp& m_t = AddColumn(m_doc, DataType::Text);
  DataProp& m_y = AddColumn(m_doc, DataType::YesNo);
  DataProp& m_p = AddColumn(m_doc, DataType::Number);
  DataProp& m_h = AddColumn(m_doc, DataType::Text);
  DataProp& m_n = AddColumn(m_doc, DataType::Text);
  DataProp& m_a = AddColumn(m_doc, DataType::Text, "", true);
};

}  // namespace

TEST_F(DataMgmtFindTest, TextSearchOverEveryItemAndColumn) {
  const struct {
    const char* pszText;
    bool bMatchCase;
    bool bWholeWord;
    bool bAllWords;
    const char* pszHits;
  } rows[] = {
      // overlapping matches; H and N are left out; the first sub-item,
      // lacking A, keeps A of the second sub-item out of the search
      {"aa", false, false, false, "0 T@0, 0 T@1, 2/0 T@0, 2/0 T@1"},
      {"RED", false, false, false, "1 A@0, 1 T@0"},
      {"Red", true, false, false, "1 T@0"},
      {"ar", false, false, false, "1 T@9"},
      {"ar", false, true, false, ""},
      {"dark", false, true, false, "1 T@8"},
      {"blue red", false, false, false, ""},
      {"blue red", false, false, true, "1 T@13"},
      {"red \"dark blue\"", false, false, true, "1 T@0"},
      {"red \"blue dark\"", false, false, true, ""},
      // a yes/no word is matched against a yes/no value by meaning
      {"yes", false, false, false, "0 Y@-1"},
      {"Y", true, false, false, "0 Y@-1"},
      {"1", false, false, false, "0 Y@-1, 1 P@1"},
      {"no", false, false, false, "1 Y@-1, 2 Y@-1"},
      // positions count the prefix
      {"$1", false, false, false, "1 P@0"},
      {"", false, false, false, ""},
      {"\"\"", false, false, true, ""},
  };
  for (const auto& row : rows) {
    std::vector<DataFind> hits;
    m_doc.Find(row.pszText, row.bMatchCase, row.bWholeWord, row.bAllWords, hits);
    EXPECT_EQ(Describe(hits), row.pszHits) << row.pszText;
  }
}

TEST_F(DataMgmtFindTest, SearchesOfChosenItemsAndColumns) {
  DataFilterMgr checked;
  checked.Add(filter_test::MakeFilter(m_y, DataFilter::IsChecked, "", filter_test::NONE), true);
  std::vector<DataFind> hits;
  m_doc.Find("a", false, false, false, checked, {m_t.GetID(), m_h.GetID()}, hits);
  EXPECT_EQ(Describe(hits), "0 T@0, 0 T@1, 0 T@2");
  // a report searches every shown column of the items passing its filters,
  // and nothing at all when it belongs to another document's registry
  m_doc.GetDataPropMgr().SetID(4);
  for (int nRegistryID : {4, 5}) {
    Report report;
    report.SetDataPropMgrID(nRegistryID);
    report.AddDataPropID(m_h.GetID());
    report.AddFilter(filter_test::MakeFilter(m_y, DataFilter::IsChecked, "", filter_test::NONE));
    std::vector<DataFind> reportHits;
    m_doc.Find("a", false, false, false, report, reportHits);
    EXPECT_EQ(Describe(reportHits), nRegistryID == 4 ? "0 T@0, 0 T@1, 0 T@2" : "") << "registry " << nRegistryID;
  }
  // a long list of IDs is looked up through an index, a short one by scans
  std::vector<int> many = {2};
  many.insert(many.end(), 20, 99);
  many.push_back(1);
  for (const std::vector<int>& ids : {std::vector<int>{2, 99, 1}, many}) {
    std::vector<DataFind> byID;
    m_doc.Find("b", false, false, false, std::vector<int>(), ids, byID);
    EXPECT_EQ(Describe(byID), "2/1 T@0, 1 T@13") << ids.size() << " IDs";
  }
}

TEST_F(DataMgmtFindTest, WholeItemHitsAreAppendedAndHitsResolveToTheirRecords) {
  std::vector<DataFind> hits(1);
  m_doc.Find(DataFilterMgr(), hits);
  DataFilterMgr onColumnNone;
  onColumnNone.Add(new DataFilter, true);
  m_doc.Find(onColumnNone, hits);
  ASSERT_EQ(hits.size(), 4u);
  EXPECT_EQ(Describe({hits.begin() + 1, hits.end()}), "0 ?@-1, 1 ?@-1, 2 ?@-1");
  DataFind hit;
  const struct {
    int nItemID;
    int nSubItemID;
    DataItem* pItem;
    DataSubItem* pSubItem;
  } rows[] = {
      {2, 1, &Item(2), Item(2).GetSubItemsMgr().GetAt(1)}, {2, -1, &Item(2), nullptr}, {7, 0, nullptr, nullptr}};
  for (const auto& row : rows) {
    hit.SetDataItemID(row.nItemID);
    hit.SetDataSubItemID(row.nSubItemID);
    DataItem* pItem = &Item(0);
    DataSubItem* pSubItem = Item(2).GetSubItemsMgr().GetAt(0);
    m_doc.Find(hit, pItem, pSubItem);
    EXPECT_EQ(pItem, row.pItem) << row.nItemID << "/" << row.nSubItemID;
    EXPECT_EQ(pSubItem, row.pSubItem) << row.nItemID << "/" << row.nSubItemID;
  }
}

TEST(DataFindMgrTest, HitsAreMatchedByPlaceNotByNumber) {
  DataFindMgr hits;
  hits.Add(MakeHit(1, 0));
  hits.Add(MakeHit(2, 4));
  hits.Remove(MakeHit(9, 4));
  DataFindMgr other;
  other.Add(MakeHit(5, 0));
  EXPECT_TRUE(hits == other);
  EXPECT_FALSE(MakeHit(1, 0, -1, "a.txt") == MakeHit(1, 0));
  hits.Swap(0, 1);
  hits.RemoveAt(1);
  hits.SetDataFindID(1, 3);
  ASSERT_EQ(hits.GetCount(), 1u);
  EXPECT_EQ(Listed(hits.GetAt(0)), "1:7 5001@0");
  EXPECT_THROW(hits.GetAt(1), std::out_of_range);
}

// The replaced length is never stored; a hit loaded over a used one keeps
// nothing of it, and a list appends what it loads.
TEST(DataFindMgrTest, ArchivesOfBothVersions) {
  DataFindMgr current;
  current.Add(MakeHit(4, 3, 2, "p", 6));
  ByteWriter currentBytes;
  WriteHit(currentBytes.Word(2).Counter(1, false), 2, 4);  // version, hit count, the hit
  test_support::ExpectArchiveForm(current, currentBytes.Get(), [](const DataFindMgr& loaded) {
    EXPECT_EQ(Listed(loaded.GetAt(0)), "4:7 5001@3 2 p");
  });
  ByteWriter hitBytes;
  DataFind used = MakeHit(1, 0, 9, "old", 6);
  test_support::LoadAll(WriteHit(hitBytes, 1, 4).Get(), used);
  EXPECT_EQ(Listed(used), "4:7 5001@3");
  ByteWriter listBytes;
  WriteHit(WriteHit(listBytes.Word(1).Counter(2, true), 1, 4), 1, 5);  // version, hit count, two hits
  DataFindMgr hits;
  hits.Add(MakeHit(8, 0));
  test_support::LoadAll(listBytes.Get(), hits);
  ASSERT_EQ(hits.GetCount(), 3u);
  EXPECT_EQ(Listed(hits.GetAt(0)) + ", " + Listed(hits.GetAt(2)), "8:7 5001@0, 5:7 5001@3");
  test_support::ExpectEveryCutThrowsEndOfFile(listBytes.Get(), [](CArchive& ar) { DataFindMgr().Serialize(ar); });
  const test_support::Bytes huge = ByteWriter().Word(2).Counter(1ull << 40, false).Get();
  EXPECT_THROW(test_support::Load(huge, [](CArchive& ar) { DataFindMgr().Serialize(ar); }), CArchiveException);
}

TEST(FoundWordMgrTest, WordsAreFoundAndRemovedByExactWord) {
  FoundWordMgr words;
  for (const char* pszWord : {"Red", "red", "red"}) {
    FoundWord word;
    word.SetWord(pszWord);
    words.Add(word);
  }
  words.FindWord("red")->AddLocation(MakeHit(1, 0));
  EXPECT_EQ(words.GetAt(1).GetLocationCount(), 1u);
  EXPECT_EQ(words.FindWord("RED"), nullptr);
  words.Remove(words.GetAt(2));
  ASSERT_EQ(words.GetCount(), 2u);
  EXPECT_EQ(words.GetAt(1).GetLocationCount(), 0u) << "the first red went, the one without locations stays";
  EXPECT_EQ(words.GetAt(0).GetLocationAt(0).GetDataItemID(), -1);
  EXPECT_THROW(words.GetAt(2), std::out_of_range);
}
