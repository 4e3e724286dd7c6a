#include "DataMgr/types/Data.h"

void Data::RegisterDataProp(int nID, const char* value, bool bFlagged) {
  RegisterDataProp(nID, CString(value), bFlagged);
}

bool Data::SetData(int nID, const char* value, bool bRecord) { return SetData(nID, CString(value), bRecord); }
