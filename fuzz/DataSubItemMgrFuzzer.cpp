// Loads the sub-items of one item.

#include <cstddef>
#include <cstdint>

#include "DataMgr/records/DataSubItemMgr.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<DataSubItemMgr>(pData, nSize);
  return 0;
}
