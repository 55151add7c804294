#pragma once
// Naming guitar grids: the chord a grid sounds, named on a given root, and the root that gives
// the plainest name.

#include <optional>
#include <string>

#include "harmony/guitar/GChChord.h"
#include "harmony/guitar/GChTuning.h"

namespace harmony {

// How the root given to the naming functions is spelled: 0 natural, 1 sharp, 2 flat; any other
// value spells it as C major would.
enum GChEnhType : int { kGChEnhNatural = 0, kGChEnhSharp = 1, kGChEnhFlat = 2 };

// The name of the chord the grid sounds, with `rootKey` (0..11) as its root and bass slot: the
// sounding strings become notes, and the name follows the chord naming rules with tensions in
// one parenthesis and blanks between the parts. Nothing for a root outside 0..11.
std::optional<std::string> GChHarmonyStringFromChord(const GChChord& chord, int rootKey,
                                                     int enhType, int capodasterOffset);
// The same in the comma form ("C,,7").
std::optional<std::string> GChHarmonyCommaSeparatedStringFromChord(const GChChord& chord,
                                                                   int rootKey, int enhType,
                                                                   int capodasterOffset);
// The same for a free grid record, sounded on `tuning`.
std::optional<std::string> GChHarmonyStringFromChordDescr(const GChChordDescr& chord,
                                                          const GChShortTuning& tuning,
                                                          int rootKey, int enhType,
                                                          int capodasterOffset);
std::optional<std::string> GChHarmonyCommaSeparatedStringFromChordDescr(
    const GChChordDescr& chord, const GChShortTuning& tuning, int rootKey, int enhType,
    int capodasterOffset);

// The root whose name of the grid is shortest, ties going to the lower key; -1 when no root
// gives a name.
int GChProposedRootNoteFromChord(const GChChord& chord, int capodasterOffset);
int GChProposedRootNoteFromChordDescr(const GChChordDescr& chord, const GChShortTuning& tuning,
                                      int capodasterOffset);

}  // namespace harmony
