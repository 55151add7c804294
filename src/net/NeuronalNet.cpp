#include "harmony/net/NeuronalNet.h"

#include <algorithm>
#include <cstring>

namespace harmony {
namespace {

TDynNetProp _DynProp(std::int32_t hiddenCount, std::span<const std::int32_t> hiddenSizes,
                     const TNeuronProp& neuronProp) {
  TDynNetProp dyn{};
  dyn.mHiddenLayerCount = hiddenCount;
  const std::size_t given =
      std::min<std::size_t>({hiddenSizes.size(), std::size(dyn.mHiddenLayerSizes),
                             static_cast<std::size_t>(std::max(hiddenCount, 0))});
  std::copy_n(hiddenSizes.begin(), given, dyn.mHiddenLayerSizes);
  dyn.mNeuronProp = neuronProp;
  return dyn;
}

// Doubles must agree bit for bit: a slope one bit off names another net.
bool _SameDouble(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

bool _SameNeuronProp(const TNeuronProp& a, const TNeuronProp& b) {
  return a.mInputType == b.mInputType && a.mActivationType == b.mActivationType &&
         _SameDouble(a.mActivationSlope, b.mActivationSlope) &&
         _SameDouble(a.mActivationThreshold, b.mActivationThreshold) &&
         a.mOutputType == b.mOutputType && _SameDouble(a.mOutputThreshold, b.mOutputThreshold);
}

std::vector<Neuron> _Layer(std::int64_t neuronCount, std::int64_t inputCount) {
  std::vector<Neuron> layer;
  layer.reserve(static_cast<std::size_t>(std::max<std::int64_t>(neuronCount, 0)));
  for (std::int64_t n = 0; n < neuronCount; ++n) {
    layer.emplace_back(static_cast<std::int32_t>(inputCount));
  }
  return layer;
}

const std::vector<Neuron> kNoNeurons;

}  // namespace

NeuronalNet::NeuronalNet(std::int64_t inputCount, std::int32_t hiddenCount,
                         std::span<const std::int32_t> hiddenSizes, std::int64_t outputCount,
                         INPUT_TYPE inputType, ACT_TYPE activationType, double slope,
                         double threshold, OUTPUT_TYPE outputType, double outputThreshold) {
  const TNeuronProp neuronProp{inputType, activationType, slope,
                               threshold, outputType,     outputThreshold};
  BuildNet({inputCount, outputCount}, _DynProp(hiddenCount, hiddenSizes, neuronProp));
}

NeuronalNet::NeuronalNet(const TFixedNetProp& fixedProp, const TDynNetProp& dynProp) {
  BuildNet(fixedProp, dynProp);
}

NeuronalNet::NeuronalNet(const TPredefinedWeights& weights) {
  BuildNet(weights.mFixedProp, weights.mDynProp);
  acquire_weights(weights);
}

NeuronalNet::NeuronalNet(const TPredefinedWeights& weights, const double*) : NeuronalNet(weights) {}

int NeuronalNet::_builtHiddenCount() const {
  return std::clamp(_dynProp.mHiddenLayerCount, 0, kMaxHiddenLayers);
}

void NeuronalNet::BuildNet(const TFixedNetProp& fixedProp, const TDynNetProp& dynProp) {
  _fixedProp = fixedProp;
  _dynProp = dynProp;
  _firstTrainingStep = true;
  _momentumAmount = 0.6;
  _previousChanges.clear();

  _input.assign(static_cast<std::size_t>(std::max<std::int64_t>(fixedProp.mInputCount, 0)), 0.0);
  const TNeuronProp& p = dynProp.mNeuronProp;
  Neuron::SetCalcParams(p.mInputType, p.mActivationType, p.mOutputType, p.mActivationSlope,
                        p.mActivationThreshold, p.mOutputThreshold);

  const int hiddenCount = _builtHiddenCount();
  std::int64_t layerInputs = fixedProp.mInputCount;
  std::int64_t longest = std::max(fixedProp.mInputCount, fixedProp.mOutputCount);
  for (int layer = 0; layer < kMaxHiddenLayers; ++layer) {
    const std::int64_t size = layer < hiddenCount ? dynProp.mHiddenLayerSizes[layer] : 0;
    _hidden[layer] = _Layer(size, layerInputs);
    if (layer < hiddenCount) layerInputs = std::max<std::int64_t>(size, 0);
    longest = std::max(longest, size);
  }
  _output = _Layer(fixedProp.mOutputCount, layerInputs);

  // Room for the error terms of every layer, and at least the forward pass's pair.
  const std::size_t bufferCount = std::max(hiddenCount + 1, 2);
  const auto bufferLength = static_cast<std::size_t>(std::max<std::int64_t>(longest, 0));
  for (std::size_t b = 0; b < _buffers.size(); ++b) {
    _buffers[b].assign(b < bufferCount ? bufferLength : 0, 0.0);
  }
}

void NeuronalNet::setInput(const std::vector<double>& input) {
  std::copy_n(input.begin(), std::min(input.size(), _input.size()), _input.begin());
}

void NeuronalNet::use(const std::vector<double>& input) {
  setInput(input);
  _forward();
}

void NeuronalNet::use() { _forward(); }

void NeuronalNet::_forward() {
  double* source = _buffers[0].data();
  double* target = _buffers[1].data();
  std::copy(_input.begin(), _input.end(), source);
  auto sourceCount = static_cast<std::int32_t>(_input.size());
  for (int layer = 0; layer < _builtHiddenCount(); ++layer) {
    const auto size = static_cast<std::int32_t>(_hidden[layer].size());
    Neuron::calcVec(_hidden[layer].data(), source, sourceCount, target, size);
    std::swap(source, target);
    sourceCount = size;
  }
  Neuron::calcVec(_output.data(), source, sourceCount, target,
                  static_cast<std::int32_t>(_output.size()));
}

std::vector<double> NeuronalNet::get_outputs() const {
  std::vector<double> outputs;
  outputs.reserve(_output.size());
  for (const Neuron& neuron : _output) outputs.push_back(neuron.mValue);
  return outputs;
}

std::int32_t NeuronalNet::winner() const {
  std::size_t best = 0;
  for (std::size_t n = 1; n < _output.size(); ++n) {
    if (_output[n].mValue > _output[best].mValue) best = n;
  }
  return static_cast<std::int32_t>(best);
}

const std::vector<Neuron>& NeuronalNet::get_hidden_layer(int layer) const {
  return layer >= 0 && layer < kMaxHiddenLayers ? _hidden[layer] : kNoNeurons;
}

std::size_t NeuronalNet::get_weight_count() const {
  std::size_t count = 0;
  _forEachNeuron(*this, [&](const Neuron& neuron) { count += neuron.mWeights.size(); });
  return count;
}

void NeuronalNet::_setFlatWeights(const double* weights, std::size_t count) {
  std::size_t next = 0;
  _forEachNeuron(*this, [&](Neuron& neuron) {
    for (double& weight : neuron.mWeights) {
      if (next < count) weight = weights[next++];
    }
  });
}

bool NeuronalNet::acquire_weights(const TPredefinedWeights& weights) {
  const TFixedNetProp& fixed = weights.mFixedProp;
  const TDynNetProp& dyn = weights.mDynProp;
  if (weights.mWeights == nullptr || fixed.mInputCount != _fixedProp.mInputCount ||
      fixed.mOutputCount != _fixedProp.mOutputCount ||
      dyn.mHiddenLayerCount != _dynProp.mHiddenLayerCount ||
      !std::equal(dyn.mHiddenLayerSizes, dyn.mHiddenLayerSizes + _builtHiddenCount(),
                  _dynProp.mHiddenLayerSizes) ||
      !_SameNeuronProp(dyn.mNeuronProp, _dynProp.mNeuronProp)) {
    return false;
  }
  _setFlatWeights(weights.mWeights, get_weight_count());
  return true;
}

TPredefinedWeights NeuronalNet::get_weights() const {
  auto* flat = new double[get_weight_count()];
  std::size_t next = 0;
  _forEachNeuron(*this, [&](const Neuron& neuron) {
    next = static_cast<std::size_t>(
        std::copy(neuron.mWeights.begin(), neuron.mWeights.end(), flat + next) - flat);
  });
  return {_fixedProp, _dynProp, flat};
}

void NeuronalNet::enable_flat_spot_elimination(bool enable) {
  Neuron::flat_spot_elimination = enable;
}

}  // namespace harmony
