#ifndef DATAMGR_RECORDS_RECORDORDER_H_
#define DATAMGR_RECORDS_RECORDORDER_H_

// Internal to the library: the sort engine's one way into the private list
// of a record collection (the items of a document, the sub-items of an
// item). It reads the list as Data* and puts it into a new order; it
// cannot add, remove or replace a record. Not exported: hosts reorder
// records through SortData, DataMgmt::Sort, Move and Swap.

#include <cstddef>
#include <type_traits>
#include <vector>

#include "DataMgr/types/Data.h"

class RecordOrder {
 public:
  // The records in list order.
  template <typename Collection>
  static std::vector<Data*> Get(const Collection& list) {
    return std::vector<Data*>(list.Records().begin(), list.Records().end());
  }

  // Puts the list into the order of records.
  // REQUIRES: records holds every record of the list exactly once (as Get
  // gave them, reordered); the list must not change in between.
  template <typename Collection>
  static void Set(Collection& list, const std::vector<Data*>& records) {
    if (records.empty() || records.size() != list.GetCount()) return;
    auto& listed = list.EditRecords();
    using Record = typename std::remove_pointer<typename std::remove_reference<decltype(listed)>::type::value_type>::type;
    for (size_t i = 0; i < records.size(); ++i) listed[i] = static_cast<Record*>(records[i]);
  }
};

#endif  // DATAMGR_RECORDS_RECORDORDER_H_
