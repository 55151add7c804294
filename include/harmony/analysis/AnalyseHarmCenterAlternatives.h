#pragma once
// Alternative readings of a chord list. A run of chords can mean more than one thing: two
// progressions of equal rank may fit at the same place and propose different centers. Every
// reading is kept as an alternative, a set of centers over ranges of chords, with the
// probability 1 / the number of readings of the same range. The ranges are indices into the
// analyser's own copy of the chords.

#include <cstddef>
#include <limits>
#include <ostream>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/analysis/HarmAnlsCenter.h"
#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/analysis/HarmAnlsProgressions.h"
#include "harmony/chords/HarmCenter.h"

namespace harmony {

// A center over the chords [Begin, End) of a list.
class CHarmAnlsCenterInChords : public TraceFamily<CHarmAnlsCenterInChords> {
 public:
  // The index that stands for "no chord", as in the range of an empty list.
  static constexpr std::size_t kNoChord = std::numeric_limits<std::size_t>::max();

  CHarmCenterLite HarmCenter;
  std::size_t Begin = 0;
  std::size_t End = 0;

  CHarmAnlsCenterInChords() = default;
  CHarmAnlsCenterInChords(const CHarmCenterLite& center, std::size_t begin, std::size_t end)
      : HarmCenter(center), Begin(begin), End(end) {}

  // Center (key, spelling, mask) and range.
  bool operator==(const CHarmAnlsCenterInChords& other) const {
    return HarmCenter == other.HarmCenter && IsSimultaneousWith(other);
  }
  bool IsSimultaneousWith(const CHarmAnlsCenterInChords& other) const {
    return Begin == other.Begin && End == other.End;
  }
  std::size_t ChordsCount() const { return End - Begin; }
  // Both ends of the other range lie within this one (ends included) and this one has more
  // chords.
  bool IsLongerAndContains(const CHarmAnlsCenterInChords& other) const {
    return _IteratorInsideBeginAndEnd(other.Begin) && _IteratorInsideBeginAndEnd(other.End) &&
           ChordsCount() > other.ChordsCount();
  }
  bool _IteratorInsideBeginAndEnd(std::size_t it) const { return Begin <= it && it <= End; }

  // Grows the range over neighbouring chords that fit the center (diatonic, a usual guest
  // chord, or the dominant); the last chord of the list, the closing one, is never taken in.
  void ExtendForAdjacentDiatonicOrAllowedOutlierChords(const CHarmAnlsChords& chords);
  // The center with a copy of its chords; an undefined center, or a range that starts at
  // the end of the chords, gives an unplaced undefined center without chords.
  CHarmAnlsCenter ToHarmAnlsCenter(const CHarmAnlsChords& chords) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CHarmAnlsCentersInChords : public std::vector<CHarmAnlsCenterInChords>,
                                 public TraceFamily<CHarmAnlsCentersInChords> {
 public:
  using std::vector<CHarmAnlsCenterInChords>::vector;

  // Drops each entry that another entry contains and outlasts.
  void RemoveShorterContainedHarmCenters();
  bool HasLongerContainingHarmCenter(const_iterator it) const {
    return HasCenterThatIsLongerAndContains(*it);
  }
  bool HasCenterThatIsLongerAndContains(const CHarmAnlsCenterInChords& center) const;
  // Some entry here contains and outlasts some entry of `other`.
  bool IsLongerAndContains(const CHarmAnlsCentersInChords& other) const;
  // The first entry with the same center contains the range and is longer. (Despite the
  // name an equal range does not do.)
  bool ContainsSameCenterWithSameOrLongerChords(const CHarmAnlsCenterInChords& center) const;
  // The first entry with the same center (key, spelling, mask), or end().
  const_iterator FindCenterMatching(const CHarmCenterLite& center) const;
  // The smallest Begin and the largest End; both kNoChord for an empty list.
  std::pair<std::size_t, std::size_t> OverallBeginAndEndInputChord() const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// One reading of the chords.
class CHarmAnlsCenterAlternative : public TraceFamily<CHarmAnlsCenterAlternative> {
 public:
  double Probability = kHarmAnlsUndefDouble;
  CHarmAnlsCentersInChords Centers;

  CHarmAnlsCenterAlternative() = default;
  CHarmAnlsCenterAlternative(double probability, CHarmAnlsCentersInChords centers)
      : Probability(probability), Centers(std::move(centers)) {}

  bool operator==(const CHarmAnlsCenterAlternative& other) const {
    return Probability == other.Probability && Centers == other.Centers;
  }
  void RemoveShorterContainedHarmCenters() { Centers.RemoveShorterContainedHarmCenters(); }
  // The same overall range.
  bool IsSimultaneousWith(const CHarmAnlsCenterAlternative& other) const {
    return Centers.OverallBeginAndEndInputChord() == other.Centers.OverallBeginAndEndInputChord();
  }
  bool IsLongerContainingAlternativeFor(const CHarmAnlsCenterAlternative& other) const {
    return Centers.IsLongerAndContains(other.Centers);
  }

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CHarmAnlsCenterAlternatives : public std::vector<CHarmAnlsCenterAlternative>,
                                    public TraceFamily<CHarmAnlsCenterAlternatives> {
 public:
  using std::vector<CHarmAnlsCenterAlternative>::vector;

  // Drops each alternative that another one outlasts somewhere, then shares the probability
  // among the simultaneous ones that are left.
  void RemoveShorterContainedAlternatives();
  // The indices of the other alternatives with the same overall range.
  std::vector<std::size_t> FindSimultaneousAlternatives(std::size_t index) const;
  // Another alternative outlasts this one somewhere.
  bool HasLongerContainingAlternernative(std::size_t index) const;
  // Each alternative that has simultaneous partners gets 1 / (partners + 1); one without
  // partners keeps its value.
  void RecalculateProbabilitiesOfSimultaneousAlternatives();
  void RemoveShorterContainedHarmCenters();
  // Equal readings become one with the summed probability; then as
  // RecalculateProbabilitiesOfSimultaneousAlternatives.
  void Deduplication();
  // A sure reading (probability exactly 1) removes the later readings of the same ranges,
  // whatever their centers.
  void RemoveNonSureAlternativesWithSameRangeAsSureAlternative();

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// Collects the readings of a chord list by the tonic progressions.
class CAnalyseHarmCenterAlternatives : public TraceFamily<CAnalyseHarmCenterAlternatives> {
 public:
  // Copies the chords and analyses them.
  explicit CAnalyseHarmCenterAlternatives(const CHarmAnlsChords& chords);

  // Empties the result and analyses again.
  void AnalyseResult();
  // The readings as centers of the analysis tree, one per range, each with the probability
  // of its reading; empty when nothing fits.
  CHarmAnlsCenters BestResults() const;
  void _StoreAlternativeInResult(const CHarmAnlsCenterAlternative& alternative,
                                 CHarmAnlsCenters& centers) const;

  const CHarmAnlsChords& Chords() const { return _Chords; }
  const CHarmAnlsProgressions& Progressions() const { return _Progressions; }
  const CHarmAnlsCenterAlternatives& Result() const { return _Result; }

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  // One chord, maybe repeated: major or minor on it, over the first chord alone.
  void _AnalyseSingleChord();
  // The best progressions at each chord, each a reading over its grown range.
  void _AnalyseSeveralChords();

  CHarmAnlsChords _Chords;
  CHarmAnlsProgressions _Progressions;
  CHarmAnlsCenterAlternatives _Result;
};

}  // namespace harmony
