#ifndef BENCH_SIDEBYSIDE_BENCHROWS_H_
#define BENCH_SIDEBYSIDE_BENCHROWS_H_

#include <cstddef>
#include <vector>

#include "DataMgr/types/Money.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

// The data both sides keep: rows of ten columns (three texts, two numbers,
// a decimal, a date, an amount of money, one entry of a list of 20 and a
// yes/no), generated from a fixed seed so that every run sees the same rows.
// Each value is held in the form each side takes it (a Money and a DateTime
// for vaxo057, cents and a Julian day for SQLite), so that neither side's
// timing includes a conversion.
struct BenchRow {
  CString strTitle;  // two words
  CString strNotes;  // six words
  CString strPlace;  // one word
  int nNumber = 0;   // 0 to 999,999
  int nSmall = 0;    // 0 to 99
  double dDecimal = 0.0;  // 0.00 to 999.99
  int nJulianDay = 0;     // a day of 2000 to 2026
  DateTime date;
  long long nCents = 0;  // 0.00 to 99,999.99
  Money money;
  int nCategory = 0;  // 0 to 19
  bool bDone = false;
};

const int BENCH_CATEGORIES = 20;

std::vector<BenchRow> GenerateBenchRows(size_t nCount);

// The text of list entry nCategory ("Category 01" ...).
CString BenchCategoryName(int nCategory);

// The checksum of an order of rows: nChecksum of the rows before, mixed
// with nRow, the row's index among the generated rows (vaxo057's item ID,
// SQLite's id - 1).
size_t MixOrder(size_t nChecksum, long long nRow);

#endif  // BENCH_SIDEBYSIDE_BENCHROWS_H_
