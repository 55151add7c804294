// The chord record against keys, centers and scales; these go through the heavy chord and
// the sign keys.

#include <array>
#include <cstdint>

#include "chords/ChordHeavyDetail.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordTypes.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/SignKeyHeavy.h"

namespace harmony {

using chords_detail::FloorMod12;

namespace {

// The tones beyond the root that must be scale keys, by exact mask.
struct TInKeyRow {
  std::uint64_t mask;
  std::array<int, 3> intvls;
  int count;
};
constexpr std::array<TInKeyRow, 11> kInKeyRows{{
    {145, {}, 0},           // major: the root decides
    {273, {}, 0},           // aug
    {1169, {}, 0},          // dominant 7
    {73, {3, 6}, 2},        // dim
    {137, {3, 7}, 2},       // minor
    {1161, {3, 7, 10}, 3},  // minor 7
    {2185, {3, 7, 11}, 3},  // minor maj7
    {129, {7}, 1},          // power
    {133, {2, 7}, 2},       // sus2
    {161, {5, 7}, 2},       // sus4
    {2193, {4, 7, 11}, 3},  // maj7
}};

constexpr std::uint64_t kBit7 = 1U << 7, kBit10 = 1U << 10, kBit11 = 1U << 11;

bool Contains(std::initializer_list<int> values, int value) {
  for (int v : values) {
    if (v == value) return true;
  }
  return false;
}

}  // namespace

bool CChordLite::IsNonidenticalSupersetOf(const CChordLite& other) const {
  const CMySet<int> mine = ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).KeyNrSet();
  const CMySet<int> theirs = other.ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).KeyNrSet();
  for (int key : theirs) {
    if (!mine.contains(key)) return false;
  }
  return mine.size() > theirs.size();
}

bool CChordLite::IsInSignKeyRegardlessOfEnh(const CSignKeyLite& signKey) const {
  return IsInSignKeyRegardlessOfEnh(signKey.ToSignKeyHeavy());
}

bool CChordLite::IsInSignKeyRegardlessOfEnh(const CSignKeyHeavy& signKey) const {
  const std::uint64_t mask = Semitones.Word();
  if (IsUndef() || mask == 1) return false;
  const auto inKey = [&](int intvl) {
    return signKey.KeyNrToDegreeNr(FloorMod12(RootKeyEnh.KeyNr + intvl)) >= 0;
  };
  if (!inKey(0)) return false;
  for (const TInKeyRow& row : kInKeyRows) {
    if (row.mask != mask) continue;
    for (int i = 0; i < row.count; ++i) {
      if (!inKey(row.intvls[static_cast<std::size_t>(i)])) return false;
    }
    return true;
  }
  const bool hasFifth = (mask & 1U) != 0 && (mask & kBit7) != 0;
  if (hasFifth && !inKey(7)) return false;
  if (hasFifth && (mask & kBit10) != 0 && !inKey(10)) return false;
  return true;
}

CChordLite CChordLite::ChordExpandedWithTypicalSeventh(const CHarmCenterLite& center) const {
  if (center.RootKeyEnh.IsUndef()) return CChordLite();
  CChordLite expanded(RootKeyEnh, BasicChordSemitones());
  const std::uint64_t sevenths = Semitones.Word() & (kBit10 | kBit11);
  if (sevenths != 0) {
    expanded.Semitones = CSemitones(expanded.Semitones.Word() | sevenths);
    return expanded;
  }
  if (IsUndef()) return expanded;
  const int degree = FloorMod12(RootKeyEnh.KeyNr - center.RootKeyEnh.KeyNr);
  int seventh = -1;
  if (center.Semitones.IsModalScaleMinor()) {  // Phrygian, natural minor, Dorian
    if (Contains({0, 2, 5, 7, 10}, degree)) seventh = 10;
    if (Contains({3, 8}, degree)) seventh = 11;
  } else if (center.Semitones.IsModalScaleMajor()) {  // Mixolydian, major, Lydian
    if (Contains({2, 4, 7, 9, 11}, degree)) seventh = 10;
    if (Contains({0, 5}, degree)) seventh = 11;
  }
  if (seventh >= 0) expanded.Semitones.AddIntvl(seventh);
  return expanded;
}

int CChordLite::RootNoteDegreeNrInSignKey(const CSignKeyHeavy& signKey) const {
  return signKey.KeyNrToDegreeNr(RootKeyEnh.KeyNr);
}

int CChordLite::BassNoteDegreeNrInSignKey(const CSignKeyHeavy& signKey) const {
  return signKey.KeyNrToDegreeNr(BassKeyEnh.KeyNr);
}

void CChordLite::TransposeAndAdjustEnh(int intvl, const CScaleLite& scale) {
  if (IsUndef()) return;
  RootKeyEnh.TranposeThisAndAdjustEnh(intvl, scale);
  BassKeyEnh.TranposeThisAndAdjustEnh(intvl, scale);
}

TChordTypeVecAndChordType CChordTypes::FindChordTypeVecAndChordTypeFromChord(
    const CChordHeavy& chord) const {
  return FindChordTypeVecAndChordTypeFromIntvls(chord.IntvlSet());
}

// --- The heavy chord in keys and scales

bool CChordHeavy::IsInSignKeyRegardlessOfEnh(const CSignKeyHeavy& signKey) const {
  CChordLite lite;
  lite.SetFromChordHeavy(*this);
  return lite.IsInSignKeyRegardlessOfEnh(signKey);
}

CScaleHeavy CChordHeavy::ConstructScaleInSignKey(const CSignKeyHeavy& signKey) const {
  return signKey.ConstructScaleForChord(*this);
}

CScaleHeavy CChordHeavy::ConstructScaleInHarmCenter(const CHarmCenterLite& center) const {
  return CScaleHeavy(center.RootKeyEnh, center.Semitones).ConstructScaleForChord(*this);
}

TScaleType CChordHeavy::ScaleType() const {
  return CScaleHeavy::Undef.ConstructScaleForChord(*this).ScaleType();
}

}  // namespace harmony
