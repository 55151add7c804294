// Speed of the semitone predicates that chord detection and scale suggestion call in their
// inner loops, and of the small ordered set that interval sets are built on. Each benchmark
// also reports the heap allocations per iteration, which must be 0.

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <set>
#include <vector>

#include "harmony/chords/BasicChord.h"
#include "harmony/pitch/IntvlSet.h"
#include "harmony/pitch/Semitones.h"

#include "AllocationCounter.h"

namespace harmony {
namespace {

constexpr int kMasks = 4096;

std::vector<CSemitones> AllMasks() {
  std::vector<CSemitones> masks;
  for (std::uint64_t m = 0; m < kMasks; ++m) masks.emplace_back(m);
  return masks;
}

// Runs `body` once per mask and per iteration; reports time per call and allocations.
template <class Body>
void OverAllMasks(benchmark::State& state, int callsPerMask, Body body) {
  const std::vector<CSemitones> masks = AllMasks();
  const long before = harmony::bench::AllocationCount();
  for (auto _ : state) {
    for (const CSemitones& s : masks) body(s);
  }
  const long allocations = harmony::bench::AllocationCount() - before;
  // Shown in seconds with an SI prefix, e.g. "per_call=1.2ns".
  state.counters["per_call"] = benchmark::Counter(
      static_cast<double>(kMasks) * callsPerMask,
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.counters["allocs_per_iter"] = benchmark::Counter(static_cast<double>(allocations) /
                                                         static_cast<double>(state.iterations()));
}

void BM_IsMajor(benchmark::State& state) {
  OverAllMasks(state, 1, [](const CSemitones& s) { benchmark::DoNotOptimize(s.IsMajor()); });
}
BENCHMARK(BM_IsMajor);

void BM_AllTriadPredicates(benchmark::State& state) {
  OverAllMasks(state, 10, [](const CSemitones& s) {
    benchmark::DoNotOptimize(s.IsMajor() + s.IsMinor() + s.IsMajorOrAug() + s.IsMinorOrDim() +
                             s.IsAug() + s.IsMajorb5() + s.IsDim() + s.IsSus4() + s.IsSus2() +
                             s.IsDrone5());
  });
}
BENCHMARK(BM_AllTriadPredicates);

void BM_BasicChord(benchmark::State& state) {
  OverAllMasks(state, 1, [](const CSemitones& s) { benchmark::DoNotOptimize(s.BasicChord()); });
}
BENCHMARK(BM_BasicChord);

void BM_HasChordOption(benchmark::State& state) {
  OverAllMasks(state, 4, [](const CSemitones& s) {
    for (TChordOption o : {kChordOption7, kChordOption9, kChordOption11, kChordOption13}) {
      benchmark::DoNotOptimize(s.HasChordOption(o));
    }
  });
}
BENCHMARK(BM_HasChordOption);

void BM_QuantizeClosestWrap(benchmark::State& state) {
  OverAllMasks(state, 12, [](const CSemitones& s) {
    for (unsigned long i = 0; i < 12; ++i) {
      benchmark::DoNotOptimize(s.QuantizeToActiveSemitonesAsIntvl(
          i, {kQuantizeClosestTieRight, _Quantize_WrapAtOctave_Yes}));
    }
  });
}
BENCHMARK(BM_QuantizeClosestWrap);

void BM_QuantizeClosestNoWrap(benchmark::State& state) {
  OverAllMasks(state, 12, [](const CSemitones& s) {
    for (unsigned long i = 0; i < 12; ++i) {
      benchmark::DoNotOptimize(s.QuantizeToActiveSemitonesAsIntvl(
          i, {kQuantizeClosestTieLeft, _Quantize_WrapAtOctave_No}));
    }
  });
}
BENCHMARK(BM_QuantizeClosestNoWrap);

// Building a chord of `size` intervals (inserted out of order) and looking each one up.
template <class Set>
void ChordSet(benchmark::State& state) {
  static constexpr int kIntvls[] = {14, 0, 7, 21, 4, 10};
  const auto size = static_cast<std::size_t>(state.range(0));
  const long before = harmony::bench::AllocationCount();
  for (auto _ : state) {
    Set set;
    for (std::size_t i = 0; i < size; ++i) set.insert(kIntvls[i]);
    int found = 0;
    for (std::size_t i = 0; i < size; ++i) found += set.find(kIntvls[i]) != set.end();
    benchmark::DoNotOptimize(found);
    benchmark::DoNotOptimize(set);
  }
  state.counters["allocs_per_iter"] =
      benchmark::Counter(static_cast<double>(harmony::bench::AllocationCount() - before) /
                         static_cast<double>(state.iterations()));
}

void BM_MySetChord(benchmark::State& state) { ChordSet<CMySet<int>>(state); }
BENCHMARK(BM_MySetChord)->DenseRange(4, 6);

void BM_IntvlSetChord(benchmark::State& state) { ChordSet<CIntvlSet>(state); }
BENCHMARK(BM_IntvlSetChord)->DenseRange(4, 6);

// For comparison: the node-based standard set.
void BM_StdSetChord(benchmark::State& state) { ChordSet<std::set<int>>(state); }
BENCHMARK(BM_StdSetChord)->DenseRange(4, 6);

}  // namespace
}  // namespace harmony
