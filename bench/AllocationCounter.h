#ifndef BENCH_ALLOCATIONCOUNTER_H_
#define BENCH_ALLOCATIONCOUNTER_H_

// The heap allocations of the whole process, the library's included, for
// benchmarks that report allocations per item. A program that includes this
// links AllocationCounter.cpp, which replaces the global operator new.
namespace bench {

long long GetAllocationCount();

}  // namespace bench

#endif  // BENCH_ALLOCATIONCOUNTER_H_
