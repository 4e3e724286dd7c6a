#include "DataMgr/types/ValueBlock.h"

#include <algorithm>
#include <cstdint>
#include <new>

namespace {

const size_t INSERTION_SORT_LIMIT = 64;

// Copies the bytes from pFrom to pTo; returns the byte after the copy.
uint8_t* Copy(uint8_t* p, const uint8_t* pFrom, const uint8_t* pTo) {
  const auto nBytes = static_cast<size_t>(pTo - pFrom);
  if (nBytes > 0) std::memcpy(p, pFrom, nBytes);
  return p + nBytes;
}

// The width code (0, 1, 2 for 1, 2, 4 bytes) that holds nMaxOffset.
uint8_t WidthCode(uint32_t nMaxOffset) {
  if (nMaxOffset <= 0xFF) return 0;
  return nMaxOffset <= 0xFFFF ? 1 : 2;
}

uint8_t* WriteOffset(uint8_t* p, uint32_t nOffset, size_t nWidth) {
  if (nWidth == 1) {
    *p = static_cast<uint8_t>(nOffset);
  } else if (nWidth == 2) {
    const auto nShort = static_cast<uint16_t>(nOffset);
    std::memcpy(p, &nShort, sizeof nShort);
  } else {
    std::memcpy(p, &nOffset, sizeof nOffset);
  }
  return p + nWidth;
}

uint32_t OffsetOf(int nID, int nBaseID) { return static_cast<uint32_t>(nID) - static_cast<uint32_t>(nBaseID); }

}  // namespace

ValueBlock::ValueBlock(const ValueBlock& other) {
  if (other.m_pData == nullptr) return;
  const size_t nBytes = other.GetBytes();
  m_pData = Allocate(nBytes);
  std::memcpy(m_pData, other.m_pData, nBytes);
}

ValueBlock& ValueBlock::operator=(const ValueBlock& other) {
  if (this != &other) *this = ValueBlock(other);
  return *this;
}

ValueBlock& ValueBlock::operator=(ValueBlock&& other) noexcept {
  std::swap(m_pData, other.m_pData);
  return *this;
}

ValueBlock::~ValueBlock() { Release(m_pData); }

void ValueBlock::Clear() {
  Release(m_pData);
  m_pData = nullptr;
}

const uint8_t* ValueBlock::End(const Layout& layout) {
  const size_t nCounted = layout.bHistories ? Start(layout, KINDS) : CountOf(layout, TEXT_KIND);
  const uint8_t* p = CountedArea(layout);
  for (size_t i = 0; i < nCounted; ++i) p += CountedSize(p);
  return p;
}

size_t ValueBlock::GetBytes() const { return m_pData ? static_cast<size_t>(End(Parse()) - m_pData) : 0; }

// One pass over all IDs; a hit counts when its kind is wanted.
bool ValueBlock::Contains(int nID, unsigned nKinds) const {
  if (m_pData == nullptr) return false;
  const Layout layout = Parse();
  const long long nWanted = static_cast<long long>(nID) - layout.nBaseID;
  if (nWanted < 0 || nWanted > UINT32_MAX) return false;
  const size_t nEntries = Start(layout, KINDS);
  int nKind = 0;
  for (size_t i = 0; i < nEntries; ++i) {
    if (OffsetAt(layout, i) != nWanted) continue;
    while (Start(layout, nKind + 1) <= i) ++nKind;
    if ((nKinds >> nKind & 1) != 0) return true;
  }
  return false;
}

ValueBlock::Slot ValueBlock::Seek(int nID, uint8_t nKind) const {
  Slot slot{nID, nKind, nullptr, 0, 0, nullptr};
  if (m_pData == nullptr) return slot;
  const Layout layout = Parse();
  const Group group = GroupOf(layout, nKind);
  const Hit hit = Search(layout, group, nID);
  slot.nIndex = hit.nIndex;
  slot.pPlace = PayloadOf(layout, group, hit.nIndex);
  if (hit.bFound) {
    slot.pPayload = slot.pPlace;
    slot.nPayloadBytes = PayloadSize(nKind, slot.pPlace);
  }
  return slot;
}

// Allocators hand out blocks in steps of 16 bytes, less their own 8; a
// block asks for the whole step, which costs no more memory and lets an
// entry added later fit without a new block.
size_t ValueBlock::Capacity(size_t nBytes) { return std::max<size_t>(24, ((nBytes + 8 + 15) & ~size_t{15}) - 8); }

uint8_t* ValueBlock::Allocate(size_t nBytes) { return static_cast<uint8_t*>(::operator new(Capacity(nBytes))); }

void ValueBlock::Release(uint8_t* pData) { ::operator delete(pData); }

std::vector<ValueBlock::Entry>& ValueBlock::Buffer(int nWhich) {
  thread_local std::vector<Entry> buffers[2];
  buffers[nWhich].clear();
  return buffers[nWhich];
}

std::vector<ValueBlock::Entry>& ValueBlock::DecodeInto(std::vector<Entry>& entries) const {
  ForEach([&entries](const Entry& entry) { entries.push_back(entry); });
  return entries;
}

uint8_t* ValueBlock::Encode(const std::vector<Entry>& entries, size_t nBlank, uint8_t*& pBlank) {
  pBlank = nullptr;
  if (entries.empty()) return nullptr;
  int nBaseID = entries.front().nID;
  int nMaxID = nBaseID;
  size_t counts[KINDS] = {};
  size_t nFixedBytes = 0;
  size_t nCountedBytes = 0;
  for (const Entry& entry : entries) {
    nBaseID = std::min(nBaseID, entry.nID);
    nMaxID = std::max(nMaxID, entry.nID);
    ++counts[entry.nKind & KIND_MASK];
    (IsCounted(entry.nKind) ? nCountedBytes : nFixedBytes) += entry.nPayloadBytes;
  }
  const uint8_t nWidthCode = WidthCode(OffsetOf(nMaxID, nBaseID));
  const size_t nWidth = size_t{1} << nWidthCode;
  const bool bWideStarts = entries.size() > NARROW_LIMIT;
  uint8_t* const pData = Allocate(HeaderBytes(bWideStarts) + entries.size() * nWidth + nFixedBytes + nCountedBytes);
  pData[0] = static_cast<uint8_t>(nWidthCode | ((entries.front().nKind & HISTORY) ? HISTORIES_FLAG : 0) |
                                  (bWideStarts ? WIDE_STARTS_FLAG : 0));
  std::memcpy(pData + 1, &nBaseID, sizeof nBaseID);
  uint8_t* pID = WriteStarts(pData + HEADER_FIXED_BYTES, counts, bWideStarts);
  uint8_t* pFixed = pID + entries.size() * nWidth;
  uint8_t* pCounted = pFixed + nFixedBytes;
  for (size_t i = 0; i < entries.size(); ++i) {
    const Entry& entry = entries[i];
    pID = WriteOffset(pID, OffsetOf(entry.nID, nBaseID), nWidth);
    uint8_t*& pPayload = IsCounted(entry.nKind) ? pCounted : pFixed;
    if (i == nBlank) {
      pBlank = pPayload;
    } else if (entry.nPayloadBytes > 0) {
      std::memcpy(pPayload, entry.pPayload, entry.nPayloadBytes);
    }
    pPayload += entry.nPayloadBytes;
  }
  return pData;
}

// Copies the old block in pieces around the entry: the header with the new
// count, the IDs with the new one, the payloads with room for the new one.
uint8_t* ValueBlock::Splice(const Layout& layout, const Slot& slot, size_t nBytes, const uint8_t* pEnd) {
  const bool bInsert = slot.pPayload == nullptr;
  size_t counts[KINDS];
  for (int k = 0; k < KINDS; ++k) counts[k] = CountOf(layout, k);
  if (bInsert) ++counts[slot.nKind & KIND_MASK];
  const size_t nOldPayload = slot.nPayloadBytes;
  const size_t nBlockBytes = HeaderBytes(layout.bWideStarts) + static_cast<size_t>(pEnd - layout.pIDs) +
                             (bInsert ? layout.nWidth : 0) + nBytes - nOldPayload;
  uint8_t* const pData = Allocate(nBlockBytes);
  std::memcpy(pData, m_pData, HEADER_FIXED_BYTES);
  uint8_t* p = WriteStarts(pData + HEADER_FIXED_BYTES, counts, layout.bWideStarts);
  const uint8_t* const pIDAt = layout.pIDs + (GroupOf(layout, slot.nKind).nFirst + slot.nIndex) * layout.nWidth;
  p = Copy(p, layout.pIDs, pIDAt);
  if (bInsert) p = WriteOffset(p, OffsetOf(slot.nID, layout.nBaseID), layout.nWidth);
  p = Copy(p, pIDAt, layout.pFixed);
  p = Copy(p, layout.pFixed, slot.pPlace);
  uint8_t* const pPayload = p;
  Copy(p + nBytes, slot.pPlace + nOldPayload, pEnd);
  m_pData = pData;
  return pPayload;
}

size_t ValueBlock::HeaderBytes(bool bWideStarts) {
  return HEADER_FIXED_BYTES + KINDS * (bWideStarts ? sizeof(uint32_t) : 1);
}

uint8_t* ValueBlock::WriteStarts(uint8_t* p, const size_t* counts, bool bWideStarts) {
  size_t nStart = 0;
  for (int k = 0; k < KINDS; ++k) {
    nStart += counts[k];
    if (bWideStarts) {
      const auto nWide = static_cast<uint32_t>(nStart);
      std::memcpy(p, &nWide, sizeof nWide);
      p += sizeof nWide;
    } else {
      *p++ = static_cast<uint8_t>(nStart);
    }
  }
  return p;
}

// Moves what follows the payload (for a new entry also the IDs after it)
// to their new places, and for a new entry raises the group starts after
// its kind.
uint8_t* ValueBlock::SpliceInPlace(const Layout& layout, const Slot& slot, size_t nBytes, const uint8_t* pEnd) {
  uint8_t* const pData = m_pData;
  const bool bInsert = slot.pPayload == nullptr;
  const size_t nShift = bInsert ? layout.nWidth : 0;
  uint8_t* const pPlace = pData + (slot.pPlace - pData);
  uint8_t* const pOldAfter = pPlace + slot.nPayloadBytes;
  std::memmove(pPlace + nShift + nBytes, pOldAfter, static_cast<size_t>(pEnd - pOldAfter));
  if (!bInsert) return pPlace;
  uint8_t* const pIDAt =
      pData + (layout.pIDs - pData) + (GroupOf(layout, slot.nKind).nFirst + slot.nIndex) * layout.nWidth;
  std::memmove(pIDAt + layout.nWidth, pIDAt, static_cast<size_t>(pPlace - pIDAt));
  WriteOffset(pIDAt, OffsetOf(slot.nID, layout.nBaseID), layout.nWidth);
  size_t counts[KINDS];
  for (int k = 0; k < KINDS; ++k) counts[k] = CountOf(layout, k);
  ++counts[slot.nKind & KIND_MASK];
  WriteStarts(pData + HEADER_FIXED_BYTES, counts, layout.bWideStarts);
  return pPlace + layout.nWidth;
}

uint8_t* ValueBlock::Replace(const Slot& slot, size_t nBytes) {
  if (m_pData != nullptr) {
    const Layout layout = Parse();
    const long long nOffset = static_cast<long long>(slot.nID) - layout.nBaseID;
    const bool bSameMode = layout.bHistories == ((slot.nKind & HISTORY) != 0);
    const bool bFits = nOffset >= 0 && (layout.nWidth == 4 || nOffset < (1LL << (8 * layout.nWidth)));
    const bool bStartsHold = layout.bWideStarts || slot.pPayload != nullptr || Start(layout, KINDS) < NARROW_LIMIT;
    if (bSameMode && bFits && bStartsHold) {
      const uint8_t* const pEnd = End(layout);
      const auto nOldBytes = static_cast<size_t>(pEnd - m_pData);
      const size_t nNewBytes = nOldBytes + (slot.pPayload ? 0 : layout.nWidth) + nBytes - slot.nPayloadBytes;
      if (Capacity(nNewBytes) == Capacity(nOldBytes)) return SpliceInPlace(layout, slot, nBytes, pEnd);
      return Splice(layout, slot, nBytes, pEnd);
    }
  }
  std::vector<Entry>& entries = DecodeInto(Buffer(0));
  size_t nAt = 0;
  while (nAt < entries.size() && ((entries[nAt].nKind & KIND_MASK) < (slot.nKind & KIND_MASK) ||
                                  ((entries[nAt].nKind & KIND_MASK) == (slot.nKind & KIND_MASK) &&
                                   entries[nAt].nID < slot.nID))) {
    ++nAt;
  }
  const Entry entry{slot.nID, slot.nKind, nullptr, nBytes};
  if (slot.pPayload != nullptr) {
    entries[nAt] = entry;
  } else {
    entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(nAt), entry);
  }
  uint8_t* pPayload = nullptr;
  m_pData = Encode(entries, nAt, pPayload);
  return pPayload;
}

bool ValueBlock::Erase(int nID, unsigned nKinds) {
  if (!Contains(nID, nKinds)) return false;
  std::vector<Entry>& entries = DecodeInto(Buffer(0));
  entries.erase(std::remove_if(entries.begin(), entries.end(),
                               [nID, nKinds](const Entry& entry) {
                                 return entry.nID == nID && (nKinds >> (entry.nKind & KIND_MASK) & 1) != 0;
                               }),
                entries.end());
  uint8_t* pUnused = nullptr;
  uint8_t* const pOld = m_pData;
  m_pData = Encode(entries, entries.size(), pUnused);
  Release(pOld);
  return true;
}

void ValueBlock::Assign(std::vector<Pending>& pending, const uint8_t* pBuffer) {
  const auto before = [](const Pending& a, const Pending& b) {
    const int nKindA = a.nKind & KIND_MASK;
    const int nKindB = b.nKind & KIND_MASK;
    return nKindA < nKindB || (nKindA == nKindB && a.nID < b.nID);
  };
  const bool bInOrder =
      std::adjacent_find(pending.begin(), pending.end(), [&before](const Pending& a, const Pending& b) {
        return !before(a, b);
      }) == pending.end();
  if (!bInOrder) {
    if (pending.size() <= INSERTION_SORT_LIMIT) {
      for (size_t i = 1; i < pending.size(); ++i) {
        const Pending entry = pending[i];
        size_t j = i;
        for (; j > 0 && before(entry, pending[j - 1]); --j) pending[j] = pending[j - 1];
        pending[j] = entry;
      }
    } else {
      std::stable_sort(pending.begin(), pending.end(), before);
    }
  }
  std::vector<Entry>& entries = Buffer(0);
  for (size_t i = 0; i < pending.size(); ++i) {
    const bool bRepeated = i + 1 < pending.size() && !before(pending[i], pending[i + 1]);
    const Pending& entry = pending[i];
    if (!bRepeated) entries.push_back({entry.nID, entry.nKind, pBuffer + entry.nOffset, entry.nPayloadBytes});
  }
  uint8_t* pUnused = nullptr;
  uint8_t* const pOld = m_pData;
  m_pData = Encode(entries, entries.size(), pUnused);
  Release(pOld);
}
