#pragma once
// The comping range: the register where an accompanying chord is voiced, from the F below
// middle C (53) up to the F above it (65). Heavy chords place their notes around it, and
// the bass of a chord sits below it in octave -1 (note numbers 0..11).
//
// KeyNrAddIntvlToCompingPlusWrapIntvlRange, the same placement from a key number, lives with
// the key numbers and comes in with them.

#include "harmony/pitch/KeyNumbers.h"

namespace harmony {

inline constexpr long kCompingRangeStartNoteNr = 53;
inline constexpr long kCompingRangeWidth = 12;
inline constexpr long kCompingRangeEndNoteNr = kCompingRangeStartNoteNr + kCompingRangeWidth;
inline constexpr int kCompingRangeBelowOctNr = 4;

// The note moved by octaves into 53..65: first up to at least 53, then down to at most 65,
// so 53 and 65 both stay where they are. -1 (undefined) stays -1.
long ToCompingRangeNoteNr(long noteNr);
// 53..65, both ends included.
constexpr bool IsNoteNrInCompingRange(long noteNr) {
  return noteNr >= kCompingRangeStartNoteNr && noteNr <= kCompingRangeEndNoteNr;
}

// The note moved in steps of `wrapIntvl` up to at least 53, then down to at most
// 53 + wrapIntvl, so that tensions of a chord with a wide wrap keep their register above the
// root. A wrap of 0 or less moves nothing.
long NoteNrToCompingPlusWrapIntvlRange(long noteNr, int wrapIntvl);
// The same for noteNr + intvl; -1 when the note, the interval or the wrap is undefined.
long NoteNrAddIntvlToCompingPlusWrapIntvlRange(long noteNr, int intvl, int wrapIntvl);

}  // namespace harmony
