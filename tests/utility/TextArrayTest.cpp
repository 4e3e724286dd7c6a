#include "utility/TextArray.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/TextArraySupport.h"

namespace {

int Sign(int n) { return (n > 0) - (n < 0); }

}  // namespace

TEST(TextArrayTest, HaveAndCopyFromVector) {
  TextArray array = test_support::MakeTextArray({"12"});
  array.CopyFromVector({"Dec", ""});
  EXPECT_EQ(test_support::Elements(array), (std::vector<std::string>{"12", "Dec", ""}));
  EXPECT_EQ(array.GetCount(), 3);
  EXPECT_EQ(array[-1], "");
  EXPECT_EQ(array.GetAt(5), "");
  EXPECT_TRUE(array.Have("Dec", true));
  EXPECT_FALSE(array.Have("dec", true));
  EXPECT_TRUE(array.Have("DEC", false));
  EXPECT_FALSE(array.Have("1", true));
  EXPECT_FALSE(TextArray().Have("", true));
}

// The file order compares file names before folders, digit runs by their
// value, and must be antisymmetric; each row is a pair in that order.
TEST(TextArrayTest, FileOrder) {
  struct Row {
    const char *pszFirst, *pszSecond;
    bool bCaseSensitive;
  };
  const Row rows[] = {
      {"x009", "x10", true},
      {"a99999999999999999999", "a100000000000000000000", true},
      {"v1.9.txt", "v1.10.txt", true},
      {"img", "img1", true},
      {"img1", "imga", true},
      {"img02", "img2", true},  // equal values fall back to the bytes
      {"a/img2.jpg", "b/img10.jpg", true},
      {"a/x.jpg", "b/x.jpg", true},
      {"C:\\z\\a1.txt", "C:\\a\\a2.txt", true},
      {"d2/f.txt", "d10/f.txt", true},
      {"z.txt", "a/zz.txt", true},
      {"B.txt", "a.txt", true},
      {"a.txt", "B.txt", false},
      {"DIR/A.txt", "dir/a.txt", true},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Sign(TextArray::DoCompareFiles(row.pszFirst, row.pszSecond, row.bCaseSensitive)), -1) << row.pszFirst;
    EXPECT_EQ(Sign(TextArray::DoCompareFiles(row.pszSecond, row.pszFirst, row.bCaseSensitive)), 1) << row.pszFirst;
  }
  EXPECT_EQ(TextArray::DoCompareFiles("img2", "img2", true), 0);
  EXPECT_EQ(TextArray::DoCompareFiles("DIR/A.txt", "dir/a.txt", false), 0);
}
