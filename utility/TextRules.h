#ifndef UTILITY_TEXTRULES_H_
#define UTILITY_TEXTRULES_H_

// Character and path rules shared by the sources of the utility library.
// Internal: not installed with the library's interface and not exported.

#include <cctype>

#include "framework/CString.h"

namespace text_rules {

inline bool IsAsciiLetter(char ch) { return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z'); }
inline bool IsAsciiDigit(char ch) { return ch >= '0' && ch <= '9'; }
inline bool IsAsciiAlnum(char ch) { return IsAsciiLetter(ch) || IsAsciiDigit(ch); }
inline bool IsBlank(char ch) { return std::isspace(static_cast<unsigned char>(ch)) != 0; }

// Letters, digits and underscore; a byte of 0x80 and above counts as a
// letter of the host's code page.
inline bool IsWordChar(char ch) { return IsAsciiAlnum(ch) || ch == '_' || static_cast<unsigned char>(ch) >= 0x80; }

// The case folding of CString::MakeLower, one byte at a time.
inline char FoldCase(char ch) { return static_cast<char>(std::tolower(static_cast<unsigned char>(ch))); }

inline bool SameChar(char a, char b, bool bCaseSensitive) {
  return bCaseSensitive ? a == b : FoldCase(a) == FoldCase(b);
}

// Paths written on any system: both slashes separate folders.
inline bool IsSeparator(char ch) { return ch == '/' || ch == '\\'; }

// The position of the last separator, or -1 when there is none.
inline int FindLastSeparator(const CString& path) {
  for (int i = path.GetLength() - 1; i >= 0; --i) {
    if (IsSeparator(path[i])) return i;
  }
  return -1;
}

// The length of a drive prefix ("C:"), 0 when the path has none.
inline int DriveLength(const CString& path) {
  return path.GetLength() >= 2 && IsAsciiLetter(path[0]) && path[1] == ':' ? 2 : 0;
}

// The length of the folder part of path, its last separator included (or
// the drive prefix alone when there is no separator); 0 when there is none.
inline int FolderLength(const CString& path) {
  const int nSeparator = FindLastSeparator(path);
  return nSeparator >= 0 ? nSeparator + 1 : DriveLength(path);
}

}  // namespace text_rules

#endif  // UTILITY_TEXTRULES_H_
