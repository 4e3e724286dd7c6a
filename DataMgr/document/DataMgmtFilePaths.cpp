#include "DataMgr/document/DataMgmt.h"

#include "utility/DirUtils.h"
#include "utility/FileUtils.h"

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
