#include "utility/SerializeData.h"

#include <utility>

#include "utility/Crypto.h"

namespace {

const size_t INT_BYTES = SerializeData::INT_BYTES;
const size_t MIN_STRING_BYTES = SerializeData::MIN_TEXT_BYTES;

size_t CounterBytes(bool bOldFormat) { return bOldFormat ? 4 : 8; }

void SerializeInt(CArchive& ar, int& nValue) {
  if (ar.IsStoring()) {
    ar << nValue;
  } else {
    ar >> nValue;
  }
}

void SerializeDouble(CArchive& ar, double& dValue) {
  if (ar.IsStoring()) {
    ar << dValue;
  } else {
    ar >> dValue;
  }
}

void SerializeString(CArchive& ar, CString& text) {
  if (ar.IsStoring()) {
    ar << text;
  } else {
    ar >> text;
  }
}

// A counter, then each element through serializeItem(ar, element).
template <typename T, typename SerializeItem>
void SerializeVector(CArchive& ar, std::vector<T>& values, bool bOldFormat, size_t nMinItemBytes,
                     SerializeItem serializeItem) {
  if (ar.IsStoring()) {
    SerializeData::SerializeLoopCounter(ar, values.size(), bOldFormat);
    for (size_t i = 0; i < values.size(); ++i) {
      T value = values[i];
      serializeItem(ar, value);
    }
    return;
  }
  values.clear();
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, bOldFormat);
  SerializeData::CheckLoopCounter(ar, nCount, nMinItemBytes);
  values.reserve(nCount);
  for (size_t i = 0; i < nCount; ++i) {
    T value{};
    serializeItem(ar, value);
    values.push_back(std::move(value));
  }
}

// A counter, then per entry in ascending key order the 32-bit key and the
// value through serializeValue(ar, key, value). A key repeated in a damaged
// archive keeps its last value.
template <typename T, typename SerializeValue>
void SerializeMap(CArchive& ar, std::map<int, T>& values, bool bOldFormat, size_t nMinValueBytes,
                  SerializeValue serializeValue) {
  if (ar.IsStoring()) {
    SerializeData::SerializeLoopCounter(ar, values.size(), bOldFormat);
    for (auto& entry : values) {
      ar << entry.first;
      serializeValue(ar, entry.first, entry.second);
    }
    return;
  }
  values.clear();
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, bOldFormat);
  SerializeData::CheckLoopCounter(ar, nCount, INT_BYTES + nMinValueBytes);
  for (size_t i = 0; i < nCount; ++i) {
    int nKey = 0;
    ar >> nKey;
    T value{};
    serializeValue(ar, nKey, value);
    values.insert_or_assign(values.end(), nKey, std::move(value));
  }
}

// A counter, then the elements as 32-bit ints in ascending order.
template <typename Set>
void SerializeIntSet(CArchive& ar, Set& values, bool bOldFormat) {
  if (ar.IsStoring()) {
    std::set<int> ordered(values.begin(), values.end());
    SerializeData::SerializeLoopCounter(ar, ordered.size(), bOldFormat);
    for (int nValue : ordered) ar << nValue;
    return;
  }
  values.clear();
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, bOldFormat);
  SerializeData::CheckLoopCounter(ar, nCount, INT_BYTES);
  for (size_t i = 0; i < nCount; ++i) {
    int nValue = 0;
    ar >> nValue;
    values.insert(nValue);
  }
}

}  // namespace

void SerializeData::Serialize(CArchive& ar, bool& bValue) {
  if (ar.IsStoring()) {
    ar << static_cast<BYTE>(bValue ? 1 : 0);
  } else {
    BYTE byValue = 0;
    ar >> byValue;
    bValue = byValue != 0;
  }
}

size_t SerializeData::SerializeLoopCounter(CArchive& ar, size_t nCount, bool bOldFormat) {
  if (ar.IsStoring()) {
    if (bOldFormat) {
      ar << static_cast<UINT>(nCount);
    } else {
      ar << static_cast<ULONGLONG>(nCount);
    }
    return nCount;
  }
  if (bOldFormat) {
    UINT nOld = 0;
    ar >> nOld;
    return nOld;
  }
  ULONGLONG nNew = 0;
  ar >> nNew;
  return static_cast<size_t>(nNew);
}

void SerializeData::CheckLoopCounter(const CArchive& ar, size_t nCount, size_t nMinBytesEach) {
  if (!ar.IsLoading() || nMinBytesEach == 0) return;
  if (nCount > ar.GetBytesRemaining() / nMinBytesEach) AfxThrowArchiveException(CArchiveException::endOfFile);
}

void SerializeData::Serialize(CArchive& ar, std::vector<int>& values, bool bOldFormat) {
  SerializeVector(ar, values, bOldFormat, INT_BYTES, SerializeInt);
}

void SerializeData::Serialize(CArchive& ar, std::vector<bool>& values, bool bOldFormat) {
  SerializeVector(ar, values, bOldFormat, BOOL_BYTES, [](CArchive& a, bool& b) { Serialize(a, b); });
}

void SerializeData::Serialize(CArchive& ar, std::vector<CString>& values, bool bOldFormat) {
  SerializeVector(ar, values, bOldFormat, MIN_STRING_BYTES, SerializeString);
}

void SerializeData::Serialize(CArchive& ar, std::map<int, bool>& values, bool bOldFormat) {
  SerializeMap(ar, values, bOldFormat, BOOL_BYTES, [](CArchive& a, int, bool& b) { Serialize(a, b); });
}

void SerializeData::Serialize(CArchive& ar, std::map<int, int>& values, bool bOldFormat) {
  SerializeMap(ar, values, bOldFormat, INT_BYTES, [](CArchive& a, int, int& n) { SerializeInt(a, n); });
}

void SerializeData::Serialize(CArchive& ar, std::map<int, double>& values, bool bOldFormat) {
  SerializeMap(ar, values, bOldFormat, DOUBLE_BYTES, [](CArchive& a, int, double& d) { SerializeDouble(a, d); });
}

void SerializeData::Serialize(CArchive& ar, std::map<int, DateTime>& values, bool bOldFormat) {
  SerializeMap(ar, values, bOldFormat, DATETIME_BYTES, [](CArchive& a, int, DateTime& dt) { dt.Serialize(a); });
}

void SerializeData::Serialize(CArchive& ar, std::map<int, CString>& values, bool bOldFormat) {
  SerializeMap(ar, values, bOldFormat, MIN_STRING_BYTES,
               [](CArchive& a, int, CString& text) { SerializeString(a, text); });
}

void SerializeData::Serialize(CArchive& ar, std::map<int, std::vector<int>>& values, bool bOldFormat) {
  SerializeMap(ar, values, bOldFormat, CounterBytes(bOldFormat),
               [bOldFormat](CArchive& a, int, std::vector<int>& v) { Serialize(a, v, bOldFormat); });
}

void SerializeData::Serialize(CArchive& ar, std::set<int>& values, bool bOldFormat) {
  SerializeIntSet(ar, values, bOldFormat);
}

void SerializeData::Serialize(CArchive& ar, std::unordered_set<int>& values, bool bOldFormat) {
  SerializeIntSet(ar, values, bOldFormat);
}

void SerializeData::Serialize(CArchive& ar, std::map<int, CString>& values, const std::unordered_set<int>& flagged,
                              bool bOldFormat) {
  SerializeMap(ar, values, bOldFormat, MIN_STRING_BYTES, [&flagged](CArchive& a, int nKey, CString& text) {
    if (flagged.count(nKey) != 0) {
      Crypto::SerializeEncrypted(a, text);
    } else {
      SerializeString(a, text);
    }
  });
}

void SerializeData::SerializeEncrypted(CArchive& ar, std::vector<CString>& values, bool bOldFormat) {
  SerializeVector(ar, values, bOldFormat, MIN_STRING_BYTES, Crypto::SerializeEncrypted);
}
