#include "DataMgr/schema/ListItemTextDesc.h"

#include "DataMgr/types/ArchiveExchange.h"

using archive_exchange::Exchange;

// Layout: the ListItemText record; WORD version (1, ignored on loading);
// description.
void ListItemTextDesc::Serialize(CArchive& ar) {
  ListItemText::Serialize(ar);
  SerializePartVersion(ar);
  Exchange(ar, m_strDesc);
}
