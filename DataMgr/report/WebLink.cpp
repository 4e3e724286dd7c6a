#include "DataMgr/report/WebLink.h"

#include "DataMgr/types/ArchiveExchange.h"
#include "DataMgr/types/NextIDMgr.h"

using archive_exchange::Exchange;

namespace {

// Changelog:
//   1: the first version.
const WORD WEBLINK_VERSION = 1;

}  // namespace

int WebLink::m_nNextUniqueID = 1;

int WebLink::GetNextUniqueID() {
  const int nID = m_nNextUniqueID;
  m_nNextUniqueID = NextIDMgr::IDAfter(nID);
  return nID;
}

void WebLink::Serialize(CArchive& ar) {
  WORD nVersion = WEBLINK_VERSION;
  Exchange(ar, nVersion);
  Exchange(ar, m_strName);
  Exchange(ar, m_strURL);
  if (!ar.IsStoring()) m_nUniqueID = GetNextUniqueID();
}
