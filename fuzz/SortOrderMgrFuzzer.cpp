// Loads the sort orders of a document.

#include <cstddef>
#include <cstdint>

#include "DataMgr/sort/SortOrderMgr.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<SortOrderMgr>(pData, nSize);
  return 0;
}
