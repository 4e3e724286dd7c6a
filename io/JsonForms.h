#ifndef IO_JSONFORMS_H_
#define IO_JSONFORMS_H_

// The JSON forms of the values a document holds, shared by the writer and
// the reader of DocumentJson (docs/JSON.md): texts, decimals, amounts,
// dates and times, the value kind each data type keeps, the names of a
// column's flags and of an address's fields. Internal to vaxo057io.

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <unordered_map>

#include "DataMgr/schema/Address.h"
#include "DataMgr/schema/DataProp.h"
#include "DataMgr/schema/DataPropMgr.h"
#include "DataMgr/types/Data.h"
#include "DataMgr/types/DataType.h"
#include "DataMgr/types/Money.h"
#include "framework/CString.h"
#include "utility/DateTime.h"

namespace json_forms {

using OutJson = nlohmann::ordered_json;
using InJson = nlohmann::json;

// A value that has no place in the form: where it stands (a JSON pointer
// such as /items/3/values/5001) and what is wrong.
class FormError : public std::runtime_error {
 public:
  FormError(const std::string& path, const std::string& what) : std::runtime_error(what), m_path(path) {}
  const std::string& GetPath() const { return m_path; }

 private:
  std::string m_path;
};

// The kinds of values a record keeps, named as the tagged form names them.
enum Kind { NO_KIND = -1, BOOL, INT, DOUBLE, DATETIME, MONEY, TEXT, KIND_COUNT };
extern const char* const KIND_NAMES[KIND_COUNT];
// The kind a column of nType keeps its values in; NO_KIND for the types
// that hold none (thumbnail, icon, unassigned numbers).
Kind KindOfType(DataType::Type nType);

bool IsAddressBookType(DataType::Type nType);
// Column ID -> data type of every column of the registry; where two columns
// share an ID, the first (application columns before user columns).
std::unordered_map<int, DataType::Type> CollectColumnTypes(const DataPropMgr& registry);

// Whether record holds a value of nKind under nID; that value in its form;
// registering a value of nKind read from its form.
bool HasKind(const Data& record, int nID, Kind nKind);
OutJson WriteKind(const Data& record, int nID, Kind nKind);
void RegisterKind(Data& record, int nID, Kind nKind, const InJson& value, const std::string& path);

// A text as a JSON string when it is valid UTF-8, else {"latin1": ...}
// with every byte taken as the character of that number.
OutJson WriteText(const CString& text);
bool IsLatin1Form(const InJson& value);
CString ReadText(const InJson& value, const std::string& path);

// A finite double as a JSON number; "NaN", "Infinity", "-Infinity", or
// "NaN:0x<16 hex digits>" for a NaN of other bits.
OutJson WriteDouble(double dValue);
double ReadDouble(const InJson& value, const std::string& path);

// An amount as an exact decimal text with the currency's fractional
// digits: "-12.50", "-0.00" for negative zero.
OutJson WriteMoney(const Money& value);
Money ReadMoney(const InJson& value, const std::string& path);

// "2011-05-01T10:15:00", "2011-05-01" (no time), "10:15:00" (no date),
// null (neither), or {"julianDay": n, "secondsOfDay": s} for parts that
// are neither valid nor missing.
OutJson WriteDateTime(const DateTime& value);
DateTime ReadDateTime(const InJson& value, const std::string& path);

int ReadInt(const InJson& value, const std::string& path);
bool ReadBool(const InJson& value, const std::string& path);

// The flags of a column: their JSON names, getters and setters, in the
// column's own order.
struct ColumnFlag {
  const char* pszName;
  bool (DataProp::*pGet)() const;
  void (*pSet)(DataProp& prop, bool bValue);
};
extern const ColumnFlag COLUMN_FLAGS[];
extern const size_t COLUMN_FLAG_COUNT;

// The JSON names of the eighteen fields of an address, by Address::Field.
extern const char* const ADDRESS_FIELD_NAMES[];
extern const int ADDRESS_FIELD_COUNT;

}  // namespace json_forms

#endif  // IO_JSONFORMS_H_
