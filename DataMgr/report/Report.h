#ifndef DATAMGR_REPORT_REPORT_H_
#define DATAMGR_REPORT_REPORT_H_

#include <cstddef>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/filter/DataFilter.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "DataMgr/records/DataItem.h"
#include "DataMgr/records/DataSubItem.h"
#include "DataMgr/sort/SortOrder.h"
#include "framework/CArchive.h"
#include "framework/CString.h"

// A saved view of a document's records: the columns shown, in display order
// (the same column may be listed twice), the filter set a record must pass,
// the sort order, a name, a description and the folder last used to export
// it. Columns are referred to by ID within the column registry whose ID the
// report carries; nothing here checks that they exist. Rendering is the
// host's.
//
// The report owns its filter set and every filter handed to AddFilter; it
// holds its sort order by value. Copies are deep. Equality compares the
// names exactly; ordering compares them ignoring case, so Books and books
// are unequal although neither orders before the other.
//
// The virtual operations, in this order, are part of the binary interface:
// the destructor, Serialize, RemoveDataPropAtIndex, RemoveDataPropID.
class VAXO057_API Report {
 public:
  Report();
  Report(const Report& other);
  Report& operator=(const Report& other);
  virtual ~Report();

  // See the layout above the definition; version 6 is current.
  virtual void Serialize(CArchive& ar);
  // Removes the column at nIndex from the column list; an index out of
  // range does nothing.
  virtual void RemoveDataPropAtIndex(size_t nIndex);
  // Removes every entry of nDataPropID from the column list; true when
  // there was one. The filters and the sort order are not touched.
  virtual bool RemoveDataPropID(int nDataPropID);

  bool operator==(const Report& other) const { return m_strName == other.m_strName; }
  bool operator!=(const Report& other) const { return !(*this == other); }
  bool operator<(const Report& other) const { return m_strName.CompareNoCase(other.m_strName) < 0; }

  int GetID() const { return m_nID; }
  void SetID(int nID) { m_nID = nID; }
  int GetDataPropMgrID() const { return m_nDataPropMgrID; }
  void SetDataPropMgrID(int nID) { m_nDataPropMgrID = nID; }
  void GetSortOrder(SortOrder& out) const { out = m_sortOrder; }
  void SetSortOrder(const SortOrder& order) { m_sortOrder = order; }
  const CString& GetName() const { return m_strName; }
  void SetName(const CString& name) { m_strName = name; }
  const CString& GetDesc() const { return m_strDesc; }
  void SetDesc(const CString& desc) { m_strDesc = desc; }
  const CString& GetMRUExportPath() const { return m_strMRUExportPath; }
  void SetMRUExportPath(const CString& path) { m_strMRUExportPath = path; }

  // The column list, in display order.
  void AddDataPropID(int nDataPropID) { m_vecDataPropIDs.push_back(nDataPropID); }
  void GetDataPropIDs(std::vector<int>& out) const { out = m_vecDataPropIDs; }
  void RemoveDataProps() { m_vecDataPropIDs.clear(); }
  // Exchanges two entries when both indexes are in range, else nothing.
  void SwapDataProps(size_t nA, size_t nB);

  // Takes pFilter over and gives it the next filter ID; null is ignored.
  void AddFilter(DataFilter* pFilter) { m_filters.Add(pFilter, true); }
  // Destroys a filter of this report; null or another's does nothing.
  void DeleteFilter(DataFilter* pFilter) { m_filters.Delete(pFilter); }
  // Destroys every filter; the next filter gets ID 0.
  void DeleteAllFilters() { m_filters.DeleteAll(true); }
  size_t GetFilterCount() const { return m_filters.GetCount(); }
  // Null for an index out of range; the report keeps the filter.
  DataFilter* GetFilterAt(size_t nIndex) const { return m_filters.GetAt(nIndex); }

  // Whether a record belongs in the report, by the filter set's rules
  // (DataFilterMgr::PassesFilters).
  bool DoesDataItemPassFilters(const DataItem& item) const { return m_filters.PassesFilters(item); }
  bool DoesDataSubItemPassFilters(const DataSubItem& subItem, bool bPassIfNoValue) const {
    return m_filters.PassesFilters(subItem, bPassIfNoValue);
  }

 private:
  int m_nID = -1;
  int m_nDataPropMgrID = 0;
  SortOrder m_sortOrder;
  CString m_strName;
  CString m_strDesc;
  CString m_strMRUExportPath;
  DataFilterMgr m_filters;
  std::vector<int> m_vecDataPropIDs;  // display order, duplicates allowed
};

#endif  // DATAMGR_REPORT_REPORT_H_
