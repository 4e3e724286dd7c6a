#include "utility/DateTime.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>

#include "tests/support/ArchiveTestSupport.h"
#include "tests/support/LocaleTestSupport.h"
#include "utility/LocaleUtils.h"

using test_support::ByteWriter;
using test_support::Bytes;
using test_support::Load;

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

DateTime Parsed(const CString& text) {
  DateTime value;
  value.SetDate(text);
  return value;
}

int ParsedTime(const CString& text) {
  DateTime value;
  value.SetTime(text);
  return value.GetSecondsOfDay();
}

bool IsLeap(int nYear) { return (nYear % 4 == 0 && nYear % 100 != 0) || nYear % 400 == 0; }

}  // namespace

TEST_F(DateTimeTest, JulianDaysOfKnownDates) {
  EXPECT_EQ(JulianDay(2000, 1, 1), JAN_1_2000);
  EXPECT_EQ(JulianDay(2011, 5, 1), MAY_1_2011);
  EXPECT_EQ(JulianDay(1, 1, 1), JAN_1_0001);
  EXPECT_EQ(JulianDay(1999, 12, 31) + 1, JAN_1_2000);
  EXPECT_EQ(JulianDay(2011, 1, 31) + 1, JulianDay(2011, 2, 1));
  EXPECT_EQ(JulianDay(2000, 2, 29) + 1, JulianDay(2000, 3, 1));
  EXPECT_EQ(JulianDay(1900, 2, 28) + 1, JulianDay(1900, 3, 1));
  EXPECT_EQ(JulianDay(2004, 2, 28) + 2, JulianDay(2004, 3, 1));
  EXPECT_EQ(JulianDay(1900, 2, 29), DateTime::NO_DATE);
  EXPECT_EQ(JulianDay(2100, 2, 29), DateTime::NO_DATE);
  EXPECT_EQ(JulianDay(2011, 4, 31), DateTime::NO_DATE);
  EXPECT_EQ(JulianDay(0, 12, 31), DateTime::NO_DATE);
  EXPECT_EQ(JulianDay(10000, 1, 1), DateTime::NO_DATE);
}

TEST_F(DateTimeTest, EveryDayFromYearOneToYear9999FollowsTheDayBefore) {
  int nYear = 1;
  int nMonth = 1;
  int nDay = 1;
  const int nDaysInMonth[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (int nJulian = JAN_1_0001; nYear <= 9999; ++nJulian) {
    int y = 0;
    int m = 0;
    int d = 0;
    ASSERT_TRUE(DateTime::FromJulian(nJulian, 0).GetDate(y, m, d)) << nJulian;
    ASSERT_TRUE(y == nYear && m == nMonth && d == nDay) << nJulian << ": " << y << "-" << m << "-" << d;
    const int nLast = nMonth == 2 && IsLeap(nYear) ? 29 : nDaysInMonth[nMonth - 1];
    if (++nDay > nLast) {
      nDay = 1;
      if (++nMonth > 12) {
        nMonth = 1;
        ++nYear;
      }
    }
  }
  EXPECT_FALSE(DateTime::FromJulian(JulianDay(9999, 12, 31) + 1, 0).IsValidDate());
  EXPECT_FALSE(DateTime::FromJulian(JAN_1_0001 - 1, 0).IsValidDate());
}

TEST_F(DateTimeTest, NumericDatesInEveryOrderAndSeparator) {
  for (const char* pszText : {"5/1/2011", "5-1-2011", "5.1.2011", " 05/01/2011 ", "2011-05-01", "2011/5/1", "5/1/11"}) {
    EXPECT_EQ(Parsed(pszText).GetJulianDay(), MAY_1_2011) << pszText;
  }
  LocaleUtils::SetDateOrder(LocaleUtils::DAY_MONTH_YEAR);
  EXPECT_EQ(Parsed("1.5.2011").GetJulianDay(), MAY_1_2011);
  EXPECT_EQ(Parsed("2011-05-01").GetJulianDay(), MAY_1_2011);
  LocaleUtils::SetDateOrder(LocaleUtils::YEAR_MONTH_DAY);
  EXPECT_EQ(Parsed("11/5/1").GetJulianDay(), MAY_1_2011);
  LocaleUtils::SetDateSeparator("x");
  LocaleUtils::SetDateOrder(LocaleUtils::MONTH_DAY_YEAR);
  EXPECT_EQ(Parsed("5x1x2011").GetJulianDay(), MAY_1_2011);
}

TEST_F(DateTimeTest, MonthNamesInEitherOrderWithTheDay) {
  for (const char* pszText : {"May 1, 2011", "1 May 2011", "may 1 2011", "1-MAY-11", "Sunday, May 1, 2011",
                              "Sun, 1 May 2011", "2011 May 1"}) {
    EXPECT_EQ(Parsed(pszText).GetJulianDay(), MAY_1_2011) << pszText;
  }
  EXPECT_EQ(Parsed("Sep 30, 2011").GetJulianDay(), JulianDay(2011, 9, 30));
  EXPECT_EQ(Parsed("September 30, 2011").GetJulianDay(), JulianDay(2011, 9, 30));
}

TEST_F(DateTimeTest, TwoDigitYearsFallIn1930To2029AndLongerYearsAreTakenAsWritten) {
  EXPECT_EQ(Parsed("1/1/29").GetJulianDay(), JulianDay(2029, 1, 1));
  EXPECT_EQ(Parsed("1/1/30").GetJulianDay(), JulianDay(1930, 1, 1));
  EXPECT_EQ(Parsed("1/1/00").GetJulianDay(), JAN_1_2000);
  EXPECT_EQ(Parsed("1/1/0001").GetJulianDay(), JAN_1_0001);
  EXPECT_EQ(Parsed("1/1/100").GetJulianDay(), JulianDay(100, 1, 1));
}

TEST_F(DateTimeTest, AMissingYearIsTheCurrentOne) {
  DateTime now;
  now.SetToCurrent();
  int nYear = 0;
  int nMonth = 0;
  int nDay = 0;
  ASSERT_TRUE(now.GetDate(nYear, nMonth, nDay));
  EXPECT_EQ(Parsed("5/1").GetJulianDay(), JulianDay(nYear, 5, 1));
  EXPECT_EQ(Parsed("May 1").GetJulianDay(), JulianDay(nYear, 5, 1));
}

TEST_F(DateTimeTest, UnreadableOrImpossibleDatesLeaveNoDateButKeepTheTime) {
  for (const char* pszText : {"2/30/2011", "2/29/1900", "13/1/2011", "0/1/2011", "hello", "", "5/1/2011 x",
                              "May June 1 2011", "5/1/2/2011", "5/1/20111", "May 2011", "5?1?2011"}) {
    DateTime value = DateTime::FromJulian(MAY_1_2011, 3600);
    EXPECT_FALSE(value.SetDate(pszText)) << pszText;
    EXPECT_EQ(value.GetJulianDay(), DateTime::NO_DATE) << pszText;
    EXPECT_EQ(value.GetSecondsOfDay(), 3600);
  }
}

TEST_F(DateTimeTest, DatesAsText) {
  const DateTime value(2011, 5, 1, 13, 5, 9);
  EXPECT_EQ(DateTime::ConvertDateToText(value, false, false, false, true), "5/1/2011");
  EXPECT_EQ(DateTime::ConvertDateToText(value, false, false, false, false), "May 1, 2011");
  EXPECT_EQ(DateTime::ConvertDateToText(value, true, false, false, false), "Sunday, May 1, 2011");
  EXPECT_EQ(DateTime::ConvertDateToText(DateTime(2011, 9, 3), true, true, false, false), "Sat, Sep 3, 2011");
  EXPECT_EQ(DateTime::ConvertDateToText(value, false, false, true, true), "5/1/2011 1:05 PM");
  EXPECT_EQ(DateTime::ConvertDateToText(DateTime(2011, 5, 1), false, false, true, true), "5/1/2011");
  EXPECT_EQ(DateTime::ConvertDateToText(DateTime(1, 2, 3), false, false, false, true), "2/3/0001");
  EXPECT_EQ(DateTime::ConvertDateToText(DateTime(), false, false, false, true), "");
  EXPECT_EQ(DateTime::ConvertDateToText(DateTime::FromJulian(-7, 0), true, false, false, false), "");

  LocaleUtils::SetDateOrder(LocaleUtils::DAY_MONTH_YEAR);
  LocaleUtils::SetDateSeparator(".");
  EXPECT_EQ(DateTime::ConvertDateToText(value, false, false, false, true), "1.5.2011");
  EXPECT_EQ(DateTime::ConvertDateToText(value, false, false, false, false), "1 May 2011");
  LocaleUtils::SetDateOrder(LocaleUtils::YEAR_MONTH_DAY);
  LocaleUtils::SetDateSeparator("-");
  EXPECT_EQ(DateTime::ConvertDateToText(value, false, false, false, true), "2011-05-01");
  EXPECT_EQ(DateTime::ConvertDateToText(value, false, true, false, false), "2011 May 1");
}

TEST_F(DateTimeTest, DatesFromYearOneTo9999RoundTripThroughTextInEveryOrder) {
  const LocaleUtils::DateOrder orders[] = {LocaleUtils::MONTH_DAY_YEAR, LocaleUtils::DAY_MONTH_YEAR,
                                           LocaleUtils::YEAR_MONTH_DAY};
  for (LocaleUtils::DateOrder nOrder : orders) {
    LocaleUtils::SetDateOrder(nOrder);
    for (int nJulian = JAN_1_0001; nJulian <= JulianDay(9999, 12, 31); nJulian += 997) {
      const DateTime value = DateTime::FromJulian(nJulian, DateTime::NO_TIME);
      for (int nForm = 0; nForm < 4; ++nForm) {
        const CString text = DateTime::ConvertDateToText(value, nForm == 1, nForm == 2, false, nForm < 2);
        EXPECT_EQ(Parsed(text).GetJulianDay(), nJulian) << text;
      }
    }
  }
}

TEST_F(DateTimeTest, TimesIn24HourAndAmPmForms) {
  EXPECT_EQ(ParsedTime("13:05"), 47100);
  EXPECT_EQ(ParsedTime("1:05 PM"), 47100);
  EXPECT_EQ(ParsedTime("1:05:09pm"), 47109);
  EXPECT_EQ(ParsedTime("9:05 a"), 32700);
  EXPECT_EQ(ParsedTime("12:00 AM"), 0);
  EXPECT_EQ(ParsedTime("12:30 PM"), 45000);
  EXPECT_EQ(ParsedTime("3 PM"), 54000);
  EXPECT_EQ(ParsedTime(" 23:59:59 "), 86399);
  for (const char* pszText : {"24:00", "13:05 PM", "0:30 AM", "10:60", "10:00:60", "abc", "", "14", "10 30",
                              "10:", "10:30:00:00", "10:30 x", "100:00"}) {
    DateTime value = DateTime::FromJulian(MAY_1_2011, 3600);
    EXPECT_FALSE(value.SetTime(pszText)) << pszText;
    EXPECT_EQ(value.GetSecondsOfDay(), DateTime::NO_TIME) << pszText;
    EXPECT_EQ(value.GetJulianDay(), MAY_1_2011);
  }
  LocaleUtils::SetTimeSeparator(".");
  EXPECT_EQ(ParsedTime("13.05"), 47100);
}

TEST_F(DateTimeTest, TimesAsTextOnBothClocks) {
  EXPECT_EQ(DateTime::ConvertTimeToText(DateTime::FromJulian(0, 47109), false), "1:05 PM");
  EXPECT_EQ(DateTime::ConvertTimeToText(DateTime::FromJulian(0, 47109), true), "1:05:09 PM");
  EXPECT_EQ(DateTime::ConvertTimeToText(DateTime::FromJulian(0, 0), false), "12:00 AM");
  EXPECT_EQ(DateTime::ConvertTimeToText(DateTime::FromJulian(0, 43200), false), "12:00 PM");
  EXPECT_EQ(DateTime::ConvertTimeToText(DateTime(), true), "");
  EXPECT_EQ(DateTime::ConvertTimeToText(DateTime::FromJulian(0, 86400), true), "");
  LocaleUtils::SetUse24HourClock(true);
  LocaleUtils::SetTimeSeparator(".");
  EXPECT_EQ(DateTime::ConvertTimeToText(DateTime::FromJulian(0, 32700), false), "09.05");
  EXPECT_EQ(DateTime::ConvertTimeToText(DateTime::FromJulian(0, 47109), true), "13.05.09");

  for (bool b24Hours : {false, true}) {
    LocaleUtils::SetUse24HourClock(b24Hours);
    for (int nSeconds = 0; nSeconds < DateTime::SECONDS_PER_DAY; nSeconds += 61) {
      EXPECT_EQ(ParsedTime(DateTime::ConvertTimeToText(DateTime::FromJulian(0, nSeconds), true)), nSeconds);
    }
  }
}

TEST_F(DateTimeTest, CompareDateAndTimeSortMissingPartsFirst) {
  const DateTime early(2010, 1, 1, 8, 0, 0);
  const DateTime late(2011, 5, 1, 7, 0, 0);
  EXPECT_LT(early.CompareDate(late), 0);
  EXPECT_GT(late.CompareDate(early), 0);
  EXPECT_EQ(late.CompareDate(DateTime(2011, 5, 1)), 0);
  EXPECT_GT(early.CompareTime(late), 0);
  EXPECT_EQ(early.CompareTime(early), 0);
  EXPECT_LT(DateTime().CompareDate(early), 0);
  EXPECT_GT(early.CompareDate(DateTime::FromJulian(-5, 0)), 0);
  EXPECT_EQ(DateTime().CompareDate(DateTime::FromJulian(-5, 0)), 0);
  EXPECT_LT(DateTime().CompareTime(DateTime::FromJulian(0, 0)), 0);
  EXPECT_EQ(DateTime().CompareTime(DateTime::FromJulian(0, 90000)), 0);

  EXPECT_TRUE(early < late);
  EXPECT_TRUE(late > early);
  EXPECT_TRUE(DateTime(2011, 5, 1) < late);
  EXPECT_TRUE(early != late);
  EXPECT_TRUE(DateTime() == DateTime::FromJulian(DateTime::NO_DATE, DateTime::NO_TIME));
}

TEST_F(DateTimeTest, DurationsRead) {
  EXPECT_EQ(DateTime::ConvertFromDuration("1:30", true), 5400);
  EXPECT_EQ(DateTime::ConvertFromDuration("1:30", false), 90);
  EXPECT_EQ(DateTime::ConvertFromDuration("1:02:03", false), 3723);
  EXPECT_EQ(DateTime::ConvertFromDuration("1:02:03", true), 3723);
  EXPECT_EQ(DateTime::ConvertFromDuration("-0:05", true), -300);
  EXPECT_EQ(DateTime::ConvertFromDuration("-0:05", false), -5);
  EXPECT_EQ(DateTime::ConvertFromDuration("1:75", true), 8100);
  EXPECT_EQ(DateTime::ConvertFromDuration("0:90", false), 90);
  EXPECT_EQ(DateTime::ConvertFromDuration("25:00:00", false), 90000);
  EXPECT_EQ(DateTime::ConvertFromDuration(" 45 ", true), 2700);
  EXPECT_EQ(DateTime::ConvertFromDuration(":30", false), 30);
  EXPECT_EQ(DateTime::ConvertFromDuration("1:30 h", true), 5400);
  EXPECT_EQ(DateTime::ConvertFromDuration("abc", true), 0);
  EXPECT_EQ(DateTime::ConvertFromDuration("", false), 0);
  EXPECT_EQ(DateTime::ConvertFromDuration("999999999:00:00", false), INT_MAX);
  EXPECT_EQ(DateTime::ConvertFromDuration("-99999999999999999999:00:00", false), INT_MIN);
  LocaleUtils::SetTimeSeparator(".");
  EXPECT_EQ(DateTime::ConvertFromDuration("1.30", true), 5400);
}

TEST_F(DateTimeTest, DurationsWritten) {
  EXPECT_EQ(DateTime::ConvertToHHMMSS(3723), "1:02:03");
  EXPECT_EQ(DateTime::ConvertToHHMMSS(-5), "-0:00:05");
  EXPECT_EQ(DateTime::ConvertToHHMMSS(90000), "25:00:00");
  EXPECT_EQ(DateTime::ConvertToHHMM(5400), "1:30");
  EXPECT_EQ(DateTime::ConvertToHHMM(89), "0:01");
  EXPECT_EQ(DateTime::ConvertToHHMM(90), "0:02");
  EXPECT_EQ(DateTime::ConvertToHHMM(-300), "-0:05");
  EXPECT_EQ(DateTime::ConvertToHHMM(-29), "0:00");
  EXPECT_EQ(DateTime::ConvertToMMSS(3723), "62:03");
  EXPECT_EQ(DateTime::ConvertToMMSS(-5), "-0:05");
  EXPECT_EQ(DateTime::ConvertToMM(150), "3");
  EXPECT_EQ(DateTime::ConvertToMM(-149), "-2");
  EXPECT_EQ(DateTime::ConvertSecondsToText(45), "0:45");
  EXPECT_EQ(DateTime::ConvertSecondsToText(-3723), "-1:02:03");
  EXPECT_EQ(DateTime::ConvertToHHMMSS(INT_MIN), "-596523:14:08");
  LocaleUtils::SetTimeSeparator(".");
  EXPECT_EQ(DateTime::ConvertToHHMMSS(3723), "1.02.03");
}

TEST_F(DateTimeTest, DurationsRoundTripThroughTheirForms) {
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
}

TEST_F(DateTimeTest, ArchiveFormIsTheJulianDayThenTheSeconds) {
  for (const DateTime& value : {DateTime(2011, 5, 1, 1, 0, 0), DateTime(1, 1, 1, 0, 0, 0), DateTime(9999, 12, 31),
                                DateTime()}) {
    DateTime copy = value;
    test_support::ExpectArchiveForm(copy, ByteWriter().Int(value.GetJulianDay()).Int(value.GetSecondsOfDay()).Get(),
                                    [&](const DateTime& loaded) { EXPECT_TRUE(loaded == value); });
  }
  const Bytes fixture = ByteWriter().Int(MAY_1_2011).Int(3600).Get();
  DateTime loaded;
  Load(fixture, [&](CArchive& ar) { loaded.Serialize(ar); });
  EXPECT_EQ(DateTime::ConvertDateToText(loaded, false, false, true, true), "5/1/2011 1:00 AM");
}
