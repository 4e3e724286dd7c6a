#ifndef DATAMGR_DOCUMENT_DATAMGMT_H_
#define DATAMGR_DOCUMENT_DATAMGMT_H_

#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/document/DataFind.h"
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

class DataFilter;
class DataFilterMgr;
class Report;
class SortData;
class SortOrder;

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
// which leave parsing and formatting by the column's data type and flags to
// the type's ValueCodec.
//
// The document never throws for bad input (false, null or an empty text
// instead); archive faults pass through from Serialize. It must never hand
// out a column or record it has deleted, and never archive the alias map.
// The sources are split by concern: DataMgmt.cpp (life cycle, defaults,
// archive), DataMgmtValueEntry.cpp, DataMgmtSafeEntry.cpp (EnterValue),
// DataMgmtRendering.cpp, DataMgmtListUsage.cpp (usage counts and their
// recount), DataMgmtListEdits.cpp, DataMgmtTypeChange.cpp,
// DataMgmtColumnMoves.cpp, DataMgmtFilePaths.cpp, DataMgmtSort.cpp,
// DataMgmtFind.cpp and DataMgmtExport.cpp.
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
  // A filter's compare value as text: for list and address columns the
  // text of the first selected entry (empty when there is none).
  static CString GetTextRepresentation(const DataFilter& filter, const DataProp& prop);
  // Appends the texts of the record's earlier values of the column, oldest
  // first, without prefix, suffix or sign.
  static void GetUndoBufferTexts(const Data& data, const DataProp& prop, TextArray& texts, bool bBlankZero);
  // Turns every line break into a single blank.
  void ReplaceCRLF(CString& text) const;

  // Converts every item's value of a column from oldProp's type to
  // newProp's (the same column before and after the host changed its type;
  // cells are read under oldProp's ID and written under newProp's). An entry
  // column changing to another kind of entries gets its entries rebuilt from
  // oldProp's; entryIDMap receives old entry ID -> new value for the cells
  // that referred to an entry and still refer to one (or hold a number).
  // Sub-items lose their cells of the column. True when an item was
  // converted; false when the types are equal or similar entry types, and
  // when a type that holds no value stops the work part way.
  bool DoDataTypeChange(DataProp& oldProp, DataProp& newProp, std::map<int, int>& entryIDMap);
  // After the host changed the entries modifiedIDs and removed the entries
  // deletedIDs of the entry column prop: cells of prop and of the columns
  // aliased to it that refer to a removed entry get the entry of prop's
  // default text (or -1), undoably; an item whose cells refer to a changed
  // entry is stamped as modified. touchedColumnIDs receives the columns
  // looked at.
  void ListItemsModified(DataProp& prop, const std::vector<int>& modifiedIDs, const std::vector<int>& deletedIDs,
                         std::vector<int>& touchedColumnIDs);
  // Recounts the usages of every list entry and address from the cells of
  // all items and sub-items; a cell of an aliased column counts for the
  // alias column's entry.
  void ResetUsageCounters();

  // Replaces stale folder-only values of the file-path columns by the
  // column's default value (undoable).
  void ResetFileBasedDefaultValues();
  // The folder a file chooser for column nDataPropID starts in: the first
  // existing folder among the item's value, the column's most used folder
  // (over items, or the whole document when items is empty), the values of
  // the other columns of its type, its default value, the value of the item
  // modified last, and lastUsedDir; "C:\" when none is usable. Never empty.
  CString GetBestLastUsedDir(int nDataPropID, DataItem* pItem, const CString& lastUsedDir,
                             const std::vector<DataItem*>& items) const;

  // Sorts the items (not their sub-items) by order, with the document's
  // aliases; nothing with fewer than two items, no keys or no columns.
  void Sort(const SortOrder& order, bool bDirectoriesFirst);

  // Search. Each call appends its hits to hits, numbered from 1. A text
  // search looks for text (lower-cased unless bMatchCase; with bAllWords
  // split into words that must all be found, a double-quoted phrase being
  // one word) in the rendered value of every searched column of each item,
  // then in its sub-items' values; only columns that exist, are displayed
  // and are not hidden from the user interface are searched, and an empty
  // text finds nothing. Columns are searched in the order given or, when
  // none are given, application columns in ID order, then user columns.
  // Every item, every column:
  void Find(CString text, bool bMatchCase, bool bWholeWord, bool bAllWords, std::vector<DataFind>& hits) const;
  // The items that pass filters:
  void Find(CString text, bool bMatchCase, bool bWholeWord, bool bAllWords, const DataFilterMgr& filters,
            const std::vector<int>& dataPropIDs, std::vector<DataFind>& hits) const;
  // The items of dataItemIDs, in that order (IDs of no item are skipped):
  void Find(CString text, bool bMatchCase, bool bWholeWord, bool bAllWords, const std::vector<int>& dataPropIDs,
            const std::vector<int>& dataItemIDs, std::vector<DataFind>& hits) const;
  // The items that pass report's filters, every column; nothing at all for
  // a report of another document's registry:
  void Find(CString text, bool bMatchCase, bool bWholeWord, bool bAllWords, const Report& report,
            std::vector<DataFind>& hits) const;
  // One hit on the whole item for each item that passes filters; none at
  // all when the set holds no filter.
  void Find(const DataFilterMgr& filters, std::vector<DataFind>& hits) const;
  // The item a hit names and, within it, its sub-item; null for none.
  void Find(const DataFind& hit, DataItem*& pItem, DataSubItem*& pSubItem) const;

  // Export of the items that pass filters, one line or element per item
  // and one value per displayed column in display order, each as the
  // document shows it with zeros empty; sub-items are not exported. The
  // whole file is built in memory and written in one go, so a failed write
  // leaves no part of it. Nothing is reported.
  // Text: a heading of column names, then the values, joined by separator;
  // line breaks in values become blanks.
  void ExportToTextFile(const CString& filePath, const CString& separator, const DataFilterMgr& filters) const;
  // XML: the root element rootName (its title too), the columns, the
  // headings and the entries.
  void ExportToXMLFile(const CString& filePath, const CString& rootName, const DataFilterMgr& filters) const;

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

  // Turns application column nAppID into a user column with a new ID, in
  // the same place of the display order, its values moved to the new ID in
  // every item. Sub-items are not visited: their values stay under the old
  // ID, and the usages they gave to the column's entries stay counted until
  // ResetUsageCounters. The new ID, or -1 when no application column has ID
  // nAppID.
  int MakeAppDataPropIntoUserDefined(int nAppID);
  // The mirror: user column nUserID becomes the application column nAppID.
  // nAppID, or -1 when no user column has ID nUserID or when nAppID is no
  // free application slot (nothing changes then).
  int MakeUserDataPropIntoAppDefined(int nUserID, int nAppID);

  // Points every file-path value of the items that lies in oldDir and whose
  // file is gone to the same file name in newDir when that file exists.
  bool AdjustFilePaths(const CString& oldDir, const CString& newDir);
  bool DoAdjustFilePaths(const CString& oldDir, const CString& newDir, DataProp& prop);

  // Moves the items whose int value of nDataPropID is nValue to the front,
  // in their order, sorts those by order and returns their count
  // (SortData::PartialSort against the registry).
  size_t DoPartialSort(int nDataPropID, int nValue, const SortOrder& order, bool bDirectoriesFirst);

 private:
  // A column as search and export show it: its ID, the column, and the
  // column whose entries and formats render its values (its alias column,
  // or itself). The pointers are valid while the registry is unchanged.
  struct ShownColumn {
    int nID;
    const DataProp* pProp;
    const DataProp* pOwner;
  };
  // One text search, its words prepared once (DataMgmtFind.cpp).
  class TextSearch;

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

  static bool IsFilePathType(DataType::Type nType);
  void FillNewColumn(DataProp& prop, bool bSubItems);
  // The one usage that record's cell of prop gives to its entry.
  static void ChangeRecordUsage(DataProp& prop, const Data& record, bool bRaise);

  void DoListItemsModified(DataProp& prop, const std::vector<int>& modifiedIDs, const std::vector<int>& deletedIDs,
                           int nDefaultEntryID, std::vector<int>& touchedColumnIDs);
  // Count the usages of one record: of all columns; of one column.
  void ResetUsageCountersHelper1(const Data& record) const;
  void ResetUsageCountersHelper2(const Data& record, DataProp& prop) const;
  // After prop moved from ID nFromID to its present ID: puts that ID in
  // nFromID's place of order (when there) as the display order and moves
  // every item's value to it.
  void MoveColumnValues(DataProp& prop, std::vector<int>& order, int nFromID);

  // Rewrites path to the nearest existing folder: a file's folder, or the
  // nearest existing parent; empty when there is none or path is blank.
  void IsUsableDirPath(CString& path) const;
  // The folder most values of the column lie in (over items, or the whole
  // document when items is empty); a tie goes to the alphabetically first.
  // Empty when there is none.
  void GetMostUsedDirPath(int nDataPropID, CString& path, const std::vector<DataItem*>& items) const;

  // The owner of the list entries and formatting of prop: its alias column,
  // or prop itself.
  DataProp& GetListOwner(DataProp& prop) const;
  // The columns of ids that exist, are displayed and are not hidden from
  // the user interface, in the order of ids.
  std::vector<ShownColumn> GetShownColumns(const std::vector<int>& ids) const;
  // The shown columns of the display order.
  std::vector<ShownColumn> GetExportColumns() const;

  // A sorter with the document's aliases.
  SortData MakeSortData(bool bDirectoriesFirst) const;

  // Gives a new item the values of the columns' defaults by copying those
  // of m_pFreshDefaults, registered once; false (nothing done) when a
  // column has a default text, whose value may depend on the locale, the
  // list entries or the entries' usage counts. Without default texts the
  // values depend on the columns' IDs and types only, which
  // m_vecFreshColumns keeps; the copy is registered again when they change.
  bool CopyFreshDefaults(DataItem& item);

  CString m_strMRUExportPath;
  DataPropMgr m_dataPropMgr;
  DataItemMgr m_dataItemMgr;
  std::map<int, int> m_mapAliasDataProps;  // in memory only
  std::unique_ptr<DataItem> m_pFreshDefaults;
  std::vector<std::pair<int, DataType::Type>> m_vecFreshColumns;
};

#endif  // DATAMGR_DOCUMENT_DATAMGMT_H_
