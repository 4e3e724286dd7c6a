#ifndef UTILITY_NUMBERTEXTCONV_H_
#define UTILITY_NUMBERTEXTCONV_H_

#include "framework/CString.h"
#include "framework/Types.h"
#include "utility/UtilityExport.h"

// Numbers read from and written as text with the separators of LocaleUtils:
// whole numbers, decimals, money amounts, fractions such as 1 1/2, and the
// first number inside a text such as Vol. 2 or Part IV. Holds no state.
// Nothing here throws; text that holds no number reads as 0 and values
// beyond a type's range saturate at its limit.
class VAXO009_API NumberTextConv {
 public:
  // Reads leading blanks, an optional "+", "-" or "(" (a value in
  // parentheses is negative), then digits in which the number thousands
  // separator may stand between digits; reading stops at the first
  // character that cannot continue the number.
  static int GetNumberFromString(const CString& text);
  static __int64 GetNumber64FromString(const CString& text);
  // As above, then the decimal separator and the fractional digits. With
  // bCurrency the currency separators are used instead of the number ones.
  static double GetDoubleFromString(const CString& text, bool bCurrency);

  // nValue in decimal digits, the whole part padded with leading zeros to
  // nMinDigits digits (0: no padding). With bThousands the digits are
  // grouped by threes with strThousandsSep, or with the number thousands
  // separator when strThousandsSep is empty.
  static CString NumberToString(int nValue, bool bThousands, int nMinDigits, const CString& strThousandsSep);
  // dValue rounded half away from zero to nDigits fractional digits (0..20)
  // and written with the number separators, or the currency ones when
  // bCurrency. nMinDigits and strThousandsSep mean what they mean for
  // NumberToString, with grouping when bThousands; an empty strThousandsSep
  // with bCurrency groups with the currency separator. A value that rounds to
  // zero has no sign; a value that is not finite gives an empty text.
  static CString DoubleToString(double dValue, int nDigits, bool bCurrency, int nMinDigits,
                                const CString& strThousandsSep, bool bThousands);

  // "1 1/2" is 1.5, "3/4" 0.75, "-1 1/2" -1.5; any other text is read by
  // GetDoubleFromString. A fraction over zero counts as no fraction.
  static double FractionToDouble(const CString& text);
  // The magnitude of dValue as a whole part and a reduced fraction of at
  // most sixty-fourths, rounded to the nearest sixty-fourth: "1 1/2", "3/4",
  // "2", "0". Never a sign; a value that is not finite gives an empty text.
  static CString DoubleToFraction(double dValue);
  // Drops the zeros that end the fractional digits, and the decimal
  // separator when no digit remains: "1.500" is "1.5", "2.00" is "2".
  static CString RemoveDecimalZeroes(const CString& text);

  // The first number in text: a run of digits, with a "-" right before it
  // when that starts the text or follows a blank; with bAllowRoman also a
  // whole upper-case word of Roman numerals from I to MMMCMXCIX. Returns its
  // value (0 when there is none); bAlone tells whether the trimmed text is
  // that number alone; strRemainder receives the text with the number
  // replaced by "%d", empty when bAlone, the text itself when there is no
  // number.
  static int ParseNumber(const CString& text, bool& bAlone, CString& strRemainder, bool bAllowRoman);
};

#endif  // UTILITY_NUMBERTEXTCONV_H_
