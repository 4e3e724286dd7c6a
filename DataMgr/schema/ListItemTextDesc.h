#ifndef DATAMGR_SCHEMA_LISTITEMTEXTDESC_H_
#define DATAMGR_SCHEMA_LISTITEMTEXTDESC_H_

#include "DataMgr/Export.h"
#include "DataMgr/schema/ListItemText.h"

// An entry of a value list with descriptions: a text, which is its value and
// its key (compared, sorted, shown in cells), and a description beside it
// that takes part in neither comparisons nor the text form.
class VAXO057_API ListItemTextDesc : public ListItemText {
 public:
  ListItemTextDesc() = default;
  ListItemTextDesc(const ListItemTextDesc& other) = default;
  ListItemTextDesc& operator=(const ListItemTextDesc& other) = default;

  const CString& GetDesc() const { return m_strDesc; }
  void SetDesc(const CString& desc) { m_strDesc = desc; }

  // The whole ListItemText record, then WORD version 1 and the description.
  void Serialize(CArchive& ar) override;

 private:
  CString m_strDesc;
};

#endif  // DATAMGR_SCHEMA_LISTITEMTEXTDESC_H_
