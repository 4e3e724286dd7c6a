#include <cctype>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "DataMgr/report/Report.h"
#include "utility/StringUtils.h"
#include "utility/TextArray.h"

namespace {

// Lists of item IDs up to this length are looked up by scanning the items
// for each ID; longer ones through an index of the items built once.
const size_t FEW_ITEM_IDS = 16;

// Whether a search word reads as a yes or a no, so that a yes/no column is
// matched by its meaning rather than by its rendered "Y" or "N".
bool IsYesNoWord(const CString& word) {
  CString lower = word;
  lower.MakeLower();
  for (const char* pszWord : {"yes", "y", "no", "n", "1", "0", "true", "t", "false", "f"}) {
    if (lower == pszWord) return true;
  }
  return false;
}

// The items of ids in the order of ids, an ID naming no item skipped; an
// ID held by several items gives the first of them.
std::vector<const DataItem*> ItemsWithIDs(const DataItemMgr& items, const std::vector<int>& ids) {
  std::vector<const DataItem*> found;
  found.reserve(ids.size());
  if (ids.size() <= FEW_ITEM_IDS) {
    for (int nID : ids) {
      if (const DataItem* pItem = items.GetByID(nID)) found.push_back(pItem);
    }
    return found;
  }
  std::unordered_map<int, const DataItem*> byID;
  byID.reserve(items.GetCount());
  for (size_t i = 0; i < items.GetCount(); ++i) byID.emplace(items.GetAt(i)->GetID(), items.GetAt(i));
  for (int nID : ids) {
    const auto it = byID.find(nID);
    if (it != byID.end()) found.push_back(it->second);
  }
  return found;
}

}  // namespace

// The words, the columns and the running hit number of one text search,
// prepared once for all the items the search visits. Each value searched
// costs its rendering and nothing more: the rendered text is lower-cased
// in place and matched against the prepared words. Hits go to the caller's
// vector, which must outlive the search.
//
// Lower-casing is CString::MakeLower's, the C library's tolower byte by
// byte, read once per search from a table of all 256 bytes rather than
// called for every byte of every value.
class DataMgmt::TextSearch {
 public:
  // columnIDs empty: every column of the document.
  TextSearch(const DataMgmt& doc, CString text, bool bMatchCase, bool bWholeWord, bool bAllWords,
             const std::vector<int>& columnIDs, std::vector<DataFind>& hits);

  // Every item of items for which passes(item) is true, in list order;
  // nothing at all when there are no words.
  template <typename Passes>
  void SearchItems(const DataItemMgr& items, Passes passes) {
    if (!HasWords()) return;
    for (size_t i = 0; i < items.GetCount(); ++i) {
      const DataItem& item = *items.GetAt(i);
      if (passes(item)) SearchItem(item);
    }
  }
  // The item's values in every column, then its sub-items' values column
  // by column; the first sub-item decides whether a column is searched in
  // the sub-items at all.
  void SearchItem(const DataItem& item);
  bool HasWords() const { return m_words.GetSize() > 0; }

 private:
  void SearchValue(const Data& record, const ShownColumn& column, int nItemID, int nSubItemID);
  // Writes only the bytes that change.
  void MakeLower(CString& text) const;
  int FindWord(const CString& text, int nStart) const;
  void AddHit(int nItemID, int nSubItemID, int nColumnID, int nStartIndex);

  const bool m_bMatchCase;
  const bool m_bWholeWord;
  char m_lowerBytes[256] = {};  // by byte value; filled when case is ignored
  TextArray m_words;
  bool m_bYesNoWord = false;  // the first word is a yes or a no word
  bool m_bYesWord = false;    // the first word is a yes word
  std::vector<ShownColumn> m_columns;
  std::vector<DataFind>& m_hits;
  int m_nHitNumber = 1;
};

DataMgmt::TextSearch::TextSearch(const DataMgmt& doc, CString text, bool bMatchCase, bool bWholeWord, bool bAllWords,
                                 const std::vector<int>& columnIDs, std::vector<DataFind>& hits)
    : m_bMatchCase(bMatchCase), m_bWholeWord(bWholeWord), m_hits(hits) {
  if (text.IsEmpty()) return;
  if (!bMatchCase) {
    text.MakeLower();
    for (int i = 0; i < 256; ++i) m_lowerBytes[i] = static_cast<char>(std::tolower(i));
  }
  if (bAllWords) {
    StringUtils::GetWordsWithDoubleQuotes(text, m_words);
  } else {
    m_words.Add(text);
  }
  if (!HasWords()) return;
  m_bYesNoWord = IsYesNoWord(m_words[0]);
  m_bYesWord = StringUtils::IsYes(m_words[0]);
  if (!columnIDs.empty()) {
    m_columns = doc.GetShownColumns(columnIDs);
    return;
  }
  std::vector<int> allIDs;
  doc.ForEachDataProp([&allIDs](const DataProp& prop) { allIDs.push_back(prop.GetID()); });
  m_columns = doc.GetShownColumns(allIDs);
}

void DataMgmt::TextSearch::SearchItem(const DataItem& item) {
  const int nItemID = item.GetID();
  for (const ShownColumn& column : m_columns) SearchValue(item, column, nItemID, -1);
  const DataSubItemMgr& subItems = item.GetSubItemsMgr();
  if (subItems.IsEmpty()) return;
  for (const ShownColumn& column : m_columns) {
    if (!subItems.GetAt(0)->HaveDataProp(column.nID)) continue;
    for (size_t i = 0; i < subItems.GetCount(); ++i) {
      const DataSubItem& subItem = *subItems.GetAt(i);
      SearchValue(subItem, column, nItemID, subItem.GetID());
    }
  }
}

// A value the record lacks renders empty and gives nothing. A yes/no
// column searched for a yes or a no word gives one hit on the whole value
// when the meanings agree; one word gives a hit at every match,
// overlapping matches included; several words give one hit where the first
// word is found, when all are.
void DataMgmt::TextSearch::SearchValue(const Data& record, const ShownColumn& column, int nItemID, int nSubItemID) {
  CString text = GetTextRepresentation(record, column.nID, *column.pOwner, true);
  if (text.IsEmpty()) return;
  if (!m_bMatchCase) MakeLower(text);
  if (m_bYesNoWord && column.pProp->GetDataType() == DataType::YesNo) {
    if (StringUtils::IsYes(text) == m_bYesWord) AddHit(nItemID, nSubItemID, column.nID, -1);
    return;
  }
  if (m_words.GetSize() == 1) {
    for (int nPos = FindWord(text, 0); nPos >= 0; nPos = FindWord(text, nPos + 1)) {
      AddHit(nItemID, nSubItemID, column.nID, nPos);
    }
    return;
  }
  const int nPos = StringUtils::FindAllWords(m_words, text, m_bWholeWord);
  if (nPos >= 0) AddHit(nItemID, nSubItemID, column.nID, nPos);
}

void DataMgmt::TextSearch::MakeLower(CString& text) const {
  const std::string& bytes = text.GetStdString();
  for (size_t i = 0; i < bytes.size(); ++i) {
    const char lower = m_lowerBytes[static_cast<unsigned char>(bytes[i])];
    if (lower != bytes[i]) text.SetAt(static_cast<int>(i), lower);
  }
}

int DataMgmt::TextSearch::FindWord(const CString& text, int nStart) const {
  return m_bWholeWord ? StringUtils::FindWholeWordMatch(text, m_words[0], true, nStart) : text.Find(m_words[0], nStart);
}

void DataMgmt::TextSearch::AddHit(int nItemID, int nSubItemID, int nColumnID, int nStartIndex) {
  DataFind hit;
  hit.SetID(m_nHitNumber++);
  hit.SetDataItemID(nItemID);
  hit.SetDataSubItemID(nSubItemID);
  hit.SetDataPropID(nColumnID);
  hit.SetStartIndex(nStartIndex);
  m_hits.push_back(hit);
}

void DataMgmt::Find(CString text, bool bMatchCase, bool bWholeWord, bool bAllWords, std::vector<DataFind>& hits) const {
  TextSearch(*this, text, bMatchCase, bWholeWord, bAllWords, std::vector<int>(), hits)
      .SearchItems(m_dataItemMgr, [](const DataItem&) { return true; });
}

void DataMgmt::Find(CString text, bool bMatchCase, bool bWholeWord, bool bAllWords, const DataFilterMgr& filters,
                    const std::vector<int>& dataPropIDs, std::vector<DataFind>& hits) const {
  TextSearch(*this, text, bMatchCase, bWholeWord, bAllWords, dataPropIDs, hits)
      .SearchItems(m_dataItemMgr, [&filters](const DataItem& item) { return filters.PassesFilters(item); });
}

void DataMgmt::Find(CString text, bool bMatchCase, bool bWholeWord, bool bAllWords, const std::vector<int>& dataPropIDs,
                    const std::vector<int>& dataItemIDs, std::vector<DataFind>& hits) const {
  TextSearch search(*this, text, bMatchCase, bWholeWord, bAllWords, dataPropIDs, hits);
  if (!search.HasWords()) return;
  for (const DataItem* pItem : ItemsWithIDs(m_dataItemMgr, dataItemIDs)) search.SearchItem(*pItem);
}

void DataMgmt::Find(CString text, bool bMatchCase, bool bWholeWord, bool bAllWords, const Report& report,
                    std::vector<DataFind>& hits) const {
  if (report.GetDataPropMgrID() != m_dataPropMgr.GetID()) return;
  TextSearch(*this, text, bMatchCase, bWholeWord, bAllWords, std::vector<int>(), hits)
      .SearchItems(m_dataItemMgr, [&report](const DataItem& item) { return report.DoesDataItemPassFilters(item); });
}

void DataMgmt::Find(const DataFilterMgr& filters, std::vector<DataFind>& hits) const {
  if (filters.GetCount() == 0) return;
  int nHitNumber = 1;
  for (size_t i = 0; i < m_dataItemMgr.GetCount(); ++i) {
    const DataItem& item = *m_dataItemMgr.GetAt(i);
    if (!filters.PassesFilters(item)) continue;
    DataFind hit;
    hit.SetID(nHitNumber++);
    hit.SetDataItemID(item.GetID());
    hits.push_back(hit);
  }
}

void DataMgmt::Find(const DataFind& hit, DataItem*& pItem, DataSubItem*& pSubItem) const {
  pItem = m_dataItemMgr.GetByID(hit.GetDataItemID());
  pSubItem = pItem != nullptr ? pItem->GetSubItemsMgr().GetByID(hit.GetDataSubItemID()) : nullptr;
}
