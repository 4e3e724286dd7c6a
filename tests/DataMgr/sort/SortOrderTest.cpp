#include "DataMgr/sort/SortOrder.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/DataMgr/sort/SortArchiveWriter.h"
#include "tests/support/ArchiveTestSupport.h"

using sort_test::Keys;
using test_support::ByteWriter;

namespace {

// Keys 1 ascending, 2 descending, 3 ascending and case-sensitive.
SortOrder ThreeKeys() {
  SortOrder order;
  order.SetName("Three");
  order.AddDataPropID(1, true, false);
  order.AddDataPropID(2, false, false);
  order.AddDataPropID(3, true, true);
  return order;
}

}  // namespace

TEST(SortOrderTest, KeyEditsFollowTheirEdgeRules) {
  const struct {
    const char* pszEdit;
    std::function<bool(SortOrder&)> edit;
    bool bResult;
    const char* pszKeys;
  } rows[] = {
      {"to top", [](SortOrder& o) { o.AddDataPropIDToTop(4, true, false); return true; }, true, "4+ 1+ 2- 3+c"},
      {"add twice", [](SortOrder& o) { o.AddDataPropID(2, true, false); return true; }, true, "1+ 2- 3+c 2+"},
      {"insert present", [](SortOrder& o) { o.InsertDataPropIDAt(0, 2, true, true); return true; }, true,
       "1+ 2- 3+c"},
      {"insert", [](SortOrder& o) { o.InsertDataPropIDAt(1, 4, false, true); return true; }, true, "1+ 4-c 2- 3+c"},
      {"insert past end", [](SortOrder& o) { o.InsertDataPropIDAt(9, 4, true, false); return true; }, true,
       "1+ 2- 3+c 4+"},
      {"set", [](SortOrder& o) { o.SetDataPropIDAt(1, 5, true, true); return true; }, true, "1+ 5+c 3+c"},
      {"set past end", [](SortOrder& o) { o.SetDataPropIDAt(3, 5, true, false); return true; }, true,
       "1+ 2- 3+c 5+"},
      {"remove column", [](SortOrder& o) { return o.RemoveDataPropID(2); }, true, "1+ 3+c"},
      {"remove absent column", [](SortOrder& o) { return o.RemoveDataPropID(7); }, false, "1+ 2- 3+c"},
      {"remove at", [](SortOrder& o) { return o.RemoveDataPropAt(0); }, true, "2- 3+c"},
      {"remove past end", [](SortOrder& o) { return o.RemoveDataPropAt(3); }, false, "1+ 2- 3+c"},
      {"swap", [](SortOrder& o) { o.Swap(0, 2); return true; }, true, "3+c 2- 1+"},
      {"swap in place out of range", [](SortOrder& o) { o.Swap(5, 5); return true; }, true, "1+ 2- 3+c"},
      {"remove all", [](SortOrder& o) { o.RemoveAllDataProps(); return !o.HaveDataProps(); }, true, ""},
  };
  for (const auto& row : rows) {
    SortOrder order = ThreeKeys();
    EXPECT_EQ(row.edit(order), row.bResult) << row.pszEdit;
    EXPECT_EQ(Keys(order), row.pszKeys) << row.pszEdit;
  }
}

TEST(SortOrderTest, OutOfRangeReadsAndSwaps) {
  SortOrder order = ThreeKeys();
  bool bAscending = true;
  bool bCaseSensitive = true;
  EXPECT_EQ(order.GetDataPropIDAt(3, bAscending, bCaseSensitive), -1);
  EXPECT_FALSE(bAscending || bCaseSensitive);
  bAscending = bCaseSensitive = true;
  EXPECT_EQ(order.FindDataPropID(7, bAscending, bCaseSensitive), 3u);
  EXPECT_TRUE(bAscending && bCaseSensitive);
  EXPECT_EQ(order.FindDataPropID(2, bAscending, bCaseSensitive), 1u);
  EXPECT_FALSE(bAscending || bCaseSensitive);
  EXPECT_TRUE(order.HaveDataProp({9, 3}));
  EXPECT_FALSE(order.HaveDataProp({9}));
  try {
    order.Swap(0, 3);
    ADD_FAILURE() << "Swap(0, 3) did not throw";
  } catch (const std::out_of_range& e) {
    EXPECT_EQ(std::string(e.what()), "invalid vector<T> subscript");
  }
  EXPECT_EQ(Keys(order), "1+ 2- 3+c");
}

TEST(SortOrderTest, ComparisonsIgnoreTheIDAndCopiesAreDeep) {
  const SortOrder order = ThreeKeys();
  SortOrder copy(order);
  copy.SetID(order.GetID() + 5);
  EXPECT_TRUE(copy == order);
  copy.SetDataPropIDAt(2, 3, true, false);
  EXPECT_FALSE(copy == order);
  EXPECT_EQ(Keys(order), "1+ 2- 3+c");
  copy = order;
  copy.SetName("three");
  EXPECT_FALSE(copy == order);
  EXPECT_TRUE(order < copy);  // "T" before "t"
  SortOrder moved(std::move(copy));
  EXPECT_EQ(Keys(moved), "1+ 2- 3+c");
  EXPECT_FALSE(copy.HaveDataProps());  // NOLINT(bugprone-use-after-move): the move empties it
}

TEST(SortOrderTest, IsDifferentComparesThreeParallelLists) {
  const SortOrder order = ThreeKeys();
  const struct {
    std::vector<int> ids;
    std::vector<bool> ascending;
    std::vector<bool> caseSensitive;
    bool bDifferent;
  } rows[] = {
      {{1, 2, 3}, {true, false, true}, {false, false, true}, false},
      {{1, 2, 4}, {true, false, true}, {false, false, true}, true},
      {{1, 2, 3}, {true, true, true}, {false, false, true}, true},
      {{1, 2, 3}, {true, false, true}, {false, false, false}, true},
      {{1, 2, 3}, {true, false}, {false, false, true}, true},
      {{1, 2}, {true, false}, {false, false}, true},
  };
  for (size_t i = 0; i < std::size(rows); ++i) {
    EXPECT_EQ(order.IsDifferent(rows[i].ids, rows[i].ascending, rows[i].caseSensitive), rows[i].bDifferent)
        << "row " << i;
  }
}

// Version 2 and the current form: see the sort order set's tests.
TEST(SortOrderTest, OlderAndNewerVersionsLoad) {
  ByteWriter version1;
  version1.Word(1).Int(4).Text("Old")  // version, ID, name
      .Counter(2, true).Bool(false).Bool(true)  // ascending flags
      .Counter(3, true).Int(7).Int(8).Int(7);   // column IDs, the third without a flag
  ByteWriter version0;
  sort_test::OrderWithKey(version0, 0, 3, "Zero", 2);
  ByteWriter version9;
  sort_test::OrderWithKey(version9, 9, 6, "Nine", 1);
  const struct {
    const char* pszName;
    test_support::Bytes bytes;
    int nID;
    const char* pszKeys;
  } rows[] = {
      {"version 1", version1.Get(), 4, "7- 8+ 7+"},
      {"version 0", version0.Get(), 3, "2-c"},
      {"version 9", version9.Get(), 6, "1-c"},
  };
  for (const auto& row : rows) {
    SortOrder order = ThreeKeys();
    test_support::LoadAll(row.bytes, order);
    EXPECT_EQ(order.GetID(), row.nID) << row.pszName;
    EXPECT_EQ(Keys(order), row.pszKeys) << row.pszName;
    test_support::ExpectEveryCutThrowsEndOfFile(row.bytes, [](CArchive& ar) { SortOrder().Serialize(ar); });
  }
}
