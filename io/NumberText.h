#ifndef IO_NUMBERTEXT_H_
#define IO_NUMBERTEXT_H_

// Whether a typed text is a plain number, for the condition parser and the
// type inference of the CSV import. Internal to vaxo057io.

#include <cctype>

#include "framework/CString.h"
#include "utility/LocaleUtils.h"

namespace number_text {

inline bool IsDigits(const CString& text) {
  for (int i = 0; i < text.GetLength(); ++i) {
    if (std::isdigit(static_cast<unsigned char>(text[i])) == 0) return false;
  }
  return true;
}

// Digits, grouped by the number thousands separator in threes after the
// first group or not grouped at all.
inline bool IsWholePart(const CString& text) {
  const CString separator = LocaleUtils::GetNumberThousandsSeparator();
  if (separator.IsEmpty() || text.Find(separator) < 0) return !text.IsEmpty() && IsDigits(text);
  int nStart = 0;
  for (int nGroup = 0;; ++nGroup) {
    const int nEnd = text.Find(separator, nStart);
    const CString group = nEnd < 0 ? text.Mid(nStart) : text.Mid(nStart, nEnd - nStart);
    if (!IsDigits(group) || group.IsEmpty() || (nGroup > 0 && group.GetLength() != 3) ||
        (nGroup == 0 && group.GetLength() > 3)) {
      return false;
    }
    if (nEnd < 0) return true;
    nStart = nEnd + separator.GetLength();
  }
}

// A sign, a whole part and, when decimalSeparator is not empty, an
// optional decimal part after it. Blanks around are ignored.
inline bool IsNumberText(CString text, const CString& decimalSeparator) {
  text.Trim();
  if (!text.IsEmpty() && (text[0] == '-' || text[0] == '+')) text = text.Mid(1);
  const int nPoint = decimalSeparator.IsEmpty() ? -1 : text.Find(decimalSeparator);
  if (nPoint < 0) return IsWholePart(text);
  const CString fraction = text.Mid(nPoint + decimalSeparator.GetLength());
  const CString whole = text.Left(nPoint);
  return !fraction.IsEmpty() && IsDigits(fraction) && (whole.IsEmpty() || IsWholePart(whole));
}

}  // namespace number_text

#endif  // IO_NUMBERTEXT_H_
