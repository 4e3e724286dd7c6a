#include "framework/CMemFile.h"

#include <algorithm>
#include <cstring>

CMemFile::CMemFile(const void* pData, size_t nSize)
    : m_data(static_cast<const BYTE*>(pData), static_cast<const BYTE*>(pData) + nSize) {}

CMemFile::CMemFile(std::vector<BYTE> data) : m_data(std::move(data)) {}

bool CMemFile::Open(const char* /*pszFileName*/, UINT /*nOpenFlags*/) { return false; }

UINT CMemFile::Read(void* pBuffer, UINT nCount) {
  const size_t nAvailable = m_nPosition < m_data.size() ? m_data.size() - m_nPosition : 0;
  const size_t nRead = std::min<size_t>(nCount, nAvailable);
  if (nRead > 0) std::memcpy(pBuffer, m_data.data() + m_nPosition, nRead);
  m_nPosition += nRead;
  return static_cast<UINT>(nRead);
}

void CMemFile::Write(const void* pBuffer, UINT nCount) {
  if (nCount == 0) return;
  if (m_nPosition + nCount > m_data.size()) m_data.resize(m_nPosition + nCount);
  std::memcpy(m_data.data() + m_nPosition, pBuffer, nCount);
  m_nPosition += nCount;
}

ULONGLONG CMemFile::Seek(LONGLONG nOffset, UINT nFrom) {
  LONGLONG nBase = 0;
  if (nFrom == current) nBase = static_cast<LONGLONG>(m_nPosition);
  if (nFrom == end) nBase = static_cast<LONGLONG>(m_data.size());
  const auto nSize = static_cast<LONGLONG>(m_data.size());
  const LONGLONG nTarget = nOffset < -nBase ? 0 : (nOffset > nSize - nBase ? nSize : nBase + nOffset);
  m_nPosition = static_cast<size_t>(nTarget);
  return m_nPosition;
}
