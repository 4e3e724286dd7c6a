#ifndef UTILITY_LOCALEUTILS_H_
#define UTILITY_LOCALEUTILS_H_

#include "framework/CString.h"
#include "utility/UtilityExport.h"

// The user's conventions for writing numbers, money, dates and times, and
// the user's country. Each value starts as the United States convention,
// is replaced by what the C library knows of the locale that the process
// environment names (unless that is C or POSIX), and can be overridden by the
// host. The environment is read on first use and again on
// ResetToEnvironment; reading it never changes the process-wide locale.
//
// The values are process-wide and not guarded: set them before other threads
// read them. Nothing here throws.
class VAXO009_API LocaleUtils {
 public:
  enum DateOrder { MONTH_DAY_YEAR = 0, DAY_MONTH_YEAR = 1, YEAR_MONTH_DAY = 2 };

  static CString GetNumberDecimalSeparator();
  static CString GetNumberThousandsSeparator();
  static int GetNumberFractionalDigits();
  static CString GetCurrencyDecimalSeparator();
  static CString GetCurrencyThousandsSeparator();
  static int GetCurrencyFractionalDigits();
  static CString GetDateSeparator();
  static DateOrder GetDateOrder();
  static CString GetTimeSeparator();
  // True when times are written on the 24-hour clock, false for AM/PM.
  static bool GetUse24HourClock();
  static CString GetCountryName();

  // Overrides for the host and for tests. An empty separator is ignored and
  // fractional digits are clamped to 0..9.
  static void SetNumberDecimalSeparator(const CString& strSeparator);
  static void SetNumberThousandsSeparator(const CString& strSeparator);
  static void SetNumberFractionalDigits(int nDigits);
  static void SetCurrencyDecimalSeparator(const CString& strSeparator);
  static void SetCurrencyThousandsSeparator(const CString& strSeparator);
  static void SetCurrencyFractionalDigits(int nDigits);
  static void SetDateSeparator(const CString& strSeparator);
  static void SetDateOrder(DateOrder nOrder);
  static void SetTimeSeparator(const CString& strSeparator);
  static void SetUse24HourClock(bool bUse24Hours);
  static void SetCountryName(const CString& strCountry);

  // Drops every override and reads the environment's locale again.
  static void ResetToEnvironment();
};

#endif  // UTILITY_LOCALEUTILS_H_
