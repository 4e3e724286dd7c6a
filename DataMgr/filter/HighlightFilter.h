#ifndef DATAMGR_FILTER_HIGHLIGHTFILTER_H_
#define DATAMGR_FILTER_HIGHLIGHTFILTER_H_

#include "DataMgr/Export.h"
#include "DataMgr/filter/DataFilter.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "framework/Color.h"

// A highlight rule: a filter condition with the colour it gives a record
// and a name, or one of two special rules that need no compare value: the
// file named in the column does not exist, or the date in the column is
// today. A special flag, once set, is never cleared. A new rule has the
// window background colour (GetSysColor(COLOR_WINDOW)) and no name.
//
// Copies and == cover the condition, both flags, the colour and the name.
// The rule owns nothing.
class VAXO057_API HighlightFilter : public DataFilter {
 public:
  HighlightFilter();
  HighlightFilter(const HighlightFilter& other) = default;
  HighlightFilter& operator=(const HighlightFilter& other) = default;
  ~HighlightFilter() override;

  // See the layout above the definition; version 5 is current.
  void Serialize(CArchive& ar) override;
  // "Highlight if file does not exist.", "Don't highlight if date is
  // "today"." or the condition's description with "Include" turned into
  // "Highlight" (or "Exclude" into "Don't highlight") everywhere in it.
  CString GetDescription() const override;

  bool operator==(const HighlightFilter& other) const;

  bool IsFileDoesntExistFilter() const { return m_bFileDoesntExist; }
  void SetIsFileDoesntExistFilter() { m_bFileDoesntExist = true; }
  bool IsTodayFilter() const { return m_bToday; }
  void SetIsTodayFilter() { m_bToday = true; }
  bool IsSpecialFilter() const { return m_bFileDoesntExist || m_bToday; }
  COLORREF GetColor() const { return m_nColor; }
  void SetColor(COLORREF nColor) { m_nColor = nColor; }
  const CString& GetName() const { return m_strName; }
  void SetName(const CString& name) { m_strName = name; }

 private:
  bool m_bFileDoesntExist = false;
  bool m_bToday = false;
  COLORREF m_nColor;
  CString m_strName;
};

#endif  // DATAMGR_FILTER_HIGHLIGHTFILTER_H_
