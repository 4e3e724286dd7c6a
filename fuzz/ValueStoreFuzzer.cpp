// Loads a record's values through a sub-item, the record with the shortest header.

#include <cstddef>
#include <cstdint>

#include "DataMgr/records/DataSubItem.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<DataSubItem>(pData, nSize);
  return 0;
}
