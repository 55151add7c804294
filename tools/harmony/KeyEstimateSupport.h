#pragma once
// The key the estimator finds, for the commands that read chords: the chords of a chord list,
// a Billboard annotation or a MusicXML file, and `analyse --key auto`.

#include <string>

#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/analysis/HarmonicAnalyse.h"

namespace harmony::tool {

// The chords of the text, or of the file at `path` when the text is empty (MusicXML with its
// repeats played out, a Billboard annotation, or a chord list); InputError for a file that
// can't be read.
CHarmAnlsChords ChordsForKeyEstimate(const std::string& text, const std::string& path);

// The analysis once more on the same chords, starting from the estimated key of the whole
// piece instead of the default; nothing changes when no chord has a root.
void ReanalyseFromEstimatedKey(CHarmonicAnalyse& analyse, CHarmonicAnalyse::TAnalyse method);

}  // namespace harmony::tool
