#ifndef FRAMEWORK_CARCHIVEEXCEPTION_H_
#define FRAMEWORK_CARCHIVEEXCEPTION_H_

#include <exception>

#include "framework/CString.h"
#include "framework/FrameworkExport.h"

// A fault of an archive: data that ends too early, a direction misuse, or a
// layout that cannot be read. Thrown by value through
// AfxThrowArchiveException; callers catch const CArchiveException&.
class FRAMEWORK_API CArchiveException : public std::exception {
 public:
  // The causes and their numbers are the framework's; do not renumber.
  enum {
    none = 0,
    genericException = 1,
    readOnly = 2,  // storing into an archive that loads
    endOfFile = 3,  // the data ended before the value being read
    writeOnly = 4,  // loading from an archive that stores
    badIndex = 5,
    badClass = 6,
    badSchema = 7,  // a version or layout that cannot be read
  };

  explicit CArchiveException(int cause = none, const CString& strArchiveName = CString());

  const char* what() const noexcept override;

  int m_cause;
  CString m_strFileName;
};

// Throws CArchiveException(cause) carrying the archive's file name, if any.
[[noreturn]] FRAMEWORK_API void AfxThrowArchiveException(int cause, const char* pszArchiveName = nullptr);

#endif  // FRAMEWORK_CARCHIVEEXCEPTION_H_
