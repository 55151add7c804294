#include "harmony/analysis/ChordSimplifier.h"

#include "analysis/ChordSimplifierHook.h"

#include <cstdint>

#include "harmony/chords/BasicChord.h"
#include "harmony/chords/ChordSymbolParser.h"

namespace harmony {

namespace {

// Where the bass may stand above the root of each triad (bit n: n semitones) for the chord to
// read as stacked thirds from the bass, and whether the center must hold the bass. A major
// triad over its sixth is a minor seventh chord on the bass, a minor triad over its flat
// sixth a major seventh chord; the symmetric triads read the same from several of their tones,
// so the harmonic center decides whether the bass is the better root.
struct TBassFit {
  TBasicChord Basic;
  std::uint16_t BassIntvls;
  bool CenterMustHoldBass;
};
constexpr TBassFit kBassFits[] = {
    {kBasicChordMajor, 1U << 9, false},
    {kBasicChordMinor, 1U << 8, false},
    {kBasicChordAug, (1U << 4) | (1U << 8), true},
    {kBasicChordDim, (1U << 3) | (1U << 6) | (1U << 9), true},
};

const TBassFit* BassFitFor(TBasicChord basic) {
  for (const TBassFit& fit : kBassFits) {
    if (fit.Basic == basic) return &fit;
  }
  return nullptr;
}

}  // namespace

namespace analysis_detail {
std::pair<bool, CChordLite> SimplifyBassNoteForParser(const CChordLite& chord,
                                                      const CHarmCenterLite& center,
                                                      const CSignKeyLite& signKey) {
  return ChordSimplifier()._SimplifyBassNoteToStackedThirdChord(chord, center, signKey);
}
}  // namespace analysis_detail

CChordLite ChordSimplifier::Simplify(const CChordLite& chord) const {
  return Simplify(chord, CHarmCenterLite::Undef, CSignKeyLite::Undef);
}

CChordLite ChordSimplifier::Simplify(const CChordLite& chord, const CHarmCenterLite& center) const {
  return Simplify(chord, center, CSignKeyLite::Undef);
}

CChordLite ChordSimplifier::Simplify(const CChordLite& chord, const CSignKeyLite& signKey) const {
  return Simplify(chord, CHarmCenterLite::Undef, signKey);
}

CChordLite ChordSimplifier::Simplify(const CChordLite& chord, const CHarmCenterLite& center,
                                     const CSignKeyLite& signKey) const {
  const std::pair<bool, CChordLite> simplified =
      _SimplifyBassNoteToStackedThirdChord(chord, center, signKey);
  return simplified.first ? simplified.second : chord;
}

std::pair<bool, CChordLite> ChordSimplifier::_SimplifyBassNoteToStackedThirdChord(
    const CChordLite& chord, const CHarmCenterLite& givenCenter,
    const CSignKeyLite& signKey) const {
  const CHarmCenterLite center =
      givenCenter.RootKeyEnh.IsUndef() ? signKey.ToHarmCenter() : givenCenter;
  const bool centerIsDef = !center.RootKeyEnh.IsUndef();

  const TBassFit* fit = BassFitFor(chord.BasicChord());
  const int bassIntvl = chord.AbsKeyIntvlFromRootToBass();  // -129 without root or bass
  if (fit == nullptr || bassIntvl < 0 || ((fit->BassIntvls >> bassIntvl) & 1U) == 0) {
    return {false, chord};
  }
  if (fit->CenterMustHoldBass && centerIsDef &&
      !center.Semitones.HasIntvl(center.DistToRootKey(chord.BassKeyEnh.KeyNr))) {
    return {false, chord};
  }

  CChordLite stacked = chord;
  stacked.Semitones.RotateRootToIx(static_cast<unsigned long>(bassIntvl));
  if (chord.BassKeyEnh != chord.RootKeyEnh) stacked.RootKeyEnh = chord.BassKeyEnh;
  stacked.Semitones.AddIntvl(0);
  stacked.BassKeyEnh = CKeyEnh();
  if (centerIsDef) stacked.RootKeyEnh.AdjustEnhToScale(center);
  return {true, stacked};
}

CChordLite ChordSimplifier::_AdjustRootKeyEnhToHarmCenterIfDef(
    const CChordLite& chord, const CHarmCenterLite& center) const {
  CChordLite adjusted = chord;
  if (!center.RootKeyEnh.IsUndef()) adjusted.RootKeyEnh.AdjustEnhToScale(center);
  return adjusted;
}

void ChordSimplifier::InstallAsChordSymbolParserHook() {
  CChordSetFromStringHelper::SetSimplifyBassNoteHook(&analysis_detail::SimplifyBassNoteForParser);
}

void ChordSimplifier::WriteTrace(std::ostream& out) const { out << "ChordSimplifier"; }

void ChordSimplifier::WriteTraceBrief(std::ostream& out) const { out << "ChordSimplifier"; }

void ChordSimplifier::WriteInitializerList(std::ostream& out) const { out << "ChordSimplifier()"; }

}  // namespace harmony
