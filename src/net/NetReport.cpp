// The net's text report (weights_to_text) and its trace.

#include <iostream>
#include <sstream>

#include "harmony/net/NeuronalNet.h"
#include "net/NetTypeNames.h"
#include "platform/Clock.h"

namespace harmony {
namespace {

constexpr const char* kInputFunctionWords[] = {"Sum", "Minimum", "Maximum", "Average", "Product"};
constexpr const char* kActivationWords[] = {"Sigmoid, ", "Linear, ", "Tanhyp, ",
                                            "Ident. Projection, "};

// What each mode of weights_to_text writes.
enum class _WeightForm { kPlain, kLabelled, kCSource, kFile };
struct _ReportMode {
  bool properties;
  bool verification;
  _WeightForm weights;
};
constexpr _ReportMode kReportModes[] = {
    {true, false, _WeightForm::kPlain},   {true, false, _WeightForm::kLabelled},
    {true, false, _WeightForm::kCSource}, {true, true, _WeightForm::kCSource},
    {false, true, _WeightForm::kFile},
};

template <class Values>
void _Join(std::ostream& out, const Values& values, const char* separator) {
  bool first = true;
  for (const auto& value : values) {
    if (!first) out << separator;
    out << value;
    first = false;
  }
}

void _ErrorAndCycles(std::ostream& out, double error, long cycles) {
  if (error != -1.0) out << "Overall Error generated: " << error << "\n";
  if (cycles != -1) out << "Cycles: " << cycles << "\n";
}

void _Properties(std::ostream& out, const TFixedNetProp& fixed, const TDynNetProp& dyn,
                 int hiddenCount, double error, long cycles) {
  const TNeuronProp& p = dyn.mNeuronProp;
  out << "Network Properties\n------------------\n";
  out << "Number Input Neurons: " << fixed.mInputCount << "\n";
  out << "Number Output Neurons: " << fixed.mOutputCount << "\n";
  out << "Number Hidden Layers: " << dyn.mHiddenLayerCount << "\n";
  for (int layer = 0; layer < hiddenCount; ++layer) {
    out << "Number Neurons in Hidden Layer " << layer << ": " << dyn.mHiddenLayerSizes[layer]
        << "\n";
  }
  out << "Type of Input Function: " << _NameOf(kInputFunctionWords, p.mInputType) << "\n";
  out << "Type of Activation Function: " << _NameOf(kActivationWords, p.mActivationType)
      << "Threshold: " << p.mActivationThreshold << ", Slope: " << p.mActivationSlope << "\n";
  out << "Type of Output Function: ";
  if (p.mOutputType == OUTPUT_BIN) {
    out << "Binary, Threshold: " << p.mOutputThreshold << "\n";
  } else {
    out << "None\n";
  }
  out << "\n";
  _ErrorAndCycles(out, error, cycles);
}

void _Weights(std::ostream& out, const std::vector<double>& weights) {
  _Join(out, weights, ", ");
  out << "\n";
}

}  // namespace

std::string NeuronalNet::weights_to_text(int mode, double error, long cycles,
                                         const std::vector<training_pattern>& patterns) {
  std::ostringstream out;
  out << platform::AsctimeNow();
  if (mode < 0 || mode >= static_cast<int>(std::size(kReportModes))) return out.str();
  const _ReportMode& report = kReportModes[mode];
  const int hiddenCount = _builtHiddenCount();
  if (report.properties) _Properties(out, _fixedProp, _dynProp, hiddenCount, error, cycles);
  if (report.verification) {
    const std::vector<std::int32_t> missed = batch_verify(patterns);
    if (!missed.empty()) {
      out << "The following " << missed.size() << " patterns (out of " << patterns.size()
          << ") were not recognized correctly by the net: \n";
      for (std::int32_t index : missed) {
        const training_pattern& pattern = patterns[index];
        out << "pattern #" << index << "\n";
        out << "Inputs: ";
        _Weights(out, pattern.mInputs);
        out << "Outputs: ";
        _Weights(out, pattern.mOutputs);
        out << "Telling Name: " << pattern.mName << "\n";
      }
    }
  }
  switch (report.weights) {
    case _WeightForm::kPlain:
    case _WeightForm::kLabelled: {
      const bool labels = report.weights == _WeightForm::kLabelled;
      out << "Neuron Connection Weights\n-------------------------\n\n";
      for (int layer = 0; layer < hiddenCount; ++layer) {
        for (std::size_t n = 0; n < _hidden[layer].size(); ++n) {
          if (labels) out << "Hidden Layer " << layer << ", Neuron " << n << "\n";
          _Weights(out, _hidden[layer][n].mWeights);
        }
      }
      for (std::size_t n = 0; n < _output.size(); ++n) {
        if (labels) out << "Output Layer Neuron " << n << "\n";
        _Weights(out, _output[n].mWeights);
      }
      break;
    }
    case _WeightForm::kCSource:
      _writeCSource(out);
      break;
    case _WeightForm::kFile:
      _writeFileForm(out, error, cycles);
      break;
  }
  return out.str();
}

void NeuronalNet::_writeCSource(std::ostream& out) const {
  const TNeuronProp& p = _dynProp.mNeuronProp;
  out << "static double weight_definitions[] =\n{\n";
  auto neuron = [&out](const Neuron& n) {
    for (double weight : n.mWeights) out << weight << ", ";
    out << "\n  ";
  };
  for (int layer = 0; layer < _builtHiddenCount(); ++layer) {
    for (const Neuron& n : _hidden[layer]) neuron(n);
  }
  for (const Neuron& n : _output) neuron(n);
  out << "};\n\n";
  out << "static TPredefinedWeights weights = \n\t {\n";
  out << "\t\t\t{ \t\t\t\t// TFixedNetProp \n";
  out << "\t\t\t\t\t" << _fixedProp.mInputCount << ",\t\t// Number Input Neuron \n";
  out << "\t\t\t\t\t" << _fixedProp.mOutputCount << ",\t\t// Number Output Neurons \n";
  out << "\t\t\t}, \n";
  out << "\t\t\t{  \t\t\t\t// TDynNetProp\n";
  out << "\t\t\t\t\t" << _dynProp.mHiddenLayerCount << ",\t\t// Number Hidden Layers \n";
  out << "\t\t\t\t\t{ ";
  _Join(out, std::span(_dynProp.mHiddenLayerSizes, _builtHiddenCount()), ", ");
  out << " },\t\t\t\t// Number Neurons per Hidden Layer\n";
  out << "\t\t\t\t\t{\t\t\t\t\t\t\t// TNeuronProp \n";
  out << "\t\t\t\t\t\t\t\t" << _NameOf(kInputTypeNames, p.mInputType) << ",\n";
  out << "\t\t\t\t\t\t\t\t" << _NameOf(kActTypeNames, p.mActivationType) << ", \n";
  out << "\t\t\t\t\t\t\t\t" << p.mActivationSlope << ", " << p.mActivationThreshold
      << ",\t// Activation Function Parameters\n";
  out << "\t\t\t\t\t\t\t  ";
  if (p.mOutputType == OUTPUT_BIN) {
    out << "OUTPUT_BIN, " << p.mOutputThreshold << "\t\t\t// Output Funcction Parameters\n";
  } else {
    out << "OUTPUT_NONE, 0\t\t\t\t\t\t// Output Function Parameters\n";
  }
  out << " \t\t\t\t\t},\n";
  out << "\t\t\t}, \n";
  out << "\t\t\tweight_definitions \n";
  out << "\t };\n";
}

void NeuronalNet::_writeFileForm(std::ostream& out, double error, long cycles) const {
  const TNeuronProp& p = _dynProp.mNeuronProp;
  _ErrorAndCycles(out, error, cycles);
  out << _fixedProp.mInputCount << "\t// Number Input Neurons\n";
  out << _fixedProp.mOutputCount << "\t// Number Output Neurons\n";
  out << _dynProp.mHiddenLayerCount << "\t // Number Hidden Layers\n";
  for (int layer = 0; layer < _builtHiddenCount(); ++layer) {
    out << _dynProp.mHiddenLayerSizes[layer] << "\t// Number Neurons in Hidden Layer " << layer
        << "\n";
  }
  out << _NameOf(kInputTypeNames, p.mInputType) << "\t\t// Type of Input Function\n";
  out << _NameOf(kActTypeNames, p.mActivationType) << " \t\t// Type of Activation Function\n";
  out << p.mActivationThreshold << "\t// Activation Threshold\n";
  out << p.mActivationSlope << "\t\t// Activation Slope\n";
  out << _NameOf(kOutputTypeNames, p.mOutputType) << "\t\t// Type of Output Function\n";
  out << p.mOutputThreshold << "\t\t// Output Threshold\n";
  out << "weight definitions\n";
  _forEachNeuron(*this, [&out](const Neuron& neuron) {
    for (double weight : neuron.mWeights) out << weight << "\n";
  });
}

void NeuronalNet::trace() const { WriteTrace(std::cerr); }

void NeuronalNet::WriteTrace(std::ostream& out) const {
  const TNeuronProp& p = _dynProp.mNeuronProp;
  out << "Neuronal Net Trace\n------------------\n";
  out << "Fixed Network Properties:\n";
  out << "input count: " << _fixedProp.mInputCount << "\n";
  out << "output count: " << _fixedProp.mOutputCount << "\n";
  out << "Dynamic Network Properties: \n";
  out << "Hidden Layers: " << _dynProp.mHiddenLayerCount << "( ";
  for (int layer = 0; layer < _builtHiddenCount(); ++layer) {
    out << _dynProp.mHiddenLayerSizes[layer] << " ";
  }
  out << ")\n";
  out << "Neuron Properties: \n";
  out << "Input Type: " << p.mInputType << "\n";
  out << "Activation Type: " << p.mActivationType << "\n";
  out << "Activation Slope: " << p.mActivationSlope << "\n";
  out << "Activation Threshold: " << p.mActivationThreshold << "\n";
  out << "Output Type: " << p.mOutputType << "\n";
  out << "Output Threshold: " << p.mOutputThreshold << "\n";
  out << "End Neuronal Net Trace\n----------------------\n";
}

void NeuronalNet::WriteTraceBrief(std::ostream& out) const {
  out << "NeuronalNet " << _fixedProp.mInputCount;
  for (int layer = 0; layer < _builtHiddenCount(); ++layer) out << "-" << _hidden[layer].size();
  out << "-" << _output.size();
}

void NeuronalNet::WriteInitializerList(std::ostream& out) const {
  const TNeuronProp& p = _dynProp.mNeuronProp;
  out << "NeuronalNet(" << _fixedProp.mInputCount << ", " << _dynProp.mHiddenLayerCount << ", {";
  _Join(out, std::span(_dynProp.mHiddenLayerSizes, _builtHiddenCount()), ", ");
  out << "}, " << _fixedProp.mOutputCount << ", " << _NameOf(kInputTypeNames, p.mInputType) << ", "
      << _NameOf(kActTypeNames, p.mActivationType) << ", " << p.mActivationSlope << ", "
      << p.mActivationThreshold << ", " << _NameOf(kOutputTypeNames, p.mOutputType) << ", "
      << p.mOutputThreshold << ")";
}

}  // namespace harmony
