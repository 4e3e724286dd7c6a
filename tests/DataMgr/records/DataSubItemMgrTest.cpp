#include "DataMgr/records/DataSubItemMgr.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/DataMgr/records/RecordFixtures.h"
#include "tests/support/ArchiveTestSupport.h"

using records_test::Fill;
using records_test::IDs;
using records_test::IntHistory;
using records_test::IntOf;
using test_support::ByteWriter;
using test_support::Bytes;
using test_support::ExpectEveryCutThrowsEndOfFile;
using test_support::Load;
using test_support::LoadAll;
using test_support::ShrinkSize;
using test_support::Store;
using test_support::ToHex;

namespace {

void ExpectOutOfRange(DataSubItemMgr& subItems, size_t nA, size_t nB) {
  try {
    subItems.Swap(nA, nB);
    ADD_FAILURE() << "Swap(" << nA << ", " << nB << ") did not throw";
  } catch (const std::out_of_range& e) {
    EXPECT_EQ(std::string(e.what()), "invalid vector<T> subscript");
  }
}

}  // namespace

TEST(DataSubItemMgrTest, FreshCollectionIsEmptyAndSorted) {
  const DataSubItemMgr subItems;
  EXPECT_TRUE(subItems.IsEmpty());
  EXPECT_TRUE(subItems.GetSort());
  EXPECT_EQ(subItems.GetAt(0), nullptr);
  EXPECT_EQ(subItems.GetByID(0), nullptr);
  const DataSubItem foreign;
  EXPECT_EQ(subItems.GetIndex(&foreign), 0u);
}

TEST(DataSubItemMgrTest, CreatingAddsCopiesAndConsumesIDs) {
  DataSubItemMgr subItems;
  Fill(subItems, 2);
  DataSubItem* pSecond = subItems.GetByID(1);
  EXPECT_EQ(subItems.GetIndex(pSecond), 1u);
  pSecond->SetParentID(5);
  pSecond->SetData(1, 8, true);

  DataSubItem* pLoose = subItems.Create(pSecond, false, true);
  EXPECT_EQ(subItems.GetCount(), 2u);
  EXPECT_EQ(subItems.GetIndex(pLoose), 2u);
  EXPECT_EQ(pLoose->GetID(), 2);
  EXPECT_EQ(pLoose->GetParentID(), 5);
  EXPECT_EQ(IntOf(*pLoose, 1), 8);
  EXPECT_FALSE(pLoose->HaveUndoData(1));
  delete pLoose;

  const DataSubItem* pKept = subItems.Create(pSecond, true, false);
  EXPECT_EQ(pKept->GetID(), 1);
  EXPECT_EQ(subItems.Create(nullptr, true, true)->GetID(), 3);
}

TEST(DataSubItemMgrTest, SwapThrowsOnlyWithTwoOrMore) {
  DataSubItemMgr subItems;
  subItems.Swap(0, 5);
  Fill(subItems, 1);
  subItems.Swap(3, 0);
  Fill(subItems, 2);
  subItems.Swap(0, 2);
  EXPECT_EQ(IDs(subItems), (std::vector<int>{2, 1, 0}));
  ExpectOutOfRange(subItems, 3, 0);
  ExpectOutOfRange(subItems, 0, 3);
  EXPECT_EQ(IDs(subItems), (std::vector<int>{2, 1, 0}));
}

TEST(DataSubItemMgrTest, MovingShiftsTheEntriesBetween) {
  DataSubItemMgr subItems;
  Fill(subItems, 3);
  subItems.Move(0, 2);
  EXPECT_EQ(IDs(subItems), (std::vector<int>{1, 2, 0}));
  subItems.Move(2, 0);
  EXPECT_EQ(IDs(subItems), (std::vector<int>{0, 1, 2}));
  subItems.Move(2, 0);
  EXPECT_EQ(IDs(subItems), (std::vector<int>{2, 0, 1}));
  subItems.Move(0, 3);
  subItems.Move(3, 0);
  subItems.Move(1, 1);
  EXPECT_EQ(IDs(subItems), (std::vector<int>{2, 0, 1}));
}

TEST(DataSubItemMgrTest, DeletingByIndexPointerOrAll) {
  DataSubItemMgr subItems;
  Fill(subItems, 3);
  subItems.Delete(static_cast<size_t>(3));
  DataSubItem foreign;
  subItems.Delete(&foreign);
  subItems.Delete(nullptr);
  EXPECT_EQ(subItems.GetCount(), 3u);
  subItems.Delete(static_cast<size_t>(0));
  subItems.Delete(subItems.GetByID(2));
  EXPECT_EQ(IDs(subItems), std::vector<int>{1});

  subItems.DeleteAll(false);
  EXPECT_TRUE(subItems.IsEmpty());
  EXPECT_EQ(subItems.Create(nullptr, true, true)->GetID(), 3);
  subItems.DeleteAll(true);
  EXPECT_EQ(subItems.Create(nullptr, true, true)->GetID(), 0);
}

TEST(DataSubItemMgrTest, CopiesAreDeepWithoutHistories) {
  DataSubItemMgr source;
  Fill(source, 2);
  source.SetSort(false);
  source.SetAllParentID(6);
  source.SetAllData(1, 40);
  DataSubItemMgr copy(source);
  DataSubItemMgr assigned;
  Fill(assigned, 3);
  assigned = source;
  assigned = assigned;
  for (DataSubItemMgr* pCopy : {&copy, &assigned}) {
    EXPECT_FALSE(pCopy->GetSort());
    ASSERT_EQ(IDs(*pCopy), (std::vector<int>{0, 1}));
    EXPECT_NE(pCopy->GetAt(0), source.GetAt(0));
    EXPECT_EQ(pCopy->GetAt(1)->GetParentID(), 6);
    EXPECT_EQ(IntOf(*pCopy->GetAt(1), 1), 40);
    EXPECT_FALSE(pCopy->GetAt(1)->HaveUndoData(1));
    DataSubItem* pLoose = pCopy->Create(nullptr, false, true);
    EXPECT_EQ(pLoose->GetID(), 2);
    delete pLoose;
  }
}

TEST(DataSubItemMgrTest, ColumnOperationsReachEverySubItem) {
  DataSubItemMgr subItems;
  Fill(subItems, 2);
  subItems.SetAllData(2, "text");
  subItems.SetAllData(1, 7);
  for (size_t i = 0; i < 2; ++i) {
    EXPECT_TRUE(subItems.GetAt(i)->HaveDataPropString(2));
    EXPECT_EQ(IntHistory(*subItems.GetAt(i), 1), std::vector<int>{static_cast<int>(i)});
  }
  subItems.DeleteDataString(2);
  subItems.DeleteDataInt(1);
  for (size_t i = 0; i < 2; ++i) EXPECT_FALSE(subItems.GetAt(i)->HaveDataProp(1) || subItems.GetAt(i)->HaveDataProp(2));
}

TEST(DataSubItemMgrTest, CurrentArchiveByteForByte) {
  ByteWriter w;
  w.Word(3).Int64(2);
  records_test::SubItem(w, 0, 4, 1, 0);
  records_test::SubItem(w, 1, 4, 1, 1);
  w.Bool(false);
  DataSubItemMgr subItems;
  Fill(subItems, 2);
  subItems.SetAllParentID(4);
  subItems.SetSort(false);
  const Bytes bytes = Store([&](CArchive& ar) { subItems.Serialize(ar); });
  EXPECT_EQ(ToHex(bytes), ToHex(w.Get()));

  DataSubItemMgr loaded;
  Fill(loaded, 4);
  LoadAll(bytes, loaded);
  EXPECT_EQ(IDs(loaded), (std::vector<int>{0, 1}));
  EXPECT_FALSE(loaded.GetSort());
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { loaded.Serialize(ar); })), ToHex(bytes));
  EXPECT_EQ(loaded.Create(nullptr, true, true)->GetID(), 2);
  ExpectEveryCutThrowsEndOfFile(bytes, [](CArchive& ar) { DataSubItemMgr().Serialize(ar); });
}

TEST(DataSubItemMgrTest, OldVersionsAndMissingIDs) {
  ByteWriter v1;
  v1.Word(1).Int(3);
  records_test::Values(v1.Word(1).Int(5), 1, 50);
  records_test::Values(v1.Word(1).Int(-1), 1, 51);
  records_test::Values(v1.Word(1).Int(-2), 1, 52);
  DataSubItemMgr subItems;
  subItems.SetSort(false);
  LoadAll(v1.Get(), subItems);
  EXPECT_EQ(IDs(subItems), (std::vector<int>{5, 6, -2}));
  EXPECT_EQ(subItems.GetAt(1)->GetParentID(), -1);
  EXPECT_FALSE(subItems.GetSort());
  EXPECT_EQ(subItems.Create(nullptr, true, true)->GetID(), 7);

  ByteWriter v2;
  v2.Word(2).Int(2);
  records_test::SubItem(v2, -1, 3, 1, 0);
  records_test::SubItem(v2, 2, 3, 1, 0);
  v2.Bool(true);
  LoadAll(v2.Get(), subItems);
  EXPECT_EQ(IDs(subItems), (std::vector<int>{3, 2}));
  EXPECT_TRUE(subItems.GetSort());
}

TEST(DataSubItemMgrTest, ALoadCutShortKeepsWhatItRead) {
  ByteWriter w;
  w.Word(3).Int64(2);
  records_test::SubItem(w, 0, 4, 1, 0);
  const size_t nFirstEnd = w.Get().size();
  records_test::SubItem(w, 1, 4, 1, 1);
  DataSubItemMgr subItems;
  EXPECT_THROW(Load(ShrinkSize(w.Get(), nFirstEnd + 4), [&](CArchive& ar) { subItems.Serialize(ar); }),
               CArchiveException);
  ASSERT_EQ(subItems.GetCount(), 2u);
  EXPECT_EQ(IntOf(*subItems.GetAt(0), 1), 0);
  EXPECT_TRUE(subItems.GetSort());
}
