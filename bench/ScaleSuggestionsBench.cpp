// Speed of the scale suggestions for every chord of a 64-chord progression: the suggestions
// alone on an analysed piece (contexts and scales), the fallback creator alone, and the whole
// road from the chord list through the analysis. Time and allocations are told per chord.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "AllocationCounter.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmCenterOfInputChords.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/scalealternatives/FallbackCreator.h"
#include "harmony/scalealternatives/ScaleSuggestions.h"

namespace harmony {
namespace {

// Sixteen bars of four chords: II-V-I in major and minor, borrowed chords, secondary
// dominants, a passing diminished chord and a Neapolitan, so that every road is taken.
const char* const kPiece =
    "Dm7 G7 Cmaj7 A7 | Dm7 G7 Cmaj7 Cmaj7 | Fmaj7 Fm6 Cmaj7 Ab7 | Dm7b5 G7b9 Cm6 Cm6 | "
    "Cmaj7 C#dim7 Dm7 G7 | Em7 A7 Dm7 G7 | Ab Bb C C | Db G7 C C | "
    "Am7 D7 Gmaj7 E7 | Am7 D7 Gmaj7 Gmaj7 | F#m7b5 B7b9 Em Em | Cmaj7 Cm6 Gmaj7 Eb7 | "
    "Am7 D7 Bm7 E7 | Am7 D7 G6 G6 | Gsus4 G7 C Am | F G7 C C";

struct TPiece {
  std::vector<CChordLite> chords;
  std::vector<CScaleLite> scales;
  std::size_t placed = 0;  // chords the analysis put into a center
};

TPiece AnalysedPiece() {
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString(kPiece, {}, CHarmonicAnalyse::kAnalyseTonicProgressions,
                                 TChordStringParse());
  const std::vector<CHarmCenterLite> centers = HarmCenterOfEachInputChord(analyse);
  TPiece piece;
  // The closing chord of the list is no chord of the piece.
  for (std::size_t i = 0; i + 1 < analyse.InputChords().size(); ++i) {
    piece.chords.push_back(analyse.InputChords()[i]);
    piece.scales.push_back(centers[i]);
    if (!centers[i].IsUndef()) ++piece.placed;
  }
  return piece;
}

void ReportPerChord(benchmark::State& state, std::size_t chords, long allocations) {
  const auto total = static_cast<double>(state.iterations()) * static_cast<double>(chords);
  state.counters["chords"] = static_cast<double>(chords);
  state.counters["ns_per_chord"] =
      benchmark::Counter(total, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  state.counters["allocs_per_chord"] = static_cast<double>(allocations) / total;
}

// The contexts of the analysed piece and the suggestions for each chord.
void BM_SuggestionsForEveryChord(benchmark::State& state) {
  const TPiece piece = AnalysedPiece();
  std::size_t fromFallback = 0;
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    fromFallback = 0;
    const std::vector<CScaleAlternativesContext> contexts =
        ScaleSuggestions::ContextsForChords(piece.chords, piece.scales);
    for (const CScaleAlternativesContext& context : contexts) {
      const TScaleSuggestions suggestions = ScaleSuggestions::ForContext(context);
      if (suggestions.FromFallback) ++fromFallback;
      benchmark::DoNotOptimize(suggestions.Scales.data());
    }
  }
  ReportPerChord(state, piece.chords.size(), bench::AllocationCount() - before);
  state.counters["placed"] = static_cast<double>(piece.placed);
  state.counters["from_fallback"] = static_cast<double>(fromFallback);
}
BENCHMARK(BM_SuggestionsForEveryChord);

// The fallback creator alone, as if the analysis had offered nothing for any chord.
void BM_FallbackForEveryChord(benchmark::State& state) {
  const TPiece piece = AnalysedPiece();
  const std::vector<CScaleAlternativesContext> contexts =
      ScaleSuggestions::ContextsForChords(piece.chords, piece.scales);
  const Harmonies::ScaleAlternatives::ProductionFallbackCreatorDependencies production;
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    for (const CScaleAlternativesContext& context : contexts) {
      const TScaleAlternatives scales =
          Harmonies::ScaleAlternatives::ProductionFallbackCreator(context, false, production);
      benchmark::DoNotOptimize(scales.data());
    }
  }
  ReportPerChord(state, contexts.size(), bench::AllocationCount() - before);
}
BENCHMARK(BM_FallbackForEveryChord);

// What the scales command does: the chord list parsed and analysed, then every chord's
// suggestions.
void BM_ChordListToSuggestions(benchmark::State& state) {
  const TChordStringParse parse;
  std::size_t chords = 0;
  const long before = bench::AllocationCount();
  for (auto _ : state) {
    CHarmonicAnalyse analyse;
    analyse.AnalyseFromChordString(kPiece, {}, CHarmonicAnalyse::kAnalyseTonicProgressions, parse);
    const std::vector<CHarmCenterLite> centers = HarmCenterOfEachInputChord(analyse);
    const std::vector<CChordLite> list(analyse.InputChords().begin(), analyse.InputChords().end());
    const std::vector<CScaleAlternativesContext> contexts =
        ScaleSuggestions::ContextsForChords(list, {centers.begin(), centers.end()});
    for (std::size_t i = 0; i + 1 < contexts.size(); ++i) {
      benchmark::DoNotOptimize(ScaleSuggestions::ForContext(contexts[i]).Scales.data());
    }
    chords = contexts.size() - 1;
  }
  ReportPerChord(state, chords, bench::AllocationCount() - before);
}
BENCHMARK(BM_ChordListToSuggestions);

}  // namespace
}  // namespace harmony
