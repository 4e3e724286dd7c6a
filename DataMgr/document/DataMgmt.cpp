#include "DataMgr/document/DataMgmt.h"

#include "DataMgr/schema/ValueCodec.h"
#include "DataMgr/types/ArchiveExchange.h"
#include "utility/DateTime.h"
#include "utility/SerializeData.h"

using archive_exchange::Exchange;

namespace {


}  // namespace

DataMgmt::DataMgmt() = default;

DataMgmt::~DataMgmt() {
  m_mapAliasDataProps.clear();
  m_dataItemMgr.DeleteAll(false);
}

int DataMgmt::GetAliasDataProp(int nID) const {
  const auto found = m_mapAliasDataProps.find(nID);
  return found == m_mapAliasDataProps.end() ? nID : found->second;
}

bool DataMgmt::GetDataPropType(int nID, DataType::Type& type) const {
  const DataProp* p = m_dataPropMgr.GetByID(nID);
  if (p == nullptr) return false;
  type = p->GetDataType();
  return true;
}

bool DataMgmt::IsFilePathType(DataType::Type nType) {
  return nType == DataType::PhotoFilePath || nType == DataType::DataFilePath;
}

bool DataMgmt::AddDataProp(DataProp* p, bool bNewID, bool bAppColumn, bool bFillItems, bool bFillSubItems) {
  if (p == nullptr) return false;
  if (bAppColumn) {
    if (!m_dataPropMgr.AddApp(p, bNewID || p->GetID() < 0)) return false;
  } else {
    m_dataPropMgr.AddUser(p, bNewID || p->GetID() < DataProp::DEFAULT_USER_ID);
  }
  if ((bFillItems || bFillSubItems) && !m_dataItemMgr.IsEmpty()) FillNewColumn(*p, bFillSubItems);
  return true;
}

void DataMgmt::FillNewColumn(DataProp& prop, bool bSubItems) {
  const ValueCodec::Registration registerIn = ValueCodec::For(prop.GetDataType()).MakeDefault(prop, true);
  if (!registerIn) return;
  for (size_t i = 0; i < m_dataItemMgr.GetCount(); ++i) {
    DataItem& item = *m_dataItemMgr.GetAt(i);
    if (!bSubItems) {
      registerIn(item);
      continue;
    }
    DataSubItemMgr& subItems = item.GetSubItemsMgr();
    for (size_t j = 0; j < subItems.GetCount(); ++j) registerIn(*subItems.GetAt(j));
  }
}

void DataMgmt::RegisterDataProp(Data& record, DataProp& prop) const {
  if (record.HaveDataProp(prop.GetID())) return;
  if (const auto registerIn = ValueCodec::For(prop.GetDataType()).MakeDefault(prop, false)) registerIn(record);
}

void DataMgmt::DeleteDataProp(DataProp* p) {
  if (p == nullptr) return;
  const int nID = p->GetID();
  m_dataPropMgr.DeleteByID(nID);
  for (size_t i = 0; i < m_dataItemMgr.GetCount(); ++i) {
    DataItem& item = *m_dataItemMgr.GetAt(i);
    if (item.HaveDataProp(nID)) item.DeleteData(nID);
  }
}

DataItem* DataMgmt::CreateDataItem(DataItem* pSource, bool bAdd, bool bAssignID) {
  DataItem* pItem = m_dataItemMgr.Create(pSource, bAdd, bAssignID);
  if (pItem == nullptr) return nullptr;
  if (pSource == nullptr) {
    if (!CopyFreshDefaults(*pItem)) ForEachDataProp([this, pItem](DataProp& prop) { RegisterDataProp(*pItem, prop); });
  } else {
    ForEachDataProp([this, pItem](DataProp& prop) { IncreaseListItemUsageCount(prop, *pItem); });
  }
  return pItem;
}

bool DataMgmt::CopyFreshDefaults(DataItem& item) {
  bool bNoDefaultTexts = true;
  bool bSameColumns = m_pFreshDefaults != nullptr;
  size_t nColumns = 0;
  ForEachDataProp([&](const DataProp& prop) {
    bNoDefaultTexts = bNoDefaultTexts && prop.GetDefaultValue().IsEmpty();
    bSameColumns = bSameColumns && nColumns < m_vecFreshColumns.size() &&
                   m_vecFreshColumns[nColumns] == std::make_pair(prop.GetID(), prop.GetDataType());
    ++nColumns;
  });
  if (!bNoDefaultTexts) return false;
  if (!bSameColumns || nColumns != m_vecFreshColumns.size()) {
    m_vecFreshColumns.clear();
    m_pFreshDefaults = std::make_unique<DataItem>();
    ForEachDataProp([this](DataProp& prop) {
      m_vecFreshColumns.emplace_back(prop.GetID(), prop.GetDataType());
      RegisterDataProp(*m_pFreshDefaults, prop);
    });
  }
  item.AssignValues(*m_pFreshDefaults, false);
  return true;
}

DataSubItem* DataMgmt::CreateDataSubItem(DataItem& parent, std::vector<int>& columnIds, DataSubItem* pSource,
                                         bool bAdd, bool bAssignID) {
  DataSubItem* pSubItem = parent.GetSubItemsMgr().Create(pSource, bAdd, bAssignID);
  if (pSubItem == nullptr || pSource != nullptr) return pSubItem;
  for (int nID : columnIds) {
    if (DataProp* p = m_dataPropMgr.GetByID(nID)) RegisterDataProp(*pSubItem, *p);
  }
  return pSubItem;
}

void DataMgmt::DeleteDataItem(DataItem* pItem) {
  if (pItem == nullptr) return;
  ForEachDataProp([this, pItem](DataProp& prop) { ReduceListItemUsageCount(prop, *pItem); });
  m_dataItemMgr.Delete(pItem);
}

void DataMgmt::DeleteAll(bool bResetIDs, bool bClearAliases) {
  m_dataPropMgr.DeleteAll();
  m_dataItemMgr.DeleteAll(bResetIDs);
  if (bClearAliases) m_mapAliasDataProps.clear();
}

DataItem* DataMgmt::GetLastModifiedDataItem(int nColumnID) const {
  DataItem* pBest = nullptr;
  DateTime best;
  for (size_t i = 0; i < m_dataItemMgr.GetCount(); ++i) {
    DataItem* pItem = m_dataItemMgr.GetAt(i);
    DateTime modified;
    pItem->GetLastModified(modified);
    if (!modified.IsValidDate() || !modified.IsValidTime()) continue;
    if (nColumnID != -1 && GetTextRepresentation(*pItem, nColumnID, false).IsEmpty()) continue;
    if (pBest == nullptr || modified > best) {
      pBest = pItem;
      best = modified;
    }
  }
  return pBest;
}

// Layout: WORD version; the MRU export path (text); the column registry
// (DataPropMgr); the items (DataItemMgr). Version 2 then holds a vector of
// int (old-format counter) that is read and dropped.
//   1  export path, columns, items
//   2  adds the int vector; file-path defaults are reset after loading
//   3  drops the int vector; file-path defaults are still reset
//   4  (current) loaded as stored
// The alias map is neither stored nor touched by loading.
void DataMgmt::Serialize(CArchive& ar) {
  WORD nVersion = CURRENT_VERSION;
  Exchange(ar, nVersion);
  Exchange(ar, m_strMRUExportPath);
  m_dataPropMgr.Serialize(ar);
  m_dataItemMgr.Serialize(ar);
  if (ar.IsStoring()) return;
  if (nVersion == 2) {
    std::vector<int> dropped;
    SerializeData::Serialize(ar, dropped, true);
  }
  if (nVersion == 2 || nVersion == 3) ResetFileBasedDefaultValues();
}
