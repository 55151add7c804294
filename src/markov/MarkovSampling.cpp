#include "harmony/markov/MarkovSampling.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <iostream>

#include "harmony/markov/VariableLengthMarkovModel.h"

namespace harmony {

namespace {

// Far beyond any piece, and exactly representable, so that truncation can't overflow.
constexpr double kLargestBeatCount = 1.0e15;

bool ObjectsLess(const TMarkovHistory& a, const TMarkovHistory& b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](TMarkovSymbol x, TMarkovSymbol y) { return *x < *y; });
}

void WriteObjectsBrief(std::ostream& out, const TMarkovHistory& objects) {
  for (const TMarkovSymbol& object : objects) {
    object->WriteTraceBrief(out);
    out << ' ';
  }
}

}  // namespace

bool CMarkovHistoryLess::operator()(const TMarkovHistory& a, const TMarkovHistory& b) const {
  // Histories of a map share long prefixes: the same symbol needs no look at its object.
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (a[i] == b[i]) continue;
    if (Symbols(a[i], b[i])) return true;
    if (Symbols(b[i], a[i])) return false;
  }
  return a.size() < b.size();
}

bool MarkovSameObjects(const TMarkovHistory& a, const TMarkovHistory& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](TMarkovSymbol x, TMarkovSymbol y) { return *x == *y; });
}

double MarkovLengthInBeats(const TMarkovHistory& symbols) {
  double length = 0.0;
  for (const TMarkovSymbol& symbol : symbols) {
    if (symbol->CountsForLength()) length += symbol->Length();
  }
  return length;
}

double MarkovTruncatedBeats(double beats) {
  if (std::isnan(beats)) return 0.0;
  return std::trunc(std::clamp(beats, -kLargestBeatCount, kLargestBeatCount));
}

// --- TMarkovGenerateOptions

bool TMarkovGenerateOptions::IsValid(const VariableLengthMarkovModel& model) const {
  return MaxHistory >= 1 && MaxHistory <= model.MaxHistoryLength() && MinHistory >= 1 &&
         MinHistory <= MaxHistory && !Objects.empty() && TotalLength() > 0.0;
}

bool TMarkovGenerateOptions::Validate(const VariableLengthMarkovModel& model) {
  const auto clamp = [](std::uint64_t& value, std::uint64_t largest) {
    if (value > largest) value = largest;
    if (value == 0) value = 1;
  };
  clamp(MaxHistory, model.MaxHistoryLength());
  clamp(MinHistory, MaxHistory);
  clamp(EvidenceHistory, MaxHistory);
  return !Objects.empty();
}

void TMarkovGenerateOptions::WriteTrace(std::ostream& out) const {
  out << "TMarkovGenerateOptions: Objects ";
  WriteObjectsBrief(out, Objects);
  out << ", MaxHistory " << MaxHistory << ", MinHistory " << MinHistory << ", EvidenceHistory "
      << EvidenceHistory << ", AcceptLowEntropy " << AcceptLowEntropy << ", StopBackOffAtExactFit "
      << StopBackOffAtExactFit << ", MinNormalizedEntropy " << MinNormalizedEntropy
      << ", AllEqualFactor " << AllEqualFactor << ", SampleCount " << SampleCount;
}

void TMarkovGenerateOptions::WriteTraceBrief(std::ostream& out) const {
  out << "(" << TotalLength() << " beats, history " << MinHistory << ".." << MaxHistory << ", "
      << SampleCount << " samples)";
}

void TMarkovGenerateOptions::WriteInitializerList(std::ostream& out) const {
  out << "TMarkovGenerateOptions{" << Objects.size() << " objects, " << MaxHistory << ", "
      << MinHistory << ", " << EvidenceHistory << ", " << AcceptLowEntropy << ", "
      << StopBackOffAtExactFit << ", " << MinNormalizedEntropy << ", " << AllEqualFactor << ", "
      << SampleCount << '}';
}

// --- TMarkovSampledObject

bool TMarkovSampledObject::operator<(const TMarkovSampledObject& other) const {
  if (Probability != other.Probability) return Probability < other.Probability;
  if (NormalizedEntropy != other.NormalizedEntropy) {
    return NormalizedEntropy < other.NormalizedEntropy;
  }
  if (MaxEntropy != other.MaxEntropy) return MaxEntropy < other.MaxEntropy;
  if (HistoryLength != other.HistoryLength) return HistoryLength < other.HistoryLength;
  return *Object < *other.Object;
}

void TMarkovSampledObject::WriteTrace(std::ostream& out) const {
  out << "TMarkovSampledObject: Probability " << Probability << ", NormalizedEntropy "
      << NormalizedEntropy << ", MaxEntropy " << MaxEntropy << ", HistoryLength " << HistoryLength
      << ", Object ";
  Object->WriteTraceBrief(out);
}

void TMarkovSampledObject::WriteTraceBrief(std::ostream& out) const {
  Object->WriteTraceBrief(out);
  out << " (p " << Probability << ", h " << HistoryLength << ')';
}

void TMarkovSampledObject::WriteInitializerList(std::ostream& out) const {
  out << "TMarkovSampledObject{" << Probability << ", " << NormalizedEntropy << ", " << MaxEntropy
      << ", " << HistoryLength << ", ";
  Object->WriteInitializerList(out);
  out << '}';
}

// --- TMarkovSampledSequence

void TMarkovSampledSequence::Append(const TMarkovSampledObject& sampled) {
  SampledObjects.push_back(sampled);
  Objects.push_back(sampled.Object);
  LogProbabilities.push_back(std::log(sampled.Probability));
}

void TMarkovSampledSequence::PopBack() {
  if (!SampledObjects.empty()) SampledObjects.pop_back();
  if (!Objects.empty()) Objects.pop_back();
  if (!LogProbabilities.empty()) LogProbabilities.pop_back();
}

bool TMarkovSampledSequence::AllElementsAreEqual() const {
  return std::all_of(Objects.begin(), Objects.end(),
                     [this](TMarkovSymbol object) { return *object == *Objects.front(); });
}

bool TMarkovSampledSequence::operator<(const TMarkovSampledSequence& other) const {
  if (LogProbabilities != other.LogProbabilities) {
    return LogProbabilities < other.LogProbabilities;
  }
  if (std::lexicographical_compare(SampledObjects.begin(), SampledObjects.end(),
                                   other.SampledObjects.begin(), other.SampledObjects.end())) {
    return true;
  }
  if (std::lexicographical_compare(other.SampledObjects.begin(), other.SampledObjects.end(),
                                   SampledObjects.begin(), SampledObjects.end())) {
    return false;
  }
  if (ObjectsLess(Objects, other.Objects)) return true;
  if (ObjectsLess(other.Objects, Objects)) return false;
  if (LogWeight != other.LogWeight) return LogWeight < other.LogWeight;
  return Count < other.Count;
}

void TMarkovSampledSequence::WriteTrace(std::ostream& out) const {
  out << "TMarkovSampledSequence: LogWeight " << LogWeight << ", Count " << Count << ", Objects ";
  WriteObjectsBrief(out, Objects);
  out << ", LogProbabilities";
  for (double value : LogProbabilities) out << ' ' << value;
}

void TMarkovSampledSequence::WriteTraceBrief(std::ostream& out) const {
  out << '(';
  WriteObjectsBrief(out, Objects);
  out << "w " << LogWeight << " x" << Count << ')';
}

void TMarkovSampledSequence::WriteInitializerList(std::ostream& out) const {
  out << "TMarkovSampledSequence{" << Objects.size() << " objects, " << LogWeight << ", " << Count
      << '}';
}

bool CompareSequencesByWeightAndEntropy(const TMarkovSampledSequence& a,
                                        const TMarkovSampledSequence& b) {
  const double aWeight = a.Count * std::exp(a.LogWeight);
  const double bWeight = b.Count * std::exp(b.LogWeight);
  if (aWeight != bWeight) return aWeight < bWeight;
  return a < b;
}

// --- TMarkovSamplingInformation

bool TMarkovSamplingInformation::CBlockLess::operator()(
    const std::pair<double, TMarkovHistory>& a, const std::pair<double, TMarkovHistory>& b) const {
  if (a.first != b.first) return a.first < b.first;
  return Histories(a.second, b.second);
}

TMarkovSamplingInformation::TMarkovSamplingInformation(const CMarkovObjects* objects)
    : Blocklist(CBlockLess{CMarkovHistoryLess{CMarkovSymbolLess{objects}}}) {}

void TMarkovSamplingInformation::Log(std::int32_t depth, double position, double remaining) {
  Depths.push_back(depth);
  Positions.push_back(position);
  Remaining.push_back(remaining);
}

void TMarkovSamplingInformation::AddToBlocklist(double position, const TMarkovHistory& history) {
  Blocklist.emplace(position, history);
}

bool TMarkovSamplingInformation::IsBlocklisted(double position, const TMarkovHistory& history) {
  if (Blocklist.find(std::make_pair(position, history)) == Blocklist.end()) return false;
  ++BlocklistHits;
  return true;
}

void TMarkovSamplingInformation::Clear(bool clearBlocklist) {
  Depths.clear();
  Positions.clear();
  Remaining.clear();
  if (clearBlocklist) {
    Blocklist.clear();
    BlocklistHits = 0;
  }
}

void TMarkovSamplingInformation::_PrintItem(std::ostream& out, std::size_t index) const {
  for (std::int32_t tab = 0; tab < Depths[index]; ++tab) out << '\t';
  out << std::setw(3) << Depths[index] << "          " << Positions[index] << '\n';
}

void TMarkovSamplingInformation::Print() const {
  for (std::size_t i = 0; i < Depths.size(); ++i) _PrintItem(std::cout, i);
  std::cout << "############\n";
}

void TMarkovSamplingInformation::PrintStats() const {
  std::cout << Depths.size() << " calls, " << Blocklist.size() << " blocked, " << BlocklistHits
            << " blocklist hits\n";
}

void TMarkovSamplingInformation::PrintLastItem() const {
  if (!Depths.empty()) _PrintItem(std::cout, Depths.size() - 1);
}

void TMarkovSamplingInformation::WriteTrace(std::ostream& out) const {
  out << "TMarkovSamplingInformation: " << Depths.size() << " calls, " << Blocklist.size()
      << " blocked, " << BlocklistHits << " blocklist hits";
}

void TMarkovSamplingInformation::WriteTraceBrief(std::ostream& out) const { WriteTrace(out); }

void TMarkovSamplingInformation::WriteInitializerList(std::ostream& out) const {
  out << "TMarkovSamplingInformation()";
}

}  // namespace harmony
