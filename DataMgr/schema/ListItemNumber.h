#ifndef DATAMGR_SCHEMA_LISTITEMNUMBER_H_
#define DATAMGR_SCHEMA_LISTITEMNUMBER_H_

#include "DataMgr/Export.h"
#include "DataMgr/schema/ListItem.h"

// An entry of a number list column: a whole number, 0 when new. Its text is
// the number in digits without grouping.
class VAXO057_API ListItemNumber : public ListItem {
 public:
  ListItemNumber() = default;
  ListItemNumber(const ListItemNumber& other) = default;
  ListItemNumber& operator=(const ListItemNumber& other) = default;

  int GetNumber() const { return m_nNumber; }
  void SetNumber(int nNumber) { m_nNumber = nNumber; }

  bool SetTextRepresentation(const CString& text) override;
  CString GetTextRepresentation() const override;

  // The ListItem part, then WORD version 1 and the number as an int.
  void Serialize(CArchive& ar) override;

  bool operator==(const ListItemNumber& other) const { return m_nNumber == other.m_nNumber; }
  bool operator<(const ListItemNumber& other) const { return m_nNumber < other.m_nNumber; }

 private:
  int m_nNumber = 0;
};

#endif  // DATAMGR_SCHEMA_LISTITEMNUMBER_H_
