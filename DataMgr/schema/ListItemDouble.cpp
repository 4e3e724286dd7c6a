#include "DataMgr/schema/ListItemDouble.h"

#include "DataMgr/types/ArchiveExchange.h"
#include "utility/LocaleUtils.h"
#include "utility/NumberTextConv.h"

using archive_exchange::Exchange;

bool ListItemDouble::SetTextRepresentation(const CString& text) {
  const double dNumber = NumberTextConv::GetDoubleFromString(text, false);
  if (dNumber == m_dNumber) return false;
  m_dNumber = dNumber;
  return true;
}

CString ListItemDouble::GetTextRepresentation() const {
  return NumberTextConv::DoubleToString(m_dNumber, LocaleUtils::GetNumberFractionalDigits(), false, 0, CString(),
                                        true);
}

// Layout: the ListItem part; WORD version (1, ignored on loading); double.
void ListItemDouble::Serialize(CArchive& ar) {
  ListItem::Serialize(ar);
  SerializePartVersion(ar);
  Exchange(ar, m_dNumber);
}
