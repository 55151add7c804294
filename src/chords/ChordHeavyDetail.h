#pragma once
// Small arithmetic shared by the heavy chord's sources.

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

}  // namespace harmony::chords_detail
