#ifndef DATAMGR_TYPES_FLATINTMAP_H_
#define DATAMGR_TYPES_FLATINTMAP_H_

#include <algorithm>
#include <utility>
#include <vector>

// A map from int keys to values held as one vector of (key, value) pairs in
// strictly ascending key order, searched by bisection. It costs one vector
// and nothing on the heap until the first value arrives, and iterates in key
// order like an ordered map.
//
// The map itself is a plain vector, so that a public class can hold one
// without this header; the functions of flat_int_map keep it in order and
// are the only code that may add to it. Internal to the library's records:
// not installed.
template <typename T>
using FlatIntMap = std::vector<std::pair<int, T>>;

namespace flat_int_map {

// Map is a FlatIntMap, const or not; so are the iterator and the value
// pointer returned.
template <typename Map>
auto LowerBound(Map& map, int nKey) {
  return std::lower_bound(map.begin(), map.end(), nKey,
                          [](const auto& entry, int nValue) { return entry.first < nValue; });
}

// The value of nKey, or null; valid until the map changes.
template <typename Map>
auto Find(Map& map, int nKey) -> decltype(&map.begin()->second) {
  const auto it = LowerBound(map, nKey);
  return (it != map.end() && it->first == nKey) ? &it->second : nullptr;
}
template <typename T>
bool Contains(const FlatIntMap<T>& map, int nKey) {
  return Find(map, nKey) != nullptr;
}

// The value of nKey, added as T() when absent; valid until the map changes.
template <typename T>
T& GetOrAdd(FlatIntMap<T>& map, int nKey) {
  auto it = LowerBound(map, nKey);
  if (it == map.end() || it->first != nKey) it = map.emplace(it, nKey, T());
  return it->second;
}

// Adds nKey unless it is present; returns whether it was added.
template <typename T>
bool Insert(FlatIntMap<T>& map, int nKey, const T& value) {
  const auto it = LowerBound(map, nKey);
  if (it != map.end() && it->first == nKey) return false;
  map.emplace(it, nKey, value);
  return true;
}

// Adds nKey or replaces its value.
template <typename T>
void Set(FlatIntMap<T>& map, int nKey, const T& value) {
  const auto it = LowerBound(map, nKey);
  if (it != map.end() && it->first == nKey) {
    it->second = value;
  } else {
    map.emplace(it, nKey, value);
  }
}

// Returns whether nKey was there.
template <typename T>
bool Erase(FlatIntMap<T>& map, int nKey) {
  const auto it = LowerBound(map, nKey);
  if (it == map.end() || it->first != nKey) return false;
  map.erase(it);
  return true;
}

// Loading: clear, reserve, append each entry as read, then RestoreOrder
// (also when the load stops half-way). An archive written by the library is
// already in order and RestoreOrder then only checks it; a damaged one may
// repeat or shuffle keys, and a repeated key keeps its last value.
template <typename T>
void RestoreOrder(FlatIntMap<T>& map) {
  using Entry = std::pair<int, T>;
  if (std::adjacent_find(map.begin(), map.end(), [](const Entry& a, const Entry& b) { return a.first >= b.first; }) ==
      map.end()) {
    return;
  }
  std::stable_sort(map.begin(), map.end(), [](const Entry& a, const Entry& b) { return a.first < b.first; });
  // Reversed, the last of each run of equal keys comes first and is kept.
  std::reverse(map.begin(), map.end());
  map.erase(std::unique(map.begin(), map.end(), [](const Entry& a, const Entry& b) { return a.first == b.first; }),
            map.end());
  std::reverse(map.begin(), map.end());
}

}  // namespace flat_int_map

#endif  // DATAMGR_TYPES_FLATINTMAP_H_
