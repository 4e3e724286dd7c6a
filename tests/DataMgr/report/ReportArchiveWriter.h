#ifndef TESTS_DATAMGR_REPORT_REPORTARCHIVEWRITER_H_
#define TESTS_DATAMGR_REPORT_REPORTARCHIVEWRITER_H_

// Reports, web reports and their levels written field by field from their
// documented layouts, and a condition on a yes/no column.

#include "DataMgr/filter/DataFilter.h"
#include "DataMgr/report/Report.h"
#include "DataMgr/sort/SortOrder.h"
#include "tests/DataMgr/sort/SortArchiveWriter.h"
#include "tests/support/ArchiveTestSupport.h"

namespace report_test {

using test_support::Bytes;
using test_support::ByteWriter;

// "Column nColumn is checked", required.
inline DataFilter* Checked(int nColumn) {
  auto* pFilter = new DataFilter;
  pFilter->SetDataPropID(nColumn);
  pFilter->SetDataType(DataType::YesNo);
  pFilter->SetFilterType(DataFilter::IsChecked);
  return pFilter;
}

// A filter set of version 2: Checked(1) with ID nID, or no filter when nID
// is below 0.
inline Bytes Filters(int nID) {
  ByteWriter out;
  out.Word(2).Counter(nID < 0 ? 0 : 1, false);  // version, filter count
  if (nID < 0) return out.Get();
  out.Word(3).Bool(true).Bool(false).Bool(false).Bool(true);  // version, include, case, whole word, required
  out.Int(nID).Int(1).Word(DataFilter::IsChecked);            // ID, column ID, filter type
  out.Word(1).Word(DataType::YesNo).Text("").Counter(0, false);  // data type (version, type), value, value list
  return out.Get();
}

// A report of nVersion: ID 4, registry nRegistry, name "R", description
// "d", MRU path "m", sort order 2 "S" on column 7 descending and
// case-sensitive, columns 7 and 3, then the filter set.
inline ByteWriter& ReportRecord(ByteWriter& out, unsigned nVersion, int nRegistry, const Bytes& filters) {
  out.Word(nVersion).Int(4).Int(nRegistry).Text("R");  // version, ID, registry ID, name
  if (nVersion >= 5) out.Text("d");                    // description
  out.Text("m");                                       // MRU export path
  sort_test::OrderWithKey(out, 3, 2, "S", 7);          // sort order
  out.Counter(2, nVersion < 6).Int(7).Int(3);          // column IDs
  return out.Raw(filters);                             // filters
}

// A sort order on nColumn descending and case-sensitive.
inline SortOrder Order(int nID, const char* pszName, int nColumn) {
  SortOrder order;
  order.SetID(nID);
  order.SetName(pszName);
  order.AddDataPropID(nColumn, false, true);
  return order;
}

// A level: template "t.html", sort order 1 "L". From version 2 the sort
// order is in its own form, one key on column 5 descending and
// case-sensitive; version 1 holds it inline, keys on columns 7, 8 and 9 with
// the flag words 1, 0 and 2 (only 1 is ascending).
inline ByteWriter& Level(ByteWriter& out, unsigned nVersion) {
  out.Word(nVersion).Text("t.html");                                     // version, template file
  if (nVersion >= 2) return sort_test::OrderWithKey(out, 3, 1, "L", 5);  // sort order
  out.Word(0).Int(1).Text("L").Int(3);  // skipped word, sort order ID, name, key count
  out.Word(0).Word(1).Int(7);           // key: skipped word, ascending flag, column ID
  out.Word(0).Word(0).Int(8);           // key
  return out.Word(0).Word(2).Int(9);    // key
}

// A web report of nVersion after the report of FillReport: not generated,
// not uploaded, images at 2, main page "index.html" in "/out/", link "home",
// no-data text "none", one level (of version 1 in version 5, the oldest),
// own filters Filters(nFilterID).
inline ByteWriter& WebReportRecord(ByteWriter& out, unsigned nVersion, int nFilterID) {
  ReportRecord(out, 6, 0, Filters(0));
  out.Word(nVersion).Bool(false).Bool(false).Word(2);  // version, AutoGenerate, AutoUpload, ImageLocation
  if (nVersion >= 5 && nVersion <= 7) out.Int(-1);    // retired value
  out.Text("index.html").Text("/out/");               // BaseFileName, OutputDir
  if (nVersion >= 13) out.Text("home");               // HPReturnLink
  if (nVersion >= 6) out.Text("none");                // NoDataMsg
  Level(out.Counter(1, nVersion < 10), nVersion == 5 ? 1 : 2);  // level count, the level
  if (nVersion >= 9 && nVersion <= 11) out.Counter(2, false).Text("x").Text("y");  // retired texts
  out.Raw(Filters(nFilterID));                                                     // own filters
  if (nVersion >= 5 && nVersion <= 7) out.Counter(1, true).Int(8);                 // retired set
  if (nVersion == 6) out.Counter(2, true).Int(1).Int(2);                           // second retired set
  return out;
}

}  // namespace report_test

#endif  // TESTS_DATAMGR_REPORT_REPORTARCHIVEWRITER_H_
