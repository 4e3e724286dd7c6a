#ifndef DATAMGR_TYPES_VALUEKINDS_H_
#define DATAMGR_TYPES_VALUEKINDS_H_

#include <type_traits>

#include "DataMgr/types/Money.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

// A record keeps its values (and its undo history) in one map per value
// kind: text, int, bool, Money, double, DateTime. KindMap<T>(maps) picks the
// map of kind T from a struct whose members are named m_mapText, m_mapInt,
// m_mapBool, m_mapMoney, m_mapDouble and m_mapDateTime, so that the rules
// written once per kind reach the right map. Internal to the library.
template <typename T, typename Maps>
auto& KindMap(Maps& maps) {
  if constexpr (std::is_same_v<T, CString>) {
    return maps.m_mapText;
  } else if constexpr (std::is_same_v<T, int>) {
    return maps.m_mapInt;
  } else if constexpr (std::is_same_v<T, bool>) {
    return maps.m_mapBool;
  } else if constexpr (std::is_same_v<T, Money>) {
    return maps.m_mapMoney;
  } else if constexpr (std::is_same_v<T, double>) {
    return maps.m_mapDouble;
  } else {
    static_assert(std::is_same_v<T, DateTime>, "a record holds no values of this kind");
    return maps.m_mapDateTime;
  }
}

#endif  // DATAMGR_TYPES_VALUEKINDS_H_
