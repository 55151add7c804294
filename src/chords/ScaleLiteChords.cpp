// The light scale's members and tests that need chords.

#include <cstdint>
#include <optional>

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

constexpr std::uint64_t kTwelveBits = 0xfff;

// The keys of a mask laid on a root: bit k for key k.
constexpr std::uint32_t KeysOnRoot(int root, std::uint64_t mask) {
  const auto bits = static_cast<std::uint32_t>(mask);
  return root == 0 ? bits : ((bits << root) | (bits >> (12 - root))) & kTwelveBits;
}

constexpr bool IsKey(int keyNr) { return keyNr >= 0 && keyNr < 12; }

// Root, lowest note and every note of the chord in the scale, told by key sets instead of a
// heavy chord and a heavy scale: the heavy chord's notes are its mask on its root plus the
// bass slot (the bass, else the root), and the heavy scale's keys are its mask on its root.
// Empty for values outside those plain forms, which keep the heavy objects.
std::optional<bool> DiatonicByKeySets(const CChordLite& chord, const CScaleLite& scale) {
  const int root = chord.RootKeyEnh.KeyNr;
  const int scaleRoot = scale.RootKeyEnh.KeyNr;
  // Without a root the chord has no key to be in a scale; a scale without root has no keys.
  if (root == kKeyNrUndef || scaleRoot == kKeyNrUndef) return false;
  const int bassNr = chord.BassKeyEnh.KeyNr;
  if (!IsKey(root) || !IsKey(scaleRoot) || !(IsKey(bassNr) || bassNr == kKeyNrUndef) ||
      chord.Semitones.Word() > kTwelveBits || scale.Semitones.Word() > kTwelveBits) {
    return std::nullopt;
  }
  const int bass = bassNr == kKeyNrUndef ? root : bassNr;
  const std::uint32_t chordKeys =
      KeysOnRoot(root, chord.Semitones.Word()) | (1u << root) | (1u << bass);
  return (chordKeys & ~KeysOnRoot(scaleRoot, scale.Semitones.Word())) == 0;
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
  if (const std::optional<bool> diatonic = DiatonicByKeySets(chord, scale)) return *diatonic;
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
