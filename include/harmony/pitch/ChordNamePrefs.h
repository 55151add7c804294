#pragma once
// How keys and chords are written and read: letter system, accidentals, octave numbers,
// spacing. Every naming and parsing function takes one of these records.

#include <cstdint>
#include <ostream>
#include <string>

#include "harmony/Trace.h"

namespace harmony {

class CChordNamePrefs : public TraceFamily<CChordNamePrefs> {
 public:
  std::uint8_t BIsH = 0;               // 1: natural B is named H
  std::uint8_t BIsBFlat = 0;           // 1: B flat is named B, and a plain B reads as B flat
  std::uint8_t GermanAccidentals = 0;  // 1: accidentals as German syllables (Cis, Es)
  std::int32_t AsciiAccidentals = 0;   // 0: the Unicode sharp and flat signs; else "#" and "b"
  std::int32_t Solfege = 0;            // 0 letters, 1 Do Re Mi .. Ti, 2 .. Si, 3 Ti then localized
  std::int32_t OctaveNumbering = 0;    // 0, 1, 2: note 60 is octave 3, 4 or 5
  std::int32_t AccessibilitySpoken = 0;  // 1: names spelled out for speech
  std::int32_t MinorNaming = 0;          // 1 or 2: minor chords with a small letter
  std::uint8_t NameWithoutSlashIfNarrow = 1;
  std::uint8_t HideBassIntvlInWideChords = 1;
  std::int32_t MajorSeventhStyle = 0;  // 1 "j7", 2 "maj7", otherwise "ma7"
  std::int32_t SecondStyleValue = 0;   // kept for hosts; nothing depends on it
  std::int32_t CommaSeparatedNameParts = 0;
  std::int32_t ThirdStyleValue = 4;  // kept for hosts; nothing depends on it
  std::int32_t TensionStyle = 2;     // 0 slashes, 1 each option in parentheses, 2 one pair
  std::int32_t FunctionLetters = 0;
  std::int32_t CompactNameParts = 1;
  std::int32_t NoSpaceAroundSlash = 1;
  std::string SlashString = "/";

  bool MinorChordNamingWithSmallLetter() const { return MinorNaming == 1 || MinorNaming == 2; }
  bool ChordTensionSeparatorClarifyingForFirstOptionNeeded() const {
    return AccessibilitySpoken == 0 && CompactNameParts == 1;
  }

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// The shared default record, built on first use and never changed by the library.
const CChordNamePrefs& GetCurrentChordNamePrefs();
// The default with comma-separated name parts and blanks between parts and around the slash.
const CChordNamePrefs& GetCurrentChordNamePrefs_Loftbox();
// The default with ASCII accidentals.
const CChordNamePrefs& GetChordNamePrefsNonUTF8();
// A copy of the default with blanks between name parts and around the slash.
CChordNamePrefs CurrentChordNamePrefs_SpaceBetweenNamePartsAndSlash();

// "" or " " between the parts of a chord name (always a blank when spoken).
const char* OptionalSpaceBetweenNameParts(const CChordNamePrefs& prefs);
// "" or " " on each side of the slash before a bass note.
const char* OptionalSpaceAroundSlash(const CChordNamePrefs& prefs);

}  // namespace harmony
