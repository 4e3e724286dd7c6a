// Highlight rules: colours, the special rules, which rule colours an item
// or a sub-item, editing a set, and both archives with every old version.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "DataMgr/filter/HighlightFilterMgr.h"
#include "tests/DataMgr/filter/FilterFixtures.h"
#include "tests/support/LocaleTestSupport.h"

using document_test::AddColumn;
using filter_test::FilterRecord;
using filter_test::Type;
using test_support::Bytes;
using test_support::ByteWriter;
using test_support::ExpectArchiveForm;
using test_support::Loaded;

namespace {

const COLORREF WHITE = RGB(255, 255, 255);
const COLORREF FILE_RED = RGB(255, 136, 136);

HighlightFilter* Rule(const HighlightFilterMgr& set, size_t nIndex) {
  return dynamic_cast<HighlightFilter*>(set.GetAt(nIndex));
}

class HighlightFilterTest : public test_support::UsLocaleTest {
 protected:
  // Rules from tokens: =n or !n (Include or Exclude Number == n), >n, F (the
  // file rule on the path column), T (the today rule on the date column).
  // Rule i has the colour RGB(i + 1, 0, 0).
  void AddRules(HighlightFilterMgr& set, const char* pszRules) {
    std::istringstream tokens(pszRules);
    std::string token;
    while (tokens >> token) {
      if (token == "F") {
        set.AddFileDoesntExistFilter(m_path.GetID());
      } else if (token == "T") {
        set.AddTodayFilter(m_date.GetID());
      } else {
        HighlightFilter* pRule = set.CreateEntry(true);
        pRule->SetDataPropID(m_number.GetID());
        pRule->SetDataType(DataType::Number);
        pRule->SetFilterType(token[0] == '>' ? DataFilter::IsGreaterThan : DataFilter::IsExactlyEqualTo);
        pRule->SetInclude(token[0] != '!');
        pRule->SetValue(CString(token.substr(1)));
      }
      Rule(set, set.GetCount() - 1)->SetColor(RGB(BYTE(set.GetCount()), 0, 0));
    }
  }

  DataMgmt m_doc;
  DataProp& m_number = AddColumn(m_doc, DataType::Number);
  DataProp& m_path = AddColumn(m_doc, DataType::DataFilePath);
  DataProp& m_date = AddColumn(m_doc, DataType::Date);
  DataItem& m_item = *m_doc.CreateDataItem(nullptr, true, true);
};

CString TodayText() {
  DateTime now;
  now.SetToCurrent();
  return DateTime::ConvertDateToText(now, false, false, false, true);
}

// A HighlightFilter record of nVersion in front of a condition record.
Bytes RuleRecord(unsigned nVersion, bool bFile, bool bToday, COLORREF nColor, const FilterRecord& condition,
                 const char* pszName = "name") {
  ByteWriter out;
  out.Word(nVersion);
  if (nVersion >= 2) out.Bool(bFile);
  if (nVersion < 3) out.Bool(true);  // the dropped flag
  if (nVersion >= 4) out.Bool(bToday);
  if (nVersion < 3) out.Int(9);  // the ID
  out.Int(nColor);
  if (nVersion >= 5) out.Text(pszName);
  return condition.AppendTo(out).Get();
}

// A HighlightFilterMgr record of nVersion holding rules.
Bytes SetRecord(unsigned nVersion, const std::vector<Bytes>& rules) {
  ByteWriter out;
  out.Word(2).Counter(rules.size(), false);  // the DataFilterMgr record
  for (const Bytes& rule : rules) out.Raw(rule);
  return out.Word(nVersion).Bool(true).Int(RGB(1, 2, 3)).Get();  // must-pass-all, default colour
}

}  // namespace

// The default colour reddens in steps of 10, then greens, then blues (and
// wraps); the file rule has its own colour and does not advance it.
TEST_F(HighlightFilterTest, DefaultColoursAdvanceReddeningFirst) {
  HighlightFilterMgr set;
  set.CreateEntry(true);
  set.CreateEntry(true);
  set.AddFileDoesntExistFilter(1);
  set.CreateEntry(true);
  set.AddTodayFilter(1);
  delete set.CreateEntry(false);
  for (int i = 0; i < 3; ++i) set.CreateEntry(true);
  const COLORREF expected[] = {RGB(220, 217, 193), RGB(230, 217, 193), FILE_RED,           RGB(240, 217, 193),
                               RGB(250, 217, 193), RGB(250, 237, 193), RGB(250, 247, 193), RGB(250, 247, 203)};
  ASSERT_EQ(set.GetCount(), 8u);
  for (size_t i = 0; i < set.GetCount(); ++i) EXPECT_EQ(Rule(set, i)->GetColor(), expected[i]) << i;
  for (int i = 0; i < 5; ++i) set.CreateEntry(true);
  EXPECT_EQ(set.GetDefaultColor(), RGB(250, 247, 7));
}

TEST_F(HighlightFilterTest, TheFirstMatchingRuleColoursAnItem) {
  const struct {
    const char* pszRules;
    bool bMustPassAll;
    const char* pszPath;
    bool bToday;
    bool bHighlight;
    COLORREF nColor;
  } rows[] = {
      {"", false, "", false, false, WHITE},
      {"!6", false, "", false, false, WHITE},  // Exclude never highlights
      {"=6 =5 >1", false, "", false, true, RGB(2, 0, 0)},
      {"T =5", false, "", true, true, RGB(2, 0, 0)},  // ordinary rules first
      {"=5 >1", true, "", false, true, RGB(2, 0, 0)},
      {"=5 >6", true, "", false, false, RGB(1, 0, 0)},
      {"=5 T", true, "", true, true, RGB(2, 0, 0)},
      {"F", false, "/no/such/file.txt", false, true, RGB(1, 0, 0)},
      {"F", false, "http://example.com/gone.txt", false, false, WHITE},
      {"T F", false, "", false, false, WHITE},
  };
  for (const auto& row : rows) {
    DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
    Type(m_doc, item, m_number, "5");
    item.SetData(m_path.GetID(), CString(row.pszPath), false);
    if (row.bToday) Type(m_doc, item, m_date, TodayText());
    HighlightFilterMgr set;
    AddRules(set, row.pszRules);
    set.SetMustPassAllFilters(row.bMustPassAll);
    COLORREF nColor = 0;
    EXPECT_EQ(set.DoHighlight(item, nColor), row.bHighlight) << row.pszRules << " " << row.pszPath;
    EXPECT_EQ(nColor, row.nColor) << row.pszRules << " " << row.pszPath;
  }
}

// A sub-item lacking the column passes an ordinary rule; its file test
// takes internet addresses as files; its today test wants the current date
// and time to the second.
TEST_F(HighlightFilterTest, SubItemsHaveTheirOwnSpecialTests) {
  std::vector<int> columns = {m_path.GetID(), m_date.GetID()};
  DataSubItem& sub = *m_doc.CreateDataSubItem(m_item, columns, nullptr, true, true);
  sub.SetData(m_path.GetID(), CString("http://example.com/gone.txt"), false);
  Type(m_doc, sub, m_date, TodayText());
  HighlightFilterMgr set;
  AddRules(set, "=5 F T");
  COLORREF nColor = 0;
  EXPECT_TRUE(set.DoHighlight(sub, nColor) && nColor == RGB(1, 0, 0));
  set.GetAt(0)->SetDataPropID(-1);
  EXPECT_TRUE(set.DoHighlight(sub, nColor) && nColor == RGB(2, 0, 0));
  set.DeleteFileDoesntExistFilters();
  EXPECT_FALSE(set.DoHighlight(sub, nColor));
  bool bHighlighted = false;
  for (int nTry = 0; nTry < 3 && !bHighlighted; ++nTry) {  // the clock may tick between the two reads
    DateTime now;
    now.SetToCurrent();
    sub.SetData(m_date.GetID(), now, false);
    bHighlighted = set.DoHighlight(sub, nColor);
  }
  EXPECT_TRUE(bHighlighted);
}

// Each call removes every other rule of a run of rules of that kind.
TEST_F(HighlightFilterTest, DeletingSpecialRulesSkipsTheRuleBehindARemovedOne) {
  HighlightFilterMgr set;
  AddRules(set, "F F T T =1");
  set.DeleteFileDoesntExistFilters();
  EXPECT_TRUE(set.HaveFileDoesntExistFilter());
  set.DeleteFileDoesntExistFilters();
  EXPECT_FALSE(set.HaveFileDoesntExistFilter());
  set.DeleteTodayFilters();
  EXPECT_EQ(set.GetCount(), 2u);
  EXPECT_TRUE(set.HaveTodayFilter());
}

// "Include" and "Exclude" are replaced in the quoted value too.
TEST_F(HighlightFilterTest, Descriptions) {
  HighlightFilter rule;
  rule.SetFilterType(DataFilter::Contains);
  rule.SetValue("Include or Exclude");
  EXPECT_EQ(rule.GetDescription(), "Highlight if \"%s\" contains \"Highlight or Exclude\".");
  rule.SetInclude(false);
  EXPECT_EQ(rule.GetDescription(), "Don't highlight if \"%s\" contains \"Include or Don't highlight\".");
  rule.SetIsFileDoesntExistFilter();
  EXPECT_EQ(rule.GetDescription(), "Don't highlight if file does not exist.");
  HighlightFilter today;
  today.SetIsTodayFilter();
  EXPECT_EQ(today.GetDescription(), "Highlight if date is \"today\".");
}

// Copying a set keeps plain conditions only; CopyEntries and Sync carry
// whole rules.
TEST_F(HighlightFilterTest, CopyEntriesSyncAndTheRuleBehindAColour) {
  HighlightFilterMgr set;
  AddRules(set, "=5 =6 F");
  const HighlightFilterMgr copy(set);
  EXPECT_EQ(Rule(copy, 0), nullptr);
  EXPECT_TRUE(*copy.GetAt(0) == *set.GetAt(0));
  Type(m_doc, m_item, m_number, "5");
  EXPECT_EQ(set.GetHighlightFilter(m_item, RGB(1, 0, 0)), set.GetAt(0));
  EXPECT_EQ(set.GetHighlightFilter(m_item, RGB(2, 0, 0)), nullptr);
  EXPECT_EQ(set.GetHighlightFilter(m_item, RGB(3, 0, 0)), set.GetAt(2));

  std::vector<HighlightFilter*> edited;
  set.CopyEntries(edited);
  ASSERT_EQ(edited.size(), 3u);
  EXPECT_TRUE(*edited[2] == *Rule(set, 2));
  edited[0]->SetName("edited");
  auto* pKeepsNoID = new HighlightFilter;
  auto* pGetsAnID = new HighlightFilter;
  pGetsAnID->SetID(0);
  set.Sync({edited[0]}, {pKeepsNoID, nullptr, pGetsAnID}, {Rule(set, 1)});
  for (HighlightFilter* pRule : edited) delete pRule;
  ASSERT_EQ(set.GetCount(), 4u);
  EXPECT_EQ(Rule(set, 0)->GetName(), "edited");
  EXPECT_EQ(set.GetAt(2)->GetID(), -1);
  EXPECT_EQ(set.GetAt(3)->GetID(), 3);
}

// Version 1 holds a condition of version 1 (its version word only) and the
// rule's own ID; 2 adds the file flag, 4 the today flag, 5 the name. Each
// is stored again as the current version.
TEST_F(HighlightFilterTest, RuleArchiveOfEveryVersion) {
  const FilterRecord condition(4);
  HighlightFilter rule;
  rule.SetIsFileDoesntExistFilter();
  rule.SetIsTodayFilter();
  rule.SetColor(RGB(1, 2, 3));
  rule.SetName("name");
  rule.SetID(4);
  ExpectArchiveForm(rule, RuleRecord(5, true, true, RGB(1, 2, 3), condition),
                    [&](const HighlightFilter& loaded) { EXPECT_TRUE(loaded == rule); });
  const FilterRecord versionOne(-1, "", 1);
  for (unsigned nVersion = 1; nVersion <= 6; ++nVersion) {
    const Bytes bytes = RuleRecord(nVersion, true, true, RGB(1, 2, 3), nVersion == 1 ? versionOne : condition);
    auto loaded = Loaded<HighlightFilter>(bytes);
    const Bytes current = RuleRecord(5, nVersion >= 2, nVersion >= 4, RGB(1, 2, 3),
                                     nVersion == 1 ? FilterRecord(9) : condition, nVersion >= 5 ? "name" : "");
    EXPECT_EQ(test_support::ToHex(test_support::Stored(loaded)), test_support::ToHex(current)) << nVersion;
    test_support::ExpectEveryCutThrowsEndOfFile(bytes, [](CArchive& ar) { HighlightFilter().Serialize(ar); });
  }
}

// Version 1 of the set gives file rules in the old red their new colour.
TEST_F(HighlightFilterTest, SetArchiveRepairsTheOldFileColour) {
  const FilterRecord condition;
  const std::vector<Bytes> rules = {RuleRecord(5, true, false, RGB(250, 0, 0), condition),
                                    RuleRecord(5, false, true, RGB(250, 0, 0), condition),
                                    RuleRecord(5, true, false, RGB(250, 0, 1), condition)};
  HighlightFilterMgr current = Loaded<HighlightFilterMgr>(SetRecord(2, rules));
  EXPECT_TRUE(current.GetMustPassAllFilters());
  ExpectArchiveForm(current, SetRecord(2, rules));
  const HighlightFilterMgr old = Loaded<HighlightFilterMgr>(SetRecord(1, rules));
  const COLORREF expected[] = {FILE_RED, RGB(250, 0, 0), RGB(250, 0, 1)};
  for (size_t i = 0; i < 3; ++i) EXPECT_EQ(Rule(old, i)->GetColor(), expected[i]) << i;
}
