// The two record collections, DataItemMgr and DataSubItemMgr: what they
// share is tested once over both, then what each has of its own.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include "DataMgr/records/DataItemMgr.h"
#include "tests/DataMgr/records/RecordFixtures.h"

using records_test::Fill;
using records_test::IDs;
using records_test::IntOf;
using records_test::ItemList;
using records_test::OLD_DAY;
using records_test::SubItemList;
using test_support::Bytes;
using test_support::ExpectEveryCutThrowsEndOfFile;
using test_support::LoadAll;
using test_support::ShrinkSize;
using test_support::Stored;
using test_support::ToHex;

namespace {

template <typename Mgr>
class RecordListTest : public ::testing::Test {};
using Lists = ::testing::Types<DataItemMgr, DataSubItemMgr>;
TYPED_TEST_SUITE(RecordListTest, Lists);

// Reaches the protected Add and Insert.
class TestItemMgr : public DataItemMgr {
 public:
  using DataItemMgr::Add;
  using DataItemMgr::Insert;
};

std::vector<int> ParentIDs(const DataItem& item) {
  std::vector<int> ids;
  const DataSubItemMgr& subItems = item.GetSubItemsMgr();
  for (size_t i = 0; i < subItems.GetCount(); ++i) ids.push_back(subItems.GetAt(i)->GetParentID());
  return ids;
}

}  // namespace

// Creating consumes an ID even when the record is not added; deleting
// keeps the next ID unless told to reset it.
TYPED_TEST(RecordListTest, CreatingAndDeleting) {
  TypeParam list;
  auto* pLoose = list.Create(nullptr, false, true);
  EXPECT_EQ(pLoose->GetID(), 0);
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.GetIndex(pLoose), 0u);
  delete pLoose;
  Fill(list, 2);
  EXPECT_EQ(IDs(list), (std::vector<int>{1, 2}));
  EXPECT_EQ(list.GetByID(2), list.GetAt(1));
  EXPECT_EQ(list.GetIndex(list.GetAt(1)), 1u);
  EXPECT_EQ(list.GetByID(0), nullptr);
  EXPECT_EQ(list.GetAt(2), nullptr);
  EXPECT_EQ(list.Create(list.GetAt(1), true, false)->GetID(), 2);
  EXPECT_EQ(list.Create(nullptr, true, false)->GetID(), -1);
  EXPECT_EQ(list.Create(nullptr, true, true)->GetID(), 3);

  list.Delete(static_cast<size_t>(5));
  typename std::remove_pointer<decltype(list.GetAt(0))>::type foreign;
  list.Delete(&foreign);
  list.Delete(nullptr);
  EXPECT_EQ(list.GetCount(), 5u);
  list.Delete(static_cast<size_t>(0));
  list.Delete(list.GetByID(2));
  EXPECT_EQ(IDs(list), (std::vector<int>{2, -1, 3}));
  list.DeleteAll(false);
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.Create(nullptr, true, true)->GetID(), 4);
  list.DeleteAll(true);
  EXPECT_EQ(list.Create(nullptr, true, true)->GetID(), 0);
}

TYPED_TEST(RecordListTest, MovingShiftsTheRecordsBetween) {
  const struct {
    size_t nFrom, nTo;
    std::vector<int> ids;
  } rows[] = {{0, 2, {1, 2, 0}}, {2, 0, {2, 0, 1}}, {1, 1, {0, 1, 2}}, {0, 3, {0, 1, 2}}, {3, 0, {0, 1, 2}}};
  for (const auto& row : rows) {
    TypeParam list;
    Fill(list, 3);
    if constexpr (std::is_same<TypeParam, DataItemMgr>::value) {
      EXPECT_EQ(list.Move(row.nFrom, row.nTo), row.nFrom < 3 && row.nTo < 3) << row.nFrom << " to " << row.nTo;
    } else {
      list.Move(row.nFrom, row.nTo);
    }
    EXPECT_EQ(IDs(list), row.ids) << row.nFrom << " to " << row.nTo;
  }
}

// Each row sets column 2 of every record to a value of one kind, undoably.
TYPED_TEST(RecordListTest, SettingAllValuesIsUndoableInEveryKind) {
  const std::vector<std::pair<std::function<void(TypeParam&)>, bool (Data::*)(int) const>> kinds = {
      {[](TypeParam& l) { l.SetAllData(2, true); }, &Data::HaveDataPropBool},
      {[](TypeParam& l) { l.SetAllData(2, 9); }, &Data::HaveDataPropInt},
      {[](TypeParam& l) { l.SetAllData(2, 0.5); }, &Data::HaveDataPropDouble},
      {[](TypeParam& l) { l.SetAllData(2, Money(1)); }, &Data::HaveDataPropMoney},
      {[](TypeParam& l) { l.SetAllData(2, DateTime::FromJulian(OLD_DAY, 0)); }, &Data::HaveDataPropDateTime},
      {[](TypeParam& l) { l.SetAllData(2, CString("t")); }, &Data::HaveDataPropString},
      {[](TypeParam& l) { l.SetAllData(2, "t"); }, &Data::HaveDataPropString},
  };
  for (size_t i = 0; i < kinds.size(); ++i) {
    TypeParam list;
    Fill(list, 2);
    kinds[i].first(list);
    for (size_t n = 0; n < 2; ++n) {
      EXPECT_TRUE((list.GetAt(n)->*kinds[i].second)(2)) << "kind " << i;
      EXPECT_TRUE(list.GetAt(n)->HaveUndoData(2)) << "kind " << i;
    }
  }
}

// Fixtures of every version, items of every version in them: the IDs each
// loads with, the next ID after them. Version 2's IDs cannot be trusted,
// and a missing ID renumbers all.
TEST(DataItemMgrTest, EveryVersionLoadsAndEveryCutThrows) {
  const struct {
    unsigned nVersion;
    std::vector<int> stored, loaded;
    int nNextID;
  } rows[] = {{4, {3, 7}, {3, 7}, 8},    {3, {5, 9}, {5, 9}, 10},         {2, {5, 9}, {0, 1}, 2},
              {1, {5, 9}, {5, 9}, 10}, {3, {5, -1, 2}, {0, 1, 2}, 3}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.nVersion);
    const Bytes bytes = ItemList(row.nVersion, row.stored);
    DataItemMgr items;
    Fill(items, 3);
    LoadAll(bytes, items);
    EXPECT_EQ(IDs(items), row.loaded);
    for (size_t i = 0; i < items.GetCount(); ++i) {
      EXPECT_EQ(ParentIDs(*items.GetAt(i)), std::vector<int>(2, items.GetAt(i)->GetID())) << "item " << i;
    }
    EXPECT_EQ(IntOf(*items.GetAt(1), 1), row.stored[1]);
    EXPECT_EQ(records_test::LastModified(*items.GetAt(1)), DateTime::FromJulian(OLD_DAY, records_test::OLD_SECONDS));
    EXPECT_EQ(IntOf(*items.GetAt(1)->GetSubItemsMgr().GetAt(1), 2), 1);
    if (row.nVersion == 4) {
      EXPECT_EQ(ToHex(Stored(items)), ToHex(bytes));
    }
    EXPECT_EQ(items.Create(nullptr, true, true)->GetID(), row.nNextID);
    ExpectEveryCutThrowsEndOfFile(bytes, [](CArchive& ar) { DataItemMgr().Serialize(ar); });
  }
}

TEST(DataSubItemMgrTest, EveryVersionLoadsAndEveryCutThrows) {
  const struct {
    unsigned nVersion;
    std::vector<int> stored, loaded;
    bool bSort;  // stored from version 2; version 1 keeps false, set before
    int nNextID;
  } rows[] = {{3, {0, 1}, {0, 1}, false, 2}, {2, {-1, 2}, {3, 2}, true, 4}, {1, {5, -1, -2}, {5, 6, -2}, false, 7}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.nVersion);
    const Bytes bytes = SubItemList(row.nVersion, row.stored, row.bSort);
    DataSubItemMgr subItems;
    Fill(subItems, 4);
    subItems.SetSort(false);
    LoadAll(bytes, subItems);
    EXPECT_EQ(IDs(subItems), row.loaded);
    EXPECT_EQ(subItems.GetSort(), row.bSort);
    EXPECT_EQ(subItems.GetAt(1)->GetParentID(), row.nVersion == 1 ? -1 : 4);
    EXPECT_EQ(IntOf(*subItems.GetAt(1), 1), 1);
    if (row.nVersion == 3) {
      EXPECT_EQ(ToHex(Stored(subItems)), ToHex(bytes));
    }
    EXPECT_EQ(subItems.Create(nullptr, true, true)->GetID(), row.nNextID);
    ExpectEveryCutThrowsEndOfFile(bytes, [](CArchive& ar) { DataSubItemMgr().Serialize(ar); });
  }
}

// A load cut short leaves the records read so far, the last one half read.
TEST(DataItemMgrTest, ALoadCutShortKeepsWhatItRead) {
  const Bytes items = ItemList(4, {3, 7});
  DataItemMgr itemList;
  Fill(itemList, 3);
  EXPECT_THROW(LoadAll(ShrinkSize(items, items.size() - 1), itemList), CArchiveException);
  EXPECT_EQ(IDs(itemList), (std::vector<int>{3, 7}));
  EXPECT_EQ(itemList.GetAt(1)->GetSubItemsMgr().GetCount(), 2u);

  const Bytes subItems = SubItemList(3, {0, 1}, true);
  DataSubItemMgr subItemList;
  EXPECT_THROW(LoadAll(ShrinkSize(subItems, subItems.size() - 40), subItemList), CArchiveException);
  ASSERT_EQ(subItemList.GetCount(), 2u);
  EXPECT_EQ(IntOf(*subItemList.GetAt(0), 1), 0);
}

// Setting all values leaves the sub-items alone. A created copy is new:
// the current time, no history, and its sub-items follow its ID; an item
// taken out is the caller's.
TEST(DataItemMgrTest, CopiesRemovalAndRenumbering) {
  TestItemMgr items;
  LoadAll(ItemList(4, {3}), items);
  items.SetAllData(2, "t");
  EXPECT_FALSE(items.GetAt(0)->GetSubItemsMgr().GetAt(0)->HaveDataPropString(2));
  items.GetAt(0)->SetData(1, 30, true);
  DataItem* pCopy = items.Create(items.GetAt(0), true, true);
  EXPECT_EQ(pCopy->GetID(), 4);
  EXPECT_EQ(IntOf(*pCopy, 1), 30);
  EXPECT_FALSE(pCopy->HaveUndoData(1));
  EXPECT_EQ(ParentIDs(*pCopy), (std::vector<int>{4, 4}));
  EXPECT_EQ(ParentIDs(*items.GetAt(0)), (std::vector<int>{3, 3}));
  EXPECT_GT(records_test::LastModified(*pCopy).GetJulianDay(), OLD_DAY);

  items.Remove(pCopy);
  items.Remove(pCopy);
  items.Remove(nullptr);
  EXPECT_EQ(IDs(items), std::vector<int>{3});
  items.Add(nullptr);
  items.Insert(0, nullptr, true);
  items.Insert(0, pCopy, true);
  items.Insert(9, new DataItem(), false);
  items.Add(new DataItem());
  EXPECT_EQ(IDs(items), (std::vector<int>{5, 3, -1, -1}));
  items.RefreshNextID();
  EXPECT_EQ(IDs(items), (std::vector<int>{0, 1, 2, 3}));
  EXPECT_EQ(ParentIDs(*items.GetAt(1)), (std::vector<int>{1, 1}));
  EXPECT_EQ(items.Create(nullptr, true, true)->GetID(), 4);
}

// Swap is the one operation that throws, and only with two or more.
TEST(DataSubItemMgrTest, SwapThrowsOnlyWithTwoOrMore) {
  DataSubItemMgr subItems;
  subItems.Swap(0, 5);
  Fill(subItems, 1);
  subItems.Swap(3, 0);
  Fill(subItems, 2);
  subItems.Swap(0, 2);
  EXPECT_EQ(IDs(subItems), (std::vector<int>{2, 1, 0}));
  for (const auto& indexes : {std::make_pair(3, 0), std::make_pair(0, 3)}) {
    try {
      subItems.Swap(indexes.first, indexes.second);
      ADD_FAILURE() << indexes.first << ", " << indexes.second << " did not throw";
    } catch (const std::out_of_range& e) {
      EXPECT_STREQ(e.what(), "invalid vector<T> subscript");
    }
  }
  EXPECT_EQ(IDs(subItems), (std::vector<int>{2, 1, 0}));
}
