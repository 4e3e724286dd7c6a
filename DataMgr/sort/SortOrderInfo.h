#ifndef DATAMGR_SORT_SORTORDERINFO_H_
#define DATAMGR_SORT_SORTORDERINFO_H_

#include "DataMgr/Export.h"
#include "framework/CArchive.h"

// One sort key: the column sorted by, the direction and whether its texts
// (and the folder parts of its paths) compare case-sensitively. A plain
// value owned by the SortOrder that lists it; it refers to its column by ID
// only and never checks that the column exists.
struct VAXO057_API SortOrderInfo {
  SortOrderInfo() = default;
  SortOrderInfo(int nDataPropID, bool bAscending, bool bCaseSensitive)
      : m_nDataPropID(nDataPropID), m_bAscending(bAscending), m_bCaseSensitive(bCaseSensitive) {}

  bool operator==(const SortOrderInfo& other) const {
    return m_nDataPropID == other.m_nDataPropID && m_bAscending == other.m_bAscending &&
           m_bCaseSensitive == other.m_bCaseSensitive;
  }
  bool operator!=(const SortOrderInfo& other) const { return !(*this == other); }

  // See the layout above the definition; version 1 is current.
  void Serialize(CArchive& ar);

  int m_nDataPropID = -1;
  bool m_bAscending = true;
  bool m_bCaseSensitive = false;
};

#endif  // DATAMGR_SORT_SORTORDERINFO_H_
