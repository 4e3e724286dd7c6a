#include "DataMgr/report/WebReportLevel.h"

#include "DataMgr/types/ArchiveExchange.h"
#include "utility/FileUtils.h"
#include "utility/SerializeData.h"
#include "utility/TextArray.h"

using archive_exchange::Exchange;

namespace {

// Changelog:
//   1: the sort order inline, in an older form of its own.
//   2: the sort order in SortOrder's form.
const WORD WEBREPORTLEVEL_VERSION = 2;
const WORD INLINE_SORT_ORDER_VERSION = 1;
// The bytes of one inline key: a skipped word, the ascending word, the
// column ID.
const size_t INLINE_KEY_BYTES = 2 + 2 + 4;

}  // namespace

bool WebReportLevel::LoadHTMLTemplate(const CString& dir) {
  const CString path = dir + m_strTemplateFile;
  if (!FileUtils::DoesFileExist(path)) return false;
  TextArray lines;
  const bool bRead = FileUtils::ReadFileContent(path, lines, false, nullptr);
  m_strTemplateFileContent.Empty();
  for (const CString& line : lines) {
    m_strTemplateFileContent += line;
    m_strTemplateFileContent += "\r\n";
  }
  return bRead;
}

// Layout (version 2, current):
//   WORD       version
//   CString    template file name
//   SortOrder  the sort order in its own form
// Version 1 holds the sort order inline instead: a WORD (skipped), int ID,
// CString name, int key count, then per key a WORD (skipped), a WORD
// ascending flag (1 is ascending) and an int column ID; its keys are not
// case-sensitive. Every version other than 1 is read as version 2.
void WebReportLevel::Serialize(CArchive& ar) {
  WORD nVersion = WEBREPORTLEVEL_VERSION;
  Exchange(ar, nVersion);
  Exchange(ar, m_strTemplateFile);
  if (!ar.IsStoring() && nVersion == INLINE_SORT_ORDER_VERSION) {
    LoadInlineSortOrder(ar);
  } else {
    m_sortOrder.Serialize(ar);
  }
}

// A key count below 0 is read as no key.
void WebReportLevel::LoadInlineSortOrder(CArchive& ar) {
  WORD nSkipped = 0;
  int nID = -1;
  CString name;
  int nCount = 0;
  ar >> nSkipped >> nID >> name >> nCount;
  m_sortOrder = SortOrder();
  m_sortOrder.SetID(nID);
  m_sortOrder.SetName(name);
  const size_t nKeys = nCount > 0 ? static_cast<size_t>(nCount) : 0;
  SerializeData::CheckLoopCounter(ar, nKeys, INLINE_KEY_BYTES);
  for (size_t i = 0; i < nKeys; ++i) {
    WORD nAscending = 0;
    int nDataPropID = -1;
    ar >> nSkipped >> nAscending >> nDataPropID;
    m_sortOrder.AddDataPropID(nDataPropID, nAscending == 1, false);
  }
}
