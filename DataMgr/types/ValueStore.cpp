#include "DataMgr/types/ValueStore.h"

#include <algorithm>
#include <map>
#include <set>
#include <type_traits>
#include <utility>

#include "DataMgr/schema/Address.h"
#include "DataMgr/types/FlatIntMap.h"
#include "DataMgr/types/ValueKinds.h"
#include "utility/Crypto.h"
#include "utility/SerializeData.h"
#include "utility/StringUtils.h"

namespace {

const WORD VALUESTORE_VERSION = 6;
// Loop counters are 64-bit from this version on, 32-bit before.
const WORD FIRST_NEW_COUNTER_VERSION = 6;
// Texts of older versions were stored untrimmed.
const WORD FIRST_TRIMMED_VERSION = 3;
// Versions that carry a block read and discarded.
const WORD ADDRESS_BLOCK_VERSION = 1;
const WORD LIST_BLOCK_VERSION = 4;

// The smallest archive forms, for checking counts before allocating.
const size_t INT_BYTES = SerializeData::INT_BYTES;
const size_t BOOL_BYTES = SerializeData::BOOL_BYTES;
const size_t DOUBLE_BYTES = SerializeData::DOUBLE_BYTES;
const size_t DATETIME_BYTES = SerializeData::DATETIME_BYTES;
const size_t TEXT_BYTES = SerializeData::MIN_TEXT_BYTES;
const size_t MONEY_BYTES = 2 + 1 + 8;
const size_t ADDRESS_BYTES = 2;
const size_t OLD_COUNTER_BYTES = 4;

template <typename T>
T AbsentValue() {
  if constexpr (std::is_same_v<T, int>) {
    return -1;
  } else if constexpr (std::is_same_v<T, Money>) {
    Money zero;
    zero.MakeNegative();
    return zero;
  } else {
    return T();
  }
}

// Restores the key order of a map being loaded when the load ends, normally
// or by an archive exception, so that a half-loaded map is still a map.
template <typename T>
class OrderGuard {
 public:
  explicit OrderGuard(FlatIntMap<T>& map) : m_map(map) {}
  OrderGuard(const OrderGuard&) = delete;
  OrderGuard& operator=(const OrderGuard&) = delete;
  ~OrderGuard() { flat_int_map::RestoreOrder(m_map); }

 private:
  FlatIntMap<T>& m_map;
};

// The map form of SerializeData: a counter, then per entry in ascending key
// order the int key and the value through serializeValue(ar, key, value).
// Written straight from and into the flat map, with the same bytes.
template <typename T, typename SerializeValue>
void SerializeMap(CArchive& ar, FlatIntMap<T>& map, bool bOldFormat, size_t nMinValueBytes,
                  SerializeValue serializeValue) {
  if (ar.IsStoring()) {
    SerializeData::SerializeLoopCounter(ar, map.size(), bOldFormat);
    for (const auto& entry : map) {
      ar << entry.first;
      T value = entry.second;
      serializeValue(ar, entry.first, value);
    }
    return;
  }
  map.clear();
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, bOldFormat);
  SerializeData::CheckLoopCounter(ar, nCount, INT_BYTES + nMinValueBytes);
  map.reserve(nCount);
  OrderGuard<T> guard(map);
  for (size_t i = 0; i < nCount; ++i) {
    int nKey = 0;
    ar >> nKey;
    T value{};
    serializeValue(ar, nKey, value);
    map.emplace_back(nKey, std::move(value));
  }
}

void SerializeBool(CArchive& ar, int, bool& bValue) { SerializeData::Serialize(ar, bValue); }

template <typename T>
void SerializePlain(CArchive& ar, int, T& value) {
  if (ar.IsStoring()) {
    ar << value;
  } else {
    ar >> value;
  }
}

template <typename T>
void SerializeItself(CArchive& ar, int, T& value) {
  value.Serialize(ar);
}

// Reads one address in its own archive form and drops it. Records of
// version-1 stores once kept addresses of their own.
void SkipAddress(CArchive& ar) {
  Address scratch;
  scratch.Serialize(ar);
}

// A 32-bit count of entries, each an int ID and what skipEntry reads.
template <typename SkipEntry>
void SkipBlock(CArchive& ar, size_t nMinEntryBytes, SkipEntry skipEntry) {
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, true);
  SerializeData::CheckLoopCounter(ar, nCount, INT_BYTES + nMinEntryBytes);
  for (size_t i = 0; i < nCount; ++i) {
    int nID = 0;
    ar >> nID;
    skipEntry(ar);
  }
}

}  // namespace

bool ValueStore::HaveDataPropBool(int nID) const { return flat_int_map::Contains(m_values.m_mapBool, nID); }
bool ValueStore::HaveDataPropInt(int nID) const { return flat_int_map::Contains(m_values.m_mapInt, nID); }
bool ValueStore::HaveDataPropDouble(int nID) const { return flat_int_map::Contains(m_values.m_mapDouble, nID); }
bool ValueStore::HaveDataPropMoney(int nID) const { return flat_int_map::Contains(m_values.m_mapMoney, nID); }
bool ValueStore::HaveDataPropDateTime(int nID) const { return flat_int_map::Contains(m_values.m_mapDateTime, nID); }
bool ValueStore::HaveDataPropString(int nID) const { return flat_int_map::Contains(m_values.m_mapText, nID); }

bool ValueStore::HaveDataProp(int nID) const {
  return HaveDataPropString(nID) || HaveDataPropInt(nID) || HaveDataPropBool(nID) || HaveDataPropDateTime(nID) ||
         HaveDataPropMoney(nID) || HaveDataPropDouble(nID);
}

void ValueStore::RegisterDataProp(int nID, const CString& value, bool bFlagged) {
  flat_int_map::Insert(m_values.m_mapText, nID, value);
  if (bFlagged) Flag(nID);
}

void ValueStore::RegisterDataProp(int nID, const DateTime& value) {
  flat_int_map::Insert(m_values.m_mapDateTime, nID, value);
}
void ValueStore::RegisterDataProp(int nID, const Money& value) {
  flat_int_map::Insert(m_values.m_mapMoney, nID, value);
}
void ValueStore::RegisterDataProp(int nID, double value) { flat_int_map::Insert(m_values.m_mapDouble, nID, value); }
void ValueStore::RegisterDataProp(int nID, int value) { flat_int_map::Insert(m_values.m_mapInt, nID, value); }
void ValueStore::RegisterDataProp(int nID, bool value) { flat_int_map::Insert(m_values.m_mapBool, nID, value); }

template <typename T>
bool ValueStore::Set(int nID, const T& value, bool bRecord, UndoStore& undo) {
  FlatIntMap<T>& map = KindMap<T>(m_values);
  const T* pStored = flat_int_map::Find(map, nID);
  const T absent = AbsentValue<T>();
  const T& current = pStored ? *pStored : absent;
  if (current == value) return false;
  if (bRecord) {
    undo.AddUndoData(nID, current);
  } else {
    undo.RemoveUndoData(nID, value);
  }
  flat_int_map::Set(map, nID, value);
  return true;
}

bool ValueStore::SetData(int nID, const CString& value, bool bRecord, UndoStore& undo) {
  return Set(nID, value, bRecord, undo);
}
bool ValueStore::SetData(int nID, const DateTime& value, bool bRecord, UndoStore& undo) {
  return Set(nID, value, bRecord, undo);
}
bool ValueStore::SetData(int nID, const Money& value, bool bRecord, UndoStore& undo) {
  return Set(nID, value, bRecord, undo);
}
bool ValueStore::SetData(int nID, double value, bool bRecord, UndoStore& undo) {
  return Set(nID, value, bRecord, undo);
}
bool ValueStore::SetData(int nID, int value, bool bRecord, UndoStore& undo) { return Set(nID, value, bRecord, undo); }
bool ValueStore::SetData(int nID, bool value, bool bRecord, UndoStore& undo) { return Set(nID, value, bRecord, undo); }

template <typename T>
void ValueStore::Get(int nID, T& out) const {
  const T* pStored = flat_int_map::Find(KindMap<T>(m_values), nID);
  out = pStored ? *pStored : AbsentValue<T>();
}

void ValueStore::GetData(int nID, CString& out) const { Get(nID, out); }
void ValueStore::GetData(int nID, DateTime& out) const { Get(nID, out); }
void ValueStore::GetData(int nID, Money& out) const { Get(nID, out); }
void ValueStore::GetData(int nID, double& out) const { Get(nID, out); }
void ValueStore::GetData(int nID, int& out) const { Get(nID, out); }
void ValueStore::GetData(int nID, bool& out) const { Get(nID, out); }

void ValueStore::DeleteData(int nID) {
  DeleteDataString(nID);
  DeleteDataInt(nID);
  DeleteDataBool(nID);
  DeleteDataMoney(nID);
  DeleteDataDouble(nID);
  DeleteDataDateTime(nID);
}

void ValueStore::DeleteDataBool(int nID) { flat_int_map::Erase(m_values.m_mapBool, nID); }
void ValueStore::DeleteDataInt(int nID) { flat_int_map::Erase(m_values.m_mapInt, nID); }
void ValueStore::DeleteDataDouble(int nID) { flat_int_map::Erase(m_values.m_mapDouble, nID); }
void ValueStore::DeleteDataMoney(int nID) { flat_int_map::Erase(m_values.m_mapMoney, nID); }
void ValueStore::DeleteDataDateTime(int nID) { flat_int_map::Erase(m_values.m_mapDateTime, nID); }
void ValueStore::DeleteDataString(int nID) { flat_int_map::Erase(m_values.m_mapText, nID); }

template <typename T>
void ValueStore::ChangeID(FlatIntMap<T>& map, int nIDA, int nIDB) {
  if (nIDA == nIDB) return;
  const T* pA = flat_int_map::Find(map, nIDA);
  if (!pA) return;
  const T valueA = *pA;
  const T* pB = flat_int_map::Find(map, nIDB);
  if (pB) flat_int_map::Set(map, nIDA, *pB);
  flat_int_map::Set(map, nIDB, valueA);
}

void ValueStore::ChangeDataPropIDBool(int nIDA, int nIDB) { ChangeID(m_values.m_mapBool, nIDA, nIDB); }
void ValueStore::ChangeDataPropIDInt(int nIDA, int nIDB) { ChangeID(m_values.m_mapInt, nIDA, nIDB); }
void ValueStore::ChangeDataPropIDDouble(int nIDA, int nIDB) { ChangeID(m_values.m_mapDouble, nIDA, nIDB); }
void ValueStore::ChangeDataPropIDMoney(int nIDA, int nIDB) { ChangeID(m_values.m_mapMoney, nIDA, nIDB); }
void ValueStore::ChangeDataPropIDDateTime(int nIDA, int nIDB) { ChangeID(m_values.m_mapDateTime, nIDA, nIDB); }
void ValueStore::ChangeDataPropIDString(int nIDA, int nIDB) { ChangeID(m_values.m_mapText, nIDA, nIDB); }

template <typename T>
bool ValueStore::Move(FlatIntMap<T>& map, int nFromID, int nToID) {
  const T* pFrom = flat_int_map::Find(map, nFromID);
  if (!pFrom) return false;
  const T value = *pFrom;
  flat_int_map::Erase(map, nFromID);
  flat_int_map::Set(map, nToID, value);
  return true;
}

void ValueStore::MoveData(int nFromID, int nToID) {
  if (nFromID == nToID) return;
  if (Move(m_values.m_mapBool, nFromID, nToID) || Move(m_values.m_mapInt, nFromID, nToID) ||
      Move(m_values.m_mapDouble, nFromID, nToID) || Move(m_values.m_mapMoney, nFromID, nToID) ||
      Move(m_values.m_mapDateTime, nFromID, nToID)) {
    return;
  }
  if (Move(m_values.m_mapText, nFromID, nToID) && IsFlagged(nFromID)) {
    Unflag(nFromID);
    Flag(nToID);
  }
}

void ValueStore::GetSupportedDataProps(std::vector<int>& ids) const {
  ids.reserve(ids.size() + m_values.m_mapBool.size() + m_values.m_mapInt.size() + m_values.m_mapDouble.size() +
              m_values.m_mapMoney.size() + m_values.m_mapDateTime.size() + m_values.m_mapText.size());
  const auto append = [&ids](const auto& map) {
    for (const auto& entry : map) ids.push_back(entry.first);
  };
  append(m_values.m_mapBool);
  append(m_values.m_mapInt);
  append(m_values.m_mapDouble);
  append(m_values.m_mapMoney);
  append(m_values.m_mapDateTime);
  append(m_values.m_mapText);
}

bool ValueStore::operator==(const ValueStore& other) const {
  return m_values.m_mapBool == other.m_values.m_mapBool && m_values.m_mapInt == other.m_values.m_mapInt &&
         m_values.m_mapDouble == other.m_values.m_mapDouble && m_values.m_mapMoney == other.m_values.m_mapMoney &&
         m_values.m_mapDateTime == other.m_values.m_mapDateTime && m_values.m_mapText == other.m_values.m_mapText &&
         m_vecFlagged == other.m_vecFlagged;
}

bool ValueStore::IsFlagged(int nID) const { return std::binary_search(m_vecFlagged.begin(), m_vecFlagged.end(), nID); }

void ValueStore::Flag(int nID) {
  const auto it = std::lower_bound(m_vecFlagged.begin(), m_vecFlagged.end(), nID);
  if (it == m_vecFlagged.end() || *it != nID) m_vecFlagged.insert(it, nID);
}

void ValueStore::Unflag(int nID) {
  const auto it = std::lower_bound(m_vecFlagged.begin(), m_vecFlagged.end(), nID);
  if (it != m_vecFlagged.end() && *it == nID) m_vecFlagged.erase(it);
}

// SerializeData's set form, through an ordered set.
void ValueStore::SerializeFlagged(CArchive& ar, bool bOldFormat) {
  std::set<int> flagged(m_vecFlagged.begin(), m_vecFlagged.end());
  SerializeData::Serialize(ar, flagged, bOldFormat);
  if (ar.IsLoading()) m_vecFlagged.assign(flagged.begin(), flagged.end());
}

// SerializeData's flagged text map form: texts of flagged IDs enciphered.
void ValueStore::SerializeTexts(CArchive& ar, bool bOldFormat) {
  SerializeMap(ar, m_values.m_mapText, bOldFormat, TEXT_BYTES, [this](CArchive& a, int nID, CString& text) {
    if (IsFlagged(nID)) {
      Crypto::SerializeEncrypted(a, text);
    } else {
      SerializePlain(a, nID, text);
    }
  });
}

// Layout (version 6, current), counters 64-bit:
//   WORD  version
//   map   int -> bool            counter; per entry: int ID, bool byte
//   map   int -> int             counter; per entry: int ID, int
//   map   int -> double          counter; per entry: int ID, double
//   map   int -> DateTime        counter; per entry: int ID, DateTime
//   set   flagged text IDs       counter; int IDs ascending
//   map   int -> text            counter; per entry: int ID, text (enciphered
//                                when the ID is flagged)
//   Money counter; per entry: int ID, Money
// Every map in ascending ID order.
// Changelog:
//   1: after the texts, a 32-bit count of (int ID, Address) entries, the
//      addresses a record once kept; discarded on loading.
//   2: no address block. Texts of versions 1 and 2 are trimmed on loading.
//   3: texts are kept exactly as stored.
//   4: after the Money entries, a 32-bit count of (int ID, map int -> vector
//      of int, old counters) entries; discarded on loading.
//   5: no such block.
//   6: loop counters 64-bit (32-bit before).
void ValueStore::Serialize(CArchive& ar) {
  WORD nVersion = VALUESTORE_VERSION;
  if (ar.IsStoring()) {
    ar << nVersion;
  } else {
    ar >> nVersion;
  }
  const bool bOldFormat = nVersion < FIRST_NEW_COUNTER_VERSION;
  SerializeMap(ar, m_values.m_mapBool, bOldFormat, BOOL_BYTES, SerializeBool);
  SerializeMap(ar, m_values.m_mapInt, bOldFormat, INT_BYTES, SerializePlain<int>);
  SerializeMap(ar, m_values.m_mapDouble, bOldFormat, DOUBLE_BYTES, SerializePlain<double>);
  SerializeMap(ar, m_values.m_mapDateTime, bOldFormat, DATETIME_BYTES, SerializeItself<DateTime>);
  SerializeFlagged(ar, bOldFormat);
  SerializeTexts(ar, bOldFormat);
  if (ar.IsLoading() && nVersion == ADDRESS_BLOCK_VERSION) SkipBlock(ar, ADDRESS_BYTES, SkipAddress);
  SerializeMap(ar, m_values.m_mapMoney, bOldFormat, MONEY_BYTES, SerializeItself<Money>);
  if (ar.IsLoading() && nVersion < FIRST_TRIMMED_VERSION) {
    for (auto& entry : m_values.m_mapText) StringUtils::Trim(entry.second);
  }
  if (ar.IsLoading() && nVersion == LIST_BLOCK_VERSION) {
    SkipBlock(ar, OLD_COUNTER_BYTES, [](CArchive& a) {
      std::map<int, std::vector<int>> lists;
      SerializeData::Serialize(a, lists, true);
    });
  }
}
