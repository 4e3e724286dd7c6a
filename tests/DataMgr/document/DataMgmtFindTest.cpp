// Search as a host runs it: a small document searched in every way, each
// hit checked field by field through a short description of it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "DataMgr/report/Report.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/DataMgr/filter/FilterFixtures.h"
#include "tests/support/LocaleTestSupport.h"

namespace {

using document_test::AddColumn;
using document_test::Enter;

// Columns: the application column A (ID 3, added last but searched first),
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
    auto* pApp = new DataProp;
    pApp->SetID(3);
    pApp->SetDataType(DataType::Text);
    m_doc.AddDataProp(pApp, false, true, false, false);
    m_pA = pApp;
    for (int i = 0; i < 3; ++i) m_doc.CreateDataItem(nullptr, true, true);
    std::vector<int> firstColumns = {m_t.GetID()};
    std::vector<int> secondColumns = {m_t.GetID(), m_pA->GetID()};
    Data& first = *m_doc.CreateDataSubItem(Item(2), firstColumns, nullptr, true, true);
    Data& second = *m_doc.CreateDataSubItem(Item(2), secondColumns, nullptr, true, true);
    const struct {
      Data& record;
      const DataProp& column;
      const char* pszText;
    } values[] = {{Item(0), m_t, "aaa"}, {Item(0), m_y, "yes"},   {Item(0), m_p, "5"},
                  {Item(0), m_h, "aaa"}, {Item(0), m_n, "aaa"},   {Item(1), m_t, "Red and dark blue"},
                  {Item(1), m_p, "12"},  {Item(1), *m_pA, "red"}, {Item(2), m_t, "x"},
                  {first, m_t, "aaa"},   {second, m_t, "b"},      {second, *m_pA, "aaa"}};
    for (const auto& value : values) Enter(m_doc, value.record, value.column, value.pszText);
  }

  DataItem& Item(size_t i) { return *m_doc.GetDataItemMgr().GetAt(i); }

  // "item[/sub-item] column@start" per hit, joined by ", "; also checks
  // that the hits are numbered from 1 and carry no host fields.
  std::string Describe(const std::vector<DataFind>& hits) const {
    std::string text;
    for (size_t i = 0; i < hits.size(); ++i) {
      const DataFind& hit = hits[i];
      EXPECT_EQ(hit.GetID(), static_cast<int>(i) + 1);
      EXPECT_TRUE(hit.GetReplacedLength() == -1 && hit.GetLineCount() == -1 && hit.GetFilePath().IsEmpty());
      if (i > 0) text += ", ";
      text += std::to_string(hit.GetDataItemID());
      if (hit.GetDataSubItemID() != -1) text += "/" + std::to_string(hit.GetDataSubItemID());
      text += " " + ColumnLetter(hit.GetDataPropID()) + "@" + std::to_string(hit.GetStartIndex());
    }
    return text;
  }

  std::string ColumnLetter(int nID) const {
    const DataProp* columns[] = {m_pA, &m_t, &m_y, &m_p, &m_h, &m_n};
    for (size_t i = 0; i < 6; ++i) {
      if (columns[i]->GetID() == nID) return std::string(1, "ATYPHN"[i]);
    }
    return "?";
  }

  DataMgmt m_doc;
  DataProp& m_t = AddColumn(m_doc, DataType::Text);
  DataProp& m_y = AddColumn(m_doc, DataType::YesNo);
  DataProp& m_p = AddColumn(m_doc, DataType::Number);
  DataProp& m_h = AddColumn(m_doc, DataType::Text);
  DataProp& m_n = AddColumn(m_doc, DataType::Text);
  DataProp* m_pA = nullptr;
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
      {"true", false, false, false, "0 Y@-1"},
      {"1", false, false, false, "0 Y@-1, 1 P@1"},
      {"no", false, false, false, "1 Y@-1, 2 Y@-1"},
      // positions count the prefix
      {"$1", false, false, false, "1 P@0"},
      {"2", false, false, false, "1 P@2"},
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
