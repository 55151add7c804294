// Spelling a chord's root with the fewest signs in the key signature of its scale.

#include <cstdlib>

#include "chords/ChordScaleSpelling.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ScaleHeavy.h"

namespace harmony {

// Reads the scale's root spelling back into the chord's root: a root without spelling gets
// the one the scale gives it.
int CChordHeavy::SignsCount() const {
  if (IsUndef()) return 0;
  const auto spelling =
      chords_detail::ChordScaleSpellingFor(chords_detail::ChordScaleKeysOf(*this), _RootNote);
  int count = 0;
  TEnh enh = TEnh_Undef;
  if (spelling) {
    count = spelling->SignsCount;
    enh = spelling->RootEnh;
  } else {
    const CScaleHeavy scale = CScaleHeavy::Undef.ConstructScaleForChord(*this);
    count = scale.SignsCount();
    enh = scale.RootNote().Enh();
  }
  _RootNote.SetEnhAndDontMakeSenseful(enh);
  if (enh != TEnh_Undef) _RootNote.MakeSensefulEnhAssumingCMajor();
  return count;
}

int CChordHeavy::SignsCountAbs() const { return std::abs(SignsCount()); }

// The given spelling stays unless flats or sharps need fewer signs; between flats and
// sharps the flats win a tie. The three spellings of the root differ in nothing but the
// spelling, so one chord rooted on the note serves all three.
TEnh CChordHeavy::_EnhWithLeastSigns(const CNote& root) const {
  CNote flats = root;
  flats.EnhShiftToFlats();
  CNote sharps = root;
  sharps.EnhShiftToSharps();
  // Rooting the chord on the note replaces its bass slot (octave -1) by the root's key. When
  // the root has the chord's root's note number and the slot holds that key alone, that
  // changes no note number, so the chord itself tells its kind and keys.
  const bool rootedAlready = !IsUndef() && root.NoteNr() == _RootNote.NoteNr() &&
                             CountNotesInOctave(-1) == 1 && HasNoteNr(root.KeyNr());
  const chords_detail::TChordScaleKeys keys =
      rootedAlready ? chords_detail::ChordScaleKeysOf(*this)
                    : chords_detail::ChordScaleKeysOf(_RootedOn(root));
  const auto signsAbs = [this, &keys](const CNote& spelled) {
    const auto signs = chords_detail::ChordScaleSignsCountFor(keys, spelled);
    return signs ? std::abs(*signs) : _RootedOn(spelled).SignsCountAbs();
  };
  const int a = signsAbs(root);
  const int b = signsAbs(flats);
  const int c = signsAbs(sharps);
  if (b >= a) return c >= a ? root.Enh() : sharps.Enh();
  return c >= b ? flats.Enh() : sharps.Enh();
}

// Notes spelled like the old root or its sensible form (the bass slot among them) follow the new
// spelling, so that respelling never makes a slash chord.
void CChordHeavy::SetRootNoteEnhWithLeastSigns() {
  if (IsUndef()) return;
  CNote given = _RootNote;
  given.MakeSensefulEnhAssumingCMajor();
  const TEnh enh = _EnhWithLeastSigns(given);
  const CNote oldRoot = _RootNote;
  _RootNote.SetEnhAndDontMakeSenseful(enh);
  CMySet<CNote> respelled;
  for (CNote note : _Notes) {
    const bool likeRoot = note.Enh() == oldRoot.Enh() || note.Enh() == given.Enh();
    if (note.KeyNr() == oldRoot.KeyNr() && likeRoot) {
      note.SetEnhAndDontMakeSenseful(enh);
    }
    respelled.insert(note);
  }
  _Notes = respelled;
}

}  // namespace harmony
