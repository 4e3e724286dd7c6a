#include "DataMgr/sort/SortKeyTable.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>
#include <utility>

#include "DataMgr/schema/Address.h"
#include "DataMgr/schema/ListItemDouble.h"
#include "DataMgr/schema/ListItemNumber.h"
#include "DataMgr/types/Money.h"
#include "utility/DateTime.h"

using sort_rules::Decide;
using sort_rules::LookupColumn;
using sort_rules::Rule;
using sort_rules::Sign;
using sort_rules::ValueOf;
using sort_rules::Verdict;

namespace {

// The folding of CString::CompareNoCase: ASCII letters only.
char FoldAscii(char ch) { return (ch >= 'A' && ch <= 'Z') ? static_cast<char>(ch - 'A' + 'a') : ch; }

// Appends text to out as it compares: as it is when !bFold; else folded and
// cut at its first NUL byte. Returns whether it was cut.
bool AppendComparable(std::string& out, const CString& text, bool bFold) {
  const std::string& bytes = text.GetStdString();
  if (!bFold) {
    out += bytes;
    return false;
  }
  const size_t nNul = bytes.find('\0');
  const size_t nLength = nNul == std::string::npos ? bytes.size() : nNul;
  for (size_t i = 0; i < nLength; ++i) out.push_back(FoldAscii(bytes[i]));
  return nNul != std::string::npos;
}

// An int as an unsigned code of the same order.
uint64_t OrderedInt(int n) { return static_cast<uint32_t>(n) ^ 0x80000000u; }

// Codes are kept so that the smaller comes first; descending keys invert.
uint64_t Directed(uint64_t nCode, bool bAscending) { return bAscending ? nCode : ~nCode; }
uint32_t Directed(uint32_t nAux, bool bAscending) { return bAscending ? nAux : ~nAux; }

// DateTime's order of one part: missing (not valid) first, then by value.
// Ascending puts the later value first, so the code is inverted.
uint64_t LaterFirst(bool bValid, int nValue) { return ~(bValid ? OrderedInt(nValue) + 1 : 0); }

uint64_t DoubleBits(double dValue) {
  uint64_t nBits = 0;
  std::memcpy(&nBits, &dValue, sizeof dValue);
  return nBits;
}

double BitsDouble(uint64_t nBits) {
  double dValue = 0.0;
  std::memcpy(&dValue, &nBits, sizeof dValue);
  return dValue;
}

Verdict CompareCodes(uint32_t nAuxA, uint64_t nCodeA, uint32_t nAuxB, uint64_t nCodeB) {
  if (nAuxA != nAuxB) return nAuxA < nAuxB ? Verdict::FIRST : Verdict::NOT_FIRST;
  if (nCodeA != nCodeB) return nCodeA < nCodeB ? Verdict::FIRST : Verdict::NOT_FIRST;
  return Verdict::TIE;
}

}  // namespace

bool SortKeyTable::TextPool::Add(const CString& text, bool bFold) {
  const bool bCut = AppendComparable(m_strBytes, text, bFold);
  m_vecEnds.push_back(m_strBytes.size());
  return bCut;
}

std::string_view SortKeyTable::TextPool::At(size_t nIndex) const {
  const size_t nBegin = nIndex == 0 ? 0 : m_vecEnds[nIndex - 1];
  return std::string_view(m_strBytes.data() + nBegin, m_vecEnds[nIndex] - nBegin);
}

uint64_t SortKeyTable::TextPool::Prefix(size_t nIndex) const {
  const std::string_view text = At(nIndex);
  uint64_t nPrefix = 0;
  for (size_t i = 0; i < 8; ++i) {
    nPrefix = (nPrefix << 8) | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0u);
  }
  return nPrefix;
}

int SortKeyTable::TextPool::Compare(size_t nA, size_t nB, bool bNulInA) const {
  const int nCompare = At(nA).compare(At(nB));
  if (nCompare == 0) return bNulInA ? 1 : 0;
  return nCompare < 0 ? -1 : 1;
}

SortKeyTable::SortKeyTable(const std::vector<SortData::ResolvedKey>& keys, bool bDirectoriesFirst)
    : m_bDirectoriesFirst(bDirectoriesFirst) {
  for (const SortData::ResolvedKey& key : keys) {
    KeyColumn column;
    column.nRule = sort_rules::RuleOf(key.pDataProp->GetDataType());
    column.bListOrder = sort_rules::IsListRule(column.nRule) && key.pDataProp->GetSortValuesByListOrder();
    column.nDataPropID = key.pDataProp->GetID();
    column.bAscending = key.bAscending;
    column.bCaseSensitive = key.bCaseSensitive;
    column.pKey = &key;
    switch (column.nRule) {
      case Rule::DECIMAL:
        column.nKind = Kind::DECIMAL;
        break;
      case Rule::TEXT:
        column.nKind = Kind::TEXT;
        break;
      case Rule::PATH:
        column.nKind = Kind::PATH;
        break;
      case Rule::NUMBER_TEXT:
        column.nKind = Kind::NUMBER_TEXT;
        break;
      case Rule::NUMBER_LIST:
      case Rule::TEXT_LIST:
      case Rule::ADDRESS:
        column.nKind = column.bListOrder ? Kind::EXACT : Kind::RANKED_ENTRY;
        break;
      case Rule::DECIMAL_LIST:
        column.nKind = column.bListOrder ? Kind::EXACT : Kind::DECIMAL_ENTRY;
        break;
      case Rule::NONE:
        continue;
      default:
        column.nKind = Kind::EXACT;
        break;
    }
    m_vecKeys.push_back(std::move(column));
  }
}

void SortKeyTable::Sort(std::vector<Data*>& records) {
  Extract(records);
  std::vector<Element> elements;
  elements.reserve(records.size());
  for (size_t i = 0; i < records.size(); ++i) elements.push_back(MakeElement(records[i], i));
  std::stable_sort(elements.begin(), elements.end(),
                   [this](const Element& a, const Element& b) { return Before(a, b); });
  std::vector<Data*> sorted;
  sorted.reserve(records.size());
  for (const Element& element : elements) sorted.push_back(records[element.nIndex & INDEX_MASK]);
  records.swap(sorted);
}

void SortKeyTable::Extract(const std::vector<Data*>& records) {
  m_vecCells.assign(records.size() * m_vecKeys.size(), Cell());
  for (size_t i = 0; i < records.size(); ++i) {
    const Data* pRecord = records[i];
    for (size_t k = 0; k < m_vecKeys.size(); ++k) {
      KeyColumn& key = m_vecKeys[k];
      Cell& cell = CellAt(i, k);
      if (pRecord != nullptr && pRecord->HaveDataProp(key.nDataPropID)) {
        cell.nFlags = PRESENT;
        ExtractCell(key, *pRecord, cell);
      }
      ExtractTexts(key, (cell.nFlags & PRESENT) != 0 ? pRecord : nullptr, cell, i);
    }
  }
  for (size_t k = 0; k < m_vecKeys.size(); ++k) {
    const KeyColumn& key = m_vecKeys[k];
    if (key.bListOrder || key.nKind == Kind::RANKED_ENTRY || key.nKind == Kind::DECIMAL_ENTRY) ResolveEntries(k);
  }
}

// The values held in the cell itself.
void SortKeyTable::ExtractCell(KeyColumn& key, const Data& record, Cell& cell) {
  const int nID = key.nDataPropID;
  const bool bAscending = key.bAscending;
  switch (key.nRule) {
    case Rule::YES_NO:
      cell.nCode = Directed(uint64_t{ValueOf(record, nID, false) ? 0u : 1u}, bAscending);
      break;
    case Rule::INTEGER:
      cell.nCode = Directed(OrderedInt(ValueOf(record, nID, 0)), bAscending);
      break;
    case Rule::DATE: {
      const DateTime value = ValueOf(record, nID, DateTime());
      cell.nCode = Directed(LaterFirst(value.IsValidDate(), value.GetJulianDay()), bAscending);
      break;
    }
    case Rule::TIME: {
      const DateTime value = ValueOf(record, nID, DateTime());
      cell.nCode = Directed(LaterFirst(value.IsValidTime(), value.GetSecondsOfDay()), bAscending);
      break;
    }
    case Rule::MONEY: {
      const Money value = ValueOf(record, nID, Money());
      const bool bPositive = value.GetIsPositive();
      cell.nAux = Directed(uint32_t{bPositive ? 1u : 0u}, bAscending);
      cell.nCode = Directed(bPositive ? value.GetAmount() : ~value.GetAmount(), bAscending);
      break;
    }
    case Rule::DECIMAL:
      cell.nCode = DoubleBits(ValueOf(record, nID, 0.0));
      break;
    case Rule::NUMBER_LIST:
    case Rule::DECIMAL_LIST:
    case Rule::TEXT_LIST:
    case Rule::ADDRESS:
      cell.nAux = static_cast<uint32_t>(ValueOf(record, nID, -1));
      break;
    default:
      break;
  }
}

// The values held beside the cells; every record gets its place, with or
// without a value (pRecord null).
void SortKeyTable::ExtractTexts(KeyColumn& key, const Data* pRecord, Cell& cell, size_t nIndex) {
  if (key.nKind != Kind::TEXT && key.nKind != Kind::PATH && key.nKind != Kind::NUMBER_TEXT) return;
  const bool bFold = !key.bCaseSensitive;
  const CString text = pRecord != nullptr ? ValueOf(*pRecord, key.nDataPropID, CString()) : CString();
  if (key.nKind == Kind::TEXT) {
    if (key.texts.Add(text, bFold)) cell.nFlags |= NUL_IN_TEXT;
    cell.nCode = key.texts.Prefix(nIndex);
  } else if (key.nKind == Kind::PATH) {
    key.vecPaths.push_back(text);
    key.vecFolders.push_back(sort_rules::SplitFolder(text));
  } else if (key.nKind == Kind::NUMBER_TEXT) {
    const sort_rules::NumberText parsed = sort_rules::ParseNumberText(text, key.pKey->pDataProp->GetDataType());
    cell.nAux = static_cast<uint32_t>(parsed.nNumber);
    if (parsed.bAlone) cell.nFlags |= NUMBER_ALONE;
    if (key.texts.Add(text, bFold)) cell.nFlags |= NUL_IN_TEXT;
    if (key.leading.Add(parsed.strLeading, bFold)) cell.nFlags |= NUL_IN_LEADING;
  }
}

// Entry IDs become codes once per distinct ID: the list position, the
// number or decimal value, or the rank of the text among the entries'
// texts (equal texts share a rank).
void SortKeyTable::ResolveEntries(size_t nKey) {
  const KeyColumn& key = m_vecKeys[nKey];
  const size_t nCount = m_vecCells.size() / m_vecKeys.size();
  std::unordered_map<int, EntryCode> codes;
  for (size_t i = 0; i < nCount; ++i) {
    const Cell& cell = CellAt(i, nKey);
    if ((cell.nFlags & PRESENT) != 0) codes.emplace(static_cast<int>(cell.nAux), EntryCode());
  }
  std::vector<std::pair<std::string, int>> texts;
  for (auto& [nID, code] : codes) {
    if (!ResolveEntry(key, nID, code)) texts.emplace_back(std::string(), nID);
  }
  RankTexts(key, texts, codes);
  for (size_t i = 0; i < nCount; ++i) {
    Cell& cell = CellAt(i, nKey);
    if ((cell.nFlags & PRESENT) == 0) continue;
    const EntryCode& code = codes[static_cast<int>(cell.nAux)];
    cell.nFlags |= code.nFlags;
    if (key.bListOrder) {
      cell.nAux = Directed(uint32_t{0}, key.bAscending);
      cell.nCode = Directed(code.nCode, key.bAscending);
    } else {
      cell.nCode = code.nCode;
    }
  }
}

// Fills code for an entry that compares by position or value; false for one
// that compares by its text, which RankTexts then ranks.
bool SortKeyTable::ResolveEntry(const KeyColumn& key, int nEntryID, EntryCode& code) const {
  const DataProp& lookup = LookupColumn(*key.pKey);
  if (key.bListOrder) {
    code.nCode = lookup.GetDisplayOrderForListItemID(nEntryID);
    return true;
  }
  if (key.nRule == Rule::NUMBER_LIST) {
    const auto* pEntry = dynamic_cast<const ListItemNumber*>(lookup.GetListItemByID(nEntryID));
    if (pEntry != nullptr) code.nCode = OrderedInt(pEntry->GetNumber());
    code.nFlags = pEntry != nullptr ? 0 : MISSING_ENTRY;
    return true;
  }
  if (key.nRule == Rule::DECIMAL_LIST) {
    const auto* pEntry = dynamic_cast<const ListItemDouble*>(lookup.GetListItemByID(nEntryID));
    if (pEntry != nullptr) code.nCode = DoubleBits(pEntry->GetNumber());
    code.nFlags = pEntry != nullptr ? 0 : MISSING_ENTRY;
    return true;
  }
  return false;
}

// texts: (ID, empty) of every entry to rank; the entry's text is looked up
// here (the address's name for address books).
void SortKeyTable::RankTexts(const KeyColumn& key, std::vector<std::pair<std::string, int>>& texts,
                             std::unordered_map<int, EntryCode>& codes) const {
  const DataProp& lookup = LookupColumn(*key.pKey);
  for (auto& [strText, nID] : texts) {
    EntryCode& code = codes[nID];
    CString text;
    bool bFound = false;
    if (key.nRule == Rule::ADDRESS) {
      const Address* pAddress = lookup.GetAddressBook().GetByID(nID);
      bFound = pAddress != nullptr;
      if (bFound) text = pAddress->GetData(Address::Name);
    } else if (const ListItem* pEntry = lookup.GetListItemByID(nID)) {
      bFound = true;
      text = pEntry->GetTextRepresentation();
    }
    if (!bFound) code.nFlags = MISSING_ENTRY;
    if (AppendComparable(strText, text, !key.bCaseSensitive)) code.nFlags |= NUL_IN_TEXT;
  }
  std::sort(texts.begin(), texts.end());
  uint64_t nRank = 0;
  for (size_t i = 0; i < texts.size(); ++i) {
    if (i > 0 && texts[i].first != texts[i - 1].first) ++nRank;
    codes[texts[i].second].nCode = nRank;
  }
}

SortKeyTable::Element SortKeyTable::MakeElement(const Data* pRecord, size_t nIndex) const {
  Element element;
  element.nIndex = static_cast<uint32_t>(nIndex);
  if (pRecord == nullptr) {
    element.nIndex |= NULL_RECORD;
    return element;
  }
  if (m_vecKeys.empty() || (CellAt(nIndex, 0).nFlags & PRESENT) == 0) {
    element.nIndex |= KEY_ABSENT;
    return element;
  }
  const KeyColumn& primary = m_vecKeys[0];
  const Cell& cell = CellAt(nIndex, 0);
  if (primary.nKind == Kind::EXACT) {
    element.nCode = cell.nCode;
    element.nAux = cell.nAux;
  } else if (primary.nKind == Kind::TEXT) {
    element.nCode = Directed(cell.nCode, primary.bAscending);
  }
  return element;
}

// The primary key decides here when it is exact, or a text whose first
// eight bytes differ; otherwise the cells decide.
bool SortKeyTable::Before(const Element& a, const Element& b) const {
  if ((b.nIndex & NULL_RECORD) != 0) return false;
  if ((a.nIndex & NULL_RECORD) != 0) return true;
  size_t nFirstKey = 0;
  if (!m_vecKeys.empty() && (m_vecKeys[0].nKind == Kind::EXACT || m_vecKeys[0].nKind == Kind::TEXT)) {
    if (((a.nIndex | b.nIndex) & KEY_ABSENT) != 0) {
      nFirstKey = 1;
    } else {
      const Verdict nVerdict = CompareCodes(a.nAux, a.nCode, b.nAux, b.nCode);
      if (nVerdict != Verdict::TIE) return nVerdict == Verdict::FIRST;
      if (m_vecKeys[0].nKind == Kind::EXACT) nFirstKey = 1;
    }
  }
  return RowsBefore(a.nIndex & INDEX_MASK, b.nIndex & INDEX_MASK, nFirstKey);
}

bool SortKeyTable::RowsBefore(size_t nA, size_t nB, size_t nFirstKey) const {
  for (size_t k = nFirstKey; k < m_vecKeys.size(); ++k) {
    const Cell& a = CellAt(nA, k);
    const Cell& b = CellAt(nB, k);
    if ((a.nFlags & b.nFlags & PRESENT) == 0) continue;
    const Verdict nVerdict = CompareCells(m_vecKeys[k], nA, nB, a, b);
    if (nVerdict != Verdict::TIE) return nVerdict == Verdict::FIRST;
  }
  return false;
}

Verdict SortKeyTable::CompareCells(const KeyColumn& key, size_t nA, size_t nB, const Cell& a, const Cell& b) const {
  const bool bAscending = key.bAscending;
  switch (key.nKind) {
    case Kind::EXACT:
      return CompareCodes(a.nAux, a.nCode, b.nAux, b.nCode);
    case Kind::DECIMAL:
      return sort_rules::DecideDecimals(BitsDouble(a.nCode), BitsDouble(b.nCode), bAscending);
    case Kind::TEXT:
      if (a.nCode != b.nCode) return Decide(Sign(a.nCode, b.nCode), bAscending);
      return Decide(key.texts.Compare(nA, nB, (a.nFlags & NUL_IN_TEXT) != 0), bAscending);
    case Kind::PATH:
      return Decide(sort_rules::ComparePaths(key.vecPaths[nA], key.vecFolders[nA], key.vecPaths[nB],
                                             key.vecFolders[nB], key.bCaseSensitive, m_bDirectoriesFirst),
                    bAscending);
    case Kind::NUMBER_TEXT:
      return sort_rules::DecideNumberTexts(
          static_cast<int>(a.nAux), (a.nFlags & NUMBER_ALONE) != 0, static_cast<int>(b.nAux),
          (b.nFlags & NUMBER_ALONE) != 0, bAscending,
          [&] { return key.leading.Compare(nA, nB, (a.nFlags & NUL_IN_LEADING) != 0); },
          [&] { return key.texts.Compare(nA, nB, (a.nFlags & NUL_IN_TEXT) != 0); });
    case Kind::RANKED_ENTRY:
    case Kind::DECIMAL_ENTRY:
      if (a.nAux == b.nAux) return Verdict::TIE;
      if (((a.nFlags | b.nFlags) & MISSING_ENTRY) != 0) {
        return sort_rules::DecideMissing((b.nFlags & MISSING_ENTRY) != 0, bAscending);
      }
      if (key.nKind == Kind::DECIMAL_ENTRY) {
        return sort_rules::DecideExactDecimals(BitsDouble(a.nCode), BitsDouble(b.nCode), bAscending);
      }
      if (a.nCode != b.nCode) return Decide(Sign(a.nCode, b.nCode), bAscending);
      return Decide((a.nFlags & NUL_IN_TEXT) != 0 ? 1 : 0, bAscending);
  }
  return Verdict::TIE;
}
