// The project's end-to-end check: a host builds a document with a column of
// every data type, enters a value into each as text, reads it back as text,
// saves the document to a file, loads it into a fresh document and finds
// every cell rendered as before.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "framework/CArchive.h"
#include "framework/CFile.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/support/LocaleTestSupport.h"
#include "tests/support/TempFolder.h"

namespace {

using document_test::AddColumn;
using document_test::Shown;

struct Cell {
  DataType::Type nType;
  const char* pszTyped;
  std::string shown;  // what the cell shows afterwards (US conventions)
  // Entries a select-from-list column offers before anything is typed.
  std::vector<const char*> offered;
};

class DocumentEndToEndTest : public test_support::UsLocaleTest {
 protected:
  void SaveTo(DataMgmt& doc, const std::string& path) {
    CFile file;
    ASSERT_TRUE(file.Open(path.c_str(), CFile::modeCreate | CFile::modeWrite));
    CArchive ar(&file, CArchive::store);
    doc.Serialize(ar);
    ar.Close();
  }
  void LoadFrom(DataMgmt& doc, const std::string& path) {
    CFile file;
    ASSERT_TRUE(file.Open(path.c_str(), CFile::modeRead));
    CArchive ar(&file, CArchive::load);
    doc.Serialize(ar);
  }

  test_support::TempFolder m_folder;
};

TEST_F(DocumentEndToEndTest, EveryDataTypeEnteredShownSavedAndLoaded) {
  const std::string photo = m_folder / "photo.jpg";
  const std::string data = m_folder / "data.csv";
  test_support::WriteRaw(photo, "jpg");
  test_support::WriteRaw(data, "a,b");
  const std::vector<Cell> cells = {
      {DataType::YesNo, "yes", "Y", {}},
      {DataType::Number, "1234", "1,234", {}},
      {DataType::Duration, "1:30", "1:30", {}},  // minutes and seconds
      {DataType::Decimal, "2.5", "2.50", {}},
      {DataType::Date, "2011-05-01", "5/1/2011", {}},
      {DataType::Time, "13:05", "1:05 PM", {}},
      {DataType::Text, "  hello ", "hello", {}},
      {DataType::PhotoFilePath, photo.c_str(), photo, {}},
      {DataType::DirectoryPath, "/no/such/folder/", "/no/such/folder/", {}},
      {DataType::EmailAddress, "ann@example.com", "ann@example.com", {}},
      {DataType::WebSiteAddress, "www.example.com", "http://www.example.com", {}},
      {DataType::Password, "secret", "secret", {}},
      {DataType::LargeText, "a long text", "a long text", {}},
      {DataType::NumberListSuggested, "7", "7", {}},
      {DataType::ValueListSuggested, "red", "red", {}},
      {DataType::NumberListSelect, "3", "3", {"1", "3"}},
      {DataType::ValueListSelect, "blue", "blue", {"blue", "green"}},
      {DataType::AddressBookSuggested, "Ann", "Ann", {}},
      {DataType::AddressBookSelect, "bob", "Bob", {"Bob"}},
      {DataType::DescValueListSuggested, "small", "small", {}},
      {DataType::DescValueListSelect, "large", "large", {"large"}},
      {DataType::DataFilePath, data.c_str(), data, {}},
      {DataType::DecimalListSuggested, "1.25", "1.25", {}},
      {DataType::DecimalListSelect, "0.50", "0.50", {"0.50"}},
      {DataType::Monetary, "1234.5", "1,234.50", {}},
      {DataType::NumberWithText, "Vol. 3", "Vol. 3", {}},
      {DataType::NumberWithRomanOrText, "Part IV", "Part IV", {}},
      {DataType::EmbeddedThumbnail, "x", "", {}},
      {DataType::Icon, "x", "", {}},
  };

  DataMgmt doc;
  std::vector<int> columns;
  for (const Cell& cell : cells) {
    DataProp& prop = AddColumn(doc, cell.nType);
    prop.SetTimeShowSeconds(cell.nType == DataType::Duration);
    for (const char* pszEntry : cell.offered) {
      if (cell.nType == DataType::AddressBookSelect) {
        prop.GetAddressByName(pszEntry, true);
      } else {
        prop.GetListItemByValue(pszEntry, true);
      }
    }
    columns.push_back(prop.GetID());
  }
  DataItem& item = *doc.CreateDataItem(nullptr, true, true);
  for (size_t i = 0; i < cells.size(); ++i) {
    bool bRedisplay = false;
    const bool bHoldsValues = cells[i].nType != DataType::EmbeddedThumbnail && cells[i].nType != DataType::Icon;
    EXPECT_EQ(doc.SetData(item, columns[i], cells[i].pszTyped, bRedisplay, true), bHoldsValues) << cells[i].pszTyped;
    EXPECT_EQ(Shown(doc, item, *doc.GetDataPropMgr().GetByID(columns[i])), cells[i].shown) << cells[i].pszTyped;
  }

  const std::string path = m_folder / "document.dat";
  SaveTo(doc, path);
  DataMgmt loaded;
  LoadFrom(loaded, path);
  ASSERT_EQ(loaded.GetDataItemMgr().GetCount(), 1u);
  const DataItem& loadedItem = *loaded.GetDataItemMgr().GetAt(0);
  for (size_t i = 0; i < cells.size(); ++i) {
    const DataProp* pLoaded = loaded.GetDataPropMgr().GetByID(columns[i]);
    ASSERT_NE(pLoaded, nullptr) << cells[i].pszTyped;
    EXPECT_EQ(Shown(loaded, loadedItem, *pLoaded), cells[i].shown) << cells[i].pszTyped;
  }
}

}  // namespace
