// Loads a whole document file through DocumentFile. A load that fails must
// leave the document empty and say where it stopped within the file; a
// document that loaded must save, load back and store the same bytes.
// The files live on a memory file system when there is one, where flushing
// them to disk costs nothing.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "DataMgr/document/DocumentFile.h"
#include "fuzz/FuzzLoad.h"

namespace {

// The input and output file of this process, removed when it exits.
class Files {
 public:
  Files() {
    const std::filesystem::path memory("/dev/shm");
    const std::filesystem::path folder =
        std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
    const std::string stem = "vaxo057-document-fuzzer-" + std::to_string(getpid());
    m_input = (folder / (stem + ".in")).string();
    m_output = (folder / (stem + ".out")).string();
  }
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;
  ~Files() {
    std::error_code error;
    std::filesystem::remove(m_input, error);
    std::filesystem::remove(m_output, error);
  }

  const std::string& Input() const { return m_input; }
  const std::string& Output() const { return m_output; }

 private:
  std::string m_input;
  std::string m_output;
};

bool IsEmpty(const DataMgmt& doc) {
  return doc.GetDataItemMgr().IsEmpty() && doc.GetDataPropMgr().GetAppCount() == 0 &&
         doc.GetDataPropMgr().GetUserCount() == 0 && doc.GetMRUExportPath().IsEmpty();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  static const Files files;
  std::ofstream(files.Input(), std::ios::binary | std::ios::trunc)
      .write(reinterpret_cast<const char*>(pData), static_cast<std::streamsize>(nSize));
  DataMgmt doc;
  DocumentFile input(files.Input().c_str());
  if (!input.Load(doc)) {
    if (input.GetCause() == DocumentFile::None || input.GetMessage().IsEmpty()) {
      fuzz::Fail("a failed load named no cause");
    }
    if (!IsEmpty(doc)) fuzz::Fail("a failed load left the document filled");
    if (input.GetOffset() > nSize || input.GetFileSize() != nSize) {
      fuzz::Fail("a failed load named a place outside the file");
    }
    return 0;
  }
  DocumentFile output(files.Output().c_str());
  DataMgmt reloaded;
  if (!output.Save(doc) || !output.Load(reloaded)) fuzz::Fail(output.GetMessage().GetString());
  if (fuzz::StoreBytes(reloaded) != fuzz::StoreBytes(doc)) fuzz::Fail("the document saved and loaded back differs");
  return 0;
}
