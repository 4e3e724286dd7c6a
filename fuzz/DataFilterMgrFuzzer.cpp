// Loads a filter set.

#include <cstddef>
#include <cstdint>

#include "DataMgr/filter/DataFilterMgr.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<DataFilterMgr>(pData, nSize);
  return 0;
}
