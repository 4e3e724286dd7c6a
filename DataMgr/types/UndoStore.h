#ifndef DATAMGR_TYPES_UNDOSTORE_H_
#define DATAMGR_TYPES_UNDOSTORE_H_

#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/types/Money.h"
#include "DataMgr/types/ValueBlock.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

// The undo history of one record: per value kind and column ID, the earlier
// values of that column, oldest first, each value at most once, with no
// length limit. It lives in memory only and is never archived.
//
// Most records are never edited, so nothing is allocated until the first
// value is added; an empty store is one null pointer. All histories of a
// record then share one heap block of exactly their size (see ValueBlock),
// each history its values packed one after the other. A history once
// created stays (it counts for HaveUndoData even when it became empty) until
// ClearUndoData. Copies are deep.
class VAXO057_API UndoStore {
 public:
  UndoStore();
  UndoStore(const UndoStore& other);
  UndoStore& operator=(const UndoStore& other);
  UndoStore(UndoStore&& other) noexcept;
  UndoStore& operator=(UndoStore&& other) noexcept;
  ~UndoStore();

  // Appends value to the history of nID (creating it) unless an equal value
  // is already in it.
  void AddUndoData(int nID, const CString& value);
  void AddUndoData(int nID, int value);
  void AddUndoData(int nID, bool value);
  void AddUndoData(int nID, const Money& value);
  void AddUndoData(int nID, double value);
  void AddUndoData(int nID, const DateTime& value);
  void AddUndoData(int nID, const char* value) = delete;

  // Removes value from the history of nID when it is there; the others keep
  // their order. Creates nothing.
  void RemoveUndoData(int nID, const CString& value);
  void RemoveUndoData(int nID, int value);
  void RemoveUndoData(int nID, bool value);
  void RemoveUndoData(int nID, const Money& value);
  void RemoveUndoData(int nID, double value);
  void RemoveUndoData(int nID, const DateTime& value);
  void RemoveUndoData(int nID, const char* value) = delete;

  // Whether any kind has a history for nID.
  bool HaveUndoData(int nID) const;

  // Replaces out by the history of nID; leaves out alone when there is none.
  void GetUndoData(int nID, std::vector<CString>& out) const;
  void GetUndoData(int nID, std::vector<int>& out) const;
  void GetUndoData(int nID, std::vector<bool>& out) const;
  void GetUndoData(int nID, std::vector<Money>& out) const;
  void GetUndoData(int nID, std::vector<double>& out) const;
  void GetUndoData(int nID, std::vector<DateTime>& out) const;

  void ClearUndoData();

 private:
  // Gives the slot a new history, composed apart from the block.
  void Put(const ValueBlock::Slot& slot, const std::vector<uint8_t>& history);
  template <typename T>
  void Add(int nID, const T& value);
  template <typename T>
  void Remove(int nID, const T& value);
  template <typename T>
  void Get(int nID, std::vector<T>& out) const;

  ValueBlock m_block;
};

#endif  // DATAMGR_TYPES_UNDOSTORE_H_
