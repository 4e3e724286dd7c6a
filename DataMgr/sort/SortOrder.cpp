#include "DataMgr/sort/SortOrder.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "DataMgr/types/ArchiveExchange.h"
#include "DataMgr/types/CheckedSwap.h"
#include "utility/SerializeData.h"

using archive_exchange::Exchange;

namespace {

const WORD SORTORDER_VERSION = 3;
// Version 1 kept the keys as two parallel vectors.
const WORD PARALLEL_VECTORS_VERSION = 1;
// The keys' loop counter is 32-bit in this version only.
const WORD OLD_COUNTER_VERSION = 2;
// The bytes of one key: version, two bools, column ID.
const size_t KEY_BYTES = 2 + 1 + 1 + 4;

}  // namespace

SortOrder::SortOrder() = default;

SortOrder::SortOrder(const SortOrder& other) : m_nID(other.m_nID), m_strName(other.m_strName) { CopyArray(other); }

SortOrder::SortOrder(SortOrder&& other) noexcept : m_nID(other.m_nID), m_strName(std::move(other.m_strName)) {
  MoveArray(other);
}

SortOrder& SortOrder::operator=(const SortOrder& other) {
  if (this != &other) {
    m_nID = other.m_nID;
    m_strName = other.m_strName;
    CopyArray(other);
  }
  return *this;
}

SortOrder& SortOrder::operator=(SortOrder&& other) noexcept {
  if (this != &other) {
    m_nID = other.m_nID;
    m_strName = std::move(other.m_strName);
    MoveArray(other);
  }
  return *this;
}

SortOrder::~SortOrder() { DeleteSortOrderInfo(); }

void SortOrder::CopyArray(const SortOrder& other) {
  std::vector<std::unique_ptr<SortOrderInfo>> copies;
  copies.reserve(other.m_vecSortOrderInfo.size());
  for (const SortOrderInfo* pInfo : other.m_vecSortOrderInfo) copies.push_back(std::make_unique<SortOrderInfo>(*pInfo));
  DeleteSortOrderInfo();
  m_vecSortOrderInfo.reserve(copies.size());
  for (std::unique_ptr<SortOrderInfo>& copy : copies) m_vecSortOrderInfo.push_back(copy.release());
}

void SortOrder::MoveArray(SortOrder& other) {
  DeleteSortOrderInfo();
  m_vecSortOrderInfo.swap(other.m_vecSortOrderInfo);
}

void SortOrder::DeleteSortOrderInfo() {
  for (SortOrderInfo* pInfo : m_vecSortOrderInfo) delete pInfo;
  m_vecSortOrderInfo.clear();
}

bool SortOrder::operator==(const SortOrder& other) const {
  if (m_vecSortOrderInfo.size() != other.m_vecSortOrderInfo.size() || m_strName.Compare(other.m_strName) != 0) {
    return false;
  }
  return std::equal(m_vecSortOrderInfo.begin(), m_vecSortOrderInfo.end(), other.m_vecSortOrderInfo.begin(),
                    [](const SortOrderInfo* a, const SortOrderInfo* b) { return *a == *b; });
}

int SortOrder::GetDataPropIDAt(size_t nIndex, bool& bAscending, bool& bCaseSensitive) const {
  bAscending = false;
  bCaseSensitive = false;
  if (nIndex >= m_vecSortOrderInfo.size()) return -1;
  const SortOrderInfo& info = *m_vecSortOrderInfo[nIndex];
  bAscending = info.m_bAscending;
  bCaseSensitive = info.m_bCaseSensitive;
  return info.m_nDataPropID;
}

size_t SortOrder::FindDataPropID(int nDataPropID, bool& bAscending, bool& bCaseSensitive) const {
  for (size_t i = 0; i < m_vecSortOrderInfo.size(); ++i) {
    const SortOrderInfo& info = *m_vecSortOrderInfo[i];
    if (info.m_nDataPropID == nDataPropID) {
      bAscending = info.m_bAscending;
      bCaseSensitive = info.m_bCaseSensitive;
      return i;
    }
  }
  return m_vecSortOrderInfo.size();
}

bool SortOrder::HaveDataProp(const std::vector<int>& ids) const {
  return std::any_of(m_vecSortOrderInfo.begin(), m_vecSortOrderInfo.end(), [&ids](const SortOrderInfo* pInfo) {
    return std::find(ids.begin(), ids.end(), pInfo->m_nDataPropID) != ids.end();
  });
}

void SortOrder::InsertKey(size_t nIndex, const SortOrderInfo& info) {
  auto pInfo = std::make_unique<SortOrderInfo>(info);
  const size_t nAt = std::min(nIndex, m_vecSortOrderInfo.size());
  m_vecSortOrderInfo.insert(m_vecSortOrderInfo.begin() + static_cast<std::ptrdiff_t>(nAt), pInfo.get());
  pInfo.release();
}

void SortOrder::AddDataPropID(int nDataPropID, bool bAscending, bool bCaseSensitive) {
  InsertKey(m_vecSortOrderInfo.size(), SortOrderInfo(nDataPropID, bAscending, bCaseSensitive));
}

void SortOrder::AddDataPropIDToTop(int nDataPropID, bool bAscending, bool bCaseSensitive) {
  AddDataPropID(nDataPropID, bAscending, bCaseSensitive);
  std::rotate(m_vecSortOrderInfo.begin(), m_vecSortOrderInfo.end() - 1, m_vecSortOrderInfo.end());
}

void SortOrder::SetDataPropIDAt(size_t nIndex, int nDataPropID, bool bAscending, bool bCaseSensitive) {
  if (nIndex >= m_vecSortOrderInfo.size()) {
    AddDataPropID(nDataPropID, bAscending, bCaseSensitive);
  } else {
    *m_vecSortOrderInfo[nIndex] = SortOrderInfo(nDataPropID, bAscending, bCaseSensitive);
  }
}

void SortOrder::InsertDataPropIDAt(size_t nIndex, int nDataPropID, bool bAscending, bool bCaseSensitive) {
  bool bFoundAscending = false;
  bool bFoundCaseSensitive = false;
  if (FindDataPropID(nDataPropID, bFoundAscending, bFoundCaseSensitive) < m_vecSortOrderInfo.size()) return;
  InsertKey(nIndex, SortOrderInfo(nDataPropID, bAscending, bCaseSensitive));
}

bool SortOrder::RemoveDataPropID(int nDataPropID) {
  bool bAscending = false;
  bool bCaseSensitive = false;
  return RemoveDataPropAt(FindDataPropID(nDataPropID, bAscending, bCaseSensitive));
}

bool SortOrder::RemoveDataPropAt(size_t nIndex) {
  if (nIndex >= m_vecSortOrderInfo.size()) return false;
  delete m_vecSortOrderInfo[nIndex];
  m_vecSortOrderInfo.erase(m_vecSortOrderInfo.begin() + static_cast<std::ptrdiff_t>(nIndex));
  return true;
}

void SortOrder::Swap(size_t nA, size_t nB) { checked_swap::SwapAt(m_vecSortOrderInfo, nA, nB); }

bool SortOrder::IsDifferent(const std::vector<int>& ids, const std::vector<bool>& ascending,
                            const std::vector<bool>& caseSensitive) const {
  const size_t nCount = m_vecSortOrderInfo.size();
  if (ids.size() != nCount || ascending.size() != nCount || caseSensitive.size() != nCount) return true;
  for (size_t i = 0; i < nCount; ++i) {
    if (*m_vecSortOrderInfo[i] != SortOrderInfo(ids[i], ascending[i], caseSensitive[i])) return true;
  }
  return false;
}

// Layout (version 3, current):
//   WORD     version
//   int      ID
//   CString  name
//   counter  key count (64-bit)
//   keys     each key in its own form (SortOrderInfo)
// Changelog:
//   1: after the name, the ascending flags as a vector of bool and then the
//      column IDs as a vector of int, both with 32-bit counters; no
//      case-sensitive flag (loaded keys compare ignoring case).
//   2: the keys in their own form after a 32-bit counter.
//   3: the counter is 64-bit.
// Loading replaces the keys. Version 0 and versions above 3 are read as
// version 3 (a 64-bit counter).
void SortOrder::Serialize(CArchive& ar) {
  WORD nVersion = SORTORDER_VERSION;
  Exchange(ar, nVersion);
  Exchange(ar, m_nID);
  Exchange(ar, m_strName);
  if (!ar.IsStoring()) DeleteSortOrderInfo();
  if (!ar.IsStoring() && nVersion == PARALLEL_VECTORS_VERSION) {
    LoadParallelVectors(ar);
  } else {
    SerializeKeys(ar, !ar.IsStoring() && nVersion == OLD_COUNTER_VERSION);
  }
}

// A column ID without an ascending flag at its position sorts ascending.
void SortOrder::LoadParallelVectors(CArchive& ar) {
  std::vector<bool> ascending;
  std::vector<int> ids;
  SerializeData::Serialize(ar, ascending, true);
  SerializeData::Serialize(ar, ids, true);
  m_vecSortOrderInfo.reserve(ids.size());
  for (size_t i = 0; i < ids.size(); ++i) AddDataPropID(ids[i], i >= ascending.size() || ascending[i], false);
}

void SortOrder::SerializeKeys(CArchive& ar, bool bOldFormat) {
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, m_vecSortOrderInfo.size(), bOldFormat);
  if (ar.IsStoring()) {
    for (SortOrderInfo* pInfo : m_vecSortOrderInfo) pInfo->Serialize(ar);
    return;
  }
  SerializeData::CheckLoopCounter(ar, nCount, KEY_BYTES);
  m_vecSortOrderInfo.reserve(nCount);
  for (size_t i = 0; i < nCount; ++i) {
    SortOrderInfo info;
    info.Serialize(ar);
    InsertKey(nCount, info);
  }
}
