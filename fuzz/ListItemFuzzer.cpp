// Loads one list entry. The first input byte picks the entry class (its value
// modulo 4: number, decimal, text, text with description); the archive
// follows.

#include <cstddef>
#include <cstdint>

#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/schema/ListItemText.h"
#include "DataMgr/schema/ListItemTextDesc.h"
#include "fuzz/FuzzLoad.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  if (nSize == 0) return 0;
  switch (pData[0] % 4) {
    case 0:
      fuzz::LoadStoreLoad<ListItemNumber>(pData + 1, nSize - 1);
      break;
    case 1:
      fuzz::LoadStoreLoad<ListItemDouble>(pData + 1, nSize - 1);
      break;
    case 2:
      fuzz::LoadStoreLoad<ListItemText>(pData + 1, nSize - 1);
      break;
    default:
      fuzz::LoadStoreLoad<ListItemTextDesc>(pData + 1, nSize - 1);
      break;
  }
  return 0;
}
