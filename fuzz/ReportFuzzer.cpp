// Loads a report.

#include <cstddef>
#include <cstdint>

#include "DataMgr/report/Report.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<Report>(pData, nSize);
  return 0;
}
