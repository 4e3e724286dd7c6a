// A small host of the library: it builds a document of a few columns,
// enters three records as text, prints every cell as the document shows it,
// saves the document to a file (the first argument, or a file in the
// temporary folder), loads it into a fresh document and prints it again.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "DataMgr/DataMgr.h"
#include "framework/CArchive.h"
#include "framework/CFile.h"

namespace {

void Print(const DataMgmt& doc, const std::vector<int>& columns) {
  const DataItemMgr& items = doc.GetDataItemMgr();
  for (size_t i = 0; i < items.GetCount(); ++i) {
    for (int nID : columns) std::printf("%-14s", doc.GetTextRepresentation(*items.GetAt(i), nID, false).GetString());
    std::printf("\n");
  }
}

bool Transfer(DataMgmt& doc, const std::string& path, bool bStore) {
  CFile file;
  if (!file.Open(path.c_str(), bStore ? CFile::modeCreate | CFile::modeWrite : CFile::modeRead)) return false;
  CArchive ar(&file, bStore ? CArchive::store : CArchive::load);
  try {
    doc.Serialize(ar);
    ar.Close();
  } catch (const CArchiveException&) {
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::printf("vaxo057 %s\n", LibraryVersion::GetText());
  DataMgmt doc;
  std::vector<int> columns;
  for (DataType::Type nType : {DataType::Text, DataType::Number, DataType::Date, DataType::Monetary,
                               DataType::ValueListSuggested}) {
    auto* pProp = new DataProp;
    pProp->SetDataType(nType);
    pProp->SetName(DataType::GetText(nType));
    doc.AddDataProp(pProp, true, false, false, false);
    columns.push_back(pProp->GetID());
  }
  const std::vector<std::vector<const char*>> rows = {{"Tea", "1200", "2026-11-22", "4.5", "drinks"},
                                                      {"Bread", "3", "11/20/2026", "2.25", "food"},
                                                      {"Coffee", "250", "Nov 1, 2026", "12", "drinks"}};
  for (const auto& row : rows) {
    DataItem* pItem = doc.CreateDataItem(nullptr, true, true);
    for (size_t i = 0; i < columns.size(); ++i) {
      bool bRedisplay = false;
      doc.SetData(*pItem, columns[i], row[i], bRedisplay, true);
    }
  }
  Print(doc, columns);

  const std::string path =
      argc > 1 ? argv[1] : (std::filesystem::temp_directory_path() / "vaxo057-example.dat").string();
  DataMgmt loaded;
  if (!Transfer(doc, path, true) || !Transfer(loaded, path, false)) {
    std::fprintf(stderr, "cannot write or read %s\n", path.c_str());
    return 1;
  }
  std::printf("saved to %s and loaded again:\n", path.c_str());
  Print(loaded, columns);
  return 0;
}
