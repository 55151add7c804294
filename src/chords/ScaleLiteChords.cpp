// The light scale's members and tests that need chords.

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKey.h"
#include "harmony/pitch/SemitonesMatch.h"

namespace harmony {

namespace {

constexpr int kHeavyWrap = CIntvlSet::kDefaultWrapIntvl;
constexpr std::uint64_t kMajorScale = 2741;

CScaleHeavy HeavyScale(const CScaleLite& scale) {
  return CScaleHeavy(scale.RootKeyEnh, scale.Semitones);
}

}  // namespace

void CScaleLite::SetRootKeyEnhWithLeastSigns() {
  if (IsUndef()) return;
  CChordHeavy chord(RootKeyEnh, Semitones, CKeyEnh(), kHeavyWrap);
  chord.SetRootNoteEnhWithLeastSigns();
  RootKeyEnh.Enh = chord.RootNote().Enh();
}

CScaleLite CScaleLite::ConstructScaleForChord(const CChordLite& chord) const {
  const CScaleHeavy base = IsUndef() ? CScaleHeavy() : HeavyScale(*this);
  return CScaleLite(base.ConstructScaleForChord(chord.ToChordHeavy(kHeavyWrap)));
}

CChordLite CScaleLite::ChordTriadForScale() const {
  CChordLite chord;
  chord.SetFromChordHeavy(HeavyScale(*this).ChordTriadForScale());
  return chord;
}

CChordLite CSignKeyLite::ToChord() const {
  if (IsUndef()) return CChordLite();
  const bool minor = SignKeyType == TSignKeyType::Minor;
  return CChordLite(RootKeyEnh,
                    SemitonesForBasicChord(minor ? kBasicChordMinor : kBasicChordMajor));
}

namespace ScaleLite {

bool ChordIncludingOptionsIsDiatonicInScale(const CChordLite& chord, const CScaleLite& scale) {
  return HeavyScale(scale).ChordIncludingOptionsIsDiatonicInScaleDisregardingEnh(
      chord.ToChordHeavy(kHeavyWrap));
}

bool ChordExcludingOptionsIsDiatonicInScale(const CChordLite& chord, const CScaleLite& scale) {
  for (int key : chord.ToChordHeavy(kHeavyWrap).KeyNrSetOfBasicChordAndBassNote()) {
    if (scale.KeyNrToDegreeNr(key) < 0) return false;
  }
  return true;
}

bool IsCompatibleOutlierChordOfScale(const CChordLite& chord, const CScaleLite& scale) {
  if (scale.Semitones.Word() != kMajorScale) return false;
  if (chord.IsUndef() || scale.IsUndef()) return false;
  const int degree = NormalizedKeyNr(chord.RootKeyEnh.KeyNr - scale.RootKeyEnh.KeyNr);
  static const CSemitonesMatch majorChord({0, 4, 7}, {1, 2, 3, 5, 6, 8, 9, 10, 11});
  static const CSemitonesMatch minorChord({0, 3, 7}, {1, 2, 5, 6, 8, 9, 10, 11});
  if (degree == 3 || degree == 10) return majorChord.Matches(chord.Semitones);
  if (degree == 5) return minorChord.Matches(chord.Semitones);
  return false;
}

bool ChordIsCompatibleWithScale(const CChordLite& chord, const CScaleLite& scale) {
  if (ChordIncludingOptionsIsDiatonicInScale(chord, scale)) return true;
  if (IsCompatibleOutlierChordOfScale(chord, scale)) return true;
  return IsDominantBasicChord(chord.BasicChord()) &&
         scale.KeyNrToDegreeNr(chord.RootKeyEnh.KeyNr) == 4;
}

}  // namespace ScaleLite

}  // namespace harmony
