#pragma once
// A small fully connected feed-forward net in doubles: an input, up to four hidden layers and
// an output layer of Neuron. Besides the forward pass it carries its own workshop: training by
// back-propagation with momentum, verification of pattern sets, and text files of its
// properties and weights.
//
// Activations live in the neurons and the calculation rule is shared by all nets (see Neuron),
// so a net serves one caller at a time.

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/net/NetProperties.h"
#include "harmony/net/Neuron.h"

namespace harmony {

// One example for training: inputs, the outputs wanted for them, the learning rate of this
// example, and a name that reports show ("telling name").
struct training_pattern {
  std::vector<double> mInputs;
  std::vector<double> mOutputs;
  double mLearningRate = 0.0;
  std::string mName;
};

class NeuronalNet : public TraceFamily<NeuronalNet> {
 public:
  // A net of random weights. The first `hiddenCount` entries of `hiddenSizes` are read.
  NeuronalNet(std::int64_t inputCount, std::int32_t hiddenCount,
              std::span<const std::int32_t> hiddenSizes, std::int64_t outputCount,
              INPUT_TYPE inputType, ACT_TYPE activationType, double slope, double threshold,
              OUTPUT_TYPE outputType, double outputThreshold);
  NeuronalNet(const TFixedNetProp& fixedProp, const TDynNetProp& dynProp);
  // Built from the record's properties, then acquire_weights.
  explicit NeuronalNet(const TPredefinedWeights& weights);
  // The same; `unused` is not read.
  NeuronalNet(const TPredefinedWeights& weights, const double* unused);

  // Builds the net anew with random weights and sets the shared calculation rule. A net without
  // hidden layers feeds its input straight to the output layer; hidden counts outside 0 ... 4
  // build that many layers as fit, though the properties keep the count as given.
  void BuildNet(const TFixedNetProp& fixedProp, const TDynNetProp& dynProp);

  // Copies as many values as `input` has, at most the input count; the rest stay as they were.
  void setInput(const std::vector<double>& input);
  // setInput, then the forward pass. Allocates nothing.
  void use(const std::vector<double>& input);
  // The forward pass on the stored input. Allocates nothing.
  void use();

  std::vector<double> get_outputs() const;
  // Index of the largest output, the first of equals; 0 without outputs.
  std::int32_t winner() const;
  std::int64_t get_input_neuron_count() const { return _fixedProp.mInputCount; }

  // Copies the record's weights in when its properties equal this net's exactly (doubles bit
  // for bit); otherwise false and nothing changes.
  bool acquire_weights(const TPredefinedWeights& weights);
  // This net's properties and a copy of its weights in flat order. The caller owns the array:
  // delete[] it.
  TPredefinedWeights get_weights() const;
  // How many weights the net has, the length of the flat array.
  std::size_t get_weight_count() const;

  // Sets the flag shared by all neurons of all nets.
  static void enable_flat_spot_elimination(bool enable);
  void set_momentum_amount(double amount) { _momentumAmount = amount; }
  double get_momentum_amount() const { return _momentumAmount; }

  const TFixedNetProp& get_fixed_properties() const { return _fixedProp; }
  const TDynNetProp& get_dynamic_properties() const { return _dynProp; }
  // The neurons of hidden layer `layer` (empty beyond the built ones) and of the output layer.
  const std::vector<Neuron>& get_hidden_layer(int layer) const;
  const std::vector<Neuron>& get_output_layer() const { return _output; }

  // --- Training ---

  // One step of back-propagation on `pattern`; the error (getRMS) after it.
  double train(const training_pattern& pattern);
  // Square root of the summed squared differences to `targets` (not divided by their count).
  // Throws std::out_of_range when `targets` is shorter than the output layer.
  double getRMS(const std::vector<double>& targets) const;
  // Trains on the patterns in a new random order each cycle until the mean error is within
  // +-maxError or maxCycles cycles are done; prints its progress to stdout. The last mean.
  double batch_train(const std::vector<training_pattern>& patterns, double maxError,
                     std::int32_t maxCycles);
  // Indices of the patterns whose largest target is not the net's winner.
  std::vector<std::int32_t> batch_verify(const std::vector<training_pattern>& patterns);
  // True, after printing both, when two patterns have equal inputs but different outputs.
  static bool check_learn_data_for_duplicates(const std::vector<training_pattern>& patterns);

  // --- Files ---

  // Reads the property file that weights_to_text writes in mode 4 (missing keys stay 0).
  // A file that can't be opened reads as empty. Prints what it recognises to stdout.
  static std::pair<TFixedNetProp, TDynNetProp> load_net_properties_from_file(
      const std::string& path);
  static std::pair<TFixedNetProp, TDynNetProp> load_net_properties_from_stream(std::istream& in);
  // Reads the weights after the line "weight definitions" into the neurons in flat order; a
  // shorter list leaves the remaining weights, a longer one is cut. Always true.
  bool load_weights_from_file(const std::string& path);
  bool load_weights_from_stream(std::istream& in);

  // The text report, begun by the date and time. Mode 0: properties and plain weights; 1: with
  // labels; 2: weights as C source; 3: C source and the patterns not recognised; 4: the file
  // form that the two load functions read, after the patterns not recognised. `error` and
  // `cycles` are left out when -1.
  std::string weights_to_text(int mode, double error, long cycles,
                              const std::vector<training_pattern>& patterns);

  // The properties to stderr, as WriteTrace writes them.
  void trace() const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  int _builtHiddenCount() const;
  void _forward();
  void _backPropagate(const std::vector<double>& targets);
  void _updateWeights(double learningRate);
  void _setFlatWeights(const double* weights, std::size_t count);
  void _writeCSource(std::ostream& out) const;
  void _writeFileForm(std::ostream& out, double error, long cycles) const;

  // The neurons in the flat order of TPredefinedWeights: hidden layers, then the output layer.
  template <class Self, class Visit>
  static void _forEachNeuron(Self& self, Visit visit) {
    for (auto& layer : self._hidden) {
      for (auto& neuron : layer) visit(neuron);
    }
    for (auto& neuron : self._output) visit(neuron);
  }

  std::vector<double> _input;
  std::array<std::vector<Neuron>, kMaxHiddenLayers> _hidden;
  std::vector<Neuron> _output;
  // Two of them are the ping-pong pair of the forward pass; training keeps the error terms of
  // hidden layer l in buffer l and those of the output layer in the buffer after the last
  // hidden one.
  std::array<std::vector<double>, 5> _buffers;
  std::vector<double> _previousChanges;  // the bare changes of the last step, for momentum
  bool _firstTrainingStep = true;
  double _momentumAmount = 0.6;
  TFixedNetProp _fixedProp{};
  TDynNetProp _dynProp{};
};

}  // namespace harmony
