#ifndef UTILITY_TEXTARRAY_H_
#define UTILITY_TEXTARRAY_H_

#include <vector>

#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/UtilityExport.h"

// An ordered array of texts that owns its elements. Indexes run from 0 to
// GetSize() - 1; GetAt and operator[] with any other index give an empty
// text instead of failing.
class VAXO009_API TextArray {
 public:
  using const_iterator = std::vector<CString>::const_iterator;

  // Appends text and returns its index.
  int Add(const CString& text);
  int GetSize() const { return static_cast<int>(m_texts.size()); }
  int GetCount() const { return GetSize(); }
  const CString& GetAt(int nIndex) const;
  const CString& operator[](int nIndex) const { return GetAt(nIndex); }
  void RemoveAll() { m_texts.clear(); }

  const_iterator begin() const { return m_texts.begin(); }
  const_iterator end() const { return m_texts.end(); }

  // Archive form: a loop counter (32-bit in the old format, else 64-bit),
  // then each text in the framework's text form. Loading replaces the array.
  void Serialize(CArchive& ar, bool bOldFormat);

 private:
  std::vector<CString> m_texts;
};

#endif  // UTILITY_TEXTARRAY_H_
