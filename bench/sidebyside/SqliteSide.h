#ifndef BENCH_SIDEBYSIDE_SQLITESIDE_H_
#define BENCH_SIDEBYSIDE_SQLITESIDE_H_

#include <sqlite3.h>

#include <cstddef>
#include <string>
#include <vector>

#include "bench/sidebyside/BenchRows.h"

// The SQLite side of the table: one in-memory database holding the bench
// rows in a table of ten typed columns (texts as TEXT, numbers, days, cents,
// list entries and yes/no as INTEGER, the decimal as REAL). Each operation
// returns the count the vaxo057 side must agree with. A failing SQLite call
// ends the program with its message.
class SqliteSide {
 public:
  SqliteSide() = default;
  SqliteSide(const SqliteSide&) = delete;
  SqliteSide& operator=(const SqliteSide&) = delete;
  ~SqliteSide();

  // A new database of the rows, inserted in one transaction through one
  // prepared statement with bound typed values. Returns the row count.
  size_t Build(const std::vector<BenchRow>& rows);
  // Copies the database into a file through the backup interface, without
  // journal or flush to the disk; returns the rows written.
  size_t Save(const std::string& strPath) const;
  // Opens the file and reads every value of every row (text bytes and
  // numbers, nothing kept); returns the rows read.
  static size_t OpenAndReadEveryRow(const std::string& strPath);
  // Replaces the database by a copy of the file in memory (untimed set-up).
  void Restore(const std::string& strPath);
  // Scans the table and formats every value as text into a reused buffer;
  // returns the cells not empty.
  size_t RenderEveryCell() const;
  // The queries the vaxo057 side runs, each stepping through the IDs of
  // the rows it selects. ORDER BY title (NOCASE), number DESC, id; returns
  // the checksum of the IDs in that order (MixOrder).
  size_t SortTitleThenNumber() const;
  // WHERE number > nMinimum AND title LIKE '%part%'; returns the rows.
  size_t FilterNumberAndTitle(int nMinimum, const char* pszPart) const;
  // WHERE title, notes or place LIKE '%word%'; returns the rows.
  size_t SearchTexts(const char* pszWord) const;
  // Closes the database; returns the rows it held.
  size_t Destroy();

  // The bytes of the database's pages.
  size_t GetPageBytes() const;

 private:
  sqlite3* m_pDb = nullptr;
  size_t m_nRows = 0;
};

#endif  // BENCH_SIDEBYSIDE_SQLITESIDE_H_
