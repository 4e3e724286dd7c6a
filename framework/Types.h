#ifndef FRAMEWORK_TYPES_H_
#define FRAMEWORK_TYPES_H_

#include <cstdint>

// Fixed-width integer names of the application framework. Archives depend on
// these widths: BYTE 8 bits, WORD 16, DWORD/UINT/LONG 32, LONGLONG 64.
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;

#if !defined(_MSC_VER)
// The framework's name for a signed 64-bit integer; a keyword on some
// compilers, an alias here.
using __int64 = std::int64_t;  // NOLINT(bugprone-reserved-identifier)
#endif

#endif  // FRAMEWORK_TYPES_H_
