#include "io/CsvImport.h"

#include <csv.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <new>

#include "io/NumberText.h"
#include "utility/DateTime.h"
#include "utility/LocaleUtils.h"

namespace {

const size_t PROGRESS_STEP = 1024;
const char UTF8_BOM[] = "\xEF\xBB\xBF";

// The records libcsv reports, field by field.
struct Records {
  std::vector<std::vector<CString>> rows;
  std::vector<CString> current;
  bool bOutOfMemory = false;
};

void OnField(void* pField, size_t nSize, void* pData) {
  auto& records = *static_cast<Records*>(pData);
  try {
    records.current.push_back(
        nSize == 0 ? CString()
                   : CString(static_cast<const char*>(pField), static_cast<int>(std::min<size_t>(nSize, INT_MAX))));
  } catch (const std::bad_alloc&) {
    records.bOutOfMemory = true;
  }
}

void OnRecordEnd(int, void* pData) {
  auto& records = *static_cast<Records*>(pData);
  try {
    records.rows.push_back(std::move(records.current));
  } catch (const std::bad_alloc&) {
    records.bOutOfMemory = true;
  }
  records.current.clear();
}

bool ParseCsv(const std::string& csv, Records& records, CString& error) {
  csv_parser parser;
  if (csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI) != 0) {
    error = "out of memory";
    return false;
  }
  const size_t nStart = csv.compare(0, 3, UTF8_BOM) == 0 ? 3 : 0;
  const size_t nParsed = csv_parse(&parser, csv.data() + nStart, csv.size() - nStart, OnField, OnRecordEnd, &records);
  const bool bParsed = nParsed == csv.size() - nStart;
  const bool bFinished = bParsed && csv_fini(&parser, OnField, OnRecordEnd, &records) == 0;
  if (!bFinished) {
    const size_t nLine = 1 + static_cast<size_t>(std::count(csv.begin(), csv.begin() + nStart + nParsed, '\n'));
    error = csv_error(&parser) == CSV_EPARSE
                ? CString(bParsed ? "not CSV: a quoted field is not closed" : "not CSV: a double quote out of place")
                : CString(csv_strerror(csv_error(&parser)));
    if (!bParsed) error.AppendFormat(" at line %zu", nLine);
  } else if (records.bOutOfMemory) {
    error = "out of memory";
  }
  csv_free(&parser);
  return bFinished && !records.bOutOfMemory;
}

bool IsYesNoWord(const CString& text) {
  for (const char* pszWord : {"yes", "no", "y", "n", "true", "false"}) {
    if (text.CompareNoCase(pszWord) == 0) return true;
  }
  return false;
}

bool FitsInt(const CString& text) {
  CString digits = text;
  digits.Remove(LocaleUtils::GetNumberThousandsSeparator().GetAt(0));
  const long long nValue = std::strtoll(digits, nullptr, 10);
  return digits.GetLength() <= 12 && nValue >= INT_MIN && nValue <= INT_MAX;
}

// The "select from list" types and the "suggested as typed" twin that
// takes unknown values as new entries.
DataType::Type SuggestedTwin(DataType::Type nType) {
  switch (nType) {
    case DataType::NumberListSelect:
      return DataType::NumberListSuggested;
    case DataType::ValueListSelect:
      return DataType::ValueListSuggested;
    case DataType::DescValueListSelect:
      return DataType::DescValueListSuggested;
    case DataType::DecimalListSelect:
      return DataType::DecimalListSuggested;
    case DataType::AddressBookSelect:
      return DataType::AddressBookSuggested;
    default:
      return nType;
  }
}

bool HoldsValues(DataType::Type nType) {
  return !DataType::GetText(nType).IsEmpty() && nType != DataType::EmbeddedThumbnail && nType != DataType::Icon;
}

}  // namespace

DataType::Type CsvImport::InferType(const std::vector<CString>& values) {
  bool bAny = false;
  bool bYesNo = true;
  bool bWhole = true;
  bool bNumber = true;
  bool bDate = true;
  const CString decimal = LocaleUtils::GetNumberDecimalSeparator();
  for (CString value : values) {
    value.Trim();
    if (value.IsEmpty()) continue;
    bAny = true;
    bYesNo = bYesNo && IsYesNoWord(value);
    bNumber = bNumber && number_text::IsNumberText(value, decimal);
    bWhole = bWhole && bNumber && number_text::IsNumberText(value, "") && FitsInt(value);
    DateTime date;
    bDate = bDate && date.SetDate(value);
  }
  if (!bAny) return DataType::Text;
  if (bYesNo) return DataType::YesNo;
  if (bWhole) return DataType::Number;
  if (bNumber) return DataType::Decimal;
  return bDate ? DataType::Date : DataType::Text;
}

bool CsvImport::Read(const std::string& csv, DataMgmt& doc, CString& error, const Progress& progress) {
  m_vecRejections.clear();
  doc.DeleteAll(true, false);
  Records records;
  if (!ParseCsv(csv, records, error)) return false;
  if (records.rows.empty()) {
    error = "no heading: the CSV is empty";
    return false;
  }
  std::vector<int> ids;
  if (!AddColumns(doc, records.rows, ids, error)) {
    doc.DeleteAll(true, false);
    return false;
  }
  const size_t nRecords = records.rows.size();
  for (size_t r = 1; r < nRecords; ++r) {
    EnterRecord(doc, records.rows[r], r + 1, ids);
    if (progress && (r % PROGRESS_STEP == 0 || r + 1 == nRecords)) progress(r, nRecords - 1);
  }
  // The select lists took their values as entries; now they offer them.
  for (size_t c = 0; c < ids.size(); ++c) {
    DataProp& prop = *doc.GetDataPropMgr().GetByID(ids[c]);
    for (const auto& type : m_mapTypes) {
      if (type.first.CompareNoCase(prop.GetName()) == 0) prop.SetDataType(type.second);
    }
  }
  if (!m_bSkipBad && !m_vecRejections.empty()) {
    error.Format("%zu value%s rejected", m_vecRejections.size(), m_vecRejections.size() == 1 ? " was" : "s were");
    doc.DeleteAll(true, false);
    return false;
  }
  return true;
}

bool CsvImport::AddColumns(DataMgmt& doc, const std::vector<std::vector<CString>>& records, std::vector<int>& ids,
                           CString& error) {
  const std::vector<CString>& heading = records[0];
  for (const auto& type : m_mapTypes) {
    const bool bInHeading = std::any_of(heading.begin(), heading.end(),
                                        [&](const CString& name) { return name.CompareNoCase(type.first) == 0; });
    if (!bInHeading) {
      error = "no column \"" + type.first + "\" in the heading";
      return false;
    }
    if (!HoldsValues(type.second)) {
      error = "the type of \"" + type.first + "\" holds no values";
      return false;
    }
  }
  const CString thousands = LocaleUtils::GetNumberThousandsSeparator();
  for (size_t c = 0; c < heading.size(); ++c) {
    std::vector<CString> values;
    bool bGrouped = false;
    for (size_t r = 1; r < records.size(); ++r) {
      values.push_back(c < records[r].size() ? records[r][c] : CString());
      bGrouped = bGrouped || values.back().Find(thousands) >= 0;
    }
    DataType::Type nType = InferType(values);
    for (const auto& type : m_mapTypes) {
      if (type.first.CompareNoCase(heading[c]) == 0) nType = type.second;
    }
    auto* pProp = new DataProp;
    CString name = heading[c];
    if (name.Trim().IsEmpty()) name.Format("Column %zu", c + 1);
    pProp->SetName(name);
    pProp->SetDataType(SuggestedTwin(nType));
    // Numbers are grouped in threes only when the file grouped them.
    if (DataType::IsNumberType(nType)) pProp->SetThousandsSep(bGrouped);
    doc.AddDataProp(pProp, true, false, false, false);
    ids.push_back(pProp->GetID());
  }
  return true;
}

void CsvImport::EnterRecord(DataMgmt& doc, const std::vector<CString>& record, size_t nRow,
                            const std::vector<int>& ids) {
  DataItem& item = *doc.CreateDataItem(nullptr, true, true);
  for (size_t c = 0; c < record.size(); ++c) {
    const CString& text = record[c];
    if (CString(text).Trim().IsEmpty()) continue;
    if (c >= ids.size()) {
      m_vecRejections.push_back({nRow, c + 1, CString(), text, "the heading has no column here"});
      continue;
    }
    CString normalized;
    if (doc.EnterValue(item, ids[c], text, normalized) != DataMgmt::EntryRejected) continue;
    const DataProp& prop = *doc.GetDataPropMgr().GetByID(ids[c]);
    m_vecRejections.push_back(
        {nRow, c + 1, prop.GetName(), text, "not accepted as " + DataType::GetText(prop.GetDataType())});
  }
}
