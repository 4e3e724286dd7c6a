#include "utility/TextArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

int Sign(int n) { return (n > 0) - (n < 0); }

// DoCompareFiles must be antisymmetric; returns the sign for a before b.
int CompareBothWays(const char* a, const char* b, bool bCaseSensitive) {
  const int nForward = Sign(TextArray::DoCompareFiles(a, b, bCaseSensitive));
  EXPECT_EQ(nForward, -Sign(TextArray::DoCompareFiles(b, a, bCaseSensitive))) << a << " / " << b;
  return nForward;
}

}  // namespace

TEST(TextArrayTest, HaveMatchesWholeElementsByTheCaseFlag) {
  TextArray array;
  array.Add("12");
  array.Add("Dec");
  EXPECT_TRUE(array.Have("Dec", true));
  EXPECT_FALSE(array.Have("dec", true));
  EXPECT_TRUE(array.Have("DEC", false));
  EXPECT_FALSE(array.Have("1", true));
  EXPECT_FALSE(array.Have("", false));
  EXPECT_FALSE(TextArray().Have("", true));
}

TEST(TextArrayTest, CopyFromVectorAppends) {
  TextArray array;
  array.Add("kept");
  array.CopyFromVector({"a", "", "b"});
  ASSERT_EQ(array.GetCount(), 4);
  EXPECT_EQ(array[0], "kept");
  EXPECT_EQ(array[1], "a");
  EXPECT_EQ(array[2], "");
  EXPECT_EQ(array[3], "b");
  EXPECT_EQ(array[-1], "");
}

TEST(TextArrayTest, DigitRunsCompareByValue) {
  EXPECT_LT(CompareBothWays("img2.jpg", "img10.jpg", true), 0);
  EXPECT_LT(CompareBothWays("x009", "x10", true), 0);
  EXPECT_LT(CompareBothWays("a99999999999999999999", "a100000000000000000000", true), 0);
  EXPECT_LT(CompareBothWays("v1.9.txt", "v1.10.txt", true), 0);
  EXPECT_LT(CompareBothWays("img", "img1", true), 0);
  EXPECT_LT(CompareBothWays("img1", "imga", true), 0);
  // Equal values fall back to the bytes, so the order stays strict.
  EXPECT_LT(CompareBothWays("img02", "img2", true), 0);
  EXPECT_EQ(TextArray::DoCompareFiles("img2", "img2", true), 0);
}

TEST(TextArrayTest, FileNameDecidesBeforeTheFolder) {
  EXPECT_GT(CompareBothWays("b/img10.jpg", "a/img2.jpg", true), 0);
  EXPECT_GT(CompareBothWays("b/x.jpg", "a/x.jpg", true), 0);
  EXPECT_LT(CompareBothWays("C:\\z\\a1.txt", "C:\\a\\a2.txt", true), 0);
  EXPECT_LT(CompareBothWays("d2/f.txt", "d10/f.txt", true), 0);
  EXPECT_LT(CompareBothWays("z.txt", "a/zz.txt", true), 0);
}

TEST(TextArrayTest, CaseFlagOfTheFileOrder) {
  EXPECT_LT(CompareBothWays("B.txt", "a.txt", true), 0);
  EXPECT_GT(CompareBothWays("B.txt", "a.txt", false), 0);
  EXPECT_EQ(TextArray::DoCompareFiles("DIR/A.txt", "dir/a.txt", false), 0);
  EXPECT_NE(CompareBothWays("DIR/A.txt", "dir/a.txt", true), 0);
}

TEST(TextArrayTest, SortingWithTheFileOrder) {
  std::vector<CString> paths = {"p/img10.png", "q/img1.png", "p/img2.png", "p/IMG1.png", "img1.png"};
  std::sort(paths.begin(), paths.end(),
            [](const CString& a, const CString& b) { return TextArray::DoCompareFiles(a, b, false) < 0; });
  std::vector<std::string> sorted;
  for (const CString& path : paths) sorted.push_back(path.GetStdString());
  EXPECT_EQ(sorted, (std::vector<std::string>{"img1.png", "p/IMG1.png", "q/img1.png", "p/img2.png", "p/img10.png"}));
}
