#ifndef DATAMGR_TYPES_VALUEBLOCK_H_
#define DATAMGR_TYPES_VALUEBLOCK_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "DataMgr/types/ValueKinds.h"

// The entries of one record packed into one heap block of exactly their
// size: each entry a column ID, a kind (0 to 15) and a payload of bytes, in
// ascending (ID, kind) order, an (ID, kind) at most once. An empty block is
// one null pointer. Copies are deep. Internal to the library's records: the
// values of a record (ValueStore) and its undo histories (UndoStore) are
// such blocks.
//
// The payload size follows from the kind: kinds 0 to 6 are the value kinds
// of ValueKinds.h (fixed sizes, a text's length prefix); kinds 8 to 15
// (HISTORY set) and kind 5, a text, start with a varint byte count.
//
// Layout: a 32-bit count of the entry bytes, then per entry a tag byte
// (kind in the low 4 bits, the ID's distance to the previous entry's ID in
// the high 4 bits: 0 to 14, or 15 when the 32-bit ID follows), then the
// payload. The first entry's distance counts from 0.
//
// A change that keeps the payload's size writes in place; any other change
// builds a new block and releases the old one. Lookups walk the entries
// from the start: a record holds tens of values, not thousands.
class ValueBlock {
 public:
  static constexpr uint8_t HISTORY = 8;

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

  ValueBlock() = default;
  ValueBlock(const ValueBlock& other);
  ValueBlock& operator=(const ValueBlock& other);
  ValueBlock(ValueBlock&& other) noexcept : m_pData(other.m_pData) { other.m_pData = nullptr; }
  ValueBlock& operator=(ValueBlock&& other) noexcept;
  ~ValueBlock();

  bool IsEmpty() const { return m_pData == nullptr; }
  void Clear();

  // The payload of (nID, nKind), or null.
  const uint8_t* Find(int nID, uint8_t nKind) const;
  // Whether an entry of nID has a kind from nFirstKind up to (without)
  // nEndKind.
  bool Contains(int nID, uint8_t nFirstKind, uint8_t nEndKind) const;

  // fn(const Entry&) for every entry, in order.
  template <typename Fn>
  void ForEach(Fn fn) const {
    Cursor cursor(*this);
    Entry entry;
    while (cursor.Next(entry)) fn(static_cast<const Entry&>(entry));
  }

  // Whether both blocks hold the same IDs and kinds in the same order and
  // equal(nKind, pPayload, pOtherPayload) holds for every pair of payloads.
  template <typename Equal>
  bool Equals(const ValueBlock& other, Equal equal) const {
    Cursor cursor(*this);
    Cursor otherCursor(other);
    Entry entry;
    Entry otherEntry;
    while (true) {
      const bool bMore = cursor.Next(entry);
      if (bMore != otherCursor.Next(otherEntry)) return false;
      if (!bMore) return true;
      if (entry.nID != otherEntry.nID || entry.nKind != otherEntry.nKind ||
          !equal(entry.nKind, entry.pPayload, otherEntry.pPayload)) {
        return false;
      }
    }
  }

  // Where the entry (nID, nKind) is, or would go; valid until the block
  // changes.
  struct Slot {
    int nID;
    uint8_t nKind;
    const uint8_t* pPayload;  // null when the entry is absent
    size_t nPayloadBytes;
    size_t nAt;   // the entry's first byte, or where it would go
    size_t nEnd;  // past the entry (nAt when absent)
    int nPrevID;  // the ID of the entry before (0 for the first)
  };
  Slot Seek(int nID, uint8_t nKind) const;

  // Gives the slot's entry a payload of nBytes that write(uint8_t*) fills,
  // adding the entry when it is absent. The old block is released only
  // after write, so write may read the old payload when the size changes
  // (it is written in place when the size holds).
  template <typename Write>
  void Put(const Slot& slot, size_t nBytes, Write write) {
    uint8_t* pOld = nullptr;
    write(Reserve(slot, nBytes, pOld));
    Release(pOld);
  }
  template <typename Write>
  void Put(int nID, uint8_t nKind, size_t nBytes, Write write) {
    Put(Seek(nID, nKind), nBytes, write);
  }
  // Removes the entries of nID with a kind from nFirstKind up to (without)
  // nEndKind; returns whether there was one.
  bool Erase(int nID, uint8_t nFirstKind, uint8_t nEndKind);

  // Loading: replaces the block by pending entries in any order, their
  // payloads in buffer. Of two entries with the same ID and kind the one
  // given later counts. Sorts pending.
  void Assign(std::vector<Pending>& pending, const uint8_t* pBuffer);

  // The payload bytes of an entry of nKind whose payload starts at p.
  static size_t PayloadSize(uint8_t nKind, const uint8_t* p) {
    const uint8_t nSize = PAYLOAD_SIZE[nKind & KIND_MASK];
    if (nSize != COUNTED) return nSize;
    size_t nCount = p[0];
    if (nCount < 0x80) return 1 + nCount;
    const uint8_t* pAfter = ReadVarint(p, nCount);
    return static_cast<size_t>(pAfter - p) + nCount;
  }

 private:
  // Reads the entries one after the other.
  class Cursor {
   public:
    explicit Cursor(const ValueBlock& block) : m_pBegin(block.Begin()), m_p(m_pBegin), m_pEnd(m_p + block.GetBytes()) {}
    // The next entry, or false at the end.
    bool Next(Entry& entry) {
      if (m_p >= m_pEnd) return false;
      m_p = Decode(m_p, m_nPrevID, entry);
      m_nPrevID = entry.nID;
      return true;
    }
    // Where the next entry starts, and the ID of the one before it.
    size_t GetOffset() const { return static_cast<size_t>(m_p - m_pBegin); }
    int GetPrevID() const { return m_nPrevID; }

   private:
    const uint8_t* m_pBegin;
    const uint8_t* m_p;
    const uint8_t* m_pEnd;
    int m_nPrevID = 0;
  };

  static constexpr uint8_t KIND_MASK = 0x0F;
  static constexpr int DISTANCE_SHIFT = 4;
  static constexpr int FULL_ID = 15;
  static constexpr uint8_t COUNTED = 0xFF;  // the payload starts with its byte count
  // The payload size of each kind, or COUNTED.
  static constexpr uint8_t PAYLOAD_SIZE[16] = {1, 4, 8, 9, 8, COUNTED, 0, 0, COUNTED, COUNTED, COUNTED, COUNTED,
                                               COUNTED, COUNTED, COUNTED, COUNTED};

  size_t GetBytes() const {
    uint32_t nBytes = 0;
    if (m_pData != nullptr) std::memcpy(&nBytes, m_pData, sizeof nBytes);
    return nBytes;
  }
  // The first entry; null when the block is empty.
  const uint8_t* Begin() const { return m_pData ? m_pData + sizeof(uint32_t) : nullptr; }
  // Reads the entry at p, whose predecessor has nPrevID; returns the next.
  static const uint8_t* Decode(const uint8_t* p, int nPrevID, Entry& entry) {
    const uint8_t nTag = *p++;
    entry.nKind = nTag & KIND_MASK;
    const int nDistance = nTag >> DISTANCE_SHIFT;
    if (nDistance == FULL_ID) {
      std::memcpy(&entry.nID, p, sizeof(int));
      p += sizeof(int);
    } else {
      entry.nID = nPrevID + nDistance;
    }
    entry.pPayload = p;
    entry.nPayloadBytes = PayloadSize(entry.nKind, p);
    return p + entry.nPayloadBytes;
  }
  static uint8_t* WriteHeader(uint8_t* p, int nID, int nPrevID, uint8_t nKind);
  static uint8_t* Allocate(size_t nBytes);
  static void Release(uint8_t* pData);
  // Makes room for the payload and returns it; pOld receives the block to
  // release after the payload is written (null when written in place).
  uint8_t* Reserve(const Slot& slot, size_t nBytes, uint8_t*& pOld);
  // Replaces the entry bytes from nFrom to nTo by an entry (nID, nKind) of
  // nPayloadBytes when bInsert, else by nothing, and re-encodes the header
  // of the entry after them. Returns the new entry's payload (or null).
  uint8_t* Splice(size_t nFrom, size_t nTo, int nPrevID, bool bInsert, int nID, uint8_t nKind,
                  size_t nPayloadBytes, uint8_t*& pOld);

  // A 32-bit count of the entry bytes, then the entries; null when empty.
  uint8_t* m_pData = nullptr;
};

#endif  // DATAMGR_TYPES_VALUEBLOCK_H_
