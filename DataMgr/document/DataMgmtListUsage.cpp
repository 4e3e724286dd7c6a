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
