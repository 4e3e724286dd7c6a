#include "DataMgr/records/DataItemMgr.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/DataMgr/records/RecordFixtures.h"
#include "tests/support/ArchiveTestSupport.h"

using records_test::Fill;
using records_test::IDs;
using records_test::IntHistory;
using records_test::IntOf;
using records_test::OLD_DAY;
using test_support::ByteWriter;
using test_support::Bytes;
using test_support::ExpectEveryCutThrowsEndOfFile;
using test_support::Load;
using test_support::LoadAll;
using test_support::ShrinkSize;
using test_support::Store;
using test_support::ToHex;

namespace {

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

// An item list of nVersion (32-bit counter before 4) of items with the given
// IDs, each with two sub-items whose parent ID is the item's stored ID.
Bytes ItemList(unsigned nVersion, const std::vector<int>& itemIDs) {
  ByteWriter w;
  w.Word(nVersion).Counter(itemIDs.size(), nVersion < 4);
  for (int nID : itemIDs) {
    records_test::Item(w, nID, 1, nID, 2, [nID](ByteWriter& sub) {
      records_test::SubItem(sub, 0, nID, 2, 0);
      records_test::SubItem(sub, 1, nID, 2, 1);
    });
  }
  return w.Get();
}

}  // namespace

TEST(DataItemMgrTest, CreatingFreshItemsConsumesIDsEvenWhenNotAdded) {
  DataItemMgr items;
  EXPECT_EQ(items.GetAt(0), nullptr);
  DataItem* pLoose = items.Create(nullptr, false, true);
  EXPECT_EQ(pLoose->GetID(), 0);
  EXPECT_TRUE(items.IsEmpty());
  EXPECT_EQ(items.GetIndex(pLoose), 0u);
  delete pLoose;
  Fill(items, 2);
  EXPECT_EQ(IDs(items), (std::vector<int>{1, 2}));
  EXPECT_EQ(items.GetByID(2), items.GetAt(1));
  EXPECT_EQ(items.GetByID(0), nullptr);
}

TEST(DataItemMgrTest, ACreatedCopyIsNewAndAdoptsItsSubItems) {
  DataItemMgr items;
  LoadAll(ItemList(4, {3}), items);
  DataItem source;
  source.SetData(1, 30, true);
  const Bytes sourceBytes = ItemList(4, {3});
  // The item alone: the list's bytes after its version and counter.
  LoadAll(Bytes(sourceBytes.begin() + 10, sourceBytes.end()), source);

  DataItem* pCopy = items.Create(&source, true, true);
  EXPECT_EQ(items.GetIndex(pCopy), 1u);
  EXPECT_EQ(pCopy->GetID(), 4);
  EXPECT_EQ(IntOf(*pCopy, 1), 3);
  EXPECT_FALSE(pCopy->HaveUndoData(1));
  EXPECT_EQ(ParentIDs(*pCopy), (std::vector<int>{4, 4}));
  EXPECT_EQ(ParentIDs(source), (std::vector<int>{3, 3}));
  DateTime time;
  pCopy->GetLastModified(time);
  EXPECT_GT(time.GetJulianDay(), OLD_DAY);

  pCopy->SetData(1, 5, true);
  DataItem* pSameID = items.Create(pCopy, false, false);
  EXPECT_EQ(pSameID->GetID(), 4);
  EXPECT_FALSE(pSameID->HaveUndoData(1));
  EXPECT_EQ(ParentIDs(*pSameID), (std::vector<int>{4, 4}));
  delete pSameID;
  EXPECT_EQ(items.GetCount(), 2u);
}

TEST(DataItemMgrTest, MovingChecksBothIndexes) {
  DataItemMgr items;
  Fill(items, 3);
  EXPECT_TRUE(items.Move(0, 2));
  EXPECT_EQ(IDs(items), (std::vector<int>{1, 2, 0}));
  EXPECT_TRUE(items.Move(2, 0));
  EXPECT_EQ(IDs(items), (std::vector<int>{0, 1, 2}));
  EXPECT_TRUE(items.Move(1, 1));
  EXPECT_FALSE(items.Move(0, 3));
  EXPECT_FALSE(items.Move(3, 0));
  EXPECT_EQ(IDs(items), (std::vector<int>{0, 1, 2}));
}

TEST(DataItemMgrTest, RemovingHandsTheItemBack) {
  DataItemMgr items;
  Fill(items, 2);
  DataItem* pFirst = items.GetAt(0);
  items.Remove(pFirst);
  items.Remove(pFirst);
  items.Remove(nullptr);
  EXPECT_EQ(IDs(items), std::vector<int>{1});
  items.Delete(pFirst);
  EXPECT_EQ(items.GetCount(), 1u);
  delete pFirst;
}

TEST(DataItemMgrTest, AddingAndInsertingIgnoreNull) {
  TestItemMgr items;
  Fill(items, 2);
  items.Insert(0, nullptr, true);
  items.Add(nullptr);
  items.Insert(0, new DataItem(), true);
  items.Insert(9, new DataItem(), false);
  items.Insert(1, new DataItem(), true);
  items.Add(new DataItem());
  EXPECT_EQ(IDs(items), (std::vector<int>{2, 3, 0, 1, -1, -1}));
}

TEST(DataItemMgrTest, SettingAllValuesLeavesTheSubItems) {
  DataItemMgr items;
  LoadAll(ItemList(4, {0, 1}), items);
  items.SetAllData(2, "text");
  items.SetAllData(1, 9);
  for (size_t i = 0; i < 2; ++i) {
    const DataItem& item = *items.GetAt(i);
    EXPECT_TRUE(item.HaveDataPropString(2));
    EXPECT_EQ(IntHistory(item, 1), std::vector<int>{static_cast<int>(i)});
    EXPECT_FALSE(item.GetSubItemsMgr().GetAt(0)->HaveDataPropString(2));
  }
}

TEST(DataItemMgrTest, RenumberingFollowsTheListOrder) {
  DataItemMgr items;
  LoadAll(ItemList(4, {7, 3}), items);
  items.RefreshNextID();
  EXPECT_EQ(IDs(items), (std::vector<int>{0, 1}));
  EXPECT_EQ(ParentIDs(*items.GetAt(1)), (std::vector<int>{1, 1}));
  items.DeleteAll(false);
  EXPECT_EQ(items.Create(nullptr, true, true)->GetID(), 2);
}

TEST(DataItemMgrTest, CurrentArchiveByteForByte) {
  const Bytes bytes = ItemList(4, {3, 7});
  DataItemMgr items;
  LoadAll(bytes, items);
  EXPECT_EQ(IDs(items), (std::vector<int>{3, 7}));
  EXPECT_EQ(ParentIDs(*items.GetAt(1)), (std::vector<int>{7, 7}));
  EXPECT_EQ(IntOf(*items.GetAt(1)->GetSubItemsMgr().GetAt(1), 2), 1);
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { items.Serialize(ar); })), ToHex(bytes));
  EXPECT_EQ(items.Create(nullptr, true, true)->GetID(), 8);
  ExpectEveryCutThrowsEndOfFile(bytes, [](CArchive& ar) { DataItemMgr().Serialize(ar); });
}

TEST(DataItemMgrTest, LoadingRenumbersVersionTwoAndMissingIDs) {
  DataItemMgr items;
  LoadAll(ItemList(2, {5, 9}), items);
  EXPECT_EQ(IDs(items), (std::vector<int>{0, 1}));
  EXPECT_EQ(ParentIDs(*items.GetAt(1)), (std::vector<int>{1, 1}));
  EXPECT_EQ(IntOf(*items.GetAt(1), 1), 9);

  LoadAll(ItemList(3, {5, 9}), items);
  EXPECT_EQ(IDs(items), (std::vector<int>{5, 9}));
  LoadAll(ItemList(1, {5, 9}), items);
  EXPECT_EQ(IDs(items), (std::vector<int>{5, 9}));

  LoadAll(ItemList(3, {5, -1, 2}), items);
  EXPECT_EQ(IDs(items), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(ParentIDs(*items.GetAt(1)), (std::vector<int>{1, 1}));
  EXPECT_EQ(items.Create(nullptr, true, true)->GetID(), 3);
}

TEST(DataItemMgrTest, ALoadCutShortKeepsWhatItRead) {
  const Bytes bytes = ItemList(4, {3, 7});
  DataItemMgr items;
  Fill(items, 3);
  EXPECT_THROW(Load(ShrinkSize(bytes, bytes.size() - 1), [&](CArchive& ar) { items.Serialize(ar); }),
               CArchiveException);
  ASSERT_EQ(IDs(items), (std::vector<int>{3, 7}));
  EXPECT_EQ(items.GetAt(1)->GetSubItemsMgr().GetCount(), 2u);
}
