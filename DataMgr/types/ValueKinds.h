#ifndef DATAMGR_TYPES_VALUEKINDS_H_
#define DATAMGR_TYPES_VALUEKINDS_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "DataMgr/types/Money.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

// The value kinds of a record and the packed form of one value of each kind,
// as a record keeps it in memory (never archived): a bool in 1 byte (0 or
// 1), an int in 4, a double in 8, a Money in 9 (sign, then magnitude), a
// DateTime in 8 (date, then time), a text as its length (a varint: 7 bits a
// byte, low bits first) and its bytes. Numbers are in the machine's own byte
// order. Internal to the library's records.
// Numbered in the order in which a record's archive holds them; Flag marks
// a text column whose text is archived enciphered and holds no value.
enum class ValueKind : uint8_t { Bool = 0, Int = 1, Double = 2, DateTime = 3, Flag = 4, Text = 5, Money = 6 };

inline size_t VarintSize(size_t nValue) {
  size_t nBytes = 1;
  for (; nValue >= 0x80; nValue >>= 7) ++nBytes;
  return nBytes;
}

// Returns the byte after the varint.
inline uint8_t* WriteVarint(size_t nValue, uint8_t* p) {
  for (; nValue >= 0x80; nValue >>= 7) *p++ = static_cast<uint8_t>(nValue | 0x80);
  *p++ = static_cast<uint8_t>(nValue);
  return p;
}

inline const uint8_t* ReadVarint(const uint8_t* p, size_t& nValue) {
  nValue = 0;
  for (int nShift = 0;; nShift += 7) {
    const uint8_t nByte = *p++;
    nValue |= static_cast<size_t>(nByte & 0x7F) << nShift;
    if (nByte < 0x80) return p;
  }
}

// Packing<T>: KIND; Size(value), the packed bytes; Write(value, p); Read(p);
// Equals(p, value), the value's own equality (a NaN equals nothing).
template <typename T>
struct Packing;

template <typename T>
struct FixedPacking {
  static constexpr size_t Size(const T&) { return sizeof(T); }
  static void Write(const T& value, uint8_t* p) { std::memcpy(p, &value, sizeof(T)); }
  static T Read(const uint8_t* p) {
    T value;
    std::memcpy(&value, p, sizeof(T));
    return value;
  }
  static bool Equals(const uint8_t* p, const T& value) { return Read(p) == value; }
};

template <>
struct Packing<int> : FixedPacking<int> {
  static constexpr ValueKind KIND = ValueKind::Int;
};

template <>
struct Packing<double> : FixedPacking<double> {
  static constexpr ValueKind KIND = ValueKind::Double;
};

template <>
struct Packing<bool> {
  static constexpr ValueKind KIND = ValueKind::Bool;
  static constexpr size_t Size(bool) { return 1; }
  static void Write(bool bValue, uint8_t* p) { *p = bValue ? 1 : 0; }
  static bool Read(const uint8_t* p) { return *p != 0; }
  static bool Equals(const uint8_t* p, bool bValue) { return Read(p) == bValue; }
};

template <>
struct Packing<Money> {
  static constexpr ValueKind KIND = ValueKind::Money;
  static constexpr size_t Size(const Money&) { return 9; }
  static void Write(const Money& value, uint8_t* p) {
    *p = value.GetIsPositive() ? 1 : 0;
    const ULONGLONG nAmount = value.GetRawAmount();
    std::memcpy(p + 1, &nAmount, sizeof nAmount);
  }
  static Money Read(const uint8_t* p) {
    ULONGLONG nAmount = 0;
    std::memcpy(&nAmount, p + 1, sizeof nAmount);
    return Money::FromRaw(*p != 0, nAmount);
  }
  static bool Equals(const uint8_t* p, const Money& value) { return Read(p) == value; }
};

template <>
struct Packing<DateTime> {
  static constexpr ValueKind KIND = ValueKind::DateTime;
  static constexpr size_t Size(const DateTime&) { return 8; }
  static void Write(const DateTime& value, uint8_t* p) {
    const int parts[2] = {value.GetJulianDay(), value.GetSecondsOfDay()};
    std::memcpy(p, parts, sizeof parts);
  }
  static DateTime Read(const uint8_t* p) {
    int parts[2];
    std::memcpy(parts, p, sizeof parts);
    return DateTime::FromJulian(parts[0], parts[1]);
  }
  static bool Equals(const uint8_t* p, const DateTime& value) { return Read(p) == value; }
};

template <>
struct Packing<CString> {
  static constexpr ValueKind KIND = ValueKind::Text;
  static size_t Size(const CString& text) { return Size(text.GetStdString().size()); }
  static size_t Size(size_t nLength) { return VarintSize(nLength) + nLength; }
  static void Write(const CString& text, uint8_t* p) { Write(text.GetStdString().data(), text.GetStdString().size(), p); }
  static void Write(const char* pch, size_t nLength, uint8_t* p) {
    p = WriteVarint(nLength, p);
    if (nLength > 0) std::memcpy(p, pch, nLength);
  }
  // The bytes of a packed text and their count.
  static const char* Bytes(const uint8_t* p, size_t& nLength) {
    return reinterpret_cast<const char*>(ReadVarint(p, nLength));
  }
  static CString Read(const uint8_t* p) {
    size_t nLength = 0;
    const char* pch = Bytes(p, nLength);
    return CString(pch, static_cast<int>(nLength));
  }
  static bool Equals(const uint8_t* p, const CString& text) {
    size_t nLength = 0;
    const char* pch = Bytes(p, nLength);
    const std::string& other = text.GetStdString();
    return nLength == other.size() && (nLength == 0 || std::memcmp(pch, other.data(), nLength) == 0);
  }
};

#endif  // DATAMGR_TYPES_VALUEKINDS_H_
