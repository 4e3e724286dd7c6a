// Time per SetData and GetData of a record's value store, and the memory a
// stored value costs, for a document of 100,000 records of 10 columns: three
// texts, three ints (numbers and list entries), a bool, a double, a Money and
// a date. Then the same document as items of a DataItemMgr: the memory of
// an item, and the time to create, copy and delete all of them.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <vector>

#include "DataMgr/records/DataItem.h"
#include "DataMgr/records/DataItemMgr.h"
#include "DataMgr/types/Money.h"
#include "DataMgr/types/UndoStore.h"
#include "DataMgr/types/ValueStore.h"

namespace {

const int RECORDS = 100000;
const int COLUMNS = 10;
const int FIRST_COLUMN = 5000;

struct Record {
  ValueStore m_values;
  UndoStore m_undo;
};

// Sets the ten values of record nRecord through set(columnID, value), each
// one different from the last call's when nRound changes.
template <typename Set>
void FillValues(Set set, int nRecord, int nRound) {
  const int n = nRecord + nRound;
  CString number;
  number.Format("Record %d", n);
  set(FIRST_COLUMN + 0, number);
  set(FIRST_COLUMN + 1, CString("A typical cell text of a list") + number);
  set(FIRST_COLUMN + 2, CString(n % 2 ? "yes" : "no"));
  set(FIRST_COLUMN + 3, n);
  set(FIRST_COLUMN + 4, n % 17);
  set(FIRST_COLUMN + 5, n % 5);
  set(FIRST_COLUMN + 6, n % 2 == 0);
  set(FIRST_COLUMN + 7, n * 0.5);
  set(FIRST_COLUMN + 8, Money(n));
  set(FIRST_COLUMN + 9, DateTime::FromJulian(2460000 + n % 1000, n % 86400));
}

void Fill(Record& record, int nRecord, int nRound, bool bUndoable) {
  FillValues([&](int nID, const auto& value) { record.m_values.SetData(nID, value, bUndoable, record.m_undo); },
             nRecord, nRound);
}

void Fill(DataItem& item, int nRecord) {
  FillValues([&](int nID, const auto& value) { item.SetData(nID, value, false); }, nRecord, 0);
}

// Items given IDs and their ten values.
void FillItems(DataItemMgr& items) {
  for (int i = 0; i < RECORDS; ++i) Fill(*items.Create(nullptr, true, true), i);
}

size_t HeapInUse() { return mallinfo2().uordblks; }

void BM_SetDataFill(benchmark::State& state) {
  size_t nBytes = 0;
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<Record>* pRecords = new std::vector<Record>();
    const size_t nHeapBefore = HeapInUse();
    pRecords->resize(RECORDS);
    state.ResumeTiming();
    for (int i = 0; i < RECORDS; ++i) Fill((*pRecords)[i], i, 0, false);
    state.PauseTiming();
    nBytes = HeapInUse() - nHeapBefore;
    delete pRecords;
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * RECORDS * COLUMNS);
  state.counters["bytes_per_value"] = static_cast<double>(nBytes) / (RECORDS * COLUMNS);
  state.counters["bytes_per_empty_record"] = sizeof(Record);
}
BENCHMARK(BM_SetDataFill)->Unit(benchmark::kMillisecond);

void BM_SetDataEdit(benchmark::State& state) {
  std::vector<Record> records(RECORDS);
  for (int i = 0; i < RECORDS; ++i) Fill(records[i], i, 0, false);
  int nRound = 0;
  for (auto _ : state) {
    ++nRound;
    for (int i = 0; i < RECORDS; ++i) Fill(records[i], i, nRound, true);
  }
  state.SetItemsProcessed(state.iterations() * RECORDS * COLUMNS);
}
BENCHMARK(BM_SetDataEdit)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_GetData(benchmark::State& state) {
  std::vector<Record> records(RECORDS);
  for (int i = 0; i < RECORDS; ++i) Fill(records[i], i, 0, false);
  CString text;
  int n = 0;
  bool b = false;
  double d = 0;
  Money money;
  DateTime dt;
  for (auto _ : state) {
    for (const Record& record : records) {
      const ValueStore& values = record.m_values;
      values.GetData(FIRST_COLUMN + 0, text);
      values.GetData(FIRST_COLUMN + 1, text);
      values.GetData(FIRST_COLUMN + 2, text);
      values.GetData(FIRST_COLUMN + 3, n);
      values.GetData(FIRST_COLUMN + 4, n);
      values.GetData(FIRST_COLUMN + 5, n);
      values.GetData(FIRST_COLUMN + 6, b);
      values.GetData(FIRST_COLUMN + 7, d);
      values.GetData(FIRST_COLUMN + 8, money);
      values.GetData(FIRST_COLUMN + 9, dt);
    }
    benchmark::DoNotOptimize(text);
    benchmark::DoNotOptimize(n);
    benchmark::DoNotOptimize(d);
  }
  state.SetItemsProcessed(state.iterations() * RECORDS * COLUMNS);
}
BENCHMARK(BM_GetData)->Unit(benchmark::kMillisecond);

void BM_ItemCreate(benchmark::State& state) {
  for (auto _ : state) {
    DataItemMgr items;
    for (int i = 0; i < RECORDS; ++i) items.Create(nullptr, true, true);
    state.PauseTiming();
    items.DeleteAll(true);
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * RECORDS);
  state.counters["bytes_per_empty_item"] = sizeof(DataItem);
}
BENCHMARK(BM_ItemCreate)->Unit(benchmark::kMillisecond);

void BM_ItemFill(benchmark::State& state) {
  size_t nBytes = 0;
  for (auto _ : state) {
    DataItemMgr items;
    const size_t nHeapBefore = HeapInUse();
    FillItems(items);
    state.PauseTiming();
    nBytes = HeapInUse() - nHeapBefore;
    items.DeleteAll(true);
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * RECORDS);
  state.counters["bytes_per_item_of_10_values"] = static_cast<double>(nBytes) / RECORDS;
}
BENCHMARK(BM_ItemFill)->Unit(benchmark::kMillisecond);

void BM_ItemCopy(benchmark::State& state) {
  DataItemMgr items;
  FillItems(items);
  for (auto _ : state) {
    DataItemMgr copies;
    for (size_t i = 0; i < items.GetCount(); ++i) copies.Create(items.GetAt(i), true, true);
    state.PauseTiming();
    copies.DeleteAll(true);
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * RECORDS);
}
BENCHMARK(BM_ItemCopy)->Unit(benchmark::kMillisecond);

void BM_ItemDelete(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    DataItemMgr items;
    FillItems(items);
    state.ResumeTiming();
    items.DeleteAll(true);
  }
  state.SetItemsProcessed(state.iterations() * RECORDS);
}
BENCHMARK(BM_ItemDelete)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
