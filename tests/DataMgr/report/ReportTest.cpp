// Reports and web reports: columns, filters, levels and archives.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "DataMgr/report/Report.h"
#include "DataMgr/report/WebReport.h"
#include "tests/DataMgr/report/ReportArchiveWriter.h"

using report_test::Checked;
using test_support::ByteWriter;

// On columns 7, 3, 7; the base edits leave the filter and the sort key on 7.
TEST(ReportTest, ColumnEdits) {
  const struct {
    const char* pszEdit;
    std::function<bool(Report&)> edit;
    bool bResult;
    std::vector<int> columns;
  } rows[] = {
      {"remove 7", [](Report& r) { return r.RemoveDataPropID(7); }, true, {3}},
      {"remove absent", [](Report& r) { return r.RemoveDataPropID(9); }, false, {7, 3, 7}},
      {"remove at 1", [](Report& r) { return r.RemoveDataPropAtIndex(1), true; }, true, {7, 7}},
      {"remove at 3", [](Report& r) { return r.RemoveDataPropAtIndex(3), true; }, true, {7, 3, 7}},
      {"swap", [](Report& r) { return r.SwapDataProps(0, 1), true; }, true, {3, 7, 7}},
      {"swap out of range", [](Report& r) { return r.SwapDataProps(0, 3), true; }, true, {7, 3, 7}},
      {"remove all", [](Report& r) { return r.RemoveDataProps(), true; }, true, {}},
  };
  for (const auto& row : rows) {
    Report report;
    for (int nID : {7, 3, 7}) report.AddDataPropID(nID);
    report.AddFilter(Checked(7));
    report.SetSortOrder(report_test::Order(1, "S", 7));
    EXPECT_EQ(row.edit(report), row.bResult) << row.pszEdit;
    std::vector<int> columns;
    report.GetDataPropIDs(columns);
    EXPECT_EQ(columns, row.columns) << row.pszEdit;
    SortOrder order;
    report.GetSortOrder(order);
    EXPECT_EQ(report.GetFilterCount() + order.GetDataPropIDCount(), 2u) << row.pszEdit;
  }
}

TEST(ReportTest, EqualByExactNameOrderedIgnoringCase) {
  const auto named = [](const char* pszName) {
    Report report;
    report.SetName(pszName);
    return report;
  };
  EXPECT_TRUE(named("Books") == named("Books") && !(named("Books") == named("books")));
  EXPECT_FALSE(named("Books") < named("books") || named("books") < named("Books"));
  EXPECT_TRUE(named("apple") < named("Books") && named("books") < named("Cars"));
}

// Loaded over a report with another description and registry.
TEST(ReportTest, OlderAndNewerVersionsLoad) {
  const struct {
    unsigned nVersion;
    int nStoredRegistry;
    int nRegistry;
    const char* pszDesc;
  } rows[] = {{3, -1, 0, ""}, {3, 2, 2, ""}, {4, -1, -1, ""}, {5, -1, -1, "d"}, {6, -1, -1, "d"}, {9, -1, -1, "d"}};
  for (const auto& row : rows) {
    ByteWriter bytes;
    report_test::ReportRecord(bytes, row.nVersion, row.nStoredRegistry, report_test::Filters(5));
    Report report;
    report.SetDesc("old");
    report.SetDataPropMgrID(8);
    test_support::LoadAll(bytes.Get(), report);
    EXPECT_EQ(report.GetDataPropMgrID(), row.nRegistry) << row.nVersion;
    EXPECT_EQ(report.GetDesc(), row.pszDesc) << row.nVersion;
    report.AddFilter(Checked(1));
    EXPECT_EQ(report.GetFilterAt(1)->GetID(), 6) << row.nVersion;
    test_support::ExpectEveryCutThrowsEndOfFile(bytes.Get(), [](CArchive& ar) { Report().Serialize(ar); });
  }
}

namespace {

CString TemplateOf(const WebReport& report, size_t nLevel) {
  const WebReportLevel* pLevel = report.GetLevel(nLevel);
  return pLevel == nullptr ? "(none)" : pLevel->GetTemplateFile();
}

// The web report of WebReportRecord(out, 13, 0).
void FillWebReport(WebReport& report) {
  report.SetID(4);
  report.SetName("R");
  report.SetDesc("d");
  report.SetMRUExportPath("m");
  report.SetSortOrder(report_test::Order(2, "S", 7));
  report.AddDataPropID(7);
  report.AddDataPropID(3);
  report.AddFilter(Checked(1));
  report.SetAutoGenerate(false);
  report.SetAutoUpload(false);
  report.SetImageLocation(WebReport::ImagesWhereTheyAre);
  report.SetBaseFileName("index.html", false);
  report.SetOutputDir("/out/", false);
  report.SetHPReturnLink("home");
  report.SetNoDataMsg("none");
  report.SetProcessingMsg("busy");
  report.GetLevel(1)->SetTemplateFile("t.html");
  report.GetLevel(1)->SetSortOrder(report_test::Order(1, "L", 5));
  report.AddNewRepFilter(Checked(1));
}

}  // namespace

TEST(WebReportTest, ANewReportAndItsLevelsNumberedFromOne) {
  WebReport report;
  EXPECT_TRUE(report.GetAutoGenerate() && report.GetAutoUpload());
  EXPECT_EQ(report.GetNoDataMsg(), "At this time, there are no entries to list for this report.");
  ASSERT_EQ(report.GetLevelsCount(), 1u);
  report.GetLevel(1)->SetTemplateFile("first");
  report.SetLevelCount(3);
  const char* pszTemplates[] = {"(none)", "first", "", "", "(none)"};
  for (size_t i = 0; i < 5; ++i) EXPECT_EQ(TemplateOf(report, i), pszTemplates[i]) << "level " << i;
  report.SetLevelCount(0);
  EXPECT_EQ(report.GetLevel(1), nullptr);
}

// Filters get fresh IDs; the own filters are a second set, and removing a
// column takes it out of those, not the report's.
TEST(WebReportTest, FiltersAndOwnFilters) {
  WebReport report;
  DataItem item;
  DataSubItem sub;
  EXPECT_TRUE(report.DoesDataItemPassRepFilters(&item) && !report.DoesDataItemPassRepFilters(nullptr));
  report.AddFilter(Checked(1));
  report.AddFilter(Checked(1));
  report.DeleteFilter(report.GetFilterAt(0));
  EXPECT_EQ(report.GetFilterAt(0)->GetID(), 1);
  EXPECT_EQ(report.GetFilterAt(1), nullptr);
  report.DeleteAllFilters();
  report.AddFilter(Checked(1));
  EXPECT_EQ(report.GetFilterAt(0)->GetID(), 0);
  EXPECT_FALSE(report.DoesDataItemPassFilters(item));
  EXPECT_TRUE(report.DoesDataSubItemPassFilters(sub, true) && !report.DoesDataSubItemPassFilters(sub, false));
  report.AddNewRepFilter(Checked(1));
  report.AddNewRepFilter(Checked(2));
  EXPECT_FALSE(report.DoesDataItemPassRepFilters(&item));
  static_cast<Data&>(item).RegisterDataProp(1, true);
  EXPECT_TRUE(report.DoesDataItemPassFilters(item));
  report.AddDataPropID(1);
  EXPECT_TRUE(static_cast<Report&>(report).RemoveDataPropID(1));
  EXPECT_EQ(report.GetRepFilterCount(), 1u);
  report.DeleteRepFilter(report.GetFilterAt(0));  // not one of the own filters: nothing happens
  report.DeleteRepFilter(report.GetRepFilterAt(0));
  EXPECT_EQ(report.GetRepFilterCount(), 0u);
  EXPECT_EQ(report.GetFilterCount(), 1u);
}

// Assigned, then copied: every field is carried, and a copy's level and
// filters are its own.
TEST(WebReportTest, CurrentArchiveFormAndCopies) {
  WebReport report;
  FillWebReport(report);
  ByteWriter expected;
  report_test::WebReportRecord(expected, 13, 0);
  test_support::ExpectArchiveForm(report, expected.Get(), [](const WebReport& loaded) {
    EXPECT_EQ(loaded.GetProcessingMsg(), "");
  });
  WebReport assigned;
  assigned = report;
  WebReport copy(assigned);
  EXPECT_EQ(copy.GetProcessingMsg(), "busy");
  test_support::ExpectArchiveForm(copy, expected.Get());
  copy.GetLevel(1)->SetTemplateFile("other");
  copy.GetFilterAt(0)->SetDataPropID(2);
  copy.GetRepFilterAt(0)->SetDataPropID(2);
  test_support::ExpectArchiveForm(assigned, expected.Get());
}

// Loaded over a report with another link, texts and levels: every retired
// field is skipped (every byte is read), the link stays before version 13,
// the default no-data text stands before version 6, and the level of version
// 5 is of version 1.
TEST(WebReportTest, EveryVersionFromFiveOn) {
  for (unsigned nVersion = 5; nVersion <= 14; ++nVersion) {
    ByteWriter bytes;
    report_test::WebReportRecord(bytes, nVersion, 3);
    WebReport report;
    report.SetHPReturnLink("kept");
    report.SetNoDataMsg("old");
    report.SetProcessingMsg("busy");
    report.SetLevelCount(2);
    test_support::LoadAll(bytes.Get(), report);
    EXPECT_EQ(report.GetHPReturnLink(), nVersion >= 13 ? "home" : "kept") << nVersion;
    EXPECT_EQ(report.GetNoDataMsg(), nVersion >= 6 ? CString("none") : WebReport::DEFAULT_NO_DATA_MSG) << nVersion;
    EXPECT_EQ(report.GetProcessingMsg() + report.GetOutputDir() + report.GetBaseFileName(), "/out/index.html")
        << nVersion;
    EXPECT_TRUE(!report.GetAutoGenerate() && !report.GetAutoUpload()) << nVersion;
    EXPECT_EQ(report.GetImageLocation(), WebReport::ImagesWhereTheyAre) << nVersion;
    EXPECT_EQ(report.GetLevelsCount(), 1u) << nVersion;
    EXPECT_EQ(TemplateOf(report, 1), "t.html") << nVersion;
    SortOrder order;
    report.GetLevel(1)->GetSortOrder(order);
    EXPECT_EQ(order.GetName() + " " + sort_test::Keys(order).c_str(), nVersion == 5 ? "L 7+ 8- 9-" : "L 5-c") << nVersion;
    EXPECT_EQ(report.GetRepFilterAt(0)->GetID(), 3) << nVersion;
    test_support::ExpectEveryCutThrowsEndOfFile(bytes.Get(), [](CArchive& ar) { WebReport().Serialize(ar); });
  }
}
