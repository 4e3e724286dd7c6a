#include "DataMgr/document/DataMgmt.h"

#include <cmath>

#include "DataMgr/filter/DataFilter.h"
#include "DataMgr/schema/Address.h"
#include "DataMgr/schema/ListItem.h"
#include "DataMgr/types/Money.h"
#include "utility/DateTime.h"
#include "utility/FileUtils.h"
#include "utility/LocaleUtils.h"
#include "utility/NumberTextConv.h"

namespace {

// Below this magnitude a decimal counts as zero for bBlankZero.
const double DECIMAL_ZERO = 0.001;

const char* YesNoText(bool bValue) { return bValue ? "Y" : "N"; }

CString NumberText(int nValue, const DataProp& prop, bool bBlankZero) {
  if (nValue == 0 && bBlankZero) return CString();
  return NumberTextConv::NumberToString(nValue, prop.GetThousandsSep(), 0, CString());
}

CString MoneyText(const Money& value, const DataProp& prop, bool bBlankZero) {
  if (value == Money(0) && bBlankZero) return CString();
  return value.GetText(true, prop.GetThousandsSep());
}

CString WithSign(const CString& text, bool bPlus) { return bPlus ? "+" + text : text; }

template <typename T>
T ValueOf(const Data& data, int nID) {
  T value{};
  data.GetData(nID, value);
  return value;
}

// add(value) for each earlier value of the column, oldest first.
template <typename T, typename Add>
void ForEachUndoValue(const Data& data, int nID, Add add) {
  std::vector<T> values;
  data.GetUndoData(nID, values);
  for (const T& value : values) add(value);
}

}  // namespace

CString DataMgmt::FormatDuration(int nSeconds, const DataProp& prop) {
  if (prop.GetTimeShowHours()) {
    return prop.GetTimeShowSeconds() ? DateTime::ConvertToHHMMSS(nSeconds) : DateTime::ConvertToHHMM(nSeconds);
  }
  return prop.GetTimeShowSeconds() ? DateTime::ConvertToMMSS(nSeconds) : DateTime::ConvertToMM(nSeconds);
}

CString DataMgmt::FormatDecimal(double dValue, const DataProp& prop) {
  return NumberTextConv::DoubleToString(dValue, LocaleUtils::GetNumberFractionalDigits(), false, 0, CString(),
                                        prop.GetThousandsSep());
}

bool DataMgmt::FindEntryText(const DataProp& owner, int nEntryID, CString& text) {
  if (IsAddressBookType(owner.GetDataType())) {
    const Address* pAddress = owner.GetAddressBook().GetByID(nEntryID);
    if (pAddress == nullptr) return false;
    text = pAddress->GetData(Address::Name);
    return true;
  }
  const ListItem* pEntry = owner.GetListItemByID(nEntryID);
  if (pEntry == nullptr) return false;
  text = pEntry->GetTextRepresentation();
  return true;
}

CString DataMgmt::GetTextRepresentation(const Data& data, int nDataPropID, bool bBlankZero) const {
  const DataProp* pOwner = m_dataPropMgr.GetByID(GetAliasDataProp(nDataPropID));
  if (nDataPropID < 0 || pOwner == nullptr) return CString();
  return GetTextRepresentation(data, nDataPropID, *pOwner, bBlankZero);
}

CString DataMgmt::GetTextRepresentation(const Data& data, int nDataPropID, const DataProp& prop, bool bBlankZero) {
  if (!data.HaveDataProp(nDataPropID)) return CString();
  const int nID = nDataPropID;
  const bool bSign = prop.GetShowSignAlways();
  CString text;
  switch (prop.GetDataType()) {
    case DataType::YesNo:
      text = YesNoText(ValueOf<bool>(data, nID));
      break;
    case DataType::Number: {
      const int nValue = ValueOf<int>(data, nID);
      text = WithSign(NumberText(nValue, prop, bBlankZero), bSign && nValue >= 1);
      break;
    }
    case DataType::Duration: {
      const int nValue = ValueOf<int>(data, nID);
      if (nValue != 0 || !bBlankZero) text = WithSign(FormatDuration(nValue, prop), bSign && nValue >= 1);
      break;
    }
    case DataType::Decimal: {
      const double dValue = ValueOf<double>(data, nID);
      if (std::fabs(dValue) < DECIMAL_ZERO && bBlankZero) break;
      if (prop.GetFractional()) {
        text = NumberTextConv::DoubleToFraction(dValue);
      } else {
        text = FormatDecimal(dValue, prop);
        if (!prop.GetShowDecimalZeroes()) text = NumberTextConv::RemoveDecimalZeroes(text);
      }
      text = WithSign(text, bSign && dValue > 0.0);
      break;
    }
    case DataType::Date:
      text = DateTime::ConvertDateToText(ValueOf<DateTime>(data, nID), false, false, false,
                                         prop.GetDateTimeNumbers());
      break;
    case DataType::Time:
      text = DateTime::ConvertTimeToText(ValueOf<DateTime>(data, nID), prop.GetTimeShowSeconds());
      break;
    case DataType::PhotoFilePath:
    case DataType::DataFilePath:
      text = ValueOf<CString>(data, nID);
      if (!FileUtils::IsFile(text, true, true)) text.Empty();
      break;
    case DataType::Monetary: {
      const Money value = ValueOf<Money>(data, nID);
      text = WithSign(MoneyText(value, prop, bBlankZero), bSign && value > Money(0));
      break;
    }
    default:
      if (IsTextType(prop.GetDataType())) {
        text = ValueOf<CString>(data, nID);
      } else if (DataType::IsListType(prop.GetDataType())) {
        FindEntryText(prop, ValueOf<int>(data, nID), text);
      }
      break;
  }
  if (text.IsEmpty() || (prop.GetPrefix().IsEmpty() && prop.GetSuffix().IsEmpty())) return text;
  return prop.GetPrefix() + text + prop.GetSuffix();
}

void DataMgmt::GetUndoBufferTexts(const Data& data, const DataProp& prop, TextArray& texts, bool bBlankZero) {
  const int nID = prop.GetID();
  if (IsTextType(prop.GetDataType())) {
    std::vector<CString> values;
    data.GetUndoData(nID, values);
    texts.CopyFromVector(values);
    return;
  }
  switch (prop.GetDataType()) {
    case DataType::YesNo:
      ForEachUndoValue<bool>(data, nID, [&](bool bValue) { texts.Add(YesNoText(bValue)); });
      return;
    case DataType::Number:
      ForEachUndoValue<int>(data, nID, [&](int nValue) { texts.Add(NumberText(nValue, prop, bBlankZero)); });
      return;
    case DataType::Duration:
      ForEachUndoValue<int>(data, nID, [&](int nValue) {
        texts.Add(nValue == 0 && bBlankZero ? CString() : FormatDuration(nValue, prop));
      });
      return;
    case DataType::Decimal:
      ForEachUndoValue<double>(data, nID, [&](double dValue) {
        if (std::fabs(dValue) < DECIMAL_ZERO && bBlankZero) {
          texts.Add(CString());
        } else if (prop.GetFractional()) {
          texts.Add((dValue < 0.0 ? "-" : "") + NumberTextConv::DoubleToFraction(dValue));
        } else {
          texts.Add(FormatDecimal(dValue, prop));
        }
      });
      return;
    case DataType::Date:
      ForEachUndoValue<DateTime>(data, nID, [&](const DateTime& value) {
        texts.Add(DateTime::ConvertDateToText(value, false, false, false, prop.GetDateTimeNumbers()));
      });
      return;
    case DataType::Time:
      ForEachUndoValue<DateTime>(data, nID, [&](const DateTime& value) {
        texts.Add(DateTime::ConvertTimeToText(value, prop.GetTimeShowSeconds()));
      });
      return;
    case DataType::Monetary:
      ForEachUndoValue<Money>(data, nID, [&](const Money& value) { texts.Add(MoneyText(value, prop, bBlankZero)); });
      return;
    default:
      break;
  }
  if (!DataType::IsListType(prop.GetDataType())) return;
  ForEachUndoValue<int>(data, nID, [&](int nEntryID) {
    CString text;
    if (FindEntryText(prop, nEntryID, text)) texts.Add(text);
  });
}

// Four LFs in a row, not two CR-LF pairs, are replaced as one break.
void DataMgmt::ReplaceCRLF(CString& text) const {
  if (text.FindOneOf("\r\n") < 0) return;
  for (const char* pszBreak : {"\r\n\r\n", "\n\n\n\n", "\r\n", "\n\n", "\n", "\r"}) text.Replace(pszBreak, " ");
}

CString DataMgmt::GetTextRepresentation(const DataFilter& filter, const DataProp& prop) {
  CString text;
  if (!DataType::IsListType(prop.GetDataType())) {
    filter.GetValue(text);
    return text;
  }
  std::vector<int> ids;
  filter.GetValue(ids);
  FindEntryText(prop, ids.empty() ? -1 : ids.front(), text);
  return text;
}
