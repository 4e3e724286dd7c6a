#include "DataMgr/records/DataSubItem.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/DataMgr/records/RecordFixtures.h"
#include "tests/support/ArchiveTestSupport.h"

using records_test::IntHistory;
using records_test::IntOf;
using test_support::ByteWriter;

namespace {

// ID 4, parent 7, column 1 edited 10 -> 20 (history [-1, 10]).
DataSubItem Source() {
  DataSubItem source;
  source.SetID(4);
  source.SetParentID(7);
  source.SetData(1, 10, true);
  source.SetData(1, 20, true);
  return source;
}

// ID 9, parent 1, column 2 edited to 5 (history [-1]).
DataSubItem Target() {
  DataSubItem target;
  target.SetID(9);
  target.SetParentID(1);
  target.SetData(2, 5, true);
  return target;
}

}  // namespace

TEST(DataSubItemTest, FreshSubItemHasNoIDNoParentNoValues) {
  const DataSubItem subItem;
  EXPECT_EQ(subItem.GetID(), -1);
  EXPECT_EQ(subItem.GetParentID(), -1);
  std::vector<int> ids;
  subItem.GetSupportedDataProps(ids);
  EXPECT_TRUE(ids.empty());
}

TEST(DataSubItemTest, ConstructedCopiesTakeTheIDAndOnlyTheMoveTakesTheHistory) {
  const DataSubItem source = Source();
  const DataSubItem copy(source);
  EXPECT_EQ(copy.GetID(), 4);
  EXPECT_EQ(copy.GetParentID(), 7);
  EXPECT_EQ(IntOf(copy, 1), 20);
  EXPECT_FALSE(copy.HaveUndoData(1));

  DataSubItem moving = Source();
  const DataSubItem moved(std::move(moving));
  EXPECT_EQ(moved.GetID(), 4);
  EXPECT_EQ(moved.GetParentID(), 7);
  EXPECT_EQ(IntOf(moved, 1), 20);
  EXPECT_EQ(IntHistory(moved, 1), (std::vector<int>{-1, 10}));
}

TEST(DataSubItemTest, AssignmentKeepsTheIDAndOnlyTheMoveTakesTheHistory) {
  const DataSubItem source = Source();
  DataSubItem copied = Target();
  copied = source;
  EXPECT_EQ(copied.GetID(), 9);
  EXPECT_EQ(copied.GetParentID(), 7);
  EXPECT_EQ(IntOf(copied, 1), 20);
  EXPECT_FALSE(copied.HaveDataProp(2));
  EXPECT_FALSE(copied.HaveUndoData(1));
  EXPECT_EQ(IntHistory(copied, 2), std::vector<int>{-1});

  DataSubItem moved = Target();
  moved = Source();
  EXPECT_EQ(moved.GetID(), 9);
  EXPECT_EQ(moved.GetParentID(), 7);
  EXPECT_EQ(IntHistory(moved, 1), (std::vector<int>{-1, 10}));
  EXPECT_FALSE(moved.HaveUndoData(2));
}

TEST(DataSubItemTest, EqualityLooksAtValuesOnly) {
  DataSubItem a = Source();
  DataSubItem b;
  b.SetData(1, 20, false);
  EXPECT_TRUE(a == b);
  b.RegisterDataProp(3, "x", true);
  a.RegisterDataProp(3, "x", false);
  EXPECT_FALSE(a == b);
}

TEST(DataSubItemTest, TextLiteralsAreStoredAsTexts) {
  DataSubItem subItem;
  Data& record = subItem;
  EXPECT_TRUE(record.SetData(1, "abc", true));
  record.RegisterDataProp(2, "def", false);
  EXPECT_EQ(records_test::ValueOf<CString>(subItem, 1), "abc");
  EXPECT_EQ(records_test::ValueOf<CString>(subItem, 2), "def");
  EXPECT_FALSE(subItem.HaveDataPropBool(1));
  std::vector<CString> history;
  subItem.GetUndoData(1, history);
  EXPECT_EQ(history, std::vector<CString>{CString()});
}

TEST(DataSubItemTest, CurrentArchiveByteForByte) {
  DataSubItem subItem;
  subItem.SetID(3);
  subItem.SetParentID(8);
  subItem.RegisterDataProp(5000, 42);
  ByteWriter w;
  test_support::ExpectArchiveForm(subItem, records_test::SubItem(w, 3, 8, 5000, 42).Get(), [&](const DataSubItem& loaded) {
    EXPECT_EQ(loaded.GetID(), 3);
    EXPECT_EQ(loaded.GetParentID(), 8);
    EXPECT_TRUE(loaded == subItem);
  });
}

TEST(DataSubItemTest, VersionOneLeavesTheParentIDAndTheHistory) {
  ByteWriter w;
  records_test::Values(w.Word(1).Int(6), 5000, 42);
  DataSubItem subItem = Target();
  test_support::LoadAll(w.Get(), subItem);
  EXPECT_EQ(subItem.GetID(), 6);
  EXPECT_EQ(subItem.GetParentID(), 1);
  EXPECT_EQ(IntOf(subItem, 5000), 42);
  EXPECT_FALSE(subItem.HaveDataProp(2));
  EXPECT_TRUE(subItem.HaveUndoData(2));
}
