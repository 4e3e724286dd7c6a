#include "DataMgr/document/DataMgmt.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

#include "DataMgr/schema/Address.h"
#include "DataMgr/schema/ListItem.h"
#include "DataMgr/schema/ValueCodec.h"
#include "DataMgr/types/CellValue.h"

namespace {

bool IsAddressBookType(DataType::Type nType) {
  return nType == DataType::AddressBookSuggested || nType == DataType::AddressBookSelect;
}

// Whether the entries of an entry column of type nOld carry over when it
// becomes nNew: number and value lists into any list, value lists into an
// address book, address books into value lists only.
bool CarriesEntries(DataType::Type nOld, DataType::Type nNew) {
  const bool bFromAddresses = IsAddressBookType(nOld);
  if (IsAddressBookType(nNew)) return !bFromAddresses && !DataType::IsNumberType(nOld);
  return !bFromAddresses || !DataType::IsNumberType(nNew);
}

// The texts of prop's entries: its list entries in display order, or the
// names of its addresses in book order.
std::vector<CString> EntryTexts(const DataProp& prop) {
  std::vector<CString> texts;
  if (IsAddressBookType(prop.GetDataType())) {
    const AddressBook& book = prop.GetAddressBook();
    for (size_t i = 0; i < book.GetCount(); ++i) texts.push_back(book.GetAt(i)->GetData(Address::Name));
  } else {
    for (size_t i = 0; i < prop.GetListItemsCount(); ++i) {
      texts.push_back(prop.GetListItemAt(i)->GetTextRepresentation());
    }
  }
  return texts;
}

// The list entries of a column by their exact text, for the lookups of one
// type change: built once, then kept in step with the entries it creates, so
// that each item's text is not looked for by a scan of the list. It finds
// what a lookup by value finds (the first entry of a text in display order)
// and creates an entry the way that lookup does. Nothing else may change
// the column's entries while it is in use.
class ListEntryIndex {
 public:
  explicit ListEntryIndex(DataProp& prop) : m_prop(prop) {
    for (size_t i = 0; i < prop.GetListItemsCount(); ++i) {
      const ListItem* pEntry = prop.GetListItemAt(i);
      m_mapIDs.emplace(pEntry->GetTextRepresentation().GetStdString(), pEntry->GetID());
    }
  }

  // The ID of the entry of that text; -1 when there is none and not
  // bCreate. A created entry is placed again by its value when the column
  // keeps its entries sorted, which can put it before an older entry of the
  // text it took on ("01" becoming "1"): that text then finds the new one.
  int Find(const CString& text, bool bCreate) {
    const auto found = m_mapIDs.find(text.GetStdString());
    if (found != m_mapIDs.end()) return found->second;
    if (!bCreate) return -1;
    const int nID = Create(text);
    if (nID < 0 || !m_prop.GetKeepListItemsSorted()) return nID;
    m_prop.SetKeepListItemsSorted(true);
    const CString stored = m_prop.GetListItemByID(nID)->GetTextRepresentation();
    m_mapIDs[stored.GetStdString()] = std::as_const(m_prop).GetListItemByValue(stored)->GetID();
    return nID;
  }
  // A new entry of that text, at the end or in its place by value.
  int Create(const CString& text) {
    ListItem* pEntry = m_prop.CreateListItem(true, -1);
    if (pEntry == nullptr) return -1;
    pEntry->SetTextRepresentation(text);
    m_mapIDs.emplace(pEntry->GetTextRepresentation().GetStdString(), pEntry->GetID());
    return pEntry->GetID();
  }

 private:
  DataProp& m_prop;
  std::unordered_map<std::string, int> m_mapIDs;
};

// An address of that name ignoring case, unless the book has one.
void AddAddress(AddressBook& book, const CString& name) {
  if (book.GetByName(name, false) != nullptr) return;
  auto* pAddress = new Address;
  book.Add(pAddress, true);
  pAddress->SetData(Address::Name, name);
}

// newProp's entries made anew from oldProp's, as far as they carry over: a
// list entry for each text that none has exactly, an address for each name
// that none has ignoring case.
void RebuildEntries(const DataProp& oldProp, DataProp& newProp) {
  newProp.GetAddressBook().DeleteAll(true);
  std::vector<ListItem*> none;
  newProp.ReplaceListItems(none);
  newProp.RefreshNextListItemID();
  if (!CarriesEntries(oldProp.GetDataType(), newProp.GetDataType())) return;
  const std::vector<CString> texts = EntryTexts(oldProp);
  if (IsAddressBookType(newProp.GetDataType())) {
    for (const CString& text : texts) AddAddress(newProp.GetAddressBook(), text);
    return;
  }
  ListEntryIndex index(newProp);
  for (const CString& text : texts) {
    if (index.Find(text, false) < 0) index.Create(text);
  }
}

}  // namespace

// Each item's new value comes from one of three readings: the new column's
// default text when the types do not convert; the stored value as it is
// when they are similar (same kind of value); otherwise the old value's
// display text, parsed by the new type. An entry is created from a text
// only when the text is not empty. A new type that holds no value stops the
// work at the first item: items before it stay converted, and that item's
// cell is gone when it was to be read by its text.
bool DataMgmt::DoDataTypeChange(DataProp& oldProp, DataProp& newProp, std::map<int, int>& entryIDMap) {
  const DataType::Type nOldType = oldProp.GetDataType();
  const DataType::Type nNewType = newProp.GetDataType();
  if (nOldType == nNewType) return false;
  const bool bCanConvert = DataType::CanConvertBetween(nOldType, nNewType);
  const bool bSimilar = DataType::IsSimilarType(nOldType, nNewType);
  const bool bOldIsEntry = DataType::IsListType(nOldType);
  const bool bNewIsEntry = DataType::IsListType(nNewType);
  if (bOldIsEntry && bSimilar) return false;
  if (bOldIsEntry && bNewIsEntry) RebuildEntries(oldProp, newProp);

  const ValueCodec& codec = ValueCodec::For(nNewType);
  std::unique_ptr<ListEntryIndex> pListIndex;
  if (bNewIsEntry && !IsAddressBookType(nNewType)) pListIndex = std::make_unique<ListEntryIndex>(newProp);
  const auto parse = [&](const CString& text) {
    if (pListIndex != nullptr) return CellValue(pListIndex->Find(text, !text.IsEmpty()));
    return codec.Parse(text, newProp, !text.IsEmpty());
  };
  const bool bByText = bCanConvert && !bSimilar;
  const int nOldID = oldProp.GetID();
  const int nNewID = newProp.GetID();
  bool bConverted = false;
  for (size_t i = 0; i < m_dataItemMgr.GetCount(); ++i) {
    DataItem& item = *m_dataItemMgr.GetAt(i);
    if (!item.HaveDataProp(nNewID)) continue;
    int nOldEntryID = -1;
    if (bOldIsEntry) {
      ReduceListItemUsageCount(oldProp, item);
      item.GetData(nOldID, nOldEntryID);
    }
    if (codec.GetKind() == CellValue::NONE) {
      if (bByText) item.DeleteData(nOldID);
      return false;
    }
    CellValue value;
    if (bByText) {
      value = parse(GetTextRepresentation(item, nOldID, oldProp, true));
    } else if (bCanConvert) {
      value = codec.Read(item, nOldID);
    } else {
      value = parse(newProp.GetDefaultValue());
    }
    item.DeleteData(nOldID);
    bConverted = true;
    value.Register(item, nNewID);
    int nNewValue = -1;
    if (nOldEntryID >= 0 && value.GetInt(nNewValue) && nNewValue >= 0) entryIDMap.emplace(nOldEntryID, nNewValue);
    if (bNewIsEntry) IncreaseListItemUsageCount(newProp, item);
  }
  return bConverted;
}
