#include "utility/LocaleUtils.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

#if !defined(_WIN32)
#include <langinfo.h>
#include <locale.h>
#endif

namespace {

const int MAX_FRACTIONAL_DIGITS = 9;

struct Conventions {
  CString strNumberDecimal = ".";
  CString strNumberThousands = ",";
  int nNumberDigits = 2;
  CString strCurrencyDecimal = ".";
  CString strCurrencyThousands = ",";
  int nCurrencyDigits = 2;
  CString strDate = "/";
  LocaleUtils::DateOrder nDateOrder = LocaleUtils::MONTH_DAY_YEAR;
  CString strTime = ":";
  bool bUse24Hours = false;
  CString strCountry = "United States";
};

#if !defined(_WIN32)

// The locale name that the environment gives a category: LC_ALL, then the
// category's own variable, then LANG. Empty for the C and POSIX locales.
CString EnvironmentLocaleName(const char* pszCategoryVariable) {
  for (const char* pszVariable : {"LC_ALL", pszCategoryVariable, "LANG"}) {
    const char* pszValue = std::getenv(pszVariable);
    if (pszValue == nullptr || *pszValue == '\0') continue;
    const CString name(pszValue);
    if (name == "C" || name == "POSIX" || name.Left(2) == "C.") return CString();
    return name;
  }
  return CString();
}

// Calls read(locale) with the environment's locale for one category, when
// the environment names one that the C library has.
template <typename Read>
void WithEnvironmentLocale(int nCategoryMask, const char* pszCategoryVariable, Read read) {
  const CString name = EnvironmentLocaleName(pszCategoryVariable);
  if (name.IsEmpty()) return;
  locale_t locale = newlocale(nCategoryMask, name.GetString(), static_cast<locale_t>(nullptr));
  if (locale == static_cast<locale_t>(nullptr)) return;
  read(locale);
  freelocale(locale);
}

void TakeText(CString& strTarget, const char* pszValue) {
  if (pszValue != nullptr && *pszValue != '\0') strTarget = pszValue;
}

// Monetary digit counts come as the first byte of the item; CHAR_MAX means
// that the locale does not say.
void TakeDigits(int& nTarget, const char* pszValue) {
  if (pszValue == nullptr) return;
  const int nDigits = static_cast<unsigned char>(pszValue[0]);
  if (nDigits <= MAX_FRACTIONAL_DIGITS && nDigits != CHAR_MAX) nTarget = nDigits;
}

// The order of the day, month and year fields and the separator that
// follows the first of them, from a strftime date format such as %d.%m.%Y.
void TakeDateFormat(Conventions& conventions, CString format) {
  format.Replace("%D", "%m/%d/%y");
  format.Replace("%F", "%Y-%m-%d");
  const int nDay = std::max(format.Find("%d"), format.Find("%e"));
  const int nMonth = std::max(format.Find("%m"), format.Find("%b"));
  const int nYear = std::max(format.Find("%y"), format.Find("%Y"));
  if (nDay < 0 || nMonth < 0 || nYear < 0) return;
  if (nYear < nMonth && nMonth < nDay) {
    conventions.nDateOrder = LocaleUtils::YEAR_MONTH_DAY;
  } else if (nDay < nMonth) {
    conventions.nDateOrder = LocaleUtils::DAY_MONTH_YEAR;
  } else {
    conventions.nDateOrder = LocaleUtils::MONTH_DAY_YEAR;
  }
  const int nFirstEnd = std::min({nDay, nMonth, nYear}) + 2;
  const CString separator = format.Mid(nFirstEnd).SpanExcluding("%");
  if (!separator.IsEmpty()) conventions.strDate = separator;
}

// The clock and the separator after the hours, from a strftime time format
// such as %H:%M:%S or %r.
void TakeTimeFormat(Conventions& conventions, CString format) {
  format.Replace("%T", "%H:%M:%S");
  format.Replace("%R", "%H:%M");
  format.Replace("%r", "%I:%M:%S %p");
  const int nHour24 = std::max(format.Find("%H"), format.Find("%k"));
  const int nHour12 = std::max(format.Find("%I"), format.Find("%l"));
  const int nHour = std::max(nHour24, nHour12);
  if (nHour < 0) return;
  conventions.bUse24Hours = nHour24 >= 0;
  const CString separator = format.Mid(nHour + 2).SpanExcluding("%");
  if (!separator.IsEmpty()) conventions.strTime = separator;
}

void ReadEnvironment(Conventions& conventions) {
  WithEnvironmentLocale(LC_NUMERIC_MASK, "LC_NUMERIC", [&](locale_t locale) {
    TakeText(conventions.strNumberDecimal, nl_langinfo_l(RADIXCHAR, locale));
    TakeText(conventions.strNumberThousands, nl_langinfo_l(THOUSEP, locale));
  });
  WithEnvironmentLocale(LC_MONETARY_MASK, "LC_MONETARY", [&](locale_t locale) {
    TakeText(conventions.strCurrencyDecimal, nl_langinfo_l(MON_DECIMAL_POINT, locale));
    TakeText(conventions.strCurrencyThousands, nl_langinfo_l(MON_THOUSANDS_SEP, locale));
    TakeDigits(conventions.nCurrencyDigits, nl_langinfo_l(FRAC_DIGITS, locale));
  });
  WithEnvironmentLocale(LC_TIME_MASK, "LC_TIME", [&](locale_t locale) {
    TakeDateFormat(conventions, nl_langinfo_l(D_FMT, locale));
    TakeTimeFormat(conventions, nl_langinfo_l(T_FMT, locale));
  });
#if defined(__GLIBC__)
  WithEnvironmentLocale(LC_ADDRESS_MASK, "LC_ADDRESS", [&](locale_t locale) {
    TakeText(conventions.strCountry, nl_langinfo_l(_NL_ADDRESS_COUNTRY_NAME, locale));
  });
#endif
}

#else

void ReadEnvironment(Conventions&) {}

#endif

Conventions FromEnvironment() {
  Conventions conventions;
  ReadEnvironment(conventions);
  return conventions;
}

Conventions& Current() {
  static Conventions conventions = FromEnvironment();
  return conventions;
}

void SetText(CString& strTarget, const CString& strValue) {
  if (!strValue.IsEmpty()) strTarget = strValue;
}

int ClampDigits(int nDigits) { return std::clamp(nDigits, 0, MAX_FRACTIONAL_DIGITS); }

}  // namespace

CString LocaleUtils::GetNumberDecimalSeparator() { return Current().strNumberDecimal; }
CString LocaleUtils::GetNumberThousandsSeparator() { return Current().strNumberThousands; }
int LocaleUtils::GetNumberFractionalDigits() { return Current().nNumberDigits; }
CString LocaleUtils::GetCurrencyDecimalSeparator() { return Current().strCurrencyDecimal; }
CString LocaleUtils::GetCurrencyThousandsSeparator() { return Current().strCurrencyThousands; }
int LocaleUtils::GetCurrencyFractionalDigits() { return Current().nCurrencyDigits; }
CString LocaleUtils::GetDateSeparator() { return Current().strDate; }
LocaleUtils::DateOrder LocaleUtils::GetDateOrder() { return Current().nDateOrder; }
CString LocaleUtils::GetTimeSeparator() { return Current().strTime; }
bool LocaleUtils::GetUse24HourClock() { return Current().bUse24Hours; }
CString LocaleUtils::GetCountryName() { return Current().strCountry; }

void LocaleUtils::SetNumberDecimalSeparator(const CString& strSeparator) {
  SetText(Current().strNumberDecimal, strSeparator);
}
void LocaleUtils::SetNumberThousandsSeparator(const CString& strSeparator) {
  SetText(Current().strNumberThousands, strSeparator);
}
void LocaleUtils::SetNumberFractionalDigits(int nDigits) { Current().nNumberDigits = ClampDigits(nDigits); }
void LocaleUtils::SetCurrencyDecimalSeparator(const CString& strSeparator) {
  SetText(Current().strCurrencyDecimal, strSeparator);
}
void LocaleUtils::SetCurrencyThousandsSeparator(const CString& strSeparator) {
  SetText(Current().strCurrencyThousands, strSeparator);
}
void LocaleUtils::SetCurrencyFractionalDigits(int nDigits) { Current().nCurrencyDigits = ClampDigits(nDigits); }
void LocaleUtils::SetDateSeparator(const CString& strSeparator) { SetText(Current().strDate, strSeparator); }
void LocaleUtils::SetDateOrder(DateOrder nOrder) { Current().nDateOrder = nOrder; }
void LocaleUtils::SetTimeSeparator(const CString& strSeparator) { SetText(Current().strTime, strSeparator); }
void LocaleUtils::SetUse24HourClock(bool bUse24Hours) { Current().bUse24Hours = bUse24Hours; }
void LocaleUtils::SetCountryName(const CString& strCountry) { SetText(Current().strCountry, strCountry); }

void LocaleUtils::ResetToEnvironment() { Current() = FromEnvironment(); }
