#include "bench/sidebyside/SqliteSide.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

const char* const CREATE_TABLE =
    "CREATE TABLE items(id INTEGER PRIMARY KEY, title TEXT, notes TEXT, place TEXT, number INTEGER, "
    "small INTEGER, decimal REAL, day INTEGER, cents INTEGER, category INTEGER, done INTEGER)";
const char* const INSERT_ROW =
    "INSERT INTO items(title, notes, place, number, small, decimal, day, cents, category, done) "
    "VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";
const char* const SELECT_ROWS =
    "SELECT title, notes, place, number, small, decimal, day, cents, category, done FROM items";
const int TEXT_COLUMNS = 3;
const int COLUMNS = 10;

void Check(sqlite3* pDb, int nResult, const char* pszWhat) {
  if (nResult == SQLITE_OK || nResult == SQLITE_DONE || nResult == SQLITE_ROW) return;
  std::fprintf(stderr, "sqlite: %s: %s\n", pszWhat, pDb ? sqlite3_errmsg(pDb) : sqlite3_errstr(nResult));
  std::exit(1);
}

void Execute(sqlite3* pDb, const char* pszSql) { Check(pDb, sqlite3_exec(pDb, pszSql, nullptr, nullptr, nullptr), pszSql); }

// A prepared statement, finalized when it goes.
class Statement {
 public:
  Statement(sqlite3* pDb, const char* pszSql) : m_pDb(pDb) {
    Check(pDb, sqlite3_prepare_v2(pDb, pszSql, -1, &m_pStatement, nullptr), pszSql);
  }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement() { sqlite3_finalize(m_pStatement); }

  sqlite3_stmt* Get() const { return m_pStatement; }
  // True while there is a row.
  bool Step() {
    const int nResult = sqlite3_step(m_pStatement);
    Check(m_pDb, nResult, "step");
    return nResult == SQLITE_ROW;
  }

 private:
  sqlite3* m_pDb;
  sqlite3_stmt* m_pStatement = nullptr;
};

sqlite3* Open(const std::string& strPath, int nFlags) {
  sqlite3* pDb = nullptr;
  Check(pDb, sqlite3_open_v2(strPath.c_str(), &pDb, nFlags, nullptr), strPath.c_str());
  return pDb;
}

void Copy(sqlite3* pFrom, sqlite3* pTo) {
  sqlite3_backup* pBackup = sqlite3_backup_init(pTo, "main", pFrom, "main");
  if (pBackup == nullptr) Check(pTo, sqlite3_errcode(pTo), "backup");
  sqlite3_backup_step(pBackup, -1);
  Check(pTo, sqlite3_backup_finish(pBackup), "backup");
}

void BindText(sqlite3_stmt* pStatement, int nIndex, const CString& text) {
  sqlite3_bind_text(pStatement, nIndex, text.GetString(), text.GetLength(), SQLITE_STATIC);
}

size_t CountRows(Statement& statement) {
  size_t nRows = 0;
  while (statement.Step()) ++nRows;
  return nRows;
}

size_t QueryNumber(sqlite3* pDb, const char* pszSql) {
  Statement statement(pDb, pszSql);
  return statement.Step() ? static_cast<size_t>(sqlite3_column_int64(statement.Get(), 0)) : 0;
}

// The Gregorian date of a Julian day number, as m/d/yyyy.
int FormatJulianDay(char* pszOut, size_t nSize, int nJulianDay) {
  int l = nJulianDay + 68569;
  const int n = 4 * l / 146097;
  l -= (146097 * n + 3) / 4;
  const int i = 4000 * (l + 1) / 1461001;
  l = l - 1461 * i / 4 + 31;
  const int j = 80 * l / 2447;
  const int nDay = l - 2447 * j / 80;
  l = j / 11;
  const int nMonth = j + 2 - 12 * l;
  const int nYear = 100 * (n - 49) + i + l;
  return std::snprintf(pszOut, nSize, "%d/%d/%04d", nMonth, nDay, nYear);
}

int CopyText(char* pszOut, size_t nSize, const char* pszText, size_t nLength) {
  const size_t nCopied = nLength < nSize - 1 ? nLength : nSize - 1;
  std::memcpy(pszOut, pszText, nCopied);
  pszOut[nCopied] = '\0';
  return static_cast<int>(nCopied);
}

// Column nColumn of the current row as text in buffer; returns its length.
int FormatCell(sqlite3_stmt* pRow, int nColumn, const std::vector<CString>& categories, char* pszBuffer,
               size_t nSize) {
  if (nColumn < TEXT_COLUMNS) {
    const auto* pszText = reinterpret_cast<const char*>(sqlite3_column_text(pRow, nColumn));
    return CopyText(pszBuffer, nSize, pszText, static_cast<size_t>(sqlite3_column_bytes(pRow, nColumn)));
  }
  const long long n = sqlite3_column_int64(pRow, nColumn);
  switch (nColumn) {
    case 5:
      return std::snprintf(pszBuffer, nSize, "%.2f", sqlite3_column_double(pRow, nColumn));
    case 6:
      return FormatJulianDay(pszBuffer, nSize, static_cast<int>(n));
    case 7:
      return std::snprintf(pszBuffer, nSize, "%lld.%02lld", n / 100, n % 100);
    case 8: {
      const CString& name = categories[static_cast<size_t>(n)];
      return CopyText(pszBuffer, nSize, name.GetString(), static_cast<size_t>(name.GetLength()));
    }
    case 9:
      return CopyText(pszBuffer, nSize, n != 0 ? "Y" : "N", 1);
    default:
      return std::snprintf(pszBuffer, nSize, "%lld", n);
  }
}

}  // namespace

SqliteSide::~SqliteSide() { Destroy(); }

size_t SqliteSide::Build(const std::vector<BenchRow>& rows) {
  Destroy();
  m_pDb = Open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  Execute(m_pDb, CREATE_TABLE);
  Execute(m_pDb, "BEGIN");
  {
    Statement insert(m_pDb, INSERT_ROW);
    sqlite3_stmt* p = insert.Get();
    for (const BenchRow& row : rows) {
      BindText(p, 1, row.strTitle);
      BindText(p, 2, row.strNotes);
      BindText(p, 3, row.strPlace);
      sqlite3_bind_int(p, 4, row.nNumber);
      sqlite3_bind_int(p, 5, row.nSmall);
      sqlite3_bind_double(p, 6, row.dDecimal);
      sqlite3_bind_int(p, 7, row.nJulianDay);
      sqlite3_bind_int64(p, 8, row.nCents);
      sqlite3_bind_int(p, 9, row.nCategory);
      sqlite3_bind_int(p, 10, row.bDone ? 1 : 0);
      insert.Step();
      sqlite3_reset(p);
    }
  }
  Execute(m_pDb, "COMMIT");
  m_nRows = rows.size();
  return m_nRows;
}

size_t SqliteSide::Save(const std::string& strPath) const {
  std::remove(strPath.c_str());
  sqlite3* pFile = Open(strPath, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  Execute(pFile, "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF");
  Copy(m_pDb, pFile);
  const size_t nRows = QueryNumber(pFile, "SELECT count(*) FROM items");
  sqlite3_close(pFile);
  return nRows;
}

size_t SqliteSide::OpenAndReadEveryRow(const std::string& strPath) {
  sqlite3* pDb = Open(strPath, SQLITE_OPEN_READONLY);
  size_t nRows = 0;
  {
    Statement select(pDb, SELECT_ROWS);
    sqlite3_stmt* p = select.Get();
    long long nSum = 0;
    while (select.Step()) {
      for (int i = 0; i < TEXT_COLUMNS; ++i) {
        sqlite3_column_text(p, i);
        nSum += sqlite3_column_bytes(p, i);
      }
      for (int i = TEXT_COLUMNS; i < COLUMNS; ++i) nSum += sqlite3_column_int64(p, i);
      ++nRows;
    }
    if (nSum == -1) nRows = 0;  // keeps the reads
  }
  sqlite3_close(pDb);
  return nRows;
}

void SqliteSide::Restore(const std::string& strPath) {
  Destroy();
  m_pDb = Open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  sqlite3* pFile = Open(strPath, SQLITE_OPEN_READONLY);
  Copy(pFile, m_pDb);
  sqlite3_close(pFile);
  m_nRows = QueryNumber(m_pDb, "SELECT count(*) FROM items");
}

size_t SqliteSide::RenderEveryCell() const {
  std::vector<CString> categories;
  for (int i = 0; i < BENCH_CATEGORIES; ++i) categories.push_back(BenchCategoryName(i));
  Statement select(m_pDb, SELECT_ROWS);
  char szCell[256];
  size_t nCells = 0;
  while (select.Step()) {
    for (int i = 0; i < COLUMNS; ++i) {
      if (FormatCell(select.Get(), i, categories, szCell, sizeof szCell) > 0) ++nCells;
    }
  }
  return nCells;
}

size_t SqliteSide::SortTitleThenNumber() const {
  Statement select(m_pDb, "SELECT id - 1 FROM items ORDER BY title COLLATE NOCASE, number DESC, id");
  size_t nChecksum = 0;
  while (select.Step()) nChecksum = MixOrder(nChecksum, sqlite3_column_int64(select.Get(), 0));
  return nChecksum;
}

size_t SqliteSide::FilterNumberAndTitle(int nMinimum, const char* pszPart) const {
  Statement select(m_pDb, "SELECT id FROM items WHERE number > ?1 AND title LIKE ?2");
  const CString pattern = CString("%") + pszPart + "%";
  sqlite3_bind_int(select.Get(), 1, nMinimum);
  BindText(select.Get(), 2, pattern);
  return CountRows(select);
}

size_t SqliteSide::SearchTexts(const char* pszWord) const {
  Statement select(m_pDb, "SELECT id FROM items WHERE title LIKE ?1 OR notes LIKE ?1 OR place LIKE ?1");
  const CString pattern = CString("%") + pszWord + "%";
  BindText(select.Get(), 1, pattern);
  return CountRows(select);
}

size_t SqliteSide::Destroy() {
  if (m_pDb == nullptr) return 0;
  sqlite3_close(m_pDb);
  m_pDb = nullptr;
  const size_t nRows = m_nRows;
  m_nRows = 0;
  return nRows;
}

size_t SqliteSide::GetPageBytes() const {
  return QueryNumber(m_pDb, "PRAGMA page_count") * QueryNumber(m_pDb, "PRAGMA page_size");
}
