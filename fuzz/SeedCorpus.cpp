// Writes the seed corpus of every fuzz target: a few valid archives stored
// by the library itself, so that the fuzzers start from real layouts. Run as
//   vaxo057-fuzz-seeds <corpus folder>
// it writes <corpus folder>/<target>/seed-<n> for each target, creating the
// folders it needs and overwriting earlier seeds.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "DataMgr/document/DataFindMgr.h"
#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "DataMgr/filter/HighlightFilterMgr.h"
#include "DataMgr/records/DataItemMgr.h"
#include "DataMgr/records/DataSubItem.h"
#include "DataMgr/records/DataSubItemMgr.h"
#include "DataMgr/report/Report.h"
#include "DataMgr/report/WebLinkMgr.h"
#include "DataMgr/report/WebReport.h"
#include "DataMgr/schema/Address.h"
#include "DataMgr/schema/AddressBook.h"
#include "DataMgr/schema/DataProp.h"
#include "DataMgr/schema/DataPropMgr.h"
#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/schema/ListItemTextDesc.h"
#include "DataMgr/sort/SortOrderMgr.h"
#include "fuzz/FuzzLoad.h"
#ifdef VAXO057_FUZZ_IO
#include "DataMgr/filter/DataFilterMgr.h"
#include "io/CsvExport.h"
#include "io/DocumentJson.h"
#endif

namespace {

using fuzz::Bytes;
using fuzz::StoreBytes;

void FillValues(DataRecord& record, int nSeed) {
  record.SetData(1, CString("plain text"), false);
  record.RegisterDataProp(2, CString("flagged text"), true);
  record.SetData(3, nSeed, false);
  record.SetData(4, true, false);
  record.SetData(5, 2.5 * nSeed, false);
  record.SetData(6, Money(1234 * nSeed), false);
  record.SetData(7, DateTime(2024, 2, 29, 13, 45, 10), false);
}

void FillSubItems(DataSubItemMgr& subItems, int nParentID) {
  for (int i = 0; i < 2; ++i) {
    DataSubItem* pSubItem = subItems.Create(nullptr, true, true);
    pSubItem->SetParentID(nParentID);
    FillValues(*pSubItem, i + 1);
  }
  subItems.SetSort(true);
}

Address* MakeAddress(int nSeed) {
  Address* pAddress = new Address;
  pAddress->SetData(Address::Name, CString("Name ") + CString(std::to_string(nSeed)));
  pAddress->SetData(Address::City, CString("City"));
  pAddress->SetData(Address::SpecialDate, CString("2024-01-02"));
  pAddress->SetUsageCount(nSeed);
  return pAddress;
}

void FillEntries(DataProp& prop) {
  for (int i = 0; i < 3; ++i) {
    ListItem* pEntry = prop.CreateListItem(true, -1);
    pEntry->SetTextRepresentation(CString(std::to_string(i + 1)));
    pEntry->RegisterUsage();
  }
}

// Columns of the three entry layouts: none, list entries, address book.
std::vector<Bytes> ColumnSeeds() {
  std::vector<Bytes> seeds;
  for (DataType::Type nType : {DataType::Text, DataType::NumberListSelect, DataType::DecimalListSuggested,
                               DataType::DescValueListSelect, DataType::AddressBookSuggested}) {
    DataProp prop;
    prop.SetID(5000 + nType);
    prop.SetDataType(nType);
    prop.SetName(CString("Column"));
    prop.SetPrefix(CString("<"));
    if (nType == DataType::AddressBookSuggested) {
      prop.GetAddressBook().Add(MakeAddress(1), true);
      prop.GetAddressBook().Add(MakeAddress(2), true);
    } else if (nType != DataType::Text) {
      FillEntries(prop);
    }
    seeds.push_back(StoreBytes(prop));
  }
  return seeds;
}

std::vector<Bytes> ValueStoreSeeds() {
  DataSubItem empty;
  DataSubItem full;
  full.SetID(7);
  full.SetParentID(3);
  FillValues(full, 1);
  return {StoreBytes(empty), StoreBytes(full)};
}

std::vector<Bytes> DataItemSeeds() {
  DataItemMgr items;
  DataItem* pItem = items.Create(nullptr, true, true);
  FillValues(*pItem, 1);
  FillSubItems(pItem->GetSubItemsMgr(), pItem->GetID());
  return {StoreBytes(*pItem)};
}

std::vector<Bytes> DataItemMgrSeeds() {
  DataItemMgr items;
  const Bytes empty = StoreBytes(items);
  for (int i = 0; i < 3; ++i) {
    DataItem* pItem = items.Create(nullptr, true, true);
    FillValues(*pItem, i);
    if (i == 1) FillSubItems(pItem->GetSubItemsMgr(), pItem->GetID());
  }
  return {empty, StoreBytes(items)};
}

std::vector<Bytes> DataSubItemMgrSeeds() {
  DataSubItemMgr subItems;
  FillSubItems(subItems, 4);
  return {StoreBytes(subItems)};
}

std::vector<Bytes> AddressSeeds() {
  Address empty;
  Address* pAddress = MakeAddress(3);
  const Bytes full = StoreBytes(*pAddress);
  delete pAddress;
  return {StoreBytes(empty), full};
}

std::vector<Bytes> AddressBookSeeds() {
  AddressBook book;
  for (int i = 0; i < 3; ++i) book.Add(MakeAddress(i), true);
  return {StoreBytes(book)};
}

Bytes Selected(BYTE nClass, const Bytes& archive) {
  Bytes bytes{nClass};
  bytes.insert(bytes.end(), archive.begin(), archive.end());
  return bytes;
}

std::vector<Bytes> ListItemSeeds() {
  ListItemNumber number;
  number.SetID(4);
  number.SetNumber(-17);
  ListItemDouble decimal;
  decimal.SetNumber(3.25);
  ListItemText text;
  text.SetTextRepresentation(CString("value"));
  ListItemTextDesc desc;
  desc.SetTextRepresentation(CString("key"));
  desc.SetDesc(CString("description"));
  return {Selected(0, StoreBytes(number)), Selected(1, StoreBytes(decimal)), Selected(2, StoreBytes(text)),
          Selected(3, StoreBytes(desc))};
}

std::vector<Bytes> DataPropMgrSeeds() {
  DataPropMgr registry;
  registry.SetID(9);
  for (DataType::Type nType : {DataType::Text, DataType::ValueListSelect}) {
    DataProp* pProp = new DataProp;
    pProp->SetDataType(nType);
    if (nType == DataType::ValueListSelect) FillEntries(*pProp);
    registry.AddApp(pProp, true);
  }
  registry.ClearAppSlot(3);
  DataProp* pUser = new DataProp;
  pUser->SetDataType(DataType::AddressBookSelect);
  pUser->GetAddressBook().Add(MakeAddress(5), true);
  registry.AddUser(pUser, true);
  return {StoreBytes(registry)};
}

// A condition of each value form: a text, a list selection, none.
void FillFilters(DataFilterMgr& set) {
  DataFilter* pText = new DataFilter;
  pText->SetDataPropID(5000);
  pText->SetFilterType(DataFilter::Contains);
  pText->SetValue(CString("a*z"));
  set.Add(pText, true);
  DataFilter* pList = new DataFilter;
  pList->SetDataPropID(5001);
  pList->SetDataType(DataType::ValueListSelect);
  pList->SetFilterType(DataFilter::IsEqualTo);
  pList->SetValue(std::vector<int>{3, 1});
  pList->SetRequired(false);
  set.Add(pList, true);
}

std::vector<Bytes> DataFilterSeeds() {
  DataFilterMgr set;
  FillFilters(set);
  return {StoreBytes(*set.GetAt(0)), StoreBytes(*set.GetAt(1))};
}

std::vector<Bytes> DataFilterMgrSeeds() {
  DataFilterMgr set;
  const Bytes empty = StoreBytes(set);
  FillFilters(set);
  return {empty, StoreBytes(set)};
}

void FillHighlightRules(HighlightFilterMgr& set) {
  HighlightFilter* pRule = set.CreateEntry(true);
  pRule->SetDataPropID(5002);
  pRule->SetDataType(DataType::Number);
  pRule->SetFilterType(DataFilter::IsGreaterThan);
  pRule->SetValue(CString("10"));
  pRule->SetName(CString("large"));
  set.AddFileDoesntExistFilter(5003);
  set.AddTodayFilter(5004);
  set.SetMustPassAllFilters(true);
}

std::vector<Bytes> HighlightFilterSeeds() {
  HighlightFilterMgr set;
  FillHighlightRules(set);
  return {StoreBytes(*dynamic_cast<HighlightFilter*>(set.GetAt(0))),
          StoreBytes(*dynamic_cast<HighlightFilter*>(set.GetAt(1)))};
}

std::vector<Bytes> HighlightFilterMgrSeeds() {
  HighlightFilterMgr set;
  const Bytes empty = StoreBytes(set);
  FillHighlightRules(set);
  return {empty, StoreBytes(set)};
}

// Sort orders of no key, one key and three keys, and a set holding them.
std::vector<Bytes> SortOrderSeeds() {
  std::vector<Bytes> seeds;
  SortOrder order;
  order.SetID(2);
  order.SetName(CString("By name"));
  for (int nColumn : {-1, 5000, 7}) {
    if (nColumn >= 0) order.AddDataPropID(nColumn, nColumn % 2 == 0, nColumn > 5000);
    seeds.push_back(StoreBytes(order));
  }
  return seeds;
}

std::vector<Bytes> SortOrderMgrSeeds() {
  SortOrderMgr set;
  const Bytes empty = StoreBytes(set);
  for (int i = 0; i < 3; ++i) {
    SortOrder* pOrder = set.Create(true, nullptr);
    pOrder->SetName(CString("Order ") + CString(std::to_string(i)));
    pOrder->AddDataPropID(5000 + i, i != 1, i == 2);
  }
  return {empty, StoreBytes(set)};
}

// A report with columns, a sort order and filters; a web report of it with
// two levels and own filters; a few links.
void FillReport(Report& report) {
  report.SetID(3);
  report.SetName(CString("Books"));
  report.SetDesc(CString("all books"));
  report.AddDataPropID(5000);
  report.AddDataPropID(5001);
  SortOrder order;
  order.AddDataPropID(5000, true, false);
  report.SetSortOrder(order);
  DataFilterMgr filters;
  FillFilters(filters);
  for (size_t i = 0; i < filters.GetCount(); ++i) report.AddFilter(new DataFilter(*filters.GetAt(i)));
}

std::vector<Bytes> ReportSeeds() {
  Report report;
  const Bytes empty = StoreBytes(report);
  FillReport(report);
  return {empty, StoreBytes(report)};
}

std::vector<Bytes> WebReportSeeds() {
  WebReport report;
  const Bytes plain = StoreBytes(report);
  FillReport(report);
  report.SetBaseFileName(CString("index.html"), false);
  report.SetOutputDir(CString("/out/"), false);
  report.SetLevelCount(2);
  report.GetLevel(2)->SetTemplateFile(CString("detail.html"));
  SortOrder order;
  order.AddDataPropID(5001, false, true);
  report.GetLevel(2)->SetSortOrder(order);
  report.AddNewRepFilter(new DataFilter(*report.GetFilterAt(0)));
  return {plain, StoreBytes(report)};
}

std::vector<Bytes> WebLinkMgrSeeds() {
  WebLinkMgr links;
  const Bytes empty = StoreBytes(links);
  for (const char* pszName : {"b", "A", "c"}) {
    WebLink link(CString(pszName), CString("https://example.org/") + pszName);
    links.Add(link);
  }
  return {empty, StoreBytes(links)};
}

// An empty list, and a hit in an item and one in a sub-item with the
// host's fields.
std::vector<Bytes> DataFindMgrSeeds() {
  DataFindMgr hits;
  const Bytes empty = StoreBytes(hits);
  DataFind hit;
  hit.SetID(1);
  hit.SetDataItemID(4);
  hit.SetDataPropID(5000);
  hit.SetStartIndex(2);
  hits.Add(hit);
  hit.SetID(2);
  hit.SetDataSubItemID(0);
  hit.SetLineCount(3);
  hit.SetFilePath(CString("C:\\notes\\a.txt"));
  hits.Add(hit);
  return {empty, StoreBytes(hits)};
}

// An empty document and one with a column of each entry layout and items
// entered as text, one with sub-items.
std::vector<Bytes> DocumentSeeds() {
  DataMgmt empty;
  DataMgmt doc;
  doc.SetMRUExportPath(CString("/exports/"));
  std::vector<int> columns;
  for (DataType::Type nType : {DataType::Text, DataType::Monetary, DataType::ValueListSuggested,
                               DataType::AddressBookSuggested, DataType::Date}) {
    DataProp* pProp = new DataProp;
    pProp->SetDataType(nType);
    pProp->SetName(DataType::GetText(nType));
    doc.AddDataProp(pProp, true, false, false, false);
    columns.push_back(pProp->GetID());
  }
  for (const char* pszValue : {"12", "Ann", "2024-02-29"}) {
    DataItem* pItem = doc.CreateDataItem(nullptr, true, true);
    for (int nID : columns) {
      bool bRedisplay = false;
      doc.SetData(*pItem, nID, CString(pszValue), bRedisplay, true);
    }
  }
  FillSubItems(doc.GetDataItemMgr().GetAt(0)->GetSubItemsMgr(), doc.GetDataItemMgr().GetAt(0)->GetID());
  return {StoreBytes(empty), StoreBytes(doc)};
}

#ifdef VAXO057_FUZZ_IO
Bytes BytesOf(const std::string& text) { return Bytes(text.begin(), text.end()); }

// The document seeds as JSON, indented and on one line.
std::vector<Bytes> JsonSeeds() {
  std::vector<Bytes> seeds;
  for (const Bytes& archive : DocumentSeeds()) {
    DataMgmt doc;
    fuzz::LoadBytes(archive.data(), archive.size(), doc);
    seeds.push_back(BytesOf(DocumentJson::Write(doc, true)));
    seeds.push_back(BytesOf(DocumentJson::Write(doc, false)));
  }
  return seeds;
}

// The document seeds as CSV, and a CSV of quoted fields and line breaks.
std::vector<Bytes> CsvSeeds() {
  std::vector<Bytes> seeds = {BytesOf("Title,Year,Read\r\n\"Dune, a novel\",1965,yes\r\n\"Two\nlines\",,no\r\n")};
  for (const Bytes& archive : DocumentSeeds()) {
    DataMgmt doc;
    fuzz::LoadBytes(archive.data(), archive.size(), doc);
    seeds.push_back(BytesOf(CsvExport::Write(doc, DataFilterMgr())));
  }
  return seeds;
}
#endif

bool WriteSeeds(const std::filesystem::path& root, const char* pszTarget, const std::vector<Bytes>& seeds) {
  const std::filesystem::path folder = root / pszTarget;
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  for (size_t i = 0; i < seeds.size(); ++i) {
    std::ofstream out(folder / ("seed-" + std::to_string(i)), std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(seeds[i].data()), static_cast<std::streamsize>(seeds[i].size()));
    if (!out) {
      std::fprintf(stderr, "cannot write the seeds of %s\n", pszTarget);
      return false;
    }
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s <corpus folder>\n", argv[0]);
    return 2;
  }
  const std::filesystem::path root(argv[1]);
  const bool bWritten = WriteSeeds(root, "valuestore_fuzzer", ValueStoreSeeds()) &&
                        WriteSeeds(root, "dataitem_fuzzer", DataItemSeeds()) &&
                        WriteSeeds(root, "dataitemmgr_fuzzer", DataItemMgrSeeds()) &&
                        WriteSeeds(root, "datasubitemmgr_fuzzer", DataSubItemMgrSeeds()) &&
                        WriteSeeds(root, "address_fuzzer", AddressSeeds()) &&
                        WriteSeeds(root, "addressbook_fuzzer", AddressBookSeeds()) &&
                        WriteSeeds(root, "listitem_fuzzer", ListItemSeeds()) &&
                        WriteSeeds(root, "dataprop_fuzzer", ColumnSeeds()) &&
                        WriteSeeds(root, "datapropmgr_fuzzer", DataPropMgrSeeds()) &&
                        WriteSeeds(root, "datafilter_fuzzer", DataFilterSeeds()) &&
                        WriteSeeds(root, "datafiltermgr_fuzzer", DataFilterMgrSeeds()) &&
                        WriteSeeds(root, "highlightfilter_fuzzer", HighlightFilterSeeds()) &&
                        WriteSeeds(root, "highlightfiltermgr_fuzzer", HighlightFilterMgrSeeds()) &&
                        WriteSeeds(root, "sortorder_fuzzer", SortOrderSeeds()) &&
                        WriteSeeds(root, "sortordermgr_fuzzer", SortOrderMgrSeeds()) &&
                        WriteSeeds(root, "report_fuzzer", ReportSeeds()) &&
                        WriteSeeds(root, "webreport_fuzzer", WebReportSeeds()) &&
                        WriteSeeds(root, "weblinkmgr_fuzzer", WebLinkMgrSeeds()) &&
                        WriteSeeds(root, "datafindmgr_fuzzer", DataFindMgrSeeds()) &&
                        WriteSeeds(root, "documentfile_fuzzer", DocumentSeeds());
#ifdef VAXO057_FUZZ_IO
  if (!WriteSeeds(root, "documentjson_fuzzer", JsonSeeds()) || !WriteSeeds(root, "csvimport_fuzzer", CsvSeeds())) {
    return 1;
  }
#endif
  return bWritten ? 0 : 1;
}
