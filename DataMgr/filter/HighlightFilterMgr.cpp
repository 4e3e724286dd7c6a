#include "DataMgr/filter/HighlightFilterMgr.h"

#include <algorithm>

#include "DataMgr/types/ArchiveExchange.h"
#include "framework/CString.h"
#include "utility/FileUtils.h"
#include "utility/InternetUtils.h"
#include "utility/SerializeData.h"

namespace {

// Changelog:
//   1: must-pass-all and the default colour; file-doesn't-exist rules may
//      still carry the old red, which loading replaces.
//   2: the same fields.
const WORD HIGHLIGHTFILTERMGR_VERSION = 2;

}  // namespace

HighlightFilterMgr::~HighlightFilterMgr() = default;

DataFilter* HighlightFilterMgr::CreateFilter() const { return new HighlightFilter; }

HighlightFilter* HighlightFilterMgr::GetRuleAt(size_t nIndex) const {
  return dynamic_cast<HighlightFilter*>(GetAt(nIndex));
}

bool HighlightFilterMgr::IsOrdinaryRule(const HighlightFilter& rule) const {
  return !rule.IsSpecialFilter() && IsValid(rule) && rule.GetInclude();
}

// r, g, b: if r < 245 then r += 10, else if g > 244 then b += 10 (mod 256),
// else g += 10.
void HighlightFilterMgr::UpdateDefaultColor() {
  BYTE r = GetRValue(m_nDefaultColor);
  BYTE g = GetGValue(m_nDefaultColor);
  BYTE b = GetBValue(m_nDefaultColor);
  if (r < 245) {
    r = static_cast<BYTE>(r + 10);
  } else if (g > 244) {
    b = static_cast<BYTE>(b + 10);
  } else {
    g = static_cast<BYTE>(g + 10);
  }
  m_nDefaultColor = RGB(r, g, b);
}

HighlightFilter* HighlightFilterMgr::CreateEntry(bool bAddToSet) {
  auto* pRule = new HighlightFilter;
  pRule->SetColor(m_nDefaultColor);
  if (bAddToSet) Add(pRule, true);
  UpdateDefaultColor();
  return pRule;
}

HighlightFilter* HighlightFilterMgr::AddSpecialRule(int nDataPropID, COLORREF nColor) {
  auto* pRule = new HighlightFilter;
  pRule->SetColor(nColor);
  pRule->SetRequired(false);
  pRule->SetDataPropID(nDataPropID);
  Add(pRule, true);
  return pRule;
}

void HighlightFilterMgr::AddFileDoesntExistFilter(int nDataPropID) {
  AddSpecialRule(nDataPropID, FILE_DOESNT_EXIST_COLOR)->SetIsFileDoesntExistFilter();
}

void HighlightFilterMgr::AddTodayFilter(int nDataPropID) {
  AddSpecialRule(nDataPropID, m_nDefaultColor)->SetIsTodayFilter();
  UpdateDefaultColor();
}

bool HighlightFilterMgr::HaveRule(bool (HighlightFilter::*pIsKind)() const) const {
  for (size_t i = 0; i < GetCount(); ++i) {
    const HighlightFilter* pRule = GetRuleAt(i);
    if (pRule != nullptr && (pRule->*pIsKind)()) return true;
  }
  return false;
}

bool HighlightFilterMgr::HaveFileDoesntExistFilter() const {
  return HaveRule(&HighlightFilter::IsFileDoesntExistFilter);
}

bool HighlightFilterMgr::HaveTodayFilter() const { return HaveRule(&HighlightFilter::IsTodayFilter); }

// The index moves on after a removal too: the rule that took the removed
// one's place is not looked at in this call.
void HighlightFilterMgr::DeleteRules(bool (HighlightFilter::*pIsKind)() const) {
  for (size_t i = 0; i < GetCount(); ++i) {
    HighlightFilter* pRule = GetRuleAt(i);
    if (pRule != nullptr && (pRule->*pIsKind)()) Delete(pRule);
  }
}

void HighlightFilterMgr::DeleteFileDoesntExistFilters() { DeleteRules(&HighlightFilter::IsFileDoesntExistFilter); }

void HighlightFilterMgr::DeleteTodayFilters() { DeleteRules(&HighlightFilter::IsTodayFilter); }

void HighlightFilterMgr::DeleteEntries(bool bResetIDs) {
  DeleteAll(bResetIDs);
  if (bResetIDs) m_bMustPassAll = false;
}

// A plain DataFilter of the set (left by copying the set) is copied into a
// new rule's condition.
void HighlightFilterMgr::CopyEntries(std::vector<HighlightFilter*>& rules) const {
  for (size_t i = 0; i < GetCount(); ++i) {
    const HighlightFilter* pRule = GetRuleAt(i);
    if (pRule != nullptr) {
      rules.push_back(new HighlightFilter(*pRule));
    } else {
      auto* pCopy = new HighlightFilter;
      static_cast<DataFilter&>(*pCopy) = *GetAt(i);
      rules.push_back(pCopy);
    }
  }
}

void HighlightFilterMgr::Sync(const std::vector<HighlightFilter*>& modified, const std::vector<HighlightFilter*>& added,
                              const std::vector<HighlightFilter*>& deleted) {
  for (size_t i = 0; i < GetCount(); ++i) {
    DataFilter* pOwn = GetAt(i);
    const auto found = std::find_if(modified.begin(), modified.end(), [pOwn](const HighlightFilter* pRule) {
      return pRule != nullptr && pRule != pOwn && pRule->GetID() == pOwn->GetID();
    });
    if (found == modified.end()) continue;
    if (HighlightFilter* pRule = GetRuleAt(i)) {
      *pRule = **found;
    } else {
      *pOwn = **found;
    }
  }
  for (HighlightFilter* pRule : added) {
    if (pRule != nullptr) Add(pRule, pRule->GetID() >= 0);
  }
  for (HighlightFilter* pRule : deleted) Delete(pRule);
}

// The file test of an item passes over internet addresses; a sub-item's
// does not. An item's date is today by its date part; a sub-item's value
// must equal the current date and time as a whole.
bool HighlightFilterMgr::MeetsSpecialRule(const Data& record, const HighlightFilter& rule, bool bSubItem, DateTime& now,
                                          bool& bHaveNow) {
  const int nID = rule.GetDataPropID();
  if (!record.HaveDataProp(nID)) return false;
  if (rule.IsFileDoesntExistFilter()) {
    CString path;
    record.GetData(nID, path);
    return !path.IsEmpty() && (bSubItem || !InternetUtils::IsInternetFile(path)) && !FileUtils::DoesFileExist(path);
  }
  if (!bHaveNow) {
    now.SetToCurrent();
    bHaveNow = true;
  }
  DateTime value;
  record.GetData(nID, value);
  return bSubItem ? value == now : value.CompareDate(now) == 0;
}

template <typename Passes>
bool HighlightFilterMgr::Highlight(const Data& record, bool bSubItem, Passes passes, COLORREF& colour) const {
  colour = NO_HIGHLIGHT_COLOR;
  if (GetCount() == 0) return false;
  size_t nMatches = 0;
  for (size_t i = 0; i < GetCount(); ++i) {
    const HighlightFilter* pRule = GetRuleAt(i);
    if (pRule == nullptr || !IsOrdinaryRule(*pRule) || !passes(*pRule)) continue;
    colour = pRule->GetColor();
    if (!m_bMustPassAll) return true;
    ++nMatches;
  }
  DateTime now;
  bool bHaveNow = false;
  for (size_t i = 0; i < GetCount(); ++i) {
    const HighlightFilter* pRule = GetRuleAt(i);
    if (pRule == nullptr || !pRule->IsSpecialFilter() || !MeetsSpecialRule(record, *pRule, bSubItem, now, bHaveNow)) {
      continue;
    }
    colour = pRule->GetColor();
    if (!m_bMustPassAll) return true;
    ++nMatches;
  }
  return m_bMustPassAll && nMatches == GetCount();
}

// Each ordinary rule is judged alone, as a set of that one rule would.
bool HighlightFilterMgr::DoHighlight(const DataItem& item, COLORREF& colour) const {
  return Highlight(
      item, false, [&](const HighlightFilter& rule) { return DoesDataItemPassFilter(item, rule); }, colour);
}

bool HighlightFilterMgr::DoHighlight(const DataSubItem& subItem, COLORREF& colour) const {
  return Highlight(
      subItem, true,
      [&](const HighlightFilter& rule) {
        return !subItem.HaveDataProp(rule.GetDataPropID()) || DoesDataPassFilter(subItem, rule);
      },
      colour);
}

HighlightFilter* HighlightFilterMgr::GetHighlightFilter(const DataItem& item, COLORREF colour) const {
  for (size_t i = 0; i < GetCount(); ++i) {
    HighlightFilter* pRule = GetRuleAt(i);
    if (pRule == nullptr || pRule->GetColor() != colour) continue;
    if (pRule->IsSpecialFilter() || (IsOrdinaryRule(*pRule) && DoesDataItemPassFilter(item, *pRule))) return pRule;
  }
  return nullptr;
}

// Layout (version 2, current):
//   the whole DataFilterMgr record (its rules made by CreateFilter, so they
//   load as HighlightFilters)
//   WORD   version
//   bool   must-pass-all
//   DWORD  default colour
// Loading a version-1 set gives its file-doesn't-exist rules in the old red
// the current colour.
void HighlightFilterMgr::Serialize(CArchive& ar) {
  DataFilterMgr::Serialize(ar);
  WORD nVersion = HIGHLIGHTFILTERMGR_VERSION;
  archive_exchange::Exchange(ar, nVersion);
  SerializeData::Serialize(ar, m_bMustPassAll);
  archive_exchange::Exchange(ar, m_nDefaultColor);
  if (ar.IsStoring() || nVersion >= 2) return;
  for (size_t i = 0; i < GetCount(); ++i) {
    HighlightFilter* pRule = GetRuleAt(i);
    if (pRule != nullptr && pRule->IsFileDoesntExistFilter() && pRule->GetColor() == OLD_FILE_DOESNT_EXIST_COLOR) {
      pRule->SetColor(FILE_DOESNT_EXIST_COLOR);
    }
  }
}
