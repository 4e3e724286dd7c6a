#include "DataMgr/types/UndoStore.h"

#include <cstring>

#include "DataMgr/types/ValueKinds.h"

namespace {

// A history is the entry (column ID, its kind with ValueBlock::HISTORY): a
// varint count of bytes, then the earlier values packed, oldest first.
template <typename T>
uint8_t HistoryKind() {
  return static_cast<uint8_t>(static_cast<uint8_t>(Packing<T>::KIND) | ValueBlock::HISTORY);
}

// The packed values of a history payload, and past them.
struct Values {
  const uint8_t* pBegin;
  const uint8_t* pEnd;
};

Values ValuesOf(const uint8_t* pHistory) {
  size_t nBytes = 0;
  const uint8_t* pBegin = ReadVarint(pHistory, nBytes);
  return {pBegin, pBegin + nBytes};
}

// The first packed value equal to value, or null.
template <typename T>
const uint8_t* FindValue(const Values& values, const T& value) {
  const uint8_t nKind = static_cast<uint8_t>(Packing<T>::KIND);
  for (const uint8_t* p = values.pBegin; p < values.pEnd; p += ValueBlock::PayloadSize(nKind, p)) {
    if (Packing<T>::Equals(p, value)) return p;
  }
  return nullptr;
}

// A new history of the values from pBegin to pCut, nInsert bytes that
// insert(uint8_t*) writes, and the values from pResume to pEnd, with its
// count of bytes first. Composed in a buffer of the thread, apart from the
// block, which may move while it takes the new history.
template <typename Insert>
const std::vector<uint8_t>& Compose(const Values& old, const uint8_t* pCut, const uint8_t* pResume, size_t nInsert,
                                    Insert insert) {
  thread_local std::vector<uint8_t> bytes;
  const auto nBefore = static_cast<size_t>(pCut - old.pBegin);
  const auto nAfter = static_cast<size_t>(old.pEnd - pResume);
  const size_t nValues = nBefore + nInsert + nAfter;
  bytes.resize(VarintSize(nValues) + nValues);
  uint8_t* p = WriteVarint(nValues, bytes.data());
  if (nBefore > 0) std::memcpy(p, old.pBegin, nBefore);
  insert(p + nBefore);
  if (nAfter > 0) std::memcpy(p + nBefore + nInsert, pResume, nAfter);
  return bytes;
}

}  // namespace

UndoStore::UndoStore() = default;
UndoStore::UndoStore(const UndoStore& other) = default;
UndoStore& UndoStore::operator=(const UndoStore& other) = default;
UndoStore::UndoStore(UndoStore&& other) noexcept = default;
UndoStore& UndoStore::operator=(UndoStore&& other) noexcept = default;
UndoStore::~UndoStore() = default;

void UndoStore::ClearUndoData() { m_block.Clear(); }

void UndoStore::Put(const ValueBlock::Slot& slot, const std::vector<uint8_t>& history) {
  m_block.Put(slot, history.size(), [&history](uint8_t* p) { std::memcpy(p, history.data(), history.size()); });
}

template <typename T>
void UndoStore::Add(int nID, const T& value) {
  const ValueBlock::Slot slot = m_block.Seek(nID, HistoryKind<T>());
  const Values old = slot.pPayload ? ValuesOf(slot.pPayload) : Values{nullptr, nullptr};
  if (slot.pPayload && FindValue(old, value)) return;
  Put(slot, Compose(old, old.pEnd, old.pEnd, Packing<T>::Size(value),
                       [&value](uint8_t* p) { Packing<T>::Write(value, p); }));
}

template <typename T>
void UndoStore::Remove(int nID, const T& value) {
  const ValueBlock::Slot slot = m_block.Seek(nID, HistoryKind<T>());
  if (!slot.pPayload) return;
  const Values old = ValuesOf(slot.pPayload);
  const uint8_t* pFound = FindValue(old, value);
  if (!pFound) return;
  const uint8_t* pNext = pFound + ValueBlock::PayloadSize(static_cast<uint8_t>(Packing<T>::KIND), pFound);
  Put(slot, Compose(old, pFound, pNext, 0, [](uint8_t*) {}));
}

template <typename T>
void UndoStore::Get(int nID, std::vector<T>& out) const {
  const uint8_t* pHistory = m_block.Find(nID, HistoryKind<T>());
  if (!pHistory) return;
  const Values values = ValuesOf(pHistory);
  const uint8_t nKind = static_cast<uint8_t>(Packing<T>::KIND);
  out.clear();
  for (const uint8_t* p = values.pBegin; p < values.pEnd; p += ValueBlock::PayloadSize(nKind, p)) {
    out.push_back(Packing<T>::Read(p));
  }
}

void UndoStore::AddUndoData(int nID, const CString& value) { Add(nID, value); }
void UndoStore::AddUndoData(int nID, int value) { Add(nID, value); }
void UndoStore::AddUndoData(int nID, bool value) { Add(nID, value); }
void UndoStore::AddUndoData(int nID, const Money& value) { Add(nID, value); }
void UndoStore::AddUndoData(int nID, double value) { Add(nID, value); }
void UndoStore::AddUndoData(int nID, const DateTime& value) { Add(nID, value); }

void UndoStore::RemoveUndoData(int nID, const CString& value) { Remove(nID, value); }
void UndoStore::RemoveUndoData(int nID, int value) { Remove(nID, value); }
void UndoStore::RemoveUndoData(int nID, bool value) { Remove(nID, value); }
void UndoStore::RemoveUndoData(int nID, const Money& value) { Remove(nID, value); }
void UndoStore::RemoveUndoData(int nID, double value) { Remove(nID, value); }
void UndoStore::RemoveUndoData(int nID, const DateTime& value) { Remove(nID, value); }

bool UndoStore::HaveUndoData(int nID) const {
  return m_block.Contains(nID, (1u << ValueBlock::KINDS) - 1);
}

void UndoStore::GetUndoData(int nID, std::vector<CString>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<int>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<bool>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<Money>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<double>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<DateTime>& out) const { Get(nID, out); }
