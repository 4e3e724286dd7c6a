#ifndef DATAMGR_TYPES_VALUEBLOCK_H_
#define DATAMGR_TYPES_VALUEBLOCK_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "DataMgr/types/ValueKinds.h"

// The entries of one record packed into one heap block of their size
// (rounded up to the allocator's own 16-byte steps, which cost nothing):
// each entry a column ID, a kind and a payload of bytes, an (ID, kind) at
// most once. An empty block is one null pointer. Copies are deep.
// Internal to the library's records: the values of a record (ValueStore)
// and its undo histories (UndoStore) are such blocks.
//
// Kinds 0 to 6 are the value kinds of ValueKinds.h; a block of histories
// gives each the HISTORY bit (8 to 14). The entries are grouped by kind in
// that order and each group is sorted by column ID, so that a lookup, whose
// caller knows the kind, reads only the IDs of its own kind, and a record
// is loaded and saved in one pass (the archive holds the kinds in the same
// order).
//
// Payloads: a value of a fixed-size kind is the kind's bytes; a text, and
// every history, is counted: a varint byte count, then the bytes.
//
// Layout:
//   byte      bits 0-1: the width W of an ID (1, 2 or 4 bytes); bit 2: a
//             block of histories; bit 3: wide group starts
//   int32     the base ID, the smallest ID of the block
//   starts    per kind 1 to 7, the number of entries of the kinds before
//             it (the last one: of all kinds); one byte each, or 32 bits
//             each when the block holds 256 entries or more
//   IDs       per entry, kind by kind, ID minus base in W bytes
//   fixed     the payloads of the fixed-size kinds, in entry order
//   counted   the counted payloads, in entry order
// W is the smallest width that holds every ID minus the base.
//
// A change that keeps a payload's size writes in place, and so does a new
// entry that fits the block's rounding; any other change writes a new block
// and releases the old one.
class ValueBlock {
 public:
  static constexpr uint8_t HISTORY = 8;
  static constexpr int KINDS = 7;

  // One entry as read; pPayload is valid until the block changes.
  struct Entry {
    int nID;
    uint8_t nKind;
    const uint8_t* pPayload;
    size_t nPayloadBytes;
  };

  // An entry waiting in a loader's buffer: its payload is nPayloadBytes at
  // nOffset of the buffer.
  struct Pending {
    int nID;
    uint8_t nKind;
    uint32_t nOffset;
    uint32_t nPayloadBytes;
  };

  // Where the entry (nID, nKind) is, or would go; valid until the block
  // changes.
  struct Slot {
    int nID;
    uint8_t nKind;
    const uint8_t* pPayload;  // null when the entry is absent
    size_t nPayloadBytes;
    size_t nIndex;           // its place among the entries of its kind
    const uint8_t* pPlace;   // its payload, or where it would go
  };

  ValueBlock() = default;
  ValueBlock(const ValueBlock& other);
  ValueBlock& operator=(const ValueBlock& other);
  ValueBlock(ValueBlock&& other) noexcept : m_pData(other.m_pData) { other.m_pData = nullptr; }
  ValueBlock& operator=(ValueBlock&& other) noexcept;
  ~ValueBlock();

  bool IsEmpty() const { return m_pData == nullptr; }
  void Clear();

  // The payload of (nID, nKind), or null.
  const uint8_t* Find(int nID, uint8_t nKind) const {
    if (m_pData == nullptr) return nullptr;
    const Layout layout = Parse();
    const Group group = GroupOf(layout, nKind);
    const Hit hit = Search(layout, group, nID);
    return hit.bFound ? PayloadOf(layout, group, hit.nIndex) : nullptr;
  }
  // Whether nID has an entry of a kind in nKinds, a set of bits (1 << kind,
  // for kinds 0 to 6 without HISTORY).
  bool Contains(int nID, unsigned nKinds) const;
  Slot Seek(int nID, uint8_t nKind) const;
  // The number of entries of nKind.
  size_t GetCount(uint8_t nKind) const { return m_pData ? CountOf(Parse(), nKind & KIND_MASK) : 0; }

  // fn(const Entry&) for every entry of nKind, in ID order.
  template <typename Fn>
  void ForEachOfKind(uint8_t nKind, Fn fn) const {
    if (m_pData == nullptr) return;
    const Layout layout = Parse();
    const Group group = GroupOf(layout, nKind);
    const uint8_t* pPayload = PayloadOf(layout, group, 0);
    for (size_t i = 0; i < group.nCount; ++i) {
      Entry entry{IDAt(layout, group.nFirst + i), nKind, pPayload, PayloadSize(nKind, pPayload)};
      pPayload += entry.nPayloadBytes;
      fn(static_cast<const Entry&>(entry));
    }
  }
  // fn(const Entry&) for every entry, kind by kind.
  template <typename Fn>
  void ForEach(Fn fn) const {
    if (m_pData == nullptr) return;
    const uint8_t nHistory = (m_pData[0] & HISTORIES_FLAG) ? HISTORY : 0;
    for (uint8_t nKind = 0; nKind < KINDS; ++nKind) ForEachOfKind(static_cast<uint8_t>(nKind | nHistory), fn);
  }

  // Whether both blocks hold the same IDs and kinds and equal(nKind,
  // pPayload, pOtherPayload) holds for every pair of payloads.
  template <typename Equal>
  bool Equals(const ValueBlock& other, Equal equal) const {
    const std::vector<Entry>& entries = DecodeInto(Buffer(0));
    const std::vector<Entry>& otherEntries = other.DecodeInto(Buffer(1));
    if (entries.size() != otherEntries.size()) return false;
    for (size_t i = 0; i < entries.size(); ++i) {
      const Entry& a = entries[i];
      const Entry& b = otherEntries[i];
      if (a.nID != b.nID || a.nKind != b.nKind || !equal(a.nKind, a.pPayload, b.pPayload)) return false;
    }
    return true;
  }

  // Gives the slot's entry a payload of nBytes (the kind's size for a fixed
  // kind) that write(uint8_t*) fills, adding the entry when it is absent.
  // When the block's rounding holds the new size, the payload is written in
  // place and what follows it moves; otherwise a new block replaces this
  // one. Either way write must not read the block.
  template <typename Write>
  void Put(const Slot& slot, size_t nBytes, Write write) {
    if (slot.pPayload != nullptr && slot.nPayloadBytes == nBytes) {
      write(const_cast<uint8_t*>(slot.pPayload));
      return;
    }
    uint8_t* pOld = m_pData;
    write(Replace(slot, nBytes));
    if (pOld != m_pData) Release(pOld);
  }
  template <typename Write>
  void Put(int nID, uint8_t nKind, size_t nBytes, Write write) {
    Put(Seek(nID, nKind), nBytes, write);
  }
  // Removes the entries of nID of the kinds in nKinds (as for Contains);
  // returns whether there was one.
  bool Erase(int nID, unsigned nKinds);

  // Loading: replaces the block by pending entries, their payloads in
  // buffer. An archive written by the library gives them kind by kind and
  // in ID order; a damaged one may not, and of two entries with the same ID
  // and kind the one given later counts. Sorts pending.
  void Assign(std::vector<Pending>& pending, const uint8_t* pBuffer);

  // The payload bytes of an entry of nKind whose payload starts at p.
  static size_t PayloadSize(uint8_t nKind, const uint8_t* p) {
    return IsCounted(nKind) ? CountedSize(p) : FIXED_BYTES[nKind];
  }

 private:
  static constexpr uint8_t KIND_MASK = 0x07;
  static constexpr uint8_t WIDTH_MASK = 0x03;
  static constexpr uint8_t HISTORIES_FLAG = 0x04;
  static constexpr uint8_t WIDE_STARTS_FLAG = 0x08;
  static constexpr size_t NARROW_LIMIT = 0xFF;
  static constexpr size_t LINEAR_SEARCH_LIMIT = 8;
  static constexpr size_t HEADER_FIXED_BYTES = 1 + sizeof(int);
  // The payload bytes of each value kind; 0 for a counted one (and a flag).
  static constexpr uint8_t FIXED_BYTES[KINDS] = {1, 4, 8, 8, 0, 0, 9};
  static constexpr int TEXT_KIND = 5;
  static_assert(TEXT_KIND == static_cast<int>(ValueKind::Text) && KINDS == static_cast<int>(ValueKind::Money) + 1,
                "the groups follow the value kinds");
  static_assert(FIXED_BYTES[static_cast<int>(ValueKind::Bool)] == Packing<bool>::Size(false) &&
                    FIXED_BYTES[static_cast<int>(ValueKind::Int)] == Packing<int>::Size(0) &&
                    FIXED_BYTES[static_cast<int>(ValueKind::Double)] == Packing<double>::Size(0.0) &&
                    FIXED_BYTES[static_cast<int>(ValueKind::DateTime)] == Packing<DateTime>::Size(DateTime()) &&
                    FIXED_BYTES[static_cast<int>(ValueKind::Money)] == Packing<Money>::Size(Money()),
                "a fixed-size kind's payload is its packed value");

  static bool IsCounted(uint8_t nKind) { return (nKind & HISTORY) != 0 || (nKind & KIND_MASK) == TEXT_KIND; }

  static size_t CountedSize(const uint8_t* p) {
    size_t nCount = p[0];
    if (nCount < 0x80) return 1 + nCount;
    const uint8_t* pAfter = ReadVarint(p, nCount);
    return static_cast<size_t>(pAfter - p) + nCount;
  }

  // The header read.
  struct Layout {
    const uint8_t* pStarts;
    const uint8_t* pIDs;
    const uint8_t* pFixed;
    int nBaseID;
    size_t nWidth;
    bool bHistories;
    bool bWideStarts;
  };
  Layout Parse() const {
    Layout layout;
    const uint8_t nFlags = m_pData[0];
    layout.nWidth = size_t{1} << (nFlags & WIDTH_MASK);
    layout.bHistories = (nFlags & HISTORIES_FLAG) != 0;
    layout.bWideStarts = (nFlags & WIDE_STARTS_FLAG) != 0;
    std::memcpy(&layout.nBaseID, m_pData + 1, sizeof(int));
    layout.pStarts = m_pData + HEADER_FIXED_BYTES;
    layout.pIDs = layout.pStarts + KINDS * (layout.bWideStarts ? sizeof(uint32_t) : 1);
    layout.pFixed = layout.pIDs + Start(layout, KINDS) * layout.nWidth;
    return layout;
  }
  // The entries of the kinds before nKind (0 to 7).
  static size_t Start(const Layout& layout, int nKind) {
    if (nKind == 0) return 0;
    if (!layout.bWideStarts) return layout.pStarts[nKind - 1];
    uint32_t nStart = 0;
    std::memcpy(&nStart, layout.pStarts + (nKind - 1) * sizeof nStart, sizeof nStart);
    return nStart;
  }
  // The fixed payload bytes of the kinds before nKind (0 to 7), kind by
  // kind from the last. Unrolled by hand: every typed read passes here, and
  // a loop costs half as much again; the kinds without fixed bytes fold
  // away.
  static size_t FixedBefore(const Layout& layout, int nKind) {
    if (layout.bHistories) return 0;
    const auto bytesOf = [&layout](int k) { return (Start(layout, k + 1) - Start(layout, k)) * FIXED_BYTES[k]; };
    size_t nBytes = 0;
    switch (nKind) {
      case 7:
        nBytes += bytesOf(6);
        [[fallthrough]];
      case 6:
        nBytes += bytesOf(5);
        [[fallthrough]];
      case 5:
        nBytes += bytesOf(4);
        [[fallthrough]];
      case 4:
        nBytes += bytesOf(3);
        [[fallthrough]];
      case 3:
        nBytes += bytesOf(2);
        [[fallthrough]];
      case 2:
        nBytes += bytesOf(1);
        [[fallthrough]];
      case 1:
        nBytes += bytesOf(0);
        break;
      default:
        break;
    }
    return nBytes;
  }
  static const uint8_t* CountedArea(const Layout& layout) { return layout.pFixed + FixedBefore(layout, KINDS); }
  static size_t CountOf(const Layout& layout, int nKind) { return Start(layout, nKind + 1) - Start(layout, nKind); }

  // The entries of one kind: where they start among all entries, how many,
  // the fixed payload bytes and counted entries before them.
  struct Group {
    uint8_t nKind;
    size_t nFirst;
    size_t nCount;
  };
  static Group GroupOf(const Layout& layout, uint8_t nKind) {
    const int nGroup = nKind & KIND_MASK;
    const size_t nFirst = Start(layout, nGroup);
    return {nKind, nFirst, Start(layout, nGroup + 1) - nFirst};
  }

  static uint32_t OffsetAt(const Layout& layout, size_t nEntry) {
    const uint8_t* p = layout.pIDs + nEntry * layout.nWidth;
    if (layout.nWidth == 1) return *p;
    if (layout.nWidth == 2) {
      uint16_t nOffset = 0;
      std::memcpy(&nOffset, p, sizeof nOffset);
      return nOffset;
    }
    uint32_t nOffset = 0;
    std::memcpy(&nOffset, p, sizeof nOffset);
    return nOffset;
  }
  static int IDAt(const Layout& layout, size_t nEntry) {
    return static_cast<int>(static_cast<uint32_t>(layout.nBaseID) + OffsetAt(layout, nEntry));
  }

  // The place of nID among the entries of a group.
  struct Hit {
    size_t nIndex;
    bool bFound;
  };
  static Hit Search(const Layout& layout, const Group& group, int nID) {
    const long long nWanted = static_cast<long long>(nID) - layout.nBaseID;
    if (nWanted < 0) return {0, false};
    size_t nLow = 0;
    size_t nHigh = group.nCount;
    while (nHigh - nLow > LINEAR_SEARCH_LIMIT) {
      const size_t nMiddle = nLow + (nHigh - nLow) / 2;
      if (OffsetAt(layout, group.nFirst + nMiddle) < nWanted) {
        nLow = nMiddle + 1;
      } else {
        nHigh = nMiddle;
      }
    }
    while (nLow < nHigh && OffsetAt(layout, group.nFirst + nLow) < nWanted) ++nLow;
    return {nLow, nLow < group.nCount && OffsetAt(layout, group.nFirst + nLow) == nWanted};
  }

  // Where the payload of entry nIndex of a group is, or would go. Texts
  // are the only counted values, so only a block of histories has counted
  // payloads of other kinds before a group.
  static const uint8_t* PayloadOf(const Layout& layout, const Group& group, size_t nIndex) {
    if (!IsCounted(group.nKind)) {
      return layout.pFixed + FixedBefore(layout, group.nKind) + nIndex * FIXED_BYTES[group.nKind];
    }
    const uint8_t* p = CountedArea(layout);
    for (size_t i = (layout.bHistories ? group.nFirst : 0) + nIndex; i > 0; --i) p += CountedSize(p);
    return p;
  }

  size_t GetBytes() const;
  static size_t HeaderBytes(bool bWideStarts);
  // Writes the group starts from the counts of the kinds; returns the byte
  // after them.
  static uint8_t* WriteStarts(uint8_t* p, const size_t* counts, bool bWideStarts);
  // Past the last counted payload: the end of the block.
  static const uint8_t* End(const Layout& layout);
  // What a block of nBytes gets from the allocator.
  static size_t Capacity(size_t nBytes);
  static uint8_t* Allocate(size_t nBytes);
  static void Release(uint8_t* pData);
  // Two empty buffers of entries (0 and 1), the thread's own.
  static std::vector<Entry>& Buffer(int nWhich);
  // Appends the entries, kind by kind.
  std::vector<Entry>& DecodeInto(std::vector<Entry>& entries) const;
  // A new block of entries given kind by kind and in ID order, or null for
  // none; the payload of entry nBlank (when below the count) is left
  // unwritten and returned in pBlank.
  static uint8_t* Encode(const std::vector<Entry>& entries, size_t nBlank, uint8_t*& pBlank);
  // Puts the slot's entry with a payload of nBytes into a new block that
  // replaces this one (the old one is not released) and returns the
  // payload's place.
  uint8_t* Replace(const Slot& slot, size_t nBytes);
  // Replace for an ID that the block's base and width hold.
  uint8_t* Splice(const Layout& layout, const Slot& slot, size_t nBytes, const uint8_t* pEnd);
  // Splice within the block as allocated, when its rounding holds the new
  // size (and no less).
  uint8_t* SpliceInPlace(const Layout& layout, const Slot& slot, size_t nBytes, const uint8_t* pEnd);

  uint8_t* m_pData = nullptr;
};

#endif  // DATAMGR_TYPES_VALUEBLOCK_H_
