#ifndef DATAMGR_FILTER_HIGHLIGHTFILTERMGR_H_
#define DATAMGR_FILTER_HIGHLIGHTFILTERMGR_H_

#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "DataMgr/filter/HighlightFilter.h"
#include "DataMgr/records/DataItem.h"
#include "DataMgr/records/DataSubItem.h"
#include "framework/CArchive.h"
#include "framework/Color.h"
#include "utility/DateTime.h"

// The highlight rules of a list: a filter set of HighlightFilters that
// answers whether a record is highlighted and in which colour, the
// must-pass-all flag, and the colour the next new rule gets (advanced a
// little after each use, so that rules differ in tint).
//
// A record is highlighted by the first ordinary rule it passes (rules with
// include clear never highlight), else by the first special rule that
// matches; with must-pass-all only when every rule of the set matches.
//
// Ownership as in DataFilterMgr. CreateEntry(false) and CopyEntries leave
// the new rules to the caller; Sync takes over the added rules and
// destroys the deleted ones. Copying the set goes through DataFilterMgr's
// copy, which holds plain DataFilter copies (colours, names and special
// flags are lost): copy rules whole with CopyEntries.
class VAXO057_API HighlightFilterMgr : public DataFilterMgr {
 public:
  // The colour of the first new rule: RGB(220, 217, 193).
  static constexpr COLORREF INITIAL_DEFAULT_COLOR = RGB(220, 217, 193);
  // The colour of a file-doesn't-exist rule, and the old one it replaces.
  static constexpr COLORREF FILE_DOESNT_EXIST_COLOR = RGB(255, 136, 136);
  static constexpr COLORREF OLD_FILE_DOESNT_EXIST_COLOR = RGB(250, 0, 0);
  // The colour DoHighlight reports for a record it does not highlight.
  static constexpr COLORREF NO_HIGHLIGHT_COLOR = RGB(255, 255, 255);

  HighlightFilterMgr() = default;
  HighlightFilterMgr(const HighlightFilterMgr& other) = default;
  HighlightFilterMgr& operator=(const HighlightFilterMgr& other) = default;

 protected:
  DataFilter* CreateFilter() const override;

 public:
  ~HighlightFilterMgr() override;
  // See the layout above the definition; version 2 is current.
  void Serialize(CArchive& ar) override;

  bool GetMustPassAllFilters() const { return m_bMustPassAll; }
  void SetMustPassAllFilters(bool bMustPassAll) { m_bMustPassAll = bMustPassAll; }
  COLORREF GetDefaultColor() const { return m_nDefaultColor; }

  // A new rule in the default colour, which then advances; added with the
  // next ID when bAddToSet, else the caller's.
  HighlightFilter* CreateEntry(bool bAddToSet);
  // Add an optional special rule on the column: file-doesn't-exist in its
  // own colour, today in the default colour (which then advances).
  void AddFileDoesntExistFilter(int nDataPropID);
  void AddTodayFilter(int nDataPropID);
  bool HaveFileDoesntExistFilter() const;
  bool HaveTodayFilter() const;
  // Destroy the rules of that kind in one walk by index that moves on after
  // each removal, so that a rule right behind a removed one stays until the
  // next call.
  void DeleteFileDoesntExistFilters();
  void DeleteTodayFilters();
  // DeleteAll(bResetIDs); resetting also clears must-pass-all.
  void DeleteEntries(bool bResetIDs);

  // Appends a whole copy of every rule; the caller owns the copies.
  void CopyEntries(std::vector<HighlightFilter*>& rules) const;
  // One batch of edits, in this order: each own rule takes over the
  // members of the first other rule in modified with its ID; each non-null
  // rule of added is appended and taken over, getting the next ID exactly
  // when its ID is 0 or more (a rule with ID -1 keeps it); each own rule
  // in deleted is destroyed. The caller keeps modified.
  void Sync(const std::vector<HighlightFilter*>& modified, const std::vector<HighlightFilter*>& added,
            const std::vector<HighlightFilter*>& deleted);

  // Whether to highlight the record; colour receives the rule's colour, or
  // white when none applies.
  bool DoHighlight(const DataItem& item, COLORREF& colour) const;
  bool DoHighlight(const DataSubItem& subItem, COLORREF& colour) const;
  // The first rule in list order in that colour that explains it: an
  // ordinary rule the item passes, or any special rule; null when none.
  HighlightFilter* GetHighlightFilter(const DataItem& item, COLORREF colour) const;

 protected:
  // Red up in steps of 10 to 245 and more, then green, then blue (which
  // wraps).
  void UpdateDefaultColor();

 private:
  // The rule at nIndex as a HighlightFilter; null for a plain DataFilter.
  HighlightFilter* GetRuleAt(size_t nIndex) const;
  bool IsOrdinaryRule(const HighlightFilter& rule) const;
  // A new optional rule on the column in that colour, added with the next
  // ID.
  HighlightFilter* AddSpecialRule(int nDataPropID, COLORREF nColor);
  bool HaveRule(bool (HighlightFilter::*pIsKind)() const) const;
  void DeleteRules(bool (HighlightFilter::*pIsKind)() const);
  // Whether the record meets a special rule; now is read on first need.
  static bool MeetsSpecialRule(const Data& record, const HighlightFilter& rule, bool bSubItem, DateTime& now,
                               bool& bHaveNow);
  // The highlight walk over ordinary rules (passes(rule)) and then special
  // rules.
  template <typename Passes>
  bool Highlight(const Data& record, bool bSubItem, Passes passes, COLORREF& colour) const;

  bool m_bMustPassAll = false;
  COLORREF m_nDefaultColor = INITIAL_DEFAULT_COLOR;
};

#endif  // DATAMGR_FILTER_HIGHLIGHTFILTERMGR_H_
