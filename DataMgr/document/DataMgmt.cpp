#include "DataMgr/document/DataMgmt.h"

#include "DataMgr/types/ArchiveExchange.h"
#include "DataMgr/types/Money.h"
#include "utility/DateTime.h"
#include "utility/NumberTextConv.h"
#include "utility/SerializeData.h"
#include "utility/StringUtils.h"

using archive_exchange::Exchange;

namespace {

template <typename T>
std::function<void(Data&)> Registration(int nID, T value) {
  return [nID, value](Data& record) { record.RegisterDataProp(nID, value); };
}

std::function<void(Data&)> TextRegistration(int nID, const CString& text) {
  return [nID, text](Data& record) { record.RegisterDataProp(nID, text, false); };
}

// The number of a number-with-text default put back into its text part:
// "Vol. 03" gives "Vol. 3", "Part IV" gives "Part 4".
CString NumberWithTextDefault(const CString& text, bool bAllowRoman) {
  bool bAlone = false;
  CString strRest;
  const int nNumber = NumberTextConv::ParseNumber(text, bAlone, strRest, bAllowRoman);
  const CString strNumber = NumberTextConv::NumberToString(nNumber, false, 0, CString());
  if (bAlone) return strNumber;
  strRest.Replace("%d", strNumber);
  return strRest;
}

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

bool DataMgmt::IsAddressBookType(DataType::Type nType) {
  return nType == DataType::AddressBookSuggested || nType == DataType::AddressBookSelect;
}

bool DataMgmt::IsFilePathType(DataType::Type nType) {
  return nType == DataType::PhotoFilePath || nType == DataType::DataFilePath;
}

bool DataMgmt::IsTextType(DataType::Type nType) {
  switch (nType) {
    case DataType::Text:
    case DataType::PhotoFilePath:
    case DataType::DirectoryPath:
    case DataType::EmailAddress:
    case DataType::WebSiteAddress:
    case DataType::Password:
    case DataType::LargeText:
    case DataType::DataFilePath:
    case DataType::NumberWithText:
    case DataType::NumberWithRomanOrText:
      return true;
    default:
      return false;
  }
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
  const DefaultValue registerIn = MakeDefaultValue(prop, true);
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

// A fresh record takes list entries by their text and addresses by their
// name (creating an unknown one); a column added to existing records takes
// its entry by text and its address by ID, and creates nothing.
DataMgmt::DefaultValue DataMgmt::MakeDefaultValue(DataProp& prop, bool bNewColumn) {
  const int nID = prop.GetID();
  const CString& text = prop.GetDefaultValue();
  const DataType::Type nType = prop.GetDataType();
  switch (nType) {
    case DataType::YesNo:
      return Registration(nID, StringUtils::TextToBool(text));
    case DataType::Number:
      return Registration(nID, NumberTextConv::GetNumberFromString(text));
    case DataType::Duration:
      return Registration(nID, DateTime::ConvertFromDuration(text, prop.GetTimeShowHours()));
    case DataType::Decimal:
      return Registration(nID, NumberTextConv::GetDoubleFromString(text, false));
    case DataType::Date:
    case DataType::Time: {
      DateTime value;
      if (nType == DataType::Date) {
        value.SetDate(text);
      } else {
        value.SetTime(text);
      }
      return Registration(nID, value);
    }
    case DataType::NumberWithText:
    case DataType::NumberWithRomanOrText:
      if (bNewColumn) return TextRegistration(nID, NumberWithTextDefault(text, nType == DataType::NumberWithRomanOrText));
      return TextRegistration(nID, text);
    case DataType::Monetary: {
      Money value;
      value.Set(text);
      return Registration(nID, value);
    }
    default:
      break;
  }
  if (IsTextType(nType)) return TextRegistration(nID, text);
  if (!DataType::IsListType(nType)) return DefaultValue();
  int nEntryID = -1;
  if (!IsAddressBookType(nType)) {
    if (bNewColumn || !text.IsEmpty()) nEntryID = FindEntryID(prop, nType, text, false);
  } else if (bNewColumn) {
    const Address* pAddress = prop.GetAddressBook().GetByID(NumberTextConv::GetNumberFromString(text));
    nEntryID = pAddress != nullptr ? pAddress->GetID() : -1;
  } else if (!text.IsEmpty() && text != "-1") {
    nEntryID = FindEntryID(prop, nType, text, true);
  }
  DataProp* pProp = &prop;
  return [nID, nType, nEntryID, pProp](Data& record) {
    if (record.HaveDataProp(nID)) return;
    record.RegisterDataProp(nID, nEntryID);
    ChangeEntryUsage(*pProp, nType, nEntryID, true);
  };
}

void DataMgmt::RegisterDataProp(Data& record, DataProp& prop) const {
  if (record.HaveDataProp(prop.GetID())) return;
  if (const DefaultValue registerIn = MakeDefaultValue(prop, false)) registerIn(record);
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
    ForEachDataProp([this, pItem](DataProp& prop) { RegisterDataProp(*pItem, prop); });
  } else {
    ForEachDataProp([this, pItem](DataProp& prop) { IncreaseListItemUsageCount(prop, *pItem); });
  }
  return pItem;
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
