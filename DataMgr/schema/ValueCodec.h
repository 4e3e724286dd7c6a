#ifndef DATAMGR_SCHEMA_VALUECODEC_H_
#define DATAMGR_SCHEMA_VALUECODEC_H_

#include <functional>

#include "DataMgr/schema/DataProp.h"
#include "DataMgr/types/CellValue.h"
#include "DataMgr/types/Data.h"
#include "DataMgr/types/DataType.h"
#include "framework/CString.h"
#include "utility/TextArray.h"

// How the values of one data type are read from text and written as text:
// the parse and format rules of every type, kept in one place so that value
// entry, acceptance of typed text, default values, rendering, undo texts
// and the type change of a column all read and write a type the same way.
//
// For(type) hands out the codec of a type: one shared, immutable object per
// type, living as long as the program. Every type number has one; the
// types that hold no value (the thumbnail, the icon and the unassigned
// numbers, any number out of range too) share a codec that parses nothing,
// accepts nothing and shows nothing. A codec holds no state and no column:
// each call is given the column whose flags it reads and whose list entries
// or address book it looks in, and reads and writes records only through
// the Data interface. The ten entry types keep the ID of a list entry or of
// an address (-1 for none); their codecs also find entries, name them and
// count their usages. Internal to the library: the document is its caller.
class ValueCodec {
 public:
  // Registers a column's default value in one record.
  using Registration = std::function<void(Data&)>;

  ValueCodec(const ValueCodec&) = delete;
  ValueCodec& operator=(const ValueCodec&) = delete;

  static const ValueCodec& For(DataType::Type nType);

  // The kind a record keeps values of this type in; NONE for a type that
  // holds no value.
  virtual CellValue::Kind GetKind() const = 0;
  // Whether a cell holds the ID of a list entry or of an address.
  virtual bool IsEntryType() const { return false; }
  // Whether a list owner of this type takes an unknown typed text as a new
  // entry (the suggested-as-typed entry types).
  virtual bool CreatesEntries() const { return false; }

  // record's value under nID, read with the getter of this type's kind.
  virtual CellValue Read(const Data& record, int nID) const = 0;
  // The value that text stands for, as a column's stored or default text is
  // read back: prop gives the flags and, for an entry type, the entries,
  // where bCreate adds a text that names none.
  virtual CellValue Parse(const CString& text, DataProp& prop, bool bCreate) const = 0;
  // The registration of prop's default value: for a fresh record, or for a
  // column added to records that exist (bNewColumn). Empty for a type that
  // holds no value. A registration never overwrites a value; an entry it
  // registers gains one usage.
  virtual Registration MakeDefault(DataProp& prop, bool bNewColumn) const;
  // Stores typed text (its prefix and suffix already cut off) in record's
  // cell of prop, with listOwner supplying the fractional form and, for an
  // entry type, the entries. bRedisplay is raised when the value will show
  // differently from what was typed; it is never lowered. False when the
  // text is rejected, the value is unchanged or the type holds none.
  virtual bool Enter(Data& record, DataProp& prop, DataProp& listOwner, const CString& text, bool& bRedisplay,
                     bool bRecord) const = 0;
  // Judges trimmed typed text and rewrites it in normal form when accepted;
  // a select-from-list type looks the text up among listOwner's entries.
  virtual bool Accept(CString& text, const DataProp& prop, DataProp& listOwner) const = 0;
  // The integer that text stands for in a Number or Duration column; 0 for
  // every other type.
  virtual int ToInteger(const CString& text, const DataProp& prop) const;

  // The value under nID as prop shows it, without prefix and suffix; "+"
  // in front as the column asks. Empty for no value or a zero value when
  // bBlankZero.
  virtual CString Format(const Data& record, int nID, const DataProp& prop, bool bBlankZero) const = 0;
  // Appends the texts of record's earlier values of prop, oldest first,
  // without prefix, suffix or "+".
  virtual void FormatEarlier(const Data& record, const DataProp& prop, TextArray& texts, bool bBlankZero) const = 0;

  // Entry types only (the others find nothing and count nothing): the ID
  // of owner's entry that text names, created when bCreate (-1 when none);
  // one usage more or less for entry nEntryID (nothing for a negative or
  // unknown ID); the display text of entry nEntryID, false when none.
  virtual int FindEntryID(DataProp& owner, const CString& text, bool bCreate) const;
  virtual void ChangeEntryUsage(DataProp& owner, int nEntryID, bool bRaise) const;
  virtual bool FindEntryText(const DataProp& owner, int nEntryID, CString& text) const;

 protected:
  ValueCodec() = default;
  ~ValueCodec() = default;

  // The value a default text stands for; by default what Parse makes of it.
  virtual CellValue ParseDefault(DataProp& prop, bool bNewColumn) const;
};

#endif  // DATAMGR_SCHEMA_VALUECODEC_H_
