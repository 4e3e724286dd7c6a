#include "io/ColumnLookup.h"

DataProp* ColumnLookup::Find(const DataMgmt& doc, const CString& name) {
  if (DataProp* pProp = doc.GetDataPropMgr().GetByName(name)) return pProp;
  DataProp* pFound = nullptr;
  for (DataProp* pProp : GetAll(doc)) {
    if (pProp->GetName().CompareNoCase(name) != 0) continue;
    if (pFound != nullptr) return nullptr;
    pFound = pProp;
  }
  return pFound;
}

std::vector<int> ColumnLookup::GetShownIDs(const DataMgmt& doc) {
  std::vector<int> order;
  doc.GetDataPropMgr().GetDisplayOrder(order);
  std::vector<int> shown;
  for (int nID : order) {
    const DataProp* pProp = doc.GetDataPropMgr().GetByID(nID);
    if (pProp != nullptr && pProp->GetDisplayed() && !pProp->GetHiddenFromUI()) shown.push_back(nID);
  }
  return shown;
}

std::vector<DataProp*> ColumnLookup::GetAll(const DataMgmt& doc) {
  const DataPropMgr& registry = doc.GetDataPropMgr();
  std::vector<DataProp*> columns;
  for (size_t i = 0; i < registry.GetAppCount(); ++i) {
    if (DataProp* pProp = registry.GetAppAt(i)) columns.push_back(pProp);
  }
  for (size_t i = 0; i < registry.GetUserCount(); ++i) {
    if (DataProp* pProp = registry.GetUserAt(i)) columns.push_back(pProp);
  }
  return columns;
}
