#pragma once
// Functional harmony as data: chord progressions that point to a tonal center, told without
// absolute keys. Each element says how far its chord's root lies above the center and what
// kind of chord it must be; a run of chords matches when the kinds fit and the roots move by
// the same intervals, in any of the twelve transpositions. The center then follows from any
// one chord of the run.

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/chords/SignKey.h"
#include "harmony/pitch/SemitonesMatch.h"

namespace harmony {

enum TMatchDirection : std::int32_t { kMatchDirection_Forward = 0, kMatchDirection_Backward = 1 };

// One chord of a progression.
class CHarmAnlsProgressionEl : public TraceFamily<CHarmAnlsProgressionEl> {
 public:
  // Semitones from the center up to the chord's root, 0..11.
  std::int32_t RootDistToHarmCenter = 0;
  // Carried along (equal to the root distance in the tables); matching does not read it.
  std::int32_t BassDistToHarmCenter = 0;
  // The kind of chord: required, forbidden and free semitones above its root.
  CSemitonesMatch SemitonesMatch;

  CHarmAnlsProgressionEl() = default;
  CHarmAnlsProgressionEl(std::int32_t rootDist, std::int32_t bassDist, const CSemitonesMatch& match)
      : RootDistToHarmCenter(rootDist), BassDistToHarmCenter(bassDist), SemitonesMatch(match) {}

  // {"RootDistToHarmCenter": 7, "BassDistToHarmCenter": 7, "SemitonesMatch":[1,0,...]}
  void AppendJSONString(std::ostream& out) const;
  // "CHarmAnlsChordWithPos:" and the JSON form: the label of the chord record, kept.
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CHarmAnlsProgression : public std::vector<CHarmAnlsProgressionEl>,
                             public TraceFamily<CHarmAnlsProgression> {
 public:
  using ChordIt = CHarmAnlsChords::const_iterator;

  // Larger is better.
  std::uint32_t Priority = 0;
  // The mode of the center that the progression proves: major or minor.
  TSignKeyType SignKeyType = TSignKeyType::Undef;

  CHarmAnlsProgression() = default;
  CHarmAnlsProgression(std::initializer_list<CHarmAnlsProgressionEl> elements,
                       std::uint32_t priority, TSignKeyType signKeyType)
      : std::vector<CHarmAnlsProgressionEl>(elements),
        Priority(priority),
        SignKeyType(signKeyType) {}

  // Whether the progression fits the chords from `it` on. The closing undefined chord of a
  // piece does not count as a chord the progression may use; running out of chords halfway
  // still counts as a fit. Allocates nothing.
  bool MatchesHarmChordsFrom(const CHarmAnlsChords& chords, ChordIt it) const;
  // Whether it fits so that its last element falls on `it`.
  bool MatchesHarmChordsBackwardsFrom(const CHarmAnlsChords& chords, ChordIt it) const;
  // Same priority and same number of elements.
  bool MatchesAsGoodAs(const CHarmAnlsProgression& other) const {
    return Priority == other.Priority && size() == other.size();
  }

  // The center that a match found at `it` proves, judged from its n-th chord: that chord's
  // root minus the element's distance, in the progression's mode, spelled after the chords
  // of the run. Undefined when n or the run lies outside the chords.
  CHarmCenterLite HarmCenterCalculatedFromFoundProgressionNthChord(
      std::size_t n, ChordIt it, const CHarmAnlsChords& chords) const;
  CHarmCenterLite HarmCenterCalculatedFromFoundProgressionFirstChord(
      ChordIt it, const CHarmAnlsChords& chords) const;
  CHarmCenterLite HarmCenterCalculatedFromFoundProgressionLastChord(
      ChordIt it, const CHarmAnlsChords& chords) const;
  // Forward: judged from the last chord; backward: from the chord at `it`.
  CHarmCenterLite HarmCenterFromProgressionAndChord(ChordIt it, const CHarmAnlsChords& chords,
                                                    TMatchDirection direction) const;
  // Where the run of a match at `it` begins in that direction; end() for another direction.
  ChordIt HarmCenterChordsBegin(ChordIt it, const CHarmAnlsChords& chords,
                                TMatchDirection direction) const;

  // Spells the center's root after the chords of the run, so that a center in a flat key
  // does not come out sharp: from `chord` when it is the root itself, else from the first
  // chord of the run on the center's root, else with the fewest signs.
  void _SetEnhForHarmCenter(CHarmCenterLite& center, ChordIt it, const CHarmAnlsChords& chords,
                            std::int32_t rootDist, ChordIt chord) const;

  // A list of the elements' JSON forms; priority and mode are not written.
  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CHarmAnlsProgressions : public std::vector<CHarmAnlsProgression>,
                              public TraceFamily<CHarmAnlsProgressions> {
 public:
  using std::vector<CHarmAnlsProgression>::vector;
  using ChordIt = CHarmAnlsChords::const_iterator;

  // The two fixed tables, built on first use and never changed: progressions that end on
  // (or circle) a tonic, and the cadences.
  static const CHarmAnlsProgressions& TonicProgressions();
  static const CHarmAnlsProgressions& CadenceProgressions();

  // The order of all sorts: more elements first, at equal size the higher priority. The
  // longest progression wins over the highest priority.
  static bool RanksBefore(const CHarmAnlsProgression& a, const CHarmAnlsProgression& b) {
    return a.size() != b.size() ? a.size() > b.size() : a.Priority > b.Priority;
  }

  CHarmAnlsProgressions FindAndSortForwardMatchingProgressions(ChordIt it,
                                                               const CHarmAnlsChords& chords) const;
  // Only progressions with elements, on a list with chords, and with enough chords up to
  // and including `it`.
  CHarmAnlsProgressions FindAndSortBackwardMatchingProgressions(
      ChordIt it, const CHarmAnlsChords& chords) const;
  // One of the two by direction; empty for another direction.
  CHarmAnlsProgressions FindAndSortMatchingProgressions(ChordIt it, const CHarmAnlsChords& chords,
                                                        TMatchDirection direction) const;

  // The walks' way to the same answers without copying progressions: the best-ranked
  // progressions that fit forward at `it`, in list order, into `best` (cleared first). In a
  // list sorted stably they are the first entries of the sorted matches.
  void FindBestForwardMatchingProgressions(ChordIt it, const CHarmAnlsChords& chords,
                                           std::vector<const CHarmAnlsProgression*>& best) const;
  // The first of those, or nullptr when nothing fits.
  const CHarmAnlsProgression* FindBestForwardMatchingProgression(
      ChordIt it, const CHarmAnlsChords& chords) const;

  // Stable: entries of equal rank keep their order.
  void SortBySizeAndPriority();
  // The first two entries rank equal (expects a sorted list).
  bool HasSeveralBestMatchingProgressions() const;
  // The first entry and those behind it of the same rank (expects a sorted list).
  CHarmAnlsProgressions GetBestMatchingProgressions() const;
  CHarmAnlsProgressions SortAndGetBestMatchingProgressions();

  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
