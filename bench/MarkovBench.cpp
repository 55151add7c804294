// Speed of the Markov chord model: learning symbols, reading the bundled model, generating 16
// bars with the settings of `harmony markov generate`, filling a gap and rating a sequence on
// the bundled model. Learning is measured on a made-up corpus so that it runs without data.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "harmony/markov/VariableLengthMarkovModel.h"
#include "platform/Random.h"

namespace harmony {
namespace {

using Reader = VariableLengthMarkovModel::JSONDeserialization_Helper;

const std::string& BundledModelPath() {
  static const std::string path = std::string(HARMONY_DATA_DIR) + "/markov/default-model.json";
  return path;
}

// The bundled model, read once; nullptr when the checkout has none.
VariableLengthMarkovModel* BundledModel() {
  static const std::unique_ptr<VariableLengthMarkovModel> model = [] {
    auto read = std::make_unique<VariableLengthMarkovModel>();
    if (!Reader::VariableLengthMarkovModelFromJSONFile(BundledModelPath(), *read)) read.reset();
    return read;
  }();
  return model.get();
}

CMarkovObject Chord(int rootDist, std::uint64_t semitones, double length) {
  const CChordLite chord(CKeyEnh(rootDist, TEnh_n), CSemitones(semitones));
  return CMarkovObject::FromChord(
      CHarmAnlsChordWithLength(CHarmAnlsChord(chord, rootDist), length));
}

// A diatonic progression of one or two chords a bar, the way pop songs move.
std::vector<CMarkovObject> MadeUpSequence(std::uint32_t seed, int chords) {
  static const int kDegrees[] = {0, 2, 4, 5, 7, 9};
  static const std::uint64_t kMasks[] = {145, 137, 137, 145, 1169, 137};
  std::vector<CMarkovObject> sequence;
  std::uint32_t state = seed * 2654435761u + 1;
  for (int i = 0; i < chords; ++i) {
    state = state * 1664525u + 1013904223u;
    const std::size_t degree = (state >> 16) % 6;
    sequence.push_back(Chord(kDegrees[degree], kMasks[degree], (state >> 8) % 3 == 0 ? 2.0 : 4.0));
  }
  return sequence;
}

// The settings of harmony markov generate (tools/harmony/MarkovSupport.cpp).
TMarkovGenerateOptions GenerateSettings(VariableLengthMarkovModel& model, double beats) {
  TMarkovGenerateOptions options;
  options.MaxHistory = model.MaxHistoryLength();
  options.MinHistory = 1;
  options.EvidenceHistory = model.MaxHistoryLength() - 1;
  options.AcceptLowEntropy = true;
  options.StopBackOffAtExactFit = true;
  options.MinNormalizedEntropy = 0.0;
  options.AllEqualFactor = 0.01;
  options.SampleCount = 20;
  options.MaxTries = 1000;
  model.IteratorSequenceForObjects({CMarkovObject::Gap(beats)}, options.Objects);
  return options;
}

void BM_MarkovLearn(benchmark::State& state) {
  std::vector<std::vector<CMarkovObject>> corpus;
  for (std::uint32_t i = 0; i < 100; ++i) corpus.push_back(MadeUpSequence(i, 64));
  for (auto _ : state) {
    VariableLengthMarkovModel model(3);
    for (const std::vector<CMarkovObject>& sequence : corpus) {
      model.StartSequence();
      for (const CMarkovObject& object : sequence) model.LearnAddSymbol(object);
      model.EndSequence();
    }
    benchmark::DoNotOptimize(model.TransitionMap().size());
  }
  state.SetItemsProcessed(state.iterations() * 100 * 64);
}
BENCHMARK(BM_MarkovLearn)->Unit(benchmark::kMillisecond);

void BM_MarkovReadBundledModel(benchmark::State& state) {
  if (BundledModel() == nullptr) {
    state.SkipWithError("no bundled model");
    return;
  }
  for (auto _ : state) {
    VariableLengthMarkovModel model;
    Reader::VariableLengthMarkovModelFromJSONFile(BundledModelPath(), model);
    benchmark::DoNotOptimize(model.Objects().size());
  }
}
BENCHMARK(BM_MarkovReadBundledModel)->Unit(benchmark::kMillisecond);

void BM_MarkovGenerate16Bars(benchmark::State& state) {
  VariableLengthMarkovModel* model = BundledModel();
  if (model == nullptr) {
    state.SkipWithError("no bundled model");
    return;
  }
  const TMarkovGenerateOptions options = GenerateSettings(*model, 64.0);
  std::uint32_t seed = 0;
  for (auto _ : state) {
    platform::SeedRandom(++seed);
    TMarkovSampledSequence result;
    std::vector<TMarkovSampledSequence> candidates;
    model->SampleSequenceWithLength(result, candidates, true, options);
    if (result.empty()) state.SkipWithError("no sequence");
  }
}
BENCHMARK(BM_MarkovGenerate16Bars)->Unit(benchmark::kMillisecond);

void BM_MarkovFillGap(benchmark::State& state) {
  VariableLengthMarkovModel* model = BundledModel();
  if (model == nullptr) {
    state.SkipWithError("no bundled model");
    return;
  }
  TMarkovHistory sequence;
  model->IteratorSequenceForObjects({Chord(0, 145, 4.0), Chord(9, 137, 4.0), Chord(5, 145, 4.0),
                                     CMarkovObject::Gap(4.0), Chord(0, 145, 4.0)},
                                    sequence);
  platform::SeedRandom(1);
  for (auto _ : state) benchmark::DoNotOptimize(model->FillGapInSequence(sequence));
}
BENCHMARK(BM_MarkovFillGap)->Unit(benchmark::kMillisecond);

void BM_MarkovEvidenceOf32Chords(benchmark::State& state) {
  VariableLengthMarkovModel* model = BundledModel();
  if (model == nullptr) {
    state.SkipWithError("no bundled model");
    return;
  }
  TMarkovGenerateOptions options = GenerateSettings(*model, 4.0);
  model->IteratorSequenceForObjects(MadeUpSequence(7, 32), options.Objects);
  TMarkovSampledSequence sequence;
  for (const TMarkovSymbol& symbol : options.Objects) sequence.Append({0.5, 0.0, 0.0, 1, symbol});
  for (auto _ : state) {
    TMarkovSampledSequence rated = sequence;
    model->CalculateEvidenceProbability(rated, options);
    benchmark::DoNotOptimize(rated.LogWeight);
  }
}
BENCHMARK(BM_MarkovEvidenceOf32Chords)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace harmony
