#pragma once
// Free functions around chord grids: pitch names and their parsing, and the built-in chord
// types by index (the ids stored in libraries).

#include <string>

#include "harmony/guitar/GChBasicChord.h"

namespace harmony {

// The built-in chord types in their fixed order. An index is clamped into 0..count-1.
int GChNumberOfChordTypes();
std::string GChChordTypeNameForIndex(int index);
GChChordTypeId GChChordTypeIdForIndex(int index);
// The name of a built-in id; empty for an unknown id.
std::string GChChordTypeNameForId(GChChordTypeId id);

// "C", "C#", ... "B" with the octave, where octave = pitch / 12 - 2: 60 is "C3".
std::string GChMidiPitchDefaultName(int pitch);
// The name of a key number 0..11 without octave ("C#"); empty outside 0..11.
std::string GChOctPitchDefaultName(int key);
// One of 17 spelled pitch classes, 0..16: C C# Db D D# Eb E F F# Gb G G# Ab A A# Bb B; empty
// outside.
std::string GChEnhPitchName(int index);
// "C-2" is 0, "C3" 60, "G8" 127; blanks are skipped; -1 for anything else or 128 and above.
int GChMidiPitchForPitchString(const std::string& text);

// Every "b" becomes U+266D and every "#" U+266F, by plain search over the whole text (so the
// letter b inside a word changes too).
std::string stringByConvertingMusicalSymbols(const std::string& text);

}  // namespace harmony
