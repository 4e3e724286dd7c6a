#ifndef TESTS_DATAMGR_FILTER_FILTERFIXTURES_H_
#define TESTS_DATAMGR_FILTER_FILTERFIXTURES_H_

// Helpers of the filter tests: a document with one column per data type,
// conditions made as a host makes them, and filter records written field by
// field.

#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilter.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/support/ArchiveTestSupport.h"

namespace filter_test {

// The flags of a condition other than its defaults.
enum Flags { NONE = 0, EXCLUDE = 1, CASE = 2, WHOLE = 4, OPTIONAL = 8 };

// Types a value as the user would; the change need not be reported.
inline void Type(DataMgmt& doc, Data& record, const DataProp& prop, const char* pszText) {
  bool bRedisplay = false;
  doc.SetData(record, prop.GetID(), pszText, bRedisplay, true);
}

// A condition on prop; for a list column pszValue names the one selected
// entry (none when empty).
inline DataFilter* MakeFilter(const DataProp& prop, DataFilter::FilterType nTest, const char* pszValue, int nFlags) {
  auto* pFilter = new DataFilter;
  pFilter->SetDataPropID(prop.GetID());
  pFilter->SetDataType(prop.GetDataType());
  pFilter->SetFilterType(nTest);
  pFilter->SetInclude(!(nFlags & EXCLUDE));
  pFilter->SetCaseSensitive(nFlags & CASE);
  pFilter->SetWholeWord(nFlags & WHOLE);
  pFilter->SetRequired(!(nFlags & OPTIONAL));
  const ListItem* pEntry = DataType::IsListType(prop.GetDataType()) ? prop.GetListItemByValue(pszValue) : nullptr;
  if (pEntry != nullptr) {
    pFilter->SetValue(std::vector<int>{pEntry->GetID()});
  } else if (!DataType::IsListType(prop.GetDataType())) {
    pFilter->SetValue(CString(pszValue));
  }
  return pFilter;
}

// A version 2 or 3 DataFilter record: include, case-sensitive, whole-word,
// required, ID, column ID, filter type, data type, value, value list.
struct FilterRecord {
  explicit FilterRecord(int nFilterID = -1, const char* pszValue = "", unsigned nFilterVersion = 3)
      : nVersion(nFilterVersion), nID(nFilterID), value(pszValue) {}

  unsigned nVersion;
  bool bInclude = true;
  bool bCase = false;
  bool bWhole = false;
  bool bRequired = true;
  int nID;
  int nColumn = -1;
  unsigned nTest = 0;
  unsigned nType = DataType::Text;
  std::string value;
  std::vector<int> ids;

  test_support::ByteWriter& AppendTo(test_support::ByteWriter& out) const {
    out.Word(nVersion);
    if (nVersion < 2) return out;
    out.Bool(bInclude).Bool(bCase).Bool(bWhole).Bool(bRequired).Int(nID).Int(nColumn).Word(nTest);
    out.Word(1).Word(nType);  // the DataType record: its version, the type
    out.Text(value).Counter(ids.size(), nVersion == 2);
    for (int nEntryID : ids) out.Int(nEntryID);
    return out;
  }
  test_support::Bytes Get() const {
    test_support::ByteWriter out;
    return AppendTo(out).Get();
  }
};

}  // namespace filter_test

#endif  // TESTS_DATAMGR_FILTER_FILTERFIXTURES_H_
