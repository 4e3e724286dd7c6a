#ifndef FRAMEWORK_CMEMFILE_H_
#define FRAMEWORK_CMEMFILE_H_

#include <cstddef>
#include <vector>

#include "framework/CFile.h"

// A file held in memory: a growable byte buffer with a position. It owns a
// copy of the bytes it was given; writes past the end grow it, and Seek
// clamps the position to [0, length]. It is always open; Close only moves the
// position back to the start.
class FRAMEWORK_API CMemFile : public CFile {
 public:
  CMemFile() = default;
  CMemFile(const void* pData, size_t nSize);
  explicit CMemFile(std::vector<BYTE> data);

  bool Open(const char* pszFileName, UINT nOpenFlags) override;
  UINT Read(void* pBuffer, UINT nCount) override;
  void Write(const void* pBuffer, UINT nCount) override;
  ULONGLONG Seek(LONGLONG nOffset, UINT nFrom) override;
  ULONGLONG GetLength() const override { return m_data.size(); }
  ULONGLONG GetPosition() const override { return m_nPosition; }
  void Flush() override {}
  void Close() override { m_nPosition = 0; }

  const std::vector<BYTE>& GetContents() const { return m_data; }

 private:
  std::vector<BYTE> m_data;
  size_t m_nPosition = 0;
};

#endif  // FRAMEWORK_CMEMFILE_H_
