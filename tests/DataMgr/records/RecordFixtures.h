#ifndef TESTS_DATAMGR_RECORDS_RECORDFIXTURES_H_
#define TESTS_DATAMGR_RECORDS_RECORDFIXTURES_H_

// Archive fixtures of records written field by field, and the values the
// record tests compare.

#include <vector>

#include "DataMgr/types/Data.h"
#include "tests/support/ArchiveTestSupport.h"
#include "utility/DateTime.h"

namespace records_test {

using test_support::ByteWriter;

// A moment long past, so that a stamped modification time differs from it.
const int OLD_DAY = 2451545;
const int OLD_SECONDS = 3600;

// The record values' form, version 6, holding no value or one int value.
inline ByteWriter& Values(ByteWriter& w) {
  w.Word(6);
  for (int i = 0; i < 7; ++i) w.Int64(0);
  return w;
}
inline ByteWriter& Values(ByteWriter& w, int nColumn, int nValue) {
  w.Word(6).Int64(0).Int64(1).Int(nColumn).Int(nValue);  // bool map, int map
  for (int i = 0; i < 5; ++i) w.Int64(0);                 // double, date, flagged, texts, Money
  return w;
}

// A sub-item of version 2 with one int value.
inline ByteWriter& SubItem(ByteWriter& w, int nID, int nParentID, int nColumn, int nValue) {
  return Values(w.Word(2).Int(nID).Int(nParentID), nColumn, nValue);
}

// An item of version 3 modified at the old moment, with one int value and
// the sub-items that addSubItems writes (a sub-item list of version 3).
template <typename AddSubItems>
ByteWriter& Item(ByteWriter& w, int nID, int nColumn, int nValue, size_t nSubItems, AddSubItems addSubItems) {
  Values(w.Word(3).Int(nID).Int(OLD_DAY).Int(OLD_SECONDS), nColumn, nValue);
  w.Word(3).Int64(nSubItems);
  addSubItems(w);
  return w.Bool(true);
}
inline ByteWriter& Item(ByteWriter& w, int nID, int nColumn, int nValue) {
  return Item(w, nID, nColumn, nValue, 0, [](ByteWriter&) {});
}

// Records with IDs 0, 1, ... created in a collection (n of them), each
// holding its ID in column 1.
template <typename Mgr>
void Fill(Mgr& records, int n) {
  for (int i = 0; i < n; ++i) {
    auto* pRecord = records.Create(nullptr, true, true);
    pRecord->RegisterDataProp(1, pRecord->GetID());
  }
}

// The IDs of a collection's records in list order.
template <typename Mgr>
std::vector<int> IDs(const Mgr& records) {
  std::vector<int> ids;
  for (size_t i = 0; i < records.GetCount(); ++i) ids.push_back(records.GetAt(i)->GetID());
  return ids;
}

template <typename T>
T ValueOf(const Data& record, int nColumn) {
  T value{};
  record.GetData(nColumn, value);
  return value;
}
inline int IntOf(const Data& record, int nColumn) { return ValueOf<int>(record, nColumn); }

inline std::vector<int> IntHistory(const Data& record, int nColumn) {
  std::vector<int> history;
  record.GetUndoData(nColumn, history);
  return history;
}

}  // namespace records_test

#endif  // TESTS_DATAMGR_RECORDS_RECORDFIXTURES_H_
