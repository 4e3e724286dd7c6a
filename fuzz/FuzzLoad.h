#ifndef FUZZ_FUZZLOAD_H_
#define FUZZ_FUZZLOAD_H_

// The body every fuzz target shares. The input is an archive of one class;
// loading it into a fresh object may end in CArchiveException and in nothing
// else (any other exception escapes and libFuzzer reports it). An object
// left half loaded by a fault must still store. An object that loaded must
// store, load back without a fault and store the same bytes again.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "framework/CArchive.h"
#include "framework/CArchiveException.h"
#include "framework/CMemFile.h"

namespace fuzz {

using Bytes = std::vector<BYTE>;

template <typename T>
Bytes StoreBytes(T& value) {
  CMemFile file;
  {
    CArchive ar(&file, CArchive::store);
    value.Serialize(ar);
  }
  return file.GetContents();
}

template <typename T>
void LoadBytes(const uint8_t* pData, size_t nSize, T& value) {
  CMemFile file(pData, nSize);
  CArchive ar(&file, CArchive::load);
  value.Serialize(ar);
}

[[noreturn]] inline void Fail(const char* pszWhat) {
  std::fprintf(stderr, "round trip failed: %s\n", pszWhat);
  std::abort();
}

template <typename T>
void LoadStoreLoad(const uint8_t* pData, size_t nSize) {
  T loaded;
  try {
    LoadBytes(pData, nSize, loaded);
  } catch (const CArchiveException&) {
    StoreBytes(loaded);
    return;
  }
  const Bytes stored = StoreBytes(loaded);
  T reloaded;
  try {
    LoadBytes(stored.data(), stored.size(), reloaded);
  } catch (const CArchiveException& e) {
    std::fprintf(stderr, "archive exception, cause %d\n", e.m_cause);
    Fail("loading what was stored threw");
  }
  if (StoreBytes(reloaded) != stored) Fail("storing what was loaded back gave other bytes");
}

}  // namespace fuzz

#endif  // FUZZ_FUZZLOAD_H_
