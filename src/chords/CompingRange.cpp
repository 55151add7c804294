#include "harmony/chords/CompingRange.h"

namespace harmony {

namespace {

long MoveIntoRange(long noteNr, long low, long high, long step) {
  if (step <= 0) return noteNr;
  if (noteNr < low) noteNr += (low - noteNr + step - 1) / step * step;
  if (noteNr > high) noteNr -= (noteNr - high + step - 1) / step * step;
  return noteNr;
}

}  // namespace

long ToCompingRangeNoteNr(long noteNr) {
  if (IsUndefNoteNr(noteNr)) return kNoteNrUndef;
  return MoveIntoRange(noteNr, kCompingRangeStartNoteNr, kCompingRangeEndNoteNr, 12);
}

long NoteNrToCompingPlusWrapIntvlRange(long noteNr, int wrapIntvl) {
  if (IsUndefNoteNr(noteNr)) return kNoteNrUndef;
  return MoveIntoRange(noteNr, kCompingRangeStartNoteNr, kCompingRangeStartNoteNr + wrapIntvl,
                       wrapIntvl);
}

long NoteNrAddIntvlToCompingPlusWrapIntvlRange(long noteNr, int intvl, int wrapIntvl) {
  if (IsUndefNoteNr(noteNr) || intvl == kIntvlUndef || wrapIntvl == kIntvlUndef) {
    return kNoteNrUndef;
  }
  return MoveIntoRange(noteNr + intvl, kCompingRangeStartNoteNr,
                       kCompingRangeStartNoteNr + wrapIntvl, wrapIntvl);
}

}  // namespace harmony
