// Imports CSV text into a document (vaxo057io), leaving rejected values
// out. Text that is no CSV must be refused with a reason and leave the
// document empty; an imported document must export as CSV and store.

#include <cstddef>
#include <cstdint>
#include <string>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "fuzz/FuzzLoad.h"
#include "io/CsvExport.h"
#include "io/CsvImport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  const std::string text(reinterpret_cast<const char*>(pData), nSize);
  DataMgmt doc;
  CsvImport import;
  import.SetSkipBad(true);
  CString error;
  if (!import.Read(text, doc, error)) {
    if (error.IsEmpty()) fuzz::Fail("a refused CSV named no reason");
    if (!doc.GetDataItemMgr().IsEmpty() || doc.GetDataPropMgr().GetUserCount() != 0) {
      fuzz::Fail("a refused CSV left the document filled");
    }
    return 0;
  }
  if (CsvExport::Write(doc, DataFilterMgr()).empty()) fuzz::Fail("an imported document exported nothing");
  fuzz::StoreBytes(doc);
  return 0;
}
