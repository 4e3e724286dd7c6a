#include "framework/CArchiveException.h"

CArchiveException::CArchiveException(int cause, const CString& strArchiveName)
    : m_cause(cause), m_strFileName(strArchiveName) {}

const char* CArchiveException::what() const noexcept {
  switch (m_cause) {
    case none:
      return "archive: no error";
    case readOnly:
      return "archive: tried to store into an archive opened for loading";
    case endOfFile:
      return "archive: reached the end of the data";
    case writeOnly:
      return "archive: tried to load from an archive opened for storing";
    case badIndex:
      return "archive: invalid file format";
    case badClass:
      return "archive: unexpected object type";
    case badSchema:
      return "archive: unsupported layout version";
    default:
      return "archive: generic error";
  }
}

void AfxThrowArchiveException(int cause, const char* pszArchiveName) {
  throw CArchiveException(cause, CString(pszArchiveName));
}
