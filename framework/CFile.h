#ifndef FRAMEWORK_CFILE_H_
#define FRAMEWORK_CFILE_H_

#include <cstdio>

#include "framework/CString.h"
#include "framework/FrameworkExport.h"
#include "framework/Types.h"

// A binary file on disk, the byte source or sink of an archive. It owns the
// open file handle and closes it when closed or destroyed. Reads return the
// count actually read (fewer at the end of the file); a write the file
// refuses throws CArchiveException(genericException).
class FRAMEWORK_API CFile {
 public:
  enum OpenFlags : UINT {
    modeRead = 0x0000,
    modeWrite = 0x0001,
    modeReadWrite = 0x0002,
    modeCreate = 0x1000,  // create, or truncate an existing file
    modeNoTruncate = 0x2000,  // with modeCreate: keep an existing file's bytes
    typeBinary = 0x8000,  // accepted and ignored: every file is binary
  };
  enum SeekPosition : UINT { begin = 0, current = 1, end = 2 };

  CFile() = default;
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;
  virtual ~CFile();

  // Opens pszFileName; false when it cannot be opened (the file stays closed).
  virtual bool Open(const char* pszFileName, UINT nOpenFlags);
  virtual UINT Read(void* pBuffer, UINT nCount);
  virtual void Write(const void* pBuffer, UINT nCount);
  // Moves the position and returns it; positions before the start clamp to 0.
  virtual ULONGLONG Seek(LONGLONG nOffset, UINT nFrom);
  virtual ULONGLONG GetLength() const;
  virtual ULONGLONG GetPosition() const;
  virtual void Flush();
  virtual void Close();

  bool IsOpen() const { return m_pStream != nullptr; }
  const CString& GetFilePath() const { return m_strFilePath; }

 protected:
  CString m_strFilePath;

 private:
  std::FILE* m_pStream = nullptr;
};

#endif  // FRAMEWORK_CFILE_H_
