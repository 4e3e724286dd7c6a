#ifndef IO_DOCUMENTVIEW_H_
#define IO_DOCUMENTVIEW_H_

#include <cstddef>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "DataMgr/sort/SortOrder.h"
#include "framework/CString.h"
#include "io/IoExport.h"

// What a list view of a document shows: some columns, the items that pass
// a filter set in the order of a sort order, perhaps only the first few,
// each perhaps followed by its sub-items, every value as the document
// shows it (zeros empty, prefix and suffix included). It holds the texts,
// not the document.
class VAXO057IO_API DocumentView {
 public:
  struct Column {
    int nID;
    CString name;
    bool bNumeric;  // a number type, shown aligned to the right
  };
  struct Row {
    int nItemID;
    int nSubItemID;              // -1 for the item itself
    std::vector<CString> texts;  // one per column
  };

  // Builds the view: the columns named in columnNames (by ColumnLookup;
  // none names the shown columns in display order), the items that pass
  // filters, sorted by order when it has keys (this reorders doc's items
  // as DataMgmt::Sort does), the first nLimit of them (0: all), each
  // followed by its sub-items when bSubItems. False, with error naming it,
  // for a column name that names no column.
  bool Build(DataMgmt& doc, const std::vector<CString>& columnNames, const DataFilterMgr& filters,
             const SortOrder& order, size_t nLimit, bool bSubItems, CString& error);

  const std::vector<Column>& GetColumns() const { return m_vecColumns; }
  const std::vector<Row>& GetRows() const { return m_vecRows; }
  // The items that pass the filters, the ones beyond the limit included.
  size_t GetPassingCount() const { return m_nPassing; }

  // Appends to order the sort key written in key: a column name, then
  // optionally ":desc" (descending) and ":case" (case-sensitive) in either
  // order. Ascending dates and times list the latest first, as the sort
  // engine does. False, with error, for a name that names no column.
  static bool AddSortKey(const DataMgmt& doc, const CString& key, SortOrder& order, CString& error);

 private:
  std::vector<Column> m_vecColumns;
  std::vector<Row> m_vecRows;
  size_t m_nPassing = 0;
};

#endif  // IO_DOCUMENTVIEW_H_
