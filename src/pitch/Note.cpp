#include "harmony/pitch/Note.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "harmony/pitch/KeyNames.h"
#include "platform/Localize.h"

namespace harmony {

namespace {

// Octave -1 starts at note 0; octaves above 9 fold onto octave 8 and octaves below -1 give
// the negated key number.
long NoteNrOfOctave(int octave, int keyNr) {
  if (octave >= 10) return keyNr + 108;
  if (octave <= -2) return -keyNr;
  return 12L * (octave + 1) + keyNr;
}

// Like atoi, but huge numbers saturate instead of overflowing.
int OctaveNumber(const char* text) {
  return static_cast<int>(std::clamp(std::strtol(text, nullptr, 10), -1000L, 1000L));
}

// The difference between the octave number in a name and the octave of the note.
int OctaveNameOffset(const CChordNamePrefs& prefs) {
  switch (prefs.OctaveNumbering) {
    case 2:
      return 1;
    case 1:
      return 0;
    default:
      return -1;
  }
}

// The sensible spelling of a key as C major would write it, from any spelling: a natural or
// a missing spelling takes C major's, an accidental that doesn't fit the key shifts to the
// nearest spelling that does.
TEnh SensefulEnhAssumingCMajor(int k, TEnh enh) {
  while (!IsSensefulEnhForKeyNr(k, enh)) {
    if (enh == TEnh_n || enh == TEnh_Undef) {
      enh = MakeSensefulEnhForKeyNrAssumingCMajor(k, enh);
      if (enh == TEnh_Undef) return enh;
      continue;
    }
    const bool toFlats =
        (k == 11 || k == 4) ? (enh >= TEnh_n && enh <= TEnh_ss) : (enh >= TEnh_s && enh <= TEnh_ss);
    return toFlats ? EnhShiftToFlats(k, enh) : EnhShiftToSharps(k, enh);
  }
  return enh;
}

// The same for every key (12 for an undefined one) and every byte of a spelling, worked out
// once: every note a chord is built of is spelled through it.
using TSensefulTable = std::array<std::array<TEnh, 256>, 13>;

// Out of line, so that the look-up stays small.
[[gnu::noinline]] TSensefulTable BuildSensefulTable() {
  TSensefulTable built{};
  for (int key = 0; key < 13; ++key) {
    for (int byte = 0; byte < 256; ++byte) {
      const auto given = static_cast<TEnh>(static_cast<std::int8_t>(byte));
      built[static_cast<std::size_t>(key)][static_cast<std::size_t>(byte)] =
          SensefulEnhAssumingCMajor(key == 12 ? kKeyNrUndef : key, given);
    }
  }
  return built;
}

TEnh SensefulEnhAssumingCMajorFromTable(int keyNr, TEnh enh) {
  static const TSensefulTable table = BuildSensefulTable();
  const std::size_t row = keyNr == kKeyNrUndef ? 12 : static_cast<std::size_t>(keyNr);
  return table[row][static_cast<std::uint8_t>(enh)];
}

}  // namespace

CNote::CNote(long noteNr, TEnh enh) {
  SetNoteNr(noteNr);
  SetEnh(enh);
}

CNote::CNote(CKeyEnh key, int octave) {
  if (key.KeyNr == kKeyNrUndef) return;
  _NoteNr = NoteNrOfOctave(octave, std::clamp(key.KeyNr, 0, 127) % 12);
  _Enh = key.Enh;
}

CNote::CNote(std::pair<int, TEnh> keyNrAndEnh, int octave)
    : CNote(CKeyEnh(keyNrAndEnh.first, keyNrAndEnh.second), octave) {}

void CNote::SetNoteNr(long noteNr) {
  _NoteNr = IsUndefNoteNr(noteNr) ? kNoteNrUndef : std::clamp(noteNr, 0L, 127L);
}

void CNote::SetEnh(TEnh enh) {
  _Enh = enh;
  if (enh != TEnh_Undef) MakeSensefulEnhAssumingCMajor();
}

void CNote::SetOct(int octave) { _NoteNr = NoteNrOfOctave(octave, IsUndef() ? 0 : KeyNr()); }

void CNote::SetKeyNr(int keyNr) {
  if (keyNr == kKeyNrUndef) {
    Clear();
    return;
  }
  const long octaveBase = IsUndef() ? 0 : 12 * (_NoteNr / 12);
  _NoteNr = octaveBase + NormalizedKeyNr(keyNr);
}

void CNote::SetKeyNrAndEnhAssumingCMajor(int keyNr, TEnh enh) {
  SetKeyNr(keyNr);
  if (IsUndef()) return;
  _Enh = enh;
  MakeSensefulEnhAssumingCMajor();
}

void CNote::SetNoteNrAndEnh(long noteNr, TEnh enh) {
  SetNoteNr(noteNr);
  SetEnh(enh);
}

void CNote::SetNoteNrAndMakeSensefulEnhAssumingCMajor(long noteNr) {
  SetNoteNr(noteNr);
  MakeSensefulEnhAssumingCMajor();
}

void CNote::Clear() { *this = CNote::Undef; }

void CNote::MakeSensefulEnhAssumingCMajor() {
  _Enh = SensefulEnhAssumingCMajorFromTable(KeyNr(), _Enh);
}

void CNote::AddIntvlAndClampToKey(int intvl) {
  if (IsUndef()) return;
  if (intvl == kIntvlUndef) {
    Clear();
    return;
  }
  long v = _NoteNr + intvl;
  if (v < 0) v += (-v + 11) / 12 * 12;
  if (v > 127) v -= (v - 127 + 11) / 12 * 12;
  _NoteNr = v;
}

std::string CNote::KeyName(const CChordNamePrefs& prefs) const {
  if (IsUndef()) return platform::Localized("Undefined");
  return KeyNrAndEnhToName(KeyNr(), _Enh, prefs);
}

std::string CNote::KeyNameWithoutEnh(const CChordNamePrefs& prefs) const {
  if (IsUndef()) return platform::Localized("Undefined");
  return KeyNrToNameIgnoringEnh(KeyNr(), _Enh, prefs);
}

std::string CNote::OctName(const CChordNamePrefs& prefs) const {
  if (IsUndef()) return {};
  return std::to_string(_NoteNr / 12 - 1 + OctaveNameOffset(prefs));
}

bool CNote::SetFromString(std::string_view text, const CChordNamePrefs& prefs) {
  // Convert once here so that the octave is read behind the same characters the key used.
  std::string converted(text);
  ConvertUtf8SharpAndFlatToAscii(converted);
  int consumed = 0;
  if (!SetKeyNrAndEnhAssumingCMajorFromString(converted, &consumed, prefs)) return false;
  SetOct(OctaveNumber(converted.c_str() + consumed) - OctaveNameOffset(prefs));
  return consumed > 0;
}

bool CNote::SetKeyNrAndEnhAssumingCMajorFromString(std::string_view text, int* consumed,
                                                   const CChordNamePrefs& prefs) {
  CKeyEnh key;
  key.SetFromString(text, consumed, prefs);
  if (key.KeyNr == kKeyNrUndef) {
    Clear();
    return false;
  }
  SetKeyNrAndEnhAssumingCMajor(key.KeyNr, key.Enh);
  return true;
}

void CNote::WriteTrace(std::ostream& out) const {
  out << "CNote: " << KeyName() << OctName() << " (NoteNr " << _NoteNr << ", Enh " << _Enh << ")";
}

void CNote::WriteTraceBrief(std::ostream& out) const { out << KeyName() << OctName(); }

void CNote::WriteInitializerList(std::ostream& out) const {
  out << "CNote(" << _NoteNr << ", " << EnhInitializerText(_Enh) << ")";
}

int IntvlFromTo(const CNote& from, const CNote& to) {
  return IntvlFromTo(from.NoteNr(), to.NoteNr());
}

int KeyIntvlFromTo(const CNote& from, const CNote& to) {
  return KeyIntvlFromTo(from.KeyNr(), to.KeyNr());
}

int AbsKeyIntvlFromTo(const CNote& from, const CNote& to) {
  return AbsKeyIntvlFromTo(from.KeyNr(), to.KeyNr());
}

int SmallestKeyIntvlBetween(const CNote& from, const CNote& to) {
  return SmallestKeyIntvlBetween(from.KeyNr(), to.KeyNr());
}

int DistanceBetween(const CNote& note1, const CNote& note2) {
  const int intvl = IntvlFromTo(note1, note2);
  return intvl == kIntvlUndef ? kIntvlUndef : std::abs(intvl);
}

int KeyDistanceBetween(const CNote& note1, const CNote& note2) {
  return KeyDistanceBetween(note1.KeyNr(), note2.KeyNr());
}

int KeyDirectionFrom(const CNote& from, const CNote& to) {
  return KeyDirectionFrom(from.NoteNr(), to.NoteNr());
}

}  // namespace harmony
