#include "utility/DateTime.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>

#include "tests/support/LocaleTestSupport.h"
#include "tests/support/TableTestSupport.h"
#include "utility/LocaleUtils.h"

using test_support::ExpectEach;
using test_support::ExpectRows;

namespace {

using DateTimeTest = test_support::UsLocaleTest;

// Julian Day Numbers worked out by hand: 1 January 2000 is day 2451545;
// from there to 1 May 2011 are 11 years with three leap days (4018 days)
// and 120 days of 2011; 1 January of year 1 lies 1999 * 365 + 484 leap days
// earlier.
const int JAN_1_2000 = 2451545;
const int MAY_1_2011 = 2455683;
const int JAN_1_0001 = 1721426;

int JulianDay(int nYear, int nMonth, int nDay) { return DateTime(nYear, nMonth, nDay).GetJulianDay(); }

int ParsedDate(const char* pszText) {
  DateTime value;
  value.SetDate(pszText);
  return value.GetJulianDay();
}

int ParsedTime(const CString& text) {
  DateTime value;
  value.SetTime(text);
  return value.GetSecondsOfDay();
}

CString DateText(const DateTime& value, bool bDayOfWeek, bool bAbbreviate, bool bWithTime, bool bNumeric) {
  return DateTime::ConvertDateToText(value, bDayOfWeek, bAbbreviate, bWithTime, bNumeric);
}

bool IsLeap(int nYear) { return (nYear % 4 == 0 && nYear % 100 != 0) || nYear % 400 == 0; }

}  // namespace

// Every day from 1 January of year 1 follows the day before, both ways
// between dates and day numbers; nothing lies outside years 1 to 9999.
TEST_F(DateTimeTest, EveryDayFromYearOneToYear9999) {
  EXPECT_EQ(JulianDay(2000, 1, 1), JAN_1_2000);
  EXPECT_EQ(JulianDay(2011, 5, 1), MAY_1_2011);
  const int nDaysInMonth[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int nYear = 1, nMonth = 1, nDay = 1;
  for (int nJulian = JAN_1_0001; nYear <= 9999; ++nJulian) {
    int y = 0, m = 0, d = 0;
    ASSERT_TRUE(DateTime::FromJulian(nJulian, 0).GetDate(y, m, d)) << nJulian;
    ASSERT_TRUE(y == nYear && m == nMonth && d == nDay) << nJulian << ": " << y << "-" << m << "-" << d;
    ASSERT_EQ(JulianDay(y, m, d), nJulian);
    if (++nDay > (nMonth == 2 && IsLeap(nYear) ? 29 : nDaysInMonth[nMonth - 1])) {
      nDay = 1;
      if (++nMonth > 12) nMonth = 1, ++nYear;
    }
  }
  EXPECT_FALSE(DateTime::FromJulian(JulianDay(9999, 12, 31) + 1, 0).IsValidDate());
  EXPECT_FALSE(DateTime::FromJulian(JAN_1_0001 - 1, 0).IsValidDate());
  for (const DateTime& bad : {DateTime(1900, 2, 29), DateTime(2011, 4, 31), DateTime(0, 12, 31), DateTime(10000, 1, 1)}) {
    EXPECT_EQ(bad.GetJulianDay(), DateTime::NO_DATE);
  }
}

TEST_F(DateTimeTest, DatesReadInEveryFormTheLocaleAllows) {
  ExpectEach(ParsedDate, {"5/1/2011", "5-1-2011", "5.1.2011", " 05/01/2011 ", "2011-05-01", "2011/5/1", "5/1/11",
                          "May 1, 2011", "1 May 2011", "may 1 2011", "1-MAY-11", "Sunday, May 1, 2011",
                          "Sun, 1 May 2011", "2011 May 1"}, MAY_1_2011);
  ExpectRows<int>(ParsedDate, {{"September 30, 2011", JulianDay(2011, 9, 30)},
                               {"1/1/29", JulianDay(2029, 1, 1)},  // two-digit years fall in 1930 to 2029
                               {"1/1/30", JulianDay(1930, 1, 1)},
                               {"1/1/00", JAN_1_2000},
                               {"1/1/0001", JAN_1_0001},  // longer years are taken as written
                               {"1/1/100", JulianDay(100, 1, 1)}});
  DateTime now;  // a missing year is the current one
  now.SetToCurrent();
  int nYear = 0, nMonth = 0, nDay = 0;
  ASSERT_TRUE(now.GetDate(nYear, nMonth, nDay));
  ExpectEach(ParsedDate, {"5/1", "May 1"}, JulianDay(nYear, 5, 1));
  LocaleUtils::SetDateOrder(LocaleUtils::DAY_MONTH_YEAR);
  ExpectEach(ParsedDate, {"1.5.2011", "2011-05-01"}, MAY_1_2011);
  LocaleUtils::SetDateOrder(LocaleUtils::YEAR_MONTH_DAY);
  LocaleUtils::SetDateSeparator("x");
  ExpectEach(ParsedDate, {"11/5/1", "11x5x1"}, MAY_1_2011);
}

TEST_F(DateTimeTest, UnreadableOrImpossibleDatesAndTimesLeaveTheOtherPart) {
  for (const char* pszText : {"2/30/2011", "2/29/1900", "13/1/2011", "0/1/2011", "hello", "", "5/1/2011 x",
                              "May June 1 2011", "5/1/2/2011", "5/1/20111", "May 2011", "5?1?2011"}) {
    DateTime value = DateTime::FromJulian(MAY_1_2011, 3600);
    EXPECT_FALSE(value.SetDate(pszText)) << pszText;
    EXPECT_EQ(value.GetJulianDay(), DateTime::NO_DATE) << pszText;
    EXPECT_EQ(value.GetSecondsOfDay(), 3600) << pszText;
  }
  for (const char* pszText : {"24:00", "13:05 PM", "0:30 AM", "10:60", "10:00:60", "abc", "", "14", "10 30", "10:",
                              "10:30:00:00", "10:30 x", "100:00"}) {
    DateTime value = DateTime::FromJulian(MAY_1_2011, 3600);
    EXPECT_FALSE(value.SetTime(pszText)) << pszText;
    EXPECT_EQ(value.GetSecondsOfDay(), DateTime::NO_TIME) << pszText;
    EXPECT_EQ(value.GetJulianDay(), MAY_1_2011) << pszText;
  }
}

TEST_F(DateTimeTest, DatesAsText) {
  const DateTime value(2011, 5, 1, 13, 5, 9);
  EXPECT_EQ(DateText(value, false, false, false, false), "May 1, 2011");
  EXPECT_EQ(DateText(DateTime(2011, 9, 3), true, true, false, false), "Sat, Sep 3, 2011");
  EXPECT_EQ(DateText(value, false, false, true, true), "5/1/2011 1:05 PM");
  EXPECT_EQ(DateText(DateTime(1, 2, 3), false, false, true, true), "2/3/0001");
  EXPECT_EQ(DateText(DateTime(), false, false, false, true), "");
  LocaleUtils::SetDateOrder(LocaleUtils::DAY_MONTH_YEAR);
  LocaleUtils::SetDateSeparator(".");
  EXPECT_EQ(DateText(value, false, false, false, true), "1.5.2011");
  EXPECT_EQ(DateText(value, true, false, false, false), "Sunday, 1 May 2011");
  LocaleUtils::SetDateOrder(LocaleUtils::YEAR_MONTH_DAY);
  LocaleUtils::SetDateSeparator("-");
  EXPECT_EQ(DateText(value, false, false, false, true), "2011-05-01");
  EXPECT_EQ(DateText(value, false, true, false, false), "2011 May 1");
}

TEST_F(DateTimeTest, DatesAndTimesRoundTripThroughText) {
  for (LocaleUtils::DateOrder nOrder :
       {LocaleUtils::MONTH_DAY_YEAR, LocaleUtils::DAY_MONTH_YEAR, LocaleUtils::YEAR_MONTH_DAY}) {
    LocaleUtils::SetDateOrder(nOrder);
    for (int nJulian = JAN_1_0001; nJulian <= JulianDay(9999, 12, 31); nJulian += 997) {
      const DateTime value = DateTime::FromJulian(nJulian, DateTime::NO_TIME);
      for (int nForm = 0; nForm < 4; ++nForm) {
        const CString text = DateText(value, nForm == 1, nForm == 2, false, nForm < 2);
        EXPECT_EQ(ParsedDate(text), nJulian) << text;
      }
    }
  }
  for (bool b24Hours : {false, true}) {
    LocaleUtils::SetUse24HourClock(b24Hours);
    for (int nSeconds = 0; nSeconds < DateTime::SECONDS_PER_DAY; nSeconds += 61) {
      EXPECT_EQ(ParsedTime(DateTime::ConvertTimeToText(DateTime::FromJulian(0, nSeconds), true)), nSeconds);
    }
  }
}

TEST_F(DateTimeTest, TimesInBothClocks) {
  ExpectRows<int>(ParsedTime, {{"13:05", 47100}, {"1:05:09pm", 47109}, {"9:05 a", 32700}, {"12:00 AM", 0},
                               {"12:30 PM", 45000}, {"3 PM", 54000}, {" 23:59:59 ", 86399}});
  const auto text = [](int nSeconds, bool bShowSeconds) {
    return DateTime::ConvertTimeToText(DateTime::FromJulian(0, nSeconds), bShowSeconds);
  };
  EXPECT_EQ(text(47109, false), "1:05 PM");
  EXPECT_EQ(text(47109, true), "1:05:09 PM");
  EXPECT_EQ(text(0, false), "12:00 AM");
  EXPECT_EQ(text(43200, false), "12:00 PM");
  EXPECT_EQ(DateTime::ConvertTimeToText(DateTime(), true), "");
  LocaleUtils::SetUse24HourClock(true);
  LocaleUtils::SetTimeSeparator(".");
  EXPECT_EQ(text(32700, false), "09.05");
  EXPECT_EQ(text(47109, true), "13.05.09");
  EXPECT_EQ(ParsedTime("13.05"), 47100);
}

TEST_F(DateTimeTest, CompareDateAndTimeSortMissingPartsFirst) {
  const DateTime early(2010, 1, 1, 8, 0, 0);
  const DateTime late(2011, 5, 1, 7, 0, 0);
  const DateTime noDate = DateTime::FromJulian(-5, 0);
  EXPECT_TRUE(early.CompareDate(late) < 0 && late.CompareDate(early) > 0 && late.CompareDate(DateTime(2011, 5, 1)) == 0);
  EXPECT_TRUE(early.CompareTime(late) > 0 && DateTime().CompareDate(early) < 0 && DateTime().CompareDate(noDate) == 0);
  EXPECT_LT(DateTime().CompareTime(DateTime::FromJulian(0, 0)), 0);
  EXPECT_EQ(DateTime().CompareTime(DateTime::FromJulian(0, 90000)), 0);
  EXPECT_TRUE(early < late && late > early && early != late && DateTime(2011, 5, 1) < late);
  EXPECT_TRUE(DateTime() == DateTime::FromJulian(DateTime::NO_DATE, DateTime::NO_TIME));
}

TEST_F(DateTimeTest, DurationsRead) {
  ExpectRows<int>([](const char* p) { return DateTime::ConvertFromDuration(p, true); },
                  {{"1:30", 5400}, {"1:02:03", 3723}, {"-0:05", -300}, {"1:75", 8100}, {" 45 ", 2700},
                   {"1:30 h", 5400}, {"abc", 0}});
  ExpectRows<int>([](const char* p) { return DateTime::ConvertFromDuration(p, false); },
                  {{"1:30", 90}, {"1:02:03", 3723}, {"-0:05", -5}, {"0:90", 90}, {":30", 30}, {"", 0},
                   {"999999999:00:00", INT_MAX}, {"-99999999999999999999:00:00", INT_MIN}});
  LocaleUtils::SetTimeSeparator(".");
  EXPECT_EQ(DateTime::ConvertFromDuration("1.30", true), 5400);
}

TEST_F(DateTimeTest, DurationsWrittenAndReadBack) {
  EXPECT_EQ(DateTime::ConvertToHHMMSS(90000), "25:00:00");
  EXPECT_EQ(DateTime::ConvertToHHMM(89), "0:01");
  EXPECT_EQ(DateTime::ConvertToHHMM(-29), "0:00");
  EXPECT_EQ(DateTime::ConvertToMMSS(3723), "62:03");
  EXPECT_EQ(DateTime::ConvertToMM(-149), "-2");
  EXPECT_EQ(DateTime::ConvertSecondsToText(45), "0:45");
  EXPECT_EQ(DateTime::ConvertSecondsToText(-3723), "-1:02:03");
  EXPECT_EQ(DateTime::ConvertToHHMMSS(INT_MIN), "-596523:14:08");
  const auto rounded = [](int n) {
    const long long nMagnitude = std::llabs(static_cast<long long>(n));
    return static_cast<int>((n < 0 ? -1 : 1) * ((nMagnitude + 30) / 60 * 60));
  };
  for (int nSeconds : {0, 1, 29, 30, 59, 60, 3599, 3600, 86399, 90061, INT_MAX, INT_MIN + 30}) {
    for (int nSigned : {nSeconds, -nSeconds}) {
      SCOPED_TRACE(nSigned);
      EXPECT_EQ(DateTime::ConvertFromDuration(DateTime::ConvertToHHMMSS(nSigned), true), nSigned);
      EXPECT_EQ(DateTime::ConvertFromDuration(DateTime::ConvertToMMSS(nSigned), false), nSigned);
      EXPECT_EQ(DateTime::ConvertFromDuration(DateTime::ConvertSecondsToText(nSigned), false), nSigned);
      EXPECT_EQ(DateTime::ConvertFromDuration(DateTime::ConvertToHHMM(nSigned), true), rounded(nSigned));
      EXPECT_EQ(DateTime::ConvertFromDuration(DateTime::ConvertToMM(nSigned), false), rounded(nSigned));
    }
  }
  LocaleUtils::SetTimeSeparator(".");
  EXPECT_EQ(DateTime::ConvertToHHMMSS(3723), "1.02.03");
}
