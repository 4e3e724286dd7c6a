// Writing a document as JSON (docs/JSON.md).
#include <algorithm>
#include <unordered_map>
#include <vector>

#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/schema/ListItemTextDesc.h"
#include "io/DocumentJson.h"
#include "io/JsonForms.h"
#include "io/TypeNames.h"

namespace {

using json_forms::Kind;
using json_forms::OutJson;

// Progress is reported after every so many items.
const size_t PROGRESS_STEP = 1024;

OutJson WriteEntry(const ListItem& entry) {
  OutJson out = {{"id", entry.GetID()}};
  if (const auto* pNumber = dynamic_cast<const ListItemNumber*>(&entry)) {
    out["number"] = pNumber->GetNumber();
  } else if (const auto* pDecimal = dynamic_cast<const ListItemDouble*>(&entry)) {
    out["number"] = json_forms::WriteDouble(pDecimal->GetNumber());
  } else {
    out["text"] = json_forms::WriteText(entry.GetTextRepresentation());
    if (const auto* pDesc = dynamic_cast<const ListItemTextDesc*>(&entry)) {
      out["description"] = json_forms::WriteText(pDesc->GetDesc());
    }
  }
  out["usage"] = entry.GetUsageCount();
  return out;
}

OutJson WriteAddress(const Address& address) {
  OutJson fields = OutJson::object();
  for (int i = 0; i < json_forms::ADDRESS_FIELD_COUNT; ++i) {
    fields[json_forms::ADDRESS_FIELD_NAMES[i]] = json_forms::WriteText(address.GetData(static_cast<Address::Field>(i)));
  }
  return OutJson{{"id", address.GetID()},
                 {"business", address.GetIsBusiness()},
                 {"usage", address.GetUsageCount()},
                 {"fields", std::move(fields)}};
}

OutJson WriteColumn(const DataProp& prop) {
  const DataType::Type nType = prop.GetDataType();
  const CString typeName = TypeNames::GetName(nType);
  OutJson out = {{"id", prop.GetID()}, {"name", json_forms::WriteText(prop.GetName())}};
  out["type"] = typeName.IsEmpty() ? OutJson(static_cast<int>(nType)) : OutJson(typeName.GetStdString());
  out["description"] = json_forms::WriteText(prop.GetDesc());
  out["defaultValue"] = json_forms::WriteText(prop.GetDefaultValue());
  out["prefix"] = json_forms::WriteText(prop.GetPrefix());
  out["suffix"] = json_forms::WriteText(prop.GetSuffix());
  out["webTag"] = json_forms::WriteText(prop.GetWebTag());
  OutJson flags = OutJson::object();
  for (size_t i = 0; i < json_forms::COLUMN_FLAG_COUNT; ++i) {
    flags[json_forms::COLUMN_FLAGS[i].pszName] = (prop.*json_forms::COLUMN_FLAGS[i].pGet)();
  }
  out["flags"] = std::move(flags);
  out["customColumnWidth"] = prop.GetCustomColWidth();
  out["columnWidth"] = static_cast<int>(prop.GetColWidth());
  out["columnAlignment"] = static_cast<int>(prop.GetColAlignment());
  out["nextEntryID"] = prop.GetNextListItemID();
  if (DataType::IsListType(nType) && !json_forms::IsAddressBookType(nType)) {
    OutJson entries = OutJson::array();
    for (size_t i = 0; i < prop.GetListItemsCount(); ++i) entries.push_back(WriteEntry(*prop.GetListItemAt(i)));
    out["entries"] = std::move(entries);
  } else if (json_forms::IsAddressBookType(nType)) {
    const AddressBook& book = prop.GetAddressBook();
    OutJson addresses = OutJson::array();
    for (size_t i = 0; i < book.GetCount(); ++i) addresses.push_back(WriteAddress(*book.GetAt(i)));
    out["addressBook"] = OutJson{{"business", book.GetIsBusiness()}, {"addresses", std::move(addresses)}};
  }
  return out;
}

class DocumentWriter {
 public:
  DocumentWriter(const DataMgmt& doc, const Progress& progress)
      : m_doc(doc), m_progress(progress), m_types(json_forms::CollectColumnTypes(doc.GetDataPropMgr())) {}

  // Everything but the items as one tree, printed; then each item printed
  // on its own into the items array, so that one item's tree lives at a
  // time. The text is what printing the whole tree would give.
  std::string Write(bool bIndent) const {
    std::string text = WriteHead().dump(bIndent ? 2 : -1);
    const DataItemMgr& items = m_doc.GetDataItemMgr();
    if (items.IsEmpty()) return text;
    // The head ends with the empty items array: "[]\n}" indented, "[]}" not.
    text.resize(text.size() - (bIndent ? 4 : 3));
    text += '[';
    for (size_t i = 0; i < items.GetCount(); ++i) {
      if (i > 0) text += ',';
      if (!bIndent) {
        text += WriteItem(*items.GetAt(i)).dump();
      } else {
        // Two levels deeper than printed alone: four blanks after each break.
        const std::string item = WriteItem(*items.GetAt(i)).dump(2);
        text += "\n    ";
        size_t nStart = 0;
        for (size_t nBreak = item.find('\n'); nBreak != std::string::npos; nBreak = item.find('\n', nStart)) {
          text.append(item, nStart, nBreak + 1 - nStart).append(4, ' ');
          nStart = nBreak + 1;
        }
        text.append(item, nStart, std::string::npos);
      }
      if (m_progress && ((i + 1) % PROGRESS_STEP == 0 || i + 1 == items.GetCount())) {
        m_progress(i + 1, items.GetCount());
      }
    }
    text += bIndent ? "\n  ]\n}" : "]}";
    return text;
  }

 private:
  OutJson WriteHead() const {
    const DataPropMgr& registry = m_doc.GetDataPropMgr();
    OutJson root = {{"format", DocumentJson::FORMAT_NAME}, {"version", DocumentJson::CURRENT_VERSION}};
    root["exportPath"] = json_forms::WriteText(m_doc.GetMRUExportPath());
    root["registryID"] = registry.GetID();
    std::vector<int> ids;
    registry.GetDisplayOrder(ids);
    root["displayOrder"] = ids;
    registry.GetHiddenColumns(ids);
    root["hiddenColumns"] = ids;
    size_t nSlots = registry.GetAppCount();
    while (nSlots > 0 && registry.GetAppAt(nSlots - 1) == nullptr) --nSlots;
    OutJson slots = OutJson::array();
    for (size_t i = 0; i < nSlots; ++i) {
      const DataProp* pProp = registry.GetAppAt(i);
      slots.push_back(pProp != nullptr ? WriteColumn(*pProp) : OutJson());
    }
    root["applicationColumns"] = std::move(slots);
    OutJson users = OutJson::array();
    for (size_t i = 0; i < registry.GetUserCount(); ++i) {
      if (const DataProp* pProp = registry.GetUserAt(i)) users.push_back(WriteColumn(*pProp));
    }
    root["userColumns"] = std::move(users);
    root["items"] = OutJson::array();
    return root;
  }

  OutJson WriteItem(const DataItem& item) const {
    DateTime modified;
    item.GetLastModified(modified);
    OutJson out = {{"id", item.GetID()}, {"modified", json_forms::WriteDateTime(modified)}};
    out["values"] = WriteValues(item);
    const DataSubItemMgr& subItems = item.GetSubItemsMgr();
    if (!subItems.GetSort()) out["sortSubItems"] = false;
    if (subItems.IsEmpty()) return out;
    OutJson subs = OutJson::array();
    for (size_t i = 0; i < subItems.GetCount(); ++i) {
      const DataSubItem& subItem = *subItems.GetAt(i);
      subs.push_back(
          OutJson{{"id", subItem.GetID()}, {"parentID", subItem.GetParentID()}, {"values", WriteValues(subItem)}});
    }
    out["subItems"] = std::move(subs);
    return out;
  }

  // Each cell in the plain form of its column's kind, or in the tagged
  // form when the column keeps no such kind, is unknown, or the record
  // holds the column in other or several kinds.
  OutJson WriteValues(const Data& record) const {
    std::vector<int> ids;
    record.GetSupportedDataProps(ids);
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    OutJson out = OutJson::object();
    for (int nID : ids) {
      const auto type = m_types.find(nID);
      const Kind nExpected = type == m_types.end() ? json_forms::NO_KIND : json_forms::KindOfType(type->second);
      std::vector<Kind> kinds;
      for (int k = 0; k < json_forms::KIND_COUNT; ++k) {
        if (json_forms::HasKind(record, nID, static_cast<Kind>(k))) kinds.push_back(static_cast<Kind>(k));
      }
      const std::string key = std::to_string(nID);
      if (kinds.size() == 1 && kinds[0] == nExpected) {
        out[key] = json_forms::WriteKind(record, nID, nExpected);
        continue;
      }
      OutJson tagged = OutJson::object();
      for (Kind nKind : kinds) tagged[json_forms::KIND_NAMES[nKind]] = json_forms::WriteKind(record, nID, nKind);
      out[key] = std::move(tagged);
    }
    return out;
  }

  const DataMgmt& m_doc;
  const Progress& m_progress;
  const std::unordered_map<int, DataType::Type> m_types;
};

}  // namespace

const char* const DocumentJson::FORMAT_NAME = "vaxo057 document";

std::string DocumentJson::Write(const DataMgmt& doc, bool bIndent, const Progress& progress) {
  return DocumentWriter(doc, progress).Write(bIndent);
}
