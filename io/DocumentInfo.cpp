#include "io/DocumentInfo.h"

#include <fstream>
#include <iterator>
#include <vector>

#include "DataMgr/schema/DataPropMgr.h"
#include "framework/CArchive.h"
#include "framework/CMemFile.h"
#include "io/JsonForms.h"

bool DocumentInfo::ReadVersions(const CString& path, Versions& versions) {
  std::ifstream file(path.GetString(), std::ios::binary);
  if (!file) return false;
  const std::vector<BYTE> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  // The document's layout: its version, the export path, the registry, the
  // item list (docs/FORMAT.md, chapter 11).
  const auto wordAt = [&](ULONGLONG nOffset) -> WORD {
    return nOffset + 2 <= bytes.size() ? static_cast<WORD>(bytes[nOffset] | bytes[nOffset + 1] << 8) : 0;
  };
  try {
    CMemFile memory(bytes);
    CArchive ar(&memory, CArchive::load);
    ar >> versions.nDocument;
    CString exportPath;
    ar >> exportPath;
    versions.nColumns = wordAt(bytes.size() - ar.GetBytesRemaining());
    DataPropMgr registry;
    registry.Serialize(ar);
    const ULONGLONG nItemsAt = bytes.size() - ar.GetBytesRemaining();
    versions.nItems = wordAt(nItemsAt);
    return nItemsAt + 2 <= bytes.size();
  } catch (const CArchiveException&) {
    return false;
  }
}

std::vector<std::pair<CString, bool>> DocumentInfo::GetChangedFlags(const DataProp& prop) {
  const DataProp fresh;
  std::vector<std::pair<CString, bool>> flags;
  for (size_t i = 0; i < json_forms::COLUMN_FLAG_COUNT; ++i) {
    const json_forms::ColumnFlag& flag = json_forms::COLUMN_FLAGS[i];
    const bool bValue = (prop.*flag.pGet)();
    if (bValue != (fresh.*flag.pGet)()) flags.emplace_back(flag.pszName, bValue);
  }
  return flags;
}
