// The fallback creator: the table's scales on the chord's root, those that hold the chord,
// sorted by size class and likeness to the context's scale; and its steps reached through a
// replaceable dependency object.

#include <gtest/gtest.h>

#include <vector>

#include "ScaleAlternativesTestSupport.h"
#include "harmony/scalealternatives/FallbackCreator.h"

namespace harmony {
namespace {

namespace Fallback = Harmonies::ScaleAlternatives;
using testing::Chord;
using testing::InScale;
using testing::Masks;
using testing::Scale;
using TMasks = std::vector<unsigned long long>;

const Fallback::ProductionFallbackCreatorDependencies kProduction;

CScaleLite On(int keyNr, TEnh enh, std::uint64_t mask) {
  return CScaleLite(CKeyEnh(keyNr, enh), CSemitones(mask));
}

std::vector<std::string> DebugStrings(const TScaleAlternatives& alternatives) {
  std::vector<std::string> strings;
  for (const TScaleAlternative& alternative : alternatives) strings.push_back(alternative.Debug);
  return strings;
}

TEST(FallbackCreator, GeneratesTheTableOnTheChordsRoot) {
  const std::vector<CScaleLite> scales = kProduction.ScaleGenerator(Chord("Eb7"));
  ASSERT_EQ(scales.size(), Fallback::kFallbackScaleMasks.size());
  for (std::size_t i = 0; i < scales.size(); ++i) {
    EXPECT_EQ(scales[i], On(3, TEnh_b, Fallback::kFallbackScaleMasks[i])) << i;
  }
  EXPECT_EQ(scales.front().Semitones.Word(), 2741U);
  EXPECT_EQ(scales.back().Semitones.Word(), 395U);
  for (const CScaleLite& scale : kProduction.ScaleGenerator(CChordLite())) {
    EXPECT_TRUE(scale.IsUndef());
  }
}

TEST(FallbackCreator, FilterKeepsScalesThatHoldTheChord) {
  const auto keeps = [](const CScaleLite& scale, const std::string& symbol) {
    return kProduction.ScaleFilter(scale, Chord(symbol).ToChordHeavy(24));
  };
  // A minor chord never gets a major third on its root, even from a scale that holds all its
  // tones (D Mixolydian ♯9 has both F and F♯).
  for (const CScaleLite& scale : kProduction.ScaleGenerator(Chord("Dm"))) {
    if (keeps(scale, "Dm")) {
      EXPECT_FALSE(scale.Semitones.HasIntvl(4)) << scale.Name();
    }
  }
  const CScaleLite dMixolydianSharp9 = On(2, TEnh_n, 1721);
  EXPECT_TRUE(
      Fallback::ScaleAlternativesScaleFilter(dMixolydianSharp9, Chord("Dm").ToChordHeavy(24)));
  EXPECT_FALSE(keeps(dMixolydianSharp9, "Dm"));
  // The thirds are read from the chord's root: C major seen from D is D Dorian.
  EXPECT_TRUE(keeps(On(0, TEnh_n, 2741), "Dm"));
  EXPECT_FALSE(keeps(On(0, TEnh_n, 2773), "Dm"));

  // An augmented chord drops every scale with a perfect fifth, bebop major among them,
  // though it holds C E G♯.
  int kept = 0;
  for (const CScaleLite& scale : kProduction.ScaleGenerator(Chord("Caug"))) {
    if (!keeps(scale, "Caug")) continue;
    ++kept;
    EXPECT_FALSE(scale.Semitones.HasIntvl(7)) << scale.Name();
  }
  EXPECT_GT(kept, 0);
  EXPECT_FALSE(keeps(On(0, TEnh_n, 2997), "Caug"));

  // The blues scales take the dominant with both thirds, missing seventh and all.
  EXPECT_TRUE(keeps(On(0, TEnh_n, 669), "C7#9"));
  EXPECT_TRUE(keeps(On(0, TEnh_n, 1257), "C7#9"));
  EXPECT_FALSE(keeps(On(0, TEnh_n, 669), "C7"));
  EXPECT_FALSE(keeps(On(0, TEnh_n, 1717), "C7#9"));
}

TEST(FallbackCreator, PenaltiesOfColourfulScales) {
  EXPECT_EQ(Fallback::PenaltyScoreForScaleFallback(On(0, TEnh_n, 2485)), 3);
  EXPECT_EQ(Fallback::PenaltyScoreForScaleFallback(On(0, TEnh_n, 1715)), 3);
  EXPECT_EQ(Fallback::PenaltyScoreForScaleFallback(On(0, TEnh_n, 1371)), 2);
  EXPECT_EQ(Fallback::PenaltyScoreForScaleFallback(On(0, TEnh_n, 859)), 2);
  EXPECT_EQ(Fallback::PenaltyScoreForScaleFallback(On(0, TEnh_n, 2741)), 0);
  EXPECT_EQ(Fallback::PenaltyScoreForScaleFallback(On(0, TEnh_n, 2925)), 0);
}

TEST(FallbackCreator, SortsBySizeClassThenLikeness) {
  const CScaleLite cMajor = Scale("C");
  const auto sorted = [&](const std::vector<std::uint64_t>& masks, const CScaleLite& reference,
                          Fallback::TPenalty penalty = nullptr) {
    std::vector<CScaleLite> scales;
    for (std::uint64_t mask : masks) scales.push_back(On(0, TEnh_n, mask));
    return kProduction.SortAlternatives(scales, reference, true, penalty);
  };
  // Seven tones first, the closer to C major before the farther; then eight tones, though
  // bebop major is closer than Lydian; then the rest.
  const TScaleAlternatives ordered = sorted({669, 2997, 2773, 2741}, cMajor);
  EXPECT_EQ(Masks(ordered), (TMasks{2741, 2773, 2997, 669}));
  EXPECT_EQ(DebugStrings(ordered),
            (std::vector<std::string>{
                "  FALLBACK: Similarity measure: 1,12", "  FALLBACK: Similarity measure: 1,10",
                "  FALLBACK: Similarity measure: 2,11", "  FALLBACK: Similarity measure: 3,9"}));
  // The whole tone scale counts with the seven-tone scales.
  EXPECT_EQ(Masks(sorted({2997, 1365}, cMajor)), (TMasks{1365, 2997}));
  // Equally close scales keep their order.
  EXPECT_EQ(Masks(sorted({1717, 2773}, cMajor)), (TMasks{1717, 2773}));
  EXPECT_EQ(Masks(sorted({2773, 1717}, cMajor)), (TMasks{2773, 1717}));

  // Harmonic major is one semitone away from this reference; its penalty of 3 leaves 8.
  const CScaleLite nearHarmonicMajor = On(0, TEnh_n, 2485 | 2);
  EXPECT_EQ(sorted({2485}, nearHarmonicMajor).at(0).Debug, "  FALLBACK: Similarity measure: 1,11");
  EXPECT_EQ(sorted({2485}, nearHarmonicMajor, Fallback::PenaltyScoreForScaleFallback).at(0).Debug,
            "  FALLBACK: Similarity measure: 1,8");

  // The reference is read from each scale's root: A minor seen from C is C major. A
  // reference without root is taken as it stands.
  const std::vector<CScaleLite> dDorian{On(2, TEnh_n, 1709)};
  EXPECT_EQ(kProduction.SortAlternatives(dDorian, Scale("A minor"), true, nullptr).at(0).Debug,
            "  FALLBACK: Similarity measure: 1,12");
  EXPECT_EQ(kProduction.SortAlternatives(dDorian, On(kKeyNrUndef, TEnh_Undef, 2741), true, nullptr)
                .at(0)
                .Debug,
            "  FALLBACK: Similarity measure: 1,8");
  // Without the debug flag the strings stay empty; an empty list stays empty.
  EXPECT_EQ(kProduction.SortAlternatives(dDorian, cMajor, false, nullptr).at(0).Debug, "");
  EXPECT_TRUE(kProduction.SortAlternatives({}, cMajor, true, nullptr).empty());
}

TEST(FallbackCreator, OrderForAChordTheAnalysisCannotPlace) {
  // Without a scale around the chord every seven-tone scale is equally close: the table's
  // order decides within each size class.
  const std::vector<CScaleAlternativesContext> unplaced =
      ScaleSuggestions::ContextsForChords({Chord("Dm")}, {CScaleLite()});
  const TScaleAlternatives scales =
      Fallback::ProductionFallbackCreator(unplaced[0], true, kProduction);
  EXPECT_EQ(Masks(scales),
            (TMasks{1453, 1709, 1451, 2477, 2733, 1707, 1741, 2989, 3501, 1193, 395, 1257}));
  EXPECT_EQ(scales.front().Scale.RootKeyEnh, CKeyEnh(2, TEnh_n));
  EXPECT_EQ(scales.front().Debug, "  FALLBACK: Similarity measure: 1,5");

  // In F major, C7 comes out closest to F major's C Mixolydian; the penalised scales fall
  // behind the plain ones.
  const TScaleAlternatives inF =
      Fallback::ProductionFallbackCreator(InScale("C7", Scale("F")).at(0), false, kProduction);
  EXPECT_EQ(Masks(inF), (TMasks{1717, 1749, 1461, 1721, 1715, 1459, 3765, 1755, 1427}));

  // A chord without root gets nothing.
  EXPECT_TRUE(
      Fallback::ProductionFallbackCreator(InScale("nochord", Scale("C")).at(0), false, kProduction)
          .empty());
}

// Records how the creator reaches each step and answers with what the test chose.
class RecordingDependencies : public Fallback::FallbackCreatorDependencies {
 public:
  mutable std::vector<CChordLite> generatedFor;
  mutable std::vector<CScaleLite> filtered;
  mutable std::vector<CChordHeavy> filteredChords;
  mutable int sortCalls = 0;
  mutable std::vector<CScaleLite> sortedScales;
  mutable CScaleLite sortedReference;
  mutable bool sortedDebug = false;
  mutable bool penaltyGiven = false;
  mutable int penaltyOfHarmonicMajor = -1;

  std::vector<CScaleLite> ScaleGenerator(const CChordLite& chord) const override {
    generatedFor.push_back(chord);
    return {On(0, TEnh_n, 2741), On(0, TEnh_n, 2773), On(0, TEnh_n, 1365)};
  }
  bool ScaleFilter(const CScaleLite& scale, const CChordHeavy& chord) const override {
    filtered.push_back(scale);
    filteredChords.push_back(chord);
    return scale.Semitones.Word() != 2773;
  }
  TScaleAlternatives SortAlternatives(const std::vector<CScaleLite>& scales,
                                      const CScaleLite& reference, bool debug,
                                      Fallback::TPenalty penalty) const override {
    ++sortCalls;
    sortedScales = scales;
    sortedReference = reference;
    sortedDebug = debug;
    penaltyGiven = static_cast<bool>(penalty);
    if (penalty) penaltyOfHarmonicMajor = penalty(On(0, TEnh_n, 2485));
    return {TScaleAlternative(On(11, TEnh_n, 1), "chosen by the test")};
  }
};

TEST(FallbackCreator, StepsAreReachedThroughTheDependencyObject) {
  const RecordingDependencies recording;
  const CScaleAlternativesContext context = InScale("C7 F", Scale("F")).at(0);
  const TScaleAlternatives result = Fallback::ProductionFallbackCreator(context, true, recording);

  ASSERT_EQ(result.size(), 1U);
  EXPECT_EQ(result[0].Debug, "chosen by the test");
  EXPECT_EQ(recording.generatedFor, std::vector<CChordLite>{Chord("C7")});
  ASSERT_EQ(recording.filtered.size(), 3U);
  for (const CChordHeavy& chord : recording.filteredChords) {
    EXPECT_EQ(chord.RootKeyEnh(), CKeyEnh(0, TEnh_n));
    EXPECT_EQ(chord.Semitones(), Chord("C7").Semitones);
  }
  // The scales the filter kept, in their order, measured against the context's scale with
  // the fallback's penalty.
  EXPECT_EQ(recording.sortedScales,
            (std::vector<CScaleLite>{On(0, TEnh_n, 2741), On(0, TEnh_n, 1365)}));
  EXPECT_EQ(recording.sortedReference, Scale("F"));
  EXPECT_TRUE(recording.sortedDebug);
  EXPECT_EQ(recording.penaltyOfHarmonicMajor, 3);

  // The suggestions reach the same object: the sort alone for a chord its context explains
  // (without penalty or debug strings), every step for one it does not.
  const RecordingDependencies suggested;
  const TScaleSuggestions placed =
      ScaleSuggestions::ForContext(InScale("Dm7 G7", Scale("C")).at(0), {}, suggested);
  EXPECT_FALSE(placed.FromFallback);
  EXPECT_EQ(placed.Scales, result);
  EXPECT_TRUE(suggested.generatedFor.empty());
  EXPECT_EQ(suggested.sortCalls, 1);
  EXPECT_FALSE(suggested.penaltyGiven);
  EXPECT_FALSE(suggested.sortedDebug);
  EXPECT_EQ(suggested.sortedReference, Scale("C"));

  const RecordingDependencies unplaced;
  const TScaleSuggestions fallback = ScaleSuggestions::ForContext(
      ScaleSuggestions::ContextsForChords({Chord("Dm7")}, {CScaleLite()}).at(0), {false, true},
      unplaced);
  EXPECT_TRUE(fallback.FromFallback);
  EXPECT_EQ(unplaced.generatedFor.size(), 1U);
  EXPECT_TRUE(unplaced.penaltyGiven);
  EXPECT_TRUE(unplaced.sortedDebug);
}

}  // namespace
}  // namespace harmony
