#ifndef UTILITY_SERIALIZEDATA_H_
#define UTILITY_SERIALIZEDATA_H_

#include <cstddef>
#include <map>
#include <set>
#include <unordered_set>
#include <vector>

#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/DateTime.h"
#include "utility/UtilityExport.h"

// The archive forms of single bools, element counts and containers. Each
// overload stores when the archive stores and loads (replacing the
// container's contents) when it loads. Documents depend on these bytes:
//
//   bool          1 byte, 0 or 1; loading reads any non-zero byte as true
//   loop counter  64-bit unsigned; 32-bit unsigned in the old format
//   vector        counter, then each element (int 32-bit, bool 1 byte,
//                 text in the framework's text form)
//   map           counter, then per entry in ascending key order the 32-bit
//                 key and the value in its own form (DateTime by its
//                 Serialize, vector of int as above with the same format flag)
//   set           counter, then the elements as 32-bit ints, ascending
//
// Counts read from an archive are checked against the bytes that remain
// before anything is allocated for them; a count that cannot fit throws
// CArchiveException(endOfFile).
class VAXO009_API SerializeData {
 public:
  // The fewest bytes an element of each form takes, for CheckLoopCounter.
  static constexpr size_t INT_BYTES = 4;
  static constexpr size_t BOOL_BYTES = 1;
  static constexpr size_t DOUBLE_BYTES = 8;
  static constexpr size_t DATETIME_BYTES = 8;
  static constexpr size_t MIN_TEXT_BYTES = 1;

  static void Serialize(CArchive& ar, bool& bValue);

  // Storing writes nCount and returns it; loading ignores nCount and returns
  // the count read.
  static size_t SerializeLoopCounter(CArchive& ar, size_t nCount, bool bOldFormat);
  // Loading: throws CArchiveException(endOfFile) unless nCount elements of at
  // least nMinBytesEach bytes could still be read. Storing: does nothing.
  static void CheckLoopCounter(const CArchive& ar, size_t nCount, size_t nMinBytesEach);

  static void Serialize(CArchive& ar, std::vector<int>& values, bool bOldFormat);
  static void Serialize(CArchive& ar, std::vector<bool>& values, bool bOldFormat);
  static void Serialize(CArchive& ar, std::vector<CString>& values, bool bOldFormat);

  static void Serialize(CArchive& ar, std::map<int, bool>& values, bool bOldFormat);
  static void Serialize(CArchive& ar, std::map<int, int>& values, bool bOldFormat);
  static void Serialize(CArchive& ar, std::map<int, double>& values, bool bOldFormat);
  static void Serialize(CArchive& ar, std::map<int, DateTime>& values, bool bOldFormat);
  static void Serialize(CArchive& ar, std::map<int, CString>& values, bool bOldFormat);
  static void Serialize(CArchive& ar, std::map<int, std::vector<int>>& values, bool bOldFormat);

  static void Serialize(CArchive& ar, std::set<int>& values, bool bOldFormat);
  static void Serialize(CArchive& ar, std::unordered_set<int>& values, bool bOldFormat);

  // A text map whose entries with a key in `flagged` are kept enciphered
  // (Crypto's form) and the others plain. Loading uses the flagged set as it
  // already stands, so load that set first.
  static void Serialize(CArchive& ar, std::map<int, CString>& values, const std::unordered_set<int>& flagged,
                        bool bOldFormat);

  // A counter, then each text in the enciphered form.
  static void SerializeEncrypted(CArchive& ar, std::vector<CString>& values, bool bOldFormat);
};

#endif  // UTILITY_SERIALIZEDATA_H_
