#pragma once
// The analysis tree printed for a person: sign keys, centers with their ranges, and each chord
// with its position, length and distances to the center. Shared by analyse and the demo.

#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony::tool {

void PrintAnalysisTree(const CHarmonicAnalyse& analyse, const CChordNamePrefs& prefs);

}  // namespace harmony::tool
