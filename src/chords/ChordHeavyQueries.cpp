// Reading a heavy chord: the interval cache, the triad it is heard as, keys and comparisons.

#include <array>
#include <cstdarg>

#include "chords/ChordHeavyDetail.h"
#include "harmony/chords/ChordHeavy.h"

namespace harmony {

using chords_detail::FloorMod12;
using chords_detail::WrappedKeyIntvl;

namespace {

// A list ended by -1 can't be longer than this in any sensible call.
constexpr int kMaxListedKeys = 128;

CMySet<int> ReadKeyNrList(int first, va_list args) {
  CMySet<int> keys;
  for (int key = first, n = 0; key != -1 && n < kMaxListedKeys; key = va_arg(args, int), ++n) {
    keys.insert(key);
  }
  return keys;
}

// The triads' tones, indexed by TBasicChord.
const std::array<CIntvlSet, 9>& BasicChordIntvlSets() {
  static const std::array<CIntvlSet, 9> sets{
      CIntvlSet{},        CIntvlSet{0, 4, 7}, CIntvlSet{0, 3, 7},
      CIntvlSet{0, 4, 8}, CIntvlSet{0, 4, 6}, CIntvlSet{0, 3, 6},
      CIntvlSet{0, 5, 7}, CIntvlSet{0, 2, 7}, CIntvlSet{0, 7}};
  return sets;
}

// The rows of the XG chord table in the order they are tested: up to five intervals (the
// list ends at the first -1) and the table index.
struct TXGChordRow {
  std::array<int, 5> intvls;
  int index;
};
constexpr std::array<TXGChordRow, 33> kXGChordRows{{
    {{0, 4, 7, -1, -1}, 0},  {{0, 4, 7, 9, -1}, 1},     {{0, 4, 7, 11, -1}, 2},
    {{0, 4, 7, 11, 6}, 3},   {{0, 4, 7, 2, -1}, 4},     {{0, 4, 7, 11, 2}, 5},
    {{0, 4, 7, 9, 2}, 6},    {{0, 4, 7, 10, -1}, 19},   {{0, 4, 6, 10, -1}, 21},
    {{0, 4, 7, 10, 2}, 22},  {{0, 4, 7, 10, 6}, 23},    {{0, 4, 7, 10, 9}, 24},
    {{0, 4, 7, 10, 1}, 25},  {{0, 3, 6, -1, -1}, 17},   {{0, 5, 7, -1, -1}, 32},
    {{0, 2, 7, -1, -1}, 33}, {{0, -1, -1, -1, -1}, 30}, {{0, 4, 7, 10, 8}, 26},
    {{0, 4, 7, 10, 3}, 27},  {{0, 3, 7, -1, -1}, 8},    {{0, 3, 7, 9, -1}, 9},
    {{0, 3, 7, 10, -1}, 10}, {{0, 3, 6, 10, -1}, 11},   {{0, 3, 7, 2, -1}, 12},
    {{0, 3, 7, 10, 2}, 13},  {{0, 3, 7, 10, 5}, 14},    {{0, 3, 7, 11, -1}, 15},
    {{0, 3, 7, 11, 2}, 16},  {{0, 4, 8, -1, -1}, 7},    {{0, 4, 8, 11, -1}, 28},
    {{0, 3, 6, 9, -1}, 18},  {{0, 5, 7, 10, -1}, 20},   {{0, 7, -1, -1, -1}, 31},
}};

// Indexed by TBasicChord: the XG index when no row matches.
constexpr std::array<int, 9> kXGChordIxForBasicChord{34, 0, 8, 7, 34, 17, 32, 33, 31};

}  // namespace

// --- The interval cache

void CChordHeavy::UpdateIntvlSetAndBassNoteHasIntvlAlone() const {
  _IntvlSet.clear();
  _BassNoteHasIntvlAlone = true;
  if (_Notes.empty()) {
    _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = false;
    return;
  }
  const int wrapIntvl = _IntvlSet.WrapIntvl();
  const int bassIntvl = WrappedKeyIntvl(_RootNote, *_Notes.begin());
  bool first = true;
  for (const CNote& note : _Notes) {
    const long intvl = chords_detail::CachedIntvl(note.NoteNr(), _RootNote.NoteNr(), wrapIntvl);
    _IntvlSet.insert(static_cast<int>(intvl));
    // Only the literal interval counts: a ninth (14) does not share the bass's second (2).
    if (!first && intvl == bassIntvl) _BassNoteHasIntvlAlone = false;
    first = false;
  }
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = false;
}

const CIntvlSet& CChordHeavy::IntvlSet() const {
  _UpdateIfNeeded();
  return _IntvlSet;
}

bool CChordHeavy::BassNoteHasIntvlAlone() const {
  _UpdateIfNeeded();
  return _BassNoteHasIntvlAlone;
}

bool CChordHeavy::HasIntvlInAnyOctaveButNotInBassNoteAlone(int intvl) const {
  if (!HasIntvlInAnyOctave(intvl)) return false;
  return !(BassNoteHasIntvlAlone() && !_Notes.empty() &&
           WrappedKeyIntvl(_RootNote, *_Notes.begin()) == intvl);
}

bool CChordHeavy::HasIntvlInAnyOctaveOrRootButNotInBassNoteAlone(int intvl) const {
  return intvl == 0 || HasIntvlInAnyOctaveButNotInBassNoteAlone(intvl);
}

CSemitones CChordHeavy::Semitones() const {
  CSemitones semitones;
  for (int intvl : IntvlSet())
    semitones.SetSemitone(static_cast<unsigned long>(FloorMod12(intvl)), true);
  semitones.SetSemitone(0, true);
  return semitones;
}

// --- The triad

namespace {

chords_detail::TToneView ToneViewOf(const CChordHeavy& chord) {
  chords_detail::TToneView view;
  const CIntvlSet& intvls = chord.IntvlSet();
  view.tones = chords_detail::TonesInAnyOctave(intvls);
  view.hasRoot = intvls.HasIntvl(0);
  if (chord.BassNoteHasIntvlAlone() && !chord.Notes().empty()) {
    view.bassAloneIntvl = WrappedKeyIntvl(chord.RootNote(), *chord.Notes().begin());
  }
  return view;
}

TBasicChord BasicChordOf(const chords_detail::TToneView& v, TIgnoreBassNoteForPositiveMatch mode) {
  const auto H = [&v](int intvl) { return v.H(intvl); };
  const auto P = [&v](int intvl) { return v.P(intvl); };
  const auto Q = [&](int intvl) {
    return mode == kIgnoreBassNoteForPositiveMatch_Yes ? P(intvl) : H(intvl);
  };
  // A major third alone in the bass under a minor third does not make a major chord.
  const bool majorThirdOnlyInBass = v.bassAloneIntvl == 4 && H(3);
  if (Q(4) && !majorThirdOnlyInBass) {
    if (Q(8) && !P(7)) return kBasicChordAug;
    if (Q(6) && !P(7)) return kBasicChordMajorFlat5;
    return kBasicChordMajor;
  }
  if (Q(3)) {
    if (Q(6)) return P(7) ? kBasicChordMinor : kBasicChordDim;
    if (H(7) || !P(8)) return kBasicChordMinor;
  }
  if (!P(7)) return kBasicChordNone;
  if (Q(5)) return kBasicChordSus4;
  if (Q(2)) return kBasicChordSus2;
  if (!v.hasRoot || H(2)) return kBasicChordNone;
  if (H(3) || H(4) || H(5) || !H(7)) return kBasicChordNone;
  return kBasicChordPower;
}

}  // namespace

TBasicChord CChordHeavy::BasicChordRealIntvls(TIgnoreBassNoteForPositiveMatch mode) const {
  return BasicChordOf(ToneViewOf(*this), mode);
}

TBasicChord CChordHeavy::BasicChordForNaming() const {
  const chords_detail::TToneView view = ToneViewOf(*this);
  const TBasicChord basic = BasicChordOf(view, kIgnoreBassNoteForPositiveMatch_No);
  const auto P = [&view](int intvl) { return view.P(intvl); };
  if (basic == kBasicChordDim) return P(7) || P(10) ? kBasicChordMinor : kBasicChordDim;
  if (basic != kBasicChordNone) return basic;
  if (!P(3) || P(8)) return kBasicChordNone;
  return P(7) ? kBasicChordNone : kBasicChordMinor;
}

CIntvlSet CChordHeavy::IntvlSetOfBasicChord(TIgnoreBassNoteForPositiveMatch mode) const {
  const TBasicChord basic = BasicChordRealIntvls(mode);
  return basic < BasicChordIntvlSets().size() ? BasicChordIntvlSets()[basic] : CIntvlSet{};
}

// --- Notes and keys

CNote CChordHeavy::BassNote() const { return _Notes.empty() ? CNote::Undef : *_Notes.begin(); }

CNote CChordHeavy::Note(unsigned long noteIx) const {
  return noteIx < _Notes.size() ? _Notes.begin()[noteIx] : CNote::Undef;
}

CNote CChordHeavy::HighestNote() const { return _Notes.empty() ? CNote::Undef : *_Notes.rbegin(); }

int CChordHeavy::CountNotesInOctave(int octave) const {
  int count = 0;
  for (const CNote& note : _Notes) count += chords_detail::OctaveOfNoteNr(note.NoteNr()) == octave;
  return count;
}

bool CChordHeavy::HasNoteNr(int noteNr) const {
  for (const CNote& note : _Notes) {
    if (note.NoteNr() == noteNr) return true;
  }
  return false;
}

bool CChordHeavy::HasKeyNr(int keyNr) const {
  for (const CNote& note : _Notes) {
    if (note.KeyNr() == keyNr) return true;
  }
  return false;
}

bool CChordHeavy::HasKeyNrs(int keyNr, ...) const {
  va_list args;
  va_start(args, keyNr);
  const CMySet<int> listed = ReadKeyNrList(keyNr, args);
  va_end(args);
  for (int key : listed) {
    if (!HasKeyNr(key)) return false;
  }
  return true;
}

bool CChordHeavy::HasExactTheseKeyNrs(int keyNr, ...) const {
  va_list args;
  va_start(args, keyNr);
  const CMySet<int> listed = ReadKeyNrList(keyNr, args);
  va_end(args);
  return listed == KeyNrSet();
}

CMySet<int> CChordHeavy::KeyNrSet() const {
  CMySet<int> keys;
  for (const CNote& note : _Notes) keys.insert(note.KeyNr());
  return keys;
}

CMySet<int> CChordHeavy::KeyNrSetOfBasicChord() const {
  CMySet<int> keys;
  if (IsUndef()) return keys;
  for (int intvl : IntvlSetOfBasicChord(kIgnoreBassNoteForPositiveMatch_No)) {
    keys.insert(FloorMod12(_RootNote.KeyNr() + intvl));
  }
  return keys;
}

CMySet<int> CChordHeavy::KeyNrSetOfBasicChordAndBassNote() const {
  CMySet<int> keys = KeyNrSetOfBasicChord();
  if (!_Notes.empty()) keys.insert(_Notes.begin()->KeyNr());
  return keys;
}

int CChordHeavy::ChordKeyNrFromKeyNr(int keyNr) const {
  if (IsUndef() || keyNr == kKeyNrUndef) return kKeyNrUndef;
  return FloorMod12(keyNr - _RootNote.KeyNr());
}

int CChordHeavy::KeyNrFromChordKeyNr(int chordKeyNr) const {
  if (IsUndef() || chordKeyNr == kKeyNrUndef) return kKeyNrUndef;
  return FloorMod12(_RootNote.KeyNr() + chordKeyNr);
}

// --- Shape

bool CChordHeavy::IsSlashChord() const {
  if (_Notes.empty() || IsUndef()) return false;
  const CNote& lowest = *_Notes.begin();
  if (lowest.IsUndef()) return false;
  return lowest.KeyNr() != _RootNote.KeyNr() || lowest.Enh() != _RootNote.Enh();
}

bool CChordHeavy::IsNarrowChord() const {
  if (_Notes.empty()) return true;
  return _Notes.rbegin()->NoteNr() - _Notes.begin()->NoteNr() < 13;
}

int CChordHeavy::XGChordIx() const {
  const CIntvlSet& intvls = IntvlSet();
  for (const TXGChordRow& row : kXGChordRows) {
    const auto& v = row.intvls;
    if (intvls.HasExactTheseIntvls(v[0], v[1], v[2], v[3], v[4], -1)) return row.index;
  }
  const TBasicChord basic = BasicChordForNaming();
  return basic < kXGChordIxForBasicChord.size() ? kXGChordIxForBasicChord[basic] : 34;
}

// --- Comparing

bool CChordHeavy::IsExactlyTheSame(const CChordHeavy& other) const {
  return _Notes == other._Notes && _RootNote == other._RootNote;
}

bool CChordHeavy::IsHarmonicallyTheSame(const CChordHeavy& other) const {
  return KeyNrSet() == other.KeyNrSet() && _RootNote.KeyNr() == other._RootNote.KeyNr();
}

}  // namespace harmony
