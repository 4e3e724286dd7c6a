#ifndef UTILITY_DATETIME_H_
#define UTILITY_DATETIME_H_

#include "framework/CArchive.h"
#include "utility/UtilityExport.h"

// A calendar date and a time of day, each of which may be missing: the date
// as a Julian Day Number (NO_DATE when there is none) and the time as seconds
// since midnight (NO_TIME when there is none). A default value has neither.
// Ordering is by date, then by time; a missing part sorts before any present
// one.
class VAXO009_API DateTime {
 public:
  static constexpr int NO_DATE = 0;
  static constexpr int NO_TIME = -1;

  DateTime() = default;
  static DateTime FromJulian(int nJulianDay, int nSecondsOfDay);

  int GetJulianDay() const { return m_nDate; }
  int GetSecondsOfDay() const { return m_nTime; }
  void SetJulianDay(int nJulianDay) { m_nDate = nJulianDay; }
  void SetSecondsOfDay(int nSecondsOfDay) { m_nTime = nSecondsOfDay; }

  bool operator==(const DateTime& other) const { return m_nDate == other.m_nDate && m_nTime == other.m_nTime; }
  bool operator!=(const DateTime& other) const { return !(*this == other); }
  bool operator<(const DateTime& other) const;
  bool operator>(const DateTime& other) const { return other < *this; }

  // Archive form: the date as a 32-bit Julian Day Number, then the time as
  // 32-bit seconds since midnight.
  void Serialize(CArchive& ar);

 private:
  int m_nDate = NO_DATE;
  int m_nTime = NO_TIME;
};

#endif  // UTILITY_DATETIME_H_
