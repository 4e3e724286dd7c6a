#include "DataMgr/document/DataMgmt.h"

#include "DataMgr/schema/Address.h"
#include "DataMgr/schema/ListItem.h"

int DataMgmt::FindEntryID(DataProp& owner, DataType::Type nType, const CString& text, bool bCreate) {
  if (IsAddressBookType(nType)) {
    const Address* pAddress = owner.GetAddressBook().GetByName(text, bCreate);
    return pAddress != nullptr ? pAddress->GetID() : -1;
  }
  const ListItem* pEntry = owner.GetListItemByValue(text, bCreate);
  return pEntry != nullptr ? pEntry->GetID() : -1;
}

void DataMgmt::ChangeEntryUsage(DataProp& owner, DataType::Type nType, int nEntryID, bool bRaise) {
  if (nEntryID < 0) return;
  if (IsAddressBookType(nType)) {
    if (Address* pAddress = owner.GetAddressBook().GetByID(nEntryID)) {
      bRaise ? pAddress->RegisterUsage() : pAddress->UnregisterUsage();
    }
  } else if (ListItem* pEntry = owner.GetListItemByID(nEntryID)) {
    bRaise ? pEntry->RegisterUsage() : pEntry->UnregisterUsage();
  }
}

void DataMgmt::ChangeRecordUsage(DataProp& prop, const Data& record, bool bRaise) {
  if (!DataType::IsListType(prop.GetDataType())) return;
  int nEntryID = -1;
  record.GetData(prop.GetID(), nEntryID);
  ChangeEntryUsage(prop, prop.GetDataType(), nEntryID, bRaise);
}

void DataMgmt::ReduceListItemUsageCount(DataProp& prop, DataItem& record) const {
  ChangeRecordUsage(prop, record, false);
}

void DataMgmt::IncreaseListItemUsageCount(DataProp& prop, DataItem& record) const {
  ChangeRecordUsage(prop, record, true);
}
