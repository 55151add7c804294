#include "harmony/scalealternatives/FallbackCreator.h"

#include <algorithm>
#include <string>
#include <utility>

#include "harmony/chords/ScaleHeavy.h"

namespace harmony::Harmonies::ScaleAlternatives {

namespace {

constexpr int kFallbackChordWrap = 24;
constexpr std::uint64_t kMajorBlues = 669;
constexpr std::uint64_t kMinorBlues = 1257;
constexpr std::uint64_t kWholeTone = 1365;
// The dominant seventh with both thirds, 0-3-4-7-10: the blues in one chord.
constexpr std::uint64_t kBluesDominant = 1177;

struct TPenaltyEntry {
  std::uint64_t Mask;
  int Penalty;
};

constexpr std::array<TPenaltyEntry, 11> kPenalties{{
    {859, 2},
    {1371, 2},
    {1459, 2},
    {1461, 2},
    {1721, 2},
    {1749, 2},
    {2777, 2},
    {2869, 2},
    {2901, 2},
    {2485, 3},
    {1715, 3},
}};

// The scale's mask read from the chord's root; unchanged when either root is undefined.
CSemitones ScaleFromChordRoot(const CScaleLite& scale, const CChordHeavy& chord) {
  CSemitones semitones = scale.Semitones;
  if (!scale.IsUndef() && !chord.IsUndef()) {
    semitones.RotateRootToIx(static_cast<unsigned long>(
        NormalizedKeyNr(chord.RootKeyEnh().KeyNr - scale.RootKeyEnh.KeyNr)));
  }
  return semitones;
}

struct TRanked {
  CScaleLite Scale;
  int Similarity;
  int SizeClass;
};

}  // namespace

std::vector<CScaleLite> ProductionFallbackCreatorDependencies::ScaleGenerator(
    const CChordLite& chord) const {
  std::vector<CScaleLite> scales;
  scales.reserve(kFallbackScaleMasks.size());
  for (std::uint64_t mask : kFallbackScaleMasks) {
    scales.emplace_back(chord.RootKeyEnh, CSemitones(mask));
  }
  return scales;
}

bool ProductionFallbackCreatorDependencies::ScaleFilter(const CScaleLite& scale,
                                                        const CChordHeavy& chord) const {
  const CSemitones chordTones = chord.Semitones();
  const CSemitones scaleTones = ScaleFromChordRoot(scale, chord);
  if (chordTones.IsMinorOrDim() && scaleTones.HasIntvl(4)) return false;
  const bool alteredFifth =
      !chordTones.HasIntvl(7) && (chordTones.HasIntvl(6) || chordTones.HasIntvl(8));
  if (alteredFifth && scaleTones.HasIntvl(7)) return false;
  return ScaleAlternativesScaleFilter(scale, chord);
}

TScaleAlternatives ProductionFallbackCreatorDependencies::SortAlternatives(
    const std::vector<CScaleLite>& scales, const CScaleLite& reference, bool debug,
    TPenalty penalty) const {
  std::vector<TRanked> ranked;
  ranked.reserve(scales.size());
  for (const CScaleLite& scale : scales) {
    const int similarity =
        _SimilarityToReference(scale, reference) - (penalty ? penalty(scale) : 0);
    ranked.push_back({scale, similarity, _SizeClassForScaleFallback(scale.Semitones)});
  }
  std::stable_sort(ranked.begin(), ranked.end(),
                   [](const TRanked& a, const TRanked& b) { return a.Similarity > b.Similarity; });
  std::stable_sort(ranked.begin(), ranked.end(),
                   [](const TRanked& a, const TRanked& b) { return a.SizeClass < b.SizeClass; });
  TScaleAlternatives result;
  result.reserve(ranked.size());
  for (const TRanked& entry : ranked) {
    std::string text;
    if (debug) {
      text = "  FALLBACK: Similarity measure: " + std::to_string(entry.SizeClass) + "," +
             std::to_string(entry.Similarity);
    }
    result.emplace_back(entry.Scale, std::move(text));
  }
  return result;
}

TScaleAlternatives ProductionFallbackCreator(const CScaleAlternativesContext& context, bool debug,
                                             const FallbackCreatorDependencies& dependencies) {
  const CChordLite& chord = context.CurrentChord.Chord;
  const std::vector<CScaleLite> generated = dependencies.ScaleGenerator(chord);
  const CChordHeavy heavy = chord.ToChordHeavy(kFallbackChordWrap);
  std::vector<CScaleLite> kept;
  for (const CScaleLite& scale : generated) {
    if (dependencies.ScaleFilter(scale, heavy)) kept.push_back(scale);
  }
  return dependencies.SortAlternatives(kept, context.CurrentChord.Scale, debug,
                                       PenaltyScoreForScaleFallback);
}

bool ScaleAlternativesScaleFilter(const CScaleLite& scale, const CChordHeavy& chord) {
  const std::uint64_t mask = scale.Semitones.Word();
  if (chord.Semitones().Word() == kBluesDominant && (mask == kMajorBlues || mask == kMinorBlues)) {
    return true;
  }
  return CScaleHeavy(scale.RootKeyEnh, scale.Semitones)
      .ChordIncludingOptionsIsDiatonicInScaleDisregardingEnh(chord);
}

int PenaltyScoreForScaleFallback(const CScaleLite& scale) {
  for (const TPenaltyEntry& entry : kPenalties) {
    if (entry.Mask == scale.Semitones.Word()) return entry.Penalty;
  }
  return 0;
}

int _SizeClassForScaleFallback(const CSemitones& semitones) {
  if (semitones.size() == 7 || semitones.Word() == kWholeTone) return 1;
  return semitones.size() == 8 ? 2 : 3;
}

int _SimilarityToReference(const CScaleLite& scale, const CScaleLite& reference) {
  CSemitones other = reference.Semitones;
  if (!scale.IsUndef() && !reference.IsUndef()) {
    other.RotateRootToIx(static_cast<unsigned long>(
        NormalizedKeyNr(scale.RootKeyEnh.KeyNr - reference.RootKeyEnh.KeyNr)));
  }
  return static_cast<int>(scale.Semitones.MatchingCountInOctaveTo(other));
}

}  // namespace harmony::Harmonies::ScaleAlternatives
