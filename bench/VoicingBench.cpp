// Speed of voicing as a player calls it once per chord change: a chord voiced as MIDI notes,
// the voicing led toward the top of the one before, and played notes quantised onto the
// chord. Each benchmark reports the time per chord and the heap allocations per chord;
// voicing returns a new vector (one allocation), the other steps allocate nothing.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

#include "harmony/chords/ChordLite.h"
#include "harmony/chords/Voicing.h"

#include "AllocationCounter.h"

namespace harmony {
namespace {

constexpr int kChords = 4096;

// Chords as a lead sheet holds them: triads and sevenths with tensions, some slash basses.
std::vector<CChordLite> ManyChords() {
  constexpr std::uint64_t kMasks[] = {145,  137,  1169, 1161, 2193, 1173, 1177,
                                      1681, 1105, 2705, 1187, 1225, 657,  161};
  std::mt19937 random(7);
  std::vector<CChordLite> chords;
  for (int i = 0; i < kChords; ++i) {
    const CKeyEnh root(static_cast<int>(random() % 12), TEnh_n);
    const CKeyEnh bass =
        random() % 5 == 0 ? CKeyEnh(static_cast<int>(random() % 12), TEnh_n) : CKeyEnh();
    chords.emplace_back(root, CSemitones(kMasks[random() % std::size(kMasks)]), bass);
  }
  return chords;
}

template <class Body>
void OverManyChords(benchmark::State& state, Body body) {
  const std::vector<CChordLite> chords = ManyChords();
  const long before = harmony::bench::AllocationCount();
  for (auto _ : state) body(chords);
  const double allocations = static_cast<double>(harmony::bench::AllocationCount() - before);
  state.counters["per_chord"] = benchmark::Counter(
      kChords, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.counters["allocs_per_chord"] =
      benchmark::Counter(allocations / static_cast<double>(state.iterations()) / kChords);
}

void BM_VoicingNotesNrs(benchmark::State& state) {
  TChordVoicingPrefs prefs;
  prefs.AddRootOctaveBelow = static_cast<std::int32_t>(state.range(0));
  OverManyChords(state, [&prefs](const std::vector<CChordLite>& chords) {
    for (const CChordLite& chord : chords) benchmark::DoNotOptimize(chord.VoicingNotesNrs(prefs));
  });
}
BENCHMARK(BM_VoicingNotesNrs)->Arg(0)->Arg(1);

// The voicings are made once; each iteration leads the whole sequence again in place.
void BM_LeadVoicings(benchmark::State& state) {
  std::vector<std::vector<unsigned char>> voicings;
  for (const CChordLite& chord : ManyChords()) voicings.push_back(chord.VoicingNotesNrs({}));
  OverManyChords(state, [&voicings](const std::vector<CChordLite>&) {
    int target = 72;
    for (std::vector<unsigned char>& notes : voicings) {
      TransposeChordBasedOnPreviousChords(notes, target);
      target = notes.back() % 2 == 0 ? 76 : 67;  // a moving melody keeps the loop busy
    }
    benchmark::ClobberMemory();
  });
}
BENCHMARK(BM_LeadVoicings);

// Twelve played notes, one octave of keys, onto each chord.
void BM_QuantizeToChord(benchmark::State& state) {
  OverManyChords(state, [](const std::vector<CChordLite>& chords) {
    for (const CChordLite& chord : chords) {
      for (long noteNr = 60; noteNr < 72; ++noteNr) {
        benchmark::DoNotOptimize(chord.QuantizeToChord(noteNr, kQuantizeClosestTieRight));
      }
    }
  });
}
BENCHMARK(BM_QuantizeToChord);

}  // namespace
}  // namespace harmony
