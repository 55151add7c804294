#pragma once
// The harmonic center each input chord of an analysis was placed in: what a caller needs who
// asks, chord by chord, which key a chord sounds in (the scale suggestions, for one).

#include <vector>

#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/HarmCenter.h"

namespace harmony {

// One center per input chord, in the order of InputChords(). A chord belongs to the defined
// center whose chords hold it at its position; where alternative readings hold it several
// times, the likeliest reading wins, and of equally likely ones the first. A chord that no
// defined center holds (the analysis could not place it, or it has no root) gets the
// undefined center.
std::vector<CHarmCenterLite> HarmCenterOfEachInputChord(const CHarmonicAnalyse& analyse);

}  // namespace harmony
