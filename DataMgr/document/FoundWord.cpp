#include "DataMgr/document/FoundWord.h"

#include <algorithm>

void FoundWord::RemoveLocation(const DataFind& hit) {
  const auto found = std::find(m_vecLocations.begin(), m_vecLocations.end(), hit);
  if (found != m_vecLocations.end()) m_vecLocations.erase(found);
}

const DataFind& FoundWord::GetLocationAt(size_t nIndex) const {
  static const DataFind NO_HIT;
  return nIndex < m_vecLocations.size() ? m_vecLocations[nIndex] : NO_HIT;
}
