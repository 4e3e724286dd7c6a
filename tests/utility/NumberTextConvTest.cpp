#include "utility/NumberTextConv.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <string>

#include "tests/support/LocaleTestSupport.h"
#include "tests/support/TableTestSupport.h"
#include "utility/LocaleUtils.h"

using test_support::ExpectRows;

namespace {

using NumberTextConvTest = test_support::UsLocaleTest;

CString Double(double dValue, int nDecimals, bool bCurrency, int nDigits, const char* pszSeparator, bool bGroup) {
  return NumberTextConv::DoubleToString(dValue, nDecimals, bCurrency, nDigits, pszSeparator, bGroup);
}

// The first number in a text: its value, the text with "%d" in its place,
// and whether it stood alone.
struct Parsed {
  int nValue;
  const char* pszRemainder;
  bool bAlone;
};

void ExpectParsed(const char* pszText, bool bAllowRoman, const Parsed& expected) {
  bool bAlone = !expected.bAlone;
  CString remainder = "unset";
  EXPECT_EQ(NumberTextConv::ParseNumber(pszText, bAlone, remainder, bAllowRoman), expected.nValue) << pszText;
  EXPECT_EQ(remainder, expected.pszRemainder) << pszText;
  EXPECT_EQ(bAlone, expected.bAlone) << pszText;
}

}  // namespace

TEST_F(NumberTextConvTest, WholeNumbersReadSignsGroupingAndSaturate) {
  ExpectRows<int>(NumberTextConv::GetNumberFromString,
                  {{"  42", 42}, {"- 15", -15}, {"(5)", -5}, {"1,234,567", 1234567}, {"1,,2", 1}, {",5", 0},
                   {"12.9", 12}, {"abc", 0}, {"2147483647", INT_MAX}, {"2147483648", INT_MAX},
                   {"-2147483648", INT_MIN}, {"-99999999999", INT_MIN}});
  ExpectRows<long long>(NumberTextConv::GetNumber64FromString,
                        {{"-1,000,000,000,000", -1000000000000LL}, {"9223372036854775808", INT64_MAX},
                         {"-9223372036854775808", INT64_MIN}, {"-99999999999999999999999", INT64_MIN}});
}

TEST_F(NumberTextConvTest, DoublesReadTheLocaleSeparators) {
  ExpectRows<double>([](const char* p) { return NumberTextConv::GetDoubleFromString(p, false); },
                     {{"1,234.5", 1234.5}, {"-.25", -0.25}, {"(2.5)", -2.5}, {"3.14 m", 3.14}, {"1e5", 1.0},
                      {"none", 0.0}});
  EXPECT_EQ(NumberTextConv::GetDoubleFromString("1" + std::string(400, '0'), false), DBL_MAX);
  EXPECT_EQ(NumberTextConv::GetDoubleFromString("-1" + std::string(400, '0'), false), -DBL_MAX);
  EXPECT_EQ(NumberTextConv::GetDoubleFromString("0." + std::string(400, '0') + "1", false), 0.0);
  LocaleUtils::SetCurrencyDecimalSeparator(",");
  LocaleUtils::SetCurrencyThousandsSeparator(".");
  EXPECT_EQ(NumberTextConv::GetDoubleFromString("1.234,5", true), 1234.5);
  EXPECT_EQ(NumberTextConv::GetDoubleFromString("1.234,5", false), 1.234);
  LocaleUtils::SetNumberDecimalSeparator(",");
  LocaleUtils::SetNumberThousandsSeparator("\xC2\xA0");
  EXPECT_EQ(NumberTextConv::GetDoubleFromString("1\xC2\xA0" "234,5", false), 1234.5);
  EXPECT_EQ(NumberTextConv::GetNumberFromString("1\xC2\xA0" "234"), 1234);
}

TEST_F(NumberTextConvTest, NumbersAsTextRoundHalfAwayFromZero) {
  EXPECT_EQ(NumberTextConv::NumberToString(-1234, true, 0, ""), "-1,234");
  EXPECT_EQ(NumberTextConv::NumberToString(999, true, 0, ""), "999");
  EXPECT_EQ(NumberTextConv::NumberToString(1234, false, 0, "'"), "1234");
  EXPECT_EQ(NumberTextConv::NumberToString(1234, true, 0, "'"), "1'234");
  EXPECT_EQ(NumberTextConv::NumberToString(-5, false, 3, ""), "-005");
  EXPECT_EQ(NumberTextConv::NumberToString(INT_MIN, true, 0, ""), "-2,147,483,648");
  EXPECT_EQ(Double(-2.5, 0, false, 0, "", false), "-3");
  EXPECT_EQ(Double(2.4999, 0, false, 0, "", false), "2");
  EXPECT_EQ(Double(0.125, 2, false, 0, "", false), "0.13");
  EXPECT_EQ(Double(1.005, 2, false, 0, "", false), "1.01");
  EXPECT_EQ(Double(9.995, 2, false, 0, "", false), "10.00");
  EXPECT_EQ(Double(999.5, 0, false, 0, "", true), "1,000");
  EXPECT_EQ(Double(-0.001, 2, false, 0, "", false), "0.00");
  EXPECT_EQ(Double(1e20, 0, false, 0, "", true), "100,000,000,000,000,000,000");
  EXPECT_EQ(Double(std::nan(""), 2, false, 0, "", false), "");
  EXPECT_EQ(Double(1234.5, 2, false, 0, " ", true), "1 234.50");
  EXPECT_EQ(Double(1.5, 2, false, 3, "", false), "001.50");
  LocaleUtils::SetNumberDecimalSeparator(",");
  LocaleUtils::SetNumberThousandsSeparator("'");
  EXPECT_EQ(Double(1234.5, 1, false, 0, "", true), "1'234,5");
  EXPECT_EQ(NumberTextConv::NumberToString(1234567, true, 0, ""), "1'234'567");
}

TEST_F(NumberTextConvTest, FractionsReadAndWriteSixtyFourths) {
  ExpectRows<double>(NumberTextConv::FractionToDouble, {{"1 1/2", 1.5}, {"-1 1/2", -1.5}, {" 2 3/32 ", 2.09375},
                                                        {"2.25", 2.25}, {"1/0", 1.0}, {"x", 0.0}});
  EXPECT_EQ(NumberTextConv::DoubleToFraction(-1.5), "1 1/2");
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
  ExpectRows<const char*>(NumberTextConv::RemoveDecimalZeroes,
                          {{"1.500", "1.5"}, {"2.00", "2"}, {"10.05", "10.05"}, {"1,200", "1,200"},
                           {"-3.10 kg", "-3.1 kg"}});
  LocaleUtils::SetNumberDecimalSeparator(",");
  ExpectRows<const char*>(NumberTextConv::RemoveDecimalZeroes, {{"1,50", "1,5"}, {"1.50", "1.50"}});
}

TEST_F(NumberTextConvTest, ParseNumberFindsTheFirstNumberAndMarksItsPlace) {
  ExpectParsed("Vol. 2", false, {2, "Vol. %d", false});
  ExpectParsed("  42 ", false, {42, "", true});
  ExpectParsed("pages 10-20", false, {10, "pages %d-20", false});
  ExpectParsed("Level -3 north", false, {-3, "Level %d north", false});
  ExpectParsed("A-3", false, {3, "A-%d", false});
  ExpectParsed("Track 99999999999", false, {INT_MAX, "Track %d", false});
  ExpectParsed("no number", false, {0, "no number", false});
  ExpectParsed("", false, {0, "", false});
  // Roman numerals only when allowed, whole upper-case canonical words only.
  ExpectParsed("Part IV", true, {4, "Part %d", false});
  ExpectParsed("Part IV", false, {0, "Part IV", false});
  ExpectParsed("MMMCMXCIX", true, {3999, "", true});
  ExpectParsed("Louis XIV.", true, {14, "Louis %d.", false});
  ExpectParsed("XC 7", true, {90, "%d 7", false});
  ExpectParsed("IIII 8", true, {8, "IIII %d", false});
  for (const char* pszText : {"IIII", "VX", "MMMM", "iv", "LIVE", "CIVIL"}) ExpectParsed(pszText, true, {0, pszText, false});
}
