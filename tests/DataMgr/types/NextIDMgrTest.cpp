#include "DataMgr/types/NextIDMgr.h"

#include <gtest/gtest.h>

#include <climits>

#include "tests/support/ArchiveTestSupport.h"

using test_support::ByteWriter;

namespace {

NextIDMgr WithNext(int nNext) {
  NextIDMgr ids;
  ids.UpdateNextID(nNext - 1);
  return ids;
}

}  // namespace

// IDs run 0, 1, 2, ... and past the largest wrap without failing.
TEST(NextIDMgrTest, HandsOutIDsInOrderAndWraps) {
  NextIDMgr ids;
  EXPECT_EQ(ids.GetNextID(), 0);
  EXPECT_EQ(ids.GetNextID(), 1);
  ids.ResetNextID();
  EXPECT_EQ(ids.GetNextID(), 0);
  ids.UpdateNextID(INT_MAX);
  EXPECT_EQ(ids.GetNextID(), INT_MIN);
  EXPECT_EQ(ids.GetNextID(), INT_MIN + 1);
  const struct {
    int nID, nAfter;
    bool bValid;
  } rows[] = {{4, 5, true}, {0, 1, true}, {-1, 0, false}, {INT_MAX, INT_MIN, true}, {INT_MIN, INT_MIN + 1, false}};
  for (const auto& row : rows) {
    EXPECT_EQ(NextIDMgr::IDAfter(row.nID), row.nAfter) << row.nID;
    EXPECT_EQ(NextIDMgr::IsValidID(row.nID), row.bValid) << row.nID;
  }
}

TEST(NextIDMgrTest, UpdateOnlyMovesPastHigherIDs) {
  const struct {
    int nNext, nSeen, nExpected;
  } cases[] = {{3, -1, 3}, {3, 5, 6}, {9, 5, 9}, {5, 5, 6}};
  for (const auto& c : cases) {
    NextIDMgr ids = WithNext(c.nNext);
    EXPECT_EQ(ids.VerifyNextID(c.nNext), true);
    EXPECT_EQ(ids.VerifyNextID(c.nNext + 1), false);
    ids.UpdateNextID(c.nSeen);
    EXPECT_EQ(ids.GetNextID(), c.nExpected) << "next " << c.nNext << ", seen " << c.nSeen;
  }
  EXPECT_TRUE(WithNext(3) < WithNext(4));
  EXPECT_TRUE(WithNext(4) > WithNext(3));
  EXPECT_FALSE(WithNext(4) == WithNext(3));
}

// Version word, then the next ID (stored as the sort order set's archive
// shows); loading ignores the version.
TEST(NextIDMgrTest, LoadingIgnoresTheVersionWord) {
  EXPECT_EQ(test_support::Loaded<NextIDMgr>(ByteWriter().Word(0xFFFF).Int(7).Get()).GetNextID(), 7);
}
