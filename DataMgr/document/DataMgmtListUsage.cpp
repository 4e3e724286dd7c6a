#include "DataMgr/document/DataMgmt.h"

#include "DataMgr/schema/ValueCodec.h"

void DataMgmt::ChangeRecordUsage(DataProp& prop, const Data& record, bool bRaise) {
  const ValueCodec& codec = ValueCodec::For(prop.GetDataType());
  if (!codec.IsEntryType()) return;
  int nEntryID = -1;
  record.GetData(prop.GetID(), nEntryID);
  codec.ChangeEntryUsage(prop, nEntryID, bRaise);
}

void DataMgmt::ReduceListItemUsageCount(DataProp& prop, DataItem& record) const {
  ChangeRecordUsage(prop, record, false);
}

void DataMgmt::IncreaseListItemUsageCount(DataProp& prop, DataItem& record) const {
  ChangeRecordUsage(prop, record, true);
}

void DataMgmt::ResetUsageCounters() {
  ForEachDataProp([](DataProp& prop) { prop.ClearUsageCounts(); });
  for (size_t i = 0; i < m_dataItemMgr.GetCount(); ++i) {
    const DataItem& item = *m_dataItemMgr.GetAt(i);
    ResetUsageCountersHelper1(item);
    const DataSubItemMgr& subItems = item.GetSubItemsMgr();
    for (size_t j = 0; j < subItems.GetCount(); ++j) ResetUsageCountersHelper1(*subItems.GetAt(j));
  }
}

void DataMgmt::ResetUsageCountersHelper1(const Data& record) const {
  ForEachDataProp([&](DataProp& prop) { ResetUsageCountersHelper2(record, prop); });
}

// A cell of a column with an alias counts for the alias column's entry;
// nothing is counted when the alias column is gone.
void DataMgmt::ResetUsageCountersHelper2(const Data& record, DataProp& prop) const {
  const int nID = prop.GetID();
  if (!ValueCodec::For(prop.GetDataType()).IsEntryType() || !record.HaveDataProp(nID)) return;
  int nEntryID = -1;
  record.GetData(nID, nEntryID);
  if (nEntryID < 0) return;
  const int nAliasID = GetAliasDataProp(nID);
  DataProp* pCounted = nAliasID == nID ? &prop : m_dataPropMgr.GetByID(nAliasID);
  if (pCounted != nullptr) pCounted->AddUsageCountFor(nEntryID);
}
