// Conversions of a 100,000-item document (the ten-column document) to and
// from JSON and CSV: the JSON of the whole document written (indented, as
// the tool writes it) and read back, its CSV exported and imported through
// value entry with the types inferred. Each pass runs five times; the
// median is the figure to take. Reported: the time per item and the rate
// in MB/s of the text written or read.
#include <benchmark/benchmark.h>

#include <string>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "bench/TenColumnDocument.h"
#include "io/CsvExport.h"
#include "io/CsvImport.h"
#include "io/DocumentJson.h"

namespace {

const int ITEMS = 100000;

DataMgmt& GetDocument() {
  static DataMgmt* pDoc = [] {
    auto* pNew = new DataMgmt;
    bench::FillTenColumnDocument(*pNew, ITEMS);
    return pNew;
  }();
  return *pDoc;
}

template <typename Pass>
void RunPasses(benchmark::State& state, size_t nBytes, Pass pass) {
  for (auto _ : state) pass();
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * nBytes));
  state.counters["text_bytes"] = static_cast<double>(nBytes);
  state.counters["ns_per_item"] = benchmark::Counter(
      static_cast<double>(ITEMS), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_JsonWrite(benchmark::State& state) {
  const DataMgmt& doc = GetDocument();
  const size_t nBytes = DocumentJson::Write(doc, true).size();
  RunPasses(state, nBytes, [&] { benchmark::DoNotOptimize(DocumentJson::Write(doc, true)); });
}

void BM_JsonRead(benchmark::State& state) {
  const std::string json = DocumentJson::Write(GetDocument(), true);
  RunPasses(state, json.size(), [&] {
    DataMgmt doc;
    CString error;
    if (!DocumentJson::Read(json, doc, error)) state.SkipWithError(error.GetString());
  });
}

void BM_CsvExport(benchmark::State& state) {
  const DataMgmt& doc = GetDocument();
  const DataFilterMgr filters;
  const size_t nBytes = CsvExport::Write(doc, filters).size();
  RunPasses(state, nBytes, [&] { benchmark::DoNotOptimize(CsvExport::Write(doc, filters)); });
}

void BM_CsvImport(benchmark::State& state) {
  const std::string csv = CsvExport::Write(GetDocument(), DataFilterMgr());
  RunPasses(state, csv.size(), [&] {
    DataMgmt doc;
    CsvImport import;
    CString error;
    if (!import.Read(csv, doc, error)) state.SkipWithError(error.GetString());
  });
}

BENCHMARK(BM_JsonWrite)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(BM_JsonRead)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(BM_CsvExport)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(BM_CsvImport)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

}  // namespace

BENCHMARK_MAIN();
