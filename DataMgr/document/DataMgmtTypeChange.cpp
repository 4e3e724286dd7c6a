#include "DataMgr/document/DataMgmt.h"

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

// A list entry of that exact text, or an address of that name ignoring
// case, unless prop has one already.
void AddEntry(DataProp& prop, const CString& text) {
  if (!IsAddressBookType(prop.GetDataType())) {
    if (prop.GetListItemByValue(text) != nullptr) return;
    if (ListItem* pEntry = prop.CreateListItem(true, -1)) pEntry->SetTextRepresentation(text);
    return;
  }
  AddressBook& book = prop.GetAddressBook();
  if (book.GetByName(text, false) != nullptr) return;
  auto* pAddress = new Address;
  book.Add(pAddress, true);
  pAddress->SetData(Address::Name, text);
}

// newProp's entries made anew from oldProp's, as far as they carry over.
void RebuildEntries(const DataProp& oldProp, DataProp& newProp) {
  newProp.GetAddressBook().DeleteAll(true);
  std::vector<ListItem*> none;
  newProp.ReplaceListItems(none);
  newProp.RefreshNextListItemID();
  if (!CarriesEntries(oldProp.GetDataType(), newProp.GetDataType())) return;
  for (const CString& text : EntryTexts(oldProp)) AddEntry(newProp, text);
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
      const CString text = GetTextRepresentation(item, nOldID, oldProp, true);
      value = codec.Parse(text, newProp, !text.IsEmpty());
    } else if (bCanConvert) {
      value = codec.Read(item, nOldID);
    } else {
      value = codec.Parse(newProp.GetDefaultValue(), newProp, !newProp.GetDefaultValue().IsEmpty());
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
