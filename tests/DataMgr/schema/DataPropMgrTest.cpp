#include "DataMgr/schema/DataPropMgr.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tests/DataMgr/schema/SchemaArchiveWriter.h"
#include "tests/support/LocaleTestSupport.h"

using schema_test::ColumnArchive;
using test_support::ByteWriter;
using test_support::Bytes;
using test_support::ExpectEveryCutThrowsEndOfFile;
using test_support::Load;
using test_support::Store;
using test_support::ToHex;

namespace {

class DataPropMgrTest : public test_support::UsLocaleTest {};

DataProp* Column(int nID, const char* name = "", DataType::Type nType = DataType::Text) {
  auto* column = new DataProp;
  column->SetID(nID);
  column->SetName(name);
  column->SetDataType(nType);
  return column;
}

std::vector<int> DisplayOrder(const DataPropMgr& mgr) {
  std::vector<int> order;
  mgr.GetDisplayOrder(order);
  return order;
}

// A stored text column of version 15 with that ID and name.
Bytes ColumnRecord(int nID, const char* name) {
  ColumnArchive column;
  column.nID = nID;
  column.name = name;
  return column.Head().Get();
}

}  // namespace

TEST_F(DataPropMgrTest, NewRegistryIsEmpty) {
  DataPropMgr mgr;
  EXPECT_EQ(mgr.GetID(), 0);
  EXPECT_EQ(mgr.GetAppCount(), 0u);
  EXPECT_EQ(mgr.GetUserCount(), 0u);
  EXPECT_EQ(mgr.GetByID(-1), nullptr);
  EXPECT_EQ(mgr.GetByID(0), nullptr);
  mgr.AddUser(Column(-1), true);
  EXPECT_EQ(mgr.GetUserAt(0)->GetID(), 5000);
}

TEST_F(DataPropMgrTest, AddAppFillsSlotsUpToTheColumnsID) {
  DataPropMgr mgr;
  DataProp* first = Column(-1, "first");
  EXPECT_TRUE(mgr.AddApp(first, true));
  EXPECT_EQ(first->GetID(), 0);
  EXPECT_TRUE(mgr.AddApp(Column(7, "seventh"), false));
  ASSERT_EQ(mgr.GetAppCount(), 8u);
  for (size_t i = 1; i < 7; ++i) EXPECT_EQ(mgr.GetAppAt(i), nullptr);
  EXPECT_EQ(mgr.GetAppAt(7)->GetName(), "seventh");
  EXPECT_TRUE(mgr.AddApp(nullptr, true));
  EXPECT_EQ(mgr.GetAppCount(), 9u);
  DataProp* assigned = Column(-1);
  mgr.AddApp(assigned, true);
  EXPECT_EQ(assigned->GetID(), 9);
  EXPECT_EQ(DisplayOrder(mgr), (std::vector<int>{0, 7, 9}));

  DataProp* replacement = Column(3);
  mgr.AddApp(replacement, false);
  EXPECT_EQ(mgr.GetAppByID(3), replacement);

  DataProp outside;
  outside.SetID(5000);
  EXPECT_FALSE(mgr.AddApp(&outside, false));
  outside.SetID(-1);
  EXPECT_FALSE(mgr.AddApp(&outside, false));
  EXPECT_EQ(mgr.GetAppCount(), 10u);
}

TEST_F(DataPropMgrTest, UserIDsAreNeverReused) {
  DataPropMgr mgr;
  mgr.AddUser(nullptr, true);
  mgr.AddUser(Column(-1), true);
  mgr.AddUser(Column(-1), true);
  EXPECT_EQ(mgr.GetUserAt(1)->GetID(), 5001);
  EXPECT_TRUE(mgr.DeleteByID(5001));
  mgr.AddUser(Column(-1), true);
  EXPECT_EQ(mgr.GetUserAt(1)->GetID(), 5002);
  EXPECT_EQ(DisplayOrder(mgr), (std::vector<int>{5000, 5002}));
  mgr.DeleteAll();
  mgr.AddUser(Column(-1), true);
  EXPECT_EQ(mgr.GetUserAt(0)->GetID(), 5000);
}

// Only loading raises the counter past a kept ID; adding does not.
TEST_F(DataPropMgrTest, AKeptUserIDLeavesTheCounterAlone) {
  DataPropMgr mgr;
  mgr.AddUser(Column(6000), false);
  mgr.AddUser(Column(-1), true);
  EXPECT_EQ(mgr.GetUserAt(0)->GetID(), 6000);
  EXPECT_EQ(mgr.GetUserAt(1)->GetID(), 5000);
  EXPECT_EQ(DisplayOrder(mgr), (std::vector<int>{6000, 5000}));
}

TEST_F(DataPropMgrTest, LookupByIDAndName) {
  DataPropMgr mgr;
  mgr.AddApp(Column(2, "Title"), false);
  mgr.AddUser(Column(-1, "Title"), true);
  mgr.AddUser(Column(-1, "Notes"), true);
  EXPECT_EQ(mgr.GetByID(2), mgr.GetAppAt(2));
  EXPECT_EQ(mgr.GetByID(5001), mgr.GetUserAt(1));
  EXPECT_EQ(mgr.GetByID(1), nullptr);
  EXPECT_EQ(mgr.GetAppByID(5000), nullptr);
  EXPECT_EQ(mgr.GetAppByID(9), nullptr);
  EXPECT_EQ(mgr.GetUserByID(2), nullptr);
  EXPECT_EQ(mgr.GetUserByID(5000), mgr.GetUserAt(0));
  EXPECT_EQ(mgr.GetByName("Title"), mgr.GetAppAt(2));
  EXPECT_EQ(mgr.GetByName("title"), nullptr);
  EXPECT_EQ(mgr.GetByName("Notes"), mgr.GetUserAt(1));
  EXPECT_EQ(mgr.GetByName(""), nullptr);
  EXPECT_EQ(mgr.GetUserByName("Title"), mgr.GetUserAt(0));
  EXPECT_EQ(mgr.GetAppByName("Notes"), nullptr);
  EXPECT_EQ(mgr.GetIndexForID(2), 2u);
  EXPECT_EQ(mgr.GetIndexForID(5000), 3u);
  EXPECT_EQ(mgr.GetAppAt(3), nullptr);
  EXPECT_EQ(mgr.GetUserAt(2), nullptr);
}

TEST_F(DataPropMgrTest, DeletingKeepsSlotsAndTheRestOfTheDisplayOrder) {
  DataPropMgr mgr;
  mgr.AddApp(Column(0), false);
  mgr.AddApp(Column(1), false);
  mgr.AddUser(Column(-1), true);
  mgr.AddUser(Column(-1), true);
  mgr.SetDisplayOrder({5001, 1, 5000, 0});
  EXPECT_TRUE(mgr.DeleteByID(1));
  EXPECT_FALSE(mgr.DeleteByID(1));
  EXPECT_FALSE(mgr.DeleteByID(4));
  EXPECT_EQ(mgr.GetAppCount(), 2u);
  EXPECT_EQ(DisplayOrder(mgr), (std::vector<int>{5001, 5000, 0}));
  EXPECT_FALSE(mgr.DeleteAppByIndex(1));
  EXPECT_FALSE(mgr.DeleteAppByIndex(5));
  EXPECT_TRUE(mgr.DeleteAppByIndex(0));
  EXPECT_FALSE(mgr.DeleteUserByIndex(2));
  EXPECT_TRUE(mgr.DeleteUserByIndex(0));
  EXPECT_EQ(mgr.GetUserAt(0)->GetID(), 5001);
  EXPECT_EQ(DisplayOrder(mgr), (std::vector<int>{5001}));
  mgr.ClearoutUnusedAppDataPropSlots();
  EXPECT_EQ(mgr.GetAppCount(), 0u);
}

TEST_F(DataPropMgrTest, ClearAppSlotLetsGoWithoutDeleting) {
  DataPropMgr mgr;
  DataProp kept;
  kept.SetID(1);
  mgr.AddApp(&kept, false);
  mgr.ClearAppSlot(1);
  EXPECT_EQ(mgr.GetAppAt(1), nullptr);
  EXPECT_EQ(DisplayOrder(mgr), (std::vector<int>{1}));
  mgr.ClearAppSlot(4);
  EXPECT_EQ(mgr.GetAppCount(), 5u);
  mgr.AddApp(Column(2), false);
  mgr.ClearoutUnusedAppDataPropSlots();
  EXPECT_EQ(mgr.GetAppCount(), 3u);
}

// A loaded registry may hold a slot past the application IDs; the caller
// that takes its column over must be able to empty it.
TEST_F(DataPropMgrTest, ClearAppSlotEmptiesALoadedSlotPastTheApplicationIDs) {
  ByteWriter w;
  w.Word(4).Int(0).Counter(5001, false);
  for (int i = 0; i < 5000; ++i) w.Int(0);
  w.Int(1).Raw(ColumnRecord(5000, "late")).Counter(0, false).Counter(0, false);
  DataPropMgr mgr;
  EXPECT_EQ(Load(w.Get(), [&](CArchive& ar) { mgr.Serialize(ar); }), 0u);
  std::unique_ptr<DataProp> taken(mgr.GetAppAt(5000));
  ASSERT_NE(taken, nullptr);
  mgr.ClearAppSlot(5000);
  EXPECT_EQ(mgr.GetAppAt(5000), nullptr);
  mgr.ClearAppSlot(6000);
  EXPECT_EQ(mgr.GetAppCount(), 5001u);
}

TEST_F(DataPropMgrTest, SetToDisplayOrderFollowsTheRegistry) {
  DataPropMgr mgr;
  mgr.SetDisplayOrder({3, 5000, 7});
  std::vector<int> ids = {5000, 3};
  mgr.SetToDisplayOrder(ids);
  EXPECT_EQ(ids, (std::vector<int>{3, 5000}));
  ids = {9};
  mgr.SetToDisplayOrder(ids);
  EXPECT_EQ(ids, (std::vector<int>{9}));
  ids = {7, 9, 3};
  mgr.SetToDisplayOrder(ids);
  EXPECT_EQ(ids, (std::vector<int>{3, 7}));
  mgr.SetDisplayOrder({});
  mgr.SetToDisplayOrder(ids);
  EXPECT_TRUE(ids.empty());
}

TEST_F(DataPropMgrTest, ColumnsOfATypeSkipHiddenFromUIOnlyForApplicationColumns) {
  DataPropMgr mgr;
  DataProp* appHidden = Column(0, "", DataType::Date);
  appHidden->SetHiddenFromUI(true);
  mgr.AddApp(appHidden, false);
  EXPECT_FALSE(mgr.HaveDataPropOfType(DataType::Date, false));
  DataProp* user = Column(-1, "", DataType::Date);
  user->SetHiddenFromUI(true);
  user->SetDisplayed(false);
  mgr.AddUser(user, true);
  EXPECT_TRUE(mgr.HaveDataPropOfType(DataType::Date, false));
  EXPECT_FALSE(mgr.HaveDataPropOfType(DataType::Date, true));
  DataProp* app = Column(1, "", DataType::Date);
  mgr.AddApp(app, false);
  std::vector<DataProp*> out = {nullptr};
  mgr.GetDataPropsOfType(out, DataType::Date, false);
  EXPECT_EQ(out, (std::vector<DataProp*>{nullptr, app, user}));
  EXPECT_FALSE(mgr.HaveDataPropOfType(DataType::Time, false));
}

TEST_F(DataPropMgrTest, HiddenColumnsAreThoseTheUserCanShowAgain) {
  DataPropMgr mgr;
  EXPECT_FALSE(mgr.HaveHiddenColumns());
  DataProp* never = Column(0);
  never->SetDisplayed(false);
  never->SetHiddenFromUI(true);
  mgr.AddApp(never, false);
  EXPECT_FALSE(mgr.HaveHiddenColumns());
  DataProp* app = Column(1);
  app->SetDisplayed(false);
  mgr.AddApp(app, false);
  DataProp* user = Column(-1);
  user->SetDisplayed(false);
  user->SetHiddenFromUI(true);
  mgr.AddUser(user, true);
  mgr.AddUser(Column(-1), true);
  EXPECT_TRUE(mgr.HaveHiddenColumns());
  std::vector<int> ids = {77};
  mgr.GetHiddenColumns(ids);
  EXPECT_EQ(ids, (std::vector<int>{1, 5000}));
}

TEST_F(DataPropMgrTest, StoringDropsEmptyEndSlots) {
  DataPropMgr mgr;
  mgr.SetID(9);
  mgr.AddApp(Column(1, "a"), false);
  mgr.ClearAppSlot(3);
  mgr.AddUser(Column(-1, "u"), true);
  const Bytes stored = Store([&](CArchive& ar) { mgr.Serialize(ar); });
  EXPECT_EQ(mgr.GetAppCount(), 2u);
  const Bytes expected = ByteWriter()
                             .Word(4).Int(9)
                             .Counter(2, false).Int(0).Int(1).Raw(ColumnRecord(1, "a"))  // slots, presence words
                             .Counter(1, false).Raw(ColumnRecord(5000, "u"))             // user columns
                             .Counter(2, false).Int(1).Int(5000)                         // display order
                             .Get();
  EXPECT_EQ(ToHex(stored), ToHex(expected));

  DataPropMgr loaded;
  loaded.AddApp(Column(0), false);
  EXPECT_EQ(Load(stored, [&](CArchive& ar) { loaded.Serialize(ar); }), 0u);
  EXPECT_EQ(loaded.GetID(), 9);
  EXPECT_EQ(loaded.GetAppAt(0), nullptr);
  EXPECT_EQ(loaded.GetAppAt(1)->GetName(), "a");
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { loaded.Serialize(ar); })), ToHex(stored));
  loaded.AddUser(Column(-1), true);
  EXPECT_EQ(loaded.GetUserAt(1)->GetID(), 5001);
}

TEST_F(DataPropMgrTest, LoadedColumnsTakeTheSlotOfTheirPosition) {
  const Bytes v3 = ByteWriter()
                       .Word(3).Int(1)
                       .Counter(2, true).Int(1).Raw(ColumnRecord(5, "five")).Int(2)
                       .Counter(1, true).Raw(ColumnRecord(6000, "user"))
                       .Counter(1, true).Int(6000)
                       .Get();
  DataPropMgr mgr;
  EXPECT_EQ(Load(v3, [&](CArchive& ar) { mgr.Serialize(ar); }), 0u);
  ASSERT_EQ(mgr.GetAppCount(), 2u);
  EXPECT_EQ(mgr.GetAppAt(0)->GetID(), 5);
  EXPECT_EQ(mgr.GetAppAt(1), nullptr);
  mgr.AddUser(Column(-1), true);
  EXPECT_EQ(mgr.GetUserAt(1)->GetID(), 6001);
}

TEST_F(DataPropMgrTest, LoadsVersionsOneAndTwoWithoutPresenceWordsOrUserColumns) {
  const Bytes v1 = ByteWriter()
                       .Word(1)
                       .Counter(2, true).Raw(ColumnRecord(0, "a")).Raw(ColumnRecord(1, "b"))
                       .Counter(2, true).Int(1).Int(0)
                       .Get();
  DataPropMgr mgr;
  mgr.SetID(4);
  EXPECT_EQ(Load(v1, [&](CArchive& ar) { mgr.Serialize(ar); }), 0u);
  EXPECT_EQ(mgr.GetID(), 4);
  EXPECT_EQ(mgr.GetAppAt(1)->GetName(), "b");
  EXPECT_EQ(mgr.GetUserCount(), 0u);
  EXPECT_EQ(DisplayOrder(mgr), (std::vector<int>{1, 0}));

  const Bytes v2 = ByteWriter().Word(2).Int(8).Counter(1, true).Raw(ColumnRecord(0, "a")).Counter(0, true).Get();
  EXPECT_EQ(Load(v2, [&](CArchive& ar) { mgr.Serialize(ar); }), 0u);
  EXPECT_EQ(mgr.GetID(), 8);
  EXPECT_EQ(mgr.GetAppCount(), 1u);
  EXPECT_TRUE(DisplayOrder(mgr).empty());
}

TEST_F(DataPropMgrTest, CutArchivesThrow) {
  const Bytes v4 = ByteWriter()
                       .Word(4).Int(0)
                       .Counter(2, false).Int(1).Raw(ColumnRecord(0, "a")).Int(0)
                       .Counter(1, false).Raw(ColumnRecord(5000, "u"))
                       .Counter(1, false).Int(0)
                       .Get();
  const Bytes v2 = ByteWriter().Word(2).Int(8).Counter(1, true).Raw(ColumnRecord(0, "a")).Counter(1, true).Int(0).Get();
  for (const Bytes& full : {v4, v2}) {
    ExpectEveryCutThrowsEndOfFile(full, [](CArchive& ar) {
      DataPropMgr mgr;
      mgr.Serialize(ar);
    });
  }
  DataPropMgr mgr;
  EXPECT_THROW(Load(ByteWriter().Word(4).Int(0).Counter(1ull << 40, false).Get(),
                    [&](CArchive& ar) { mgr.Serialize(ar); }),
               CArchiveException);
}
