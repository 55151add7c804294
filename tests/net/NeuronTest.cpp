#include "harmony/net/Neuron.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "NetTestSupport.h"
#include "platform/Random.h"

namespace harmony {
namespace {

constexpr double kFlatSpot = 0.10000000149011612;  // 0.1f

// One neuron of weight 1: its net input is the input.
double Activate(double net) {
  Neuron neuron(1);
  neuron.mWeights = {1.0};
  double out = 0.0;
  neuron.calcValue(&net, 1, &out, 0);
  EXPECT_EQ(out, neuron.mValue);
  return out;
}

TEST(Neuron, RandomWeightsAndTheSharedRule) {
  platform::SeedRandom(7);
  Neuron::flat_spot_elimination = false;
  const Neuron neuron(500);
  EXPECT_TRUE(Neuron::flat_spot_elimination);  // every new neuron switches it on
  for (double w : neuron.mWeights) {
    EXPECT_TRUE(w >= 0.01 && w <= 0.99) << w;
    const double hundredths = std::round(w * 100.0);
    EXPECT_TRUE(w == hundredths / 100.0 || w == static_cast<double>(0.1f)) << w;
  }

  Neuron::SetCalcParams(INPUT_PROD, ACT_TANHYP, OUTPUT_BIN, 0.5, 1.5, 0.25);
  EXPECT_EQ(Neuron::combined_type, (2 + 1 * 4) * 5 + 4);
  EXPECT_EQ(Neuron::activation_slope, 0.5);
  EXPECT_EQ(Neuron::output_threshold, 0.25);
  Neuron::SetCalcParams(INPUT_SUM, ACT_SIGM, OUTPUT_NONE, 0.5, 1.5, 0.25);
  EXPECT_EQ(Neuron::combined_type, 0);
}

TEST(Neuron, Activations) {
  Neuron::SetCalcParams(INPUT_SUM, ACT_SIGM, OUTPUT_NONE, 2.0, 0.5, 0.0);
  EXPECT_DOUBLE_EQ(Activate(0.5), 0.5);
  EXPECT_DOUBLE_EQ(Activate(1.5), 1.0 / (1.0 + std::exp(-2.0)));
  EXPECT_EQ(Activate(-1e6), 0.0);  // exp gives infinity, the value is a clean 0
  EXPECT_EQ(Activate(1e6), 1.0);

  // A ramp of the slope only strictly inside (0, 1), then on with slope 1 up to +-1.
  Neuron::SetCalcParams(INPUT_SUM, ACT_LIN, OUTPUT_NONE, 0.5, 1.0, 0.0);
  EXPECT_DOUBLE_EQ(Activate(1.5), 0.25);
  EXPECT_DOUBLE_EQ(Activate(0.5), -0.5);
  EXPECT_EQ(Activate(2.0), 1.0);
  EXPECT_EQ(Activate(1.0), 0.0);
  EXPECT_EQ(Activate(3.0), 1.0);
  EXPECT_EQ(Activate(-5.0), -1.0);

  Neuron::SetCalcParams(INPUT_SUM, ACT_TANHYP, OUTPUT_NONE, 2.0, 0.5, 0.0);
  EXPECT_DOUBLE_EQ(Activate(1.0), std::tanh(1.0));
  EXPECT_DOUBLE_EQ(Activate(0.0), std::tanh(-1.0));
  // A large net input saturates instead of dividing infinity by infinity.
  for (double net : {400.0, 1e6, 1e300}) {
    EXPECT_EQ(Activate(net), 1.0) << net;
    EXPECT_EQ(Activate(-net), -1.0) << net;
  }
  EXPECT_EQ(Activate(10.5), 1.0);  // already 1 to the last bit below the cut

  Neuron::SetCalcParams(INPUT_SUM, ACT_IDENT, OUTPUT_NONE, 2.0, 0.5, 0.0);
  EXPECT_EQ(Activate(1.5), 1.5);  // neither slope nor threshold

  Neuron::SetCalcParams(INPUT_SUM, ACT_IDENT, OUTPUT_BIN, 2.0, 0.5, 1.5);
  EXPECT_EQ(Activate(1.5), 1.0);  // at the threshold counts
  EXPECT_EQ(Activate(1.49), 0.0);
}

TEST(Neuron, FastRouteAgreesWithTheGeneralRule) {
  platform::SeedRandom(11);
  Neuron::SetCalcParams(INPUT_SUM, ACT_SIGM, OUTPUT_NONE, 0.2, 2.0, 0.0);
  for (int count : {0, 1, 7, 8, 15, 24, 31}) {
    std::vector<Neuron> layer(3, Neuron(count));
    std::vector<double> inputs(count);
    for (int i = 0; i < count; ++i) inputs[i] = (i % 5) * 3.7 - 6.1;
    std::vector<double> fast(3);
    Neuron::calcVec(layer.data(), inputs.data(), count, fast.data(), 3);
    for (Neuron& neuron : layer) {
      const double fastNet = neuron.mNetInput;
      EXPECT_DOUBLE_EQ(neuron.mExponential, std::exp(0.2 * (2.0 - fastNet)));
      double general = 0.0;
      neuron.calcValue(inputs.data(), count, &general, 0);
      if (count < 8) {
        EXPECT_EQ(fastNet, neuron.mNetInput) << count;  // same order of summation
      } else {
        EXPECT_NEAR(fastNet, neuron.mNetInput, 1e-12 * std::fabs(neuron.mNetInput)) << count;
      }
      EXPECT_NEAR(general, neuron.mValue, 1e-15);
    }
    if (count == 0) {
      EXPECT_EQ(fast[0], 1.0 / (1.0 + std::exp(0.4)));
    }
  }

  // Any other combination runs the general rule and leaves the exponential alone.
  Neuron::SetCalcParams(INPUT_SUM, ACT_SIGM, OUTPUT_BIN, 0.2, 2.0, 0.5);
  Neuron neuron(1);
  neuron.mWeights = {1.0};
  neuron.mExponential = 42.0;
  const double input = 20.0;
  double out = 0.0;
  Neuron::calcVec(&neuron, &input, 1, &out, 1);
  EXPECT_EQ(out, 1.0);
  EXPECT_EQ(neuron.mExponential, 42.0);
}

TEST(Neuron, Derivatives) {
  Neuron::SetCalcParams(INPUT_SUM, ACT_SIGM, OUTPUT_NONE, 0.2, 2.0, 0.0);
  Neuron neuron(1);
  neuron.mWeights = {1.0};
  auto at = [&neuron](double net) {
    double out = 0.0;
    Neuron::calcVec(&neuron, &net, 1, &out, 1);
    double layer = 0.0;
    Neuron::Act_AblVec(&neuron, &layer, 1);
    return std::pair(neuron.Act_Abl(), layer);
  };
  Neuron::flat_spot_elimination = false;
  EXPECT_EQ(at(2.0), std::pair(0.25, 0.25));  // no factor of the slope
  // Far above the threshold x is below -50, but e is tiny and only a large e counts as saturated.
  EXPECT_EQ(at(1000.0).first, 0.0);
  EXPECT_EQ(at(1000.0).second, std::exp(0.2 * (2.0 - 1000.0)));
  // x = 0.2 * (2 - net) = 10: inside the limit of x, but e = exp(10) is beyond 50.
  const auto [single, layer] = at(-48.0);
  EXPECT_DOUBLE_EQ(single, std::exp(10.0) / std::pow(std::exp(10.0) + 1.0, 2));
  EXPECT_EQ(layer, 0.0);
  Neuron::flat_spot_elimination = true;
  EXPECT_EQ(at(2.0), std::pair(0.25 + kFlatSpot, 0.25 + kFlatSpot));
  EXPECT_EQ(at(-1000.0), std::pair(kFlatSpot, kFlatSpot));

  Neuron::SetCalcParams(INPUT_SUM, ACT_LIN, OUTPUT_NONE, 0.5, 3.0, 0.0);
  EXPECT_EQ(at(0.0).first, 0.5);  // the unit interval of the net input, threshold aside
  EXPECT_EQ(at(1.0).first, 0.5);
  EXPECT_EQ(at(1.5).first, 0.0);
  EXPECT_EQ(at(-0.1).second, 0.0);

  Neuron::SetCalcParams(INPUT_SUM, ACT_TANHYP, OUTPUT_NONE, 2.0, 0.5, 0.0);
  for (double net : {0.5, 0.0, 1.2}) {
    const double x = 2.0 * (0.5 - net);
    EXPECT_NEAR(at(net).first, 2.0 * (1.0 - std::pow(std::tanh(x), 2)), 1e-12) << net;
  }
  for (double net : {1e6, -1e6}) EXPECT_EQ(at(net).first, 0.0) << net;
  Neuron::SetCalcParams(INPUT_SUM, ACT_IDENT, OUTPUT_NONE, 2.0, 0.5, 0.0);
  EXPECT_EQ(at(7.0), std::pair(1.0, 1.0));
}

}  // namespace
}  // namespace harmony
