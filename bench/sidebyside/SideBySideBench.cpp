// vaxo057 and SQLite side by side on the same generated rows (a million by
// default, --items=N to change): memory per item, typed build, save, load,
// rendering every cell, a 2-key sort, a filter, a word search and
// destroying, each operation done by both sides in the same repetition
// (which side goes first alternates), with the medians of --reps=N
// repetitions (5 by default) and their ratio printed as a table at the
// end. Both sides must report the same count for an operation (a sort: a
// checksum of its order), else the row fails. A row is one entry of
// OPERATIONS below.
//
// Times are the processor seconds of the one thread both sides run in, so
// that a shared machine's waiting does not count. Memory is measured from
// the allocator (bytes in use before and after), and vaxo057's allocations
// by counting operator new and delete.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <stdlib.h>
#include <time.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "bench/sidebyside/BenchRows.h"
#include "bench/sidebyside/SqliteSide.h"
#include "bench/sidebyside/VaxoSide.h"

namespace {

long long g_nLiveAllocations = 0;

}  // namespace

void* operator new(size_t nSize) {
  void* p = std::malloc(nSize == 0 ? 1 : nSize);
  if (p == nullptr) throw std::bad_alloc();
  ++g_nLiveAllocations;
  return p;
}
void* operator new[](size_t nSize) { return operator new(nSize); }
void operator delete(void* p) noexcept {
  if (p == nullptr) return;
  --g_nLiveAllocations;
  std::free(p);
}
void operator delete[](void* p) noexcept { operator delete(p); }
void operator delete(void* p, size_t) noexcept { operator delete(p); }
void operator delete[](void* p, size_t) noexcept { operator delete(p); }

namespace {

size_t g_nItems = 1000000;
int g_nRepetitions = 5;

// The allocator's bytes in use and the operator new blocks alive.
struct Heap {
  double dBytes;
  double dBlocks;
};

Heap HeapNow() {
  return {static_cast<double>(mallinfo2().uordblks), static_cast<double>(g_nLiveAllocations)};
}

// One line of the table: per repetition a figure of each side (NaN when a
// side has none).
struct Line {
  std::string strName;
  std::vector<double> vaxo;
  std::vector<double> sqlite;
};

std::vector<Line> g_lines;

void Record(const std::string& strName, double dVaxo, double dSqlite) {
  auto it = std::find_if(g_lines.begin(), g_lines.end(), [&](const Line& line) { return line.strName == strName; });
  if (it == g_lines.end()) it = g_lines.insert(g_lines.end(), Line{strName, {}, {}});
  it->vaxo.push_back(dVaxo);
  it->sqlite.push_back(dSqlite);
}

double Median(std::vector<double> values) {
  if (values.empty()) return 0.0;
  std::sort(values.begin(), values.end());
  const size_t n = values.size();
  return n % 2 == 1 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

// Three significant digits, without an exponent.
std::string Figure(double dValue) {
  char szText[32];
  std::snprintf(szText, sizeof szText, dValue >= 100 ? "%.0f" : "%.3g", dValue);
  return szText;
}

void PrintTable() {
  std::printf("\n%zu items, medians of %d repetitions\n\n", g_nItems, g_nRepetitions);
  std::printf("| | vaxo057 | SQLite | ratio |\n|---|---|---|---|\n");
  for (const Line& line : g_lines) {
    const double dVaxo = Median(line.vaxo);
    const double dSqlite = Median(line.sqlite);
    if (std::isnan(dSqlite)) {
      std::printf("| %s | %s | - | |\n", line.strName.c_str(), Figure(dVaxo).c_str());
    } else {
      std::printf("| %s | %s | %s | %.2f |\n", line.strName.c_str(), Figure(dVaxo).c_str(), Figure(dSqlite).c_str(),
                  dVaxo / dSqlite);
    }
  }
}

double ThreadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// The processor time of this thread (user and system) that run takes:
// both sides work in this thread, and on a shared machine the time waiting
// for a core would otherwise be counted.
double Seconds(const std::function<size_t()>& run, size_t& nCount) {
  const double dStart = ThreadSeconds();
  nCount = run();
  return ThreadSeconds() - dStart;
}

// Everything the operations share, made when first needed: the rows, the
// files, a built document and database, and a loaded document.
struct Fixture {
  Fixture() : m_rows(GenerateBenchRows(g_nItems)) {
    std::string pattern = (std::filesystem::temp_directory_path() / "vaxo057-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) std::exit(1);
    m_strFolder = pattern;
  }
  Fixture(const Fixture&) = delete;
  Fixture& operator=(const Fixture&) = delete;
  ~Fixture() { std::filesystem::remove_all(m_strFolder); }

  std::string VaxoFile() const { return m_strFolder + "/items.vaxo057"; }
  std::string SqliteFile() const { return m_strFolder + "/items.sqlite"; }
  void EnsureBuilt() {
    if (m_bBuilt) return;
    m_built.Build(m_rows);
    m_sqlite.Build(m_rows);
    m_bBuilt = true;
  }
  void EnsureSaved() {
    EnsureBuilt();
    if (!std::filesystem::exists(VaxoFile())) m_built.Save(VaxoFile());
    if (!std::filesystem::exists(SqliteFile())) m_sqlite.Save(SqliteFile());
  }
  void EnsureLoaded() {
    EnsureSaved();
    if (m_bLoaded) return;
    m_loaded.Load(VaxoFile());
    m_bLoaded = true;
  }

  std::vector<BenchRow> m_rows;
  std::string m_strFolder;
  VaxoSide m_built;
  VaxoSide m_loaded;
  VaxoSide m_scratch;
  std::vector<Data*> m_records;  // the loaded items, for a sort
  SqliteSide m_sqlite;
  SqliteSide m_sqliteScratch;
  bool m_bBuilt = false;
  bool m_bLoaded = false;
};

Fixture& GetFixture() {
  static Fixture fixture;
  return fixture;
}

// One side of an operation: untimed set-up, the timed work (returning the
// count both sides must agree on) and, when the allocator's change during
// the work is not the memory to show, the bytes the side holds after it.
struct Side {
  Side(std::function<void()> fnPrepare, std::function<size_t()> fnRun, std::function<double()> fnHeldBytes = nullptr)
      : prepare(std::move(fnPrepare)), run(std::move(fnRun)), heldBytes(std::move(fnHeldBytes)) {}

  std::function<void()> prepare;
  std::function<size_t()> run;
  std::function<double()> heldBytes;
};

struct Operation {
  const char* pszName;
  bool bMemory;  // shows the memory per item after the work
  std::function<void(Fixture&)> prepare;
  std::function<Side(Fixture&)> vaxo;
  std::function<Side(Fixture&)> sqlite;  // empty: vaxo057 only
};

struct Outcome {
  double dSeconds = 0.0;
  size_t nCount = 0;
  Heap heap{0.0, 0.0};  // the change during the timed work
};

Outcome RunSide(const Side& side) {
  Outcome outcome;
  side.prepare();
  const Heap before = HeapNow();
  outcome.dSeconds = Seconds(side.run, outcome.nCount);
  const Heap after = HeapNow();
  outcome.heap = {after.dBytes - before.dBytes, after.dBlocks - before.dBlocks};
  if (side.heldBytes) outcome.heap.dBytes = side.heldBytes();
  return outcome;
}

void RunOperation(benchmark::State& state, const Operation& operation) {
  static int s_nRun = 0;
  Fixture& fixture = GetFixture();
  const double dItems = static_cast<double>(g_nItems);
  for (auto _ : state) {
    operation.prepare(fixture);
    const bool bSqliteFirst = operation.sqlite && (s_nRun++ % 2 == 1);
    Outcome sqlite;
    if (bSqliteFirst) sqlite = RunSide(operation.sqlite(fixture));
    const Outcome vaxo = RunSide(operation.vaxo(fixture));
    if (operation.sqlite && !bSqliteFirst) sqlite = RunSide(operation.sqlite(fixture));
    const double dNone = operation.sqlite ? sqlite.dSeconds : std::nan("");
    if (operation.sqlite && vaxo.nCount != sqlite.nCount) {
      state.SkipWithError("the two sides disagree on the count");
      break;
    }
    state.SetIterationTime(vaxo.dSeconds);
    state.counters["sqlite_s"] = dNone;
    state.counters["count"] = static_cast<double>(vaxo.nCount);
    state.counters["vaxo_B_per_item"] = vaxo.heap.dBytes / dItems;
    state.counters["vaxo_allocs_per_item"] = vaxo.heap.dBlocks / dItems;
    Record(std::string(operation.pszName) + " (s)", vaxo.dSeconds, dNone);
    if (operation.bMemory) {
      Record(std::string("memory per item after ") + operation.pszName + " (B)", vaxo.heap.dBytes / dItems,
             operation.sqlite ? sqlite.heap.dBytes / dItems : std::nan(""));
      Record(std::string("allocations per item after ") + operation.pszName, vaxo.heap.dBlocks / dItems,
             std::nan(""));
    }
  }
}

const int FILTER_MINIMUM = 250000;
const char SEARCH_WORD[] = "table";

void Nothing(Fixture&) {}
void NoSetUp() {}

const Operation OPERATIONS[] = {
    {"typed build", true,
     [](Fixture& f) {
       f.m_built.Destroy();
       f.m_sqlite.Destroy();
       f.m_bBuilt = true;
     },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_built.Build(f.m_rows); }}; },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_sqlite.Build(f.m_rows); }}; }},
    {"save", false,
     [](Fixture& f) { f.EnsureBuilt(); },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_built.Save(f.VaxoFile()); }}; },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_sqlite.Save(f.SqliteFile()); }}; }},
    {"load", true,
     [](Fixture& f) {
       f.EnsureSaved();
       f.m_loaded.Destroy();
       f.m_bLoaded = true;
     },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_loaded.Load(f.VaxoFile()); }}; },
     [](Fixture& f) {
       return Side{NoSetUp, [&f] { return SqliteSide::OpenAndReadEveryRow(f.SqliteFile()); },
                   [&f] { return static_cast<double>(f.m_sqlite.GetPageBytes()); }};
     }},
    {"render every cell", false,
     [](Fixture& f) { f.EnsureLoaded(); },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_loaded.RenderEveryCell(); }}; },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_sqlite.RenderEveryCell(); }}; }},
    {"2-key sort (title ignoring case, number descending)", false,
     [](Fixture& f) { f.EnsureLoaded(); },
     [](Fixture& f) {
       return Side{[&f] { f.m_records = f.m_loaded.GetRecords(); },
                   [&f] { return f.m_loaded.SortTitleThenNumber(f.m_records); }};
     },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_sqlite.SortTitleThenNumber(); }}; }},
    {"filter number > 250000 and title contains \"ab\"", false,
     [](Fixture& f) { f.EnsureLoaded(); },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_loaded.FilterNumberAndTitle(FILTER_MINIMUM, "ab"); }}; },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_sqlite.FilterNumberAndTitle(FILTER_MINIMUM, "ab"); }}; }},
    {"search \"table\" in the three texts", false,
     [](Fixture& f) { f.EnsureLoaded(); },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_loaded.SearchTexts(SEARCH_WORD); }}; },
     [](Fixture& f) { return Side{NoSetUp, [&f] { return f.m_sqlite.SearchTexts(SEARCH_WORD); }}; }},
    {"destroy", false,
     [](Fixture& f) { f.EnsureSaved(); },
     [](Fixture& f) {
       return Side{[&f] { f.m_scratch.Load(f.VaxoFile()); }, [&f] { return f.m_scratch.Destroy(); }};
     },
     [](Fixture& f) {
       return Side{[&f] { f.m_sqliteScratch.Restore(f.SqliteFile()); }, [&f] { return f.m_sqliteScratch.Destroy(); }};
     }},
    {"typing every value with undo", true,
     Nothing,
     [](Fixture& f) {
       return Side{[&f] { f.m_scratch.Destroy(); }, [&f] { return f.m_scratch.TypeEveryValue(f.m_rows); }};
     },
     nullptr},
};

// Takes --items=N and --reps=N out of the arguments.
void ReadOwnFlags(int& argc, char** argv) {
  int nKept = 1;
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--items=", 8) == 0) {
      g_nItems = std::strtoul(argv[i] + 8, nullptr, 10);
    } else if (std::strncmp(argv[i], "--reps=", 7) == 0) {
      g_nRepetitions = std::max(1, std::atoi(argv[i] + 7));
    } else {
      argv[nKept++] = argv[i];
    }
  }
  argc = nKept;
}

}  // namespace

int main(int argc, char** argv) {
  ReadOwnFlags(argc, argv);
  for (const Operation& operation : OPERATIONS) {
    benchmark::RegisterBenchmark(operation.pszName, RunOperation, operation)
        ->Iterations(1)
        ->Repetitions(g_nRepetitions)
        ->ReportAggregatesOnly(true)
        ->UseManualTime()
        ->Unit(benchmark::kSecond);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  PrintTable();
  return 0;
}
