// Filter sets over the items and sub-items of a document: required and
// optional conditions, conditions met through sub-items, IDs, copies, the
// archive, and the compare value as the document shows it.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "DataMgr/filter/DataFilterMgr.h"
#include "tests/DataMgr/filter/FilterFixtures.h"
#include "tests/support/LocaleTestSupport.h"

using document_test::AddColumn;
using filter_test::FilterRecord;
using filter_test::MakeFilter;
using filter_test::NONE;
using filter_test::OPTIONAL;
using filter_test::Type;
using test_support::ByteWriter;
using test_support::Loaded;

namespace {

class DataFilterMgrTest : public test_support::UsLocaleTest {
 protected:
  DataFilter* Equals(const char* pszValue, int nFlags = NONE) {
    return MakeFilter(m_number, DataFilter::IsExactlyEqualTo, pszValue, nFlags);
  }
  DataSubItem& AddSubItem(std::vector<int> columns) {
    return *m_doc.CreateDataSubItem(m_item, columns, nullptr, true, true);
  }

  DataMgmt m_doc;
  DataItem& m_item = *m_doc.CreateDataItem(nullptr, true, true);  // holds no column
  DataProp& m_number = AddColumn(m_doc, DataType::Number);
  DataProp& m_text = AddColumn(m_doc, DataType::Text);
};

}  // namespace

// Each token is a filter on the number 5: R required, O optional, X on
// column -1; + passes, - fails.
TEST_F(DataFilterMgrTest, RequiredFiltersAndOneOptionalFilterMustPass) {
  const struct {
    const char* pszFilters;
    bool bPasses;
  } rows[] = {{"", true},       {"X-", true},       {"X- X-", true},  {"R+ R+", true},
              {"R+ R-", false}, {"O- O+", true},    {"O- O-", false}, {"R- O+", false},
              {"R+ O-", false}, {"R+ O- O+", true}, {"X- R+", true},  {"X- O- X+", false}};
  DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
  Type(m_doc, item, m_number, "5");
  DataSubItem& sub = AddSubItem({m_number.GetID()});
  Type(m_doc, sub, m_number, "5");
  for (const auto& row : rows) {
    DataFilterMgr set;
    std::istringstream tokens(row.pszFilters);
    for (std::string token; tokens >> token;) {
      DataFilter* pFilter = Equals(token[1] == '+' ? "5" : "6", token[0] == 'O' ? OPTIONAL : NONE);
      if (token[0] == 'X') pFilter->SetDataPropID(-1);
      set.Add(pFilter, true);
    }
    EXPECT_EQ(set.PassesFilters(item), row.bPasses) << row.pszFilters;
    EXPECT_EQ(set.PassesFilters(sub, false), row.bPasses) << row.pszFilters;
  }
}

TEST_F(DataFilterMgrTest, AnItemPassesEachConditionThroughAnyOfItsSubItems) {
  DataFilterMgr set;
  set.Add(Equals("1"), true);
  set.Add(MakeFilter(m_text, DataFilter::Contains, "x", NONE), true);
  EXPECT_FALSE(set.PassesFilters(m_item));
  DataSubItem& first = AddSubItem({m_number.GetID(), m_text.GetID()});
  DataSubItem& second = AddSubItem({m_number.GetID(), m_text.GetID()});
  Type(m_doc, first, m_number, "1");
  Type(m_doc, second, m_text, "x");
  EXPECT_FALSE(set.PassesFilters(first, false) || set.PassesFilters(second, false));
  EXPECT_TRUE(set.PassesFilters(m_item));
  Type(m_doc, m_item, m_number, "9");  // the item's own value rules out its sub-items
  EXPECT_FALSE(set.PassesFilters(m_item));
}

// A condition whose column keeps no testable value fails a sub-item that
// holds that column outright; an item only fails that one condition.
TEST_F(DataFilterMgrTest, SubItemsLackingAColumnAndUntestableColumns) {
  DataSubItem& sub = AddSubItem({m_number.GetID()});
  DataFilterMgr lacking;
  lacking.Add(MakeFilter(m_text, DataFilter::HasAnyData, "", NONE), true);
  lacking.GetAt(0)->SetDataType(DataType::EmbeddedThumbnail);  // untestable, but not held
  EXPECT_TRUE(lacking.PassesFilters(sub, true));
  EXPECT_FALSE(lacking.PassesFilters(sub, false));
  DataFilterMgr untestable;
  untestable.Add(Equals("0", OPTIONAL), true);
  untestable.Add(Equals("0", OPTIONAL), true);
  untestable.GetAt(1)->SetDataType(DataType::EmbeddedThumbnail);
  EXPECT_FALSE(untestable.PassesFilters(sub, true));
  EXPECT_TRUE(untestable.PassesFilters(m_item));
}

// Copies are deep and keep the next ID.
TEST_F(DataFilterMgrTest, IdsCopiesAndRemovals) {
  DataFilterMgr set;
  for (int i = 0; i < 3; ++i) set.Add(Equals("1"), true);
  set.DeleteAll(false);
  set.Add(Equals("1"), true);
  set.Add(MakeFilter(m_text, DataFilter::Contains, "x", NONE), true);
  DataFilterMgr copy(set);
  set.GetAt(0)->SetValue("2");
  EXPECT_FALSE(*set.GetAt(0) == *copy.GetAt(0));
  set = copy;
  set.Add(Equals("1"), true);
  EXPECT_EQ(set.GetAt(2)->GetID(), 5);
  EXPECT_TRUE(set.RemoveDataProp(m_number.GetID()));
  EXPECT_FALSE(set.RemoveDataProp(m_number.GetID()));
  EXPECT_EQ(set.GetCount(), 1u);
  set.DeleteAll(true);
  set.Add(Equals("1"), true);
  EXPECT_EQ(set.GetAt(0)->GetID(), 0);
}

// Version 1 has a 32-bit filter count.
TEST_F(DataFilterMgrTest, ArchiveOfEveryVersionKeepsTheIds) {
  const FilterRecord first(3, "a");
  const FilterRecord second(7);
  const auto record = [&](unsigned nVersion) {
    ByteWriter bytes;
    bytes.Word(nVersion).Counter(2, nVersion == 1);  // version, filter count
    return second.AppendTo(first.AppendTo(bytes)).Get();
  };
  DataFilterMgr current = Loaded<DataFilterMgr>(record(2));
  test_support::ExpectArchiveForm(current, record(2));
  DataFilterMgr old = Loaded<DataFilterMgr>(record(1));
  EXPECT_EQ(test_support::ToHex(test_support::Stored(old)), test_support::ToHex(record(2)));
  for (DataFilterMgr* pSet : {&current, &old}) {
    pSet->Add(new DataFilter, true);
    EXPECT_EQ(pSet->GetAt(2)->GetID(), 8);
  }
  test_support::ExpectEveryCutThrowsEndOfFile(record(1), [](CArchive& ar) { DataFilterMgr().Serialize(ar); });
}

TEST_F(DataFilterMgrTest, TheCompareValueAsTheDocumentShowsIt) {
  DataProp& list = AddColumn(m_doc, DataType::ValueListSuggested);
  DataProp& book = AddColumn(m_doc, DataType::AddressBookSuggested);
  for (const char* pszEntry : {"red", "blue"}) Type(m_doc, m_item, list, pszEntry);
  Type(m_doc, m_item, book, "Ann");
  DataFilter filter;
  filter.SetValue(std::vector<int>{list.GetListItemByValue("blue")->GetID(), list.GetListItemByValue("red")->GetID()});
  EXPECT_EQ(DataMgmt::GetTextRepresentation(filter, list), "blue");
  filter.SetValue(std::vector<int>{book.GetAddressBook().GetAt(0)->GetID()});
  EXPECT_EQ(DataMgmt::GetTextRepresentation(filter, book), "Ann");
  filter.SetValue(std::vector<int>{999});
  EXPECT_EQ(DataMgmt::GetTextRepresentation(filter, list), "");
  filter.SetValue("as typed");
  EXPECT_EQ(DataMgmt::GetTextRepresentation(filter, list), "");
  EXPECT_EQ(DataMgmt::GetTextRepresentation(filter, m_text), "as typed");
}
