#include "DataMgr/sort/SortOrderMgr.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/DataMgr/sort/SortArchiveWriter.h"
#include "tests/support/ArchiveTestSupport.h"
#include "tests/support/TextArraySupport.h"

using sort_test::Keys;
using test_support::ByteWriter;

namespace {

// Sort orders with IDs 0, 1, 2 named "A", "B", "C"; A sorts by column 1, B
// by 1 and 2, C by 2.
void Fill(SortOrderMgr& set) {
  const std::vector<std::vector<int>> columns = {{1}, {1, 2}, {2}};
  for (size_t i = 0; i < columns.size(); ++i) {
    SortOrder* pOrder = set.Create(true, nullptr);
    pOrder->SetName(CString(static_cast<char>('A' + i)));
    for (int nColumn : columns[i]) pOrder->AddDataPropID(nColumn, true, false);
  }
}

std::string Names(const SortOrderMgr& set) {
  std::string names;
  for (size_t i = 0; i < set.GetCount(); ++i) {
    names += set.GetAt(i)->GetName().GetStdString() + std::to_string(set.GetAt(i)->GetID());
  }
  return names;
}

}  // namespace

TEST(SortOrderMgrTest, CreateGivesEveryNewOrderTheNextID) {
  SortOrderMgr set;
  Fill(set);
  SortOrder* pLoose = set.Create(false, set.GetAt(1));
  EXPECT_EQ(pLoose->GetID(), 3);
  EXPECT_EQ(Keys(*pLoose), "1+ 2+");
  EXPECT_EQ(set.GetCount(), 3u);
  delete pLoose;
  EXPECT_EQ(set.Create(true, nullptr)->GetID(), 4);
  EXPECT_EQ(set.GetIndexByID(4), 3u);
  EXPECT_EQ(set.GetIndexByID(3), 4u);
  EXPECT_EQ(set.GetByID(3), nullptr);
  set.DeleteAll(true);
  EXPECT_EQ(set.Create(true, nullptr)->GetID(), 0);
}

TEST(SortOrderMgrTest, EditsOfTheSetDestroyWhatTheyDrop) {
  const struct {
    const char* pszEdit;
    void (*edit)(SortOrderMgr&);
    const char* pszNames;
  } rows[] = {
      {"remove column 1", [](SortOrderMgr& s) { EXPECT_TRUE(s.RemoveDataProp(1)); }, "B1C2"},
      {"remove column 7", [](SortOrderMgr& s) { EXPECT_FALSE(s.RemoveDataProp(7)); }, "A0B1C2"},
      {"remove an emptied order", [](SortOrderMgr& s) {
         s.GetAt(2)->RemoveAllDataProps();
         EXPECT_TRUE(s.RemoveDataProp(7));
       }, "A0B1"},
      {"display order 2, 0", [](SortOrderMgr& s) { s.SetDisplayOrder({2, 9, 0, 2}); }, "C2A0"},
      {"empty display order", [](SortOrderMgr& s) { s.SetDisplayOrder({}); }, "A0B1C2"},
      {"delete", [](SortOrderMgr& s) { s.Delete(1); s.Delete(7); }, "A0C2"},
      {"swap", [](SortOrderMgr& s) { s.Swap(0, 2); }, "C2B1A0"},
  };
  for (const auto& row : rows) {
    SortOrderMgr set;
    Fill(set);
    row.edit(set);
    EXPECT_EQ(Names(set), row.pszNames) << row.pszEdit;
  }
  SortOrderMgr set;
  Fill(set);
  EXPECT_THROW(set.Swap(3, 0), std::out_of_range);
  TextArray names;
  set.GetSortOrderNames(names);
  EXPECT_EQ(test_support::Elements(names), (std::vector<std::string>{"A", "B", "C"}));
}

TEST(SortOrderMgrTest, CopiesAreDeep) {
  SortOrderMgr set;
  Fill(set);
  SortOrderMgr copy(set);
  set.GetAt(0)->SetName("X");
  set.RemoveDataProp(2);
  EXPECT_EQ(Names(copy), "A0B1C2");
  EXPECT_EQ(Keys(*copy.GetAt(1)), "1+ 2+");
  EXPECT_EQ(copy.Create(true, nullptr)->GetID(), 3);
}

TEST(SortOrderMgrTest, CurrentArchiveForm) {
  SortOrderMgr set;
  for (const char* pszName : {"P", "Q"}) {
    SortOrder* pOrder = set.Create(true, nullptr);
    pOrder->SetName(pszName);
    pOrder->AddDataPropID(8, false, true);
  }
  ByteWriter expected;
  expected.Word(4)                // version
      .Word(1).Int(2)             // next ID, in NextIDMgr's form
      .Counter(2, false);         // sort order count
  sort_test::OrderWithKey(expected, 3, 0, "P", 8);
  sort_test::OrderWithKey(expected, 3, 1, "Q", 8);
  test_support::ExpectArchiveForm(set, expected.Get(), [](const SortOrderMgr& loaded) {
    EXPECT_EQ(Names(loaded), "P0Q1");
  });
}

// Two sort orders with ID 5 (P and Q) after the next-ID field of each
// version; files before version 4 get Q renumbered.
TEST(SortOrderMgrTest, OldVersionsLoadAndRepairDuplicateIDs) {
  const struct {
    unsigned nVersion;
    bool bBareNextID;
    bool bOldCounter;
    const char* pszNames;
    int nNextID;
  } rows[] = {{1, true, true, "P5Q6", 7},   {2, true, false, "P5Q6", 7}, {3, false, false, "P5Q6", 7},
              {0, false, false, "P5Q6", 7}, {4, false, false, "P5Q5", 6}};
  for (const auto& row : rows) {
    SCOPED_TRACE("version " + std::to_string(row.nVersion));
    ByteWriter bytes;
    bytes.Word(row.nVersion);
    if (row.bBareNextID) {
      bytes.Int(3);  // the last ID handed out
    } else {
      bytes.Word(1).Int(0);  // NextIDMgr: version, next ID
    }
    bytes.Counter(2, row.bOldCounter);
    sort_test::OrderWithKey(bytes, 2, 5, "P", 1);
    sort_test::OrderWithKey(bytes, 3, 5, "Q", 2);
    SortOrderMgr set;
    Fill(set);
    test_support::LoadAll(bytes.Get(), set);
    EXPECT_EQ(Names(set), row.pszNames);
    EXPECT_EQ(Keys(*set.GetAt(1)), "2-c");
    EXPECT_EQ(std::unique_ptr<SortOrder>(set.Create(false, nullptr))->GetID(), row.nNextID);
    test_support::ExpectEveryCutThrowsEndOfFile(bytes.Get(), [](CArchive& ar) { SortOrderMgr().Serialize(ar); });
  }
}
