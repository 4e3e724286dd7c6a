#include "utility/StringUtils.h"

#include "utility/TextRules.h"

using text_rules::IsBlank;
using text_rules::IsWordChar;
using text_rules::SameChar;

namespace {

const char* const YES_WORDS[] = {"yes", "y", "true", "t", "1"};

bool MatchesAt(const CString& text, int nPos, const CString& search, bool bCaseSensitive) {
  if (nPos < 0 || nPos + search.GetLength() > text.GetLength()) return false;
  for (int i = 0; i < search.GetLength(); ++i) {
    if (!SameChar(text[nPos + i], search[i], bCaseSensitive)) return false;
  }
  return true;
}

bool IsWholeWordAt(const CString& text, int nPos, int nLength) {
  const bool bStartFree = nPos == 0 || !IsWordChar(text[nPos - 1]);
  const bool bEndFree = nPos + nLength == text.GetLength() || !IsWordChar(text[nPos + nLength]);
  return bStartFree && bEndFree;
}

bool IsSentenceEnd(const CString& text, int nPos) {
  const char ch = text[nPos];
  if (ch != '.' && ch != '!' && ch != '?') return false;
  return nPos + 1 == text.GetLength() || IsBlank(text[nPos + 1]);
}

bool CanStartXMLName(char ch) { return text_rules::IsAsciiLetter(ch) || ch == '_'; }

bool IsXMLNameChar(char ch) { return text_rules::IsAsciiAlnum(ch) || ch == '_' || ch == '-' || ch == '.'; }

}  // namespace

void StringUtils::Trim(CString& text) { text.Trim(); }

bool StringUtils::IsEffectivelyEmpty(const CString& text) {
  for (int i = 0; i < text.GetLength(); ++i) {
    if (!IsBlank(text[i])) return false;
  }
  return true;
}

bool StringUtils::IsYes(const CString& text) {
  CString word = text;
  word.Trim();
  for (const char* pszYes : YES_WORDS) {
    if (word.CompareNoCase(pszYes) == 0) return true;
  }
  return false;
}

bool StringUtils::TextToBool(const CString& text) { return IsYes(text); }

bool StringUtils::MatchFirstChars(const CString& text, const CString& prefix, bool bCaseSensitive) {
  return MatchesAt(text, 0, prefix, bCaseSensitive);
}

bool StringUtils::MatchLastChars(const CString& text, const CString& suffix, bool bCaseSensitive) {
  return MatchesAt(text, text.GetLength() - suffix.GetLength(), suffix, bCaseSensitive);
}

bool StringUtils::MatchSpec(const CString& text, const CString& pattern, bool bCaseSensitive) {
  int nText = 0;
  int nPattern = 0;
  int nStar = -1;  // the pattern position of the last "*" met
  int nMark = 0;   // the text position that "*" has been stretched to
  while (nText < text.GetLength()) {
    if (nPattern < pattern.GetLength() && pattern[nPattern] == '*') {
      nStar = nPattern++;
      nMark = nText;
    } else if (nPattern < pattern.GetLength() &&
               (pattern[nPattern] == '?' || SameChar(pattern[nPattern], text[nText], bCaseSensitive))) {
      ++nText;
      ++nPattern;
    } else if (nStar >= 0) {
      nPattern = nStar + 1;
      nText = ++nMark;
    } else {
      return false;
    }
  }
  while (nPattern < pattern.GetLength() && pattern[nPattern] == '*') ++nPattern;
  return nPattern == pattern.GetLength();
}

int StringUtils::FindOccurrences(const CString& text, const CString& search, bool bCaseSensitive) {
  int nCount = 0;
  int nPos = FindOccurrenceIndex(text, search, bCaseSensitive, 0);
  while (nPos >= 0) {
    ++nCount;
    nPos = FindOccurrenceIndex(text, search, bCaseSensitive, nPos + search.GetLength());
  }
  return nCount;
}

int StringUtils::FindOccurrenceIndex(const CString& text, const CString& search, bool bCaseSensitive, int nStart) {
  if (search.IsEmpty() || nStart < 0 || nStart > text.GetLength()) return -1;
  for (int nPos = nStart; nPos + search.GetLength() <= text.GetLength(); ++nPos) {
    if (MatchesAt(text, nPos, search, bCaseSensitive)) return nPos;
  }
  return -1;
}

int StringUtils::FindWholeWordMatch(const CString& text, const CString& word, bool bCaseSensitive, int nStart) {
  int nPos = FindOccurrenceIndex(text, word, bCaseSensitive, nStart);
  while (nPos >= 0 && !IsWholeWordAt(text, nPos, word.GetLength())) {
    nPos = FindOccurrenceIndex(text, word, bCaseSensitive, nPos + 1);
  }
  return nPos;
}

int StringUtils::FindAllWords(const TextArray& words, const CString& text, bool bWholeWord) {
  int nFirst = -1;
  for (int i = 0; i < words.GetSize(); ++i) {
    const int nPos = bWholeWord ? FindWholeWordMatch(text, words[i], true, 0)
                                : FindOccurrenceIndex(text, words[i], true, 0);
    if (nPos < 0) return -1;
    if (i == 0) nFirst = nPos;
  }
  return nFirst;
}

void StringUtils::GetWords(const CString& text, TextArray& words) {
  words.RemoveAll();
  int nStart = -1;
  for (int i = 0; i <= text.GetLength(); ++i) {
    const bool bWordChar = i < text.GetLength() && IsWordChar(text[i]);
    if (bWordChar && nStart < 0) nStart = i;
    if (!bWordChar && nStart >= 0) {
      words.Add(text.Mid(nStart, i - nStart));
      nStart = -1;
    }
  }
}

void StringUtils::GetWordsWithDoubleQuotes(const CString& text, TextArray& words) {
  words.RemoveAll();
  CString word;
  bool bQuoted = false;
  for (int i = 0; i < text.GetLength(); ++i) {
    const char ch = text[i];
    if (ch == '"') {
      bQuoted = !bQuoted;
    } else if (!bQuoted && IsBlank(ch)) {
      if (!word.IsEmpty()) words.Add(word);
      word.Empty();
    } else {
      word += ch;
    }
  }
  if (!word.IsEmpty()) words.Add(word);
}

void StringUtils::SplitLine(const CString& text, const CString& separator, TextArray& parts) {
  parts.RemoveAll();
  if (text.IsEmpty()) return;
  if (separator.IsEmpty()) {
    parts.Add(text);
    return;
  }
  int nStart = 0;
  int nPos = text.Find(separator);
  while (nPos >= 0) {
    parts.Add(text.Mid(nStart, nPos - nStart));
    nStart = nPos + separator.GetLength();
    nPos = text.Find(separator, nStart);
  }
  parts.Add(text.Mid(nStart));
}

CString StringUtils::PadString(const CString& text, int nLength, const CString& fill, bool bLeft) {
  if (fill.IsEmpty() || nLength <= text.GetLength()) return text;
  const int nPad = nLength - text.GetLength();
  CString padding;
  while (padding.GetLength() < nPad) padding += fill;
  padding = padding.Left(nPad);
  return bLeft ? padding + text : text + padding;
}

CString StringUtils::ParseSentence(const CString& text, int nSentence) {
  int nStart = 0;
  int nFound = 0;
  for (int i = 0; i <= text.GetLength(); ++i) {
    if (i < text.GetLength() && !IsSentenceEnd(text, i)) continue;
    const int nEnd = i < text.GetLength() ? i + 1 : i;
    CString sentence = text.Mid(nStart, nEnd - nStart);
    sentence.Trim();
    nStart = nEnd;
    if (sentence.IsEmpty()) continue;
    if (nFound++ == nSentence) return sentence;
  }
  return CString();
}

CString StringUtils::ProcessXMLTag(const CString& text) {
  CString name;
  for (int i = 0; i < text.GetLength(); ++i) name += IsXMLNameChar(text[i]) ? text[i] : '_';
  if (!name.IsEmpty() && !CanStartXMLName(name[0])) name.Insert(0, '_');
  return name;
}

CString StringUtils::ProcessXMLValue(const CString& text) {
  CString escaped;
  for (int i = 0; i < text.GetLength(); ++i) {
    switch (text[i]) {
      case '&': escaped += "&amp;"; break;
      case '<': escaped += "&lt;"; break;
      case '>': escaped += "&gt;"; break;
      case '"': escaped += "&quot;"; break;
      case '\'': escaped += "&apos;"; break;
      default: escaped += text[i]; break;
    }
  }
  return escaped;
}
