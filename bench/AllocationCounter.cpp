#include "bench/AllocationCounter.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long long> g_nAllocations{0};

}  // namespace

long long bench::GetAllocationCount() { return g_nAllocations.load(std::memory_order_relaxed); }

// The replacement pair takes its memory from malloc and gives it back to
// free, which the compiler cannot see through when it inlines them.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif
void* operator new(std::size_t nSize) {
  g_nAllocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(nSize == 0 ? 1 : nSize)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
