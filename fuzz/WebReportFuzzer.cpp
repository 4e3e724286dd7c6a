// Loads a web report with its levels.

#include <cstddef>
#include <cstdint>

#include "DataMgr/report/WebReport.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<WebReport>(pData, nSize);
  return 0;
}
