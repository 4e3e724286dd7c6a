#include "DataMgr/schema/ListItemNumber.h"

#include "DataMgr/types/ArchiveExchange.h"
#include "utility/NumberTextConv.h"

using archive_exchange::Exchange;

bool ListItemNumber::SetTextRepresentation(const CString& text) {
  const int nNumber = NumberTextConv::GetNumberFromString(text);
  if (nNumber == m_nNumber) return false;
  m_nNumber = nNumber;
  return true;
}

CString ListItemNumber::GetTextRepresentation() const {
  return NumberTextConv::NumberToString(m_nNumber, false, 0, CString());
}

// Layout: the ListItem part; WORD version (1, ignored on loading); int number.
void ListItemNumber::Serialize(CArchive& ar) {
  ListItem::Serialize(ar);
  SerializePartVersion(ar);
  Exchange(ar, m_nNumber);
}
