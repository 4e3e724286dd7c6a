// A small host of the library: it builds a document of a few columns,
// enters three records as text the way a host's edit field does (a rejected
// text is reported and the cell keeps its value), prints every cell as the
// document shows it, saves the document to a file (the first argument, or a
// file in the temporary folder), loads it into a fresh document and prints
// it again.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "DataMgr/DataMgr.h"

namespace {

void Print(const DataMgmt& doc, const std::vector<int>& columns) {
  const DataItemMgr& items = doc.GetDataItemMgr();
  for (size_t i = 0; i < items.GetCount(); ++i) {
    for (int nID : columns) std::printf("%-14s", doc.GetTextRepresentation(*items.GetAt(i), nID, false).GetString());
    std::printf("\n");
  }
}

// What a host does when the user leaves an edit field: one call checks,
// normalises and stores the text; a rejected text leaves the cell as it
// was, and only a change needs the cell shown again.
void Enter(DataMgmt& doc, DataItem& item, int nColumnID, const char* pszTyped) {
  CString normalized;
  switch (doc.EnterValue(item, nColumnID, pszTyped, normalized)) {
    case DataMgmt::EntryRejected:
      std::printf("\"%s\" is not accepted as %s; the cell keeps \"%s\"\n", pszTyped,
                  doc.GetDataPropMgr().GetByID(nColumnID)->GetName().GetString(),
                  doc.GetTextRepresentation(item, nColumnID, false).GetString());
      break;
    case DataMgmt::EntryUnchanged:
      break;
    case DataMgmt::EntryChanged:
      if (normalized != pszTyped) std::printf("\"%s\" entered as \"%s\"\n", pszTyped, normalized.GetString());
      break;
  }
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
    pProp->SetCanBeNegative(false);
    doc.AddDataProp(pProp, true, false, false, false);
    columns.push_back(pProp->GetID());
  }
  const std::vector<std::vector<const char*>> rows = {{"Tea", "1200", "2026-11-22", "4.5", "drinks"},
                                                      {"Bread", "-3", "11/20/2026", "2.25", "food"},
                                                      {"Coffee", "250", "Nov 1, 2026", "12", "drinks"}};
  for (const auto& row : rows) {
    DataItem* pItem = doc.CreateDataItem(nullptr, true, true);
    for (size_t i = 0; i < columns.size(); ++i) Enter(doc, *pItem, columns[i], row[i]);
  }
  Print(doc, columns);

  const std::string path =
      argc > 1 ? argv[1] : (std::filesystem::temp_directory_path() / "vaxo057-example.dat").string();
  DataMgmt loaded;
  DocumentFile file(path.c_str());
  if (!file.Save(doc) || !file.Load(loaded)) {
    std::fprintf(stderr, "%s\n", file.GetMessage().GetString());
    return 1;
  }
  std::printf("saved to %s and loaded again:\n", path.c_str());
  Print(loaded, columns);
  return 0;
}
