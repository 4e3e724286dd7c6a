#ifndef DATAMGR_FILTER_DATAFILTER_H_
#define DATAMGR_FILTER_DATAFILTER_H_

#include <ctime>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/types/DataType.h"
#include "DataMgr/types/Money.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/DateTime.h"
#include "utility/LocaleUtils.h"

// One condition on one column: include (or, with the include flag clear,
// exclude) a record when the column's value passes the test of the filter
// type against the compare value. The filter holds the column ID and a copy
// of the column's data type, so that it can be evaluated and described
// without the column registry; it never reads a record itself (the filter
// set fetches the value and picks the overload by the data type).
//
// The compare value is a text, or for list columns the IDs of the selected
// entries; setting one empties the other. The numbers, amount, date and
// time that the tests compare with are read from the text when it is set
// (SetValue, loading) and kept with the conventions they were read under;
// a test made under other conventions (the host changed a separator or the
// date order, or a new year began for a date written without its year)
// reads the text again, so that a test always means what the text means at
// that moment. Evaluating a record never allocates for a non-text value.
//
// A new filter: Include, not case-sensitive, not whole-word, required, ID
// -1, column -1 (a filter set ignores it), data type Text, HasAnyData and
// an empty value. Copies copy every member. An overload that does not serve
// the filter type or data type fails (returns false); nothing throws but
// the archive.
//
// The virtual operations, in this order, are part of the binary interface:
// the destructor, Serialize, GetDescription.
class VAXO057_API DataFilter {
 public:
  // DO NOT CHANGE these values: they are stored in documents.
  enum FilterType : int {
    HasAnyData = 0,
    IsExactlyEqualTo = 1,
    IsLessThan = 2,
    IsGreaterThan = 3,
    IsEqualTo = 4,  // membership in the selected list entries
    IsEqualToOrNewerThan = 5,
    IsEqualToOrOlderThan = 6,
    IsChecked = 7,
    IsNotChecked = 8,
    Contains = 9,
  };

  DataFilter();
  DataFilter(const DataFilter& other) = default;
  DataFilter& operator=(const DataFilter& other) = default;
  virtual ~DataFilter();

  // See the layout above the definition; version 3 is current.
  virtual void Serialize(CArchive& ar);
  // "Include if "%s" is less than "5"." and the like; the %s stays for the
  // caller to fill in with the column's name.
  virtual CString GetDescription() const;

  // Every member is equal; the value text compares case-sensitively.
  bool operator==(const DataFilter& other) const;
  // By column ID only.
  bool operator<(const DataFilter& other) const { return m_nDataPropID < other.m_nDataPropID; }

  bool GetInclude() const { return m_bInclude; }
  void SetInclude(bool bInclude) { m_bInclude = bInclude; }
  bool GetCaseSensitive() const { return m_bCaseSensitive; }
  void SetCaseSensitive(bool bCaseSensitive) { m_bCaseSensitive = bCaseSensitive; }
  bool GetWholeWord() const { return m_bWholeWord; }
  void SetWholeWord(bool bWholeWord) { m_bWholeWord = bWholeWord; }
  bool GetRequired() const { return m_bRequired; }
  void SetRequired(bool bRequired) { m_bRequired = bRequired; }
  int GetID() const { return m_nID; }
  void SetID(int nID) { m_nID = nID; }
  int GetDataPropID() const { return m_nDataPropID; }
  void SetDataPropID(int nID) { m_nDataPropID = nID; }
  DataType::Type GetDataType() const { return m_dataType.Get(); }
  void SetDataType(DataType::Type nType) { m_dataType.Set(nType); }
  FilterType GetFilterType() const { return m_nFilterType; }
  void SetFilterType(FilterType nType) { m_nFilterType = nType; }

  // Setting the text empties the list and the other way round.
  void GetValue(CString& value) const { value = m_strValue; }
  void GetValue(std::vector<int>& values) const { values = m_vecValues; }
  void SetValue(const CString& value);
  void SetValue(const std::vector<int>& values);

  // The English text of a filter type; "has any data" for anything not 1..9.
  static CString GetFilterDesc(FilterType nType);
  // The filter type of a text of GetFilterDesc; any text holding "newer
  // than" or "older than" gives those tests; HasAnyData for anything else.
  static FilterType GetTypeFromDesc(const CString& desc);
  // Appends the tests a user may choose for a column of nType.
  static void GetValidFilterTypesForDataType(DataType::Type nType, std::vector<FilterType>& types);

  // One value of the column: YesNo as bool; Number, Duration and the
  // numbers of the number-with-text types as int; Decimal as double;
  // Monetary as Money; Date and Time as DateTime; the text types as text;
  // list and address columns by the chosen entry's ID (-1 for none).
  bool PassesFilter(bool bValue) const;
  bool PassesFilter(int nValue) const;
  bool PassesFilter(double dValue) const;
  bool PassesFilter(const Money& value) const;
  bool PassesFilter(const DateTime& value) const;
  bool PassesFilter(const CString& value) const;
  bool PassesFilter(const char* pszValue) const { return PassesFilter(CString(pszValue)); }
  bool PassesListItemFilter(int nListItemID) const;

 protected:
  // The Contains test: the compare value as a whole word of text
  // (whole-word set), else as a wildcard pattern of the whole text or as a
  // part of it.
  bool DoesTextContainCompareValue(const CString& text) const;

 private:
  // m_bInclude == bTrue: an Exclude filter passes where the test fails.
  bool Result(bool bTrue) const { return m_bInclude == bTrue; }
  // The tests IsExactlyEqualTo, IsLessThan and IsGreaterThan, given how
  // the value relates to the compare value; false for every other test.
  bool PassesRelation(bool bEqual, bool bLess, bool bGreater) const;
  // Reads the compare numbers, amount, date and time from m_strValue.
  void ParseCompareValue();
  // The compare values as m_strValue reads now: the ones kept, unless the
  // conventions they depend on have changed since.
  int CompareNumber() const;
  double CompareDecimal() const;
  Money CompareAmount() const;
  DateTime CompareDate() const;
  DateTime CompareTime() const;

  bool m_bInclude = true;
  bool m_bCaseSensitive = false;
  bool m_bWholeWord = false;
  bool m_bRequired = true;
  int m_nID = -1;
  int m_nDataPropID = -1;
  DataType m_dataType;
  FilterType m_nFilterType = HasAnyData;
  CString m_strValue;
  std::vector<int> m_vecValues;

  // The conventions that number, amount, date and time texts are read
  // with, and the span of the year that a date without one falls in.
  struct Conventions {
    CString strThousandsSep;
    CString strDecimalSep;
    CString strCurrencySep;
    CString strDateSep;
    LocaleUtils::DateOrder nDateOrder = LocaleUtils::MONTH_DAY_YEAR;
    CString strTimeSep;
    std::time_t tYearBegins = 0;
    std::time_t tYearEnds = 0;
  };

  // Read from m_strValue by ParseCompareValue, never stored.
  bool m_bValueIsOneWord = false;
  int m_nCompareNumber = 0;
  double m_dCompareNumber = 0.0;
  Money m_compareAmount;
  DateTime m_dtCompareDate;
  DateTime m_dtCompareTime;
  Conventions m_readWith;
};

#endif  // DATAMGR_FILTER_DATAFILTER_H_
