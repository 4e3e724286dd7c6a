#ifndef FRAMEWORK_CARCHIVE_H_
#define FRAMEWORK_CARCHIVE_H_

#include <vector>

#include "framework/CArchiveException.h"
#include "framework/CFile.h"
#include "framework/CString.h"
#include "framework/FrameworkExport.h"
#include "framework/Types.h"

// A binary archive that either stores values into a CFile or loads them from
// one, little-endian whatever the machine. It does not own the file; the file
// must outlive the archive or its Close. Stored bytes are buffered and reach
// the file on Flush, Close or destruction. A loading archive reads the file
// from its position at construction to its length then; the file must not
// change while it loads.
//
// Faults throw CArchiveException: storing into a loading archive (readOnly),
// loading from a storing archive (writeOnly), a value that runs past the end
// of the data (endOfFile), use after Close (genericException). Read alone
// keeps the framework's rule of returning the count actually read.
//
// A text is stored in the framework's length-prefixed form: a length below
// 255 as one byte; else 0xFF and a 16-bit length when below 0xFFFE; else
// 0xFF, 0xFFFF and a 32-bit length; then the bytes, no terminator.
class FRAMEWORK_API CArchive {
 public:
  enum Mode : UINT { store = 0, load = 1 };

  CArchive(CFile* pFile, UINT nMode);
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;
  // Flushes a storing archive that was not closed; a failing flush is lost.
  ~CArchive();

  bool IsLoading() const { return m_bLoading; }
  bool IsStoring() const { return !m_bLoading; }
  CFile* GetFile() const { return m_pFile; }

  UINT Read(void* pBuffer, UINT nMax);
  void Write(const void* pBuffer, UINT nCount);
  void Flush();
  // Flushes a storing archive and detaches it from its file.
  void Close();

  // Loading: the bytes still to be read. Counts read from an archive are
  // checked against this before anything is allocated for them.
  ULONGLONG GetBytesRemaining() const;

  // The text form of nLength bytes at pch, as operator<<(const CString&)
  // writes it, for texts not kept in a CString.
  void WriteString(const char* pch, size_t nLength);
  // Loading: the length prefix of a text, checked against the bytes that
  // remain; the caller then reads that many bytes (ReadExact).
  size_t ReadStringLength();
  // Loading: nCount bytes, or CArchiveException(endOfFile).
  void ReadExact(void* pBuffer, size_t nCount);

  CArchive& operator<<(BYTE by);
  CArchive& operator<<(char ch);
  CArchive& operator<<(WORD w);
  CArchive& operator<<(short n);
  CArchive& operator<<(int n);
  CArchive& operator<<(UINT n);
  CArchive& operator<<(LONGLONG n);
  CArchive& operator<<(ULONGLONG n);
  CArchive& operator<<(float f);
  CArchive& operator<<(double d);
  CArchive& operator<<(const CString& str);
  CArchive& operator<<(const char* psz);
  // A bool has no archive form of its own here (it would silently widen to
  // an int); the utility library's bool form is one byte.
  CArchive& operator<<(bool) = delete;

  CArchive& operator>>(BYTE& by);
  CArchive& operator>>(char& ch);
  CArchive& operator>>(WORD& w);
  CArchive& operator>>(short& n);
  CArchive& operator>>(int& n);
  CArchive& operator>>(UINT& n);
  CArchive& operator>>(LONGLONG& n);
  CArchive& operator>>(ULONGLONG& n);
  CArchive& operator>>(float& f);
  CArchive& operator>>(double& d);
  CArchive& operator>>(CString& str);
  CArchive& operator>>(bool&) = delete;

 private:
  void CheckLoading() const;
  void CheckStoring() const;
  [[noreturn]] void Throw(int cause) const;
  UINT ReadFromFile(void* pBuffer, UINT nCount);
  template <size_t N>
  void WriteUnsigned(ULONGLONG nValue);
  template <size_t N>
  ULONGLONG ReadUnsigned();

  CFile* m_pFile;
  bool m_bLoading;
  std::vector<BYTE> m_buffer;  // a fixed block
  size_t m_nBufferEnd = 0;  // storing: bytes not yet written; loading: bytes read ahead
  size_t m_nBufferPos = 0;  // loading: next unread byte, at most m_nBufferEnd
  ULONGLONG m_nFileRemaining = 0;  // loading: bytes of the file not yet read into m_buffer
};

#endif  // FRAMEWORK_CARCHIVE_H_
