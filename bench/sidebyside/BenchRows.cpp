#include "bench/sidebyside/BenchRows.h"

#include <random>

namespace {

// Some words hold "ab", for the filter and search rows.
const char* const WORDS[] = {"able",   "about",  "table",  "cabin",  "label",  "fable",  "abbey",  "river",
                             "stone",  "green",  "light",  "night",  "house",  "paper",  "music",  "water",
                             "garden", "winter", "summer", "silver", "orange", "yellow", "purple", "market",
                             "letter", "window", "bridge", "forest", "castle", "harbor", "meadow", "valley"};
const int WORD_COUNT = sizeof WORDS / sizeof WORDS[0];
const int FIRST_DAY = 2451545;  // 2000-01-01
const int DAYS = 9862;          // to the end of 2026

CString Words(std::mt19937& random, int nWords) {
  CString text;
  for (int i = 0; i < nWords; ++i) {
    if (i > 0) text += ' ';
    text += WORDS[random() % WORD_COUNT];
  }
  return text;
}

Money FromCents(long long nCents) {
  return Money(static_cast<__int64>(nCents / 100)) + Money(static_cast<int>(nCents % 100)) / 100;
}

}  // namespace

std::vector<BenchRow> GenerateBenchRows(size_t nCount) {
  std::mt19937 random(20261123);
  std::vector<BenchRow> rows(nCount);
  for (BenchRow& row : rows) {
    row.strTitle = Words(random, 2);
    row.strNotes = Words(random, 6);
    row.strPlace = Words(random, 1);
    row.nNumber = static_cast<int>(random() % 1000000);
    row.nSmall = static_cast<int>(random() % 100);
    row.dDecimal = static_cast<double>(random() % 100000) / 100.0;
    row.nJulianDay = FIRST_DAY + static_cast<int>(random() % DAYS);
    row.date = DateTime::FromJulian(row.nJulianDay, DateTime::NO_TIME);
    row.nCents = static_cast<long long>(random() % 10000000);
    row.money = FromCents(row.nCents);
    row.nCategory = static_cast<int>(random() % BENCH_CATEGORIES);
    row.bDone = random() % 2 == 0;
  }
  return rows;
}

CString BenchCategoryName(int nCategory) {
  CString text;
  text.Format("Category %02d", nCategory + 1);
  return text;
}

size_t MixOrder(size_t nChecksum, long long nRow) {
  return (nChecksum ^ static_cast<size_t>(nRow)) * 1099511628211ULL;
}
