// The fast sort against its definition: several thousand random records
// over every sortable type (values chosen to tie often, texts that differ
// only in case or after eight bytes or hold a NUL byte, dangling entry IDs,
// records without a value, null records, aliases and list order) sorted by
// SortData::DoTheSort and by std::stable_sort with CompareData, under many
// random sort orders. The two orders must agree element by element.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/schema/Address.h"
#include "DataMgr/sort/SortData.h"
#include "tests/DataMgr/document/DocumentFixtures.h"
#include "tests/support/LocaleTestSupport.h"

namespace {

using document_test::AddColumn;

class ExposedSortData : public SortData {
 public:
  using SortData::CompareData;
  using SortData::DoTheSort;
  using SortData::Init;
};

const std::vector<CString> TEXTS = {
    "", "a", "A", "ab", "aB", "b", "B", "abcdefgh", "ABCDEFGHij", "abcdefghik", CString("a\0b", 3),
    CString("A\0c", 3), "Z", "\xe9t\xe9", "Vol. 2", "Vol. 10", "vol. 2", "Part 3", "Part IV", "10", "-3",
    "x%dy 5", "C:\\a\\z.jpg", "C:\\b\\a.jpg", "c:\\A\\img2.JPG", "C:\\a\\img10.jpg", "img1.jpg", "/x/y/", "D:"};
const char* const ENTRY_TEXTS[] = {"b", "B", "a", "10", "9", "2.5", "c", "a"};

class SortEquivalenceTest : public test_support::UsLocaleTest {
 protected:
  // A column of every type that has a name, up to the embedded thumbnail.
  void AddColumns() {
    for (int n = DataType::YesNo; n <= DataType::EmbeddedThumbnail; ++n) {
      const auto nType = static_cast<DataType::Type>(n);
      if (DataType::GetText(nType).IsEmpty()) continue;
      DataProp& prop = AddColumn(m_doc, nType);
      for (const char* pszText : ENTRY_TEXTS) {
        if (ListItem* pEntry = prop.CreateListItem(true, -1)) pEntry->SetTextRepresentation(pszText);
      }
      if (nType == DataType::AddressBookSuggested || nType == DataType::AddressBookSelect) {
        for (const char* pszText : ENTRY_TEXTS) prop.GetAddressBook().GetByName(pszText, true);
      }
      m_columns.push_back(&prop);
      m_firstOfType[nType] = prop.GetID();
    }
    // A value list sorted by list order, and one that takes a number list's
    // entries: its cells then name numeric entries.
    m_columns.push_back(&AddColumn(m_doc, DataType::ValueListSelect));
    m_columns.back()->SetSortValuesByListOrder(true);
    m_columns.push_back(&AddColumn(m_doc, DataType::NumberListSelect));
    m_aliases[m_columns.back()->GetID()] = m_firstOfType[DataType::ValueListSuggested];
    m_aliases[m_firstOfType[DataType::ValueListSelect]] = m_firstOfType[DataType::NumberListSuggested];
  }

  int Pick(int nCount) { return std::uniform_int_distribution<int>(0, nCount - 1)(m_random); }

  void SetRandomValue(Data& record, const DataProp& prop) {
    const int nID = prop.GetID();
    switch (prop.GetDataType()) {
      case DataType::YesNo:
        record.SetData(nID, Pick(2) == 1, false);
        break;
      case DataType::Decimal: {
        const double values[] = {0.0, -0.0, 0.00004, 0.00008, 0.00012, 1.0, -1.0,
                                 std::numeric_limits<double>::quiet_NaN()};
        record.SetData(nID, values[Pick(8)], false);
        break;
      }
      case DataType::Date:
      case DataType::Time:
        record.SetData(nID, DateTime::FromJulian(Pick(4) == 0 ? 0 : 2450000 + Pick(3), Pick(4) - 1), false);
        break;
      case DataType::Monetary: {
        Money value(Pick(5) - 2);
        if (Pick(5) == 0) value.MakeNegative();
        record.SetData(nID, value, false);
        break;
      }
      case DataType::EmbeddedThumbnail:
        break;
      default:
        if (DataType::IsListType(prop.GetDataType())) {  // address books too
          record.SetData(nID, Pick(11) - 1, false);  // entries 0 to 7, dangling 8 and 9, none
        } else if (prop.GetDataType() == DataType::Number || prop.GetDataType() == DataType::Duration) {
          const int values[] = {INT_MIN, -1, 0, 1, 2, INT_MAX};
          record.SetData(nID, values[Pick(6)], false);
        } else {
          CString text = TEXTS[static_cast<size_t>(Pick(static_cast<int>(TEXTS.size())))];
          if (prop.GetDataType() == DataType::Password) text.Remove('\0');  // keys without NUL bytes
          record.SetData(nID, text, false);
        }
    }
    if (Pick(12) == 0) record.DeleteData(nID);
  }

  // Records in creation order, with a null record now and then.
  std::vector<Data*> MakeRecords(int nCount) {
    std::vector<Data*> records;
    for (int i = 0; i < nCount; ++i) {
      DataItem* pItem = m_doc.CreateDataItem(nullptr, true, true);
      for (const DataProp* pProp : m_columns) SetRandomValue(*pItem, *pProp);
      records.push_back(Pick(200) == 0 ? nullptr : pItem);
    }
    return records;
  }

  SortOrder RandomOrder() {
    SortOrder order;
    const int nKeys = 1 + Pick(4);
    for (int k = 0; k < nKeys; ++k) {
      const int nColumn = Pick(static_cast<int>(m_columns.size()) + 1);
      const int nID = nColumn < static_cast<int>(m_columns.size()) ? m_columns[static_cast<size_t>(nColumn)]->GetID()
                                                                     : 99999;
      order.AddDataPropID(nID, Pick(2) == 1, Pick(2) == 1);
    }
    return order;
  }

  DataMgmt m_doc;
  std::vector<DataProp*> m_columns;
  std::map<int, int> m_aliases;
  std::map<DataType::Type, int> m_firstOfType;
  std::mt19937 m_random{20261123};
};

TEST_F(SortEquivalenceTest, FastSortGivesTheOrderOfTheComparator) {
  AddColumns();
  const std::vector<Data*> records = MakeRecords(4000);
  for (int nRound = 0; nRound < 60; ++nRound) {
    const SortOrder order = RandomOrder();
    ExposedSortData sorter;
    sorter.SetDataPropsAliases(m_aliases);
    sorter.SetDirectoriesFirst(nRound % 2 == 0);
    sorter.Init(order, m_doc.GetDataPropMgr());
    const size_t nCount = nRound % 3 == 0 ? records.size() : 16 + static_cast<size_t>(Pick(200));
    std::vector<Data*> expected(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(nCount));
    std::vector<Data*> actual = expected;
    std::stable_sort(expected.begin(), expected.end(),
                     [&sorter](const Data* a, const Data* b) { return sorter.CompareData(a, b); });
    sorter.DoTheSort(actual);
    const auto mismatch = std::mismatch(actual.begin(), actual.end(), expected.begin());
    EXPECT_TRUE(mismatch.first == actual.end())
        << "round " << nRound << ", " << nCount << " records: first difference at "
        << (mismatch.first - actual.begin());
  }
}

}  // namespace
