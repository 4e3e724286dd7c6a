#include "DataMgr/filter/DataFilterMgr.h"

#include <algorithm>

#include "DataMgr/filter/FilterTypes.h"
#include "DataMgr/records/DataSubItemMgr.h"
#include "DataMgr/types/Money.h"
#include "framework/CString.h"
#include "utility/DateTime.h"
#include "utility/NumberTextConv.h"
#include "utility/SerializeData.h"

namespace {

// Changelog:
//   1: the filter count as a 32-bit counter.
//   2: the filter count as a 64-bit counter.
const WORD DATAFILTERMGR_VERSION = 2;

// The fewest bytes a filter record takes: its version word.
const size_t MIN_FILTER_BYTES = 2;

template <typename T>
T ValueOf(const Data& data, int nID) {
  T value{};
  data.GetData(nID, value);
  return value;
}

// A record's text, read into a buffer kept per thread: reading a text into
// memory it already holds spares an allocation for each record. Valid until
// the next call on the same thread.
const CString& TextOf(const Data& data, int nID) {
  thread_local CString buffer;
  data.GetData(nID, buffer);
  return buffer;
}

}  // namespace

DataFilterMgr::DataFilterMgr(const DataFilterMgr& other) : m_nextID(other.m_nextID) { CopyFiltersFrom(other); }

DataFilterMgr& DataFilterMgr::operator=(const DataFilterMgr& other) {
  if (this == &other) return *this;
  DeleteAll(false);
  m_nextID = other.m_nextID;
  CopyFiltersFrom(other);
  return *this;
}

DataFilterMgr::~DataFilterMgr() { DeleteAll(false); }

void DataFilterMgr::CopyFiltersFrom(const DataFilterMgr& other) {
  m_vecFilters.reserve(other.m_vecFilters.size());
  for (const DataFilter* pFilter : other.m_vecFilters) m_vecFilters.push_back(new DataFilter(*pFilter));
}

DataFilter* DataFilterMgr::CreateFilter() const { return new DataFilter; }

void DataFilterMgr::Add(DataFilter* pFilter, bool bAssignID) {
  if (pFilter == nullptr) return;
  m_vecFilters.push_back(pFilter);
  if (bAssignID) pFilter->SetID(m_nextID.GetNextID());
}

void DataFilterMgr::Update(size_t nIndex, const DataFilter* pSource) {
  if (nIndex < m_vecFilters.size() && pSource != nullptr) *m_vecFilters[nIndex] = *pSource;
}

void DataFilterMgr::Delete(DataFilter* pFilter) {
  const auto found = std::find(m_vecFilters.begin(), m_vecFilters.end(), pFilter);
  if (pFilter == nullptr || found == m_vecFilters.end()) return;
  m_vecFilters.erase(found);
  delete pFilter;
}

void DataFilterMgr::DeleteAll(bool bResetIDs) {
  std::vector<DataFilter*> filters;
  filters.swap(m_vecFilters);
  for (DataFilter* pFilter : filters) delete pFilter;
  if (bResetIDs) m_nextID.ResetNextID();
}

bool DataFilterMgr::RemoveDataProp(int nDataPropID) {
  bool bRemoved = false;
  std::vector<DataFilter*> kept;
  for (DataFilter* pFilter : m_vecFilters) {
    if (pFilter != nullptr && pFilter->GetDataPropID() != nDataPropID) {
      kept.push_back(pFilter);
    } else if (pFilter != nullptr) {
      delete pFilter;
      bRemoved = true;
    }
  }
  m_vecFilters.swap(kept);
  return bRemoved;
}

void DataFilterMgr::GetFiltersInfo(int& nRequired, int& nOptional) const {
  nRequired = 0;
  nOptional = 0;
  for (const DataFilter* pFilter : m_vecFilters) {
    if (!IsValid(*pFilter)) continue;
    if (pFilter->GetRequired()) {
      ++nRequired;
    } else {
      ++nOptional;
    }
  }
}

// Required filters are joined by AND, optional ones by OR, the two groups
// by AND; the first required filter that fails ends the walk.
template <typename Passes>
bool DataFilterMgr::Combine(Passes passes) const {
  int nRequired = 0;
  int nOptional = 0;
  GetFiltersInfo(nRequired, nOptional);
  int nPassedOptional = 0;
  for (const DataFilter* pFilter : m_vecFilters) {
    if (!IsValid(*pFilter)) continue;
    const bool bPassed = passes(*pFilter);
    if (pFilter->GetRequired() && !bPassed) return false;
    if (!pFilter->GetRequired() && bPassed) ++nPassedOptional;
  }
  return nOptional == 0 || nPassedOptional > 0;
}

bool DataFilterMgr::PassesFilters(const DataItem& item) const {
  return Combine([&](const DataFilter& filter) { return DoesDataItemPassFilter(item, filter); });
}

bool DataFilterMgr::PassesFilters(const DataSubItem& subItem, bool bPassIfNoValue) const {
  for (const DataFilter* pFilter : m_vecFilters) {
    if (IsValid(*pFilter) && !HasFilterValue(pFilter->GetDataType()) &&
        subItem.HaveDataProp(pFilter->GetDataPropID())) {
      return false;
    }
  }
  return Combine([&](const DataFilter& filter) {
    return subItem.HaveDataProp(filter.GetDataPropID()) ? DoesDataPassFilter(subItem, filter) : bPassIfNoValue;
  });
}

bool DataFilterMgr::DoesDataItemPassFilter(const DataItem& item, const DataFilter& filter) const {
  const int nID = filter.GetDataPropID();
  if (item.HaveDataProp(nID)) return DoesDataPassFilter(item, filter);
  const DataSubItemMgr& subItems = item.GetSubItemsMgr();
  for (size_t i = 0; i < subItems.GetCount(); ++i) {
    const DataSubItem& subItem = *subItems.GetAt(i);
    if (subItem.HaveDataProp(nID) && DoesDataPassFilter(subItem, filter)) return true;
  }
  return false;
}

bool DataFilterMgr::HasFilterValue(DataType::Type nType) {
  return (nType >= DataType::YesNo && nType <= DataType::Time) || filter_types::IsTextType(nType) ||
         DataType::IsListType(nType) || nType == DataType::Monetary || nType == DataType::NumberWithText ||
         nType == DataType::NumberWithRomanOrText;
}

// The value kind by the filter's data type; a missing date reads as a
// fresh DateTime and a missing amount as a fresh (positive, zero) Money.
bool DataFilterMgr::DoesDataPassFilter(const Data& data, const DataFilter& filter) const {
  const int nID = filter.GetDataPropID();
  const DataType::Type nType = filter.GetDataType();
  switch (nType) {
    case DataType::YesNo:
      return filter.PassesFilter(ValueOf<bool>(data, nID));
    case DataType::Number:
    case DataType::Duration:
      return filter.PassesFilter(ValueOf<int>(data, nID));
    case DataType::Decimal:
      return filter.PassesFilter(ValueOf<double>(data, nID));
    case DataType::Date:
    case DataType::Time:
      return filter.PassesFilter(ValueOf<DateTime>(data, nID));
    case DataType::Monetary:
      return filter.PassesFilter(ValueOf<Money>(data, nID));
    case DataType::NumberWithText:
    case DataType::NumberWithRomanOrText: {
      bool bAlone = false;
      CString remainder;
      return filter.PassesFilter(NumberTextConv::ParseNumber(TextOf(data, nID), bAlone, remainder,
                                                             nType == DataType::NumberWithRomanOrText));
    }
    default:
      break;
  }
  if (filter_types::IsTextType(nType)) return filter.PassesFilter(TextOf(data, nID));
  if (DataType::IsListType(nType)) return filter.PassesListItemFilter(ValueOf<int>(data, nID));
  return false;
}

// Layout (version 2, current):
//   WORD          version
//   loop counter  filter count (32-bit in version 1)
//   the filters, each in its own form, in list order
// Loading destroys the filters and starts the IDs at 0, makes each filter
// by CreateFilter (a derived set's own class) and appends it before it
// loads, so that a load that stops half-way keeps what it read; the next ID
// rises above every ID loaded that is not negative. IDs are kept as stored.
void DataFilterMgr::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << DATAFILTERMGR_VERSION;
    SerializeData::SerializeLoopCounter(ar, m_vecFilters.size(), false);
    for (DataFilter* pFilter : m_vecFilters) pFilter->Serialize(ar);
    return;
  }
  WORD nVersion = 0;
  ar >> nVersion;
  DeleteAll(true);
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, nVersion == 1);
  SerializeData::CheckLoopCounter(ar, nCount, MIN_FILTER_BYTES);
  m_vecFilters.reserve(nCount);
  for (size_t i = 0; i < nCount; ++i) {
    DataFilter* pFilter = CreateFilter();
    if (pFilter == nullptr) continue;
    m_vecFilters.push_back(pFilter);
    pFilter->Serialize(ar);
    m_nextID.UpdateNextID(pFilter->GetID());
  }
}
