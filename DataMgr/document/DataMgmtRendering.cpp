#include "DataMgr/document/DataMgmt.h"

#include "DataMgr/filter/DataFilter.h"
#include "DataMgr/schema/ValueCodec.h"
#include "DataMgr/types/CellValue.h"

namespace {

// Whether record holds nID in the kind nKind; false for NONE.
bool HasValueOfKind(const Data& record, int nID, CellValue::Kind nKind) {
  switch (nKind) {
    case CellValue::BOOL: return record.HaveDataPropBool(nID);
    case CellValue::INT: return record.HaveDataPropInt(nID);
    case CellValue::DOUBLE: return record.HaveDataPropDouble(nID);
    case CellValue::DATETIME: return record.HaveDataPropDateTime(nID);
    case CellValue::MONEY: return record.HaveDataPropMoney(nID);
    case CellValue::TEXT: return record.HaveDataPropString(nID);
    case CellValue::NONE: break;
  }
  return false;
}

}  // namespace

CString DataMgmt::GetTextRepresentation(const Data& data, int nDataPropID, bool bBlankZero) const {
  const DataProp* pOwner = m_dataPropMgr.GetByID(GetAliasDataProp(nDataPropID));
  if (nDataPropID < 0 || pOwner == nullptr) return CString();
  return GetTextRepresentation(data, nDataPropID, *pOwner, bBlankZero);
}

CString DataMgmt::GetTextRepresentation(const Data& data, int nDataPropID, const DataProp& prop, bool bBlankZero) {
  // The kind of the column's type first: the other kinds are searched only
  // for a value kept in another kind, which renders as well.
  const ValueCodec& codec = ValueCodec::For(prop.GetDataType());
  if (!HasValueOfKind(data, nDataPropID, codec.GetKind()) && !data.HaveDataProp(nDataPropID)) return CString();
  CString text = codec.Format(data, nDataPropID, prop, bBlankZero);
  if (text.IsEmpty() || (prop.GetPrefix().IsEmpty() && prop.GetSuffix().IsEmpty())) return text;
  return prop.GetPrefix() + text + prop.GetSuffix();
}

void DataMgmt::GetUndoBufferTexts(const Data& data, const DataProp& prop, TextArray& texts, bool bBlankZero) {
  ValueCodec::For(prop.GetDataType()).FormatEarlier(data, prop, texts, bBlankZero);
}

// Four LFs in a row, not two CR-LF pairs, are replaced as one break.
void DataMgmt::ReplaceCRLF(CString& text) const {
  if (text.FindOneOf("\r\n") < 0) return;
  for (const char* pszBreak : {"\r\n\r\n", "\n\n\n\n", "\r\n", "\n\n", "\n", "\r"}) text.Replace(pszBreak, " ");
}

CString DataMgmt::GetTextRepresentation(const DataFilter& filter, const DataProp& prop) {
  CString text;
  if (!DataType::IsListType(prop.GetDataType())) {
    filter.GetValue(text);
    return text;
  }
  std::vector<int> ids;
  filter.GetValue(ids);
  ValueCodec::For(prop.GetDataType()).FindEntryText(prop, ids.empty() ? -1 : ids.front(), text);
  return text;
}

std::vector<DataMgmt::ShownColumn> DataMgmt::GetShownColumns(const std::vector<int>& ids) const {
  std::vector<ShownColumn> columns;
  columns.reserve(ids.size());
  for (int nID : ids) {
    DataProp* pProp = m_dataPropMgr.GetByID(nID);
    if (pProp == nullptr || pProp->GetHiddenFromUI() || !pProp->GetDisplayed()) continue;
    columns.push_back({nID, pProp, &GetListOwner(*pProp)});
  }
  return columns;
}
