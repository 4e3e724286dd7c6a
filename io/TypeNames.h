#ifndef IO_TYPENAMES_H_
#define IO_TYPENAMES_H_

#include "DataMgr/types/DataType.h"
#include "framework/CString.h"
#include "io/IoExport.h"

// The names of the data types as conversions and commands write them: the
// enumerator names of DataType::Type ("YesNo", "ValueListSelect", ...),
// which, unlike the display texts, contain no blanks or brackets and never
// change with the wording of the user interface.
class VAXO057IO_API TypeNames {
 public:
  // The enumerator name of nType; empty for a number that names no type.
  static CString GetName(DataType::Type nType);
  // The type that name stands for: an enumerator name or a display text,
  // either in any letter case. False, leaving nType alone, for any other
  // text.
  static bool FindType(const CString& name, DataType::Type& nType);
};

#endif  // IO_TYPENAMES_H_
