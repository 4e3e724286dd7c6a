#ifndef DATAMGR_DATAMGR_H_
#define DATAMGR_DATAMGR_H_

// Every public header of the library, for hosts that want them all.
#include "DataMgr/types/Data.h"
#include "DataMgr/types/DataType.h"
#include "DataMgr/types/LibraryVersion.h"
#include "DataMgr/types/Money.h"
#include "DataMgr/types/NextIDMgr.h"
#include "DataMgr/types/UndoStore.h"
#include "DataMgr/types/ValueStore.h"
#include "DataMgr/schema/Address.h"
#include "DataMgr/schema/AddressBook.h"
#include "DataMgr/schema/DataProp.h"
#include "DataMgr/schema/DataPropMgr.h"
#include "DataMgr/schema/ListItem.h"
#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/schema/ListItemText.h"
#include "DataMgr/schema/ListItemTextDesc.h"
#include "DataMgr/records/DataItem.h"
#include "DataMgr/records/DataItemMgr.h"
#include "DataMgr/records/DataRecord.h"
#include "DataMgr/records/DataSubItem.h"
#include "DataMgr/records/DataSubItemMgr.h"
#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/document/DocumentFile.h"

#endif  // DATAMGR_DATAMGR_H_
