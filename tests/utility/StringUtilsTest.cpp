#include "utility/StringUtils.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/TextArraySupport.h"

using test_support::Elements;
using test_support::MakeTextArray;

TEST(StringUtilsTest, TrimAndEffectivelyEmpty) {
  CString text = " \t a b \r\n";
  StringUtils::Trim(text);
  EXPECT_EQ(text, "a b");
  EXPECT_TRUE(StringUtils::IsEffectivelyEmpty(""));
  EXPECT_TRUE(StringUtils::IsEffectivelyEmpty(" \t\r\n"));
  EXPECT_FALSE(StringUtils::IsEffectivelyEmpty("  x "));
}

TEST(StringUtilsTest, YesWordsAndEverythingElse) {
  for (const char* pszYes : {"yes", "YES", "Y", "y", "True", "t", "T", "1", "  yes\t"}) {
    EXPECT_TRUE(StringUtils::IsYes(pszYes)) << pszYes;
    EXPECT_TRUE(StringUtils::TextToBool(pszYes)) << pszYes;
  }
  for (const char* pszNo : {"no", "n", "false", "f", "0", "", " ", "yess", "ye", "2", "on", "1.0"}) {
    EXPECT_FALSE(StringUtils::IsYes(pszNo)) << pszNo;
    EXPECT_FALSE(StringUtils::TextToBool(pszNo)) << pszNo;
  }
}

TEST(StringUtilsTest, PrefixAndSuffixFollowTheCaseFlag) {
  EXPECT_TRUE(StringUtils::MatchFirstChars("EUR 12", "EUR ", true));
  EXPECT_FALSE(StringUtils::MatchFirstChars("eur 12", "EUR ", true));
  EXPECT_TRUE(StringUtils::MatchFirstChars("eur 12", "EUR ", false));
  EXPECT_FALSE(StringUtils::MatchFirstChars("EU", "EUR", true));
  EXPECT_TRUE(StringUtils::MatchLastChars("12 km", " km", true));
  EXPECT_FALSE(StringUtils::MatchLastChars("12 KM", " km", true));
  EXPECT_TRUE(StringUtils::MatchLastChars("12 KM", " km", false));
  EXPECT_FALSE(StringUtils::MatchLastChars("km", " km", false));
  EXPECT_TRUE(StringUtils::MatchFirstChars("abc", "", true));
  EXPECT_TRUE(StringUtils::MatchLastChars("", "", true));
}

TEST(StringUtilsTest, WildcardsMatchTheWholeText) {
  EXPECT_TRUE(StringUtils::MatchSpec("report.html", "*.html", true));
  EXPECT_FALSE(StringUtils::MatchSpec("report.html.bak", "*.html", true));
  EXPECT_FALSE(StringUtils::MatchSpec("a report.html", "report*", true));
  EXPECT_TRUE(StringUtils::MatchSpec("abc", "a?c", true));
  EXPECT_FALSE(StringUtils::MatchSpec("ac", "a?c", true));
  EXPECT_FALSE(StringUtils::MatchSpec("abbc", "a?c", true));
  EXPECT_TRUE(StringUtils::MatchSpec("", "*", true));
  EXPECT_TRUE(StringUtils::MatchSpec("", "", true));
  EXPECT_FALSE(StringUtils::MatchSpec("x", "", true));
  EXPECT_FALSE(StringUtils::MatchSpec("", "?", true));
  // A star has to give back characters it took too early.
  EXPECT_TRUE(StringUtils::MatchSpec("aXbXc", "a*Xc", true));
  EXPECT_FALSE(StringUtils::MatchSpec("page_1_TN.jpg", "*_page_1_TN.*", false));
  EXPECT_TRUE(StringUtils::MatchSpec("x_page_1_TN.jpg", "*_page_1_TN.*", true));
  EXPECT_TRUE(StringUtils::MatchSpec("mississippi", "*sip*i", true));
  EXPECT_FALSE(StringUtils::MatchSpec("Report.HTML", "report.html", true));
  EXPECT_TRUE(StringUtils::MatchSpec("Report.HTML", "report.html", false));
  EXPECT_TRUE(StringUtils::MatchSpec("Report.HTML", "R*.?TML", false));
}

TEST(StringUtilsTest, SubstringSearch) {
  EXPECT_EQ(StringUtils::FindOccurrences("aaaa", "aa", true), 2);
  EXPECT_EQ(StringUtils::FindOccurrences("Red red RED", "red", false), 3);
  EXPECT_EQ(StringUtils::FindOccurrences("Red red RED", "red", true), 1);
  EXPECT_EQ(StringUtils::FindOccurrences("abc", "", true), 0);
  EXPECT_EQ(StringUtils::FindOccurrenceIndex("Blue sky", "SKY", false, 0), 5);
  EXPECT_EQ(StringUtils::FindOccurrenceIndex("Blue sky", "SKY", true, 0), -1);
  EXPECT_EQ(StringUtils::FindOccurrenceIndex("abab", "ab", true, 1), 2);
  EXPECT_EQ(StringUtils::FindOccurrenceIndex("abab", "ab", true, 3), -1);
  EXPECT_EQ(StringUtils::FindOccurrenceIndex("abab", "ab", true, -1), -1);
  EXPECT_EQ(StringUtils::FindOccurrenceIndex("abab", "ab", true, 0x7FFFFFFF), -1);
  EXPECT_EQ(StringUtils::FindOccurrenceIndex("abab", "", true, 0), -1);
}

TEST(StringUtilsTest, WholeWordsAtEdgesAndBesidePunctuation) {
  EXPECT_EQ(StringUtils::FindWholeWordMatch("cat", "cat", true, 0), 0);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("cat sat", "cat", true, 0), 0);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("a cat", "cat", true, 0), 2);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("(cat),", "cat", true, 0), 1);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("cat-food", "cat", true, 0), 0);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("cats", "cat", true, 0), -1);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("bobcat", "cat", true, 0), -1);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("cat_1 cat2 1cat", "cat", true, 0), -1);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("caf\xE9 caf", "caf", true, 0), 5);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("The CAT", "cat", false, 0), 4);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("The CAT", "cat", true, 0), -1);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("cat cat", "cat", true, 1), 4);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("cat", "", true, 0), -1);
}

TEST(StringUtilsTest, WholeWordTriesOverlappingCandidates) {
  // The candidates at 0 and 1 are inside "aaa"; the one at 4 stands alone.
  EXPECT_EQ(StringUtils::FindWholeWordMatch("aaa aa", "aa", true, 0), 4);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("a-a-a", "a-a", true, 0), 0);
  EXPECT_EQ(StringUtils::FindWholeWordMatch("a-a-a", "a-a", true, 1), 2);
  // The failed candidate at 1 overlaps the good one at 3.
  EXPECT_EQ(StringUtils::FindWholeWordMatch("ba-a-a", "a-a", true, 0), 3);
}

TEST(StringUtilsTest, AllWordsReportTheFirstWordsPosition) {
  EXPECT_EQ(StringUtils::FindAllWords(MakeTextArray({"blue", "dark"}), "dark blue sea", false), 5);
  EXPECT_EQ(StringUtils::FindAllWords(MakeTextArray({"blue", "green"}), "dark blue sea", false), -1);
  EXPECT_EQ(StringUtils::FindAllWords(MakeTextArray({"sea", "dark blue"}), "dark blue sea", true), 10);
  EXPECT_EQ(StringUtils::FindAllWords(MakeTextArray({"blue", "se"}), "dark blue sea", false), 5);
  EXPECT_EQ(StringUtils::FindAllWords(MakeTextArray({"blue", "se"}), "dark blue sea", true), -1);
  EXPECT_EQ(StringUtils::FindAllWords(MakeTextArray({"Blue"}), "dark blue", false), -1);
  EXPECT_EQ(StringUtils::FindAllWords(TextArray(), "dark blue", false), -1);
}

TEST(StringUtilsTest, WordsSplitAtBlanksAndPunctuation) {
  TextArray words;
  words.Add("old");
  StringUtils::GetWords("Hello, world! e-mail  x_1 (3.5)", words);
  EXPECT_EQ(Elements(words), (std::vector<std::string>{"Hello", "world", "e", "mail", "x_1", "3", "5"}));
  StringUtils::GetWords(" ,.; ", words);
  EXPECT_TRUE(Elements(words).empty());
}

TEST(StringUtilsTest, QuotedPhrasesAreOneWord) {
  TextArray words;
  StringUtils::GetWordsWithDoubleQuotes("red \"dark blue\"  green", words);
  EXPECT_EQ(Elements(words), (std::vector<std::string>{"red", "dark blue", "green"}));
  StringUtils::GetWordsWithDoubleQuotes("\"a b\"c d", words);
  EXPECT_EQ(Elements(words), (std::vector<std::string>{"a bc", "d"}));
  StringUtils::GetWordsWithDoubleQuotes("x \"unclosed  phrase", words);
  EXPECT_EQ(Elements(words), (std::vector<std::string>{"x", "unclosed  phrase"}));
  StringUtils::GetWordsWithDoubleQuotes("\"\" \t ", words);
  EXPECT_TRUE(Elements(words).empty());
}

TEST(StringUtilsTest, SplitLineKeepsEmptyPieces) {
  TextArray parts;
  StringUtils::SplitLine("31.12.1999", ".", parts);
  EXPECT_EQ(Elements(parts), (std::vector<std::string>{"31", "12", "1999"}));
  StringUtils::SplitLine(".a..b.", ".", parts);
  EXPECT_EQ(Elements(parts), (std::vector<std::string>{"", "a", "", "b", ""}));
  StringUtils::SplitLine("1 - 2", " - ", parts);
  EXPECT_EQ(Elements(parts), (std::vector<std::string>{"1", "2"}));
  StringUtils::SplitLine("a.b", "", parts);
  EXPECT_EQ(Elements(parts), (std::vector<std::string>{"a.b"}));
  StringUtils::SplitLine("", ".", parts);
  EXPECT_TRUE(Elements(parts).empty());
}

TEST(StringUtilsTest, PadStringOnEitherSide) {
  EXPECT_EQ(StringUtils::PadString("5", 2, "0", false), "50");
  EXPECT_EQ(StringUtils::PadString("5", 3, "0", true), "005");
  EXPECT_EQ(StringUtils::PadString("x", 6, "ab", false), "xababa");
  EXPECT_EQ(StringUtils::PadString("x", 4, "ab", true), "abax");
  EXPECT_EQ(StringUtils::PadString("123", 2, "0", false), "123");
  EXPECT_EQ(StringUtils::PadString("12", 2, "0", true), "12");
  EXPECT_EQ(StringUtils::PadString("1", 5, "", true), "1");
  EXPECT_EQ(StringUtils::PadString("", 2, "0", false), "00");
}

TEST(StringUtilsTest, Sentences) {
  const CString text = "  First one. Second? Third!  Version 1.5 is out... Really?!";
  EXPECT_EQ(StringUtils::ParseSentence(text, 0), "First one.");
  EXPECT_EQ(StringUtils::ParseSentence(text, 1), "Second?");
  EXPECT_EQ(StringUtils::ParseSentence(text, 2), "Third!");
  EXPECT_EQ(StringUtils::ParseSentence(text, 3), "Version 1.5 is out...");
  EXPECT_EQ(StringUtils::ParseSentence(text, 4), "Really?!");
  EXPECT_EQ(StringUtils::ParseSentence(text, 5), "");
  EXPECT_EQ(StringUtils::ParseSentence(text, -1), "");
  EXPECT_EQ(StringUtils::ParseSentence("No end here", 0), "No end here");
  EXPECT_EQ(StringUtils::ParseSentence("One.  . Two.", 1), ".");
  EXPECT_EQ(StringUtils::ParseSentence("   ", 0), "");
  EXPECT_EQ(StringUtils::ParseSentence("", 0), "");
}

TEST(StringUtilsTest, XMLNames) {
  EXPECT_EQ(StringUtils::ProcessXMLTag("Name"), "Name");
  EXPECT_EQ(StringUtils::ProcessXMLTag("First name"), "First_name");
  EXPECT_EQ(StringUtils::ProcessXMLTag("a<b>&c:d"), "a_b__c_d");
  EXPECT_EQ(StringUtils::ProcessXMLTag("x-1.y_z"), "x-1.y_z");
  EXPECT_EQ(StringUtils::ProcessXMLTag("2nd"), "_2nd");
  EXPECT_EQ(StringUtils::ProcessXMLTag("-x"), "_-x");
  EXPECT_EQ(StringUtils::ProcessXMLTag(".x"), "_.x");
  EXPECT_EQ(StringUtils::ProcessXMLTag("_x"), "_x");
  EXPECT_EQ(StringUtils::ProcessXMLTag(" x"), "_x");
  EXPECT_EQ(StringUtils::ProcessXMLTag("K\xF6ln"), "K_ln");
  EXPECT_EQ(StringUtils::ProcessXMLTag(""), "");
}

TEST(StringUtilsTest, XMLValuesEscapeMarkup) {
  EXPECT_EQ(StringUtils::ProcessXMLValue("Tom & \"Jerry's\" <b>"),
            "Tom &amp; &quot;Jerry&apos;s&quot; &lt;b&gt;");
  EXPECT_EQ(StringUtils::ProcessXMLValue("&amp;"), "&amp;amp;");
  EXPECT_EQ(StringUtils::ProcessXMLValue("plain"), "plain");
  EXPECT_EQ(StringUtils::ProcessXMLValue(""), "");
}
