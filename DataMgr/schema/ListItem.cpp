#include "DataMgr/schema/ListItem.h"

#include <climits>

namespace {

// Changelog of the ListItem part:
//   1: ID only.
//   2: usage count after the ID.
const WORD LISTITEM_VERSION = 2;

// Every subclass part is at version 1 and its version is never consulted.
const WORD LISTITEM_PART_VERSION = 1;

}  // namespace

// A count read from a damaged archive may be at either end of int's range.
void ListItem::RegisterUsage() {
  if (m_nUsageCount < INT_MAX) ++m_nUsageCount;
}

void ListItem::UnregisterUsage() { m_nUsageCount = m_nUsageCount > 0 ? m_nUsageCount - 1 : 0; }

// Layout (version 2, current):
//   WORD version
//   int  ID
//   int  usage count     (version >= 2; a version-1 record keeps the count)
void ListItem::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << LISTITEM_VERSION;
    ar << m_nID;
    ar << m_nUsageCount;
    return;
  }
  WORD nVersion = 0;
  ar >> nVersion;
  ar >> m_nID;
  if (nVersion >= 2) ar >> m_nUsageCount;
}

void ListItem::SerializePartVersion(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << LISTITEM_PART_VERSION;
  } else {
    WORD nVersion = 0;
    ar >> nVersion;
  }
}
