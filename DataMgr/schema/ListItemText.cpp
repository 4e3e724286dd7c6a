#include "DataMgr/schema/ListItemText.h"

#include "DataMgr/types/ArchiveExchange.h"

using archive_exchange::Exchange;

bool ListItemText::SetTextRepresentation(const CString& text) {
  if (m_strText.Compare(text) == 0) return false;
  m_strText = text;
  return true;
}

// Layout: the ListItem part; WORD version (1, ignored on loading); text.
void ListItemText::Serialize(CArchive& ar) {
  ListItem::Serialize(ar);
  SerializePartVersion(ar);
  Exchange(ar, m_strText);
}
