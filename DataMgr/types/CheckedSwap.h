#ifndef DATAMGR_TYPES_CHECKEDSWAP_H_
#define DATAMGR_TYPES_CHECKEDSWAP_H_

// Internal to the library: the exchange of two list entries that the
// collections offer as Swap.

#include <cstddef>
#include <stdexcept>
#include <utility>
#include <vector>

namespace checked_swap {

// Exchanges values[nA] and values[nB]. Equal indexes do nothing, even out of
// range; otherwise an index out of range throws
// std::out_of_range("invalid vector<T> subscript"), the text hosts know
// from the framework's containers, and nothing changes.
template <typename T>
void SwapAt(std::vector<T>& values, size_t nA, size_t nB) {
  if (nA == nB) return;
  if (nA >= values.size() || nB >= values.size()) throw std::out_of_range("invalid vector<T> subscript");
  std::swap(values[nA], values[nB]);
}

}  // namespace checked_swap

#endif  // DATAMGR_TYPES_CHECKEDSWAP_H_
