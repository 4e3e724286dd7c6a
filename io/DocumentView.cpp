#include "io/DocumentView.h"

#include "io/ColumnLookup.h"

namespace {

CString NoColumn(const CString& name) { return "no column \"" + name + "\""; }

// Removes suffix (ignoring case) from the end of text; whether it was there.
bool CutSuffix(CString& text, const char* pszSuffix) {
  const int nLength = CString(pszSuffix).GetLength();
  if (text.GetLength() <= nLength || text.Right(nLength).CompareNoCase(pszSuffix) != 0) return false;
  text = text.Left(text.GetLength() - nLength);
  return true;
}

}  // namespace

bool DocumentView::Build(DataMgmt& doc, const std::vector<CString>& columnNames, const DataFilterMgr& filters,
                         const SortOrder& order, size_t nLimit, bool bSubItems, CString& error) {
  m_vecColumns.clear();
  m_vecRows.clear();
  m_nPassing = 0;
  std::vector<int> ids = ColumnLookup::GetShownIDs(doc);
  if (!columnNames.empty()) {
    ids.clear();
    for (const CString& name : columnNames) {
      const DataProp* pProp = ColumnLookup::Find(doc, name);
      if (pProp == nullptr) {
        error = NoColumn(name);
        return false;
      }
      ids.push_back(pProp->GetID());
    }
  }
  for (int nID : ids) {
    const DataProp& prop = *doc.GetDataPropMgr().GetByID(nID);
    m_vecColumns.push_back({nID, prop.GetName(), DataType::IsNumberType(prop.GetDataType())});
  }
  if (order.HaveDataProps()) doc.Sort(order, true);
  const DataItemMgr& items = doc.GetDataItemMgr();
  const auto addRow = [&](const Data& record, int nItemID, int nSubItemID) {
    Row row{nItemID, nSubItemID, {}};
    for (int nID : ids) row.texts.push_back(doc.GetTextRepresentation(record, nID, true));
    m_vecRows.push_back(std::move(row));
  };
  for (size_t i = 0; i < items.GetCount(); ++i) {
    const DataItem& item = *items.GetAt(i);
    if (!filters.PassesFilters(item) || (++m_nPassing > nLimit && nLimit != 0)) continue;
    addRow(item, item.GetID(), -1);
    const DataSubItemMgr& subItems = item.GetSubItemsMgr();
    for (size_t s = 0; bSubItems && s < subItems.GetCount(); ++s) {
      addRow(*subItems.GetAt(s), item.GetID(), subItems.GetAt(s)->GetID());
    }
  }
  return true;
}

bool DocumentView::AddSortKey(const DataMgmt& doc, const CString& key, SortOrder& order, CString& error) {
  CString name = key;
  bool bAscending = true;
  bool bCaseSensitive = false;
  for (;;) {
    if (CutSuffix(name, ":desc")) {
      bAscending = false;
    } else if (CutSuffix(name, ":asc")) {
      bAscending = true;
    } else if (CutSuffix(name, ":case")) {
      bCaseSensitive = true;
    } else {
      break;
    }
  }
  const DataProp* pProp = ColumnLookup::Find(doc, name);
  if (pProp == nullptr) {
    error = NoColumn(name);
    return false;
  }
  order.AddDataPropID(pProp->GetID(), bAscending, bCaseSensitive);
  return true;
}
