#pragma once
// A harmonic center of the analysis tree: the tonal center a passage circles around, from
// where it starts, with the chords that belong to it; and the row of centers of one sign key.

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "harmony/Json.h"
#include "harmony/Trace.h"
#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/chords/HarmCenter.h"

namespace harmony {

class CHarmAnlsSignKey;

class CHarmAnlsCenter : public TraceFamily<CHarmAnlsCenter> {
 public:
  // 1 / the number of readings of the same chords; only the search for alternative readings
  // sets it.
  double Probability = kHarmAnlsUndefDouble;
  double Position = kHarmAnlsUndefDouble;
  CHarmCenterLite HarmCenter;
  CHarmAnlsChords HarmChords;

  CHarmAnlsCenter() = default;
  CHarmAnlsCenter(double probability, double position, const CHarmCenterLite& center,
                  CHarmAnlsChords chords = {})
      : Probability(probability),
        Position(position),
        HarmCenter(center),
        HarmChords(std::move(chords)) {}

  bool IsUndef() const { return HarmCenter.RootKeyEnh.KeyNr == kKeyNrUndef; }

  // Position, center and the chords with their positions; the probability takes no part.
  bool operator==(const CHarmAnlsCenter& other) const;

  // An undefined center takes the sign key's scale, an unplaced one its position.
  void IfUndefFillWithHarmSignKey(const CHarmAnlsSignKey& signKey);
  // Sets each chord's distances of root and bass to this center; nothing for an undefined
  // center.
  void AnalyseHarmFunctionsOfChords();

  // Reads what AppendJSONString writes (after the relaxed pass of the JSON reader); missing
  // members read as undefined.
  static CHarmAnlsCenter FromDictionary(const JsonDict& dict);

  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CHarmAnlsCenters : public std::vector<CHarmAnlsCenter>, public TraceFamily<CHarmAnlsCenters> {
 public:
  using std::vector<CHarmAnlsCenter>::vector;

  // Takes out of all centers the chords at smaller <= p < larger, and an undefined chord at
  // larger (the closing chord of that range); empty when smaller >= larger.
  CHarmAnlsChords CollectAndEraseChordsFromSmallerUntilBeforeLarger(double smaller, double larger);
  // Moves the borders of `center` to a and b and deals the chords of the whole row anew:
  // what falls in front goes to the center before, what falls behind to the center after,
  // each made as an undefined center when there is none. Returns the center's new iterator.
  iterator ChangeRangeOfHarmCenter(iterator center, double a, double b);
  // Moves all chords from `pos` on into the center after `center` (made when missing).
  iterator CreateNewHarmCenterWithChordsAfterPos(iterator center, double pos);
  // The center of the highest order that occurs, or the undefined center (see the .cpp for
  // why this is seldom a defined one).
  CHarmCenterLite FindMostOccurentHarmCenter() const;
  // Neighbours with the same center become one; the first keeps its position.
  void MergeAdjacentSameHarmCenters();

  static CHarmAnlsCenters FromDictionary(const JsonDict& array);

  void AppendJSONString(std::ostream& out) const;
  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  // Into the center at `target`: at the first chord's place, then sorted by position.
  static void _InsertChords(iterator target, const CHarmAnlsChords& chords);
};

// The fixed form of the JSON, or the bare word "Undef" for an undefined probability.
void AppendHarmAnlsProbability(std::ostream& out, double probability);
// The probability as a whole percent: "50" for 0.5.
std::string HarmAnlsPercentText(double probability);
// A probability member that holds no number reads as undefined.
double HarmAnlsProbabilityFromDictionary(const JsonDict& dict);

}  // namespace harmony
