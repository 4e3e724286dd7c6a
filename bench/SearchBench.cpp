// Search and export over the ten-column document: one word searched in a
// million items, in every column and in one text column, beside rendering
// every cell alone; a text and an XML export of 100,000 items. Each reports
// the time and the heap allocations per item and the rate in MB/s of the
// text rendered (search) or written (export).
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "bench/AllocationCounter.h"
#include "bench/TenColumnDocument.h"

namespace {

const int SEARCH_ITEMS = 1000000;
const int EXPORT_ITEMS = 100000;
// In LONG_TEXT of every odd item, once.
const char WORD[] = "about";

struct Document {
  DataMgmt doc;
  std::vector<int> columns;
  size_t nRenderedBytes = 0;  // of every cell, as search renders it
  size_t nLongTextBytes = 0;  // of the LONG_TEXT cells
};

// The cells of columns in every item of the document rendered as search
// renders them (zeros empty, prefix and suffix included); returns the
// bytes of text.
size_t RenderCells(const Document& document, const std::vector<int>& columns) {
  const DataItemMgr& items = document.doc.GetDataItemMgr();
  std::vector<const DataProp*> props;
  for (int nID : columns) props.push_back(document.doc.GetDataPropMgr().GetByID(nID));
  size_t nBytes = 0;
  for (size_t i = 0; i < items.GetCount(); ++i) {
    for (size_t c = 0; c < props.size(); ++c) {
      nBytes += static_cast<size_t>(
          DataMgmt::GetTextRepresentation(*items.GetAt(i), columns[c], *props[c], true).GetLength());
    }
  }
  return nBytes;
}

// One document of each size, built once.
Document& GetDocument(int nItems) {
  static std::map<int, std::unique_ptr<Document>> documents;
  std::unique_ptr<Document>& pDocument = documents[nItems];
  if (pDocument) return *pDocument;
  pDocument = std::make_unique<Document>();
  pDocument->columns = bench::FillTenColumnDocument(pDocument->doc, nItems);
  pDocument->nRenderedBytes = RenderCells(*pDocument, pDocument->columns);
  pDocument->nLongTextBytes = RenderCells(*pDocument, {pDocument->columns[bench::LONG_TEXT]});
  return *pDocument;
}

// Runs pass once per iteration over a document of nItems items and reports
// per item, with nBytes the bytes one pass renders or writes.
template <typename Pass>
void RunPasses(benchmark::State& state, int nItems, size_t nBytes, Pass pass) {
  long long nAllocations = 0;
  for (auto _ : state) {
    const long long nBefore = bench::GetAllocationCount();
    pass();
    nAllocations = bench::GetAllocationCount() - nBefore;
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * nBytes));
  state.counters["ns_per_item"] = benchmark::Counter(
      static_cast<double>(nItems), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.counters["allocs_per_item"] = static_cast<double>(nAllocations) / nItems;
}

void BM_RenderEveryCell(benchmark::State& state) {
  const Document& document = GetDocument(SEARCH_ITEMS);
  RunPasses(state, SEARCH_ITEMS, document.nRenderedBytes,
            [&] { benchmark::DoNotOptimize(RenderCells(document, document.columns)); });
}
BENCHMARK(BM_RenderEveryCell)->Unit(benchmark::kMillisecond);

void BM_RenderOneTextColumn(benchmark::State& state) {
  const Document& document = GetDocument(SEARCH_ITEMS);
  const std::vector<int> columns = {document.columns[bench::LONG_TEXT]};
  RunPasses(state, SEARCH_ITEMS, document.nLongTextBytes,
            [&] { benchmark::DoNotOptimize(RenderCells(document, columns)); });
}
BENCHMARK(BM_RenderOneTextColumn)->Unit(benchmark::kMillisecond);

void BM_SearchEveryColumn(benchmark::State& state) {
  const Document& document = GetDocument(SEARCH_ITEMS);
  std::vector<DataFind> hits;
  RunPasses(state, SEARCH_ITEMS, document.nRenderedBytes, [&] {
    hits.clear();
    document.doc.Find(WORD, false, false, false, hits);
  });
  state.counters["hits"] = static_cast<double>(hits.size());
}
BENCHMARK(BM_SearchEveryColumn)->Unit(benchmark::kMillisecond);

void BM_SearchOneTextColumn(benchmark::State& state) {
  const Document& document = GetDocument(SEARCH_ITEMS);
  const std::vector<int> columns = {document.columns[bench::LONG_TEXT]};
  const DataFilterMgr noFilters;
  std::vector<DataFind> hits;
  RunPasses(state, SEARCH_ITEMS, document.nLongTextBytes, [&] {
    hits.clear();
    document.doc.Find(WORD, false, false, false, noFilters, columns, hits);
  });
  state.counters["hits"] = static_cast<double>(hits.size());
}
BENCHMARK(BM_SearchOneTextColumn)->Unit(benchmark::kMillisecond);

// Exports into the system's temporary folder, where each write is flushed
// to disk; the rate is of the file's bytes.
template <typename Export>
void RunExport(benchmark::State& state, const char* pszName, Export exportTo) {
  const Document& document = GetDocument(EXPORT_ITEMS);
  const std::string path =
      (std::filesystem::temp_directory_path() / (std::string(pszName) + "-" + std::to_string(getpid()))).string();
  exportTo(document.doc, CString(path));
  const size_t nBytes = static_cast<size_t>(std::filesystem::file_size(path));
  RunPasses(state, EXPORT_ITEMS, nBytes, [&] { exportTo(document.doc, CString(path)); });
  state.counters["file_bytes"] = static_cast<double>(nBytes);
  std::filesystem::remove(path);
}

void BM_ExportText(benchmark::State& state) {
  RunExport(state, "vaxo057-export.txt",
            [](const DataMgmt& doc, const CString& path) { doc.ExportToTextFile(path, "\t", DataFilterMgr()); });
}
BENCHMARK(BM_ExportText)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ExportXML(benchmark::State& state) {
  RunExport(state, "vaxo057-export.xml",
            [](const DataMgmt& doc, const CString& path) { doc.ExportToXMLFile(path, "List", DataFilterMgr()); });
}
BENCHMARK(BM_ExportXML)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
