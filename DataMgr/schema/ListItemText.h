#ifndef DATAMGR_SCHEMA_LISTITEMTEXT_H_
#define DATAMGR_SCHEMA_LISTITEMTEXT_H_

#include "DataMgr/Export.h"
#include "DataMgr/schema/ListItem.h"

// An entry of a value list column: a text, empty when new. Entries compare
// ignoring case, but setting a text that differs only in case is a change.
class VAXO057_API ListItemText : public ListItem {
 public:
  ListItemText() = default;
  ListItemText(const ListItemText& other) = default;
  ListItemText& operator=(const ListItemText& other) = default;

  bool SetTextRepresentation(const CString& text) override;
  CString GetTextRepresentation() const override { return m_strText; }

  // The ListItem part, then WORD version 1 and the text.
  void Serialize(CArchive& ar) override;

  bool operator==(const ListItemText& other) const { return m_strText.CompareNoCase(other.m_strText) == 0; }
  bool operator<(const ListItemText& other) const { return m_strText.CompareNoCase(other.m_strText) < 0; }

 private:
  CString m_strText;
};

#endif  // DATAMGR_SCHEMA_LISTITEMTEXT_H_
