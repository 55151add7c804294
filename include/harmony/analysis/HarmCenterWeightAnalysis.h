#pragma once
// Finding a harmonic center by a census of keys: every candidate key is weighed by how many
// quarter notes of the chords fit into it, with a small bonus for chords on its tonic, and
// the heaviest key wins. The fallback when no progression proves a center.

#include <cstdint>
#include <map>
#include <ostream>

#include "harmony/Trace.h"
#include "harmony/analysis/HarmAnlsCenter.h"
#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/chords/SignKey.h"

namespace harmony {

// What a caller of the census may pass along; nothing in it is read.
struct CHarmCenterWeightAnalysisParams : public TraceFamily<CHarmCenterWeightAnalysisParams> {
  void WriteTrace(std::ostream& out) const { out << "CHarmCenterWeightAnalysisParams: "; }
  void WriteTraceBrief(std::ostream& /*out*/) const {}
  void WriteInitializerList(std::ostream& out) const { out << "CHarmCenterWeightAnalysisParams()"; }
};

class CHarmCenterWeightAnalysis : public TraceFamily<CHarmCenterWeightAnalysis> {
 public:
  // Which keys are weighed.
  enum : std::int32_t {
    kCandidatesMajor = 0,          // the twelve major keys
    kCandidatesMajorAndMinor = 1,  // the twelve major and the twelve minor keys
  };                               // any other value: no candidates at all

  // All major keys before all minor keys, each type by ascending key number.
  struct TCandidateOrder {
    bool operator()(const CSignKeyLite& a, const CSignKeyLite& b) const;
  };
  using TWeights = std::map<CSignKeyLite, double, TCandidateOrder>;

  // With true the weights are taken but no center is given.
  bool SkipResult = false;
  std::int32_t CandidateSet = kCandidatesMajorAndMinor;
  // Set by the census: two keys of different signatures had the same weight and nothing
  // decided between them (the earlier in the order was kept).
  bool ResultIsAmbiguous = false;

  CHarmCenterWeightAnalysis() = default;
  CHarmCenterWeightAnalysis(bool skipResult, std::int32_t candidateSet)
      : SkipResult(skipResult), CandidateSet(candidateSet) {}

  // `results` is emptied and receives at most one center, placed at the first chord and
  // spelled with the major or natural minor scale of the heaviest key. Each chord counts
  // for the quarter notes up to the next element (the last for one quarter note); chords
  // without a root weigh nothing.
  void DetectHarmCentersFromChords(const CHarmAnlsChords& chords, CHarmAnlsCenters& results);
  // The weights of the last census; empty before the first one and after an empty list.
  const TWeights& Weights() const { return _Weights; }

  // The weighing alone.
  TWeights _WeighCandidates(const CHarmAnlsChords& chords) const;
  // Whether `candidate` replaces `best`: by a greater weight, or, between the major and the
  // minor key of one root, because only the candidate's plain tonic triad occurs among the
  // chords. Always true while best is the end of `weights`.
  bool _IsNewBestResult(TWeights::const_iterator candidate, TWeights::const_iterator best,
                        const TWeights& weights, const CHarmAnlsChords& chords) const;

  // The trace forms write one fixed line, whatever the members hold; the initializer list
  // gives the settings.
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  TWeights _Weights;
};

}  // namespace harmony
