#pragma once
// Reading scale names as a person types them: a root, then a scale word in English or German
// shorthand ("C", "A m", "Db lydian", "F# hm5", "Bb bebop dominant").

#include <map>
#include <string>

#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/Semitones.h"

namespace harmony {

// The scale is reset, the root read as a key name and the rest as a scale word. Root and mask
// are independent: an unreadable root stays undefined and the mask is still read.
void SetFromString(const std::string& text, CScaleLite& scale,
                   const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());
// The same into a heavy scale, which then finds the named type of the mask.
void SetFromString(const std::string& text, CScaleHeavy& scale,
                   const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());

// The mask of the scale word at `pos` (after blanks, ignoring case). The word must take up the
// whole rest of the text, trailing blanks aside; the first matching keyword wins and `pos`
// moves behind it. Nothing left means major; an unknown word gives major too.
CSemitones _SemitonesScaleFromString(const std::string& text, int& pos);

// Keyword tables by name: the seam for user-defined scale words. Both are empty.
std::map<std::string, std::string> _Create_ScaleNames();
namespace CSemitonesKeywordNamesFactory {
std::map<std::string, std::string> Create(const std::string& kind);
}

}  // namespace harmony
