#ifndef DATAMGR_SORT_SORTDATA_H_
#define DATAMGR_SORT_SORTDATA_H_

#include <cstddef>
#include <map>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/records/DataSubItemMgr.h"
#include "DataMgr/schema/DataProp.h"
#include "DataMgr/schema/DataPropMgr.h"
#include "DataMgr/sort/SortOrder.h"
#include "DataMgr/types/Data.h"
#include "framework/CString.h"

// Sorts records (items or sub-items, as Data*) by a SortOrder: stably, key
// by key, each key compared by the rule of its column's data type. Holds
// the directories-first flag of the path rule, a copy of the document's
// alias map (column ID to the column whose list entries or address book it
// uses) and the keys of the last sort resolved to their columns.
//
// It owns nothing: the resolved keys point into the registry or column
// list of the last sort and are valid only while that sort runs. It never
// adds, removes or changes a record or a column; it only reorders the
// vector (or the sub-item collection) it is given. Null records in a vector
// sort first.
//
// The order is the one a stable merge sort with CompareData gives, ties
// and all. Large vectors are sorted on keys extracted once per record (see
// DoTheSort), which gives that same order faster.
class VAXO057_API SortData {
 public:
  // One key of the sort order resolved to its column: the column (and the
  // column whose list entries or address book it uses, or null) belong to
  // the registry or list given to Init.
  struct ResolvedKey {
    const DataProp* pDataProp = nullptr;
    const DataProp* pAliasDataProp = nullptr;
    bool bAscending = true;
    bool bCaseSensitive = false;
  };

  SortData();
  ~SortData();

  bool GetDirectoriesFirst() const { return m_bDirectoriesFirst; }
  void SetDirectoriesFirst(bool bDirectoriesFirst) { m_bDirectoriesFirst = bDirectoriesFirst; }
  void SetDataPropsAliases(const std::map<int, int>& aliases) { m_mapAliases = aliases; }

  // Each sorts only when there are two records or more (the sub-item forms:
  // one or more), order has a key and the columns hold at least one column.
  void Sort(std::vector<Data*>& records, const SortOrder& order, const DataPropMgr& registry);
  void Sort(DataSubItemMgr& subItems, const SortOrder& order, const DataPropMgr& registry);
  void Sort(std::vector<Data*>& records, const SortOrder& order, const std::vector<DataProp*>& columns);
  void Sort(DataSubItemMgr& subItems, const SortOrder& order, const std::vector<DataProp*>& columns);

  // Moves every record whose int value of nDataPropID equals nValue to the
  // front, sorts only those by order and returns their count; 0 for an
  // empty vector, an order without keys or no columns. A record without a
  // value of the column reads as -1; null never matches.
  // The registry form keeps both parts in their relative order and returns
  // the count also when every record matches (then nothing is sorted).
  size_t PartialSort(std::vector<Data*>& records, int nDataPropID, int nValue, const SortOrder& order,
                     const DataPropMgr& registry);
  // The column-list form needs two records or more, exchanges records from
  // both ends (so the part that does not match changes its order) and
  // returns 0, sorting nothing, when none or every record matches.
  size_t PartialSort(std::vector<Data*>& records, int nDataPropID, int nValue, const SortOrder& order,
                     const std::vector<DataProp*>& columns);

 protected:
  // Resolve the keys of order against the registry or the list; a key on a
  // negative or unknown column is dropped.
  void Init(const SortOrder& order, const DataPropMgr& registry);
  void Init(const SortOrder& order, const std::vector<DataProp*>& columns);
  // Whether a comes before b: null records first, then key by key; a key
  // that either record has no value for is passed over.
  bool CompareData(const Data* a, const Data* b) const;
  // The folders of two file paths without their trailing separators,
  // compared by the locale's collation (bCaseSensitive) or ignoring case; 0
  // when neither has a folder.
  int CompareDirs(const CString& a, const CString& b, bool bCaseSensitive) const;
  // The alias of nDataPropID, or nDataPropID itself when it has none.
  int GetAliasDataProp(int nDataPropID) const;
  // Sorts records by the resolved keys, in the order std::stable_sort with
  // CompareData gives. Fewer than SMALL_SORT records are sorted so; more are
  // sorted on keys extracted once per record (SortKeyTable).
  void DoTheSort(std::vector<Data*>& records);

  // Below this count the comparator sorts faster than extracting the keys.
  static constexpr size_t SMALL_SORT = 16;

 private:
  template <typename Lookup>
  void Resolve(const SortOrder& order, Lookup lookup);
  template <typename Columns>
  void SortRecords(std::vector<Data*>& records, size_t nMinCount, const SortOrder& order, const Columns& columns);
  template <typename Columns>
  void SortSubItems(DataSubItemMgr& subItems, const SortOrder& order, const Columns& columns);
  // Init, then DoTheSort on the first nCount records.
  template <typename Columns>
  void SortFront(std::vector<Data*>& records, size_t nCount, const SortOrder& order, const Columns& columns);

  bool m_bDirectoriesFirst = true;
  std::vector<ResolvedKey> m_vecKeys;
  std::map<int, int> m_mapAliases;
};

#endif  // DATAMGR_SORT_SORTDATA_H_
