#include "utility/DirUtils.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/TempFolder.h"

using test_support::TempFolder;

TEST(DirUtilsTest, FolderPartKeepsItsSeparatorInBothStyles) {
  EXPECT_EQ(DirUtils::ParsePathFromFile("/home/ann/photo.jpg"), "/home/ann/");
  EXPECT_EQ(DirUtils::ParsePathFromFile("C:\\Photos\\2010\\a.jpg"), "C:\\Photos\\2010\\");
  EXPECT_EQ(DirUtils::ParsePathFromFile("C:\\Photos/mixed\\a.jpg"), "C:\\Photos/mixed\\");
  EXPECT_EQ(DirUtils::ParsePathFromFile("\\\\server\\share\\a.jpg"), "\\\\server\\share\\");
  EXPECT_EQ(DirUtils::ParsePathFromFile("C:\\a.jpg"), "C:\\");
  EXPECT_EQ(DirUtils::ParsePathFromFile("C:a.jpg"), "C:");
  EXPECT_EQ(DirUtils::ParsePathFromFile("/photo.jpg"), "/");
  EXPECT_EQ(DirUtils::ParsePathFromFile("photo.jpg"), "");
  EXPECT_EQ(DirUtils::ParsePathFromFile("D:\\docs\\"), "D:\\docs\\");
  EXPECT_EQ(DirUtils::ParsePathFromFile(""), "");
}

TEST(DirUtilsTest, TrailingSeparatorsGoButRootsStay) {
  EXPECT_EQ(DirUtils::RemoveTrailingSlash("C:\\Photos\\"), "C:\\Photos");
  EXPECT_EQ(DirUtils::RemoveTrailingSlash("/home/ann//"), "/home/ann");
  EXPECT_EQ(DirUtils::RemoveTrailingSlash("/home/ann"), "/home/ann");
  EXPECT_EQ(DirUtils::RemoveTrailingSlash("C:\\"), "C:\\");
  EXPECT_EQ(DirUtils::RemoveTrailingSlash("C:/"), "C:/");
  EXPECT_EQ(DirUtils::RemoveTrailingSlash("/"), "/");
  EXPECT_EQ(DirUtils::RemoveTrailingSlash("//"), "/");
  EXPECT_EQ(DirUtils::RemoveTrailingSlash(""), "");
}

TEST(DirUtilsTest, ParentFolders) {
  EXPECT_EQ(DirUtils::ParseParentDir("C:\\a\\b\\"), "C:\\a\\");
  EXPECT_EQ(DirUtils::ParseParentDir("C:\\a\\b"), "C:\\a\\");
  EXPECT_EQ(DirUtils::ParseParentDir("C:\\a"), "C:\\");
  EXPECT_EQ(DirUtils::ParseParentDir("/a/b/"), "/a/");
  EXPECT_EQ(DirUtils::ParseParentDir("/a"), "/");
  EXPECT_EQ(DirUtils::ParseParentDir("a/b"), "a/");
  EXPECT_EQ(DirUtils::ParseParentDir("C:a"), "C:");
  for (const char* pszRoot : {"C:\\", "C:", "/", "\\", "a", "a/", ""}) {
    EXPECT_EQ(DirUtils::ParseParentDir(pszRoot), "") << pszRoot;
  }
}

TEST(DirUtilsTest, ClimbingToAParentAlwaysEnds) {
  for (const char* pszStart : {"C:\\x\\y\\z\\", "\\\\server\\share\\dir\\", "/x//y/", "rel\\a/b"}) {
    CString dir = pszStart;
    int nSteps = 0;
    while (!dir.IsEmpty() && nSteps < 20) {
      dir = DirUtils::ParseParentDir(dir);
      ++nSteps;
    }
    EXPECT_TRUE(dir.IsEmpty()) << pszStart;
  }
}

TEST(DirUtilsTest, ExistingAndFormalFolders) {
  TempFolder temp;
  const std::string sub = temp / "sub";
  std::filesystem::create_directory(sub);
  test_support::WriteRaw(temp / "file.txt", "x");

  EXPECT_TRUE(DirUtils::DoesDirExist(sub.c_str()));
  EXPECT_TRUE(DirUtils::DoesDirExist((sub + "/").c_str()));
  EXPECT_FALSE(DirUtils::DoesDirExist((temp / "file.txt").c_str()));
  EXPECT_FALSE(DirUtils::DoesDirExist((temp / "missing").c_str()));
  EXPECT_FALSE(DirUtils::DoesDirExist(""));

  EXPECT_TRUE(DirUtils::IsDir(sub.c_str(), false));
  EXPECT_TRUE(DirUtils::IsDir(sub.c_str(), true));
  EXPECT_FALSE(DirUtils::IsDir((temp / "missing/").c_str(), false));
  EXPECT_TRUE(DirUtils::IsDir((temp / "missing/").c_str(), true));
  EXPECT_TRUE(DirUtils::IsDir("Z:\\No\\Such\\Folder\\", true));
  EXPECT_FALSE(DirUtils::IsDir((temp / "missing").c_str(), true));
  EXPECT_FALSE(DirUtils::IsDir((temp / "file.txt").c_str(), true));
  EXPECT_FALSE(DirUtils::IsDir("", true));
}
