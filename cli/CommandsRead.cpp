// The commands that read a document and print what they find: info, show,
// find and check.
#include <iostream>

#include "DataMgr/document/DataFind.h"
#include "DataMgr/sort/SortOrder.h"
#include "cli/CommandSupport.h"
#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "cli/TablePrinter.h"
#include "io/ColumnLookup.h"
#include "io/CsvExport.h"
#include "io/DocumentCheck.h"
#include "io/DocumentInfo.h"
#include "io/DocumentView.h"
#include "io/TypeNames.h"
#include "utility/StringUtils.h"

namespace commands {

namespace {

// The entries of a list column or the addresses of an address book; -1
// for other columns.
long EntryCount(const DataProp& prop) {
  const DataType::Type nType = prop.GetDataType();
  if (nType == DataType::AddressBookSuggested || nType == DataType::AddressBookSelect) {
    return static_cast<long>(prop.GetAddressBook().GetCount());
  }
  return DataType::IsListType(nType) ? static_cast<long>(prop.GetListItemsCount()) : -1;
}

std::string TypeName(DataType::Type nType) {
  const CString name = TypeNames::GetName(nType);
  return name.IsEmpty() ? std::to_string(static_cast<int>(nType)) : name.GetStdString();
}

std::string Plural(size_t nCount, const char* pszOne, const char* pszMany) {
  return std::to_string(nCount) + " " + (nCount == 1 ? pszOne : pszMany);
}

size_t CountSubItems(const DataMgmt& doc) {
  size_t nCount = 0;
  for (size_t i = 0; i < doc.GetDataItemMgr().GetCount(); ++i) {
    nCount += doc.GetDataItemMgr().GetAt(i)->GetSubItemsMgr().GetCount();
  }
  return nCount;
}

void PrintView(const DocumentView& view, const std::string& format, bool bSubItems) {
  const auto& columns = view.GetColumns();
  if (format == "json") {
    Json rows = Json::array();
    for (const DocumentView::Row& row : view.GetRows()) {
      Json values = Json::object();
      for (size_t c = 0; c < columns.size(); ++c) values[columns[c].name.GetStdString()] = row.texts[c].GetStdString();
      if (row.nSubItemID < 0) {
        rows.push_back(Json{{"item", row.nItemID}, {"values", std::move(values)}});
      } else {
        if (!rows.back().contains("subItems")) rows.back()["subItems"] = Json::array();
        rows.back()["subItems"].push_back(Json{{"subItem", row.nSubItemID}, {"values", std::move(values)}});
      }
    }
    PrintJson(Json{{"passing", view.GetPassingCount()}, {"rows", std::move(rows)}});
    return;
  }
  if (format == "csv") {
    std::vector<CString> fields;
    if (bSubItems) fields = {"Item", "Sub-item"};
    for (const auto& column : columns) fields.push_back(column.name);
    std::string out;
    CsvExport::AppendRecord(out, fields);
    for (const DocumentView::Row& row : view.GetRows()) {
      fields.clear();
      if (bSubItems) {
        fields.push_back(CString(std::to_string(row.nItemID)));
        fields.push_back(row.nSubItemID < 0 ? CString() : CString(std::to_string(row.nSubItemID)));
      }
      fields.insert(fields.end(), row.texts.begin(), row.texts.end());
      CsvExport::AppendRecord(out, fields);
    }
    std::cout << out;
    return;
  }
  std::vector<std::string> headings;
  std::vector<bool> right;
  for (const auto& column : columns) {
    headings.push_back(column.name.GetStdString());
    right.push_back(column.bNumeric);
  }
  TablePrinter table(headings, right);
  size_t nItems = 0;
  for (const DocumentView::Row& row : view.GetRows()) {
    std::vector<std::string> texts(row.texts.begin(), row.texts.end());
    if (row.nSubItemID >= 0 && !texts.empty()) texts[0] = "  " + texts[0];
    if (row.nSubItemID < 0) ++nItems;
    table.AddRow(std::move(texts));
  }
  table.Print(std::cout, TablePrinter::GetOutputWidth());
  const std::string passing = Plural(view.GetPassingCount(), "item", "items");
  std::cout << (nItems < view.GetPassingCount() ? std::to_string(nItems) + " of " + passing : passing) << '\n';
}

// The cell's text as search sees it, the match in brackets.
std::string MarkedText(const CString& text, const DataFind& hit, int nLength) {
  std::string shown = text.GetStdString();
  for (char& ch : shown) {
    if (ch == '\r' || ch == '\n') ch = ' ';
  }
  const int nStart = hit.GetStartIndex();
  if (nStart < 0) return "[" + shown + "]";
  if (static_cast<size_t>(nStart) > shown.size()) return shown;
  return shown.substr(0, nStart) + "[" + shown.substr(nStart, nLength) + "]" + shown.substr(nStart + nLength);
}

}  // namespace

int Info(const std::string& file, bool bJson) {
  DataMgmt doc;
  LoadDocument(file, doc);
  DocumentInfo::Versions versions;
  DocumentInfo::ReadVersions(file, versions);
  const std::vector<DataProp*> columns = ColumnLookup::GetAll(doc);
  const size_t nItems = doc.GetDataItemMgr().GetCount();
  const size_t nSubItems = CountSubItems(doc);
  if (bJson) {
    Json list = Json::array();
    for (const DataProp* pProp : columns) {
      Json flags = Json::object();
      for (const auto& flag : DocumentInfo::GetChangedFlags(*pProp)) flags[flag.first.GetStdString()] = flag.second;
      Json column = {{"id", pProp->GetID()},
                     {"name", pProp->GetName().GetStdString()},
                     {"type", TypeName(pProp->GetDataType())},
                     {"flags", std::move(flags)}};
      if (EntryCount(*pProp) >= 0) column["entries"] = EntryCount(*pProp);
      list.push_back(std::move(column));
    }
    PrintJson(Json{
        {"file", file},
        {"versions", {{"document", versions.nDocument}, {"columns", versions.nColumns}, {"items", versions.nItems}}},
        {"items", nItems},
        {"subItems", nSubItems},
        {"columns", std::move(list)}});
    return EXIT_OK;
  }
  std::cout << file << ": document version " << versions.nDocument << ", columns version " << versions.nColumns
            << ", items version " << versions.nItems << "\n"
            << Plural(nItems, "item", "items") << ", " << Plural(nSubItems, "sub-item", "sub-items") << ", "
            << Plural(columns.size(), "column", "columns") << "\n\n";
  TablePrinter table({"ID", "Name", "Type", "Entries", "Flags"}, {true, false, false, true, false});
  for (const DataProp* pProp : columns) {
    std::string flags;
    for (const auto& flag : DocumentInfo::GetChangedFlags(*pProp)) {
      flags += (flags.empty() ? "" : ", ") + flag.first.GetStdString() + (flag.second ? "=yes" : "=no");
    }
    const long nEntries = EntryCount(*pProp);
    table.AddRow({std::to_string(pProp->GetID()), pProp->GetName().GetStdString(), TypeName(pProp->GetDataType()),
                  nEntries < 0 ? "" : std::to_string(nEntries), flags});
  }
  table.Print(std::cout, TablePrinter::GetOutputWidth());
  return EXIT_OK;
}

int Show(const ShowOptions& options) {
  DataMgmt doc;
  DataFilterMgr filters;
  LoadSelecting(options.file, options.selection, doc, filters);
  SortOrder order;
  CString error;
  for (const std::string& key : options.sortKeys) {
    if (!DocumentView::AddSortKey(doc, key, order, error)) {
      throw CommandError(EXIT_USAGE, options.file + ": --sort " + Quoted(key) + ": " + error.GetStdString());
    }
  }
  const std::vector<CString> names(options.columns.begin(), options.columns.end());
  DocumentView view;
  if (!view.Build(doc, names, filters, order, options.nLimit, options.bSubItems, error)) {
    throw CommandError(EXIT_USAGE, options.file + ": --columns: " + error.GetStdString());
  }
  PrintView(view, options.format, options.bSubItems);
  return EXIT_OK;
}

int Find(const FindOptions& options) {
  DataMgmt doc;
  LoadDocument(options.file, doc);
  std::vector<DataFind> hits;
  doc.Find(options.text.c_str(), options.bMatchCase, options.bWholeWord, options.bAllWords, hits);
  // The match is as long as the text searched for, or its first word.
  int nLength = CString(options.text).GetLength();
  if (options.bAllWords) {
    TextArray words;
    StringUtils::GetWordsWithDoubleQuotes(options.text.c_str(), words);
    nLength = words.GetAt(0).GetLength();
  }
  Json list = Json::array();
  for (const DataFind& hit : hits) {
    DataItem* pItem = nullptr;
    DataSubItem* pSubItem = nullptr;
    doc.Find(hit, pItem, pSubItem);
    const Data& record = pSubItem != nullptr ? static_cast<const Data&>(*pSubItem) : *pItem;
    const CString text = doc.GetTextRepresentation(record, hit.GetDataPropID(), true);
    const std::string name = doc.GetDataPropMgr().GetByID(hit.GetDataPropID())->GetName().GetStdString();
    if (options.bJson) {
      list.push_back(Json{{"item", hit.GetDataItemID()},
                          {"subItem", pSubItem != nullptr ? Json(hit.GetDataSubItemID()) : Json()},
                          {"column", hit.GetDataPropID()},
                          {"columnName", name},
                          {"position", hit.GetStartIndex()},
                          {"length", hit.GetStartIndex() < 0 ? text.GetLength() : nLength},
                          {"text", text.GetStdString()}});
      continue;
    }
    std::cout << "item " << hit.GetDataItemID();
    if (pSubItem != nullptr) std::cout << ", sub-item " << hit.GetDataSubItemID();
    std::cout << ", " << Quoted(name);
    if (hit.GetStartIndex() >= 0) std::cout << ", at " << hit.GetStartIndex();
    std::cout << ": " << MarkedText(text, hit, nLength) << '\n';
  }
  if (options.bJson) {
    PrintJson(list);
  } else {
    std::cout << (hits.empty() ? "no hits" : Plural(hits.size(), "hit", "hits")) << '\n';
  }
  return EXIT_OK;
}

int Check(const std::string& file, bool bJson) {
  DataMgmt doc;
  LoadDocument(file, doc);
  std::vector<DocumentCheck::Problem> problems;
  {
    ProgressBar bar("Checking");
    problems = DocumentCheck::Run(doc, bar.Callback());
  }
  static const char* const KIND_NAMES[] = {"usageCount", "missingEntry", "duplicateID", "parentID"};
  if (bJson) {
    Json list = Json::array();
    for (const auto& problem : problems) {
      list.push_back(Json{{"kind", KIND_NAMES[problem.nKind]}, {"text", problem.text.GetStdString()}});
    }
    PrintJson(Json{{"file", file}, {"problems", std::move(list)}});
  } else {
    for (const auto& problem : problems) std::cout << problem.text << '\n';
    std::cout << file << ": "
              << (problems.empty() ? "no problems found" : Plural(problems.size(), "problem", "problems") + " found")
              << '\n';
  }
  return problems.empty() ? EXIT_OK : EXIT_FAILED;
}

}  // namespace commands
