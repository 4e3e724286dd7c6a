#include <string>
#include <utility>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "utility/FileUtils.h"
#include "utility/StringUtils.h"
#include "utility/TextArray.h"

namespace {

const char XML_DECLARATION[] = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\"?>";
const char ENTRY_INDENT[] = "            ";

bool HasLineBreak(const CString& text) { return text.FindOneOf("\r\n") >= 0; }

// "<tag>value</tag>" after the indent of a value within an entry.
CString ValueElement(const CString& tag, const CString& value) {
  std::string line;
  line.reserve(sizeof ENTRY_INDENT + 5 + 2 * tag.GetStdString().size() + value.GetStdString().size());
  line.append(ENTRY_INDENT).append("<").append(tag.GetStdString()).append(">");
  line.append(value.GetStdString()).append("</").append(tag.GetStdString()).append(">");
  return CString(std::move(line));
}

}  // namespace

// The columns of the display order that are shown; the same for the heading
// and every item.
std::vector<DataMgmt::ShownColumn> DataMgmt::GetExportColumns() const {
  std::vector<int> order;
  m_dataPropMgr.GetDisplayOrder(order);
  return GetShownColumns(order);
}

// A break inside a value, or inside the separator, is turned into a blank
// as soon as it is appended, so that one break split between a value and
// the separator after it still counts as two.
void DataMgmt::ExportToTextFile(const CString& filePath, const CString& separator, const DataFilterMgr& filters) const {
  const std::vector<ShownColumn> columns = GetExportColumns();
  const bool bSeparatorBreaks = HasLineBreak(separator);
  TextArray lines;
  CString line;
  for (size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) line += separator;
    line += columns[i].pProp->GetName();
  }
  lines.Add(line);
  for (size_t n = 0; n < m_dataItemMgr.GetCount(); ++n) {
    const DataItem& item = *m_dataItemMgr.GetAt(n);
    if (!filters.PassesFilters(item)) continue;
    line.Empty();
    for (size_t i = 0; i < columns.size(); ++i) {
      if (i > 0) line += separator;
      const CString value = GetTextRepresentation(item, columns[i].nID, *columns[i].pOwner, true);
      line += value;
      if ((i > 0 && bSeparatorBreaks) || HasLineBreak(value)) ReplaceCRLF(line);
    }
    lines.Add(line);
  }
  FileUtils::WriteFileContent(filePath, lines, false, false);
}

// The root tag and the closing line are written from the root name even
// when it gives an empty tag: the file then has no opening root line and
// no title, and ends in "</>".
void DataMgmt::ExportToXMLFile(const CString& filePath, const CString& rootName, const DataFilterMgr& filters) const {
  const std::vector<ShownColumn> columns = GetExportColumns();
  const CString rootTag = StringUtils::ProcessXMLTag(rootName);
  TextArray lines;
  lines.Add(XML_DECLARATION);
  if (!rootTag.IsEmpty()) {
    lines.Add("<" + rootTag + ">");
    lines.Add("    <title>" + StringUtils::ProcessXMLValue(rootName) + "</title>");
  }
  std::vector<CString> tags;
  tags.reserve(columns.size());
  lines.Add("    <cols>");
  for (const ShownColumn& column : columns) {
    tags.push_back(StringUtils::ProcessXMLTag(column.pProp->GetName()));
    lines.Add("        <" + tags.back() + "/>");
  }
  lines.Add("    </cols>");
  lines.Add("    <headings>");
  lines.Add("        <entry>");
  for (size_t i = 0; i < columns.size(); ++i) {
    lines.Add(ValueElement(tags[i], StringUtils::ProcessXMLValue(columns[i].pProp->GetName())));
  }
  lines.Add("        </entry>");
  lines.Add("    </headings>");
  lines.Add("    <entries>");
  for (size_t n = 0; n < m_dataItemMgr.GetCount(); ++n) {
    const DataItem& item = *m_dataItemMgr.GetAt(n);
    if (!filters.PassesFilters(item)) continue;
    lines.Add("        <entry>");
    for (size_t i = 0; i < columns.size(); ++i) {
      CString value = GetTextRepresentation(item, columns[i].nID, *columns[i].pOwner, true);
      ReplaceCRLF(value);
      lines.Add(ValueElement(tags[i], StringUtils::ProcessXMLValue(value)));
    }
    lines.Add("        </entry>");
  }
  lines.Add("    </entries>");
  lines.Add("</" + rootTag + ">");
  FileUtils::WriteFileContent(filePath, lines, false, false);
}
