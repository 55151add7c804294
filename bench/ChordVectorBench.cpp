// Speed of the chord vector form as an export of analysed songs runs it chord by chord: the
// one-hot vector both ways, the chroma, the simplification into the recognized types and the
// simple export name; and the dialog's two button rows, which a host asks for on every change
// of the edited chord. Each benchmark reports the time per chord.

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "harmony/analysis/HarmAnlsChordForMetro.h"
#include "harmony/dialog/DialogChordHarmonyKnowHow.h"

namespace harmony {
namespace {

constexpr int kChords = 4096;

// Every mask once, on random roots, a quarter of them with a bass.
std::vector<CHarmAnlsChordForMetro> ManyChords() {
  std::mt19937 random(7);
  std::vector<CHarmAnlsChordForMetro> chords;
  for (int i = 0; i < kChords; ++i) {
    const int root = static_cast<int>(random() % 12);
    const CKeyEnh bass =
        random() % 4 == 0 ? CKeyEnh(static_cast<int>(random() % 12), TEnh_n) : CKeyEnh();
    chords.emplace_back(
        CChordLite(CKeyEnh(root, TEnh_n), CSemitones(static_cast<std::uint64_t>(i)), bass));
  }
  return chords;
}

template <class Body>
void OverManyChords(benchmark::State& state, Body body) {
  const std::vector<CHarmAnlsChordForMetro> chords = ManyChords();
  for (auto _ : state) {
    for (const CHarmAnlsChordForMetro& chord : chords) body(chord);
  }
  state.counters["per_chord"] = benchmark::Counter(
      kChords, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_VectorRepresentation(benchmark::State& state) {
  OverManyChords(state, [](const CHarmAnlsChordForMetro& chord) {
    benchmark::DoNotOptimize(chord.GetChordVectorRepresentation());
  });
}
BENCHMARK(BM_VectorRepresentation);

void BM_VectorReadBack(benchmark::State& state) {
  std::vector<std::vector<float>> vectors;
  for (const CHarmAnlsChordForMetro& chord : ManyChords()) {
    vectors.push_back(chord.GetChordVectorRepresentation());
  }
  for (auto _ : state) {
    for (const std::vector<float>& vector : vectors) {
      CHarmAnlsChordForMetro chord;
      chord.SetFromChordVectorRepresentation(vector);
      benchmark::DoNotOptimize(chord);
    }
  }
  state.counters["per_chord"] = benchmark::Counter(
      kChords, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_VectorReadBack);

void BM_Chroma(benchmark::State& state) {
  OverManyChords(state, [](const CHarmAnlsChordForMetro& chord) {
    CHarmAnlsChordForMetro::TChromaVector chroma;
    chord.GetChromaVector(chroma, true);
    benchmark::DoNotOptimize(chroma);
  });
}
BENCHMARK(BM_Chroma);

void BM_SimplifyToRecognized(benchmark::State& state) {
  OverManyChords(state, [](const CHarmAnlsChordForMetro& chord) {
    benchmark::DoNotOptimize(chord.SimplifiedToRecognizedMetroChord(false));
  });
}
BENCHMARK(BM_SimplifyToRecognized);

void BM_ExportNameSimple(benchmark::State& state) {
  OverManyChords(state, [](const CHarmAnlsChordForMetro& chord) {
    benchmark::DoNotOptimize(chord.NameForMetroExport(true));
  });
}
BENCHMARK(BM_ExportNameSimple);

void BM_DialogRows(benchmark::State& state) {
  const DialogChordHarmonyKnowHow knowHow;
  const CScaleLite scale;
  OverManyChords(state, [&](const CHarmAnlsChordForMetro& chord) {
    benchmark::DoNotOptimize(knowHow.DialogChordTypesFor(chord, scale));
    benchmark::DoNotOptimize(knowHow.DialogChordOptionsFor(chord, scale));
  });
}
BENCHMARK(BM_DialogRows);

}  // namespace
}  // namespace harmony
