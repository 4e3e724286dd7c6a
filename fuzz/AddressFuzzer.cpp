// Loads one address in any of its versions.

#include <cstddef>
#include <cstdint>

#include "DataMgr/schema/Address.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<Address>(pData, nSize);
  return 0;
}
