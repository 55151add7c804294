#pragma once
// One neuron of a NeuronalNet: its weights and the values of its last calculation.
//
// How neurons calculate is not a property of the neuron or of its net: the input, activation
// and output rule live in static members shared by every net of the process. Building a net
// sets them, so the net built last decides for all; a net of other properties must not be used
// next to it without setting them again (SetCalcParams).

#include <cstdint>
#include <ostream>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/net/NetProperties.h"

namespace harmony {

class Neuron : public TraceFamily<Neuron> {
 public:
  // Weights are random multiples of 0.01 in 0.01 ... 0.99. Switches flat spot elimination on.
  explicit Neuron(std::int32_t inputCount);

  // Sets the shared rule, and combined_type := (activation + output * 4) * 5 + input.
  static void SetCalcParams(INPUT_TYPE inputType, ACT_TYPE activationType, OUTPUT_TYPE outputType,
                            double slope, double threshold, double outputThreshold);

  // The general rule: combines `count` inputs, activates, applies the output function, and
  // stores the result in mValue and out[index]. Leaves mExponential alone.
  void calcValue(const double* inputs, std::int32_t count, double* out, std::int32_t index);

  // calcValue for the `neuronCount` neurons of a layer, out[n] for neuron n. For combined_type 0
  // (sum, sigmoid, no output function) a faster route sums in blocks of eight and also keeps
  // exp(slope * (threshold - net input)) in mExponential for the derivative.
  static void calcVec(Neuron* neurons, const double* inputs, std::int32_t count, double* out,
                      std::int32_t neuronCount);

  // Derivative of the activation at this neuron's net input.
  double Act_Abl() const;
  // The same for a layer into out[], except that a sigmoid reads mExponential (written only by
  // the fast route of calcVec) and counts it as saturated above 50.
  static void Act_AblVec(const Neuron* neurons, double* out, std::int32_t count);

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

  std::int32_t mInputCount;
  double mValue = 0.0;        // after the output function
  double mExponential = 0.0;  // exp(slope * (threshold - net input)), by the fast route
  double mNetInput = 0.0;     // after the input function, before activation
  std::vector<double> mWeights;

  inline static INPUT_TYPE input_type = INPUT_SUM;
  inline static ACT_TYPE activation_type = ACT_SIGM;
  inline static OUTPUT_TYPE output_type = OUTPUT_NONE;
  inline static int combined_type = 0;
  inline static double activation_slope = 0.0;
  inline static double activation_threshold = 0.0;
  inline static double output_threshold = 0.0;
  // Adds 0.1 to the sigmoid's derivative so that saturated neurons still learn.
  inline static bool flat_spot_elimination = true;
};

}  // namespace harmony
