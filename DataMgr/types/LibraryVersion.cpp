#include "DataMgr/types/LibraryVersion.h"

// The build passes the project's version as VAXO057_VERSION_*.
#define VAXO057_STRINGIZE2(x) #x
#define VAXO057_STRINGIZE(x) VAXO057_STRINGIZE2(x)

int LibraryVersion::GetMajor() { return VAXO057_VERSION_MAJOR; }

int LibraryVersion::GetMinor() { return VAXO057_VERSION_MINOR; }

int LibraryVersion::GetPatch() { return VAXO057_VERSION_PATCH; }

const char* LibraryVersion::GetText() {
  return VAXO057_STRINGIZE(VAXO057_VERSION_MAJOR) "." VAXO057_STRINGIZE(VAXO057_VERSION_MINOR) "." VAXO057_STRINGIZE(
      VAXO057_VERSION_PATCH);
}
