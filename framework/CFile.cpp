#include "framework/CFile.h"

#include <sys/stat.h>

#include "framework/CArchiveException.h"

namespace {

const char* FopenMode(UINT nOpenFlags) {
  const bool bCreate = (nOpenFlags & CFile::modeCreate) != 0;
  const bool bKeep = (nOpenFlags & CFile::modeNoTruncate) != 0;
  if ((nOpenFlags & CFile::modeReadWrite) != 0) return bCreate && !bKeep ? "w+b" : "r+b";
  if ((nOpenFlags & CFile::modeWrite) != 0) return bCreate && !bKeep ? "wb" : "r+b";
  return "rb";
}

}  // namespace

CFile::~CFile() { Close(); }

bool CFile::Open(const char* pszFileName, UINT nOpenFlags) {
  Close();
  if (pszFileName == nullptr) return false;
  m_pStream = std::fopen(pszFileName, FopenMode(nOpenFlags));
  if (m_pStream == nullptr && (nOpenFlags & modeCreate) != 0 && (nOpenFlags & modeNoTruncate) != 0) {
    m_pStream = std::fopen(pszFileName, (nOpenFlags & modeReadWrite) != 0 ? "w+b" : "wb");
  }
  if (m_pStream == nullptr) return false;
  m_strFilePath = pszFileName;
  return true;
}

UINT CFile::Read(void* pBuffer, UINT nCount) {
  if (m_pStream == nullptr || nCount == 0) return 0;
  return static_cast<UINT>(std::fread(pBuffer, 1, nCount, m_pStream));
}

void CFile::Write(const void* pBuffer, UINT nCount) {
  if (nCount == 0) return;
  if (m_pStream == nullptr || std::fwrite(pBuffer, 1, nCount, m_pStream) != nCount) {
    AfxThrowArchiveException(CArchiveException::genericException, m_strFilePath);
  }
}

ULONGLONG CFile::Seek(LONGLONG nOffset, UINT nFrom) {
  if (m_pStream == nullptr) return 0;
  const int nWhence = nFrom == end ? SEEK_END : (nFrom == current ? SEEK_CUR : SEEK_SET);
  if (fseeko(m_pStream, static_cast<off_t>(nOffset), nWhence) != 0) fseeko(m_pStream, 0, SEEK_SET);
  return GetPosition();
}

ULONGLONG CFile::GetLength() const {
  if (m_pStream == nullptr) return 0;
  std::fflush(m_pStream);
  struct stat info {};
  if (fstat(fileno(m_pStream), &info) != 0) return 0;
  return static_cast<ULONGLONG>(info.st_size);
}

ULONGLONG CFile::GetPosition() const {
  if (m_pStream == nullptr) return 0;
  const off_t nPos = ftello(m_pStream);
  return nPos < 0 ? 0 : static_cast<ULONGLONG>(nPos);
}

void CFile::Flush() {
  if (m_pStream != nullptr && std::fflush(m_pStream) != 0) {
    AfxThrowArchiveException(CArchiveException::genericException, m_strFilePath);
  }
}

void CFile::Close() {
  if (m_pStream == nullptr) return;
  std::fclose(m_pStream);
  m_pStream = nullptr;
}
