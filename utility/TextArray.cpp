#include "utility/TextArray.h"

#include "utility/SerializeData.h"
#include "utility/TextRules.h"

using text_rules::IsAsciiDigit;

namespace {

const CString EMPTY_TEXT;

int Sign(int n) { return (n > 0) - (n < 0); }

// The end of the run of digits that starts at nPos.
int DigitRunEnd(const CString& text, int nPos) {
  while (nPos < text.GetLength() && IsAsciiDigit(text[nPos])) ++nPos;
  return nPos;
}

// Compares the digit runs a[nA, nEndA) and b[nB, nEndB) by value.
int CompareDigitRuns(const CString& a, int nA, int nEndA, const CString& b, int nB, int nEndB) {
  while (nA < nEndA && a[nA] == '0') ++nA;
  while (nB < nEndB && b[nB] == '0') ++nB;
  if (nEndA - nA != nEndB - nB) return Sign((nEndA - nA) - (nEndB - nB));
  for (; nA < nEndA; ++nA, ++nB) {
    if (a[nA] != b[nB]) return Sign(a[nA] - b[nB]);
  }
  return 0;
}

// Byte by byte, except that runs of digits compare by their value.
int CompareNaturally(const CString& a, const CString& b, bool bCaseSensitive) {
  int nA = 0;
  int nB = 0;
  while (nA < a.GetLength() && nB < b.GetLength()) {
    if (IsAsciiDigit(a[nA]) && IsAsciiDigit(b[nB])) {
      const int nEndA = DigitRunEnd(a, nA);
      const int nEndB = DigitRunEnd(b, nB);
      const int nResult = CompareDigitRuns(a, nA, nEndA, b, nB, nEndB);
      if (nResult != 0) return nResult;
      nA = nEndA;
      nB = nEndB;
      continue;
    }
    const auto chA = static_cast<unsigned char>(bCaseSensitive ? a[nA] : text_rules::FoldCase(a[nA]));
    const auto chB = static_cast<unsigned char>(bCaseSensitive ? b[nB] : text_rules::FoldCase(b[nB]));
    if (chA != chB) return chA < chB ? -1 : 1;
    ++nA;
    ++nB;
  }
  return Sign((a.GetLength() - nA) - (b.GetLength() - nB));
}

CString FileNameOf(const CString& path) { return path.Mid(text_rules::FolderLength(path)); }

CString CaseKey(const CString& text, bool bCaseSensitive) {
  CString key = text;
  if (!bCaseSensitive) key.MakeLower();
  return key;
}

}  // namespace

int TextArray::Add(const CString& text) {
  m_texts.push_back(text);
  return GetSize() - 1;
}

const CString& TextArray::GetAt(int nIndex) const {
  if (nIndex < 0 || nIndex >= GetSize()) return EMPTY_TEXT;
  return m_texts[static_cast<size_t>(nIndex)];
}

bool TextArray::Have(const CString& text, bool bCaseSensitive) const {
  const CString key = CaseKey(text, bCaseSensitive);
  for (const CString& element : m_texts) {
    if (CaseKey(element, bCaseSensitive) == key) return true;
  }
  return false;
}

void TextArray::CopyFromVector(const std::vector<CString>& texts) {
  m_texts.insert(m_texts.end(), texts.begin(), texts.end());
}

int TextArray::DoCompareFiles(const CString& a, const CString& b, bool bCaseSensitive) {
  int nResult = CompareNaturally(FileNameOf(a), FileNameOf(b), bCaseSensitive);
  if (nResult == 0) nResult = CompareNaturally(a, b, bCaseSensitive);
  if (nResult == 0) nResult = CaseKey(a, bCaseSensitive).Compare(CaseKey(b, bCaseSensitive));
  return nResult;
}

void TextArray::Serialize(CArchive& ar, bool bOldFormat) { SerializeData::Serialize(ar, m_texts, bOldFormat); }
