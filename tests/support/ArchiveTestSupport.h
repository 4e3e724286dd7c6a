#ifndef TESTS_SUPPORT_ARCHIVETESTSUPPORT_H_
#define TESTS_SUPPORT_ARCHIVETESTSUPPORT_H_

// Helpers for archive tests: storing into and loading from memory, archives
// written field by field without the code under test, hex dumps that show
// which field differs, and damaged copies of an archive.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "framework/CArchive.h"
#include "framework/CMemFile.h"

namespace test_support {

using Bytes = std::vector<BYTE>;

// The bytes that fn stores.
template <typename Fn>
Bytes Store(Fn fn) {
  CMemFile file;
  {
    CArchive ar(&file, CArchive::store);
    fn(ar);
  }
  return file.GetContents();
}

// Runs fn on a loading archive over bytes; returns how many bytes it left.
template <typename Fn>
ULONGLONG Load(const Bytes& bytes, Fn fn) {
  CMemFile file(bytes);
  CArchive ar(&file, CArchive::load);
  fn(ar);
  return ar.GetBytesRemaining();
}

// Sixteen bytes to a line, so that a failing comparison points at the field.
inline std::string ToHex(const Bytes& bytes) {
  std::string text;
  char cell[4];
  for (size_t i = 0; i < bytes.size(); ++i) {
    std::snprintf(cell, sizeof cell, "%02x", bytes[i]);
    text += cell;
    text += (i % 16 == 15 || i + 1 == bytes.size()) ? "\n" : " ";
  }
  return text;
}

// The enciphered text form of flagged texts and addresses, worked out by
// hand: byte i XORed with (0xA5 + 31 i) mod 256.
inline std::string Enciphered(const std::string& text) {
  std::string enciphered = text;
  for (size_t i = 0; i < text.size(); ++i) {
    enciphered[i] = static_cast<char>(static_cast<unsigned char>(text[i]) ^ ((0xA5 + 31 * i) & 0xFF));
  }
  return enciphered;
}

// Writes an archive field by field, little-endian, independently of
// CArchive, so that fixtures state each field they hold.
class ByteWriter {
 public:
  ByteWriter& Byte(unsigned n) { return Little(n, 1); }
  ByteWriter& Bool(bool b) { return Little(b ? 1 : 0, 1); }
  ByteWriter& Word(unsigned n) { return Little(n, 2); }
  ByteWriter& Int(long long n) { return Little(static_cast<unsigned long long>(n), 4); }
  ByteWriter& Int64(long long n) { return Little(static_cast<unsigned long long>(n), 8); }
  ByteWriter& Counter(unsigned long long n, bool bOldFormat) { return Little(n, bOldFormat ? 4 : 8); }
  ByteWriter& Double(double d) {
    unsigned long long bits = 0;
    static_assert(sizeof bits == sizeof d, "double is 8 bytes");
    std::memcpy(&bits, &d, sizeof d);
    return Little(bits, 8);
  }
  // The framework's text form: 1-byte length below 255, else 0xFF and a
  // 16-bit length below 0xFFFE, else 0xFF 0xFFFF and a 32-bit length.
  ByteWriter& Text(const std::string& text) {
    if (text.size() < 0xFF) {
      Byte(static_cast<unsigned>(text.size()));
    } else if (text.size() < 0xFFFE) {
      Byte(0xFF).Word(static_cast<unsigned>(text.size()));
    } else {
      Byte(0xFF).Word(0xFFFF).Int(static_cast<long long>(text.size()));
    }
    m_bytes.insert(m_bytes.end(), text.begin(), text.end());
    return *this;
  }
  ByteWriter& Raw(const Bytes& bytes) {
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    return *this;
  }
  const Bytes& Get() const { return m_bytes; }

 private:
  ByteWriter& Little(unsigned long long n, int nBytes) {
    for (int i = 0; i < nBytes; ++i) m_bytes.push_back(static_cast<BYTE>(n >> (8 * i)));
    return *this;
  }
  Bytes m_bytes;
};

inline Bytes ShrinkSize(Bytes bytes, size_t nSize) {
  if (nSize < bytes.size()) bytes.resize(nSize);
  return bytes;
}

inline Bytes SetByte(Bytes bytes, size_t nOffset, BYTE nValue) {
  if (nOffset < bytes.size()) bytes[nOffset] = nValue;
  return bytes;
}

// Loading any proper prefix of a complete archive must end in an archive
// exception with the end-of-file cause, never a crash or a silent success.
template <typename Fn>
void ExpectEveryCutThrowsEndOfFile(const Bytes& full, Fn load) {
  for (size_t nCut = 0; nCut < full.size(); ++nCut) {
    try {
      Load(ShrinkSize(full, nCut), load);
      ADD_FAILURE() << "loading the first " << nCut << " of " << full.size() << " bytes did not throw";
    } catch (const CArchiveException& e) {
      EXPECT_EQ(e.m_cause, CArchiveException::endOfFile) << "cut at " << nCut;
    }
  }
}

// Loads bytes into target, which must read every one of them.
template <typename T>
void LoadAll(const Bytes& bytes, T& target) {
  EXPECT_EQ(Load(bytes, [&](CArchive& ar) { target.Serialize(ar); }), 0u);
}

// The bytes value stores.
template <typename T>
Bytes Stored(T& value) {
  return Store([&](CArchive& ar) { value.Serialize(ar); });
}

// A fresh T loaded from bytes, every one of which it must read.
template <typename T>
T Loaded(const Bytes& bytes) {
  T target;
  LoadAll(bytes, target);
  return target;
}

// The checks every archive form gets: value stores exactly the hand-written
// bytes; a fresh T loads every byte and stores the same bytes again; every
// cut of them ends in end-of-file. check, if given, looks at the loaded T.
template <typename T, typename Check>
void ExpectArchiveForm(T& value, const Bytes& expected, Check check) {
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { value.Serialize(ar); })), ToHex(expected));
  T loaded;
  LoadAll(expected, loaded);
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { loaded.Serialize(ar); })), ToHex(expected));
  check(loaded);
  ExpectEveryCutThrowsEndOfFile(expected, [](CArchive& ar) { T().Serialize(ar); });
}
template <typename T>
void ExpectArchiveForm(T& value, const Bytes& expected) {
  ExpectArchiveForm(value, expected, [](const T&) {});
}

}  // namespace test_support

#endif  // TESTS_SUPPORT_ARCHIVETESTSUPPORT_H_
