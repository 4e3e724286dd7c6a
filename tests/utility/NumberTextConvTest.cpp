#include "utility/NumberTextConv.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <string>

#include "tests/support/LocaleTestSupport.h"
#include "utility/LocaleUtils.h"

namespace {

using NumberTextConvTest = test_support::UsLocaleTest;

CString ParseRemainder(const CString& text, bool bAllowRoman, int& nValue, bool& bAlone) {
  CString remainder = "unset";
  nValue = NumberTextConv::ParseNumber(text, bAlone, remainder, bAllowRoman);
  return remainder;
}

}  // namespace

TEST_F(NumberTextConvTest, WholeNumbersReadSignsParenthesesGroupingAndStopAtJunk) {
  EXPECT_EQ(NumberTextConv::GetNumberFromString("  42"), 42);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("+7"), 7);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("- 15"), -15);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("(5)"), -5);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("1,234,567"), 1234567);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("1,,2"), 1);
  EXPECT_EQ(NumberTextConv::GetNumberFromString(",5"), 0);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("12abc"), 12);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("12.9"), 12);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("abc"), 0);
  EXPECT_EQ(NumberTextConv::GetNumberFromString(""), 0);
  EXPECT_EQ(NumberTextConv::GetNumber64FromString("-1,000,000,000,000"), -1000000000000LL);
}

TEST_F(NumberTextConvTest, WholeNumbersSaturateAtTheLimitsOfTheirType) {
  EXPECT_EQ(NumberTextConv::GetNumberFromString("2147483647"), INT_MAX);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("2147483648"), INT_MAX);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("-2147483648"), INT_MIN);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("-99999999999"), INT_MIN);
  EXPECT_EQ(NumberTextConv::GetNumber64FromString("9223372036854775807"), INT64_MAX);
  EXPECT_EQ(NumberTextConv::GetNumber64FromString("9223372036854775808"), INT64_MAX);
  EXPECT_EQ(NumberTextConv::GetNumber64FromString("-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(NumberTextConv::GetNumber64FromString("-99999999999999999999999"), INT64_MIN);
}

TEST_F(NumberTextConvTest, DoublesReadTheLocaleSeparators) {
  EXPECT_DOUBLE_EQ(NumberTextConv::GetDoubleFromString("1,234.5", false), 1234.5);
  EXPECT_DOUBLE_EQ(NumberTextConv::GetDoubleFromString("-.25", false), -0.25);
  EXPECT_DOUBLE_EQ(NumberTextConv::GetDoubleFromString("(2.5)", false), -2.5);
  EXPECT_DOUBLE_EQ(NumberTextConv::GetDoubleFromString("3.14 m", false), 3.14);
  EXPECT_DOUBLE_EQ(NumberTextConv::GetDoubleFromString("1e5", false), 1.0);
  EXPECT_DOUBLE_EQ(NumberTextConv::GetDoubleFromString("none", false), 0.0);
  EXPECT_EQ(NumberTextConv::GetDoubleFromString("1" + std::string(400, '0'), false), DBL_MAX);
  EXPECT_EQ(NumberTextConv::GetDoubleFromString("-1" + std::string(400, '0'), false), -DBL_MAX);
  EXPECT_EQ(NumberTextConv::GetDoubleFromString("0." + std::string(400, '0') + "1", false), 0.0);

  LocaleUtils::SetCurrencyDecimalSeparator(",");
  LocaleUtils::SetCurrencyThousandsSeparator(".");
  EXPECT_DOUBLE_EQ(NumberTextConv::GetDoubleFromString("1.234,5", true), 1234.5);
  EXPECT_DOUBLE_EQ(NumberTextConv::GetDoubleFromString("1.234,5", false), 1.234);
  LocaleUtils::SetNumberDecimalSeparator(",");
  LocaleUtils::SetNumberThousandsSeparator("\xC2\xA0");
  EXPECT_DOUBLE_EQ(NumberTextConv::GetDoubleFromString("1\xC2\xA0" "234,5", false), 1234.5);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("1\xC2\xA0" "234"), 1234);
}

TEST_F(NumberTextConvTest, WholeNumbersAsText) {
  EXPECT_EQ(NumberTextConv::NumberToString(1234567, true, 0, ""), "1,234,567");
  EXPECT_EQ(NumberTextConv::NumberToString(-1234, true, 0, ""), "-1,234");
  EXPECT_EQ(NumberTextConv::NumberToString(999, true, 0, ""), "999");
  EXPECT_EQ(NumberTextConv::NumberToString(1000, true, 0, ""), "1,000");
  EXPECT_EQ(NumberTextConv::NumberToString(1234, false, 0, "'"), "1234");
  EXPECT_EQ(NumberTextConv::NumberToString(1234, true, 0, "'"), "1'234");
  EXPECT_EQ(NumberTextConv::NumberToString(5, false, 3, ""), "005");
  EXPECT_EQ(NumberTextConv::NumberToString(-5, false, 3, ""), "-005");
  EXPECT_EQ(NumberTextConv::NumberToString(INT_MIN, true, 0, ""), "-2,147,483,648");
  LocaleUtils::SetNumberThousandsSeparator(".");
  EXPECT_EQ(NumberTextConv::NumberToString(1234567, true, 0, ""), "1.234.567");
}

TEST_F(NumberTextConvTest, DoublesRoundHalfAwayFromZero) {
  EXPECT_EQ(NumberTextConv::DoubleToString(2.5, 0, false, 0, "", false), "3");
  EXPECT_EQ(NumberTextConv::DoubleToString(-2.5, 0, false, 0, "", false), "-3");
  EXPECT_EQ(NumberTextConv::DoubleToString(2.4999, 0, false, 0, "", false), "2");
  EXPECT_EQ(NumberTextConv::DoubleToString(0.125, 2, false, 0, "", false), "0.13");
  EXPECT_EQ(NumberTextConv::DoubleToString(-0.125, 2, false, 0, "", false), "-0.13");
  EXPECT_EQ(NumberTextConv::DoubleToString(1.005, 2, false, 0, "", false), "1.01");
  EXPECT_EQ(NumberTextConv::DoubleToString(9.995, 2, false, 0, "", false), "10.00");
  EXPECT_EQ(NumberTextConv::DoubleToString(999.5, 0, false, 0, "", true), "1,000");
  EXPECT_EQ(NumberTextConv::DoubleToString(1.5, 4, false, 0, "", false), "1.5000");
  EXPECT_EQ(NumberTextConv::DoubleToString(-0.001, 2, false, 0, "", false), "0.00");
  EXPECT_EQ(NumberTextConv::DoubleToString(-0.0, 2, true, 0, "", false), "0.00");
  EXPECT_EQ(NumberTextConv::DoubleToString(1e20, 0, false, 0, "", true), "100,000,000,000,000,000,000");
  EXPECT_EQ(NumberTextConv::DoubleToString(std::nan(""), 2, false, 0, "", false), "");
  EXPECT_EQ(NumberTextConv::DoubleToString(HUGE_VAL, 2, false, 0, "", false), "");
}

TEST_F(NumberTextConvTest, DoublesUseTheNumberOrCurrencySeparatorsAndTheGivenArguments) {
  EXPECT_EQ(NumberTextConv::DoubleToString(1234567.891, 2, false, 0, "", true), "1,234,567.89");
  EXPECT_EQ(NumberTextConv::DoubleToString(1234.5, 2, false, 0, " ", true), "1 234.50");
  EXPECT_EQ(NumberTextConv::DoubleToString(1.5, 2, false, 3, "", false), "001.50");
  LocaleUtils::SetCurrencyDecimalSeparator(",");
  LocaleUtils::SetCurrencyThousandsSeparator(".");
  EXPECT_EQ(NumberTextConv::DoubleToString(-1234.5, 2, true, 0, "", true), "-1.234,50");
  EXPECT_EQ(NumberTextConv::DoubleToString(1234.5, 2, false, 0, "", true), "1,234.50");
  LocaleUtils::SetNumberDecimalSeparator(",");
  LocaleUtils::SetNumberThousandsSeparator("'");
  EXPECT_EQ(NumberTextConv::DoubleToString(1234.5, 1, false, 0, "", true), "1'234,5");
}

TEST_F(NumberTextConvTest, FractionsReadAndWriteSixtyFourths) {
  EXPECT_DOUBLE_EQ(NumberTextConv::FractionToDouble("1 1/2"), 1.5);
  EXPECT_DOUBLE_EQ(NumberTextConv::FractionToDouble("3/4"), 0.75);
  EXPECT_DOUBLE_EQ(NumberTextConv::FractionToDouble("-1 1/2"), -1.5);
  EXPECT_DOUBLE_EQ(NumberTextConv::FractionToDouble(" 2 3/32 "), 2.09375);
  EXPECT_DOUBLE_EQ(NumberTextConv::FractionToDouble("2.25"), 2.25);
  EXPECT_DOUBLE_EQ(NumberTextConv::FractionToDouble("7"), 7.0);
  EXPECT_DOUBLE_EQ(NumberTextConv::FractionToDouble("1/0"), 1.0);
  EXPECT_DOUBLE_EQ(NumberTextConv::FractionToDouble("x"), 0.0);

  EXPECT_EQ(NumberTextConv::DoubleToFraction(1.5), "1 1/2");
  EXPECT_EQ(NumberTextConv::DoubleToFraction(0.75), "3/4");
  EXPECT_EQ(NumberTextConv::DoubleToFraction(-1.5), "1 1/2");
  EXPECT_EQ(NumberTextConv::DoubleToFraction(2.0), "2");
  EXPECT_EQ(NumberTextConv::DoubleToFraction(0.0), "0");
  EXPECT_EQ(NumberTextConv::DoubleToFraction(0.015625), "1/64");
  EXPECT_EQ(NumberTextConv::DoubleToFraction(2.1), "2 3/32");  // 6.4 sixty-fourths
  EXPECT_EQ(NumberTextConv::DoubleToFraction(0.999), "1");
  EXPECT_EQ(NumberTextConv::DoubleToFraction(std::nan("")), "");

  for (int nSixtyFourths = 0; nSixtyFourths < 4 * 64; ++nSixtyFourths) {
    const double dValue = nSixtyFourths / 64.0;
    EXPECT_EQ(NumberTextConv::FractionToDouble(NumberTextConv::DoubleToFraction(dValue)), dValue) << nSixtyFourths;
    EXPECT_EQ(NumberTextConv::FractionToDouble("-" + NumberTextConv::DoubleToFraction(-dValue)), -dValue);
  }
}

TEST_F(NumberTextConvTest, DecimalZeroesAreRemovedAfterTheLocaleSeparator) {
  EXPECT_EQ(NumberTextConv::RemoveDecimalZeroes("1.500"), "1.5");
  EXPECT_EQ(NumberTextConv::RemoveDecimalZeroes("2.00"), "2");
  EXPECT_EQ(NumberTextConv::RemoveDecimalZeroes("10.05"), "10.05");
  EXPECT_EQ(NumberTextConv::RemoveDecimalZeroes("1,200"), "1,200");
  EXPECT_EQ(NumberTextConv::RemoveDecimalZeroes("-3.10 kg"), "-3.1 kg");
  LocaleUtils::SetNumberDecimalSeparator(",");
  EXPECT_EQ(NumberTextConv::RemoveDecimalZeroes("1,50"), "1,5");
  EXPECT_EQ(NumberTextConv::RemoveDecimalZeroes("1.50"), "1.50");
}

TEST_F(NumberTextConvTest, ParseNumberFindsTheFirstNumberAndMarksItsPlace) {
  int nValue = 0;
  bool bAlone = true;
  EXPECT_EQ(ParseRemainder("Vol. 2", false, nValue, bAlone), "Vol. %d");
  EXPECT_EQ(nValue, 2);
  EXPECT_FALSE(bAlone);

  EXPECT_EQ(ParseRemainder("  42 ", false, nValue, bAlone), "");
  EXPECT_EQ(nValue, 42);
  EXPECT_TRUE(bAlone);

  EXPECT_EQ(ParseRemainder("pages 10-20", false, nValue, bAlone), "pages %d-20");
  EXPECT_EQ(nValue, 10);
  EXPECT_EQ(ParseRemainder("Level -3 north", false, nValue, bAlone), "Level %d north");
  EXPECT_EQ(nValue, -3);
  EXPECT_EQ(ParseRemainder("A-3", false, nValue, bAlone), "A-%d");
  EXPECT_EQ(nValue, 3);
  EXPECT_EQ(ParseRemainder("Track 99999999999", false, nValue, bAlone), "Track %d");
  EXPECT_EQ(nValue, INT_MAX);

  EXPECT_EQ(ParseRemainder("no number", false, nValue, bAlone), "no number");
  EXPECT_EQ(nValue, 0);
  EXPECT_FALSE(bAlone);
  EXPECT_EQ(ParseRemainder("", false, nValue, bAlone), "");
  EXPECT_FALSE(bAlone);
}

TEST_F(NumberTextConvTest, ParseNumberReadsWholeUpperCaseRomanWordsWhenAllowed) {
  int nValue = 0;
  bool bAlone = false;
  EXPECT_EQ(ParseRemainder("Part IV", true, nValue, bAlone), "Part %d");
  EXPECT_EQ(nValue, 4);
  EXPECT_EQ(ParseRemainder("Part IV", false, nValue, bAlone), "Part IV");
  EXPECT_EQ(nValue, 0);
  EXPECT_EQ(ParseRemainder("MMMCMXCIX", true, nValue, bAlone), "");
  EXPECT_EQ(nValue, 3999);
  EXPECT_TRUE(bAlone);
  EXPECT_EQ(ParseRemainder("Louis XIV.", true, nValue, bAlone), "Louis %d.");
  EXPECT_EQ(nValue, 14);
  EXPECT_EQ(ParseRemainder("XC 7", true, nValue, bAlone), "%d 7");
  EXPECT_EQ(nValue, 90);
  // Not canonical, not upper case, or part of a longer word.
  for (const char* pszText : {"IIII", "VX", "MMMM", "iv", "LIVE", "CIVIL"}) {
    EXPECT_EQ(ParseRemainder(pszText, true, nValue, bAlone), pszText);
    EXPECT_EQ(nValue, 0) << pszText;
  }
  EXPECT_EQ(ParseRemainder("IIII 8", true, nValue, bAlone), "IIII %d");
  EXPECT_EQ(nValue, 8);
}
