#ifndef DATAMGR_TYPES_DATATYPE_H_
#define DATAMGR_TYPES_DATATYPE_H_

#include <map>
#include <vector>

#include "DataMgr/Export.h"
#include "framework/CArchive.h"
#include "framework/CString.h"

// The data type of a column: one value of DataType::Type, plus what the
// library knows about every type (display texts, list and number types,
// similarity, which conversions of a column's values are allowed).
//
// The numbers of DataType::Type are stored in documents: never renumber them
// and never reuse a gap. No operation checks a number's range; an unknown
// number has no text, is no list or number type, and converts as the
// conversion table says.
class VAXO057_API DataType {
 public:
  // DO NOT CHANGE these values: they are part of the document format.
  enum Type : int {
    YesNo = 0,
    Number = 1,
    Duration = 2,
    Decimal = 3,
    Date = 4,
    Time = 5,
    Text = 6,
    PhotoFilePath = 7,
    DirectoryPath = 8,
    EmailAddress = 9,
    WebSiteAddress = 10,
    Password = 11,
    LargeText = 12,
    NumberListSuggested = 13,
    ValueListSuggested = 14,
    NumberListSelect = 15,
    ValueListSelect = 16,
    // 17 is unassigned: documents never held it and it must stay free.
    AddressBookSuggested = 18,
    AddressBookSelect = 19,
    // 20 is unassigned.
    DescValueListSuggested = 21,
    DescValueListSelect = 22,
    // 23 and 24 are unassigned.
    DataFilePath = 25,
    DecimalListSuggested = 26,
    DecimalListSelect = 27,
    Monetary = 28,
    // 29 is unassigned.
    NumberWithText = 30,
    NumberWithRomanOrText = 31,
    EmbeddedThumbnail = 32,
    Icon = 33,
  };

  DataType() = default;
  DataType(const DataType& other) = default;
  DataType& operator=(const DataType& other) = default;

  Type Get() const { return m_nType; }
  void Set(Type nType) { m_nType = nType; }

  bool operator==(const DataType& other) const { return m_nType == other.m_nType; }
  bool operator<(const DataType& other) const { return m_nType < other.m_nType; }

  // Version 1 (current): WORD version, WORD type. Loading ignores the version
  // word and zero-extends the type word without a range check.
  void Serialize(CArchive& ar);

  // The display text; empty for a number without one.
  static CString GetText(Type nType);
  // The type whose display text equals text exactly (case-sensitive); Text
  // for any other string.
  static Type GetType(const CString& text);
  // Appends every display text in byte-wise ascending order.
  static void GetTypeList(std::vector<CString>& texts);

  static bool IsListType(Type nType);
  static bool IsNumberType(Type nType);
  // The qualifier of the number-with-text types; empty for every other type.
  static CString GetNumberTypeText(Type nType);
  // "suggested as typed" or "select from list" for the entry lists; empty
  // for every other type, the address books included.
  static CString GetListTypeText(Type nType);

  // Same kind of column, differing only in presentation or entry mode.
  static bool IsSimilarType(Type a, Type b);
  // Same kind of value a user deals with (number, decimal, date, text).
  static bool IsSimilarFundamental(Type a, Type b);
  // Whether a column's values may be kept when its type changes from nFrom
  // to nTo. Deliberately not symmetric.
  static bool CanConvertBetween(Type nFrom, Type nTo);

 protected:
  // Fills m_mapTypeToText on first use; later calls do nothing.
  static void PopulateLookupMap();

  // Display text to type, for the 29 types that have a text.
  static std::map<CString, Type> m_mapTypeToText;

 private:
  Type m_nType = Text;
};

#endif  // DATAMGR_TYPES_DATATYPE_H_
