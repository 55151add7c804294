// Learning and querying: the transition map, the history, and the operations on the
// probability maps that generation and evidence share.

#include "harmony/markov/VariableLengthMarkovModel.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "MarkovDraw.h"
#include "platform/TraceOut.h"

namespace harmony {

VariableLengthMarkovModel::VariableLengthMarkovModel(std::uint64_t maxHistoryLength)
    : _TransitionMap(HistoryLess()), _MaxHistoryLength(maxHistoryLength) {}

void VariableLengthMarkovModel::Clear() {
  _TransitionMap.clear();
  _History.clear();
  _QueryList.clear();
  _Objects.clear();
}

namespace {

bool SameObjectOrBothNone(CMarkovObjects::const_iterator a, const CMarkovObjects& aObjects,
                          CMarkovObjects::const_iterator b, const CMarkovObjects& bObjects) {
  const bool aNone = a == aObjects.end();
  const bool bNone = b == bObjects.end();
  if (aNone || bNone) return aNone && bNone;
  return *a == *b;
}

bool SameHistories(const TMarkovHistory& a, const CMarkovObjects& aObjects, const TMarkovHistory& b,
                   const CMarkovObjects& bObjects) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!SameObjectOrBothNone(a[i], aObjects, b[i], bObjects)) return false;
  }
  return true;
}

// The alphabet a symbol of a map points into: the one of the map's comparator.
const CMarkovObjects& AlphabetOf(const TMarkovTransitionMap& map) {
  static const CMarkovObjects kNone;
  const CMarkovObjects* objects = map.key_comp().Symbols.Objects;
  return objects != nullptr ? *objects : kNone;
}

}  // namespace

bool VariableLengthMarkovModel::CompareMaps(const TMarkovTransitionMap& a,
                                            const TMarkovTransitionMap& b) {
  if (a.size() != b.size()) return false;
  const CMarkovObjects& aObjects = AlphabetOf(a);
  const CMarkovObjects& bObjects = AlphabetOf(b);
  for (auto ait = a.begin(), bit = b.begin(); ait != a.end(); ++ait, ++bit) {
    if (!SameHistories(ait->first, aObjects, bit->first, bObjects)) return false;
    if (ait->second.size() != bit->second.size()) return false;
    for (auto ac = ait->second.begin(), bc = bit->second.begin(); ac != ait->second.end();
         ++ac, ++bc) {
      if (ac->second != bc->second) return false;
      if (!SameObjectOrBothNone(ac->first, aObjects, bc->first, bObjects)) return false;
    }
  }
  return true;
}

bool VariableLengthMarkovModel::operator==(const VariableLengthMarkovModel& other) const {
  return std::equal(_Objects.begin(), _Objects.end(), other._Objects.begin(),
                    other._Objects.end()) &&
         CompareMaps(_TransitionMap, other._TransitionMap) &&
         _MaxHistoryLength == other._MaxHistoryLength &&
         SameHistories(_History, _Objects, other._History, other._Objects);
}

// --- Learning

void VariableLengthMarkovModel::StartSequence() {
  _History.clear();
  for (std::uint64_t i = 0; i < _MaxHistoryLength; ++i) {
    _History.push_back(_Objects.insertObjectIfUnique(CMarkovObject::Start()));
  }
}

void VariableLengthMarkovModel::_MapAddToOrInsert(const TMarkovHistory& history,
                                                  TMarkovSymbol next) {
  auto entry = _TransitionMap.find(history);
  if (entry == _TransitionMap.end()) {
    entry = _TransitionMap.emplace(history, TMarkovCounts(SymbolLess())).first;
  }
  ++entry->second[next];
}

void VariableLengthMarkovModel::_PushHistory(TMarkovSymbol symbol) {
  _History.push_back(symbol);
  _History.erase(_History.begin());
}

void VariableLengthMarkovModel::LearnAddSymbol(const CMarkovObject& object) {
  const TMarkovSymbol symbol = _Objects.insertObjectIfUnique(object);
  TMarkovHistory key;
  for (std::uint64_t i = 0; i < _MaxHistoryLength; ++i) {
    const unsigned long n = std::max<unsigned long>(_MaxHistoryLength - i, 1);
    Subvector(n, _History, key);
    _MapAddToOrInsert(key, symbol);
  }
  _PushHistory(symbol);
}

void VariableLengthMarkovModel::EndSequence() {
  // As many end symbols as the longest history: the end is learned after histories that
  // end in end symbols too, and the history is flushed.
  for (std::uint64_t i = 0; i < _MaxHistoryLength; ++i) LearnAddSymbol(CMarkovObject::End());
}

// --- Queries

void VariableLengthMarkovModel::QueryStartSequence() {
  StartSequence();
  _QueryList = _History;
}

void VariableLengthMarkovModel::QueryAddSymbol(const CMarkovObject& object) {
  const TMarkovSymbol symbol = _Objects.insertObjectIfUnique(object);
  _PushHistory(symbol);
  _QueryList.push_back(symbol);
}

void VariableLengthMarkovModel::QueryRemoveLastItem() {
  if (_History.empty() || _QueryList.empty()) return;
  _History.pop_back();
  _QueryList.pop_back();
  // The entry that the last add pushed out comes back at the front.
  if (_QueryList.size() > _History.size()) {
    _History.insert(_History.begin(), _QueryList[_QueryList.size() - _History.size() - 1]);
  }
}

void VariableLengthMarkovModel::TransitionFrequenciesForNextSymbol(TMarkovCounts& out) const {
  out = TMarkovCounts(SymbolLess());
  const auto entry = _TransitionMap.find(_History);
  if (entry != _TransitionMap.end()) out = entry->second;
}

void VariableLengthMarkovModel::TransitionFrequenciesForNextSymbol(unsigned long historyLength,
                                                                   TMarkovCounts& out) {
  out = TMarkovCounts(SymbolLess());
  TMarkovHistory history;
  HistorySubvector(historyLength, history);
  const auto entry = _TransitionMap.find(history);
  if (entry != _TransitionMap.end()) out = entry->second;
}

namespace {

// The share of each count in the total taken as a 32-bit signed number, as the probability
// maps hold it.
double ShareOfTotal(std::uint64_t count, std::int32_t total) {
  return static_cast<double>(count) / static_cast<double>(total);
}

std::int32_t TotalOf(const TMarkovCounts& counts) {
  std::uint64_t sum = 0;
  for (const auto& [symbol, count] : counts) sum += count;
  return static_cast<std::int32_t>(sum);
}

}  // namespace

void VariableLengthMarkovModel::_ProbabilitiesFromCounts(const TMarkovCounts& counts,
                                                         TMarkovProbabilities& out) const {
  const std::int32_t total = TotalOf(counts);
  for (const auto& [symbol, count] : counts) {
    // A symbol outside the alphabet (a damaged file) can't be chosen either.
    if (IsNull(symbol) || symbol->IsStart()) continue;
    // The counts come in the map's own order, so each entry goes in at the end.
    out.emplace_hint(out.end(), symbol, ShareOfTotal(count, total));
  }
}

double VariableLengthMarkovModel::_ShareOfTotal(const TMarkovCounts& counts, std::uint64_t count) {
  return ShareOfTotal(count, TotalOf(counts));
}

const TMarkovCounts* VariableLengthMarkovModel::_CountsAfter(const TMarkovHistory& history) const {
  const auto entry = _TransitionMap.find(history);
  return entry == _TransitionMap.end() ? nullptr : &entry->second;
}

void VariableLengthMarkovModel::_EntropyOfCounts(const TMarkovCounts* counts, double& entropy,
                                                 double& maxEntropy) const {
  // The same sums in the same order as CalculateEntropy over the probability map.
  double sum = 0.0;
  std::size_t size = 0;
  const std::int32_t total = counts != nullptr ? TotalOf(*counts) : 0;
  if (counts != nullptr) {
    for (const auto& [symbol, count] : *counts) {
      if (IsNull(symbol) || symbol->IsStart()) continue;
      sum += ShareOfTotal(count, total);
      ++size;
    }
  }
  entropy = 0.0;
  if (counts != nullptr) {
    for (const auto& [symbol, count] : *counts) {
      if (IsNull(symbol) || symbol->IsStart()) continue;
      const double p = ShareOfTotal(count, total) / sum;
      entropy -= p * std::log(p);
    }
  }
  maxEntropy = std::log(static_cast<double>(size));
}

void VariableLengthMarkovModel::_FittingProbabilities(const TMarkovCounts* counts, double remaining,
                                                      const TMarkovSymbolSet& excluded,
                                                      TMarkovProbabilities& out) const {
  out = _EmptyProbabilities();
  if (counts == nullptr) return;
  const std::int32_t total = TotalOf(*counts);
  for (const auto& [symbol, count] : *counts) {
    if (IsNull(symbol) || symbol->IsStart() || symbol->IsEnd()) continue;
    if (symbol->IsChord() && symbol->Length() > remaining) continue;
    if (excluded.count(symbol) != 0) continue;
    out.emplace_hint(out.end(), symbol, ShareOfTotal(count, total));
  }
}

void VariableLengthMarkovModel::ProbabilitiesForNextSymbol(const TMarkovHistory& history,
                                                           TMarkovProbabilities& out) const {
  out = _EmptyProbabilities();
  const auto entry = _TransitionMap.find(history);
  if (entry != _TransitionMap.end()) _ProbabilitiesFromCounts(entry->second, out);
}

void VariableLengthMarkovModel::ProbabilitiesForNextSymbol(unsigned long historyLength,
                                                           TMarkovProbabilities& out) {
  TMarkovHistory history;
  HistorySubvector(historyLength, history);
  ProbabilitiesForNextSymbol(history, out);
}

void VariableLengthMarkovModel::ProbabilitiesForNextSymbol(TMarkovProbabilities& out) const {
  ProbabilitiesForNextSymbol(_History, out);
}

void VariableLengthMarkovModel::ValidateHistoryLength(unsigned long& historyLength) const {
  if (historyLength > _MaxHistoryLength) historyLength = _MaxHistoryLength;
  if (historyLength == 0) historyLength = 1;
}

void VariableLengthMarkovModel::Subvector(unsigned long n, const TMarkovHistory& source,
                                          TMarkovHistory& out) {
  out.clear();
  if (source.size() < n) {
    const TMarkovSymbol start = _Objects.getIteratorToObject(CMarkovObject::Start());
    out.assign(n - source.size(), start);
    out.insert(out.end(), source.begin(), source.end());
    return;
  }
  out.assign(source.end() - static_cast<std::ptrdiff_t>(n), source.end());
}

void VariableLengthMarkovModel::HistorySubvector(unsigned long n, TMarkovHistory& out) {
  ValidateHistoryLength(n);
  Subvector(n, _History, out);
}

void VariableLengthMarkovModel::IteratorSequenceForObjects(
    const std::vector<CMarkovObject>& objects, TMarkovHistory& out) {
  out.clear();
  for (const CMarkovObject& object : objects) {
    out.push_back(_Objects.insertObjectIfUnique(object));
  }
}

void VariableLengthMarkovModel::NextGivenObjectAndDistance(TMarkovSymbol& object, double& distance,
                                                           const TMarkovHistory& objects,
                                                           double position) {
  double beat = 0.0;
  for (const TMarkovSymbol& entry : objects) {
    if (!IsNull(entry) && !entry->IsGap() && beat >= position) {
      object = entry;
      distance = beat - position;
      return;
    }
    if (!IsNull(entry)) beat = MarkovTruncatedBeats(beat + entry->Length());
  }
  object = _Objects.getIteratorToObject(CMarkovObject::End());
  distance = MarkovTruncatedBeats(MarkovLengthInBeats(objects)) - position;
}

// --- Probability maps

void VariableLengthMarkovModel::RemoveNonFittingSymbolsFromProbabilities(
    TMarkovProbabilities& probabilities, double remaining) {
  std::erase_if(probabilities, [remaining](const auto& entry) {
    const CMarkovObject& object = *entry.first;
    return object.IsEnd() || (object.IsChord() && object.Length() > remaining);
  });
}

void VariableLengthMarkovModel::RemoveItemsFromProbabilities(TMarkovProbabilities& probabilities,
                                                             const TMarkovSymbolSet& items) {
  for (const TMarkovSymbol& item : items) probabilities.erase(item);
}

unsigned long VariableLengthMarkovModel::GetMaxLengthFromProbabilities(
    const TMarkovProbabilities& probabilities) {
  double longest = 0.0;
  for (const auto& [symbol, probability] : probabilities) {
    longest = std::max(longest, MarkovTruncatedBeats(symbol->Length()));
  }
  return static_cast<unsigned long>(longest);
}

double VariableLengthMarkovModel::SumProbabilities(const TMarkovProbabilities& probabilities) {
  double sum = 0.0;
  for (const auto& [symbol, probability] : probabilities) sum += probability;
  return sum;
}

TMarkovSymbol VariableLengthMarkovModel::ChooseFromProbabilities(
    const TMarkovProbabilities& probabilities) {
  if (probabilities.empty()) return NullSymbol();
  const double threshold = markov_detail::DrawUnit() * SumProbabilities(probabilities);
  double running = 0.0;
  for (const auto& [symbol, probability] : probabilities) {
    running += probability;
    if (running > threshold) return symbol;
  }
  return NullSymbol();
}

double VariableLengthMarkovModel::CalculateEntropy(const TMarkovProbabilities& probabilities) {
  const double sum = SumProbabilities(probabilities);
  double entropy = 0.0;
  for (const auto& [symbol, value] : probabilities) {
    const double p = value / sum;
    entropy -= p * std::log(p);
  }
  return entropy;
}

void VariableLengthMarkovModel::CalculateAllEntropies(TMarkovHistoryValues& out) const {
  out = TMarkovHistoryValues(HistoryLess());
  for (const auto& [history, counts] : _TransitionMap) {
    TMarkovProbabilities values = _EmptyProbabilities();
    for (const auto& [symbol, count] : counts) values.emplace(symbol, static_cast<double>(count));
    out.emplace(history, CalculateEntropy(values));
  }
}

// --- Trace

void VariableLengthMarkovModel::WriteTrace(std::ostream& out) const {
  out << "VariableLengthMarkovModel: MaxHistoryLength " << _MaxHistoryLength << ", "
      << _Objects.size() << " objects, " << _TransitionMap.size() << " histories" << '\n';
  for (const auto& [history, counts] : _TransitionMap) {
    for (const TMarkovSymbol& symbol : history) {
      if (IsNull(symbol)) {
        out << "? ";
      } else {
        symbol->WriteTraceBrief(out);
        out << ' ';
      }
    }
    out << "->";
    for (const auto& [symbol, count] : counts) {
      out << ' ';
      if (IsNull(symbol)) {
        out << '?';
      } else {
        symbol->WriteTraceBrief(out);
      }
      out << " x" << count;
    }
    out << '\n';
  }
}

void VariableLengthMarkovModel::WriteTraceBrief(std::ostream& out) const {
  out << "(VLMM " << _MaxHistoryLength << ": " << _Objects.size() << " objects, "
      << _TransitionMap.size() << " histories)";
}

void VariableLengthMarkovModel::WriteInitializerList(std::ostream& out) const {
  out << "VariableLengthMarkovModel(" << _MaxHistoryLength << ')';
}

}  // namespace harmony
