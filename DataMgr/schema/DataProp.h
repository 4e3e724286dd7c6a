#ifndef DATAMGR_SCHEMA_DATAPROP_H_
#define DATAMGR_SCHEMA_DATAPROP_H_

#include <map>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/schema/AddressBook.h"
#include "DataMgr/schema/ListItem.h"
#include "DataMgr/types/DataType.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "framework/Types.h"

// One column of a document: its ID, name and texts, data type, display and
// editing flags, layout hints and, by type, its list entries (the eight
// entry-list types) or its address book (the two address-book types). Cells
// refer to entries and addresses by ID.
//
// The column owns its entries (a display-order vector with an index by ID
// over it, so that lookup by ID is logarithmic) and its address book. An
// entry created with bAdd false belongs to the caller; ReplaceListItems and
// CopyFrom move entries into the column. Pointers handed out stay the
// column's and die with the entry.
//
// Copy construction copies everything, ID included; assignment copies all
// but the ID and the next entry ID, so the target keeps its identity.
// IDs below DEFAULT_USER_ID belong to application columns, the others to
// user columns; -1 is a column not yet registered.
class VAXO057_API DataProp {
 public:
  static constexpr int DEFAULT_USER_ID = 5000;
  static constexpr unsigned int CUSTOMWIDTH_UNINIT = 99999;
  // Fewer bytes than a stored column of any version takes.
  static constexpr size_t MIN_ARCHIVE_BYTES = 32;

  // Layout hints of the host; the library gives the values no meaning.
  enum ColWidth : int {};
  enum ColAlign : int {};

  DataProp() = default;
  DataProp(const DataProp& other);
  DataProp& operator=(const DataProp& other);
  ~DataProp();

  // Takes over every setting of other but the ID and the user rights, and
  // moves other's entries into this column (other is left without entries).
  // Returns whether the column changed in a way the user sees; a column that
  // stays hidden never reports a change.
  bool CopyFrom(DataProp& other);

  // Same data type and the same name (case-sensitive).
  bool operator==(const DataProp& other) const;
  bool operator<(const DataProp& other) const { return m_nID < other.m_nID; }

  bool GetCanBeSummed() const { return m_bCanBeSummed; }
  void SetCanBeSummed(bool b) { m_bCanBeSummed = b; }
  bool GetCanBeAveraged() const { return m_bCanBeAveraged; }
  void SetCanBeAveraged(bool b) { m_bCanBeAveraged = b; }
  bool GetCanBeNegative() const { return m_bCanBeNegative; }
  void SetCanBeNegative(bool b) { m_bCanBeNegative = b; }
  bool GetShowSignAlways() const { return m_bShowSignAlways; }
  void SetShowSignAlways(bool b) { m_bShowSignAlways = b; }
  bool GetThousandsSep() const { return m_bThousandsSep; }
  void SetThousandsSep(bool b) { m_bThousandsSep = b; }
  bool GetFractional() const { return m_bFractional; }
  void SetFractional(bool b) { m_bFractional = b; }
  bool GetShowDecimalZeroes() const { return m_bShowDecimalZeroes; }
  void SetShowDecimalZeroes(bool b) { m_bShowDecimalZeroes = b; }
  bool GetZeroIsEmpty() const { return m_bZeroIsEmpty; }
  void SetZeroIsEmpty(bool b) { m_bZeroIsEmpty = b; }
  bool GetDateTimeNumbers() const { return m_bDateTimeNumbers; }
  void SetDateTimeNumbers(bool b) { m_bDateTimeNumbers = b; }
  bool GetTimeShowHours() const { return m_bTimeShowHours; }
  void SetTimeShowHours(bool b) { m_bTimeShowHours = b; }
  bool GetTimeShowSeconds() const { return m_bTimeShowSeconds; }
  void SetTimeShowSeconds(bool b) { m_bTimeShowSeconds = b; }
  bool GetDisplayed() const { return m_bDisplayed; }
  void SetDisplayed(bool b) { m_bDisplayed = b; }
  bool GetHiddenFromUI() const { return m_bHiddenFromUI; }
  void SetHiddenFromUI(bool b) { m_bHiddenFromUI = b; }
  bool GetUserCanDelete() const { return m_bUserCanDelete; }
  bool GetUserCanDeleteWarning() const { return m_bUserCanDeleteWarning; }
  void SetUserCanDelete(bool bCanDelete, bool bWarning) {
    m_bUserCanDelete = bCanDelete;
    m_bUserCanDeleteWarning = bWarning;
  }
  bool GetUserChangeDataType() const { return m_bUserChangeDataType; }
  void SetUserChangeDataType(bool b) { m_bUserChangeDataType = b; }
  bool GetUserChangeValue() const { return m_bUserChangeValue; }
  void SetUserChangeValue(bool b) { m_bUserChangeValue = b; }
  bool GetUserChangeDefValue() const { return m_bUserChangeDefValue; }
  void SetUserChangeDefValue(bool b) { m_bUserChangeDefValue = b; }
  bool GetSortValuesByListOrder() const { return m_bSortValuesByListOrder; }
  void SetSortValuesByListOrder(bool b) { m_bSortValuesByListOrder = b; }
  bool GetKeepListItemsSorted() const { return m_bKeepListItemsSorted; }
  // Sorts the entries by value at once when turned on.
  void SetKeepListItemsSorted(bool b);
  bool GetUseWithDataSubItem() const { return m_bUseWithDataSubItem; }
  void SetUseWithDataSubItem(bool b) { m_bUseWithDataSubItem = b; }

  int GetID() const { return m_nID; }
  void SetID(int nID) { m_nID = nID; }
  unsigned int GetCustomColWidth() const { return m_nCustomColWidth; }
  void SetCustomColWidth(unsigned int nWidth) { m_nCustomColWidth = nWidth; }
  ColWidth GetColWidth() const { return m_nColWidth; }
  void SetColWidth(ColWidth nWidth) { m_nColWidth = nWidth; }
  ColAlign GetColAlignment() const { return m_nColAlign; }
  void SetColAlignment(ColAlign nAlign) { m_nColAlign = nAlign; }
  DataType::Type GetDataType() const { return m_nDataType; }
  // Any type but the entry-list and address-book types drops the entries.
  void SetDataType(DataType::Type nType);

  const CString& GetName() const { return m_strName; }
  // Also regenerates the web tag.
  void SetName(const CString& name);
  const CString& GetDesc() const { return m_strDesc; }
  void SetDesc(const CString& desc) { m_strDesc = desc; }
  const CString& GetDefaultValue() const { return m_strDefaultValue; }
  void SetDefaultValue(const CString& value) { m_strDefaultValue = value; }
  const CString& GetPrefix() const { return m_strPrefix; }
  void SetPrefix(const CString& prefix) { m_strPrefix = prefix; }
  const CString& GetSuffix() const { return m_strSuffix; }
  void SetSuffix(const CString& suffix) { m_strSuffix = suffix; }
  // The placeholder of the column in web-report templates: {NAME}, upper
  // case, with blanks and slashes turned into "_" and "." and "?" dropped.
  const CString& GetWebTag() const { return m_strWebTag; }
  // Appends text inside the closing brace of the tag.
  void AdjustWebTag(const CString& text);
  // "Name - description"; an application column shows only the first
  // sentence of its description.
  CString GetNameWithDesc() const;

  // A new entry of the column's class, null for a type without entries.
  // nID -1 takes the next entry ID. With bAdd the column owns the entry;
  // otherwise the caller does.
  ListItem* CreateListItem(bool bAdd, int nID);
  // Deletes an entry of this column; false, with nothing changed, for null
  // or an entry the column does not hold.
  bool DeleteListItem(ListItem* pItem);
  ListItem* GetListItemByID(int nID) const;
  size_t GetListItemsCount() const { return m_vecListItems.size(); }
  ListItem* GetListItemAt(size_t nIndex) const;
  // The first entry in display order whose text equals text exactly.
  ListItem* GetListItemByValue(const CString& text) const;
  // As above; with bCreate an entry is created for a text not found.
  ListItem* GetListItemByValue(const CString& text, bool bCreate);
  // The entry's position in display order; the entry count when absent.
  ULONGLONG GetDisplayOrderForListItemID(int nID) const;
  bool SwapListItemArrayPosition(size_t a, size_t b);
  // Puts the entries in the order of the IDs given, entries not named last;
  // false when there are no entries or the order already agrees.
  bool SetToDisplayOrder(const std::vector<int>& order);
  // Whether a goes before b when the column's entries are sorted by value.
  static bool CompareListItems(const ListItem* a, const ListItem* b, DataType::Type nType);
  // Takes over the entries of items, which is left empty. The present
  // entries are dropped from the column without being deleted (items is
  // expected to hold them or their replacements); an empty items deletes
  // them all.
  void ReplaceListItems(std::vector<ListItem*>& items);
  // Sets the next entry ID past every entry (never below 0); when two or
  // more entries were never numbered (all IDs 0 or -1), numbers them anew
  // from 0 in display order.
  void RefreshNextListItemID();
  // The ID the next new entry gets. Setting it is for restoring a column
  // kept in another form; an ID below an entry's would be handed out twice.
  int GetNextListItemID() const { return m_nNextListItemID; }
  void SetNextListItemID(int nID) { m_nNextListItemID = nID; }
  // Appends the IDs of the entries whose text contains text (case-sensitive).
  void FindListItemIDsContaining(const CString& text, std::vector<int>& ids) const;

  void ClearUsageCounts();
  void AddUsageCountFor(int nID);
  void AdjustAddressUsageCounts(int nOldID, int nNewID);

  // A new empty address owned by the book; nID -1 takes the next ID.
  Address* CreateAddress(int nID);
  Address* GetAddressByName(const CString& name, bool bCreate);
  void DeleteAddress(int nID);
  void ClearAddressBook();
  // Sets the business flag of the book and of every address in it.
  void SetAddressBookFlag(bool bIsBusiness);
  AddressBook& GetAddressBook() { return m_addressBook; }
  const AddressBook& GetAddressBook() const { return m_addressBook; }
  void GetAddressBook(AddressBook& book) const { book = m_addressBook; }
  // Appends the IDs of the addresses whose Name contains text (case-sensitive).
  void FindAddressIDsContaining(const CString& text, std::vector<int>& ids) const;
  // Makes the own book equal to other: changed and deleted addresses are
  // reported by ID (in reverse book order), bAdded tells whether other held
  // addresses the book did not.
  void SyncAddresses(const AddressBook& other, std::vector<int>& changedIDs, std::vector<int>& deletedIDs,
                     bool& bAdded);

  void Serialize(CArchive& ar);

 protected:
  ListItem* CreateListItemPrivate() const;
  void AdjustListItemID(ListItem* pItem, int nID, bool bEnterInMap);
  void AddListItem(ListItem* pItem);
  void SortListItemsByValue();
  void ClearListItems();
  void CopyListItems(const DataProp& other);
  bool AreListItemsDifferent(const DataProp& other) const;
  bool AreAddressesDifferent(const DataProp& other) const;
  void DeserializeListItem(CArchive& ar);
  void DeserializeOldListItem(CArchive& ar) { DeserializeListItem(ar); }
  void ReadListItemAddress(CArchive& ar);
  void GenerateWebTag();
  void ValidateWebTag();

 private:
  void CopyDisplayFlags(const DataProp& other);
  void CopyUserRights(const DataProp& other);
  void CopyLayoutAndTexts(const DataProp& other);
  bool DiffersForUser(const DataProp& other) const;
  void RaiseNextListItemID(int nID);
  void SortIfKeptSorted();
  void SerializeFlags(CArchive& ar, WORD nVersion, bool& bObsoleteA, bool& bObsoleteB);
  void StoreEntries(CArchive& ar);
  void LoadEntries(CArchive& ar, WORD nVersion);
  void CorrectLoadedType(WORD nVersion, bool bObsoleteA, bool bObsoleteB);

  bool m_bCanBeSummed = false;
  bool m_bCanBeAveraged = false;
  bool m_bCanBeNegative = true;
  bool m_bShowSignAlways = false;
  bool m_bThousandsSep = true;
  bool m_bFractional = false;
  bool m_bShowDecimalZeroes = true;
  bool m_bZeroIsEmpty = true;
  bool m_bDateTimeNumbers = true;
  bool m_bTimeShowHours = false;
  bool m_bTimeShowSeconds = false;
  bool m_bDisplayed = true;
  bool m_bHiddenFromUI = false;
  bool m_bUserCanDelete = true;
  bool m_bUserCanDeleteWarning = false;
  bool m_bUserChangeDataType = true;
  bool m_bUserChangeValue = true;
  bool m_bUserChangeDefValue = true;
  bool m_bSortValuesByListOrder = false;
  bool m_bKeepListItemsSorted = false;
  bool m_bUseWithDataSubItem = false;
  int m_nID = -1;
  int m_nNextListItemID = 0;
  unsigned int m_nCustomColWidth = CUSTOMWIDTH_UNINIT;
  ColWidth m_nColWidth = ColWidth{};
  ColAlign m_nColAlign = ColAlign{};
  DataType::Type m_nDataType = DataType::Text;
  CString m_strName;
  CString m_strDesc;
  CString m_strWebTag;
  CString m_strDefaultValue;
  CString m_strPrefix;
  CString m_strSuffix;
  AddressBook m_addressBook;
  std::vector<ListItem*> m_vecListItems;          // owned, display order
  std::map<int, ListItem*> m_mapListItemsByID;  // index over m_vecListItems
};

#endif  // DATAMGR_SCHEMA_DATAPROP_H_
