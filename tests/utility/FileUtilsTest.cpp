#include "utility/FileUtils.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/TempFolder.h"
#include "tests/support/TextArraySupport.h"

using test_support::Elements;
using test_support::MakeTextArray;
using test_support::ReadRaw;
using test_support::TempFolder;
using test_support::WriteRaw;

namespace {

std::vector<std::string> ReadLines(const std::string& path) {
  TextArray lines;
  EXPECT_TRUE(FileUtils::ReadFileContent(path.c_str(), lines, false, nullptr)) << path;
  return Elements(lines);
}

size_t EntryCount(const std::string& folder) {
  return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder),
                                           std::filesystem::directory_iterator()));
}

}  // namespace

TEST(FileUtilsTest, FileNamesInBothSeparatorStyles) {
  EXPECT_EQ(FileUtils::ParseFileNameFromPath("C:\\Photos\\img.2010.jpg", true), "img.2010.jpg");
  EXPECT_EQ(FileUtils::ParseFileNameFromPath("C:\\Photos\\img.2010.jpg", false), "img.2010");
  EXPECT_EQ(FileUtils::ParseFileNameFromPath("/home/ann/notes", false), "notes");
  EXPECT_EQ(FileUtils::ParseFileNameFromPath("dir\\sub/file.txt", true), "file.txt");
  EXPECT_EQ(FileUtils::ParseFileNameFromPath("C:file.txt", true), "file.txt");
  EXPECT_EQ(FileUtils::ParseFileNameFromPath("/home/ann/.profile", false), ".profile");
  EXPECT_EQ(FileUtils::ParseFileNameFromPath("name.", false), "name");
  EXPECT_EQ(FileUtils::ParseFileNameFromPath("C:\\Photos\\", true), "");
  EXPECT_EQ(FileUtils::ParseFileNameFromPath("", true), "");
}

TEST(FileUtilsTest, FileTestsAndTheirFlags) {
  TempFolder temp;
  const std::string file = temp / "a.txt";
  WriteRaw(file, "x");
  EXPECT_TRUE(FileUtils::DoesFileExist(file.c_str()));
  EXPECT_FALSE(FileUtils::DoesFileExist(temp.Path().c_str()));
  EXPECT_FALSE(FileUtils::DoesFileExist((temp / "b.txt").c_str()));

  EXPECT_TRUE(FileUtils::IsFile(file.c_str(), true, false));
  EXPECT_FALSE(FileUtils::IsFile((temp / "b.txt").c_str(), true, true));
  EXPECT_TRUE(FileUtils::IsFile((temp / "b.txt").c_str(), false, false));
  EXPECT_FALSE(FileUtils::IsFile(temp.Path().c_str(), false, false));
  EXPECT_FALSE(FileUtils::IsFile((temp / "folder/").c_str(), false, false));
  EXPECT_FALSE(FileUtils::IsFile("C:", false, false));
  EXPECT_FALSE(FileUtils::IsFile("  ", false, true));
  EXPECT_TRUE(FileUtils::IsFile("http://example.com/a.jpg", true, true));
  EXPECT_FALSE(FileUtils::IsFile("http://example.com/a.jpg", false, false));
}

TEST(FileUtilsTest, ReadingSplitsAtEveryLineEndStyle) {
  TempFolder temp;
  const std::string path = temp / "in.txt";
  WriteRaw(path, "unix\nwindows\r\nold mac\rlast");
  EXPECT_EQ(ReadLines(path), (std::vector<std::string>{"unix", "windows", "old mac", "last"}));
  WriteRaw(path, "a\r\n\r\nb\n\nc\r\rd\n");
  EXPECT_EQ(ReadLines(path), (std::vector<std::string>{"a", "", "b", "", "c", "", "d"}));
  WriteRaw(path, "\r\n");
  EXPECT_EQ(ReadLines(path), (std::vector<std::string>{""}));
  WriteRaw(path, "\n\r");
  EXPECT_EQ(ReadLines(path), (std::vector<std::string>{"", ""}));
  WriteRaw(path, "");
  EXPECT_TRUE(ReadLines(path).empty());
  WriteRaw(path, std::string("nul\0byte\r", 9));
  EXPECT_EQ(ReadLines(path), (std::vector<std::string>{std::string("nul\0byte", 8)}));
}

TEST(FileUtilsTest, ReadingAppendsOrReplacesAndReportsFailures) {
  TempFolder temp;
  const std::string path = temp / "in.txt";
  WriteRaw(path, "b\n");
  TextArray lines = MakeTextArray({"a"});
  CString error = "stale";
  EXPECT_TRUE(FileUtils::ReadFileContent(path.c_str(), lines, true, &error));
  EXPECT_EQ(Elements(lines), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(error, "");

  for (const std::string& bad : {temp / "missing.txt", temp.Path(), std::string()}) {
    EXPECT_FALSE(FileUtils::ReadFileContent(bad.c_str(), lines, false, &error)) << bad;
    EXPECT_FALSE(error.IsEmpty()) << bad;
    EXPECT_EQ(Elements(lines), (std::vector<std::string>{"a", "b"})) << bad;
  }
  EXPECT_FALSE(FileUtils::ReadFileContent((temp / "missing.txt").c_str(), lines, false, nullptr));
}

TEST(FileUtilsTest, WritingChoosesTheLineEndAndAppends) {
  TempFolder temp;
  const std::string path = temp / "out.txt";
  ASSERT_TRUE(FileUtils::WriteFileContent(path.c_str(), MakeTextArray({"one", "", "two"}), false, false));
  EXPECT_EQ(ReadRaw(path), "one\n\ntwo\n");
  ASSERT_TRUE(FileUtils::WriteFileContent(path.c_str(), MakeTextArray({"three"}), true, true));
  EXPECT_EQ(ReadRaw(path), "one\n\ntwo\nthree\r\n");
  ASSERT_TRUE(FileUtils::WriteFileContent(path.c_str(), MakeTextArray({"new"}), false, true));
  EXPECT_EQ(ReadRaw(path), "new\r\n");
  ASSERT_TRUE(FileUtils::WriteFileContent(path.c_str(), TextArray(), false, false));
  EXPECT_EQ(ReadRaw(path), "");
  ASSERT_TRUE(FileUtils::WriteFileContent((temp / "fresh.txt").c_str(), MakeTextArray({"x"}), true, false));
  EXPECT_EQ(ReadRaw(temp / "fresh.txt"), "x\n");
  // Only the two files: no temporary file is left behind.
  EXPECT_EQ(EntryCount(temp.Path()), 2u);
}

TEST(FileUtilsTest, WritingKeepsPermissionsAndFollowsLinks) {
  TempFolder temp;
  const std::string path = temp / "out.txt";
  WriteRaw(path, "old\n");
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  ASSERT_TRUE(FileUtils::WriteFileContent(path.c_str(), MakeTextArray({"new"}), false, false));
  struct stat info {};
  ASSERT_EQ(stat(path.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0640u);

  const std::string link = temp / "link.txt";
  std::filesystem::create_symlink(path, link);
  ASSERT_TRUE(FileUtils::WriteFileContent(link.c_str(), MakeTextArray({"through"}), false, false));
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(ReadRaw(path), "through\n");
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
    EXPECT_FALSE(FileUtils::WriteFileContent(target.c_str(), MakeTextArray({"new"}), false, false)) << target;
    EXPECT_FALSE(FileUtils::WriteFileContent(target.c_str(), MakeTextArray({"new"}), true, true)) << target;
  }
  EXPECT_EQ(ReadRaw(kept), "old content\n");
  EXPECT_TRUE(std::filesystem::is_directory(temp / "dir"));
  EXPECT_EQ(EntryCount(temp / "dir"), 0u);
  EXPECT_EQ(EntryCount(temp.Path()), 2u);
}

TEST(FileUtilsTest, FileListsInNaturalOrder) {
  TempFolder temp;
  for (const char* pszName : {"page10.html", "page2.html", "Page1.html", "notes.txt"}) WriteRaw(temp / pszName, "");
  std::filesystem::create_directory(temp / "page3.html");
  TextArray files = MakeTextArray({"stale"});
  ASSERT_TRUE(FileUtils::GetFileList(temp.Path().c_str(), files, false));
  EXPECT_EQ(Elements(files), (std::vector<std::string>{"notes.txt", "Page1.html", "page2.html", "page10.html"}));
  ASSERT_TRUE(FileUtils::GetFileList((temp.Path() + "/").c_str(), files, true));
  ASSERT_EQ(files.GetSize(), 4);
  EXPECT_EQ(files[1], (temp / "Page1.html").c_str());
  ASSERT_TRUE(FileUtils::GetFileList(temp.Path().c_str(), files, true));
  EXPECT_EQ(files[3], (temp / "page10.html").c_str());

  EXPECT_FALSE(FileUtils::GetFileList((temp / "missing").c_str(), files, false));
  EXPECT_EQ(files.GetSize(), 4);
}

TEST(FileUtilsTest, FileSpecsMatchTheFileName) {
  EXPECT_TRUE(FileUtils::MatchFileSpec("C:\\web\\report12.html", "report*.html", true));
  EXPECT_TRUE(FileUtils::MatchFileSpec("/web/Report12.HTML", "report*.html", false));
  EXPECT_FALSE(FileUtils::MatchFileSpec("/web/Report12.HTML", "report*.html", true));
  EXPECT_FALSE(FileUtils::MatchFileSpec("/report/x.html", "report*", true));
  EXPECT_TRUE(FileUtils::MatchFileSpec("a_report_TN.jpg", "*_report_TN.*", true));
}

TEST(FileUtilsTest, MovingFiles) {
  TempFolder temp;
  std::filesystem::create_directory(temp / "to");
  const std::string source = temp / "a.html";
  WriteRaw(source, "A");
  ASSERT_TRUE(FileUtils::MoveFile(source.c_str(), (temp / "to").c_str(), false));
  EXPECT_FALSE(std::filesystem::exists(source));
  EXPECT_EQ(ReadRaw(temp / "to/a.html"), "A");

  WriteRaw(source, "B");
  EXPECT_FALSE(FileUtils::MoveFile(source.c_str(), (temp / "to/").c_str(), false));
  EXPECT_EQ(ReadRaw(temp / "to/a.html"), "A");
  ASSERT_TRUE(FileUtils::MoveFile(source.c_str(), (temp / "to/").c_str(), true));
  EXPECT_EQ(ReadRaw(temp / "to/a.html"), "B");

  EXPECT_FALSE(FileUtils::MoveFile((temp / "none.html").c_str(), (temp / "to").c_str(), true));
  EXPECT_FALSE(FileUtils::MoveFile((temp / "to/a.html").c_str(), (temp / "missing/").c_str(), true));
  // A folder in the way is never replaced, even with overwriting allowed.
  std::filesystem::create_directories(temp / "c/a.html");
  EXPECT_FALSE(FileUtils::MoveFile((temp / "to/a.html").c_str(), (temp / "c").c_str(), true));
  EXPECT_EQ(ReadRaw(temp / "to/a.html"), "B");
  EXPECT_TRUE(std::filesystem::is_directory(temp / "c/a.html"));
}

TEST(FileUtilsTest, RenamingFilesInTheirFolder) {
  TempFolder temp;
  const std::string path = temp / "old.html";
  WriteRaw(path, "x");
  WriteRaw(temp / "taken.html", "y");
  EXPECT_FALSE(FileUtils::RenameFile(path.c_str(), "taken.html", false));
  EXPECT_FALSE(FileUtils::RenameFile(path.c_str(), "sub/new.html", true));
  EXPECT_FALSE(FileUtils::RenameFile(path.c_str(), "..", true));
  EXPECT_FALSE(FileUtils::RenameFile(path.c_str(), "", true));
  EXPECT_EQ(ReadRaw(path), "x");
  ASSERT_TRUE(FileUtils::RenameFile(path.c_str(), "new.html", false));
  EXPECT_EQ(ReadRaw(temp / "new.html"), "x");
  EXPECT_FALSE(std::filesystem::exists(path));
  ASSERT_TRUE(FileUtils::RenameFile((temp / "new.html").c_str(), "taken.html", true));
  EXPECT_EQ(ReadRaw(temp / "taken.html"), "x");
}
