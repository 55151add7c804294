#include "harmony/net/Neuron.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/Random.h"

namespace harmony {
namespace {

// The literal constants of these rules are single-precision floats widened to double.
constexpr double kFlatSpotTerm = 0.1f;
constexpr double kLowestRandomWeight = 0.1f;
constexpr double kHighestRandomWeight = 0.99f;
constexpr double kSigmoidSaturation = 50.0;

// --- Input functions: the net input from `count` inputs and weights.

double _Sum(const double* x, const double* w, std::int32_t count) {
  double sum = 0.0;
  for (std::int32_t i = 0; i < count; ++i) sum = std::fma(x[i], w[i], sum);
  return sum;
}

double _Min(const double* x, const double*, std::int32_t count) {
  if (count <= 0) return 0.0;
  return *std::min_element(x, x + count);
}

double _Max(const double* x, const double*, std::int32_t count) {
  if (count <= 0) return 0.0;
  return *std::max_element(x, x + count);
}

double _Avg(const double* x, const double* w, std::int32_t count) {
  return _Sum(x, w, count) / count;
}

double _Prod(const double* x, const double* w, std::int32_t count) {
  double product = 1.0;
  for (std::int32_t i = 0; i < count; ++i) product *= x[i] * w[i];
  return product;
}

using InputFunction = double (*)(const double*, const double*, std::int32_t);
constexpr InputFunction kInputFunctions[] = {_Sum, _Min, _Max, _Avg, _Prod};

// --- Activations of the net input, with s the slope and t the threshold.

double _Sigmoid(double net, double s, double t) {
  return std::min(1.0 / (1.0 + std::exp(-s * (net - t))), 1.0);
}

// A ramp of slope s only inside the open unit interval; outside it goes on with slope 1.
double _Linear(double net, double s, double t) {
  double v = net - t;
  if (v > 0.0 && v < 1.0) v *= s;
  return std::clamp(v, -1.0, 1.0);
}

// Beyond this scaled input the hyperbolic tangent is 1 to the last bit, while the exponentials
// of its quotient overflow from about 710 on and would give infinity over infinity.
constexpr double kTanHypSaturation = 350.0;

double _TanHyp(double net, double s, double t) {
  const double u = net - t;
  if (std::fabs(s * u) > kTanHypSaturation) return s * u > 0.0 ? 1.0 : -1.0;
  const double up = std::exp(s * u);
  const double down = std::exp(-s * u);
  double v = (up - down) / (up + down);
  if (v > 1.0) v = 1.0;
  if (v < -1.0) v = -1.0;
  return v;
}

double _Ident(double net, double, double) { return net; }

using Activation = double (*)(double, double, double);
constexpr Activation kActivations[] = {_Sigmoid, _Linear, _TanHyp, _Ident};

// --- Derivatives at the net input; x := s * (t - net).

double _WithFlatSpot(double slope) {
  return Neuron::flat_spot_elimination ? slope + kFlatSpotTerm : slope;
}

// The sigmoid's derivative from e = exp(x), without the factor s; 0 when saturated.
double _SigmoidSlope(double e) { return e / ((e + 1.0) * (e + 1.0)); }

double _SigmoidAbl(double net, double s, double t) {
  const double x = s * (t - net);
  return _WithFlatSpot(std::fabs(x) > kSigmoidSaturation ? 0.0 : _SigmoidSlope(std::exp(x)));
}

// The layer's form takes e from the fast route and limits e itself, not x.
double _SigmoidAblFromExponential(double e) {
  return _WithFlatSpot(std::fabs(e) > kSigmoidSaturation ? 0.0 : _SigmoidSlope(e));
}

double _LinearAbl(double net, double s, double) { return net >= 0.0 && net <= 1.0 ? s : 0.0; }

double _TanHypAbl(double net, double s, double t) {
  const double x = s * (t - net);
  if (std::fabs(x) > kTanHypSaturation) return 0.0;  // flat where the curve has saturated
  const double a = std::exp(-x);
  const double b = std::exp(x);
  return (s * a + s * b) / (a + b) - ((a - b) / ((a + b) * (a + b))) * (s * a - s * b);
}

double _IdentAbl(double, double, double) { return 1.0; }

constexpr Activation kDerivatives[] = {_SigmoidAbl, _LinearAbl, _TanHypAbl, _IdentAbl};

template <class Table, class Index>
auto _Pick(const Table& table, Index index) {
  const auto i = static_cast<std::size_t>(index);
  return i < std::size(table) ? table[i] : table[0];
}

// The sum of the fast route. Below eight inputs it is the general rule's sum; from eight on
// eight running sums take one input of each block, so the rounding differs in the last bits.
double _BlockSum(const double* x, const double* w, std::int32_t count) {
  if (count <= 0) return 0.0;
  if (count < 8) return _Sum(x, w, count);
  double lanes[8] = {};
  std::int32_t i = 0;
  for (; i + 8 <= count; i += 8) {
    for (int k = 0; k < 8; ++k) lanes[k] += x[i + k] * w[i + k];
  }
  for (int k = 0; i + k < count; ++k) lanes[k] += x[i + k] * w[i + k];
  return ((lanes[0] + lanes[1]) + (lanes[2] + lanes[3])) +
         ((lanes[4] + lanes[5]) + (lanes[6] + lanes[7]));
}

}  // namespace

Neuron::Neuron(std::int32_t inputCount)
    : mInputCount(inputCount), mWeights(static_cast<std::size_t>(std::max(inputCount, 0))) {
  for (double& weight : mWeights) {
    weight = (platform::Random32() % 100) / 100.0;
    if (weight == 0.0) weight = kLowestRandomWeight;
    if (weight == 1.0) weight = kHighestRandomWeight;
  }
  flat_spot_elimination = true;
}

void Neuron::SetCalcParams(INPUT_TYPE inputType, ACT_TYPE activationType, OUTPUT_TYPE outputType,
                           double slope, double threshold, double outputThreshold) {
  input_type = inputType;
  activation_type = activationType;
  output_type = outputType;
  combined_type = (activationType + outputType * 4) * 5 + inputType;
  activation_slope = slope;
  activation_threshold = threshold;
  output_threshold = outputThreshold;
}

void Neuron::calcValue(const double* inputs, std::int32_t count, double* out, std::int32_t index) {
  mNetInput = _Pick(kInputFunctions, input_type)(inputs, mWeights.data(), count);
  double value =
      _Pick(kActivations, activation_type)(mNetInput, activation_slope, activation_threshold);
  if (output_type == OUTPUT_BIN) value = value >= output_threshold ? 1.0 : 0.0;
  mValue = value;
  out[index] = value;
}

void Neuron::calcVec(Neuron* neurons, const double* inputs, std::int32_t count, double* out,
                     std::int32_t neuronCount) {
  if (combined_type != 0) {
    for (std::int32_t n = 0; n < neuronCount; ++n) neurons[n].calcValue(inputs, count, out, n);
    return;
  }
  const double s = activation_slope;
  const double t = activation_threshold;
  // Sums, exponentials and quotients in three passes: the neurons' calls of exp and their
  // divisions don't wait on each other, so they overlap.
  for (std::int32_t n = 0; n < neuronCount; ++n) {
    neurons[n].mNetInput = _BlockSum(inputs, neurons[n].mWeights.data(), count);
  }
  for (std::int32_t n = 0; n < neuronCount; ++n) {
    neurons[n].mExponential = std::exp(s * (t - neurons[n].mNetInput));
  }
  for (std::int32_t n = 0; n < neuronCount; ++n) {
    out[n] = std::min(1.0 / (neurons[n].mExponential + 1.0), 1.0);
  }
  for (std::int32_t n = 0; n < neuronCount; ++n) neurons[n].mValue = out[n];
}

double Neuron::Act_Abl() const {
  return _Pick(kDerivatives, activation_type)(mNetInput, activation_slope, activation_threshold);
}

void Neuron::Act_AblVec(const Neuron* neurons, double* out, std::int32_t count) {
  for (std::int32_t n = 0; n < count; ++n) {
    out[n] = activation_type == ACT_SIGM ? _SigmoidAblFromExponential(neurons[n].mExponential)
                                         : neurons[n].Act_Abl();
  }
}

void Neuron::WriteTrace(std::ostream& out) const {
  out << "Neuron: inputs " << mInputCount << ", net input " << mNetInput << ", exponential "
      << mExponential << ", value " << mValue << ", weights {";
  for (std::size_t i = 0; i < mWeights.size(); ++i) out << (i ? ", " : " ") << mWeights[i];
  out << " }";
}

void Neuron::WriteTraceBrief(std::ostream& out) const { out << mValue; }

void Neuron::WriteInitializerList(std::ostream& out) const {
  out << "Neuron(" << mInputCount << ")";
}

}  // namespace harmony
