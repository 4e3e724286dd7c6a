// Text and XML export: files written to a temporary folder and read back
// whole, byte for byte.
#include <gtest/gtest.h>

#include <string>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/DataMgr/filter/FilterFixtures.h"
#include "tests/support/LocaleTestSupport.h"
#include "tests/support/TempFolder.h"

namespace {

using document_test::AddColumn;
using document_test::Enter;

// Columns Title, First year (a number shown through its alias, a hidden
// number column with the prefix "#"), Secret (hidden from the user
// interface), Spare (not displayed) and Notes, in that display order.
// Items: Dune, 1965, notes "a" CR LF "b"; Emma & Co, year 0 (shown empty);
// Later, 2001, which the filter "First year < 2000" leaves out.
class DataMgmtExportTest : public test_support::UsLocaleTest {
 protected:
  void SetUp() override {
    UsLocaleTest::SetUp();
    DataProp& yearFormat = AddColumn(m_doc, DataType::Number);
    yearFormat.SetThousandsSep(false);
    yearFormat.SetPrefix("#");
    yearFormat.SetHiddenFromUI(true);
    m_doc.SetAliasDataProp(m_year.GetID(), yearFormat.GetID());
    m_secret.SetHiddenFromUI(true);
    m_spare.SetDisplayed(false);
    const char* names[] = {"Title", "First year", "Secret", "Spare", "Notes"};
    DataProp* columns[] = {&m_title, &m_year, &m_secret, &m_spare, &m_notes};
    for (int i = 0; i < 5; ++i) columns[i]->SetName(names[i]);
    const char* values[][5] = {
        {"Dune", "1965", "s", "p", "a\r\nb"}, {"Emma & Co", "", "s", "p", ""}, {"Later", "2001", "", "", ""}};
    for (const auto& texts : values) {
      DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
      for (int i = 0; i < 5; ++i) {
        if (*texts[i] != '\0') Enter(m_doc, item, *columns[i], texts[i]);
      }
    }
  }

  DataFilterMgr YearBelow(const char* pszYear) const {
    DataFilterMgr filters;
    filters.Add(filter_test::MakeFilter(m_year, DataFilter::IsLessThan, pszYear, filter_test::NONE), true);
    return filters;
  }

  test_support::TempFolder m_folder;
  const std::string m_path = m_folder / "export";
  DataMgmt m_doc;
  DataProp& m_title = AddColumn(m_doc, DataType::Text);
  DataProp& m_year = AddColumn(m_doc, DataType::Number);
  DataProp& m_secret = AddColumn(m_doc, DataType::Text);
  DataProp& m_spare = AddColumn(m_doc, DataType::Text);
  DataProp& m_notes = AddColumn(m_doc, DataType::Text);
};

}  // namespace

// A break in the separator is kept in the heading but becomes a blank in
// the rows, as soon as it is appended.
TEST_F(DataMgmtExportTest, TextFileHasAHeadingAndOneLinePerPassingItem) {
  const struct {
    const char* pszSeparator;
    const char* pszFile;
  } rows[] = {
      {"\t", "Title\tFirst year\tNotes\nDune\t#1965\ta b\nEmma & Co\t\t\n"},
      {"\n", "Title\nFirst year\nNotes\nDune #1965 a b\nEmma & Co  \n"},
      {"", "TitleFirst yearNotes\nDune#1965a b\nEmma & Co\n"},
  };
  for (const auto& row : rows) {
    m_doc.ExportToTextFile(m_path.c_str(), row.pszSeparator, YearBelow("2000"));
    EXPECT_EQ(test_support::ReadRaw(m_path), row.pszFile) << "separator " << row.pszSeparator;
  }
  m_doc.ExportToTextFile(m_path.c_str(), ",", YearBelow("0"));
  EXPECT_EQ(test_support::ReadRaw(m_path), "Title,First year,Notes\n");
}

TEST_F(DataMgmtExportTest, XMLFileListsColumnsHeadingsAndEntries) {
  m_doc.ExportToXMLFile(m_path.c_str(), "My list", YearBelow("2000"));
  EXPECT_EQ(test_support::ReadRaw(m_path),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\"?>\n"
            "<My_list>\n"
            "    <title>My list</title>\n"
            "    <cols>\n"
            "        <Title/>\n"
            "        <First_year/>\n"
            "        <Notes/>\n"
            "    </cols>\n"
            "    <headings>\n"
            "        <entry>\n"
            "            <Title>Title</Title>\n"
            "            <First_year>First year</First_year>\n"
            "            <Notes>Notes</Notes>\n"
            "        </entry>\n"
            "    </headings>\n"
            "    <entries>\n"
            "        <entry>\n"
            "            <Title>Dune</Title>\n"
            "            <First_year>#1965</First_year>\n"
            "            <Notes>a b</Notes>\n"
            "        </entry>\n"
            "        <entry>\n"
            "            <Title>Emma &amp; Co</Title>\n"
            "            <First_year></First_year>\n"
            "            <Notes></Notes>\n"
            "        </entry>\n"
            "    </entries>\n"
            "</My_list>\n");
  // An empty root name gives no root line and no title, and an empty tag.
  m_doc.ExportToXMLFile(m_path.c_str(), "", YearBelow("0"));
  const std::string file = test_support::ReadRaw(m_path);
  EXPECT_EQ(file.substr(file.find('\n') + 1, 11), "    <cols>\n");
  EXPECT_EQ(file.substr(file.size() - 4), "</>\n");
}
