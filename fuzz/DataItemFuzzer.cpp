// Loads one item: its header, values and sub-items.

#include <cstddef>
#include <cstdint>

#include "DataMgr/records/DataItem.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<DataItem>(pData, nSize);
  return 0;
}
