#pragma once
// A Markov model of chord sequences that learns, for every history length from 1 up to a
// maximum at once, which symbol follows which history. It can therefore back off from a long
// context to a shorter one while generating, fill a gap between fixed chords and rate how
// well a sequence fits what it learned.
//
// Symbols are iterators into the model's own alphabet, so a model is neither copied nor
// moved: it lives where it was made and serves one caller at a time.

#include <cstdint>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "harmony/Json.h"
#include "harmony/Trace.h"
#include "harmony/markov/MarkovObject.h"
#include "harmony/markov/MarkovSampling.h"

namespace harmony {

class CIteratorIndexConverter;

using TMarkovCounts = std::map<TMarkovSymbol, std::uint64_t, CMarkovSymbolLess>;
using TMarkovProbabilities = std::map<TMarkovSymbol, double, CMarkovSymbolLess>;
using TMarkovSymbolSet = std::set<TMarkovSymbol, CMarkovSymbolLess>;
using TMarkovTransitionMap = std::map<TMarkovHistory, TMarkovCounts, CMarkovHistoryLess>;
using TMarkovHistoryValues = std::map<TMarkovHistory, double, CMarkovHistoryLess>;
// A candidate sequence of a sampling run with its weight.
using TMarkovWeightedSequences = std::vector<std::pair<TMarkovSampledSequence, double>>;

// What the statistics files of one history length hold: the count of every transition and
// the number of possible next symbols of every history.
struct TMarkovHistoryStats {
  std::vector<std::uint64_t> Counts;
  std::vector<std::uint64_t> Possibilities;
};
using TMarkovStatsByHistoryLength = std::map<unsigned long, TMarkovHistoryStats>;

// What the evidence adds for an object the model has never seen after a window: ln of one in
// a million, far below anything learned from a corpus of this size, so that it lowers the
// weight strongly without ending the sample as ln 0 would.
inline constexpr double kMarkovUnseenLogProbability = -13.815510557964274;

// The folder of the statistics files written with every model file. The name stands as it
// is, without expanding "~": the files appear only where such a folder exists below the
// working folder, and failing to write them is no error.
inline constexpr const char* kMarkovStatsFolder = "~/Documents/";

// What the last sampling run of a model went through: its tries, the accepted samples, and
// for each accepted one the sum of its step log probabilities and, for a search, the seconds
// it took.
struct TMarkovSamplingRun {
  std::uint64_t Tries = 0;
  std::uint64_t Accepted = 0;
  std::vector<double> LogProbabilitySums;
  std::vector<double> Durations;
};

class VariableLengthMarkovModel : public TraceFamily<VariableLengthMarkovModel> {
 public:
  explicit VariableLengthMarkovModel(std::uint64_t maxHistoryLength = 0);
  VariableLengthMarkovModel(const VariableLengthMarkovModel&) = delete;
  VariableLengthMarkovModel& operator=(const VariableLengthMarkovModel&) = delete;

  // --- State
  std::uint64_t MaxHistoryLength() const { return _MaxHistoryLength; }
  void SetMaxHistoryLength(std::uint64_t length) { _MaxHistoryLength = length; }
  const TMarkovTransitionMap& TransitionMap() const { return _TransitionMap; }
  const TMarkovHistory& History() const { return _History; }
  const TMarkovHistory& QueryList() const { return _QueryList; }
  CMarkovObjects& Objects() { return _Objects; }
  const CMarkovObjects& Objects() const { return _Objects; }
  // "No symbol": what the choosing operations give when nothing can be chosen.
  TMarkovSymbol NullSymbol() { return _Objects.end(); }
  bool IsNull(CMarkovObjects::const_iterator symbol) const { return symbol == _Objects.end(); }
  CMarkovSymbolLess SymbolLess() const { return CMarkovSymbolLess{&_Objects}; }
  CMarkovHistoryLess HistoryLess() const { return CMarkovHistoryLess{SymbolLess()}; }

  // Empties the map, the history and the alphabet.
  void Clear();
  // Alphabets in list order, maps, maximum history length and history, all compared on the
  // objects the symbols point to.
  bool operator==(const VariableLengthMarkovModel& other) const;
  static bool CompareMaps(const TMarkovTransitionMap& a, const TMarkovTransitionMap& b);

  // --- Learning. A sequence starts with as many start symbols as the longest history and
  // ends with as many end symbols, so that every observation updates the tables of all
  // history lengths.
  void StartSequence();
  void LearnAddSymbol(const CMarkovObject& object);
  void EndSequence();

  // --- Queries. They move the same history as learning does; the query list keeps what
  // went through them, so that the last step can be taken back.
  void QueryStartSequence();
  void QueryAddSymbol(const CMarkovObject& object);
  void QueryRemoveLastItem();
  // The counts that follow the whole history, or its last `historyLength` entries.
  void TransitionFrequenciesForNextSymbol(TMarkovCounts& out) const;
  void TransitionFrequenciesForNextSymbol(unsigned long historyLength, TMarkovCounts& out);
  // Count / total for every next symbol of a known history; start symbols are left out, so
  // the sum may stay below 1. An unknown history gives an empty map.
  void ProbabilitiesForNextSymbol(const TMarkovHistory& history, TMarkovProbabilities& out) const;
  void ProbabilitiesForNextSymbol(unsigned long historyLength, TMarkovProbabilities& out);
  void ProbabilitiesForNextSymbol(TMarkovProbabilities& out) const;
  // Above the maximum becomes the maximum, 0 becomes 1.
  void ValidateHistoryLength(unsigned long& historyLength) const;
  // The last n entries of `source`, padded in front with start symbols when it is shorter.
  void Subvector(unsigned long n, const TMarkovHistory& source, TMarkovHistory& out);
  void HistorySubvector(unsigned long n, TMarkovHistory& out);
  // The symbols of the objects; objects the model doesn't know join its alphabet.
  void IteratorSequenceForObjects(const std::vector<CMarkovObject>& objects, TMarkovHistory& out);
  // The next fixed (non-gap) object of the template `objects` at or after `position`, and
  // its distance in beats; with none left, the end symbol and the distance to the end.
  void NextGivenObjectAndDistance(TMarkovSymbol& object, double& distance,
                                  const TMarkovHistory& objects, double position);
  static double TMarkovSequenceLengthInBeats(const TMarkovHistory& symbols) {
    return MarkovLengthInBeats(symbols);
  }

  // --- Probability maps
  // Drops the end symbols and the chords longer than `remaining`; other symbols stay.
  static void RemoveNonFittingSymbolsFromProbabilities(TMarkovProbabilities& probabilities,
                                                       double remaining);
  static void RemoveItemsFromProbabilities(TMarkovProbabilities& probabilities,
                                           const TMarkovSymbolSet& items);
  // The largest length of the keys in whole beats; 0 for an empty map.
  static unsigned long GetMaxLengthFromProbabilities(const TMarkovProbabilities& probabilities);
  static double SumProbabilities(const TMarkovProbabilities& probabilities);
  // A key drawn by weight from the random source (the first of two draws is thrown away);
  // the null symbol for an empty map or when no running sum passes the threshold.
  TMarkovSymbol ChooseFromProbabilities(const TMarkovProbabilities& probabilities);
  // The entropy in natural logarithm; a zero value gives not-a-number.
  static double CalculateEntropy(const TMarkovProbabilities& probabilities);
  // The entropy of the counts of every history of the map.
  void CalculateAllEntropies(TMarkovHistoryValues& out) const;

  // --- Generation
  // Draws candidates of the template's length until `SampleCount` were accepted (or the
  // tries run out) and picks one by weight into `result`; `allSequences` gets the distinct
  // candidates, lightest first. `recursive` searches so that the length and the template's
  // fixed chords are hit exactly; otherwise a walk with back-off that rejects misfits.
  void SampleSequenceWithLength(TMarkovSampledSequence& result,
                                std::vector<TMarkovSampledSequence>& allSequences, bool recursive,
                                TMarkovGenerateOptions options);
  void GenerateSequenceWithFixedLength(unsigned long historyLength,
                                       TMarkovSampledSequence& sequence,
                                       const TMarkovGenerateOptions& options);
  void GenerateSequenceWithFixedLength(TMarkovSampledSequence& sequence,
                                       const TMarkovGenerateOptions& options);
  // Depth-first search from fixed object to fixed object; true when the sequence reached
  // the end properly.
  bool RecursiveGenerateSequence(TMarkovSampledSequence& sequence,
                                 const TMarkovGenerateOptions& options,
                                 TMarkovSamplingInformation& information);
  // One step with back-off and no length constraint.
  void AppendNextSymbol(TMarkovSampledSequence& sequence, const TMarkovHistory& history,
                        const TMarkovGenerateOptions& options);
  // One step that must fit `remaining` beats, starting from history length `limit`.
  bool AppendNextFittingSymbol(TMarkovSampledSequence& sequence, double remaining,
                               const TMarkovSymbolSet& excluded,
                               const TMarkovGenerateOptions& options,
                               TMarkovSamplingInformation& information, unsigned long limit);
  // Each weight becomes exp(weight - largest weight).
  static void NormalizeLogProbabilities(TMarkovWeightedSequences& sequences);
  static double SumProbabilities(const TMarkovWeightedSequences& sequences);
  void ChooseFromWeightedSequences(const TMarkovWeightedSequences& sequences,
                                   TMarkovSampledSequence& result);
  const TMarkovSamplingRun& LastSamplingRun() const { return _LastSamplingRun; }

  // --- Gaps and evidence
  // The object proposed for the first gap of the sequence (the first object if it has
  // none), drawn by the probability of each candidate after the entries before the gap; the
  // null symbol when the model knows no candidate there.
  TMarkovSymbol FillGapInSequence(TMarkovHistory sequence);
  // Adds to LogWeight how well the sample joins the template's fixed objects: ln of the
  // probability of each window of EvidenceHistory entries that reaches such an object.
  void CalculateEvidenceProbability(TMarkovSampledSequence& sequence,
                                    const TMarkovGenerateOptions& options);

  // --- The model file
  // Writes the file (and the statistics files); false when it can't be written.
  bool SaveToFile(const std::string& path) const;
  void AppendJSONString(std::ostream& out) const;
  void TransitionMapAppendToJSON(std::ostream& out, CIteratorIndexConverter& converter) const;
  // Two text files for one history length, one integer a line.
  static void DEBUG_PrintStatsForHistoryLength(unsigned long historyLength, const std::string& path,
                                               const TMarkovStatsByHistoryLength& stats);

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

  struct JSONDeserialization_Helper {
    // Each reader leaves the model empty when the text can't be read or parsed, or isn't a
    // model file, and says so by returning false.
    static bool VariableLengthMarkovModelFromJSONFile(const std::string& path,
                                                      VariableLengthMarkovModel& model);
    static bool VariableLengthMarkovModelFromJSONString(const std::string& text,
                                                        VariableLengthMarkovModel& model);
    static void VariableLengthMarkovModelFromJSONDictionary(const JsonDict& dict,
                                                            VariableLengthMarkovModel& model);
    static void MarkovTransitionMapFromJSONDictionary(const JsonDict& array,
                                                      CIteratorIndexConverter& converter,
                                                      VariableLengthMarkovModel& model);
    static void HistoryFromJSONDictionary(const JsonDict& array, CIteratorIndexConverter& converter,
                                          VariableLengthMarkovModel& model);
  };

 private:
  // Adds one observation to the counts of `history`.
  void _MapAddToOrInsert(const TMarkovHistory& history, TMarkovSymbol next);
  void _PushHistory(TMarkovSymbol symbol);
  // Fresh probabilities from a count map.
  void _ProbabilitiesFromCounts(const TMarkovCounts& counts, TMarkovProbabilities& out) const;
  // A count as a probability of its map: its share of the total of all counts.
  static double _ShareOfTotal(const TMarkovCounts& counts, std::uint64_t count);
  // The counts after a history, or nullptr for a history never heard.
  const TMarkovCounts* _CountsAfter(const TMarkovHistory& history) const;
  // What CalculateEntropy and ln(size) give for the probabilities of `counts`, without
  // building them.
  void _EntropyOfCounts(const TMarkovCounts* counts, double& entropy, double& maxEntropy) const;
  // The probabilities of `counts` without the excluded symbols and those that don't fit
  // `remaining` beats: the map the fitting step works on, built in one pass.
  void _FittingProbabilities(const TMarkovCounts* counts, double remaining,
                             const TMarkovSymbolSet& excluded, TMarkovProbabilities& out) const;
  // The log weight a window adds for the object that follows it.
  double _EvidenceOfWindow(const TMarkovHistory& window, TMarkovSymbol next) const;
  bool _RecursiveGenerateSequence(TMarkovSampledSequence& sequence,
                                  const TMarkovGenerateOptions& options,
                                  TMarkovSamplingInformation& information, unsigned depth);
  TMarkovProbabilities _EmptyProbabilities() const { return TMarkovProbabilities(SymbolLess()); }

  TMarkovTransitionMap _TransitionMap;
  std::uint64_t _MaxHistoryLength = 0;
  TMarkovHistory _History;
  TMarkovHistory _QueryList;
  CMarkovObjects _Objects;
  TMarkovSamplingRun _LastSamplingRun;
};

}  // namespace harmony
