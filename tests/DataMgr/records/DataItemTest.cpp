#include "DataMgr/records/DataItem.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "tests/DataMgr/records/RecordFixtures.h"
#include "tests/support/ArchiveTestSupport.h"

using records_test::IntHistory;
using records_test::IntOf;
using records_test::OLD_DAY;
using records_test::OLD_SECONDS;
using test_support::ByteWriter;
using test_support::Bytes;

namespace {

const DateTime OLD_TIME = DateTime::FromJulian(OLD_DAY, OLD_SECONDS);

DateTime Now() {
  DateTime now;
  now.SetToCurrent();
  return now;
}

DateTime LastModified(const DataItem& item) {
  DateTime time;
  item.GetLastModified(time);
  return time;
}

// An item loaded from an archive: ID nID, modified at the old moment, int
// column 1 holding nValue, and sub-items with the given IDs and parent nID.
void LoadItem(DataItem& item, int nID, int nValue, const std::vector<int>& subItemIDs) {
  ByteWriter w;
  records_test::Item(w, nID, 1, nValue, subItemIDs.size(), [&](ByteWriter& sub) {
    for (int nSubID : subItemIDs) records_test::SubItem(sub, nSubID, nID, 1, nSubID * 10);
  });
  test_support::LoadAll(w.Get(), item);
}

// ID 4, modified at the old moment, column 1 holding 20, two sub-items;
// column 2 edited before the load (history [-1], kept by the load); the
// first sub-item with a history of its own.
void LoadSource(DataItem& source) {
  source.SetData(2, 7, true);
  LoadItem(source, 4, 20, {0, 1});
  source.GetSubItemsMgr().GetAt(0)->SetData(1, 99, true);
}

// ID 9, modified now, column 3 edited (history [-1]), one sub-item.
void MakeTarget(DataItem& target) {
  target.SetID(9);
  target.SetData(3, 1, true);
  target.GetSubItemsMgr().Create(nullptr, true, true);
}

}  // namespace

TEST(DataItemTest, FreshItemIsEmptyAndModifiedNow) {
  const DateTime before = Now();
  const DataItem item;
  const DateTime after = Now();
  EXPECT_EQ(item.GetID(), -1);
  std::vector<int> ids;
  item.GetSupportedDataProps(ids);
  EXPECT_TRUE(ids.empty());
  EXPECT_TRUE(item.GetSubItemsMgr().IsEmpty());
  EXPECT_FALSE(LastModified(item) < before);
  EXPECT_FALSE(after < LastModified(item));
}

TEST(DataItemTest, OnlyAnUndoableChangeStampsTheTime) {
  DataItem item;
  LoadItem(item, 1, 5, {});
  EXPECT_EQ(LastModified(item), OLD_TIME);
  EXPECT_TRUE(item.SetData(1, 6, false));
  EXPECT_FALSE(item.SetData(1, 6, true));
  item.RegisterDataProp(2, 0.5);
  EXPECT_EQ(LastModified(item), OLD_TIME);
  const DateTime before = Now();
  Data& record = item;
  EXPECT_TRUE(record.SetData(3, "text", true));
  EXPECT_FALSE(LastModified(item) < before);
}

TEST(DataItemTest, EveryKindStampsTheTimeOnAnUndoableChangeOnly) {
  // Each sets column 2 to the n-th value of one kind (n = 1, 2 differ from
  // each other and from the kind's absent value).
  const std::vector<std::function<bool(Data&, int, bool)>> setters = {
      [](Data& r, int n, bool b) { return r.SetData(2, n == 1, b); },
      [](Data& r, int n, bool b) { return r.SetData(2, n, b); },
      [](Data& r, int n, bool b) { return r.SetData(2, n * 0.5, b); },
      [](Data& r, int n, bool b) { return r.SetData(2, Money(n), b); },
      [](Data& r, int n, bool b) { return r.SetData(2, DateTime::FromJulian(OLD_DAY + n, 0), b); },
      [](Data& r, int n, bool b) { return r.SetData(2, CString(n == 1 ? "one" : "two"), b); },
  };
  for (size_t i = 0; i < setters.size(); ++i) {
    SCOPED_TRACE(i);
    DataItem item;
    LoadItem(item, 1, 5, {});
    EXPECT_TRUE(setters[i](item, 1, false));
    EXPECT_EQ(LastModified(item), OLD_TIME);
    const DateTime before = Now();
    EXPECT_TRUE(setters[i](item, 2, true));
    EXPECT_FALSE(LastModified(item) < before);
  }
}

TEST(DataItemTest, ConstructedCopiesTakeEverything) {
  DataItem source;
  LoadItem(source, 4, 0, {0, 1});
  source.SetData(1, 10, true);
  const DataItem copy(source);
  DataItem moving(source);
  const DataItem moved(std::move(moving));
  for (const DataItem* pItem : {&copy, &moved}) {
    EXPECT_EQ(pItem->GetID(), 4);
    EXPECT_EQ(IntOf(*pItem, 1), 10);
    EXPECT_EQ(IntHistory(*pItem, 1), std::vector<int>{0});
    EXPECT_EQ(LastModified(*pItem), LastModified(source));
    const DataSubItemMgr& subItems = pItem->GetSubItemsMgr();
    ASSERT_EQ(subItems.GetCount(), 2u);
    EXPECT_NE(subItems.GetAt(1), source.GetSubItemsMgr().GetAt(1));
    EXPECT_EQ(subItems.GetAt(1)->GetID(), 1);
    EXPECT_EQ(IntOf(*subItems.GetAt(1), 1), 10);
  }
}

TEST(DataItemTest, AssignmentKeepsTheIDAndOnlyTheMoveTakesTheHistory) {
  DataItem source;
  LoadSource(source);
  DataItem copied;
  MakeTarget(copied);
  copied = source;
  EXPECT_EQ(copied.GetID(), 9);
  EXPECT_EQ(IntOf(copied, 1), 20);
  EXPECT_FALSE(copied.HaveDataProp(3));
  EXPECT_EQ(LastModified(copied), OLD_TIME);
  EXPECT_FALSE(copied.HaveUndoData(2));
  EXPECT_EQ(IntHistory(copied, 3), std::vector<int>{-1});
  const DataSubItemMgr& subItems = copied.GetSubItemsMgr();
  ASSERT_EQ(subItems.GetCount(), 2u);
  EXPECT_NE(subItems.GetAt(0), source.GetSubItemsMgr().GetAt(0));
  EXPECT_EQ(subItems.GetAt(0)->GetParentID(), 4);
  EXPECT_EQ(IntOf(*subItems.GetAt(0), 1), 99);
  EXPECT_FALSE(subItems.GetAt(0)->HaveUndoData(1));

  DataItem moved;
  MakeTarget(moved);
  moved = std::move(source);
  EXPECT_EQ(moved.GetID(), 9);
  EXPECT_EQ(IntOf(moved, 1), 20);
  EXPECT_EQ(LastModified(moved), OLD_TIME);
  EXPECT_EQ(IntHistory(moved, 2), std::vector<int>{-1});
  EXPECT_FALSE(moved.HaveUndoData(3));
  EXPECT_EQ(moved.GetSubItemsMgr().GetCount(), 2u);
}

TEST(DataItemTest, EqualityIgnoresIDsTimesHistoriesAndSubItems) {
  DataItem a;
  LoadItem(a, 1, 5, {0, 1});
  DataItem b;
  b.SetID(2);
  b.SetData(1, 5, true);
  EXPECT_TRUE(a == b);
  b.SetData(1, 6, true);
  EXPECT_FALSE(a == b);
}

TEST(DataItemTest, DeletingAColumnReachesTheSubItems) {
  DataItem item;
  LoadItem(item, 1, 5, {0, 1});
  item.RegisterDataProp(2, CString("t"), false);
  DataSubItem* pSubItem = item.GetSubItemsMgr().GetAt(1);
  pSubItem->RegisterDataProp(2, CString("s"), false);

  item.DeleteDataBool(1);
  item.DeleteDataString(1);
  EXPECT_TRUE(pSubItem->HaveDataProp(1));
  item.DeleteDataInt(1);
  EXPECT_FALSE(item.HaveDataProp(1));
  EXPECT_FALSE(pSubItem->HaveDataProp(1));
  EXPECT_FALSE(item.GetSubItemsMgr().GetAt(0)->HaveDataProp(1));

  Data& record = item;
  record.DeleteData(2);
  EXPECT_FALSE(item.HaveDataProp(2));
  EXPECT_FALSE(pSubItem->HaveDataProp(2));
}

TEST(DataItemTest, DeletingOneKindReachesThatKindOfTheSubItems) {
  using DeleteKind = void (DataItem::*)(int);
  using HaveKind = bool (Data::*)(int) const;
  const std::vector<std::pair<DeleteKind, HaveKind>> kinds = {
      {&DataItem::DeleteDataBool, &Data::HaveDataPropBool},
      {&DataItem::DeleteDataInt, &Data::HaveDataPropInt},
      {&DataItem::DeleteDataDouble, &Data::HaveDataPropDouble},
      {&DataItem::DeleteDataMoney, &Data::HaveDataPropMoney},
      {&DataItem::DeleteDataDateTime, &Data::HaveDataPropDateTime},
      {&DataItem::DeleteDataString, &Data::HaveDataPropString},
  };
  // Column 2 held in every kind, which the store allows.
  const auto fillEveryKind = [](Data& record) {
    record.RegisterDataProp(2, true);
    record.RegisterDataProp(2, 1);
    record.RegisterDataProp(2, 0.5);
    record.RegisterDataProp(2, Money(1));
    record.RegisterDataProp(2, DateTime::FromJulian(OLD_DAY, 0));
    record.RegisterDataProp(2, CString("t"), false);
  };
  for (size_t i = 0; i < kinds.size(); ++i) {
    SCOPED_TRACE(i);
    DataItem item;
    LoadItem(item, 1, 5, {0});
    const Data& subItem = *item.GetSubItemsMgr().GetAt(0);
    fillEveryKind(item);
    fillEveryKind(*item.GetSubItemsMgr().GetAt(0));
    (item.*kinds[i].first)(2);
    for (size_t k = 0; k < kinds.size(); ++k) {
      EXPECT_EQ((item.*kinds[k].second)(2), k != i) << k;
      EXPECT_EQ((subItem.*kinds[k].second)(2), k != i) << k;
    }
  }
}

TEST(DataItemTest, ChangingColumnIDsTouchesTheItemOnly) {
  DataItem item;
  LoadItem(item, 1, 5, {0});
  item.ChangeDataPropIDInt(1, 2);
  EXPECT_EQ(IntOf(item, 2), 5);
  EXPECT_EQ(IntOf(item, 1), 5);
  EXPECT_FALSE(item.GetSubItemsMgr().GetAt(0)->HaveDataProp(2));
}

TEST(DataItemTest, ClearingTheHistory) {
  DataItem item;
  item.SetData(1, 3, true);
  item.ClearUndoData();
  EXPECT_FALSE(item.HaveUndoData(1));
  EXPECT_EQ(IntOf(item, 1), 3);
}

TEST(DataItemTest, CurrentArchiveByteForByte) {
  ByteWriter w;
  records_test::Item(w, 7, 5000, 42, 1, [](ByteWriter& sub) { records_test::SubItem(sub, 0, 7, 5001, 3); });
  DataItem item;
  LoadItem(item, 7, 42, {});
  item.SetData(5000, 42, false);
  item.ChangeDataPropIDInt(1, 5000);
  item.DeleteDataInt(1);
  DataSubItem* pSubItem = item.GetSubItemsMgr().Create(nullptr, true, true);
  pSubItem->SetParentID(7);
  pSubItem->RegisterDataProp(5001, 3);
  test_support::ExpectArchiveForm(item, w.Get());
}

TEST(DataItemTest, EveryVersionReadsTheSameFieldsAndKeepsTheHistory) {
  ByteWriter w;
  records_test::Item(w, 2, 1, 8);
  Bytes bytes = w.Get();
  bytes[0] = 1;
  DataItem item;
  item.SetData(1, 4, true);
  test_support::LoadAll(bytes, item);
  EXPECT_EQ(item.GetID(), 2);
  EXPECT_EQ(IntOf(item, 1), 8);
  EXPECT_EQ(LastModified(item), OLD_TIME);
  EXPECT_EQ(IntHistory(item, 1), std::vector<int>{-1});
}
