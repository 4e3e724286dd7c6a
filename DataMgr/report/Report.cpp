#include "DataMgr/report/Report.h"

#include <algorithm>
#include <utility>

#include "DataMgr/types/ArchiveExchange.h"
#include "utility/SerializeData.h"

using archive_exchange::Exchange;

namespace {

// Changelog:
//   3: the oldest layout met; a registry ID below 0 stands for registry 0.
//   4: the registry ID is kept as stored.
//   5: the description follows the name.
//   6: the column IDs' counter is 64-bit.
const WORD REPORT_VERSION = 6;
const WORD NEGATIVE_REGISTRY_VERSION = 3;
const WORD FIRST_DESC_VERSION = 5;
const WORD FIRST_NEW_COUNTER_VERSION = 6;

}  // namespace

Report::Report() = default;
Report::Report(const Report& other) = default;
Report& Report::operator=(const Report& other) = default;
Report::~Report() = default;

void Report::RemoveDataPropAtIndex(size_t nIndex) {
  if (nIndex < m_vecDataPropIDs.size())
    m_vecDataPropIDs.erase(m_vecDataPropIDs.begin() + static_cast<std::ptrdiff_t>(nIndex));
}

bool Report::RemoveDataPropID(int nDataPropID) {
  const auto removed = std::remove(m_vecDataPropIDs.begin(), m_vecDataPropIDs.end(), nDataPropID);
  const bool bRemoved = removed != m_vecDataPropIDs.end();
  m_vecDataPropIDs.erase(removed, m_vecDataPropIDs.end());
  return bRemoved;
}

void Report::SwapDataProps(size_t nA, size_t nB) {
  if (nA < m_vecDataPropIDs.size() && nB < m_vecDataPropIDs.size())
    std::swap(m_vecDataPropIDs[nA], m_vecDataPropIDs[nB]);
}

// Layout (version 6, current):
//   WORD       version
//   int        ID
//   int        column registry ID
//   CString    name
//   CString    description        (from version 5)
//   CString    MRU export path
//   SortOrder  the sort order in its own form
//   vector     column IDs, ints (32-bit counter before version 6)
//   filters    DataFilterMgr in its own form
// Older versions than 5 leave the description empty. Versions below 3 are
// read as version 3 without its registry repair, newer ones as version 6.
void Report::Serialize(CArchive& ar) {
  WORD nVersion = REPORT_VERSION;
  Exchange(ar, nVersion);
  Exchange(ar, m_nID);
  Exchange(ar, m_nDataPropMgrID);
  Exchange(ar, m_strName);
  if (ar.IsStoring() || nVersion >= FIRST_DESC_VERSION) {
    Exchange(ar, m_strDesc);
  } else {
    m_strDesc.Empty();
  }
  Exchange(ar, m_strMRUExportPath);
  m_sortOrder.Serialize(ar);
  SerializeData::Serialize(ar, m_vecDataPropIDs, !ar.IsStoring() && nVersion < FIRST_NEW_COUNTER_VERSION);
  m_filters.Serialize(ar);
  if (!ar.IsStoring() && nVersion == NEGATIVE_REGISTRY_VERSION && m_nDataPropMgrID < 0) m_nDataPropMgrID = 0;
}
