#ifndef DATAMGR_DOCUMENT_DATAMGMT_H_
#define DATAMGR_DOCUMENT_DATAMGMT_H_

#include <functional>
#include <map>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/records/DataItem.h"
#include "DataMgr/records/DataItemMgr.h"
#include "DataMgr/records/DataSubItem.h"
#include "DataMgr/schema/DataProp.h"
#include "DataMgr/schema/DataPropMgr.h"
#include "DataMgr/types/Data.h"
#include "DataMgr/types/DataType.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/TextArray.h"

// One open document: its columns (a DataPropMgr), its records (a
// DataItemMgr), an in-memory map of column aliases and the folder of the
// last export. The host owns the document; the document owns the registry
// and the records, and through them every column, entry, address, item and
// sub-item. Everything else refers to them by ID.
//
// Every change that must keep columns and records consistent goes through
// here: adding a column fills the records with its default value, creating
// a record fills in every default, copying or deleting an item raises or
// lowers the usage counts of the list entries and addresses its cells refer
// to. Values are entered as text through EnterValue (or its two steps,
// IsValueAcceptable and SetData) and shown through GetTextRepresentation,
// which parse and format by the column's data type and flags.
//
// The document never throws for bad input (false, null or an empty text
// instead); archive faults pass through from Serialize. It must never hand
// out a column or record it has deleted, and never archive the alias map.
// The sources are split by concern: DataMgmt.cpp (life cycle, defaults,
// archive), DataMgmtValueEntry.cpp, DataMgmtSafeEntry.cpp (EnterValue),
// DataMgmtRendering.cpp, DataMgmtListUsage.cpp and DataMgmtFilePaths.cpp.
class VAXO057_API DataMgmt {
 public:
  DataMgmt();
  DataMgmt(const DataMgmt&) = delete;
  DataMgmt& operator=(const DataMgmt&) = delete;
  virtual ~DataMgmt();

  DataPropMgr& GetDataPropMgr() { return m_dataPropMgr; }
  const DataPropMgr& GetDataPropMgr() const { return m_dataPropMgr; }
  DataItemMgr& GetDataItemMgr() { return m_dataItemMgr; }
  const DataItemMgr& GetDataItemMgr() const { return m_dataItemMgr; }

  CString GetMRUExportPath() const { return m_strMRUExportPath; }
  void SetMRUExportPath(const CString& path) { m_strMRUExportPath = path; }

  // Records that column nID is treated as nAliasID; an alias already
  // recorded for nID is kept. Only DeleteAll(..., true) clears aliases.
  void SetAliasDataProp(int nID, int nAliasID) { m_mapAliasDataProps.emplace(nID, nAliasID); }
  // The alias of nID, or nID itself when it has none.
  int GetAliasDataProp(int nID) const;
  const std::map<int, int>& GetAliasDataPropMap() const { return m_mapAliasDataProps; }

  // False, leaving type alone, for a negative or unknown column ID.
  bool GetDataPropType(int nID, DataType::Type& type) const;

  // Takes p over as an application or a user column (a new ID when bNewID
  // or when its ID does not fit the chosen range) and registers its default
  // value in every item (bFillItems) or every sub-item (bFillSubItems).
  // False, leaving p with the caller, for null or an application column
  // that the registry refuses.
  bool AddDataProp(DataProp* p, bool bNewID, bool bAppColumn, bool bFillItems, bool bFillSubItems);
  // Deletes the column and its values in every item that holds it (with
  // those items' sub-items).
  virtual void DeleteDataProp(DataProp* p);

  // A fresh item with every column's default value, or a copy of *pSource
  // that raises the usage counts of the entries its own cells refer to (the
  // cells of its sub-items are not counted).
  DataItem* CreateDataItem(DataItem* pSource, bool bAdd, bool bAssignID);
  // A sub-item in parent's list: a fresh one gets the default values of the
  // columns in columnIds; a copy is returned as made, its usages not
  // counted. The caller sets the parent ID.
  DataSubItem* CreateDataSubItem(DataItem& parent, std::vector<int>& columnIds, DataSubItem* pSource, bool bAdd,
                                 bool bAssignID);
  // Lowers the usage counts of the entries the item's own cells refer to,
  // then destroys it.
  void DeleteDataItem(DataItem* pItem);
  virtual void DeleteAll(bool bResetIDs, bool bClearAliases);

  // The version word that Serialize writes first.
  static constexpr WORD CURRENT_VERSION = 4;
  // See the layout above the definition.
  virtual void Serialize(CArchive& ar);

  // Value entry. bRedisplay tells the host to show the column's text again;
  // bRecord makes the change undoable. False for an unknown column, a
  // rejected or unchanged value and types that hold no value.
  bool SetData(Data& data, int nDataPropID, const CString& text, bool& bRedisplay, bool bRecord);
  bool SetData(Data& data, DataProp& prop, const CString& text, bool& bRedisplay, bool bRecord);
  static bool SetDataNoFilePathAdjust(Data& data, DataProp& prop, DataProp& listOwner, const CString& text,
                                      bool& bRedisplay, bool bRecord);
  // Trims text, judges it by the column's type and rewrites it in normal
  // form when accepted.
  bool IsValueAcceptable(CString& text, DataProp& prop) const;

  // The outcome of EnterValue.
  enum EntryResult {
    EntryRejected,  // the text is not acceptable: nothing changed
    EntryUnchanged,  // acceptable, and the cell already held its value
    EntryChanged,  // the cell now holds the text's value
  };
  // Value entry in one call, for hosts and tools: judges text as
  // IsValueAcceptable does and, when it is acceptable, stores its normal
  // form as SetData does (undoable when bRecord). normalized receives that
  // normal form, or text as it was when rejected. An unknown column rejects
  // every text.
  EntryResult EnterValue(Data& data, int nDataPropID, const CString& text, CString& normalized, bool bRecord = true);
  static int ConvertToInteger(const CString& text, const DataProp& prop);

  // Rendering. The first form maps the column through the alias map.
  CString GetTextRepresentation(const Data& data, int nDataPropID, bool bBlankZero) const;
  static CString GetTextRepresentation(const Data& data, int nDataPropID, const DataProp& prop, bool bBlankZero);
  // Appends the texts of the record's earlier values of the column, oldest
  // first, without prefix, suffix or sign.
  static void GetUndoBufferTexts(const Data& data, const DataProp& prop, TextArray& texts, bool bBlankZero);
  // Turns every line break into a single blank.
  void ReplaceCRLF(CString& text) const;

  // Replaces stale folder-only values of the file-path columns by the
  // column's default value (undoable).
  void ResetFileBasedDefaultValues();

 protected:
  // The item modified last (the first of equal times) among those with a
  // valid modification time and, unless nColumnID is -1, a non-empty text
  // in that column; null when none.
  DataItem* GetLastModifiedDataItem(int nColumnID) const;
  // Registers the column's default value in record (never overwriting);
  // a list entry or address it refers to gains one usage, and an unknown
  // address name becomes a new address of the column.
  void RegisterDataProp(Data& record, DataProp& prop) const;

  // Remove or add the one usage that record's cell of prop gives to its
  // entry; aliases are not consulted.
  void ReduceListItemUsageCount(DataProp& prop, DataItem& record) const;
  void IncreaseListItemUsageCount(DataProp& prop, DataItem& record) const;

  // Points every file-path value of the items that lies in oldDir and whose
  // file is gone to the same file name in newDir when that file exists.
  bool AdjustFilePaths(const CString& oldDir, const CString& newDir);
  bool DoAdjustFilePaths(const CString& oldDir, const CString& newDir, DataProp& prop);

 private:
  using DefaultValue = std::function<void(Data&)>;

  // fn(prop) on every column: application columns, then user columns.
  template <typename Fn>
  void ForEachDataProp(Fn fn) const {
    for (size_t i = 0; i < m_dataPropMgr.GetAppCount(); ++i) {
      if (DataProp* p = m_dataPropMgr.GetAppAt(i)) fn(*p);
    }
    for (size_t i = 0; i < m_dataPropMgr.GetUserCount(); ++i) {
      if (DataProp* p = m_dataPropMgr.GetUserAt(i)) fn(*p);
    }
  }

  static bool IsAddressBookType(DataType::Type nType);
  static bool IsFilePathType(DataType::Type nType);
  // The ten types whose values are held as text.
  static bool IsTextType(DataType::Type nType);
  // The column's default value as a registration for one record; empty for
  // a type that holds no value. bNewColumn selects the rules of a column
  // added to existing records.
  static DefaultValue MakeDefaultValue(DataProp& prop, bool bNewColumn);
  void FillNewColumn(DataProp& prop, bool bSubItems);

  // The entry of owner that text names, created when bCreate; -1 when there
  // is none. nType, the type of the column whose cell is meant, tells
  // whether the entry is an address of owner's book or one of its list
  // entries.
  static int FindEntryID(DataProp& owner, DataType::Type nType, const CString& text, bool bCreate);
  // One usage more or less for owner's entry nEntryID (chosen by nType as
  // above); nothing for a negative ID or an unknown entry.
  static void ChangeEntryUsage(DataProp& owner, DataType::Type nType, int nEntryID, bool bRaise);
  // The one usage that record's cell of prop gives to its entry.
  static void ChangeRecordUsage(DataProp& prop, const Data& record, bool bRaise);
  // A duration in the column's form (hours and seconds as its flags say);
  // a decimal with the locale's fractional digits, decimal zeroes kept.
  static CString FormatDuration(int nSeconds, const DataProp& prop);
  static CString FormatDecimal(double dValue, const DataProp& prop);
  // The display text of owner's entry nEntryID; false when there is none.
  static bool FindEntryText(const DataProp& owner, int nEntryID, CString& text);

  // The owner of the list entries and formatting of prop: its alias column,
  // or prop itself.
  DataProp& GetListOwner(DataProp& prop) const;

  CString m_strMRUExportPath;
  DataPropMgr m_dataPropMgr;
  DataItemMgr m_dataItemMgr;
  std::map<int, int> m_mapAliasDataProps;  // in memory only
};

#endif  // DATAMGR_DOCUMENT_DATAMGMT_H_
