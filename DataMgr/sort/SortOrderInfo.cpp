#include "DataMgr/sort/SortOrderInfo.h"

#include "DataMgr/types/ArchiveExchange.h"
#include "utility/SerializeData.h"

using archive_exchange::Exchange;

namespace {

const WORD SORTORDERINFO_VERSION = 1;

}  // namespace

// Layout (version 1, current):
//   WORD  version
//   bool  ascending
//   bool  case-sensitive
//   int   column ID
// Changelog:
//   1: first version.
// Loading reads the version word and ignores it: every version so far has
// this layout, and a newer one is read with it.
void SortOrderInfo::Serialize(CArchive& ar) {
  WORD nVersion = SORTORDERINFO_VERSION;
  Exchange(ar, nVersion);
  SerializeData::Serialize(ar, m_bAscending);
  SerializeData::Serialize(ar, m_bCaseSensitive);
  Exchange(ar, m_nDataPropID);
}
