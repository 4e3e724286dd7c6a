#include "DataMgr/sort/SortData.h"

#include <algorithm>

#include "DataMgr/records/RecordOrder.h"
#include "DataMgr/schema/Address.h"
#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/sort/SortKeyTable.h"
#include "DataMgr/sort/SortRules.h"
#include "DataMgr/types/Money.h"
#include "utility/DateTime.h"

using sort_rules::Decide;
using sort_rules::LookupColumn;
using sort_rules::Rule;
using sort_rules::Sign;
using sort_rules::ValueOf;
using sort_rules::Verdict;

namespace {

Verdict CompareListEntries(Rule nRule, const SortData::ResolvedKey& key, int nEntryA, int nEntryB) {
  const DataProp& lookup = LookupColumn(key);
  const bool bAscending = key.bAscending;
  if (key.pDataProp->GetSortValuesByListOrder()) {
    return Decide(Sign(lookup.GetDisplayOrderForListItemID(nEntryA), lookup.GetDisplayOrderForListItemID(nEntryB)),
                  bAscending);
  }
  const ListItem* pEntryA = lookup.GetListItemByID(nEntryA);
  const ListItem* pEntryB = lookup.GetListItemByID(nEntryB);
  if (nRule == Rule::NUMBER_LIST) {
    const auto* pNumberA = dynamic_cast<const ListItemNumber*>(pEntryA);
    const auto* pNumberB = dynamic_cast<const ListItemNumber*>(pEntryB);
    if (pNumberA == nullptr || pNumberB == nullptr) return sort_rules::DecideMissing(pNumberB == nullptr, bAscending);
    return Decide(Sign(pNumberA->GetNumber(), pNumberB->GetNumber()), bAscending);
  }
  if (nRule == Rule::DECIMAL_LIST) {
    const auto* pDoubleA = dynamic_cast<const ListItemDouble*>(pEntryA);
    const auto* pDoubleB = dynamic_cast<const ListItemDouble*>(pEntryB);
    if (pDoubleA == nullptr || pDoubleB == nullptr) return sort_rules::DecideMissing(pDoubleB == nullptr, bAscending);
    return sort_rules::DecideExactDecimals(pDoubleA->GetNumber(), pDoubleB->GetNumber(), bAscending);
  }
  if (pEntryA == nullptr || pEntryB == nullptr) return sort_rules::DecideMissing(pEntryB == nullptr, bAscending);
  return Decide(sort_rules::CompareTexts(pEntryA->GetTextRepresentation(), pEntryB->GetTextRepresentation(),
                                         key.bCaseSensitive),
                bAscending);
}

Verdict CompareAddresses(const SortData::ResolvedKey& key, int nAddressA, int nAddressB) {
  const AddressBook& book = LookupColumn(key).GetAddressBook();
  const Address* pAddressA = book.GetByID(nAddressA);
  const Address* pAddressB = book.GetByID(nAddressB);
  if (pAddressA == nullptr || pAddressB == nullptr) {
    return sort_rules::DecideMissing(pAddressB == nullptr, key.bAscending);
  }
  return Decide(sort_rules::CompareTexts(pAddressA->GetData(Address::Name), pAddressB->GetData(Address::Name),
                                         key.bCaseSensitive),
                key.bAscending);
}

Verdict CompareNumberTexts(const SortData::ResolvedKey& key, const CString& a, const CString& b) {
  const DataType::Type nType = key.pDataProp->GetDataType();
  const sort_rules::NumberText parsedA = sort_rules::ParseNumberText(a, nType);
  const sort_rules::NumberText parsedB = sort_rules::ParseNumberText(b, nType);
  const bool bCaseSensitive = key.bCaseSensitive;
  return sort_rules::DecideNumberTexts(
      parsedA.nNumber, parsedA.bAlone, parsedB.nNumber, parsedB.bAlone, key.bAscending,
      [&] { return sort_rules::CompareTexts(parsedA.strLeading, parsedB.strLeading, bCaseSensitive); },
      [&] { return sort_rules::CompareTexts(a, b, bCaseSensitive); });
}

// One key of records that both have a value of its column.
Verdict CompareByKey(const Data& a, const Data& b, const SortData::ResolvedKey& key, bool bDirectoriesFirst) {
  const int nID = key.pDataProp->GetID();
  const bool bAscending = key.bAscending;
  const Rule nRule = sort_rules::RuleOf(key.pDataProp->GetDataType());
  switch (nRule) {
    case Rule::YES_NO: {
      const bool bA = ValueOf(a, nID, false);
      return bA == ValueOf(b, nID, false) ? Verdict::TIE : Decide(bA ? -1 : 1, bAscending);
    }
    case Rule::INTEGER:
      return Decide(Sign(ValueOf(a, nID, 0), ValueOf(b, nID, 0)), bAscending);
    case Rule::DECIMAL:
      return sort_rules::DecideDecimals(ValueOf(a, nID, 0.0), ValueOf(b, nID, 0.0), bAscending);
    case Rule::DATE:
      return Decide(-ValueOf(a, nID, DateTime()).CompareDate(ValueOf(b, nID, DateTime())), bAscending);
    case Rule::TIME:
      return Decide(-ValueOf(a, nID, DateTime()).CompareTime(ValueOf(b, nID, DateTime())), bAscending);
    case Rule::TEXT:
      return Decide(sort_rules::CompareTexts(ValueOf(a, nID, CString()), ValueOf(b, nID, CString()),
                                             key.bCaseSensitive),
                    bAscending);
    case Rule::PATH: {
      const CString strA = ValueOf(a, nID, CString());
      const CString strB = ValueOf(b, nID, CString());
      return Decide(sort_rules::ComparePaths(strA, sort_rules::SplitFolder(strA), strB, sort_rules::SplitFolder(strB),
                                             key.bCaseSensitive, bDirectoriesFirst),
                    bAscending);
    }
    case Rule::NUMBER_LIST:
    case Rule::DECIMAL_LIST:
    case Rule::TEXT_LIST:
    case Rule::ADDRESS: {
      const int nEntryA = ValueOf(a, nID, -1);
      const int nEntryB = ValueOf(b, nID, -1);
      if (nEntryA == nEntryB) return Verdict::TIE;
      return nRule == Rule::ADDRESS ? CompareAddresses(key, nEntryA, nEntryB)
                                    : CompareListEntries(nRule, key, nEntryA, nEntryB);
    }
    case Rule::MONEY:
      return Decide(Sign(ValueOf(a, nID, Money()), ValueOf(b, nID, Money())), bAscending);
    case Rule::NUMBER_TEXT:
      return CompareNumberTexts(key, ValueOf(a, nID, CString()), ValueOf(b, nID, CString()));
    case Rule::NONE:
      break;
  }
  return Verdict::TIE;
}

bool HasColumn(const DataPropMgr& registry) {
  for (size_t i = 0; i < registry.GetAppCount(); ++i) {
    if (registry.GetAppAt(i) != nullptr) return true;
  }
  return registry.GetUserCount() > 0;
}

bool HasColumn(const std::vector<DataProp*>& columns) {
  return std::any_of(columns.begin(), columns.end(), [](const DataProp* p) { return p != nullptr; });
}

const DataProp* FindColumn(const DataPropMgr& registry, int nID) { return registry.GetByID(nID); }

const DataProp* FindColumn(const std::vector<DataProp*>& columns, int nID) {
  const auto found =
      std::find_if(columns.begin(), columns.end(), [nID](const DataProp* p) { return p != nullptr && p->GetID() == nID; });
  return found == columns.end() ? nullptr : *found;
}

// Whether a record's int value of nDataPropID is nValue.
auto Matching(int nDataPropID, int nValue) {
  return [nDataPropID, nValue](const Data* pRecord) {
    return pRecord != nullptr && ValueOf(*pRecord, nDataPropID, -1) == nValue;
  };
}

}  // namespace

SortData::SortData() = default;

SortData::~SortData() = default;

int SortData::GetAliasDataProp(int nDataPropID) const {
  const auto found = m_mapAliases.find(nDataPropID);
  return found == m_mapAliases.end() ? nDataPropID : found->second;
}

template <typename Lookup>
void SortData::Resolve(const SortOrder& order, Lookup lookup) {
  m_vecKeys.clear();
  for (size_t i = 0; i < order.GetDataPropIDCount(); ++i) {
    ResolvedKey key;
    const int nID = order.GetDataPropIDAt(i, key.bAscending, key.bCaseSensitive);
    if (nID < 0) continue;
    key.pDataProp = lookup(nID);
    if (key.pDataProp == nullptr) continue;
    const int nAliasID = GetAliasDataProp(nID);
    if (nAliasID != nID && nAliasID >= 0) key.pAliasDataProp = lookup(nAliasID);
    m_vecKeys.push_back(key);
  }
}

void SortData::Init(const SortOrder& order, const DataPropMgr& registry) {
  Resolve(order, [&registry](int nID) { return FindColumn(registry, nID); });
}

void SortData::Init(const SortOrder& order, const std::vector<DataProp*>& columns) {
  Resolve(order, [&columns](int nID) { return FindColumn(columns, nID); });
}

bool SortData::CompareData(const Data* a, const Data* b) const {
  if (b == nullptr) return false;
  if (a == nullptr) return true;
  for (const ResolvedKey& key : m_vecKeys) {
    const int nID = key.pDataProp->GetID();
    if (!a->HaveDataProp(nID) || !b->HaveDataProp(nID)) continue;
    const Verdict nVerdict = CompareByKey(*a, *b, key, m_bDirectoriesFirst);
    if (nVerdict != Verdict::TIE) return nVerdict == Verdict::FIRST;
  }
  return false;
}

int SortData::CompareDirs(const CString& a, const CString& b, bool bCaseSensitive) const {
  return sort_rules::CompareFolders(sort_rules::SplitFolder(a), sort_rules::SplitFolder(b), bCaseSensitive);
}

void SortData::DoTheSort(std::vector<Data*>& records) {
  if (records.size() < SMALL_SORT || !SortKeyTable::CanSort(records.size())) {
    std::stable_sort(records.begin(), records.end(), [this](const Data* a, const Data* b) { return CompareData(a, b); });
    return;
  }
  SortKeyTable(m_vecKeys, m_bDirectoriesFirst).Sort(records);
}

template <typename Columns>
void SortData::SortFront(std::vector<Data*>& records, size_t nCount, const SortOrder& order, const Columns& columns) {
  Init(order, columns);
  if (nCount == records.size()) {
    DoTheSort(records);
    return;
  }
  std::vector<Data*> front(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(nCount));
  DoTheSort(front);
  std::copy(front.begin(), front.end(), records.begin());
}

template <typename Columns>
void SortData::SortRecords(std::vector<Data*>& records, size_t nMinCount, const SortOrder& order,
                           const Columns& columns) {
  if (records.size() < nMinCount || !order.HaveDataProps() || !HasColumn(columns)) return;
  SortFront(records, records.size(), order, columns);
}

template <typename Columns>
void SortData::SortSubItems(DataSubItemMgr& subItems, const SortOrder& order, const Columns& columns) {
  std::vector<Data*> records = RecordOrder::Get(subItems);
  SortRecords(records, 1, order, columns);
  RecordOrder::Set(subItems, records);
}

void SortData::Sort(std::vector<Data*>& records, const SortOrder& order, const DataPropMgr& registry) {
  SortRecords(records, 2, order, registry);
}

void SortData::Sort(DataSubItemMgr& subItems, const SortOrder& order, const DataPropMgr& registry) {
  SortSubItems(subItems, order, registry);
}

void SortData::Sort(std::vector<Data*>& records, const SortOrder& order, const std::vector<DataProp*>& columns) {
  SortRecords(records, 2, order, columns);
}

void SortData::Sort(DataSubItemMgr& subItems, const SortOrder& order, const std::vector<DataProp*>& columns) {
  SortSubItems(subItems, order, columns);
}

size_t SortData::PartialSort(std::vector<Data*>& records, int nDataPropID, int nValue, const SortOrder& order,
                             const DataPropMgr& registry) {
  if (records.empty() || !order.HaveDataProps() || !HasColumn(registry)) return 0;
  const auto middle = std::stable_partition(records.begin(), records.end(), Matching(nDataPropID, nValue));
  const auto nCount = static_cast<size_t>(middle - records.begin());
  if (nCount > 0 && nCount < records.size()) SortFront(records, nCount, order, registry);
  return nCount;
}

size_t SortData::PartialSort(std::vector<Data*>& records, int nDataPropID, int nValue, const SortOrder& order,
                             const std::vector<DataProp*>& columns) {
  if (records.size() < 2 || !order.HaveDataProps() || !HasColumn(columns)) return 0;
  const auto matches = Matching(nDataPropID, nValue);
  size_t nFront = 0;
  size_t nBack = records.size();
  while (true) {
    while (nFront < nBack && matches(records[nFront])) ++nFront;
    while (nFront < nBack && !matches(records[nBack - 1])) --nBack;
    if (nFront >= nBack) break;
    std::swap(records[nFront++], records[--nBack]);
  }
  if (nFront == 0 || nFront == records.size()) return 0;
  SortFront(records, nFront, order, columns);
  return nFront;
}
