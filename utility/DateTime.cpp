#include "utility/DateTime.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdint>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "utility/LocaleUtils.h"
#include "utility/NumberTextConv.h"

namespace {

const int SECONDS_PER_HOUR = 3600;
const int SECONDS_PER_MINUTE = 60;
const int MONTHS = 12;
const int WEEKDAYS = 7;
// Two-digit years below this fall in the 2000s, the others in the 1900s.
const int CENTURY_PIVOT = 30;
// More digits than a date or time part ever has; such text is not read.
const size_t MAX_PART_DIGITS = 4;
// Duration parts are capped here before they are multiplied, so that the
// sum cannot overflow 64 bits.
const std::int64_t MAX_DURATION_PART = 1000000000000LL;

const char* const MONTH_NAMES[MONTHS] = {"January", "February", "March",     "April",   "May",      "June",
                                         "July",    "August",   "September", "October", "November", "December"};
const char* const WEEKDAY_NAMES[WEEKDAYS] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                             "Thursday", "Friday", "Saturday"};

bool IsLeapYear(int nYear) { return (nYear % 4 == 0 && nYear % 100 != 0) || nYear % 400 == 0; }

int DaysInMonth(int nYear, int nMonth) {
  static const int DAYS[MONTHS] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return nMonth == 2 && IsLeapYear(nYear) ? 29 : DAYS[nMonth - 1];
}

bool IsCalendarDate(int nYear, int nMonth, int nDay) {
  return nYear >= DateTime::MIN_YEAR && nYear <= DateTime::MAX_YEAR && nMonth >= 1 && nMonth <= MONTHS &&
         nDay >= 1 && nDay <= DaysInMonth(nYear, nMonth);
}

// The Gregorian calendar's day count (Fliegel and Van Flandern), valid for
// years from 1 to 9999 without overflow.
int JulianDayOf(int nYear, int nMonth, int nDay) {
  const int a = (14 - nMonth) / 12;
  const int y = nYear + 4800 - a;
  const int m = nMonth + 12 * a - 3;
  return nDay + (153 * m + 2) / 5 + 365 * y + y / 4 - y / 100 + y / 400 - 32045;
}

void CalendarOf(int nJulianDay, int& nYear, int& nMonth, int& nDay) {
  const int a = nJulianDay + 32044;
  const int b = (4 * a + 3) / 146097;
  const int c = a - 146097 * b / 4;
  const int d = (4 * c + 3) / 1461;
  const int e = c - 1461 * d / 4;
  const int m = (5 * e + 2) / 153;
  nDay = e - (153 * m + 2) / 5 + 1;
  nMonth = m + 3 - 12 * (m / 10);
  nYear = 100 * b + d - 4800 + m / 10;
}

const int FIRST_JULIAN_DAY = JulianDayOf(DateTime::MIN_YEAR, 1, 1);
const int LAST_JULIAN_DAY = JulianDayOf(DateTime::MAX_YEAR, 12, 31);

int CompareParts(bool bValid, int nValue, bool bOtherValid, int nOther) {
  if (bValid != bOtherValid) return bValid ? 1 : -1;
  if (!bValid || nValue == nOther) return 0;
  return nValue < nOther ? -1 : 1;
}

std::string Lower(std::string text) {
  for (char& ch : text) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
  return text;
}

// 1-based index of word among names, matching a whole name or its first
// three letters, ignoring case; 0 when none matches.
int FindName(const std::string& word, const char* const* ppszNames, int nCount) {
  const std::string lower = Lower(word);
  for (int i = 0; i < nCount; ++i) {
    const std::string name = Lower(ppszNames[i]);
    if (lower == name || lower == name.substr(0, 3)) return i + 1;
  }
  return 0;
}

enum class TokenKind { NUMBER, WORD, SEPARATOR, OTHER };

struct Token {
  TokenKind nKind;
  std::string text;
};

// Runs of digits, runs of letters, the given separators and single other
// characters; blanks only end a token.
std::vector<Token> Tokenize(const std::string& text, const std::vector<std::string>& separators) {
  std::vector<Token> tokens;
  size_t nPos = 0;
  while (nPos < text.size()) {
    const auto ch = static_cast<unsigned char>(text[nPos]);
    const auto separator = std::find_if(separators.begin(), separators.end(), [&](const std::string& sep) {
      return !sep.empty() && text.compare(nPos, sep.size(), sep) == 0;
    });
    if (std::isspace(ch) != 0) {
      ++nPos;
    } else if (separator != separators.end()) {
      tokens.push_back({TokenKind::SEPARATOR, *separator});
      nPos += separator->size();
    } else if (std::isdigit(ch) != 0 || std::isalpha(ch) != 0) {
      const bool bDigits = std::isdigit(ch) != 0;
      size_t nEnd = nPos;
      while (nEnd < text.size() &&
             (bDigits ? std::isdigit(static_cast<unsigned char>(text[nEnd])) != 0
                      : std::isalpha(static_cast<unsigned char>(text[nEnd])) != 0)) {
        ++nEnd;
      }
      tokens.push_back({bDigits ? TokenKind::NUMBER : TokenKind::WORD, text.substr(nPos, nEnd - nPos)});
      nPos = nEnd;
    } else {
      tokens.push_back({TokenKind::OTHER, std::string(1, text[nPos])});
      ++nPos;
    }
  }
  return tokens;
}

// The value of a run of digits, capped at nLimit.
std::int64_t DigitsValue(const std::string& digits, std::int64_t nLimit) {
  return std::min<std::int64_t>(nLimit, NumberTextConv::GetNumber64FromString(CString(digits)));
}

int PartValue(const Token& token) { return static_cast<int>(DigitsValue(token.text, INT_MAX)); }

int YearValue(const Token& token) {
  const int nYear = PartValue(token);
  if (token.text.size() > 2) return nYear;
  return nYear < CENTURY_PIVOT ? 2000 + nYear : 1900 + nYear;
}

// The calendar parts of date tokens whose separators are already dropped;
// false when they do not form a date text.
bool ReadDateParts(const std::vector<Token>& tokens, int& nYear, int& nMonth, int& nDay) {
  std::vector<Token> numbers;
  nMonth = 0;
  for (const Token& token : tokens) {
    if (token.nKind == TokenKind::NUMBER) {
      if (token.text.size() > MAX_PART_DIGITS) return false;
      numbers.push_back(token);
    } else if (token.nKind != TokenKind::WORD) {
      return false;
    } else if (const int nNamed = FindName(token.text, MONTH_NAMES, MONTHS); nNamed > 0 && nMonth == 0) {
      nMonth = nNamed;
    } else if (FindName(token.text, WEEKDAY_NAMES, WEEKDAYS) == 0) {
      return false;
    }
  }
  if (nMonth > 0) {
    if (numbers.empty() || numbers.size() > 2) return false;
    const bool bYearFirst = numbers.size() == 2 && numbers[0].text.size() > 2;
    nDay = PartValue(numbers[bYearFirst ? 1 : 0]);
    nYear = numbers.size() == 2 ? YearValue(numbers[bYearFirst ? 0 : 1]) : DateTime::GetCurrentYear();
    return true;
  }
  if (numbers.size() == 2) {
    const bool bDayFirst = LocaleUtils::GetDateOrder() == LocaleUtils::DAY_MONTH_YEAR;
    nMonth = PartValue(numbers[bDayFirst ? 1 : 0]);
    nDay = PartValue(numbers[bDayFirst ? 0 : 1]);
    nYear = DateTime::GetCurrentYear();
    return true;
  }
  if (numbers.size() != 3) return false;
  LocaleUtils::DateOrder nOrder = LocaleUtils::GetDateOrder();
  if (numbers[0].text.size() > 2) nOrder = LocaleUtils::YEAR_MONTH_DAY;
  switch (nOrder) {
    case LocaleUtils::YEAR_MONTH_DAY:
      nYear = YearValue(numbers[0]);
      nMonth = PartValue(numbers[1]);
      nDay = PartValue(numbers[2]);
      break;
    case LocaleUtils::DAY_MONTH_YEAR:
      nDay = PartValue(numbers[0]);
      nMonth = PartValue(numbers[1]);
      nYear = YearValue(numbers[2]);
      break;
    default:
      nMonth = PartValue(numbers[0]);
      nDay = PartValue(numbers[1]);
      nYear = YearValue(numbers[2]);
      break;
  }
  return true;
}

std::vector<std::string> TimeSeparators() { return {":", LocaleUtils::GetTimeSeparator().GetStdString()}; }

// Hours, minutes and optional seconds, 24-hour or with AM/PM (A or P
// alone too); false when the tokens are no time of day.
bool ReadTimeOfDay(const std::vector<Token>& tokens, int& nSeconds) {
  std::vector<int> parts;
  size_t i = 0;
  while (i < tokens.size() && tokens[i].nKind == TokenKind::NUMBER && parts.size() < 3) {
    if (tokens[i].text.size() > 2) return false;
    parts.push_back(PartValue(tokens[i++]));
    const bool bMore = i + 1 < tokens.size() && tokens[i].nKind == TokenKind::SEPARATOR &&
                       tokens[i + 1].nKind == TokenKind::NUMBER;
    if (!bMore) break;
    ++i;
  }
  const std::string meridiem = i < tokens.size() ? Lower(tokens[i].text) : std::string();
  const bool bAm = meridiem == "am" || meridiem == "a";
  const bool bPm = meridiem == "pm" || meridiem == "p";
  if ((bAm || bPm) && tokens[i].nKind == TokenKind::WORD) ++i;
  if (parts.empty() || i != tokens.size()) return false;
  if (parts.size() == 1 && !bAm && !bPm) return false;
  parts.resize(3, 0);
  int nHour = parts[0];
  if (bAm || bPm) {
    if (nHour < 1 || nHour > 12) return false;
    nHour = nHour % 12 + (bPm ? 12 : 0);
  }
  if (nHour > 23 || parts[1] > 59 || parts[2] > 59) return false;
  nSeconds = nHour * SECONDS_PER_HOUR + parts[1] * SECONDS_PER_MINUTE + parts[2];
  return true;
}

// A part of a date, time or duration: at least nMinDigits digits.
CString Digits(std::int64_t nValue, int nMinDigits = 0) {
  return NumberTextConv::NumberToString(static_cast<int>(nValue), false, nMinDigits, CString());
}

CString TwoDigits(std::int64_t nValue) { return Digits(nValue, 2); }

// The sign of a duration and its magnitude, rounded to whole minutes when
// bMinutes; the sign is dropped when the rounded magnitude is 0.
std::int64_t DurationMagnitude(int nSeconds, bool bMinutes, CString& strSign) {
  const std::int64_t nWide = nSeconds;
  std::int64_t nMagnitude = nWide < 0 ? -nWide : nWide;
  if (bMinutes) nMagnitude = (nMagnitude + SECONDS_PER_MINUTE / 2) / SECONDS_PER_MINUTE * SECONDS_PER_MINUTE;
  strSign = nSeconds < 0 && nMagnitude > 0 ? "-" : "";
  return nMagnitude;
}

// "H" + separator + "MM" [+ separator + "SS"], or "M" [+ separator + "SS"].
CString FormatDuration(int nSeconds, bool bHours, bool bSeconds) {
  CString text;
  const std::int64_t nMagnitude = DurationMagnitude(nSeconds, !bSeconds, text);
  const CString strSeparator = LocaleUtils::GetTimeSeparator();
  const std::int64_t nMinutes = nMagnitude / SECONDS_PER_MINUTE;
  if (bHours) {
    text += Digits(nMinutes / 60) + strSeparator + TwoDigits(nMinutes % 60);
  } else {
    text += Digits(nMinutes);
  }
  if (bSeconds) text += strSeparator + TwoDigits(nMagnitude % SECONDS_PER_MINUTE);
  return text;
}

}  // namespace

DateTime::DateTime(int nYear, int nMonth, int nDay, int nHour, int nMinute, int nSecond) {
  SetDate(nYear, nMonth, nDay);
  if (nHour >= 0 && nHour < 24 && nMinute >= 0 && nMinute < 60 && nSecond >= 0 && nSecond < 60) {
    m_nTime = nHour * SECONDS_PER_HOUR + nMinute * SECONDS_PER_MINUTE + nSecond;
  }
}

DateTime DateTime::FromJulian(int nJulianDay, int nSecondsOfDay) {
  DateTime value;
  value.m_nDate = nJulianDay;
  value.m_nTime = nSecondsOfDay;
  return value;
}

bool DateTime::GetDate(int& nYear, int& nMonth, int& nDay) const {
  if (!IsValidDate()) return false;
  CalendarOf(m_nDate, nYear, nMonth, nDay);
  return true;
}

bool DateTime::SetDate(int nYear, int nMonth, int nDay) {
  m_nDate = IsCalendarDate(nYear, nMonth, nDay) ? JulianDayOf(nYear, nMonth, nDay) : NO_DATE;
  return m_nDate != NO_DATE;
}

int DateTime::GetCurrentYear() {
  DateTime now;
  now.SetToCurrent();
  int nYear = 0;
  int nMonth = 0;
  int nDay = 0;
  now.GetDate(nYear, nMonth, nDay);
  return nYear;
}

void DateTime::SetToCurrent() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
#if defined(_WIN32)
  localtime_s(&local, &now);
#else
  localtime_r(&now, &local);
#endif
  SetDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
  m_nTime = local.tm_hour * SECONDS_PER_HOUR + local.tm_min * SECONDS_PER_MINUTE + std::min(local.tm_sec, 59);
}

bool DateTime::SetDate(const CString& text) {
  std::vector<Token> tokens = Tokenize(text.GetStdString(), {"/", "-", ".", ",", LocaleUtils::GetDateSeparator().GetStdString()});
  tokens.erase(std::remove_if(tokens.begin(), tokens.end(),
                              [](const Token& token) { return token.nKind == TokenKind::SEPARATOR; }),
               tokens.end());
  int nYear = 0;
  int nMonth = 0;
  int nDay = 0;
  if (!ReadDateParts(tokens, nYear, nMonth, nDay)) {
    m_nDate = NO_DATE;
    return false;
  }
  return SetDate(nYear, nMonth, nDay);
}

bool DateTime::SetTime(const CString& text) {
  int nSeconds = NO_TIME;
  const bool bRead = ReadTimeOfDay(Tokenize(text.GetStdString(), TimeSeparators()), nSeconds);
  m_nTime = bRead ? nSeconds : NO_TIME;
  return bRead;
}

bool DateTime::IsValidDate() const { return m_nDate >= FIRST_JULIAN_DAY && m_nDate <= LAST_JULIAN_DAY; }

bool DateTime::IsValidTime() const { return m_nTime >= 0 && m_nTime < SECONDS_PER_DAY; }

int DateTime::CompareDate(const DateTime& other) const {
  return CompareParts(IsValidDate(), m_nDate, other.IsValidDate(), other.m_nDate);
}

int DateTime::CompareTime(const DateTime& other) const {
  return CompareParts(IsValidTime(), m_nTime, other.IsValidTime(), other.m_nTime);
}

bool DateTime::operator<(const DateTime& other) const {
  if (m_nDate != other.m_nDate) return m_nDate < other.m_nDate;
  return m_nTime < other.m_nTime;
}

CString DateTime::ConvertDateToText(const DateTime& value, bool bDayOfWeek, bool bAbbreviate, bool bWithTime,
                                    bool bNumbers) {
  int nYear = 0;
  int nMonth = 0;
  int nDay = 0;
  if (!value.GetDate(nYear, nMonth, nDay)) return CString();
  const auto nameOf = [bAbbreviate](const char* pszName) {
    return bAbbreviate ? CString(pszName).Left(3) : CString(pszName);
  };
  const CString year = Digits(nYear, 4);
  CString text;
  if (bDayOfWeek) text = nameOf(WEEKDAY_NAMES[(value.m_nDate + 1) % WEEKDAYS]) + ", ";
  const LocaleUtils::DateOrder nOrder = LocaleUtils::GetDateOrder();
  if (bNumbers) {
    const CString strSeparator = LocaleUtils::GetDateSeparator();
    const bool bYearFirst = nOrder == LocaleUtils::YEAR_MONTH_DAY;
    const CString month = bYearFirst ? TwoDigits(nMonth) : Digits(nMonth);
    const CString day = bYearFirst ? TwoDigits(nDay) : Digits(nDay);
    const CString* parts[] = {&month, &day, &year};
    if (bYearFirst) {
      parts[0] = &year;
      parts[1] = &month;
      parts[2] = &day;
    } else if (nOrder == LocaleUtils::DAY_MONTH_YEAR) {
      std::swap(parts[0], parts[1]);
    }
    text += *parts[0];
    text += strSeparator;
    text += *parts[1];
    text += strSeparator;
    text += *parts[2];
  } else {
    const CString month = nameOf(MONTH_NAMES[nMonth - 1]);
    if (nOrder == LocaleUtils::YEAR_MONTH_DAY) {
      text += year + " " + month + " " + Digits(nDay);
    } else if (nOrder == LocaleUtils::DAY_MONTH_YEAR) {
      text += Digits(nDay) + " " + month + " " + year;
    } else {
      text += month + " " + Digits(nDay) + ", " + year;
    }
  }
  if (bWithTime && value.IsValidTime()) text += " " + ConvertTimeToText(value, false);
  return text;
}

CString DateTime::ConvertTimeToText(const DateTime& value, bool bShowSeconds) {
  if (!value.IsValidTime()) return CString();
  const int nHour = value.m_nTime / SECONDS_PER_HOUR;
  const CString strSeparator = LocaleUtils::GetTimeSeparator();
  const bool b24Hours = LocaleUtils::GetUse24HourClock();
  CString text = b24Hours ? TwoDigits(nHour) : Digits(nHour % 12 == 0 ? 12 : nHour % 12);
  text += strSeparator + TwoDigits(value.m_nTime % SECONDS_PER_HOUR / SECONDS_PER_MINUTE);
  if (bShowSeconds) text += strSeparator + TwoDigits(value.m_nTime % SECONDS_PER_MINUTE);
  if (!b24Hours) text += nHour < 12 ? " AM" : " PM";
  return text;
}

int DateTime::ConvertFromDuration(const CString& text, bool bShowHours) {
  std::vector<std::string> separators = TimeSeparators();
  separators.push_back("-");
  separators.push_back("+");
  const std::vector<Token> tokens = Tokenize(text.GetStdString(), separators);
  const bool bNegative = !tokens.empty() && tokens[0].text == "-";
  size_t i = !tokens.empty() && (bNegative || tokens[0].text == "+") ? 1 : 0;
  std::vector<std::int64_t> parts(1, 0);
  for (; i < tokens.size() && parts.size() <= 3; ++i) {
    if (tokens[i].nKind == TokenKind::NUMBER) {
      if (i > 0 && tokens[i - 1].nKind == TokenKind::NUMBER) break;
      parts.back() = DigitsValue(tokens[i].text, MAX_DURATION_PART);
    } else if (tokens[i].nKind == TokenKind::SEPARATOR && tokens[i].text != "-" && tokens[i].text != "+") {
      parts.push_back(0);
    } else {
      break;
    }
  }
  if (parts.size() > 3) parts.resize(3);
  std::int64_t nSeconds = 0;
  if (parts.size() == 3) {
    nSeconds = parts[0] * SECONDS_PER_HOUR + parts[1] * SECONDS_PER_MINUTE + parts[2];
  } else if (parts.size() == 2) {
    nSeconds = bShowHours ? parts[0] * SECONDS_PER_HOUR + parts[1] * SECONDS_PER_MINUTE
                          : parts[0] * SECONDS_PER_MINUTE + parts[1];
  } else {
    nSeconds = parts[0] * SECONDS_PER_MINUTE;
  }
  if (bNegative) nSeconds = -nSeconds;
  return static_cast<int>(std::clamp<std::int64_t>(nSeconds, INT_MIN, INT_MAX));
}

CString DateTime::ConvertToHHMMSS(int nSeconds) { return FormatDuration(nSeconds, true, true); }

CString DateTime::ConvertToHHMM(int nSeconds) { return FormatDuration(nSeconds, true, false); }

CString DateTime::ConvertToMMSS(int nSeconds) { return FormatDuration(nSeconds, false, true); }

CString DateTime::ConvertToMM(int nSeconds) { return FormatDuration(nSeconds, false, false); }

CString DateTime::ConvertSecondsToText(int nSeconds) {
  const bool bHours = nSeconds >= SECONDS_PER_HOUR || nSeconds <= -SECONDS_PER_HOUR;
  return FormatDuration(nSeconds, bHours, true);
}

void DateTime::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << m_nDate << m_nTime;
  } else {
    ar >> m_nDate >> m_nTime;
  }
}
