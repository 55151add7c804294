#pragma once
// Helpers of the net tests: small nets with chosen weights, and stdout captured around a call.

#include <gtest/gtest.h>

#include <cstdio>
#include <initializer_list>
#include <string>
#include <vector>

#include "harmony/net/NeuronalNet.h"

namespace harmony::testing {

// A net with one hidden layer per entry of `hidden` and the given flat weights.
inline NeuronalNet NetWithWeights(std::int64_t inputs, std::vector<std::int32_t> hidden,
                                  std::int64_t outputs, TNeuronProp prop,
                                  std::vector<double> weights) {
  NeuronalNet net(inputs, static_cast<std::int32_t>(hidden.size()), hidden, outputs,
                  prop.mInputType, prop.mActivationType, prop.mActivationSlope,
                  prop.mActivationThreshold, prop.mOutputType, prop.mOutputThreshold);
  EXPECT_EQ(net.get_weight_count(), weights.size());
  TPredefinedWeights record = net.get_weights();
  delete[] record.mWeights;
  record.mWeights = weights.data();
  EXPECT_TRUE(net.acquire_weights(record));
  return net;
}

inline std::vector<double> Weights(const NeuronalNet& net) {
  const TPredefinedWeights record = net.get_weights();
  std::vector<double> weights(record.mWeights, record.mWeights + net.get_weight_count());
  delete[] record.mWeights;
  return weights;
}

// What `call` prints to stdout.
template <class Call>
std::string Printed(Call call) {
  std::fflush(stdout);
  ::testing::internal::CaptureStdout();
  call();
  std::fflush(stdout);
  return ::testing::internal::GetCapturedStdout();
}

constexpr TNeuronProp kIdentity{INPUT_SUM, ACT_IDENT, 1.0, 0.0, OUTPUT_NONE, 0.0};

}  // namespace harmony::testing
