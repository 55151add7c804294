// Collecting the readings of a chord list: at every chord, the best tonic progressions that
// fit there each propose a center over a range grown to the neighbours that fit it; then
// outlasted, repeated and contradicted readings are cleaned up.

#include "harmony/analysis/AnalyseHarmCenterAlternatives.h"

#include "HarmAnlsChordPatterns.h"
#include "harmony/chords/SignKey.h"

namespace harmony {

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
  for (auto it = _Chords.cbegin(); it != _Chords.cend(); ++it) {
    _Progressions.FindBestForwardMatchingProgressions(it, _Chords, best);
    const std::size_t i = static_cast<std::size_t>(it - _Chords.cbegin());
    for (const CHarmAnlsProgression* progression : best) {
      CHarmAnlsCenterInChords entry(
          progression->HarmCenterCalculatedFromFoundProgressionLastChord(it, _Chords), i,
          i + progression->size());
      entry.ExtendForAdjacentDiatonicOrAllowedOutlierChords(_Chords);
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
