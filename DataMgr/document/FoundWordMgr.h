#ifndef DATAMGR_DOCUMENT_FOUNDWORDMGR_H_
#define DATAMGR_DOCUMENT_FOUNDWORDMGR_H_

#include <cstddef>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/document/FoundWord.h"
#include "framework/CString.h"

// The words of a search-and-replace in the host's order, kept by value and
// never archived. Words are matched exactly, letter case counting; nothing
// stops the host from adding one word twice, and FindWord and Remove then
// reach the first.
//
// GetAt throws std::out_of_range("invalid vector<T> subscript") for an
// index that is not less than the count; FindWord gives null when no found
// word has that word. A pointer or reference handed out stays valid until
// the list next changes.
class VAXO057_API FoundWordMgr {
 public:
  void Add(const FoundWord& word) { m_vecWords.push_back(word); }
  // Erases the first found word with word's word; nothing when none has it.
  void Remove(const FoundWord& word);
  void Clear() { m_vecWords.clear(); }

  FoundWord& GetAt(size_t nIndex);
  const FoundWord& GetAt(size_t nIndex) const;
  size_t GetCount() const { return m_vecWords.size(); }

  FoundWord* FindWord(const CString& word);
  const FoundWord* FindWord(const CString& word) const;

 private:
  std::vector<FoundWord> m_vecWords;
};

#endif  // DATAMGR_DOCUMENT_FOUNDWORDMGR_H_
