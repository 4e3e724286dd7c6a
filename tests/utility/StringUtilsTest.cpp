#include "utility/StringUtils.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/TableTestSupport.h"
#include "tests/support/TextArraySupport.h"

using test_support::Elements;
using test_support::ExpectEach;
using test_support::ExpectRows;
using test_support::MakeTextArray;
using Words = std::vector<std::string>;

TEST(StringUtilsTest, YesWordsAndEffectivelyEmpty) {
  ExpectRows<bool>(StringUtils::IsEffectivelyEmpty, {{"", true}, {" \t\r\n", true}, {"  x ", false}});
  ExpectEach(StringUtils::IsYes, {"yes", "YES", "y", "True", "t", "1", "  yes\t"}, true);
  ExpectEach(StringUtils::IsYes, {"no", "false", "0", "", "yess", "ye", "on", "1.0"}, false);
  ExpectEach(StringUtils::TextToBool, {"Y", "T"}, true);
  ExpectEach(StringUtils::TextToBool, {"n", "2"}, false);
}

TEST(StringUtilsTest, PrefixSuffixAndWildcardsFollowTheCaseFlag) {
  EXPECT_FALSE(StringUtils::MatchFirstChars("eur 12", "EUR ", true));
  EXPECT_TRUE(StringUtils::MatchFirstChars("eur 12", "EUR ", false));
  EXPECT_FALSE(StringUtils::MatchFirstChars("EU", "EUR", true));
  EXPECT_FALSE(StringUtils::MatchLastChars("12 KM", " km", true));
  EXPECT_TRUE(StringUtils::MatchLastChars("12 KM", " km", false));
  EXPECT_FALSE(StringUtils::MatchLastChars("km", " km", false));
  EXPECT_TRUE(StringUtils::MatchLastChars("", "", true));
  struct Row {
    const char *pszText, *pszPattern;
    bool bCaseSensitive, bMatch;
  };
  const Row rows[] = {
      {"report.html.bak", "*.html", true, false}, {"a report.html", "report*", true, false},
      {"abc", "a?c", true, true},                 {"abbc", "a?c", true, false},
      {"", "*", true, true},                      {"x", "", true, false},
      {"", "?", true, false},                     {"aXbXc", "a*Xc", true, true},  // the star gives characters back
      {"mississippi", "*sip*i", true, true},      {"page_1_TN.jpg", "*_page_1_TN.*", false, false},
      {"Report.HTML", "report.html", true, false}, {"Report.HTML", "R*.?TML", false, true},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(StringUtils::MatchSpec(row.pszText, row.pszPattern, row.bCaseSensitive), row.bMatch)
        << row.pszText << " / " << row.pszPattern;
  }
}

TEST(StringUtilsTest, SubstringSearch) {
  EXPECT_EQ(StringUtils::FindOccurrences("aaaa", "aa", true), 2);
  EXPECT_EQ(StringUtils::FindOccurrences("Red red RED", "red", false), 3);
  EXPECT_EQ(StringUtils::FindOccurrences("Red red RED", "red", true), 1);
  EXPECT_EQ(StringUtils::FindOccurrences("abc", "", true), 0);
  EXPECT_EQ(StringUtils::FindOccurrenceIndex("Blue sky", "SKY", false, 0), 5);
  EXPECT_EQ(StringUtils::FindOccurrenceIndex("Blue sky", "SKY", true, 0), -1);
  EXPECT_EQ(StringUtils::FindOccurrenceIndex("abab", "ab", true, 1), 2);
  for (int nStart : {3, -1, 0x7FFFFFFF}) EXPECT_EQ(StringUtils::FindOccurrenceIndex("abab", "ab", true, nStart), -1);
  EXPECT_EQ(StringUtils::FindOccurrenceIndex("abab", "", true, 0), -1);
}

TEST(StringUtilsTest, WholeWordsAtEdgesBesidePunctuationAndOverlapping) {
  ExpectRows<int>([](const char* p) { return StringUtils::FindWholeWordMatch(p, "cat", true, 0); },
                  {{"cat", 0}, {"a cat", 2}, {"(cat),", 1}, {"cat-food", 0}, {"cats", -1}, {"bobcat", -1},
                   {"cat_1 cat2 1cat", -1}, {"cat\xE9 cat", 5}, {"The CAT", -1}});
  EXPECT_EQ(StringUtils::FindWholeWordMatch("The CAT", "cat", false, 0), 4);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("cat cat", "cat", true, 1), 4);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("cat", "", true, 0), -1);
  // Candidates inside longer words are passed over, also where they overlap.
  EXPECT_EQ(StringUtils::FindWholeWordMatch("aaa aa", "aa", true, 0), 4);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("a-a-a", "a-a", true, 1), 2);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("ba-a-a", "a-a", true, 0), 3);
}

// All words found in any order: see the document search.
TEST(StringUtilsTest, AllWordsReportTheFirstWordsPosition) {
  EXPECT_EQ(StringUtils::FindAllWords(MakeTextArray({"sea", "dark blue"}), "dark blue sea", true), 10);
  EXPECT_EQ(StringUtils::FindAllWords(MakeTextArray({"blue", "se"}), "dark blue sea", false), 5);
  EXPECT_EQ(StringUtils::FindAllWords(MakeTextArray({"blue", "se"}), "dark blue sea", true), -1);
  EXPECT_EQ(StringUtils::FindAllWords(TextArray(), "dark blue", false), -1);
}

namespace {

// The pieces that split writes for a text, replacing what the array held.
template <typename Split>
Words Pieces(Split split, const char* pszText) {
  TextArray result = MakeTextArray({"old"});
  split(pszText, result);
  return Elements(result);
}

}  // namespace

TEST(StringUtilsTest, WordsPhrasesAndPieces) {
  ExpectRows<Words>([](const char* p) { return Pieces(StringUtils::GetWords, p); },
                    {{"Hello, world! e-mail  x_1 (3.5)", {"Hello", "world", "e", "mail", "x_1", "3", "5"}},
                     {" ,.; ", {}}});
  ExpectRows<Words>([](const char* p) { return Pieces(StringUtils::GetWordsWithDoubleQuotes, p); },
                    {{"red \"dark blue\"  green", {"red", "dark blue", "green"}},
                     {"\"a b\"c d", {"a bc", "d"}},
                     {"x \"unclosed  phrase", {"x", "unclosed  phrase"}},
                     {"\"\" \t ", {}}});
  const auto splitAt = [](const char* pszSeparator) {
    return [pszSeparator](const char* p) {
      return Pieces([&](const CString& t, TextArray& r) { StringUtils::SplitLine(t, pszSeparator, r); }, p);
    };
  };
  ExpectRows<Words>(splitAt("."), {{"31.12.1999", {"31", "12", "1999"}}, {".a..b.", {"", "a", "", "b", ""}}, {"", {}}});
  ExpectRows<Words>(splitAt(" - "), {{"1 - 2", {"1", "2"}}});
  ExpectRows<Words>(splitAt(""), {{"a.b", {"a.b"}}});
}

TEST(StringUtilsTest, PadStringOnEitherSide) {
  EXPECT_EQ(StringUtils::PadString("5", 3, "0", true), "005");
  EXPECT_EQ(StringUtils::PadString("x", 6, "ab", false), "xababa");
  EXPECT_EQ(StringUtils::PadString("x", 4, "ab", true), "abax");
  EXPECT_EQ(StringUtils::PadString("123", 2, "0", false), "123");
  EXPECT_EQ(StringUtils::PadString("1", 5, "", true), "1");
}

TEST(StringUtilsTest, Sentences) {
  const CString text = "  First one. Second? Third!  Version 1.5 is out... Really?!";
  const char* const sentences[] = {"First one.", "Second?", "Third!", "Version 1.5 is out...", "Really?!", ""};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(StringUtils::ParseSentence(text, i), sentences[i]) << i;
  EXPECT_EQ(StringUtils::ParseSentence(text, -1), "");
  EXPECT_EQ(StringUtils::ParseSentence("No end here", 0), "No end here");
  EXPECT_EQ(StringUtils::ParseSentence("One.  . Two.", 1), ".");
  EXPECT_EQ(StringUtils::ParseSentence("   ", 0), "");
}

TEST(StringUtilsTest, XMLNamesAndValues) {
  ExpectRows<const char*>(StringUtils::ProcessXMLTag,
                          {{"First name", "First_name"}, {"a<b>&c:d", "a_b__c_d"}, {"x-1.y_z", "x-1.y_z"},
                           {"2nd", "_2nd"}, {"-x", "_-x"}, {".x", "_.x"}, {"_x", "_x"}, {" x", "_x"},
                           {"K\xF6ln", "K_ln"}, {"", ""}});
  ExpectRows<const char*>(StringUtils::ProcessXMLValue,
                          {{"Tom & \"Jerry's\" <b>", "Tom &amp; &quot;Jerry&apos;s&quot; &lt;b&gt;"},
                           {"&amp;", "&amp;amp;"}});
}
