// Judging a sequence instead of extending it: the chord proposed for a gap between fixed
// chords, and the evidence of how well a finished sequence joins what the model learned.

#include <algorithm>
#include <cmath>

#include "MarkovDraw.h"
#include "harmony/markov/VariableLengthMarkovModel.h"
#include "platform/Log.h"

namespace harmony {

namespace {

std::size_t FirstGapIndex(const TMarkovHistory& sequence) {
  const auto gap = std::find_if(sequence.begin(), sequence.end(),
                                [](TMarkovSymbol symbol) { return symbol->IsGap(); });
  return gap == sequence.end() ? 0 : static_cast<std::size_t>(gap - sequence.begin());
}

}  // namespace

TMarkovSymbol VariableLengthMarkovModel::FillGapInSequence(TMarkovHistory sequence) {
  StartSequence();
  if (sequence.empty()) return NullSymbol();
  const TMarkovHistory starts = _History;
  const std::size_t max = _MaxHistoryLength;
  const std::size_t gapIndex = FirstGapIndex(sequence);
  const std::size_t first = gapIndex > max ? gapIndex - max : 0;
  const CMarkovObject defaultGap = CMarkovObject::Gap();
  const TMarkovSymbol gap = _Objects.insertObjectIfUnique(defaultGap);
  const auto entry = [&](std::size_t index) {
    return index < sequence.size() ? *sequence[index] : CMarkovObject::End();
  };

  TMarkovProbabilities scores = _EmptyProbabilities();
  TMarkovProbabilities probabilities = _EmptyProbabilities();
  for (auto candidate = _Objects.begin(); candidate != _Objects.end(); ++candidate) {
    if (candidate->IsStart() || *candidate == defaultGap) continue;
    // The history of the entries before the gap; a short sequence keeps start symbols in
    // front, as after the start of a sequence.
    _History = starts;
    for (std::size_t i = first; i < first + max && i < sequence.size(); ++i) {
      QueryAddSymbol(*sequence[i]);
    }
    sequence[gapIndex] = gap;
    ProbabilitiesForNextSymbol(_History, probabilities);
    const auto found = probabilities.find(candidate);
    double score = found != probabilities.end() ? found->second : 0.0;
    // The walk behind the gap holds the gap symbol, never the candidate, so it adds the same
    // to every candidate: the choice rests on what comes before the gap.
    for (std::size_t i = first + max; i < max + gapIndex; ++i) {
      QueryAddSymbol(entry(i));
      ProbabilitiesForNextSymbol(_History, probabilities);
      const auto next = probabilities.find(_Objects.insertObjectIfUnique(entry(i + 1)));
      if (next != probabilities.end()) score += next->second;
    }
    scores.emplace(candidate, score);
  }

  const double threshold = markov_detail::DrawUnit() * SumProbabilities(scores);
  double running = 0.0;
  for (const auto& [candidate, score] : scores) {
    running += score;
    if (running > threshold) return candidate;
  }
  return NullSymbol();
}

double VariableLengthMarkovModel::_EvidenceOfWindow(const TMarkovHistory& window,
                                                    TMarkovSymbol next) const {
  const auto entry = _TransitionMap.find(window);
  TMarkovProbabilities probabilities = _EmptyProbabilities();
  if (entry == _TransitionMap.end()) {
    platform::LogLine("");
  } else {
    _ProbabilitiesFromCounts(entry->second, probabilities);
  }
  const auto found = IsNull(next) ? probabilities.end() : probabilities.find(next);
  return found != probabilities.end() ? std::log(found->second) : kMarkovUnseenLogProbability;
}

void VariableLengthMarkovModel::CalculateEvidenceProbability(
    TMarkovSampledSequence& sequence, const TMarkovGenerateOptions& options) {
  const long historyLength = static_cast<long>(options.EvidenceHistory);
  if (sequence.AllElementsAreEqual()) sequence.LogWeight += std::log(options.AllEqualFactor);

  // The places of the template's fixed objects, and its end.
  std::vector<double> fixedBeats;
  std::vector<long> fixedIndices;
  double beat = 0.0;
  long index = 0;
  for (const TMarkovSymbol& object : options.Objects) {
    if (!object->IsGap()) {
      fixedBeats.push_back(beat);
      fixedIndices.push_back(index);
    }
    beat = MarkovTruncatedBeats(beat + object->Length());
    ++index;
  }
  fixedBeats.push_back(beat);
  std::sort(fixedBeats.begin(), fixedBeats.end());

  const TMarkovSymbol end = _Objects.getIteratorToObject(CMarkovObject::End());
  const TMarkovSymbol start = _Objects.getIteratorToObject(CMarkovObject::Start());
  const long count = static_cast<long>(sequence.SampledObjects.size());
  const long size = static_cast<long>(sequence.Objects.size());
  const auto at = [&](long i) { return i < size ? sequence.Objects[i] : end; };
  TMarkovHistory window;
  beat = 0.0;
  for (long i = 0; i <= count; ++i) {
    const TMarkovSymbol current = i == count ? end : at(i);
    const bool currentIsEnd = IsNull(current) || current->IsEnd();
    if (std::binary_search(fixedBeats.begin(), fixedBeats.end(), beat)) {
      // Every window of the evidence length that reaches this fixed place.
      for (long k = i - historyLength; k <= (currentIsEnd ? i - 1 : i); ++k) {
        window.clear();
        std::uint64_t known = 0;
        for (long j = k; j < k + historyLength; ++j) {
          if (j < 0) {
            window.push_back(start);
            ++known;
          } else {
            window.push_back(at(j));
            if (j < size && std::binary_search(fixedIndices.begin(), fixedIndices.end(), j)) {
              ++known;
            }
          }
        }
        // The count is held against the longest history, not the evidence length.
        if (known == options.MaxHistory) continue;
        sequence.LogWeight += _EvidenceOfWindow(window, at(k + historyLength));
      }
    }
    if (!IsNull(current)) beat = MarkovTruncatedBeats(beat + current->Length());
  }
}

}  // namespace harmony
