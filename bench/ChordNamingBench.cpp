// Speed of chord naming, which hosts run for every chord symbol they show. The chords are
// the masks of the built-in chord types on every spelled root, and common jazz chords with
// slash basses. Each benchmark reports the time per chord and the heap allocations per
// chord, so that an allocation creeping into the flat sets (CMySet, CIntvlSet) shows.

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordTypes.h"

#include "AllocationCounter.h"

namespace harmony {
namespace {

// Roots as lead sheets spell them.
constexpr CKeyEnh kRoots[] = {{0, TEnh_n}, {1, TEnh_b}, {1, TEnh_s},  {2, TEnh_n}, {3, TEnh_b},
                              {4, TEnh_n}, {5, TEnh_n}, {6, TEnh_s},  {6, TEnh_b}, {7, TEnh_n},
                              {8, TEnh_b}, {9, TEnh_n}, {10, TEnh_b}, {11, TEnh_n}};

// Masks of jazz chords beyond the table (13, 7#9b13, m9, m11, 7alt, dim maj7, 6/9 ...) and
// the interval above the root of a slash bass, -1 for none.
constexpr std::pair<std::uint64_t, int> kJazzChords[] = {
    {1685, -1}, {1433, -1}, {1165, -1}, {1197, -1}, {1371, -1}, {2121, -1},
    {661, -1},  {2197, -1}, {2257, -1}, {1169, 4},  {1161, 10}, {145, 2},
    {137, 3},   {2193, 7},  {1097, 6},  {1185, 5},  {1235, -1}, {1177, -1}};

std::vector<CChordLite> RealisticChords() {
  std::vector<CChordLite> chords;
  for (const TChordType& type : SharedChordTypes().BuiltIn()) {
    CSemitones mask;
    mask.AddIntvls(type.Intvls);
    for (const CKeyEnh& root : kRoots) chords.emplace_back(root, mask);
  }
  for (const auto& [mask, bassIntvl] : kJazzChords) {
    for (const CKeyEnh& root : kRoots) {
      const CKeyEnh bass = bassIntvl < 0 ? CKeyEnh() : CKeyEnh(root + bassIntvl);
      chords.emplace_back(root, CSemitones(mask), bass);
    }
  }
  return chords;
}

std::vector<CChordHeavy> HeavyChords(const std::vector<CChordLite>& lites) {
  std::vector<CChordHeavy> chords;
  chords.reserve(lites.size());
  for (const CChordLite& lite : lites) chords.push_back(lite.ToChordHeavy(24));
  return chords;
}

template <class Chord, class Body>
void OverChords(benchmark::State& state, const std::vector<Chord>& chords, Body body) {
  const long before = harmony::bench::AllocationCount();
  for (auto _ : state) {
    for (const Chord& chord : chords) body(chord);
  }
  const auto count = static_cast<double>(chords.size());
  const auto iterations = static_cast<double>(state.iterations());
  state.counters["per_chord"] = benchmark::Counter(
      count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.counters["allocs_per_chord"] =
      static_cast<double>(harmony::bench::AllocationCount() - before) / (iterations * count);
  state.counters["chords"] = count;
}

// Naming a heavy chord: what a host does for a chord it keeps.
void BM_Name(benchmark::State& state) {
  const std::vector<CChordHeavy> chords = HeavyChords(RealisticChords());
  OverChords(state, chords, [](const CChordHeavy& chord) {
    benchmark::DoNotOptimize(chord.Name(GetCurrentChordNamePrefs()));
  });
}
BENCHMARK(BM_Name);

// From the chord record to its name, as a chord list is shown.
void BM_LiteToName(benchmark::State& state) {
  const std::vector<CChordLite> chords = RealisticChords();
  OverChords(state, chords, [](const CChordLite& chord) {
    benchmark::DoNotOptimize(chord.ToChordHeavy(24).Name(GetCurrentChordNamePrefs()));
  });
}
BENCHMARK(BM_LiteToName);

// Building the heavy form alone: its note and interval sets must not allocate.
void BM_ToChordHeavy(benchmark::State& state) {
  const std::vector<CChordLite> chords = RealisticChords();
  OverChords(state, chords, [](const CChordLite& chord) {
    benchmark::DoNotOptimize(chord.ToChordHeavy(24).Semitones());
  });
}
BENCHMARK(BM_ToChordHeavy);

void BM_OptionsMap(benchmark::State& state) {
  const std::vector<CChordHeavy> chords = HeavyChords(RealisticChords());
  OverChords(state, chords, [](const CChordHeavy& chord) {
    benchmark::DoNotOptimize(chord.OptionsMap(GetCurrentChordNamePrefs()).size());
  });
}
BENCHMARK(BM_OptionsMap);

}  // namespace
}  // namespace harmony
