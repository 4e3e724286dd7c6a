#include "DataMgr/types/Money.h"

#include <cmath>

#include "utility/LocaleUtils.h"
#include "utility/NumberTextConv.h"
#include "utility/SerializeData.h"
#include "utility/StringUtils.h"

namespace {

const WORD MONEY_VERSION = 1;

// The rounding threshold and the increment step are fixed numbers of units,
// not fractions of the scale: half a unit and one unit only at a scale of 100.
const ULONGLONG ROUND_UP_FROM = 50;
const ULONGLONG STEP = 100;

const double TWO_TO_63 = 9223372036854775808.0;

// dValue (not negative) truncated to 64 bits unsigned; values at or above
// 2^63 go through the signed conversion less 2^63. What does not fit, NaN
// included, gives 0.
ULONGLONG TruncateToUnsigned(double dValue) {
  if (!(dValue >= 0.0) || dValue >= 2.0 * TWO_TO_63) return 0;
  if (dValue < TWO_TO_63) return static_cast<ULONGLONG>(static_cast<LONGLONG>(dValue));
  return static_cast<ULONGLONG>(static_cast<LONGLONG>(dValue - TWO_TO_63)) + (ULONGLONG{1} << 63);
}

// 10 to nDigits; a power that does not fit 64 bits is taken as 1 so that no
// division by the scale can divide by zero.
ULONGLONG ScaleFor(UINT nDigits) {
  const ULONGLONG nScale = TruncateToUnsigned(std::pow(10.0, static_cast<double>(nDigits)));
  return nScale == 0 ? 1 : nScale;
}

}  // namespace

const UINT Money::s_nFractionalDigits = static_cast<UINT>(LocaleUtils::GetCurrencyFractionalDigits());
const ULONGLONG Money::s_nScale = ScaleFor(Money::s_nFractionalDigits);
const ULONGLONG Money::s_nScaleSquared = Money::s_nScale * Money::s_nScale;
const CString Money::s_strEmpty;

Money::Money(int nUnits) { Set(nUnits); }

Money::Money(__int64 nUnits) { Set(nUnits); }

Money::Money(double dValue) { Set(dValue); }

Money::Money(const CString& text) { Set(text); }

void Money::Set(int nUnits) { Set(static_cast<__int64>(nUnits)); }

void Money::Set(__int64 nUnits) {
  m_bPositive = nUnits >= 0;
  m_nAmount = Magnitude(nUnits) * s_nScale;
}

void Money::Set(double dValue) {
  m_bPositive = dValue >= 0.0;
  m_nAmount = ConvertRawDouble(dValue);
}

void Money::Set(const CString& text) {
  const CString separator = LocaleUtils::GetCurrencyDecimalSeparator();
  const int nSeparator = separator.IsEmpty() ? -1 : text.Find(separator);
  if (nSeparator < 0) {
    Set(NumberTextConv::GetNumber64FromString(text));
    return;
  }
  const CString whole = text.Left(nSeparator);
  const __int64 nWhole = NumberTextConv::GetNumber64FromString(whole);
  Set(nWhole);
  if (nWhole == 0) m_bPositive = whole.Find('(') < 0 && whole.Find('-') < 0;
  const int nDigits = static_cast<int>(s_nFractionalDigits);
  const CString fraction =
      StringUtils::PadString(text.Mid(nSeparator + separator.GetLength(), nDigits), nDigits, "0", false);
  m_nAmount += Magnitude(NumberTextConv::GetNumber64FromString(fraction));
}

double Money::GetValue() const {
  const double dValue = static_cast<double>(m_nAmount) / static_cast<double>(s_nScale);
  return m_bPositive ? dValue : -dValue;
}

CString Money::GetText(bool bFlag, bool bThousands) const {
  return NumberTextConv::DoubleToString(GetValue(), static_cast<int>(s_nFractionalDigits), bFlag, 0, s_strEmpty,
                                        bThousands);
}

void Money::operator+=(const Money& other) { Add(other.m_bPositive, other.m_nAmount); }

// Taking away is adding the operand with its sign turned.
void Money::operator-=(const Money& other) { Add(!other.m_bPositive, other.m_nAmount); }

// An int operand arrives as Money(n), magnitude |n| times the scale, so the
// product is |n| times the magnitude times the scale before rounding (it may
// wrap), exactly as for a Money or a truncated double factor.
void Money::operator*=(const Money& other) {
  m_bPositive = m_bPositive == other.m_bPositive;
  const ULONGLONG nProduct = other.m_nAmount * m_nAmount;
  m_nAmount = nProduct / s_nScale + (nProduct % s_nScale >= ROUND_UP_FROM ? 1 : 0);
}

// The quotient at full scale, raised by one when its own fraction reaches 50
// units: unlike the other divisions this looks at the digits kept, not at the
// remainder dropped (5.00 / 2.00 gives 2.51).
void Money::operator/=(const Money& other) {
  m_bPositive = m_bPositive == other.m_bPositive;
  const ULONGLONG nDivisor = other.m_nAmount;
  if (nDivisor == 0) return;
  const ULONGLONG nWhole = m_nAmount / nDivisor;
  const ULONGLONG nScaled = m_nAmount * s_nScale / nDivisor;
  m_nAmount = nScaled + (nScaled - nWhole * s_nScale >= ROUND_UP_FROM ? 1 : 0);
}

// Half-up rounding of the quotient at the first digits beyond the scale. A
// divisor below one unit of the last digit truncates to 0 and counts as zero.
void Money::operator/=(double dDivisor) {
  m_bPositive = m_bPositive == (dDivisor >= 0.0);
  const ULONGLONG nDivisor = ConvertRawDouble(dDivisor);
  if (nDivisor == 0) return;
  const ULONGLONG nFine = m_nAmount * s_nScaleSquared / nDivisor;
  const ULONGLONG nQuotient = m_nAmount * s_nScale / nDivisor;
  m_nAmount = nQuotient + (nFine - nQuotient * s_nScale >= ROUND_UP_FROM ? 1 : 0);
}

// Division by a count (an unscaled integer), rounded half up at the first
// digits beyond the magnitude's last.
void Money::DivideByCount(bool bPositive, ULONGLONG nCount) {
  m_bPositive = m_bPositive == bPositive;
  if (nCount == 0) return;
  const ULONGLONG nWhole = m_nAmount / nCount;
  const ULONGLONG nScaled = m_nAmount * s_nScale / nCount;
  m_nAmount = nScaled / s_nScale + (nScaled - nWhole * s_nScale >= ROUND_UP_FROM ? 1 : 0);
}

Money Money::operator/(const Money& other) const { return Quotient(other); }
Money Money::operator/(int nDivisor) const { return Quotient(nDivisor); }
Money Money::operator/(__int64 nDivisor) const { return Quotient(nDivisor); }
Money Money::operator/(double dDivisor) const { return Quotient(dDivisor); }

template <typename Divisor>
Money Money::Quotient(Divisor divisor) const {
  Money result(*this);
  result /= divisor;
  return result;
}

void Money::operator++() {
  m_nAmount += STEP;
  m_bPositive = true;
}

void Money::operator--() {
  m_nAmount -= STEP;
  m_bPositive = true;
}

// Layout (version 1, current):
//   WORD      version
//   bool      sign, true when zero or positive (SerializeData's bool byte)
//   ULONGLONG magnitude in units of the scale
// Changelog:
//   1: first version.
void Money::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << MONEY_VERSION;
    bool bPositive = m_bPositive;
    SerializeData::Serialize(ar, bPositive);
    ar << m_nAmount;
  } else {
    WORD nVersion = 0;
    ar >> nVersion;
    SerializeData::Serialize(ar, m_bPositive);
    ar >> m_nAmount;
  }
}

ULONGLONG Money::ConvertRawDouble(double dValue) const {
  return TruncateToUnsigned(std::fabs(dValue) * static_cast<double>(s_nScale));
}

ULONGLONG Money::Magnitude(__int64 n) {
  const ULONGLONG nBits = static_cast<ULONGLONG>(n);
  return n < 0 ? 0 - nBits : nBits;
}

int Money::Compare(const Money& other) const {
  if (m_bPositive != other.m_bPositive) return m_bPositive ? 1 : -1;
  if (m_nAmount == other.m_nAmount) return 0;
  const bool bSmallerMagnitude = m_nAmount < other.m_nAmount;
  return bSmallerMagnitude == m_bPositive ? -1 : 1;
}

void Money::Add(bool bPositive, ULONGLONG nAmount) {
  if (bPositive == m_bPositive) {
    m_nAmount += nAmount;
  } else if (nAmount <= m_nAmount) {
    m_nAmount -= nAmount;
  } else {
    m_nAmount = nAmount - m_nAmount;
    m_bPositive = !m_bPositive;
  }
}

Money& Money::Plus(const Money& other) {
  *this += other;
  return *this;
}

Money& Money::Minus(const Money& other) {
  *this -= other;
  return *this;
}

Money& Money::Times(const Money& other) {
  *this *= other;
  return *this;
}
