#ifndef DATAMGR_DOCUMENT_FOUNDWORD_H_
#define DATAMGR_DOCUMENT_FOUNDWORD_H_

#include <cstddef>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/document/DataFind.h"
#include "framework/CString.h"

// A word the host searched for, the text to put in its place and the hits
// where it was found, in the order they were added. Kept by the host while
// it replaces text; never archived. Two found words are the same word when
// their words are equal, letter case counting; the replacement and the
// hits do not count.
class VAXO057_API FoundWord {
 public:
  const CString& GetWord() const { return m_strWord; }
  void SetWord(const CString& word) { m_strWord = word; }
  const CString& GetReplace() const { return m_strReplace; }
  void SetReplace(const CString& replace) { m_strReplace = replace; }

  void AddLocation(const DataFind& hit) { m_vecLocations.push_back(hit); }
  // Erases the first location equal to hit (DataFind::operator==); nothing
  // when there is none.
  void RemoveLocation(const DataFind& hit);
  // The location at nIndex; a fresh hit (every number -1) when nIndex is
  // not less than the count.
  const DataFind& GetLocationAt(size_t nIndex) const;
  size_t GetLocationCount() const { return m_vecLocations.size(); }

  bool operator==(const FoundWord& other) const { return m_strWord == other.m_strWord; }
  bool operator!=(const FoundWord& other) const { return !(*this == other); }

 private:
  CString m_strWord;
  CString m_strReplace;
  std::vector<DataFind> m_vecLocations;
};

#endif  // DATAMGR_DOCUMENT_FOUNDWORD_H_
