// How many heap blocks the records of a document keep: a document holds a
// million of them, so a loaded or edited item must stay the item itself and
// one block for all its values, and a recorded edit adds one block for the
// whole undo history. Blocks are counted by replacing operator new and
// delete for this test program.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "DataMgr/records/DataItemMgr.h"
#include "tests/support/ArchiveTestSupport.h"

namespace {

long long g_nLiveBlocks = 0;

}  // namespace

void* operator new(size_t nSize) {
  void* p = std::malloc(nSize == 0 ? 1 : nSize);
  if (p == nullptr) throw std::bad_alloc();
  ++g_nLiveBlocks;
  return p;
}
void operator delete(void* p) noexcept {
  if (p == nullptr) return;
  --g_nLiveBlocks;
  std::free(p);
}
void operator delete(void* p, size_t) noexcept { operator delete(p); }

namespace {

const int ITEMS = 200;
// The item list's array and the working buffers of the thread, shared by
// all records.
const long long SHARED_BLOCKS = 16;

// Ten values of every kind, texts longer than a short string's buffer.
void Fill(DataItem& item, int n, bool bRecord) {
  item.SetData(5000, CString("A title long enough to need the heap"), bRecord);
  item.SetData(5001, CString("Notes"), bRecord);
  item.SetData(5002, n, bRecord);
  item.SetData(5003, n % 7, bRecord);
  item.SetData(5004, n * 0.5, bRecord);
  item.SetData(5005, DateTime::FromJulian(2460000 + n, -1), bRecord);
  item.SetData(5006, Money(n), bRecord);
  item.SetData(5007, n % 20, bRecord);
  item.SetData(5008, n % 2 == 0, bRecord);
  item.SetData(5009, CString("Place"), bRecord);
}

TEST(RecordMemoryTest, AnItemKeepsOneBlockForItsValuesAndOneForItsHistory) {
  DataItemMgr items;
  for (int n = 0; n < ITEMS; ++n) Fill(*items.Create(nullptr, true, true), n, false);
  const test_support::Bytes bytes = test_support::Store([&](CArchive& ar) { items.Serialize(ar); });

  DataItemMgr loaded;
  const long long nBefore = g_nLiveBlocks;
  test_support::LoadAll(bytes, loaded);
  ASSERT_EQ(loaded.GetCount(), static_cast<size_t>(ITEMS));
  EXPECT_LE(g_nLiveBlocks - nBefore, 2 * ITEMS + SHARED_BLOCKS) << "after loading";

  for (int n = 0; n < ITEMS; ++n) Fill(*loaded.GetAt(static_cast<size_t>(n)), n + 1, false);
  EXPECT_LE(g_nLiveBlocks - nBefore, 2 * ITEMS + SHARED_BLOCKS) << "after edits not recorded";

  for (int n = 0; n < ITEMS; ++n) Fill(*loaded.GetAt(static_cast<size_t>(n)), n + 2, true);
  EXPECT_LE(g_nLiveBlocks - nBefore, 3 * ITEMS + SHARED_BLOCKS) << "after recorded edits";
}

}  // namespace
