// Reads arbitrary text as a chord list, analyses it and asks for the scale suggestions of every
// chord, as the scales command does. Every suggestion stands on its chord's root; a chord
// without root gets none; suggestions from the chord's context come with a reference scale;
// the fallback's scales hold every key of the chord, unless it is the blues dominant on a
// blues scale.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmCenterOfInputChords.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/scalealternatives/FallbackCreator.h"
#include "harmony/scalealternatives/ScaleSuggestions.h"

namespace {

using namespace harmony;

void Check(const CScaleAlternativesContext& context, const TScaleSuggestions& suggestions) {
  const CChordLite& chord = context.CurrentChord.Chord;
  if (chord.IsUndef()) {
    if (!suggestions.Scales.empty()) std::abort();
    return;
  }
  if (!suggestions.FromFallback && suggestions.Reference.IsUndef()) std::abort();
  const CChordHeavy heavy = chord.ToChordHeavy(24);
  for (const TScaleAlternative& alternative : suggestions.Scales) {
    if (!(alternative.Scale.RootKeyEnh == chord.RootKeyEnh)) std::abort();
    if (suggestions.FromFallback &&
        !Harmonies::ScaleAlternatives::ScaleAlternativesScaleFilter(alternative.Scale, heavy)) {
      std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString(text, {}, CHarmonicAnalyse::kAnalyseTonicProgressions,
                                 TChordStringParse());
  const std::vector<CHarmCenterLite> centers = HarmCenterOfEachInputChord(analyse);
  if (centers.size() != analyse.InputChords().size()) std::abort();
  const std::vector<CChordLite> chords(analyse.InputChords().begin(), analyse.InputChords().end());
  const std::vector<CScaleAlternativesContext> contexts =
      ScaleSuggestions::ContextsForChords(chords, {centers.begin(), centers.end()});
  for (const CScaleAlternativesContext& context : contexts) {
    Check(context, ScaleSuggestions::ForContext(context, {size % 2 == 0, true}));
  }
  return 0;
}
