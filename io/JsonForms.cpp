#include "io/JsonForms.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>


namespace json_forms {

namespace {

const char NAN_PREFIX[] = "NaN:0x";

[[noreturn]] void Fail(const std::string& path, const std::string& what) { throw FormError(path, what); }

// The length of the UTF-8 sequence at p (at most nLeft bytes), 0 when the
// bytes there are no well-formed sequence (overlong forms, surrogates and
// code points above U+10FFFF are not).
size_t Utf8SequenceLength(const unsigned char* p, size_t nLeft) {
  if (p[0] < 0x80) return 1;
  size_t nLength = 0;
  unsigned nMin = 0;
  unsigned nCode = 0;
  if ((p[0] & 0xE0) == 0xC0) {
    nLength = 2, nMin = 0x80, nCode = p[0] & 0x1F;
  } else if ((p[0] & 0xF0) == 0xE0) {
    nLength = 3, nMin = 0x800, nCode = p[0] & 0x0F;
  } else if ((p[0] & 0xF8) == 0xF0) {
    nLength = 4, nMin = 0x10000, nCode = p[0] & 0x07;
  } else {
    return 0;
  }
  if (nLength > nLeft) return 0;
  for (size_t i = 1; i < nLength; ++i) {
    if ((p[i] & 0xC0) != 0x80) return 0;
    nCode = (nCode << 6) | (p[i] & 0x3F);
  }
  const bool bSurrogate = nCode >= 0xD800 && nCode <= 0xDFFF;
  return nCode < nMin || nCode > 0x10FFFF || bSurrogate ? 0 : nLength;
}

bool IsUtf8(const std::string& text) {
  const auto* p = reinterpret_cast<const unsigned char*>(text.data());
  size_t nLeft = text.size();
  while (nLeft > 0) {
    const size_t nLength = Utf8SequenceLength(p, nLeft);
    if (nLength == 0) return false;
    p += nLength;
    nLeft -= nLength;
  }
  return true;
}

std::uint64_t BitsOf(double dValue) {
  std::uint64_t nBits = 0;
  std::memcpy(&nBits, &dValue, sizeof nBits);
  return nBits;
}

bool IsDigits(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

// Two digits at text[nAt], or -1.
int TwoDigits(const std::string& text, size_t nAt) {
  if (nAt + 2 > text.size() || !IsDigits(text.substr(nAt, 2))) return -1;
  return (text[nAt] - '0') * 10 + (text[nAt + 1] - '0');
}

// "hh:mm:ss" as seconds of the day, or -1.
int ReadClock(const std::string& text) {
  if (text.size() != 8 || text[2] != ':' || text[5] != ':') return -1;
  const int nHour = TwoDigits(text, 0);
  const int nMinute = TwoDigits(text, 3);
  const int nSecond = TwoDigits(text, 6);
  if (nHour < 0 || nHour > 23 || nMinute < 0 || nMinute > 59 || nSecond < 0 || nSecond > 59) return -1;
  return nHour * 3600 + nMinute * 60 + nSecond;
}

// "YYYY-MM-DD" as a Julian day, or DateTime::NO_DATE.
int ReadCalendarDate(const std::string& text) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-' || !IsDigits(text.substr(0, 4))) {
    return DateTime::NO_DATE;
  }
  const int nYear = std::stoi(text.substr(0, 4));
  const int nMonth = TwoDigits(text, 5);
  const int nDay = TwoDigits(text, 8);
  DateTime date;
  return date.SetDate(nYear, nMonth, nDay) ? date.GetJulianDay() : DateTime::NO_DATE;
}

}  // namespace

const char* const KIND_NAMES[KIND_COUNT] = {"bool", "int", "double", "dateTime", "money", "text"};

Kind KindOfType(DataType::Type nType) {
  switch (nType) {
    case DataType::YesNo:
      return BOOL;
    case DataType::Number:
    case DataType::Duration:
    case DataType::NumberListSuggested:
    case DataType::ValueListSuggested:
    case DataType::NumberListSelect:
    case DataType::ValueListSelect:
    case DataType::AddressBookSuggested:
    case DataType::AddressBookSelect:
    case DataType::DescValueListSuggested:
    case DataType::DescValueListSelect:
    case DataType::DecimalListSuggested:
    case DataType::DecimalListSelect:
      return INT;
    case DataType::Decimal:
      return DOUBLE;
    case DataType::Date:
    case DataType::Time:
      return DATETIME;
    case DataType::Monetary:
      return MONEY;
    case DataType::Text:
    case DataType::PhotoFilePath:
    case DataType::DirectoryPath:
    case DataType::EmailAddress:
    case DataType::WebSiteAddress:
    case DataType::Password:
    case DataType::LargeText:
    case DataType::DataFilePath:
    case DataType::NumberWithText:
    case DataType::NumberWithRomanOrText:
      return TEXT;
    default:
      return NO_KIND;
  }
}

bool IsAddressBookType(DataType::Type nType) {
  return nType == DataType::AddressBookSuggested || nType == DataType::AddressBookSelect;
}

std::unordered_map<int, DataType::Type> CollectColumnTypes(const DataPropMgr& registry) {
  std::unordered_map<int, DataType::Type> types;
  for (size_t i = 0; i < registry.GetAppCount(); ++i) {
    if (const DataProp* pProp = registry.GetAppAt(i)) types.emplace(pProp->GetID(), pProp->GetDataType());
  }
  for (size_t i = 0; i < registry.GetUserCount(); ++i) {
    if (const DataProp* pProp = registry.GetUserAt(i)) types.emplace(pProp->GetID(), pProp->GetDataType());
  }
  return types;
}

bool HasKind(const Data& record, int nID, Kind nKind) {
  switch (nKind) {
    case BOOL:
      return record.HaveDataPropBool(nID);
    case INT:
      return record.HaveDataPropInt(nID);
    case DOUBLE:
      return record.HaveDataPropDouble(nID);
    case DATETIME:
      return record.HaveDataPropDateTime(nID);
    case MONEY:
      return record.HaveDataPropMoney(nID);
    case TEXT:
      return record.HaveDataPropString(nID);
    default:
      return false;
  }
}

namespace {

template <typename T>
T Get(const Data& record, int nID) {
  T value{};
  record.GetData(nID, value);
  return value;
}

}  // namespace

OutJson WriteKind(const Data& record, int nID, Kind nKind) {
  switch (nKind) {
    case BOOL:
      return Get<bool>(record, nID);
    case INT:
      return Get<int>(record, nID);
    case DOUBLE:
      return WriteDouble(Get<double>(record, nID));
    case DATETIME:
      return WriteDateTime(Get<DateTime>(record, nID));
    case MONEY:
      return WriteMoney(Get<Money>(record, nID));
    case TEXT:
      return WriteText(Get<CString>(record, nID));
    default:
      return nullptr;
  }
}

void RegisterKind(Data& record, int nID, Kind nKind, const InJson& value, const std::string& path) {
  switch (nKind) {
    case BOOL:
      record.RegisterDataProp(nID, ReadBool(value, path));
      break;
    case INT:
      record.RegisterDataProp(nID, ReadInt(value, path));
      break;
    case DOUBLE:
      record.RegisterDataProp(nID, ReadDouble(value, path));
      break;
    case DATETIME:
      record.RegisterDataProp(nID, ReadDateTime(value, path));
      break;
    case MONEY:
      record.RegisterDataProp(nID, ReadMoney(value, path));
      break;
    case TEXT:
      record.RegisterDataProp(nID, ReadText(value, path), false);
      break;
    default:
      break;
  }
}

OutJson WriteText(const CString& text) {
  const std::string& bytes = text.GetStdString();
  if (IsUtf8(bytes)) return bytes;
  std::string latin1;
  latin1.reserve(bytes.size() * 2);
  for (unsigned char ch : bytes) {
    if (ch < 0x80) {
      latin1 += static_cast<char>(ch);
    } else {
      latin1 += static_cast<char>(0xC0 | (ch >> 6));
      latin1 += static_cast<char>(0x80 | (ch & 0x3F));
    }
  }
  return OutJson{{"latin1", latin1}};
}

bool IsLatin1Form(const InJson& value) { return value.is_object() && value.size() == 1 && value.contains("latin1"); }

CString ReadText(const InJson& value, const std::string& path) {
  if (value.is_string()) return CString(value.get<std::string>());
  if (!IsLatin1Form(value) || !value["latin1"].is_string()) Fail(path, "expected a text");
  const std::string& utf8 = value["latin1"].get_ref<const std::string&>();
  std::string bytes;
  bytes.reserve(utf8.size());
  for (size_t i = 0; i < utf8.size(); ++i) {
    const auto ch = static_cast<unsigned char>(utf8[i]);
    if (ch < 0x80) {
      bytes += static_cast<char>(ch);
    } else if ((ch == 0xC2 || ch == 0xC3) && i + 1 < utf8.size()) {
      bytes += static_cast<char>(((ch & 0x03) << 6) | (static_cast<unsigned char>(utf8[++i]) & 0x3F));
    } else {
      Fail(path + "/latin1", "a character beyond U+00FF has no byte");
    }
  }
  return CString(std::move(bytes));
}

OutJson WriteDouble(double dValue) {
  if (std::isfinite(dValue)) return dValue;
  if (std::isinf(dValue)) return dValue > 0 ? "Infinity" : "-Infinity";
  const std::uint64_t nBits = BitsOf(dValue);
  if (nBits == BitsOf(std::numeric_limits<double>::quiet_NaN())) return "NaN";
  char szText[32];
  std::snprintf(szText, sizeof szText, "%s%016llx", NAN_PREFIX, static_cast<unsigned long long>(nBits));
  return szText;
}

double ReadDouble(const InJson& value, const std::string& path) {
  if (value.is_number()) return value.get<double>();
  if (!value.is_string()) Fail(path, "expected a number");
  const std::string& text = value.get_ref<const std::string&>();
  if (text == "Infinity") return std::numeric_limits<double>::infinity();
  if (text == "-Infinity") return -std::numeric_limits<double>::infinity();
  if (text == "NaN") return std::numeric_limits<double>::quiet_NaN();
  const size_t nPrefix = sizeof NAN_PREFIX - 1;
  const std::string hex = text.substr(std::min(nPrefix, text.size()));
  if (text.compare(0, nPrefix, NAN_PREFIX) != 0 || hex.size() != 16 ||
      hex.find_first_not_of("0123456789abcdef") != std::string::npos) {
    Fail(path, "expected a number, \"NaN\", \"Infinity\" or \"-Infinity\"");
  }
  const std::uint64_t nBits = std::stoull(hex, nullptr, 16);
  double dValue = 0.0;
  std::memcpy(&dValue, &nBits, sizeof dValue);
  if (!std::isnan(dValue)) Fail(path, "these bits are no NaN");
  return dValue;
}

OutJson WriteMoney(const Money& value) {
  const ULONGLONG nScale = Money::GetScale();
  std::string text = value.GetIsPositive() ? "" : "-";
  text += std::to_string(value.GetRawAmount() / nScale);
  const UINT nDigits = Money::GetFractionalDigits();
  if (nDigits > 0) {
    const std::string fraction = std::to_string(value.GetRawAmount() % nScale);
    text += "." + std::string(nDigits - fraction.size(), '0') + fraction;
  }
  return text;
}

Money ReadMoney(const InJson& value, const std::string& path) {
  if (!value.is_string()) Fail(path, "expected an amount as a text such as \"-12.50\"");
  std::string text = value.get<std::string>();
  const bool bNegative = !text.empty() && text[0] == '-';
  if (bNegative) text.erase(0, 1);
  const size_t nPoint = text.find('.');
  const std::string whole = text.substr(0, nPoint);
  const std::string fraction = nPoint == std::string::npos ? "" : text.substr(nPoint + 1);
  const UINT nDigits = Money::GetFractionalDigits();
  if (!IsDigits(whole) || (nPoint != std::string::npos && !IsDigits(fraction))) {
    Fail(path, "expected an amount as a text such as \"-12.50\"");
  }
  if (fraction.size() > nDigits) {
    Fail(path, "more fractional digits than the currency's " + std::to_string(nDigits));
  }
  // whole * scale + fraction must fit the magnitude.
  const ULONGLONG nScale = Money::GetScale();
  const std::string digits = fraction + std::string(nDigits - fraction.size(), '0');
  const ULONGLONG nFraction = digits.empty() ? 0 : std::stoull(digits);
  const ULONGLONG nMax = std::numeric_limits<ULONGLONG>::max();
  ULONGLONG nWhole = 0;
  for (const char c : whole) {
    const ULONGLONG nDigit = static_cast<ULONGLONG>(c - '0');
    if (nWhole > (nMax - nDigit) / 10) Fail(path, "the amount is too large");
    nWhole = nWhole * 10 + nDigit;
  }
  if (nWhole > (nMax - nFraction) / nScale) Fail(path, "the amount is too large");
  return Money::FromRaw(!bNegative, nWhole * nScale + nFraction);
}

OutJson WriteDateTime(const DateTime& value) {
  const bool bNoDate = value.GetJulianDay() == DateTime::NO_DATE;
  const bool bNoTime = value.GetSecondsOfDay() == DateTime::NO_TIME;
  if ((!bNoDate && !value.IsValidDate()) || (!bNoTime && !value.IsValidTime())) {
    return OutJson{{"julianDay", value.GetJulianDay()}, {"secondsOfDay", value.GetSecondsOfDay()}};
  }
  if (bNoDate && bNoTime) return nullptr;
  char szText[32] = "";
  int nYear = 0;
  int nMonth = 0;
  int nDay = 0;
  if (value.GetDate(nYear, nMonth, nDay)) std::snprintf(szText, sizeof szText, "%04d-%02d-%02d", nYear, nMonth, nDay);
  if (!bNoTime) {
    const int nSeconds = value.GetSecondsOfDay();
    const size_t nUsed = std::strlen(szText);
    std::snprintf(szText + nUsed, sizeof szText - nUsed, "%s%02d:%02d:%02d", bNoDate ? "" : "T", nSeconds / 3600,
                  nSeconds / 60 % 60, nSeconds % 60);
  }
  return szText;
}

DateTime ReadDateTime(const InJson& value, const std::string& path) {
  if (value.is_null()) return DateTime();
  if (value.is_object()) {
    if (!value.contains("julianDay") || !value.contains("secondsOfDay")) {
      Fail(path, "expected julianDay and secondsOfDay");
    }
    return DateTime::FromJulian(ReadInt(value["julianDay"], path + "/julianDay"),
                                ReadInt(value["secondsOfDay"], path + "/secondsOfDay"));
  }
  const char* pszExpected = "expected a date and time such as \"2011-05-01T10:15:00\", \"2011-05-01\" or \"10:15:00\"";
  if (!value.is_string()) Fail(path, pszExpected);
  const std::string& text = value.get_ref<const std::string&>();
  const size_t nT = text.find('T');
  const std::string datePart = nT == std::string::npos ? (text.size() == 10 ? text : "") : text.substr(0, nT);
  const std::string clockPart = nT == std::string::npos ? (text.size() == 8 ? text : "") : text.substr(nT + 1);
  const int nDate = datePart.empty() ? DateTime::NO_DATE : ReadCalendarDate(datePart);
  const int nTime = clockPart.empty() ? DateTime::NO_TIME : ReadClock(clockPart);
  if ((datePart.empty() && clockPart.empty()) || (!datePart.empty() && nDate == DateTime::NO_DATE) ||
      (!clockPart.empty() && nTime < 0)) {
    Fail(path, pszExpected);
  }
  return DateTime::FromJulian(nDate, nTime);
}

int ReadInt(const InJson& value, const std::string& path) {
  if (!value.is_number_integer()) Fail(path, "expected a whole number");
  if (value.is_number_unsigned() ? value.get<std::uint64_t>() > static_cast<std::uint64_t>(INT32_MAX)
                                 : value.get<std::int64_t>() < INT32_MIN || value.get<std::int64_t>() > INT32_MAX) {
    Fail(path, "the number is out of the range of a 32-bit integer");
  }
  return value.get<int>();
}

bool ReadBool(const InJson& value, const std::string& path) {
  if (!value.is_boolean()) Fail(path, "expected true or false");
  return value.get<bool>();
}

#define FLAG(name, Accessor)                                                                        \
  {                                                                                                 \
    name, &DataProp::Get##Accessor, [](DataProp& prop, bool bValue) { prop.Set##Accessor(bValue); } \
  }

const ColumnFlag COLUMN_FLAGS[] = {
    FLAG("canBeSummed", CanBeSummed),
    FLAG("canBeAveraged", CanBeAveraged),
    FLAG("canBeNegative", CanBeNegative),
    FLAG("showSignAlways", ShowSignAlways),
    FLAG("thousandsSeparator", ThousandsSep),
    FLAG("fractional", Fractional),
    FLAG("showDecimalZeroes", ShowDecimalZeroes),
    FLAG("zeroIsEmpty", ZeroIsEmpty),
    FLAG("dateTimeNumbers", DateTimeNumbers),
    FLAG("timeShowHours", TimeShowHours),
    FLAG("timeShowSeconds", TimeShowSeconds),
    FLAG("displayed", Displayed),
    FLAG("hiddenFromUI", HiddenFromUI),
    {"userCanDelete", &DataProp::GetUserCanDelete,
     [](DataProp& prop, bool bValue) { prop.SetUserCanDelete(bValue, prop.GetUserCanDeleteWarning()); }},
    {"userCanDeleteWarning", &DataProp::GetUserCanDeleteWarning,
     [](DataProp& prop, bool bValue) { prop.SetUserCanDelete(prop.GetUserCanDelete(), bValue); }},
    FLAG("userChangeDataType", UserChangeDataType),
    FLAG("userChangeValue", UserChangeValue),
    FLAG("userChangeDefaultValue", UserChangeDefValue),
    FLAG("sortValuesByListOrder", SortValuesByListOrder),
    // Set by the reader after the entries: turning it on sorts them.
    {"keepListItemsSorted", &DataProp::GetKeepListItemsSorted, nullptr},
    FLAG("useWithSubItems", UseWithDataSubItem),
};
const size_t COLUMN_FLAG_COUNT = sizeof COLUMN_FLAGS / sizeof COLUMN_FLAGS[0];

#undef FLAG

const char* const ADDRESS_FIELD_NAMES[] = {
    "name",    "street", "city",   "stateProvince", "zipPostalCode", "country", "email", "webSite", "facebook",
    "twitter", "phone1", "phone2", "phone3",        "fax",           "notes",   "photo", "map",     "specialDate"};
const int ADDRESS_FIELD_COUNT = sizeof ADDRESS_FIELD_NAMES / sizeof ADDRESS_FIELD_NAMES[0];

}  // namespace json_forms
