#pragma once
// Scale suggestions for a chord in its context, as a player chooses them. The chord is
// measured against the scale its context points to: the center the analysis found, or for a
// borrowed chord the scale it is borrowed from (a flat six of C major sounds in C minor, a
// Neapolitan in C Phrygian), or for a passing diminished chord the whole-half diminished scale.
// The table's scales are filtered by rules on the chord and that scale, and sorted by size
// and likeness to it. When no scale passes, or the chord has no scale around it, the fallback
// of the fixed table answers.

#include <cstddef>
#include <ostream>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/scalealternatives/FallbackCreator.h"
#include "harmony/scalealternatives/ScaleAlternative.h"
#include "harmony/scalealternatives/ScaleAlternativesContext.h"
#include "harmony/scalealternatives/ScaleAlternativesFilter.h"

namespace harmony {

struct TScaleSuggestionOptions {
  // Offer major blues over every chord built on a major triad and minor blues over every
  // chord built on a minor one; without it the blues scales are left out unless the
  // fallback answers.
  bool UseBlues = false;
  // Ask the fallback for its debug strings.
  bool Debug = false;
};

struct TScaleSuggestions : public TraceFamily<TScaleSuggestions> {
  // The scale the suggestions are measured against; undefined when the chord has none.
  CScaleLite Reference;
  // The fixed table answered instead of the chord's context.
  bool FromFallback = false;
  TScaleAlternatives Scales;

  // "TScaleSuggestions: Reference C Major (Ionian), FromFallback no, Scales D Dorian, ..."
  void WriteTrace(std::ostream& out) const;
  // "D Dorian, D Natural Minor (Aeolian), ..."
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

namespace ScaleSuggestions {

// The scale the current chord of the context is measured against; see the top of this file.
CScaleLite ReferenceScale(const CScaleAlternativesContext& context);
// The rules the table's scales must pass over `chord`, a chord filled with its reference
// scale; `specialCase` is the chord's special case in its own context.
CScaleAlternativesFilter::TParams FilterParams(const CScaleAlternativesChordContext& chord,
                                               int specialCase,
                                               const TScaleSuggestionOptions& options);
// The masks of the fallback's table, as the filter's candidates.
const std::vector<CSemitones>& Candidates();

// The suggestions for the current chord of the context; none when it has no root.
TScaleSuggestions ForContext(
    const CScaleAlternativesContext& context, const TScaleSuggestionOptions& options,
    const Harmonies::ScaleAlternatives::FallbackCreatorDependencies& dependencies);
TScaleSuggestions ForContext(const CScaleAlternativesContext& context,
                             const TScaleSuggestionOptions& options = {});

// The context of every chord of a piece; `scales[i]` is the scale chord i sounds in (an
// undefined scale where the analysis found none). Both lists have the same length.
std::vector<CScaleAlternativesContext> ContextsForChords(const std::vector<CChordLite>& chords,
                                                         const std::vector<CScaleLite>& scales);

}  // namespace ScaleSuggestions

}  // namespace harmony
