#pragma once
// Key numbers (pitch classes 0..11, C = 0), note numbers (MIDI pitches, 60 = C of octave 4)
// and intervals (signed semitones), each with its own undefined value.

#include <climits>

namespace harmony {

inline constexpr int kKeyNrUndef = 15;
inline constexpr long kNoteNrUndef = -1;
// A second undefined note number, from hosts that store notes in a byte.
inline constexpr long kNoteNrUndefByte = 255;
inline constexpr int kIntvlUndef = -129;

// A note number that stands for no note: -1 or 255.
constexpr bool IsUndefNoteNr(long noteNr) {
  return noteNr == kNoteNrUndef || noteNr == kNoteNrUndefByte;
}

// The key number brought into 0..11; the undefined key 15 stays 15.
constexpr int NormalizedKeyNr(int keyNr) {
  if (keyNr == kKeyNrUndef) return kKeyNrUndef;
  const int r = keyNr % 12;
  return r < 0 ? r + 12 : r;
}

// Black keys are 1, 3, 6, 8, 10 of the remainder by 12, which keeps the sign of the key
// number: a negative key number is always white, and the undefined key 15 (remainder 3)
// reports black.
bool IsBlackKey(int keyNr);
bool IsWhiteKey(int keyNr);

// Second minus first; -129 when either is undefined (-1, 255 or LONG_MIN).
int IntvlFromTo(long fromNoteNr, long toNoteNr);
// The same, but only -1 is undefined: 255 counts as a note here.
int IntvlFromToTolerateNoteNrSmallUndef(long fromNoteNr, long toNoteNr);

// Second key minus first key without wrapping (-11..11); -129 when either is 15.
int KeyIntvlFromTo(int fromKeyNr, int toKeyNr);
// The same brought into 0..11.
int AbsKeyIntvlFromTo(int fromKeyNr, int toKeyNr);
// The interval folded into -6..5: +6 becomes -6, -6 stays. -129 stays.
int SmallestKeyIntvl(int intvl);
int SmallestKeyIntvlBetween(int fromKeyNr, int toKeyNr);
// The shorter way round the circle of pitch classes: 0..6; -129 when either is 15.
int KeyDistanceBetween(int keyNr1, int keyNr2);

// 0 when either note is undefined, 2 when the second lies below the first, 1 otherwise.
int KeyDirectionFrom(long fromNoteNr, long toNoteNr);

// The nearest note of a key number at or above (below) a note number, clamped to 0..127.
// The strict forms step a further octave when the clamped result is the note itself.
// -1 for an undefined key or note.
long NoteNrOfKeyNrLargerOrEqualTo(int keyNr, long noteNr);
long NoteNrOfKeyNrLargerThan(int keyNr, long noteNr);
long NoteNrOfKeyNrSmallerOrEqualTo(int keyNr, long noteNr);
long NoteNrOfKeyNrSmallerThan(int keyNr, long noteNr);
// The same with the key number taken from the first note number.
long NoteNrWithSameKeyNrLargerOrEqualTo(long noteNr, long limitNoteNr);
long NoteNrWithSameKeyNrLargerThan(long noteNr, long limitNoteNr);

// key + intvl moved by whole wrap intervals into 53 .. 53 + wrapIntvl, the comping range
// where accompaniment chords are voiced. -1 for an undefined key or interval and for a wrap
// interval that is not positive.
long KeyNrAddIntvlToCompingPlusWrapIntvlRange(int keyNr, int intvl, int wrapIntvl);

}  // namespace harmony
