#include "utility/FileUtils.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/TableTestSupport.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TextArraySupport.h"

using test_support::Elements;
using test_support::ExpectRows;
using test_support::MakeTextArray;
using test_support::ReadRaw;
using test_support::TempFolder;
using test_support::WriteRaw;
using Lines = std::vector<std::string>;

namespace {

size_t EntryCount(const std::string& folder) {
  return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder),
                                           std::filesystem::directory_iterator()));
}

bool Write(const std::string& path, const TextArray& lines, bool bAppend, bool bCRLF) {
  return FileUtils::WriteFileContent(path.c_str(), lines, bAppend, bCRLF);
}

}  // namespace

TEST(FileUtilsTest, FileNamesInBothSeparatorStyles) {
  ExpectRows<const char*>([](const char* p) { return FileUtils::ParseFileNameFromPath(p, true); },
                          {{"C:\\Photos\\img.2010.jpg", "img.2010.jpg"}, {"dir\\sub/file.txt", "file.txt"},
                           {"C:file.txt", "file.txt"}, {"C:\\Photos\\", ""}, {"", ""}});
  ExpectRows<const char*>([](const char* p) { return FileUtils::ParseFileNameFromPath(p, false); },
                          {{"C:\\Photos\\img.2010.jpg", "img.2010"}, {"/home/ann/notes", "notes"},
                           {"/home/ann/.profile", ".profile"}, {"name.", "name"}});
}

TEST(FileUtilsTest, FileTestsAndTheirFlags) {
  TempFolder temp;
  const std::string file = temp / "a.txt";
  WriteRaw(file, "x");
  struct Row {
    std::string path;
    bool bMustExist, bAcceptInternet, bIsFile;
  };
  const Row rows[] = {
      {file, true, false, true},          {temp / "b.txt", true, true, false}, {temp / "b.txt", false, false, true},
      {temp.Path(), true, false, false},
      {temp.Path(), false, false, false}, {temp / "dir/", false, false, false}, {"C:", false, false, false},
      {"  ", false, true, false},         {"http://x.com/a.jpg", true, true, true},
      {"http://x.com/a.jpg", false, false, false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FileUtils::IsFile(row.path.c_str(), row.bMustExist, row.bAcceptInternet), row.bIsFile)
        << row.path << " " << row.bMustExist << row.bAcceptInternet;
  }
}

TEST(FileUtilsTest, ReadingSplitsAtEveryLineEndAppendsAndReportsFailures) {
  TempFolder temp;
  const std::string path = temp / "in.txt";
  const std::pair<std::string, Lines> rows[] = {
      {"unix\nwindows\r\nold mac\rlast", {"unix", "windows", "old mac", "last"}},
      {"a\r\n\r\nb\n\nc\r\rd\n", {"a", "", "b", "", "c", "", "d"}},
      {"\n\r", {"", ""}},
      {"", {}},
      {std::string("nul\0byte\r", 9), {std::string("nul\0byte", 8)}},
  };
  for (const auto& row : rows) {
    WriteRaw(path, row.first);
    TextArray lines = MakeTextArray({"old"});
    EXPECT_TRUE(FileUtils::ReadFileContent(path.c_str(), lines, false, nullptr));
    EXPECT_EQ(Elements(lines), row.second) << row.first;
  }
  TextArray lines = MakeTextArray({"a"});
  CString error = "stale";
  EXPECT_TRUE(FileUtils::ReadFileContent(path.c_str(), lines, true, &error));
  EXPECT_EQ(Elements(lines), (Lines{"a", std::string("nul\0byte", 8)}));
  EXPECT_EQ(error, "");
  for (const std::string& bad : {temp / "missing.txt", temp.Path(), std::string()}) {
    EXPECT_FALSE(FileUtils::ReadFileContent(bad.c_str(), lines, false, &error)) << bad;
    EXPECT_FALSE(error.IsEmpty()) << bad;
    EXPECT_EQ(lines.GetSize(), 2) << bad;
  }
  EXPECT_FALSE(FileUtils::ReadFileContent((temp / "missing.txt").c_str(), lines, false, nullptr));
}

TEST(FileUtilsTest, WritingChoosesTheLineEndAppendsAndKeepsPermissionsAndLinks) {
  TempFolder temp;
  const std::string path = temp / "out.txt";
  const auto written = [&](const std::string& target, const TextArray& lines, bool bAppend, bool bCRLF) {
    return Write(target, lines, bAppend, bCRLF) ? ReadRaw(path) : "failed";
  };
  EXPECT_EQ(written(path, MakeTextArray({"one", "", "two"}), false, false), "one\n\ntwo\n");
  EXPECT_EQ(written(path, MakeTextArray({"three"}), true, true), "one\n\ntwo\nthree\r\n");
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  EXPECT_EQ(written(path, TextArray(), false, false), "");
  struct stat info {};
  ASSERT_EQ(stat(path.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0640u);
  const std::string link = temp / "link.txt";
  std::filesystem::create_symlink(path, link);
  EXPECT_EQ(written(link, MakeTextArray({"through"}), false, true), "through\r\n");
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  ASSERT_TRUE(Write(temp / "fresh.txt", MakeTextArray({"x"}), true, false));
  EXPECT_EQ(ReadRaw(temp / "fresh.txt"), "x\n");
  // Only the files written: no temporary file is left behind.
  EXPECT_EQ(EntryCount(temp.Path()), 3u);
}

// Each of these fails even for a user who may write anywhere; the file
// beside them, and the folder, must stay exactly as they were.
TEST(FileUtilsTest, FailedWritesLeaveEverythingAsItWas) {
  TempFolder temp;
  const std::string kept = temp / "kept.txt";
  WriteRaw(kept, "old content\n");
  std::filesystem::create_directory(temp / "dir");
  const std::vector<std::string> targets = {
      temp / "missing/out.txt",   // a path through a folder that does not exist
      temp / "dir",               // a target that is a folder
      temp / "dir/",              // the same, written as a folder
      temp / "kept.txt/out.txt",  // a regular file used as a folder
      "",
  };
  for (const std::string& target : targets) {
    EXPECT_FALSE(Write(target, MakeTextArray({"new"}), false, false)) << target;
    EXPECT_FALSE(Write(target, MakeTextArray({"new"}), true, true)) << target;
  }
  EXPECT_EQ(ReadRaw(kept), "old content\n");
  EXPECT_EQ(EntryCount(temp / "dir"), 0u);
  EXPECT_EQ(EntryCount(temp.Path()), 2u);
}

TEST(FileUtilsTest, FileListsInNaturalOrderAndFileSpecs) {
  TempFolder temp;
  for (const char* pszName : {"page10.html", "page2.html", "Page1.html", "notes.txt"}) WriteRaw(temp / pszName, "");
  std::filesystem::create_directory(temp / "page3.html");
  TextArray files = MakeTextArray({"stale"});
  ASSERT_TRUE(FileUtils::GetFileList(temp.Path().c_str(), files, false));
  EXPECT_EQ(Elements(files), (Lines{"notes.txt", "Page1.html", "page2.html", "page10.html"}));
  ASSERT_TRUE(FileUtils::GetFileList((temp.Path() + "/").c_str(), files, true));
  ASSERT_EQ(files.GetSize(), 4);
  EXPECT_EQ(files[1], (temp / "Page1.html").c_str());
  EXPECT_FALSE(FileUtils::GetFileList((temp / "missing").c_str(), files, false));
  EXPECT_EQ(files.GetSize(), 4);

  EXPECT_TRUE(FileUtils::MatchFileSpec("C:\\web\\report12.html", "report*.html", true));
  EXPECT_TRUE(FileUtils::MatchFileSpec("/web/Report12.HTML", "report*.html", false));
  EXPECT_FALSE(FileUtils::MatchFileSpec("/report/x.html", "report*", true));
}

TEST(FileUtilsTest, MovingAndRenamingFiles) {
  TempFolder temp;
  std::filesystem::create_directories(temp / "to");
  std::filesystem::create_directories(temp / "c/a.html");
  const std::string source = temp / "a.html";
  const std::string moved = temp / "to/a.html";
  const auto move = [](const std::string& from, const std::string& to, bool bOverwrite) {
    return FileUtils::MoveFile(from.c_str(), to.c_str(), bOverwrite);
  };
  WriteRaw(source, "A");
  ASSERT_TRUE(move(source, temp / "to", false));
  EXPECT_FALSE(std::filesystem::exists(source));
  WriteRaw(source, "B");
  EXPECT_FALSE(move(source, temp / "to/", false));
  EXPECT_EQ(ReadRaw(moved), "A");
  ASSERT_TRUE(move(source, temp / "to/", true));
  EXPECT_FALSE(move(moved, temp / "missing/", true));
  EXPECT_FALSE(move(moved, temp / "c", true));  // a folder in the way is never replaced
  EXPECT_EQ(ReadRaw(moved), "B");

  WriteRaw(temp / "to/taken.html", "y");
  for (const char* pszBad : {"taken.html", "sub/new.html", "..", ""}) {
    EXPECT_FALSE(FileUtils::RenameFile(moved.c_str(), pszBad, false)) << pszBad;
  }
  ASSERT_TRUE(FileUtils::RenameFile(moved.c_str(), "new.html", false));
  EXPECT_FALSE(std::filesystem::exists(moved));
  ASSERT_TRUE(FileUtils::RenameFile((temp / "to/new.html").c_str(), "taken.html", true));
  EXPECT_EQ(ReadRaw(temp / "to/taken.html"), "B");
}
