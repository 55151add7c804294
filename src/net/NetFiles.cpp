// The net's property and weight text files, in the form weights_to_text writes in mode 4.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>

#include "harmony/net/NeuronalNet.h"
#include "net/NetTypeNames.h"
#include "platform/BoundedRead.h"

namespace harmony {
namespace {

// Lines are read as into a buffer of this many characters, terminator included: a longer line
// goes on as the next one.
constexpr std::size_t kLineBuffer = 500;
// A key is looked for at the offsets below this one.
constexpr std::size_t kKeyOffsets = 450;

bool _ReadLine(std::istream& in, std::string& line) {
  line.clear();
  char c = 0;
  while (line.size() < kLineBuffer - 1 && in.get(c)) {
    line.push_back(c);
    if (c == '\n') break;
  }
  if (line.empty()) return false;
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
  return true;
}

bool _EndsWith(std::string_view line, std::string_view key) {
  return line.size() >= key.size() && line.substr(line.size() - key.size()) == key;
}

// The digits at the start of the line, as a number that holds at the end of the range.
std::int64_t _LeadingInteger(std::string_view line) {
  constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
  std::int64_t value = 0;
  for (char c : line) {
    if (c < '0' || c > '9') break;
    const int digit = c - '0';
    value = value > (kMax - digit) / 10 ? kMax : value * 10 + digit;
  }
  return value;
}

std::int32_t _LeadingInteger32(std::string_view line) {
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(_LeadingInteger(line), std::numeric_limits<std::int32_t>::max()));
}

// The run of digits, '-' and '.' at the start of the line, read as a double (0 when it isn't
// one). An exponent ends the run: "1e-05" reads as 1.
double _LeadingDouble(std::string_view line) {
  const std::size_t length = line.find_first_not_of("0123456789-.");
  const std::string run(line.substr(0, length));
  return std::strtod(run.c_str(), nullptr);
}

// The index of the name that the first ten characters of the line give, up to a blank or tab;
// -1 for none. Names longer than ten characters count by their first ten.
template <std::size_t N>
int _LeadingType(std::string_view line, const char* const (&names)[N]) {
  std::string_view window = line.substr(0, 10);
  window = window.substr(0, window.find_first_of(" \t"));
  for (std::size_t i = 0; i < N; ++i) {
    if (window == std::string_view(names[i]).substr(0, 10)) return static_cast<int>(i);
  }
  return -1;
}

struct _Properties {
  TFixedNetProp fixed{};
  TDynNetProp dyn{};
};

template <class Enum, std::size_t N>
void _ReadType(std::string_view line, const char* const (&names)[N], Enum& field) {
  const int index = _LeadingType(line, names);
  if (index >= 0) field = static_cast<Enum>(index);
  std::printf("%i\n", static_cast<int>(field));
}

void _HiddenSize(std::string_view line, _Properties& p, int layer) {
  p.dyn.mHiddenLayerSizes[layer] = _LeadingInteger32(line);
}

struct _PropertyKey {
  const char* key;
  const char* message;
  void (*read)(std::string_view line, _Properties& p);
};

constexpr _PropertyKey kPropertyKeys[] = {
    {"Number Input Neurons", "Number Input Neurons erkannt!",
     [](std::string_view l, _Properties& p) { p.fixed.mInputCount = _LeadingInteger(l); }},
    {"Number Output Neurons", "Number Output Neurons erkannt!",
     [](std::string_view l, _Properties& p) { p.fixed.mOutputCount = _LeadingInteger(l); }},
    {"Number Hidden Layers", "Number Hidden Layers erkannt!",
     [](std::string_view l, _Properties& p) { p.dyn.mHiddenLayerCount = _LeadingInteger32(l); }},
    {"Number Neurons in Hidden Layer 0", "Number Neurons Hidden Layers erkannt!",
     [](std::string_view l, _Properties& p) { _HiddenSize(l, p, 0); }},
    {"Number Neurons in Hidden Layer 1", "Number Neurons Hidden Layers erkannt!",
     [](std::string_view l, _Properties& p) { _HiddenSize(l, p, 1); }},
    {"Number Neurons in Hidden Layer 2", "Number Neurons Hidden Layers erkannt!",
     [](std::string_view l, _Properties& p) { _HiddenSize(l, p, 2); }},
    {"Number Neurons in Hidden Layer 3", "Number Neurons Hidden Layers erkannt!",
     [](std::string_view l, _Properties& p) { _HiddenSize(l, p, 3); }},
    {"Type of Input Function", "Type of Input Function erkannt!",
     [](std::string_view l, _Properties& p) {
       _ReadType(l, kInputTypeNames, p.dyn.mNeuronProp.mInputType);
     }},
    {"Type of Activation Function", "Type of Activation Function erkannt!",
     [](std::string_view l, _Properties& p) {
       _ReadType(l, kActTypeNames, p.dyn.mNeuronProp.mActivationType);
     }},
    {"Activation Threshold", "Activation Threshold erkannt!",
     [](std::string_view l, _Properties& p) {
       p.dyn.mNeuronProp.mActivationThreshold = _LeadingDouble(l);
     }},
    {"Activation Slope", "Activation Slope erkannt!",
     [](std::string_view l, _Properties& p) {
       p.dyn.mNeuronProp.mActivationSlope = _LeadingDouble(l);
     }},
    {"Type of Output Function", "Type of Output Function erkannt!",
     [](std::string_view l, _Properties& p) {
       _ReadType(l, kOutputTypeNames, p.dyn.mNeuronProp.mOutputType);
     }},
    {"Output Threshold", "Output Threshold erkannt!",
     [](std::string_view l, _Properties& p) {
       p.dyn.mNeuronProp.mOutputThreshold = _LeadingDouble(l);
     }},
};

// A key counts where the rest of the line from an offset below 450 is the key itself.
const _PropertyKey* _KeyOfLine(std::string_view line) {
  for (const _PropertyKey& key : kPropertyKeys) {
    const std::string_view text(key.key);
    if (_EndsWith(line, text) && line.size() - text.size() < kKeyOffsets) return &key;
  }
  return nullptr;
}

}  // namespace

std::pair<TFixedNetProp, TDynNetProp> NeuronalNet::load_net_properties_from_stream(
    std::istream& in) {
  _Properties properties;
  std::string line;
  while (_ReadLine(in, line)) {
    const _PropertyKey* key = _KeyOfLine(line);
    if (key == nullptr) continue;
    std::printf("%s\n", key->message);
    key->read(line, properties);
  }
  return {properties.fixed, properties.dyn};
}

std::pair<TFixedNetProp, TDynNetProp> NeuronalNet::load_net_properties_from_file(
    const std::string& path) {
  // A file that cannot be read gives what an empty one gives.
  std::istringstream in(platform::ReadBounded(path, platform::TReadKind::kNetFile).bytes);
  return load_net_properties_from_stream(in);
}

bool NeuronalNet::load_weights_from_stream(std::istream& in) {
  std::string line;
  while (_ReadLine(in, line) && !_EndsWith(line, "weight definitions")) {
  }
  std::vector<double> weights;
  while (_ReadLine(in, line)) {
    weights.push_back(_LeadingDouble(line));
    std::printf("weight %i, %f\n", static_cast<int>(weights.size()), weights.back());
  }
  _setFlatWeights(weights.data(), weights.size());
  return true;
}

bool NeuronalNet::load_weights_from_file(const std::string& path) {
  std::istringstream in(platform::ReadBounded(path, platform::TReadKind::kNetFile).bytes);
  return load_weights_from_stream(in);
}

}  // namespace harmony
