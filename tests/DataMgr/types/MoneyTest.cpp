#include "DataMgr/types/Money.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>

#include "tests/support/ArchiveTestSupport.h"
#include "tests/support/LocaleTestSupport.h"
#include "utility/LocaleUtils.h"

using test_support::ByteWriter;
using test_support::Bytes;
using test_support::Loaded;
using test_support::Store;

namespace {

// A Money of the given sign and raw magnitude, built through its archive
// form so that no arithmetic of the class under test is involved.
Money Raw(bool bPositive, unsigned long long nAmount) {
  return Loaded<Money>(ByteWriter().Word(1).Bool(bPositive).Int64(static_cast<long long>(nAmount)).Get());
}

Money Cents(long long nCents) {
  return Raw(nCents >= 0, static_cast<unsigned long long>(nCents < 0 ? -nCents : nCents));
}

Money NegativeZero() { return Raw(false, 0); }

// The rules with fixed constants (threshold 50, step 100) are stated for a
// currency with two fractional digits, the test environment's default.
class MoneyAtScale100 : public test_support::UsLocaleTest {
 protected:
  void SetUp() override {
    UsLocaleTest::SetUp();
    ASSERT_EQ(Money::GetScale(), 100u) << "the test environment has 2 currency digits";
  }
};

struct Case {
  const char* name;
  Money result;
  Money expected;
};

void ExpectCases(std::initializer_list<Case> cases) {
  for (const Case& c : cases) EXPECT_EQ(c.result, c.expected) << c.name;
}

}  // namespace

// Shows sign and magnitude when a comparison fails.
void PrintTo(const Money& money, std::ostream* os) {
  const Bytes bytes = Store([&](CArchive& ar) { Money(money).Serialize(ar); });
  unsigned long long nAmount = 0;
  for (int i = 7; i >= 0; --i) nAmount = (nAmount << 8) | bytes[3 + i];
  *os << (bytes[2] != 0 ? "+" : "-") << nAmount;
}

TEST(MoneyTest, WholeUnitsAreScaledByTenToTheCurrencyDigits) {
  const int nDigits = LocaleUtils::GetCurrencyFractionalDigits();
  EXPECT_EQ(Money::GetFractionalDigits(), static_cast<UINT>(nDigits));
  ULONGLONG nScale = 1;
  for (int i = 0; i < nDigits; ++i) nScale *= 10;
  EXPECT_EQ(Money::GetScale(), nScale);
  ExpectCases({
      {"3", Money(3), Raw(true, 3 * nScale)}, {"-3", Money(-3), Raw(false, 3 * nScale)},
      {"-3 as __int64", Money(static_cast<__int64>(-3)), Raw(false, 3 * nScale)}, {"none", Money(), Raw(true, 0)},
      {"__int64 minimum", Money(std::numeric_limits<__int64>::min()), Raw(false, (1ULL << 63) * nScale)},
  });
}

// Doubles are truncated, not rounded, both when converted and as operands.
TEST_F(MoneyAtScale100, ConversionsAndSumsTruncateDoubles) {
  Money sum(0);
  sum += -0.5;
  Money total(1);
  total += 2;
  total -= Money(4);
  ExpectCases({
      {"1.239", Money(1.239), Cents(123)}, {"-1.239", Money(-1.239), Cents(-123)},
      {"0.009", Money(0.009), Raw(true, 0)}, {"-0.0", Money(-0.0), Raw(true, 0)},
      {"NaN", Money(std::nan("")), Raw(false, 0)}, {"1e30 overflows to 0", Money(1e30), Raw(true, 0)},
      {"1e17", Money(1e17), Raw(true, 10000000000000000000ULL)},
      {"-5 + 5 keeps the left sign", Money(-5) + Money(5), NegativeZero()}, {"5 + -5", Money(5) + Money(-5), Money(0)},
      {"5 - 5", Money(5) - Money(5), Money(0)}, {"-5 - -5", Money(-5) - Money(-5), NegativeZero()},
      {"3 + -5", Money(3) + Money(-5), Money(-2)}, {"-3 + 5", Money(-3) + 5, Money(2)},
      {"-3 + -5 as __int64", Money(-3) + static_cast<__int64>(-5), Money(-8)}, {"3 - 5", Money(3) - 5, Money(-2)},
      {"-3 - -5", Money(-3) - Money(-5), Money(2)}, {"-3 - 5", Money(-3) - 5, Money(-8)},
      {"1 + 2 - 4 in place", total, Money(-1)}, {"1 + 0.019", Money(1) + 0.019, Cents(101)},
      {"1 - 1.999", Money(1) - 1.999, Cents(-99)}, {"0 += -0.5", sum, Cents(-50)},
  });
}

// Products round at fifty units; an integer factor |n| is scaled before
// multiplying, and that product wraps: 2^62 units times 1 is 2^62 * 100 =
// 25 * 2^64 before rounding, so 0. The sign comes from both signs.
TEST_F(MoneyAtScale100, ProductsRoundAtFiftyUnits) {
  Money product(2);
  product *= -3;
  ExpectCases({
      {"1 * 1.239", Money(1) * 1.239, Cents(123)}, {"0.25 * 0.30", Cents(25) * Cents(30), Cents(8)},
      {"0.15 * 0.15", Cents(15) * Cents(15), Cents(2)}, {"1.50 * 1.50", Cents(150) * Cents(150), Cents(225)},
      {"1.50 * 3", Cents(150) * 3, Cents(450)},
      {"1.50 * -3 as __int64", Cents(150) * static_cast<__int64>(-3), Cents(-450)},
      {"2^62 units * 1 wraps", Raw(true, 1ULL << 62) * 1, Raw(true, 0)},
      {"2^62 units * -1 wraps", Raw(true, 1ULL << 62) * static_cast<__int64>(-1), Raw(false, 0)},
      {"2^40 units * 2", Raw(true, 1ULL << 40) * 2, Raw(true, 1ULL << 41)}, {"-5 * 0", Money(-5) * 0, NegativeZero()},
      {"5 * 0.0", Money(5) * 0.0, Money(0)}, {"5 * -0", Money(5) * NegativeZero(), NegativeZero()},
      {"-2 * -3", Money(-2) * Money(-3), Money(6)}, {"2 *= -3", product, Money(-6)},
  });
}

// Quotients round half up; a quotient by Money looks at its own fraction.
// A divisor of zero, or below one unit, keeps the magnitude and takes the
// sign of both.
TEST_F(MoneyAtScale100, QuotientsRoundHalfUpAndZeroDivisorsKeepTheMagnitude) {
  Money quotient(10);
  quotient /= 0.009;
  ExpectCases({
      {"1 / 3", Money(1) / 3, Cents(33)}, {"2 / 3", Money(2) / 3, Cents(67)},
      {"5 / 2", Money(5) / 2, Cents(250)}, {"-5 / 2 as __int64", Money(-5) / static_cast<__int64>(2), Cents(-250)},
      {"0.01 / 2", Cents(1) / 2, Cents(1)}, {"1 / Money 3", Money(1) / Money(3), Cents(33)},
      {"1 / Money 1.60", Money(1) / Cents(160), Cents(63)}, {"5 / Money 2", Money(5) / Money(2), Cents(251)},
      {"-6 / Money 3", Money(-6) / Money(3), Cents(-200)}, {"10 / 4.0", Money(10) / 4.0, Cents(250)},
      {"1 / 0.3", Money(1) / 0.3, Cents(333)}, {"2 / 0.3", Money(2) / 0.3, Cents(667)},
      {"10 / -0.5", Money(10) / -0.5, Cents(-2000)}, {"10 / 0", Money(10) / 0, Money(10)},
      {"10 / 0.0", Money(10) / 0.0, Money(10)}, {"10 / Money 0", Money(10) / Money(0), Money(10)},
      {"10 / -0 as int", Money(10) / -0, Money(10)}, {"10 / Money -0", Money(10) / NegativeZero(), Money(-10)},
      {"-10 / 0", Money(-10) / 0, Money(-10)}, {"10 / -1e-9", Money(10) / -1e-9, Money(-10)},
      {"10 / 0.001", Money(10) / 0.001, Money(10)}, {"10 /= 0.009", quotient, Money(10)},
  });
}

// The steps are fixed (100 units) and make the value positive first.
TEST_F(MoneyAtScale100, StepsAreFixedAndMakeThePositive) {
  Money money(-3);
  ++money;
  EXPECT_EQ(money, Money(4));
  money = Cents(50);
  --money;
  EXPECT_EQ(money, Raw(true, 0ULL - 50));
  money = NegativeZero();
  ++money;
  EXPECT_EQ(money, Money(1));
}

// Sign and magnitude are apart, so -0 is a value of its own below 0.
TEST_F(MoneyAtScale100, OrderingAgainstEveryOperandKind) {
  EXPECT_TRUE(Money(-5) < Money(-3));
  EXPECT_TRUE(Money(-3) > Money(-5));
  EXPECT_TRUE(Money(3) > -5);
  EXPECT_TRUE(Money(3) >= static_cast<__int64>(3));
  EXPECT_TRUE(Money(3) <= 3);
  EXPECT_FALSE(Money(3) < 3);
  EXPECT_TRUE(Money(-3) < 2.5);
  EXPECT_TRUE(Money(-3) > -3.5);
  EXPECT_TRUE(NegativeZero() < 0.0);
  EXPECT_TRUE(NegativeZero() <= NegativeZero());
  EXPECT_FALSE(Money(0) <= NegativeZero());
  // Double operands compare truncated.
  EXPECT_FALSE(Cents(123) < 1.239);
  EXPECT_TRUE(Cents(123) <= 1.239);
  EXPECT_TRUE(Cents(123) >= 1.239);
  EXPECT_FALSE(Cents(123) > 1.239);
  EXPECT_EQ(Cents(-250).GetValue(), -2.5);
  EXPECT_EQ(Cents(33).GetValue(), 0.33);
  EXPECT_TRUE(std::signbit(NegativeZero().GetValue()));
  Money zero = NegativeZero();
  zero.MakePositive();
  EXPECT_EQ(zero, Money(0));
}

// Separators unlike the number ones show that the currency form is asked
// for; a value that rounds to zero carries no sign in the formatter.
TEST_F(MoneyAtScale100, TextUsesTheCurrencySeparatorsAndDigits) {
  LocaleUtils::SetCurrencyDecimalSeparator(",");
  LocaleUtils::SetCurrencyThousandsSeparator(".");
  EXPECT_EQ(Cents(-123456).GetText(true, true), "-1.234,56");
  EXPECT_EQ(Cents(-123456).GetText(true, false), "-1234,56");
  EXPECT_EQ(Cents(123400).GetText(false, true), "1,234.00");
  EXPECT_EQ(NegativeZero().GetText(true, true), "0,00");
}

TEST_F(MoneyAtScale100, ParsingWithEitherSeparator) {
  const struct {
    const char* pszSeparator;
    const char* pszText;
    long long nCents;
  } rows[] = {{",", "-0,50", -50},  {",", "0,5", 50},     {",", "-12,05", -1205}, {",", "12.5", 1200},
              {".", "(0.50)", -50}, {".", "0.50", 50},    {".", "12.3", 1230},    {".", "12.345", 1234},
              {".", "12.", 1200},   {".", "-7", -700},    {".", "junk", 0}};
  for (const auto& row : rows) {
    LocaleUtils::SetCurrencyDecimalSeparator(row.pszSeparator);
    Money money(5);
    money.Set(CString(row.pszText));
    EXPECT_EQ(money, Cents(row.nCents)) << row.pszText;
    EXPECT_EQ(Money(CString(row.pszText)), Cents(row.nCents)) << row.pszText;
  }
}

// Version word, sign, magnitude (stored as the value store's archive shows);
// loading skips any version word.
TEST(MoneyTest, LoadingSkipsAnyVersionWord) {
  for (unsigned nVersion : {0u, 2u, 0xFFFFu}) {
    EXPECT_EQ(Loaded<Money>(ByteWriter().Word(nVersion).Bool(true).Int64(42).Get()), Raw(true, 42)) << nVersion;
  }
}
