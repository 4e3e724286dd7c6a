#include "utility/TextArray.h"

#include "utility/SerializeData.h"

namespace {

const CString EMPTY_TEXT;

}  // namespace

int TextArray::Add(const CString& text) {
  m_texts.push_back(text);
  return GetSize() - 1;
}

const CString& TextArray::GetAt(int nIndex) const {
  if (nIndex < 0 || nIndex >= GetSize()) return EMPTY_TEXT;
  return m_texts[static_cast<size_t>(nIndex)];
}

void TextArray::Serialize(CArchive& ar, bool bOldFormat) { SerializeData::Serialize(ar, m_texts, bOldFormat); }
