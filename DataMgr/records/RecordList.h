#ifndef DATAMGR_RECORDS_RECORDLIST_H_
#define DATAMGR_RECORDS_RECORDLIST_H_

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "DataMgr/types/Money.h"
#include "DataMgr/types/NextIDMgr.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/DateTime.h"
#include "utility/SerializeData.h"

// The records of one collection (the items of a document, the sub-items of
// one item) in row order, with the allocator of their IDs. The list owns
// every record in it as a raw pointer and destroys it in Delete, DeleteAll
// and its own destructor; Remove (Detach) hands a record back to the caller
// without destroying it. A null pointer is never stored, and a record is
// never in two lists: whoever adds a record gives it up.
//
// The base of DataItemMgr and DataSubItemMgr only (T is DataItem or
// DataSubItem); it cannot be created, copied or deleted on its own, so that
// each collection says how it is copied. Internal to the library's records.
template <typename T>
class RecordList {
 public:
  size_t GetCount() const { return Records().size(); }
  bool IsEmpty() const { return Records().empty(); }

  // The record at nIndex; null when nIndex is not less than the count.
  T* GetAt(size_t nIndex) const { return nIndex < GetCount() ? Records()[nIndex] : nullptr; }
  // The first record with that ID (a linear scan); null when none has it.
  T* GetByID(int nID) const {
    const std::vector<T*>& records = Records();
    const auto it = std::find_if(records.begin(), records.end(),
                                 [nID](const T* pRecord) { return pRecord->GetID() == nID; });
    return it == records.end() ? nullptr : *it;
  }
  // The index of pRecord; the count when it is not in the list.
  size_t GetIndex(const T* pRecord) const {
    const std::vector<T*>& records = Records();
    return static_cast<size_t>(std::find(records.begin(), records.end(), pRecord) - records.begin());
  }

  // SetData(nColumnID, value, true) on every record of this list: each change
  // is undoable and stamps an item's modification time. Sub-items of items
  // are not reached.
  void SetAllData(int nColumnID, bool value) { SetAll(nColumnID, value); }
  void SetAllData(int nColumnID, int value) { SetAll(nColumnID, value); }
  void SetAllData(int nColumnID, double value) { SetAll(nColumnID, value); }
  void SetAllData(int nColumnID, const Money& value) { SetAll(nColumnID, value); }
  void SetAllData(int nColumnID, const DateTime& value) { SetAll(nColumnID, value); }
  void SetAllData(int nColumnID, const CString& value) { SetAll(nColumnID, value); }
  void SetAllData(int nColumnID, const char* value) { SetAll(nColumnID, CString(value)); }

  // Destroys the record at nIndex and takes it out; nothing when nIndex is
  // out of range.
  void Delete(size_t nIndex) {
    if (nIndex >= GetCount()) return;
    T* pRecord = (*m_pRecords)[nIndex];
    m_pRecords->erase(m_pRecords->begin() + static_cast<std::ptrdiff_t>(nIndex));
    delete pRecord;
  }
  // Destroys pRecord when it is in the list; null or a record of another
  // owner does nothing.
  void Delete(T* pRecord) {
    const size_t nIndex = GetIndex(pRecord);
    Delete(nIndex);
  }
  // Destroys every record (items with their sub-items); bResetIDs sets the
  // allocator back to 0.
  void DeleteAll(bool bResetIDs) {
    const std::unique_ptr<std::vector<T*>> pRecords = std::move(m_pRecords);
    if (pRecords) {
      for (T* pRecord : *pRecords) delete pRecord;
    }
    if (bResetIDs) m_nextID.ResetNextID();
  }

 protected:
  RecordList() = default;
  RecordList(const RecordList& other) = delete;
  RecordList& operator=(const RecordList& other) = delete;
  ~RecordList() { DeleteAll(false); }

  // Appends pRecord, which the list then owns (it is destroyed if it cannot
  // be stored); null is ignored.
  void Append(T* pRecord) { InsertAt(GetCount(), pRecord); }
  // Inserts pRecord before nIndex, or appends it when nIndex is not less
  // than the count; the list then owns it. Null is ignored.
  void InsertAt(size_t nIndex, T* pRecord) {
    if (!pRecord) return;
    std::unique_ptr<T> owned(pRecord);
    const size_t nAt = std::min(nIndex, GetCount());
    std::vector<T*>& records = EditRecords();
    records.insert(records.begin() + static_cast<std::ptrdiff_t>(nAt), pRecord);
    owned.release();
  }
  // Takes pRecord out without destroying it; the caller owns it then. Null
  // or a record of another owner does nothing.
  void Detach(const T* pRecord) {
    const size_t nIndex = GetIndex(pRecord);
    if (nIndex < GetCount()) m_pRecords->erase(m_pRecords->begin() + static_cast<std::ptrdiff_t>(nIndex));
  }
  // Puts the record at nFrom at index nTo, the records between shifting by
  // one place; false, with no change, when either index is out of range.
  bool MoveEntry(size_t nFrom, size_t nTo) {
    if (nFrom >= GetCount() || nTo >= GetCount()) return false;
    const auto at = [this](size_t nIndex) { return m_pRecords->begin() + static_cast<std::ptrdiff_t>(nIndex); };
    if (nFrom < nTo) {
      std::rotate(at(nFrom), at(nFrom + 1), at(nTo + 1));
    } else {
      std::rotate(at(nTo), at(nFrom), at(nFrom + 1));
    }
    return true;
  }
  // Both indexes must be in range.
  void SwapEntries(size_t nA, size_t nB) { std::swap((*m_pRecords)[nA], (*m_pRecords)[nB]); }

  // A new record, a copy of *pSource (its copy constructor) or fresh when
  // pSource is null; appended when bAdd (the list owns it) and otherwise
  // the caller's; given the next ID when bAssignID, even when not added.
  T* CreateRecord(const T* pSource, bool bAdd, bool bAssignID) {
    T* pRecord = pSource ? new T(*pSource) : new T();
    if (bAdd) Append(pRecord);
    if (bAssignID) pRecord->SetID(m_nextID.GetNextID());
    return pRecord;
  }

  int TakeNextID() { return m_nextID.GetNextID(); }
  void ResetNextID() { m_nextID.ResetNextID(); }

  template <typename Fn>
  void ForEach(Fn fn) const {
    for (T* pRecord : Records()) fn(*pRecord);
  }

  // Replaces this list by copies of other's records (T's copy constructor)
  // and takes other's allocator. Either all copies are made or this list is
  // left as it was.
  void CopyFrom(const RecordList& other) {
    std::vector<std::unique_ptr<T>> copies;
    copies.reserve(other.GetCount());
    for (const T* pRecord : other.Records()) copies.push_back(std::make_unique<T>(*pRecord));
    auto pRecords = copies.empty() ? nullptr : std::make_unique<std::vector<T*>>();
    if (pRecords) pRecords->reserve(copies.size());
    for (std::unique_ptr<T>& copy : copies) pRecords->push_back(copy.release());
    DeleteAll(false);
    m_pRecords = std::move(pRecords);
    m_nextID = other.m_nextID;
  }

  // The records' part of a collection's archive: a loop counter, then each
  // record's own form. Loading first destroys every record and resets the
  // allocator, then appends each record before loading it, so that a load
  // that stops half-way leaves the records read so far in the list; the
  // allocator rises above every valid ID loaded. Returns true when a loaded
  // record has a negative ID. nMinRecordBytes: the fewest bytes one record
  // takes, for checking the count before anything is reserved.
  bool SerializeRecords(CArchive& ar, bool bOldFormat, size_t nMinRecordBytes) {
    if (ar.IsStoring()) {
      SerializeData::SerializeLoopCounter(ar, GetCount(), bOldFormat);
      for (T* pRecord : Records()) pRecord->Serialize(ar);
      return false;
    }
    DeleteAll(true);
    const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, bOldFormat);
    SerializeData::CheckLoopCounter(ar, nCount, nMinRecordBytes);
    if (nCount > 0) EditRecords().reserve(nCount);
    bool bMissingIDs = false;
    for (size_t i = 0; i < nCount; ++i) {
      T* pRecord = new T(typename T::ForLoading());
      Append(pRecord);
      pRecord->Serialize(ar);
      if (NextIDMgr::IsValidID(pRecord->GetID())) {
        m_nextID.UpdateNextID(pRecord->GetID());
      } else {
        bMissingIDs = true;
      }
    }
    return bMissingIDs;
  }

 private:
  template <typename V>
  void SetAll(int nColumnID, const V& value) {
    for (T* pRecord : Records()) pRecord->SetData(nColumnID, value, true);
  }

  const std::vector<T*>& Records() const {
    static const std::vector<T*> s_empty;
    return m_pRecords ? *m_pRecords : s_empty;
  }
  std::vector<T*>& EditRecords() {
    if (!m_pRecords) m_pRecords = std::make_unique<std::vector<T*>>();
    return *m_pRecords;
  }

  // Null while there are no records, so that an item without sub-items
  // pays one pointer for its collection. In this order, so that a derived
  // collection's small fields fill the padding at the end.
  std::unique_ptr<std::vector<T*>> m_pRecords;
  NextIDMgr m_nextID;
};

#endif  // DATAMGR_RECORDS_RECORDLIST_H_
