#ifndef DATAMGR_SCHEMA_DATAPROPMGR_H_
#define DATAMGR_SCHEMA_DATAPROPMGR_H_

#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/schema/DataProp.h"
#include "DataMgr/types/DataType.h"
#include "framework/CArchive.h"
#include "framework/CString.h"

// The columns of one document and the order they are displayed in.
// Application columns (IDs 0 to DataProp::DEFAULT_USER_ID - 1) sit in slots
// indexed by their ID, a slot may be empty; user columns (IDs from
// DEFAULT_USER_ID up) sit in a list in creation order and are found by
// linear search. The user IDs the registry hands out are never handed out
// again while it lives: the counter only grows.
//
// The registry owns every column added to it and deletes it in the Delete
// functions, DeleteAll and its destructor; ClearAppSlot and AddApp over an
// occupied slot let go of the column that was there without deleting it (the
// caller has taken it over). The display order is a plain list of IDs that
// the registry keeps in step on adding and deleting, but never checks.
// Lookups return null (or the count, for indexes) when nothing fits.
class VAXO057_API DataPropMgr {
 public:
  DataPropMgr() = default;
  DataPropMgr(const DataPropMgr&) = delete;
  DataPropMgr& operator=(const DataPropMgr&) = delete;
  ~DataPropMgr();

  int GetID() const { return m_nID; }
  void SetID(int nID) { m_nID = nID; }

  // Takes p over into the slot of its ID (with bAssignID, the ID of a new
  // slot at the end), adding empty slots before it as needed, and appends
  // its ID to the display order. Null appends an empty slot. Returns false,
  // leaving p with the caller, when the ID is not an application ID.
  bool AddApp(DataProp* p, bool bAssignID);
  // Takes p over (null is ignored) at the end of the user columns, with the
  // next user ID when bAssignID, and appends its ID to the display order.
  // Without bAssignID p keeps its ID and the counter does not move: a kept ID
  // above the counter (say 6000) is handed out again once the counter gets
  // there, so a caller that keeps IDs keeps them apart itself.
  void AddUser(DataProp* p, bool bAssignID);
  // Empties slot i (adding slots up to it); the column that was there is
  // neither deleted nor removed from the display order. Slots are not added
  // beyond the application IDs.
  void ClearAppSlot(size_t i);
  // Drops the empty slots at the end.
  void ClearoutUnusedAppDataPropSlots();

  size_t GetAppCount() const { return m_vecAppDataProps.size(); }
  size_t GetUserCount() const { return m_vecUserDataProps.size(); }
  DataProp* GetAppAt(size_t i) const;
  DataProp* GetUserAt(size_t i) const;

  DataProp* GetByID(int nID) const;
  DataProp* GetAppByID(int nID) const;
  DataProp* GetUserByID(int nID) const;
  // Case-sensitive; application columns before user columns.
  DataProp* GetByName(const CString& name) const;
  DataProp* GetAppByName(const CString& name) const;
  DataProp* GetUserByName(const CString& name) const;
  // The slot of the application column with that ID; GetAppCount when none.
  size_t GetIndexForID(int nID) const;

  // Each deletes the column and drops its ID from the display order; an
  // application column's slot stays, empty. False when nothing was deleted.
  bool DeleteByID(int nID);
  bool DeleteAppByIndex(size_t i);
  bool DeleteUserByIndex(size_t i);
  // Deletes every column and the display order; the next user ID starts
  // again at DEFAULT_USER_ID.
  void DeleteAll();

  void GetDisplayOrder(std::vector<int>& order) const { order = m_vecDisplayOrder; }
  void SetDisplayOrder(const std::vector<int>& order) { m_vecDisplayOrder = order; }
  // Replaces ids (when it holds two or more) by those of its IDs that are in
  // the display order, in display order.
  void SetToDisplayOrder(std::vector<int>& ids) const;

  // Whether some column of type nType is offered to the user (and, with
  // bDisplayedOnly, displayed). HiddenFromUI counts for application columns
  // only.
  bool HaveDataPropOfType(DataType::Type nType, bool bDisplayedOnly) const;
  // Appends those columns, application columns first.
  void GetDataPropsOfType(std::vector<DataProp*>& out, DataType::Type nType, bool bDisplayedOnly) const;

  // Columns the user has hidden and can show again: not Displayed, and for
  // application columns not HiddenFromUI.
  bool HaveHiddenColumns() const;
  // Replaces ids by the IDs of those columns, application columns first.
  void GetHiddenColumns(std::vector<int>& ids) const;

  // Storing first drops the empty slots at the end.
  void Serialize(CArchive& ar);

 protected:
  void RemoveIDFromDisplayOrder(int nID);

 private:
  bool IsOfType(const DataProp* p, bool bApp, DataType::Type nType, bool bDisplayedOnly) const;
  static bool IsHiddenByUser(const DataProp* p, bool bApp);
  void DeleteAppSlot(size_t i);
  void DeleteUserAt(size_t i);
  void SerializeUserColumns(CArchive& ar, bool bOldFormat);

  int m_nID = 0;
  int m_nNextUserID = DataProp::DEFAULT_USER_ID;
  std::vector<int> m_vecDisplayOrder;
  std::vector<DataProp*> m_vecAppDataProps;   // owned, indexed by ID
  std::vector<DataProp*> m_vecUserDataProps;  // owned, creation order
};

#endif  // DATAMGR_SCHEMA_DATAPROPMGR_H_
