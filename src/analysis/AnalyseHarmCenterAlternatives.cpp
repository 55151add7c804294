// Collecting the readings of a chord list: at every chord, the best tonic progressions that
// fit there each propose a center over a range grown to the neighbours that fit it; then
// outlasted, repeated and contradicted readings are cleaned up.

#include "harmony/analysis/AnalyseHarmCenterAlternatives.h"

#include <cstdint>
#include <limits>
#include <memory>

#include "HarmAnlsChordPatterns.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKey.h"

namespace harmony {

namespace {

// How far a center reaches over the neighbours that fit it, remembered per center. In a
// piece that stays in one key every reading reaches over the same long run of chords; walking
// it anew for each reading would make the search grow with the square of the piece. Each
// chord is tested at most once per center, and each answer is kept for the readings after.
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
  static constexpr std::uint32_t kUnknown = std::numeric_limits<std::uint32_t>::max();

  struct TRuns {
    CHarmCenterLite center;
    std::vector<std::int8_t> fits;       // by chord: 1 fits, 0 doesn't, -1 not tested yet
    std::vector<std::uint32_t> back;     // by begin 0..n: where the range's begin moves back to
    std::vector<std::uint32_t> forward;  // by end 0..n-1: where the range's end moves on to
  };

  TRuns& _RunsOf(const CHarmCenterLite& center) {
    for (const std::unique_ptr<TRuns>& runs : _runs) {
      if (runs->center == center) return *runs;
    }
    const std::size_t n = _chords.size();
    auto runs = std::make_unique<TRuns>();
    runs->center = center;
    runs->fits.assign(n, -1);
    runs->back.assign(n + 1, kUnknown);
    runs->forward.assign(n, kUnknown);
    return *_runs.emplace_back(std::move(runs));
  }

  bool _Fits(TRuns& runs, std::size_t i) {
    std::int8_t& known = runs.fits[i];
    if (known < 0) known = ScaleLite::ChordIsCompatibleWithScale(_chords[i], runs.center) ? 1 : 0;
    return known == 1;
  }

  // From `begin` back over the chords before it that fit; every begin on the way learns the
  // same answer.
  std::size_t _Back(TRuns& runs, std::size_t begin) {
    std::size_t b = begin;
    while (runs.back[b] == kUnknown && b > 0 && _Fits(runs, b - 1)) --b;
    const std::uint32_t reached =
        runs.back[b] != kUnknown ? runs.back[b] : static_cast<std::uint32_t>(b);
    for (std::size_t i = b; i <= begin; ++i) runs.back[i] = reached;
    return reached;
  }

  // From `end` on over the chords that fit, never onto the last chord of the list.
  std::size_t _Forward(TRuns& runs, std::size_t end) {
    const std::size_t n = _chords.size();
    std::size_t e = end;
    while (runs.forward[e] == kUnknown && e + 1 < n && _Fits(runs, e)) ++e;
    const std::uint32_t reached =
        runs.forward[e] != kUnknown ? runs.forward[e] : static_cast<std::uint32_t>(e);
    for (std::size_t i = end; i <= e; ++i) runs.forward[i] = reached;
    return reached;
  }

  const CHarmAnlsChords& _chords;
  std::vector<std::unique_ptr<TRuns>> _runs;
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
