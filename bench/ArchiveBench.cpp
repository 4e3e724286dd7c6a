// Throughput of the archive primitives and container forms that every
// document load and save runs through.
#include <benchmark/benchmark.h>

#include <map>

#include "framework/CArchive.h"
#include "framework/CMemFile.h"
#include "utility/SerializeData.h"

namespace {

std::map<int, CString> MakeTexts(int nCount) {
  std::map<int, CString> texts;
  for (int i = 0; i < nCount; ++i) texts.emplace(5000 + i, CString("A typical cell text of a list"));
  return texts;
}

void BM_StoreInts(benchmark::State& state) {
  for (auto _ : state) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    for (int i = 0; i < state.range(0); ++i) ar << i;
    ar.Flush();
    benchmark::DoNotOptimize(file.GetLength());
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * 4);
}
BENCHMARK(BM_StoreInts)->Arg(1 << 20);

void BM_LoadInts(benchmark::State& state) {
  CMemFile file;
  {
    CArchive ar(&file, CArchive::store);
    for (int i = 0; i < state.range(0); ++i) ar << i;
  }
  for (auto _ : state) {
    file.Seek(0, CFile::begin);
    CArchive ar(&file, CArchive::load);
    int n = 0;
    for (int i = 0; i < state.range(0); ++i) ar >> n;
    benchmark::DoNotOptimize(n);
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * 4);
}
BENCHMARK(BM_LoadInts)->Arg(1 << 20);

void BM_TextMapRoundTrip(benchmark::State& state) {
  std::map<int, CString> texts = MakeTexts(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    CMemFile file;
    {
      CArchive ar(&file, CArchive::store);
      SerializeData::Serialize(ar, texts, false);
    }
    file.Seek(0, CFile::begin);
    CArchive ar(&file, CArchive::load);
    std::map<int, CString> loaded;
    SerializeData::Serialize(ar, loaded, false);
    benchmark::DoNotOptimize(loaded.size());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_TextMapRoundTrip)->Arg(100000);

}  // namespace

BENCHMARK_MAIN();
