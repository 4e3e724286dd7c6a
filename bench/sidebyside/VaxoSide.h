#ifndef BENCH_SIDEBYSIDE_VAXOSIDE_H_
#define BENCH_SIDEBYSIDE_VAXOSIDE_H_

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilter.h"
#include "bench/sidebyside/BenchRows.h"

// The vaxo057 side of the table: one document of the ten bench columns.
// Each operation returns the count the SQLite side must agree with.
class VaxoSide {
 public:
  VaxoSide();
  VaxoSide(const VaxoSide&) = delete;
  VaxoSide& operator=(const VaxoSide&) = delete;
  ~VaxoSide();

  // A new document of the rows: each item created by the document (which
  // registers the columns' defaults), then given its ten typed values
  // through Data::SetData, not undoable. Returns the item count.
  size_t Build(const std::vector<BenchRow>& rows);
  // A new document of the rows, each value typed as text through
  // DataMgmt::SetData as an undoable edit (so every item keeps a history).
  size_t TypeEveryValue(const std::vector<BenchRow>& rows);
  // Writes the document to a file (no flush to the disk); returns the item
  // count written.
  size_t Save(const std::string& strPath) const;
  // Replaces the document by the one in the file; returns its item count.
  size_t Load(const std::string& strPath);
  // GetTextRepresentation of every cell; returns the cells not empty.
  size_t RenderEveryCell() const;
  // Destroys the document; returns the items it held.
  size_t Destroy();

  // The queries, on the document's items in their list order.
  std::vector<Data*> GetRecords() const;
  // Sorts records by title ascending ignoring case, then number descending
  // (ties keep their order); returns the checksum of the item IDs in the
  // sorted order (MixOrder).
  size_t SortTitleThenNumber(std::vector<Data*>& records) const;
  // The items whose number is above nMinimum and whose title contains
  // pszPart (two required filters); returns their count.
  size_t FilterNumberAndTitle(int nMinimum, const char* pszPart) const;
  // Searches pszWord (case ignored, not a whole word) in the three text
  // columns; returns the count of items with a hit.
  size_t SearchTexts(const char* pszWord) const;

 private:
  void NewDocument();
  DataFilter* MakeFilter(size_t nColumn, DataFilter::FilterType nTest, const CString& value) const;

  std::unique_ptr<DataMgmt> m_pDoc;
  std::vector<int> m_vecColumns;
  std::vector<int> m_vecCategoryIDs;  // the list entry of each category
};

#endif  // BENCH_SIDEBYSIDE_VAXOSIDE_H_
