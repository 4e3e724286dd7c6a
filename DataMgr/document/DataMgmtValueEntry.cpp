#include "DataMgr/document/DataMgmt.h"

#include "DataMgr/types/Money.h"
#include "utility/DateTime.h"
#include "utility/DirUtils.h"
#include "utility/FileUtils.h"
#include "utility/InternetUtils.h"
#include "utility/NumberTextConv.h"
#include "utility/StringUtils.h"

namespace {

// The typed text without the column's prefix and suffix. Both are tested
// and cut on the text as typed, so a text carrying both keeps its prefix.
CString StripPrefixAndSuffix(const DataProp& prop, const CString& text, bool& bRedisplay) {
  const CString& prefix = prop.GetPrefix();
  const CString& suffix = prop.GetSuffix();
  if (prefix.IsEmpty() && suffix.IsEmpty()) return text;
  CString copy = text;
  if (!prefix.IsEmpty() && StringUtils::MatchFirstChars(text, prefix, true)) copy = text.Mid(prefix.GetLength());
  if (!suffix.IsEmpty() && StringUtils::MatchLastChars(text, suffix, true)) {
    copy = text.Left(text.GetLength() - suffix.GetLength());
  }
  bRedisplay = true;
  return copy;
}

CString Trimmed(const CString& text) {
  CString trimmed = text;
  StringUtils::Trim(trimmed);
  return trimmed;
}

bool SetTrimmedText(Data& data, int nID, const CString& text, bool& bRedisplay, bool bRecord) {
  const CString trimmed = Trimmed(text);
  if (!bRedisplay) bRedisplay = trimmed.GetLength() != text.GetLength();
  return data.SetData(nID, trimmed, bRecord);
}

bool SetDateTime(Data& data, int nID, const CString& text, bool bDate, bool& bRedisplay, bool bRecord) {
  DateTime value;
  if (bDate) {
    value.SetDate(text);
  } else {
    value.SetTime(text);
  }
  bRedisplay = true;
  return data.SetData(nID, value, bRecord);
}

double ReadDecimal(const CString& text, bool bFractional) {
  return bFractional ? NumberTextConv::FractionToDouble(text) : NumberTextConv::GetDoubleFromString(text, false);
}

bool IsSuggestedType(DataType::Type nType) {
  return nType == DataType::NumberListSuggested || nType == DataType::ValueListSuggested ||
         nType == DataType::DescValueListSuggested || nType == DataType::DecimalListSuggested ||
         nType == DataType::AddressBookSuggested;
}

}  // namespace

DataProp& DataMgmt::GetListOwner(DataProp& prop) const {
  DataProp* pAlias = m_dataPropMgr.GetByID(GetAliasDataProp(prop.GetID()));
  return pAlias != nullptr ? *pAlias : prop;
}

bool DataMgmt::SetData(Data& data, int nDataPropID, const CString& text, bool& bRedisplay, bool bRecord) {
  DataProp* pProp = m_dataPropMgr.GetByID(nDataPropID);
  return pProp != nullptr && SetData(data, *pProp, text, bRedisplay, bRecord);
}

// A file-path value that the user points from a missing file to an existing
// file of the same name in another folder moves every path of that folder.
bool DataMgmt::SetData(Data& data, DataProp& prop, const CString& text, bool& bRedisplay, bool bRecord) {
  if (!IsFilePathType(prop.GetDataType())) {
    return SetDataNoFilePathAdjust(data, prop, GetListOwner(prop), text, bRedisplay, bRecord);
  }
  CString strOld;
  data.GetData(prop.GetID(), strOld);
  if (!SetDataNoFilePathAdjust(data, prop, prop, text, bRedisplay, bRecord)) return false;
  CString strNew;
  data.GetData(prop.GetID(), strNew);
  const bool bMoved = !strOld.IsEmpty() && !strNew.IsEmpty() && strOld.CompareNoCase(strNew) != 0 &&
                      !FileUtils::DoesFileExist(strOld) && FileUtils::DoesFileExist(strNew) &&
                      FileUtils::ParseFileNameFromPath(strOld, true)
                              .CompareNoCase(FileUtils::ParseFileNameFromPath(strNew, true)) == 0;
  if (bMoved && AdjustFilePaths(DirUtils::ParsePathFromFile(strOld), DirUtils::ParsePathFromFile(strNew))) {
    bRedisplay = true;
  }
  return true;
}

bool DataMgmt::SetDataNoFilePathAdjust(Data& data, DataProp& prop, DataProp& listOwner, const CString& text,
                                       bool& bRedisplay, bool bRecord) {
  bRedisplay = false;
  const CString copy = StripPrefixAndSuffix(prop, text, bRedisplay);
  const int nID = prop.GetID();
  switch (prop.GetDataType()) {
    case DataType::YesNo:
      return data.SetData(nID, StringUtils::IsYes(copy), bRecord);
    case DataType::Number:
      if (!bRedisplay) bRedisplay = prop.GetThousandsSep();
      return data.SetData(nID, NumberTextConv::GetNumberFromString(copy), bRecord);
    case DataType::Duration:
      bRedisplay = true;
      return data.SetData(nID, DateTime::ConvertFromDuration(copy, prop.GetTimeShowHours()), bRecord);
    case DataType::Decimal:
      bRedisplay = true;
      return data.SetData(nID, ReadDecimal(copy, listOwner.GetFractional()), bRecord);
    case DataType::Date:
    case DataType::Time:
      return SetDateTime(data, nID, copy, prop.GetDataType() == DataType::Date, bRedisplay, bRecord);
    case DataType::Text:
    case DataType::PhotoFilePath:
    case DataType::DirectoryPath:
    case DataType::Password:
    case DataType::LargeText:
    case DataType::DataFilePath:
    case DataType::NumberWithText:
    case DataType::NumberWithRomanOrText:
      return SetTrimmedText(data, nID, copy, bRedisplay, bRecord);
    case DataType::EmailAddress: {
      const CString trimmed = Trimmed(copy);
      if (!trimmed.IsEmpty() && !InternetUtils::IsValidEmailAddress(trimmed)) return false;
      return data.SetData(nID, trimmed, bRecord);
    }
    case DataType::WebSiteAddress: {
      // The check only puts a valid address into its normal form; an
      // address it rejects is stored as typed.
      CString trimmed = Trimmed(copy);
      if (!trimmed.IsEmpty()) InternetUtils::IsValidWebSiteAddress(trimmed);
      return data.SetData(nID, trimmed, bRecord);
    }
    case DataType::Monetary: {
      Money value;
      value.Set(copy);
      bRedisplay = true;
      return data.SetData(nID, value, bRecord);
    }
    default:
      break;
  }
  const DataType::Type nType = prop.GetDataType();
  if (!DataType::IsListType(nType)) return false;
  // The entry typed replaces the one the cell referred to. A suggested-as-
  // typed list owner takes any text as a new entry, the empty text too.
  DataProp& owner = listOwner.GetID() < 0 ? prop : listOwner;
  int nOldID = -1;
  data.GetData(nID, nOldID);
  ChangeEntryUsage(owner, nType, nOldID, false);
  const int nNewID = FindEntryID(owner, nType, copy, IsSuggestedType(listOwner.GetDataType()));
  data.SetData(nID, nNewID, bRecord);
  ChangeEntryUsage(owner, nType, nNewID, true);
  return true;
}

bool DataMgmt::IsValueAcceptable(CString& text, DataProp& prop) const {
  if (!prop.GetUserChangeValue()) return false;
  StringUtils::Trim(text);
  const bool bNegativeOK = prop.GetCanBeNegative();
  switch (prop.GetDataType()) {
    case DataType::YesNo:
      return text.IsEmpty() || text.FindOneOf("yYtTnNfF10") >= 0;
    case DataType::Number:
    case DataType::NumberListSuggested: {
      const int n = NumberTextConv::GetNumberFromString(text);
      if (n < 0 && !bNegativeOK) return false;
      text = n == 0 && prop.GetZeroIsEmpty() ? CString() : NumberTextConv::NumberToString(n, false, 0, CString());
      return true;
    }
    case DataType::Duration: {
      int nSeconds = DateTime::ConvertFromDuration(text, prop.GetTimeShowHours());
      if (nSeconds < 0 && !bNegativeOK) nSeconds = 0;
      text = nSeconds == 0 && prop.GetZeroIsEmpty() ? CString() : FormatDuration(nSeconds, prop);
      return true;
    }
    case DataType::Decimal:
    case DataType::DecimalListSuggested: {
      const double dValue = ReadDecimal(text, prop.GetFractional());
      if (dValue < 0.0 && !bNegativeOK) return false;
      text = prop.GetFractional() ? NumberTextConv::DoubleToFraction(dValue) : FormatDecimal(dValue, prop);
      return true;
    }
    case DataType::Date: {
      if (text.IsEmpty()) return true;
      DateTime value;
      value.SetDate(text);
      if (!value.IsValidDate()) return false;
      text = DateTime::ConvertDateToText(value, false, false, false, true);
      return true;
    }
    case DataType::Time: {
      if (text.IsEmpty()) return true;
      DateTime value;
      value.SetTime(text);
      if (!value.IsValidTime()) return false;
      text = DateTime::ConvertTimeToText(value, prop.GetTimeShowSeconds());
      return true;
    }
    case DataType::Text:
    case DataType::Password:
    case DataType::LargeText:
    case DataType::ValueListSuggested:
    case DataType::AddressBookSuggested:
    case DataType::DescValueListSuggested:
    case DataType::NumberWithText:
    case DataType::NumberWithRomanOrText:
      return true;
    case DataType::PhotoFilePath:
    case DataType::DataFilePath:
      return text.IsEmpty() || FileUtils::IsFile(text, true, true);
    case DataType::DirectoryPath:
      return text.IsEmpty() || DirUtils::IsDir(text, true);
    case DataType::EmailAddress:
      return text.IsEmpty() || InternetUtils::IsValidEmailAddress(text);
    case DataType::WebSiteAddress:
      return text.IsEmpty() || InternetUtils::IsValidWebSiteAddress(text) || FileUtils::IsFile(text, true, true);
    case DataType::NumberListSelect:
    case DataType::ValueListSelect:
    case DataType::DescValueListSelect:
    case DataType::DecimalListSelect:
    case DataType::AddressBookSelect:
      return text.IsEmpty() || FindEntryID(GetListOwner(prop), prop.GetDataType(), text, false) >= 0;
    case DataType::Monetary: {
      Money value;
      value.Set(text);
      if (value < Money(0) && !bNegativeOK) return false;
      text = value.GetText(true, prop.GetThousandsSep());
      return true;
    }
    default:
      return false;
  }
}

int DataMgmt::ConvertToInteger(const CString& text, const DataProp& prop) {
  switch (prop.GetDataType()) {
    case DataType::Number:
      return NumberTextConv::GetNumberFromString(text);
    case DataType::Duration:
      return DateTime::ConvertFromDuration(text, prop.GetTimeShowHours());
    default:
      return 0;
  }
}
