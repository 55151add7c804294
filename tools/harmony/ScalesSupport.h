#pragma once
// Scale suggestions for every chord of a chord list, and their printing for a person. Shared
// by the scales command and the demo; defined in ScalesCommand.cpp.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/analysis/HarmAnlsSignKey.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/scalealternatives/ScaleSuggestions.h"

namespace harmony::tool {

// One chord of the list with what the library suggests over it.
struct TChordSuggestions {
  int number = 0;  // from 1
  CHarmAnlsChordWithPos chord;
  CHarmCenterLite center;  // undefined where the analysis placed the chord in no center
  CScaleAlternativesContext context;
  TScaleSuggestions suggestions;
};

// Suggests scales for each chord an analysis holds (a closing chord without root is left
// out), or for chord `at` alone. InputError for an analysis without chords and for `at` outside
// them.
std::vector<TChordSuggestions> SuggestScalesForAnalysis(const CHarmonicAnalyse& analyse,
                                                        const TScaleSuggestionOptions& options,
                                                        std::optional<int> at);
// The same for a chord list, analysed under the sign keys given, if any.
std::vector<TChordSuggestions> SuggestScalesForChordList(const std::string& text,
                                                         const CHarmAnlsSignKeys& signKeys,
                                                         CHarmonicAnalyse::TAnalyse method,
                                                         const TScaleSuggestionOptions& options,
                                                         std::optional<int> at);

// Only the first `count` scales of each chord stay.
inline void KeepFirstScales(std::vector<TChordSuggestions>& entries, std::size_t count) {
  for (TChordSuggestions& entry : entries) {
    if (entry.suggestions.Scales.size() > count) entry.suggestions.Scales.resize(count);
  }
}

// Each chord with its center and special case, then its scales as "D Dorian: D E F G A B C",
// followed by the fallback's debug string where there is one.
void PrintScaleSuggestions(const std::vector<TChordSuggestions>& entries,
                           const CChordNamePrefs& prefs);

}  // namespace harmony::tool
