#ifndef TESTS_IO_RANDOMDOCUMENT_H_
#define TESTS_IO_RANDOMDOCUMENT_H_

// A document of random content for the conversion tests: a column of every
// type number from 0 to 33 (the unassigned ones too) with random flags,
// texts, list entries and address books, application slots with a gap,
// and items and sub-items holding random values of every kind, also under
// columns that do not exist, in kinds their column does not keep and in
// two kinds at once. Texts are random bytes (not always UTF-8, NUL
// included); doubles random bit patterns (NaNs of any payload, infinities,
// negative zero); times valid, half missing or out of range.

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/schema/ListItemTextDesc.h"

namespace io_test {

class RandomDocument {
 public:
  explicit RandomDocument(unsigned nSeed) : m_random(nSeed) {}

  void Fill(DataMgmt& doc) {
    doc.SetMRUExportPath(Text());
    DataPropMgr& registry = doc.GetDataPropMgr();
    registry.SetID(Int());
    for (int nSlot = 0; nSlot < 3; ++nSlot) {
      DataProp* pProp = Column(static_cast<DataType::Type>(Below(34)));
      pProp->SetID(nSlot);
      if (nSlot == 1) {
        registry.AddApp(nullptr, false);
        delete pProp;
      } else {
        registry.AddApp(pProp, false);
      }
    }
    for (int nType = 0; nType <= 33; ++nType) registry.AddUser(Column(static_cast<DataType::Type>(nType)), true);
    std::vector<int> order;
    registry.GetDisplayOrder(order);
    std::shuffle(order.begin(), order.end(), m_random);
    order.push_back(77777);
    registry.SetDisplayOrder(order);
    for (int i = 0; i < 12; ++i) Item(doc);
  }

 private:
  int Below(int n) { return static_cast<int>(m_random() % static_cast<unsigned>(n)); }
  bool Bool() { return Below(2) == 1; }
  int Int() { return Below(4) == 0 ? static_cast<int>(m_random()) : Below(2000) - 1000; }

  CString Text() {
    std::string text;
    const int nLength = Below(10);
    for (int i = 0; i < nLength; ++i) {
      text += Below(3) == 0 ? static_cast<char>(Below(256)) : static_cast<char>('a' + Below(26));
    }
    if (Below(4) == 0) text += "\xC3\xA9\n\"";  // a UTF-8 letter, a line break and a quote
    return CString(text);
  }

  double Double() {
    if (Below(3) == 0) return Below(20000) / 8.0 - 1000;
    std::uint64_t nBits = (static_cast<std::uint64_t>(m_random()) << 32) | m_random();
    if (Below(3) == 0) nBits |= 0x7FF0000000000000ull;  // NaN or infinity
    double dValue = 0.0;
    std::memcpy(&dValue, &nBits, sizeof dValue);
    return dValue;
  }

  Money Amount() {
    Money amount;
    amount.Set(static_cast<__int64>(Below(100000)));
    amount /= 100;
    if (Below(5) == 0) amount.Set(static_cast<__int64>((static_cast<std::uint64_t>(m_random()) << 20) | m_random()));
    if (Bool()) amount.MakeNegative();
    // Any magnitude an archive can hold, the largest among them.
    if (Below(10) == 0) amount = Money::FromRaw(Bool(), Below(2) == 0 ? ~0ull : (std::uint64_t{m_random()} << 32) | m_random());
    return amount;
  }

  DateTime Time() {
    switch (Below(5)) {
      case 0:
        return DateTime();
      case 1:
        return DateTime::FromJulian(DateTime(1 + Below(9999), 1 + Below(12), 1 + Below(28)).GetJulianDay(),
                                    DateTime::NO_TIME);
      case 2:
        return DateTime::FromJulian(DateTime::NO_DATE, Below(DateTime::SECONDS_PER_DAY));
      case 3:
        return DateTime::FromJulian(Int(), Int());
      default:
        return DateTime::FromJulian(DateTime(1900 + Below(200), 1 + Below(12), 1 + Below(28)).GetJulianDay(),
                                    Below(DateTime::SECONDS_PER_DAY));
    }
  }

  DataProp* Column(DataType::Type nType) {
    auto* pProp = new DataProp;
    pProp->SetDataType(nType);
    pProp->SetName(Text());
    pProp->SetDesc(Text());
    pProp->SetDefaultValue(Text());
    pProp->SetPrefix(Below(4) == 0 ? Text() : CString());
    pProp->SetSuffix(Below(4) == 0 ? Text() : CString());
    pProp->SetCustomColWidth(static_cast<unsigned>(m_random()));
    pProp->SetColWidth(static_cast<DataProp::ColWidth>(Below(65536)));
    pProp->SetColAlignment(static_cast<DataProp::ColAlign>(Below(65536)));
    for (auto setter :
         {&DataProp::SetCanBeSummed, &DataProp::SetCanBeAveraged, &DataProp::SetCanBeNegative,
          &DataProp::SetShowSignAlways, &DataProp::SetThousandsSep, &DataProp::SetFractional,
          &DataProp::SetShowDecimalZeroes, &DataProp::SetZeroIsEmpty, &DataProp::SetDateTimeNumbers,
          &DataProp::SetTimeShowHours, &DataProp::SetTimeShowSeconds, &DataProp::SetDisplayed,
          &DataProp::SetHiddenFromUI, &DataProp::SetUserChangeDataType, &DataProp::SetUserChangeValue,
          &DataProp::SetUserChangeDefValue, &DataProp::SetSortValuesByListOrder, &DataProp::SetUseWithDataSubItem}) {
      (pProp->*setter)(Bool());
    }
    pProp->SetUserCanDelete(Bool(), Bool());
    for (int i = Below(5); i > 0; --i) Entry(*pProp);
    pProp->SetKeepListItemsSorted(Bool());
    if (nType == DataType::AddressBookSuggested || nType == DataType::AddressBookSelect) AddressBookOf(*pProp);
    if (Bool()) pProp->SetNextListItemID(pProp->GetNextListItemID() + Below(5));
    return pProp;
  }

  void Entry(DataProp& prop) {
    ListItem* pEntry = prop.CreateListItem(true, Below(4) == 0 ? Below(100) : -1);
    if (pEntry == nullptr) return;
    pEntry->SetUsageCount(Int());
    if (auto* pNumber = dynamic_cast<ListItemNumber*>(pEntry)) pNumber->SetNumber(Int());
    if (auto* pDecimal = dynamic_cast<ListItemDouble*>(pEntry)) pDecimal->SetNumber(Double());
    if (dynamic_cast<ListItemText*>(pEntry) != nullptr) pEntry->SetTextRepresentation(Text());
    if (auto* pDesc = dynamic_cast<ListItemTextDesc*>(pEntry)) pDesc->SetDesc(Text());
  }

  void AddressBookOf(DataProp& prop) {
    prop.SetAddressBookFlag(Bool());
    for (int i = Below(4); i > 0; --i) {
      Address* pAddress = prop.CreateAddress(Below(3) == 0 ? Int() : -1);
      pAddress->SetIsBusiness(Bool());
      pAddress->SetUsageCount(Int());
      for (int f = 0; f < Address::GetDataFieldCount(); ++f) {
        pAddress->SetData(static_cast<Address::Field>(f), Below(3) == 0 ? Text() : CString());
      }
    }
  }

  // A value of a random kind for nID.
  void Value(Data& record, int nID) {
    switch (Below(6)) {
      case 0:
        record.RegisterDataProp(nID, Bool());
        break;
      case 1:
        record.RegisterDataProp(nID, Int());
        break;
      case 2:
        record.RegisterDataProp(nID, Double());
        break;
      case 3:
        record.RegisterDataProp(nID, Time());
        break;
      case 4:
        record.RegisterDataProp(nID, Amount());
        break;
      default:
        record.RegisterDataProp(nID, Text(), false);
        break;
    }
  }

  void Values(const DataMgmt& doc, Data& record) {
    std::vector<int> ids;
    doc.GetDataPropMgr().GetDisplayOrder(ids);
    for (int nID : ids) {
      if (Below(3) > 0) Value(record, nID);
      if (Below(10) == 0) Value(record, nID);
    }
    if (Below(4) == 0) Value(record, Int());
  }

  void Item(DataMgmt& doc) {
    DataItem& item = *doc.GetDataItemMgr().Create(nullptr, true, true);
    Values(doc, item);
    for (int s = Below(4); s > 0; --s) {
      DataSubItem& subItem = *item.GetSubItemsMgr().Create(nullptr, true, true);
      subItem.SetParentID(Below(5) == 0 ? Int() : item.GetID());
      Values(doc, subItem);
    }
    item.GetSubItemsMgr().SetSort(Bool());
    item.SetLastModified(Time());
  }

  std::mt19937 m_random;
};

}  // namespace io_test

#endif  // TESTS_IO_RANDOMDOCUMENT_H_
