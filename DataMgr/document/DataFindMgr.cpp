#include "DataMgr/document/DataFindMgr.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "utility/SerializeData.h"

namespace {

// Changelog:
//   1: the hit count as a 32-bit counter.
//   2: the hit count as a 64-bit counter.
const WORD DATAFINDMGR_VERSION = 2;

// The fewest bytes a hit takes: its version word and five ints.
const size_t MIN_HIT_BYTES = 2 + 5 * SerializeData::INT_BYTES;

}  // namespace

void DataFindMgr::Remove(const DataFind& hit) {
  const auto found = std::find(m_vecHits.begin(), m_vecHits.end(), hit);
  if (found != m_vecHits.end()) m_vecHits.erase(found);
}

void DataFindMgr::RemoveAt(size_t nIndex) {
  if (nIndex < m_vecHits.size()) m_vecHits.erase(m_vecHits.begin() + static_cast<std::ptrdiff_t>(nIndex));
}

const DataFind& DataFindMgr::GetAt(size_t nIndex) const {
  if (nIndex >= m_vecHits.size()) throw std::out_of_range("invalid vector<T> subscript");
  return m_vecHits[nIndex];
}

void DataFindMgr::Swap(size_t nA, size_t nB) {
  if (nA < m_vecHits.size() && nB < m_vecHits.size()) std::swap(m_vecHits[nA], m_vecHits[nB]);
}

void DataFindMgr::SetDataFindID(size_t nIndex, int nID) {
  if (nIndex < m_vecHits.size()) m_vecHits[nIndex].SetID(nID);
}

// Layout (version 2, current):
//   WORD          version
//   loop counter  hit count (32-bit in version 1)
//   the hits, each in its own form, in list order
// Loading keeps the hits held and appends each hit read, starting from a
// fresh hit, before it loads, so that a load that stops half-way keeps what
// it read, the last hit half loaded.
void DataFindMgr::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << DATAFINDMGR_VERSION;
    SerializeData::SerializeLoopCounter(ar, m_vecHits.size(), false);
    for (DataFind& hit : m_vecHits) hit.Serialize(ar);
    return;
  }
  WORD nVersion = 0;
  ar >> nVersion;
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, nVersion == 1);
  SerializeData::CheckLoopCounter(ar, nCount, MIN_HIT_BYTES);
  m_vecHits.reserve(m_vecHits.size() + nCount);
  for (size_t i = 0; i < nCount; ++i) {
    m_vecHits.emplace_back();
    m_vecHits.back().Serialize(ar);
  }
}
