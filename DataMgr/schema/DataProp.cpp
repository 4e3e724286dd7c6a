#include "DataMgr/schema/DataProp.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/schema/ListItemText.h"
#include "DataMgr/schema/ListItemTextDesc.h"
#include "DataMgr/types/ArchiveExchange.h"
#include "DataMgr/types/NextIDMgr.h"
#include "utility/SerializeData.h"
#include "utility/StringUtils.h"

using archive_exchange::Exchange;
using archive_exchange::ExchangeWord;

namespace {

const WORD DATAPROP_VERSION = 15;

// The fewest bytes a stored entry takes: a version-1 ListItem part (version,
// ID) and a subclass part (version, an empty text).
const size_t MIN_LISTITEM_BYTES = 9;
// The fewest bytes of an old-address record: version, ID, ignored word and
// the address's version.
const size_t MIN_OLD_ADDRESS_BYTES = 10;

bool IsAddressBookType(DataType::Type nType) {
  return nType == DataType::AddressBookSuggested || nType == DataType::AddressBookSelect;
}

// The eight types whose cells refer to list entries.
bool IsEntryListType(DataType::Type nType) { return DataType::IsListType(nType) && !IsAddressBookType(nType); }

// The types whose columns could be summed before version 8.
bool WasSummable(DataType::Type nType) {
  switch (nType) {
    case DataType::YesNo:
    case DataType::Number:
    case DataType::Duration:
    case DataType::Decimal:
    case DataType::Monetary:
    case DataType::NumberWithText:
    case DataType::NumberWithRomanOrText:
      return true;
    default:
      return false;
  }
}

// A copy of the same class, ID, usage count and value; null for a class
// this library does not know.
ListItem* CopyOfListItem(const ListItem& item) {
  if (const auto* p = dynamic_cast<const ListItemTextDesc*>(&item)) return new ListItemTextDesc(*p);
  if (const auto* p = dynamic_cast<const ListItemText*>(&item)) return new ListItemText(*p);
  if (const auto* p = dynamic_cast<const ListItemNumber*>(&item)) return new ListItemNumber(*p);
  if (const auto* p = dynamic_cast<const ListItemDouble*>(&item)) return new ListItemDouble(*p);
  return nullptr;
}

CString DescOf(const ListItem& item) {
  const auto* p = dynamic_cast<const ListItemTextDesc*>(&item);
  return p != nullptr ? p->GetDesc() : CString();
}

bool AreEntriesSame(const ListItem& a, const ListItem& b) {
  return a.GetID() == b.GetID() && a.GetTextRepresentation().Compare(b.GetTextRepresentation()) == 0 &&
         DescOf(a).Compare(DescOf(b)) == 0;
}

// Exact comparison: a change of letter case is a change.
bool AreAddressesSame(const Address& a, const Address& b) {
  if (a.GetID() != b.GetID() || a.GetIsBusiness() != b.GetIsBusiness()) return false;
  for (int i = 0; i < Address::GetDataFieldCount(); ++i) {
    const auto nField = static_cast<Address::Field>(i);
    if (a.GetData(nField).Compare(b.GetData(nField)) != 0) return false;
  }
  return true;
}

// a before b when both are of class T and a's value is less.
template <typename T>
bool IsValueLess(const ListItem* a, const ListItem* b) {
  const auto* x = dynamic_cast<const T*>(a);
  const auto* y = dynamic_cast<const T*>(b);
  return x != nullptr && y != nullptr && *x < *y;
}

}  // namespace

DataProp::DataProp(const DataProp& other) : DataProp() {
  CopyDisplayFlags(other);
  CopyUserRights(other);
  m_nID = other.m_nID;
  m_nNextListItemID = other.m_nNextListItemID;
  CopyLayoutAndTexts(other);
  m_nDataType = other.m_nDataType;
  m_strWebTag = other.m_strWebTag;
  CopyListItems(other);
}

DataProp& DataProp::operator=(const DataProp& other) {
  if (this == &other) return *this;
  CopyDisplayFlags(other);
  CopyUserRights(other);
  CopyLayoutAndTexts(other);
  CopyListItems(other);
  SetDataType(other.m_nDataType);
  GenerateWebTag();
  return *this;
}

DataProp::~DataProp() { ClearListItems(); }

void DataProp::CopyDisplayFlags(const DataProp& other) {
  m_bCanBeSummed = other.m_bCanBeSummed;
  m_bCanBeAveraged = other.m_bCanBeAveraged;
  m_bCanBeNegative = other.m_bCanBeNegative;
  m_bShowSignAlways = other.m_bShowSignAlways;
  m_bThousandsSep = other.m_bThousandsSep;
  m_bFractional = other.m_bFractional;
  m_bShowDecimalZeroes = other.m_bShowDecimalZeroes;
  m_bZeroIsEmpty = other.m_bZeroIsEmpty;
  m_bDateTimeNumbers = other.m_bDateTimeNumbers;
  m_bTimeShowHours = other.m_bTimeShowHours;
  m_bTimeShowSeconds = other.m_bTimeShowSeconds;
  m_bDisplayed = other.m_bDisplayed;
  m_bHiddenFromUI = other.m_bHiddenFromUI;
  m_bSortValuesByListOrder = other.m_bSortValuesByListOrder;
  m_bKeepListItemsSorted = other.m_bKeepListItemsSorted;
  m_bUseWithDataSubItem = other.m_bUseWithDataSubItem;
}

void DataProp::CopyUserRights(const DataProp& other) {
  m_bUserCanDelete = other.m_bUserCanDelete;
  m_bUserCanDeleteWarning = other.m_bUserCanDeleteWarning;
  m_bUserChangeDataType = other.m_bUserChangeDataType;
  m_bUserChangeValue = other.m_bUserChangeValue;
  m_bUserChangeDefValue = other.m_bUserChangeDefValue;
}

void DataProp::CopyLayoutAndTexts(const DataProp& other) {
  m_nCustomColWidth = other.m_nCustomColWidth;
  m_nColWidth = other.m_nColWidth;
  m_nColAlign = other.m_nColAlign;
  m_strName = other.m_strName;
  m_strDesc = other.m_strDesc;
  m_strDefaultValue = other.m_strDefaultValue;
  m_strPrefix = other.m_strPrefix;
  m_strSuffix = other.m_strSuffix;
}

bool DataProp::DiffersForUser(const DataProp& other) const {
  if (!other.m_bDisplayed && m_bDisplayed == other.m_bDisplayed) return false;
  return m_bCanBeSummed != other.m_bCanBeSummed || m_bCanBeAveraged != other.m_bCanBeAveraged ||
         m_bDisplayed != other.m_bDisplayed || m_bThousandsSep != other.m_bThousandsSep ||
         m_bFractional != other.m_bFractional || m_bShowDecimalZeroes != other.m_bShowDecimalZeroes ||
         m_bZeroIsEmpty != other.m_bZeroIsEmpty || m_bDateTimeNumbers != other.m_bDateTimeNumbers ||
         m_bTimeShowHours != other.m_bTimeShowHours || m_bTimeShowSeconds != other.m_bTimeShowSeconds ||
         m_nCustomColWidth != other.m_nCustomColWidth || m_nColWidth != other.m_nColWidth ||
         m_nColAlign != other.m_nColAlign || m_nDataType != other.m_nDataType ||
         m_strName.Compare(other.m_strName) != 0 || AreListItemsDifferent(other) || AreAddressesDifferent(other);
}

bool DataProp::CopyFrom(DataProp& other) {
  if (this == &other) return false;
  const bool bChanged = DiffersForUser(other);
  CopyDisplayFlags(other);
  m_nNextListItemID = other.m_nNextListItemID;
  CopyLayoutAndTexts(other);
  m_nDataType = other.m_nDataType;
  m_addressBook = other.m_addressBook;
  GenerateWebTag();
  ClearListItems();
  if (DataType::IsListType(m_nDataType)) {
    ReplaceListItems(other.m_vecListItems);
    other.m_mapListItemsByID.clear();
  }
  return bChanged;
}

bool DataProp::operator==(const DataProp& other) const {
  return m_nDataType == other.m_nDataType && m_strName.Compare(other.m_strName) == 0;
}

void DataProp::SetKeepListItemsSorted(bool b) {
  m_bKeepListItemsSorted = b;
  SortIfKeptSorted();
}

void DataProp::SetDataType(DataType::Type nType) {
  m_nDataType = nType;
  if (!DataType::IsListType(nType)) ClearListItems();
}

void DataProp::SetName(const CString& name) {
  m_strName = name;
  GenerateWebTag();
}

void DataProp::GenerateWebTag() {
  m_strWebTag = "{" + m_strName + "}";
  m_strWebTag.MakeUpper();
  ValidateWebTag();
}

void DataProp::AdjustWebTag(const CString& text) {
  m_strWebTag = m_strWebTag.Left(m_strWebTag.GetLength() - 1) + text + "}";
  m_strWebTag.MakeUpper();
  ValidateWebTag();
}

void DataProp::ValidateWebTag() {
  m_strWebTag.Replace(" ", "_");
  m_strWebTag.Replace("/", "_");
  m_strWebTag.Replace("\\", "_");
  m_strWebTag.Replace("-", "_");
  m_strWebTag.Replace("_#", "#");
  m_strWebTag.Replace("_&_", "&");
  m_strWebTag.Remove('.');
  m_strWebTag.Remove('?');
}

CString DataProp::GetNameWithDesc() const {
  CString desc = m_strDesc;
  if (m_nID < DEFAULT_USER_ID) {
    const CString sentence = StringUtils::ParseSentence(m_strDesc, 0);
    if (!sentence.IsEmpty()) desc = sentence;
  }
  return desc.IsEmpty() ? m_strName : m_strName + " - " + desc;
}

ListItem* DataProp::CreateListItemPrivate() const {
  switch (m_nDataType) {
    case DataType::NumberListSuggested:
    case DataType::NumberListSelect:
      return new ListItemNumber;
    case DataType::ValueListSuggested:
    case DataType::ValueListSelect:
      return new ListItemText;
    case DataType::DescValueListSuggested:
    case DataType::DescValueListSelect:
      return new ListItemTextDesc;
    case DataType::DecimalListSuggested:
    case DataType::DecimalListSelect:
      return new ListItemDouble;
    default:
      return nullptr;
  }
}

void DataProp::RaiseNextListItemID(int nID) {
  if (nID >= m_nNextListItemID) m_nNextListItemID = NextIDMgr::IDAfter(nID);
}

// Entering the entry replaces whatever the index held under its ID, so that
// an entry created with the ID of another one is the one found by that ID.
void DataProp::AdjustListItemID(ListItem* pItem, int nID, bool bEnterInMap) {
  if (nID == -1) {
    pItem->SetID(m_nNextListItemID);
    m_nNextListItemID = NextIDMgr::IDAfter(m_nNextListItemID);
  } else {
    pItem->SetID(nID);
  }
  if (bEnterInMap) m_mapListItemsByID[pItem->GetID()] = pItem;
  if (nID >= 0) RaiseNextListItemID(nID);
}

void DataProp::AddListItem(ListItem* pItem) {
  if (pItem == nullptr) return;
  m_vecListItems.push_back(pItem);
  m_mapListItemsByID.emplace(pItem->GetID(), pItem);
}

ListItem* DataProp::CreateListItem(bool bAdd, int nID) {
  ListItem* pItem = CreateListItemPrivate();
  if (pItem == nullptr) return nullptr;
  AdjustListItemID(pItem, nID, bAdd);
  if (bAdd) {
    AddListItem(pItem);
    SortIfKeptSorted();
  }
  return pItem;
}

bool DataProp::DeleteListItem(ListItem* pItem) {
  if (pItem == nullptr || m_vecListItems.empty()) return false;
  const auto found = std::find(m_vecListItems.begin(), m_vecListItems.end(), pItem);
  if (found == m_vecListItems.end()) return false;
  const auto indexed = m_mapListItemsByID.find(pItem->GetID());
  if (indexed != m_mapListItemsByID.end() && indexed->second == pItem) m_mapListItemsByID.erase(indexed);
  m_vecListItems.erase(found);
  delete pItem;
  return true;
}

ListItem* DataProp::GetListItemByID(int nID) const {
  if (nID < 0) return nullptr;
  const auto found = m_mapListItemsByID.find(nID);
  return found == m_mapListItemsByID.end() ? nullptr : found->second;
}

ListItem* DataProp::GetListItemAt(size_t nIndex) const {
  return nIndex < m_vecListItems.size() ? m_vecListItems[nIndex] : nullptr;
}

ListItem* DataProp::GetListItemByValue(const CString& text) const {
  for (ListItem* pItem : m_vecListItems) {
    if (pItem->GetTextRepresentation().Compare(text) == 0) return pItem;
  }
  return nullptr;
}

// A new entry is placed by the sort before its value is set and again after,
// so that with KeepListItemsSorted it ends where its value belongs.
ListItem* DataProp::GetListItemByValue(const CString& text, bool bCreate) {
  ListItem* pItem = std::as_const(*this).GetListItemByValue(text);
  if (pItem != nullptr || !bCreate) return pItem;
  pItem = CreateListItem(true, -1);
  if (pItem == nullptr) return nullptr;
  pItem->SetTextRepresentation(text);
  SortIfKeptSorted();
  return pItem;
}

ULONGLONG DataProp::GetDisplayOrderForListItemID(int nID) const {
  size_t nIndex = 0;
  while (nIndex < m_vecListItems.size() && (nID < 0 || m_vecListItems[nIndex]->GetID() != nID)) ++nIndex;
  return nIndex;
}

bool DataProp::SwapListItemArrayPosition(size_t a, size_t b) {
  if (m_vecListItems.empty() || a == b || a >= m_vecListItems.size() || b >= m_vecListItems.size()) return false;
  std::swap(m_vecListItems.at(a), m_vecListItems.at(b));
  return true;
}

bool DataProp::SetToDisplayOrder(const std::vector<int>& order) {
  if (m_vecListItems.empty()) return false;
  const size_t nCommon = std::min(m_vecListItems.size(), order.size());
  size_t nAgreeing = 0;
  while (nAgreeing < nCommon &&
         (m_vecListItems[nAgreeing] == nullptr || m_vecListItems[nAgreeing]->GetID() == order[nAgreeing])) {
    ++nAgreeing;
  }
  if (nAgreeing == nCommon) return false;

  std::vector<ListItem*> scratch;
  scratch.swap(m_vecListItems);
  for (int nID : order) {
    const auto found = std::find_if(scratch.begin(), scratch.end(),
                                    [nID](const ListItem* p) { return p != nullptr && p->GetID() == nID; });
    if (found == scratch.end()) continue;
    m_vecListItems.push_back(*found);
    scratch.erase(found);
  }
  m_vecListItems.insert(m_vecListItems.end(), scratch.begin(), scratch.end());
  return true;
}

bool DataProp::CompareListItems(const ListItem* a, const ListItem* b, DataType::Type nType) {
  if (a == nullptr) return b != nullptr;
  if (b == nullptr) return false;
  switch (nType) {
    case DataType::NumberListSuggested:
    case DataType::NumberListSelect:
      return IsValueLess<ListItemNumber>(a, b);
    case DataType::ValueListSuggested:
    case DataType::ValueListSelect:
    case DataType::DescValueListSuggested:
    case DataType::DescValueListSelect:
      return IsValueLess<ListItemText>(a, b);
    case DataType::DecimalListSuggested:
    case DataType::DecimalListSelect:
      return IsValueLess<ListItemDouble>(a, b);
    default:
      return false;
  }
}

// Stable: entries equal by value keep their order, and entries of a class
// that does not fit the type (which compare with nothing) cannot throw the
// sort off its range.
void DataProp::SortListItemsByValue() {
  if (m_vecListItems.size() < 2) return;
  const DataType::Type nType = m_nDataType;
  std::stable_sort(m_vecListItems.begin(), m_vecListItems.end(),
                   [nType](const ListItem* a, const ListItem* b) { return CompareListItems(a, b, nType); });
}

void DataProp::SortIfKeptSorted() {
  if (m_bKeepListItemsSorted) SortListItemsByValue();
}

void DataProp::ReplaceListItems(std::vector<ListItem*>& items) {
  if (items.empty()) {
    ClearListItems();
    return;
  }
  m_vecListItems.clear();
  m_mapListItemsByID.clear();
  for (ListItem* pItem : items) AddListItem(pItem);
  items.clear();
  SortIfKeptSorted();
}

void DataProp::ClearListItems() {
  for (ListItem* pItem : m_vecListItems) delete pItem;
  m_vecListItems.clear();
  m_mapListItemsByID.clear();
}

void DataProp::CopyListItems(const DataProp& other) {
  ClearListItems();
  if (IsAddressBookType(other.m_nDataType)) {
    m_addressBook = other.m_addressBook;
  } else if (IsEntryListType(other.m_nDataType)) {
    m_vecListItems.reserve(other.m_vecListItems.size());
    for (const ListItem* pItem : other.m_vecListItems) AddListItem(CopyOfListItem(*pItem));
    RefreshNextListItemID();
  }
}

// The next ID never goes below 0, whatever IDs a damaged archive held.
void DataProp::RefreshNextListItemID() {
  m_nNextListItemID = 0;
  for (const ListItem* pItem : m_vecListItems) RaiseNextListItemID(pItem->GetID());
  if (m_vecListItems.size() < 2 || m_nNextListItemID > 1) return;
  m_mapListItemsByID.clear();
  m_nNextListItemID = 0;
  for (ListItem* pItem : m_vecListItems) AdjustListItemID(pItem, -1, true);
}

void DataProp::FindListItemIDsContaining(const CString& text, std::vector<int>& ids) const {
  if (text.IsEmpty()) return;
  for (const ListItem* pItem : m_vecListItems) {
    if (StringUtils::FindOccurrenceIndex(pItem->GetTextRepresentation(), text, true, 0) != -1) {
      ids.push_back(pItem->GetID());
    }
  }
}

// Position by position, so that a new order also counts.
bool DataProp::AreListItemsDifferent(const DataProp& other) const {
  if (m_vecListItems.size() != other.m_vecListItems.size()) return true;
  for (size_t i = 0; i < m_vecListItems.size(); ++i) {
    if (!AreEntriesSame(*m_vecListItems[i], *other.m_vecListItems[i])) return true;
  }
  return false;
}

bool DataProp::AreAddressesDifferent(const DataProp& other) const {
  if (m_addressBook.GetCount() != other.m_addressBook.GetCount()) return true;
  for (size_t i = 0; i < m_addressBook.GetCount(); ++i) {
    if (!AreAddressesSame(*m_addressBook.GetAt(i), *other.m_addressBook.GetAt(i))) return true;
  }
  return false;
}

void DataProp::DeserializeListItem(CArchive& ar) {
  std::unique_ptr<ListItem> pItem(CreateListItemPrivate());
  if (!pItem) return;
  pItem->Serialize(ar);
  ListItem* pLoaded = pItem.release();
  AddListItem(pLoaded);
  RaiseNextListItemID(pLoaded->GetID());
}

void DataProp::ClearUsageCounts() {
  if (IsEntryListType(m_nDataType)) {
    for (ListItem* pItem : m_vecListItems) pItem->ClearUsageCount();
  } else if (IsAddressBookType(m_nDataType)) {
    m_addressBook.ClearUsageCounts();
  }
}

void DataProp::AddUsageCountFor(int nID) {
  if (IsEntryListType(m_nDataType)) {
    if (ListItem* pItem = GetListItemByID(nID)) pItem->RegisterUsage();
  } else if (IsAddressBookType(m_nDataType)) {
    if (Address* pAddress = m_addressBook.GetByID(nID)) pAddress->RegisterUsage();
  }
}

void DataProp::AdjustAddressUsageCounts(int nOldID, int nNewID) {
  if (Address* pOld = m_addressBook.GetByID(nOldID)) pOld->UnregisterUsage();
  if (Address* pNew = m_addressBook.GetByID(nNewID)) pNew->RegisterUsage();
}

Address* DataProp::CreateAddress(int nID) {
  auto* pAddress = new Address;
  if (nID >= 0) pAddress->SetID(nID);
  m_addressBook.Add(pAddress, nID == -1);
  return pAddress;
}

Address* DataProp::GetAddressByName(const CString& name, bool bCreate) { return m_addressBook.GetByName(name, bCreate); }

void DataProp::DeleteAddress(int nID) { m_addressBook.Delete(nID); }

void DataProp::ClearAddressBook() { m_addressBook.DeleteAll(true); }

void DataProp::SetAddressBookFlag(bool bIsBusiness) { m_addressBook.SetIsBusiness(bIsBusiness); }

void DataProp::FindAddressIDsContaining(const CString& text, std::vector<int>& ids) const {
  if (text.IsEmpty()) return;
  for (size_t i = 0; i < m_addressBook.GetCount(); ++i) {
    const Address* pAddress = m_addressBook.GetAt(i);
    if (StringUtils::FindOccurrenceIndex(pAddress->GetData(Address::Name), text, true, 0) != -1) {
      ids.push_back(pAddress->GetID());
    }
  }
}

void DataProp::SyncAddresses(const AddressBook& other, std::vector<int>& changedIDs, std::vector<int>& deletedIDs,
                             bool& bAdded) {
  changedIDs.clear();
  deletedIDs.clear();
  bAdded = false;
  for (size_t i = m_addressBook.GetCount(); i-- > 0;) {
    Address* pOwn = m_addressBook.GetAt(i);
    if (pOwn == nullptr) continue;
    const int nID = pOwn->GetID();
    const Address* pOther = other.GetByID(nID);
    if (pOther == nullptr) {
      deletedIDs.push_back(nID);
      m_mapListItemsByID.erase(nID);
      m_addressBook.Delete(nID);
    } else if (!(*pOwn == *pOther)) {
      changedIDs.push_back(nID);
      *pOwn = *pOther;
    }
  }
  for (size_t i = 0; i < other.GetCount(); ++i) {
    const Address* pOther = other.GetAt(i);
    if (pOther->GetID() >= 0 && m_addressBook.GetByID(pOther->GetID()) != nullptr) continue;
    auto* pCopy = new Address(*pOther);
    pCopy->SetIsBusiness(m_addressBook.GetIsBusiness());
    m_addressBook.Add(pCopy, false);
    bAdded = true;
  }
}

// Layout (version 15, current):
//   WORD     version
//   bool     CanBeSummed, CanBeAveraged, CanBeNegative, Displayed,
//            ThousandsSep, Fractional, ShowDecimalZeroes, ShowSignAlways,
//            ZeroIsEmpty, DateTimeNumbers, UserCanDelete,
//            UserCanDeleteWarning, UserChangeDataType, UserChangeValue,
//            TimeShowHours, TimeShowSeconds, UserChangeDefValue,
//            SortValuesByListOrder, HiddenFromUI, KeepListItemsSorted,
//            UseWithDataSubItem
//   int      ID
//   int      NextListItemID
//   UINT     CustomColWidth
//   WORD     ColWidth
//   WORD     ColAlign
//   DataType data type
//   text     Desc, Name, DefaultValue, Prefix, Suffix
//   entry-list types:   loop counter, then each entry's record
//   address-book types: the AddressBook record
//   other types:        nothing
// Changelog:
//   1: first version: CanBeSummed, Displayed, ThousandsSep, flag A,
//      DateTimeNumbers, UserCanDelete, UserChangeDataType, UserChangeValue;
//      every column ends in its entries, old addresses or a 32-bit word.
//   2: CanBeAveraged.
//   3: TimeShowSeconds.
//   4: UserChangeDefValue.
//   5: CanBeNegative, ZeroIsEmpty, UserCanDeleteWarning; flag A dropped
//      (it marked a Decimal column that held money).
//   6: address-book columns store an AddressBook instead of old-address
//      records.
//   7: SortValuesByListOrder.
//   8: flag B (the column read numbers with Roman numerals or text);
//      CanBeSummed of a non-number column is no longer reset on loading.
//   9: Fractional, ShowDecimalZeroes, ShowSignAlways, Prefix, Suffix.
//   10: TimeShowHours.
//   11: HiddenFromUI.
//   12: flag B dropped.
//   13: KeepListItemsSorted.
//   14: the entry counter in the new format; columns without entries store
//       nothing after the texts.
//   15: UseWithDataSubItem.
void DataProp::Serialize(CArchive& ar) {
  WORD nVersion = DATAPROP_VERSION;
  Exchange(ar, nVersion);
  bool bObsoleteA = false;
  bool bObsoleteB = false;
  SerializeFlags(ar, nVersion, bObsoleteA, bObsoleteB);
  Exchange(ar, m_nID);
  Exchange(ar, m_nNextListItemID);
  Exchange(ar, m_nCustomColWidth);
  ExchangeWord(ar, m_nColWidth);
  ExchangeWord(ar, m_nColAlign);
  DataType type;
  type.Set(m_nDataType);
  type.Serialize(ar);
  m_nDataType = type.Get();
  if (ar.IsLoading()) CorrectLoadedType(nVersion, bObsoleteA, bObsoleteB);
  Exchange(ar, m_strDesc);
  Exchange(ar, m_strName);
  Exchange(ar, m_strDefaultValue);
  if (nVersion >= 9) {
    Exchange(ar, m_strPrefix);
    Exchange(ar, m_strSuffix);
  }
  if (ar.IsStoring()) {
    StoreEntries(ar);
    return;
  }
  LoadEntries(ar, nVersion);
  if (nVersion <= 7 && m_bCanBeSummed && !WasSummable(m_nDataType)) m_bCanBeSummed = false;
  GenerateWebTag();
}

// The obsolete flags are only read; storing never reaches them.
void DataProp::SerializeFlags(CArchive& ar, WORD nVersion, bool& bObsoleteA, bool& bObsoleteB) {
  SerializeData::Serialize(ar, m_bCanBeSummed);
  if (nVersion >= 2) SerializeData::Serialize(ar, m_bCanBeAveraged);
  if (nVersion >= 5) SerializeData::Serialize(ar, m_bCanBeNegative);
  SerializeData::Serialize(ar, m_bDisplayed);
  SerializeData::Serialize(ar, m_bThousandsSep);
  if (nVersion >= 9) {
    SerializeData::Serialize(ar, m_bFractional);
    SerializeData::Serialize(ar, m_bShowDecimalZeroes);
    SerializeData::Serialize(ar, m_bShowSignAlways);
  }
  if (nVersion >= 5) SerializeData::Serialize(ar, m_bZeroIsEmpty);
  if (nVersion <= 4) SerializeData::Serialize(ar, bObsoleteA);
  SerializeData::Serialize(ar, m_bDateTimeNumbers);
  SerializeData::Serialize(ar, m_bUserCanDelete);
  if (nVersion >= 5) SerializeData::Serialize(ar, m_bUserCanDeleteWarning);
  SerializeData::Serialize(ar, m_bUserChangeDataType);
  SerializeData::Serialize(ar, m_bUserChangeValue);
  if (nVersion >= 10) SerializeData::Serialize(ar, m_bTimeShowHours);
  if (nVersion >= 3) SerializeData::Serialize(ar, m_bTimeShowSeconds);
  if (nVersion >= 4) SerializeData::Serialize(ar, m_bUserChangeDefValue);
  if (nVersion >= 7) SerializeData::Serialize(ar, m_bSortValuesByListOrder);
  if (nVersion >= 8 && nVersion <= 11) SerializeData::Serialize(ar, bObsoleteB);
  if (nVersion >= 11) SerializeData::Serialize(ar, m_bHiddenFromUI);
  if (nVersion >= 13) SerializeData::Serialize(ar, m_bKeepListItemsSorted);
  if (nVersion >= 15) SerializeData::Serialize(ar, m_bUseWithDataSubItem);
}

void DataProp::CorrectLoadedType(WORD nVersion, bool bObsoleteA, bool bObsoleteB) {
  if (nVersion <= 4 && bObsoleteA && m_nDataType == DataType::Decimal) m_nDataType = DataType::Monetary;
  if (bObsoleteB && !DataType::IsListType(m_nDataType)) m_nDataType = DataType::NumberWithRomanOrText;
}

void DataProp::StoreEntries(CArchive& ar) {
  if (IsEntryListType(m_nDataType)) {
    SerializeData::SerializeLoopCounter(ar, m_vecListItems.size(), false);
    for (ListItem* pItem : m_vecListItems) pItem->Serialize(ar);
  } else if (IsAddressBookType(m_nDataType)) {
    m_addressBook.Serialize(ar);
  }
}

// Loading replaces the entries and the address book, also for a type that
// stores neither.
void DataProp::LoadEntries(CArchive& ar, WORD nVersion) {
  ClearListItems();
  if (IsAddressBookType(m_nDataType) && nVersion >= 6) {
    m_addressBook.Serialize(ar);
    return;
  }
  m_addressBook.DeleteAll(true);
  if (IsEntryListType(m_nDataType)) {
    const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, nVersion < 14);
    SerializeData::CheckLoopCounter(ar, nCount, MIN_LISTITEM_BYTES);
    for (size_t i = 0; i < nCount; ++i) DeserializeListItem(ar);
  } else if (IsAddressBookType(m_nDataType)) {
    const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, true);
    SerializeData::CheckLoopCounter(ar, nCount, MIN_OLD_ADDRESS_BYTES);
    for (size_t i = 0; i < nCount; ++i) ReadListItemAddress(ar);
  } else if (nVersion < 14) {
    int nUnused = 0;
    ar >> nUnused;
  }
}

// Old-address record:
//   WORD     record version r
//   int      ID
//   int      usage count   (r >= 2)
//   WORD     unused
//   Address  the address in its own form
void DataProp::ReadListItemAddress(CArchive& ar) {
  WORD nRecordVersion = 0;
  ar >> nRecordVersion;
  int nID = -1;
  ar >> nID;
  int nCount = 0;
  if (nRecordVersion >= 2) ar >> nCount;
  WORD nUnused = 0;
  ar >> nUnused;
  auto pAddress = std::make_unique<Address>();
  pAddress->Serialize(ar);
  pAddress->SetID(nID);
  if (pAddress->GetUsageCount() == 0 && nCount >= 1) pAddress->SetUsageCount(nCount);
  m_addressBook.Add(pAddress.release(), false);
}
