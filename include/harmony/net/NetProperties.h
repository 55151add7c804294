#pragma once
// The kinds of neuron a net is made of and the records that describe a net: its fixed size,
// its hidden layers and neuron rule, and a trained set of weights to load into it.
//
// The records are plain aggregates without the trace family, so that the C source a trained
// net writes of itself (NeuronalNet::weights_to_text, mode 2) compiles as an initializer of
// TPredefinedWeights.

#include <cstdint>

namespace harmony {

// How a neuron combines its inputs.
enum INPUT_TYPE : std::int32_t {
  INPUT_SUM = 0,   // sum of input times weight
  INPUT_MIN = 1,   // smallest input, weights unused
  INPUT_MAX = 2,   // largest input, weights unused
  INPUT_AVG = 3,   // sum of input times weight, divided by the input count
  INPUT_PROD = 4,  // product of input times weight
};

// The activation applied to the combined input.
enum ACT_TYPE : std::int32_t {
  ACT_SIGM = 0,    // logistic sigmoid
  ACT_LIN = 1,     // a clipped ramp
  ACT_TANHYP = 2,  // hyperbolic tangent
  ACT_IDENT = 3,   // the combined input itself
};

// What is done with the activation before it leaves the neuron.
enum OUTPUT_TYPE : std::int32_t {
  OUTPUT_NONE = 0,  // passed on unchanged
  OUTPUT_BIN = 1,   // 1 or 0 against the output threshold
};

struct TFixedNetProp {
  std::int64_t mInputCount;
  std::int64_t mOutputCount;
};

struct TNeuronProp {
  INPUT_TYPE mInputType;
  ACT_TYPE mActivationType;
  double mActivationSlope;
  double mActivationThreshold;
  OUTPUT_TYPE mOutputType;
  double mOutputThreshold;
};

// A net has up to four hidden layers; the fifth size slot is never read.
constexpr int kMaxHiddenLayers = 4;

struct TDynNetProp {
  std::int32_t mHiddenLayerCount;
  std::int32_t mHiddenLayerSizes[5];
  TNeuronProp mNeuronProp;
};

// Weights for a net of the given shape, flat: the neurons of hidden layer 0 one after the other,
// each with its weights in input order, then hidden layer 1 and so on, then the output neurons.
struct TPredefinedWeights {
  TFixedNetProp mFixedProp;
  TDynNetProp mDynProp;
  const double* mWeights;
};

}  // namespace harmony
