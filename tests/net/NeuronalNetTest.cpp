#include "harmony/net/NeuronalNet.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <new>

#include "NetTestSupport.h"
#include "platform/Random.h"

// Counts every allocation of this test program, to show the forward pass makes none. The thread
// sanitizer brings its own allocation functions, so its build counts nothing.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define HARMONY_NO_ALLOCATION_COUNT 1
#endif
#endif
namespace {
std::atomic<long> gAllocations{0};
}
#ifndef HARMONY_NO_ALLOCATION_COUNT
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpragmas"
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void* operator new(std::size_t size) {
  ++gAllocations;
  if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
#pragma GCC diagnostic pop
#endif

namespace harmony {
namespace {

using testing::NetWithWeights;
using testing::Weights;

NeuronalNet ChordShapedNet() {
  const std::int32_t sizes[] = {15, 15};
  return NeuronalNet(24, 2, sizes, 12, INPUT_SUM, ACT_SIGM, 0.2, 2.0, OUTPUT_NONE, 0.0);
}

TEST(NeuronalNet, InputFunctionsOnATinyNet) {
  // Two inputs, one hidden neuron of weights 0.5 and 0.25, one output neuron of weight 2.
  const std::vector<double> x = {2.0, -3.0};
  const std::pair<INPUT_TYPE, double> cases[] = {
      {INPUT_SUM, 0.25 * 2},       // 2 * 0.5 - 3 * 0.25 = 0.25
      {INPUT_MIN, -3.0},           // weights unused, in both layers
      {INPUT_MAX, 2.0},            //
      {INPUT_AVG, 0.125 * 2 / 1},  // 0.25 / 2, then 0.125 * 2 / 1
      {INPUT_PROD, -0.75 * 2},     // (2 * 0.5) * (-3 * 0.25)
  };
  for (const auto& [type, expected] : cases) {
    TNeuronProp prop = testing::kIdentity;
    prop.mInputType = type;
    NeuronalNet net = NetWithWeights(2, {1}, 1, prop, {0.5, 0.25, 2.0});
    net.use(x);
    EXPECT_EQ(net.get_outputs(), std::vector<double>{expected}) << type;
  }
}

TEST(NeuronalNet, ForwardPassOfTheChordShape) {
  platform::SeedRandom(3);
  NeuronalNet net = ChordShapedNet();
  EXPECT_EQ(net.get_input_neuron_count(), 24);
  EXPECT_EQ(net.get_weight_count(), 765u);
  net.use(std::vector<double>(24, 0.0));
  for (const Neuron& neuron : net.get_hidden_layer(0)) {
    EXPECT_NEAR(neuron.mValue, 0.4013, 5e-5);
    EXPECT_EQ(neuron.mValue, 1.0 / (1.0 + std::exp(0.4)));
  }
  // A shorter input leaves the rest as it was.
  std::vector<double> ones(24, 1.0);
  net.use(ones);
  const std::vector<double> withOnes = net.get_outputs();
  net.use({1.0, 1.0});
  EXPECT_EQ(net.get_outputs(), withOnes);
  net.use({0.0});
  EXPECT_NE(net.get_outputs(), withOnes);

  const long before = gAllocations;
  for (int i = 0; i < 100; ++i) net.use(ones);
  net.use();
  EXPECT_EQ(gAllocations - before, 0);
}

TEST(NeuronalNet, WinnerTakesTheFirstOfEquals) {
  NeuronalNet net = NetWithWeights(1, {1}, 3, testing::kIdentity, {1.0, 0.5, 0.5, 0.5});
  net.use({2.0});
  EXPECT_EQ(net.winner(), 0);
  NeuronalNet other = NetWithWeights(1, {1}, 3, testing::kIdentity, {1.0, 0.5, 0.7, 0.7});
  other.use({2.0});
  EXPECT_EQ(other.winner(), 1);
  other.use({-2.0});
  EXPECT_EQ(other.winner(), 0);
}

TEST(NeuronalNet, AcquireAndGetWeights) {
  platform::SeedRandom(5);
  NeuronalNet net = ChordShapedNet();
  std::vector<double> flat(765);
  for (std::size_t i = 0; i < flat.size(); ++i) flat[i] = static_cast<double>(i);
  TPredefinedWeights record{
      {24, 12},
      {2, {15, 15, 0, 0, 0}, {INPUT_SUM, ACT_SIGM, 0.2, 2.0, OUTPUT_NONE, 0.0}},
      flat.data()};
  EXPECT_TRUE(net.acquire_weights(record));
  // The flat order: hidden layer 0 neuron by neuron, then layer 1, then the outputs.
  EXPECT_EQ(net.get_hidden_layer(0)[1].mWeights[0], 24.0);
  EXPECT_EQ(net.get_hidden_layer(1)[0].mWeights[0], 360.0);
  EXPECT_EQ(net.get_output_layer()[0].mWeights[2], 587.0);
  EXPECT_EQ(Weights(net), flat);

  std::vector<double> zeros(765, 0.0);
  TPredefinedWeights wrong = record;
  wrong.mWeights = zeros.data();
  wrong.mDynProp.mNeuronProp.mActivationSlope = std::nextafter(0.2, 1.0);
  EXPECT_FALSE(net.acquire_weights(wrong));
  wrong = record;
  wrong.mWeights = zeros.data();
  wrong.mDynProp.mHiddenLayerSizes[0] = 14;
  EXPECT_FALSE(net.acquire_weights(wrong));
  wrong.mDynProp.mHiddenLayerSizes[0] = 15;
  wrong.mFixedProp.mInputCount = 25;
  EXPECT_FALSE(net.acquire_weights(wrong));
  EXPECT_EQ(Weights(net), flat);  // nothing changed

  const NeuronalNet built(record);
  EXPECT_EQ(Weights(built), flat);
}

TEST(NeuronalNet, NetWithoutHiddenLayersFeedsTheOutputDirectly) {
  NeuronalNet net = NetWithWeights(2, {}, 1, testing::kIdentity, {3.0, 4.0});
  net.use({1.0, 2.0});
  EXPECT_EQ(net.get_outputs(), std::vector<double>{11.0});
}

}  // namespace
}  // namespace harmony
