#include "DataMgr/document/DataMgmt.h"

#include <algorithm>

// The column moves as a copy: the registry deletes the original and takes
// the copy over under its new ID.
int DataMgmt::MakeAppDataPropIntoUserDefined(int nAppID) {
  const DataProp* pApp = nullptr;
  for (size_t i = 0; i < m_dataPropMgr.GetAppCount() && pApp == nullptr; ++i) {
    const DataProp* p = m_dataPropMgr.GetAppAt(i);
    if (p != nullptr && p->GetID() == nAppID) pApp = p;
  }
  if (pApp == nullptr) return -1;
  std::vector<int> order;
  m_dataPropMgr.GetDisplayOrder(order);
  auto* pCopy = new DataProp(*pApp);
  m_dataPropMgr.DeleteByID(nAppID);
  m_dataPropMgr.AddUser(pCopy, true);
  MoveColumnValues(*pCopy, order, nAppID);
  return pCopy->GetID();
}

// An occupied or out-of-range application slot is refused before anything
// changes, so that no column is lost.
int DataMgmt::MakeUserDataPropIntoAppDefined(int nUserID, int nAppID) {
  const DataProp* pUser = m_dataPropMgr.GetUserByID(nUserID);
  if (pUser == nullptr || nAppID < 0 || nAppID >= DataProp::DEFAULT_USER_ID ||
      m_dataPropMgr.GetAppByID(nAppID) != nullptr) {
    return -1;
  }
  std::vector<int> order;
  m_dataPropMgr.GetDisplayOrder(order);
  auto* pCopy = new DataProp(*pUser);
  m_dataPropMgr.DeleteByID(nUserID);
  pCopy->SetID(nAppID);
  m_dataPropMgr.AddApp(pCopy, false);
  MoveColumnValues(*pCopy, order, nUserID);
  return nAppID;
}

// Only items are visited: a sub-item keeps its cell under the old ID, where
// no column reaches it, and the usage it gave to an entry stays counted.
void DataMgmt::MoveColumnValues(DataProp& prop, std::vector<int>& order, int nFromID) {
  const int nToID = prop.GetID();
  const auto found = std::find(order.begin(), order.end(), nFromID);
  if (found != order.end()) {
    *found = nToID;
    m_dataPropMgr.SetDisplayOrder(order);
  }
  for (size_t i = 0; i < m_dataItemMgr.GetCount(); ++i) {
    DataItem& item = *m_dataItemMgr.GetAt(i);
    if (item.HaveDataProp(nFromID)) item.MoveData(nFromID, nToID);
  }
}
