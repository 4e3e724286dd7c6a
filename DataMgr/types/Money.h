#ifndef DATAMGR_TYPES_MONEY_H_
#define DATAMGR_TYPES_MONEY_H_

#include <type_traits>

#include "DataMgr/Export.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "framework/Types.h"

// A currency amount as a sign and an unsigned magnitude in units of
// 1/GetScale() of a currency unit. The scale is 10 to the number of
// fractional digits of the user's currency, read once when the library is
// loaded and never changed; archives hold the raw magnitude, so they only
// mean the same under the same currency settings.
//
// Negative zero (magnitude 0, sign negative) is a value of its own: it is
// unequal to zero, sorts below it and comes out of ordinary arithmetic
// (-5 + 5). It must never be normalised away. Overflow wraps, division by
// zero leaves the magnitude, and nothing throws except the archive.
//
// Money is passed by value and kept inline in records and undo vectors: it
// must stay a trivially copyable bool and 64-bit integer, with no allocation.
class VAXO057_API Money {
 public:
  Money() = default;
  Money(const Money& other) = default;
  Money& operator=(const Money& other) = default;
  // Whole currency units.
  explicit Money(int nUnits);
  explicit Money(__int64 nUnits);
  // Truncated (not rounded) to the currency's fractional digits.
  explicit Money(double dValue);
  // Parsed as Set(const CString&) does.
  explicit Money(const CString& text);

  void Set(int nUnits);
  void Set(__int64 nUnits);
  void Set(double dValue);
  // Reads text with the currency's decimal separator: the whole part by the
  // number reader, then at most GetFractionalDigits() digits after the
  // separator, filled with zeros on the right ("12.3" is 12.30); further
  // digits are dropped. A zero whole part takes its sign from a "(" or "-"
  // before the separator.
  void Set(const CString& text);

  void MakePositive() { m_bPositive = true; }
  // Leaves the magnitude, so zero becomes negative zero.
  void MakeNegative() { m_bPositive = false; }

  // The sign (false for a negative amount, negative zero included) and the
  // magnitude in units of 1/GetScale(), as archived; FromRaw builds a value
  // of them again.
  bool GetIsPositive() const { return m_bPositive; }
  ULONGLONG GetRawAmount() const { return m_nAmount; }
  static Money FromRaw(bool bPositive, ULONGLONG nRawAmount) {
    Money value;
    value.m_bPositive = bPositive;
    value.m_nAmount = nRawAmount;
    return value;
  }

  // The amount in currency units; negative zero gives -0.0.
  double GetValue() const;
  // The amount as text with the currency's fractional digits, through
  // NumberTextConv::DoubleToString; bFlag is its third argument and
  // bThousands its last (thousands separators). No currency symbol.
  CString GetText(bool bFlag, bool bThousands) const;

  // The number of fractional digits and the scale (10 to that number) read
  // at load time.
  static UINT GetFractionalDigits() { return s_nFractionalDigits; }
  static ULONGLONG GetScale() { return s_nScale; }

  bool operator==(const Money& other) const { return m_bPositive == other.m_bPositive && m_nAmount == other.m_nAmount; }
  bool operator!=(const Money& other) const { return !(*this == other); }
  // Positive beats negative (so negative zero < zero); among negatives the
  // larger magnitude is the smaller value. Doubles are truncated first.
  bool operator<(const Money& other) const { return Compare(other) < 0; }
  bool operator<(int nUnits) const { return Compare(Money(nUnits)) < 0; }
  bool operator<(__int64 nUnits) const { return Compare(Money(nUnits)) < 0; }
  bool operator<(double dValue) const { return Compare(Money(dValue)) < 0; }
  bool operator<=(const Money& other) const { return Compare(other) <= 0; }
  bool operator<=(int nUnits) const { return Compare(Money(nUnits)) <= 0; }
  bool operator<=(__int64 nUnits) const { return Compare(Money(nUnits)) <= 0; }
  bool operator<=(double dValue) const { return Compare(Money(dValue)) <= 0; }
  bool operator>(const Money& other) const { return Compare(other) > 0; }
  bool operator>(int nUnits) const { return Compare(Money(nUnits)) > 0; }
  bool operator>(__int64 nUnits) const { return Compare(Money(nUnits)) > 0; }
  bool operator>(double dValue) const { return Compare(Money(dValue)) > 0; }
  bool operator>=(const Money& other) const { return Compare(other) >= 0; }
  bool operator>=(int nUnits) const { return Compare(Money(nUnits)) >= 0; }
  bool operator>=(__int64 nUnits) const { return Compare(Money(nUnits)) >= 0; }
  bool operator>=(double dValue) const { return Compare(Money(dValue)) >= 0; }

  // An exact cancellation keeps the left operand's sign.
  void operator+=(const Money& other);
  void operator+=(int nUnits) { *this += Money(nUnits); }
  void operator+=(__int64 nUnits) { *this += Money(nUnits); }
  void operator+=(double dValue) { *this += Money(dValue); }
  void operator-=(const Money& other);
  void operator-=(int nUnits) { *this -= Money(nUnits); }
  void operator-=(__int64 nUnits) { *this -= Money(nUnits); }
  void operator-=(double dValue) { *this -= Money(dValue); }
  // The sign becomes (own sign == operand sign); the product is rounded up
  // at a remainder of 50 units of the scale.
  void operator*=(const Money& other);
  void operator*=(int nUnits) { *this *= Money(nUnits); }
  void operator*=(__int64 nUnits) { *this *= Money(nUnits); }
  void operator*=(double dValue) { *this *= Money(dValue); }
  // The sign becomes (own sign == operand sign) even when the divisor is
  // zero; a zero divisor then leaves the magnitude.
  void operator/=(const Money& other);
  void operator/=(int nDivisor) { DivideByCount(nDivisor >= 0, Magnitude(nDivisor)); }
  void operator/=(__int64 nDivisor) { DivideByCount(nDivisor >= 0, Magnitude(nDivisor)); }
  void operator/=(double dDivisor);

  Money operator+(const Money& other) const { return Money(*this).Plus(other); }
  Money operator+(int nUnits) const { return Money(*this).Plus(Money(nUnits)); }
  Money operator+(__int64 nUnits) const { return Money(*this).Plus(Money(nUnits)); }
  Money operator+(double dValue) const { return Money(*this).Plus(Money(dValue)); }
  Money operator-(const Money& other) const { return Money(*this).Minus(other); }
  Money operator-(int nUnits) const { return Money(*this).Minus(Money(nUnits)); }
  Money operator-(__int64 nUnits) const { return Money(*this).Minus(Money(nUnits)); }
  Money operator-(double dValue) const { return Money(*this).Minus(Money(dValue)); }
  Money operator*(const Money& other) const { return Money(*this).Times(other); }
  Money operator*(int nUnits) const { return Money(*this).Times(Money(nUnits)); }
  Money operator*(__int64 nUnits) const { return Money(*this).Times(Money(nUnits)); }
  Money operator*(double dValue) const { return Money(*this).Times(Money(dValue)); }
  Money operator/(const Money& other) const;
  Money operator/(int nDivisor) const;
  Money operator/(__int64 nDivisor) const;
  Money operator/(double dDivisor) const;

  // Adds or takes away a fixed 100 units of the magnitude (one currency unit
  // only at a scale of 100; below 100 the decrement wraps) and makes the
  // value positive, whatever its sign was.
  void operator++();
  void operator--();

  // Version 1 (current): WORD version, bool sign, ULONGLONG magnitude.
  // Loading skips the version word without looking at it.
  void Serialize(CArchive& ar);

 protected:
  // |dValue| in units of the scale, truncated toward zero. A value that does
  // not fit 64 bits unsigned (and NaN) gives 0.
  ULONGLONG ConvertRawDouble(double dValue) const;

  static const UINT s_nFractionalDigits;
  static const ULONGLONG s_nScale;
  static const ULONGLONG s_nScaleSquared;
  // The formatter's fifth argument.
  static const CString s_strEmpty;

 private:
  static ULONGLONG Magnitude(__int64 n);
  // -1, 0 or 1 as this is below, equal to or above other.
  int Compare(const Money& other) const;
  void Add(bool bPositive, ULONGLONG nAmount);
  void DivideByCount(bool bPositive, ULONGLONG nCount);
  Money& Plus(const Money& other);
  Money& Minus(const Money& other);
  Money& Times(const Money& other);
  template <typename Divisor>
  Money Quotient(Divisor divisor) const;

  bool m_bPositive = true;
  ULONGLONG m_nAmount = 0;
};

static_assert(std::is_trivially_copyable<Money>::value, "Money is copied as plain bytes in records and undo vectors");

#endif  // DATAMGR_TYPES_MONEY_H_
