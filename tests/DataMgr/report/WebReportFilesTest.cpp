// Web reports on real files: templates loaded from a folder, and the
// output files moved to another folder or given another base name.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "DataMgr/report/WebReport.h"
#include "framework/CWaitCursor.h"
#include "tests/support/TempFolder.h"

using test_support::TempFolder;
using test_support::WriteRaw;

namespace {

std::vector<bool> g_busyCalls;

void RecordBusy(bool bBusy) { g_busyCalls.push_back(bBusy); }

// The file names in dir, sorted, separated by blanks.
std::string Listing(const std::string& dir) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(dir)) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
  return text;
}

// Makes dir and in it one file per blank-separated name, holding its name.
void WriteFiles(const std::string& dir, const char* pszNames) {
  std::filesystem::create_directories(dir);
  std::istringstream names(pszNames);
  for (std::string name; names >> name;) WriteRaw(dir + "/" + name, name);
}

}  // namespace

// A template that cannot be read (here the process's own memory, which
// gives a read error) loads as empty; a missing one keeps its content.
TEST(WebReportFilesTest, TemplatesLoadAsCrLfLines) {
  TempFolder folder;
  const CString dir = (folder.Path() + "/").c_str();
  WebReport report;
  report.SetLevelCount(3);
  const char* pszNames[] = {"one.html", "two.html", "three.html"};
  for (size_t i = 0; i < 3; ++i) report.GetLevel(i + 1)->SetTemplateFile(pszNames[i]);
  WriteRaw(folder / "two.html", "two");
  WriteRaw(folder / "three.html", "three");
  for (const char* pszBytes : {"<p>\n</p>", "<p>\r</p>\r\n"}) {
    WriteRaw(folder / "one.html", pszBytes);
    EXPECT_TRUE(report.LoadHTMLTemplates(dir)) << pszBytes;
    EXPECT_EQ(report.GetLevel(1)->GetTemplateFileContent(), "<p>\r\n</p>\r\n") << pszBytes;
  }
  WriteRaw(folder / "one.html", "");
  std::filesystem::remove(folder / "two.html");
  std::filesystem::create_symlink("/proc/self/mem", folder / "two.html");
  std::filesystem::remove(folder / "three.html");
  EXPECT_FALSE(report.LoadHTMLTemplates(dir));
  CString contents;
  for (size_t i = 1; i <= 3; ++i) contents += report.GetLevel(i)->GetTemplateFileContent() + "|";
  EXPECT_EQ(contents, "||three\r\n|");
  report.UnloadHTMLTemplates();
  EXPECT_EQ(report.GetLevel(3)->GetTemplateFileContent(), "");
}

// The pages and thumbnails move, under the wait cursor; index2.html cannot
// (the new folder has one) and stays. The same folder in other letter case,
// no moving, or no main page: the folder is set and nothing moves.
TEST(WebReportFilesTest, ChangingTheFolderMovesThePagesAndThumbnails) {
  TempFolder root;
  const std::string oldDir = root / "old/";
  const std::string newDir = root / "new/";
  WriteFiles(oldDir, "INDEX3.HTML index.html index.txt index2.html other.html pic_index_TN.jpg");
  WriteFiles(newDir, "");
  WriteRaw(newDir + "index2.html", "theirs");
  WebReport report;
  report.SetBaseFileName("index.html", false);
  report.SetOutputDir(oldDir.c_str(), false);
  CWaitCursor::SetHook(RecordBusy);
  EXPECT_FALSE(report.SetOutputDir(newDir.c_str(), true));
  EXPECT_EQ(g_busyCalls, (std::vector<bool>{true, false}));
  EXPECT_EQ(Listing(oldDir), "index.txt index2.html other.html");
  EXPECT_EQ(Listing(newDir), "INDEX3.HTML index.html index2.html pic_index_TN.jpg");
  EXPECT_EQ(test_support::ReadRaw(newDir + "index2.html"), "theirs");
  CString upper = newDir.c_str();
  EXPECT_TRUE(report.SetOutputDir(upper.MakeUpper(), true));
  EXPECT_EQ(report.GetOutputDir(), newDir.c_str());
  EXPECT_TRUE(report.SetOutputDir(oldDir.c_str(), false));
  report.SetBaseFileName("absent.html", false);
  EXPECT_TRUE(report.SetOutputDir(newDir.c_str(), true));
  CWaitCursor::SetHook(nullptr);
  EXPECT_EQ(Listing(oldDir), "index.txt index2.html other.html");
  EXPECT_EQ(g_busyCalls.size(), 2u);
}

// Each file keeps its extension; the pages renamed are those with the new
// name's extension; a name taken (home2.html) leaves its file as it was.
TEST(WebReportFilesTest, ChangingTheBaseNameRenamesTheOutputFiles) {
  const char* pszFiles = "a_index_TN.jpg b_INDEX_tn.png home2.html index.html index.txt index2.html other.html";
  const struct {
    const char* pszOld;
    const char* pszNew;
    bool bRename;
    bool bResult;
    const char* pszFiles;
  } rows[] = {
      {"index.html", "home.html", true, false,
       "a_home_TN.jpg b_home_tn.png home.html home2.html index.txt index2.html other.html"},
      {"index.html", "home.htm", true, true,
       "a_home_TN.jpg b_home_tn.png home2.html index.html index.txt index2.html other.html"},
      {"index.html", "Index.html", true, true,
       "Index.html Index2.html a_Index_TN.jpg b_Index_tn.png home2.html index.txt other.html"},
      {"index.html", "home.html", false, true, pszFiles},
      {"index.html", "index.html", true, true, pszFiles},
      {"gone.html", "index.html", true, true, pszFiles},
  };
  for (const auto& row : rows) {
    TempFolder folder;
    WriteFiles(folder.Path(), pszFiles);
    WebReport report;
    report.SetOutputDir((folder.Path() + "/").c_str(), false);
    report.SetBaseFileName(row.pszOld, false);
    EXPECT_EQ(report.SetBaseFileName(row.pszNew, row.bRename), row.bResult) << row.pszOld << " to " << row.pszNew;
    EXPECT_EQ(report.GetBaseFileName(), row.pszNew);
    EXPECT_EQ(Listing(folder.Path()), row.pszFiles) << row.pszOld << " to " << row.pszNew;
  }
}
