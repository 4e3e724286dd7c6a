// Loads a list of named web links.

#include <cstddef>
#include <cstdint>

#include "DataMgr/report/WebLinkMgr.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<WebLinkMgr>(pData, nSize);
  return 0;
}
