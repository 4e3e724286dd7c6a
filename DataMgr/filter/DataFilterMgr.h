#ifndef DATAMGR_FILTER_DATAFILTERMGR_H_
#define DATAMGR_FILTER_DATAFILTERMGR_H_

#include <cstddef>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/filter/DataFilter.h"
#include "DataMgr/records/DataItem.h"
#include "DataMgr/records/DataSubItem.h"
#include "DataMgr/types/Data.h"
#include "DataMgr/types/NextIDMgr.h"
#include "framework/CArchive.h"

// A filter set: conditions in the user's order, and the next filter ID to
// hand out. A record passes the set when every required filter passes and,
// if there are optional ones, at least one of them; a filter on column -1
// is not valid and is skipped by every evaluation and count (it stays in
// the list). The set reads a record's values only through Data's typed
// getters, picking the kind from each filter's data type.
//
// Ownership: the set owns every filter in its list and destroys it in
// Delete, DeleteAll, RemoveDataProp and its destructor; Add takes a filter
// over. It never holds null. Copies are deep but hold plain DataFilter
// copies whatever the class of the source's filters (a highlight set copies
// its rules whole with CopyEntries); assignment destroys the filters held.
//
// Results: GetAt gives null for an index out of range; Update ignores one;
// Delete ignores null and filters of other sets. Nothing throws but the
// archive.
//
// The virtual operations, in this order, are part of the binary interface:
// CreateFilter, the destructor, Serialize.
class VAXO057_API DataFilterMgr {
 public:
  DataFilterMgr() = default;
  DataFilterMgr(const DataFilterMgr& other);
  DataFilterMgr& operator=(const DataFilterMgr& other);

 protected:
  // A new default filter of the set's own class, for loading; the caller
  // owns it.
  virtual DataFilter* CreateFilter() const;

 public:
  virtual ~DataFilterMgr();
  // See the layout above the definition; version 2 is current.
  virtual void Serialize(CArchive& ar);

  size_t GetCount() const { return m_vecFilters.size(); }
  DataFilter* GetAt(size_t nIndex) const { return nIndex < m_vecFilters.size() ? m_vecFilters[nIndex] : nullptr; }

  // Appends pFilter and takes it over (null is ignored); bAssignID gives it
  // the next ID.
  void Add(DataFilter* pFilter, bool bAssignID);
  // Assigns *pSource to the filter at nIndex (its DataFilter part only);
  // the caller keeps pSource.
  void Update(size_t nIndex, const DataFilter* pSource);
  void Delete(DataFilter* pFilter);
  // bResetIDs starts the IDs at 0 again.
  void DeleteAll(bool bResetIDs);
  // Destroys every filter on that column; true when there was one.
  bool RemoveDataProp(int nDataPropID);

  // An item passes a filter on a column it holds by its own value, and a
  // filter on a column it lacks when one of its sub-items holds the column
  // and passes: each filter may be passed by another sub-item.
  bool PassesFilters(const DataItem& item) const;
  // A filter on a column the sub-item lacks passes when bPassIfNoValue; a
  // filter on a column it holds whose data type keeps no value that a
  // filter can test makes the sub-item fail, whatever the other filters say.
  bool PassesFilters(const DataSubItem& subItem, bool bPassIfNoValue) const;

 protected:
  static bool IsValid(const DataFilter& filter) { return filter.GetDataPropID() != -1; }
  // The valid filters, required and optional.
  void GetFiltersInfo(int& nRequired, int& nOptional) const;
  // One filter alone on an item (through its sub-items as above), and on a
  // record that holds the filter's column. Protected, not private, so that
  // a highlight set evaluates one rule without building a set for it.
  bool DoesDataItemPassFilter(const DataItem& item, const DataFilter& filter) const;
  bool DoesDataPassFilter(const Data& data, const DataFilter& filter) const;
  // Whether the filter set reads a value of nType (every type but 17, 20,
  // 23, 24, 29, the thumbnail, the icon and unknown numbers).
  static bool HasFilterValue(DataType::Type nType);

 private:
  // The combination rule over the valid filters, with passes(filter) the
  // result of one filter.
  template <typename Passes>
  bool Combine(Passes passes) const;
  void CopyFiltersFrom(const DataFilterMgr& other);

  NextIDMgr m_nextID;
  std::vector<DataFilter*> m_vecFilters;  // owned
};

#endif  // DATAMGR_FILTER_DATAFILTERMGR_H_
