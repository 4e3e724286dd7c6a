// Filter sets and highlight rules over a million items of ten columns, as a
// quick-filter box evaluates them on each keystroke: the time per item and
// the heap allocations per item of one pass over the document.
#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "DataMgr/filter/HighlightFilterMgr.h"
#include "bench/AllocationCounter.h"
#include "bench/TenColumnDocument.h"

namespace {

using namespace bench;

const int ITEMS = 1000000;

// The document, built once.
struct Document {
  DataMgmt doc;
  std::vector<int> columns;
};

Document& GetDocument() {
  static std::unique_ptr<Document> pDocument;
  if (pDocument) return *pDocument;
  pDocument = std::make_unique<Document>();
  pDocument->columns = FillTenColumnDocument(pDocument->doc, ITEMS);
  return *pDocument;
}

DataFilter* MakeFilter(int nColumn, DataFilter::FilterType nTest, const char* pszValue, bool bRequired) {
  const Document& document = GetDocument();
  auto* pFilter = new DataFilter;
  pFilter->SetDataPropID(document.columns[nColumn]);
  pFilter->SetDataType(TEN_TYPES[nColumn]);
  pFilter->SetFilterType(nTest);
  pFilter->SetValue(CString(pszValue));
  pFilter->SetRequired(bRequired);
  return pFilter;
}

// One pass of test(item) over every item per iteration; reports the time
// and the allocations per item and the share of items that passed.
template <typename Test>
void RunOverItems(benchmark::State& state, Test test) {
  const DataItemMgr& items = GetDocument().doc.GetDataItemMgr();
  long long nPassed = 0;
  long long nAllocations = 0;
  for (auto _ : state) {
    nPassed = 0;
    const long long nBefore = GetAllocationCount();
    for (size_t i = 0; i < items.GetCount(); ++i) nPassed += test(*items.GetAt(i)) ? 1 : 0;
    nAllocations = GetAllocationCount() - nBefore;
    benchmark::DoNotOptimize(nPassed);
  }
  const double dItems = static_cast<double>(items.GetCount());
  state.counters["ns_per_item"] = benchmark::Counter(dItems, benchmark::Counter::kIsIterationInvariantRate |
                                                                 benchmark::Counter::kInvert);
  state.counters["allocs_per_item"] = static_cast<double>(nAllocations) / dItems;
  state.counters["passed"] = static_cast<double>(nPassed) / dItems;
}

void RunSet(benchmark::State& state, const DataFilterMgr& set) {
  RunOverItems(state, [&](const DataItem& item) { return set.PassesFilters(item); });
}

void BM_NumberGreater(benchmark::State& state) {
  DataFilterMgr set;
  set.Add(MakeFilter(NUMBER, DataFilter::IsGreaterThan, "250000", true), true);
  RunSet(state, set);
}
BENCHMARK(BM_NumberGreater)->Unit(benchmark::kMillisecond);

void BM_TextContains(benchmark::State& state) {
  DataFilterMgr set;
  set.Add(MakeFilter(LONG_TEXT, DataFilter::Contains, "ab", true), true);
  RunSet(state, set);
}
BENCHMARK(BM_TextContains)->Unit(benchmark::kMillisecond);

// Number > X required AND Text contains "ab" required.
void BM_RequiredPair(benchmark::State& state) {
  DataFilterMgr set;
  set.Add(MakeFilter(NUMBER, DataFilter::IsGreaterThan, "250000", true), true);
  set.Add(MakeFilter(LONG_TEXT, DataFilter::Contains, "ab", true), true);
  RunSet(state, set);
}
BENCHMARK(BM_RequiredPair)->Unit(benchmark::kMillisecond);

// The same, and one of decimal < 100 or date newer than a day in June.
void BM_RequiredPairAndOptionalPair(benchmark::State& state) {
  DataFilterMgr set;
  set.Add(MakeFilter(NUMBER, DataFilter::IsGreaterThan, "250000", true), true);
  set.Add(MakeFilter(LONG_TEXT, DataFilter::Contains, "ab", true), true);
  set.Add(MakeFilter(DECIMAL, DataFilter::IsLessThan, "100", false), true);
  set.Add(MakeFilter(DATE, DataFilter::IsEqualToOrNewerThan, "6/15/2026", false), true);
  RunSet(state, set);
}
BENCHMARK(BM_RequiredPairAndOptionalPair)->Unit(benchmark::kMillisecond);

// Three rules: a large number, a large amount, checked; with today set the
// third is the today rule on the date column instead.
void RunHighlight(benchmark::State& state, bool bToday) {
  HighlightFilterMgr rules;
  const struct {
    int nColumn;
    DataFilter::FilterType nTest;
    const char* pszValue;
  } conditions[] = {{NUMBER, DataFilter::IsGreaterThan, "900000"},
                    {MONEY, DataFilter::IsGreaterThan, "4500"},
                    {YES_NO, DataFilter::IsChecked, ""}};
  for (int i = 0; i < (bToday ? 2 : 3); ++i) {
    DataFilter* pCondition = MakeFilter(conditions[i].nColumn, conditions[i].nTest, conditions[i].pszValue, false);
    static_cast<DataFilter&>(*rules.CreateEntry(true)) = *pCondition;
    delete pCondition;
  }
  if (bToday) rules.AddTodayFilter(GetDocument().columns[DATE]);
  RunOverItems(state, [&](const DataItem& item) {
    COLORREF nColor = 0;
    return rules.DoHighlight(item, nColor);
  });
}

void BM_HighlightThreeRules(benchmark::State& state) { RunHighlight(state, false); }
BENCHMARK(BM_HighlightThreeRules)->Unit(benchmark::kMillisecond);

void BM_HighlightTwoRulesAndToday(benchmark::State& state) { RunHighlight(state, true); }
BENCHMARK(BM_HighlightTwoRulesAndToday)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
