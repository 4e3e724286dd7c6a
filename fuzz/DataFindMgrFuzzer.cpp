// Loads a list of search hits.

#include <cstddef>
#include <cstdint>

#include "DataMgr/document/DataFindMgr.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<DataFindMgr>(pData, nSize);
  return 0;
}
