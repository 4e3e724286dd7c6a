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

TEST(NextIDMgrTest, HandsOutZeroOneTwo) {
  NextIDMgr ids;
  EXPECT_EQ(ids.GetNextID(), 0);
  EXPECT_EQ(ids.GetNextID(), 1);
  EXPECT_EQ(ids.GetNextID(), 2);
  ids.ResetNextID();
  EXPECT_EQ(ids.GetNextID(), 0);
}

TEST(NextIDMgrTest, ValidIDsAreZeroAndAbove) {
  EXPECT_TRUE(NextIDMgr::IsValidID(0));
  EXPECT_TRUE(NextIDMgr::IsValidID(INT_MAX));
  EXPECT_FALSE(NextIDMgr::IsValidID(-1));
  EXPECT_FALSE(NextIDMgr::IsValidID(INT_MIN));
}

TEST(NextIDMgrTest, UpdateOnlyMovesPastHigherIDs) {
  const struct {
    int nNext, nSeen, nExpected;
  } cases[] = {{3, -1, 3}, {3, 5, 6}, {9, 5, 9}, {5, 5, 6}};
  for (const auto& c : cases) {
    NextIDMgr ids = WithNext(c.nNext);
    ids.UpdateNextID(c.nSeen);
    EXPECT_EQ(ids.GetNextID(), c.nExpected) << "next " << c.nNext << ", seen " << c.nSeen;
  }
}

TEST(NextIDMgrTest, VerifyAndCompare) {
  EXPECT_TRUE(WithNext(4).VerifyNextID(4));
  EXPECT_FALSE(WithNext(3).VerifyNextID(4));
  EXPECT_TRUE(WithNext(3) < WithNext(4));
  EXPECT_TRUE(WithNext(4) > WithNext(3));
  EXPECT_TRUE(WithNext(4) == WithNext(4));
  EXPECT_FALSE(WithNext(4) == WithNext(3));
}

TEST(NextIDMgrTest, PastTheLargestIDItWrapsWithoutFailing) {
  NextIDMgr ids;
  ids.UpdateNextID(INT_MAX);
  EXPECT_EQ(ids.GetNextID(), INT_MIN);
  EXPECT_EQ(ids.GetNextID(), INT_MIN + 1);
}

TEST(NextIDMgrTest, ArchiveIsVersionWordThenNextID) {
  NextIDMgr ids = WithNext(0x01020304);
  test_support::ExpectArchiveForm(ids, ByteWriter().Word(1).Int(0x01020304).Get(),
                                  [&](const NextIDMgr& loaded) { EXPECT_TRUE(loaded == ids); });
  NextIDMgr loaded;
  test_support::LoadAll(ByteWriter().Word(0xFFFF).Int(7).Get(), loaded);
  EXPECT_EQ(loaded.GetNextID(), 7);
}

TEST(NextIDMgrTest, IDAfterWrapsInsteadOfOverflowing) {
  EXPECT_EQ(NextIDMgr::IDAfter(4), 5);
  EXPECT_EQ(NextIDMgr::IDAfter(-1), 0);
  EXPECT_EQ(NextIDMgr::IDAfter(INT_MAX), INT_MIN);
}
