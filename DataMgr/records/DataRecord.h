#ifndef DATAMGR_RECORDS_DATARECORD_H_
#define DATAMGR_RECORDS_DATARECORD_H_

#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/types/Data.h"
#include "DataMgr/types/Money.h"
#include "DataMgr/types/UndoStore.h"
#include "DataMgr/types/ValueStore.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

namespace record_list {
template <typename T>
T* NewForLoading();
}  // namespace record_list

// What items and sub-items have in common: an ID (-1 until a collection
// gives one), the values (a ValueStore) and their in-memory undo history (an
// UndoStore), and every operation of Data over them except Serialize, whose
// archive form each record has of its own. It adds no virtual operation, so
// the records keep the operation order of Data.
//
// Only DataItem and DataSubItem derive from it. It is never created, copied
// or deleted on its own: constructors, the copy helpers and the destructor
// are protected, and its copy constructor and assignment do not exist, so
// that each record says which of ID, values and undo history a copy takes.
class VAXO057_API DataRecord : public Data {
 public:
  void SetID(int nID) override;
  int GetID() const override;

  bool HaveDataProp(int nID) const override;
  bool HaveDataPropBool(int nID) const override;
  bool HaveDataPropInt(int nID) const override;
  bool HaveDataPropDouble(int nID) const override;
  bool HaveDataPropMoney(int nID) const override;
  bool HaveDataPropDateTime(int nID) const override;
  bool HaveDataPropString(int nID) const override;

  void RegisterDataProp(int nID, const CString& value, bool bFlagged) override;
  void RegisterDataProp(int nID, const char* value, bool bFlagged) override;
  void RegisterDataProp(int nID, const DateTime& value) override;
  void RegisterDataProp(int nID, const Money& value) override;
  void RegisterDataProp(int nID, double value) override;
  void RegisterDataProp(int nID, int value) override;
  void RegisterDataProp(int nID, bool value) override;

  bool SetData(int nID, const CString& value, bool bRecord) override;
  bool SetData(int nID, const char* value, bool bRecord) override;
  bool SetData(int nID, const DateTime& value, bool bRecord) override;
  bool SetData(int nID, const Money& value, bool bRecord) override;
  bool SetData(int nID, double value, bool bRecord) override;
  bool SetData(int nID, int value, bool bRecord) override;
  bool SetData(int nID, bool value, bool bRecord) override;

  void GetData(int nID, CString& out) const override;
  void GetData(int nID, DateTime& out) const override;
  void GetData(int nID, Money& out) const override;
  void GetData(int nID, double& out) const override;
  void GetData(int nID, int& out) const override;
  void GetData(int nID, bool& out) const override;

  void DeleteData(int nID) override;
  void MoveData(int nFromID, int nToID) override;
  void GetSupportedDataProps(std::vector<int>& ids) const override;

  bool HaveUndoData(int nID) const override;
  void GetUndoData(int nID, std::vector<CString>& out) const override;
  void GetUndoData(int nID, std::vector<DateTime>& out) const override;
  void GetUndoData(int nID, std::vector<Money>& out) const override;
  void GetUndoData(int nID, std::vector<double>& out) const override;
  void GetUndoData(int nID, std::vector<int>& out) const override;
  void GetUndoData(int nID, std::vector<bool>& out) const override;

 protected:
  // Picks the constructor of a record about to be loaded, whose fields all
  // come from the archive (record_list::NewForLoading).
  struct ForLoading {};

  DataRecord();
  // Takes the ID and the values of other, and its undo history when
  // bWithUndo (else the history starts empty).
  DataRecord(const DataRecord& other, bool bWithUndo);
  DataRecord(const DataRecord& other) = delete;
  DataRecord& operator=(const DataRecord& other) = delete;
  ~DataRecord();

  // Takes the values of other, and its undo history when bWithUndo (else
  // this record's own history stays). The ID stays.
  void AssignValues(const DataRecord& other, bool bWithUndo);
  bool HasSameValues(const DataRecord& other) const { return m_values == other.m_values; }
  // The version word (nCurrentVersion when storing) and the ID, with which
  // the archive forms of both records begin; returns the version.
  WORD SerializeVersionAndID(CArchive& ar, WORD nCurrentVersion);
  void SerializeValues(CArchive& ar) { m_values.Serialize(ar); }

  // Remove nID from one value kind of this record only. Protected so that
  // deleting from an item through this base cannot skip the item's
  // sub-items; each record publishes its own.
  void DeleteDataBool(int nID);
  void DeleteDataInt(int nID);
  void DeleteDataDouble(int nID);
  void DeleteDataMoney(int nID);
  void DeleteDataDateTime(int nID);
  void DeleteDataString(int nID);

  // Published by DataItem only.
  void ClearUndoData();
  void ChangeDataPropIDBool(int nIDA, int nIDB);
  void ChangeDataPropIDInt(int nIDA, int nIDB);
  void ChangeDataPropIDDouble(int nIDA, int nIDB);
  void ChangeDataPropIDMoney(int nIDA, int nIDB);
  void ChangeDataPropIDDateTime(int nIDA, int nIDB);
  void ChangeDataPropIDString(int nIDA, int nIDB);

 private:
  // The ID last, so that a sub-item's parent ID fills the padding after it.
  ValueStore m_values;
  UndoStore m_undo;
  int m_nID = -1;
};

#endif  // DATAMGR_RECORDS_DATARECORD_H_
