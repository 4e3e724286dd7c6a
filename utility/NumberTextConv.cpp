#include "utility/NumberTextConv.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <string>
#include <system_error>

#include "utility/LocaleUtils.h"

namespace {

const int MAX_FRACTION_DIGITS = 20;
const int MAX_PAD_DIGITS = 64;
const int FRACTION_DENOMINATOR = 64;
const int MAX_ROMAN = 3999;

bool IsDigit(char ch) { return std::isdigit(static_cast<unsigned char>(ch)) != 0; }
bool IsAlpha(char ch) { return std::isalpha(static_cast<unsigned char>(ch)) != 0; }
bool IsBlank(char ch) { return std::isspace(static_cast<unsigned char>(ch)) != 0; }

// A read position in a text.
class Cursor {
 public:
  explicit Cursor(const CString& text) : m_text(text.GetStdString()) {}

  void SkipBlanks() {
    while (m_nPos < m_text.size() && IsBlank(m_text[m_nPos])) ++m_nPos;
  }
  bool AtDigit() const { return m_nPos < m_text.size() && IsDigit(m_text[m_nPos]); }
  bool At(const CString& sub) const {
    return !sub.IsEmpty() && m_text.compare(m_nPos, sub.GetStdString().size(), sub.GetStdString()) == 0;
  }
  bool Take(const CString& sub) {
    if (!At(sub)) return false;
    m_nPos += sub.GetStdString().size();
    return true;
  }
  // Digits, with strGroup allowed between two of them.
  std::string TakeDigits(const CString& strGroup) {
    std::string digits;
    while (m_nPos < m_text.size()) {
      if (AtDigit()) {
        digits += m_text[m_nPos++];
      } else if (!digits.empty() && At(strGroup) && IsDigitAfter(strGroup)) {
        m_nPos += strGroup.GetStdString().size();
      } else {
        break;
      }
    }
    return digits;
  }

 private:
  bool IsDigitAfter(const CString& sub) const {
    const size_t nNext = m_nPos + sub.GetStdString().size();
    return nNext < m_text.size() && IsDigit(m_text[nNext]);
  }

  const std::string& m_text;
  size_t m_nPos = 0;
};

// The parts of a number as written: its sign and its digits.
struct WrittenNumber {
  bool bNegative = false;
  std::string whole;
  std::string fraction;
};

// Blanks, an optional "+", "-" or "(", blanks, then the number's digits;
// the fraction only when strDecimal is not empty.
WrittenNumber ReadNumber(const CString& text, const CString& strThousands, const CString& strDecimal) {
  Cursor cursor(text);
  WrittenNumber number;
  cursor.SkipBlanks();
  if (cursor.Take("-") || cursor.Take("(")) {
    number.bNegative = true;
  } else {
    cursor.Take("+");
  }
  cursor.SkipBlanks();
  const CString strGroup = strThousands == strDecimal ? CString() : strThousands;
  number.whole = cursor.TakeDigits(strGroup);
  if (cursor.Take(strDecimal)) number.fraction = cursor.TakeDigits(CString());
  return number;
}

// The value of digits, saturating at nLimit.
std::uint64_t DigitsValue(const std::string& digits, std::uint64_t nLimit) {
  std::uint64_t nValue = 0;
  for (char ch : digits) {
    const auto nDigit = static_cast<std::uint64_t>(ch - '0');
    if (nValue > (nLimit - nDigit) / 10) return nLimit;
    nValue = nValue * 10 + nDigit;
  }
  return nValue;
}

__int64 ToInt64(const WrittenNumber& number) {
  const std::uint64_t nMax = static_cast<std::uint64_t>(INT64_MAX);
  if (!number.bNegative) return static_cast<__int64>(DigitsValue(number.whole, nMax));
  const std::uint64_t nMagnitude = DigitsValue(number.whole, nMax + 1);
  if (nMagnitude == nMax + 1) return INT64_MIN;
  return -static_cast<__int64>(nMagnitude);
}

int ClampToInt(__int64 nValue) { return static_cast<int>(std::clamp<__int64>(nValue, INT_MIN, INT_MAX)); }

double ToDouble(const WrittenNumber& number) {
  const std::string text = (number.whole.empty() ? "0" : number.whole) + "." + number.fraction + "0";
  double dValue = 0.0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), dValue, std::chars_format::fixed);
  if (result.ec == std::errc::result_out_of_range) {
    dValue = number.whole.find_first_not_of('0') == std::string::npos ? 0.0 : DBL_MAX;
  }
  return number.bNegative ? -dValue : dValue;
}

// The shortest decimal digits that read back as dMagnitude (finite, not
// negative), split at the decimal point.
void ShortestDigits(double dMagnitude, std::string& whole, std::string& fraction) {
  char buffer[512];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, dMagnitude, std::chars_format::fixed);
  const std::string text(buffer, result.ptr);
  const size_t nPoint = text.find('.');
  whole = text.substr(0, nPoint);
  fraction = nPoint == std::string::npos ? std::string() : text.substr(nPoint + 1);
}

// Adds one unit of the last digit; a carry out of the first digit adds a
// leading "1".
void IncrementDigits(std::string& digits) {
  for (size_t i = digits.size(); i > 0; --i) {
    if (digits[i - 1] != '9') {
      ++digits[i - 1];
      return;
    }
    digits[i - 1] = '0';
  }
  digits.insert(digits.begin(), '1');
}

// Cuts fraction to nDigits digits, rounding half away from zero, and pads it
// with zeros to nDigits.
void RoundDigits(std::string& whole, std::string& fraction, size_t nDigits) {
  if (fraction.size() <= nDigits) {
    fraction.append(nDigits - fraction.size(), '0');
    return;
  }
  const bool bRoundUp = fraction[nDigits] >= '5';
  std::string digits = whole + fraction.substr(0, nDigits);
  if (bRoundUp) IncrementDigits(digits);
  whole = digits.substr(0, digits.size() - nDigits);
  fraction = digits.substr(digits.size() - nDigits);
}

std::string GroupThousands(const std::string& digits, const std::string& separator) {
  std::string grouped;
  for (size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) grouped += separator;
    grouped += digits[i];
  }
  return grouped;
}

// A number from its sign and digits, as NumberToString and DoubleToString
// describe it.
CString ComposeNumber(bool bNegative, std::string whole, const std::string& fraction, const CString& strDecimal,
                      int nMinDigits, bool bThousands, const CString& strThousandsSep) {
  const size_t nPad = static_cast<size_t>(std::clamp(nMinDigits, 0, MAX_PAD_DIGITS));
  if (whole.empty()) whole = "0";
  if (whole.size() < nPad) whole.insert(0, nPad - whole.size(), '0');
  const bool bZero =
      whole.find_first_not_of('0') == std::string::npos && fraction.find_first_not_of('0') == std::string::npos;
  std::string text = bNegative && !bZero ? "-" : "";
  text.reserve(text.size() + whole.size() * 2 + strDecimal.GetLength() + fraction.size());
  if (bThousands) {
    const CString& strSeparator =
        strThousandsSep.IsEmpty() ? LocaleUtils::GetNumberThousandsSeparator() : strThousandsSep;
    text += GroupThousands(whole, strSeparator.GetStdString());
  } else {
    text += whole;
  }
  if (!fraction.empty()) text.append(strDecimal.GetStdString()).append(fraction);
  return CString(std::move(text));
}

// What ComposeNumber makes of nValue >= 0 without grouping: its digits,
// zeros in front up to nMinDigits, built without the intermediate strings.
CString PaddedDigits(int nValue, int nMinDigits) {
  char szDigits[16];
  const char* pszEnd = std::to_chars(szDigits, szDigits + sizeof szDigits, nValue).ptr;
  const size_t nLength = static_cast<size_t>(pszEnd - szDigits);
  const size_t nPad = static_cast<size_t>(std::clamp(nMinDigits, 0, MAX_PAD_DIGITS));
  std::string text(nPad > nLength ? nPad - nLength : 0, '0');
  text.append(szDigits, nLength);
  return CString(std::move(text));
}

std::string WholeDigits(double dWhole) {
  std::string whole;
  std::string fraction;
  ShortestDigits(dWhole, whole, fraction);
  return whole;
}

int RomanDigitValue(char ch) {
  switch (ch) {
    case 'I': return 1;
    case 'V': return 5;
    case 'X': return 10;
    case 'L': return 50;
    case 'C': return 100;
    case 'D': return 500;
    case 'M': return 1000;
    default: return 0;
  }
}

std::string ToRoman(int nValue) {
  static const int VALUES[] = {1000, 900, 500, 400, 100, 90, 50, 40, 10, 9, 5, 4, 1};
  static const char* const NUMERALS[] = {"M", "CM", "D", "CD", "C", "XC", "L", "XL", "X", "IX", "V", "IV", "I"};
  std::string text;
  for (size_t i = 0; i < sizeof VALUES / sizeof VALUES[0]; ++i) {
    for (; nValue >= VALUES[i]; nValue -= VALUES[i]) text += NUMERALS[i];
  }
  return text;
}

// The value of a Roman numeral written in its one canonical form, else 0.
int RomanValue(const std::string& word) {
  if (word.empty() || word.size() > 15) return 0;
  int nTotal = 0;
  for (size_t i = 0; i < word.size(); ++i) {
    const int nDigit = RomanDigitValue(word[i]);
    if (nDigit == 0) return 0;
    const int nNext = i + 1 < word.size() ? RomanDigitValue(word[i + 1]) : 0;
    nTotal += nDigit < nNext ? -nDigit : nDigit;
  }
  if (nTotal < 1 || nTotal > MAX_ROMAN || ToRoman(nTotal) != word) return 0;
  return nTotal;
}

// Where a number stands in a text: [nStart, nEnd) and its value.
struct FoundNumber {
  size_t nStart = std::string::npos;
  size_t nEnd = 0;
  int nValue = 0;
};

FoundNumber FindDigits(const std::string& text, size_t nPos) {
  FoundNumber found;
  found.nStart = nPos;
  found.nEnd = nPos;
  while (found.nEnd < text.size() && IsDigit(text[found.nEnd])) ++found.nEnd;
  const std::string digits = text.substr(nPos, found.nEnd - nPos);
  const bool bNegative = nPos > 0 && text[nPos - 1] == '-' && (nPos == 1 || IsBlank(text[nPos - 2]));
  if (bNegative) --found.nStart;
  found.nValue = ClampToInt(ToInt64(WrittenNumber{bNegative, digits, std::string()}));
  return found;
}

FoundNumber FindFirstNumber(const std::string& text, bool bAllowRoman) {
  size_t nPos = 0;
  while (nPos < text.size()) {
    if (IsDigit(text[nPos])) return FindDigits(text, nPos);
    if (IsAlpha(text[nPos])) {
      size_t nEnd = nPos;
      while (nEnd < text.size() && IsAlpha(text[nEnd])) ++nEnd;
      const int nRoman = bAllowRoman ? RomanValue(text.substr(nPos, nEnd - nPos)) : 0;
      if (nRoman > 0) return FoundNumber{nPos, nEnd, nRoman};
      nPos = nEnd;
    } else {
      ++nPos;
    }
  }
  return FoundNumber();
}

bool IsBlankText(const std::string& text) { return std::all_of(text.begin(), text.end(), IsBlank); }

}  // namespace

int NumberTextConv::GetNumberFromString(const CString& text) { return ClampToInt(GetNumber64FromString(text)); }

__int64 NumberTextConv::GetNumber64FromString(const CString& text) {
  return ToInt64(ReadNumber(text, LocaleUtils::GetNumberThousandsSeparator(), CString()));
}

double NumberTextConv::GetDoubleFromString(const CString& text, bool bCurrency) {
  if (bCurrency) {
    return ToDouble(
        ReadNumber(text, LocaleUtils::GetCurrencyThousandsSeparator(), LocaleUtils::GetCurrencyDecimalSeparator()));
  }
  return ToDouble(
      ReadNumber(text, LocaleUtils::GetNumberThousandsSeparator(), LocaleUtils::GetNumberDecimalSeparator()));
}

CString NumberTextConv::NumberToString(int nValue, bool bThousands, int nMinDigits, const CString& strThousandsSep) {
  if (nValue >= 0 && !bThousands) return PaddedDigits(nValue, nMinDigits);
  const __int64 nWide = nValue;
  const std::string whole = std::to_string(nWide < 0 ? -nWide : nWide);
  return ComposeNumber(nValue < 0, whole, std::string(), CString(), nMinDigits, bThousands, strThousandsSep);
}

CString NumberTextConv::DoubleToString(double dValue, int nDigits, bool bCurrency, int nMinDigits,
                                       const CString& strThousandsSep, bool bThousands) {
  if (!std::isfinite(dValue)) return CString();
  std::string whole;
  std::string fraction;
  ShortestDigits(std::fabs(dValue), whole, fraction);
  RoundDigits(whole, fraction, static_cast<size_t>(std::clamp(nDigits, 0, MAX_FRACTION_DIGITS)));
  const CString strDecimal =
      bCurrency ? LocaleUtils::GetCurrencyDecimalSeparator() : LocaleUtils::GetNumberDecimalSeparator();
  CString strGroup = strThousandsSep;
  if (strGroup.IsEmpty() && bCurrency) strGroup = LocaleUtils::GetCurrencyThousandsSeparator();
  return ComposeNumber(dValue < 0.0, whole, fraction, strDecimal, nMinDigits, bThousands, strGroup);
}

double NumberTextConv::FractionToDouble(const CString& text) {
  Cursor cursor(text);
  cursor.SkipBlanks();
  const bool bNegative = cursor.Take("-");
  if (!bNegative) cursor.Take("+");
  cursor.SkipBlanks();
  const std::string first = cursor.TakeDigits(CString());
  std::string numerator = first;
  std::string whole;
  if (!cursor.Take("/")) {
    cursor.SkipBlanks();
    numerator = cursor.TakeDigits(CString());
    whole = first;
    if (numerator.empty() || !cursor.Take("/")) return GetDoubleFromString(text, false);
  }
  const double dDenominator = ToDouble(WrittenNumber{false, cursor.TakeDigits(CString()), std::string()});
  if (first.empty() || dDenominator == 0.0) return GetDoubleFromString(text, false);
  const double dMagnitude = ToDouble(WrittenNumber{false, whole, std::string()}) +
                            ToDouble(WrittenNumber{false, numerator, std::string()}) / dDenominator;
  return bNegative ? -dMagnitude : dMagnitude;
}

CString NumberTextConv::DoubleToFraction(double dValue) {
  if (!std::isfinite(dValue)) return CString();
  const double dMagnitude = std::fabs(dValue);
  double dWhole = std::floor(dMagnitude);
  auto nNumerator = static_cast<int>(std::lround((dMagnitude - dWhole) * FRACTION_DENOMINATOR));
  int nDenominator = FRACTION_DENOMINATOR;
  if (nNumerator == FRACTION_DENOMINATOR) {
    dWhole += 1.0;
    nNumerator = 0;
  }
  while (nNumerator > 0 && nNumerator % 2 == 0) {
    nNumerator /= 2;
    nDenominator /= 2;
  }
  const std::string whole = WholeDigits(dWhole);
  if (nNumerator == 0) return CString(whole);
  CString fraction;
  fraction.Format("%d/%d", nNumerator, nDenominator);
  return dWhole > 0.0 ? CString(whole) + " " + fraction : fraction;
}

CString NumberTextConv::RemoveDecimalZeroes(const CString& text) {
  const CString strDecimal = LocaleUtils::GetNumberDecimalSeparator();
  const int nSeparator = text.Find(strDecimal);
  if (nSeparator < 0) return text;
  const int nFirstDigit = nSeparator + strDecimal.GetLength();
  int nEnd = nFirstDigit;
  while (nEnd < text.GetLength() && IsDigit(text[nEnd])) ++nEnd;
  int nKeep = nEnd;
  while (nKeep > nFirstDigit && text[nKeep - 1] == '0') --nKeep;
  if (nKeep == nFirstDigit) nKeep = nSeparator;
  return text.Left(nKeep) + text.Mid(nEnd);
}

int NumberTextConv::ParseNumber(const CString& text, bool& bAlone, CString& strRemainder, bool bAllowRoman) {
  const std::string& s = text.GetStdString();
  const FoundNumber found = FindFirstNumber(s, bAllowRoman);
  if (found.nStart == std::string::npos) {
    bAlone = false;
    strRemainder = text;
    return 0;
  }
  bAlone = IsBlankText(s.substr(0, found.nStart)) && IsBlankText(s.substr(found.nEnd));
  strRemainder = bAlone ? CString() : CString(s.substr(0, found.nStart) + "%d" + s.substr(found.nEnd));
  return found.nValue;
}
