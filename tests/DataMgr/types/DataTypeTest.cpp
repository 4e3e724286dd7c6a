#include "DataMgr/types/DataType.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "tests/support/ArchiveTestSupport.h"

using test_support::ByteWriter;
using test_support::Loaded;

namespace {

DataType::Type T(int n) { return static_cast<DataType::Type>(n); }

// The types that have a display text, with it.
const std::vector<std::pair<int, std::string>> TEXTS = {
    {0, "Yes/No"}, {1, "Number"}, {2, "Duration"}, {3, "Decimal"}, {4, "Date"}, {5, "Time"}, {6, "Text"},
    {7, "Photo File Path"}, {8, "Directory Path"}, {9, "e-mail Address"}, {10, "Web Site Address"},
    {11, "Password"}, {12, "Large Text"}, {13, "List of Numbers (suggested as typed)"},
    {14, "List of Values (suggested as typed)"}, {15, "List of Numbers (select from list)"},
    {16, "List of Values (select from list)"}, {18, "Addressbook (suggested as typed)"},
    {19, "Addressbook (select from list)"}, {21, "List of Values (with desc.) (suggested as typed)"},
    {22, "List of Values (with desc.) (select from list)"}, {25, "Data File Path"},
    {26, "List of Decimal Values (suggested as typed)"}, {27, "List of Decimal Values (select from list)"},
    {28, "Monetary"}, {30, "Number (with optional text)"},
    {31, "Number (with possible Roman numerals and/or text)"}, {32, "Embedded Thumbnail Image"}, {33, "Icon"},
};

std::set<int> Range(int nFirst, int nLast) {
  std::set<int> numbers;
  for (int n = nFirst; n <= nLast; ++n) numbers.insert(n);
  return numbers;
}

std::set<int> Without(std::set<int> numbers, const std::set<int>& removed) {
  for (int n : removed) numbers.erase(n);
  return numbers;
}

// The conversion table row by row, over the numbers -3 to 70: the numbers of
// a row and what they convert to besides themselves.
std::set<int> ExpectedTargets(int nFrom) {
  const std::set<int> all = Range(-3, 70);
  const std::vector<std::pair<std::set<int>, std::set<int>>> rows = {
      {{1, 2}, {0, 1, 2, 3, 6, 11, 12, 13, 14, 15, 16, 21, 22, 28, 30, 31}},
      {{3, 28}, {0, 1, 2, 3, 6, 11, 12, 14, 16, 21, 22, 26, 27, 28, 30, 31}},
      {{4, 5}, {6, 11, 12}},
      {{6, 11}, Without(all, {0, 1, 2, 3, 13, 15, 28})},
      {{7, 8, 25, 32}, {6, 7, 8, 11, 12, 25, 32}},
      {{9, 10}, {6, 11, 12, 14, 16, 21, 22}},
      {{12}, Without(all, {0, 1, 2, 3, 13, 15, 28, 30, 31})},
      {{13, 15, 26, 27}, {6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 21, 22, 25, 26, 27, 30, 32}},
      {{14, 16, 21, 22}, {6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 18, 19, 21, 22, 25, 26, 27, 30, 32}},
      {{18, 19}, {6, 8, 11, 12, 14, 16, 18, 19, 21, 22}},
      {{30, 31}, {1, 2, 3, 6, 11, 12, 14, 16, 21, 22, 28}},
  };
  for (const auto& row : rows) {
    if (row.first.count(nFrom) == 1) return row.second;
  }
  return {};
}

}  // namespace

// Every number's text and back; gaps have none, and unknown texts (the
// comparison is exact) give Text. The list of texts is appended, byte-wise
// ascending: upper-case letters before lower-case ones.
TEST(DataTypeTest, TextsOfEveryNumberAndTheirList) {
  std::vector<std::string> expected;
  for (const auto& row : TEXTS) {
    EXPECT_EQ(DataType::GetText(T(row.first)), row.second.c_str()) << row.first;
    EXPECT_EQ(DataType::GetType(row.second.c_str()), T(row.first)) << row.second;
    expected.push_back(row.second);
  }
  for (int nGap : {17, 20, 23, 24, 29, 34, -1}) EXPECT_EQ(DataType::GetText(T(nGap)), "") << nGap;
  for (const char* pszText : {"yes/no", "Number ", ""}) EXPECT_EQ(DataType::GetType(pszText), DataType::Text) << pszText;
  std::sort(expected.begin(), expected.end());
  expected.insert(expected.begin(), "kept");
  std::vector<CString> texts = {"kept"};
  DataType::GetTypeList(texts);
  ASSERT_EQ(texts.size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(texts[i], expected[i].c_str()) << i;
}

TEST(DataTypeTest, ListAndNumberTypesWithTheirQualifiers) {
  const std::set<int> lists = {13, 14, 15, 16, 18, 19, 21, 22, 26, 27};
  const std::set<int> numbers = {1, 2, 3, 13, 15, 26, 27, 28};
  const std::set<int> suggested = {13, 14, 21, 26};
  const std::set<int> selected = {15, 16, 22, 27};
  for (int n = -2; n <= 40; ++n) {
    EXPECT_EQ(DataType::IsListType(T(n)), lists.count(n) == 1) << n;
    EXPECT_EQ(DataType::IsNumberType(T(n)), numbers.count(n) == 1) << n;
    EXPECT_EQ(DataType::GetListTypeText(T(n)),
              suggested.count(n) ? "suggested as typed" : selected.count(n) ? "select from list" : "")
        << n;
    EXPECT_EQ(DataType::GetNumberTypeText(T(n)), n == 30   ? "with optional text"
                                                 : n == 31 ? "with possible Roman numerals or text"
                                                           : "")
        << n;
  }
}

// Every pair from -3 to 40: equal numbers, or both in one group of the
// table; a first number above 33 is similar only to itself.
TEST(DataTypeTest, SimilarityGroupsPairByPair) {
  const std::vector<std::set<int>> similar = {{1, 2},   {4, 5},   {6, 7, 8, 9, 10, 11, 12, 25, 30, 31, 32},
                                              {13, 15}, {14, 16}, {18, 19},
                                              {21, 22}, {26, 27}};
  const std::vector<std::set<int>> fundamental = {
      {1, 2, 13, 15}, {3, 26, 27, 28}, {4, 5}, {6, 7, 8, 9, 10, 11, 12, 14, 16, 18, 19, 21, 22, 25, 30, 31, 32}};
  const auto inOneGroup = [](const std::vector<std::set<int>>& groups, int a, int b) {
    return std::any_of(groups.begin(), groups.end(),
                       [&](const std::set<int>& group) { return group.count(a) == 1 && group.count(b) == 1; });
  };
  for (int a = -3; a <= 40; ++a) {
    for (int b = -3; b <= 40; ++b) {
      EXPECT_EQ(DataType::IsSimilarType(T(a), T(b)), a == b || inOneGroup(similar, a, b)) << a << ", " << b;
      EXPECT_EQ(DataType::IsSimilarFundamental(T(a), T(b)), a == b || inOneGroup(fundamental, a, b))
          << a << ", " << b;
    }
  }
}

// Every cell, one-way conversions (Text to Icon, Number to Yes/No) among
// them; numbers past the table convert only to themselves.
TEST(DataTypeTest, ConversionTableCellForCell) {
  for (int nFrom = -3; nFrom <= 40; ++nFrom) {
    const std::set<int> targets = ExpectedTargets(nFrom);
    for (int nTo = -3; nTo <= 70; ++nTo) {
      const bool bExpected = nFrom == nTo || (nFrom >= 0 && nFrom <= 32 && targets.count(nTo) == 1);
      EXPECT_EQ(DataType::CanConvertBetween(T(nFrom), T(nTo)), bExpected) << nFrom << " -> " << nTo;
    }
  }
}

// Version word, then the type word (stored as the column archives show);
// loading ignores the version and keeps any number.
TEST(DataTypeTest, LoadingIgnoresTheVersionAndKeepsAnyNumber) {
  for (unsigned nVersion : {0u, 1u, 7u, 0xFFFFu}) {
    const DataType loaded = Loaded<DataType>(ByteWriter().Word(nVersion).Word(nVersion == 7 ? 0xFFFF : 17).Get());
    EXPECT_EQ(static_cast<int>(loaded.Get()), nVersion == 7 ? 0xFFFF : 17) << nVersion;
  }
  const DataType monetary = Loaded<DataType>(ByteWriter().Word(1).Word(28).Get());
  EXPECT_TRUE(DataType() < monetary && !(monetary < monetary));
}
