// Loads a sort order.

#include <cstddef>
#include <cstdint>

#include "DataMgr/sort/SortOrder.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<SortOrder>(pData, nSize);
  return 0;
}
