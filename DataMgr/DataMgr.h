#ifndef DATAMGR_DATAMGR_H_
#define DATAMGR_DATAMGR_H_

// Every public header of the library, for hosts that want them all.
#include "DataMgr/types/DataType.h"
#include "DataMgr/types/LibraryVersion.h"
#include "DataMgr/types/NextIDMgr.h"

#endif  // DATAMGR_DATAMGR_H_
