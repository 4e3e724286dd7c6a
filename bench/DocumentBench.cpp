// The document at work: 100,000 items of 10 columns entered through
// DataMgmt::SetData with text, every cell rendered, the document saved to
// a memory file and loaded into a fresh document; one column of 100,000
// items changed to another type.
#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "framework/CArchive.h"
#include "framework/CMemFile.h"
#include "utility/LocaleUtils.h"

namespace {

const int RECORDS = 100000;
const DataType::Type TYPES[] = {DataType::Text,     DataType::Text,   DataType::ValueListSuggested,
                                DataType::Number,   DataType::Number, DataType::Duration,
                                DataType::YesNo,    DataType::Decimal, DataType::Monetary,
                                DataType::Date};

std::vector<int> AddColumns(DataMgmt& doc) {
  std::vector<int> columns;
  for (DataType::Type nType : TYPES) {
    auto* pProp = new DataProp;
    pProp->SetDataType(nType);
    doc.AddDataProp(pProp, true, false, false, false);
    columns.push_back(pProp->GetID());
  }
  return columns;
}

// The ten texts a user types for record n.
std::vector<CString> Typed(int n) {
  CString texts[10];
  texts[0].Format("Record %d", n);
  texts[1].Format("A typical cell text of a list %d", n);
  texts[2].Format("Category %d", n % 20);
  texts[3].Format("%d", n);
  texts[4].Format("%d", n % 17);
  texts[5].Format("%d:%02d", n % 90, n % 60);
  texts[6] = n % 2 ? "yes" : "no";
  texts[7].Format("%d.5", n % 1000);
  texts[8].Format("%d.25", n % 5000);
  texts[9].Format("%d/%d/2026", 1 + n % 12, 1 + n % 28);
  return std::vector<CString>(texts, texts + 10);
}

void Enter(DataMgmt& doc, const std::vector<int>& columns) {
  for (int n = 0; n < RECORDS; ++n) {
    DataItem* pItem = doc.CreateDataItem(nullptr, true, true);
    const std::vector<CString> texts = Typed(n);
    for (size_t i = 0; i < columns.size(); ++i) {
      bool bRedisplay = false;
      doc.SetData(*pItem, columns[i], texts[i], bRedisplay, true);
    }
  }
}

void SetUsLocale() {
  LocaleUtils::SetNumberDecimalSeparator(".");
  LocaleUtils::SetNumberThousandsSeparator(",");
  LocaleUtils::SetDateOrder(LocaleUtils::MONTH_DAY_YEAR);
}

void BM_EnterAsText(benchmark::State& state) {
  SetUsLocale();
  for (auto _ : state) {
    DataMgmt doc;
    Enter(doc, AddColumns(doc));
    benchmark::DoNotOptimize(doc.GetDataItemMgr().GetCount());
  }
  state.SetItemsProcessed(state.iterations() * RECORDS * 10);
}
BENCHMARK(BM_EnterAsText)->Unit(benchmark::kMillisecond);

void BM_RenderEveryCell(benchmark::State& state) {
  SetUsLocale();
  DataMgmt doc;
  const std::vector<int> columns = AddColumns(doc);
  Enter(doc, columns);
  for (auto _ : state) {
    size_t nBytes = 0;
    for (size_t i = 0; i < doc.GetDataItemMgr().GetCount(); ++i) {
      for (int nID : columns) nBytes += doc.GetTextRepresentation(*doc.GetDataItemMgr().GetAt(i), nID, false).GetLength();
    }
    benchmark::DoNotOptimize(nBytes);
  }
  state.SetItemsProcessed(state.iterations() * RECORDS * 10);
}
BENCHMARK(BM_RenderEveryCell)->Unit(benchmark::kMillisecond);

void BM_SaveDocument(benchmark::State& state) {
  SetUsLocale();
  DataMgmt doc;
  Enter(doc, AddColumns(doc));
  size_t nSize = 0;
  for (auto _ : state) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    doc.Serialize(ar);
    ar.Close();
    nSize = file.GetContents().size();
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * nSize));
  state.counters["bytes"] = static_cast<double>(nSize);
}
BENCHMARK(BM_SaveDocument)->Unit(benchmark::kMillisecond);

void BM_LoadDocument(benchmark::State& state) {
  SetUsLocale();
  DataMgmt doc;
  Enter(doc, AddColumns(doc));
  CMemFile stored;
  {
    CArchive ar(&stored, CArchive::store);
    doc.Serialize(ar);
  }
  const std::vector<BYTE> bytes = stored.GetContents();
  for (auto _ : state) {
    CMemFile file(bytes);
    CArchive ar(&file, CArchive::load);
    DataMgmt loaded;
    loaded.Serialize(ar);
    benchmark::DoNotOptimize(loaded.GetDataItemMgr().GetCount());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
}
BENCHMARK(BM_LoadDocument)->Unit(benchmark::kMillisecond);

// One column's type change over 100,000 items: the values typed for item n
// under the old type, then the change to the new one.
struct TypeChange {
  const char* pszLabel;
  DataType::Type nFrom;
  DataType::Type nTo;
  const char* pszFormat;  // the text typed for item n
  int nModulo;
};
const TypeChange TYPE_CHANGES[] = {
    {"Number to Decimal, by the display text", DataType::Number, DataType::Decimal, "%d", RECORDS},
    {"Number to Duration, the stored value kept", DataType::Number, DataType::Duration, "%d", RECORDS},
    {"value list of 20 to address book", DataType::ValueListSuggested, DataType::AddressBookSuggested,
     "Category %d", 20},
    {"Text to value list of 20", DataType::Text, DataType::ValueListSuggested, "Category %d", 20},
    {"Text to value list of 1,000", DataType::Text, DataType::ValueListSuggested, "Category %d", 1000},
    {"Text to value list of 100,000", DataType::Text, DataType::ValueListSuggested, "Record %d", RECORDS},
};

void BM_TypeChange(benchmark::State& state) {
  SetUsLocale();
  const TypeChange& change = TYPE_CHANGES[state.range(0)];
  state.SetLabel(change.pszLabel);
  for (auto _ : state) {
    state.PauseTiming();
    auto pDoc = std::make_unique<DataMgmt>();
    auto* pProp = new DataProp;
    pProp->SetDataType(change.nFrom);
    pDoc->AddDataProp(pProp, true, false, false, false);
    for (int n = 0; n < RECORDS; ++n) {
      CString text;
      text.Format(change.pszFormat, n % change.nModulo);
      bool bRedisplay = false;
      pDoc->SetData(*pDoc->CreateDataItem(nullptr, true, true), *pProp, text, bRedisplay, false);
    }
    DataProp oldProp(*pProp);
    pProp->SetDataType(change.nTo);
    std::map<int, int> entryIDMap;
    state.ResumeTiming();
    benchmark::DoNotOptimize(pDoc->DoDataTypeChange(oldProp, *pProp, entryIDMap));
    state.PauseTiming();
    pDoc.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * RECORDS);
}
BENCHMARK(BM_TypeChange)->DenseRange(0, 5)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
