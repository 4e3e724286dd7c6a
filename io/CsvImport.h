#ifndef IO_CSVIMPORT_H_
#define IO_CSVIMPORT_H_

#include <map>
#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/types/DataType.h"
#include "framework/CString.h"
#include "io/IoExport.h"
#include "io/Progress.h"

// Comma-separated values (RFC 4180: quoted fields, doubled quotes, line
// breaks inside quotes) made into a document: the first record is the
// heading, whose names become user columns in their order, and every
// further record becomes an item. Each column's type is the one given for
// its name, or else the one its values suggest (InferType). Every value is
// entered as a user types it (DataMgmt::EnterValue): judged by the column's
// type, normalised and stored, so a select list's entries and an address
// book's addresses are the column's values. A value the column rejects is
// reported with its row (the heading is row 1) and its column.
//
// One import per object: set the types and the handling of rejected
// values, call Read once, then read the rejections.
class VAXO057IO_API CsvImport {
 public:
  // A value that was not imported.
  struct Rejection {
    size_t nRow;         // the record's number; the heading is 1
    size_t nColumn;      // from 1
    CString columnName;  // empty when the record has more fields than the heading
    CString text;
    CString reason;
  };

  // The type of the column named name (compared ignoring case).
  void SetType(const CString& name, DataType::Type nType) { m_mapTypes[name] = nType; }
  // With bSkipBad, rejected values are left out (their cells keep the
  // column's default) and the import goes on; without, a rejected value
  // fails the import.
  void SetSkipBad(bool bSkipBad) { m_bSkipBad = bSkipBad; }

  // Replaces doc's columns and items by those of csv and returns true.
  // False, with doc emptied, when csv is no CSV or has no heading, when a
  // type is given for a name the heading lacks or for a type that holds no
  // values, or when values were rejected without SetSkipBad; error then
  // says why in one line. progress counts records.
  bool Read(const std::string& csv, DataMgmt& doc, CString& error, const Progress& progress = Progress());
  // Every rejected value, in row order (also after a failed Read).
  const std::vector<Rejection>& GetRejections() const { return m_vecRejections; }

  // The type a column's values suggest, blank values left aside: YesNo when
  // all are yes/no words (yes, no, y, n, true, false in any letter case),
  // Number when all are whole numbers that fit 32 bits, Decimal when all
  // are numbers, Date when all read as dates, else (also with no values)
  // Text.
  static DataType::Type InferType(const std::vector<CString>& values);

 private:
  // Adds the heading's columns to doc; false with error when a given type
  // does not fit.
  bool AddColumns(DataMgmt& doc, const std::vector<std::vector<CString>>& records, std::vector<int>& ids,
                  CString& error);
  void EnterRecord(DataMgmt& doc, const std::vector<CString>& record, size_t nRow, const std::vector<int>& ids);

  std::map<CString, DataType::Type> m_mapTypes;
  bool m_bSkipBad = false;
  std::vector<Rejection> m_vecRejections;
};

#endif  // IO_CSVIMPORT_H_
