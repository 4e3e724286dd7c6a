// Loads the column registry of a document.

#include <cstddef>
#include <cstdint>

#include "DataMgr/schema/DataPropMgr.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<DataPropMgr>(pData, nSize);
  return 0;
}
