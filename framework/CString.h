#ifndef FRAMEWORK_CSTRING_H_
#define FRAMEWORK_CSTRING_H_

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>

#include "framework/FrameworkExport.h"

// An 8-bit text in the host's code page, with the application framework's
// member functions. It owns its bytes; embedded NUL bytes are kept (though
// the C-string views, GetString and the const char* conversion, end at the
// first one for C functions that read them).
//
// Positions and counts are int. No member throws for a position or count out
// of range: counts are clamped to the text, a search from past the end finds
// nothing (-1), and reads or writes at a bad position do nothing.
class FRAMEWORK_API CString {
 public:
  CString() = default;
  CString(const char* psz);  // NOLINT(google-explicit-constructor): framework semantics
  CString(const char* pch, int nLength);
  // Explicit, so that an integer passed where a text is expected does not
  // become a one-character text.
  explicit CString(char ch, int nRepeat = 1);
  CString(const std::string& str);    // NOLINT(google-explicit-constructor)
  CString(std::string&& str);         // NOLINT(google-explicit-constructor)

  CString& operator=(const char* psz);
  CString& operator=(char ch);

  int GetLength() const { return static_cast<int>(m_str.size()); }
  bool IsEmpty() const { return m_str.empty(); }
  void Empty() { m_str.clear(); }

  // The byte at nIndex, or '\0' when nIndex is not within the text.
  char GetAt(int nIndex) const;
  char operator[](int nIndex) const { return GetAt(nIndex); }
  // Replaces the byte at nIndex; does nothing when nIndex is not within the text.
  void SetAt(int nIndex, char ch);

  const char* GetString() const { return m_str.c_str(); }
  operator const char*() const { return m_str.c_str(); }  // NOLINT(google-explicit-constructor)
  const std::string& GetStdString() const { return m_str; }

  CString& operator+=(const CString& str);
  CString& operator+=(const char* psz);
  CString& operator+=(char ch);

  // Byte-wise comparisons: -1, 0 or 1.
  int Compare(const char* psz) const;
  int Compare(const CString& str) const;
  // ASCII letters fold to lower case; every other byte compares as it is.
  int CompareNoCase(const char* psz) const;
  // The C library's collation of the current locale (strcoll): -1, 0 or 1.
  int Collate(const char* psz) const;
  int CollateNoCase(const char* psz) const;

  // Searches return the position of the first match at or after nStart, or
  // -1 when there is none or nStart is negative or past the end.
  int Find(char ch, int nStart = 0) const;
  int Find(const char* pszSub, int nStart = 0) const;
  int Find(const CString& sub, int nStart = 0) const;
  int ReverseFind(char ch) const;
  int FindOneOf(const char* pszCharSet) const;

  CString Left(int nCount) const;
  CString Mid(int nFirst) const;
  CString Mid(int nFirst, int nCount) const;
  CString Right(int nCount) const;

  // Case changes use the C library's toupper/tolower byte by byte.
  CString& MakeUpper();
  CString& MakeLower();
  CString& MakeReverse();

  // Without an argument, the white space of isspace is trimmed.
  CString& Trim();
  CString& Trim(char chTarget);
  CString& Trim(const char* pszTargets);
  CString& TrimLeft();
  CString& TrimLeft(char chTarget);
  CString& TrimLeft(const char* pszTargets);
  CString& TrimRight();
  CString& TrimRight(char chTarget);
  CString& TrimRight(const char* pszTargets);

  // Replaces every occurrence, left to right without overlap, and returns the
  // count. An empty pszOld replaces nothing.
  int Replace(char chOld, char chNew);
  int Replace(const char* pszOld, const char* pszNew);
  // Removes every occurrence of chRemove and returns the count.
  int Remove(char chRemove);
  // Inserts before nIndex (clamped to the text) and returns the new length.
  int Insert(int nIndex, char ch);
  int Insert(int nIndex, const char* psz);
  // Deletes up to nCount bytes from nIndex and returns the new length.
  int Delete(int nIndex, int nCount = 1);

  void Format(const char* pszFormat, ...) FRAMEWORK_PRINTF_FORMAT(2, 3);
  void AppendFormat(const char* pszFormat, ...) FRAMEWORK_PRINTF_FORMAT(2, 3);

  // The leading run of bytes that are (Including) or are not (Excluding) in
  // pszCharSet.
  CString SpanIncluding(const char* pszCharSet) const;
  CString SpanExcluding(const char* pszCharSet) const;
  // The next token from iStart, skipping leading delimiters; iStart moves past
  // the token's delimiter. At the end it returns an empty text and sets
  // iStart to -1.
  CString Tokenize(const char* pszTokens, int& iStart) const;

 private:
  std::string m_str;
};

FRAMEWORK_API CString operator+(const CString& a, const CString& b);
FRAMEWORK_API CString operator+(const CString& a, const char* b);
FRAMEWORK_API CString operator+(const char* a, const CString& b);
FRAMEWORK_API CString operator+(const CString& a, char b);
FRAMEWORK_API CString operator+(char a, const CString& b);

inline bool operator==(const CString& a, const CString& b) { return a.GetStdString() == b.GetStdString(); }
inline bool operator==(const CString& a, const char* b) { return a.Compare(b) == 0; }
inline bool operator==(const char* a, const CString& b) { return b.Compare(a) == 0; }
inline bool operator!=(const CString& a, const CString& b) { return !(a == b); }
inline bool operator!=(const CString& a, const char* b) { return !(a == b); }
inline bool operator!=(const char* a, const CString& b) { return !(a == b); }
inline bool operator<(const CString& a, const CString& b) { return a.Compare(b) < 0; }
inline bool operator>(const CString& a, const CString& b) { return a.Compare(b) > 0; }
inline bool operator<=(const CString& a, const CString& b) { return a.Compare(b) <= 0; }
inline bool operator>=(const CString& a, const CString& b) { return a.Compare(b) >= 0; }

inline std::ostream& operator<<(std::ostream& os, const CString& str) { return os << str.GetStdString(); }

template <>
struct std::hash<CString> {
  std::size_t operator()(const CString& str) const noexcept { return std::hash<std::string>()(str.GetStdString()); }
};

#endif  // FRAMEWORK_CSTRING_H_
