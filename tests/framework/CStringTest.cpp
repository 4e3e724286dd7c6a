#include "framework/CString.h"

#include <gtest/gtest.h>

#include <type_traits>

// A character or a number where a text is expected does not compile into a
// one-character text; CString(ch) has to be written out.
static_assert(!std::is_convertible_v<char, CString> && !std::is_convertible_v<int, CString>,
              "CString(char) must be explicit");

TEST(CStringTest, ConstructionKeepsEveryByte) {
  EXPECT_EQ(CString().GetLength(), 0);
  EXPECT_TRUE(CString(static_cast<const char*>(nullptr)).IsEmpty());
  EXPECT_EQ(CString('x', 3), "xxx");
  EXPECT_TRUE(CString('x', -2).IsEmpty());
  const CString withNul("a\0b", 3);
  EXPECT_EQ(withNul.GetLength(), 3);
  EXPECT_EQ(withNul.GetAt(2), 'b');
  EXPECT_NE(withNul, CString("a"));
}

TEST(CStringTest, ElementAccessOutsideTheTextIsHarmless) {
  CString text("abc");
  EXPECT_EQ(text[1], 'b');
  EXPECT_EQ(text.GetAt(3), '\0');
  EXPECT_EQ(text.GetAt(-1), '\0');
  text.SetAt(5, 'z');
  text.SetAt(-1, 'z');
  text.SetAt(0, 'A');
  EXPECT_EQ(text, "Abc");
}

TEST(CStringTest, SubstringsClampToTheText) {
  const CString text("abcdef");
  EXPECT_EQ(text.Mid(2), "cdef");
  EXPECT_EQ(text.Mid(2, 2), "cd");
  EXPECT_EQ(text.Mid(4, 100), "ef");
  EXPECT_EQ(text.Mid(6), "");
  EXPECT_EQ(text.Mid(10, 2), "");
  EXPECT_EQ(text.Mid(-3, 2), "ab");
  EXPECT_EQ(text.Mid(1, -1), "");
  EXPECT_EQ(text.Mid(3, 0x7FFFFFFF), "def");
  EXPECT_EQ(text.Left(2), "ab");
  EXPECT_EQ(text.Left(99), "abcdef");
  EXPECT_EQ(text.Left(-1), "");
  EXPECT_EQ(text.Right(2), "ef");
  EXPECT_EQ(text.Right(99), "abcdef");
  EXPECT_EQ(text.Right(-1), "");
}

TEST(CStringTest, FindFromEachStart) {
  const CString text("abcabc");
  EXPECT_EQ(text.Find('b'), 1);
  EXPECT_EQ(text.Find('b', 2), 4);
  EXPECT_EQ(text.Find('b', 5), -1);
  EXPECT_EQ(text.Find('b', 6), -1);
  EXPECT_EQ(text.Find('b', 60), -1);
  EXPECT_EQ(text.Find('b', -1), -1);
  EXPECT_EQ(text.Find('z'), -1);
  EXPECT_EQ(text.Find("ca"), 2);
  EXPECT_EQ(text.Find("bc", 2), 4);
  EXPECT_EQ(text.Find("bc", 7), -1);
  EXPECT_EQ(text.Find("", 6), 6);
  EXPECT_EQ(text.Find("abcabcx"), -1);
  EXPECT_EQ(text.ReverseFind('a'), 3);
  EXPECT_EQ(text.ReverseFind('z'), -1);
  EXPECT_EQ(text.FindOneOf("xc"), 2);
  EXPECT_EQ(text.FindOneOf("xyz"), -1);
  EXPECT_EQ(CString("a\0b", 3).Find('b'), 2);
}

TEST(CStringTest, ComparisonsAreByteWise) {
  EXPECT_EQ(CString("abc").Compare("abd"), -1);
  EXPECT_EQ(CString("abd").Compare("abc"), 1);
  EXPECT_EQ(CString("abc").Compare("abc"), 0);
  EXPECT_EQ(CString("ab").Compare("abc"), -1);
  EXPECT_EQ(CString("B").Compare("a"), -1);
  // Bytes above 0x7F compare as unsigned values.
  EXPECT_EQ(CString("\xe9").Compare("z"), 1);
  EXPECT_TRUE(CString("a") < CString("b"));
  EXPECT_FALSE(CString("b") < CString("b"));
}

TEST(CStringTest, CompareNoCaseFoldsOnlyAsciiLetters) {
  EXPECT_EQ(CString("HeLLo").CompareNoCase("hello"), 0);
  EXPECT_EQ(CString("abc").CompareNoCase("ABD"), -1);
  EXPECT_EQ(CString("B").CompareNoCase("a"), 1);
  // '[' (0x5B) lies between 'Z' and 'a': folding must not touch it.
  EXPECT_EQ(CString("[").CompareNoCase("a"), -1);
  EXPECT_EQ(CString("[").CompareNoCase("A"), -1);
  EXPECT_EQ(CString("1").CompareNoCase("1"), 0);
  EXPECT_EQ(CString("_").CompareNoCase("a"), -1);
  EXPECT_EQ(CString("\xc9").CompareNoCase("\xe9"), -1);
  EXPECT_EQ(CString("abc").CompareNoCase("AB"), 1);
}

TEST(CStringTest, CollationAgreesWithTheCLibrary) {
  EXPECT_EQ(CString("apple").Collate("banana"), -1);
  EXPECT_EQ(CString("same").Collate("same"), 0);
  EXPECT_EQ(CString("APPLE").CollateNoCase("apple"), 0);
  EXPECT_EQ(CString("Banana").CollateNoCase("apple"), 1);
}

TEST(CStringTest, ReplaceCountsNonOverlappingMatches) {
  CString text("aaaa");
  EXPECT_EQ(text.Replace("aa", "b"), 2);
  EXPECT_EQ(text, "bb");
  CString grow("a.b.c");
  EXPECT_EQ(grow.Replace(".", "--"), 2);
  EXPECT_EQ(grow, "a--b--c");
  CString none("abc");
  EXPECT_EQ(none.Replace("x", "y"), 0);
  EXPECT_EQ(none.Replace("", "y"), 0);
  EXPECT_EQ(none, "abc");
  CString erase("a-b-c");
  EXPECT_EQ(erase.Replace("-", ""), 2);
  EXPECT_EQ(erase, "abc");
  CString chars("banana");
  EXPECT_EQ(chars.Replace('a', 'o'), 3);
  EXPECT_EQ(chars, "bonono");
  EXPECT_EQ(chars.Remove('o'), 3);
  EXPECT_EQ(chars, "bnn");
}

TEST(CStringTest, InsertAndDeleteClampPositions) {
  CString text("ace");
  EXPECT_EQ(text.Insert(1, 'b'), 4);
  EXPECT_EQ(text.Insert(99, "fg"), 6);
  EXPECT_EQ(text.Insert(-5, '_'), 7);
  EXPECT_EQ(text, "_abcefg");
  EXPECT_EQ(text.Delete(4, 2), 5);
  EXPECT_EQ(text, "_abcg");
  EXPECT_EQ(text.Delete(3, 100), 3);
  EXPECT_EQ(text.Delete(10), 3);
  EXPECT_EQ(text.Delete(-1, 1), 2);
  EXPECT_EQ(text, "ab");
}

TEST(CStringTest, TrimWhitespaceOrGivenCharacters) {
  CString text(" \t ab c \r\n");
  text.Trim();
  EXPECT_EQ(text, "ab c");
  CString left("xxabxx");
  left.TrimLeft('x');
  EXPECT_EQ(left, "abxx");
  left.TrimRight("x");
  EXPECT_EQ(left, "ab");
  CString all("    ");
  all.Trim();
  EXPECT_TRUE(all.IsEmpty());
  CString set("-+a+-");
  set.Trim("+-");
  EXPECT_EQ(set, "a");
}

TEST(CStringTest, CaseAndReverse) {
  CString text("Ab1z");
  EXPECT_EQ(text.MakeUpper(), "AB1Z");
  EXPECT_EQ(text.MakeLower(), "ab1z");
  EXPECT_EQ(text.MakeReverse(), "z1ba");
}

TEST(CStringTest, FormatAndConcatenation) {
  CString text;
  text.Format("%d-%s-%.2f", 42, "x", 1.5);
  EXPECT_EQ(text, "42-x-1.50");
  text.AppendFormat("%c", '!');
  EXPECT_EQ(text, "42-x-1.50!");
  const CString longText(std::string(1000, 'q'));
  text.Format("%s", longText.GetString());
  EXPECT_EQ(text.GetLength(), 1000);
  EXPECT_EQ(CString("a") + "b" + 'c' + CString("d"), "abcd");
  EXPECT_EQ('x' + CString("y"), "xy");
  EXPECT_EQ("x" + CString("y"), "xy");
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
  for (CString token = line.Tokenize(",;", nPos); nPos != -1; token = line.Tokenize(",;", nPos)) {
    tokens.push_back(token);
  }
  ASSERT_EQ(tokens.size(), 3u);
  EXPECT_EQ(tokens[0], "a");
  EXPECT_EQ(tokens[1], "b");
  EXPECT_EQ(tokens[2], "c");

  int nFrom = 2;
  EXPECT_EQ(CString("abcd").Tokenize("", nFrom), "cd");
  EXPECT_EQ(CString("abcd").Tokenize("", nFrom), "");
  EXPECT_EQ(nFrom, -1);
}
