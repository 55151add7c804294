// Generation: a walk with back-off that leaves histories whose continuation is too certain,
// a recursive search with a blocklist that hits the required length and the template's fixed
// chords exactly, and the sampling of many candidates of which one is chosen by weight.

#include <algorithm>
#include <cmath>
#include <numeric>

#include "MarkovDraw.h"
#include "harmony/markov/VariableLengthMarkovModel.h"
#include "platform/Clock.h"

namespace harmony {

namespace {

// A sample that misses the required length sinks below the acceptance bound.
constexpr double kMisfitPenalty = 750.0;
constexpr double kAcceptedLogWeight = -700.0;
// Every step adds a positive length, so a sane search never goes this deep; the bound only
// keeps a damaged model (objects without length) from exhausting the stack.
constexpr unsigned kMaxSearchDepth = 2048;
constexpr double kEntropyGuard = 0.00001;

TMarkovProbabilities::iterator FindEnd(TMarkovProbabilities& probabilities) {
  return std::find_if(probabilities.begin(), probabilities.end(),
                      [](const auto& entry) { return entry.first->IsEnd(); });
}

}  // namespace

void VariableLengthMarkovModel::AppendNextSymbol(TMarkovSampledSequence& sequence,
                                                 const TMarkovHistory& history,
                                                 const TMarkovGenerateOptions& options) {
  TMarkovHistory current = history;
  TMarkovProbabilities probabilities = _EmptyProbabilities();
  for (;;) {
    ProbabilitiesForNextSymbol(current, probabilities);
    // The end is not chosen here; a history of one that leads only to the end ends it.
    if (const auto end = FindEnd(probabilities); end != probabilities.end()) {
      end->second = 0.0;
      if (probabilities.size() == 1 && current.size() == 1) {
        sequence.Append({0.0, 0.0, 0.0, 1, end->first});
        return;
      }
    }
    const double entropy = CalculateEntropy(probabilities);
    const double maxEntropy = std::log(static_cast<double>(probabilities.size()));
    const bool tooCertain =
        current.size() > 1 &&
        (!(maxEntropy > 0.0) || entropy < maxEntropy * options.MinNormalizedEntropy);
    if (probabilities.empty() || tooCertain) {
      // Back off to the history one shorter; an empty history knows nothing.
      if (current.empty()) return;
      current.erase(current.begin());
      continue;
    }
    const TMarkovSymbol chosen = ChooseFromProbabilities(probabilities);
    if (IsNull(chosen)) return;
    sequence.Append({probabilities.find(chosen)->second, entropy / maxEntropy, maxEntropy,
                     current.size(), chosen});
    return;
  }
}

void VariableLengthMarkovModel::GenerateSequenceWithFixedLength(
    unsigned long historyLength, TMarkovSampledSequence& sequence,
    const TMarkovGenerateOptions& options) {
  ValidateHistoryLength(historyLength);
  QueryStartSequence();
  const double total = options.TotalLength();
  double generated = 0.0;
  TMarkovHistory history;
  while (generated < total) {
    const std::size_t before = sequence.size();
    Subvector(historyLength, sequence.Objects, history);
    AppendNextSymbol(sequence, history, options);
    // Where the model knows no continuation the sequence stops growing; an object without
    // length (only a damaged model holds one) would keep the walk where it is.
    if (sequence.size() == before || !(sequence.Objects.back()->Length() > 0.0)) break;
    generated = MarkovTruncatedBeats(generated + sequence.Objects.back()->Length());
  }
  if (generated != total && !sequence.empty()) sequence.LogWeight -= kMisfitPenalty;
  if (sequence.AllElementsAreEqual()) sequence.LogWeight += std::log(options.AllEqualFactor);
  // The end test reads the history QueryStartSequence left, which the walk doesn't extend.
  TMarkovProbabilities probabilities = _EmptyProbabilities();
  for (unsigned long n = historyLength; n >= 1; --n) {
    Subvector(n, _History, history);
    ProbabilitiesForNextSymbol(history, probabilities);
    if (const auto end = FindEnd(probabilities); end != probabilities.end()) {
      sequence.LogWeight += std::log(end->second);
      break;
    }
  }
}

void VariableLengthMarkovModel::GenerateSequenceWithFixedLength(
    TMarkovSampledSequence& sequence, const TMarkovGenerateOptions& options) {
  GenerateSequenceWithFixedLength(options.MaxHistory, sequence, options);
}

bool VariableLengthMarkovModel::AppendNextFittingSymbol(TMarkovSampledSequence& sequence,
                                                        double remaining,
                                                        const TMarkovSymbolSet& excluded,
                                                        const TMarkovGenerateOptions& options,
                                                        TMarkovSamplingInformation& /*unused*/,
                                                        unsigned long limit) {
  TMarkovHistory history;
  TMarkovProbabilities probabilities = _EmptyProbabilities();
  for (unsigned long length = limit;; --length) {
    // The entropy is that of all candidates; the excluded and those that don't fit are then
    // taken out.
    Subvector(length, sequence.Objects, history);
    const TMarkovCounts* counts = _CountsAfter(history);
    double entropy = 0.0;
    double maxEntropy = 0.0;
    _EntropyOfCounts(counts, entropy, maxEntropy);
    _FittingProbabilities(counts, remaining, excluded, probabilities);
    const bool tooCertain = entropy / (maxEntropy + kEntropyGuard) < options.MinNormalizedEntropy;
    if (length <= options.MinHistory) {
      if (probabilities.empty() || (tooCertain && !options.AcceptLowEntropy)) return false;
    } else {
      // A certain history may stay when its longest candidate exactly fills what remains.
      const bool exactFit =
          options.StopBackOffAtExactFit &&
          static_cast<double>(GetMaxLengthFromProbabilities(probabilities)) == remaining;
      if (probabilities.empty()) {
        if (exactFit) return false;
        continue;
      }
      if (tooCertain && !exactFit) continue;
    }
    const TMarkovSymbol chosen = ChooseFromProbabilities(probabilities);
    if (IsNull(chosen)) return false;
    sequence.Append(
        {probabilities.find(chosen)->second, entropy / maxEntropy, maxEntropy, length, chosen});
    return true;
  }
}

bool VariableLengthMarkovModel::RecursiveGenerateSequence(TMarkovSampledSequence& sequence,
                                                          const TMarkovGenerateOptions& options,
                                                          TMarkovSamplingInformation& information) {
  return _RecursiveGenerateSequence(sequence, options, information, 0);
}

bool VariableLengthMarkovModel::_RecursiveGenerateSequence(TMarkovSampledSequence& sequence,
                                                           const TMarkovGenerateOptions& options,
                                                           TMarkovSamplingInformation& information,
                                                           unsigned depth) {
  const double position = sequence.LengthInBeats();
  // The search runs from fixed object to fixed object of the template.
  TMarkovSymbol target = NullSymbol();
  double remaining = 0.0;
  NextGivenObjectAndDistance(target, remaining, options.Objects, position);
  information.Log(static_cast<std::int32_t>(sequence.size()), position, remaining);
  if (depth > kMaxSearchDepth) return false;

  TMarkovHistory history;
  Subvector(options.MaxHistory, sequence.Objects, history);
  if (information.IsBlocklisted(position, history)) return false;
  if (remaining < 0.0) return false;

  if (remaining > 0.0) {
    TMarkovSymbolSet excluded(SymbolLess());
    for (;;) {
      if (!AppendNextFittingSymbol(sequence, remaining, excluded, options, information,
                                   options.MaxHistory)) {
        information.AddToBlocklist(position, history);
        return false;
      }
      if (_RecursiveGenerateSequence(sequence, options, information, depth + 1)) return true;
      excluded.insert(sequence.Objects.back());
      sequence.PopBack();
    }
  }

  // The fixed object must follow here, after the longest history that knows it.
  TMarkovHistory window;
  const TMarkovCounts* counts = nullptr;
  TMarkovCounts::const_iterator found;
  unsigned long length = options.MaxHistory;
  for (;; --length) {
    Subvector(length, sequence.Objects, window);
    counts = _CountsAfter(window);
    if (counts != nullptr && !IsNull(target)) {
      found = counts->find(target);
      if (found != counts->end()) break;
    }
    counts = nullptr;
    if (length <= options.EvidenceHistory) break;
  }
  if (counts == nullptr) {
    information.AddToBlocklist(position, history);
    return false;
  }
  if (target->IsEnd()) {
    CalculateEvidenceProbability(sequence, options);
    return true;
  }
  double entropy = 0.0;
  double maxEntropy = 0.0;
  _EntropyOfCounts(counts, entropy, maxEntropy);
  sequence.Append(
      {_ShareOfTotal(*counts, found->second), entropy / maxEntropy, maxEntropy, length, target});
  if (_RecursiveGenerateSequence(sequence, options, information, depth + 1)) return true;
  sequence.PopBack();
  information.AddToBlocklist(position, history);
  return false;
}

void VariableLengthMarkovModel::NormalizeLogProbabilities(TMarkovWeightedSequences& sequences) {
  constexpr double kStart = -2147483647.0;
  double largest = kStart;
  for (const auto& [sequence, value] : sequences) largest = std::max(largest, value);
  if (!(largest > kStart)) return;
  for (auto& [sequence, value] : sequences) value = std::exp(value - largest);
}

double VariableLengthMarkovModel::SumProbabilities(const TMarkovWeightedSequences& sequences) {
  double sum = 0.0;
  for (const auto& [sequence, value] : sequences) sum += value;
  return sum;
}

void VariableLengthMarkovModel::ChooseFromWeightedSequences(
    const TMarkovWeightedSequences& sequences, TMarkovSampledSequence& result) {
  const double threshold = SumProbabilities(sequences) * markov_detail::DrawUnit();
  double running = 0.0;
  for (const auto& [sequence, weight] : sequences) {
    running += weight;
    if (running > threshold) {
      result = sequence;
      return;
    }
  }
}

void VariableLengthMarkovModel::SampleSequenceWithLength(
    TMarkovSampledSequence& result, std::vector<TMarkovSampledSequence>& allSequences,
    bool recursive, TMarkovGenerateOptions options) {
  if (!options.IsValid(*this) || !(options.TotalLength() > 0.0)) return;
  // The draws come from the platform's source, which a caller seeds for repeatable runs;
  // the C library's own generator is used by nothing here, so it isn't seeded.
  result = TMarkovSampledSequence();
  allSequences.clear();
  _LastSamplingRun = TMarkovSamplingRun();
  TMarkovWeightedSequences candidates;
  TMarkovSamplingInformation information(&_Objects);
  TMarkovHistory startHistory;
  Subvector(options.MaxHistory, {}, startHistory);

  std::uint64_t tries = 0;
  for (; _LastSamplingRun.Accepted < options.SampleCount && tries < options.MaxTries; ++tries) {
    TMarkovSampledSequence sequence;
    if (recursive) {
      const std::uint64_t start = platform::MonotonicTicks();
      RecursiveGenerateSequence(sequence, options, information);
      _LastSamplingRun.Durations.push_back(static_cast<double>(platform::MonotonicTicks() - start) *
                                           1.0e-9);
      information.Clear(false);
      // Once the very start has failed, every further try fails at once, as the blocklist
      // is kept for the whole run: the result can't change, so the run ends here.
      if (sequence.empty() && information.Blocklist.count({0.0, startHistory}) != 0) {
        ++tries;
        break;
      }
    } else {
      GenerateSequenceWithFixedLength(options.MaxHistory, sequence, options);
    }
    if (!(sequence.LogWeight > kAcceptedLogWeight) || sequence.empty()) continue;
    _LastSamplingRun.LogProbabilitySums.push_back(
        std::accumulate(sequence.LogProbabilities.begin(), sequence.LogProbabilities.end(), 0.0));
    ++_LastSamplingRun.Accepted;
    const auto sameObjects = [&sequence](const TMarkovSampledSequence& other) {
      return MarkovSameObjects(other.Objects, sequence.Objects);
    };
    const auto known = std::find_if(candidates.begin(), candidates.end(),
                                    [&](const auto& entry) { return sameObjects(entry.first); });
    if (known != candidates.end()) {
      ++known->first.Count;
      ++std::find_if(allSequences.begin(), allSequences.end(), sameObjects)->Count;
      continue;
    }
    candidates.emplace_back(sequence, sequence.LogWeight);
    allSequences.push_back(sequence);
  }
  _LastSamplingRun.Tries = tries;
  NormalizeLogProbabilities(candidates);
  ChooseFromWeightedSequences(candidates, result);
  std::sort(allSequences.begin(), allSequences.end(), CompareSequencesByWeightAndEntropy);
}

}  // namespace harmony
