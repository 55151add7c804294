// The cost of a heavy scale. Many callers build one on the spot to spell a single key
// (CKeyEnh(key, scale), AdjustEnhToScale, naming), so its construction, which finds the key
// signature and fills the spelling table, is measured per type and root, next to the sign
// count alone, the reading of scale names, and the test whether a chord fits a scale, which
// the analysis asks for every chord next to a found center.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/ScaleNameReader.h"

namespace harmony {
namespace {

// Every type of the table on every root, spelled as a sign key would be: flats for the black
// keys below F sharp, sharps from F sharp up.
std::vector<std::pair<CKeyEnh, TScaleType>> AllTypesAndRoots() {
  std::vector<std::pair<CKeyEnh, TScaleType>> cases;
  for (int index = 0; index < CScaleHeavy::NumAvailableScales(); ++index) {
    for (int key = 0; key < 12; ++key) {
      const TEnh enh = !IsBlackKey(key) ? TEnh_n : (key < 6 ? TEnh_b : TEnh_s);
      cases.emplace_back(CKeyEnh(key, enh), CScaleHeavy::GetTypeForScaleAtIndex(index));
    }
  }
  return cases;
}

void ReportPerCall(benchmark::State& state, std::size_t callsPerIteration) {
  state.SetItemsProcessed(state.iterations() * static_cast<long>(callsPerIteration));
  state.counters["ns_per_call"] = benchmark::Counter(
      static_cast<double>(state.iterations() * static_cast<long>(callsPerIteration)),
      benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_BuildHeavyScale(benchmark::State& state) {
  const auto cases = AllTypesAndRoots();
  for (auto _ : state) {
    for (const auto& [root, type] : cases) {
      const CScaleHeavy scale(root, type);
      benchmark::DoNotOptimize(scale.EnhForKeyNr(1));
    }
  }
  ReportPerCall(state, cases.size());
}
BENCHMARK(BM_BuildHeavyScale);

void BM_SignsCount(benchmark::State& state) {
  std::vector<CScaleHeavy> scales;
  for (const auto& [root, type] : AllTypesAndRoots()) scales.emplace_back(root, type);
  for (auto _ : state) {
    for (const CScaleHeavy& scale : scales) benchmark::DoNotOptimize(scale.SignsCount());
  }
  ReportPerCall(state, scales.size());
}
BENCHMARK(BM_SignsCount);

// A root given as a key number: four scales are built to find the spelling with the fewest
// signs.
void BM_BuildHeavyScaleFromKeyNr(benchmark::State& state) {
  for (auto _ : state) {
    for (int key = 0; key < 12; ++key) {
      for (TScaleType type : {st_maj, st_min}) {
        const CScaleHeavy scale(key, type);
        benchmark::DoNotOptimize(scale.EnhForKeyNr(1));
      }
    }
  }
  ReportPerCall(state, 24);
}
BENCHMARK(BM_BuildHeavyScaleFromKeyNr);

void BM_SpellKeyByLiteScale(benchmark::State& state) {
  std::vector<CScaleLite> scales;
  for (const auto& [root, type] : AllTypesAndRoots()) {
    scales.emplace_back(root, SemitonesFromScaleType(type));
  }
  for (auto _ : state) {
    for (const CScaleLite& scale : scales) benchmark::DoNotOptimize(CKeyEnh(6, scale));
  }
  ReportPerCall(state, scales.size());
}
BENCHMARK(BM_SpellKeyByLiteScale);

// Chords of a jazz tune against the twelve major and the twelve minor centers.
void BM_ChordIsCompatibleWithScale(benchmark::State& state) {
  std::vector<CChordLite> chords;
  for (const char* symbol : {"Cmaj7", "Am7", "Dm7", "G7", "Em7", "A7", "Fmaj7", "Bb7", "F#m7b5",
                             "B7b9", "Ebmaj7", "Ab7", "C/E", "G7sus4", "Bdim7", "Fm6"}) {
    chords.emplace_back(symbol, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs());
  }
  std::vector<CScaleLite> scales;
  for (const std::uint64_t mask : {2741ULL, 1453ULL}) {
    for (int key = 0; key < 12; ++key) {
      scales.emplace_back(CKeyEnh(key, IsBlackKey(key) ? TEnh_b : TEnh_n), CSemitones(mask));
    }
  }
  for (auto _ : state) {
    for (const CChordLite& chord : chords) {
      for (const CScaleLite& scale : scales) {
        benchmark::DoNotOptimize(ScaleLite::ChordIsCompatibleWithScale(chord, scale));
      }
    }
  }
  ReportPerCall(state, chords.size() * scales.size());
}
BENCHMARK(BM_ChordIsCompatibleWithScale);

void BM_ReadScaleName(benchmark::State& state) {
  const std::vector<std::string> texts = {"C",
                                          "D dorian",
                                          "Eb melodic minor",
                                          "F# hm5",
                                          "Bb bebop dominant",
                                          "A minor pentatonic",
                                          "G klezmer",
                                          "C foo"};
  for (auto _ : state) {
    for (const std::string& text : texts) {
      CScaleLite scale;
      SetFromString(text, scale);
      benchmark::DoNotOptimize(scale);
    }
  }
  ReportPerCall(state, texts.size());
}
BENCHMARK(BM_ReadScaleName);

}  // namespace
}  // namespace harmony
