#include "DataMgr/document/DataMgmt.h"

#include <variant>

#include "DataMgr/types/Money.h"
#include "utility/DateTime.h"

namespace {

// What one cell holds, read as the kind its column's type keeps.
using CellValue = std::variant<bool, int, double, DateTime, Money, CString>;

template <typename T>
CellValue Read(const Data& data, int nID) {
  T value{};
  data.GetData(nID, value);
  return value;
}

// For the types IsValueAcceptable can accept: the list and address types
// keep an entry ID, the text types a text.
CellValue ReadCell(const Data& data, const DataProp& prop) {
  const int nID = prop.GetID();
  switch (prop.GetDataType()) {
    case DataType::YesNo:
      return Read<bool>(data, nID);
    case DataType::Number:
    case DataType::Duration:
      return Read<int>(data, nID);
    case DataType::Decimal:
      return Read<double>(data, nID);
    case DataType::Date:
    case DataType::Time:
      return Read<DateTime>(data, nID);
    case DataType::Monetary:
      return Read<Money>(data, nID);
    default:
      return DataType::IsListType(prop.GetDataType()) ? Read<int>(data, nID) : Read<CString>(data, nID);
  }
}

}  // namespace

// The cell is compared before and after rather than trusting SetData's
// result: a list entry is stored with true even when it is the one the cell
// already named.
DataMgmt::EntryResult DataMgmt::EnterValue(Data& data, int nDataPropID, const CString& text, CString& normalized,
                                           bool bRecord) {
  normalized = text;
  DataProp* pProp = m_dataPropMgr.GetByID(nDataPropID);
  CString checked = text;
  if (pProp == nullptr || !IsValueAcceptable(checked, *pProp)) return EntryRejected;
  normalized = checked;
  const CellValue before = ReadCell(data, *pProp);
  bool bRedisplay = false;
  SetData(data, *pProp, checked, bRedisplay, bRecord);
  return ReadCell(data, *pProp) == before ? EntryUnchanged : EntryChanged;
}
