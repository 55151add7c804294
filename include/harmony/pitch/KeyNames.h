#pragma once
// Names of keys: letters with sharp and flat signs, German syllables (Cis, Es), solfege
// syllables (Do Re Mi) and the spelled-out form for speech.

#include <string>

#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/Enh.h"

namespace harmony {

inline constexpr char kUtf8Sharp[] = "\xE2\x99\xAF";  // U+266F
inline constexpr char kUtf8Flat[] = "\xE2\x99\xAD";   // U+266D

// The name of a key number written with an accidental; the localized "Undef" for key 15.
// A spelling that does not fit the key is written as it stands.
std::string KeyNrAndEnhToName(int keyNr, TEnh enh, const CChordNamePrefs& prefs);
// The letter or syllable alone, without accidental (German names keep theirs).
std::string KeyNrToNameIgnoringEnh(int keyNr, TEnh enh, const CChordNamePrefs& prefs);

// The sharp and flat signs as the preferences write them: Unicode or "#" and "b".
const char* SharpAsUTF8OrNot(const CChordNamePrefs& prefs);
const char* FlatAsUTF8OrNot(const CChordNamePrefs& prefs);

// Replaces every Unicode sharp sign by "#", then every Unicode flat sign by "b".
void ConvertUtf8SharpAndFlatToAscii(std::string& text);

// "Eb" -> "E flat", "Fbb" -> "F double flat", "Cx" -> "C double sharp", "C#" -> "C sharp".
std::string _ReplaceAccidentalNamesNormalWithAccessibilitySpoken(const std::string& name);

}  // namespace harmony
