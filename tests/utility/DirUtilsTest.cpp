#include "utility/DirUtils.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/TableTestSupport.h"
#include "tests/support/TempFolder.h"

using test_support::ExpectRows;
using test_support::TempFolder;

TEST(DirUtilsTest, FolderPartKeepsItsSeparatorInBothStyles) {
  ExpectRows<const char*>([](const char* p) { return DirUtils::ParsePathFromFile(p); },
                          {{"/home/ann/photo.jpg", "/home/ann/"},
                           {"C:\\Photos/mixed\\a.jpg", "C:\\Photos/mixed\\"},
                           {"\\\\server\\share\\a.jpg", "\\\\server\\share\\"},
                           {"C:a.jpg", "C:"},
                           {"photo.jpg", ""},
                           {"", ""}});
}

TEST(DirUtilsTest, TrailingSeparatorsGoButRootsStay) {
  ExpectRows<const char*>([](const char* p) { return DirUtils::RemoveTrailingSlash(p); },
                          {{"C:\\Photos\\", "C:\\Photos"},
                           {"/home/ann//", "/home/ann"},
                           {"/home/ann", "/home/ann"},
                           {"C:/", "C:/"},
                           {"//", "/"},
                           {"", ""}});
}

TEST(DirUtilsTest, ParentFolders) {
  ExpectRows<const char*>([](const char* p) { return DirUtils::ParseParentDir(p); },
                          {{"C:\\a\\b\\", "C:\\a\\"}, {"C:\\a", "C:\\"}, {"/a/b", "/a/"}, {"a/b", "a/"}, {"C:a", "C:"},
                           {"C:\\", ""}, {"C:", ""}, {"/", ""}, {"a/", ""}, {"", ""}});
  // Climbing always ends, however the path is written.
  for (const char* pszStart : {"\\\\server\\share\\dir\\", "/x//y/", "rel\\a/b"}) {
    CString dir = pszStart;
    for (int nSteps = 0; !dir.IsEmpty() && nSteps < 20; ++nSteps) dir = DirUtils::ParseParentDir(dir);
    EXPECT_TRUE(dir.IsEmpty()) << pszStart;
  }
}

TEST(DirUtilsTest, ExistingAndFormalFolders) {
  TempFolder temp;
  const std::string sub = temp / "sub";
  std::filesystem::create_directory(sub);
  test_support::WriteRaw(temp / "file.txt", "x");
  struct Row {
    std::string path;
    bool bExists, bIsDir, bIsDirByForm;
  };
  const Row rows[] = {
      {sub, true, true, true},
      {sub + "/", true, true, true},
      {temp / "file.txt", false, false, false},
      {temp / "missing", false, false, false},
      {temp / "missing/", false, false, true},
      {"Z:\\No\\Such\\Folder\\", false, false, true},
      {"", false, false, false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(DirUtils::DoesDirExist(row.path.c_str()), row.bExists) << row.path;
    EXPECT_EQ(DirUtils::IsDir(row.path.c_str(), false), row.bIsDir) << row.path;
    EXPECT_EQ(DirUtils::IsDir(row.path.c_str(), true), row.bIsDirByForm) << row.path;
  }
}
