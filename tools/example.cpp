// A small host of the library: it prints the library's release, archives a
// few values into memory, shows their bytes and loads them back.
#include <cstdio>
#include <map>

#include "DataMgr/DataMgr.h"
#include "framework/CArchive.h"
#include "framework/CMemFile.h"
#include "utility/SerializeData.h"

namespace {

void PrintBytes(const std::vector<BYTE>& bytes) {
  for (size_t i = 0; i < bytes.size(); ++i) std::printf("%02x%s", bytes[i], (i % 16 == 15) ? "\n" : " ");
  std::printf("\n");
}

}  // namespace

int main() {
  std::printf("vaxo057 %s\n", LibraryVersion::GetText());

  std::map<int, CString> texts = {{5000, "Title"}, {5001, "Author"}};
  CMemFile file;
  {
    CArchive ar(&file, CArchive::store);
    ar << static_cast<WORD>(1);
    SerializeData::Serialize(ar, texts, false);
  }
  std::printf("archived %zu bytes:\n", file.GetContents().size());
  PrintBytes(file.GetContents());

  file.Seek(0, CFile::begin);
  CArchive ar(&file, CArchive::load);
  WORD nVersion = 0;
  std::map<int, CString> loaded;
  ar >> nVersion;
  SerializeData::Serialize(ar, loaded, false);
  std::printf("loaded version %u:", static_cast<unsigned>(nVersion));
  for (const auto& entry : loaded) std::printf(" %d=\"%s\"", entry.first, entry.second.GetString());
  std::printf("\n");
  return loaded == texts ? 0 : 1;
}
