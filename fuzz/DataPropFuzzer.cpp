// Loads one column with its entries or address book.

#include <cstddef>
#include <cstdint>

#include "DataMgr/schema/DataProp.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<DataProp>(pData, nSize);
  return 0;
}
