// Loads an address book.

#include <cstddef>
#include <cstdint>

#include "DataMgr/schema/AddressBook.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  fuzz::LoadStoreLoad<AddressBook>(pData, nSize);
  return 0;
}
