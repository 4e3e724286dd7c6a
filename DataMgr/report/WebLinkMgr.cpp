#include "DataMgr/report/WebLinkMgr.h"

#include <algorithm>
#include <stdexcept>

#include "DataMgr/types/ArchiveExchange.h"
#include "utility/SerializeData.h"

using archive_exchange::Exchange;

namespace {

// Changelog:
//   1, 2: the link count as a 32-bit counter.
//   3: the link count as a 64-bit counter.
const WORD WEBLINKMGR_VERSION = 3;
const WORD FIRST_NEW_COUNTER_VERSION = 3;
// The fewest bytes a link takes: its version and two empty texts.
const size_t MIN_LINK_BYTES = 2 + 1 + 1;

}  // namespace

const WebLink& WebLinkMgr::GetAt(size_t nIndex) const {
  if (nIndex >= m_vecLinks.size()) throw std::out_of_range("invalid vector<T> subscript");
  return m_vecLinks[nIndex];
}

void WebLinkMgr::Add(WebLink& link) {
  link.m_nUniqueID = WebLink::GetNextUniqueID();
  m_vecLinks.push_back(link);
  Sort();
}

bool WebLinkMgr::GetLinkID(int nUniqueID, WebLink& out) const {
  const auto found = std::find_if(m_vecLinks.begin(), m_vecLinks.end(),
                                  [nUniqueID](const WebLink& link) { return link.GetUniqueID() == nUniqueID; });
  if (found == m_vecLinks.end()) return false;
  out = *found;
  return true;
}

bool WebLinkMgr::Update(const WebLink& link) {
  const auto found = std::find_if(m_vecLinks.begin(), m_vecLinks.end(),
                                  [&link](const WebLink& held) { return held.GetUniqueID() == link.GetUniqueID(); });
  if (found == m_vecLinks.end()) return false;
  *found = link;
  return true;
}

void WebLinkMgr::Remove(const WebLink& link) {
  const auto found = std::find(m_vecLinks.begin(), m_vecLinks.end(), link);
  if (found != m_vecLinks.end()) m_vecLinks.erase(found);
}

void WebLinkMgr::Sort() {
  std::stable_sort(m_vecLinks.begin(), m_vecLinks.end(),
                   [](const WebLink& a, const WebLink& b) { return a.GetName().CompareNoCase(b.GetName()) < 0; });
}

void WebLinkMgr::GetNames(TextArray& names) const {
  for (const WebLink& link : m_vecLinks) names.Add(link.GetName());
}

CString WebLinkMgr::GetLinkForName(const CString& name) const {
  const auto found = std::find(m_vecLinks.begin(), m_vecLinks.end(), WebLink(name, CString()));
  return found == m_vecLinks.end() ? CString() : found->GetURL();
}

// Layout (version 3, current):
//   WORD     version
//   counter  link count (32-bit before version 3)
//   links    each in its own form (WebLink)
// Loading removes every link, appends each link once it is read (each gets
// a fresh unique ID) and sorts the list.
void WebLinkMgr::Serialize(CArchive& ar) {
  WORD nVersion = WEBLINKMGR_VERSION;
  Exchange(ar, nVersion);
  const bool bLoading = !ar.IsStoring();
  if (bLoading) RemoveAll();
  const size_t nCount =
      SerializeData::SerializeLoopCounter(ar, m_vecLinks.size(), bLoading && nVersion < FIRST_NEW_COUNTER_VERSION);
  if (!bLoading) {
    for (WebLink& link : m_vecLinks) link.Serialize(ar);
    return;
  }
  SerializeData::CheckLoopCounter(ar, nCount, MIN_LINK_BYTES);
  m_vecLinks.reserve(nCount);
  for (size_t i = 0; i < nCount; ++i) {
    WebLink link;
    link.Serialize(ar);
    m_vecLinks.push_back(link);
  }
  Sort();
}
