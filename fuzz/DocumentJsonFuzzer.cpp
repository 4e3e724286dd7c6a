// Reads a document from JSON text (vaxo057io). Text that is no JSON of a
// document must be refused with a reason and leave the document as it was;
// a document that was read must be written and read back to the same
// archive and the same JSON.

#include <cstddef>
#include <cstdint>
#include <string>

#include "DataMgr/document/DataMgmt.h"
#include "fuzz/FuzzLoad.h"
#include "io/DocumentJson.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  const std::string text(reinterpret_cast<const char*>(pData), nSize);
  DataMgmt doc;
  CString error;
  if (!DocumentJson::Read(text, doc, error)) {
    if (error.IsEmpty()) fuzz::Fail("a refused JSON named no reason");
    if (!doc.GetDataItemMgr().IsEmpty() || doc.GetDataPropMgr().GetUserCount() != 0) {
      fuzz::Fail("a refused JSON changed the document");
    }
    return 0;
  }
  const std::string json = DocumentJson::Write(doc, false);
  DataMgmt again;
  if (!DocumentJson::Read(json, again, error)) fuzz::Fail(error.GetString());
  if (fuzz::StoreBytes(again) != fuzz::StoreBytes(doc)) fuzz::Fail("the JSON read back stores other bytes");
  if (DocumentJson::Write(again, false) != json) fuzz::Fail("the JSON read back writes other JSON");
  return 0;
}
