#include "DataMgr/records/DataSubItem.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/DataMgr/records/RecordFixtures.h"
#include "tests/support/ArchiveTestSupport.h"

using records_test::IntHistory;
using records_test::IntOf;
using test_support::ByteWriter;
using test_support::Bytes;
using test_support::ExpectEveryCutThrowsEndOfFile;
using test_support::Load;
using test_support::Store;
using test_support::ToHex;

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
  CString text;
  subItem.GetData(1, text);
  EXPECT_EQ(text, "abc");
  subItem.GetData(2, text);
  EXPECT_EQ(text, "def");
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
  records_test::SubItem(w, 3, 8, 5000, 42);
  const Bytes bytes = Store([&](CArchive& ar) { subItem.Serialize(ar); });
  EXPECT_EQ(ToHex(bytes), ToHex(w.Get()));

  DataSubItem loaded;
  EXPECT_EQ(Load(bytes, [&](CArchive& ar) { loaded.Serialize(ar); }), 0u);
  EXPECT_EQ(loaded.GetID(), 3);
  EXPECT_EQ(loaded.GetParentID(), 8);
  EXPECT_TRUE(loaded == subItem);
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { loaded.Serialize(ar); })), ToHex(bytes));
  ExpectEveryCutThrowsEndOfFile(bytes, [](CArchive& ar) { DataSubItem().Serialize(ar); });
}

TEST(DataSubItemTest, VersionOneLeavesTheParentIDAndTheHistory) {
  ByteWriter w;
  records_test::Values(w.Word(1).Int(6), 5000, 42);
  DataSubItem subItem = Target();
  EXPECT_EQ(Load(w.Get(), [&](CArchive& ar) { subItem.Serialize(ar); }), 0u);
  EXPECT_EQ(subItem.GetID(), 6);
  EXPECT_EQ(subItem.GetParentID(), 1);
  EXPECT_EQ(IntOf(subItem, 5000), 42);
  EXPECT_FALSE(subItem.HaveDataProp(2));
  EXPECT_TRUE(subItem.HaveUndoData(2));
}
