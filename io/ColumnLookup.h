#ifndef IO_COLUMNLOOKUP_H_
#define IO_COLUMNLOOKUP_H_

#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/schema/DataProp.h"
#include "framework/CString.h"
#include "io/IoExport.h"

// Columns as a user names and sees them: by name, and the columns a view or
// an export shows. Holds nothing; the pointers it returns are the
// document's and live as long as the column does.
class VAXO057IO_API ColumnLookup {
 public:
  // The column named name: the first column with exactly that name
  // (application columns first), else the only column whose name equals it
  // ignoring case. Null when no column fits, or several fit only ignoring
  // case.
  static DataProp* Find(const DataMgmt& doc, const CString& name);
  // The IDs of the columns a user sees, in display order: those that
  // exist, are displayed and are not hidden from the user interface (the
  // columns of the text export).
  static std::vector<int> GetShownIDs(const DataMgmt& doc);
  // Every column, application columns in slot order, then user columns.
  static std::vector<DataProp*> GetAll(const DataMgmt& doc);
};

#endif  // IO_COLUMNLOOKUP_H_
