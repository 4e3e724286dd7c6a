// Time per SetData and GetData of a record's value store, and the memory a
// stored value costs, for a document of 100,000 records of 10 columns: three
// texts, three ints (numbers and list entries), a bool, a double, a Money and
// a date.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <vector>

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

// Sets the ten values of record nRecord, each one different from the last
// call's when nRound changes.
void Fill(Record& record, int nRecord, int nRound, bool bUndoable) {
  const int n = nRecord + nRound;
  CString number;
  number.Format("Record %d", n);
  ValueStore& values = record.m_values;
  UndoStore& undo = record.m_undo;
  values.SetData(FIRST_COLUMN + 0, number, bUndoable, undo);
  values.SetData(FIRST_COLUMN + 1, CString("A typical cell text of a list") + number, bUndoable, undo);
  values.SetData(FIRST_COLUMN + 2, CString(n % 2 ? "yes" : "no"), bUndoable, undo);
  values.SetData(FIRST_COLUMN + 3, n, bUndoable, undo);
  values.SetData(FIRST_COLUMN + 4, n % 17, bUndoable, undo);
  values.SetData(FIRST_COLUMN + 5, n % 5, bUndoable, undo);
  values.SetData(FIRST_COLUMN + 6, n % 2 == 0, bUndoable, undo);
  values.SetData(FIRST_COLUMN + 7, n * 0.5, bUndoable, undo);
  values.SetData(FIRST_COLUMN + 8, Money(n), bUndoable, undo);
  values.SetData(FIRST_COLUMN + 9, DateTime::FromJulian(2460000 + n % 1000, n % 86400), bUndoable, undo);
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

}  // namespace

BENCHMARK_MAIN();
