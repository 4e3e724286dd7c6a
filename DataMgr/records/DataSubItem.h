#ifndef DATAMGR_RECORDS_DATASUBITEM_H_
#define DATAMGR_RECORDS_DATASUBITEM_H_

#include "DataMgr/Export.h"
#include "DataMgr/records/DataRecord.h"
#include "framework/CArchive.h"

// A child row of one item: an ID unique within that item (-1 until its
// collection gives one), the ID of the owning item (-1 until set), its
// values and their in-memory undo history. It owns nothing but its values;
// its DataSubItemMgr owns it and deletes it through this type.
//
// Copies never duplicate an ID into an existing sub-item, and a copy
// constructor makes a new row without history:
//   copy constructor   ID, parent ID and values copied; undo history empty
//   move constructor   ID, parent ID, values and undo history copied
//   copy assignment    parent ID and values copied; ID and undo history kept
//   move assignment    parent ID, values and undo history copied; ID kept
// The move forms copy too: the source keeps everything.
class VAXO057_API DataSubItem final : public DataRecord {
 public:
  DataSubItem();
  DataSubItem(const DataSubItem& other);
  DataSubItem(DataSubItem&& other);
  DataSubItem& operator=(const DataSubItem& other);
  DataSubItem& operator=(DataSubItem&& other);
  ~DataSubItem();

  // Remove nID from one value kind of this sub-item.
  using DataRecord::DeleteDataBool;
  using DataRecord::DeleteDataDateTime;
  using DataRecord::DeleteDataDouble;
  using DataRecord::DeleteDataInt;
  using DataRecord::DeleteDataMoney;
  using DataRecord::DeleteDataString;

  void SetParentID(int nParentID) { m_nParentID = nParentID; }
  int GetParentID() const { return m_nParentID; }

  // Equal values (and flagged texts); IDs, parent IDs and undo histories do
  // not count.
  bool operator==(const DataSubItem& other) const { return HasSameValues(other); }

  // See the layout above the definition; version 2 is current.
  void Serialize(CArchive& ar) override;

 private:
  friend DataSubItem* record_list::NewForLoading<DataSubItem>();

  explicit DataSubItem(ForLoading) {}

  int m_nParentID = -1;
};

#endif  // DATAMGR_RECORDS_DATASUBITEM_H_
