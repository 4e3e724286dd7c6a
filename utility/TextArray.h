#ifndef UTILITY_TEXTARRAY_H_
#define UTILITY_TEXTARRAY_H_

#include <vector>

#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/UtilityExport.h"

// An ordered array of texts that owns its elements. Indexes run from 0 to
// GetSize() - 1; GetAt and operator[] with any other index give an empty
// text instead of failing. Nothing in it throws.
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

  // Whether an element equals text in full; bCaseSensitive false folds
  // letters as CString::MakeLower does.
  bool Have(const CString& text, bool bCaseSensitive) const;
  // Appends a copy of every element of texts, in order; the array is not
  // emptied first.
  void CopyFromVector(const std::vector<CString>& texts);

  // The natural order of file paths: -1 when a comes first, 1 when b does,
  // 0 when they are the same. Paths are ordered by their file names (the
  // text after the last "/" or "\\"), then by the whole paths, with every
  // run of digits compared by its value (img2 before img10, img02 beside
  // img2); paths still equal then are ordered byte by byte. bCaseSensitive
  // false folds letters in every step.
  static int DoCompareFiles(const CString& a, const CString& b, bool bCaseSensitive);

  const_iterator begin() const { return m_texts.begin(); }
  const_iterator end() const { return m_texts.end(); }

  // Archive form: a loop counter (32-bit in the old format, else 64-bit),
  // then each text in the framework's text form. Loading replaces the array.
  void Serialize(CArchive& ar, bool bOldFormat);

 private:
  std::vector<CString> m_texts;
};

#endif  // UTILITY_TEXTARRAY_H_
