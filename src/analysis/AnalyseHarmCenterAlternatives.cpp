// Collecting the readings of a chord list: at every chord, the best tonic progressions that
// fit there each propose a center over a range grown to the neighbours that fit it; then
// outlasted, repeated and contradicted readings are cleaned up.

#include "harmony/analysis/AnalyseHarmCenterAlternatives.h"

#include "HarmAnlsChordPatterns.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKey.h"

namespace harmony {

namespace {

// How far a center reaches over the neighbours that fit it, remembered per center. In a
// piece that stays in one key every reading reaches over the same long run of chords; walking
// it anew for each reading would make the search grow with the square of the piece. The
// readings are asked for chord by chord from the front, so each center keeps the last run it
// walked in each direction: a later question inside that run is answered at once, and one
// behind it walks only up to where the run is known.
class TCenterReach {
 public:
  explicit TCenterReach(const CHarmAnlsChords& chords) : _chords(chords) {}

  // The same as CHarmAnlsCenterInChords::ExtendForAdjacentDiatonicOrAllowedOutlierChords.
  void Extend(CHarmAnlsCenterInChords& entry) {
    const std::size_t n = _chords.size();
    if (n == 0) return;
    TRuns& runs = _RunsOf(entry.HarmCenter);
    if (entry.Begin <= n) entry.Begin = _Back(runs, entry.Begin);
    if (entry.End + 1 < n) entry.End = _Forward(runs, entry.End);
  }

 private:
  // Answers known for a center: every begin in [backFrom, backTo] moves back to backFrom, and
  // every end in [forwardFrom, forwardTo] moves on to forwardTo.
  struct TRuns {
    CHarmCenterLite center;
    bool backKnown = false, forwardKnown = false;
    std::size_t backFrom = 0, backTo = 0, forwardFrom = 0, forwardTo = 0;
  };

  TRuns& _RunsOf(const CHarmCenterLite& center) {
    for (TRuns& runs : _runs) {
      if (runs.center == center) return runs;
    }
    return _runs.emplace_back(TRuns{center});
  }

  bool _Fits(const TRuns& runs, std::size_t i) const {
    return ScaleLite::ChordIsCompatibleWithScale(_chords[i], runs.center);
  }

  // Back over the chords before `begin` that fit.
  std::size_t _Back(TRuns& runs, std::size_t begin) {
    if (runs.backKnown && runs.backFrom <= begin && begin <= runs.backTo) return runs.backFrom;
    // Down to the known run, if it lies below: the chords from its top on fit as well.
    const bool aboveKnown = runs.backKnown && runs.backTo < begin;
    const std::size_t floor = aboveKnown ? runs.backTo : 0;
    std::size_t b = begin;
    while (b > floor && _Fits(runs, b - 1)) --b;
    const std::size_t reached = aboveKnown && b == floor ? runs.backFrom : b;
    runs.backKnown = true;
    runs.backFrom = reached;
    runs.backTo = begin;
    return reached;
  }

  // On over the chords from `end` that fit, never onto the last chord of the list. The runs
  // of different progressions at neighbouring chords end in any order, so a question may also
  // come from below the known run.
  std::size_t _Forward(TRuns& runs, std::size_t end) {
    if (runs.forwardKnown && runs.forwardFrom <= end && end <= runs.forwardTo) {
      return runs.forwardTo;
    }
    // Up to the known run, if it lies above: from its start on the answer is known.
    const bool belowKnown = runs.forwardKnown && end < runs.forwardFrom;
    std::size_t e = end;
    while ((!belowKnown || e < runs.forwardFrom) && e + 1 < _chords.size() && _Fits(runs, e)) ++e;
    const std::size_t reached = belowKnown && e == runs.forwardFrom ? runs.forwardTo : e;
    runs.forwardKnown = true;
    runs.forwardFrom = end;
    runs.forwardTo = reached;
    return reached;
  }

  const CHarmAnlsChords& _chords;
  std::vector<TRuns> _runs;
};

}  // namespace

CAnalyseHarmCenterAlternatives::CAnalyseHarmCenterAlternatives(const CHarmAnlsChords& chords)
    : _Chords(chords), _Progressions(CHarmAnlsProgressions::TonicProgressions()) {
  AnalyseResult();
}

void CAnalyseHarmCenterAlternatives::AnalyseResult() {
  _Result.clear();
  if (_Chords.CountDifferentNonUndefChords() == 1) {
    _AnalyseSingleChord();
  } else {
    _AnalyseSeveralChords();
  }
  _Result.RemoveShorterContainedAlternatives();
  _Result.Deduplication();
  _Result.RemoveNonSureAlternativesWithSameRangeAsSureAlternative();
}

void CAnalyseHarmCenterAlternatives::_AnalyseSingleChord() {
  // Nothing moves, so the chord itself is taken as the tonic: minor when it sounds minor or
  // diminished. Only the first chord is in the range, whatever repeats follow.
  const CHarmAnlsChordWithPos& chord = _Chords.front();
  using harmanls::ChordPatternMatch;
  using harmanls::TChordPattern;
  const bool minor = ChordPatternMatch(TChordPattern::kMinor).Matches(chord.Semitones) ||
                     ChordPatternMatch(TChordPattern::kDiminished).Matches(chord.Semitones);
  const CHarmCenterLite center(
      chord.RootKeyEnh,
      SemitonesFromSignKeyType(minor ? TSignKeyType::Minor : TSignKeyType::Major));
  _Result.emplace_back(1.0, CHarmAnlsCentersInChords{CHarmAnlsCenterInChords(center, 0, 1)});
}

void CAnalyseHarmCenterAlternatives::_AnalyseSeveralChords() {
  std::vector<const CHarmAnlsProgression*> best;
  best.reserve(_Progressions.size());
  TCenterReach reach(_Chords);
  for (auto it = _Chords.cbegin(); it != _Chords.cend(); ++it) {
    _Progressions.FindBestForwardMatchingProgressions(it, _Chords, best);
    const std::size_t i = static_cast<std::size_t>(it - _Chords.cbegin());
    for (const CHarmAnlsProgression* progression : best) {
      CHarmAnlsCenterInChords entry(
          progression->HarmCenterCalculatedFromFoundProgressionLastChord(it, _Chords), i,
          i + progression->size());
      reach.Extend(entry);
      _Result.emplace_back(1.0 / static_cast<double>(best.size()), CHarmAnlsCentersInChords{entry});
    }
  }
}

CHarmAnlsCenters CAnalyseHarmCenterAlternatives::BestResults() const {
  CHarmAnlsCenters centers;
  for (const CHarmAnlsCenterAlternative& alternative : _Result) {
    _StoreAlternativeInResult(alternative, centers);
  }
  return centers;
}

void CAnalyseHarmCenterAlternatives::_StoreAlternativeInResult(
    const CHarmAnlsCenterAlternative& alternative, CHarmAnlsCenters& centers) const {
  for (const CHarmAnlsCenterInChords& entry : alternative.Centers) {
    CHarmAnlsCenter& center = centers.emplace_back(entry.ToHarmAnlsCenter(_Chords));
    center.Probability = alternative.Probability;
  }
}

void CAnalyseHarmCenterAlternatives::WriteTrace(std::ostream& out) const {
  out << "CAnalyseHarmCenterAlternatives: ";
  _Result.WriteTrace(out);
}

void CAnalyseHarmCenterAlternatives::WriteTraceBrief(std::ostream& out) const {
  _Result.WriteTraceBrief(out);
}

void CAnalyseHarmCenterAlternatives::WriteInitializerList(std::ostream& out) const {
  out << "CAnalyseHarmCenterAlternatives(";
  _Chords.WriteInitializerList(out);
  out << ')';
}

}  // namespace harmony
