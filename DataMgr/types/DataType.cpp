#include "DataMgr/types/DataType.h"

#include <cstdint>
#include <initializer_list>

std::map<CString, DataType::Type> DataType::m_mapTypeToText;

namespace {

const WORD DATATYPE_VERSION = 1;

struct TypeText {
  DataType::Type nType;
  const char* pszText;
};

const TypeText TYPE_TEXTS[] = {
    {DataType::YesNo, "Yes/No"},
    {DataType::Number, "Number"},
    {DataType::Duration, "Duration"},
    {DataType::Decimal, "Decimal"},
    {DataType::Date, "Date"},
    {DataType::Time, "Time"},
    {DataType::Text, "Text"},
    {DataType::PhotoFilePath, "Photo File Path"},
    {DataType::DirectoryPath, "Directory Path"},
    {DataType::EmailAddress, "e-mail Address"},
    {DataType::WebSiteAddress, "Web Site Address"},
    {DataType::Password, "Password"},
    {DataType::LargeText, "Large Text"},
    {DataType::NumberListSuggested, "List of Numbers (suggested as typed)"},
    {DataType::ValueListSuggested, "List of Values (suggested as typed)"},
    {DataType::NumberListSelect, "List of Numbers (select from list)"},
    {DataType::ValueListSelect, "List of Values (select from list)"},
    {DataType::AddressBookSuggested, "Addressbook (suggested as typed)"},
    {DataType::AddressBookSelect, "Addressbook (select from list)"},
    {DataType::DescValueListSuggested, "List of Values (with desc.) (suggested as typed)"},
    {DataType::DescValueListSelect, "List of Values (with desc.) (select from list)"},
    {DataType::DataFilePath, "Data File Path"},
    {DataType::DecimalListSuggested, "List of Decimal Values (suggested as typed)"},
    {DataType::DecimalListSelect, "List of Decimal Values (select from list)"},
    {DataType::Monetary, "Monetary"},
    {DataType::NumberWithText, "Number (with optional text)"},
    {DataType::NumberWithRomanOrText, "Number (with possible Roman numerals and/or text)"},
    {DataType::EmbeddedThumbnail, "Embedded Thumbnail Image"},
    {DataType::Icon, "Icon"},
};

// A set of type numbers 0 to 63, one bit each.
using TypeSet = std::uint64_t;

constexpr TypeSet Types(std::initializer_list<int> numbers) {
  TypeSet set = 0;
  for (int n : numbers) set |= TypeSet{1} << n;
  return set;
}

constexpr TypeSet ALL_TYPES = ~TypeSet{0};

bool Contains(TypeSet set, int n) { return n >= 0 && n < 64 && ((set >> n) & 1) != 0; }

// True when some group holds both a and b.
bool InSameGroup(std::initializer_list<TypeSet> groups, int a, int b) {
  for (TypeSet group : groups) {
    if (Contains(group, a) && Contains(group, b)) return true;
  }
  return false;
}

// The targets a type's values may be converted to; bBeyondTable adds every
// number outside 0 to 63.
struct Conversions {
  TypeSet targets;
  bool bBeyondTable;
};

Conversions ConversionsFrom(int nFrom) {
  switch (nFrom) {
    case DataType::Number:
    case DataType::Duration:
      return {Types({0, 1, 2, 3, 6, 11, 12, 13, 14, 15, 16, 21, 22, 28, 30, 31}), false};
    case DataType::Decimal:
    case DataType::Monetary:
      return {Types({0, 1, 2, 3, 6, 11, 12, 14, 16, 21, 22, 26, 27, 28, 30, 31}), false};
    case DataType::Date:
    case DataType::Time:
      return {Types({6, 11, 12}), false};
    case DataType::Text:
    case DataType::Password:
      return {ALL_TYPES & ~Types({0, 1, 2, 3, 13, 15, 28}), true};
    case DataType::PhotoFilePath:
    case DataType::DirectoryPath:
    case DataType::DataFilePath:
    case DataType::EmbeddedThumbnail:
      return {Types({6, 7, 8, 11, 12, 25, 32}), false};
    case DataType::EmailAddress:
    case DataType::WebSiteAddress:
      return {Types({6, 11, 12, 14, 16, 21, 22}), false};
    case DataType::LargeText:
      return {ALL_TYPES & ~Types({0, 1, 2, 3, 13, 15, 28, 30, 31}), true};
    case DataType::NumberListSuggested:
    case DataType::NumberListSelect:
    case DataType::DecimalListSuggested:
    case DataType::DecimalListSelect:
      return {Types({6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 21, 22, 25, 26, 27, 30, 32}), false};
    case DataType::ValueListSuggested:
    case DataType::ValueListSelect:
    case DataType::DescValueListSuggested:
    case DataType::DescValueListSelect:
      return {Types({6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 18, 19, 21, 22, 25, 26, 27, 30, 32}), false};
    case DataType::AddressBookSuggested:
    case DataType::AddressBookSelect:
      return {Types({6, 8, 11, 12, 14, 16, 18, 19, 21, 22}), false};
    case DataType::NumberWithText:
    case DataType::NumberWithRomanOrText:
      return {Types({1, 2, 3, 6, 11, 12, 14, 16, 21, 22, 28}), false};
    default:  // YesNo, Icon, the gaps, and numbers outside the table
      return {0, false};
  }
}

}  // namespace

// Layout (version 1, current):
//   WORD version
//   WORD type number
// Changelog:
//   1: first version.
void DataType::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << DATATYPE_VERSION;
    ar << static_cast<WORD>(m_nType);
  } else {
    WORD nVersion = 0;
    ar >> nVersion;
    WORD nType = 0;
    ar >> nType;
    m_nType = static_cast<Type>(nType);
  }
}

void DataType::PopulateLookupMap() {
  if (!m_mapTypeToText.empty()) return;
  for (const TypeText& row : TYPE_TEXTS) m_mapTypeToText.emplace(row.pszText, row.nType);
}

CString DataType::GetText(Type nType) {
  PopulateLookupMap();
  for (const auto& entry : m_mapTypeToText) {
    if (entry.second == nType) return entry.first;
  }
  return CString();
}

DataType::Type DataType::GetType(const CString& text) {
  PopulateLookupMap();
  const auto found = m_mapTypeToText.find(text);
  return found == m_mapTypeToText.end() ? Text : found->second;
}

void DataType::GetTypeList(std::vector<CString>& texts) {
  PopulateLookupMap();
  for (const auto& entry : m_mapTypeToText) texts.push_back(entry.first);
}

bool DataType::IsListType(Type nType) { return Contains(Types({13, 14, 15, 16, 18, 19, 21, 22, 26, 27}), nType); }

bool DataType::IsNumberType(Type nType) { return Contains(Types({1, 2, 3, 13, 15, 26, 27, 28}), nType); }

CString DataType::GetNumberTypeText(Type nType) {
  switch (nType) {
    case NumberWithText:
      return "with optional text";
    case NumberWithRomanOrText:
      return "with possible Roman numerals or text";
    default:
      return CString();
  }
}

CString DataType::GetListTypeText(Type nType) {
  if (Contains(Types({13, 14, 21, 26}), nType)) return "suggested as typed";
  if (Contains(Types({15, 16, 22, 27}), nType)) return "select from list";
  return CString();
}

bool DataType::IsSimilarType(Type a, Type b) {
  if (a == b) return true;
  if (a > Icon) return false;
  return InSameGroup({Types({1, 2}), Types({4, 5}), Types({6, 7, 8, 9, 10, 11, 12, 25, 30, 31, 32}), Types({13, 15}),
                      Types({14, 16}), Types({18, 19}), Types({21, 22}), Types({26, 27})},
                     a, b);
}

bool DataType::IsSimilarFundamental(Type a, Type b) {
  if (a == b) return true;
  if (a > Icon) return false;
  return InSameGroup({Types({1, 2, 13, 15}), Types({3, 26, 27, 28}), Types({4, 5}),
                      Types({6, 7, 8, 9, 10, 11, 12, 14, 16, 18, 19, 21, 22, 25, 30, 31, 32})},
                     a, b);
}

bool DataType::CanConvertBetween(Type nFrom, Type nTo) {
  if (nFrom == nTo) return true;
  if (nFrom > EmbeddedThumbnail) return false;
  const Conversions conversions = ConversionsFrom(nFrom);
  if (nTo < 0 || nTo >= 64) return conversions.bBeyondTable;
  return Contains(conversions.targets, nTo);
}
