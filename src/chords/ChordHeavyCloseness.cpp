// How well a heavy chord fits a key: counts of its tones inside and outside the key, and a
// closeness score by which the analyser chooses between candidate keys.

#include <array>

#include "chords/ChordHeavyDetail.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/SignKeyHeavy.h"

namespace harmony {
namespace {

using chords_detail::FloorMod12;

// Closeness of a chord by the key interval from the key's root up to the chord's root. In a
// major key the triads on I, IV and V fit best and ii, iii and vi nearly as well; in a minor
// key the same idea with the natural and the harmonic minor's dominant.
using TClosenessRow = std::array<int, 12>;
struct TClosenessTable {
  bool minorKind;
  TBasicChord basicChord;
  TClosenessRow row;
};
constexpr std::array<TClosenessTable, 12> kClosenessTables{{
    {false, kBasicChordMajor, {2, 0, 0, 0, 2, 2, 0, 2, 0, 0, 0, 0}},
    {false, kBasicChordMinor, {0, 0, 2, 0, 2, 0, 0, 0, 0, 2, 0, 0}},
    {false, kBasicChordSus4, {2, 0, 2, 0, 2, 0, 0, 2, 0, 2, 0, 0}},
    {false, kBasicChordSus2, {2, 0, 2, 0, 0, 2, 0, 2, 0, 2, 0, 0}},
    {false, kBasicChordPower, {2, 0, 2, 0, 2, 2, 0, 2, 0, 2, 0, 0}},
    {true, kBasicChordMajor, {0, 0, 0, 2, 0, 1, 0, 2, 2, 0, 2, 0}},
    {true, kBasicChordMinor, {2, 0, 0, 0, 0, 2, 0, 2, 0, 2, 0, 0}},
    {true, kBasicChordAug, {1, 1, 1, 1, 1, 1, 0, 2, 0, 0, 0, 0}},
    {true, kBasicChordDim, {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 2}},
    {true, kBasicChordSus4, {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 0}},
    {true, kBasicChordSus2, {1, 0, 0, 1, 0, 1, 0, 1, 1, 0, 1, 0}},
    {true, kBasicChordPower, {1, 0, 0, 1, 0, 1, 0, 1, 1, 0, 1, 0}},
}};

// The scale types whose keys count as minor; every other type counts as major.
constexpr std::array<TScaleType, 10> kMinorKindScaleTypes{
    st_min,    st_min_harm, st_min_melo, st_min_pent, st_min_blues,
    st_dorian, st_phrygian, st_locrian,  st_japanese, st_southeast_asian};

bool _IsMinorKind(TScaleType type) {
  for (TScaleType minor : kMinorKindScaleTypes) {
    if (type == minor) return true;
  }
  return false;
}

const TClosenessRow* _ClosenessRow(bool minorKind, TBasicChord basicChord) {
  for (const TClosenessTable& table : kClosenessTables) {
    if (table.minorKind == minorKind && table.basicChord == basicChord) return &table.row;
  }
  return nullptr;
}

}  // namespace

int CChordHeavy::CountIntvlsInSignKey(const CSignKeyHeavy& signKey) const {
  int count = 0;
  for (unsigned long k = 0; k < IntvlSet().size(); ++k) {
    count += signKey.KeyNrToDegreeNr(IntvlIxToKeyNr(static_cast<int>(k))) >= 0;
  }
  return count;
}

int CChordHeavy::CountIntvlsNotInSignKey(const CSignKeyHeavy& signKey) const {
  return static_cast<int>(IntvlSet().size()) - CountIntvlsInSignKey(signKey);
}

int CChordHeavy::CountNotesNotInSignKey(const CSignKeyHeavy& signKey) const {
  int count = 0;
  for (const CNote& note : _Notes) count += signKey.KeyNrToDegreeNr(note.KeyNr()) < 0;
  return count;
}

int CChordHeavy::RootNoteDegreeNrInSignKey(const CSignKeyHeavy& signKey) const {
  return signKey.KeyNrToDegreeNr(_RootNote.KeyNr());
}

int CChordHeavy::BassNoteDegreeNrInSignKey(const CSignKeyHeavy& signKey) const {
  return signKey.KeyNrToDegreeNr(BassNote().KeyNr());
}

int CChordHeavy::ClosenessToSignKey(const CSignKeyHeavy& signKey) const {
  const int notIn = CountIntvlsNotInSignKey(signKey);
  const bool minorKind = _IsMinorKind(signKey.ScaleType());
  const TBasicChord basicChord = BasicChordForNaming();
  if (const TClosenessRow* row = _ClosenessRow(minorKind, basicChord)) {
    const int rootIntvl = FloorMod12(_RootNote.KeyNr() - signKey.RootNote().KeyNr());
    return (*row)[static_cast<std::size_t>(rootIntvl)] - notIn;
  }
  // Augmented and diminished triads belong to no major key's own triads.
  if (!minorKind && (basicChord == kBasicChordAug || basicChord == kBasicChordDim)) {
    return 2 - notIn;
  }
  return CountIntvlsInSignKey(signKey) - notIn;
}

}  // namespace harmony
