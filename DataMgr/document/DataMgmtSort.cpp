#include "DataMgr/document/DataMgmt.h"

#include "DataMgr/records/RecordOrder.h"
#include "DataMgr/sort/SortData.h"
#include "DataMgr/sort/SortOrder.h"

SortData DataMgmt::MakeSortData(bool bDirectoriesFirst) const {
  SortData sorter;
  sorter.SetDataPropsAliases(m_mapAliasDataProps);
  sorter.SetDirectoriesFirst(bDirectoriesFirst);
  return sorter;
}

void DataMgmt::Sort(const SortOrder& order, bool bDirectoriesFirst) {
  std::vector<Data*> records = RecordOrder::Get(m_dataItemMgr);
  MakeSortData(bDirectoriesFirst).Sort(records, order, m_dataPropMgr);
  RecordOrder::Set(m_dataItemMgr, records);
}

size_t DataMgmt::DoPartialSort(int nDataPropID, int nValue, const SortOrder& order, bool bDirectoriesFirst) {
  std::vector<Data*> records = RecordOrder::Get(m_dataItemMgr);
  const size_t nCount = MakeSortData(bDirectoriesFirst).PartialSort(records, nDataPropID, nValue, order, m_dataPropMgr);
  RecordOrder::Set(m_dataItemMgr, records);
  return nCount;
}
