#ifndef TESTS_DATAMGR_RECORDS_RECORDFIXTURES_H_
#define TESTS_DATAMGR_RECORDS_RECORDFIXTURES_H_

// Archive fixtures of records and record lists written field by field, and
// the values the record tests compare.

#include <algorithm>
#include <vector>

#include "DataMgr/records/DataItem.h"
#include "tests/support/ArchiveTestSupport.h"
#include "utility/DateTime.h"

namespace records_test {

using test_support::ByteWriter;
using test_support::Bytes;

// A moment long past, so that a stamped modification time differs from it.
const int OLD_DAY = 2451545;
const int OLD_SECONDS = 3600;

// The record values' form, version 6, holding one int value.
inline ByteWriter& Values(ByteWriter& w, int nColumn, int nValue) {
  w.Word(6).Int64(0).Int64(1).Int(nColumn).Int(nValue);  // bool map, int map
  for (int i = 0; i < 5; ++i) w.Int64(0);                 // double, date, flagged, texts, Money
  return w;
}

// A sub-item with one int value: version 2 holds the parent ID, version 1
// does not.
inline ByteWriter& SubItem(ByteWriter& w, int nID, int nParentID, int nColumn, int nValue, unsigned nVersion = 2) {
  w.Word(nVersion).Int(nID);
  if (nVersion >= 2) w.Int(nParentID);
  return Values(w, nColumn, nValue);
}

// An item of nVersion modified at the old moment, with one int value and
// the sub-items that addSubItems writes (a sub-item list of version 3).
template <typename AddSubItems>
ByteWriter& Item(ByteWriter& w, int nID, int nColumn, int nValue, size_t nSubItems, AddSubItems addSubItems,
                 unsigned nVersion = 3) {
  Values(w.Word(nVersion).Int(nID).Int(OLD_DAY).Int(OLD_SECONDS), nColumn, nValue);
  w.Word(3).Int64(nSubItems);
  addSubItems(w);
  return w.Bool(true);  // sort flag
}

// An item list of nVersion (32-bit counter before 4) of items of the same
// version (3 from list version 3 on) with the given IDs, each holding its ID
// in column 1 and two sub-items (IDs 0 and 1, parent ID the item's stored
// ID, column 2 holding the sub-item's ID).
inline Bytes ItemList(unsigned nVersion, const std::vector<int>& itemIDs) {
  ByteWriter w;
  w.Word(nVersion).Counter(itemIDs.size(), nVersion < 4);
  for (int nID : itemIDs) {
    const auto addSubItems = [nID](ByteWriter& sub) {
      SubItem(sub, 0, nID, 2, 0);
      SubItem(sub, 1, nID, 2, 1);
    };
    Item(w, nID, 1, nID, 2, addSubItems, std::min(nVersion, 3u));
  }
  return w.Get();
}

// A sub-item list of nVersion (32-bit counter before 3, no sort flag before
// 2) of sub-items of that version with the given IDs, parent 4, each holding
// its position in column 1.
inline Bytes SubItemList(unsigned nVersion, const std::vector<int>& ids, bool bSort) {
  ByteWriter w;
  w.Word(nVersion).Counter(ids.size(), nVersion < 3);
  for (size_t i = 0; i < ids.size(); ++i) SubItem(w, ids[i], 4, 1, static_cast<int>(i), nVersion == 1 ? 1 : 2);
  if (nVersion >= 2) w.Bool(bSort);
  return w.Get();
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

inline DateTime LastModified(const DataItem& item) {
  DateTime time;
  item.GetLastModified(time);
  return time;
}

inline int IntOf(const Data& record, int nColumn) {
  int value = 0;
  record.GetData(nColumn, value);
  return value;
}

}  // namespace records_test

#endif  // TESTS_DATAMGR_RECORDS_RECORDFIXTURES_H_
