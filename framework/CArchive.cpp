#include "framework/CArchive.h"

#include <algorithm>
#include <cstring>

namespace {

const size_t BUFFER_SIZE = 4096;
const BYTE STRING_WORD_LENGTH = 0xFF;  // a 16-bit length follows
const WORD STRING_DWORD_LENGTH = 0xFFFF;  // a 32-bit length follows
const WORD STRING_WORD_LIMIT = 0xFFFE;  // lengths from here on take 32 bits

}  // namespace

CArchive::CArchive(CFile* pFile, UINT nMode) : m_pFile(pFile), m_bLoading((nMode & load) != 0) {
  m_buffer.resize(BUFFER_SIZE);
  if (m_bLoading && m_pFile != nullptr) {
    const ULONGLONG nLength = m_pFile->GetLength();
    const ULONGLONG nPosition = m_pFile->GetPosition();
    m_nFileRemaining = nLength > nPosition ? nLength - nPosition : 0;
  }
}

UINT CArchive::ReadFromFile(void* pBuffer, UINT nCount) {
  const UINT nRead = m_pFile->Read(pBuffer, nCount);
  m_nFileRemaining -= std::min<ULONGLONG>(nRead, m_nFileRemaining);
  return nRead;
}

CArchive::~CArchive() {
  try {
    Close();
  } catch (const CArchiveException&) {  // NOLINT(bugprone-empty-catch): a destructor must not throw
  }
}

void CArchive::Throw(int cause) const {
  AfxThrowArchiveException(cause, m_pFile != nullptr ? m_pFile->GetFilePath().GetString() : nullptr);
}

void CArchive::CheckLoading() const {
  if (m_pFile == nullptr) Throw(CArchiveException::genericException);
  if (!m_bLoading) Throw(CArchiveException::writeOnly);
}

void CArchive::CheckStoring() const {
  if (m_pFile == nullptr) Throw(CArchiveException::genericException);
  if (m_bLoading) Throw(CArchiveException::readOnly);
}

UINT CArchive::Read(void* pBuffer, UINT nMax) {
  CheckLoading();
  auto* pOut = static_cast<BYTE*>(pBuffer);
  size_t nDone = std::min<size_t>(nMax, m_nBufferEnd - m_nBufferPos);
  if (nDone > 0) std::memcpy(pOut, m_buffer.data() + m_nBufferPos, nDone);
  m_nBufferPos += nDone;
  if (nDone == nMax) return nMax;
  if (nMax - nDone >= BUFFER_SIZE) return static_cast<UINT>(nDone + ReadFromFile(pOut + nDone, static_cast<UINT>(nMax - nDone)));
  m_nBufferEnd = ReadFromFile(m_buffer.data(), static_cast<UINT>(BUFFER_SIZE));
  m_nBufferPos = std::min<size_t>(nMax - nDone, m_nBufferEnd);
  if (m_nBufferPos > 0) std::memcpy(pOut + nDone, m_buffer.data(), m_nBufferPos);
  return static_cast<UINT>(nDone + m_nBufferPos);
}

void CArchive::ReadExact(void* pBuffer, size_t nCount) {
  auto* pOut = static_cast<BYTE*>(pBuffer);
  while (nCount > 0) {
    const UINT nChunk = static_cast<UINT>(std::min<size_t>(nCount, 0x40000000));
    const UINT nRead = Read(pOut, nChunk);
    if (nRead != nChunk) Throw(CArchiveException::endOfFile);
    pOut += nRead;
    nCount -= nRead;
  }
}

void CArchive::Write(const void* pBuffer, UINT nCount) {
  CheckStoring();
  if (m_nBufferEnd + nCount > BUFFER_SIZE) Flush();
  if (nCount >= BUFFER_SIZE) {
    m_pFile->Write(pBuffer, nCount);
    return;
  }
  std::memcpy(m_buffer.data() + m_nBufferEnd, pBuffer, nCount);
  m_nBufferEnd += nCount;
}

void CArchive::Flush() {
  if (m_pFile == nullptr || m_bLoading || m_nBufferEnd == 0) return;
  m_pFile->Write(m_buffer.data(), static_cast<UINT>(m_nBufferEnd));
  m_nBufferEnd = 0;
}

void CArchive::Close() {
  if (m_pFile == nullptr) return;
  Flush();
  m_pFile = nullptr;
}

ULONGLONG CArchive::GetBytesRemaining() const {
  if (m_pFile == nullptr || !m_bLoading) return 0;
  return m_nFileRemaining + (m_nBufferEnd - m_nBufferPos);
}

namespace {

// The archive is little-endian; on a little-endian machine a value is one
// copy.
#if defined(__BYTE_ORDER__) && (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__)
constexpr bool LITTLE_ENDIAN_MACHINE = true;
#else
constexpr bool LITTLE_ENDIAN_MACHINE = false;
#endif

template <size_t N>
void ToLittleEndian(ULONGLONG nValue, BYTE* pBytes) {
  if constexpr (LITTLE_ENDIAN_MACHINE) {
    std::memcpy(pBytes, &nValue, N);
  } else {
    for (size_t i = 0; i < N; ++i) pBytes[i] = static_cast<BYTE>(nValue >> (8 * i));
  }
}

template <size_t N>
ULONGLONG FromLittleEndian(const BYTE* pBytes) {
  ULONGLONG nValue = 0;
  if constexpr (LITTLE_ENDIAN_MACHINE) {
    std::memcpy(&nValue, pBytes, N);
  } else {
    for (size_t i = 0; i < N; ++i) nValue |= static_cast<ULONGLONG>(pBytes[i]) << (8 * i);
  }
  return nValue;
}

}  // namespace

// Both take their width as a template argument so that each becomes a
// plain copy into or out of the block.
template <size_t N>
void CArchive::WriteUnsigned(ULONGLONG nValue) {
  if (m_pFile != nullptr && !m_bLoading && m_nBufferEnd + N <= BUFFER_SIZE) {
    ToLittleEndian<N>(nValue, m_buffer.data() + m_nBufferEnd);
    m_nBufferEnd += N;
    return;
  }
  BYTE bytes[N];
  ToLittleEndian<N>(nValue, bytes);
  Write(bytes, static_cast<UINT>(N));
}

template <size_t N>
ULONGLONG CArchive::ReadUnsigned() {
  if (m_pFile != nullptr && m_bLoading && m_nBufferEnd - m_nBufferPos >= N) {
    const ULONGLONG nValue = FromLittleEndian<N>(m_buffer.data() + m_nBufferPos);
    m_nBufferPos += N;
    return nValue;
  }
  CheckLoading();
  BYTE bytes[N];
  ReadExact(bytes, N);
  return FromLittleEndian<N>(bytes);
}

CArchive& CArchive::operator<<(BYTE by) {
  WriteUnsigned<1>(by);
  return *this;
}

CArchive& CArchive::operator<<(char ch) { return *this << static_cast<BYTE>(ch); }

CArchive& CArchive::operator<<(WORD w) {
  WriteUnsigned<2>(w);
  return *this;
}

CArchive& CArchive::operator<<(short n) { return *this << static_cast<WORD>(n); }

CArchive& CArchive::operator<<(int n) { return *this << static_cast<UINT>(n); }

CArchive& CArchive::operator<<(UINT n) {
  WriteUnsigned<4>(n);
  return *this;
}

CArchive& CArchive::operator<<(LONGLONG n) { return *this << static_cast<ULONGLONG>(n); }

CArchive& CArchive::operator<<(ULONGLONG n) {
  WriteUnsigned<8>(n);
  return *this;
}

CArchive& CArchive::operator<<(float f) {
  UINT nBits = 0;
  std::memcpy(&nBits, &f, sizeof nBits);
  return *this << nBits;
}

CArchive& CArchive::operator<<(double d) {
  ULONGLONG nBits = 0;
  std::memcpy(&nBits, &d, sizeof nBits);
  return *this << nBits;
}

void CArchive::WriteString(const char* pch, size_t nLength) {
  if (nLength < STRING_WORD_LENGTH) {
    *this << static_cast<BYTE>(nLength);
  } else if (nLength < STRING_WORD_LIMIT) {
    *this << STRING_WORD_LENGTH << static_cast<WORD>(nLength);
  } else {
    *this << STRING_WORD_LENGTH << STRING_DWORD_LENGTH << static_cast<UINT>(nLength);
  }
  Write(pch, static_cast<UINT>(nLength));
}

CArchive& CArchive::operator<<(const CString& str) {
  WriteString(str.GetStdString().data(), str.GetStdString().size());
  return *this;
}

CArchive& CArchive::operator<<(const char* psz) { return *this << CString(psz); }

CArchive& CArchive::operator>>(BYTE& by) {
  by = static_cast<BYTE>(ReadUnsigned<1>());
  return *this;
}

CArchive& CArchive::operator>>(char& ch) {
  ch = static_cast<char>(ReadUnsigned<1>());
  return *this;
}

CArchive& CArchive::operator>>(WORD& w) {
  w = static_cast<WORD>(ReadUnsigned<2>());
  return *this;
}

CArchive& CArchive::operator>>(short& n) {
  n = static_cast<short>(ReadUnsigned<2>());
  return *this;
}

CArchive& CArchive::operator>>(int& n) {
  n = static_cast<int>(ReadUnsigned<4>());
  return *this;
}

CArchive& CArchive::operator>>(UINT& n) {
  n = static_cast<UINT>(ReadUnsigned<4>());
  return *this;
}

CArchive& CArchive::operator>>(LONGLONG& n) {
  n = static_cast<LONGLONG>(ReadUnsigned<8>());
  return *this;
}

CArchive& CArchive::operator>>(ULONGLONG& n) {
  n = ReadUnsigned<8>();
  return *this;
}

CArchive& CArchive::operator>>(float& f) {
  const auto nBits = static_cast<UINT>(ReadUnsigned<4>());
  std::memcpy(&f, &nBits, sizeof f);
  return *this;
}

CArchive& CArchive::operator>>(double& d) {
  const ULONGLONG nBits = ReadUnsigned<8>();
  std::memcpy(&d, &nBits, sizeof d);
  return *this;
}

// A 0xFFFE word after 0xFF is never written by this form (lengths from
// 0xFFFE on take 32 bits), so it marks a damaged or foreign archive.
size_t CArchive::ReadStringLength() {
  ULONGLONG nLength = ReadUnsigned<1>();
  if (nLength == STRING_WORD_LENGTH) {
    nLength = ReadUnsigned<2>();
    if (nLength == STRING_WORD_LIMIT) Throw(CArchiveException::badSchema);
    if (nLength == STRING_DWORD_LENGTH) nLength = ReadUnsigned<4>();
  }
  if (nLength > GetBytesRemaining()) Throw(CArchiveException::endOfFile);
  return static_cast<size_t>(nLength);
}

CArchive& CArchive::operator>>(CString& str) {
  std::string bytes(ReadStringLength(), '\0');
  ReadExact(bytes.data(), bytes.size());
  str = CString(std::move(bytes));
  return *this;
}
