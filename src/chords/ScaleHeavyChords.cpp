// The heavy scale's members that build or test chords.

#include "chords/ChordScaleSpelling.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/CompingRange.h"
#include "harmony/chords/ScaleHeavy.h"

namespace harmony {

CScaleHeavy CScaleHeavy::ConstructScaleForChord(const CChordHeavy& chord) const {
  if (chord.IsUndef()) return CScaleHeavy();
  CScaleHeavy base = *this;
  if (IsUndef()) {
    const TBasicChord basic = chord.BasicChordForNaming();
    const bool minor = basic == kBasicChordMinor || basic == kBasicChordDim;
    base = CScaleHeavy(chord.RootNote(), minor ? st_min : st_maj);
  }
  CScaleHeavy scale = chords_detail::ScaleWithChordKeys(base, chord.KeyNrSet());
  for (const CNote& note : chord.Notes()) {
    if (note.Enh() != TEnh_Undef && chords_detail::KeepsChordSpelling(base, note.KeyNr())) {
      scale.SetEnhForKeyNr(note.KeyNr(), note.Enh());
    }
  }
  return scale;
}

CChordHeavy CScaleHeavy::ChordFromScaleStepSet(const std::set<int>& steps) const {
  if (_RootNote.IsUndef()) return CChordHeavy_Undef;
  CNote start = _RootNote;
  start.SetNoteNr(ToCompingRangeNoteNr(_RootNote.NoteNr()));  // keeps the spelling
  CChordHeavy chord;
  bool first = true;
  for (int step : steps) {
    const CNote note = MoveInScale(start, step);
    if (first) chord.SetRootNoteInCompingRange(note);
    chord.AddNote(note);
    first = false;
  }
  return chord;
}

CChordHeavy CScaleHeavy::ChordTriadForScale() const { return ChordFromScaleStepSet({0, 2, 4}); }

bool CScaleHeavy::ChordIncludingOptionsIsDiatonicInScaleDisregardingEnh(
    const CChordHeavy& chord) const {
  if (!HasKeyNr(chord.RootNote().KeyNr()) || !HasKeyNr(chord.BassNote().KeyNr())) return false;
  for (int key : chord.KeyNrSet()) {
    if (!HasKeyNr(key)) return false;
  }
  return true;
}

bool CScaleHeavy::ChordBasicChordAndBassNoteIsDiatonicInScaleDisregardingEnh(
    const CChordHeavy& chord) const {
  for (int key : chord.KeyNrSetOfBasicChordAndBassNote()) {
    if (!HasKeyNr(key)) return false;
  }
  return true;
}

}  // namespace harmony
