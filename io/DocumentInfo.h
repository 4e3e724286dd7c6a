#ifndef IO_DOCUMENTINFO_H_
#define IO_DOCUMENTINFO_H_

#include <utility>
#include <vector>

#include "DataMgr/schema/DataProp.h"
#include "framework/CString.h"
#include "framework/Types.h"
#include "io/IoExport.h"

// What a document's file and columns tell about themselves beyond their
// contents: the schema versions the file was written with, and the flags
// by which a column differs from a new one. Holds nothing.
class VAXO057IO_API DocumentInfo {
 public:
  // The version words of the document, of its column registry and of its
  // item list, which begin the three parts of a document's archive.
  struct Versions {
    WORD nDocument = 0;
    WORD nColumns = 0;
    WORD nItems = 0;
  };
  // Reads the versions from the file at path; false when the file cannot
  // be read or ends before the item list begins.
  static bool ReadVersions(const CString& path, Versions& versions);

  // The flags of prop whose value differs from a new column's, by their
  // names in the JSON form, with prop's values, in the column's order.
  static std::vector<std::pair<CString, bool>> GetChangedFlags(const DataProp& prop);
};

#endif  // IO_DOCUMENTINFO_H_
