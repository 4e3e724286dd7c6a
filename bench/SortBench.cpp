// Sorting a million items of 10 columns by two keys, each sort timed for the
// fast sort (SortData::Sort, keys read once per record) and for
// std::stable_sort with CompareData in the same run:
//   text ascending, ignoring case, then number descending;
//   date ascending, then money descending.
// Every run sorts a fresh copy of the items in their creation order. The
// memory the fast sort takes on top of the records is counted by the
// allocation functions below (peak bytes allocated during the sort).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/sort/SortData.h"
#include "DataMgr/sort/SortOrder.h"

namespace {

size_t g_nAllocated = 0;
size_t g_nPeak = 0;

// Each block carries its size in front, so that the live bytes are known.
// Kept out of line so that the compiler does not pair the malloc and free
// inside them with the operators below.
[[gnu::noinline]] void* Allocate(size_t nSize) {
  void* pBlock = std::malloc(nSize + sizeof(std::max_align_t));
  if (pBlock == nullptr) return nullptr;
  *static_cast<size_t*>(pBlock) = nSize;
  g_nAllocated += nSize;
  g_nPeak = std::max(g_nPeak, g_nAllocated);
  return static_cast<char*>(pBlock) + sizeof(std::max_align_t);
}

[[gnu::noinline]] void Release(void* p) {
  if (p == nullptr) return;
  char* pBlock = static_cast<char*>(p) - sizeof(std::max_align_t);
  g_nAllocated -= *reinterpret_cast<size_t*>(pBlock);
  std::free(pBlock);
}

}  // namespace

void* operator new(size_t nSize) {
  void* p = Allocate(nSize);
  if (p == nullptr) throw std::bad_alloc();
  return p;
}
void* operator new(size_t nSize, const std::nothrow_t&) noexcept { return Allocate(nSize); }
void operator delete(void* p) noexcept { Release(p); }
void operator delete(void* p, size_t) noexcept { Release(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { Release(p); }

namespace {

const int RECORDS = 1000000;

// Column indexes of the sort keys among the ten.
enum Column { NAME, COUNT, DAY, PRICE, NOTE, CATEGORY, LENGTH, DONE, RATIO, SIZE };
const DataType::Type TYPES[] = {DataType::Text,     DataType::Number, DataType::Date,     DataType::Monetary,
                                DataType::Text,     DataType::ValueListSuggested,
                                DataType::Duration, DataType::YesNo,  DataType::Decimal,  DataType::Number};

// Exposes the comparator that defines the order.
class ComparatorSort : public SortData {
 public:
  void Sort(std::vector<Data*>& records, const SortOrder& order, const DataPropMgr& registry) {
    Init(order, registry);
    std::stable_sort(records.begin(), records.end(), [this](const Data* a, const Data* b) { return CompareData(a, b); });
  }
};

std::string Word(std::mt19937& random) {
  static const char* const SYLLABLES[] = {"ka", "lo", "mi", "ne", "ru", "sa", "to", "vi", "ber", "don",
                                          "el", "fan", "gor", "hu", "is", "jo", "qua", "wen", "xi", "zor"};
  std::string word;
  const int nSyllables = 2 + static_cast<int>(random() % 3);
  for (int i = 0; i < nSyllables; ++i) word += SYLLABLES[random() % 20];
  if (random() % 2 == 0) word[0] = static_cast<char>(word[0] - 'a' + 'A');
  return word;
}

// A document of RECORDS items whose ten values are set through the Data
// interface: names of two words (about 130,000 different, in mixed case),
// counts 0 to 999, days over twenty years, prices -10,000.00 to 10,000.00.
struct SortDocument {
  SortDocument() {
    for (DataType::Type nType : TYPES) {
      auto* pProp = new DataProp;
      pProp->SetDataType(nType);
      doc.AddDataProp(pProp, true, false, false, false);
      ids.push_back(pProp->GetID());
    }
    std::mt19937 random(20261123);
    std::vector<std::string> words;
    for (int i = 0; i < 600; ++i) words.push_back(Word(random));
    for (int n = 0; n < RECORDS; ++n) {
      DataItem* pItem = doc.CreateDataItem(nullptr, true, true);
      pItem->SetData(ids[NAME], CString(words[random() % 600] + " " + words[random() % 600]), false);
      pItem->SetData(ids[COUNT], static_cast<int>(random() % 1000), false);
      pItem->SetData(ids[DAY], DateTime::FromJulian(2450000 + static_cast<int>(random() % 7300), -1), false);
      pItem->SetData(ids[PRICE], Money((static_cast<double>(random() % 2000001) - 1000000.0) / 100.0), false);
      pItem->SetData(ids[NOTE], CString("A note on item ") + CString(std::to_string(n)), false);
      pItem->SetData(ids[CATEGORY], static_cast<int>(random() % 20), false);
      pItem->SetData(ids[LENGTH], static_cast<int>(random() % 5400), false);
      pItem->SetData(ids[DONE], random() % 2 == 0, false);
      pItem->SetData(ids[RATIO], static_cast<double>(random() % 10000) / 100.0, false);
      pItem->SetData(ids[SIZE], static_cast<int>(random() % 100000), false);
      records.push_back(pItem);
    }
  }

  SortOrder Order(Column first, Column second) const {
    SortOrder order;
    order.AddDataPropID(ids[first], true, false);
    order.AddDataPropID(ids[second], false, false);
    return order;
  }

  DataMgmt doc;
  std::vector<int> ids;
  std::vector<Data*> records;
};

SortDocument& Document() {
  static SortDocument* pDocument = new SortDocument;
  return *pDocument;
}

// range(0): 0 the fast sort, 1 the comparator.
void RunSort(benchmark::State& state, Column first, Column second) {
  SortDocument& document = Document();
  const SortOrder order = document.Order(first, second);
  const bool bComparator = state.range(0) == 1;
  double dPeakBytes = 0;
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<Data*> records = document.records;
    const size_t nBefore = g_nAllocated;
    g_nPeak = nBefore;
    state.ResumeTiming();
    if (bComparator) {
      ComparatorSort().Sort(records, order, document.doc.GetDataPropMgr());
    } else {
      SortData().Sort(records, order, document.doc.GetDataPropMgr());
    }
    dPeakBytes = static_cast<double>(g_nPeak - nBefore);
    benchmark::DoNotOptimize(records.data());
  }
  state.SetLabel(bComparator ? "stable_sort with CompareData" : "fast sort");
  state.counters["bytes_per_record"] = dPeakBytes / RECORDS;
  state.SetItemsProcessed(state.iterations() * RECORDS);
}

void BM_SortTextThenNumber(benchmark::State& state) { RunSort(state, NAME, COUNT); }
BENCHMARK(BM_SortTextThenNumber)->Arg(0)->Arg(1)->Iterations(1)->Repetitions(5)->Unit(benchmark::kMillisecond);

void BM_SortDateThenMoney(benchmark::State& state) { RunSort(state, DAY, PRICE); }
BENCHMARK(BM_SortDateThenMoney)->Arg(0)->Arg(1)->Iterations(1)->Repetitions(5)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
