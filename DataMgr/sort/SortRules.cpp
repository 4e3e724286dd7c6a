#include "DataMgr/sort/SortRules.h"

#include "utility/DirUtils.h"
#include "utility/NumberTextConv.h"
#include "utility/TextArray.h"

namespace sort_rules {

Rule RuleOf(DataType::Type nType) {
  switch (nType) {
    case DataType::YesNo:
      return Rule::YES_NO;
    case DataType::Number:
    case DataType::Duration:
      return Rule::INTEGER;
    case DataType::Decimal:
      return Rule::DECIMAL;
    case DataType::Date:
      return Rule::DATE;
    case DataType::Time:
      return Rule::TIME;
    case DataType::Text:
    case DataType::DirectoryPath:
    case DataType::EmailAddress:
    case DataType::WebSiteAddress:
    case DataType::Password:
    case DataType::LargeText:
      return Rule::TEXT;
    case DataType::PhotoFilePath:
    case DataType::DataFilePath:
      return Rule::PATH;
    case DataType::NumberListSuggested:
    case DataType::NumberListSelect:
      return Rule::NUMBER_LIST;
    case DataType::DecimalListSuggested:
    case DataType::DecimalListSelect:
      return Rule::DECIMAL_LIST;
    case DataType::ValueListSuggested:
    case DataType::ValueListSelect:
    case DataType::DescValueListSuggested:
    case DataType::DescValueListSelect:
      return Rule::TEXT_LIST;
    case DataType::AddressBookSuggested:
    case DataType::AddressBookSelect:
      return Rule::ADDRESS;
    case DataType::Monetary:
      return Rule::MONEY;
    case DataType::NumberWithText:
    case DataType::NumberWithRomanOrText:
      return Rule::NUMBER_TEXT;
    default:
      return Rule::NONE;
  }
}

NumberText ParseNumberText(const CString& text, DataType::Type nType) {
  NumberText parsed;
  CString strRemainder;
  parsed.nNumber =
      NumberTextConv::ParseNumber(text, parsed.bAlone, strRemainder, nType == DataType::NumberWithRomanOrText);
  parsed.strLeading = strRemainder.Left(strRemainder.Find("%d"));
  return parsed;
}

PathFolder SplitFolder(const CString& path) {
  PathFolder split;
  const CString strFolder = DirUtils::ParsePathFromFile(path);
  split.bHasFolder = !strFolder.IsEmpty();
  if (split.bHasFolder) split.strFolder = DirUtils::RemoveTrailingSlash(strFolder);
  return split;
}

int CompareFolders(const PathFolder& a, const PathFolder& b, bool bCaseSensitive) {
  if (!a.bHasFolder && !b.bHasFolder) return 0;
  return bCaseSensitive ? a.strFolder.Collate(b.strFolder) : a.strFolder.CompareNoCase(b.strFolder);
}

int ComparePaths(const CString& a, const PathFolder& folderA, const CString& b, const PathFolder& folderB,
                 bool bCaseSensitive, bool bDirectoriesFirst) {
  const int nFolders = bDirectoriesFirst ? CompareFolders(folderA, folderB, bCaseSensitive) : 0;
  return nFolders != 0 ? nFolders : TextArray::DoCompareFiles(a, b, bCaseSensitive);
}

}  // namespace sort_rules
