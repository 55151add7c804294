// Changing the notes of a heavy chord: adding, deleting, the bass slot, bending the triad,
// inverting and transposing.

#include <algorithm>
#include <array>

#include "chords/ChordHeavyDetail.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/CompingRange.h"

namespace harmony {

using chords_detail::FloorMod12;
using chords_detail::FoldIntoNoteRange;
using chords_detail::OctaveOfNoteNr;
using chords_detail::WrappedKeyIntvl;

namespace {

// How SetBasicChord turns a chord into a triad: thirds and fifths within low..high (key
// intervals above the root) move to target, then the required tones are added if missing.
struct TIntvlChange {
  int low, high, target;
};
struct TBasicChordRecipe {
  std::array<TIntvlChange, 3> changes;
  int changeCount;
  std::array<int, 3> required;
  int requiredCount;
};

// Indexed by TBasicChord; the row of kBasicChordNone is handled on its own.
constexpr std::array<TBasicChordRecipe, 9> kBasicChordRecipes{{
    {{}, 0, {}, 0},
    {{{{3, 3, 4}, {6, 8, 7}}}, 2, {0, 4, 7}, 3},                // major
    {{{{4, 4, 3}, {6, 8, 7}}}, 2, {0, 3, 7}, 3},                // minor
    {{{{3, 3, 4}, {6, 7, 8}}}, 2, {0, 4, 8}, 3},                // aug
    {{{{3, 3, 4}, {7, 8, 6}}}, 2, {0, 4, 6}, 3},                // major flat 5
    {{{{4, 4, 3}, {7, 8, 6}}}, 2, {0, 3, 6}, 3},                // dim
    {{{{3, 4, 5}, {6, 8, 7}}}, 2, {0, 5, 7}, 3},                // sus4
    {{{{3, 5, 2}, {6, 8, 7}}}, 2, {0, 2, 7}, 3},                // sus2
    {{{{4, 9, 7}, {1, 3, 0}, {10, 11, 12}}}, 3, {0, 7, 0}, 2},  // power
}};

// The triad tones a chord without a basic chord loses from its intervals.
constexpr std::array<int, 3> kTriadIntvls{3, 4, 7};

}  // namespace

// --- Notes

void CChordHeavy::ClearAllExceptRoot() {
  _Notes.clear();
  _IntvlSet.clear();
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = true;
}

void CChordHeavy::SetSemitones(const CSemitones& semitones) {
  _Notes.clear();
  _IntvlSet.clear();
  if (!IsUndef()) {
    for (int intvl : semitones.IntvlSet()) {
      _AddNoteNrAndIntvlIfNotAlreadyContained(_RootNote.NoteNr() + intvl, intvl);
    }
  }
  UpdateIntvlSetAndBassNoteHasIntvlAlone();
}

void CChordHeavy::SetFromNoteSet(const CMySet<CNote>& notes) {
  _Notes.clear();
  _IntvlSet.clear();
  for (const CNote& note : notes) AddNote(note);
}

void CChordHeavy::SetFromNoteNrSet(const CMySet<unsigned char>& noteNrs) {
  _Notes.clear();
  _IntvlSet.clear();
  for (unsigned char noteNr : noteNrs) {
    AddNote(noteNr <= 127 ? chords_detail::NaturalNote(noteNr) : CNote(noteNr, TEnh_n));
  }
}

void CChordHeavy::SetFromKeyNrSet(const CMySet<int>& keyNrs) {
  _Notes.clear();
  _IntvlSet.clear();
  for (int keyNr : keyNrs) {
    if (keyNr == kKeyNrUndef) continue;
    AddNote(CNote(ToCompingRangeNoteNr(NormalizedKeyNr(keyNr)), TEnh_n));
  }
}

void CChordHeavy::AddNote(const CNote& note) {
  if (note.IsUndef()) return;
  _Notes.insert(note);
  if (!_RootNoteSpecified) {
    _RootNote = *_Notes.begin();
    _SetDirtyIfNotes();
  }
  const auto intvl = static_cast<int>(note.NoteNr() - _RootNote.NoteNr());
  _IntvlSet.insert(intvl);
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = true;
}

void CChordHeavy::DelNote(const CNote& note) {
  if (_Notes.erase(note) != 0) _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = true;
}

void CChordHeavy::DelNote(unsigned long noteIx) {
  if (noteIx >= _Notes.size()) return;
  _Notes.erase(_Notes.begin() + noteIx);
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = true;
}

void CChordHeavy::DeleteAllNotesInOctave(int octave) {
  // The notes of one octave stand together in the ordered set: erased in place, the others
  // keep their order.
  const auto inOctave = [octave](const CNote& note) {
    return OctaveOfNoteNr(note.NoteNr()) == octave;
  };
  const auto first = std::find_if(_Notes.begin(), _Notes.end(), inOctave);
  if (first == _Notes.end()) return;
  auto at = first;
  while (at != _Notes.end() && inOctave(*at)) at = _Notes.erase(at);
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = true;
}

void CChordHeavy::_AddNoteNrAndIntvlIfNotAlreadyContained(long noteNr, int intvl) {
  if (IsUndefNoteNr(noteNr) || intvl == kIntvlUndef || HasNoteNr(static_cast<int>(noteNr))) {
    return;
  }
  _Notes.insert(CNote(noteNr, TEnh_n));
  _IntvlSet.insert(intvl);
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = true;
}

void CChordHeavy::AddIntvl(int intvl) {
  if (IsUndef() || intvl == kIntvlUndef) return;
  _AddNoteNrAndIntvlIfNotAlreadyContained(FoldIntoNoteRange(_RootNote.NoteNr() + intvl), intvl);
}

void CChordHeavy::AddIntvlInCompingRange(int intvl) {
  if (IsUndef() || intvl == kIntvlUndef) return;
  _AddNoteNrAndIntvlIfNotAlreadyContained(ToCompingRangeNoteNr(_RootNote.NoteNr() + intvl), intvl);
}

void CChordHeavy::AddIntvlInCompingPlusWrapIntvlRange(int intvl) {
  _AddNoteNrAndIntvlIfNotAlreadyContained(
      NoteNrAddIntvlToCompingPlusWrapIntvlRange(_RootNote.NoteNr(), intvl, _IntvlSet.WrapIntvl()),
      intvl);
}

void CChordHeavy::AddIntvlSetAboveRootNote(const CIntvlSet& intvls) {
  for (int intvl : intvls) AddIntvl(intvl);
}

void CChordHeavy::AddIntvlSetInCompingRange(const CIntvlSet& intvls) {
  for (int intvl : intvls) AddIntvlInCompingPlusWrapIntvlRange(intvl);
}

// A difference of more than 5 semitones is applied the other way round; the triads of
// SetBasicChord never bend that far. A bent note is spelled afresh, as C major would spell
// its key: the old spelling belonged to another key.
void CChordHeavy::ChangeAllNotesWithinIntvlRange(int low, int high, int target) {
  if (_Notes.empty()) return;
  _UpdateIfNeeded();
  CMySet<CNote> changed;
  bool replaced = false;
  for (const CNote& note : _Notes) {
    const int intvl = FloorMod12(WrappedKeyIntvl(_RootNote, note));
    if (intvl < low || intvl > high) {
      changed.insert(note);
      continue;
    }
    const int shift = target - intvl > 5 ? intvl - target : target - intvl;
    changed.insert(CNote(std::clamp(note.NoteNr() + shift, 0L, 127L), TEnh_n));
    replaced = true;
  }
  if (!replaced) return;
  _Notes = changed;
  for (int intvl = low; intvl <= high; ++intvl) _IntvlSet.EraseIntvlInAnyOct(intvl);
  _IntvlSet.insert(target);
}

void CChordHeavy::SetBasicChord(TBasicChord basicChord) {
  if (basicChord == kBasicChordNone) {
    _UpdateIfNeeded();
    for (int intvl : kTriadIntvls) _IntvlSet.EraseIntvlInAnyOct(intvl);
    return;
  }
  if (basicChord >= kBasicChordRecipes.size()) return;
  const TBasicChordRecipe& recipe = kBasicChordRecipes[basicChord];
  for (int i = 0; i < recipe.changeCount; ++i) {
    const TIntvlChange& change = recipe.changes[static_cast<std::size_t>(i)];
    ChangeAllNotesWithinIntvlRange(change.low, change.high, change.target);
  }
  const long rootNr = IsUndef() ? 0 : _RootNote.NoteNr();
  for (int i = 0; i < recipe.requiredCount; ++i) {
    const int intvl = recipe.required[static_cast<std::size_t>(i)];
    if (IntvlSet().HasIntvl(intvl)) continue;
    _AddNoteNrAndIntvlIfNotAlreadyContained(
        NoteNrAddIntvlToCompingPlusWrapIntvlRange(rootNr, intvl, _IntvlSet.WrapIntvl()), intvl);
  }
}

// --- Bass

bool CChordHeavy::_IsIntvlAloneForBassKey(int keyNr) const {
  if (IsUndef() || keyNr == kKeyNrUndef) return true;
  const int intvl = FloorMod12(keyNr - _RootNote.KeyNr());
  if (!_IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate) return !_IntvlSet.HasIntvl(intvl);
  // The cache would be read afresh from the notes; asking the notes is the same answer without
  // building it (a bass note added next makes it stale again at once).
  const int wrapIntvl = _IntvlSet.WrapIntvl();
  return std::none_of(_Notes.begin(), _Notes.end(), [&](const CNote& note) {
    return chords_detail::CachedIntvl(note.NoteNr(), _RootNote.NoteNr(), wrapIntvl) == intvl;
  });
}

void CChordHeavy::SetBassNoteInOctave(int keyNr, int octave, TEnh enh) {
  const CNote note = chords_detail::BassSlotNote(keyNr, octave, enh);
  _BassNoteHasIntvlAlone = _IsIntvlAloneForBassKey(note.KeyNr());
  AddNote(note);
}

void CChordHeavy::SetBassNoteAloneInOctave(int keyNr, int octave, TEnh enh) {
  DeleteAllNotesInOctave(std::max(octave, -1));
  SetBassNoteInOctave(keyNr, octave, enh);
}

void CChordHeavy::SetBassKeyEnh(const CKeyEnh& keyEnh) {
  RemoveBassNote();
  if (!keyEnh.IsUndef()) SetBassNoteInOctave(keyEnh.KeyNr, -1, keyEnh.Enh);
}

void CChordHeavy::RemoveBassNote() { DeleteAllNotesInOctave(-1); }

void CChordHeavy::SetBassNoteDeletingFormer(CNote note) {
  if (!_Notes.empty()) DelNote(*_Notes.begin());
  if (!note.IsUndef()) SetBassNoteInOctave(note.KeyNr(), -1, note.Enh());
}

void CChordHeavy::AddBassNoteKeepingFormer(CNote note) {
  if (!_Notes.empty() && _Notes.begin()->NoteNr() < 12) {
    CNote former = *_Notes.begin();
    _Notes.erase(_Notes.begin());
    former.SetNoteNr(ToCompingRangeNoteNr(former.NoteNr()));  // keeps the enh
    AddNote(former);
  }
  if (!note.IsUndef()) SetBassNoteInOctave(note.KeyNr(), -1, note.Enh());
}

// --- Moving

void CChordHeavy::Invert() {
  if (_Notes.size() < 2) return;
  const CNote lowest = *_Notes.begin();
  _Notes.erase(_Notes.begin());
  const long highest = _Notes.rbegin()->NoteNr();
  long octaveBase = 0;
  if (lowest.KeyNr() > _Notes.rbegin()->KeyNr() || highest >= 116) {
    octaveBase = highest >= 132 ? 108 : 12 * (highest / 12);  // into the highest note's octave
  } else {
    octaveBase = highest >= 120 ? 108 : 12 * (highest / 12) + 12;  // an octave above it
  }
  CNote moved;
  moved.SetNoteNr(octaveBase + lowest.KeyNr());
  moved.SetEnhAndDontMakeSenseful(lowest.Enh());
  if (!HasNoteNr(static_cast<int>(moved.NoteNr()))) _Notes.insert(moved);
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = true;
}

// Notes and root are spelled afresh as C major would spell their new keys, so that no old
// accidental drags a note to a spelling like B sharp.
void CChordHeavy::Transpose(int intvl) {
  CMySet<CNote> moved;
  bool first = true;
  for (const CNote& note : _Notes) {
    long noteNr = FoldIntoNoteRange(note.NoteNr() + intvl);
    if (!first && noteNr < 12) noteNr += 12;  // only the first note may be the bass
    moved.insert(CNote(noteNr, TEnh_n));
    first = false;
  }
  _Notes = moved;
  if (!IsUndef()) _RootNote = CNote(FoldIntoNoteRange(_RootNote.NoteNr() + intvl), TEnh_n);
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = true;
}

void CChordHeavy::IntvlSet_SetWrapIntvl(int wrapIntvl) {
  _IntvlSet.SetWrapIntvl(wrapIntvl);
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = true;
}

}  // namespace harmony
