// Degree arithmetic of the heavy scale: keys, intervals and notes to degrees and back,
// quantising onto the scale and walking in it.

#include <algorithm>

#include "harmony/chords/ScaleHeavy.h"

namespace harmony {

namespace {

constexpr long FloorDiv(long value, long by) {
  const long q = value / by;
  return (value % by != 0 && value < 0) ? q - 1 : q;
}

constexpr long FloorMod(long value, long by) { return value - FloorDiv(value, by) * by; }

// A note number moved by whole octaves into 0..127.
long FoldIntoNoteRange(long noteNr) {
  if (noteNr < 0) noteNr += (-noteNr + 11) / 12 * 12;
  if (noteNr > 127) noteNr -= (noteNr - 127 + 11) / 12 * 12;
  return noteNr;
}

}  // namespace

int CScaleHeavy::_DegreeOfRootOffset(int rel) const {
  for (int degree = 0; degree < DegreesPerOctave(); ++degree) {
    if (mActiveScaleData.DegreeToRootOffsetIntvl[static_cast<std::size_t>(degree)] == rel) {
      return degree;
    }
  }
  return -1;
}

bool CScaleHeavy::HasIntvl(int intvl) const { return ToSemitones().HasIntvl(intvl); }

bool CScaleHeavy::HasNoteNr(long noteNr) const { return NoteNrToDegreeNr(noteNr) >= 0; }

int CScaleHeavy::KeyNrToDegreeNr(int keyNr) const {
  if (_RootNote.IsUndef() || _ScaleType == st_Undef) return -1;
  const int key = NormalizedKeyNr(keyNr);
  if (key == kKeyNrUndef) return -1;
  return _DegreeOfRootOffset(static_cast<int>(FloorMod(key - _RootNote.KeyNr(), 12)));
}

int CScaleHeavy::NoteNrToDegreeNr(long noteNr) const {
  if (IsUndefNoteNr(noteNr)) return -1;
  return KeyNrToDegreeNr(static_cast<int>(FloorMod(noteNr, 12)));
}

int CScaleHeavy::IntvlToDegreeNr(int intvl) const {
  if (intvl == kIntvlUndef) return -1;
  return _DegreeOfRootOffset(static_cast<int>(FloorMod(intvl, 12)));
}

int CScaleHeavy::DegreeNrToKeyNr(int degreeNr) const {
  const int count = DegreesPerOctave();
  if (_RootNote.IsUndef() || count == 0) return kKeyNrUndef;
  const auto degree = static_cast<std::size_t>(FloorMod(degreeNr, count));
  return static_cast<int>(
      FloorMod(_RootNote.KeyNr() + mActiveScaleData.DegreeToRootOffsetIntvl[degree], 12));
}

CKeyEnh CScaleHeavy::DegreeNrToKeyEnh(int degreeNr) const {
  const int key = DegreeNrToKeyNr(degreeNr);
  if (key == kKeyNrUndef) return CKeyEnh();
  return CKeyEnh(key, EnhForKeyNr(key));
}

long CScaleHeavy::DegreeNrToNoteNr(int degreeNr) const {
  const int count = DegreesPerOctave();
  if (_RootNote.IsUndef() || count == 0) return kNoteNrUndef;
  const auto degree = static_cast<std::size_t>(FloorMod(degreeNr, count));
  return _RootNote.NoteNr() + 12 * FloorDiv(degreeNr, count) +
         mActiveScaleData.DegreeToRootOffsetIntvl[degree];
}

CNote CScaleHeavy::DegreeNrToNote(int degreeNr) const {
  const long noteNr = DegreeNrToNoteNr(degreeNr);
  if (noteNr == kNoteNrUndef) return CNote::Undef;
  CNote note(FoldIntoNoteRange(noteNr), TEnh_Undef);
  note.SetEnhAndDontMakeSenseful(EnhForKeyNr(note.KeyNr()));
  return note;
}

CNote CScaleHeavy::DegreeNrToNoteInLowestOctave(int degreeNr) const {
  const int key = DegreeNrToKeyNr(degreeNr);
  if (key == kKeyNrUndef) return CNote::Undef;
  CNote note(key, TEnh_Undef);
  note.SetEnhAndDontMakeSenseful(EnhForKeyNr(key));
  return note;
}

int CScaleHeavy::_QuantizeIntvlFromKey(int keyNr, TQuantizeToScaleDirection direction) const {
  const auto rel = static_cast<unsigned long>(FloorMod(keyNr - _RootNote.KeyNr(), 12));
  const TQuantizeSemitonesOptions options{static_cast<TQuantizeDirection>(direction),
                                          _Quantize_WrapAtOctave_No};
  const int intvl = ToSemitones().QuantizeToActiveSemitonesAsIntvl(rel, options);
  return intvl == kIntvlUndef ? 0 : intvl;
}

CKeyEnh CScaleHeavy::QuantizeToScaleKeyEnh(const CKeyEnh& key,
                                           TQuantizeToScaleDirection direction) const {
  if (key.IsUndef() || IsUndef()) return key;
  const int intvl = _QuantizeIntvlFromKey(key.KeyNr, direction);
  const int newKey = static_cast<int>(FloorMod(key.KeyNr + intvl, 12));
  const TEnh enh = EnhForKeyNr(newKey);
  // A key already in the scale keeps its spelling if the table has none.
  return CKeyEnh(newKey, (enh == TEnh_Undef && intvl == 0) ? key.Enh : enh);
}

int CScaleHeavy::QuantizeToScaleDegreeNr(int keyNr, TQuantizeToScaleDirection direction) const {
  if (NormalizedKeyNr(keyNr) == kKeyNrUndef || IsUndef()) return -1;
  return KeyNrToDegreeNr(keyNr + _QuantizeIntvlFromKey(keyNr, direction));
}

CNote CScaleHeavy::NoteQuantizeToScaleNote(const CNote& note,
                                           TQuantizeToScaleDirection direction) const {
  if (note.IsUndef() || IsUndef()) return note;
  const int intvl = _QuantizeIntvlFromKey(note.KeyNr(), direction);
  CNote result(FoldIntoNoteRange(note.NoteNr() + intvl), TEnh_Undef);
  const TEnh enh = EnhForKeyNr(result.KeyNr());
  result.SetEnhAndDontMakeSenseful((enh == TEnh_Undef && intvl == 0) ? note.Enh() : enh);
  return result;
}

long CScaleHeavy::MoveInScale(long noteNr, int steps, bool keepInNoteRange) const {
  if (IsUndefNoteNr(noteNr)) return kNoteNrUndef;
  const long count = DegreesPerOctave();
  if (IsUndef() || count == 0) return noteNr;
  const long rel = noteNr - _RootNote.KeyNr();
  const int within = static_cast<int>(FloorMod(rel, 12));
  const auto& offsets = mActiveScaleData.DegreeToRootOffsetIntvl;
  // Degrees of this octave below the note; one less is the degree at or below it.
  const long below = std::count_if(offsets.begin(), offsets.begin() + count,
                                   [within](std::int32_t offset) { return offset < within; });
  const long octaveStart = FloorDiv(rel, 12) * count;
  long target = 0;
  if (_DegreeOfRootOffset(within) >= 0) {
    target = octaveStart + below + steps;
  } else if (steps == 0) {
    return noteNr;
  } else {
    target = octaveStart + below - 1 + (steps > 0 ? steps : steps + 1);
  }
  const long result = _RootNote.KeyNr() + 12 * FloorDiv(target, count) +
                      offsets[static_cast<std::size_t>(FloorMod(target, count))];
  return keepInNoteRange ? FoldIntoNoteRange(result) : result;
}

CNote CScaleHeavy::MoveInScale(const CNote& note, int steps) const {
  if (_RootNote.IsUndef() || _ScaleType == st_Undef) return note;
  CNote result;
  result.SetNoteNr(MoveInScale(note.NoteNr(), steps, true));
  result.SetEnhAndDontMakeSenseful(EnhForKeyNr(result.KeyNr()));
  return result;
}

}  // namespace harmony
