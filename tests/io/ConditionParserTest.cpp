// Conditions typed as text: each test of the expression language becomes
// the filter condition it names, and an expression that cannot be read is
// refused with the reason.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "io/ConditionParser.h"
#include "tests/support/LocaleTestSupport.h"

namespace {

class ConditionParserTest : public test_support::UsLocaleTest {
 protected:
  // Title 5000, Year 5001, Genre 5002 (entries 0 Fantasy, 1 Science
  // Fiction, 2 "Smith, J"), Read 5003, Bought 5004, Notes 5005, Lent to
  // 5006 (address 0 Alice).
  void SetUp() override {
    UsLocaleTest::SetUp();
    const struct {
      const char* pszName;
      DataType::Type nType;
    } columns[] = {{"Title", DataType::Text},
                   {"Year", DataType::Number},
                   {"Genre", DataType::ValueListSelect},
                   {"Read", DataType::YesNo},
                   {"Bought", DataType::Date},
                   {"Notes", DataType::LargeText},
                   {"Lent to", DataType::AddressBookSelect}};
    for (const auto& column : columns) {
      auto* pProp = new DataProp;
      pProp->SetName(column.pszName);
      pProp->SetDataType(column.nType);
      m_doc.AddDataProp(pProp, true, false, false, false);
    }
    DataProp& genre = *m_doc.GetDataPropMgr().GetByID(5002);
    for (const char* pszEntry : {"Fantasy", "Science Fiction", "Smith, J"}) genre.GetListItemByValue(pszEntry, true);
    m_doc.GetDataPropMgr().GetByID(5006)->CreateAddress(-1)->SetData(Address::Name, "Alice");
  }

  DataMgmt m_doc;
};

TEST_F(ConditionParserTest, EachTestBecomesItsCondition) {
  const struct {
    const char* pszExpression;
    int nColumnID;
    DataFilter::FilterType nType;
    bool bInclude;
    std::string value;
    std::vector<int> entries;
  } rows[] = {
      {"Year > 1960", 5001, DataFilter::IsGreaterThan, true, "1960", {}},
      {"year<1960", 5001, DataFilter::IsLessThan, true, "1960", {}},
      {"Title = Dune", 5000, DataFilter::IsExactlyEqualTo, true, "Dune", {}},
      {"Title contains \"dune messiah\"", 5000, DataFilter::Contains, true, "dune messiah", {}},
      {"Genre is Fantasy,Science Fiction", 5002, DataFilter::IsEqualTo, true, "", {0, 1}},
      {"Genre is \"Smith, J\", fantasy", 5002, DataFilter::IsEqualTo, true, "", {2, 0}},
      {"Genre is not Fantasy", 5002, DataFilter::IsEqualTo, false, "", {0}},
      {"not Genre = Fantasy", 5002, DataFilter::IsEqualTo, false, "", {0}},
      {"Read is checked", 5003, DataFilter::IsChecked, true, "", {}},
      {"Read is not checked", 5003, DataFilter::IsNotChecked, true, "", {}},
      {"Bought newer than 2020-01-01", 5004, DataFilter::IsEqualToOrNewerThan, true, "2020-01-01", {}},
      {"Bought is older than 5/1/2011", 5004, DataFilter::IsEqualToOrOlderThan, true, "5/1/2011", {}},
      {"Notes has data", 5005, DataFilter::HasAnyData, true, "", {}},
      {"Notes is empty", 5005, DataFilter::HasAnyData, false, "", {}},
      {"not Notes is empty", 5005, DataFilter::HasAnyData, true, "", {}},
      {"\"Lent to\" is alice", 5006, DataFilter::IsEqualTo, true, "", {0}},
      {"Lent to has any data", 5006, DataFilter::HasAnyData, true, "", {}},
  };
  const ConditionParser parser(m_doc);
  for (const auto& row : rows) {
    CString error;
    const std::unique_ptr<DataFilter> pFilter = parser.Parse(row.pszExpression, false, error);
    ASSERT_TRUE(pFilter) << row.pszExpression << ": " << error;
    EXPECT_EQ(pFilter->GetDataPropID(), row.nColumnID) << row.pszExpression;
    EXPECT_EQ(pFilter->GetDataType(), m_doc.GetDataPropMgr().GetByID(row.nColumnID)->GetDataType());
    EXPECT_EQ(pFilter->GetFilterType(), row.nType) << row.pszExpression;
    EXPECT_EQ(pFilter->GetInclude(), row.bInclude) << row.pszExpression;
    EXPECT_FALSE(pFilter->GetRequired()) << row.pszExpression;
    CString value;
    pFilter->GetValue(value);
    std::vector<int> entries;
    pFilter->GetValue(entries);
    EXPECT_EQ(value.GetStdString(), row.value) << row.pszExpression;
    EXPECT_EQ(entries, row.entries) << row.pszExpression;
  }
}

TEST_F(ConditionParserTest, ExpressionsThatCannotBeReadAreRefused) {
  const struct {
    const char* pszExpression;
    const char* pszError;
  } rows[] = {
      {"Colour is red", "no column \"Colour\""},
      {"\"Colour\" > 3", "no column \"Colour\""},
      {"> 3", "no column before the test"},
      {"Year 1960", "no test in \"Year 1960\" (for example \"Year > 1960\")"},
      {"Genre contains x", "the column \"Genre\" has no test \"contains\" (its tests: has data, is)"},
      {"Read is yes", "the column \"Read\" has no test \"is\" (its tests: is checked, is not checked)"},
      {"Genre is Horror", "the column \"Genre\" has no entry \"Horror\""},
      {"Year > abc", "\"abc\" is not a whole number (the column \"Year\")"},
      {"Bought newer than someday", "\"someday\" is not a date (the column \"Bought\")"},
      {"Year >", "a value is missing after \">\""},
      {"Read is checked twice", "nothing may follow \"is checked\", but \"twice\" does"},
  };
  const ConditionParser parser(m_doc);
  for (const auto& row : rows) {
    CString error;
    EXPECT_FALSE(parser.Parse(row.pszExpression, true, error)) << row.pszExpression;
    EXPECT_EQ(error.GetStdString(), row.pszError) << row.pszExpression;
  }
}

}  // namespace
