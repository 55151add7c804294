// Root detection runs for every chord of played notes: the whole choice of root and spelling
// by each algorithm, the net's part alone (inputs, forward pass, winner), and the whole way
// from played notes to a chord name, with the heap allocations per chord as a counter.

#include <benchmark/benchmark.h>

#include <mutex>
#include <vector>

#include "AllocationCounter.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/net/ChordAnalysisNet.h"

namespace {

using namespace harmony;

// Common voicings: triads, seventh chords in drop 2, a guitar shape, a cluster.
std::vector<CChordHeavy> Voicings() {
  const std::vector<std::vector<int>> notes = {{60, 64, 67},     {64, 67, 72},
                                               {57, 64, 67, 72}, {48, 55, 59, 64},
                                               {43, 53, 59, 64}, {40, 47, 52, 56, 59, 64},
                                               {60, 62, 63, 65}, {54, 57, 60, 64}};
  std::vector<CChordHeavy> chords;
  for (const std::vector<int>& voicing : notes) {
    CMySet<unsigned char> set;
    for (int noteNr : voicing) set.insert(static_cast<unsigned char>(noteNr));
    chords.emplace_back(CNote::Undef, set, 24);
  }
  return chords;
}

void Detect(benchmark::State& state, TSingleChordAnalysisAlgo algo) {
  const std::vector<CChordHeavy> chords = Voicings();
  std::size_t i = 0;
  CChordHeavy chord = chords[0];
  chord.SetRootNoteAndEnh_ToLikeliestRegardingNoteSet(algo);  // warms the lazy tables
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    chord = chords[i++ % chords.size()];
    chord.SetRootNoteAndEnh_ToLikeliestRegardingNoteSet(algo);
    benchmark::DoNotOptimize(chord.RootNote());
  }
  state.counters["allocs/chord"] =
      benchmark::Counter(static_cast<double>(bench::AllocationCount() - before) /
                         static_cast<double>(state.iterations()));
}

void BM_RootByTable(benchmark::State& state) { Detect(state, kSingleChordAnalysisAlgoProbTable); }
void BM_RootByNet(benchmark::State& state) { Detect(state, kSingleChordAnalysisAlgoNeuronalNet); }

// The net's share: fill the inputs, run the forward pass and read the winner under the lock.
void BM_NetForwardPass(benchmark::State& state) {
  const std::vector<CChordHeavy> chords = Voicings();
  std::vector<double> inputs(24);
  std::size_t i = 0;
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    const std::lock_guard<std::mutex> lock(ChordAnalysisNetLock());
    FillChordAnalysisNetInputs(chords[i++ % chords.size()].IntvlSet(), 24, inputs);
    NetForSingleChordAnalysis.use(inputs);
    benchmark::DoNotOptimize(NetForSingleChordAnalysis.winner());
  }
  state.counters["allocs/chord"] =
      benchmark::Counter(static_cast<double>(bench::AllocationCount() - before) /
                         static_cast<double>(state.iterations()));
}

// From the played notes to the name a host shows: the chord built from the note numbers, its
// root found, the name written.
void NamePlayedNotes(benchmark::State& state, bool net) {
  std::vector<CMySet<unsigned char>> voicings;
  for (const CChordHeavy& chord : Voicings()) {
    CMySet<unsigned char> set;
    for (const CNote& note : chord.Notes()) set.insert(static_cast<unsigned char>(note.NoteNr()));
    voicings.push_back(set);
  }
  const TSingleChordAnalysisAlgo algo =
      net ? kSingleChordAnalysisAlgoNeuronalNet : kSingleChordAnalysisAlgoProbTable;
  const auto name = [&](const CMySet<unsigned char>& notes) {
    CChordHeavy chord(CNote::Undef, notes, CIntvlSet::kDefaultWrapIntvl);
    if (net) chord.SetWrapIntvlToNeuronalNetInputCount();
    chord.SetRootNoteAndEnh_ToLikeliestRegardingNoteSet(algo);
    return chord.Name(GetCurrentChordNamePrefs());
  };
  benchmark::DoNotOptimize(name(voicings[0]));  // warms the lazy tables
  std::size_t i = 0;
  const long before = bench::AllocationCount();
  for (auto _ : state) benchmark::DoNotOptimize(name(voicings[i++ % voicings.size()]));
  state.counters["allocs/chord"] =
      benchmark::Counter(static_cast<double>(bench::AllocationCount() - before) /
                         static_cast<double>(state.iterations()));
}

void BM_NamePlayedNotesByNet(benchmark::State& state) { NamePlayedNotes(state, true); }
void BM_NamePlayedNotesByTable(benchmark::State& state) { NamePlayedNotes(state, false); }

BENCHMARK(BM_RootByTable);
BENCHMARK(BM_RootByNet);
BENCHMARK(BM_NetForwardPass);
BENCHMARK(BM_NamePlayedNotesByNet);
BENCHMARK(BM_NamePlayedNotesByTable);

}  // namespace
