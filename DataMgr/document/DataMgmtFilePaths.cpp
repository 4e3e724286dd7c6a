#include "DataMgr/document/DataMgmt.h"

#include <map>

#include "utility/DirUtils.h"
#include "utility/FileUtils.h"
#include "utility/StringUtils.h"

namespace {

// A folder-only value (not a file) that differs from the column's default.
bool IsStaleFolder(const CString& value, const CString& defaultValue) {
  return !value.IsEmpty() && DirUtils::IsDir(value, true) && !FileUtils::IsFile(value, true, true) &&
         value.Compare(defaultValue) != 0;
}

CString TextOf(const Data& record, int nID) {
  CString text;
  record.GetData(nID, text);
  return text;
}

}  // namespace

bool DataMgmt::AdjustFilePaths(const CString& oldDir, const CString& newDir) {
  bool bChanged = false;
  ForEachDataProp([&](DataProp& prop) { bChanged = DoAdjustFilePaths(oldDir, newDir, prop) || bChanged; });
  return bChanged;
}

bool DataMgmt::DoAdjustFilePaths(const CString& oldDir, const CString& newDir, DataProp& prop) {
  if (!IsFilePathType(prop.GetDataType())) return false;
  const int nID = prop.GetID();
  bool bChanged = false;
  for (size_t i = 0; i < m_dataItemMgr.GetCount(); ++i) {
    DataItem& item = *m_dataItemMgr.GetAt(i);
    if (!item.HaveDataProp(nID)) continue;
    const CString path = TextOf(item, nID);
    if (DirUtils::ParsePathFromFile(path).CompareNoCase(oldDir) != 0 || FileUtils::DoesFileExist(path)) continue;
    const CString candidate = newDir + FileUtils::ParseFileNameFromPath(path, true);
    if (FileUtils::DoesFileExist(candidate)) bChanged = item.SetData(nID, candidate, true) || bChanged;
  }
  return bChanged;
}

// Application columns reset a stale folder of an item even when it exists;
// user columns and every sub-item only when it is gone. Sub-items are looked
// at only under an item whose own value was reset.
void DataMgmt::ResetFileBasedDefaultValues() {
  ForEachDataProp([this](DataProp& prop) {
    if (!IsFilePathType(prop.GetDataType())) return;
    const int nID = prop.GetID();
    const CString& defaultValue = prop.GetDefaultValue();
    const bool bCheckExists = nID >= DataProp::DEFAULT_USER_ID;
    for (size_t i = 0; i < m_dataItemMgr.GetCount(); ++i) {
      DataItem& item = *m_dataItemMgr.GetAt(i);
      if (!item.HaveDataProp(nID)) continue;
      const CString value = TextOf(item, nID);
      if (!IsStaleFolder(value, defaultValue) || (bCheckExists && DirUtils::DoesDirExist(value))) continue;
      item.SetData(nID, defaultValue, true);
      DataSubItemMgr& subItems = item.GetSubItemsMgr();
      for (size_t j = 0; j < subItems.GetCount(); ++j) {
        DataSubItem& subItem = *subItems.GetAt(j);
        if (!subItem.HaveDataProp(nID)) continue;
        const CString subValue = TextOf(subItem, nID);
        if (IsStaleFolder(subValue, defaultValue) && !DirUtils::DoesDirExist(subValue)) {
          subItem.SetData(nID, defaultValue, true);
        }
      }
    }
  });
}

void DataMgmt::IsUsableDirPath(CString& path) const {
  if (StringUtils::IsEffectivelyEmpty(path)) {
    path.Empty();
    return;
  }
  if (!DirUtils::IsDir(path, true) && FileUtils::IsFile(path, true, true)) path = DirUtils::ParsePathFromFile(path);
  while (!path.IsEmpty() && !DirUtils::DoesDirExist(path)) path = DirUtils::ParseParentDir(path);
}

// Folders are counted in case-sensitive order, and only a strictly greater
// count replaces the folder chosen so far.
void DataMgmt::GetMostUsedDirPath(int nDataPropID, CString& path, const std::vector<DataItem*>& items) const {
  path.Empty();
  if (nDataPropID < 0 || (m_dataItemMgr.IsEmpty() && items.empty())) return;
  std::map<CString, int> counts;
  const auto count = [&](const DataItem* pItem) {
    if (pItem == nullptr) return;
    const CString folder = DirUtils::ParsePathFromFile(TextOf(*pItem, nDataPropID));
    if (!folder.IsEmpty()) ++counts[folder];
  };
  if (items.empty()) {
    for (size_t i = 0; i < m_dataItemMgr.GetCount(); ++i) count(m_dataItemMgr.GetAt(i));
  } else {
    for (const DataItem* pItem : items) count(pItem);
  }
  int nBest = 0;
  for (const auto& folder : counts) {
    if (folder.second > nBest) {
      nBest = folder.second;
      path = folder.first;
    }
  }
}

// Other columns of the column's type are asked in registry order: the
// application columns the user can see, and every user column. A column ID
// the registry does not know has no type and no default, so the search goes
// on from the item modified last.
CString DataMgmt::GetBestLastUsedDir(int nDataPropID, DataItem* pItem, const CString& lastUsedDir,
                                     const std::vector<DataItem*>& items) const {
  const CString FALLBACK = "C:\\";
  CString best;
  const auto usable = [&](const CString& candidate) {
    best = candidate;
    IsUsableDirPath(best);
    return !best.IsEmpty();
  };
  const auto mostUsed = [&](int nID) {
    CString path;
    GetMostUsedDirPath(nID, path, items);
    return path;
  };
  if (nDataPropID < 0) {
    if (usable(lastUsedDir)) return best;
    return lastUsedDir.IsEmpty() ? FALLBACK : lastUsedDir;
  }
  if (pItem != nullptr && usable(TextOf(*pItem, nDataPropID))) return best;
  if (usable(mostUsed(nDataPropID))) return best;
  if (const DataProp* pProp = m_dataPropMgr.GetByID(nDataPropID)) {
    bool bFound = false;
    ForEachDataProp([&](const DataProp& other) {
      const int nID = other.GetID();
      if (bFound || nID == nDataPropID || other.GetDataType() != pProp->GetDataType()) return;
      if (nID < DataProp::DEFAULT_USER_ID && other.GetHiddenFromUI()) return;
      bFound = (pItem != nullptr && usable(TextOf(*pItem, nID))) || usable(mostUsed(nID));
    });
    if (bFound || usable(pProp->GetDefaultValue())) return best;
  }
  const DataItem* pLast = GetLastModifiedDataItem(nDataPropID);
  if (pLast != nullptr && usable(TextOf(*pLast, nDataPropID))) return best;
  return usable(lastUsedDir) ? best : FALLBACK;
}
