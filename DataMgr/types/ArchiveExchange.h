#ifndef DATAMGR_TYPES_ARCHIVEEXCHANGE_H_
#define DATAMGR_TYPES_ARCHIVEEXCHANGE_H_

// Internal to the library: helpers that let a Serialize store and load one
// field in one line, so that both directions stay side by side.

#include "framework/CArchive.h"
#include "framework/Types.h"

namespace archive_exchange {

// Stores value into a storing archive, loads it from a loading one.
template <typename T>
void Exchange(CArchive& ar, T& value) {
  if (ar.IsStoring()) {
    ar << value;
  } else {
    ar >> value;
  }
}

// An enumeration in a WORD; loading zero-extends the word unchecked.
template <typename E>
void ExchangeWord(CArchive& ar, E& value) {
  WORD nWord = static_cast<WORD>(value);
  Exchange(ar, nWord);
  value = static_cast<E>(nWord);
}

}  // namespace archive_exchange

#endif  // DATAMGR_TYPES_ARCHIVEEXCHANGE_H_
