// Loads a filter condition.

#include <cstddef>
#include <cstdint>

#include "DataMgr/filter/DataFilter.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<DataFilter>(pData, nSize);
  return 0;
}
