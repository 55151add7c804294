#pragma once
// The records of generation: what a caller asks for (TMarkovGenerateOptions), what one step
// and one sampled sequence record (TMarkovSampledObject, TMarkovSampledSequence), and the
// working record of the recursive search with its blocklist (TMarkovSamplingInformation).

#include <cstdint>
#include <ostream>
#include <set>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/markov/MarkovObject.h"

namespace harmony {

class VariableLengthMarkovModel;

using TMarkovHistory = std::vector<TMarkovSymbol>;

// Histories compared element by element through the symbols' objects; a shorter prefix
// comes first.
struct CMarkovHistoryLess {
  CMarkovSymbolLess Symbols;
  bool operator()(const TMarkovHistory& a, const TMarkovHistory& b) const;
};

// The same symbols one by one, compared on their objects.
bool MarkovSameObjects(const TMarkovHistory& a, const TMarkovHistory& b);
// The sum of the lengths of the chords and gaps, in beats.
double MarkovLengthInBeats(const TMarkovHistory& symbols);
// A beat count cut to a whole beat. Out-of-range counts (a damaged model) saturate instead of
// overflowing.
double MarkovTruncatedBeats(double beats);

struct TMarkovGenerateOptions : public TraceFamily<TMarkovGenerateOptions> {
  // The template of the wanted sequence: its chords and gaps give the length; in a search,
  // its chords are fixed and the gaps are to be filled.
  TMarkovHistory Objects;
  // The history length to start from, the shortest one back-off may use, and the one of
  // the evidence pass.
  std::uint64_t MaxHistory = 1;
  std::uint64_t MinHistory = 1;
  std::uint64_t EvidenceHistory = 1;
  // At the shortest history, sample even where the continuation is nearly certain.
  bool AcceptLowEntropy = false;
  // Above the shortest history, keep a certain history when its longest candidate exactly
  // fills what remains.
  bool StopBackOffAtExactFit = false;
  // The entropy, as a share of its maximum, below which a history counts as too certain.
  double MinNormalizedEntropy = 0.0;
  // The factor for a sequence that repeats one object only.
  double AllEqualFactor = 1.0;
  // How many accepted samples to draw.
  std::uint64_t SampleCount = 1;
  // How many tries a sampling run may take before it gives up. A long template whose every
  // chord is fixed can collect evidence below the acceptance bound in every try; a caller
  // that can't wait for the full count of tries sets fewer.
  std::uint64_t MaxTries = 9999999;

  // The sum of the template's lengths in beats.
  double TotalLength() const { return MarkovLengthInBeats(Objects); }
  // Histories within the model's range, a template, and a length above 0.
  bool IsValid(const VariableLengthMarkovModel& model) const;
  // Brings the history lengths into the model's range; whether there is a template.
  bool Validate(const VariableLengthMarkovModel& model);

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// One generated step.
struct TMarkovSampledObject : public TraceFamily<TMarkovSampledObject> {
  double Probability = 0.0;
  // The entropy of the candidates as a share of its maximum, and that maximum (ln of the
  // number of candidates).
  double NormalizedEntropy = 0.0;
  double MaxEntropy = 0.0;
  std::uint64_t HistoryLength = 0;
  TMarkovSymbol Object;

  TMarkovSampledObject() = default;
  TMarkovSampledObject(double probability, double normalizedEntropy, double maxEntropy,
                       std::uint64_t historyLength, TMarkovSymbol object)
      : Probability(probability),
        NormalizedEntropy(normalizedEntropy),
        MaxEntropy(maxEntropy),
        HistoryLength(historyLength),
        Object(object) {}

  // Field by field, the object by its order.
  bool operator<(const TMarkovSampledObject& other) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

struct TMarkovSampledSequence : public TraceFamily<TMarkovSampledSequence> {
  // ln of each step's probability.
  std::vector<double> LogProbabilities;
  std::vector<TMarkovSampledObject> SampledObjects;
  TMarkovHistory Objects;
  double LogWeight = 0.0;
  // How often the same sequence was drawn.
  std::int32_t Count = 1;

  // Pushes the record, its object and ln of its probability.
  void Append(const TMarkovSampledObject& sampled);
  // Takes the last step back.
  void PopBack();
  bool empty() const { return Objects.empty(); }
  std::size_t size() const { return Objects.size(); }
  double LengthInBeats() const { return MarkovLengthInBeats(Objects); }
  // True for up to one element, and when all objects are the same symbol.
  bool AllElementsAreEqual() const;
  // Lexicographic over all fields; objects by their order.
  bool operator<(const TMarkovSampledSequence& other) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// The lighter sequence first, the weight being Count * exp(LogWeight); equal weights fall to
// the sequences' order.
bool CompareSequencesByWeightAndEntropy(const TMarkovSampledSequence& a,
                                        const TMarkovSampledSequence& b);

// The working record of the recursive search: the depth and position of each call, the
// beats that remained there, and the blocklist of (position, history) pairs that failed
// once and are never tried again in the same run.
struct TMarkovSamplingInformation : public TraceFamily<TMarkovSamplingInformation> {
  struct CBlockLess {
    CMarkovHistoryLess Histories;
    bool operator()(const std::pair<double, TMarkovHistory>& a,
                    const std::pair<double, TMarkovHistory>& b) const;
  };

  std::vector<std::int32_t> Depths;
  std::vector<double> Positions;
  std::vector<double> Remaining;
  std::set<std::pair<double, TMarkovHistory>, CBlockLess> Blocklist;
  std::uint64_t BlocklistHits = 0;

  // Histories are compared through the alphabet they point into.
  explicit TMarkovSamplingInformation(const CMarkovObjects* objects = nullptr);

  void Log(std::int32_t depth, double position, double remaining);
  void AddToBlocklist(double position, const TMarkovHistory& history);
  // A hit counts.
  bool IsBlocklisted(double position, const TMarkovHistory& history);
  // The working lists; the blocklist and its hits too when asked.
  void Clear(bool clearBlocklist);

  // Trace output: one line per call, indented by depth, and a closing line of "#".
  void Print() const;
  void PrintStats() const;
  void PrintLastItem() const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  void _PrintItem(std::ostream& out, std::size_t index) const;
};

}  // namespace harmony
