#include "DataMgr/schema/DataPropMgr.h"

#include <algorithm>
#include <memory>

#include "DataMgr/types/ArchiveExchange.h"
#include "DataMgr/types/NextIDMgr.h"
#include "utility/SerializeData.h"

using archive_exchange::Exchange;

namespace {

const WORD DATAPROPMGR_VERSION = 4;

const size_t APP_SLOT_LIMIT = DataProp::DEFAULT_USER_ID;

// The bytes of a slot's presence word.
const size_t PRESENCE_BYTES = 4;

DataProp* FirstNamed(const std::vector<DataProp*>& columns, const CString& name) {
  if (name.IsEmpty()) return nullptr;
  for (DataProp* p : columns) {
    if (p != nullptr && p->GetName().Compare(name) == 0) return p;
  }
  return nullptr;
}

// Stores p, or loads a new column into p.
void SerializeColumn(CArchive& ar, DataProp*& p) {
  if (ar.IsStoring()) {
    p->Serialize(ar);
    return;
  }
  auto pLoaded = std::make_unique<DataProp>();
  pLoaded->Serialize(ar);
  p = pLoaded.release();
}

}  // namespace

DataPropMgr::~DataPropMgr() { DeleteAll(); }

bool DataPropMgr::AddApp(DataProp* p, bool bAssignID) {
  if (p == nullptr) {
    m_vecAppDataProps.push_back(nullptr);
    return true;
  }
  if (bAssignID) p->SetID(static_cast<int>(m_vecAppDataProps.size()));
  if (p->GetID() < 0 || static_cast<size_t>(p->GetID()) >= APP_SLOT_LIMIT) return false;
  const size_t nSlot = static_cast<size_t>(p->GetID());
  if (m_vecAppDataProps.size() <= nSlot) m_vecAppDataProps.resize(nSlot + 1, nullptr);
  m_vecAppDataProps[nSlot] = p;
  m_vecDisplayOrder.push_back(p->GetID());
  return true;
}

void DataPropMgr::AddUser(DataProp* p, bool bAssignID) {
  if (p == nullptr) return;
  if (bAssignID) {
    p->SetID(m_nNextUserID);
    m_nNextUserID = NextIDMgr::IDAfter(m_nNextUserID);
  }
  m_vecUserDataProps.push_back(p);
  m_vecDisplayOrder.push_back(p->GetID());
}

// A slot that exists is always emptied (a loaded registry may hold more
// slots than there are application IDs); only growing stops at the limit.
void DataPropMgr::ClearAppSlot(size_t i) {
  if (i < m_vecAppDataProps.size()) {
    m_vecAppDataProps[i] = nullptr;
  } else if (i < APP_SLOT_LIMIT) {
    m_vecAppDataProps.resize(i + 1, nullptr);
  }
}

void DataPropMgr::ClearoutUnusedAppDataPropSlots() {
  while (!m_vecAppDataProps.empty() && m_vecAppDataProps.back() == nullptr) m_vecAppDataProps.pop_back();
}

DataProp* DataPropMgr::GetAppAt(size_t i) const { return i < m_vecAppDataProps.size() ? m_vecAppDataProps[i] : nullptr; }

DataProp* DataPropMgr::GetUserAt(size_t i) const {
  return i < m_vecUserDataProps.size() ? m_vecUserDataProps[i] : nullptr;
}

DataProp* DataPropMgr::GetByID(int nID) const {
  if (nID < 0) return nullptr;
  return nID < DataProp::DEFAULT_USER_ID ? GetAppAt(static_cast<size_t>(nID)) : GetUserByID(nID);
}

DataProp* DataPropMgr::GetAppByID(int nID) const {
  if (nID < 0 || nID >= DataProp::DEFAULT_USER_ID) return nullptr;
  return GetAppAt(static_cast<size_t>(nID));
}

DataProp* DataPropMgr::GetUserByID(int nID) const {
  if (nID < DataProp::DEFAULT_USER_ID) return nullptr;
  for (DataProp* p : m_vecUserDataProps) {
    if (p != nullptr && p->GetID() == nID) return p;
  }
  return nullptr;
}

DataProp* DataPropMgr::GetByName(const CString& name) const {
  DataProp* p = GetAppByName(name);
  return p != nullptr ? p : GetUserByName(name);
}

DataProp* DataPropMgr::GetAppByName(const CString& name) const { return FirstNamed(m_vecAppDataProps, name); }

DataProp* DataPropMgr::GetUserByName(const CString& name) const { return FirstNamed(m_vecUserDataProps, name); }

size_t DataPropMgr::GetIndexForID(int nID) const {
  size_t i = 0;
  while (i < m_vecAppDataProps.size() && (m_vecAppDataProps[i] == nullptr || m_vecAppDataProps[i]->GetID() != nID)) {
    ++i;
  }
  return i;
}

bool DataPropMgr::DeleteByID(int nID) {
  if (nID >= DataProp::DEFAULT_USER_ID) {
    for (size_t i = 0; i < m_vecUserDataProps.size(); ++i) {
      if (m_vecUserDataProps[i] != nullptr && m_vecUserDataProps[i]->GetID() == nID) {
        DeleteUserAt(i);
        return true;
      }
    }
    return false;
  }
  const size_t i = GetIndexForID(nID);
  if (i == m_vecAppDataProps.size()) return false;
  DeleteAppSlot(i);
  return true;
}

bool DataPropMgr::DeleteAppByIndex(size_t i) {
  if (GetAppAt(i) == nullptr) return false;
  DeleteAppSlot(i);
  return true;
}

bool DataPropMgr::DeleteUserByIndex(size_t i) {
  if (GetUserAt(i) == nullptr) return false;
  DeleteUserAt(i);
  return true;
}

void DataPropMgr::DeleteAppSlot(size_t i) {
  RemoveIDFromDisplayOrder(m_vecAppDataProps[i]->GetID());
  delete m_vecAppDataProps[i];
  m_vecAppDataProps[i] = nullptr;
}

void DataPropMgr::DeleteUserAt(size_t i) {
  RemoveIDFromDisplayOrder(m_vecUserDataProps[i]->GetID());
  delete m_vecUserDataProps[i];
  m_vecUserDataProps.erase(m_vecUserDataProps.begin() + static_cast<std::ptrdiff_t>(i));
}

void DataPropMgr::DeleteAll() {
  for (DataProp* p : m_vecAppDataProps) delete p;
  for (DataProp* p : m_vecUserDataProps) delete p;
  m_vecAppDataProps.clear();
  m_vecUserDataProps.clear();
  m_vecDisplayOrder.clear();
  m_nNextUserID = DataProp::DEFAULT_USER_ID;
}

void DataPropMgr::RemoveIDFromDisplayOrder(int nID) {
  const auto found = std::find(m_vecDisplayOrder.begin(), m_vecDisplayOrder.end(), nID);
  if (found != m_vecDisplayOrder.end()) m_vecDisplayOrder.erase(found);
}

void DataPropMgr::SetToDisplayOrder(std::vector<int>& ids) const {
  if (ids.size() < 2) return;
  std::vector<int> ordered;
  for (int nID : m_vecDisplayOrder) {
    if (std::find(ids.begin(), ids.end(), nID) != ids.end()) ordered.push_back(nID);
  }
  ids.swap(ordered);
}

bool DataPropMgr::IsOfType(const DataProp* p, bool bApp, DataType::Type nType, bool bDisplayedOnly) const {
  if (p == nullptr || p->GetDataType() != nType) return false;
  if (bApp && p->GetHiddenFromUI()) return false;
  return !bDisplayedOnly || p->GetDisplayed();
}

bool DataPropMgr::HaveDataPropOfType(DataType::Type nType, bool bDisplayedOnly) const {
  std::vector<DataProp*> found;
  GetDataPropsOfType(found, nType, bDisplayedOnly);
  return !found.empty();
}

void DataPropMgr::GetDataPropsOfType(std::vector<DataProp*>& out, DataType::Type nType, bool bDisplayedOnly) const {
  for (DataProp* p : m_vecAppDataProps) {
    if (IsOfType(p, true, nType, bDisplayedOnly)) out.push_back(p);
  }
  for (DataProp* p : m_vecUserDataProps) {
    if (IsOfType(p, false, nType, bDisplayedOnly)) out.push_back(p);
  }
}

bool DataPropMgr::IsHiddenByUser(const DataProp* p, bool bApp) {
  return p != nullptr && !p->GetDisplayed() && !(bApp && p->GetHiddenFromUI());
}

bool DataPropMgr::HaveHiddenColumns() const {
  std::vector<int> ids;
  GetHiddenColumns(ids);
  return !ids.empty();
}

void DataPropMgr::GetHiddenColumns(std::vector<int>& ids) const {
  ids.clear();
  for (const DataProp* p : m_vecAppDataProps) {
    if (IsHiddenByUser(p, true)) ids.push_back(p->GetID());
  }
  for (const DataProp* p : m_vecUserDataProps) {
    if (IsHiddenByUser(p, false)) ids.push_back(p->GetID());
  }
}

// Layout (version 4, current):
//   WORD          version
//   int           registry ID
//   loop counter  slot count n
//   n times       int presence (1 = a column follows, 0 = empty slot),
//                 then the DataProp record when present
//   loop counter  user column count m
//   m times       DataProp record
//   vector<int>   display order
// Changelog:
//   1: no registry ID; n application columns without presence words; no
//      user columns; the loop counters in the old format throughout.
//   2: the registry ID.
//   3: presence words; user columns.
//   4: the loop counters in the new format.
// Loading a version 2 or older also appends each application column's ID to
// the display order, which the stored display order then replaces. A loaded
// column takes the slot of its position, whatever its ID; loaded user
// columns raise the next user ID past theirs.
void DataPropMgr::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ClearoutUnusedAppDataPropSlots();
  } else {
    DeleteAll();
  }
  WORD nVersion = DATAPROPMGR_VERSION;
  Exchange(ar, nVersion);
  const bool bOldFormat = nVersion < 4;
  if (nVersion >= 2) Exchange(ar, m_nID);

  const size_t nSlots = SerializeData::SerializeLoopCounter(ar, m_vecAppDataProps.size(), bOldFormat);
  if (ar.IsLoading()) {
    SerializeData::CheckLoopCounter(ar, nSlots, nVersion >= 3 ? PRESENCE_BYTES : DataProp::MIN_ARCHIVE_BYTES);
    m_vecAppDataProps.resize(nSlots, nullptr);
  }
  for (size_t i = 0; i < nSlots; ++i) {
    int nPresent = m_vecAppDataProps[i] != nullptr ? 1 : 0;
    if (nVersion >= 3) Exchange(ar, nPresent);
    if (nVersion >= 3 && nPresent != 1) continue;
    SerializeColumn(ar, m_vecAppDataProps[i]);
    if (ar.IsLoading() && nVersion <= 2) m_vecDisplayOrder.push_back(m_vecAppDataProps[i]->GetID());
  }

  if (nVersion >= 3) SerializeUserColumns(ar, bOldFormat);
  SerializeData::Serialize(ar, m_vecDisplayOrder, bOldFormat);
}

// A null entry of the user list (which normal use never makes) is neither
// counted nor written, so that the archive stays readable.
void DataPropMgr::SerializeUserColumns(CArchive& ar, bool bOldFormat) {
  if (ar.IsStoring()) {
    const auto nUsers = std::count_if(m_vecUserDataProps.begin(), m_vecUserDataProps.end(),
                                      [](const DataProp* p) { return p != nullptr; });
    SerializeData::SerializeLoopCounter(ar, static_cast<size_t>(nUsers), bOldFormat);
    for (DataProp* p : m_vecUserDataProps) {
      if (p != nullptr) SerializeColumn(ar, p);
    }
    return;
  }
  const size_t nUsers = SerializeData::SerializeLoopCounter(ar, 0, bOldFormat);
  SerializeData::CheckLoopCounter(ar, nUsers, DataProp::MIN_ARCHIVE_BYTES);
  for (size_t i = 0; i < nUsers; ++i) {
    DataProp* p = nullptr;
    SerializeColumn(ar, p);
    m_vecUserDataProps.push_back(p);
    if (p->GetID() >= m_nNextUserID) m_nNextUserID = NextIDMgr::IDAfter(p->GetID());
  }
}
