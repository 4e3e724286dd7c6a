#include "DataMgr/document/DataFind.h"

#include "DataMgr/types/ArchiveExchange.h"

namespace {

// Changelog:
//   1: ID, item, sub-item, column and start index.
//   2: the line count and the file path after them.
const WORD DATAFIND_VERSION = 2;

}  // namespace

bool DataFind::operator==(const DataFind& other) const {
  return m_nDataItemID == other.m_nDataItemID && m_nDataSubItemID == other.m_nDataSubItemID &&
         m_nDataPropID == other.m_nDataPropID && m_nStartIndex == other.m_nStartIndex &&
         m_nReplacedLength == other.m_nReplacedLength && m_nLineCount == other.m_nLineCount &&
         m_strFilePath == other.m_strFilePath;
}

// Layout (version 2, current):
//   WORD  version
//   int   ID
//   int   item ID
//   int   sub-item ID
//   int   column ID
//   int   start index
//   int   line count   (version 2)
//   text  file path    (version 2)
// The replaced length is never stored. Loading starts from a fresh hit, so
// the replaced length, and the line count and path of a version-1 hit, read
// -1, -1 and empty whatever the hit held before.
void DataFind::Serialize(CArchive& ar) {
  if (!ar.IsStoring()) *this = DataFind();
  WORD nVersion = DATAFIND_VERSION;
  archive_exchange::Exchange(ar, nVersion);
  archive_exchange::Exchange(ar, m_nID);
  archive_exchange::Exchange(ar, m_nDataItemID);
  archive_exchange::Exchange(ar, m_nDataSubItemID);
  archive_exchange::Exchange(ar, m_nDataPropID);
  archive_exchange::Exchange(ar, m_nStartIndex);
  if (nVersion >= 2) {
    archive_exchange::Exchange(ar, m_nLineCount);
    archive_exchange::Exchange(ar, m_strFilePath);
  }
}
