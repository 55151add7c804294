// Speed of the key estimator on a 64-bar tune of lead-sheet bars (two chords or one held per
// bar, about 100 chords): ranking the 24 keys of the whole tune (the goal is below 20 µs),
// the same without gathering the evidence, and the windowed sections.

#include <benchmark/benchmark.h>

#include <string>

#include "AllocationCounter.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmKeyEstimator.h"

namespace harmony {
namespace {

const char* const kBars[] = {"Cmaj7 . Am7 . |", "Dm7 . G7 . |",    "Em7 . A7b9 . |",
                             "Dm9 . . . |",     "F#m7b5 . B7 . |", "Em7 . . . |",
                             "Am7 . D7/F# . |", "Gsus4 . G7 . |"};

CHarmAnlsChords Tune(int bars) {
  std::string text;
  for (int bar = 0; bar < bars; ++bar) text += std::string(kBars[bar % std::size(kBars)]) + " ";
  return CHarmAnlsChords(text, TChordStringParse());
}

void BM_RankKeysOf64Bars(benchmark::State& state) {
  const CHarmAnlsChords chords = Tune(64);
  const CHarmKeyEstimator estimator;
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    const THarmKeyRanking ranking = estimator.Rank(chords);
    benchmark::DoNotOptimize(ranking.data());
  }
  state.counters["chords"] = static_cast<double>(chords.size());
  state.counters["allocs"] = static_cast<double>(bench::AllocationCount() - before) /
                             static_cast<double>(state.iterations());
}
BENCHMARK(BM_RankKeysOf64Bars);

void BM_RankKeysFromEvidence(benchmark::State& state) {
  const THarmKeyEvidence evidence = CHarmKeyEstimator::Gather(Tune(64));
  const CHarmKeyEstimator estimator;
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    const THarmKeyRanking ranking = estimator.Rank(evidence);
    benchmark::DoNotOptimize(ranking.data());
  }
  state.counters["allocs"] = static_cast<double>(bench::AllocationCount() - before) /
                             static_cast<double>(state.iterations());
}
BENCHMARK(BM_RankKeysFromEvidence);

void BM_SectionsOf64Bars(benchmark::State& state) {
  const CHarmAnlsChords chords = Tune(64);
  const CHarmKeyEstimator estimator;
  for (auto _ : state) {
    const std::vector<THarmKeySection> sections = estimator.Sections(chords);
    benchmark::DoNotOptimize(sections.data());
  }
}
BENCHMARK(BM_SectionsOf64Bars);

}  // namespace
}  // namespace harmony
