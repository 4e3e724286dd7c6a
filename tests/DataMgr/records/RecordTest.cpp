// Items and sub-items: the modification time, what copies take and column
// deletions reaching the sub-items. (The archive form of every version: the
// item list's tests.)
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "DataMgr/records/DataItem.h"
#include "tests/DataMgr/records/RecordFixtures.h"

using records_test::IntOf;
using records_test::LastModified;
using records_test::OLD_DAY;
using records_test::OLD_SECONDS;
using test_support::ByteWriter;

namespace {

const DateTime OLD_TIME = DateTime::FromJulian(OLD_DAY, OLD_SECONDS);

DateTime Now() {
  DateTime now;
  now.SetToCurrent();
  return now;
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

// Sources and targets of the copy tests. Item source: ID 4, old time,
// column 1 holding 20, column 2 edited before the load (history [-1], kept
// by it), two sub-items, the first edited to 99, not sorted. Item target: ID 9, column
// 3 edited, one sub-item. Sub-item source: ID 4, parent 7, column 1 edited
// 10 -> 20; target: ID 9, parent 1, column 2 edited.
DataItem ItemSource() {
  DataItem source;
  source.SetData(2, 7, true);
  LoadItem(source, 4, 20, {0, 1});
  source.GetSubItemsMgr().GetAt(0)->SetData(1, 99, true);
  source.GetSubItemsMgr().SetSort(false);
  return source;
}
DataItem ItemTarget() {
  DataItem target;
  target.SetID(9);
  target.SetData(3, 1, true);
  target.GetSubItemsMgr().Create(nullptr, true, true);
  return target;
}
DataSubItem SubItemSource() {
  DataSubItem source;
  source.SetID(4);
  source.SetParentID(7);
  source.SetData(1, 10, true);
  source.SetData(1, 20, true);
  return source;
}
DataSubItem SubItemTarget() {
  DataSubItem target;
  target.SetID(9);
  target.SetParentID(1);
  target.SetData(2, 5, true);
  return target;
}

enum Way { COPY_CONSTRUCTED, MOVE_CONSTRUCTED, COPY_ASSIGNED, MOVE_ASSIGNED };
const char* const WAYS[] = {"copy constructed", "move constructed", "copy assigned", "move assigned"};

template <typename T>
std::unique_ptr<T> Made(Way way, T (*source)(), T (*target)()) {
  T from = source();
  if (way == COPY_CONSTRUCTED) return std::make_unique<T>(static_cast<const T&>(from));
  if (way == MOVE_CONSTRUCTED) return std::make_unique<T>(std::move(from));
  auto made = std::make_unique<T>(target());
  if (way == COPY_ASSIGNED) {
    *made = static_cast<const T&>(from);
  } else {
    *made = std::move(from);
  }
  return made;
}

}  // namespace

// Every kind of value, through the record interface (a text literal too):
// only an undoable change stamps the time; registering never does.
TEST(RecordTest, AnItemIsStampedByUndoableChangesOnly) {
  const DateTime before = Now();
  EXPECT_FALSE(LastModified(DataItem()) < before) << "a fresh item is modified now";
  // Each sets column 2 to the n-th value of one kind (n = 1, 2 differ from
  // each other and from the kind's absent value).
  const std::vector<std::function<bool(Data&, int, bool)>> setters = {
      [](Data& r, int n, bool b) { return r.SetData(2, n == 1, b); },
      [](Data& r, int n, bool b) { return r.SetData(2, n, b); },
      [](Data& r, int n, bool b) { return r.SetData(2, n * 0.5, b); },
      [](Data& r, int n, bool b) { return r.SetData(2, Money(n), b); },
      [](Data& r, int n, bool b) { return r.SetData(2, DateTime::FromJulian(OLD_DAY + n, 0), b); },
      [](Data& r, int n, bool b) { return r.SetData(2, CString(n == 1 ? "one" : "two"), b); },
      [](Data& r, int n, bool b) { return r.SetData(2, n == 1 ? "one" : "two", b); },
  };
  for (size_t i = 0; i < setters.size(); ++i) {
    SCOPED_TRACE("kind " + std::to_string(i));
    DataItem item;
    LoadItem(item, 1, 5, {});
    EXPECT_TRUE(setters[i](item, 1, false));
    EXPECT_FALSE(setters[i](item, 1, true));
    item.RegisterDataProp(3, 0.5);
    EXPECT_EQ(LastModified(item), OLD_TIME);
    const DateTime beforeEdit = Now();
    EXPECT_TRUE(setters[i](item, 2, true));
    EXPECT_FALSE(LastModified(item) < beforeEdit);
  }
}

// Each row: how the copies are made, the ID they have, and the column
// whose history the item's copy and the sub-item's copy hold (0: none).
// Records are equal by their values only (the ID, the time and the
// sub-items take no part; the values' flags do, see the value store).
TEST(RecordTest, CopiesTakeTheIDAndHistoryTheWayTheClassSays) {
  DataItem plain;
  plain.SetData(1, 20, true);
  const struct {
    Way way;
    int nID, nItemHistory, nSubItemHistory;
  } rows[] = {
      {COPY_CONSTRUCTED, 4, 2, 0}, {MOVE_CONSTRUCTED, 4, 2, 1}, {COPY_ASSIGNED, 9, 3, 2}, {MOVE_ASSIGNED, 9, 2, 1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(WAYS[row.way]);
    const auto item = Made(row.way, &ItemSource, &ItemTarget);
    EXPECT_EQ(item->GetID(), row.nID);
    EXPECT_EQ(IntOf(*item, 1), 20);
    EXPECT_FALSE(item->HaveDataProp(3));
    EXPECT_EQ(LastModified(*item), OLD_TIME);
    EXPECT_EQ(item->HaveUndoData(2), row.nItemHistory == 2);
    EXPECT_EQ(item->HaveUndoData(3), row.nItemHistory == 3);
    EXPECT_TRUE(*item == plain && !(*item == ItemTarget()));
    // The sub-items are deep copies, whatever the way: the source's values,
    // parent ID, sort flag and next ID, no history.
    DataSubItemMgr& subItems = item->GetSubItemsMgr();
    ASSERT_EQ(subItems.GetCount(), 2u);
    EXPECT_EQ(IntOf(*subItems.GetAt(1), 1), 10);
    EXPECT_EQ(subItems.GetAt(1)->GetParentID(), 4);
    EXPECT_FALSE(subItems.GetAt(0)->HaveUndoData(1) || subItems.GetSort());
    EXPECT_EQ(subItems.Create(nullptr, true, true)->GetID(), 2);

    const auto subItem = Made(row.way, &SubItemSource, &SubItemTarget);
    EXPECT_EQ(subItem->GetID(), row.nID);
    EXPECT_EQ(subItem->GetParentID(), 7);
    EXPECT_EQ(IntOf(*subItem, 1), 20);
    EXPECT_FALSE(subItem->HaveDataProp(2));
    std::vector<int> history;
    subItem->GetUndoData(1, history);
    EXPECT_EQ(history, row.nSubItemHistory == 1 ? (std::vector<int>{-1, 10}) : std::vector<int>());
    EXPECT_EQ(subItem->HaveUndoData(2), row.nSubItemHistory == 2);
    EXPECT_TRUE(*subItem == SubItemSource() && !(*subItem == SubItemTarget()));
  }
}

// Column 2 held in every kind by the item and its sub-item; each pass
// deletes it from one kind (the last pass from all) and leaves the others.
TEST(RecordTest, DeletingAColumnReachesTheSubItemsAndChangingAnIDDoesNot) {
  using Delete = void (DataItem::*)(int);
  using Have = bool (Data::*)(int) const;
  const std::vector<std::pair<Delete, Have>> kinds = {
      {&DataItem::DeleteDataBool, &Data::HaveDataPropBool},
      {&DataItem::DeleteDataInt, &Data::HaveDataPropInt},
      {&DataItem::DeleteDataDouble, &Data::HaveDataPropDouble},
      {&DataItem::DeleteDataMoney, &Data::HaveDataPropMoney},
      {&DataItem::DeleteDataDateTime, &Data::HaveDataPropDateTime},
      {&DataItem::DeleteDataString, &Data::HaveDataPropString}};
  for (size_t nDeleted = 0; nDeleted <= kinds.size(); ++nDeleted) {
    DataItem item;
    LoadItem(item, 1, 5, {0});
    for (Data* pRecord : {static_cast<Data*>(&item), static_cast<Data*>(item.GetSubItemsMgr().GetAt(0))}) {
      pRecord->RegisterDataProp(2, true);
      pRecord->RegisterDataProp(2, 1);
      pRecord->RegisterDataProp(2, 0.5);
      pRecord->RegisterDataProp(2, Money(1));
      pRecord->RegisterDataProp(2, DateTime::FromJulian(OLD_DAY, 0));
      pRecord->RegisterDataProp(2, CString("t"), false);
    }
    (item.*(nDeleted < kinds.size() ? kinds[nDeleted].first : &DataItem::DeleteData))(2);
    for (size_t k = 0; k < kinds.size(); ++k) {
      const bool bKept = nDeleted < kinds.size() && nDeleted != k;
      EXPECT_EQ((item.*kinds[k].second)(2), bKept) << "deleting kind " << nDeleted << ", kind " << k;
      EXPECT_EQ((item.GetSubItemsMgr().GetAt(0)->*kinds[k].second)(2), bKept) << "sub-item, kind " << k;
    }
  }
  DataItem item;
  LoadItem(item, 1, 5, {0});
  item.ChangeDataPropIDInt(1, 2);
  std::vector<int> ids;
  item.GetSupportedDataProps(ids);
  EXPECT_EQ(ids, (std::vector<int>{1, 2}));
  EXPECT_EQ(IntOf(item, 2), 5);
  EXPECT_FALSE(item.GetSubItemsMgr().GetAt(0)->HaveDataProp(2));
}
