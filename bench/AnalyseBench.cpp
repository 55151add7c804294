// Speed of the analysis road on a modulating 32-bar tune, repeated to pieces of 16 to 16,384
// chords: a chord list in text parsed alone and parsed with the analysis that finds no
// centers, and parsed chords analysed by each way of finding centers. The time per chord
// shows how each method grows with the piece (a method that stays linear costs the same per
// chord at every length); allocations per chord are reported too.

#include <benchmark/benchmark.h>

#include <string>

#include "AllocationCounter.h"
#include "ModulatingTune.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmonicAnalyse.h"

namespace harmony {
namespace {

using bench::ModulatingTune;

void ReportPerChord(benchmark::State& state, std::size_t chords, long allocations) {
  const auto total = static_cast<double>(state.iterations()) * static_cast<double>(chords);
  state.counters["ns_per_chord"] =
      benchmark::Counter(total, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  state.counters["allocs_per_chord"] = static_cast<double>(allocations) / total;
}

void PieceLengths(benchmark::internal::Benchmark* b) {
  for (long chords = 16; chords <= 16384; chords *= 4) b->Arg(chords);
}

// The chord-list parser alone: tokens, bar lines, beats and chord symbols.
void BM_ParseChordList(benchmark::State& state) {
  const std::string text = ModulatingTune(state.range(0));
  const TChordStringParse parse;
  const std::size_t chords = ParseStringIntoHarmAnlsChords::ParseIntoChords(text, parse).size();
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    benchmark::DoNotOptimize(ParseStringIntoHarmAnlsChords::ParseIntoChords(text, parse).data());
  }
  ReportPerChord(state, chords, bench::AllocationCount() - before);
}
BENCHMARK(BM_ParseChordList)->Apply(PieceLengths);

void BM_ParseAndAnalyseNone(benchmark::State& state) {
  const std::string text = ModulatingTune(state.range(0));
  const TChordStringParse parse;
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString(text, {}, CHarmonicAnalyse::kAnalyseNone, parse);
  const std::size_t chords = analyse.InputChords().size();
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    analyse.AnalyseFromChordString(text, {}, CHarmonicAnalyse::kAnalyseNone, parse);
    benchmark::DoNotOptimize(analyse.HarmSignKeys().data());
  }
  ReportPerChord(state, chords, bench::AllocationCount() - before);
}
BENCHMARK(BM_ParseAndAnalyseNone)->Apply(PieceLengths);

// The analysis alone, on chords already parsed, by each way of finding centers:
// none, tonic progressions, cadence progressions, center weights (the first argument).
// The method of the first argument on `text`, parsed once, analysed in every iteration.
void AnalyseParsedChords(benchmark::State& state, const std::string& text) {
  const auto method = static_cast<CHarmonicAnalyse::TAnalyse>(state.range(0));
  const CHarmAnlsChords chords(text, TChordStringParse());
  CHarmonicAnalyse analyse;
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    analyse.AnalyseFromChords(chords, {}, method);
    benchmark::DoNotOptimize(analyse.HarmSignKeys().data());
  }
  ReportPerChord(state, chords.size(), bench::AllocationCount() - before);
}

void BM_AnalyseFromChords(benchmark::State& state) {
  AnalyseParsedChords(state, ModulatingTune(state.range(1)));
}
BENCHMARK(BM_AnalyseFromChords)
    ->ArgNames({"method", "chords"})
    ->ArgsProduct({{CHarmonicAnalyse::kAnalyseNone, CHarmonicAnalyse::kAnalyseTonicProgressions,
                    CHarmonicAnalyse::kAnalyseCadenceProgressions,
                    CHarmonicAnalyse::kAnalyseCenterWeights},
                   {16, 64, 256, 1024, 4096, 16384}});

// Lead-sheet bars of a jazz tune whose first cadence is not on its first chord: the cadence
// method then cuts the row of centers in front of the cadence, moving nearly every chord.
std::string LeadSheetBars(long chords) {
  static const char* const kBars[] = {"Cmaj7 . Am7 . |", "Dm7 . G7 . |",    "Em7 . A7b9 . |",
                                      "Dm9 . . . |",     "F#m7b5 . B7 . |", "Bbmaj7 . Eb7#11 . |",
                                      "Am7 . D7/F# . |", "Gsus4 . G7 . |"};
  std::string text;
  long count = 0;
  for (std::size_t bar = 0; count < chords; ++bar) {
    const std::string line = kBars[bar % std::size(kBars)];
    text += line + (bar % 4 == 3 ? "\n" : " ");
    count += line.find(" . . . ") != std::string::npos ? 1 : 2;
  }
  return text;
}

void BM_AnalyseLeadSheetBars(benchmark::State& state) {
  AnalyseParsedChords(state, LeadSheetBars(state.range(1)));
}
BENCHMARK(BM_AnalyseLeadSheetBars)
    ->ArgNames({"method", "chords"})
    ->ArgsProduct({{CHarmonicAnalyse::kAnalyseCadenceProgressions}, {16, 256, 1024, 16384}});

// One chord progression over and over: every reading of the tonic method reaches over the
// whole piece, the hardest case for cleaning up readings that contain each other.
void BM_AnalyseOneKeyLoop(benchmark::State& state) {
  std::string text;
  for (long i = 0; i < state.range(0) / 4; ++i) text += "C F G7 C ";
  const CHarmAnlsChords chords(text, TChordStringParse());
  CHarmonicAnalyse analyse;
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    analyse.AnalyseFromChords(chords, {}, CHarmonicAnalyse::kAnalyseTonicProgressions);
    benchmark::DoNotOptimize(analyse.HarmSignKeys().data());
  }
  ReportPerChord(state, chords.size(), bench::AllocationCount() - before);
}
BENCHMARK(BM_AnalyseOneKeyLoop)->Arg(64)->Arg(256)->Arg(1024)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace harmony
