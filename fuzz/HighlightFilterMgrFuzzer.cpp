// Loads a set of highlight rules.

#include <cstddef>
#include <cstdint>

#include "DataMgr/filter/HighlightFilterMgr.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<HighlightFilterMgr>(pData, nSize);
  return 0;
}
