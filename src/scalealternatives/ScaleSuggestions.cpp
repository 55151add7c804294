#include "harmony/scalealternatives/ScaleSuggestions.h"

#include <array>
#include <cstdint>

namespace harmony {

namespace {

using TContext = CScaleAlternativesContext;
using TParams = CScaleAlternativesFilter::TParams;
namespace Fallback = Harmonies::ScaleAlternatives;

// Where a special case takes its scale from: a mode on the center's tonic, or a scale on the
// chord's own root.
struct TReferenceRule {
  int SpecialCase;
  std::uint64_t Mask;
  bool OnChordRoot;
};

constexpr std::uint64_t kNaturalMinor = 1453;
constexpr std::uint64_t kPhrygian = 1451;
constexpr std::uint64_t kMixolydian = 1717;
constexpr std::uint64_t kWholeHalfDiminished = 2925;

// The borrowed chords of a major key come from its parallel minor; the Neapolitan is the
// second degree of Phrygian; the minor five belongs to Mixolydian (it is the two of the four);
// a passing diminished chord sounds as the symmetric scale that holds it, whole step first.
constexpr std::array<TReferenceRule, 9> kReferenceRules{{
    {TContext::kSpecialCaseFlat6ToFlat7, kNaturalMinor, false},
    {TContext::kSpecialCaseFlat7AfterFlat6, kNaturalMinor, false},
    {TContext::kSpecialCaseFlat3, kNaturalMinor, false},
    {TContext::kSpecialCaseMinorIV, kNaturalMinor, false},
    {TContext::kSpecialCaseFlat6, kNaturalMinor, false},
    {TContext::kSpecialCaseFlat7, kNaturalMinor, false},
    {TContext::kSpecialCaseNeapolitan, kPhrygian, false},
    {TContext::kSpecialCaseMinorV, kMixolydian, false},
    {TContext::kSpecialCasePassingDim, kWholeHalfDiminished, true},
}};

// A chord with its reference scale as the scale it sounds in.
CScaleAlternativesChordContext MeasuredAgainst(const CScaleAlternativesChordContext& chord,
                                               const CScaleLite& reference) {
  if (reference == chord.Scale) return chord;
  CScaleAlternativesChordContext measured;
  measured.FillFrom(chord.Chord, reference);
  return measured;
}

std::vector<CScaleLite> ScalesOf(const TScaleAlternatives& alternatives) {
  std::vector<CScaleLite> scales;
  scales.reserve(alternatives.size());
  for (const TScaleAlternative& alternative : alternatives) scales.push_back(alternative.Scale);
  return scales;
}

}  // namespace

namespace ScaleSuggestions {

CScaleLite ReferenceScale(const CScaleAlternativesContext& context) {
  const CScaleAlternativesChordContext& chord = context.CurrentChord;
  if (chord.Scale.IsUndef()) return chord.Scale;
  for (const TReferenceRule& rule : kReferenceRules) {
    if (rule.SpecialCase != context.SpecialCase) continue;
    return CScaleLite(rule.OnChordRoot ? chord.Chord.RootKeyEnh : chord.Scale.RootKeyEnh,
                      CSemitones(rule.Mask));
  }
  return chord.Scale;
}

TParams FilterParams(const CScaleAlternativesChordContext& chord, int specialCase,
                     const TScaleSuggestionOptions& options) {
  TParams params;
  // The scale holds the chord as written: its third, fifth and every tension.
  params.MatchChord3rd = 1;
  params.MatchChord5thNoSeventh = 1;
  params.MatchChord5thWithSeventh = 1;
  params.MatchOption7 = params.MatchOption9 = params.MatchOption11 = params.MatchOption13 = 1;
  params.MinChordTones = chord.Chord.Semitones.size();
  // ... and the seventh its degree takes in the scale around it: a plain C in C major is heard
  // as a major seventh chord, a plain G as a dominant. A sixth chord has chosen its colour in
  // place of a seventh (C minor 6 takes melodic minor as well as Dorian).
  const CSemitones& tones = chord.Chord.Semitones;
  const bool sixthChord = tones.HasIntvl(9) && !tones.HasIntvl(10) && !tones.HasIntvl(11);
  params.MinExpandedChordTones =
      sixthChord ? 0
                 : chord.Chord.ChordExpandedWithTypicalSeventh(chord.HarmCenter).Semitones.size();
  // Where the chord agrees with the scale around it, so does the suggestion.
  params.MatchCenter3rd = params.MatchCenter5th = params.MatchCenter7th = 1;
  // At most one tone away from that scale, each chord tone foreign to it allowing one more.
  params.MinCenterTones = 6;
  // Phrygian dominant over the dominant of a minor key has three tones a semitone above a
  // chord tone; more make the scale a minefield.
  params.MaxAvoidNotes = 3;
  params.MaxAdjacentHalfSteps = 2;
  // One augmented second (harmonic minor and its modes) in a major key, two elsewhere.
  params.MaxHiatusInMajorCenter = 1;
  params.MaxHiatusInOtherCenter = 2;
  // A passing diminished chord is a symmetric sound: only eight-tone scales fit it.
  params.MinTones =
      specialCase == TContext::kSpecialCasePassingDim ? 8 : CScaleAlternativesFilter::kNoLimit;
  params.MaxTones = CScaleAlternativesFilter::kNoLimit;
  params.AllowPentatonics = 1;
  params.AppendChromatic = 0;
  // The altered scale belongs over a dominant seventh chord, not over every major triad.
  params.ForceAlteredOverAlteredDominant = tones.HasIntvl(4) && tones.HasIntvl(10) ? 1 : 0;
  params.ForceLydianDominantOver13 = 1;
  params.ForceDiminishedOverDim7 = 1;
  params.UseBlues = options.UseBlues ? 1 : 0;
  return params;
}

const std::vector<CSemitones>& Candidates() {
  static const std::vector<CSemitones> candidates = [] {
    std::vector<CSemitones> masks;
    for (std::uint64_t mask : Fallback::kFallbackScaleMasks) masks.emplace_back(mask);
    return masks;
  }();
  return candidates;
}

TScaleSuggestions ForContext(const CScaleAlternativesContext& context,
                             const TScaleSuggestionOptions& options,
                             const Fallback::FallbackCreatorDependencies& dependencies) {
  TScaleSuggestions suggestions;
  const CScaleAlternativesChordContext& chord = context.CurrentChord;
  if (!chord.Exists()) return suggestions;
  suggestions.Reference = ReferenceScale(context);
  if (!suggestions.Reference.IsUndef()) {
    const CScaleAlternativesChordContext measured = MeasuredAgainst(chord, suggestions.Reference);
    const TScaleAlternatives kept = CScaleAlternativesFilter::Filter(
        measured, FilterParams(measured, context.SpecialCase, options), Candidates());
    if (!kept.empty()) {
      suggestions.Scales =
          dependencies.SortAlternatives(ScalesOf(kept), suggestions.Reference, false, nullptr);
      return suggestions;
    }
  }
  suggestions.FromFallback = true;
  suggestions.Scales = Fallback::ProductionFallbackCreator(context, options.Debug, dependencies);
  return suggestions;
}

TScaleSuggestions ForContext(const CScaleAlternativesContext& context,
                             const TScaleSuggestionOptions& options) {
  static const Fallback::ProductionFallbackCreatorDependencies production;
  return ForContext(context, options, production);
}

std::vector<CScaleAlternativesContext> ContextsForChords(const std::vector<CChordLite>& chords,
                                                         const std::vector<CScaleLite>& scales) {
  std::vector<CScaleAlternativesChordContext> filled(chords.size());
  for (std::size_t i = 0; i < chords.size(); ++i) {
    filled[i].FillFrom(chords[i], i < scales.size() ? scales[i] : CScaleLite());
  }
  std::vector<CScaleAlternativesContext> contexts(chords.size());
  for (std::size_t i = 0; i < chords.size(); ++i) contexts[i].FillFrom(filled, i);
  return contexts;
}

}  // namespace ScaleSuggestions

// --- TScaleSuggestions

void TScaleSuggestions::WriteTrace(std::ostream& out) const {
  out << "TScaleSuggestions: Reference ";
  if (Reference.IsUndef()) {
    out << "undefined";
  } else {
    Reference.WriteTraceBrief(out);
  }
  out << ", FromFallback " << (FromFallback ? "yes" : "no") << ", Scales ";
  WriteTraceBrief(out);
}

void TScaleSuggestions::WriteTraceBrief(std::ostream& out) const {
  const char* separator = "";
  for (const TScaleAlternative& alternative : Scales) {
    out << separator;
    alternative.WriteTraceBrief(out);
    separator = ", ";
  }
}

void TScaleSuggestions::WriteInitializerList(std::ostream& out) const {
  out << "TScaleSuggestions(";
  Reference.WriteInitializerList(out);
  out << ", " << (FromFallback ? "true" : "false") << ", {";
  const char* separator = "";
  for (const TScaleAlternative& alternative : Scales) {
    out << separator;
    alternative.WriteInitializerList(out);
    separator = ", ";
  }
  out << "})";
}

}  // namespace harmony
