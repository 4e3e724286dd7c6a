#include "DataMgr/types/Money.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>

#include "tests/support/ArchiveTestSupport.h"
#include "utility/LocaleUtils.h"

using test_support::ByteWriter;
using test_support::Bytes;
using test_support::Load;
using test_support::Store;
using test_support::ToHex;

namespace {

// A Money of the given sign and raw magnitude, built through its archive
// form so that no arithmetic of the class under test is involved.
Money Raw(bool bPositive, unsigned long long nAmount) {
  Money money;
  Load(ByteWriter().Word(1).Bool(bPositive).Int64(static_cast<long long>(nAmount)).Get(),
       [&](CArchive& ar) { money.Serialize(ar); });
  return money;
}

Money Cents(long long nCents) {
  return Raw(nCents >= 0, static_cast<unsigned long long>(nCents < 0 ? -nCents : nCents));
}

Money NegativeZero() { return Raw(false, 0); }

// The rules with fixed constants (threshold 50, step 100) are stated for a
// currency with two fractional digits, the test environment's default.
class MoneyAtScale100 : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(Money::GetScale(), 100u) << "the test environment has 2 currency digits"; }
};

}  // namespace

// Shows sign and magnitude when a comparison fails.
void PrintTo(const Money& money, std::ostream* os) {
  const Bytes bytes = Store([&](CArchive& ar) { Money(money).Serialize(ar); });
  unsigned long long nAmount = 0;
  for (int i = 7; i >= 0; --i) nAmount = (nAmount << 8) | bytes[3 + i];
  *os << (bytes[2] != 0 ? "+" : "-") << nAmount;
}

TEST(MoneyTest, ScaleIsTenToTheCurrencyDigits) {
  const int nDigits = LocaleUtils::GetCurrencyFractionalDigits();
  EXPECT_EQ(Money::GetFractionalDigits(), static_cast<UINT>(nDigits));
  ULONGLONG nScale = 1;
  for (int i = 0; i < nDigits; ++i) nScale *= 10;
  EXPECT_EQ(Money::GetScale(), nScale);
}

TEST(MoneyTest, WholeUnitsAreScaled) {
  EXPECT_EQ(Money(3), Raw(true, 3 * Money::GetScale()));
  EXPECT_EQ(Money(-3), Raw(false, 3 * Money::GetScale()));
  EXPECT_EQ(Money(static_cast<__int64>(-3)), Money(-3));
  EXPECT_EQ(Money(), Money(0));
  EXPECT_EQ(Money(std::numeric_limits<__int64>::min()), Raw(false, (1ULL << 63) * Money::GetScale()));
}

TEST(MoneyTest, NegativeZeroIsADistinctSmallerValue) {
  Money zero(0);
  zero.MakeNegative();
  EXPECT_EQ(zero, NegativeZero());
  EXPECT_NE(zero, Money(0));
  EXPECT_TRUE(zero < Money(0));
  EXPECT_TRUE(zero < 0);
  EXPECT_TRUE(std::signbit(zero.GetValue()));
  zero.MakePositive();
  EXPECT_EQ(zero, Money(0));
}

TEST_F(MoneyAtScale100, DoublesAreTruncatedNotRounded) {
  EXPECT_EQ(Money(1.239), Cents(123));
  EXPECT_EQ(Money(-1.239), Cents(-123));
  EXPECT_EQ(Money(0.009), Raw(true, 0));
  EXPECT_EQ(Money(-0.0), Raw(true, 0));
  EXPECT_EQ(Money(std::nan("")), Raw(false, 0));
  EXPECT_EQ(Money(1e30), Raw(true, 0));
  EXPECT_EQ(Money(1e17), Raw(true, 10000000000000000000ULL));
}

TEST(MoneyTest, ExactCancellationKeepsTheLeftSign) {
  EXPECT_EQ(Money(-5) + Money(5), NegativeZero());
  EXPECT_EQ(Money(5) + Money(-5), Money(0));
  EXPECT_EQ(Money(5) - Money(5), Money(0));
  EXPECT_EQ(Money(-5) - Money(-5), NegativeZero());
}

TEST(MoneyTest, AdditionAndSubtractionAcrossSigns) {
  EXPECT_EQ(Money(3) + Money(-5), Money(-2));
  EXPECT_EQ(Money(-3) + 5, Money(2));
  EXPECT_EQ(Money(-3) + static_cast<__int64>(-5), Money(-8));
  EXPECT_EQ(Money(3) - 5, Money(-2));
  EXPECT_EQ(Money(-3) - Money(-5), Money(2));
  EXPECT_EQ(Money(-3) - 5, Money(-8));
  Money total(1);
  total += 2;
  total -= Money(4);
  EXPECT_EQ(total, Money(-1));
}

TEST_F(MoneyAtScale100, AdditionWithDoublesTruncatesTheOperand) {
  EXPECT_EQ(Money(1) + 0.019, Cents(101));
  EXPECT_EQ(Money(1) - 1.999, Cents(-99));
  Money total(0);
  total += -0.5;
  EXPECT_EQ(total, Cents(-50));
}

TEST_F(MoneyAtScale100, MultiplicationRoundsAtFiftyUnits) {
  EXPECT_EQ(Money(1) * 1.239, Cents(123));
  EXPECT_EQ(Cents(25) * Cents(30), Cents(8));
  EXPECT_EQ(Cents(15) * Cents(15), Cents(2));
  EXPECT_EQ(Cents(150) * Cents(150), Cents(225));
  EXPECT_EQ(Cents(150) * 3, Cents(450));
  EXPECT_EQ(Cents(150) * static_cast<__int64>(-3), Cents(-450));
}

// The factor |n| is scaled before multiplying, and that product wraps:
// 2^62 units times 1 is 2^62 * 100 = 25 * 2^64 before rounding, so 0.
TEST_F(MoneyAtScale100, IntegerFactorsAreScaledAndMayWrap) {
  const Money huge = Raw(true, 1ULL << 62);
  EXPECT_EQ(huge * 1, Raw(true, 0));
  EXPECT_EQ(huge * static_cast<__int64>(-1), Raw(false, 0));
  EXPECT_EQ(Raw(true, 1ULL << 40) * 2, Raw(true, 1ULL << 41));
}

TEST(MoneyTest, ProductSignComesFromBothSigns) {
  EXPECT_EQ(Money(-5) * 0, NegativeZero());
  EXPECT_EQ(Money(5) * 0.0, Money(0));
  EXPECT_EQ(Money(5) * NegativeZero(), NegativeZero());
  EXPECT_EQ(Money(-2) * Money(-3), Money(6));
  Money product(2);
  product *= -3;
  EXPECT_EQ(product, Money(-6));
}

TEST_F(MoneyAtScale100, DivisionByIntegersRoundsHalfUp) {
  EXPECT_EQ(Money(1) / 3, Cents(33));
  EXPECT_EQ(Money(2) / 3, Cents(67));
  EXPECT_EQ(Money(5) / 2, Cents(250));
  EXPECT_EQ(Money(-5) / static_cast<__int64>(2), Cents(-250));
  EXPECT_EQ(Cents(1) / 2, Cents(1));
}

TEST_F(MoneyAtScale100, DivisionByMoneyLooksAtTheQuotientsOwnFraction) {
  EXPECT_EQ(Money(1) / Money(3), Cents(33));
  EXPECT_EQ(Money(1) / Cents(160), Cents(63));
  EXPECT_EQ(Money(5) / Money(2), Cents(251));
  EXPECT_EQ(Money(-6) / Money(3), Cents(-200));
}

TEST_F(MoneyAtScale100, DivisionByDoublesRoundsHalfUpAtTheScale) {
  EXPECT_EQ(Money(10) / 4.0, Cents(250));
  EXPECT_EQ(Money(1) / 0.3, Cents(333));
  EXPECT_EQ(Money(2) / 0.3, Cents(667));
  EXPECT_EQ(Money(10) / -0.5, Cents(-2000));
}

TEST(MoneyTest, DivisionByZeroKeepsTheMagnitude) {
  EXPECT_EQ(Money(10) / 0, Money(10));
  EXPECT_EQ(Money(10) / 0.0, Money(10));
  EXPECT_EQ(Money(10) / Money(0), Money(10));
  EXPECT_EQ(Money(10) / -0, Money(10));
  EXPECT_EQ(Money(10) / NegativeZero(), Money(-10));
  EXPECT_EQ(Money(-10) / 0, Money(-10));
  EXPECT_EQ(Money(10) / -1e-9, Money(-10));
}

TEST_F(MoneyAtScale100, DivisorsBelowOneUnitCountAsZero) {
  EXPECT_EQ(Money(10) / 0.001, Money(10));
  Money quotient(10);
  quotient /= 0.009;
  EXPECT_EQ(quotient, Money(10));
}

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

TEST(MoneyTest, OrderingAgainstEveryOperandKind) {
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
}

TEST_F(MoneyAtScale100, DoubleOperandsCompareTruncated) {
  const Money money = Cents(123);
  EXPECT_FALSE(money < 1.239);
  EXPECT_TRUE(money <= 1.239);
  EXPECT_TRUE(money >= 1.239);
  EXPECT_FALSE(money > 1.239);
}

TEST_F(MoneyAtScale100, GetValueDividesByTheScale) {
  EXPECT_EQ(Cents(-250).GetValue(), -2.5);
  EXPECT_EQ(Cents(33).GetValue(), 0.33);
  EXPECT_EQ(NegativeZero().GetValue(), 0.0);
}

// Separators unlike the number ones show that the currency form is asked
// for; a value that rounds to zero carries no sign in the formatter.
TEST_F(MoneyAtScale100, TextUsesTheCurrencySeparatorsAndDigits) {
  LocaleUtils::SetNumberDecimalSeparator(".");
  LocaleUtils::SetNumberThousandsSeparator(",");
  LocaleUtils::SetCurrencyDecimalSeparator(",");
  LocaleUtils::SetCurrencyThousandsSeparator(".");
  EXPECT_EQ(Cents(-123456).GetText(true, true), "-1.234,56");
  EXPECT_EQ(Cents(-123456).GetText(true, false), "-1234,56");
  EXPECT_EQ(Cents(123400).GetText(false, true), "1,234.00");
  EXPECT_EQ(NegativeZero().GetText(true, true), "0,00");
  LocaleUtils::ResetToEnvironment();
}

// Sets the currency decimal separator for one test and puts the old one back.
class CurrencySeparator {
 public:
  explicit CurrencySeparator(const char* pszSeparator) : m_strOld(LocaleUtils::GetCurrencyDecimalSeparator()) {
    LocaleUtils::SetCurrencyDecimalSeparator(pszSeparator);
  }
  ~CurrencySeparator() { LocaleUtils::SetCurrencyDecimalSeparator(m_strOld); }

 private:
  CString m_strOld;
};

TEST_F(MoneyAtScale100, ParsingWithACommaSeparator) {
  const CurrencySeparator comma(",");
  EXPECT_EQ(Money(CString("-0,50")), Cents(-50));
  EXPECT_EQ(Money(CString("0,5")), Cents(50));
  EXPECT_EQ(Money(CString("-12,05")), Cents(-1205));
  EXPECT_EQ(Money(CString("12.5")), Money(12));
}

TEST_F(MoneyAtScale100, ParsingWithAPointSeparator) {
  const CurrencySeparator point(".");
  EXPECT_EQ(Money(CString("(0.50)")), Cents(-50));
  EXPECT_EQ(Money(CString("0.50")), Cents(50));
  EXPECT_EQ(Money(CString("12.3")), Cents(1230));
  EXPECT_EQ(Money(CString("12.345")), Cents(1234));
  EXPECT_EQ(Money(CString("12.")), Money(12));
  EXPECT_EQ(Money(CString("7")), Money(7));
  EXPECT_EQ(Money(CString("-7")), Money(-7));
  Money money(5);
  money.Set(CString("junk"));
  EXPECT_EQ(money, Money(0));
}

TEST(MoneyTest, ArchiveIsVersionSignMagnitude) {
  Money money = Raw(false, 0x0102030405060708ULL);
  test_support::ExpectArchiveForm(money, ByteWriter().Word(1).Bool(false).Int64(0x0102030405060708LL).Get(),
                                  [&](const Money& loaded) { EXPECT_EQ(loaded, money); });
}

TEST(MoneyTest, LoadingSkipsAnyVersionWord) {
  for (unsigned nVersion : {0u, 2u, 0xFFFFu}) {
    Money loaded;
    Load(ByteWriter().Word(nVersion).Bool(true).Int64(42).Get(), [&](CArchive& ar) { loaded.Serialize(ar); });
    EXPECT_EQ(loaded, Raw(true, 42)) << nVersion;
  }
}
