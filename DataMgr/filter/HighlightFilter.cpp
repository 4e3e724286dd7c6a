#include "DataMgr/filter/HighlightFilter.h"

#include "DataMgr/types/ArchiveExchange.h"
#include "utility/SerializeData.h"

namespace {

// Changelog:
//   1: a flag (since dropped), the ID, the colour; then the condition.
//   2: the file-doesn't-exist flag in front.
//   3: the dropped flag and the ID go (the condition carries the ID).
//   4: the today flag after the file-doesn't-exist flag.
//   5: the name after the colour.
const WORD HIGHLIGHTFILTER_VERSION = 5;

}  // namespace

HighlightFilter::HighlightFilter() : m_nColor(GetSysColor(COLOR_WINDOW)) {}

HighlightFilter::~HighlightFilter() = default;

bool HighlightFilter::operator==(const HighlightFilter& other) const {
  return m_bFileDoesntExist == other.m_bFileDoesntExist && m_bToday == other.m_bToday && m_nColor == other.m_nColor &&
         m_strName == other.m_strName && DataFilter::operator==(other);
}

CString HighlightFilter::GetDescription() const {
  if (m_bFileDoesntExist)
    return GetInclude() ? "Highlight if file does not exist." : "Don't highlight if file does not exist.";
  if (m_bToday) return GetInclude() ? "Highlight if date is \"today\"." : "Don't highlight if date is \"today\".";
  CString text = DataFilter::GetDescription();
  if (GetInclude()) {
    text.Replace("Include", "Highlight");
  } else {
    text.Replace("Exclude", "Don't highlight");
  }
  return text;
}

// Layout (version 5, current), in front of the condition:
//   WORD    version
//   bool    file-doesn't-exist  (version >= 2)
//   bool    dropped flag        (version < 3: read and discarded)
//   bool    today               (version >= 4)
//   int     ID                  (version < 3)
//   DWORD   colour
//   text    name                (version >= 5)
//   the whole DataFilter record
// The condition's own ID, when its record holds one, replaces the ID of a
// version below 3.
void HighlightFilter::Serialize(CArchive& ar) {
  WORD nVersion = HIGHLIGHTFILTER_VERSION;
  archive_exchange::Exchange(ar, nVersion);
  if (nVersion >= 2) SerializeData::Serialize(ar, m_bFileDoesntExist);
  if (nVersion < 3) {
    bool bDropped = false;
    SerializeData::Serialize(ar, bDropped);
  }
  if (nVersion >= 4) SerializeData::Serialize(ar, m_bToday);
  if (nVersion < 3) {
    int nID = -1;
    ar >> nID;
    SetID(nID);
  }
  archive_exchange::Exchange(ar, m_nColor);
  if (nVersion >= 5) archive_exchange::Exchange(ar, m_strName);
  DataFilter::Serialize(ar);
}
