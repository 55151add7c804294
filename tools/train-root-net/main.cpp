// train-root-net: trains the net that names the root of a set of played notes and writes its
// table into the library's sources and data.
//
//   train-root-net [--seed N] [--epochs N] [--rate R] [--final-rate R] [--momentum M]
//                  [--root DIR] [--dry-run] [--misses]
//
// The pattern sets come from PatternSets.cpp, whose header states the convention that names
// ambiguous note sets. The same seed gives the same table: the net's random start and the
// order of the patterns in each epoch both come from it. The learning rate falls from --rate
// to --final-rate; the net is taken from the epoch that names the validation voicings best.
// Prints the accuracy of the net and of the table algorithm on the training and the held-out
// voicings; --misses lists the held-out voicings the net names wrongly.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "PatternSets.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/net/ChordAnalysisNet.h"
#include "harmony/net/NeuronalNet.h"
#include "platform/Random.h"

namespace harmony::trainer {
namespace {

struct TOptions {
  std::uint32_t seed = 2;
  int epochs = 600;
  double rate = 0.01;        // the learning rate of the first epoch
  double finalRate = 0.001;  // of the last; the epochs between fall geometrically
  double momentum = 0.6;
  std::string root = HARMONY_SOURCE_DIR;
  bool dryRun = false;
  bool misses = false;
};

TOptions _ParseOptions(int argc, char** argv) {
  TOptions options;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    const bool hasValue = i + 1 < argc;
    if (arg == "--seed" && hasValue) {
      options.seed = static_cast<std::uint32_t>(std::stoul(argv[++i]));
    } else if (arg == "--epochs" && hasValue) {
      options.epochs = std::stoi(argv[++i]);
    } else if (arg == "--rate" && hasValue) {
      options.rate = std::stod(argv[++i]);
    } else if (arg == "--final-rate" && hasValue) {
      options.finalRate = std::stod(argv[++i]);
    } else if (arg == "--momentum" && hasValue) {
      options.momentum = std::stod(argv[++i]);
    } else if (arg == "--root" && hasValue) {
      options.root = argv[++i];
    } else if (arg == "--misses") {
      options.misses = true;
    } else if (arg == "--dry-run") {
      options.dryRun = true;
    } else {
      throw std::invalid_argument("unknown argument " + arg);
    }
  }
  return options;
}

// The net of the shape the library loads.
NeuronalNet _NewNet() {
  const TFixedNetProp fixed{24, 12};
  const TDynNetProp dyn{2, {15, 15, 0, 0, 0}, {INPUT_SUM, ACT_SIGM, 0.2, 2.0, OUTPUT_NONE, 0.0}};
  return NeuronalNet(fixed, dyn);
}

double _NetAccuracy(NeuronalNet& net, const std::vector<training_pattern>& patterns) {
  if (patterns.empty()) return 0.0;
  const auto missed = net.batch_verify(patterns);
  return 100.0 * static_cast<double>(patterns.size() - missed.size()) /
         static_cast<double>(patterns.size());
}

// The library's table algorithm on the example voicing of each note set.
double _TableAccuracy(const std::vector<TRootPattern>& patterns) {
  if (patterns.empty()) return 0.0;
  int right = 0;
  for (const TRootPattern& pattern : patterns) {
    CMySet<unsigned char> noteNrs;
    for (int noteNr : pattern.noteNrs) noteNrs.insert(static_cast<unsigned char>(noteNr));
    CChordHeavy chord(CNote::Undef, noteNrs, 24);
    chord.SetRootNoteAndEnh_ToLikeliestRegardingNoteSet(kSingleChordAnalysisAlgoProbTable);
    right += chord.RootNote().KeyNr() == (pattern.noteNrs.front() + pattern.rootDist) % 12;
  }
  return 100.0 * right / static_cast<double>(patterns.size());
}

std::vector<training_pattern> _Training(const std::vector<TRootPattern>& patterns, double rate) {
  std::vector<training_pattern> result;
  for (const TRootPattern& pattern : patterns) result.push_back(ToTrainingPattern(pattern, rate));
  return result;
}

struct TTrained {
  NeuronalNet net;
  int epoch = 0;  // the epoch after which the net was taken
  double error = 0.0;
};

// Per-pattern back-propagation in an order shuffled from the seed each epoch, with a learning
// rate falling from the first to the final one. The net is taken from the epoch that names
// the validation voicings best (the earliest of equals); they are never trained on.
TTrained _Train(NeuronalNet& net, std::vector<training_pattern>& patterns,
                const std::vector<training_pattern>& validation, const TOptions& options) {
  std::mt19937 generator(options.seed);
  std::vector<std::size_t> order(patterns.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  TTrained best{net, 0, 0.0};
  double bestAccuracy = -1.0;
  const double decay =
      std::pow(options.finalRate / options.rate, 1.0 / std::max(1, options.epochs - 1));
  double rate = options.rate;
  for (int epoch = 1; epoch <= options.epochs; ++epoch, rate *= decay) {
    for (training_pattern& pattern : patterns) pattern.mLearningRate = rate;
    std::shuffle(order.begin(), order.end(), generator);
    double sum = 0.0;
    for (std::size_t index : order) sum += net.train(patterns[index]);
    const double mean = sum / static_cast<double>(patterns.size());
    const double accuracy = _NetAccuracy(net, validation);
    if (accuracy > bestAccuracy) {
      bestAccuracy = accuracy;
      best = {net, epoch, mean};
    }
    if (epoch % 25 == 0 || epoch == options.epochs) {
      std::printf("epoch %4d  rate %.5f  error %.4f  validation %.2f%%\n", epoch, rate, mean,
                  accuracy);
    }
  }
  std::printf("taken from epoch %d: validation %.2f%%\n", best.epoch, bestAccuracy);
  return best;
}

std::uint32_t _Folded(std::uint32_t mask) { return (mask | (mask >> 12)) & 0xfffu; }

// The held-out note sets the net names wrongly, with what training teaches about the same
// keys above the same lowest note in other voicings.
void _PrintMisses(NeuronalNet& net, const TPatternSets& sets) {
  std::map<std::uint32_t, std::set<int>> trainedRoots;
  for (const TRootPattern& pattern : sets.training) {
    trainedRoots[_Folded(pattern.intvlMask)].insert(pattern.rootDist);
  }
  int unknown = 0;
  int contradicted = 0;
  int missed = 0;
  for (const TRootPattern& pattern : sets.heldOut) {
    const training_pattern form = ToTrainingPattern(pattern, 0.0);
    net.use(form.mInputs);
    if (net.winner() == pattern.rootDist) continue;
    ++missed;
    const auto found = trainedRoots.find(_Folded(pattern.intvlMask));
    std::string taught = "never seen";
    if (found == trainedRoots.end()) {
      ++unknown;
    } else {
      taught = "trained as";
      for (int root : found->second) taught += " " + std::to_string(root);
      contradicted += found->second.count(pattern.rootDist) == 0;
    }
    std::string intvls;
    for (int intvl = 0; intvl < 24; ++intvl) {
      if ((pattern.intvlMask >> intvl) & 1u) intvls += " " + std::to_string(intvl);
    }
    std::printf("miss: %-40s [%s ] root %d, net %d; %s\n", pattern.name.c_str(), intvls.c_str(),
                pattern.rootDist, net.winner(), taught.c_str());
  }
  std::printf("%d misses: %d of keys never trained, %d trained with another root\n", missed,
              unknown, contradicted);
}

// The weights as the file form writes them (six significant digits), read back.
std::vector<double> _RoundedWeights(NeuronalNet& net) {
  std::istringstream in(net.weights_to_text(4, -1, -1, {}));
  std::string line;
  while (std::getline(in, line) && line != "weight definitions") {
  }
  std::vector<double> weights;
  for (double weight = 0.0; in >> weight;) weights.push_back(weight);
  if (weights.size() != net.get_weight_count()) throw std::runtime_error("short file form");
  return weights;
}

// The C source of the table: the report's C form, its records made the library's exports.
std::string _CSource(NeuronalNet& net) {
  std::string text = net.weights_to_text(2, -1, -1, {});
  text = text.substr(text.find("static double weight_definitions"));
  const auto replace = [&text](const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    if (at == std::string::npos) throw std::runtime_error("unexpected C form: " + from);
    text.replace(at, from.size(), to);
  };
  replace("static double weight_definitions[] =",
          "const double weight_definitions[kChordAnalysisWeightCount] =");
  replace("static TPredefinedWeights weights =",
          "const TPredefinedWeights ChordAnalysisNeuronalNet =");
  return "// The trained table of the root-detection net. Generated by tools/train-root-net;\n"
         "// do not edit, train again.\n// clang-format off\n\n"
         "#include \"harmony/net/ChordAnalysisNet.h\"\n\n"
         "namespace harmony {\n\n" +
         text + "\n}  // namespace harmony\n";
}

// The report begins with the date; the table files leave it out so that a run with the same
// seed writes the same bytes.
std::string _WithoutDateLine(const std::string& text) { return text.substr(text.find('\n') + 1); }

void _WriteFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary);
  out << text;
  if (!out) throw std::runtime_error("can't write " + path);
  std::printf("wrote %s\n", path.c_str());
}

// The flat table must put hidden layer 1 at 360 and the output layer at 585, as the library's
// record of the net expects.
void _CheckLayout(const NeuronalNet& net) {
  const std::size_t count = net.get_weight_count();
  const std::size_t layer1 = net.get_hidden_layer(0).size() * 24;
  const std::size_t output = layer1 + net.get_hidden_layer(1).size() * 15;
  if (count != kChordAnalysisWeightCount || layer1 != 360 || output != 585) {
    throw std::runtime_error("the net's layout differs from the library's table");
  }
}

int _Run(const TOptions& options) {
  const TPatternSets sets = BuildPatternSets();
  std::printf("%d shapes, %d note sets; voicings: %zu training, %zu validation, %zu held out\n",
              sets.shapeCount, sets.noteSetCount, sets.training.size(), sets.validation.size(),
              sets.heldOut.size());
  std::vector<training_pattern> training = _Training(sets.training, options.rate);
  const std::vector<training_pattern> validation = _Training(sets.validation, options.rate);
  const std::vector<training_pattern> heldOut = _Training(sets.heldOut, options.rate);
  std::vector<training_pattern> all = training;
  all.insert(all.end(), validation.begin(), validation.end());
  all.insert(all.end(), heldOut.begin(), heldOut.end());
  if (NeuronalNet::check_learn_data_for_duplicates(all)) return 1;
  std::printf("pattern sets are consistent\n");

  platform::SeedRandom(options.seed);
  NeuronalNet net = _NewNet();
  _CheckLayout(net);
  net.set_momentum_amount(options.momentum);
  const TTrained trained = _Train(net, training, validation, options);

  // Judge the table as the library will hold it: six significant digits.
  NeuronalNet rounded = _NewNet();
  NeuronalNet taken = trained.net;
  const std::vector<double> weights = _RoundedWeights(taken);
  TPredefinedWeights record = taken.get_weights();
  delete[] record.mWeights;
  record.mWeights = weights.data();
  if (!rounded.acquire_weights(record)) throw std::runtime_error("the rounded table doesn't fit");
  std::printf("net:   training %.2f%%, held out %.2f%%\n", _NetAccuracy(rounded, training),
              _NetAccuracy(rounded, heldOut));
  std::printf("table: training %.2f%%, held out %.2f%%\n", _TableAccuracy(sets.training),
              _TableAccuracy(sets.heldOut));
  if (options.misses) _PrintMisses(rounded, sets);
  if (options.dryRun) return 0;
  _WriteFile(options.root + "/src/net/ChordAnalysisWeights.cpp", _CSource(rounded));
  _WriteFile(options.root + "/data/net/ChordAnalysisNet.txt",
             _WithoutDateLine(rounded.weights_to_text(4, trained.error, trained.epoch, {})));
  return 0;
}

}  // namespace
}  // namespace harmony::trainer

int main(int argc, char** argv) {
  try {
    return harmony::trainer::_Run(harmony::trainer::_ParseOptions(argc, argv));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "train-root-net: %s\n", error.what());
    return 2;
  }
}
