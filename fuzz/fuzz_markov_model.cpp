// Reads arbitrary bytes as a Markov model file. Whatever the reader accepts must write a file
// that becomes a fixed point after one more reading (the first reading turns gaps and unknown
// kinds into chordless objects), and a small model must answer queries, fill a gap, rate a
// sequence and generate without fault.

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "harmony/markov/VariableLengthMarkovModel.h"

namespace {

using harmony::CMarkovObject;
using harmony::TMarkovSymbol;
using harmony::VariableLengthMarkovModel;
using Reader = VariableLengthMarkovModel::JSONDeserialization_Helper;

constexpr std::uint64_t kLongestHistoryExercised = 6;
constexpr std::size_t kLargestAlphabetExercised = 256;

std::string Written(const VariableLengthMarkovModel& model) {
  std::ostringstream out;
  model.AppendJSONString(out);
  return out.str();
}

std::string ReadAndWritten(const std::string& text) {
  VariableLengthMarkovModel model;
  if (!Reader::VariableLengthMarkovModelFromJSONString(text, model)) __builtin_trap();
  return Written(model);
}

void Exercise(VariableLengthMarkovModel& model) {
  harmony::TMarkovProbabilities probabilities;
  model.QueryStartSequence();
  model.ProbabilitiesForNextSymbol(probabilities);
  if (!probabilities.empty()) model.QueryAddSymbol(*model.ChooseFromProbabilities(probabilities));
  model.QueryRemoveLastItem();

  harmony::TMarkovHistory sequence;
  for (auto it = model.Objects().begin(); it != model.Objects().end() && sequence.size() < 4;
       ++it) {
    if (it->IsChord()) sequence.push_back(it);
  }
  harmony::TMarkovGenerateOptions options;
  options.Objects = sequence;
  options.MaxHistory = model.MaxHistoryLength();
  options.EvidenceHistory = 1;
  harmony::TMarkovSampledSequence rated;
  for (const TMarkovSymbol& symbol : sequence) rated.Append({0.5, 0.0, 0.0, 1, symbol});
  model.CalculateEvidenceProbability(rated, options);

  sequence.push_back(model.Objects().insertObjectIfUnique(CMarkovObject::Gap(4.0)));
  model.FillGapInSequence(sequence);

  options.Objects = {sequence.back()};
  options.SampleCount = 2;
  options.MaxTries = 20;
  harmony::TMarkovSampledSequence result;
  std::vector<harmony::TMarkovSampledSequence> all;
  model.SampleSequenceWithLength(result, all, true, options);
  model.SampleSequenceWithLength(result, all, false, options);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  VariableLengthMarkovModel model;
  if (!Reader::VariableLengthMarkovModelFromJSONString(
          std::string(reinterpret_cast<const char*>(data), size), model)) {
    return 0;
  }
  const std::string normalised = ReadAndWritten(Written(model));
  if (ReadAndWritten(normalised) != normalised) __builtin_trap();
  if (model.MaxHistoryLength() >= 1 && model.MaxHistoryLength() <= kLongestHistoryExercised &&
      model.Objects().size() <= kLargestAlphabetExercised) {
    Exercise(model);
  }
  return 0;
}
