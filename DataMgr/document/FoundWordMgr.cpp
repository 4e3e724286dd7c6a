#include "DataMgr/document/FoundWordMgr.h"

#include <algorithm>
#include <stdexcept>

void FoundWordMgr::Remove(const FoundWord& word) {
  const auto found = std::find(m_vecWords.begin(), m_vecWords.end(), word);
  if (found != m_vecWords.end()) m_vecWords.erase(found);
}

FoundWord& FoundWordMgr::GetAt(size_t nIndex) {
  if (nIndex >= m_vecWords.size()) throw std::out_of_range("invalid vector<T> subscript");
  return m_vecWords[nIndex];
}

const FoundWord& FoundWordMgr::GetAt(size_t nIndex) const { return const_cast<FoundWordMgr*>(this)->GetAt(nIndex); }

FoundWord* FoundWordMgr::FindWord(const CString& word) {
  const auto found = std::find_if(m_vecWords.begin(), m_vecWords.end(),
                                  [&word](const FoundWord& candidate) { return candidate.GetWord() == word; });
  return found == m_vecWords.end() ? nullptr : &*found;
}

const FoundWord* FoundWordMgr::FindWord(const CString& word) const {
  return const_cast<FoundWordMgr*>(this)->FindWord(word);
}
