#pragma once
// Counts heap allocations, so a benchmark can report that a hot path allocates nothing.
// Include it in exactly one file of a benchmark program: it replaces the global operator new.

#include <atomic>
#include <cstdlib>
#include <new>

// GCC cannot see that the replaced new pairs with the replaced delete and would warn about
// malloc against free.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

namespace harmony::bench {
inline std::atomic<long> gAllocations{0};
inline long AllocationCount() { return gAllocations.load(std::memory_order_relaxed); }
}  // namespace harmony::bench

void* operator new(std::size_t size) {
  harmony::bench::gAllocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
