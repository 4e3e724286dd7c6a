// Hit lists and found words: matching hits by place, indexes out of range,
// and the hit list's archive in both versions.
#include <gtest/gtest.h>

#include <stdexcept>

#include "DataMgr/document/DataFindMgr.h"
#include "DataMgr/document/FoundWordMgr.h"
#include "tests/support/ArchiveTestSupport.h"

namespace {

using test_support::ByteWriter;

DataFind MakeHit(int nID, int nItemID, int nSubItemID, int nColumnID, int nStart) {
  DataFind hit;
  hit.SetID(nID);
  hit.SetDataItemID(nItemID);
  hit.SetDataSubItemID(nSubItemID);
  hit.SetDataPropID(nColumnID);
  hit.SetStartIndex(nStart);
  return hit;
}

// A hit record: version, ID, item, sub-item, column, start index, and from
// version 2 the line count and the path.
ByteWriter& WriteHit(ByteWriter& out, unsigned nVersion, int nID, int nLineCount, const char* pszPath) {
  out.Word(nVersion).Int(nID).Int(7).Int(-1).Int(5001).Int(3);
  if (nVersion >= 2) out.Int(nLineCount).Text(pszPath);
  return out;
}

}  // namespace

TEST(DataFindMgrTest, HitsAreMatchedByPlaceNotByNumber) {
  DataFindMgr hits;
  hits.Add(MakeHit(1, 7, -1, 5001, 0));
  hits.Add(MakeHit(2, 7, -1, 5001, 4));
  hits.Remove(MakeHit(9, 7, -1, 5001, 4));
  ASSERT_EQ(hits.GetCount(), 1u);
  EXPECT_EQ(hits.GetAt(0).GetStartIndex(), 0);
  DataFindMgr other;
  other.Add(MakeHit(5, 7, -1, 5001, 0));
  EXPECT_TRUE(hits == other);
  DataFind withPath = MakeHit(1, 7, -1, 5001, 0);
  withPath.SetFilePath("a.txt");
  EXPECT_FALSE(withPath == MakeHit(1, 7, -1, 5001, 0));
  hits.Swap(0, 1);
  hits.RemoveAt(1);
  hits.SetDataFindID(1, 3);
  EXPECT_EQ(hits.GetAt(0).GetID(), 1);
  try {
    hits.GetAt(1);
    ADD_FAILURE() << "GetAt past the end did not throw";
  } catch (const std::out_of_range& e) {
    EXPECT_STREQ(e.what(), "invalid vector<T> subscript");
  }
}

TEST(DataFindMgrTest, Version2StoresEveryFieldButTheReplacedLength) {
  DataFindMgr hits;
  DataFind hit = MakeHit(4, 7, -1, 5001, 3);
  hit.SetLineCount(2);
  hit.SetFilePath("C:\\notes.txt");
  hit.SetReplacedLength(6);
  hits.Add(hit);
  ByteWriter out;
  out.Word(2).Counter(1, false);
  WriteHit(out, 2, 4, 2, "C:\\notes.txt");
  test_support::ExpectArchiveForm(hits, out.Get(), [](const DataFindMgr& loaded) {
    ASSERT_EQ(loaded.GetCount(), 1u);
    EXPECT_EQ(loaded.GetAt(0).GetID(), 4);
    EXPECT_EQ(loaded.GetAt(0).GetLineCount(), 2);
    EXPECT_EQ(loaded.GetAt(0).GetReplacedLength(), -1);
  });
}

TEST(DataFindMgrTest, Version1HitsLoadWithoutLineCountAndPathAndAreAppended) {
  ByteWriter out;
  out.Word(1).Counter(2, true);
  WriteHit(out, 1, 1, 0, "");
  WriteHit(out, 2, 2, 9, "kept.txt");
  DataFindMgr hits;
  hits.Add(MakeHit(8, 0, 0, 0, 0));
  test_support::LoadAll(out.Get(), hits);
  ASSERT_EQ(hits.GetCount(), 3u);
  EXPECT_EQ(hits.GetAt(0).GetID(), 8);
  EXPECT_EQ(hits.GetAt(1).GetDataPropID(), 5001);
  EXPECT_EQ(hits.GetAt(1).GetLineCount(), -1);
  EXPECT_EQ(hits.GetAt(1).GetFilePath(), "");
  EXPECT_EQ(hits.GetAt(2).GetFilePath(), "kept.txt");
  test_support::ExpectEveryCutThrowsEndOfFile(out.Get(), [](CArchive& ar) { DataFindMgr().Serialize(ar); });
}

TEST(DataFindMgrTest, ACountBeyondTheBytesLeftThrowsBeforeReserving) {
  const test_support::Bytes bytes = ByteWriter().Word(2).Counter(1ull << 40, false).Get();
  EXPECT_THROW(test_support::Load(bytes, [](CArchive& ar) { DataFindMgr().Serialize(ar); }), CArchiveException);
}

TEST(FoundWordMgrTest, WordsAreFoundAndRemovedByExactWord) {
  FoundWordMgr words;
  for (const char* pszWord : {"Red", "red", "red"}) {
    FoundWord word;
    word.SetWord(pszWord);
    word.SetReplace(CString(pszWord) + "!");
    words.Add(word);
  }
  words.FindWord("red")->AddLocation(MakeHit(1, 7, -1, 5001, 0));
  EXPECT_EQ(words.GetAt(1).GetLocationCount(), 1u);
  EXPECT_EQ(words.FindWord("RED"), nullptr);
  words.Remove(words.GetAt(2));
  ASSERT_EQ(words.GetCount(), 2u);
  EXPECT_EQ(words.GetAt(1).GetLocationCount(), 0u) << "the first red went, the one without locations stays";
  EXPECT_EQ(words.GetAt(0).GetLocationAt(0).GetDataItemID(), -1);
  EXPECT_THROW(words.GetAt(2), std::out_of_range);
}
