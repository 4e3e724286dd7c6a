// Hit lists and found words: matching hits by place, indexes out of range,
// and the archives of hits and hit lists in both versions.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "DataMgr/document/DataFindMgr.h"
#include "DataMgr/document/FoundWordMgr.h"
#include "tests/support/ArchiveTestSupport.h"

namespace {

using test_support::ByteWriter;

DataFind MakeHit(int nID, int nStart, int nLineCount = -1, const char* pszPath = "", int nReplacedLength = -1) {
  DataFind hit;
  hit.SetID(nID);
  hit.SetDataItemID(7);
  hit.SetDataPropID(5001);
  hit.SetStartIndex(nStart);
  hit.SetLineCount(nLineCount);
  hit.SetFilePath(pszPath);
  hit.SetReplacedLength(nReplacedLength);
  return hit;
}

// "ID item/sub-item column@start lines path replaced".
std::string Described(const DataFind& hit) {
  return std::to_string(hit.GetID()) + " " + std::to_string(hit.GetDataItemID()) + "/" +
         std::to_string(hit.GetDataSubItemID()) + " " + std::to_string(hit.GetDataPropID()) + "@" +
         std::to_string(hit.GetStartIndex()) + " " + std::to_string(hit.GetLineCount()) + " " +
         hit.GetFilePath().GetStdString() + " " + std::to_string(hit.GetReplacedLength());
}

// A hit record of nVersion: ID nID, item 7, the item itself, column 5001,
// start 3; from version 2 the line count 2 and the path "p".
ByteWriter& WriteHit(ByteWriter& out, unsigned nVersion, int nID) {
  out.Word(nVersion).Int(nID).Int(7).Int(-1).Int(5001).Int(3);  // version, ID, item, sub-item, column, start
  if (nVersion >= 2) out.Int(2).Text("p");                       // line count, path
  return out;
}

}  // namespace

TEST(DataFindMgrTest, HitsAreMatchedByPlaceNotByNumber) {
  DataFindMgr hits;
  hits.Add(MakeHit(1, 0));
  hits.Add(MakeHit(2, 4));
  hits.Remove(MakeHit(9, 4));
  DataFindMgr other;
  other.Add(MakeHit(5, 0));
  EXPECT_TRUE(hits == other);
  EXPECT_FALSE(MakeHit(1, 0, -1, "a.txt") == MakeHit(1, 0));
  hits.Swap(0, 1);
  hits.RemoveAt(1);
  hits.SetDataFindID(1, 3);
  ASSERT_EQ(hits.GetCount(), 1u);
  EXPECT_EQ(Described(hits.GetAt(0)), "1 7/-1 5001@0 -1  -1");
  try {
    hits.GetAt(1);
    ADD_FAILURE() << "GetAt past the end did not throw";
  } catch (const std::out_of_range& e) {
    EXPECT_STREQ(e.what(), "invalid vector<T> subscript");
  }
}

// The replaced length is never stored. A list appends what it loads; a hit
// loaded over a used one keeps nothing of it.
TEST(DataFindMgrTest, ArchivesOfBothVersions) {
  DataFindMgr current;
  current.Add(MakeHit(4, 3, 2, "p", 6));
  ByteWriter currentBytes;
  WriteHit(currentBytes.Word(2).Counter(1, false), 2, 4);  // version, hit count, the hit
  test_support::ExpectArchiveForm(current, currentBytes.Get());
  for (unsigned nVersion : {1u, 2u}) {
    const std::string loaded = nVersion == 1 ? "4 7/-1 5001@3 -1  -1" : "4 7/-1 5001@3 2 p -1";
    ByteWriter hitBytes;
    WriteHit(hitBytes, nVersion, 4);
    DataFind used = MakeHit(1, 0, 9, "old", 6);
    test_support::LoadAll(hitBytes.Get(), used);
    EXPECT_EQ(Described(used), loaded) << "version " << nVersion;
    ByteWriter listBytes;
    WriteHit(WriteHit(listBytes.Word(nVersion).Counter(2, nVersion == 1), nVersion, 4), nVersion, 5);
    DataFindMgr hits;
    hits.Add(MakeHit(8, 0));
    test_support::LoadAll(listBytes.Get(), hits);
    ASSERT_EQ(hits.GetCount(), 3u) << "version " << nVersion;
    EXPECT_EQ(Described(hits.GetAt(0)) + ", " + Described(hits.GetAt(1)), "8 7/-1 5001@0 -1  -1, " + loaded);
    test_support::ExpectEveryCutThrowsEndOfFile(listBytes.Get(), [](CArchive& ar) { DataFindMgr().Serialize(ar); });
  }
  const test_support::Bytes huge = ByteWriter().Word(2).Counter(1ull << 40, false).Get();
  EXPECT_THROW(test_support::Load(huge, [](CArchive& ar) { DataFindMgr().Serialize(ar); }), CArchiveException);
}

TEST(FoundWordMgrTest, WordsAreFoundAndRemovedByExactWord) {
  FoundWordMgr words;
  for (const char* pszWord : {"Red", "red", "red"}) {
    FoundWord word;
    word.SetWord(pszWord);
    words.Add(word);
  }
  words.FindWord("red")->AddLocation(MakeHit(1, 0));
  EXPECT_EQ(words.GetAt(1).GetLocationCount(), 1u);
  EXPECT_EQ(words.FindWord("RED"), nullptr);
  words.Remove(words.GetAt(2));
  ASSERT_EQ(words.GetCount(), 2u);
  EXPECT_EQ(words.GetAt(1).GetLocationCount(), 0u) << "the first red went, the one without locations stays";
  EXPECT_EQ(words.GetAt(0).GetLocationAt(0).GetDataItemID(), -1);
  EXPECT_THROW(words.GetAt(2), std::out_of_range);
}
