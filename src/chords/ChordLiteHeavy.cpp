// The conversions between the chord record and the heavy chord.

#include "chords/ChordHeavyDetail.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"

namespace harmony {

void CChordLite::SetFromChordHeavy(const CChordHeavy& heavy) {
  const CNote& root = heavy.RootNote();
  RootKeyEnh = root.KeyEnh();  // key 15 with the enh of the no-chord states
  BassKeyEnh = CKeyEnh();
  CIntvlSet intvls = heavy.IntvlSet();
  if (heavy.NotesCount() != 0) {
    const CNote lowest = heavy.BassNote();
    const bool isRoot = lowest.KeyNr() == root.KeyNr() && lowest.Enh() == root.Enh();
    if (!isRoot && lowest.NoteNr() >= 0 && lowest.NoteNr() < 12) {
      BassKeyEnh = lowest.KeyEnh();
      // The mask holds no tone that sounds only in the bass.
      const int bassIntvl = chords_detail::WrappedKeyIntvl(root, lowest);
      if (heavy.BassNoteHasIntvlAlone() && bassIntvl != kIntvlUndef) {
        intvls.EraseIntvlInAnyOct(bassIntvl);
      }
    }
  }
  if (root.IsUndef()) return;
  CSemitones semitones;
  for (int intvl : intvls) {
    semitones.SetSemitone(static_cast<unsigned long>(chords_detail::FloorMod12(intvl)), true);
  }
  semitones.SetSemitone(0, true);
  Semitones = semitones;
}

// The no-chord states keep the wrap interval of their constants.
CChordHeavy CChordLite::ToChordHeavy(int wrapIntvl) const {
  if (IsNoChordForce()) return CChordHeavy_NoChordForce;
  if (IsNoChordYield()) return CChordHeavy_NoChordYield;
  if (IsUndef()) return CChordHeavy(wrapIntvl);
  return CChordHeavy(RootKeyEnh, Semitones, BassKeyEnh, wrapIntvl);
}

}  // namespace harmony
