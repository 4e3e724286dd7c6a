#include "DataMgr/types/UndoStore.h"

#include <algorithm>

#include "DataMgr/types/FlatIntMap.h"
#include "DataMgr/types/ValueKinds.h"

// One history map per value kind, in the order of the value maps; flat
// maps, because entering a new record's values as undoable edits gives every
// column of it a history.
struct UndoStore::Histories {
  FlatIntMap<std::vector<CString>> m_mapText;
  FlatIntMap<std::vector<int>> m_mapInt;
  FlatIntMap<std::vector<bool>> m_mapBool;
  FlatIntMap<std::vector<Money>> m_mapMoney;
  FlatIntMap<std::vector<double>> m_mapDouble;
  FlatIntMap<std::vector<DateTime>> m_mapDateTime;
};

UndoStore::UndoStore() = default;

UndoStore::UndoStore(const UndoStore& other)
    : m_pHistories(other.m_pHistories ? std::make_unique<Histories>(*other.m_pHistories) : nullptr) {}

UndoStore& UndoStore::operator=(const UndoStore& other) {
  if (this != &other) *this = UndoStore(other);
  return *this;
}

UndoStore::UndoStore(UndoStore&& other) noexcept = default;

UndoStore& UndoStore::operator=(UndoStore&& other) noexcept = default;

UndoStore::~UndoStore() = default;

void UndoStore::ClearUndoData() { m_pHistories.reset(); }

template <typename T>
void UndoStore::Add(int nID, const T& value) {
  if (!m_pHistories) m_pHistories = std::make_unique<Histories>();
  std::vector<T>& history = flat_int_map::GetOrAdd(KindMap<T>(*m_pHistories), nID);
  if (std::find(history.begin(), history.end(), value) == history.end()) history.push_back(value);
}

template <typename T>
void UndoStore::Remove(int nID, const T& value) {
  if (!m_pHistories) return;
  std::vector<T>* pHistory = flat_int_map::Find(KindMap<T>(*m_pHistories), nID);
  if (pHistory == nullptr) return;
  std::vector<T>& history = *pHistory;
  const auto it = std::find(history.begin(), history.end(), value);
  if (it != history.end()) history.erase(it);
}

template <typename T>
void UndoStore::Get(int nID, std::vector<T>& out) const {
  if (!m_pHistories) return;
  const std::vector<T>* pHistory = flat_int_map::Find(KindMap<T>(*m_pHistories), nID);
  if (pHistory != nullptr) out = *pHistory;
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
  if (!m_pHistories) return false;
  const Histories& h = *m_pHistories;
  using flat_int_map::Contains;
  return Contains(h.m_mapText, nID) || Contains(h.m_mapInt, nID) || Contains(h.m_mapBool, nID) ||
         Contains(h.m_mapMoney, nID) || Contains(h.m_mapDouble, nID) || Contains(h.m_mapDateTime, nID);
}

void UndoStore::GetUndoData(int nID, std::vector<CString>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<int>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<bool>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<Money>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<double>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<DateTime>& out) const { Get(nID, out); }
