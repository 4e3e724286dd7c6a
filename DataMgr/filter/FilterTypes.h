#ifndef DATAMGR_FILTER_FILTERTYPES_H_
#define DATAMGR_FILTER_FILTERTYPES_H_

// Internal to the filters: the data types that a filter treats as text.

#include "DataMgr/types/DataType.h"

namespace filter_types {

// Text through Large Text (6 to 12) and Data File Path (25): compared as
// text, and described with their case-sensitive and whole-word flags. The
// number-with-text types are held as text too but filtered by their number.
inline bool IsTextType(DataType::Type nType) {
  return (nType >= DataType::Text && nType <= DataType::LargeText) || nType == DataType::DataFilePath;
}

}  // namespace filter_types

#endif  // DATAMGR_FILTER_FILTERTYPES_H_
