#include "framework/CString.h"

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

const char* const WHITESPACE = " \t\n\v\f\r";

int Sign(int n) { return n < 0 ? -1 : (n > 0 ? 1 : 0); }

char FoldAscii(char ch) { return (ch >= 'A' && ch <= 'Z') ? static_cast<char>(ch - 'A' + 'a') : ch; }

// Clamps a [nFirst, nFirst + nCount) range to a text of nLength bytes; the
// sum is formed in 64 bits so that huge counts cannot overflow.
void ClampRange(int nLength, int& nFirst, int& nCount) {
  if (nFirst < 0) nFirst = 0;
  if (nCount < 0) nCount = 0;
  if (nFirst > nLength) nFirst = nLength;
  if (static_cast<long long>(nFirst) + nCount > nLength) nCount = nLength - nFirst;
}

std::string VFormat(const char* pszFormat, va_list args) {
  va_list copy;
  va_copy(copy, args);
  const int nNeeded = std::vsnprintf(nullptr, 0, pszFormat, copy);
  va_end(copy);
  if (nNeeded <= 0) return std::string();
  std::vector<char> buffer(static_cast<size_t>(nNeeded) + 1);
  std::vsnprintf(buffer.data(), buffer.size(), pszFormat, args);
  return std::string(buffer.data(), static_cast<size_t>(nNeeded));
}

}  // namespace

CString::CString(const char* psz) : m_str(psz != nullptr ? psz : "") {}

CString::CString(const char* pch, int nLength) {
  if (pch != nullptr && nLength > 0) m_str.assign(pch, static_cast<size_t>(nLength));
}

CString::CString(char ch, int nRepeat) {
  if (nRepeat > 0) m_str.assign(static_cast<size_t>(nRepeat), ch);
}

CString::CString(const std::string& str) : m_str(str) {}

CString::CString(std::string&& str) : m_str(std::move(str)) {}

CString& CString::operator=(const char* psz) {
  m_str = psz != nullptr ? psz : "";
  return *this;
}

CString& CString::operator=(char ch) {
  m_str.assign(1, ch);
  return *this;
}

char CString::GetAt(int nIndex) const {
  if (nIndex < 0 || nIndex >= GetLength()) return '\0';
  return m_str[static_cast<size_t>(nIndex)];
}

void CString::SetAt(int nIndex, char ch) {
  if (nIndex < 0 || nIndex >= GetLength()) return;
  m_str[static_cast<size_t>(nIndex)] = ch;
}

CString& CString::operator+=(const CString& str) {
  m_str += str.m_str;
  return *this;
}

CString& CString::operator+=(const char* psz) {
  if (psz != nullptr) m_str += psz;
  return *this;
}

CString& CString::operator+=(char ch) {
  m_str += ch;
  return *this;
}

int CString::Compare(const char* psz) const { return Sign(m_str.compare(psz != nullptr ? psz : "")); }

int CString::Compare(const CString& str) const { return Sign(m_str.compare(str.m_str)); }

int CString::CompareNoCase(const char* psz) const {
  const char* pszOther = psz != nullptr ? psz : "";
  const size_t nOther = std::strlen(pszOther);
  const size_t nCommon = std::min(m_str.size(), nOther);
  for (size_t i = 0; i < nCommon; ++i) {
    const auto a = static_cast<unsigned char>(FoldAscii(m_str[i]));
    const auto b = static_cast<unsigned char>(FoldAscii(pszOther[i]));
    if (a != b) return a < b ? -1 : 1;
  }
  return m_str.size() == nOther ? 0 : (m_str.size() < nOther ? -1 : 1);
}

int CString::Collate(const char* psz) const { return Sign(std::strcoll(m_str.c_str(), psz != nullptr ? psz : "")); }

int CString::CollateNoCase(const char* psz) const {
  CString lower(*this);
  CString other(psz);
  lower.MakeLower();
  other.MakeLower();
  return lower.Collate(other);
}

int CString::Find(char ch, int nStart) const {
  if (nStart < 0 || nStart >= GetLength()) return -1;
  const size_t nPos = m_str.find(ch, static_cast<size_t>(nStart));
  return nPos == std::string::npos ? -1 : static_cast<int>(nPos);
}

int CString::Find(const char* pszSub, int nStart) const { return Find(CString(pszSub), nStart); }

int CString::Find(const CString& sub, int nStart) const {
  if (nStart < 0 || nStart > GetLength()) return -1;
  const size_t nPos = m_str.find(sub.m_str, static_cast<size_t>(nStart));
  return nPos == std::string::npos ? -1 : static_cast<int>(nPos);
}

int CString::ReverseFind(char ch) const {
  const size_t nPos = m_str.rfind(ch);
  return nPos == std::string::npos ? -1 : static_cast<int>(nPos);
}

int CString::FindOneOf(const char* pszCharSet) const {
  if (pszCharSet == nullptr) return -1;
  const size_t nPos = m_str.find_first_of(pszCharSet);
  return nPos == std::string::npos ? -1 : static_cast<int>(nPos);
}

CString CString::Left(int nCount) const { return Mid(0, nCount); }

CString CString::Mid(int nFirst) const { return Mid(nFirst, GetLength()); }

CString CString::Mid(int nFirst, int nCount) const {
  ClampRange(GetLength(), nFirst, nCount);
  return CString(m_str.substr(static_cast<size_t>(nFirst), static_cast<size_t>(nCount)));
}

CString CString::Right(int nCount) const {
  if (nCount < 0) nCount = 0;
  if (nCount > GetLength()) nCount = GetLength();
  return Mid(GetLength() - nCount, nCount);
}

CString& CString::MakeUpper() {
  for (char& ch : m_str) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
  return *this;
}

CString& CString::MakeLower() {
  for (char& ch : m_str) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
  return *this;
}

CString& CString::MakeReverse() {
  std::reverse(m_str.begin(), m_str.end());
  return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }

CString& CString::Trim(char chTarget) { return TrimRight(chTarget).TrimLeft(chTarget); }

CString& CString::Trim(const char* pszTargets) { return TrimRight(pszTargets).TrimLeft(pszTargets); }

CString& CString::TrimLeft() { return TrimLeft(WHITESPACE); }

CString& CString::TrimLeft(char chTarget) {
  const char targets[2] = {chTarget, '\0'};
  return TrimLeft(targets);
}

CString& CString::TrimLeft(const char* pszTargets) {
  if (pszTargets == nullptr || *pszTargets == '\0') return *this;
  m_str.erase(0, std::min(m_str.find_first_not_of(pszTargets), m_str.size()));
  return *this;
}

CString& CString::TrimRight() { return TrimRight(WHITESPACE); }

CString& CString::TrimRight(char chTarget) {
  const char targets[2] = {chTarget, '\0'};
  return TrimRight(targets);
}

CString& CString::TrimRight(const char* pszTargets) {
  if (pszTargets == nullptr || *pszTargets == '\0') return *this;
  const size_t nLast = m_str.find_last_not_of(pszTargets);
  m_str.erase(nLast == std::string::npos ? 0 : nLast + 1);
  return *this;
}

int CString::Replace(char chOld, char chNew) {
  int nCount = 0;
  for (char& ch : m_str) {
    if (ch == chOld) {
      ch = chNew;
      ++nCount;
    }
  }
  return nCount;
}

int CString::Replace(const char* pszOld, const char* pszNew) {
  if (pszOld == nullptr || *pszOld == '\0') return 0;
  const std::string strOld(pszOld);
  const std::string strNew(pszNew != nullptr ? pszNew : "");
  std::string result;
  int nCount = 0;
  size_t nFrom = 0;
  for (size_t nPos = m_str.find(strOld); nPos != std::string::npos; nPos = m_str.find(strOld, nFrom)) {
    result.append(m_str, nFrom, nPos - nFrom).append(strNew);
    nFrom = nPos + strOld.size();
    ++nCount;
  }
  if (nCount > 0) m_str = result.append(m_str, nFrom, std::string::npos);
  return nCount;
}

int CString::Remove(char chRemove) {
  const size_t nBefore = m_str.size();
  m_str.erase(std::remove(m_str.begin(), m_str.end(), chRemove), m_str.end());
  return static_cast<int>(nBefore - m_str.size());
}

int CString::Insert(int nIndex, char ch) {
  const char text[2] = {ch, '\0'};
  m_str.insert(static_cast<size_t>(std::clamp(nIndex, 0, GetLength())), text, 1);
  return GetLength();
}

int CString::Insert(int nIndex, const char* psz) {
  if (psz != nullptr) m_str.insert(static_cast<size_t>(std::clamp(nIndex, 0, GetLength())), psz);
  return GetLength();
}

int CString::Delete(int nIndex, int nCount) {
  ClampRange(GetLength(), nIndex, nCount);
  m_str.erase(static_cast<size_t>(nIndex), static_cast<size_t>(nCount));
  return GetLength();
}

void CString::Format(const char* pszFormat, ...) {
  va_list args;
  va_start(args, pszFormat);
  m_str = VFormat(pszFormat, args);
  va_end(args);
}

void CString::AppendFormat(const char* pszFormat, ...) {
  va_list args;
  va_start(args, pszFormat);
  m_str += VFormat(pszFormat, args);
  va_end(args);
}

CString CString::SpanIncluding(const char* pszCharSet) const {
  const size_t nEnd = pszCharSet != nullptr ? m_str.find_first_not_of(pszCharSet) : 0;
  return CString(m_str.substr(0, nEnd));
}

CString CString::SpanExcluding(const char* pszCharSet) const {
  const size_t nEnd = pszCharSet != nullptr ? m_str.find_first_of(pszCharSet) : std::string::npos;
  return CString(m_str.substr(0, nEnd));
}

CString CString::Tokenize(const char* pszTokens, int& iStart) const {
  if (iStart >= 0 && iStart < GetLength()) {
    if (pszTokens == nullptr || *pszTokens == '\0') {
      const CString rest = Mid(iStart);
      iStart = GetLength();
      return rest;
    }
    const size_t nFrom = m_str.find_first_not_of(pszTokens, static_cast<size_t>(iStart));
    if (nFrom != std::string::npos) {
      const size_t nUntil = std::min(m_str.find_first_of(pszTokens, nFrom), m_str.size());
      iStart = static_cast<int>(nUntil) + 1;
      return CString(m_str.substr(nFrom, nUntil - nFrom));
    }
  }
  iStart = -1;
  return CString();
}

CString operator+(const CString& a, const CString& b) {
  CString result(a);
  result += b;
  return result;
}

CString operator+(const CString& a, const char* b) {
  CString result(a);
  result += b;
  return result;
}

CString operator+(const char* a, const CString& b) {
  CString result(a);
  result += b;
  return result;
}

CString operator+(const CString& a, char b) {
  CString result(a);
  result += b;
  return result;
}

CString operator+(char a, const CString& b) {
  CString result(a);
  result += b;
  return result;
}
