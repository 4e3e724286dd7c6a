#ifndef DATAMGR_SCHEMA_LISTITEMDOUBLE_H_
#define DATAMGR_SCHEMA_LISTITEMDOUBLE_H_

#include "DataMgr/Export.h"
#include "DataMgr/schema/ListItem.h"

// An entry of a decimal list column: a double, 0.0 when new. Its text has
// the locale's count of fractional digits; values are compared exactly.
class VAXO057_API ListItemDouble : public ListItem {
 public:
  ListItemDouble() = default;
  ListItemDouble(const ListItemDouble& other) = default;
  ListItemDouble& operator=(const ListItemDouble& other) = default;

  double GetNumber() const { return m_dNumber; }
  void SetNumber(double dNumber) { m_dNumber = dNumber; }

  bool SetTextRepresentation(const CString& text) override;
  CString GetTextRepresentation() const override;

  // The ListItem part, then WORD version 1 and the number as a double.
  void Serialize(CArchive& ar) override;

  bool operator==(const ListItemDouble& other) const { return m_dNumber == other.m_dNumber; }
  bool operator<(const ListItemDouble& other) const { return m_dNumber < other.m_dNumber; }

 private:
  double m_dNumber = 0.0;
};

#endif  // DATAMGR_SCHEMA_LISTITEMDOUBLE_H_
