#include "DataMgr/records/DataRecord.h"

DataRecord::DataRecord() = default;

DataRecord::DataRecord(const DataRecord& other, bool bWithUndo)
    : Data(), m_values(other.m_values), m_undo(bWithUndo ? other.m_undo : UndoStore()), m_nID(other.m_nID) {}

DataRecord::~DataRecord() = default;

void DataRecord::AssignValues(const DataRecord& other, bool bWithUndo) {
  m_values = other.m_values;
  if (bWithUndo) m_undo = other.m_undo;
}

WORD DataRecord::SerializeVersionAndID(CArchive& ar, WORD nCurrentVersion) {
  WORD nVersion = nCurrentVersion;
  if (ar.IsStoring()) {
    ar << nVersion << m_nID;
  } else {
    ar >> nVersion >> m_nID;
  }
  return nVersion;
}

void DataRecord::SetID(int nID) { m_nID = nID; }
int DataRecord::GetID() const { return m_nID; }

bool DataRecord::HaveDataProp(int nID) const { return m_values.HaveDataProp(nID); }
bool DataRecord::HaveDataPropBool(int nID) const { return m_values.HaveDataPropBool(nID); }
bool DataRecord::HaveDataPropInt(int nID) const { return m_values.HaveDataPropInt(nID); }
bool DataRecord::HaveDataPropDouble(int nID) const { return m_values.HaveDataPropDouble(nID); }
bool DataRecord::HaveDataPropMoney(int nID) const { return m_values.HaveDataPropMoney(nID); }
bool DataRecord::HaveDataPropDateTime(int nID) const { return m_values.HaveDataPropDateTime(nID); }
bool DataRecord::HaveDataPropString(int nID) const { return m_values.HaveDataPropString(nID); }

void DataRecord::RegisterDataProp(int nID, const CString& value, bool bFlagged) {
  m_values.RegisterDataProp(nID, value, bFlagged);
}
void DataRecord::RegisterDataProp(int nID, const char* value, bool bFlagged) {
  Data::RegisterDataProp(nID, value, bFlagged);
}
void DataRecord::RegisterDataProp(int nID, const DateTime& value) { m_values.RegisterDataProp(nID, value); }
void DataRecord::RegisterDataProp(int nID, const Money& value) { m_values.RegisterDataProp(nID, value); }
void DataRecord::RegisterDataProp(int nID, double value) { m_values.RegisterDataProp(nID, value); }
void DataRecord::RegisterDataProp(int nID, int value) { m_values.RegisterDataProp(nID, value); }
void DataRecord::RegisterDataProp(int nID, bool value) { m_values.RegisterDataProp(nID, value); }

bool DataRecord::SetData(int nID, const CString& value, bool bRecord) {
  return m_values.SetData(nID, value, bRecord, m_undo);
}
bool DataRecord::SetData(int nID, const char* value, bool bRecord) { return Data::SetData(nID, value, bRecord); }
bool DataRecord::SetData(int nID, const DateTime& value, bool bRecord) {
  return m_values.SetData(nID, value, bRecord, m_undo);
}
bool DataRecord::SetData(int nID, const Money& value, bool bRecord) {
  return m_values.SetData(nID, value, bRecord, m_undo);
}
bool DataRecord::SetData(int nID, double value, bool bRecord) { return m_values.SetData(nID, value, bRecord, m_undo); }
bool DataRecord::SetData(int nID, int value, bool bRecord) { return m_values.SetData(nID, value, bRecord, m_undo); }
bool DataRecord::SetData(int nID, bool value, bool bRecord) { return m_values.SetData(nID, value, bRecord, m_undo); }

void DataRecord::GetData(int nID, CString& out) const { m_values.GetData(nID, out); }
void DataRecord::GetData(int nID, DateTime& out) const { m_values.GetData(nID, out); }
void DataRecord::GetData(int nID, Money& out) const { m_values.GetData(nID, out); }
void DataRecord::GetData(int nID, double& out) const { m_values.GetData(nID, out); }
void DataRecord::GetData(int nID, int& out) const { m_values.GetData(nID, out); }
void DataRecord::GetData(int nID, bool& out) const { m_values.GetData(nID, out); }

void DataRecord::DeleteData(int nID) { m_values.DeleteData(nID); }
void DataRecord::MoveData(int nFromID, int nToID) { m_values.MoveData(nFromID, nToID); }
void DataRecord::GetSupportedDataProps(std::vector<int>& ids) const { m_values.GetSupportedDataProps(ids); }

bool DataRecord::HaveUndoData(int nID) const { return m_undo.HaveUndoData(nID); }
void DataRecord::GetUndoData(int nID, std::vector<CString>& out) const { m_undo.GetUndoData(nID, out); }
void DataRecord::GetUndoData(int nID, std::vector<DateTime>& out) const { m_undo.GetUndoData(nID, out); }
void DataRecord::GetUndoData(int nID, std::vector<Money>& out) const { m_undo.GetUndoData(nID, out); }
void DataRecord::GetUndoData(int nID, std::vector<double>& out) const { m_undo.GetUndoData(nID, out); }
void DataRecord::GetUndoData(int nID, std::vector<int>& out) const { m_undo.GetUndoData(nID, out); }
void DataRecord::GetUndoData(int nID, std::vector<bool>& out) const { m_undo.GetUndoData(nID, out); }

void DataRecord::DeleteDataBool(int nID) { m_values.DeleteDataBool(nID); }
void DataRecord::DeleteDataInt(int nID) { m_values.DeleteDataInt(nID); }
void DataRecord::DeleteDataDouble(int nID) { m_values.DeleteDataDouble(nID); }
void DataRecord::DeleteDataMoney(int nID) { m_values.DeleteDataMoney(nID); }
void DataRecord::DeleteDataDateTime(int nID) { m_values.DeleteDataDateTime(nID); }
void DataRecord::DeleteDataString(int nID) { m_values.DeleteDataString(nID); }

void DataRecord::ClearUndoData() { m_undo.ClearUndoData(); }
void DataRecord::ChangeDataPropIDBool(int nIDA, int nIDB) { m_values.ChangeDataPropIDBool(nIDA, nIDB); }
void DataRecord::ChangeDataPropIDInt(int nIDA, int nIDB) { m_values.ChangeDataPropIDInt(nIDA, nIDB); }
void DataRecord::ChangeDataPropIDDouble(int nIDA, int nIDB) { m_values.ChangeDataPropIDDouble(nIDA, nIDB); }
void DataRecord::ChangeDataPropIDMoney(int nIDA, int nIDB) { m_values.ChangeDataPropIDMoney(nIDA, nIDB); }
void DataRecord::ChangeDataPropIDDateTime(int nIDA, int nIDB) { m_values.ChangeDataPropIDDateTime(nIDA, nIDB); }
void DataRecord::ChangeDataPropIDString(int nIDA, int nIDB) { m_values.ChangeDataPropIDString(nIDA, nIDB); }
