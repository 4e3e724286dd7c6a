#include "io/ConditionParser.h"

#include <algorithm>
#include <cctype>

#include "io/ColumnLookup.h"
#include "io/NumberText.h"
#include "utility/DateTime.h"
#include "utility/LocaleUtils.h"

namespace {

enum Test { HAS_DATA, IS_EMPTY, CHECKED, NOT_CHECKED, EXACTLY, LESS, GREATER, CONTAINS, NEWER, OLDER, IS, IS_NOT };

struct Operator {
  const char* pszText;
  Test nTest;
};

// Longer texts before the texts they begin with ("is not checked" before
// "is not" before "is").
const Operator OPERATORS[] = {
    {"is not checked", NOT_CHECKED},
    {"is unchecked", NOT_CHECKED},
    {"is checked", CHECKED},
    {"has any data", HAS_DATA},
    {"has data", HAS_DATA},
    {"is empty", IS_EMPTY},
    {"is exactly", EXACTLY},
    {"is newer than", NEWER},
    {"is older than", OLDER},
    {"newer than", NEWER},
    {"older than", OLDER},
    {"contains", CONTAINS},
    {"is not", IS_NOT},
    {"is", IS},
    {"==", EXACTLY},
    {"=", EXACTLY},
    {"<", LESS},
    {">", GREATER},
};

// The text of each filter type as an expression writes it, by FilterType.
const char* const TEST_TEXTS[] = {"has data",       "=",       "<", ">", "is", "newer than", "older than", "is checked",
                                  "is not checked", "contains"};

bool IsSymbol(char ch) { return ch == '<' || ch == '>' || ch == '='; }

bool IsBlank(char ch) { return std::isspace(static_cast<unsigned char>(ch)) != 0; }

// Whether text at nAt begins with word (ignoring case) and the word ends
// there: a word of letters must be followed by the end or a blank.
bool StartsWithAt(const CString& text, int nAt, const char* pszWord) {
  const CString word = pszWord;
  if (text.Mid(nAt, word.GetLength()).CompareNoCase(word) != 0) return false;
  if (IsSymbol(word[0])) return true;
  const char chNext = text.GetAt(nAt + word.GetLength());
  return chNext == '\0' || IsBlank(chNext);
}

// The operator at the start of text; null when there is none.
const Operator* OperatorAt(const CString& text, int nAt) {
  for (const Operator& op : OPERATORS) {
    if (StartsWithAt(text, nAt, op.pszText)) return &op;
  }
  return nullptr;
}

CString Trimmed(CString text) { return text.Trim(); }

CString Unquoted(const CString& text) {
  const int nLength = text.GetLength();
  return nLength >= 2 && text[0] == '"' && text[nLength - 1] == '"' ? text.Mid(1, nLength - 2) : text;
}

// The comma-separated parts of text (commas inside double quotes do not
// part), trimmed and unquoted.
std::vector<CString> SplitList(const CString& text) {
  std::vector<CString> parts(1);
  bool bQuoted = false;
  for (int i = 0; i < text.GetLength(); ++i) {
    if (text[i] == '"') bQuoted = !bQuoted;
    if (text[i] == ',' && !bQuoted) {
      parts.emplace_back();
    } else {
      parts.back() += text[i];
    }
  }
  for (CString& part : parts) part = Unquoted(Trimmed(part));
  return parts;
}

// What a value must be for a comparing test on a column of nType; empty
// when any text will do or the value fits.
CString CheckValue(const CString& value, DataType::Type nType) {
  DateTime parsed;
  switch (nType) {
    case DataType::Number:
    case DataType::NumberWithText:
    case DataType::NumberWithRomanOrText:
      return number_text::IsNumberText(value, "") ? "" : "a whole number";
    case DataType::Decimal:
      return number_text::IsNumberText(value, LocaleUtils::GetNumberDecimalSeparator()) ? "" : "a number";
    case DataType::Monetary:
      return number_text::IsNumberText(value, LocaleUtils::GetCurrencyDecimalSeparator()) ? "" : "an amount";
    case DataType::Duration:
      return value.FindOneOf("0123456789") >= 0 ? "" : "a duration";
    case DataType::Date:
      return parsed.SetDate(value) ? "" : "a date";
    case DataType::Time:
      return parsed.SetTime(value) ? "" : "a time";
    default:
      return "";
  }
}

bool IsAddressBook(DataType::Type nType) {
  return nType == DataType::AddressBookSuggested || nType == DataType::AddressBookSelect;
}

// The ID of the entry or address of prop named text: its exact text
// first, else the first whose text equals it ignoring case; -1 for none.
int FindEntryID(DataProp& prop, const CString& text) {
  if (IsAddressBook(prop.GetDataType())) {
    const Address* pAddress = prop.GetAddressBook().GetByName(text, false);
    return pAddress == nullptr ? -1 : pAddress->GetID();
  }
  if (const ListItem* pEntry = prop.GetListItemByValue(text)) return pEntry->GetID();
  for (size_t i = 0; i < prop.GetListItemsCount(); ++i) {
    const ListItem* pEntry = prop.GetListItemAt(i);
    if (pEntry->GetTextRepresentation().CompareNoCase(text) == 0) return pEntry->GetID();
  }
  return -1;
}

CString Quoted(const CString& text) { return "\"" + text + "\""; }

// One expression taken apart: where the column name ends and which
// operator follows it.
class Expression {
 public:
  explicit Expression(const DataMgmt& doc) : m_doc(doc) {}

  std::unique_ptr<DataFilter> Parse(CString text, bool bRequired, CString& error) {
    text.Trim();
    bool bInclude = true;
    if (StartsWithAt(text, 0, "not")) {
      bInclude = false;
      text = Trimmed(text.Mid(3));
    }
    if (!FindColumn(text, error)) return nullptr;
    const CString value = Trimmed(text.Mid(m_nValueAt));
    std::unique_ptr<DataFilter> pFilter = MakeFilter(value, bInclude, error);
    if (pFilter) pFilter->SetRequired(bRequired);
    return pFilter;
  }

 private:
  // Sets m_pProp, m_pOperator and m_nValueAt; false with error when the
  // text names no column or no test follows it.
  bool FindColumn(const CString& text, CString& error) {
    if (text.GetAt(0) == '"') {
      const int nClose = text.Find('"', 1);
      if (nClose < 0) return Fail(error, "the column name's closing quote is missing");
      const CString name = text.Mid(1, nClose - 1);
      m_pProp = ColumnLookup::Find(m_doc, name);
      if (m_pProp == nullptr) return Fail(error, "no column " + Quoted(name));
      return FindOperator(text, nClose + 1, error);
    }
    // The longest column name the text begins with that a test follows.
    std::vector<DataProp*> columns = ColumnLookup::GetAll(m_doc);
    std::stable_sort(columns.begin(), columns.end(), [](const DataProp* a, const DataProp* b) {
      return a->GetName().GetLength() > b->GetName().GetLength();
    });
    for (DataProp* pProp : columns) {
      const int nLength = pProp->GetName().GetLength();
      const char chNext = text.GetAt(nLength);
      if (nLength == 0 || text.Left(nLength).CompareNoCase(pProp->GetName()) != 0) continue;
      if (chNext != '\0' && !IsBlank(chNext) && !IsSymbol(chNext)) continue;
      CString ignored;
      m_pProp = pProp;
      if (FindOperator(text, nLength, ignored)) return true;
    }
    return FailOnUnknownColumn(text, error);
  }

  bool FindOperator(const CString& text, int nAt, CString& error) {
    while (IsBlank(text.GetAt(nAt))) ++nAt;
    m_pOperator = OperatorAt(text, nAt);
    if (m_pOperator == nullptr) {
      return Fail(error, "no test after the column " + Quoted(m_pProp->GetName()) + " (for example \"> 1960\")");
    }
    m_nValueAt = nAt + static_cast<int>(CString(m_pOperator->pszText).GetLength());
    return true;
  }

  // The text before the first test is the name the user meant.
  static bool FailOnUnknownColumn(const CString& text, CString& error) {
    for (int i = 0; i < text.GetLength(); ++i) {
      if (!IsSymbol(text[i]) && (i == 0 || !IsBlank(text[i - 1]))) continue;
      if (OperatorAt(text, i) == nullptr) continue;
      const CString name = Unquoted(Trimmed(text.Left(i)));
      return Fail(error, name.IsEmpty() ? CString("no column before the test") : "no column " + Quoted(name));
    }
    return Fail(error, "no test in " + Quoted(text) + " (for example \"Year > 1960\")");
  }

  std::unique_ptr<DataFilter> MakeFilter(const CString& value, bool bInclude, CString& error) const {
    const DataType::Type nType = m_pProp->GetDataType();
    const bool bEntries = DataType::IsListType(nType);
    const Test nTest = m_pOperator->nTest;
    static const DataFilter::FilterType FILTER_TYPES[] = {
        DataFilter::HasAnyData,           DataFilter::HasAnyData,       DataFilter::IsChecked,
        DataFilter::IsNotChecked,         DataFilter::IsExactlyEqualTo, DataFilter::IsLessThan,
        DataFilter::IsGreaterThan,        DataFilter::Contains,         DataFilter::IsEqualToOrNewerThan,
        DataFilter::IsEqualToOrOlderThan, DataFilter::IsExactlyEqualTo, DataFilter::IsExactlyEqualTo};
    DataFilter::FilterType nFilterType = FILTER_TYPES[nTest];
    if (bEntries && (nTest == EXACTLY || nTest == IS || nTest == IS_NOT)) nFilterType = DataFilter::IsEqualTo;
    if (nTest == IS_EMPTY || nTest == IS_NOT) bInclude = !bInclude;
    if (!IsOffered(nType, nFilterType)) {
      Fail(error, "the column " + Quoted(m_pProp->GetName()) + " has no test " + Quoted(m_pOperator->pszText) +
                      " (its tests: " + OfferedTests(nType) + ")");
      return nullptr;
    }
    const bool bNeedsValue = nTest != HAS_DATA && nTest != IS_EMPTY && nTest != CHECKED && nTest != NOT_CHECKED;
    if (bNeedsValue == value.IsEmpty()) {
      Fail(error, bNeedsValue
                      ? "a value is missing after " + Quoted(m_pOperator->pszText)
                      : "nothing may follow " + Quoted(m_pOperator->pszText) + ", but " + Quoted(value) + " does");
      return nullptr;
    }
    auto pFilter = std::make_unique<DataFilter>();
    pFilter->SetDataPropID(m_pProp->GetID());
    pFilter->SetDataType(nType);
    pFilter->SetFilterType(nFilterType);
    pFilter->SetInclude(bInclude);
    if (nFilterType == DataFilter::IsEqualTo) {
      std::vector<int> ids;
      for (const CString& name : SplitList(value)) {
        ids.push_back(FindEntryID(*m_pProp, name));
        if (ids.back() < 0) {
          Fail(error, "the column " + Quoted(m_pProp->GetName()) + " has no entry " + Quoted(name));
          return nullptr;
        }
      }
      pFilter->SetValue(ids);
      return pFilter;
    }
    const CString compare = Unquoted(value);
    const CString expected = nFilterType == DataFilter::Contains ? CString() : CheckValue(compare, nType);
    if (!expected.IsEmpty()) {
      Fail(error, Quoted(compare) + " is not " + expected + " (the column " + Quoted(m_pProp->GetName()) + ")");
      return nullptr;
    }
    pFilter->SetValue(compare);
    return pFilter;
  }

  static bool IsOffered(DataType::Type nType, DataFilter::FilterType nFilterType) {
    std::vector<DataFilter::FilterType> offered;
    DataFilter::GetValidFilterTypesForDataType(nType, offered);
    return std::find(offered.begin(), offered.end(), nFilterType) != offered.end();
  }

  static CString OfferedTests(DataType::Type nType) {
    std::vector<DataFilter::FilterType> offered;
    DataFilter::GetValidFilterTypesForDataType(nType, offered);
    CString tests;
    for (DataFilter::FilterType nFilterType : offered) {
      tests += (tests.IsEmpty() ? "" : ", ") + CString(TEST_TEXTS[nFilterType]);
    }
    return tests.IsEmpty() ? CString("none") : tests;
  }

  static bool Fail(CString& error, const CString& text) {
    error = text;
    return false;
  }

  const DataMgmt& m_doc;
  DataProp* m_pProp = nullptr;
  const Operator* m_pOperator = nullptr;
  int m_nValueAt = 0;
};

}  // namespace

std::unique_ptr<DataFilter> ConditionParser::Parse(const CString& expression, bool bRequired, CString& error) const {
  return Expression(m_doc).Parse(expression, bRequired, error);
}

bool ConditionParser::AddTo(DataFilterMgr& filters, const std::vector<CString>& required,
                            const std::vector<CString>& optional, CString& error) const {
  for (int nGroup = 0; nGroup < 2; ++nGroup) {
    for (const CString& expression : nGroup == 0 ? required : optional) {
      CString why;
      std::unique_ptr<DataFilter> pFilter = Parse(expression, nGroup == 0, why);
      if (!pFilter) {
        error = Quoted(expression) + ": " + why;
        return false;
      }
      filters.Add(pFilter.release(), true);
    }
  }
  return true;
}
