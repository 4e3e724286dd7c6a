#include "io/TypeNames.h"

namespace {

struct TypeName {
  DataType::Type nType;
  const char* pszName;
};

const TypeName TYPE_NAMES[] = {
    {DataType::YesNo, "YesNo"},
    {DataType::Number, "Number"},
    {DataType::Duration, "Duration"},
    {DataType::Decimal, "Decimal"},
    {DataType::Date, "Date"},
    {DataType::Time, "Time"},
    {DataType::Text, "Text"},
    {DataType::PhotoFilePath, "PhotoFilePath"},
    {DataType::DirectoryPath, "DirectoryPath"},
    {DataType::EmailAddress, "EmailAddress"},
    {DataType::WebSiteAddress, "WebSiteAddress"},
    {DataType::Password, "Password"},
    {DataType::LargeText, "LargeText"},
    {DataType::NumberListSuggested, "NumberListSuggested"},
    {DataType::ValueListSuggested, "ValueListSuggested"},
    {DataType::NumberListSelect, "NumberListSelect"},
    {DataType::ValueListSelect, "ValueListSelect"},
    {DataType::AddressBookSuggested, "AddressBookSuggested"},
    {DataType::AddressBookSelect, "AddressBookSelect"},
    {DataType::DescValueListSuggested, "DescValueListSuggested"},
    {DataType::DescValueListSelect, "DescValueListSelect"},
    {DataType::DataFilePath, "DataFilePath"},
    {DataType::DecimalListSuggested, "DecimalListSuggested"},
    {DataType::DecimalListSelect, "DecimalListSelect"},
    {DataType::Monetary, "Monetary"},
    {DataType::NumberWithText, "NumberWithText"},
    {DataType::NumberWithRomanOrText, "NumberWithRomanOrText"},
    {DataType::EmbeddedThumbnail, "EmbeddedThumbnail"},
    {DataType::Icon, "Icon"},
};

}  // namespace

CString TypeNames::GetName(DataType::Type nType) {
  for (const TypeName& name : TYPE_NAMES) {
    if (name.nType == nType) return name.pszName;
  }
  return CString();
}

bool TypeNames::FindType(const CString& name, DataType::Type& nType) {
  for (const TypeName& entry : TYPE_NAMES) {
    if (name.CompareNoCase(entry.pszName) == 0 || name.CompareNoCase(DataType::GetText(entry.nType)) == 0) {
      nType = entry.nType;
      return true;
    }
  }
  return false;
}
