#include "DataMgr/types/ValueBlock.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "DataMgr/types/ValueKinds.h"

namespace {

const int MAX_DISTANCE = 14;
const size_t INSERTION_SORT_LIMIT = 64;
const size_t ID_BYTES = sizeof(int);

bool IsNear(int nID, int nPrevID) {
  const long long nDistance = static_cast<long long>(nID) - nPrevID;
  return nDistance >= 0 && nDistance <= MAX_DISTANCE;
}

size_t HeaderSize(int nID, int nPrevID) { return IsNear(nID, nPrevID) ? 1 : 1 + ID_BYTES; }

}  // namespace

uint8_t* ValueBlock::WriteHeader(uint8_t* p, int nID, int nPrevID, uint8_t nKind) {
  if (IsNear(nID, nPrevID)) {
    *p++ = static_cast<uint8_t>(((nID - nPrevID) << DISTANCE_SHIFT) | nKind);
    return p;
  }
  *p++ = static_cast<uint8_t>((FULL_ID << DISTANCE_SHIFT) | nKind);
  std::memcpy(p, &nID, ID_BYTES);
  return p + ID_BYTES;
}

ValueBlock::ValueBlock(const ValueBlock& other) {
  if (other.m_pData == nullptr) return;
  const size_t nBytes = sizeof(uint32_t) + other.GetBytes();
  m_pData = static_cast<uint8_t*>(::operator new(nBytes));
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

ValueBlock::Slot ValueBlock::Seek(int nID, uint8_t nKind) const {
  const size_t nBytes = GetBytes();
  Slot slot{nID, nKind, nullptr, 0, nBytes, nBytes, 0};
  Cursor cursor(*this);
  Entry entry;
  size_t nAt = 0;
  int nPrevID = 0;
  while (cursor.Next(entry)) {
    if (entry.nID > nID || (entry.nID == nID && entry.nKind >= nKind)) {
      slot.nAt = nAt;
      slot.nEnd = nAt;
      slot.nPrevID = nPrevID;
      if (entry.nID == nID && entry.nKind == nKind) {
        slot.nEnd = cursor.GetOffset();
        slot.pPayload = entry.pPayload;
        slot.nPayloadBytes = entry.nPayloadBytes;
      }
      return slot;
    }
    nAt = cursor.GetOffset();
    nPrevID = cursor.GetPrevID();
  }
  slot.nPrevID = nPrevID;
  return slot;
}

const uint8_t* ValueBlock::Find(int nID, uint8_t nKind) const {
  Cursor cursor(*this);
  Entry entry;
  while (cursor.Next(entry)) {
    if (entry.nID > nID || (entry.nID == nID && entry.nKind > nKind)) return nullptr;
    if (entry.nID == nID && entry.nKind == nKind) return entry.pPayload;
  }
  return nullptr;
}

bool ValueBlock::Contains(int nID, uint8_t nFirstKind, uint8_t nEndKind) const {
  Cursor cursor(*this);
  Entry entry;
  while (cursor.Next(entry)) {
    if (entry.nID > nID) return false;
    if (entry.nID == nID && entry.nKind >= nFirstKind && entry.nKind < nEndKind) return true;
  }
  return false;
}

uint8_t* ValueBlock::Allocate(size_t nBytes) {
  if (nBytes > std::numeric_limits<uint32_t>::max()) throw std::bad_alloc();
  auto* pData = static_cast<uint8_t*>(::operator new(sizeof(uint32_t) + nBytes));
  const auto nCount = static_cast<uint32_t>(nBytes);
  std::memcpy(pData, &nCount, sizeof nCount);
  return pData;
}

void ValueBlock::Release(uint8_t* pData) { ::operator delete(pData); }

uint8_t* ValueBlock::Splice(size_t nFrom, size_t nTo, int nPrevID, bool bInsert, int nID, uint8_t nKind,
                            size_t nPayloadBytes, uint8_t*& pOld) {
  const size_t nBytes = GetBytes();
  const uint8_t* const pBegin = m_pData ? Begin() : nullptr;
  // The entry after the spliced range takes its distance from the new
  // entry, or from the entry before the range.
  const int nNewPrevID = bInsert ? nID : nPrevID;
  Entry next{0, 0, nullptr, 0};
  size_t nNextHeader = 0;
  if (nTo < nBytes) {
    const int nOldPrevID = nFrom == nTo ? nPrevID : nID;
    Decode(pBegin + nTo, nOldPrevID, next);
    nNextHeader = static_cast<size_t>(next.pPayload - (pBegin + nTo));
  }
  const size_t nNewNextHeader = nTo < nBytes ? HeaderSize(next.nID, nNewPrevID) : 0;
  const size_t nInserted = bInsert ? HeaderSize(nID, nPrevID) + nPayloadBytes : 0;
  const size_t nNewBytes = nBytes - (nTo - nFrom) + nInserted - nNextHeader + nNewNextHeader;
  pOld = m_pData;
  if (nNewBytes == 0) {
    m_pData = nullptr;
    return nullptr;
  }
  uint8_t* const pData = Allocate(nNewBytes);
  uint8_t* p = pData + sizeof(uint32_t);
  if (nFrom > 0) std::memcpy(p, pBegin, nFrom);
  p += nFrom;
  uint8_t* pPayload = nullptr;
  if (bInsert) {
    pPayload = WriteHeader(p, nID, nPrevID, nKind);
    p = pPayload + nPayloadBytes;
  }
  if (nTo < nBytes) {
    p = WriteHeader(p, next.nID, nNewPrevID, next.nKind);
    const uint8_t* pRest = pBegin + nTo + nNextHeader;
    std::memcpy(p, pRest, static_cast<size_t>(pBegin + nBytes - pRest));
  }
  m_pData = pData;
  return pPayload;
}

uint8_t* ValueBlock::Reserve(const Slot& slot, size_t nBytes, uint8_t*& pOld) {
  if (slot.pPayload != nullptr && slot.nPayloadBytes == nBytes) {
    pOld = nullptr;
    return const_cast<uint8_t*>(slot.pPayload);
  }
  return Splice(slot.nAt, slot.nEnd, slot.nPrevID, true, slot.nID, slot.nKind, nBytes, pOld);
}

bool ValueBlock::Erase(int nID, uint8_t nFirstKind, uint8_t nEndKind) {
  const Slot first = Seek(nID, nFirstKind);
  const Slot end = Seek(nID, nEndKind);
  if (first.nAt == end.nAt) return false;
  uint8_t* pOld = nullptr;
  Splice(first.nAt, end.nAt, first.nPrevID, false, nID, 0, 0, pOld);
  Release(pOld);
  return true;
}

// A loaded record holds a few entries, mostly in order already: they are
// sorted by insertion, which keeps equal entries in the order given.
void ValueBlock::Assign(std::vector<Pending>& pending, const uint8_t* pBuffer) {
  const auto before = [](const Pending& a, const Pending& b) {
    return a.nID < b.nID || (a.nID == b.nID && a.nKind < b.nKind);
  };
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
  size_t nKept = 0;
  for (size_t i = 0; i < pending.size(); ++i) {
    const bool bRepeated = i + 1 < pending.size() && !before(pending[i], pending[i + 1]);
    if (!bRepeated) pending[nKept++] = pending[i];
  }
  pending.resize(nKept);
  size_t nBytes = 0;
  int nPrevID = 0;
  for (const Pending& entry : pending) {
    nBytes += HeaderSize(entry.nID, nPrevID) + entry.nPayloadBytes;
    nPrevID = entry.nID;
  }
  uint8_t* const pData = nBytes > 0 ? Allocate(nBytes) : nullptr;
  uint8_t* p = pData ? pData + sizeof(uint32_t) : nullptr;
  nPrevID = 0;
  for (const Pending& entry : pending) {
    p = WriteHeader(p, entry.nID, nPrevID, entry.nKind);
    if (entry.nPayloadBytes > 0) std::memcpy(p, pBuffer + entry.nOffset, entry.nPayloadBytes);
    p += entry.nPayloadBytes;
    nPrevID = entry.nID;
  }
  Release(m_pData);
  m_pData = pData;
}
