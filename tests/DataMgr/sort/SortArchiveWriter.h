#ifndef TESTS_DATAMGR_SORT_SORTARCHIVEWRITER_H_
#define TESTS_DATAMGR_SORT_SORTARCHIVEWRITER_H_

// Sort orders written field by field from their documented layouts, and the
// keys of a sort order as text ("4+ 1-c": column 4 ascending, column 1
// descending and case-sensitive).

#include <string>

#include "DataMgr/sort/SortOrder.h"
#include "tests/support/ArchiveTestSupport.h"

namespace sort_test {

using test_support::ByteWriter;

// A sort order of version 0, 2 or later with one key (of version 1) on
// column nColumn, descending and case-sensitive.
inline ByteWriter& OrderWithKey(ByteWriter& out, unsigned nVersion, int nID, const std::string& name, int nColumn) {
  return out.Word(nVersion)      // version
      .Int(nID)                  // ID
      .Text(name)                // name
      .Counter(1, nVersion == 2)  // key count: old format in version 2 only
      .Word(1)                   // key: version
      .Bool(false)               // ascending
      .Bool(true)                // case-sensitive
      .Int(nColumn);             // column ID
}

inline std::string Keys(const SortOrder& order) {
  std::string text;
  for (size_t i = 0; i < order.GetDataPropIDCount(); ++i) {
    bool bAscending = false;
    bool bCaseSensitive = false;
    const int nID = order.GetDataPropIDAt(i, bAscending, bCaseSensitive);
    text += (i > 0 ? " " : "") + std::to_string(nID) + (bAscending ? "+" : "-") + (bCaseSensitive ? "c" : "");
  }
  return text;
}

}  // namespace sort_test

#endif  // TESTS_DATAMGR_SORT_SORTARCHIVEWRITER_H_
