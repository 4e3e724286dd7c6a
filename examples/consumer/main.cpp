// A host built against an installed vaxo057: one monetary column, one item
// entered as text, the document saved to a file and loaded into a fresh
// document, whose cell must show the same text. Exits 0 when it does.
#include <cstdio>
#include <filesystem>
#include <string>

#include "DataMgr/DataMgr.h"

int main() {
  DataMgmt doc;
  auto* pPrice = new DataProp;
  pPrice->SetDataType(DataType::Monetary);
  pPrice->SetName("Price");
  doc.AddDataProp(pPrice, true, false, false, false);
  DataItem* pItem = doc.CreateDataItem(nullptr, true, true);
  CString normalized;
  if (doc.EnterValue(*pItem, pPrice->GetID(), "12.5", normalized) != DataMgmt::EntryChanged) return 1;
  const CString shown = doc.GetTextRepresentation(*pItem, pPrice->GetID(), false);

  const std::string path = (std::filesystem::temp_directory_path() / "vaxo057-consumer.dat").string();
  DataMgmt loaded;
  DocumentFile file(path.c_str());
  if (!file.Save(doc) || !file.Load(loaded)) {
    std::fprintf(stderr, "%s\n", file.GetMessage().GetString());
    return 1;
  }
  std::filesystem::remove(path);
  const CString reloaded = loaded.GetTextRepresentation(*loaded.GetDataItemMgr().GetAt(0), pPrice->GetID(), false);
  std::printf("vaxo057 %s: price %s, after saving and loading %s\n", LibraryVersion::GetText(), shown.GetString(),
              reloaded.GetString());
  return shown == reloaded && !shown.IsEmpty() ? 0 : 1;
}
