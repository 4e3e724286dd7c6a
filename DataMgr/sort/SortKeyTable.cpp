#include "DataMgr/sort/SortKeyTable.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <numeric>
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
  const size_t nStart = out.size();
  out.append(bytes, 0, nNul);
  std::transform(out.begin() + static_cast<std::ptrdiff_t>(nStart), out.end(), out.begin() + static_cast<std::ptrdiff_t>(nStart), FoldAscii);
  return nNul != std::string::npos;
}

// The first eight bytes of a text, big-endian, zero-padded: where they
// differ, their order is the texts' order.
uint64_t Prefix(std::string_view text) {
  uint64_t nPrefix = 0;
  for (size_t i = 0; i < 8; ++i) nPrefix = (nPrefix << 8) | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0u);
  return nPrefix;
}

// The distinct texts among textAt(0) to textAt(nCount - 1) in first-seen
// order, and for each text the index of its distinct one (an open-addressing
// table over the texts).
template <typename TextAt>
std::vector<std::string_view> Distinct(size_t nCount, TextAt textAt, std::vector<uint32_t>& indexes) {
  size_t nSlots = 16;
  while (nSlots < 2 * nCount) nSlots *= 2;
  std::vector<uint32_t> slots(nSlots, 0);  // distinct index + 1; 0 for a free slot
  std::vector<std::string_view> values;
  indexes.resize(nCount);
  const std::hash<std::string_view> hash;
  for (size_t i = 0; i < nCount; ++i) {
    const std::string_view text = textAt(i);
    size_t nSlot = hash(text) & (nSlots - 1);
    while (slots[nSlot] != 0 && values[slots[nSlot] - 1] != text) nSlot = (nSlot + 1) & (nSlots - 1);
    if (slots[nSlot] == 0) {
      values.push_back(text);
      slots[nSlot] = static_cast<uint32_t>(values.size());
    }
    indexes[i] = slots[nSlot] - 1;
  }
  return values;
}

// The rank of each text: equal texts share one, and ranks follow the texts'
// byte-wise order (that of CString::Compare).
template <typename TextAt>
std::vector<uint32_t> Ranks(size_t nCount, TextAt textAt) {
  std::vector<uint32_t> ranks;
  const std::vector<std::string_view> values = Distinct(nCount, textAt, ranks);
  std::vector<std::pair<uint64_t, uint32_t>> order;
  order.reserve(values.size());
  for (size_t i = 0; i < values.size(); ++i) order.emplace_back(Prefix(values[i]), static_cast<uint32_t>(i));
  std::sort(order.begin(), order.end(), [&values](const auto& a, const auto& b) {
    return a.first != b.first ? a.first < b.first : values[a.second] < values[b.second];
  });
  std::vector<uint32_t> rankOf(values.size());
  for (size_t i = 0; i < order.size(); ++i) rankOf[order[i].second] = static_cast<uint32_t>(i);
  for (uint32_t& nRank : ranks) nRank = rankOf[nRank];
  return ranks;
}

// An int as an unsigned code of the same order.
uint64_t OrderedInt(int n) { return static_cast<uint32_t>(n) ^ 0x80000000u; }

// Codes are kept so that the smaller comes first; descending keys invert.
uint64_t Directed(uint64_t nCode, bool bAscending) { return bAscending ? nCode : ~nCode; }
uint32_t Directed(uint32_t nAux, bool bAscending) { return bAscending ? nAux : ~nAux; }

// DateTime's order of one part: missing (not valid) first, then by value.
// Ascending puts the later value first, so the code is inverted.
uint64_t LaterFirst(bool bValid, int nValue) { return ~(bValid ? OrderedInt(nValue) + 1 : 0); }

// Money's order as (class, code): sign and magnitude in one 64-bit code
// below 2^63, the rare larger magnitudes in classes of their own below and
// above.
constexpr uint64_t HALF_RANGE = 1ull << 63;
uint32_t MoneyClass(const Money& value) {
  if (value.GetRawAmount() < HALF_RANGE) return 1;
  return value.GetIsPositive() ? 2 : 0;
}
uint64_t MoneyCode(const Money& value) {
  const uint64_t nAmount = value.GetRawAmount();
  if (nAmount >= HALF_RANGE) return value.GetIsPositive() ? nAmount : ~nAmount;
  return value.GetIsPositive() ? HALF_RANGE + nAmount : HALF_RANGE - 1 - nAmount;
}

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

int SortKeyTable::TextPool::Compare(size_t nA, size_t nB, bool bNulInA) const {
  const int nCompare = At(nA).compare(At(nB));
  if (nCompare == 0) return bNulInA ? 1 : 0;
  return nCompare < 0 ? -1 : 1;
}

void SortKeyTable::TextPool::Reserve(size_t nCount) { m_vecEnds.reserve(nCount); }

void SortKeyTable::TextPool::Clear() {
  std::string().swap(m_strBytes);
  std::vector<size_t>().swap(m_vecEnds);
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
      case Rule::TEXT:
        column.nKind = Kind::TEXT;
        break;
      case Rule::DECIMAL:
        column.nKind = Kind::DECIMAL;
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
  ChooseCarriedKeys();
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
  for (KeyColumn& key : m_vecKeys) {
    if (key.nKind == Kind::TEXT || key.nKind == Kind::NUMBER_TEXT) key.texts.Reserve(records.size());
    if (key.nKind == Kind::NUMBER_TEXT) key.leading.Reserve(records.size());
  }
  for (size_t i = 0; i < records.size(); ++i) {
    const Data* pRecord = records[i];
    for (size_t k = 0; k < m_vecKeys.size(); ++k) {
      KeyColumn& key = m_vecKeys[k];
      Cell& cell = CellAt(i, k);
      if (pRecord != nullptr && pRecord->HaveDataProp(key.nDataPropID)) {
        cell.nFlags = PRESENT;
        ExtractCell(key, *pRecord, cell);
      }
      ExtractTexts(key, (cell.nFlags & PRESENT) != 0 ? pRecord : nullptr, cell);
    }
  }
  for (size_t k = 0; k < m_vecKeys.size(); ++k) {
    const KeyColumn& key = m_vecKeys[k];
    if (key.nKind == Kind::TEXT) RankRecordTexts(k);
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
      cell.nAux = Directed(MoneyClass(value), bAscending);
      cell.nCode = Directed(MoneyCode(value), bAscending);
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
void SortKeyTable::ExtractTexts(KeyColumn& key, const Data* pRecord, Cell& cell) {
  if (key.nKind != Kind::TEXT && key.nKind != Kind::PATH && key.nKind != Kind::NUMBER_TEXT) return;
  const bool bFold = !key.bCaseSensitive;
  const CString text = pRecord != nullptr ? ValueOf(*pRecord, key.nDataPropID, CString()) : CString();
  if (key.nKind == Kind::TEXT) {
    if (key.texts.Add(text, bFold)) cell.nFlags |= NUL_IN_TEXT;
  } else if (key.nKind == Kind::PATH) {
    key.vecPaths.push_back(text);
    key.vecFolders.push_back(sort_rules::SplitFolder(text));
  } else {
    const sort_rules::NumberText parsed = sort_rules::ParseNumberText(text, key.pKey->pDataProp->GetDataType());
    cell.nAux = static_cast<uint32_t>(parsed.nNumber);
    if (parsed.bAlone) cell.nFlags |= NUMBER_ALONE;
    if (key.texts.Add(text, bFold)) cell.nFlags |= NUL_IN_TEXT;
    if (key.leading.Add(parsed.strLeading, bFold)) cell.nFlags |= NUL_IN_LEADING;
  }
}

// A text key's texts become their ranks; the texts are not needed after.
void SortKeyTable::RankRecordTexts(size_t nKey) {
  KeyColumn& key = m_vecKeys[nKey];
  const std::vector<uint32_t> ranks = Ranks(key.texts.GetCount(), [&key](size_t i) { return key.texts.At(i); });
  for (size_t i = 0; i < ranks.size(); ++i) CellAt(i, nKey).nCode = ranks[i];
  key.texts.Clear();
}

// Entry IDs become codes once per distinct ID: the list position, the
// number or decimal value, or the rank of the entry's text.
void SortKeyTable::ResolveEntries(size_t nKey) {
  const KeyColumn& key = m_vecKeys[nKey];
  std::unordered_map<int, uint32_t> slots;
  std::vector<Cell> codes;
  std::vector<std::string> texts;
  for (size_t i = 0; i < GetRecordCount(); ++i) {
    const Cell& cell = CellAt(i, nKey);
    if ((cell.nFlags & PRESENT) == 0) continue;
    const int nEntryID = static_cast<int>(cell.nAux);
    if (!slots.emplace(nEntryID, static_cast<uint32_t>(codes.size())).second) continue;
    texts.emplace_back();
    codes.push_back(ResolveEntry(key, nEntryID, texts.back()));
  }
  if (key.nKind == Kind::RANKED_ENTRY && key.nRule != Rule::NUMBER_LIST) {
    const std::vector<uint32_t> ranks = Ranks(texts.size(), [&texts](size_t i) { return std::string_view(texts[i]); });
    for (size_t s = 0; s < codes.size(); ++s) codes[s].nCode = ranks[s];
  }
  for (size_t i = 0; i < GetRecordCount(); ++i) {
    Cell& cell = CellAt(i, nKey);
    if ((cell.nFlags & PRESENT) == 0) continue;
    const Cell& code = codes[slots[static_cast<int>(cell.nAux)]];
    cell.nFlags |= code.nFlags;
    if (key.bListOrder) {
      cell.nAux = Directed(uint32_t{0}, key.bAscending);
      cell.nCode = Directed(code.nCode, key.bAscending);
    } else {
      cell.nCode = code.nCode;
    }
  }
}

SortKeyTable::Cell SortKeyTable::ResolveEntry(const KeyColumn& key, int nEntryID, std::string& text) const {
  Cell code;
  const DataProp& lookup = LookupColumn(*key.pKey);
  if (key.bListOrder) {
    code.nCode = lookup.GetDisplayOrderForListItemID(nEntryID);
    return code;
  }
  bool bFound = false;
  CString strText;
  if (key.nRule == Rule::NUMBER_LIST) {
    const auto* pEntry = dynamic_cast<const ListItemNumber*>(lookup.GetListItemByID(nEntryID));
    bFound = pEntry != nullptr;
    if (bFound) code.nCode = OrderedInt(pEntry->GetNumber());
  } else if (key.nRule == Rule::DECIMAL_LIST) {
    const auto* pEntry = dynamic_cast<const ListItemDouble*>(lookup.GetListItemByID(nEntryID));
    bFound = pEntry != nullptr;
    if (bFound) code.nCode = DoubleBits(pEntry->GetNumber());
  } else if (key.nRule == Rule::ADDRESS) {
    const Address* pAddress = lookup.GetAddressBook().GetByID(nEntryID);
    bFound = pAddress != nullptr;
    if (bFound) strText = pAddress->GetData(Address::Name);
  } else if (const ListItem* pEntry = lookup.GetListItemByID(nEntryID)) {
    bFound = true;
    strText = pEntry->GetTextRepresentation();
  }
  if (!bFound) code.nFlags |= MISSING_ENTRY;
  if (AppendComparable(text, strText, !key.bCaseSensitive)) code.nFlags |= NUL_IN_TEXT;
  return code;
}

bool SortKeyTable::HasExactCodes(size_t nKey) const {
  const Kind nKind = m_vecKeys[nKey].nKind;
  if (nKind != Kind::EXACT && nKind != Kind::TEXT) return false;
  bool bFirst = true;
  uint32_t nAux = 0;
  for (size_t i = 0; i < GetRecordCount(); ++i) {
    const Cell& cell = CellAt(i, nKey);
    if ((cell.nFlags & PRESENT) == 0) continue;
    if ((cell.nFlags & NUL_IN_TEXT) != 0) return false;
    if (!bFirst && cell.nAux != nAux) return false;
    nAux = cell.nAux;
    bFirst = false;
  }
  return true;
}

uint64_t SortKeyTable::ExactCode(size_t nRecord, size_t nKey) const {
  const KeyColumn& key = m_vecKeys[nKey];
  const uint64_t nCode = CellAt(nRecord, nKey).nCode;
  return key.nKind == Kind::TEXT ? Directed(nCode, key.bAscending) : nCode;
}

// The elements carry the first key when its codes decide exactly, and the
// second as well when its codes do and span less than 2^32.
void SortKeyTable::ChooseCarriedKeys() {
  m_nCarriedKeys = 0;
  if (m_vecKeys.empty() || !HasExactCodes(0)) return;
  m_nCarriedKeys = 1;
  if (m_vecKeys.size() < 2 || !HasExactCodes(1)) return;
  uint64_t nLowest = std::numeric_limits<uint64_t>::max();
  uint64_t nHighest = 0;
  for (size_t i = 0; i < GetRecordCount(); ++i) {
    if ((CellAt(i, 1).nFlags & PRESENT) == 0) continue;
    nLowest = std::min(nLowest, ExactCode(i, 1));
    nHighest = std::max(nHighest, ExactCode(i, 1));
  }
  if (nLowest <= nHighest && nHighest - nLowest > std::numeric_limits<uint32_t>::max()) return;
  m_nSecondBase = nLowest;
  m_nCarriedKeys = 2;
}

SortKeyTable::Element SortKeyTable::MakeElement(const Data* pRecord, size_t nIndex) const {
  Element element;
  element.nIndex = static_cast<uint32_t>(nIndex);
  if (pRecord == nullptr) {
    element.nIndex |= NULL_RECORD;
    return element;
  }
  if (m_nCarriedKeys >= 1) {
    if ((CellAt(nIndex, 0).nFlags & PRESENT) != 0) {
      element.nCode = ExactCode(nIndex, 0);
    } else {
      element.nIndex |= FIRST_ABSENT;
    }
  }
  if (m_nCarriedKeys == 2) {
    if ((CellAt(nIndex, 1).nFlags & PRESENT) != 0) {
      element.nSecondCode = static_cast<uint32_t>(ExactCode(nIndex, 1) - m_nSecondBase);
    } else {
      element.nIndex |= SECOND_ABSENT;
    }
  }
  return element;
}

// The keys the elements carry decide here; a key that either record lacks
// is passed over. The rest is decided by the cells.
bool SortKeyTable::Before(const Element& a, const Element& b) const {
  if ((b.nIndex & NULL_RECORD) != 0) return false;
  if ((a.nIndex & NULL_RECORD) != 0) return true;
  const uint32_t nAbsent = a.nIndex | b.nIndex;
  if (m_nCarriedKeys >= 1 && (nAbsent & FIRST_ABSENT) == 0 && a.nCode != b.nCode) return a.nCode < b.nCode;
  if (m_nCarriedKeys == 2 && (nAbsent & SECOND_ABSENT) == 0 && a.nSecondCode != b.nSecondCode) {
    return a.nSecondCode < b.nSecondCode;
  }
  return RowsBefore(a.nIndex & INDEX_MASK, b.nIndex & INDEX_MASK, m_nCarriedKeys);
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
  // Ranks of texts: equal ranks tie, but for CompareNoCase's answer when a's
  // text was cut at a NUL byte.
  const auto decideRanks = [&] {
    const int nCompare = Sign(a.nCode, b.nCode);
    return Decide(nCompare != 0 ? nCompare : ((a.nFlags & NUL_IN_TEXT) != 0 ? 1 : 0), bAscending);
  };
  switch (key.nKind) {
    case Kind::EXACT:
      return CompareCodes(a.nAux, a.nCode, b.nAux, b.nCode);
    case Kind::TEXT:
      return decideRanks();
    case Kind::DECIMAL:
      return sort_rules::DecideDecimals(BitsDouble(a.nCode), BitsDouble(b.nCode), bAscending);
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
      return decideRanks();
  }
  return Verdict::TIE;
}
