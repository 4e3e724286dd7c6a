#include "DataMgr/document/DataMgmt.h"

#include <algorithm>

#include "DataMgr/schema/ValueCodec.h"

namespace {

// The IDs sorted, for lookups by binary search.
std::vector<int> Sorted(std::vector<int> ids) {
  std::sort(ids.begin(), ids.end());
  return ids;
}

bool Contains(const std::vector<int>& sortedIDs, int nID) {
  return std::binary_search(sortedIDs.begin(), sortedIDs.end(), nID);
}

}  // namespace

// The default entry is the one the column's default text names: a list
// entry of exactly that text, an address of that name ignoring case.
void DataMgmt::ListItemsModified(DataProp& prop, const std::vector<int>& modifiedIDs,
                                 const std::vector<int>& deletedIDs, std::vector<int>& touchedColumnIDs) {
  const ValueCodec& codec = ValueCodec::For(prop.GetDataType());
  if (prop.GetID() < 0 || (modifiedIDs.empty() && deletedIDs.empty()) || !codec.IsEntryType()) return;
  const int nDefaultEntryID = codec.FindEntryID(prop, prop.GetDefaultValue(), false);
  DoListItemsModified(prop, modifiedIDs, deletedIDs, nDefaultEntryID, touchedColumnIDs);
}

// A cell that referred to a removed entry now refers to the default entry,
// which gains that usage. Under an item without the column the sub-items
// are scanned only up to the first one without it: the sub-items of one
// item either all carry a column or none does.
void DataMgmt::DoListItemsModified(DataProp& prop, const std::vector<int>& modifiedIDs,
                                   const std::vector<int>& deletedIDs, int nDefaultEntryID,
                                   std::vector<int>& touchedColumnIDs) {
  const ValueCodec& codec = ValueCodec::For(prop.GetDataType());
  const std::vector<int> modified = Sorted(modifiedIDs);
  const std::vector<int> deleted = Sorted(deletedIDs);
  touchedColumnIDs.clear();
  touchedColumnIDs.push_back(prop.GetID());
  for (const auto& alias : m_mapAliasDataProps) {
    if (alias.second == prop.GetID()) touchedColumnIDs.push_back(alias.first);
  }
  // Which list the entry that record's cell of column nID refers to is in;
  // a cell that refers to a removed entry is replaced.
  enum Found { NEITHER, MODIFIED, DELETED };
  const auto update = [&](Data& record, int nID) {
    int nEntryID = -1;
    record.GetData(nID, nEntryID);
    if (Contains(deleted, nEntryID)) {
      if (record.SetData(nID, nDefaultEntryID, true)) codec.ChangeEntryUsage(prop, nDefaultEntryID, true);
      return DELETED;
    }
    return Contains(modified, nEntryID) ? MODIFIED : NEITHER;
  };
  for (size_t i = 0; i < m_dataItemMgr.GetCount(); ++i) {
    DataItem& item = *m_dataItemMgr.GetAt(i);
    for (int nID : touchedColumnIDs) {
      if (item.HaveDataProp(nID)) {
        if (update(item, nID) == MODIFIED) item.SetLastModified();
        continue;
      }
      DataSubItemMgr& subItems = item.GetSubItemsMgr();
      for (size_t j = 0; j < subItems.GetCount() && subItems.GetAt(j)->HaveDataProp(nID); ++j) {
        if (update(*subItems.GetAt(j), nID) != NEITHER) item.SetLastModified();
      }
    }
  }
}
