// Loads a highlight rule.

#include <cstddef>
#include <cstdint>

#include "DataMgr/filter/HighlightFilter.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<HighlightFilter>(pData, nSize);
  return 0;
}
