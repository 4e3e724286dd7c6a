#include "utility/DateTime.h"

DateTime DateTime::FromJulian(int nJulianDay, int nSecondsOfDay) {
  DateTime value;
  value.m_nDate = nJulianDay;
  value.m_nTime = nSecondsOfDay;
  return value;
}

bool DateTime::operator<(const DateTime& other) const {
  if (m_nDate != other.m_nDate) return m_nDate < other.m_nDate;
  return m_nTime < other.m_nTime;
}

void DateTime::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << m_nDate << m_nTime;
  } else {
    ar >> m_nDate >> m_nTime;
  }
}
