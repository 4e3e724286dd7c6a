#ifndef DATAMGR_TYPES_DATA_H_
#define DATAMGR_TYPES_DATA_H_

#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/types/Money.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

// A record of the document (an item or a sub-item): at most one value per
// column ID, kept by value kind, with an in-memory undo history per column.
// Filters, sorting, search and the document read and write records only
// through this interface; the records embed a ValueStore and an UndoStore
// and forward to them (see there for the rules of each operation).
//
// Records are always deleted through their own type: the destructor is not
// virtual and is protected so that deleting through Data& cannot compile.
// The order of the operations is the order of the virtual table and part of
// the binary interface: do not reorder, insert or remove any.
//
// The const char* overloads exist so that a string literal does not pick
// the bool overload; their definitions here build a CString and call the
// CString overload. They are pure all the same: a record overrides them by
// calling Data's definition.
class VAXO057_API Data {
 public:
  virtual void SetID(int nID) = 0;
  virtual int GetID() const = 0;

  virtual bool HaveDataProp(int nID) const = 0;
  virtual bool HaveDataPropBool(int nID) const = 0;
  virtual bool HaveDataPropInt(int nID) const = 0;
  virtual bool HaveDataPropDouble(int nID) const = 0;
  virtual bool HaveDataPropMoney(int nID) const = 0;
  virtual bool HaveDataPropDateTime(int nID) const = 0;
  virtual bool HaveDataPropString(int nID) const = 0;

  virtual void RegisterDataProp(int nID, const CString& value, bool bFlagged) = 0;
  virtual void RegisterDataProp(int nID, const char* value, bool bFlagged) = 0;
  virtual void RegisterDataProp(int nID, const DateTime& value) = 0;
  virtual void RegisterDataProp(int nID, const Money& value) = 0;
  virtual void RegisterDataProp(int nID, double value) = 0;
  virtual void RegisterDataProp(int nID, int value) = 0;
  virtual void RegisterDataProp(int nID, bool value) = 0;

  virtual bool SetData(int nID, const CString& value, bool bRecord) = 0;
  virtual bool SetData(int nID, const char* value, bool bRecord) = 0;
  virtual bool SetData(int nID, const DateTime& value, bool bRecord) = 0;
  virtual bool SetData(int nID, const Money& value, bool bRecord) = 0;
  virtual bool SetData(int nID, double value, bool bRecord) = 0;
  virtual bool SetData(int nID, int value, bool bRecord) = 0;
  virtual bool SetData(int nID, bool value, bool bRecord) = 0;

  virtual void GetData(int nID, CString& out) const = 0;
  virtual void GetData(int nID, DateTime& out) const = 0;
  virtual void GetData(int nID, Money& out) const = 0;
  virtual void GetData(int nID, double& out) const = 0;
  virtual void GetData(int nID, int& out) const = 0;
  virtual void GetData(int nID, bool& out) const = 0;

  virtual void DeleteData(int nID) = 0;
  virtual void MoveData(int nFromID, int nToID) = 0;
  virtual void GetSupportedDataProps(std::vector<int>& ids) const = 0;

  virtual bool HaveUndoData(int nID) const = 0;
  virtual void GetUndoData(int nID, std::vector<CString>& out) const = 0;
  virtual void GetUndoData(int nID, std::vector<DateTime>& out) const = 0;
  virtual void GetUndoData(int nID, std::vector<Money>& out) const = 0;
  virtual void GetUndoData(int nID, std::vector<double>& out) const = 0;
  virtual void GetUndoData(int nID, std::vector<int>& out) const = 0;
  virtual void GetUndoData(int nID, std::vector<bool>& out) const = 0;

  virtual void Serialize(CArchive& ar) = 0;

 protected:
  Data() = default;
  Data(const Data& other) = default;
  Data& operator=(const Data& other) = default;
  ~Data() = default;
};

#endif  // DATAMGR_TYPES_DATA_H_
