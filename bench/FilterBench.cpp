// Filter sets and highlight rules over a million items of ten columns, as a
// quick-filter box evaluates them on each keystroke: the time per item and
// the heap allocations per item of one pass over the document.
#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "DataMgr/filter/HighlightFilterMgr.h"
#include "utility/LocaleUtils.h"

namespace {

std::atomic<long long> g_nAllocations{0};

}  // namespace

// Every allocation of the process, the library's included, is counted. The
// replacement pair takes its memory from malloc and gives it back to free,
// which the compiler cannot see through when it inlines them.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif
void* operator new(std::size_t nSize) {
  g_nAllocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(nSize == 0 ? 1 : nSize)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

const int ITEMS = 1000000;

enum Column { SHORT_TEXT, LONG_TEXT, CATEGORY, NUMBER, SMALL_NUMBER, DURATION, YES_NO, DECIMAL, MONEY, DATE };
const DataType::Type TYPES[] = {DataType::Text,     DataType::Text,   DataType::ValueListSuggested,
                                DataType::Number,   DataType::Number, DataType::Duration,
                                DataType::YesNo,    DataType::Decimal, DataType::Monetary,
                                DataType::Date};

// The document, built once: item n holds n in NUMBER, a text with "ab" in
// LONG_TEXT for half of the items, and varied values in the other columns.
struct Document {
  DataMgmt doc;
  std::vector<int> columns;
};

Document& GetDocument() {
  static std::unique_ptr<Document> pDocument;
  if (pDocument) return *pDocument;
  LocaleUtils::SetNumberDecimalSeparator(".");
  LocaleUtils::SetDateOrder(LocaleUtils::MONTH_DAY_YEAR);
  pDocument = std::make_unique<Document>();
  DataMgmt& doc = pDocument->doc;
  for (DataType::Type nType : TYPES) {
    auto* pProp = new DataProp;
    pProp->SetDataType(nType);
    doc.AddDataProp(pProp, true, false, false, false);
    pDocument->columns.push_back(pProp->GetID());
  }
  const std::vector<int>& ids = pDocument->columns;
  for (int n = 0; n < ITEMS; ++n) {
    DataItem& item = *doc.CreateDataItem(nullptr, true, true);
    CString text;
    text.Format("Record %d", n);
    item.SetData(ids[SHORT_TEXT], text, false);
    text.Format(n % 2 ? "Notes about item %d of the list" : "Notes on item %d of the list", n);
    item.SetData(ids[LONG_TEXT], text, false);
    text.Format("Category %d", n % 20);
    bool bRedisplay = false;
    doc.SetData(item, ids[CATEGORY], text, bRedisplay, false);
    item.SetData(ids[NUMBER], n, false);
    item.SetData(ids[SMALL_NUMBER], n % 17, false);
    item.SetData(ids[DURATION], n % 5400, false);
    item.SetData(ids[YES_NO], n % 3 == 0, false);
    item.SetData(ids[DECIMAL], n % 1000 + 0.5, false);
    item.SetData(ids[MONEY], Money(n % 5000), false);
    item.SetData(ids[DATE], DateTime(2026, 1 + n % 12, 1 + n % 28), false);
  }
  return *pDocument;
}

DataFilter* MakeFilter(int nColumn, DataFilter::FilterType nTest, const char* pszValue, bool bRequired) {
  const Document& document = GetDocument();
  auto* pFilter = new DataFilter;
  pFilter->SetDataPropID(document.columns[nColumn]);
  pFilter->SetDataType(TYPES[nColumn]);
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
    const long long nBefore = g_nAllocations.load(std::memory_order_relaxed);
    for (size_t i = 0; i < items.GetCount(); ++i) nPassed += test(*items.GetAt(i)) ? 1 : 0;
    nAllocations = g_nAllocations.load(std::memory_order_relaxed) - nBefore;
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
