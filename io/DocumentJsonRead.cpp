// Reading a document from JSON (docs/JSON.md).
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <unordered_map>
#include <vector>

#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/schema/ListItemTextDesc.h"
#include "framework/CArchive.h"
#include "framework/CMemFile.h"
#include "io/DocumentJson.h"
#include "io/JsonForms.h"
#include "io/TypeNames.h"

namespace {

using json_forms::FormError;
using json_forms::InJson;
using json_forms::Kind;

const size_t PROGRESS_STEP = 1024;

[[noreturn]] void Fail(const std::string& path, const std::string& what) { throw FormError(path, what); }

const InJson* Find(const InJson& object, const char* pszKey) {
  const auto it = object.find(pszKey);
  return it == object.end() ? nullptr : &*it;
}

const InJson& Need(const InJson& object, const char* pszKey, const std::string& path) {
  const InJson* pValue = Find(object, pszKey);
  if (pValue == nullptr) Fail(path, std::string("\"") + pszKey + "\" is missing");
  return *pValue;
}

// An array member; an absent one reads as empty.
const InJson& ArrayOf(const InJson& object, const char* pszKey, const std::string& path) {
  static const InJson EMPTY = InJson::array();
  const InJson* pValue = Find(object, pszKey);
  if (pValue == nullptr) return EMPTY;
  if (!pValue->is_array()) Fail(path + "/" + pszKey, "expected an array");
  return *pValue;
}

void NeedObject(const InJson& value, const std::string& path) {
  if (!value.is_object()) Fail(path, "expected an object");
}

CString TextOr(const InJson& object, const char* pszKey, const std::string& path) {
  const InJson* pValue = Find(object, pszKey);
  return pValue == nullptr ? CString() : json_forms::ReadText(*pValue, path + "/" + pszKey);
}

// The index of a kind name; NO_KIND for any other text.
Kind KindNamed(const std::string& name) {
  for (int k = 0; k < json_forms::KIND_COUNT; ++k) {
    if (name == json_forms::KIND_NAMES[k]) return static_cast<Kind>(k);
  }
  return json_forms::NO_KIND;
}

bool IsTaggedForm(const InJson& value) {
  if (!value.is_object() || value.empty()) return false;
  for (const auto& member : value.items()) {
    if (KindNamed(member.key()) == json_forms::NO_KIND) return false;
  }
  return true;
}

int ColumnIDOfKey(const std::string& key, const std::string& path) {
  char* pEnd = nullptr;
  const long nID = std::strtol(key.c_str(), &pEnd, 10);
  if (key.empty() || *pEnd != '\0' || key != std::to_string(nID) || nID < INT32_MIN || nID > INT32_MAX) {
    Fail(path, "a value's key is a column ID");
  }
  return static_cast<int>(nID);
}

// Builds a document from the JSON form through the library's own calls;
// FormError names the first thing that does not fit.
class DocumentBuilder {
 public:
  DocumentBuilder(DataMgmt& doc, const Progress& progress) : m_doc(doc), m_progress(progress) {}

  // The parser's callback. Members other than the items are put aside.
  // Once every member that the writer puts before the items is known when
  // the items begin, each item is built as soon as it is parsed and then
  // dropped, so that the whole tree of items never lives at once; else the
  // items stay in the tree for Finish.
  bool OnParse(int nDepth, InJson::parse_event_t nEvent, InJson& parsed) {
    using Event = InJson::parse_event_t;
    if (nDepth == 1 && nEvent == Event::key) {
      m_key = parsed.get<std::string>();
      if (m_key == "items" && m_bItemsSeen) Fail("/items", "the items come twice");
      m_bInItems = m_key == "items";
      m_bItemsSeen = m_bItemsSeen || m_bInItems;
      if (m_bInItems && !m_bStreaming && HasWholeHead()) {
        ReadHead();
        m_bStreaming = true;
      }
      return true;
    }
    if (nDepth == 1 && m_bInItems) {
      if (nEvent == Event::array_start) m_bItemsArray = true;
      return true;
    }
    const bool bMemberEnds = nEvent == Event::value || nEvent == Event::array_end || nEvent == Event::object_end;
    if (nDepth == 1 && bMemberEnds) {
      m_head[m_key] = std::move(parsed);
      return false;
    }
    // Any element of the items, so that one that is no object is refused
    // at its own index.
    if (nDepth == 2 && bMemberEnds && m_bInItems && m_bItemsArray && m_bStreaming) {
      ReadItem(parsed, m_nItems++);
      return false;
    }
    return true;
  }

  // Reads what the parse left: the head, unless it was read, and the items
  // kept in the tree.
  void Finish(const InJson& root) {
    NeedObject(root, "");
    if (!m_bStreaming) ReadHead();
    const InJson& items = ArrayOf(root, "items", "");
    for (size_t i = 0; i < items.size(); ++i) ReadItem(items[i], m_nItems++);
    if (m_progress) m_progress(m_nItems, m_nItems);
  }

 private:
  // The members that the writer puts before the items.
  bool HasWholeHead() const {
    for (const char* pszKey :
         {"format", "version", "exportPath", "registryID", "displayOrder", "applicationColumns", "userColumns"}) {
      if (!m_head.contains(pszKey)) return false;
    }
    return true;
  }

  void ReadHead() {
    const InJson& root = m_head;
    const InJson& format = Need(root, "format", "");
    if (!format.is_string() || format.get<std::string>() != DocumentJson::FORMAT_NAME) {
      Fail("/format", std::string("expected \"") + DocumentJson::FORMAT_NAME + "\"");
    }
    const int nVersion = json_forms::ReadInt(Need(root, "version", ""), "/version");
    if (nVersion < 1) Fail("/version", "expected a version of 1 or more");
    if (nVersion > DocumentJson::CURRENT_VERSION) {
      Fail("/version", "written by a newer version (" + std::to_string(nVersion) + ") of the library");
    }
    m_doc.SetMRUExportPath(TextOr(root, "exportPath", ""));
    ReadColumns(root);
  }

  void ReadColumns(const InJson& root) {
    DataPropMgr& registry = m_doc.GetDataPropMgr();
    const InJson& slots = ArrayOf(root, "applicationColumns", "");
    std::vector<int> order;
    for (size_t i = 0; i < slots.size(); ++i) {
      if (slots[i].is_null()) {
        registry.AddApp(nullptr, false);
        continue;
      }
      const std::string path = "/applicationColumns/" + std::to_string(i);
      std::unique_ptr<DataProp> pProp = ReadColumn(slots[i], path);
      // A column sits in the slot of its position, whatever its ID.
      const int nID = pProp->GetID();
      pProp->SetID(static_cast<int>(i));
      if (!registry.AddApp(pProp.get(), false)) Fail(path, "an application column's slot is below 5000");
      pProp.release()->SetID(nID);
      order.push_back(nID);
    }
    const InJson& users = ArrayOf(root, "userColumns", "");
    for (size_t i = 0; i < users.size(); ++i) {
      std::unique_ptr<DataProp> pProp = ReadColumn(users[i], "/userColumns/" + std::to_string(i));
      order.push_back(pProp->GetID());
      registry.AddUser(pProp.release(), false);
    }
    if (const InJson* pOrder = Find(root, "displayOrder")) {
      order.clear();
      if (!pOrder->is_array()) Fail("/displayOrder", "expected an array");
      for (size_t i = 0; i < pOrder->size(); ++i) {
        order.push_back(json_forms::ReadInt((*pOrder)[i], "/displayOrder/" + std::to_string(i)));
      }
    }
    registry.SetDisplayOrder(order);
    if (const InJson* pID = Find(root, "registryID")) registry.SetID(json_forms::ReadInt(*pID, "/registryID"));
    m_types = json_forms::CollectColumnTypes(registry);
  }

  std::unique_ptr<DataProp> ReadColumn(const InJson& column, const std::string& path) const {
    NeedObject(column, path);
    auto pProp = std::make_unique<DataProp>();
    pProp->SetID(json_forms::ReadInt(Need(column, "id", path), path + "/id"));
    pProp->SetDataType(ReadType(Need(column, "type", path), path + "/type"));
    pProp->SetName(json_forms::ReadText(Need(column, "name", path), path + "/name"));
    pProp->SetDesc(TextOr(column, "description", path));
    pProp->SetDefaultValue(TextOr(column, "defaultValue", path));
    pProp->SetPrefix(TextOr(column, "prefix", path));
    pProp->SetSuffix(TextOr(column, "suffix", path));
    if (const InJson* pWidth = Find(column, "customColumnWidth")) {
      if (!pWidth->is_number_unsigned() || pWidth->get<std::uint64_t>() > UINT32_MAX) {
        Fail(path + "/customColumnWidth", "expected a whole number from 0 to 4294967295");
      }
      pProp->SetCustomColWidth(pWidth->get<unsigned int>());
    }
    if (const InJson* pWidth = Find(column, "columnWidth")) {
      pProp->SetColWidth(static_cast<DataProp::ColWidth>(json_forms::ReadInt(*pWidth, path + "/columnWidth")));
    }
    if (const InJson* pAlign = Find(column, "columnAlignment")) {
      pProp->SetColAlignment(static_cast<DataProp::ColAlign>(json_forms::ReadInt(*pAlign, path + "/columnAlignment")));
    }
    const bool bKeepSorted = ReadFlags(column, *pProp, path);
    ReadEntries(column, *pProp, bKeepSorted, path);
    ReadAddressBook(column, *pProp, path);
    if (const InJson* pNext = Find(column, "nextEntryID")) {
      pProp->SetNextListItemID(json_forms::ReadInt(*pNext, path + "/nextEntryID"));
    }
    return pProp;
  }

  static DataType::Type ReadType(const InJson& value, const std::string& path) {
    if (value.is_number_integer()) {
      const int nType = json_forms::ReadInt(value, path);
      if (nType < 0 || nType > 0xFFFF) Fail(path, "a type number is a 16-bit word");
      return static_cast<DataType::Type>(nType);
    }
    DataType::Type nType = DataType::Text;
    if (!value.is_string() || !TypeNames::FindType(value.get<std::string>(), nType)) {
      Fail(path, "expected the name of a data type");
    }
    return nType;
  }

  // Sets every flag but keepListItemsSorted, which it returns: turning it
  // on sorts the entries, so it waits for them.
  static bool ReadFlags(const InJson& column, DataProp& prop, const std::string& path) {
    const InJson* pFlags = Find(column, "flags");
    if (pFlags == nullptr) return prop.GetKeepListItemsSorted();
    NeedObject(*pFlags, path + "/flags");
    bool bKeepSorted = prop.GetKeepListItemsSorted();
    for (const auto& member : pFlags->items()) {
      const std::string flagPath = path + "/flags/" + member.key();
      const json_forms::ColumnFlag* pFlag = nullptr;
      for (size_t i = 0; i < json_forms::COLUMN_FLAG_COUNT; ++i) {
        if (member.key() == json_forms::COLUMN_FLAGS[i].pszName) pFlag = &json_forms::COLUMN_FLAGS[i];
      }
      if (pFlag == nullptr) Fail(flagPath, "no such flag");
      const bool bValue = json_forms::ReadBool(member.value(), flagPath);
      if (pFlag->pSet != nullptr) {
        pFlag->pSet(prop, bValue);
      } else {
        bKeepSorted = bValue;
      }
    }
    return bKeepSorted;
  }

  // The entries in their order, whatever their values: a column kept
  // sorted is sorted by turning the flag on and then put back in order.
  static void ReadEntries(const InJson& column, DataProp& prop, bool bKeepSorted, const std::string& path) {
    const DataType::Type nType = prop.GetDataType();
    if (Find(column, "entries") != nullptr && (!DataType::IsListType(nType) || json_forms::IsAddressBookType(nType))) {
      Fail(path + "/entries", "only list columns have entries");
    }
    const InJson& values = ArrayOf(column, "entries", path);
    std::vector<ListItem*> entries;
    std::vector<int> order;
    try {
      for (size_t i = 0; i < values.size(); ++i) {
        entries.push_back(ReadEntry(values[i], prop, path + "/entries/" + std::to_string(i)));
        order.push_back(entries.back()->GetID());
      }
    } catch (...) {
      for (ListItem* pEntry : entries) delete pEntry;
      throw;
    }
    if (!entries.empty()) prop.ReplaceListItems(entries);
    prop.SetKeepListItemsSorted(bKeepSorted);
    if (bKeepSorted) prop.SetToDisplayOrder(order);
  }

  static ListItem* ReadEntry(const InJson& value, DataProp& prop, const std::string& path) {
    NeedObject(value, path);
    const int nID = json_forms::ReadInt(Need(value, "id", path), path + "/id");
    std::unique_ptr<ListItem> pEntry(prop.CreateListItem(false, nID));
    pEntry->SetID(nID);
    if (const InJson* pUsage = Find(value, "usage"))
      pEntry->SetUsageCount(json_forms::ReadInt(*pUsage, path + "/usage"));
    if (auto* pNumber = dynamic_cast<ListItemNumber*>(pEntry.get())) {
      pNumber->SetNumber(json_forms::ReadInt(Need(value, "number", path), path + "/number"));
    } else if (auto* pDecimal = dynamic_cast<ListItemDouble*>(pEntry.get())) {
      pDecimal->SetNumber(json_forms::ReadDouble(Need(value, "number", path), path + "/number"));
    } else {
      pEntry->SetTextRepresentation(json_forms::ReadText(Need(value, "text", path), path + "/text"));
      if (auto* pDesc = dynamic_cast<ListItemTextDesc*>(pEntry.get()))
        pDesc->SetDesc(TextOr(value, "description", path));
    }
    return pEntry.release();
  }

  static void ReadAddressBook(const InJson& column, DataProp& prop, const std::string& path) {
    const InJson* pBook = Find(column, "addressBook");
    if (pBook == nullptr) return;
    const std::string bookPath = path + "/addressBook";
    if (!json_forms::IsAddressBookType(prop.GetDataType())) Fail(bookPath, "only address-book columns have one");
    NeedObject(*pBook, bookPath);
    AddressBook& book = prop.GetAddressBook();
    if (const InJson* pBusiness = Find(*pBook, "business")) {
      book.SetIsBusiness(json_forms::ReadBool(*pBusiness, bookPath + "/business"));
    }
    const InJson& addresses = ArrayOf(*pBook, "addresses", bookPath);
    for (size_t i = 0; i < addresses.size(); ++i) {
      book.Add(ReadAddress(addresses[i], bookPath + "/addresses/" + std::to_string(i)).release(), false);
    }
  }

  static std::unique_ptr<Address> ReadAddress(const InJson& value, const std::string& path) {
    NeedObject(value, path);
    auto pAddress = std::make_unique<Address>();
    pAddress->SetID(json_forms::ReadInt(Need(value, "id", path), path + "/id"));
    if (const InJson* pBusiness = Find(value, "business")) {
      pAddress->SetIsBusiness(json_forms::ReadBool(*pBusiness, path + "/business"));
    }
    if (const InJson* pUsage = Find(value, "usage")) {
      pAddress->SetUsageCount(json_forms::ReadInt(*pUsage, path + "/usage"));
    }
    const InJson* pFields = Find(value, "fields");
    if (pFields != nullptr) NeedObject(*pFields, path + "/fields");
    for (int i = 0; i < json_forms::ADDRESS_FIELD_COUNT; ++i) {
      const CString text =
          pFields == nullptr ? CString() : TextOr(*pFields, json_forms::ADDRESS_FIELD_NAMES[i], path + "/fields");
      pAddress->SetData(static_cast<Address::Field>(i), text);
    }
    return pAddress;
  }

  void ReadItem(const InJson& value, size_t nIndex) {
    const std::string path = "/items/" + std::to_string(nIndex);
    NeedObject(value, path);
    DataItem& item = *m_doc.GetDataItemMgr().Create(nullptr, true, false);
    item.SetID(json_forms::ReadInt(Need(value, "id", path), path + "/id"));
    ReadValues(value, item, path);
    DataSubItemMgr& subItems = item.GetSubItemsMgr();
    const InJson& subs = ArrayOf(value, "subItems", path);
    for (size_t s = 0; s < subs.size(); ++s) {
      const std::string subPath = path + "/subItems/" + std::to_string(s);
      NeedObject(subs[s], subPath);
      DataSubItem& subItem = *subItems.Create(nullptr, true, false);
      subItem.SetID(json_forms::ReadInt(Need(subs[s], "id", subPath), subPath + "/id"));
      const InJson* pParent = Find(subs[s], "parentID");
      subItem.SetParentID(pParent == nullptr ? item.GetID() : json_forms::ReadInt(*pParent, subPath + "/parentID"));
      ReadValues(subs[s], subItem, subPath);
    }
    if (const InJson* pSort = Find(value, "sortSubItems")) {
      subItems.SetSort(json_forms::ReadBool(*pSort, path + "/sortSubItems"));
    }
    const InJson* pModified = Find(value, "modified");
    item.SetLastModified(pModified == nullptr ? DateTime() : json_forms::ReadDateTime(*pModified, path + "/modified"));
    // The count of items is known only at the end.
    if (m_progress && (nIndex + 1) % PROGRESS_STEP == 0) m_progress(nIndex + 1, 0);
  }

  void ReadValues(const InJson& owner, Data& record, const std::string& ownerPath) const {
    const InJson* pValues = Find(owner, "values");
    if (pValues == nullptr) return;
    const std::string path = ownerPath + "/values";
    NeedObject(*pValues, path);
    for (const auto& member : pValues->items()) {
      const std::string valuePath = path + "/" + member.key();
      const int nID = ColumnIDOfKey(member.key(), valuePath);
      if (IsTaggedForm(member.value())) {
        for (const auto& kind : member.value().items()) {
          json_forms::RegisterKind(record, nID, KindNamed(kind.key()), kind.value(), valuePath + "/" + kind.key());
        }
        continue;
      }
      const auto type = m_types.find(nID);
      const Kind nKind = type == m_types.end() ? json_forms::NO_KIND : json_forms::KindOfType(type->second);
      if (nKind == json_forms::NO_KIND) {
        Fail(valuePath,
             "column " + member.key() + " keeps no values of its own: write the value's kind, as in {\"text\": ...}");
      }
      json_forms::RegisterKind(record, nID, nKind, member.value(), valuePath);
    }
  }

  DataMgmt& m_doc;
  const Progress& m_progress;
  std::unordered_map<int, DataType::Type> m_types;
  InJson m_head = InJson::object();  // the members other than the items
  std::string m_key;                 // of the member being parsed
  bool m_bInItems = false;
  bool m_bItemsSeen = false;
  bool m_bItemsArray = false;
  bool m_bStreaming = false;
  size_t m_nItems = 0;
};

// nlohmann's message without its "[json.exception...] " tag.
std::string Untagged(const char* pszWhat) {
  const std::string what = pszWhat;
  const size_t nEnd = what.find("] ");
  return nEnd == std::string::npos ? what : what.substr(nEnd + 2);
}

}  // namespace

bool DocumentJson::Read(const std::string& text, DataMgmt& doc, CString& error, const Progress& progress) {
  try {
    DataMgmt scratch;
    DocumentBuilder builder(scratch, progress);
    const InJson root = InJson::parse(text, [&](int nDepth, InJson::parse_event_t nEvent, InJson& parsed) {
      return builder.OnParse(nDepth, nEvent, parsed);
    });
    builder.Finish(root);
    // Loading the built document's archive rebuilds what loading a file
    // rebuilds (the counters of the next item, sub-item, address and user
    // column IDs), so that the result is the document its file would give.
    CMemFile archive;
    {
      CArchive ar(&archive, CArchive::store);
      scratch.Serialize(ar);
      ar.Close();
    }
    CMemFile stored(archive.GetContents());
    CArchive ar(&stored, CArchive::load);
    doc.Serialize(ar);
    return true;
  } catch (const nlohmann::json::exception& e) {
    error = Untagged(e.what());
  } catch (const FormError& e) {
    error = "at " + (e.GetPath().empty() ? std::string("the top") : e.GetPath()) + ": " + e.what();
  } catch (const CArchiveException& e) {
    error = std::string("the document does not store: ") + e.what();
  } catch (const std::bad_alloc&) {
    error = "out of memory";
  }
  return false;
}
