// CSV of a document: the export's heading, quoting and filter; the
// import's quoted fields and line breaks, the types it infers or is given,
// and values their column rejects, reported by row and column.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "io/CsvExport.h"
#include "io/CsvImport.h"
#include "tests/support/LocaleTestSupport.h"

namespace {

class CsvTest : public test_support::UsLocaleTest {};

std::string Shown(const DataMgmt& doc, size_t nItem, int nColumn) {
  return doc.GetTextRepresentation(*doc.GetDataItemMgr().GetAt(nItem), 5000 + nColumn, true).GetStdString();
}

TEST_F(CsvTest, ExportQuotesWhatNeedsQuotesAndKeepsPassingItems) {
  DataMgmt doc;
  for (DataType::Type nType : {DataType::Text, DataType::Number, DataType::Text}) {
    auto* pProp = new DataProp;
    pProp->SetDataType(nType);
    pProp->SetName(nType == DataType::Number ? "Year" : "Title");
    doc.AddDataProp(pProp, true, false, false, false);
  }
  doc.GetDataPropMgr().GetByID(5002)->SetDisplayed(false);
  const char* const rows[][2] = {{"Dune, the novel", "1965"}, {"Say \"hi\"", "0"}, {"Two\nlines", "1937"}};
  for (const auto& row : rows) {
    DataItem& item = *doc.CreateDataItem(nullptr, true, true);
    CString normalized;
    doc.EnterValue(item, 5000, row[0], normalized);
    doc.EnterValue(item, 5001, row[1], normalized);
  }
  DataFilterMgr filters;
  EXPECT_EQ(CsvExport::Write(doc, filters),
            "Title,Year\r\n\"Dune, the novel\",\"1,965\"\r\n\"Say \"\"hi\"\"\",\r\n\"Two\nlines\",\"1,937\"\r\n");
  auto* pFilter = new DataFilter;
  pFilter->SetDataPropID(5001);
  pFilter->SetDataType(DataType::Number);
  pFilter->SetFilterType(DataFilter::IsGreaterThan);
  pFilter->SetValue(CString("1950"));
  filters.Add(pFilter, true);
  EXPECT_EQ(CsvExport::Write(doc, filters), "Title,Year\r\n\"Dune, the novel\",\"1,965\"\r\n");
}

TEST_F(CsvTest, ImportReadsQuotedFieldsAndLineBreaks) {
  DataMgmt doc;
  CsvImport import;
  CString error;
  ASSERT_TRUE(
      import.Read("Title,Notes,Year\r\n\"Dune, the novel\",\"Line one\nline two\",1965\r\n"
                  "\"Say \"\"hi\"\"\",,\"1937\"\n",
                  doc, error))
      << error;
  ASSERT_EQ(doc.GetDataItemMgr().GetCount(), 2u);
  EXPECT_EQ(Shown(doc, 0, 0), "Dune, the novel");
  EXPECT_EQ(Shown(doc, 0, 1), "Line one\nline two");
  EXPECT_EQ(Shown(doc, 0, 2), "1965");
  EXPECT_EQ(Shown(doc, 1, 0), "Say \"hi\"");
  EXPECT_EQ(Shown(doc, 1, 1), "");
  EXPECT_EQ(doc.GetDataPropMgr().GetByID(5002)->GetDataType(), DataType::Number);
}

TEST_F(CsvTest, TypesAreInferredFromTheValues) {
  const struct {
    std::vector<CString> values;
    DataType::Type nType;
  } rows[] = {
      {{"yes", "No", "", "TRUE", "n"}, DataType::YesNo},
      {{"1", "0", "1"}, DataType::Number},
      {{"1965", "-3", "1,234"}, DataType::Number},
      {{"3000000000"}, DataType::Decimal},
      {{"1.5", "2", ""}, DataType::Decimal},
      {{"2011-05-01", "5/1/2011", "May 1, 2011"}, DataType::Date},
      {{"2011-05-01", "soon"}, DataType::Text},
      {{"12,34"}, DataType::Text},
      {{"", " "}, DataType::Text},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CsvImport::InferType(row.values), row.nType) << row.values[0];
  }
}

TEST_F(CsvTest, RejectedValuesFailTheImportUnlessSkipped) {
  const std::string csv = "Title,Bought\r\nDune,2011-05-01\r\nEmma,soon\r\nIvanhoe,,extra\r\n";
  for (bool bSkipBad : {false, true}) {
    DataMgmt doc;
    CsvImport import;
    import.SetType("bought", DataType::Date);
    import.SetSkipBad(bSkipBad);
    CString error;
    EXPECT_EQ(import.Read(csv, doc, error), bSkipBad) << error;
    const auto& rejections = import.GetRejections();
    ASSERT_EQ(rejections.size(), 2u);
    EXPECT_EQ(rejections[0].nRow, 3u);
    EXPECT_EQ(rejections[0].nColumn, 2u);
    EXPECT_EQ(rejections[0].columnName, "Bought");
    EXPECT_EQ(rejections[0].text, "soon");
    EXPECT_EQ(rejections[0].reason, "not accepted as Date");
    EXPECT_EQ(rejections[1].nRow, 4u);
    EXPECT_EQ(rejections[1].nColumn, 3u);
    EXPECT_EQ(rejections[1].reason, "the heading has no column here");
    EXPECT_EQ(doc.GetDataItemMgr().GetCount(), bSkipBad ? 3u : 0u);
    EXPECT_EQ(error.GetStdString(), bSkipBad ? "" : "2 values were rejected");
  }
}

TEST_F(CsvTest, InputThatCannotBeImportedIsReported) {
  const struct {
    std::string csv;
    const char* pszType;  // given for the column Year
    std::string error;
  } rows[] = {
      {"", nullptr, "no heading: the CSV is empty"},
      {"Title,Year\r\n\"Dune\"x,1965\r\n", nullptr, "not CSV: a double quote out of place at line 2"},
      {"Title,Year\r\n\"Dune,1965\r\n", nullptr, "not CSV: a quoted field is not closed"},
      {"Title\r\nDune\r\n", "Number", "no column \"Year\" in the heading"},
      {"Title,Year\r\nDune,1965\r\n", "Icon", "the type of \"Year\" holds no values"},
  };
  for (const auto& row : rows) {
    DataMgmt doc;
    CsvImport import;
    DataType::Type nType = DataType::Text;
    if (row.pszType != nullptr) {
      nType = row.pszType == std::string("Icon") ? DataType::Icon : DataType::Number;
      import.SetType("Year", nType);
    }
    CString error;
    EXPECT_FALSE(import.Read(row.csv, doc, error)) << row.csv;
    EXPECT_EQ(error.GetStdString(), row.error) << row.csv;
    EXPECT_EQ(doc.GetDataPropMgr().GetUserCount(), 0u) << row.csv;
  }
}

}  // namespace
