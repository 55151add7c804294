// Speed of the chord record operations that the analysis runs in its inner loops: ordering
// and equality, the hash code both ways, and the basic chord. Each benchmark reports the
// time per chord and the heap allocations per iteration, which must be 0.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>
#include <random>
#include <vector>

#include "harmony/chords/ChordLite.h"

#include "AllocationCounter.h"

namespace harmony {
namespace {

constexpr int kChords = 4096;

// Chords as an analysis meets them: mostly defined roots, some basses, every mask.
std::vector<CChordLite> ManyChords() {
  constexpr TEnh kEnhs[] = {TEnh_b, TEnh_n, TEnh_s};
  std::mt19937 random(42);
  std::vector<CChordLite> chords;
  for (int i = 0; i < kChords; ++i) {
    const CKeyEnh root(static_cast<int>(random() % 12), kEnhs[random() % 3]);
    const CKeyEnh bass =
        random() % 4 == 0 ? CKeyEnh(static_cast<int>(random() % 12), TEnh_n) : CKeyEnh();
    chords.emplace_back(root, CSemitones(static_cast<std::uint64_t>(i)), bass);
  }
  std::shuffle(chords.begin(), chords.end(), random);
  return chords;
}

// Runs `body` on the chords once per iteration; reports time per chord and allocations.
template <class Body>
void OverManyChords(benchmark::State& state, Body body) {
  const std::vector<CChordLite> chords = ManyChords();
  const long before = harmony::bench::AllocationCount();
  for (auto _ : state) body(chords);
  const long allocations = harmony::bench::AllocationCount() - before;
  state.counters["per_chord"] = benchmark::Counter(
      kChords, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.counters["allocs_per_iter"] = benchmark::Counter(static_cast<double>(allocations) /
                                                         static_cast<double>(state.iterations()));
}

void BM_ThreeWayCompare(benchmark::State& state) {
  OverManyChords(state, [](const std::vector<CChordLite>& chords) {
    for (std::size_t i = 1; i < chords.size(); ++i) {
      benchmark::DoNotOptimize(chords[i - 1] <=> chords[i]);
    }
  });
}
BENCHMARK(BM_ThreeWayCompare);

void BM_Equal(benchmark::State& state) {
  OverManyChords(state, [](const std::vector<CChordLite>& chords) {
    for (std::size_t i = 1; i < chords.size(); ++i) {
      benchmark::DoNotOptimize(chords[i - 1] == chords[i]);
      benchmark::DoNotOptimize(chords[i - 1].EqualWithoutEnh(chords[i]));
    }
  });
}
BENCHMARK(BM_Equal);

// A sort of the whole list per iteration, into a buffer allocated once.
void BM_Sort(benchmark::State& state) {
  std::vector<CChordLite> buffer(kChords);
  OverManyChords(state, [&buffer](const std::vector<CChordLite>& chords) {
    std::copy(chords.begin(), chords.end(), buffer.begin());
    std::sort(buffer.begin(), buffer.end());
    benchmark::DoNotOptimize(buffer.data());
  });
}
BENCHMARK(BM_Sort);

void BM_HashCodeRoundTrip(benchmark::State& state) {
  OverManyChords(state, [](const std::vector<CChordLite>& chords) {
    CChordLite back;
    for (const CChordLite& chord : chords) {
      back.SetFromChordHashCode(chord.GetChordHashCode());
      benchmark::DoNotOptimize(back);
    }
  });
}
BENCHMARK(BM_HashCodeRoundTrip);

void BM_GetChordHashCode(benchmark::State& state) {
  OverManyChords(state, [](const std::vector<CChordLite>& chords) {
    for (const CChordLite& chord : chords) benchmark::DoNotOptimize(chord.GetChordHashCode());
  });
}
BENCHMARK(BM_GetChordHashCode);

void BM_BasicChord(benchmark::State& state) {
  OverManyChords(state, [](const std::vector<CChordLite>& chords) {
    for (const CChordLite& chord : chords) benchmark::DoNotOptimize(chord.BasicChord());
  });
}
BENCHMARK(BM_BasicChord);

void BM_BasicChordForNaming(benchmark::State& state) {
  OverManyChords(state, [](const std::vector<CChordLite>& chords) {
    for (const CChordLite& chord : chords) {
      benchmark::DoNotOptimize(chord.BasicChordForNaming());
    }
  });
}
BENCHMARK(BM_BasicChordForNaming);

}  // namespace
}  // namespace harmony
