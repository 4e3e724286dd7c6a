#include "io/DocumentCheck.h"

#include <algorithm>
#include <map>

#include "io/ColumnLookup.h"

namespace {

const size_t PROGRESS_STEP = 1024;

CString Quoted(const CString& text) { return "\"" + text + "\""; }

bool IsAddressBook(const DataProp& prop) {
  return prop.GetDataType() == DataType::AddressBookSuggested || prop.GetDataType() == DataType::AddressBookSelect;
}

// The entries of one list or address column: what each claims as its
// usage count, and the cells counted for it.
struct EntryColumn {
  const DataProp* pProp;
  struct Entry {
    CString text;
    int nClaimed;
    int nCounted;
  };
  std::map<int, Entry> entries;  // by ID; an ID held twice counts for its first holder
};

class Checker {
 public:
  explicit Checker(const DataMgmt& doc) : m_doc(doc) {}

  std::vector<DocumentCheck::Problem> Run(const Progress& progress) {
    CheckColumns();
    const DataItemMgr& items = m_doc.GetDataItemMgr();
    std::vector<int> itemIDs;
    for (size_t i = 0; i < items.GetCount(); ++i) {
      const DataItem& item = *items.GetAt(i);
      itemIDs.push_back(item.GetID());
      CheckItem(item);
      if (progress && ((i + 1) % PROGRESS_STEP == 0 || i + 1 == items.GetCount())) progress(i + 1, items.GetCount());
    }
    ReportDuplicates(itemIDs, "items");
    CompareCounts();
    return std::move(m_problems);
  }

 private:
  void CheckColumns() {
    std::vector<int> columnIDs;
    for (const DataProp* pProp : ColumnLookup::GetAll(m_doc)) {
      columnIDs.push_back(pProp->GetID());
      if (DataType::IsListType(pProp->GetDataType())) AddEntryColumn(*pProp);
    }
    ReportDuplicates(columnIDs, "columns");
  }

  void AddEntryColumn(const DataProp& prop) {
    EntryColumn column{&prop, {}};
    std::vector<int> ids;
    if (IsAddressBook(prop)) {
      const AddressBook& book = prop.GetAddressBook();
      for (size_t i = 0; i < book.GetCount(); ++i) {
        const Address& address = *book.GetAt(i);
        ids.push_back(address.GetID());
        column.entries.insert({address.GetID(), {address.GetData(Address::Name), address.GetUsageCount(), 0}});
      }
    } else {
      for (size_t i = 0; i < prop.GetListItemsCount(); ++i) {
        const ListItem& entry = *prop.GetListItemAt(i);
        ids.push_back(entry.GetID());
        column.entries.insert({entry.GetID(), {entry.GetTextRepresentation(), entry.GetUsageCount(), 0}});
      }
    }
    ReportDuplicates(
        ids, CString(IsAddressBook(prop) ? "addresses" : "entries") + " of the column " + Quoted(prop.GetName()));
    m_entryColumns.push_back(std::move(column));
  }

  void CheckItem(const DataItem& item) {
    CString name;
    name.Format("item %d", item.GetID());
    CheckCells(item, name);
    const DataSubItemMgr& subItems = item.GetSubItemsMgr();
    std::vector<int> subItemIDs;
    for (size_t s = 0; s < subItems.GetCount(); ++s) {
      const DataSubItem& subItem = *subItems.GetAt(s);
      subItemIDs.push_back(subItem.GetID());
      CString subName;
      subName.Format("item %d, sub-item %d", item.GetID(), subItem.GetID());
      if (subItem.GetParentID() != item.GetID()) {
        Report(DocumentCheck::ParentID,
               subName + ": its parent ID is " + std::to_string(subItem.GetParentID()) + ", not its item's");
      }
      CheckCells(subItem, subName);
    }
    ReportDuplicates(subItemIDs, "sub-items of " + name);
  }

  void CheckCells(const Data& record, const CString& recordName) {
    for (EntryColumn& column : m_entryColumns) {
      const int nColumnID = column.pProp->GetID();
      if (!record.HaveDataPropInt(nColumnID)) continue;
      int nEntryID = -1;
      record.GetData(nColumnID, nEntryID);
      if (nEntryID < 0) continue;
      const auto entry = column.entries.find(nEntryID);
      if (entry != column.entries.end()) {
        ++entry->second.nCounted;
        continue;
      }
      CString text;
      text.Format("%s: the column %s names %s %d, which does not exist", recordName.GetString(),
                  Quoted(column.pProp->GetName()).GetString(), IsAddressBook(*column.pProp) ? "address" : "entry",
                  nEntryID);
      Report(DocumentCheck::MissingEntry, text);
    }
  }

  void CompareCounts() {
    for (const EntryColumn& column : m_entryColumns) {
      for (const auto& entry : column.entries) {
        if (entry.second.nClaimed == entry.second.nCounted) continue;
        CString text;
        text.Format("the column %s: %s %d (%s) has the usage count %d, but %d cell%s name%s it",
                    Quoted(column.pProp->GetName()).GetString(), IsAddressBook(*column.pProp) ? "address" : "entry",
                    entry.first, Quoted(entry.second.text).GetString(), entry.second.nClaimed, entry.second.nCounted,
                    entry.second.nCounted == 1 ? "" : "s", entry.second.nCounted == 1 ? "s" : "");
        Report(DocumentCheck::UsageCount, text);
      }
    }
  }

  void ReportDuplicates(std::vector<int> ids, const CString& what) {
    std::sort(ids.begin(), ids.end());
    for (auto it = ids.begin(); it != ids.end();) {
      const auto next = std::upper_bound(it, ids.end(), *it);
      if (next - it > 1) {
        CString text;
        text.Format("%d %s have the ID %d", static_cast<int>(next - it), what.GetString(), *it);
        Report(DocumentCheck::DuplicateID, text);
      }
      it = next;
    }
  }

  void Report(DocumentCheck::Kind nKind, const CString& text) { m_problems.push_back({nKind, text}); }

  const DataMgmt& m_doc;
  std::vector<EntryColumn> m_entryColumns;
  std::vector<DocumentCheck::Problem> m_problems;
};

}  // namespace

std::vector<DocumentCheck::Problem> DocumentCheck::Run(const DataMgmt& doc, const Progress& progress) {
  return Checker(doc).Run(progress);
}
