#include "DataMgr/document/DataMgmt.h"

#include "DataMgr/schema/ValueCodec.h"
#include "utility/DirUtils.h"
#include "utility/FileUtils.h"
#include "utility/StringUtils.h"

namespace {

// The typed text without the column's prefix and suffix. Both are tested
// and cut on the text as typed, so a text carrying both keeps its prefix.
CString StripPrefixAndSuffix(const DataProp& prop, const CString& text, bool& bRedisplay) {
  const CString& prefix = prop.GetPrefix();
  const CString& suffix = prop.GetSuffix();
  if (prefix.IsEmpty() && suffix.IsEmpty()) return text;
  CString copy = text;
  if (!prefix.IsEmpty() && StringUtils::MatchFirstChars(text, prefix, true)) copy = text.Mid(prefix.GetLength());
  if (!suffix.IsEmpty() && StringUtils::MatchLastChars(text, suffix, true)) {
    copy = text.Left(text.GetLength() - suffix.GetLength());
  }
  bRedisplay = true;
  return copy;
}

}  // namespace

DataProp& DataMgmt::GetListOwner(DataProp& prop) const {
  DataProp* pAlias = m_dataPropMgr.GetByID(GetAliasDataProp(prop.GetID()));
  return pAlias != nullptr ? *pAlias : prop;
}

bool DataMgmt::SetData(Data& data, int nDataPropID, const CString& text, bool& bRedisplay, bool bRecord) {
  DataProp* pProp = m_dataPropMgr.GetByID(nDataPropID);
  return pProp != nullptr && SetData(data, *pProp, text, bRedisplay, bRecord);
}

// A file-path value that the user points from a missing file to an existing
// file of the same name in another folder moves every path of that folder.
bool DataMgmt::SetData(Data& data, DataProp& prop, const CString& text, bool& bRedisplay, bool bRecord) {
  if (!IsFilePathType(prop.GetDataType())) {
    return SetDataNoFilePathAdjust(data, prop, GetListOwner(prop), text, bRedisplay, bRecord);
  }
  CString strOld;
  data.GetData(prop.GetID(), strOld);
  if (!SetDataNoFilePathAdjust(data, prop, prop, text, bRedisplay, bRecord)) return false;
  CString strNew;
  data.GetData(prop.GetID(), strNew);
  const bool bMoved = !strOld.IsEmpty() && !strNew.IsEmpty() && strOld.CompareNoCase(strNew) != 0 &&
                      !FileUtils::DoesFileExist(strOld) && FileUtils::DoesFileExist(strNew) &&
                      FileUtils::ParseFileNameFromPath(strOld, true)
                              .CompareNoCase(FileUtils::ParseFileNameFromPath(strNew, true)) == 0;
  if (bMoved && AdjustFilePaths(DirUtils::ParsePathFromFile(strOld), DirUtils::ParsePathFromFile(strNew))) {
    bRedisplay = true;
  }
  return true;
}

bool DataMgmt::SetDataNoFilePathAdjust(Data& data, DataProp& prop, DataProp& listOwner, const CString& text,
                                       bool& bRedisplay, bool bRecord) {
  bRedisplay = false;
  const CString copy = StripPrefixAndSuffix(prop, text, bRedisplay);
  return ValueCodec::For(prop.GetDataType()).Enter(data, prop, listOwner, copy, bRedisplay, bRecord);
}

bool DataMgmt::IsValueAcceptable(CString& text, DataProp& prop) const {
  if (!prop.GetUserChangeValue()) return false;
  StringUtils::Trim(text);
  return ValueCodec::For(prop.GetDataType()).Accept(text, prop, GetListOwner(prop));
}

int DataMgmt::ConvertToInteger(const CString& text, const DataProp& prop) {
  return ValueCodec::For(prop.GetDataType()).ToInteger(text, prop);
}
