#include "io/CsvExport.h"

#include <csv.h>

#include "io/ColumnLookup.h"

namespace {

const size_t PROGRESS_STEP = 1024;

bool NeedsQuotes(const std::string& field) {
  return !field.empty() && (field.find_first_of(",\"\r\n") != std::string::npos || field.front() == ' ' ||
                            field.front() == '\t' || field.back() == ' ' || field.back() == '\t');
}

}  // namespace

void CsvExport::AppendRecord(std::string& out, const std::vector<CString>& fields) {
  for (size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) out += ',';
    const std::string& field = fields[i].GetStdString();
    if (!NeedsQuotes(field)) {
      out += field;
      continue;
    }
    const size_t nStart = out.size();
    out.resize(nStart + field.size() * 2 + 2);
    out.resize(nStart + csv_write(&out[nStart], out.size() - nStart, field.data(), field.size()));
  }
  out += "\r\n";
}

std::string CsvExport::Write(const DataMgmt& doc, const DataFilterMgr& filters, const Progress& progress) {
  const std::vector<int> columns = ColumnLookup::GetShownIDs(doc);
  std::vector<CString> fields;
  for (int nID : columns) fields.push_back(doc.GetDataPropMgr().GetByID(nID)->GetName());
  std::string out;
  AppendRecord(out, fields);
  const DataItemMgr& items = doc.GetDataItemMgr();
  for (size_t i = 0; i < items.GetCount(); ++i) {
    const DataItem& item = *items.GetAt(i);
    if (filters.PassesFilters(item)) {
      fields.clear();
      for (int nID : columns) fields.push_back(doc.GetTextRepresentation(item, nID, true));
      AppendRecord(out, fields);
    }
    if (progress && ((i + 1) % PROGRESS_STEP == 0 || i + 1 == items.GetCount())) progress(i + 1, items.GetCount());
  }
  return out;
}
