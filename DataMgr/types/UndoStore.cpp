#include "DataMgr/types/UndoStore.h"

#include <algorithm>

#include "DataMgr/types/ValueKinds.h"

// One history map per value kind, in the order of the value maps.
struct UndoStore::Histories {
  std::map<int, std::vector<CString>> m_mapText;
  std::map<int, std::vector<int>> m_mapInt;
  std::map<int, std::vector<bool>> m_mapBool;
  std::map<int, std::vector<Money>> m_mapMoney;
  std::map<int, std::vector<double>> m_mapDouble;
  std::map<int, std::vector<DateTime>> m_mapDateTime;
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
  std::vector<T>& history = KindMap<T>(*m_pHistories)[nID];
  if (std::find(history.begin(), history.end(), value) == history.end()) history.push_back(value);
}

template <typename T>
void UndoStore::Remove(int nID, const T& value) {
  if (!m_pHistories) return;
  auto& histories = KindMap<T>(*m_pHistories);
  const auto found = histories.find(nID);
  if (found == histories.end()) return;
  std::vector<T>& history = found->second;
  const auto it = std::find(history.begin(), history.end(), value);
  if (it != history.end()) history.erase(it);
}

template <typename T>
void UndoStore::Get(int nID, std::vector<T>& out) const {
  if (!m_pHistories) return;
  const auto& histories = KindMap<T>(*m_pHistories);
  const auto found = histories.find(nID);
  if (found != histories.end()) out = found->second;
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
  return h.m_mapText.count(nID) != 0 || h.m_mapInt.count(nID) != 0 || h.m_mapBool.count(nID) != 0 ||
         h.m_mapMoney.count(nID) != 0 || h.m_mapDouble.count(nID) != 0 || h.m_mapDateTime.count(nID) != 0;
}

void UndoStore::GetUndoData(int nID, std::vector<CString>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<int>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<bool>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<Money>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<double>& out) const { Get(nID, out); }
void UndoStore::GetUndoData(int nID, std::vector<DateTime>& out) const { Get(nID, out); }
