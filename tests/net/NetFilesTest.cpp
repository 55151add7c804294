#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "NetTestSupport.h"
#include "harmony/net/LogWriter.h"
#include "harmony/net/NeuronalNet.h"
#include "platform/Random.h"

namespace harmony {
namespace {

using testing::NetWithWeights;
using testing::Printed;
using testing::Weights;

const TNeuronProp kChordRule{INPUT_SUM, ACT_SIGM, 0.2, 2.0, OUTPUT_NONE, 0.0};

// 2 inputs, a hidden layer of 2, 2 outputs. For the input (1, 0) output 0 wins.
NeuronalNet SmallNet() {
  return NetWithWeights(2, {2}, 2, kChordRule, {0.5, -1.25, 3, 0.125, 2.5, -0.75, -1, 1});
}

const std::vector<training_pattern> kPatterns = {
    {{1.0, 0.0}, {1.0, 0.0}, 0.1, "right"},
    {{1.0, 0.0}, {0.0, 1.0}, 0.1, "wrong"},
};

// The report without its first line, the date and time, which is checked for its form.
std::string Report(NeuronalNet& net, int mode, double error = 0.05, long cycles = 120) {
  const std::string text = net.weights_to_text(mode, error, cycles, kPatterns);
  const std::size_t endOfTime = text.find('\n') + 1;
  EXPECT_TRUE(std::regex_match(text.substr(0, endOfTime),
                               std::regex("[A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] "
                                          "[0-9]{2}:[0-9]{2}:[0-9]{2} [0-9]{4}\n")))
      << text;
  return text.substr(endOfTime);
}

std::string TempPath(const char* name) {
  return (std::filesystem::temp_directory_path() /
          ("harmony-net-" + std::to_string(::getpid()) + "-" + name))
      .string();
}

void WriteFile(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

const char* const kProperties =
    "Network Properties\n------------------\n"
    "Number Input Neurons: 2\nNumber Output Neurons: 2\nNumber Hidden Layers: 1\n"
    "Number Neurons in Hidden Layer 0: 2\nType of Input Function: Sum\n"
    "Type of Activation Function: Sigmoid, Threshold: 2, Slope: 0.2\n"
    "Type of Output Function: None\n\n";

TEST(NetFiles, ReportInPlainAndLabelledForm) {
  NeuronalNet net = SmallNet();
  EXPECT_EQ(Report(net, 1, 0.05, 120), std::string(kProperties) +
                                           "Overall Error generated: 0.05\nCycles: 120\n"
                                           "Neuron Connection Weights\n"
                                           "-------------------------\n\n"
                                           "Hidden Layer 0, Neuron 0\n0.5, -1.25\n"
                                           "Hidden Layer 0, Neuron 1\n3, 0.125\n"
                                           "Output Layer Neuron 0\n2.5, -0.75\n"
                                           "Output Layer Neuron 1\n-1, 1\n");
  EXPECT_EQ(Report(net, 0, -1.0, -1), std::string(kProperties) +
                                          "Neuron Connection Weights\n-------------------------\n\n"
                                          "0.5, -1.25\n3, 0.125\n2.5, -0.75\n-1, 1\n");
  NeuronalNet binary =
      NetWithWeights(1, {1}, 1, {INPUT_MAX, ACT_IDENT, 1, 0, OUTPUT_BIN, 0.5}, {1.0, 1.0});
  EXPECT_NE(Report(binary, 0, 0.5, -1)
                .find("Maximum\nType of Activation Function: Ident. Projection, Threshold: 0, "
                      "Slope: 1\nType of Output Function: Binary, Threshold: 0.5\n\n"
                      "Overall Error generated: 0.5\nNeuron"),
            std::string::npos);
}

const char* const kCSource =
    "static double weight_definitions[] =\n{\n0.5, -1.25, \n  3, 0.125, \n  2.5, -0.75, \n"
    "  -1, 1, \n  };\n\n"
    "static TPredefinedWeights weights = \n\t {\n"
    "\t\t\t{ \t\t\t\t// TFixedNetProp \n"
    "\t\t\t\t\t2,\t\t// Number Input Neuron \n"
    "\t\t\t\t\t2,\t\t// Number Output Neurons \n"
    "\t\t\t}, \n"
    "\t\t\t{  \t\t\t\t// TDynNetProp\n"
    "\t\t\t\t\t1,\t\t// Number Hidden Layers \n"
    "\t\t\t\t\t{ 2 },\t\t\t\t// Number Neurons per Hidden Layer\n"
    "\t\t\t\t\t{\t\t\t\t\t\t\t// TNeuronProp \n"
    "\t\t\t\t\t\t\t\tINPUT_SUM,\n"
    "\t\t\t\t\t\t\t\tACT_SIGM, \n"
    "\t\t\t\t\t\t\t\t0.2, 2,\t// Activation Function Parameters\n"
    "\t\t\t\t\t\t\t  OUTPUT_NONE, 0\t\t\t\t\t\t// Output Function Parameters\n"
    " \t\t\t\t\t},\n"
    "\t\t\t}, \n"
    "\t\t\tweight_definitions \n"
    "\t };\n";

TEST(NetFiles, ReportAsCSourceWithVerification) {
  NeuronalNet net = SmallNet();
  EXPECT_EQ(Report(net, 2, -1.0, -1), std::string(kProperties) + kCSource);
  EXPECT_EQ(Report(net, 3, -1.0, 7), std::string(kProperties) + "Cycles: 7\n" +
                                         "The following 1 patterns (out of 2) were not "
                                         "recognized correctly by the net: \n"
                                         "pattern #1\nInputs: 1, 0\nOutputs: 0, 1\n"
                                         "Telling Name: wrong\n" +
                                         kCSource);

  NeuronalNet binary =
      NetWithWeights(1, {1}, 1, {INPUT_MAX, ACT_TANHYP, 1, 0, OUTPUT_BIN, 0.5}, {1.0, 1.0});
  const std::string text = Report(binary, 2);
  EXPECT_NE(text.find("\t\t\t\t\t\t\t\tINPUT_MAX,\n\t\t\t\t\t\t\t\tACT_TANHYP, \n"),
            std::string::npos);
  EXPECT_NE(text.find("\t\t\t\t\t\t\t  OUTPUT_BIN, 0.5\t\t\t// Output Funcction Parameters\n"),
            std::string::npos);
}

TEST(NetFiles, FileFormReadsBack) {
  NeuronalNet net = SmallNet();
  const std::string fileForm =
      "Overall Error generated: 0.05\nCycles: 120\n"
      "2\t// Number Input Neurons\n2\t// Number Output Neurons\n1\t // Number Hidden Layers\n"
      "2\t// Number Neurons in Hidden Layer 0\nINPUT_SUM\t\t// Type of Input Function\n"
      "ACT_SIGM \t\t// Type of Activation Function\n2\t// Activation Threshold\n"
      "0.2\t\t// Activation Slope\nOUTPUT_NONE\t\t// Type of Output Function\n"
      "0\t\t// Output Threshold\nweight definitions\n0.5\n-1.25\n3\n0.125\n2.5\n-0.75\n-1\n1\n";
  const std::string text = Report(net, 4);
  EXPECT_EQ(text,
            "The following 1 patterns (out of 2) were not recognized correctly by the net: \n"
            "pattern #1\nInputs: 1, 0\nOutputs: 0, 1\nTelling Name: wrong\n" +
                fileForm);

  // Another rule and shape, random weights, round trip through a file.
  platform::SeedRandom(17);
  const std::int32_t sizes[] = {4, 3, 5};
  NeuronalNet other(6, 3, sizes, 2, INPUT_AVG, ACT_TANHYP, 0.75, -0.5, OUTPUT_BIN, 0.25);
  const std::string path = TempPath("roundtrip.txt");
  WriteFile(path, other.weights_to_text(4, -1.0, -1, {}));
  std::pair<TFixedNetProp, TDynNetProp> read;
  const std::string printed =
      Printed([&] { read = NeuronalNet::load_net_properties_from_file(path); });
  EXPECT_EQ(printed,
            "Number Input Neurons erkannt!\nNumber Output Neurons erkannt!\n"
            "Number Hidden Layers erkannt!\nNumber Neurons Hidden Layers erkannt!\n"
            "Number Neurons Hidden Layers erkannt!\nNumber Neurons Hidden Layers erkannt!\n"
            "Type of Input Function erkannt!\n3\nType of Activation Function erkannt!\n2\n"
            "Activation Threshold erkannt!\nActivation Slope erkannt!\n"
            "Type of Output Function erkannt!\n1\nOutput Threshold erkannt!\n");
  const auto [fixed, dyn] = read;
  EXPECT_EQ(fixed.mInputCount, 6);
  EXPECT_EQ(fixed.mOutputCount, 2);
  EXPECT_EQ(dyn.mHiddenLayerCount, 3);
  EXPECT_EQ(std::vector<int>(dyn.mHiddenLayerSizes, dyn.mHiddenLayerSizes + 5),
            (std::vector<int>{4, 3, 5, 0, 0}));
  const TNeuronProp& p = dyn.mNeuronProp;
  EXPECT_EQ(p.mInputType, INPUT_AVG);
  EXPECT_EQ(p.mActivationType, ACT_TANHYP);
  EXPECT_EQ(p.mActivationSlope, 0.75);
  EXPECT_EQ(p.mActivationThreshold, -0.5);
  EXPECT_EQ(p.mOutputType, OUTPUT_BIN);
  EXPECT_EQ(p.mOutputThreshold, 0.25);

  NeuronalNet loaded(fixed, dyn);
  Printed([&] { EXPECT_TRUE(loaded.load_weights_from_file(path)); });
  const std::vector<double> expected = Weights(other);
  const std::vector<double> got = Weights(loaded);
  ASSERT_EQ(got.size(), expected.size());
  for (std::size_t i = 0; i < got.size(); ++i) EXPECT_NEAR(got[i], expected[i], 1e-6) << i;
  std::filesystem::remove(path);
}

TEST(NetFiles, PropertyReaderQuirks) {
  const std::string longPrefix(448, 'x');
  std::istringstream in(
      "7\t// Number Input Neurons, and more\n"  // a key must end its line
      "-3\t// Number Output Neurons\n"          // no sign: 0
      "3" +
      longPrefix +
      "Number Hidden Layers\n"  // offset 449: still found
      "4x" +
      longPrefix +
      "Number Neurons in Hidden Layer 0\n"  // offset 450: too far
      "1e-05\t// Activation Threshold\r\n"  // the exponent ends the number
      "-.5.5\t\t// Activation Slope\n"
      "INPUT_PRODUCT\t// Type of Input Function\n"    // ten characters decide
      "ACT_LINEAR\t// Type of Activation Function\n"  // no name of ten characters
      "OUTPUT_BIN\t// Type of Output Function\n"
      "Number Neurons in Hidden Layer 4\n");
  std::pair<TFixedNetProp, TDynNetProp> read;
  const std::string printed =
      Printed([&] { read = NeuronalNet::load_net_properties_from_stream(in); });
  const auto& [fixed, dyn] = read;
  EXPECT_EQ(fixed.mInputCount, 0);
  EXPECT_EQ(fixed.mOutputCount, 0);
  EXPECT_EQ(dyn.mHiddenLayerCount, 3);
  EXPECT_EQ(dyn.mHiddenLayerSizes[0], 0);
  EXPECT_EQ(dyn.mNeuronProp.mActivationThreshold, 1.0);
  EXPECT_EQ(dyn.mNeuronProp.mActivationSlope, -0.5);
  EXPECT_EQ(dyn.mNeuronProp.mInputType, INPUT_PROD);
  EXPECT_EQ(dyn.mNeuronProp.mActivationType, ACT_SIGM);
  EXPECT_EQ(dyn.mNeuronProp.mOutputType, OUTPUT_BIN);
  EXPECT_EQ(printed.find("Number Input Neurons"), std::string::npos);
  EXPECT_NE(printed.find("Type of Activation Function erkannt!\n0\n"), std::string::npos);

  EXPECT_EQ(Printed([] {
              const auto [f, d] = NeuronalNet::load_net_properties_from_file("/nonexistent/net");
              EXPECT_EQ(f.mInputCount, 0);
              EXPECT_EQ(d.mHiddenLayerCount, 0);
            }),
            "");
}

TEST(NetFiles, WeightReader) {
  NeuronalNet net = NetWithWeights(1, {2}, 1, testing::kIdentity, {1, 2, 3, 4});
  std::istringstream in("12.5\nthe weight definitions\n0.5\n-2e3\n");
  bool result = false;
  EXPECT_EQ(Printed([&] { result = net.load_weights_from_stream(in); }),
            "weight 1, 0.500000\nweight 2, -2.000000\n");
  EXPECT_TRUE(result);
  EXPECT_EQ(Weights(net), (std::vector<double>{0.5, -2, 3, 4}));  // fewer: the rest stays

  std::istringstream longer("weight definitions\n9\n8\n7\n6\n5\n4\n");
  Printed([&] { net.load_weights_from_stream(longer); });
  EXPECT_EQ(Weights(net), (std::vector<double>{9, 8, 7, 6}));
  EXPECT_EQ(Printed([&] { EXPECT_TRUE(net.load_weights_from_file("/nonexistent/net")); }), "");
  EXPECT_EQ(Weights(net), (std::vector<double>{9, 8, 7, 6}));
}

TEST(NetFiles, Trace) {
  const NeuronalNet net = SmallNet();
  EXPECT_EQ(net.TraceString(),
            "Neuronal Net Trace\n------------------\nFixed Network Properties:\n"
            "input count: 2\noutput count: 2\nDynamic Network Properties: \n"
            "Hidden Layers: 1( 2 )\nNeuron Properties: \nInput Type: 0\nActivation Type: 0\n"
            "Activation Slope: 0.2\nActivation Threshold: 2\nOutput Type: 0\n"
            "Output Threshold: 0\nEnd Neuronal Net Trace\n----------------------\n");
}

TEST(NetFiles, LogWriter) {
  const std::string path = TempPath("log.txt");
  const std::string time = "[A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] [0-9:]{8} [0-9]{4}\n";
  const std::string rule(64, '-');
  {
    LogWriter log;
    log.open(path);
    log.append("first");
    log.append_plain("plain");
    log.close();
    EXPECT_FALSE(log.fail());
    log.open_for_append(path);
    log.append_plain("again");
    log.close();
    log.close();  // nothing open
    EXPECT_TRUE(log.fail());
  }
  EXPECT_TRUE(std::regex_match(
      ReadFile(path), std::regex(rule + "\nNew log created on " + time + "\n" + rule + "\n" + time +
                                 "  \t{9}\\| first\nplain\nagain\n")))
      << ReadFile(path);
  LogWriter fresh;
  fresh.open(path);
  fresh.close();
  EXPECT_EQ(ReadFile(path).find("first"), std::string::npos);
  std::filesystem::remove(path);
}

}  // namespace
}  // namespace harmony
