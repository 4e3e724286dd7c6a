#ifndef UTILITY_DATETIME_H_
#define UTILITY_DATETIME_H_

#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/UtilityExport.h"

// A calendar date and a time of day, each of which may be missing: the date
// as a Julian Day Number (NO_DATE when there is none) and the time as seconds
// since midnight (NO_TIME when there is none). A default value has neither.
// Ordering is by date, then by time; a missing part sorts before any present
// one. Dates follow the Gregorian calendar for every year from 1 to 9999.
//
// Also the text forms of dates, times and durations (signed seconds), in the
// conventions of LocaleUtils. Nothing here throws; text that cannot be read
// leaves the part it was meant for missing.
class VAXO009_API DateTime {
 public:
  static constexpr int NO_DATE = 0;
  static constexpr int NO_TIME = -1;
  static constexpr int MIN_YEAR = 1;
  static constexpr int MAX_YEAR = 9999;
  static constexpr int SECONDS_PER_DAY = 86400;

  DateTime() = default;
  // A date, and a time when nHour is not negative. A calendar date or time
  // that does not exist leaves that part missing.
  DateTime(int nYear, int nMonth, int nDay, int nHour = -1, int nMinute = 0, int nSecond = 0);
  static DateTime FromJulian(int nJulianDay, int nSecondsOfDay);

  int GetJulianDay() const { return m_nDate; }
  int GetSecondsOfDay() const { return m_nTime; }
  void SetJulianDay(int nJulianDay) { m_nDate = nJulianDay; }
  void SetSecondsOfDay(int nSecondsOfDay) { m_nTime = nSecondsOfDay; }

  // The calendar parts of a valid date; false (parts untouched) otherwise.
  bool GetDate(int& nYear, int& nMonth, int& nDay) const;
  // Sets the date when it exists and returns true; else leaves no date.
  bool SetDate(int nYear, int nMonth, int nDay);
  // The local date and time of the system clock, to the second.
  void SetToCurrent();
  // The year of the local date: the one a date text without a year falls in.
  static int GetCurrentYear();

  // Reads a date and returns true: numbers in the locale's order or as
  // year-month-day, parted by "/", "-", "." or the locale's separator, or
  // an English month name (or its first three letters) before or after the
  // day; a weekday name is passed over; a missing year is the current one;
  // a year of one or two digits falls in 1930..2029. For text it cannot read
  // it leaves no date and returns false. The time is not touched.
  bool SetDate(const CString& text);
  // Reads a time of day, 24-hour or with AM/PM; for text it cannot read it
  // leaves no time and returns false. The date is not touched.
  bool SetTime(const CString& text);

  // A date of year 1 to 9999; a time within one day.
  bool IsValidDate() const;
  bool IsValidTime() const;
  // Negative when this value is earlier, positive when later, 0 when equal;
  // a part that is not valid counts as missing and sorts first.
  int CompareDate(const DateTime& other) const;
  int CompareTime(const DateTime& other) const;

  bool operator==(const DateTime& other) const { return m_nDate == other.m_nDate && m_nTime == other.m_nTime; }
  bool operator!=(const DateTime& other) const { return !(*this == other); }
  bool operator<(const DateTime& other) const;
  bool operator>(const DateTime& other) const { return other < *this; }

  // The date of value, empty when it has none. bNumbers gives the numeric
  // form (5/1/2011 in the locale's order and separator, the year always in
  // four digits), else the long form (May 1, 2011). bDayOfWeek puts the
  // weekday in front (Sunday, ...), bAbbreviate shortens month and weekday
  // names to three letters, bWithTime appends the time (without seconds)
  // after a blank when value has one.
  static CString ConvertDateToText(const DateTime& value, bool bDayOfWeek, bool bAbbreviate, bool bWithTime,
                                   bool bNumbers);
  // The time of value on the locale's clock, empty when it has none.
  static CString ConvertTimeToText(const DateTime& value, bool bShowSeconds);

  // A duration text to signed seconds: "h:m:s", or "a:b" read as hours and
  // minutes when bShowHours and as minutes and seconds otherwise, or a
  // single number of minutes. A leading "-" makes it negative; parts of 60
  // or more carry over. Text without digits gives 0; the result saturates
  // at the limits of int.
  static int ConvertFromDuration(const CString& text, bool bShowHours);
  // Durations in seconds written as H:MM:SS, H:MM, M:SS and M, with a
  // leading "-" when negative; the forms without seconds round to the
  // nearest minute, half a minute away from zero.
  static CString ConvertToHHMMSS(int nSeconds);
  static CString ConvertToHHMM(int nSeconds);
  static CString ConvertToMMSS(int nSeconds);
  static CString ConvertToMM(int nSeconds);
  // The shortest clock form of a duration: M:SS below an hour, else H:MM:SS.
  static CString ConvertSecondsToText(int nSeconds);

  // Archive form: the date as a 32-bit Julian Day Number, then the time as
  // 32-bit seconds since midnight.
  void Serialize(CArchive& ar);

 private:
  int m_nDate = NO_DATE;
  int m_nTime = NO_TIME;
};

#endif  // UTILITY_DATETIME_H_
