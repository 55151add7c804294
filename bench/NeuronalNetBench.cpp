// The net of root detection runs once for every chord analysed: its forward pass is the hot
// path. Training is measured as one epoch over a small pattern set of triads.

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <vector>

#include "harmony/net/NeuronalNet.h"
#include "platform/Random.h"

#include "AllocationCounter.h"

namespace {

using harmony::NeuronalNet;

// 24 inputs, hidden layers of 15 and 15, 12 outputs; sum, sigmoid of slope 0.2 and threshold 2.
NeuronalNet ChordShapedNet(harmony::OUTPUT_TYPE outputType = harmony::OUTPUT_NONE) {
  harmony::platform::SeedRandom(2024);
  const std::int32_t sizes[] = {15, 15};
  return NeuronalNet(24, 2, sizes, 12, harmony::INPUT_SUM, harmony::ACT_SIGM, 0.2, 2.0, outputType,
                     0.5);
}

// Major and minor triads on all twelve roots: pitch classes in the first twelve inputs, the
// bass in the last twelve, the root as the target.
std::vector<harmony::training_pattern> Triads() {
  std::vector<harmony::training_pattern> patterns;
  for (int third : {4, 3}) {
    for (int root = 0; root < 12; ++root) {
      harmony::training_pattern pattern{std::vector<double>(24, 0.0), std::vector<double>(12, 0.0),
                                        0.1, "triad"};
      for (int interval : {0, third, 7}) pattern.mInputs[(root + interval) % 12] = 1.0;
      pattern.mInputs[12 + root] = 1.0;
      pattern.mOutputs[root] = 1.0;
      patterns.push_back(pattern);
    }
  }
  return patterns;
}

void Forward(benchmark::State& state, NeuronalNet net) {
  const std::vector<harmony::training_pattern> patterns = Triads();
  std::size_t next = 0;
  const long before = harmony::bench::AllocationCount();
  for (auto _ : state) {
    net.use(patterns[next].mInputs);
    benchmark::DoNotOptimize(net.winner());
    next = (next + 1) % patterns.size();
  }
  state.counters["allocations"] = static_cast<double>(harmony::bench::AllocationCount() - before);
}

// Sum, sigmoid and no output function: the fast route with blockwise sums.
void BM_ForwardPassChordShape(benchmark::State& state) { Forward(state, ChordShapedNet()); }
BENCHMARK(BM_ForwardPassChordShape);

// The same shape with a binary output runs the general rule, for comparison.
void BM_ForwardPassGeneralRule(benchmark::State& state) {
  Forward(state, ChordShapedNet(harmony::OUTPUT_BIN));
}
BENCHMARK(BM_ForwardPassGeneralRule);

// One epoch: one training step for each of the 24 triads.
void BM_TrainingEpochTriads(benchmark::State& state) {
  NeuronalNet net = ChordShapedNet();
  const std::vector<harmony::training_pattern> patterns = Triads();
  for (auto _ : state) {
    double error = 0.0;
    for (const auto& pattern : patterns) error += net.train(pattern);
    benchmark::DoNotOptimize(error);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(patterns.size()));
}
BENCHMARK(BM_TrainingEpochTriads);

}  // namespace
