#include "DataMgr/filter/DataFilter.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <string>

#include "DataMgr/filter/FilterTypes.h"
#include "DataMgr/types/ArchiveExchange.h"
#include "utility/LocaleUtils.h"
#include "utility/NumberTextConv.h"
#include "utility/SerializeData.h"
#include "utility/StringUtils.h"
#include "utility/TextArray.h"

namespace {

// Changelog:
//   1: the version word alone.
//   2: flags, IDs, filter type, data type, value and value list, the list
//      with a 32-bit counter.
//   3: the value list with a 64-bit counter.
const WORD DATAFILTER_VERSION = 3;

// Two decimals closer than this are equal.
const double DECIMAL_EQUAL = 0.0001;
// A decimal of a smaller magnitude counts as no data.
const double DECIMAL_ZERO = 0.001;

// The texts of the filter types, by value.
const char* const FILTER_DESCS[] = {
    "has any data",
    "is exactly equal to",
    "is less than",
    "is greater than",
    "is equal to",
    "is equal to or newer than",
    "is equal to or older than",
    "is checked",
    "is not checked",
    "contains",
};

// The separator passed to the number formatters, as in the document's
// rendering: the locale's own.
const CString DEFAULT_SEPARATOR;

// Whether piece equals one whole piece of text between occurrences of
// separator, as StringUtils::SplitLine cuts it (an empty text has no
// pieces), compared case-sensitively; without building the pieces.
bool IsPieceOf(const CString& text, const CString& separator, const CString& piece) {
  const std::string& strText = text.GetStdString();
  const std::string& strSeparator = separator.GetStdString();
  const std::string& strPiece = piece.GetStdString();
  if (strText.empty()) return false;
  if (strSeparator.empty()) return strText == strPiece;
  size_t nStart = 0;
  for (;;) {
    const size_t nFound = strText.find(strSeparator, nStart);
    const size_t nEnd = nFound == std::string::npos ? strText.size() : nFound;
    if (nEnd - nStart == strPiece.size() && strText.compare(nStart, strPiece.size(), strPiece) == 0) return true;
    if (nFound == std::string::npos) return false;
    nStart = nFound + strSeparator.size();
  }
}

DateTime ReadDate(const CString& text) {
  DateTime date;
  date.SetDate(text);
  return date;
}

DateTime ReadTime(const CString& text) {
  DateTime time;
  time.SetTime(text);
  return time;
}

// The first second of nYear on the local clock.
std::time_t NewYear(int nYear) {
  std::tm start{};
  start.tm_year = nYear - 1900;
  start.tm_mday = 1;
  start.tm_isdst = -1;
  return std::mktime(&start);
}

}  // namespace

DataFilter::DataFilter() { ParseCompareValue(); }

DataFilter::~DataFilter() = default;

bool DataFilter::operator==(const DataFilter& other) const {
  return m_bInclude == other.m_bInclude && m_bCaseSensitive == other.m_bCaseSensitive &&
         m_bWholeWord == other.m_bWholeWord && m_bRequired == other.m_bRequired && m_nID == other.m_nID &&
         m_nDataPropID == other.m_nDataPropID && m_dataType == other.m_dataType &&
         m_nFilterType == other.m_nFilterType && m_strValue == other.m_strValue && m_vecValues == other.m_vecValues;
}

void DataFilter::SetValue(const CString& value) {
  m_strValue = value;
  m_vecValues.clear();
  ParseCompareValue();
}

void DataFilter::SetValue(const std::vector<int>& values) {
  m_vecValues = values;
  m_strValue.Empty();
  ParseCompareValue();
}

// A whole-word test matches a word of the text in full; a value that is
// not exactly one word (GetWords) can match none. The year is taken before
// the date is read, so that a date read just after the new year began is
// read again, never kept for the wrong year.
void DataFilter::ParseCompareValue() {
  TextArray words;
  StringUtils::GetWords(m_strValue, words);
  m_bValueIsOneWord = words.GetSize() == 1 && words[0] == m_strValue;
  const int nYear = DateTime::GetCurrentYear();
  m_readWith.tYearBegins = NewYear(nYear);
  m_readWith.tYearEnds = NewYear(nYear + 1);
  m_readWith.strThousandsSep = LocaleUtils::GetNumberThousandsSeparator();
  m_readWith.strDecimalSep = LocaleUtils::GetNumberDecimalSeparator();
  m_readWith.strCurrencySep = LocaleUtils::GetCurrencyDecimalSeparator();
  m_readWith.strDateSep = LocaleUtils::GetDateSeparator();
  m_readWith.nDateOrder = LocaleUtils::GetDateOrder();
  m_readWith.strTimeSep = LocaleUtils::GetTimeSeparator();
  m_nCompareNumber = NumberTextConv::GetNumberFromString(m_strValue);
  m_dCompareNumber = NumberTextConv::GetDoubleFromString(m_strValue, false);
  m_compareAmount = Money(m_strValue);
  m_dtCompareDate = ReadDate(m_strValue);
  m_dtCompareTime = ReadTime(m_strValue);
}

// Whole numbers read with the thousands separator alone; decimals with the
// decimal separator too; amounts with the currency's decimal separator.
int DataFilter::CompareNumber() const {
  const bool bSame = LocaleUtils::GetNumberThousandsSeparator() == m_readWith.strThousandsSep;
  return bSame ? m_nCompareNumber : NumberTextConv::GetNumberFromString(m_strValue);
}

double DataFilter::CompareDecimal() const {
  const bool bSame = LocaleUtils::GetNumberThousandsSeparator() == m_readWith.strThousandsSep &&
                     LocaleUtils::GetNumberDecimalSeparator() == m_readWith.strDecimalSep;
  return bSame ? m_dCompareNumber : NumberTextConv::GetDoubleFromString(m_strValue, false);
}

Money DataFilter::CompareAmount() const {
  const bool bSame = LocaleUtils::GetNumberThousandsSeparator() == m_readWith.strThousandsSep &&
                     LocaleUtils::GetCurrencyDecimalSeparator() == m_readWith.strCurrencySep;
  return bSame ? m_compareAmount : Money(m_strValue);
}

// A date without its year falls in the current one.
DateTime DataFilter::CompareDate() const {
  const std::time_t tNow = std::time(nullptr);
  const bool bSame = LocaleUtils::GetDateSeparator() == m_readWith.strDateSep &&
                     LocaleUtils::GetDateOrder() == m_readWith.nDateOrder && tNow >= m_readWith.tYearBegins &&
                     tNow < m_readWith.tYearEnds;
  return bSame ? m_dtCompareDate : ReadDate(m_strValue);
}

DateTime DataFilter::CompareTime() const {
  return LocaleUtils::GetTimeSeparator() == m_readWith.strTimeSep ? m_dtCompareTime : ReadTime(m_strValue);
}

CString DataFilter::GetFilterDesc(FilterType nType) {
  return nType >= IsExactlyEqualTo && nType <= Contains ? FILTER_DESCS[nType] : FILTER_DESCS[HasAnyData];
}

DataFilter::FilterType DataFilter::GetTypeFromDesc(const CString& desc) {
  for (FilterType nType : {IsExactlyEqualTo, IsLessThan, IsGreaterThan, IsEqualTo}) {
    if (desc == FILTER_DESCS[nType]) return nType;
  }
  if (desc.Find("newer than") >= 0) return IsEqualToOrNewerThan;
  if (desc.Find("older than") >= 0) return IsEqualToOrOlderThan;
  for (FilterType nType : {IsChecked, IsNotChecked, Contains}) {
    if (desc == FILTER_DESCS[nType]) return nType;
  }
  return HasAnyData;
}

void DataFilter::GetValidFilterTypesForDataType(DataType::Type nType, std::vector<FilterType>& types) {
  switch (nType) {
    case DataType::YesNo:
      types.insert(types.end(), {IsChecked, IsNotChecked});
      return;
    case DataType::Number:
    case DataType::Duration:
    case DataType::Decimal:
    case DataType::Monetary:
    case DataType::NumberWithText:
    case DataType::NumberWithRomanOrText:
      types.insert(types.end(), {HasAnyData, IsExactlyEqualTo, IsLessThan, IsGreaterThan, Contains});
      return;
    case DataType::Date:
    case DataType::Time:
      types.insert(types.end(), {HasAnyData, IsExactlyEqualTo, IsEqualToOrNewerThan, IsEqualToOrOlderThan, Contains});
      return;
    default:
      break;
  }
  if (filter_types::IsTextType(nType)) {
    types.insert(types.end(), {HasAnyData, IsExactlyEqualTo, IsLessThan, IsGreaterThan, Contains});
  } else if (DataType::IsListType(nType)) {
    types.insert(types.end(), {HasAnyData, IsEqualTo});
  }
}

bool DataFilter::PassesRelation(bool bEqual, bool bLess, bool bGreater) const {
  switch (m_nFilterType) {
    case IsExactlyEqualTo:
      return Result(bEqual);
    case IsLessThan:
      return Result(bLess);
    case IsGreaterThan:
      return Result(bGreater);
    default:
      return false;
  }
}

bool DataFilter::PassesFilter(bool bValue) const {
  switch (m_nFilterType) {
    case IsChecked:
      return Result(bValue);
    case IsNotChecked:
      return Result(!bValue);
    default:
      return false;
  }
}

// Zero counts as no data; Contains looks at the number as text, a duration
// in its clock form.
bool DataFilter::PassesFilter(int nValue) const {
  switch (m_nFilterType) {
    case HasAnyData:
      return Result(nValue != 0);
    case Contains:
      return DoesTextContainCompareValue(GetDataType() == DataType::Duration
                                             ? DateTime::ConvertSecondsToText(nValue)
                                             : NumberTextConv::NumberToString(nValue, false, 0, DEFAULT_SEPARATOR));
    default: {
      const int nCompare = CompareNumber();
      return PassesRelation(nValue == nCompare, nValue < nCompare, nValue > nCompare);
    }
  }
}

// Equality is deliberately tighter (0.0001) than "has any data" (0.001).
bool DataFilter::PassesFilter(double dValue) const {
  switch (m_nFilterType) {
    case HasAnyData:
      return Result(std::fabs(dValue) >= DECIMAL_ZERO);
    case Contains:
      return DoesTextContainCompareValue(NumberTextConv::DoubleToString(
          dValue, LocaleUtils::GetNumberFractionalDigits(), false, 0, DEFAULT_SEPARATOR, false));
    default: {
      const double dCompare = CompareDecimal();
      return PassesRelation(std::fabs(dCompare - dValue) < DECIMAL_EQUAL, dValue < dCompare, dValue > dCompare);
    }
  }
}

// Only a positive zero is no data: negative zero is a value of its own.
// Amounts order by sign, then by magnitude (Money's own order).
bool DataFilter::PassesFilter(const Money& value) const {
  switch (m_nFilterType) {
    case HasAnyData:
      return Result(value != Money());
    case Contains:
      return DoesTextContainCompareValue(value.GetText(true, true));
    default: {
      const Money compare = CompareAmount();
      return PassesRelation(value == compare, value < compare, value > compare);
    }
  }
}

// Contains asks for one whole part of the numeric date (day, month or year)
// or of the time with seconds (hours, minutes or seconds).
bool DataFilter::PassesFilter(const DateTime& value) const {
  const bool bDate = GetDataType() == DataType::Date;
  if (!bDate && GetDataType() != DataType::Time) return false;
  switch (m_nFilterType) {
    case HasAnyData:
      return Result(bDate ? value.IsValidDate() : value.IsValidTime());
    case Contains:
      return Result(
          bDate ? IsPieceOf(DateTime::ConvertDateToText(value, false, false, false, true),
                            LocaleUtils::GetDateSeparator(), m_strValue)
                : IsPieceOf(DateTime::ConvertTimeToText(value, true), LocaleUtils::GetTimeSeparator(), m_strValue));
    default:
      break;
  }
  const int nOrder = bDate ? value.CompareDate(CompareDate()) : value.CompareTime(CompareTime());
  switch (m_nFilterType) {
    case IsExactlyEqualTo:
      return Result(nOrder == 0);
    case IsEqualToOrNewerThan:
      return Result(nOrder >= 0);
    case IsEqualToOrOlderThan:
      return Result(nOrder <= 0);
    default:
      return false;
  }
}

// Blank text counts as no data; the order is the plain lexical one.
bool DataFilter::PassesFilter(const CString& value) const {
  switch (m_nFilterType) {
    case HasAnyData:
      return Result(!StringUtils::IsEffectivelyEmpty(value));
    case Contains:
      return DoesTextContainCompareValue(value);
    default: {
      const int nOrder = m_bCaseSensitive ? value.Compare(m_strValue) : value.CompareNoCase(m_strValue);
      return PassesRelation(nOrder == 0, nOrder<0, nOrder> 0);
    }
  }
}

// A negative ID means no entry is chosen; an empty selection matches none.
bool DataFilter::PassesListItemFilter(int nListItemID) const {
  switch (m_nFilterType) {
    case HasAnyData:
      return Result(nListItemID >= 0);
    case IsEqualTo:
      return Result(std::find(m_vecValues.begin(), m_vecValues.end(), nListItemID) != m_vecValues.end());
    default:
      return false;
  }
}

// The wildcard match of the whole text is tried before the substring
// search, so an Exclude filter whose pattern matches fails even when the
// pattern does not occur literally. The whole-word test is the same as
// finding the value among StringUtils::GetWords of the text.
bool DataFilter::DoesTextContainCompareValue(const CString& text) const {
  if (m_bWholeWord) {
    return Result(m_bValueIsOneWord && StringUtils::FindWholeWordMatch(text, m_strValue, m_bCaseSensitive, 0) >= 0);
  }
  if (StringUtils::MatchSpec(text, m_strValue, m_bCaseSensitive)) return m_bInclude;
  return Result(StringUtils::FindOccurrenceIndex(text, m_strValue, m_bCaseSensitive, 0) >= 0);
}

CString DataFilter::GetDescription() const {
  CString text = m_bInclude ? "Include" : "Exclude";
  text += " if \"%s\" ";
  text += GetFilterDesc(m_nFilterType);
  switch (m_nFilterType) {
    case HasAnyData:
    case IsChecked:
    case IsNotChecked:
      break;
    case IsEqualTo: {
      const size_t nCount = m_vecValues.size();
      if (nCount == 0) {
        text += " none of the entries";
      } else if (nCount == 1) {
        text += " the one selection";
      } else {
        text += " one of the " + NumberTextConv::NumberToString(static_cast<int>(nCount), true, 0, DEFAULT_SEPARATOR) +
                " selections";
      }
      break;
    }
    default:
      if (m_nFilterType < IsExactlyEqualTo || m_nFilterType > Contains) break;
      text += " \"" + m_strValue + "\"";
      if (!filter_types::IsTextType(GetDataType())) break;
      if (m_bCaseSensitive && m_bWholeWord) {
        text += " (case-sensitive and whole-word)";
      } else if (m_bCaseSensitive) {
        text += " (case-sensitive)";
      } else if (m_bWholeWord) {
        text += " (whole-word)";
      }
      break;
  }
  return text + ".";
}

// Layout (version 3, current):
//   WORD          version
//   bool          include
//   bool          case-sensitive
//   bool          whole-word
//   bool          required
//   int           ID
//   int           column ID
//   WORD          filter type
//   DataType      data type (its own record)
//   text          value
//   vector of int value list (32-bit counter in version 2)
// A version-1 record holds the version word alone: loading it leaves every
// member as it was.
void DataFilter::Serialize(CArchive& ar) {
  WORD nVersion = DATAFILTER_VERSION;
  archive_exchange::Exchange(ar, nVersion);
  if (nVersion < 2) return;
  SerializeData::Serialize(ar, m_bInclude);
  SerializeData::Serialize(ar, m_bCaseSensitive);
  SerializeData::Serialize(ar, m_bWholeWord);
  SerializeData::Serialize(ar, m_bRequired);
  archive_exchange::Exchange(ar, m_nID);
  archive_exchange::Exchange(ar, m_nDataPropID);
  archive_exchange::ExchangeWord(ar, m_nFilterType);
  m_dataType.Serialize(ar);
  archive_exchange::Exchange(ar, m_strValue);
  SerializeData::Serialize(ar, m_vecValues, nVersion == 2);
  if (ar.IsLoading()) ParseCompareValue();
}
