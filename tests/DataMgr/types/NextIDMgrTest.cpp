#include "DataMgr/types/NextIDMgr.h"

#include <gtest/gtest.h>

#include <climits>

#include "tests/support/ArchiveTestSupport.h"

using test_support::ByteWriter;
using test_support::Bytes;
using test_support::ExpectEveryCutThrowsEndOfFile;
using test_support::Load;
using test_support::Store;
using test_support::ToHex;

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
  NextIDMgr ids = WithNext(3);
  ids.UpdateNextID(-1);
  EXPECT_EQ(ids.GetNextID(), 3);

  ids = WithNext(3);
  ids.UpdateNextID(5);
  EXPECT_EQ(ids.GetNextID(), 6);

  ids = WithNext(9);
  ids.UpdateNextID(5);
  EXPECT_EQ(ids.GetNextID(), 9);

  ids = WithNext(5);
  ids.UpdateNextID(5);
  EXPECT_EQ(ids.GetNextID(), 6);
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
  const Bytes bytes = Store([&](CArchive& ar) { ids.Serialize(ar); });
  EXPECT_EQ(ToHex(bytes), ToHex(ByteWriter().Word(1).Int(0x01020304).Get()));

  NextIDMgr loaded;
  EXPECT_EQ(Load(bytes, [&](CArchive& ar) { loaded.Serialize(ar); }), 0u);
  EXPECT_TRUE(loaded == ids);
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { loaded.Serialize(ar); })), ToHex(bytes));
  ExpectEveryCutThrowsEndOfFile(bytes, [](CArchive& ar) { NextIDMgr().Serialize(ar); });

  Load(ByteWriter().Word(0xFFFF).Int(7).Get(), [&](CArchive& ar) { loaded.Serialize(ar); });
  EXPECT_EQ(loaded.GetNextID(), 7);
}

TEST(NextIDMgrTest, IDAfterWrapsInsteadOfOverflowing) {
  EXPECT_EQ(NextIDMgr::IDAfter(4), 5);
  EXPECT_EQ(NextIDMgr::IDAfter(-1), 0);
  EXPECT_EQ(NextIDMgr::IDAfter(INT_MAX), INT_MIN);
}
