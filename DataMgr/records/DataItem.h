#ifndef DATAMGR_RECORDS_DATAITEM_H_
#define DATAMGR_RECORDS_DATAITEM_H_

#include "DataMgr/Export.h"
#include "DataMgr/records/DataRecord.h"
#include "DataMgr/records/DataSubItemMgr.h"
#include "DataMgr/types/Money.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

// A row of the document: an ID (-1 until its collection gives one), the
// time it was last modified, its values with their in-memory undo history,
// and its sub-items, which it owns through its DataSubItemMgr. The
// DataItemMgr of the document owns the item and deletes it through this
// type.
//
// The modification time is set on construction, by SetLastModified, by an
// undoable SetData that changes a value, and by DataItemMgr::Create when it
// copies an item; loading restores the stored time. Deleting a column's
// value (DeleteData and the per-kind deletions) reaches every sub-item;
// ChangeDataPropID* touch the item only.
//
// Copies never duplicate an ID into an existing item; only the move
// assignment carries the undo history into one:
//   copy and move constructor  everything copied, sub-items deep
//   copy assignment            time, values, sub-items (deep) copied; ID and
//                              undo history kept
//   move assignment            time, values, undo history, sub-items (deep)
//                              copied; ID kept
// The move forms copy too: the source keeps everything. An assigned item
// keeps its ID while its sub-items keep the parent ID of the source.
class VAXO057_API DataItem final : public DataRecord {
 public:
  DataItem();
  DataItem(const DataItem& other);
  DataItem(DataItem&& other);
  DataItem& operator=(const DataItem& other);
  DataItem& operator=(DataItem&& other);
  ~DataItem();

  using DataRecord::SetData;
  bool SetData(int nID, const CString& value, bool bRecord) override;
  bool SetData(int nID, const DateTime& value, bool bRecord) override;
  bool SetData(int nID, const Money& value, bool bRecord) override;
  bool SetData(int nID, double value, bool bRecord) override;
  bool SetData(int nID, int value, bool bRecord) override;
  bool SetData(int nID, bool value, bool bRecord) override;

  // Remove nID from this item and from every sub-item: from every kind, or
  // from one.
  void DeleteData(int nID) override;
  void DeleteDataBool(int nID);
  void DeleteDataInt(int nID);
  void DeleteDataDouble(int nID);
  void DeleteDataMoney(int nID);
  void DeleteDataDateTime(int nID);
  void DeleteDataString(int nID);

  // Two columns trade IDs within one kind of this item's values (see
  // ValueStore); the sub-items are not touched.
  using DataRecord::ChangeDataPropIDBool;
  using DataRecord::ChangeDataPropIDDateTime;
  using DataRecord::ChangeDataPropIDDouble;
  using DataRecord::ChangeDataPropIDInt;
  using DataRecord::ChangeDataPropIDMoney;
  using DataRecord::ChangeDataPropIDString;
  using DataRecord::ClearUndoData;

  void SetLastModified() { m_dtLastModified.SetToCurrent(); }
  // Restores a time kept elsewhere (a document converted back from another
  // form), as loading restores the stored time.
  void SetLastModified(const DateTime& time) { m_dtLastModified = time; }
  void GetLastModified(DateTime& out) const { out = m_dtLastModified; }

  DataSubItemMgr& GetSubItemsMgr() { return m_subItems; }
  const DataSubItemMgr& GetSubItemsMgr() const { return m_subItems; }

  // Equal values (and flagged texts); IDs, times, undo histories and
  // sub-items do not count.
  bool operator==(const DataItem& other) const { return HasSameValues(other); }

  // See the layout above the definition; version 3 is current.
  void Serialize(CArchive& ar) override;

 private:
  friend DataItem* record_list::NewForLoading<DataItem>();
  // Gives a new item the values of the document's defaults (AssignValues).
  friend class DataMgmt;

  // Reads no clock: loading sets the time.
  explicit DataItem(ForLoading);

  // Stamps the modification time after an undoable change.
  bool Stamp(bool bChanged, bool bRecord);

  DateTime m_dtLastModified;
  DataSubItemMgr m_subItems;
};

#endif  // DATAMGR_RECORDS_DATAITEM_H_
