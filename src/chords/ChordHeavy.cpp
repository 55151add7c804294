// Construction, the root and the three chords without a root.

#include "harmony/chords/ChordHeavy.h"

#include <array>
#include <bit>
#include <cstdint>

#include "chords/ChordHeavyDetail.h"
#include "harmony/chords/CompingRange.h"

namespace harmony {

using chords_detail::FoldIntoNoteRange;

namespace {

CChordHeavy MakeNoChord(TEnh rootEnh) {
  CChordHeavy chord;
  if (rootEnh == TEnh_bb) chord.SetNoChordYield();
  if (rootEnh == TEnh_b) chord.SetNoChordForce();
  return chord;
}

}  // namespace

const CChordHeavy CChordHeavy_Undef{};
const CChordHeavy CChordHeavy_NoChordYield = MakeNoChord(TEnh_bb);
const CChordHeavy CChordHeavy_NoChordForce = MakeNoChord(TEnh_b);

CNote chords_detail::NaturalNote(long noteNr) {
  // The spellings of the twelve keys, looked up instead of worked out for every note.
  static const std::array<TEnh, 12> spellings = [] {
    std::array<TEnh, 12> built{};
    for (int key = 0; key < 12; ++key) {
      built[static_cast<std::size_t>(key)] = CNote(key, TEnh_n).Enh();
    }
    return built;
  }();
  CNote note;
  note.SetNoteNr(noteNr);
  note.SetEnhAndDontMakeSenseful(spellings[static_cast<std::size_t>(noteNr % 12)]);
  return note;
}

// --- Construction

CChordHeavy::CChordHeavy(int wrapIntvl) { _Init(wrapIntvl); }

CChordHeavy::CChordHeavy(const CNote& root, TBasicChord basicChord, int wrapIntvl) {
  _Init(wrapIntvl);
  SetRootNote(root);
  SetBasicChord(basicChord);
}

CChordHeavy::CChordHeavy(CKeyEnh root, TBasicChord basicChord, CKeyEnh bass) {
  _Init(CIntvlSet::kDefaultWrapIntvl);
  SetRootKeyEnh(root);
  SetBasicChord(basicChord);
  _SetBassOrRootInBassSlot(bass);
  UpdateIntvlSetAndBassNoteHasIntvlAlone();
}

CChordHeavy::CChordHeavy(int rootKeyNr, TBasicChord basicChord, int wrapIntvl) {
  _Init(wrapIntvl);
  SetRootKeyEnh(CKeyEnh(rootKeyNr, TEnh_n));
  SetBasicChord(basicChord);
  _SetBassOrRootInBassSlot(CKeyEnh());
  UpdateIntvlSetAndBassNoteHasIntvlAlone();
}

// An undefined root is not fixed, so that it follows the lowest of the played notes.
CChordHeavy::CChordHeavy(const CNote& root, const CMySet<CNote>& notes, int wrapIntvl) {
  _Init(wrapIntvl);
  if (!root.IsUndef()) SetRootNote(root);
  SetFromNoteSet(notes);
}

CChordHeavy::CChordHeavy(const CNote& root, const CMySet<unsigned char>& noteNrs, int wrapIntvl) {
  _Init(wrapIntvl);
  if (!root.IsUndef()) SetRootNote(root);
  SetFromNoteNrSet(noteNrs);
}

CChordHeavy::CChordHeavy(const CNote& root, const CSemitones& semitones, const CNote& bass,
                         int wrapIntvl) {
  _Init(wrapIntvl);
  SetRootNote(root);
  SetSemitones(semitones);
  _SetBassOrRootInBassSlot(bass.KeyEnh());
  UpdateIntvlSetAndBassNoteHasIntvlAlone();
}

CChordHeavy::CChordHeavy(const CNote& root, const CIntvlSet& intvls, const CNote& bass,
                         int wrapIntvl) {
  _Init(wrapIntvl);
  SetRootNote(root);
  AddIntvlSetInCompingRange(intvls);
  _SetBassOrRootInBassSlot(bass.KeyEnh());
}

CChordHeavy::CChordHeavy(const CKeyEnh& root, const CSemitones& semitones, const CKeyEnh& bass,
                         int wrapIntvl) {
  _Init(wrapIntvl);
  if (root.IsUndef()) {
    // Without a root the bass becomes the root: the slow way says how.
    SetRootKeyEnh(root);
    SetSemitones(semitones);
    _SetBassOrRootInBassSlot(bass);
    UpdateIntvlSetAndBassNoteHasIntvlAlone();
    return;
  }
  // What setting the root, the mask and the bass one after the other leaves, built directly
  // (every chord record is named through this): the root in the comping range, a note for
  // each interval above it, the bass (or the root) in the bass slot.
  _RootNote.SetNoteNr(ToCompingRangeNoteNr(NormalizedKeyNr(root.KeyNr)));
  _RootNote.SetEnh(root.Enh);
  _RootNoteSpecified = true;
  const long rootNr = _RootNote.NoteNr();
  const std::uint64_t word = semitones.Word();
  const CKeyEnh slot = bass.IsUndef() ? RootKeyEnh() : bass;
  const CNote slotNote = chords_detail::BassSlotNote(slot.KeyNr, -1, slot.Enh);
  if (word > 0xfff || wrapIntvl < 12) {
    for (int intvl : semitones.IntvlSet()) {
      _AddNoteNrAndIntvlIfNotAlreadyContained(rootNr + intvl, intvl);
    }
    _Notes.insert(slotNote);
    UpdateIntvlSetAndBassNoteHasIntvlAlone();
    return;
  }
  // Within the octave above a root in the comping range every interval is a note of its own,
  // nothing to look up or clamp; and the interval cache is the mask plus the bass slot's key
  // interval, which the bass sounds alone when the mask lacks it.
  for (std::uint64_t rest = word; rest != 0; rest &= rest - 1) {
    const int intvl = std::countr_zero(rest);
    _Notes.insert(chords_detail::NaturalNote(rootNr + intvl));
    _IntvlSet.insert(intvl);
  }
  _Notes.insert(slotNote);
  const int bassIntvl = chords_detail::FloorMod12(slotNote.KeyNr() - _RootNote.KeyNr());
  _IntvlSet.insert(bassIntvl);
  _BassNoteHasIntvlAlone = ((word >> bassIntvl) & 1u) == 0;
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = false;
}

CChordHeavy::CChordHeavy(const CKeyEnh& root, const CIntvlSet& intvls, const CKeyEnh& bass,
                         int wrapIntvl) {
  _Init(wrapIntvl);
  SetRootKeyEnh(root);
  _SetBassOrRootInBassSlot(bass);
  AddIntvlSetAboveRootNote(intvls);
  UpdateIntvlSetAndBassNoteHasIntvlAlone();
}

void CChordHeavy::_Init(int wrapIntvl) {
  _RootNote = CNote(kNoteNrUndef, TEnh_n);  // a natural made sensible: undefined
  _Notes.clear();
  _IntvlSet.clear();
  _IntvlSet.SetWrapIntvl(wrapIntvl);
  _RootNoteSpecified = false;
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = false;
  _BassNoteHasIntvlAlone = false;
}

void CChordHeavy::_SetBassOrRootInBassSlot(const CKeyEnh& bass) {
  RemoveBassNote();
  const CKeyEnh key = bass.IsUndef() ? RootKeyEnh() : bass;
  if (!key.IsUndef()) SetBassNoteInOctave(key.KeyNr, -1, key.Enh);
}

// --- The states without a root

void CChordHeavy::SetNoChordYield() {
  _RootNote.SetNoteNr(kNoteNrUndef);
  _RootNote.SetEnhAndDontMakeSenseful(TEnh_bb);
}

void CChordHeavy::SetNoChordForce() {
  _RootNote.SetNoteNr(kNoteNrUndef);
  _RootNote.SetEnhAndDontMakeSenseful(TEnh_b);
}

void CChordHeavy::SetUndef() {
  _Notes.clear();
  _IntvlSet.clear();
  _RootNote = CNote::Undef;
  _RootNoteSpecified = true;
  _IntvlSetAndBassNoteHasIntvlAloneNeedsUpdate = !_Notes.empty();
}

// --- Root

void CChordHeavy::SetRootNote(const CNote& note) {
  _RootNote = note;
  _RootNoteSpecified = true;
  _SetDirtyIfNotes();
  if (note.IsUndef()) return;
  DeleteAllNotesInOctave(-1);
  SetBassNoteInOctave(note.KeyNr(), -1, note.Enh());
}

void CChordHeavy::SetRootNoteWithoutSpecify(const CNote& note) {
  _RootNote = note;
  _RootNoteSpecified = false;
  _SetDirtyIfNotes();
}

void CChordHeavy::SetRootKeyEnh(CKeyEnh keyEnh) {
  if (keyEnh.IsUndef()) {
    _RootNote.SetNoteNr(kNoteNrUndef);
    _RootNote.SetEnhAndDontMakeSenseful(keyEnh.Enh);
    return;
  }
  CNote note;
  note.SetNoteNr(ToCompingRangeNoteNr(NormalizedKeyNr(keyEnh.KeyNr)));
  note.SetEnh(keyEnh.Enh);  // made sensible unless undefined
  SetRootNote(note);
}

void CChordHeavy::SetRootKeyNr(int keyNr) { SetRootKeyEnh(CKeyEnh(keyNr, TEnh_n)); }

void CChordHeavy::SetRootNoteInCompingRange(const CNote& note) {
  CNote moved = note;
  if (!note.IsUndef()) moved.SetNoteNr(ToCompingRangeNoteNr(note.NoteNr()));
  SetRootNote(moved);
}

void CChordHeavy::SetRootKeyNrAndBasicChord(int keyNr, TBasicChord basicChord) {
  SetRootKeyNr(keyNr);
  SetBasicChord(basicChord);
}

void CChordHeavy::SetRootNoteToIntvlIx(unsigned long intvlIx) {
  if (intvlIx >= IntvlSet().size()) return;
  _RootNote = IntvlIxToNote(static_cast<int>(intvlIx));
  _RootNoteSpecified = true;
  _SetDirtyIfNotes();
}

CNote CChordHeavy::IntvlIxToNote(int intvlIx) const {
  if (IsUndef() || intvlIx < 0 || static_cast<unsigned long>(intvlIx) >= IntvlSet().size()) {
    return CNote::Undef;
  }
  const long noteNr =
      FoldIntoNoteRange(_RootNote.NoteNr() + Intvl(static_cast<unsigned long>(intvlIx)));
  for (const CNote& note : _Notes) {
    if (note.NoteNr() == noteNr) return note;
  }
  return CNote(noteNr, TEnh_n);
}

}  // namespace harmony
