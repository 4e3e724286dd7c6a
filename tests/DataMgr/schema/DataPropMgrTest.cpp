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
using test_support::LoadAll;

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

// Only loading raises the counter past a kept ID; adding does not.
TEST_F(DataPropMgrTest, UserIDsAreNeverReused) {
  DataPropMgr mgr;
  mgr.AddUser(Column(6000), false);
  mgr.AddUser(nullptr, true);
  mgr.AddUser(Column(-1), true);
  mgr.AddUser(Column(-1), true);
  EXPECT_EQ(mgr.GetUserAt(2)->GetID(), 5001);
  EXPECT_TRUE(mgr.DeleteByID(5001));
  mgr.AddUser(Column(-1), true);
  EXPECT_EQ(mgr.GetUserAt(2)->GetID(), 5002);
  EXPECT_EQ(DisplayOrder(mgr), (std::vector<int>{6000, 5000, 5002}));
  mgr.DeleteAll();
  mgr.AddUser(Column(-1), true);
  EXPECT_EQ(mgr.GetUserAt(0)->GetID(), 5000);
}

// Application slot 2 and user columns 5000, 5001; the first name found
// (case-sensitive) is an application column's.
TEST_F(DataPropMgrTest, LookupByIDAndName) {
  DataPropMgr mgr;
  mgr.AddApp(Column(2, "Title"), false);
  mgr.AddUser(Column(-1, "Title"), true);
  mgr.AddUser(Column(-1, "Notes"), true);
  const DataProp* app = mgr.GetAppAt(2);
  const DataProp* title = mgr.GetUserAt(0);
  const DataProp* notes = mgr.GetUserAt(1);
  const struct {
    const char* name;
    const DataProp* found;
    const DataProp* expected;
  } rows[] = {{"ID 2", mgr.GetByID(2), app},           {"ID 5001", mgr.GetByID(5001), notes},
              {"ID 1", mgr.GetByID(1), nullptr},        {"app ID 5000", mgr.GetAppByID(5000), nullptr},
              {"app ID 9", mgr.GetAppByID(9), nullptr}, {"user ID 2", mgr.GetUserByID(2), nullptr},
              {"user ID 5000", mgr.GetUserByID(5000), title}, {"Title", mgr.GetByName("Title"), app},
              {"title", mgr.GetByName("title"), nullptr}, {"Notes", mgr.GetByName("Notes"), notes},
              {"empty name", mgr.GetByName(""), nullptr}, {"user Title", mgr.GetUserByName("Title"), title},
              {"app Notes", mgr.GetAppByName("Notes"), nullptr}, {"app 3", mgr.GetAppAt(3), nullptr},
              {"user 2", mgr.GetUserAt(2), nullptr}};
  for (const auto& row : rows) EXPECT_EQ(row.found, row.expected) << row.name;
  EXPECT_EQ(mgr.GetIndexForID(2), 2u);
  EXPECT_EQ(mgr.GetIndexForID(5000), 3u);
}

// ClearAppSlot lets a column go without deleting it.
TEST_F(DataPropMgrTest, DeletingAndClearingKeepSlotsAndTheRestOfTheDisplayOrder) {
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

  DataProp kept;
  kept.SetID(1);
  mgr.AddApp(&kept, false);
  mgr.ClearAppSlot(1);
  EXPECT_EQ(mgr.GetAppAt(1), nullptr);
  EXPECT_EQ(DisplayOrder(mgr), (std::vector<int>{5001, 1}));
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
  LoadAll(w.Get(), mgr);
  std::unique_ptr<DataProp> taken(mgr.GetAppAt(5000));
  ASSERT_NE(taken, nullptr);
  mgr.ClearAppSlot(5000);
  EXPECT_EQ(mgr.GetAppAt(5000), nullptr);
  mgr.ClearAppSlot(6000);
  EXPECT_EQ(mgr.GetAppCount(), 5001u);
}

// Two or more IDs are put in display order, those not in it dropped; a
// single ID stays as it is.
TEST_F(DataPropMgrTest, SetToDisplayOrderFollowsTheRegistry) {
  const struct {
    std::vector<int> order, ids, expected;
  } rows[] = {{{3, 5000, 7}, {5000, 3}, {3, 5000}}, {{3, 5000, 7}, {9}, {9}}, {{3, 5000, 7}, {7, 9, 3}, {3, 7}},
              {{}, {3, 7}, {}}};
  for (const auto& row : rows) {
    DataPropMgr mgr;
    mgr.SetDisplayOrder(row.order);
    std::vector<int> ids = row.ids;
    mgr.SetToDisplayOrder(ids);
    EXPECT_EQ(ids, row.expected) << row.ids.size() << " IDs";
  }
}

// Application column 0 is hidden from the user interface, 1 hidden by
// the user; user column 5000 both, 5001 shown. HiddenFromUI counts only
// for application columns.
TEST_F(DataPropMgrTest, ColumnsOfATypeAndHiddenColumns) {
  DataPropMgr mgr;
  EXPECT_FALSE(mgr.HaveHiddenColumns());
  DataProp* hidden = Column(0, "", DataType::Date);
  DataProp* app = Column(1, "", DataType::Date);
  DataProp* user = Column(-1, "", DataType::Date);
  for (DataProp* column : {hidden, app, user}) column->SetDisplayed(false);
  for (DataProp* column : {hidden, user}) column->SetHiddenFromUI(true);
  mgr.AddApp(hidden, false);
  mgr.AddApp(app, false);
  mgr.AddUser(user, true);
  mgr.AddUser(Column(-1, "", DataType::Time), true);
  std::vector<DataProp*> out = {nullptr};
  mgr.GetDataPropsOfType(out, DataType::Date, false);
  EXPECT_EQ(out, (std::vector<DataProp*>{nullptr, app, user}));
  EXPECT_TRUE(mgr.HaveDataPropOfType(DataType::Date, false));
  EXPECT_FALSE(mgr.HaveDataPropOfType(DataType::Date, true));
  EXPECT_FALSE(mgr.HaveDataPropOfType(DataType::Text, false));
  EXPECT_TRUE(mgr.HaveHiddenColumns());
  std::vector<int> ids = {77};
  mgr.GetHiddenColumns(ids);
  EXPECT_EQ(ids, (std::vector<int>{1, 5000}));
}

// Every version: 1 has no registry ID (the old one stays), no presence
// words and no user columns; 2 the registry ID; 3 presence words and user
// columns; 4 the new counters. A loaded column takes the slot of its
// position; storing drops the empty slots at the end.
TEST_F(DataPropMgrTest, EveryVersionLoadsAndEveryCutThrows) {
  const struct {
    const char* name;
    Bytes bytes;
    int nID;
    std::vector<int> slotIDs;  // -1: empty slot
    std::vector<int> order;
    int nNextUserID;
  } rows[] = {
      {"4", ByteWriter()
                .Word(4).Int(9)
                .Counter(2, false).Int(0).Int(1).Raw(ColumnRecord(1, "a"))  // slots
                .Counter(1, false).Raw(ColumnRecord(5000, "u"))             // user columns
                .Counter(2, false).Int(1).Int(5000)                         // display order
                .Get(),
       9, {-1, 1}, {1, 5000}, 5001},
      {"3", ByteWriter()
                .Word(3).Int(1)
                .Counter(2, true).Int(1).Raw(ColumnRecord(5, "five")).Int(0)
                .Counter(1, true).Raw(ColumnRecord(6000, "user"))
                .Counter(1, true).Int(6000)
                .Get(),
       1, {5, -1}, {6000}, 6001},
      {"2", ByteWriter().Word(2).Int(8).Counter(1, true).Raw(ColumnRecord(0, "a")).Counter(0, true).Get(),
       8, {0}, {}, 5000},
      {"1", ByteWriter()
                .Word(1)
                .Counter(2, true).Raw(ColumnRecord(0, "a")).Raw(ColumnRecord(1, "b"))
                .Counter(2, true).Int(1).Int(0)
                .Get(),
       4, {0, 1}, {1, 0}, 5000},
  };
  DataPropMgr stored;
  stored.SetID(9);
  stored.AddApp(Column(1, "a"), false);
  stored.ClearAppSlot(3);
  stored.AddUser(Column(-1, "u"), true);
  test_support::ExpectArchiveForm(stored, rows[0].bytes);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    DataPropMgr mgr;
    mgr.SetID(4);
    mgr.AddApp(Column(0), false);
    mgr.AddUser(Column(-1), true);
    LoadAll(row.bytes, mgr);
    EXPECT_EQ(mgr.GetID(), row.nID);
    ASSERT_EQ(mgr.GetAppCount(), row.slotIDs.size());
    for (size_t i = 0; i < row.slotIDs.size(); ++i) {
      EXPECT_EQ(mgr.GetAppAt(i) ? mgr.GetAppAt(i)->GetID() : -1, row.slotIDs[i]) << "slot " << i;
    }
    EXPECT_EQ(DisplayOrder(mgr), row.order);
    mgr.AddUser(Column(-1), true);
    EXPECT_EQ(mgr.GetUserAt(mgr.GetUserCount() - 1)->GetID(), row.nNextUserID);
    ExpectEveryCutThrowsEndOfFile(row.bytes, [](CArchive& ar) { DataPropMgr().Serialize(ar); });
  }
  DataPropMgr mgr;
  EXPECT_THROW(LoadAll(ByteWriter().Word(4).Int(0).Counter(1ull << 40, false).Get(), mgr), CArchiveException);
}
