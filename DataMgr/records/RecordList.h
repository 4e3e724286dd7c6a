#ifndef DATAMGR_RECORDS_RECORDLIST_H_
#define DATAMGR_RECORDS_RECORDLIST_H_

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "DataMgr/types/NextIDMgr.h"
#include "framework/CArchive.h"
#include "utility/SerializeData.h"

// The rules shared by the two record collections, DataItemMgr and
// DataSubItemMgr, over the records they hold (T is DataItem or
// DataSubItem): a vector of raw owning pointers in row order. The list owns
// every record in it and destroys it in Delete and DeleteAll; Detach hands
// a record back to the caller without destroying it. A null pointer is
// never stored, and a record is never in two lists: whoever adds a record
// gives it up. Internal to the library's records: not installed.
namespace record_list {

template <typename T>
using Records = std::vector<T*>;

// The first record with that ID (a linear scan); null when none has it.
template <typename T>
T* GetByID(const Records<T>& records, int nID) {
  const auto it =
      std::find_if(records.begin(), records.end(), [nID](const T* pRecord) { return pRecord->GetID() == nID; });
  return it == records.end() ? nullptr : *it;
}

// The index of pRecord; the count when it is not in the list.
template <typename T>
size_t GetIndex(const Records<T>& records, const T* pRecord) {
  return static_cast<size_t>(std::find(records.begin(), records.end(), pRecord) - records.begin());
}

// SetData(nColumnID, value, true) on every record: each change is
// undoable and stamps an item's modification time.
template <typename T, typename V>
void SetAll(Records<T>& records, int nColumnID, const V& value) {
  for (T* pRecord : records) pRecord->SetData(nColumnID, value, true);
}

// Destroys the record at nIndex and takes it out; nothing when nIndex is
// out of range.
template <typename T>
void Delete(Records<T>& records, size_t nIndex) {
  if (nIndex >= records.size()) return;
  T* pRecord = records[nIndex];
  records.erase(records.begin() + static_cast<std::ptrdiff_t>(nIndex));
  delete pRecord;
}

template <typename T>
void DeleteAll(Records<T>& records) {
  Records<T> deleted;
  deleted.swap(records);
  for (T* pRecord : deleted) delete pRecord;
}

// Inserts pRecord before nIndex, or appends it when nIndex is not less than
// the count; the list then owns it (it is destroyed if it cannot be
// stored). Null is ignored.
template <typename T>
void InsertAt(Records<T>& records, size_t nIndex, T* pRecord) {
  if (!pRecord) return;
  std::unique_ptr<T> owned(pRecord);
  records.insert(records.begin() + static_cast<std::ptrdiff_t>(std::min(nIndex, records.size())), pRecord);
  owned.release();
}

// Takes pRecord out without destroying it; the caller owns it then. Null or
// a record of another owner does nothing.
template <typename T>
void Detach(Records<T>& records, const T* pRecord) {
  const auto it = std::find(records.begin(), records.end(), pRecord);
  if (it != records.end()) records.erase(it);
}

// Puts the record at nFrom at index nTo, the records between shifting by
// one place; false, with no change, when either index is out of range.
template <typename T>
bool MoveEntry(Records<T>& records, size_t nFrom, size_t nTo) {
  if (nFrom >= records.size() || nTo >= records.size()) return false;
  const auto at = [&records](size_t nIndex) { return records.begin() + static_cast<std::ptrdiff_t>(nIndex); };
  if (nFrom < nTo) {
    std::rotate(at(nFrom), at(nFrom + 1), at(nTo + 1));
  } else {
    std::rotate(at(nTo), at(nFrom), at(nFrom + 1));
  }
  return true;
}

// A new record, a copy of *pSource (its copy constructor) or fresh when
// pSource is null; appended when bAdd (the list owns it) and otherwise the
// caller's; given the next ID when bAssignID, even when not added.
template <typename T>
T* CreateRecord(Records<T>& records, NextIDMgr& nextID, const T* pSource, bool bAdd, bool bAssignID) {
  T* pRecord = pSource ? new T(*pSource) : new T();
  if (bAdd) InsertAt(records, records.size(), pRecord);
  if (bAssignID) pRecord->SetID(nextID.GetNextID());
  return pRecord;
}

// Replaces records by copies of source's records (T's copy constructor).
// Either all copies are made or records is left as it was.
template <typename T>
void CopyFrom(Records<T>& records, const Records<T>& source) {
  std::vector<std::unique_ptr<T>> copies;
  copies.reserve(source.size());
  for (const T* pRecord : source) copies.push_back(std::make_unique<T>(*pRecord));
  Records<T> copied;
  copied.reserve(copies.size());
  for (std::unique_ptr<T>& copy : copies) copied.push_back(copy.release());
  DeleteAll(records);
  records.swap(copied);
}

// A record about to be loaded: its constructor reads no clock, as loading
// sets every field.
template <typename T>
T* NewForLoading() {
  return new T(typename T::ForLoading());
}

// The records' part of a collection's archive: a loop counter, then each
// record's own form. Loading first destroys every record and resets the
// allocator, then appends each record before loading it, so that a load
// that stops half-way leaves the records read so far in the list; the
// allocator rises above every valid ID loaded. records() gives the list,
// and is called only when there is a record to store or load, so that a
// collection may create its list on demand; nCurrentCount is the number of
// records in the list now. Returns true when a loaded
// record has a negative ID. nMinRecordBytes: the fewest bytes one record
// takes, for checking the count before anything is reserved.
template <typename T, typename GetRecords>
bool SerializeRecords(CArchive& ar, GetRecords records, size_t nCurrentCount, NextIDMgr& nextID, bool bOldFormat,
                      size_t nMinRecordBytes) {
  if (ar.IsStoring()) {
    SerializeData::SerializeLoopCounter(ar, nCurrentCount, bOldFormat);
    if (nCurrentCount > 0) {
      for (T* pRecord : records()) pRecord->Serialize(ar);
    }
    return false;
  }
  if (nCurrentCount > 0) DeleteAll(records());
  nextID.ResetNextID();
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, bOldFormat);
  if (nCount == 0) return false;
  SerializeData::CheckLoopCounter(ar, nCount, nMinRecordBytes);
  Records<T>& loaded = records();
  loaded.reserve(nCount);
  bool bMissingIDs = false;
  for (size_t i = 0; i < nCount; ++i) {
    T* pRecord = NewForLoading<T>();
    InsertAt(loaded, loaded.size(), pRecord);
    pRecord->Serialize(ar);
    if (NextIDMgr::IsValidID(pRecord->GetID())) {
      nextID.UpdateNextID(pRecord->GetID());
    } else {
      bMissingIDs = true;
    }
  }
  return bMissingIDs;
}

}  // namespace record_list

#endif  // DATAMGR_RECORDS_RECORDLIST_H_
