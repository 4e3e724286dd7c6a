#ifndef IO_CSVEXPORT_H_
#define IO_CSVEXPORT_H_

#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "framework/CString.h"
#include "io/IoExport.h"
#include "io/Progress.h"

// A document's items as comma-separated values (RFC 4180): a heading of
// column names, then one record per item that passes a filter set, each
// value as the text export shows it (the same columns in display order,
// zeros empty, prefix and suffix included) except that line breaks are
// kept, inside quotes. Records end with CR LF; a field is quoted when it
// holds a comma, a double quote (doubled inside), a line break, or blanks
// at either end. Bytes are written as the document holds them. Holds
// nothing.
class VAXO057IO_API CsvExport {
 public:
  static std::string Write(const DataMgmt& doc, const DataFilterMgr& filters, const Progress& progress = Progress());
  // Appends one record of fields to out.
  static void AppendRecord(std::string& out, const std::vector<CString>& fields);
};

#endif  // IO_CSVEXPORT_H_
