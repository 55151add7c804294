#include "MarkovSupport.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "Command.h"
#include "harmony/markov/MarkovHarmChords.h"
#include "platform/Log.h"
#include "platform/UserFolders.h"

namespace harmony::tool {

namespace {

constexpr int kBeatsPerBar = 4;
constexpr int kBarsPerLine = 4;
// Histories above this are no model this tool made; they would only cost memory.
constexpr std::uint64_t kLongestUsableHistory = 16;
constexpr double kAllEqualFactor = 0.01;
// Tries per wanted sample before a run gives up: a search either succeeds or fails for
// good at once, but a long chord list of fixed chords may rate below the acceptance bound
// in every try.
constexpr std::uint64_t kTriesPerSample = 50;

std::string DefaultModelPath() {
  for (const std::filesystem::path& folder : platform::ResourceFolders()) {
    const std::filesystem::path candidate = folder / kDefaultMarkovModel;
    std::error_code error;
    if (std::filesystem::is_regular_file(candidate, error)) return candidate.string();
  }
  throw InputError(std::string("the default Markov model (") + kDefaultMarkovModel +
                   ") is not installed; name a model with --model");
}

}  // namespace

std::unique_ptr<VariableLengthMarkovModel> LoadMarkovModel(const std::string& path) {
  const std::string file = path.empty() ? DefaultModelPath() : path;
  auto model = std::make_unique<VariableLengthMarkovModel>();
  using Reader = VariableLengthMarkovModel::JSONDeserialization_Helper;
  const std::string text = ReadInputBytes(file, platform::TReadKind::kMarkovModel);
  if (!Reader::VariableLengthMarkovModelFromJSONString(text, *model)) {
    throw InputError("cannot read the Markov model \"" + file + "\": no model file");
  }
  if (model->MaxHistoryLength() < 1 || model->MaxHistoryLength() > kLongestUsableHistory ||
      model->TransitionMap().empty()) {
    throw InputError("\"" + file + "\" is no usable Markov model (history length " +
                     std::to_string(model->MaxHistoryLength()) + ", " +
                     std::to_string(model->TransitionMap().size()) + " histories)");
  }
  return model;
}

TMarkovGenerateOptions ToolGenerateOptions(const VariableLengthMarkovModel& model,
                                           std::uint64_t samples, double variety) {
  TMarkovGenerateOptions options;
  options.MaxHistory = model.MaxHistoryLength();
  options.MinHistory = 1;
  options.EvidenceHistory = std::max<std::uint64_t>(1, model.MaxHistoryLength() - 1);
  options.AcceptLowEntropy = true;
  options.StopBackOffAtExactFit = true;
  options.MinNormalizedEntropy = variety;
  options.AllEqualFactor = kAllEqualFactor;
  options.SampleCount = samples;
  options.MaxTries = kTriesPerSample * samples;
  return options;
}

TMarkovBars GenerateMarkovBars(VariableLengthMarkovModel& model, int bars,
                               const CHarmCenterLite& center, std::uint64_t samples,
                               double variety) {
  TMarkovGenerateOptions options = ToolGenerateOptions(model, samples, variety);
  model.IteratorSequenceForObjects({CMarkovObject::Gap(kBeatsPerBar * bars)}, options.Objects);
  TMarkovBars generated;
  std::vector<TMarkovSampledSequence> candidates;
  model.SampleSequenceWithLength(generated.Sequence, candidates, true, options);
  generated.Candidates = candidates.size();
  if (generated.Sequence.empty()) return generated;
  std::vector<CMarkovObject> objects;
  for (const TMarkovSymbol& symbol : generated.Sequence.Objects) objects.push_back(*symbol);
  generated.Chords = HarmChordsForMarkovObjects(objects, center);
  return generated;
}

std::string ChordToken(const CHarmAnlsChord& chord, const CChordNamePrefs& prefs,
                       const std::string& undefined) {
  if (chord.IsUndef()) return undefined;
  std::string name = chord.TraceName(prefs);
  std::erase_if(name, [](char c) { return std::isspace(static_cast<unsigned char>(c)); });
  return name;
}

std::string ChordListText(const CHarmAnlsChords& chords, const CChordNamePrefs& prefs,
                          const std::string& undefined) {
  if (chords.empty()) return {};
  std::vector<std::string> beats;
  for (std::size_t i = 0; i < chords.size(); ++i) {
    const auto beat = static_cast<std::size_t>(std::max(0.0, std::round(chords[i].Position)));
    // The beats up to here continue the chord before.
    if (beats.size() < beat) beats.resize(beat, ".");
    if (i + 1 == chords.size()) break;
    beats.push_back(ChordToken(chords[i], prefs, undefined));
  }
  std::string text;
  for (std::size_t i = 0; i < beats.size(); ++i) {
    if (i > 0 && i % kBeatsPerBar == 0) {
      text += i % (kBeatsPerBar * kBarsPerLine) == 0 ? " |\n" : " | ";
    } else if (i > 0) {
      text += ' ';
    }
    text += beats[i];
  }
  if (beats.size() % kBeatsPerBar == 0) text += " |";
  return text;
}

TMarkovRating RateMarkovObjects(VariableLengthMarkovModel& model,
                                const std::vector<CMarkovObject>& objects) {
  TMarkovRating rating;
  TMarkovGenerateOptions options = ToolGenerateOptions(model, 1, 0.0);
  model.IteratorSequenceForObjects(objects, options.Objects);
  TMarkovSampledSequence sequence;
  TMarkovHistory before;
  TMarkovHistory window;
  TMarkovProbabilities probabilities;
  for (const TMarkovSymbol& symbol : options.Objects) {
    // The probability after the longest history before it that the model knows.
    double probability = 0.0;
    std::uint64_t used = 0;
    for (std::uint64_t length = model.MaxHistoryLength(); length >= 1; --length) {
      model.Subvector(length, before, window);
      model.ProbabilitiesForNextSymbol(window, probabilities);
      if (probabilities.empty()) continue;
      const auto found = probabilities.find(symbol);
      probability = found != probabilities.end() ? found->second : 0.0;
      used = length;
      break;
    }
    sequence.Append({probability, 0.0, 0.0, used, symbol});
    rating.Probabilities.push_back(probability);
    rating.HistoryLengths.push_back(used);
    before.push_back(symbol);
  }
  const platform::LogHandler previous =
      platform::SetLogHandler([&rating](std::string_view) { ++rating.UnknownWindows; });
  model.CalculateEvidenceProbability(sequence, options);
  platform::SetLogHandler(previous);
  rating.Evidence = sequence.LogWeight;
  return rating;
}

}  // namespace harmony::tool
