#ifndef DATAMGR_TYPES_CELLVALUE_H_
#define DATAMGR_TYPES_CELLVALUE_H_

#include <type_traits>
#include <variant>

#include "DataMgr/types/Data.h"
#include "DataMgr/types/Money.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

// One cell's value in the kind a record keeps it in (bool, int, double,
// DateTime, Money or text), or no value at all for the types that hold
// none. It lets a value worked out from a column's type be read, registered
// and stored without the caller naming the kind. Holds a copy; never refers
// to a record. Internal to the library.
class CellValue {
 public:
  // The kind of the value; the order is that of the alternatives below.
  enum Kind { NONE, BOOL, INT, DOUBLE, DATETIME, MONEY, TEXT };

  CellValue() = default;
  template <typename T>
  explicit CellValue(const T& value) : m_value(value) {}

  // The kind of values of type T.
  template <typename T>
  static constexpr Kind KindOf() {
    if constexpr (std::is_same_v<T, bool>) {
      return BOOL;
    } else if constexpr (std::is_same_v<T, int>) {
      return INT;
    } else if constexpr (std::is_same_v<T, double>) {
      return DOUBLE;
    } else if constexpr (std::is_same_v<T, DateTime>) {
      return DATETIME;
    } else if constexpr (std::is_same_v<T, Money>) {
      return MONEY;
    } else {
      static_assert(std::is_same_v<T, CString>, "a record holds no values of this kind");
      return TEXT;
    }
  }

  Kind GetKind() const { return static_cast<Kind>(m_value.index()); }
  // The int value; false, leaving n alone, for a value of another kind.
  bool GetInt(int& n) const {
    const int* pValue = std::get_if<int>(&m_value);
    if (pValue != nullptr) n = *pValue;
    return pValue != nullptr;
  }

  // record's value of kind T under nID (the kind's absent value when it
  // holds none).
  template <typename T>
  static CellValue Read(const Data& record, int nID) {
    T value{};
    record.GetData(nID, value);
    return CellValue(value);
  }

  // RegisterDataProp of the value's kind (a text unflagged): an existing
  // value of that kind is kept. No value registers nothing.
  void Register(Data& record, int nID) const {
    std::visit(
        [&](const auto& value) {
          using T = std::decay_t<decltype(value)>;
          if constexpr (std::is_same_v<T, CString>) {
            record.RegisterDataProp(nID, value, false);
          } else if constexpr (!std::is_same_v<T, std::monostate>) {
            record.RegisterDataProp(nID, value);
          }
        },
        m_value);
  }

  // SetData of the value's kind; false for no value.
  bool Store(Data& record, int nID, bool bRecord) const {
    return std::visit(
        [&](const auto& value) {
          using T = std::decay_t<decltype(value)>;
          if constexpr (std::is_same_v<T, std::monostate>) {
            return false;
          } else {
            return record.SetData(nID, value, bRecord);
          }
        },
        m_value);
  }

 private:
  std::variant<std::monostate, bool, int, double, DateTime, Money, CString> m_value;
};

#endif  // DATAMGR_TYPES_CELLVALUE_H_
