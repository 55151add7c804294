// Finding harmonic centers by progressions: the tonic readings of the whole piece, with a
// walk over each sign key as fall-back, and the cadence walk. A found center reaches over its
// neighbours as long as they fit it; the row of centers is cut with ChangeRangeOfHarmCenter,
// which deals the chords before and behind the range to the neighbouring centers.

#include <array>
#include <iterator>
#include <utility>

#include "harmony/analysis/AnalyseHarmCenterAlternatives.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKey.h"
#include "harmony/pitch/Enh.h"

namespace harmony {

namespace {

using ChordIt = CHarmAnlsChords::const_iterator;

constexpr std::array<bool, 12> kBlackKeys = {false, true,  false, true,  false, false,
                                             true,  false, true,  false, true,  false};

int Mod12(int value) { return ((value % 12) + 12) % 12; }

bool Fits(const CHarmAnlsChordWithPos& chord, const CHarmCenterLite& center) {
  return ScaleLite::ChordIsCompatibleWithScale(chord, center);
}

// A cadence center is spelled as in C major, black keys as flats: its chords are not asked.
TEnh CadenceCenterEnh(int keyNr) {
  if (kBlackKeys[static_cast<std::size_t>(keyNr)]) return TEnh_b;
  const TEnh enh = MakeSensefulEnhForKeyNrAssumingCMajor(keyNr, TEnh_Undef);
  return (keyNr == 0 || keyNr == 5) && enh == TEnh_s ? TEnh_n : enh;
}

// A sign key that the caller gave is never overwritten: only an undefined one takes root
// and type of the center, and then its position when it has none.
void FillSignKeyFromCenter(CHarmAnlsSignKey& signKey, const CHarmAnlsCenter& center) {
  if (!signKey.IsUndef()) return;
  signKey.SignKey.RootKeyEnh = center.HarmCenter.RootKeyEnh;
  signKey.SignKey.SignKeyType = SignKeyTypeFromSemitones(center.HarmCenter.Semitones);
  if (IsHarmAnlsUndef(signKey.Position)) signKey.Position = center.Position;
}

// The first steps of both walks: whether to look at the center at all, and an undefined
// center takes the sign key's scale (and position) as its start.
bool PrepareCenter(CHarmAnlsCenter& center, const CHarmAnlsSignKey& signKey,
                   CHarmonicAnalyse::TOnlyUndefCenters only) {
  if (only == CHarmonicAnalyse::kOnlyUndefCenters && !center.IsUndef()) return false;
  if (center.IsUndef()) center.IfUndefFillWithHarmSignKey(signKey);
  return true;
}

ChordIt ExtendBackward(ChordIt b, const CHarmAnlsChords& chords, const CHarmCenterLite& center) {
  while (b != chords.begin() && Fits(*std::prev(b), center)) --b;
  return b;
}

}  // namespace

void CHarmonicAnalyse::_FindAndInsertHarmCentersUsingTonicProgressions(TOnlyUndefCenters only) {
  if (_HarmSignKeys.empty()) return;
  // The readings always come from the tonic table, whatever the object holds.
  CHarmAnlsCenters readings = CAnalyseHarmCenterAlternatives(_InputChords).BestResults();
  if (!readings.empty()) {
    // The readings replace the first sign key's centers whole: a chord that no reading
    // covers is in no center any more, and simultaneous readings stand side by side.
    CHarmAnlsSignKey& first = _HarmSignKeys.front();
    first.HarmCenters = std::move(readings);
    FillSignKeyFromCenter(first, first.HarmCenters.front());
    return;
  }
  for (CHarmAnlsSignKey& signKey : _HarmSignKeys) {
    _FindAndInsertHarmCenterUsingTonicProgressions_ForSignKey(signKey, only);
  }
}

void CHarmonicAnalyse::_FindAndInsertHarmCenterUsingTonicProgressions_ForSignKey(
    CHarmAnlsSignKey& signKey, TOnlyUndefCenters only) {
  CHarmAnlsCenters& centers = signKey.HarmCenters;
  // The walk goes on into the centers that it cuts off behind a found range.
  for (std::size_t c = 0; c < centers.size(); ++c) {
    auto center = centers.begin() + static_cast<std::ptrdiff_t>(c);
    if (!PrepareCenter(*center, signKey, only)) continue;
    const CHarmAnlsChords& chords = center->HarmChords;
    for (ChordIt i = chords.begin(); i != chords.end(); ++i) {
      const CHarmAnlsProgression* best =
          _Progressions.FindBestForwardMatchingProgression(i, chords);
      if (best == nullptr) continue;
      const CHarmCenterLite found =
          best->HarmCenterCalculatedFromFoundProgressionLastChord(i, chords);
      center->HarmCenter = found;
      if (IsHarmAnlsUndef(center->Position)) center->Position = i->Position;
      const ChordIt b = ExtendBackward(i, chords, found);
      // Forward from the run's first chord: the found chords themselves have to fit the
      // center to stay in it.
      ChordIt f = i;
      while (std::next(f) != chords.end() && Fits(*std::next(f), found)) ++f;
      const ChordIt next = std::next(f);
      const double start = b->Position;
      const double end = next == chords.end() ? kHarmAnlsMaxDouble : next->Position;
      center = centers.ChangeRangeOfHarmCenter(center, start, end);
      c = static_cast<std::size_t>(center - centers.begin());
      FillSignKeyFromCenter(signKey, *center);
      break;  // the chords behind the range are in the next center now
    }
  }
}

void CHarmonicAnalyse::_FindAndInsertHarmCentersUsingCadenceProgressions(TOnlyUndefCenters only) {
  for (CHarmAnlsSignKey& signKey : _HarmSignKeys) {
    _FindAndInsertHarmCentersUsingCadenceProgression_ForSignKey(signKey, only);
  }
}

void CHarmonicAnalyse::_FindAndInsertHarmCentersUsingCadenceProgression_ForSignKey(
    CHarmAnlsSignKey& signKey, TOnlyUndefCenters only) {
  CHarmAnlsCenters& centers = signKey.HarmCenters;
  for (std::size_t c = 0; c < centers.size(); ++c) {
    auto center = centers.begin() + static_cast<std::ptrdiff_t>(c);
    if (!PrepareCenter(*center, signKey, only) || center->HarmChords.empty()) continue;
    const CHarmAnlsChords& chords = center->HarmChords;
    ChordIt i = chords.begin();
    if (i->IsUndef()) ++i;
    // Undefined chords don't stop the scan; they just fit nothing.
    const CHarmAnlsProgression* best = nullptr;
    for (; i != chords.end(); ++i) {
      best = _Progressions.FindBestForwardMatchingProgression(i, chords);
      if (best != nullptr) break;
    }
    if (best == nullptr) continue;
    // Judged from the first chord of the cadence, not from the tonic it may lead to.
    const int keyNr = Mod12(i->RootKeyEnh.KeyNr - best->front().RootDistToHarmCenter);
    const CHarmCenterLite found(CKeyEnh(keyNr, CadenceCenterEnh(keyNr)),
                                SemitonesFromSignKeyType(best->SignKeyType));
    center->HarmCenter = found;
    if (IsHarmAnlsUndef(center->Position)) center->Position = i->Position;
    // The end of the match is the greater of the chords' end and the run's end: a cadence
    // center claims everything from its match on. Chords before the grown range go to the
    // center in front, which this walk does not visit again.
    const double start = ExtendBackward(i, chords, found)->Position;
    center = centers.ChangeRangeOfHarmCenter(center, start, kHarmAnlsMaxDouble);
    c = static_cast<std::size_t>(center - centers.begin());
    FillSignKeyFromCenter(signKey, *center);
  }
}

CHarmonicAnalyse::TFoundHarmCenter CHarmonicAnalyse::_FindHarmCenterViaTonicProgression(
    ChordIt it, const CHarmAnlsChords& chords, const CHarmAnlsSignKey& /*signKey*/) const {
  const CHarmAnlsProgression* best = _Progressions.FindBestForwardMatchingProgression(it, chords);
  if (best == nullptr) return {false, CHarmCenterLite::Undef, chords.end()};
  return {true, best->HarmCenterCalculatedFromFoundProgressionLastChord(it, chords), it};
}

void CHarmonicAnalyse::_ExtendRangeOfHarmCenter(const CHarmCenterLite& center,
                                                const CHarmAnlsChords& chords, ChordIt& begin,
                                                ChordIt& end) const {
  begin = ExtendBackward(begin, chords, center);
  if (end == chords.end()) return;
  while (std::next(end) != chords.end() && Fits(*std::next(end), center)) ++end;
  ++end;  // behind the range
}

}  // namespace harmony
