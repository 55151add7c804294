#pragma once
// A note: a MIDI note number (0..127, 60 = C of octave 4, -1 undefined) and its spelling.

#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "harmony/Trace.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/Enh.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/KeyNumbers.h"

namespace harmony {

// Defined with the scales, where this class's member that takes one is defined too.
class CScaleHeavy;

class CNote : public TraceFamily<CNote> {
 public:
  static const CNote Undef;

  constexpr CNote() = default;
  // Note numbers outside 0..127 clamp (-1 and 255 stay undefined); a defined spelling is
  // made to fit the key of the note, preferring what C major would write.
  CNote(long noteNr, TEnh enh);
  // The key's spelling is kept as it is; octave 4 holds middle C (60).
  CNote(CKeyEnh key, int octave);
  CNote(std::pair<int, TEnh> keyNrAndEnh, int octave);

  long NoteNr() const { return _NoteNr; }
  TEnh Enh() const { return _Enh; }
  // 0..11, or 15 for an undefined note.
  int KeyNr() const {  // inline: asked for in every loop over a chord's notes
    if (IsUndef()) return kKeyNrUndef;
    const long r = _NoteNr % 12;
    return static_cast<int>(r < 0 ? r + 12 : r);
  }
  CKeyEnh KeyEnh() const { return CKeyEnh(KeyNr(), _Enh); }
  bool IsUndef() const { return IsUndefNoteNr(_NoteNr); }

  void SetNoteNr(long noteNr);
  void SetEnh(TEnh enh);
  void SetEnhAndDontMakeSenseful(TEnh enh) { _Enh = enh; }
  // Keeps the key number; an undefined note is taken as C.
  void SetOct(int octave);
  // Keeps the octave; an undefined note is taken as octave base 0. Key 15 clears the note.
  void SetKeyNr(int keyNr);
  void SetKeyNrAndEnhAssumingCMajor(int keyNr, TEnh enh);
  void SetNoteNrAndEnh(long noteNr, TEnh enh);
  // Sets the note number and fits the current spelling to it.
  void SetNoteNrAndMakeSensefulEnhAssumingCMajor(long noteNr);
  void Clear();

  bool IsBlackKey() const { return harmony::IsBlackKey(KeyNr()); }
  bool HasSensefulEnh() const { return IsSensefulEnhForKeyNr(KeyNr(), _Enh); }
  void MakeSensefulEnhAssumingCMajor();
  void EnhShift() { _Enh = harmony::EnhShift(KeyNr(), _Enh); }
  void EnhShiftToFlats() { _Enh = harmony::EnhShiftToFlats(KeyNr(), _Enh); }
  void EnhShiftToSharps() { _Enh = harmony::EnhShiftToSharps(KeyNr(), _Enh); }
  // Takes the spelling the scale's table gives this note's key; an undefined note reads the
  // entry of key 3 (15 modulo 12).
  void AdjustEnhToScale(const CScaleHeavy& scale);
  // Adds an interval, then moves by whole octaves back into 0..127: the key number follows
  // the interval, the octave may not. An undefined interval clears the note.
  void AddIntvlAndClampToKey(int intvl);

  // The localized "Undefined" for an undefined note.
  std::string KeyName(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;
  std::string KeyNameWithoutEnh(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;
  // The octave as the preferences number it (note 60 is "3", "4" or "5"); empty if undefined.
  std::string OctName(const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;

  // Reads a key name and an octave number ("C#3", "Bb-1"); false when no key was read.
  bool SetFromString(std::string_view text,
                     const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());
  // Reads only the key name, keeping the octave; `consumed` counts the characters read.
  bool SetKeyNrAndEnhAssumingCMajorFromString(
      std::string_view text, int* consumed = nullptr,
      const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());

  bool operator==(const CNote& other) const {
    return _NoteNr == other._NoteNr && _Enh == other._Enh;
  }
  bool operator!=(const CNote& other) const { return !(*this == other); }
  // By note number, then by spelling read unsigned. Inline: every note set orders by it.
  bool operator<(const CNote& other) const {
    if (_NoteNr != other._NoteNr) return _NoteNr < other._NoteNr;
    return static_cast<unsigned char>(_Enh) < static_cast<unsigned char>(other._Enh);
  }

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  long _NoteNr = kNoteNrUndef;
  TEnh _Enh = TEnh_Undef;
};

inline constexpr CNote CNote::Undef{};

int IntvlFromTo(const CNote& from, const CNote& to);
int KeyIntvlFromTo(const CNote& from, const CNote& to);
int AbsKeyIntvlFromTo(const CNote& from, const CNote& to);
int SmallestKeyIntvlBetween(const CNote& from, const CNote& to);
// The absolute difference of the note numbers; -129 when either is undefined.
int DistanceBetween(const CNote& note1, const CNote& note2);
int KeyDistanceBetween(const CNote& note1, const CNote& note2);
int KeyDirectionFrom(const CNote& from, const CNote& to);

}  // namespace harmony
