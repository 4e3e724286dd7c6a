#ifndef DATAMGR_DATAMGR_H_
#define DATAMGR_DATAMGR_H_

// Every public header of the library, for hosts that want them all.
#include "DataMgr/types/LibraryVersion.h"

#endif  // DATAMGR_DATAMGR_H_
