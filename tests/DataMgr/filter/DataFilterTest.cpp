// One condition: each test on each kind of value, as a set of that one
// condition judges an item of a document; the descriptions; the archive.
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "DataMgr/filter/DataFilterMgr.h"
#include "tests/DataMgr/filter/FilterFixtures.h"
#include "tests/support/LocaleTestSupport.h"

using document_test::AddColumn;
using filter_test::CASE;
using filter_test::EXCLUDE;
using filter_test::MakeFilter;
using filter_test::NONE;
using filter_test::WHOLE;
using DataFilterTest = test_support::UsLocaleTest;
using T = DataFilter;
using DT = DataType;

TEST_F(DataFilterTest, EachTestJudgesTheTypedValue) {
  const struct {
    const char* pszRow;
    DataType::Type nType;
    const char* pszTyped;
    DataFilter::FilterType nTest;
    const char* pszValue;
    int nFlags;
    bool bPasses;
  } rows[] = {
      {"zero is no data", DT::Number, "0", T::HasAnyData, "", NONE, false},
      {"unknown test fails even when Exclude", DT::Number, "7", T::IsChecked, "", EXCLUDE, false},
      {"number as text", DT::Number, "1234", T::Contains, "23", NONE, true},
      {"duration in its clock form", DT::Duration, "1:30", T::Contains, "1:30", NONE, true},
      {"decimal equal within 0.0001", DT::Decimal, "1.50004", T::IsExactlyEqualTo, "1.5", NONE, true},
      {"decimal unequal at 0.0002", DT::Decimal, "1.5002", T::IsExactlyEqualTo, "1.5", NONE, false},
      {"decimal below 0.001 is no data", DT::Decimal, "0.0009", T::HasAnyData, "", NONE, false},
      {"both negative: larger magnitude is less", DT::Monetary, "-5", T::IsLessThan, "-3", NONE, true},
      {"positive beats negative", DT::Monetary, "2", T::IsGreaterThan, "-3", NONE, true},
      {"zero is no money", DT::Monetary, "0", T::HasAnyData, "", NONE, false},
      {"negative zero is money", DT::Monetary, "-0.00", T::HasAnyData, "", NONE, true},
      {"zero is not negative zero", DT::Monetary, "0", T::IsExactlyEqualTo, "-0.00", NONE, false},
      {"money as text", DT::Monetary, "1234.5", T::Contains, "4.50", NONE, true},
      {"date: the year", DT::Date, "5/1/2011", T::Contains, "2011", NONE, true},
      {"date: a piece of the year", DT::Date, "5/1/2011", T::Contains, "201", NONE, false},
      {"date: two parts", DT::Date, "5/1/2011", T::Contains, "1/2011", NONE, false},
      {"date: newer", DT::Date, "5/1/2011", T::IsEqualToOrNewerThan, "4/30/2011", NONE, true},
      {"date: equal", DT::Date, "5/1/2011", T::IsExactlyEqualTo, "May 1, 2011", NONE, true},
      {"time: the minutes", DT::Time, "13:05:09", T::Contains, "05", NONE, true},
      {"time: the seconds carry the AM/PM mark", DT::Time, "13:05:09", T::Contains, "09", NONE, false},
      {"wildcard over the whole text", DT::Text, "abcz", T::Contains, "a*z", NONE, true},
      {"wildcard before substring: Exclude", DT::Text, "abcz", T::Contains, "a*z", EXCLUDE, false},
      {"substring", DT::Text, "abcz", T::Contains, "bc", NONE, true},
      {"whole word", DT::Text, "the cat sat", T::Contains, "CAT", WHOLE, true},
      {"whole word inside a word", DT::Text, "concatenate", T::Contains, "cat", WHOLE, false},
      {"whole word: two words are none", DT::Text, "the cat sat", T::Contains, "cat sat", WHOLE, false},
      {"empty text is no data", DT::Text, "", T::HasAnyData, "", NONE, false},
      {"number before text", DT::NumberWithText, "Vol. 12", T::IsGreaterThan, "10", NONE, true},
      {"Roman numerals", DT::NumberWithRomanOrText, "Part IV", T::IsExactlyEqualTo, "4", NONE, true},
      {"the selected entry", DT::ValueListSuggested, "red", T::IsEqualTo, "red", NONE, true},
      {"no selection matches nothing", DT::ValueListSuggested, "red", T::IsEqualTo, "", NONE, false},
      {"an entry is data", DT::ValueListSuggested, "red", T::HasAnyData, "", NONE, true},
      {"checked: Exclude", DT::YesNo, "yes", T::IsChecked, "", EXCLUDE, false},
      {"not checked: Exclude", DT::YesNo, "yes", T::IsNotChecked, "", EXCLUDE, true},
  };
  for (const auto& row : rows) {
    DataMgmt doc;
    const DataProp& prop = AddColumn(doc, row.nType);
    DataItem& item = *doc.CreateDataItem(nullptr, true, true);
    filter_test::Type(doc, item, prop, row.pszTyped);
    DataFilterMgr set;
    set.Add(MakeFilter(prop, row.nTest, row.pszValue, row.nFlags), true);
    EXPECT_EQ(set.PassesFilters(item), row.bPasses) << row.pszRow;
  }
}

// The compare value means what it reads as under the conventions in force
// when a value is tested, also when they changed after it was set.
TEST_F(DataFilterTest, TheCompareValueIsReadWithTheCurrentConventions) {
  const struct {
    const char* pszRow;
    DataType::Type nType;
    const char* pszValue;
    void (*change)();
    bool (*passes)(const DataFilter&);
  } rows[] = {
      {"thousands separator", DT::Number, "1.000", [] { LocaleUtils::SetNumberThousandsSeparator("."); },
       [](const DataFilter& f) { return f.PassesFilter(1000); }},
      {"decimal separator", DT::Decimal, "1,5", [] { LocaleUtils::SetNumberDecimalSeparator(","); },
       [](const DataFilter& f) { return f.PassesFilter(1.5); }},
      {"currency separator", DT::Monetary, "2,50", [] { LocaleUtils::SetCurrencyDecimalSeparator(","); },
       [](const DataFilter& f) { return f.PassesFilter(Money(2.5)); }},
      {"date order", DT::Date, "1/5/2011", [] { LocaleUtils::SetDateOrder(LocaleUtils::DAY_MONTH_YEAR); },
       [](const DataFilter& f) { return f.PassesFilter(DateTime(2011, 5, 1)); }},
      {"time separator", DT::Time, "13h05", [] { LocaleUtils::SetTimeSeparator("h"); },
       [](const DataFilter& f) { return f.PassesFilter(DateTime(2011, 5, 1, 13, 5)); }},
  };
  for (const auto& row : rows) {
    SetUp();
    DataFilter filter;
    filter.SetDataType(row.nType);
    filter.SetFilterType(T::IsExactlyEqualTo);
    filter.SetValue(row.pszValue);
    EXPECT_FALSE(row.passes(filter)) << row.pszRow;
    row.change();
    EXPECT_TRUE(row.passes(filter)) << row.pszRow;
  }
}

TEST_F(DataFilterTest, DescriptionsAndTheirFilterTypes) {
  const struct {
    DataType::Type nType;
    DataFilter::FilterType nTest;
    int nFlags;
    size_t nSelected;
    const char* pszDesc;
  } rows[] = {
      {DT::Text, T::HasAnyData, CASE, 0, "Include if \"%s\" has any data."},
      {DT::Text, T::Contains, EXCLUDE | CASE | WHOLE, 0, "Exclude if \"%s\" contains \"v\" (case-sensitive and whole-word)."},
      {DT::DataFilePath, T::IsLessThan, WHOLE, 0, "Include if \"%s\" is less than \"v\" (whole-word)."},
      {DT::Number, T::IsEqualToOrOlderThan, CASE, 0, "Include if \"%s\" is equal to or older than \"v\"."},
      {DT::ValueListSelect, T::IsEqualTo, NONE, 0, "Include if \"%s\" is equal to none of the entries."},
      {DT::ValueListSelect, T::IsEqualTo, NONE, 1, "Include if \"%s\" is equal to the one selection."},
      {DT::ValueListSelect, T::IsEqualTo, EXCLUDE, 1234, "Exclude if \"%s\" is equal to one of the 1,234 selections."},
  };
  for (const auto& row : rows) {
    const std::unique_ptr<DataFilter> pFilter(MakeFilter(DataProp(), row.nTest, "v", row.nFlags));
    pFilter->SetDataType(row.nType);
    if (row.nSelected > 0) pFilter->SetValue(std::vector<int>(row.nSelected, 1));
    EXPECT_EQ(pFilter->GetDescription(), row.pszDesc);
  }
  for (int nType = T::IsExactlyEqualTo; nType <= T::Contains; ++nType) {
    EXPECT_EQ(T::GetTypeFromDesc(T::GetFilterDesc(T::FilterType(nType))), nType);
  }
  EXPECT_EQ(T::GetTypeFromDesc("much older than"), T::IsEqualToOrOlderThan);
  EXPECT_EQ(T::GetTypeFromDesc("newer than or older than"), T::IsEqualToOrNewerThan);
  EXPECT_EQ(T::GetTypeFromDesc("Contains"), T::HasAnyData);
  EXPECT_EQ(T::GetFilterDesc(T::FilterType(10)), "has any data");
}

TEST_F(DataFilterTest, ValidTestsPerDataTypeAreAppended) {
  using V = std::vector<DataFilter::FilterType>;
  const V order = {T::HasAnyData, T::IsExactlyEqualTo, T::IsLessThan, T::IsGreaterThan, T::Contains};
  const V dated = {T::HasAnyData, T::IsExactlyEqualTo, T::IsEqualToOrNewerThan, T::IsEqualToOrOlderThan, T::Contains};
  const V list = {T::HasAnyData, T::IsEqualTo};
  const std::vector<std::pair<int, V>> rows = {{0, {T::IsChecked, T::IsNotChecked}}, {1, order}, {5, dated}, {12, order},
      {25, order}, {28, order}, {31, order}, {13, list}, {19, list}, {27, list}, {17, {}}, {29, {}}, {32, {}}};
  for (const auto& row : rows) {
    V types = {T::Contains};
    T::GetValidFilterTypesForDataType(DataType::Type(row.first), types);
    EXPECT_EQ(V(types.begin() + 1, types.end()), row.second) << "type " << row.first;
  }
}

// A loaded filter reads its compare value as a set one does; version 2 has a
// 32-bit counter, 4 is read as 3, 1 holds its version word only.
TEST_F(DataFilterTest, ArchiveOfEveryVersion) {
  DataProp column;
  column.SetID(5001);
  column.SetDataType(DT::Number);
  const std::unique_ptr<DataFilter> pFilter(MakeFilter(column, T::IsGreaterThan, "10", EXCLUDE | WHOLE));
  pFilter->SetID(4);
  filter_test::FilterRecord record(4, "10");
  record.bInclude = false;
  record.bWhole = true;
  record.nColumn = 5001;
  record.nTest = T::IsGreaterThan;
  record.nType = DT::Number;
  test_support::ExpectArchiveForm(*pFilter, record.Get(), [&](const DataFilter& loaded) {
    EXPECT_TRUE(loaded == *pFilter);
    EXPECT_TRUE(loaded.PassesFilter(10) && !loaded.PassesFilter(11));
  });
  for (unsigned nVersion : {2, 4, 1}) {
    record.nVersion = nVersion;
    const DataFilter expected = nVersion == 1 ? DataFilter() : *pFilter;
    EXPECT_TRUE(test_support::Loaded<DataFilter>(record.Get()) == expected) << nVersion;
  }
}
