#pragma once
// Small arithmetic shared by the heavy chord's sources.

#include <cstdint>

#include "harmony/pitch/IntvlSet.h"
#include "harmony/pitch/KeyNumbers.h"
#include "harmony/pitch/Note.h"

namespace harmony::chords_detail {

constexpr int FloorMod12(long value) { return static_cast<int>(((value % 12) + 12) % 12); }

// The octave of a note number: 60 is in octave 4, 0..11 in octave -1; undefined gives -2.
constexpr int OctaveOfNoteNr(long noteNr) {
  return IsUndefNoteNr(noteNr) ? -2 : static_cast<int>(noteNr / 12 - 1);
}

// The key interval from one note to another wrapped to 0..11; -129 when a key is undefined.
inline int WrappedKeyIntvl(const CNote& from, const CNote& to) {
  if (from.IsUndef() || to.IsUndef()) return kIntvlUndef;
  return FloorMod12(to.KeyNr() - from.KeyNr());
}

// The note number moved by whole octaves into 0..127.
constexpr long FoldIntoNoteRange(long noteNr) {
  if (noteNr < 0) noteNr += (-noteNr + 11) / 12 * 12;
  if (noteNr > 127) noteNr -= (noteNr - 127 + 11) / 12 * 12;
  return noteNr;
}

// CNote(noteNr, TEnh_n) for a note number within 0..127, its spelling looked up by key.
CNote NaturalNote(long noteNr);

// A note's interval above the root as the interval cache keeps it: folded up into the octaves
// above the root when below it, then wrapped by the wrap interval (0: not wrapped).
inline long CachedIntvl(long noteNr, long rootNr, int wrapIntvl) {
  long intvl = noteNr - rootNr;
  if (intvl < 0) intvl += (-intvl + 11) / 12 * 12;
  // An interval below a positive wrap interval stays as it is; only others are divided.
  if (wrapIntvl != 0 && (wrapIntvl < 0 || intvl >= wrapIntvl)) intvl %= wrapIntvl;
  return intvl;
}

// The note of a chord's bass slot: the key in the given octave (clamped to -1..8), with its
// spelling kept as given unless it is natural or missing, which are made sensible.
inline CNote BassSlotNote(int keyNr, int octave, TEnh enh) {
  octave = octave < -1 ? -1 : (octave >= 10 ? 8 : octave);
  CNote note;
  note.SetNoteNr(FloorMod12(keyNr) + 12L * (octave + 1));
  if (enh != TEnh_n && enh != TEnh_Undef) {
    note.SetEnhAndDontMakeSenseful(enh);
  } else {
    note.SetEnh(TEnh_n);
  }
  return note;
}

// A chord's intervals folded into one octave, read once for the many questions that naming
// asks of them. Bit n is set when HasIntvlInAnyOctave(n) holds for n in 0..11: an interval
// n, n + 12, ... below the wrap interval.
inline std::uint32_t TonesInAnyOctave(const CIntvlSet& intvls) {
  std::uint32_t tones = 0;
  for (int intvl : intvls) {
    if (intvl >= 0 && intvl < intvls.WrapIntvl()) tones |= std::uint32_t{1} << (intvl % 12);
  }
  return tones;
}

// What the triad of a chord is judged by: its tones in any octave, and the bass's interval
// when the bass sounds it alone (then it doesn't count as a chord tone where that matters).
struct TToneView {
  std::uint32_t tones = 0;
  int bassAloneIntvl = kIntvlUndef;
  bool hasRoot = false;  // the interval 0 itself, not in another octave

  bool H(int intvl) const { return ((tones >> intvl) & 1u) != 0; }
  // HasIntvlInAnyOctaveButNotInBassNoteAlone.
  bool P(int intvl) const { return H(intvl) && bassAloneIntvl != intvl; }
};

}  // namespace harmony::chords_detail
