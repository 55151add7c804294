// Speed of the analysis road: a chord list in text is parsed and analysed without center
// finding, and parsed chords are analysed by each way of finding centers, for pieces of 16 to
// 1024 chords. The time per chord shows how each method grows with the piece; allocations per
// chord are reported too.

#include <benchmark/benchmark.h>

#include <string>

#include "AllocationCounter.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmonicAnalyse.h"

namespace harmony {
namespace {

// Lead-sheet bars: two chords, or one held, with beat tokens and bar lines.
const char* const kBars[] = {"Cmaj7 . Am7 . |", "Dm7 . G7 . |",    "Em7 . A7b9 . |",
                             "Dm9 . . . |",     "F#m7b5 . B7 . |", "Bbmaj7 . Eb7#11 . |",
                             "Am7 . D7/F# . |", "Gsus4 . G7 . |"};

// A piece of about `chords` chords.
std::string Piece(long chords) {
  std::string text;
  long count = 0;
  for (std::size_t bar = 0; count < chords; ++bar) {
    const std::string line = kBars[bar % std::size(kBars)];
    text += line + (bar % 4 == 3 ? "\n" : " ");
    count += line.find(" . . . ") != std::string::npos ? 1 : 2;
  }
  return text;
}

void ReportPerChord(benchmark::State& state, std::size_t chords, long allocations) {
  const auto total = static_cast<double>(state.iterations()) * static_cast<double>(chords);
  state.counters["ns_per_chord"] =
      benchmark::Counter(total, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  state.counters["allocs_per_chord"] = static_cast<double>(allocations) / total;
}

void BM_ParseAndAnalyseNone(benchmark::State& state) {
  const std::string text = Piece(state.range(0));
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
BENCHMARK(BM_ParseAndAnalyseNone)->Arg(16)->Arg(64)->Arg(256)->Arg(1024);

// The analysis alone, on chords already parsed, by each way of finding centers:
// none, tonic progressions, cadence progressions, center weights (the first argument).
void BM_AnalyseFromChords(benchmark::State& state) {
  const auto method = static_cast<CHarmonicAnalyse::TAnalyse>(state.range(0));
  const CHarmAnlsChords chords(Piece(state.range(1)), TChordStringParse());
  CHarmonicAnalyse analyse;
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    analyse.AnalyseFromChords(chords, {}, method);
    benchmark::DoNotOptimize(analyse.HarmSignKeys().data());
  }
  ReportPerChord(state, chords.size(), bench::AllocationCount() - before);
}
BENCHMARK(BM_AnalyseFromChords)
    ->ArgNames({"method", "chords"})
    ->ArgsProduct({{CHarmonicAnalyse::kAnalyseNone, CHarmonicAnalyse::kAnalyseTonicProgressions,
                    CHarmonicAnalyse::kAnalyseCadenceProgressions,
                    CHarmonicAnalyse::kAnalyseCenterWeights},
                   {16, 64, 256, 1024}});

}  // namespace
}  // namespace harmony
