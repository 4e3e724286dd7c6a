#ifndef DATAMGR_TYPES_FLATINTMAP_H_
#define DATAMGR_TYPES_FLATINTMAP_H_

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

// A map from int keys to values held as one vector of (key, value) pairs in
// strictly ascending key order, searched by bisection. It costs one vector
// and nothing on the heap until the first value arrives, and iterates in key
// order like an ordered map. Internal to the library's records.
template <typename T>
class FlatIntMap {
 public:
  using Entry = std::pair<int, T>;
  using const_iterator = typename std::vector<Entry>::const_iterator;

  bool IsEmpty() const { return m_entries.empty(); }
  size_t GetCount() const { return m_entries.size(); }
  const_iterator begin() const { return m_entries.begin(); }
  const_iterator end() const { return m_entries.end(); }

  // The value of nKey, or null; valid until the map changes.
  const T* Find(int nKey) const {
    const auto it = LowerBound(nKey);
    return (it != m_entries.end() && it->first == nKey) ? &it->second : nullptr;
  }
  bool Contains(int nKey) const { return Find(nKey) != nullptr; }
  T* Find(int nKey) {
    const auto it = LowerBound(nKey);
    return (it != m_entries.end() && it->first == nKey) ? &it->second : nullptr;
  }
  // The value of nKey, added as T() when absent; valid until the map changes.
  T& GetOrAdd(int nKey) {
    auto it = LowerBound(nKey);
    if (it == m_entries.end() || it->first != nKey) it = m_entries.emplace(it, nKey, T());
    return it->second;
  }

  // Adds nKey unless it is present; returns whether it was added.
  bool Insert(int nKey, const T& value) {
    const auto it = LowerBound(nKey);
    if (it != m_entries.end() && it->first == nKey) return false;
    m_entries.emplace(it, nKey, value);
    return true;
  }
  // Adds nKey or replaces its value.
  void Set(int nKey, const T& value) {
    const auto it = LowerBound(nKey);
    if (it != m_entries.end() && it->first == nKey) {
      it->second = value;
    } else {
      m_entries.emplace(it, nKey, value);
    }
  }
  // Returns whether nKey was there.
  bool Erase(int nKey) {
    const auto it = LowerBound(nKey);
    if (it == m_entries.end() || it->first != nKey) return false;
    m_entries.erase(it);
    return true;
  }
  void Clear() { m_entries.clear(); }
  // Calls fn(value) on every value; keys stay as they are.
  template <typename Fn>
  void ForEachValue(Fn fn) {
    for (Entry& entry : m_entries) fn(entry.second);
  }

  // Loading: Clear, Reserve, Append each entry as read, then RestoreOrder
  // (also when the load stops half-way). An archive written by the library
  // is already in order and RestoreOrder then only checks it; a damaged one
  // may repeat or shuffle keys, and a repeated key keeps its last value.
  void Reserve(size_t nCount) { m_entries.reserve(nCount); }
  void Append(int nKey, T value) { m_entries.emplace_back(nKey, std::move(value)); }
  void RestoreOrder() {
    const auto byKey = [](const Entry& a, const Entry& b) { return a.first < b.first; };
    if (std::adjacent_find(m_entries.begin(), m_entries.end(), [](const Entry& a, const Entry& b) {
          return a.first >= b.first;
        }) == m_entries.end()) {
      return;
    }
    std::stable_sort(m_entries.begin(), m_entries.end(), byKey);
    // Reversed, the last of each run of equal keys comes first and is kept.
    std::reverse(m_entries.begin(), m_entries.end());
    m_entries.erase(std::unique(m_entries.begin(), m_entries.end(),
                                [](const Entry& a, const Entry& b) { return a.first == b.first; }),
                    m_entries.end());
    std::reverse(m_entries.begin(), m_entries.end());
  }

  bool operator==(const FlatIntMap& other) const { return m_entries == other.m_entries; }

 private:
  typename std::vector<Entry>::iterator LowerBound(int nKey) {
    return std::lower_bound(m_entries.begin(), m_entries.end(), nKey,
                            [](const Entry& entry, int nValue) { return entry.first < nValue; });
  }
  typename std::vector<Entry>::const_iterator LowerBound(int nKey) const {
    return std::lower_bound(m_entries.begin(), m_entries.end(), nKey,
                            [](const Entry& entry, int nValue) { return entry.first < nValue; });
  }

  std::vector<Entry> m_entries;
};

#endif  // DATAMGR_TYPES_FLATINTMAP_H_
