#ifndef DATAMGR_TYPES_VALUESTORE_H_
#define DATAMGR_TYPES_VALUESTORE_H_

#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/types/Money.h"
#include "DataMgr/types/UndoStore.h"
#include "DataMgr/types/ValueBlock.h"
#include "DataMgr/types/ValueKinds.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

// The values of one record: per column ID at most one value of each kind
// (text, int, bool, Money, double, DateTime), plus the text columns whose
// texts are archived enciphered ("flagged"). The record does not know its
// columns' types: callers pick the kind from the column's data type and
// keep each column in one kind only; the store does not enforce that.
//
// A document holds a million records, so all values of a record live in one
// heap block of their size, numbers and text bytes inline, grouped by kind
// and in column order within a kind (see ValueBlock); a record without
// values allocates nothing. A
// column that has no value reads as its kind's absent value: false, -1,
// 0.0, a Money with all fields zero (sign negative, magnitude 0), an unset
// DateTime, an empty text.
class VAXO057_API ValueStore {
 public:
  ValueStore();
  ValueStore(const ValueStore& other);
  ValueStore& operator=(const ValueStore& other);
  ValueStore(ValueStore&& other) noexcept;
  ValueStore& operator=(ValueStore&& other) noexcept;
  ~ValueStore();

  // Whether any kind holds nID.
  bool HaveDataProp(int nID) const;
  bool HaveDataPropBool(int nID) const;
  bool HaveDataPropInt(int nID) const;
  bool HaveDataPropDouble(int nID) const;
  bool HaveDataPropMoney(int nID) const;
  bool HaveDataPropDateTime(int nID) const;
  bool HaveDataPropString(int nID) const;

  // Stores value unless the kind already holds nID (then nothing changes).
  // bFlagged adds nID to the flagged set even when the text existed.
  void RegisterDataProp(int nID, const CString& value, bool bFlagged);
  void RegisterDataProp(int nID, const DateTime& value);
  void RegisterDataProp(int nID, const Money& value);
  void RegisterDataProp(int nID, double value);
  void RegisterDataProp(int nID, int value);
  void RegisterDataProp(int nID, bool value);
  void RegisterDataProp(int nID, const char* value, bool bFlagged) = delete;

  // Stores value and returns true, or returns false and does nothing when
  // it equals the current (or absent) value. bRecord true is an undoable
  // edit: the old value joins the undo history. bRecord false is not: value
  // leaves the history if it was there. The caller stamps the record's
  // modification time.
  bool SetData(int nID, const CString& value, bool bRecord, UndoStore& undo);
  bool SetData(int nID, const DateTime& value, bool bRecord, UndoStore& undo);
  bool SetData(int nID, const Money& value, bool bRecord, UndoStore& undo);
  bool SetData(int nID, double value, bool bRecord, UndoStore& undo);
  bool SetData(int nID, int value, bool bRecord, UndoStore& undo);
  bool SetData(int nID, bool value, bool bRecord, UndoStore& undo);
  bool SetData(int nID, const char* value, bool bRecord, UndoStore& undo) = delete;

  // The stored value, or the kind's absent value.
  void GetData(int nID, CString& out) const;
  void GetData(int nID, DateTime& out) const;
  void GetData(int nID, Money& out) const;
  void GetData(int nID, double& out) const;
  void GetData(int nID, int& out) const;
  void GetData(int nID, bool& out) const;

  // Removes nID from every kind, or from one. The flagged set is kept.
  void DeleteData(int nID);
  void DeleteDataBool(int nID);
  void DeleteDataInt(int nID);
  void DeleteDataDouble(int nID);
  void DeleteDataMoney(int nID);
  void DeleteDataDateTime(int nID);
  void DeleteDataString(int nID);

  // Two columns trade IDs within one kind: nothing when the IDs are equal or
  // nIDA has no value; nIDB without a value gets a copy of nIDA's; two
  // values are swapped.
  void ChangeDataPropIDBool(int nIDA, int nIDB);
  void ChangeDataPropIDInt(int nIDA, int nIDB);
  void ChangeDataPropIDDouble(int nIDA, int nIDB);
  void ChangeDataPropIDMoney(int nIDA, int nIDB);
  void ChangeDataPropIDDateTime(int nIDA, int nIDB);
  void ChangeDataPropIDString(int nIDA, int nIDB);

  // Moves the value of nFromID (the first kind holding it, searched bool,
  // int, double, Money, DateTime, text) to nToID, overwriting nToID's value
  // in that kind; a flagged text takes its flag along. No undo history.
  void MoveData(int nFromID, int nToID);

  // Appends the IDs of all values, kind by kind (bool, int, double, Money,
  // DateTime, text), each kind in ascending order; an ID held by two kinds
  // comes twice.
  void GetSupportedDataProps(std::vector<int>& ids) const;

  // Same values kind by kind and same flagged set.
  bool operator==(const ValueStore& other) const;

  // See the layout above the definition; version 6 is current.
  void Serialize(CArchive& ar);

 private:
  bool Has(int nID, ValueKind nKind) const;
  void Delete(int nID, ValueKind nKind);
  template <typename T>
  bool Set(int nID, const T& value, bool bRecord, UndoStore& undo);
  template <typename T>
  void Put(const ValueBlock::Slot& slot, const T& value);
  template <typename T>
  void Put(int nID, const T& value);
  template <typename T>
  void Register(int nID, const T& value);
  template <typename T>
  void Get(int nID, T& out) const;
  template <typename T>
  void ChangeID(int nIDA, int nIDB);
  bool Move(ValueKind nKind, int nFromID, int nToID);
  bool IsFlagged(int nID) const;
  void Flag(int nID);

  ValueBlock m_block;
};

#endif  // DATAMGR_TYPES_VALUESTORE_H_
