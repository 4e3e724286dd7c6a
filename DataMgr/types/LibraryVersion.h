#ifndef DATAMGR_TYPES_LIBRARYVERSION_H_
#define DATAMGR_TYPES_LIBRARYVERSION_H_

#include "DataMgr/Export.h"

// The release of the library that the host has loaded, so that a host can
// tell which library it runs against.
class VAXO057_API LibraryVersion {
 public:
  static int GetMajor();
  static int GetMinor();
  static int GetPatch();
  // "major.minor.patch".
  static const char* GetText();
};

#endif  // DATAMGR_TYPES_LIBRARYVERSION_H_
