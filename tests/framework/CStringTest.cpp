#include "framework/CString.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

// A character or a number where a text is expected does not compile into a
// one-character text; CString(ch) has to be written out.
static_assert(!std::is_convertible_v<char, CString> && !std::is_convertible_v<int, CString>,
              "CString(char) must be explicit");

TEST(CStringTest, ConstructionAndElementsKeepEveryByteAndIgnoreBadPositions) {
  EXPECT_TRUE(CString(static_cast<const char*>(nullptr)).IsEmpty());
  EXPECT_EQ(CString('x', 3), "xxx");
  EXPECT_TRUE(CString('x', -2).IsEmpty());
  const CString withNul("a\0b", 3);
  EXPECT_EQ(withNul.GetLength(), 3);
  EXPECT_EQ(withNul.GetAt(2), 'b');
  EXPECT_NE(withNul, CString("a"));
  EXPECT_EQ(withNul.Find('b'), 2);
  CString text("abc");
  EXPECT_EQ(text.GetAt(3), '\0');
  EXPECT_EQ(text.GetAt(-1), '\0');
  text.SetAt(5, 'z');
  text.SetAt(-1, 'z');
  text.SetAt(0, 'A');
  EXPECT_EQ(text, "Abc");
}

TEST(CStringTest, SubstringsClampToTheText) {
  const CString text("abcdef");
  const std::pair<CString, const char*> rows[] = {
      {text.Mid(2), "cdef"},           {text.Mid(4, 100), "ef"}, {text.Mid(10, 2), ""},   {text.Mid(-3, 2), "ab"},
      {text.Mid(1, -1), ""},           {text.Mid(3, 0x7FFFFFFF), "def"},                  {text.Left(99), "abcdef"},
      {text.Left(-1), ""},             {text.Right(2), "ef"},    {text.Right(99), "abcdef"}, {text.Right(-1), ""},
  };
  for (size_t i = 0; i < std::size(rows); ++i) EXPECT_EQ(rows[i].first, rows[i].second) << "row " << i;
}

TEST(CStringTest, FindFromEachStart) {
  const CString text("abcabc");
  const std::pair<int, int> rows[] = {
      {text.Find('b', 2), 4},     {text.Find('b', 5), -1},       {text.Find('b', 60), -1}, {text.Find('b', -1), -1},
      {text.Find('z'), -1},       {text.Find("bc", 2), 4},       {text.Find("bc", 7), -1}, {text.Find("", 6), 6},
      {text.Find("abcabcx"), -1}, {text.ReverseFind('a'), 3},    {text.ReverseFind('z'), -1},
      {text.FindOneOf("xc"), 2},  {text.FindOneOf("xyz"), -1},
  };
  for (size_t i = 0; i < std::size(rows); ++i) EXPECT_EQ(rows[i].first, rows[i].second) << "row " << i;
}

TEST(CStringTest, ComparisonsAreByteWiseAndFoldOnlyAsciiLetters) {
  const std::pair<int, int> rows[] = {
      {CString("abc").Compare("abd"), -1},
      {CString("abd").Compare("abc"), 1},
      {CString("ab").Compare("abc"), -1},
      {CString("B").Compare("a"), -1},
      {CString("\xe9").Compare("z"), 1},  // bytes above 0x7F compare as unsigned values
      {CString("HeLLo").CompareNoCase("hello"), 0},
      {CString("B").CompareNoCase("a"), 1},
      {CString("[").CompareNoCase("a"), -1},  // '[' lies between 'Z' and 'a': folding must not touch it
      {CString("[").CompareNoCase("A"), -1},
      {CString("\xc9").CompareNoCase("\xe9"), -1},
      {CString("abc").CompareNoCase("AB"), 1},
      {CString("apple").Collate("banana"), -1},
      {CString("APPLE").CollateNoCase("apple"), 0},
      {CString("Banana").CollateNoCase("apple"), 1},
  };
  for (size_t i = 0; i < std::size(rows); ++i) EXPECT_EQ(rows[i].first, rows[i].second) << "row " << i;
  EXPECT_TRUE(CString("a") < CString("b"));
  EXPECT_FALSE(CString("b") < CString("b"));
}

TEST(CStringTest, EditingCountsAndClamps) {
  CString text("aaaa");
  EXPECT_EQ(text.Replace("aa", "b"), 2);
  EXPECT_EQ(text, "bb");
  text = "a.b.c";
  EXPECT_EQ(text.Replace(".", "--"), 2);
  EXPECT_EQ(text.Replace("--", ""), 2);
  EXPECT_EQ(text.Replace("x", "y"), 0);
  EXPECT_EQ(text.Replace("", "y"), 0);
  EXPECT_EQ(text, "abc");
  text = "banana";
  EXPECT_EQ(text.Replace('a', 'o'), 3);
  EXPECT_EQ(text.Remove('o'), 3);
  EXPECT_EQ(text, "bnn");
  text = "ace";
  EXPECT_EQ(text.Insert(1, 'b'), 4);
  EXPECT_EQ(text.Insert(99, "fg"), 6);
  EXPECT_EQ(text.Insert(-5, '_'), 7);
  EXPECT_EQ(text, "_abcefg");
  EXPECT_EQ(text.Delete(4, 2), 5);
  EXPECT_EQ(text.Delete(3, 100), 3);
  EXPECT_EQ(text.Delete(10), 3);
  EXPECT_EQ(text.Delete(-1, 1), 2);
  EXPECT_EQ(text, "ab");
  EXPECT_EQ(text.MakeUpper(), "AB");
  EXPECT_EQ(text.MakeLower(), "ab");
  EXPECT_EQ(text.MakeReverse(), "ba");
}

TEST(CStringTest, TrimWhitespaceOrGivenCharacters) {
  CString text(" \t ab c \r\n");
  text.Trim();
  EXPECT_EQ(text, "ab c");
  text = "xxabxx";
  text.TrimLeft('x');
  EXPECT_EQ(text, "abxx");
  text.TrimRight("x");
  EXPECT_EQ(text, "ab");
  text = "-+a+-";
  text.Trim("+-");
  EXPECT_EQ(text, "a");
  text = "    ";
  text.Trim();
  EXPECT_TRUE(text.IsEmpty());
}

TEST(CStringTest, FormatAndConcatenation) {
  CString text;
  text.Format("%d-%s-%.2f", 42, "x", 1.5);
  text.AppendFormat("%c", '!');
  EXPECT_EQ(text, "42-x-1.50!");
  text.Format("%s", std::string(1000, 'q').c_str());
  EXPECT_EQ(text.GetLength(), 1000);
  EXPECT_EQ(CString("a") + "b" + 'c' + CString("d"), "abcd");
  EXPECT_EQ('x' + CString("y") + ("x" + CString("y")), "xyxy");
}

TEST(CStringTest, SpansAndTokens) {
  const CString text("123abc456");
  EXPECT_EQ(text.SpanIncluding("0123456789"), "123");
  EXPECT_EQ(text.SpanExcluding("cb"), "123a");
  EXPECT_EQ(text.SpanExcluding("xyz"), "123abc456");
  EXPECT_EQ(text.SpanIncluding("x"), "");
  const CString line(",,a,b;;c,");
  int nPos = 0;
  std::vector<CString> tokens;
  for (CString token = line.Tokenize(",;", nPos); nPos != -1; token = line.Tokenize(",;", nPos)) tokens.push_back(token);
  EXPECT_EQ(tokens, (std::vector<CString>{"a", "b", "c"}));
  int nFrom = 2;
  EXPECT_EQ(CString("abcd").Tokenize("", nFrom), "cd");
  EXPECT_EQ(CString("abcd").Tokenize("", nFrom), "");
  EXPECT_EQ(nFrom, -1);
}
