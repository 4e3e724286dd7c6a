// Loads the items of a document.

#include <cstddef>
#include <cstdint>

#include "DataMgr/records/DataItemMgr.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<DataItemMgr>(pData, nSize);
  return 0;
}
