#ifndef IO_CONDITIONPARSER_H_
#define IO_CONDITIONPARSER_H_

#include <memory>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilter.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "framework/CString.h"
#include "io/IoExport.h"

// Conditions typed as text, such as "Year > 1960", "Title contains dune",
// "Genre is Fantasy,Science Fiction", "Read is checked", "Bought newer than
// 2020-01-01", "Notes has data" or "not Genre is Horror", made into the
// DataFilter conditions of a document's columns.
//
// An expression is an optional "not" (which excludes instead of includes),
// a column name (in double quotes when it needs them), a test and, for most
// tests, a value. The tests, in any letter case:
//   has data, has any data, is empty      any column the test suits
//   is checked, is not checked            yes/no columns
//   = (or ==, is exactly), <, >           a single value
//   contains                              a part of the text as shown
//   newer than, older than                dates and times (the date itself counts)
//   is, is not                            list and address columns: one of
//                                         the entries, comma-separated (an
//                                         entry with a comma in double quotes);
//                                         other columns: the value exactly
// Each test is offered only where the filter conditions offer it for the
// column's type (DataFilter::GetValidFilterTypesForDataType). The parser
// holds the document it reads column names and entries from; the document
// must outlive it.
class VAXO057IO_API ConditionParser {
 public:
  explicit ConditionParser(const DataMgmt& doc) : m_doc(doc) {}

  // The condition of expression, required (a filter set's AND) or
  // optional (OR). Null, with error set to one line saying what does not
  // fit ("no column \"Colour\""), when the expression cannot be read.
  std::unique_ptr<DataFilter> Parse(const CString& expression, bool bRequired, CString& error) const;
  // Adds the conditions of required and of optional to filters; false,
  // with error naming the expression, at the first that cannot be read
  // (the conditions before it stay added).
  bool AddTo(DataFilterMgr& filters, const std::vector<CString>& required, const std::vector<CString>& optional,
             CString& error) const;

 private:
  const DataMgmt& m_doc;
};

#endif  // IO_CONDITIONPARSER_H_
