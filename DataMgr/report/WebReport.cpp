#include "DataMgr/report/WebReport.h"

#include <set>

#include "DataMgr/types/ArchiveExchange.h"
#include "framework/CWaitCursor.h"
#include "utility/FileUtils.h"
#include "utility/SerializeData.h"
#include "utility/StringUtils.h"

using archive_exchange::Exchange;
using archive_exchange::ExchangeWord;

namespace {

// Changelog (the report's own part, after Report's):
//   5: the oldest layout met: flags, image location, a retired 4-byte
//      value, base name, folder, levels (32-bit counter), filters, a retired
//      set of ints; no no-data text (the default text stands).
//   6: the no-data text after the folder; a second retired set at the end.
//   7: one retired set at the end, as in 5.
//   8: no retired value and no retired set.
//   9: a retired text array after the levels.
//  10: the level counter is 64-bit. 11 holds the same fields.
//  12: no retired text array.
//  13: the home-page link after the folder.
const WORD WEBREPORT_VERSION = 13;
const WORD FIRST_RETIRED_VALUE_VERSION = 5;
const WORD LAST_RETIRED_VALUE_VERSION = 7;
const WORD TWO_RETIRED_SETS_VERSION = 6;
const WORD FIRST_NO_DATA_MSG_VERSION = 6;
const WORD FIRST_NEW_LEVEL_COUNTER_VERSION = 10;
const WORD FIRST_RETIRED_TEXTS_VERSION = 9;
const WORD LAST_RETIRED_TEXTS_VERSION = 11;
const WORD FIRST_RETURN_LINK_VERSION = 13;

// The fewest bytes a level takes: its version, an empty template name and
// the shortest sort order (version, ID, empty name, 32-bit counter).
const size_t MIN_LEVEL_BYTES = 2 + 1 + (2 + 4 + 1 + 4);

bool InRange(WORD nVersion, WORD nFirst, WORD nLast) { return nVersion >= nFirst && nVersion <= nLast; }

// A file name without its extension (the last "." and what follows, unless
// the name starts with that "."), and the extension alone.
CString Stem(const CString& name) {
  const int nDot = name.ReverseFind('.');
  return nDot > 0 ? name.Left(nDot) : name;
}

CString Extension(const CString& name) {
  const int nDot = name.ReverseFind('.');
  return nDot > 0 ? name.Mid(nDot + 1) : CString();
}

// The pages of a main page named stem with that extension: stem*.extension,
// or the name stem alone when there is no extension.
CString PagePattern(const CString& stem, const CString& extension) {
  return extension.IsEmpty() ? stem : stem + "*." + extension;
}

}  // namespace

const CString WebReport::DEFAULT_NO_DATA_MSG("At this time, there are no entries to list for this report.");

WebReport::WebReport() : m_strNoDataMsg(DEFAULT_NO_DATA_MSG) { SetLevelCount(1); }

WebReport::WebReport(const WebReport& other)
    : Report(other),
      m_bAutoGenerate(other.m_bAutoGenerate),
      m_bAutoUpload(other.m_bAutoUpload),
      m_nImageLocation(other.m_nImageLocation),
      m_strBaseFileName(other.m_strBaseFileName),
      m_strOutputDir(other.m_strOutputDir),
      m_strHPReturnLink(other.m_strHPReturnLink),
      m_strProcessingMsg(other.m_strProcessingMsg),
      m_strNoDataMsg(other.m_strNoDataMsg),
      m_repFilters(other.m_repFilters) {
  CopyLevelsFrom(other);
}

WebReport& WebReport::operator=(const WebReport& other) {
  if (this == &other) return *this;
  Report::operator=(other);
  m_bAutoGenerate = other.m_bAutoGenerate;
  m_bAutoUpload = other.m_bAutoUpload;
  m_nImageLocation = other.m_nImageLocation;
  m_strBaseFileName = other.m_strBaseFileName;
  m_strOutputDir = other.m_strOutputDir;
  m_strHPReturnLink = other.m_strHPReturnLink;
  m_strProcessingMsg = other.m_strProcessingMsg;
  m_strNoDataMsg = other.m_strNoDataMsg;
  m_repFilters = other.m_repFilters;
  DeleteLevels();
  CopyLevelsFrom(other);
  return *this;
}

WebReport::~WebReport() { DeleteLevels(); }

void WebReport::CopyLevelsFrom(const WebReport& other) {
  m_vecLevels.reserve(other.m_vecLevels.size());
  for (const WebReportLevel* pLevel : other.m_vecLevels) m_vecLevels.push_back(new WebReportLevel(*pLevel));
}

void WebReport::DeleteLevels() {
  for (WebReportLevel* pLevel : m_vecLevels) delete pLevel;
  m_vecLevels.clear();
}

bool WebReport::RemoveDataPropID(int nDataPropID) {
  m_repFilters.RemoveDataProp(nDataPropID);
  return Report::RemoveDataPropID(nDataPropID);
}

WebReportLevel* WebReport::GetLevel(size_t nLevel) const {
  return nLevel >= 1 && nLevel <= m_vecLevels.size() ? m_vecLevels[nLevel - 1] : nullptr;
}

void WebReport::SetLevelCount(size_t n) {
  while (m_vecLevels.size() > n) {
    delete m_vecLevels.back();
    m_vecLevels.pop_back();
  }
  m_vecLevels.reserve(n);
  while (m_vecLevels.size() < n) m_vecLevels.push_back(new WebReportLevel);
}

bool WebReport::LoadHTMLTemplates(const CString& dir) {
  bool bLoaded = true;
  for (WebReportLevel* pLevel : m_vecLevels) bLoaded = pLevel->LoadHTMLTemplate(dir) && bLoaded;
  return bLoaded;
}

void WebReport::UnloadHTMLTemplates() {
  for (WebReportLevel* pLevel : m_vecLevels) pLevel->UnloadHTMLTemplate();
}

bool WebReport::DoesDataItemPassRepFilters(const DataItem* pItem) const {
  return pItem != nullptr && m_repFilters.PassesFilters(*pItem);
}

bool WebReport::HaveOutputFiles() const { return FileUtils::DoesFileExist(m_strOutputDir + m_strBaseFileName); }

void WebReport::GetOutputFiles(const CString& pagePattern, const CString& stem, TextArray& pages,
                               TextArray& thumbnails) const {
  TextArray files;
  FileUtils::GetFileList(m_strOutputDir, files, false);
  const CString thumbnailPattern = "*_" + stem + "_TN.*";
  for (const CString& file : files) {
    if (FileUtils::MatchFileSpec(file, pagePattern, false)) {
      pages.Add(file);
    } else if (FileUtils::MatchFileSpec(file, thumbnailPattern, false)) {
      thumbnails.Add(file);
    }
  }
}

// An empty folder receives no files: they would land in the process's
// working folder.
bool WebReport::SetOutputDir(const CString& dir, bool bMoveFiles) {
  if (dir.CompareNoCase(m_strOutputDir) == 0) return true;
  bool bMoved = true;
  if (bMoveFiles && !dir.IsEmpty() && HaveOutputFiles()) {
    CWaitCursor wait;
    const CString stem = Stem(m_strBaseFileName);
    TextArray files;  // pages and thumbnails alike
    GetOutputFiles(PagePattern(stem, Extension(m_strBaseFileName)), stem, files, files);
    for (const CString& file : files) bMoved = FileUtils::MoveFile(m_strOutputDir + file, dir + file, false) && bMoved;
  }
  m_strOutputDir = dir;
  return bMoved;
}

// An empty name renames nothing: the files would lose their names.
bool WebReport::SetBaseFileName(const CString& name, bool bRenameFiles) {
  if (name == m_strBaseFileName) return true;
  const bool bRename = bRenameFiles && !name.IsEmpty() && HaveOutputFiles();
  const CString oldStem = Stem(m_strBaseFileName);
  const CString newStem = Stem(name);
  m_strBaseFileName = name;
  if (!bRename) return true;
  TextArray pages;
  TextArray thumbnails;
  GetOutputFiles(PagePattern(oldStem, Extension(name)), oldStem, pages, thumbnails);
  bool bRenamed = true;
  for (const CString& page : pages) {
    bRenamed = FileUtils::RenameFile(m_strOutputDir + page, newStem + page.Mid(oldStem.GetLength()), false) && bRenamed;
  }
  for (const CString& thumbnail : thumbnails) {
    const int nStart = StringUtils::FindOccurrenceIndex(thumbnail, "_" + oldStem + "_TN.", false, 0) + 1;
    const CString newName = thumbnail.Left(nStart) + newStem + thumbnail.Mid(nStart + oldStem.GetLength());
    bRenamed = FileUtils::RenameFile(m_strOutputDir + thumbnail, newName, false) && bRenamed;
  }
  return bRenamed;
}

// Layout (version 13, current), after Report's own record:
//   WORD     version
//   bool     AutoGenerate
//   bool     AutoUpload
//   WORD     ImageLocation
//   int      retired value            (5 to 7 only, skipped)
//   CString  BaseFileName
//   CString  OutputDir
//   CString  HPReturnLink             (from 13; older files keep the link)
//   CString  NoDataMsg                (from 6; older files get the default)
//   counter  level count              (32-bit before 10)
//   levels   each in its own form (WebReportLevel)
//   texts    retired TextArray, 64-bit counter (9 to 11 only, discarded)
//   filters  the own filters, DataFilterMgr's form
//   sets     retired sets of ints, 32-bit counters (5 to 7 only: one, and
//            a second in 6; discarded)
// ProcessingMsg is never stored and is empty after loading. Loading
// destroys the levels and appends each before it loads. Versions below 5
// are read by the same rules, newer ones as 13.
void WebReport::Serialize(CArchive& ar) {
  Report::Serialize(ar);
  const bool bLoading = !ar.IsStoring();
  WORD nVersion = WEBREPORT_VERSION;
  Exchange(ar, nVersion);
  const bool bRetiredValues = bLoading && InRange(nVersion, FIRST_RETIRED_VALUE_VERSION, LAST_RETIRED_VALUE_VERSION);
  SerializeData::Serialize(ar, m_bAutoGenerate);
  SerializeData::Serialize(ar, m_bAutoUpload);
  ExchangeWord(ar, m_nImageLocation);
  if (bRetiredValues) {
    int nRetired = 0;
    ar >> nRetired;
  }
  Exchange(ar, m_strBaseFileName);
  Exchange(ar, m_strOutputDir);
  if (!bLoading || nVersion >= FIRST_RETURN_LINK_VERSION) Exchange(ar, m_strHPReturnLink);
  if (!bLoading || nVersion >= FIRST_NO_DATA_MSG_VERSION) {
    Exchange(ar, m_strNoDataMsg);
  } else {
    m_strNoDataMsg = DEFAULT_NO_DATA_MSG;
  }
  if (bLoading) m_strProcessingMsg.Empty();
  SerializeLevels(ar, bLoading && nVersion < FIRST_NEW_LEVEL_COUNTER_VERSION);
  if (bLoading && InRange(nVersion, FIRST_RETIRED_TEXTS_VERSION, LAST_RETIRED_TEXTS_VERSION)) {
    TextArray retired;
    retired.Serialize(ar, false);
  }
  m_repFilters.Serialize(ar);
  if (bRetiredValues) {
    std::set<int> retired;
    SerializeData::Serialize(ar, retired, true);
    if (nVersion == TWO_RETIRED_SETS_VERSION) SerializeData::Serialize(ar, retired, true);
  }
}

void WebReport::SerializeLevels(CArchive& ar, bool bOldFormat) {
  if (!ar.IsStoring()) DeleteLevels();
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, m_vecLevels.size(), bOldFormat);
  if (ar.IsStoring()) {
    for (WebReportLevel* pLevel : m_vecLevels) pLevel->Serialize(ar);
    return;
  }
  SerializeData::CheckLoopCounter(ar, nCount, MIN_LEVEL_BYTES);
  m_vecLevels.reserve(nCount);
  for (size_t i = 0; i < nCount; ++i) {
    m_vecLevels.push_back(new WebReportLevel);
    m_vecLevels.back()->Serialize(ar);
  }
}
