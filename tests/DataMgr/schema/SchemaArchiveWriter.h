#ifndef TESTS_DATAMGR_SCHEMA_SCHEMAARCHIVEWRITER_H_
#define TESTS_DATAMGR_SCHEMA_SCHEMAARCHIVEWRITER_H_

// Fixtures of the schema's archive records, written field by field with
// ByteWriter from the documented layouts (never by the code under test):
// list entries, addresses, address books and columns of any version.

#include <string>
#include <vector>

#include "tests/support/ArchiveTestSupport.h"

namespace schema_test {

using test_support::ByteWriter;
using test_support::Bytes;
using test_support::Enciphered;

// A list entry up to its value: the entry part (version 2, ID, usage
// count), then the value part's version word.
inline ByteWriter Entry(int nID, int nCount) { return ByteWriter().Word(2).Int(nID).Int(nCount).Word(1); }

inline Bytes TextEntry(int nID, int nCount, const std::string& text) { return Entry(nID, nCount).Text(text).Get(); }

inline Bytes TextDescEntry(int nID, int nCount, const std::string& text, const std::string& desc) {
  return Entry(nID, nCount).Text(text).Word(1).Text(desc).Get();  // then the description part
}

// The 18 field texts of an address, every field empty but those given.
inline std::vector<std::string> AddressFields(const std::string& name, const std::string& country) {
  std::vector<std::string> fields(18);
  fields[0] = name;
  fields[5] = country;
  return fields;
}

// An address record of version 6 or 7.
inline Bytes AddressRecord(unsigned nVersion, bool bBusiness, int nID, int nCount,
                           const std::vector<std::string>& fields) {
  ByteWriter w;
  w.Word(nVersion).Bool(bBusiness).Int(nID).Int(nCount).Counter(fields.size(), nVersion < 7);
  for (const std::string& field : fields) w.Text(Enciphered(field));
  return w.Get();
}

// An address book of version 3 holding the given address records.
inline Bytes AddressBookRecord(const std::vector<Bytes>& addresses, bool bBusiness) {
  ByteWriter w;
  w.Word(3).Counter(addresses.size(), false);
  for (const Bytes& address : addresses) w.Raw(address);
  return w.Bool(bBusiness).Get();
}

// A column record of any version up to the end of its texts: each field is
// written only by the versions whose layout holds it. Tests set the fields
// they care about and append the entries themselves.
struct ColumnArchive {
  explicit ColumnArchive(unsigned nArchiveVersion = 15, unsigned nDataType = 6)
      : nVersion(nArchiveVersion), nType(nDataType) {}

  unsigned nVersion;
  bool bCanBeSummed = false;
  bool bCanBeAveraged = false;
  bool bCanBeNegative = true;
  bool bDisplayed = true;
  bool bThousandsSep = true;
  bool bFractional = false;
  bool bShowDecimalZeroes = true;
  bool bShowSignAlways = false;
  bool bZeroIsEmpty = true;
  bool bObsoleteA = false;  // versions 1 to 4
  bool bDateTimeNumbers = true;
  bool bUserCanDelete = true;
  bool bUserCanDeleteWarning = false;
  bool bUserChangeDataType = true;
  bool bUserChangeValue = true;
  bool bTimeShowHours = false;
  bool bTimeShowSeconds = false;
  bool bUserChangeDefValue = true;
  bool bSortValuesByListOrder = false;
  bool bObsoleteB = false;  // versions 8 to 11
  bool bHiddenFromUI = false;
  bool bKeepListItemsSorted = false;
  bool bUseWithDataSubItem = false;
  int nID = -1;
  int nNextListItemID = 0;
  unsigned nCustomColWidth = 99999;
  unsigned nColWidth = 0;
  unsigned nColAlign = 0;
  unsigned nType;
  std::string desc;
  std::string name;
  std::string defaultValue;
  std::string prefix;
  std::string suffix;

  ByteWriter Head() const {
    const unsigned v = nVersion;
    ByteWriter w;
    w.Word(v).Bool(bCanBeSummed);
    if (v >= 2) w.Bool(bCanBeAveraged);
    if (v >= 5) w.Bool(bCanBeNegative);
    w.Bool(bDisplayed).Bool(bThousandsSep);
    if (v >= 9) w.Bool(bFractional).Bool(bShowDecimalZeroes).Bool(bShowSignAlways);
    if (v >= 5) w.Bool(bZeroIsEmpty);
    if (v <= 4) w.Bool(bObsoleteA);
    w.Bool(bDateTimeNumbers).Bool(bUserCanDelete);
    if (v >= 5) w.Bool(bUserCanDeleteWarning);
    w.Bool(bUserChangeDataType).Bool(bUserChangeValue);
    if (v >= 10) w.Bool(bTimeShowHours);
    if (v >= 3) w.Bool(bTimeShowSeconds);
    if (v >= 4) w.Bool(bUserChangeDefValue);
    if (v >= 7) w.Bool(bSortValuesByListOrder);
    if (v >= 8 && v <= 11) w.Bool(bObsoleteB);
    if (v >= 11) w.Bool(bHiddenFromUI);
    if (v >= 13) w.Bool(bKeepListItemsSorted);
    if (v >= 15) w.Bool(bUseWithDataSubItem);
    w.Int(nID).Int(nNextListItemID).Int(nCustomColWidth).Word(nColWidth).Word(nColAlign);
    w.Word(1).Word(nType);
    w.Text(desc).Text(name).Text(defaultValue);
    if (v >= 9) w.Text(prefix).Text(suffix);
    return w;
  }
};

}  // namespace schema_test

#endif  // TESTS_DATAMGR_SCHEMA_SCHEMAARCHIVEWRITER_H_
