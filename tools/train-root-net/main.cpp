// train-root-net: trains the net that names the root of a set of played notes and writes its
// table into the library's sources and data.
//
//   train-root-net [--seeds N | FIRST..LAST] [--epochs N] [--rate R] [--final-rate R]
//                  [--momentum M] [--close-weight N] [--undoubled-weight N]
//                  [--fine-epochs N] [--fine-rate R] [--fine-close-weight N] [--start FILE]
//                  [--root DIR] [--dry-run] [--misses] [--broad] [--train-broad N]
//   train-root-net --score [--misses] [--broad]
//
// The pattern sets come from PatternSets.cpp, whose header states the convention that names
// ambiguous note sets. The same options give the same table: for each seed, the net's random
// start and the order of the patterns in each epoch come from it. Each epoch trains a close
// voicing --close-weight times and another voicing without doubled keys --undoubled-weight
// times. The learning rate falls from --rate to --final-rate. Of all seeds and epochs, the net
// taken is the one that misnames the fewest close voicings, then the fewest validation voicings,
// then has the least squared error on those; the held-out voicings play no part in the choice.
// Prints the accuracy of the net and of the table algorithm on the training and the held-out
// voicings; --misses lists the held-out voicings the net names wrongly.
//
// --fine-epochs continues from the taken net for that many epochs at --fine-rate, each epoch
// over the voicings without doubled keys (close, open, drop 2, ...) and as many others drawn
// afresh, and takes the best net again by the same rule, the one it started from included.
// --start FILE reads a net in the file form of data/net/ instead of training one from a random
// start (the main epochs are skipped unless --epochs is given; --fine-epochs then refines it).
// --score trains nothing: it prints the figures of the table the library holds. --broad trains or
// scores on every voicing within two octaves with up to two doubled keys instead of those players
// use.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
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
  std::uint32_t firstSeed = 1;
  std::uint32_t lastSeed = 1;
  int epochs = 600;
  bool epochsGiven = false;  // --start runs main epochs only when asked to
  double rate = 0.01;        // the learning rate of the first epoch
  double finalRate = 0.001;  // of the last; the epochs between fall geometrically
  double momentum = 0.6;
  int closeWeight = 1;      // times a close voicing is trained each epoch
  int undoubledWeight = 1;  // times another voicing without doubled keys is
  int fineEpochs = 0;
  double fineRate = 0.001;
  int fineCloseWeight = 1;  // times a close voicing is refined each epoch
  std::string start;        // a net to start from instead of a random one
  bool score = false;
  std::string root = HARMONY_SOURCE_DIR;
  bool dryRun = false;
  bool misses = false;
  bool broad = false;    // every voicing, not only those players use
  int playedWeight = 0;  // > 0: train on every voicing, one players use this many times
};

// "N" or "FIRST..LAST".
void _ParseSeeds(const std::string& text, TOptions& options) {
  const std::size_t dots = text.find("..");
  options.firstSeed = static_cast<std::uint32_t>(std::stoul(text.substr(0, dots)));
  options.lastSeed = dots == std::string::npos
                         ? options.firstSeed
                         : static_cast<std::uint32_t>(std::stoul(text.substr(dots + 2)));
  if (options.lastSeed < options.firstSeed) throw std::invalid_argument("empty seed range");
}

TOptions _ParseOptions(int argc, char** argv) {
  TOptions options;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    const bool hasValue = i + 1 < argc;
    if ((arg == "--seed" || arg == "--seeds") && hasValue) {
      _ParseSeeds(argv[++i], options);
    } else if (arg == "--epochs" && hasValue) {
      options.epochs = std::stoi(argv[++i]);
      options.epochsGiven = true;
    } else if (arg == "--rate" && hasValue) {
      options.rate = std::stod(argv[++i]);
    } else if (arg == "--final-rate" && hasValue) {
      options.finalRate = std::stod(argv[++i]);
    } else if (arg == "--momentum" && hasValue) {
      options.momentum = std::stod(argv[++i]);
    } else if (arg == "--close-weight" && hasValue) {
      options.closeWeight = std::max(1, std::stoi(argv[++i]));
    } else if (arg == "--undoubled-weight" && hasValue) {
      options.undoubledWeight = std::max(1, std::stoi(argv[++i]));
    } else if (arg == "--fine-epochs" && hasValue) {
      options.fineEpochs = std::stoi(argv[++i]);
    } else if (arg == "--fine-close-weight" && hasValue) {
      options.fineCloseWeight = std::max(1, std::stoi(argv[++i]));
    } else if (arg == "--fine-rate" && hasValue) {
      options.fineRate = std::stod(argv[++i]);
    } else if (arg == "--start" && hasValue) {
      options.start = argv[++i];
    } else if (arg == "--score") {
      options.score = true;
    } else if (arg == "--root" && hasValue) {
      options.root = argv[++i];
    } else if (arg == "--train-broad" && hasValue) {
      options.playedWeight = std::max(1, std::stoi(argv[++i]));
    } else if (arg == "--broad") {
      options.broad = true;
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

std::vector<TRootPattern> _Close(const std::vector<TRootPattern>& patterns) {
  std::vector<TRootPattern> close;
  std::copy_if(patterns.begin(), patterns.end(), std::back_inserter(close),
               [](const TRootPattern& pattern) { return pattern.close; });
  return close;
}

// The voicings that decide which epoch and which seed are taken. The close voicings come
// first: they are how chords are written and played most, and a net that misnames one of them
// is no use whatever its accuracy elsewhere. They are trained on; the validation voicings,
// which break ties among nets that name every close voicing, never are.
struct TSelection {
  std::vector<training_pattern> close;
  std::vector<training_pattern> validation;
};

struct TScore {
  std::size_t closeMisses = 0;
  std::size_t validationMisses = 0;
  double validationError = 0.0;  // breaks ties between nets that miss as many
};

bool _Better(const TScore& a, const TScore& b) {
  if (a.closeMisses != b.closeMisses) return a.closeMisses < b.closeMisses;
  if (a.validationMisses != b.validationMisses) return a.validationMisses < b.validationMisses;
  return a.validationError < b.validationError;
}

// The summed squared distance of the net's outputs from the one-hot targets.
double _SquaredError(NeuronalNet& net, const std::vector<training_pattern>& patterns) {
  double sum = 0.0;
  for (const training_pattern& pattern : patterns) {
    net.use(pattern.mInputs);
    const std::vector<double> outputs = net.get_outputs();
    for (std::size_t i = 0; i < outputs.size(); ++i) {
      sum += (outputs[i] - pattern.mOutputs[i]) * (outputs[i] - pattern.mOutputs[i]);
    }
  }
  return sum;
}

TScore _Score(NeuronalNet& net, const TSelection& selection) {
  return {net.batch_verify(selection.close).size(), net.batch_verify(selection.validation).size(),
          _SquaredError(net, selection.validation)};
}

double _Percent(std::size_t misses, std::size_t count) {
  return count == 0 ? 0.0 : 100.0 * static_cast<double>(count - misses) / count;
}

// The patterns of one epoch, each as often as its weight: the voicings players use most
// (close, then the others without doubled keys) pull harder than the doubled ones, which
// outnumber them many times.
std::vector<std::size_t> _WeightedOrder(const std::vector<TRootPattern>& patterns,
                                        const TOptions& options) {
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < patterns.size(); ++i) {
    const int weight = patterns[i].close                                ? options.closeWeight
                       : patterns[i].played && options.playedWeight > 0 ? options.playedWeight
                       : patterns[i].undoubled                          ? options.undoubledWeight
                                                                        : 1;
    order.insert(order.end(), static_cast<std::size_t>(weight), i);
  }
  return order;
}

struct TTrained {
  NeuronalNet net;
  std::uint32_t seed = 0;
  int epoch = 0;  // the epoch after which the net was taken
  double error = 0.0;
  TScore score;
};

// Per-pattern back-propagation from `net` for `epochs` epochs, the rate falling geometrically
// from `rate` to `finalRate`, each epoch in the order `nextOrder()` gives. The net is taken from
// the epoch that scores best on the selection voicings, the earliest of equals; the net it
// starts from competes as epoch 0.
template <class NextOrder>
TTrained _Epochs(const char* phase, TTrained start, int epochs, double rate, double finalRate,
                 std::vector<training_pattern>& patterns, NextOrder nextOrder,
                 const TSelection& selection) {
  NeuronalNet net = start.net;
  start.epoch = 0;
  start.score = _Score(net, selection);
  TTrained best = start;
  const double decay = std::pow(finalRate / rate, 1.0 / std::max(1, epochs - 1));
  for (int epoch = 1; epoch <= epochs; ++epoch, rate *= decay) {
    for (training_pattern& pattern : patterns) pattern.mLearningRate = rate;
    const std::vector<std::size_t>& order = nextOrder();
    double sum = 0.0;
    for (std::size_t index : order) sum += net.train(patterns[index]);
    const double mean = sum / static_cast<double>(order.size());
    const TScore score = _Score(net, selection);
    if (_Better(score, best.score)) best = {net, start.seed, epoch, mean, score};
    if (epoch % 50 == 0 || epoch == epochs) {
      std::printf("%s seed %u epoch %4d  rate %.5f  error %.4f  close %.2f%%  validation %.2f%%\n",
                  phase, start.seed, epoch, rate, mean,
                  _Percent(score.closeMisses, selection.close.size()),
                  _Percent(score.validationMisses, selection.validation.size()));
    }
  }
  std::printf("%s seed %u: taken from epoch %d, close voicings missed %zu, validation %.2f%%\n",
              phase, start.seed, best.epoch, best.score.closeMisses,
              _Percent(best.score.validationMisses, selection.validation.size()));
  return best;
}

// The main run from a random start, or from `from` if given; the start and the order of each
// epoch come from the seed.
TTrained _Train(std::uint32_t seed, const std::optional<NeuronalNet>& from,
                std::vector<training_pattern>& patterns, std::vector<std::size_t> order,
                const TSelection& selection, const TOptions& options) {
  platform::SeedRandom(seed);
  NeuronalNet net = from ? *from : _NewNet();
  _CheckLayout(net);
  net.set_momentum_amount(options.momentum);
  std::mt19937 generator(seed);
  const auto nextOrder = [&]() -> const std::vector<std::size_t>& {
    std::shuffle(order.begin(), order.end(), generator);
    return order;
  };
  return _Epochs("train", {net, seed, 0, 0.0, {}}, options.epochs, options.rate, options.finalRate,
                 patterns, nextOrder, selection);
}

// Refines a net at a small, steady rate on the voicings without doubled keys (a close one
// --fine-close-weight times), each epoch joined by as many doubled ones drawn afresh so that those
// are not forgotten.
TTrained _FineTune(const TTrained& from, const std::vector<TRootPattern>& sets,
                   std::vector<training_pattern>& patterns, const TSelection& selection,
                   const TOptions& options) {
  std::vector<std::size_t> focus;
  std::vector<std::size_t> rest;
  for (std::size_t i = 0; i < sets.size(); ++i) {
    if (!sets[i].undoubled) {
      rest.push_back(i);
    } else {
      focus.insert(focus.end(),
                   sets[i].close ? static_cast<std::size_t>(options.fineCloseWeight) : 1, i);
    }
  }
  std::mt19937 generator(from.seed);
  std::vector<std::size_t> order;
  const auto nextOrder = [&]() -> const std::vector<std::size_t>& {
    order = focus;
    std::sample(rest.begin(), rest.end(), std::back_inserter(order),
                std::min(focus.size(), rest.size()), generator);
    std::shuffle(order.begin(), order.end(), generator);
    return order;
  };
  TTrained tuned = _Epochs("fine-tune", from, options.fineEpochs, options.fineRate,
                           options.fineRate, patterns, nextOrder, selection);
  if (tuned.epoch == 0) return from;
  tuned.epoch = from.epoch < 0 ? -1 : from.epoch + tuned.epoch;
  return tuned;
}

std::uint32_t _Folded(std::uint32_t mask) { return (mask | (mask >> 12)) & 0xfffu; }

// The held-out and the close voicings the net names wrongly, with what training teaches about the
// same keys above the same lowest note in other voicings.
void _PrintMisses(NeuronalNet& net, const TPatternSets& sets) {
  std::map<std::uint32_t, std::set<int>> trainedRoots;
  for (const TRootPattern& pattern : sets.training) {
    trainedRoots[_Folded(pattern.intvlMask)].insert(pattern.rootDist);
  }
  int unknown = 0;
  int contradicted = 0;
  int missed = 0;
  std::vector<TRootPattern> checked = sets.heldOut;
  for (const TRootPattern& pattern : sets.training) {
    if (pattern.close) checked.push_back(pattern);
  }
  for (const TRootPattern& pattern : checked) {
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
    std::printf("%s: %-40s [%s ] root %d, net %d; %s\n", pattern.close ? "close miss" : "miss",
                pattern.name.c_str(), intvls.c_str(), pattern.rootDist, net.winner(),
                taught.c_str());
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

// The net as the library will hold it: weights of six significant digits.
NeuronalNet _Rounded(const NeuronalNet& net) {
  NeuronalNet rounded = _NewNet();
  NeuronalNet copy = net;
  const std::vector<double> weights = _RoundedWeights(copy);
  TPredefinedWeights record = copy.get_weights();
  delete[] record.mWeights;
  record.mWeights = weights.data();
  if (!rounded.acquire_weights(record)) throw std::runtime_error("the rounded table doesn't fit");
  return rounded;
}

NeuronalNet _FromFile(const std::string& path) {
  if (!std::ifstream(path)) throw std::runtime_error("can't read " + path);
  NeuronalNet net = _NewNet();
  net.load_weights_from_file(path);
  return net;
}

void _PrintFigures(NeuronalNet& net, const TPatternSets& sets,
                   const std::vector<training_pattern>& training,
                   const std::vector<training_pattern>& heldOut, const TSelection& selection,
                   bool misses) {
  std::printf("net:   training %.2f%%, validation %.2f%%, held out %.2f%%, close voicings %.2f%%\n",
              _NetAccuracy(net, training), _NetAccuracy(net, selection.validation),
              _NetAccuracy(net, heldOut), _NetAccuracy(net, selection.close));
  std::printf("table: training %.2f%%, validation %.2f%%, held out %.2f%%, close voicings %.2f%%\n",
              _TableAccuracy(sets.training), _TableAccuracy(sets.validation),
              _TableAccuracy(sets.heldOut), _TableAccuracy(_Close(sets.training)));
  if (misses) _PrintMisses(net, sets);
}

int _Run(const TOptions& options) {
  const TPatternSets sets =
      BuildPatternSets(options.broad ? TVoicingSet::kBroad : TVoicingSet::kPlayed);
  std::printf("%d shapes, %d note sets; voicings: %zu training, %zu validation, %zu held out\n",
              sets.shapeCount, sets.noteSetCount, sets.training.size(), sets.validation.size(),
              sets.heldOut.size());
  const std::vector<training_pattern> training = _Training(sets.training, options.rate);
  // The voicings trained on: those of the set scored, or with --train-broad every voicing of the
  // broad training set, whose split by voicing keeps it apart from the validation and held-out
  // voicings of the narrow set.
  const std::vector<TRootPattern> trainSet =
      options.playedWeight > 0 ? BuildPatternSets(TVoicingSet::kBroad).training : sets.training;
  std::vector<training_pattern> trainPatterns = _Training(trainSet, options.rate);
  const std::vector<training_pattern> validation = _Training(sets.validation, options.rate);
  const std::vector<training_pattern> heldOut = _Training(sets.heldOut, options.rate);
  std::vector<training_pattern> all = trainPatterns;
  all.insert(all.end(), validation.begin(), validation.end());
  all.insert(all.end(), heldOut.begin(), heldOut.end());
  if (NeuronalNet::check_learn_data_for_duplicates(all)) return 1;
  std::printf("pattern sets are consistent\n");

  TSelection selection{_Training(_Close(sets.training), options.rate), validation};
  if (options.score) {
    NeuronalNet library(ChordAnalysisNeuronalNet);
    std::printf("the library's table\n");
    _PrintFigures(library, sets, training, heldOut, selection, options.misses);
    return 0;
  }
  std::optional<TTrained> trained;
  std::optional<NeuronalNet> from;
  if (!options.start.empty()) from = _FromFile(options.start);
  if (from && !options.epochsGiven) {
    trained = TTrained{*from, options.firstSeed, -1, 0.0, {}};
    trained->net.set_momentum_amount(options.momentum);
    trained->score = _Score(trained->net, selection);
  } else {
    const std::vector<std::size_t> order = _WeightedOrder(trainSet, options);
    for (std::uint32_t seed = options.firstSeed;; ++seed) {
      TTrained candidate = _Train(seed, from, trainPatterns, order, selection, options);
      if (!trained || _Better(candidate.score, trained->score)) trained = std::move(candidate);
      if (seed == options.lastSeed) break;
    }
  }
  if (options.fineEpochs > 0) {
    trained = _FineTune(*trained, trainSet, trainPatterns, selection, options);
  }
  std::printf("taken: seed %u, epoch %d\n", trained->seed, trained->epoch);

  NeuronalNet rounded = _Rounded(trained->net);
  _PrintFigures(rounded, sets, training, heldOut, selection, options.misses);
  if (options.dryRun) return 0;
  _WriteFile(options.root + "/src/net/ChordAnalysisWeights.cpp", _CSource(rounded));
  _WriteFile(options.root + "/data/net/ChordAnalysisNet.txt",
             _WithoutDateLine(rounded.weights_to_text(4, trained->error, trained->epoch, {})));
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
