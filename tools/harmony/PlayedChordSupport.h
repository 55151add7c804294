#pragma once
// Played notes named as a chord: the root found by the trained net or by the weight tables, and
// the notes spelled by that reading. Shared by name and the demo.

#include <string>

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordLite.h"

namespace harmony::tool {

// The chord of `notes` with its root found by the net (`net`) or by the weight tables.
CChordHeavy ChordOfPlayedNotes(const CMySet<CNote>& notes, bool net);

// The chord as a symbol: its root, and as its bass the lowest note played when that is not the
// root, as a musician reads an inversion (F A D is Dm/F).
CChordLite PlayedChordSymbol(const CChordHeavy& chord);
std::string PlayedChordName(const CChordHeavy& chord);

// The notes with their octaves (middle C is C4), `octaveShift` semitones below where the chord
// holds them. The bass slot holds the found root; with `withFoundRoot` it leads in
// parentheses, as a key without octave.
std::string PlayedNotesText(const CChordHeavy& chord, bool withFoundRoot, long octaveShift = 0);

}  // namespace harmony::tool
