#include "DataMgr/sort/SortOrderMgr.h"

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

#include "DataMgr/types/ArchiveExchange.h"
#include "DataMgr/types/CheckedSwap.h"
#include "utility/SerializeData.h"

using archive_exchange::Exchange;

namespace {

const WORD SORTORDERMGR_VERSION = 4;
// Versions 1 and 2 keep the next ID as a bare int.
const WORD FIRST_BARE_NEXT_ID_VERSION = 1;
const WORD LAST_BARE_NEXT_ID_VERSION = 2;
// The sort orders' loop counter is 32-bit in this version only.
const WORD OLD_COUNTER_VERSION = 1;
// Files up to this version may hold one ID twice.
const WORD LAST_DUPLICATE_ID_VERSION = 3;
// The fewest bytes of a sort order: version, ID, empty name, 32-bit counter.
const size_t MIN_SORTORDER_BYTES = 2 + 4 + 1 + 4;

}  // namespace

SortOrderMgr::SortOrderMgr() = default;

SortOrderMgr::SortOrderMgr(const SortOrderMgr& other) : m_nextID(other.m_nextID) { CopyArray(other); }

SortOrderMgr::SortOrderMgr(SortOrderMgr&& other) noexcept : m_nextID(other.m_nextID) { MoveArray(other); }

SortOrderMgr& SortOrderMgr::operator=(const SortOrderMgr& other) {
  if (this != &other) {
    CopyArray(other);
    m_nextID = other.m_nextID;
  }
  return *this;
}

SortOrderMgr& SortOrderMgr::operator=(SortOrderMgr&& other) noexcept {
  if (this != &other) {
    MoveArray(other);
    m_nextID = other.m_nextID;
  }
  return *this;
}

SortOrderMgr::~SortOrderMgr() { DeleteAll(false); }

void SortOrderMgr::CopyArray(const SortOrderMgr& other) {
  std::vector<std::unique_ptr<SortOrder>> copies;
  copies.reserve(other.m_vecSortOrders.size());
  for (const SortOrder* pOrder : other.m_vecSortOrders) copies.push_back(std::make_unique<SortOrder>(*pOrder));
  DeleteAll(false);
  m_vecSortOrders.reserve(copies.size());
  for (std::unique_ptr<SortOrder>& copy : copies) m_vecSortOrders.push_back(copy.release());
}

void SortOrderMgr::MoveArray(SortOrderMgr& other) {
  DeleteAll(false);
  m_vecSortOrders.swap(other.m_vecSortOrders);
}

size_t SortOrderMgr::GetIndexByID(int nID) const {
  const auto found = std::find_if(m_vecSortOrders.begin(), m_vecSortOrders.end(),
                                  [nID](const SortOrder* pOrder) { return pOrder->GetID() == nID; });
  return static_cast<size_t>(found - m_vecSortOrders.begin());
}

SortOrder* SortOrderMgr::Create(bool bAddToSet, const SortOrder* pCopyFrom) {
  auto pOrder = pCopyFrom != nullptr ? std::make_unique<SortOrder>(*pCopyFrom) : std::make_unique<SortOrder>();
  pOrder->SetID(m_nextID.GetNextID());
  if (bAddToSet) m_vecSortOrders.push_back(pOrder.get());
  return pOrder.release();
}

void SortOrderMgr::Delete(int nID) {
  const size_t nIndex = GetIndexByID(nID);
  if (nIndex >= GetCount()) return;
  delete m_vecSortOrders[nIndex];
  m_vecSortOrders.erase(m_vecSortOrders.begin() + static_cast<std::ptrdiff_t>(nIndex));
}

void SortOrderMgr::DeleteAll(bool bResetIDs) {
  for (SortOrder* pOrder : m_vecSortOrders) delete pOrder;
  m_vecSortOrders.clear();
  if (bResetIDs) m_nextID.ResetNextID();
}

bool SortOrderMgr::RemoveDataProp(int nDataPropID) {
  bool bRemoved = false;
  std::vector<SortOrder*> kept;
  for (SortOrder* pOrder : m_vecSortOrders) {
    if (pOrder->RemoveDataPropID(nDataPropID)) bRemoved = true;
    if (pOrder->HaveDataProps()) {
      kept.push_back(pOrder);
    } else {
      delete pOrder;
      bRemoved = true;
    }
  }
  m_vecSortOrders.swap(kept);
  return bRemoved;
}

void SortOrderMgr::Swap(size_t nA, size_t nB) { checked_swap::SwapAt(m_vecSortOrders, nA, nB); }

void SortOrderMgr::SetDisplayOrder(const std::vector<int>& ids) {
  if (ids.empty()) return;
  std::vector<SortOrder*> ordered;
  for (int nID : ids) {
    const size_t nIndex = GetIndexByID(nID);
    if (nIndex >= GetCount()) continue;
    ordered.push_back(m_vecSortOrders[nIndex]);
    m_vecSortOrders.erase(m_vecSortOrders.begin() + static_cast<std::ptrdiff_t>(nIndex));
  }
  DeleteAll(false);
  m_vecSortOrders.swap(ordered);
}

void SortOrderMgr::GetSortOrderNames(TextArray& names) const {
  for (const SortOrder* pOrder : m_vecSortOrders) names.Add(pOrder->GetName());
}

void SortOrderMgr::RenumberDuplicateIDs() {
  std::set<int> seen;
  for (SortOrder* pOrder : m_vecSortOrders) {
    if (!seen.insert(pOrder->GetID()).second) pOrder->SetID(m_nextID.GetNextID());
  }
}

// Layout (version 4, current):
//   WORD       version
//   NextIDMgr  next ID, in its own form
//   counter    sort order count (64-bit)
//   orders     each sort order in its own form, in display order
// Changelog:
//   1: the next ID as a bare int; 32-bit counter.
//   2: 64-bit counter.
//   3: the next ID in NextIDMgr's form.
//   4: IDs are unique; loading an older file gives each sort order whose ID
//      an earlier one holds the next ID.
// Loading destroys every sort order first (keeping the allocator until the
// file sets it), appends each sort order before loading it, so that a load
// that stops half-way keeps those read, and raises the allocator past every
// ID loaded. Version 0 reads the next ID and counter as version 3 does.
void SortOrderMgr::Serialize(CArchive& ar) {
  if (!ar.IsStoring()) DeleteAll(false);
  WORD nVersion = SORTORDERMGR_VERSION;
  Exchange(ar, nVersion);
  SerializeNextID(ar, nVersion);
  const bool bOldFormat = !ar.IsStoring() && nVersion == OLD_COUNTER_VERSION;
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, GetCount(), bOldFormat);
  if (ar.IsStoring()) {
    for (SortOrder* pOrder : m_vecSortOrders) pOrder->Serialize(ar);
    return;
  }
  SerializeData::CheckLoopCounter(ar, nCount, MIN_SORTORDER_BYTES);
  m_vecSortOrders.reserve(nCount);
  for (size_t i = 0; i < nCount; ++i) {
    auto pOrder = std::make_unique<SortOrder>();
    m_vecSortOrders.push_back(pOrder.get());
    pOrder.release()->Serialize(ar);
    m_nextID.UpdateNextID(m_vecSortOrders.back()->GetID());
  }
  if (nVersion <= LAST_DUPLICATE_ID_VERSION) RenumberDuplicateIDs();
}

// Versions 1 and 2: a bare int x, after which the next ID is above x when
// x is a valid ID. Every other version: NextIDMgr's own form.
void SortOrderMgr::SerializeNextID(CArchive& ar, WORD nVersion) {
  if (ar.IsStoring() || nVersion < FIRST_BARE_NEXT_ID_VERSION || nVersion > LAST_BARE_NEXT_ID_VERSION) {
    m_nextID.Serialize(ar);
    return;
  }
  int nLastID = -1;
  ar >> nLastID;
  m_nextID.UpdateNextID(nLastID);
}
