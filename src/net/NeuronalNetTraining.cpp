// Back-propagation with momentum and flat spot elimination, batch training and the checks of
// pattern sets.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <random>

#include "harmony/net/NeuronalNet.h"
#include "net/TrainingProgress.h"
#include "platform/Clock.h"

namespace harmony {
namespace {

// Index of the largest value, the first of equals; 0 for none.
std::int32_t _IndexOfLargest(const std::vector<double>& values) {
  std::size_t best = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    if (values[i] > values[best]) best = i;
  }
  return static_cast<std::int32_t>(best);
}

// The error terms of `layer` (already holding its derivatives) times the error flowing back
// from `next`: for neuron j the sum of next's errors times their weight j.
void _MultiplyByBackflow(double* errors, std::size_t layerSize, const std::vector<Neuron>& next,
                         const double* nextErrors) {
  for (std::size_t j = 0; j < layerSize; ++j) {
    double backflow = 0.0;
    for (std::size_t k = 0; k < next.size(); ++k) backflow += nextErrors[k] * next[k].mWeights[j];
    errors[j] *= backflow;
  }
}

// The bare changes of the step before, consumed from the front as the weights are visited in
// the same order again; none on the first step.
struct _Momentum {
  const std::vector<double>* previous;
  std::size_t next;
  double amount;
};

// Changes the weights of one layer. inputOf(i) is the value at connection i: the neuron i of
// the layer before, or the raw input for the first hidden layer. The bare changes are
// appended to `changes`.
template <class InputOf>
void _UpdateLayer(std::vector<Neuron>& layer, const double* errors, InputOf inputOf,
                  double learningRate, std::vector<double>& changes, _Momentum& momentum) {
  for (std::size_t n = 0; n < layer.size(); ++n) {
    std::vector<double>& weights = layer[n].mWeights;
    for (std::size_t i = 0; i < weights.size(); ++i) {
      const double change = learningRate * errors[n] * inputOf(i);
      changes.push_back(change);
      weights[i] += change;
      if (momentum.previous != nullptr && momentum.next < momentum.previous->size()) {
        weights[i] = std::fma(momentum.amount, (*momentum.previous)[momentum.next++], weights[i]);
      }
    }
  }
}

void _PrintValues(const std::vector<double>& values) {
  for (double value : values) std::printf("%f ", value);
}

void _PrintPattern(std::size_t index, const training_pattern& pattern) {
  std::printf("%i %s: \n", static_cast<int>(index), pattern.mName.c_str());
  std::printf("Input: ");
  _PrintValues(pattern.mInputs);
  std::printf("\nOutput: ");
  _PrintValues(pattern.mOutputs);
  std::printf("\n");
}

std::minstd_rand _ShuffleGenerator() {
  const auto reading = static_cast<std::uint32_t>(platform::MonotonicTicks());
  return std::minstd_rand(std::max<std::uint32_t>(reading % 0x7fffffffu, 1u));
}

void _Shuffle(std::vector<std::size_t>& order, std::minstd_rand& generator) {
  if (order.size() < 2) return;
  for (std::size_t i = order.size() - 1; i > 0; --i) {
    std::uniform_int_distribution<std::size_t> pick(0, i);
    std::swap(order[i], order[pick(generator)]);
  }
}

}  // namespace

double NeuronalNet::getRMS(const std::vector<double>& targets) const {
  double sum = 0.0;
  for (std::size_t k = 0; k < _output.size(); ++k) {
    const double difference = targets.at(k) - _output[k].mValue;
    sum += difference * difference;
  }
  return std::sqrt(sum);
}

void NeuronalNet::_backPropagate(const std::vector<double>& targets) {
  const int hiddenCount = _builtHiddenCount();
  double* outputErrors = _buffers[hiddenCount].data();
  Neuron::Act_AblVec(_output.data(), outputErrors, static_cast<std::int32_t>(_output.size()));
  for (std::size_t k = 0; k < _output.size(); ++k) {
    outputErrors[k] *= targets.at(k) - _output[k].mValue;
  }
  for (int layer = hiddenCount - 1; layer >= 0; --layer) {
    const std::vector<Neuron>& neurons = _hidden[layer];
    double* errors = _buffers[layer].data();
    Neuron::Act_AblVec(neurons.data(), errors, static_cast<std::int32_t>(neurons.size()));
    const std::vector<Neuron>& next = layer + 1 < hiddenCount ? _hidden[layer + 1] : _output;
    _MultiplyByBackflow(errors, neurons.size(), next, _buffers[layer + 1].data());
  }
}

void NeuronalNet::_updateWeights(double learningRate) {
  const int hiddenCount = _builtHiddenCount();
  std::vector<double> changes;
  changes.reserve(get_weight_count());
  _Momentum momentum{_firstTrainingStep ? nullptr : &_previousChanges, 0, _momentumAmount};
  // Layer `index` is fed by hidden layer index - 1, or by the raw input.
  auto update = [&](std::vector<Neuron>& layer, int index) {
    const double* errors = _buffers[index].data();
    if (index == 0) {
      auto raw = [this](std::size_t i) { return _input[i]; };
      _UpdateLayer(layer, errors, raw, learningRate, changes, momentum);
    } else {
      const std::vector<Neuron>& before = _hidden[index - 1];
      auto value = [&before](std::size_t i) { return before[i].mValue; };
      _UpdateLayer(layer, errors, value, learningRate, changes, momentum);
    }
  };
  update(_output, hiddenCount);
  for (int layer = hiddenCount - 1; layer >= 0; --layer) update(_hidden[layer], layer);

  _firstTrainingStep = false;
  _previousChanges = std::move(changes);
}

double NeuronalNet::train(const training_pattern& pattern) {
  use(pattern.mInputs);
  _backPropagate(pattern.mOutputs);
  _updateWeights(pattern.mLearningRate);
  _forward();
  return getRMS(pattern.mOutputs);
}

double NeuronalNet::batch_train(const std::vector<training_pattern>& patterns, double maxError,
                                std::int32_t maxCycles) {
  if (maxCycles <= 0) return 0.0;
  std::minstd_rand generator = _ShuffleGenerator();
  std::vector<std::size_t> order(patterns.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  _TrainingProgress progress;
  double mean = 0.0;
  std::int32_t cycle = 0;
  do {
    ++cycle;
    _Shuffle(order, generator);
    double sum = 0.0;
    for (std::size_t index : order) sum += train(patterns[index]);
    mean = sum / static_cast<double>(patterns.size());
    if (progress.Record(mean)) std::printf("Abgespeichert bei Cycle: %d\n", cycle);
    if ((-maxError <= mean && mean <= maxError) || cycle == maxCycles) {
      std::printf("Abbruch bei Cycle %d\n", cycle);
      std::printf("Fehler: %f\n", mean);
      return mean;
    }
  } while (cycle < maxCycles);
  return mean;
}

std::vector<std::int32_t> NeuronalNet::batch_verify(const std::vector<training_pattern>& patterns) {
  std::vector<std::int32_t> missed;
  for (std::size_t p = 0; p < patterns.size(); ++p) {
    use(patterns[p].mInputs);
    if (_IndexOfLargest(patterns[p].mOutputs) != winner()) {
      missed.push_back(static_cast<std::int32_t>(p));
    }
  }
  return missed;
}

bool NeuronalNet::check_learn_data_for_duplicates(const std::vector<training_pattern>& patterns) {
  for (std::size_t i = 0; i < patterns.size(); ++i) {
    for (std::size_t j = 0; j < patterns.size(); ++j) {
      if (i == j || patterns[i].mInputs != patterns[j].mInputs) continue;
      if (patterns[i].mOutputs == patterns[j].mOutputs) continue;
      std::printf("Warning: input-pattern %i (%s) and %i (%s) seem to contain inconsistencies.\n",
                  static_cast<int>(i), patterns[i].mName.c_str(), static_cast<int>(j),
                  patterns[j].mName.c_str());
      _PrintPattern(i, patterns[i]);
      _PrintPattern(j, patterns[j]);
      return true;
    }
  }
  return false;
}

}  // namespace harmony
