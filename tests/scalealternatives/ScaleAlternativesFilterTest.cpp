// The filter of candidate scales: each rule on masks where it alone decides.

#include <gtest/gtest.h>

#include <vector>

#include "ScaleAlternativesTestSupport.h"
#include "harmony/scalealternatives/ScaleAlternativesFilter.h"

namespace harmony {
namespace {

using testing::Chord;
using testing::Masks;
using testing::Scale;
using TParams = CScaleAlternativesFilter::TParams;
using TMasks = std::vector<unsigned long long>;
constexpr std::uint64_t kNoLimit = CScaleAlternativesFilter::kNoLimit;

// Rules under which nothing is refused; each test switches on what it looks at.
TParams Permissive() {
  TParams params;
  params.MaxAvoidNotes = params.MaxAdjacentHalfSteps = kNoLimit;
  params.MaxHiatusInMajorCenter = params.MaxHiatusInOtherCenter = kNoLimit;
  params.MinTones = params.MaxTones = kNoLimit;
  params.AllowPentatonics = 1;
  params.UseBlues = 1;
  return params;
}

CScaleAlternativesChordContext ChordIn(const std::string& symbol, const CScaleLite& scale) {
  CScaleAlternativesChordContext context;
  context.FillFrom(Chord(symbol), scale);
  return context;
}

TMasks Kept(const std::string& symbol, const CScaleLite& scale, const TParams& params,
            const std::vector<std::uint64_t>& candidates) {
  std::vector<CSemitones> masks;
  for (std::uint64_t mask : candidates) masks.emplace_back(mask);
  return Masks(CScaleAlternativesFilter::Filter(ChordIn(symbol, scale), params, masks));
}

const CScaleLite kC = Scale("C");

TEST(ScaleAlternativesFilter, PermissiveRulesKeepEveryCandidateOnTheChordsRoot) {
  const TScaleAlternatives kept = CScaleAlternativesFilter::Filter(
      ChordIn("Dm7", kC), Permissive(), {CSemitones(1709), CSemitones(1717), CSemitones(669)});
  EXPECT_EQ(Masks(kept), (TMasks{1709, 1717, 669}));
  for (const TScaleAlternative& alternative : kept) {
    EXPECT_EQ(alternative.Scale.RootKeyEnh, CKeyEnh(2, TEnh_n));
    EXPECT_EQ(alternative.Value, 0);
    EXPECT_TRUE(alternative.Debug.empty());
    EXPECT_TRUE(alternative.Comment.empty());
  }

  TParams chromatic = Permissive();
  chromatic.AppendChromatic = 1;
  const TScaleAlternatives onlyChromatic =
      CScaleAlternativesFilter::Filter(ChordIn("Dm7", kC), chromatic, {});
  ASSERT_EQ(onlyChromatic.size(), 1U);
  EXPECT_EQ(onlyChromatic[0].Scale, CScaleLite(CKeyEnh(2, TEnh_n), CSemitones(4095)));

  TParams plain = Permissive();
  plain.AllowPentatonics = 0;
  plain.UseBlues = 0;
  EXPECT_EQ(Kept("C", kC, plain, {661, 1193, 669, 1257, 2741}), (TMasks{2741}));
}

TEST(ScaleAlternativesFilter, CenterThirdCountsWhereTheChordAgreesWithIt) {
  TParams params = Permissive();
  params.MatchCenter3rd = 1;
  // D minor 7 in C: the center's D Dorian has a minor third, and so must the candidate.
  EXPECT_EQ(Kept("Dm7", kC, params, {1709, 1717, 1721}), (TMasks{1709}));
  // D7 contradicts the key's third, and a power chord has none: the rule stands aside.
  EXPECT_EQ(Kept("D7", kC, params, {1709, 1717}), (TMasks{1709, 1717}));
  EXPECT_EQ(Kept("D5", kC, params, {1709, 1717}), (TMasks{1709, 1717}));
  // Over a major third a scale with both thirds still agrees (the second is a sharp nine).
  EXPECT_EQ(Kept("C", kC, params, {1721, 1709}), (TMasks{1721}));
}

TEST(ScaleAlternativesFilter, CenterFifthAndSeventh) {
  TParams fifth = Permissive();
  fifth.MatchCenter5th = 1;
  EXPECT_EQ(Kept("C", kC, fifth, {2901, 2741}), (TMasks{2741}));
  // An augmented chord contradicts the key's fifth: the rule stands aside.
  EXPECT_EQ(Kept("Caug", kC, fifth, {2901, 2741}), (TMasks{2901, 2741}));

  TParams seventh = Permissive();
  seventh.MatchCenter7th = 1;
  // G7 in C agrees with G Mixolydian's flat seventh: bebop dominant adds the major seventh.
  EXPECT_EQ(Kept("G7", kC, seventh, {3765, 1717}), (TMasks{1717}));
  EXPECT_EQ(Kept("Gmaj7", kC, seventh, {3765, 1717}), (TMasks{3765, 1717}));
  EXPECT_EQ(Kept("G", kC, seventh, {3765, 1717}), (TMasks{3765, 1717}));
}

TEST(ScaleAlternativesFilter, ChordThirdFifthAndTensions) {
  TParams third = Permissive();
  third.MatchChord3rd = 1;
  EXPECT_EQ(Kept("Dm", kC, third, {1717, 1709, 1721}), (TMasks{1709}));
  // A sus chord keeps its fourth, even a sus2 chord.
  EXPECT_EQ(Kept("Gsus4", kC, third, {2773, 1717}), (TMasks{1717}));
  EXPECT_EQ(Kept("Gsus2", kC, third, {2773, 1717}), (TMasks{1717}));
  // A power chord takes only scales without a third.
  EXPECT_EQ(Kept("C5", kC, third, {2741, 1453, 419}), (TMasks{419}));

  // Which flag rules the fifth depends on the seventh the chord's degree takes: a plain C in
  // C major is heard with a major seventh, a C without key with none.
  TParams noSeventh = Permissive();
  noSeventh.MatchChord5thNoSeventh = 1;
  TParams withSeventh = Permissive();
  withSeventh.MatchChord5thWithSeventh = 1;
  EXPECT_EQ(Kept("C", kC, noSeventh, {2901, 2741}), (TMasks{2901, 2741}));
  EXPECT_EQ(Kept("C", kC, withSeventh, {2901, 2741}), (TMasks{2741}));
  EXPECT_EQ(Kept("C", CScaleLite(), noSeventh, {2901, 2741}), (TMasks{2741}));
  EXPECT_EQ(Kept("C", CScaleLite(), withSeventh, {2901, 2741}), (TMasks{2901, 2741}));

  TParams ninth = Permissive();
  ninth.MatchOption9 = 1;
  EXPECT_EQ(Kept("C7b9", kC, ninth, {1717, 1715}), (TMasks{1715}));
  EXPECT_EQ(Kept("C7", kC, ninth, {1717, 1715}), (TMasks{1717, 1715}));
  TParams thirteenth = Permissive();
  thirteenth.MatchOption13 = 1;
  EXPECT_EQ(Kept("C7b13", kC, thirteenth, {1717, 1461}), (TMasks{1461}));
}

TEST(ScaleAlternativesFilter, AvoidNotesHalfStepsAndHiatus) {
  TParams avoid = Permissive();
  avoid.MaxAvoidNotes = 0;
  // The F of C major sits a semitone above the chord's E; Lydian has no such tone.
  EXPECT_EQ(Kept("C", kC, avoid, {2741, 2773}), (TMasks{2773}));

  TParams halfSteps = Permissive();
  halfSteps.MaxAdjacentHalfSteps = 1;
  // Bebop dominant has A B♭ B and B♭ B C, bebop major only G A♭ A.
  EXPECT_EQ(Kept("C", kC, halfSteps, {3765, 2997}), (TMasks{2997}));

  TParams hiatus = Permissive();
  hiatus.MaxHiatusInMajorCenter = 0;
  hiatus.MaxHiatusInOtherCenter = 1;
  // Harmonic minor has one augmented second; minor pentatonic has two steps of three but
  // only five tones, which the rule leaves alone.
  EXPECT_EQ(Kept("Am", kC, hiatus, {2477, 1193}), (TMasks{1193}));
  EXPECT_EQ(Kept("Am", Scale("A minor"), hiatus, {2477, 1193}), (TMasks{2477, 1193}));
  hiatus.MaxHiatusInOtherCenter = 0;
  EXPECT_EQ(Kept("Am", Scale("A minor"), hiatus, {2477, 1193}), (TMasks{1193}));
}

TEST(ScaleAlternativesFilter, SharedTonesWithChordAndCenter) {
  TParams expanded = Permissive();
  expanded.MinExpandedChordTones = 4;
  // A plain C in C major is heard as C major 7: the scale must have its B.
  EXPECT_EQ(Kept("C", kC, expanded, {1717, 2741}), (TMasks{2741}));

  TParams chordTones = Permissive();
  chordTones.MinChordTones = 4;
  EXPECT_EQ(Kept("C7", kC, chordTones, {2741, 1717}), (TMasks{1717}));

  // A7♭9 in C brings C♯ and B♭: with seven asked for, five tones shared with the key will do.
  TParams center = Permissive();
  center.MinCenterTones = 7;
  EXPECT_EQ(Kept("A7b9", kC, center, {1459, 1715}), (TMasks{1459}));
  center.MinCenterTones = 8;
  EXPECT_EQ(Kept("A7b9", kC, center, {1459, 1715}), (TMasks{}));
  // A diatonic chord lowers nothing: only the mode itself shares all seven tones.
  center.MinCenterTones = 7;
  EXPECT_EQ(Kept("Am7", kC, center, {1709, 1453}), (TMasks{1453}));
}

TEST(ScaleAlternativesFilter, ToneCounts) {
  const std::vector<std::uint64_t> candidates{2741, 2925, 661};
  TParams params = Permissive();
  EXPECT_EQ(Kept("C", kC, params, candidates), (TMasks{2741, 2925, 661}));
  params.MinTones = 8;
  EXPECT_EQ(Kept("C", kC, params, candidates), (TMasks{2925}));
  params.MinTones = kNoLimit;
  params.MaxTones = 5;
  EXPECT_EQ(Kept("C", kC, params, candidates), (TMasks{661}));
}

TEST(ScaleAlternativesFilter, ScalesThatDecideAlone) {
  // The blues scales: over a major (or minor) triad at once with UseBlues, never without.
  TParams blues = Permissive();
  blues.MinChordTones = 4;
  EXPECT_EQ(Kept("Cmaj7", kC, blues, {669, 1257}), (TMasks{669}));
  blues.UseBlues = 0;
  EXPECT_EQ(Kept("Cmaj7", kC, blues, {669, 1257}), (TMasks{}));
  TParams minorBlues = Permissive();
  minorBlues.MaxTones = 5;
  EXPECT_EQ(Kept("Cm7", kC, minorBlues, {1257, 669}), (TMasks{1257}));

  // The altered scale over C7 although it has no perfect fifth; not over C9 or C7sus4.
  TParams altered = Permissive();
  altered.MatchChord5thWithSeventh = 1;
  EXPECT_EQ(Kept("C7", kC, altered, {1371}), (TMasks{}));
  altered.ForceAlteredOverAlteredDominant = 1;
  EXPECT_EQ(Kept("C7", kC, altered, {1371}), (TMasks{1371}));
  EXPECT_EQ(Kept("C9", kC, altered, {1371}), (TMasks{}));
  EXPECT_EQ(Kept("C7sus4", kC, altered, {1371}), (TMasks{}));

  TParams lydianDominant = Permissive();
  lydianDominant.MaxTones = 6;
  EXPECT_EQ(Kept("C13", kC, lydianDominant, {1749}), (TMasks{}));
  lydianDominant.ForceLydianDominantOver13 = 1;
  EXPECT_EQ(Kept("C13", kC, lydianDominant, {1749}), (TMasks{1749}));
  EXPECT_EQ(Kept("C9", kC, lydianDominant, {1749}), (TMasks{}));

  TParams diminished = Permissive();
  diminished.MaxTones = 7;
  diminished.ForceDiminishedOverDim7 = 1;
  EXPECT_EQ(Kept("Cdim7", kC, diminished, {2925, 1755}), (TMasks{2925, 1755}));
  EXPECT_EQ(Kept("Cdim", kC, diminished, {2925, 1755}), (TMasks{}));
}

TEST(ScaleAlternativesFilter, MatchingFifths) {
  const auto matches = [](std::uint64_t a, std::uint64_t b) {
    return CScaleAlternativesFilter::IsMatchingChord5th(CSemitones(a), CSemitones(b));
  };
  EXPECT_TRUE(matches(9, 2901));  // 0-3 has no fifth at all
  EXPECT_TRUE(matches(2901, 9));
  EXPECT_TRUE(matches(2741, 145));  // a perfect fifth needs one
  EXPECT_FALSE(matches(2901, 145));
  EXPECT_TRUE(matches(1387, 73));  // a flat fifth needs one and no perfect fifth
  EXPECT_FALSE(matches(1755, 73));
  EXPECT_FALSE(matches(2741, 73));
  EXPECT_TRUE(matches(2901, 273));  // a sharp fifth forbids the perfect one
  EXPECT_TRUE(matches(1387, 273));
  EXPECT_FALSE(matches(2741, 273));
  // With flat and perfect fifth, the candidate may have those, but no sharp fifth.
  EXPECT_TRUE(matches(1755, 209));
  EXPECT_FALSE(matches(1461, 209));
}

TEST(ScaleAlternativesFilter, ThirdsAboveARootOffset) {
  using F = CScaleAlternativesFilter;
  const CSemitones cMajor(2741);
  EXPECT_TRUE(F::_Semitones3rdOrSharp9AreMatching(cMajor, CSemitones(145), 0));
  EXPECT_FALSE(F::_Semitones3rdOrSharp9AreMatching(CSemitones(1453), CSemitones(145), 0));
  EXPECT_TRUE(F::_Semitones3rdOrSharp9AreMatching(CSemitones(1721), CSemitones(145), 0));
  // D minor (D F A, bits 2 5 9) and D major (bits 2 6 9) read from the D of C major.
  EXPECT_TRUE(F::_Semitones3rdOrSharp9AreMatching(cMajor, CSemitones(548), 2));
  EXPECT_FALSE(F::_Semitones3rdOrSharp9AreMatching(cMajor, CSemitones(580), 2));
  // B minor (B D F♯): its third lies beyond the octave of the offset and wraps to D.
  EXPECT_TRUE(F::_Semitones3rdOrSharp9AreMatching(cMajor, CSemitones(2116), 11));

  EXPECT_TRUE(
      F::_Semitones3rdOrSharp9OrSus2OrSus4AreMatching(CSemitones(1717), CSemitones(161), 0));
  EXPECT_FALSE(
      F::_Semitones3rdOrSharp9OrSus2OrSus4AreMatching(CSemitones(2773), CSemitones(161), 0));
  EXPECT_TRUE(
      F::_Semitones3rdOrSharp9OrSus2OrSus4AreMatching(CSemitones(2773), CSemitones(133), 0));
  EXPECT_FALSE(
      F::_Semitones3rdOrSharp9OrSus2OrSus4AreMatching(CSemitones(419), CSemitones(133), 0));
  EXPECT_FALSE(
      F::_Semitones3rdOrSharp9OrSus2OrSus4AreMatching(CSemitones(1453), CSemitones(145), 0));

  EXPECT_TRUE(F::_IsMatchingHarmCenterOrSignKeyScale3rd(CSemitones(1453), CSemitones(161), 0));
  EXPECT_TRUE(F::_IsMatchingHarmCenterOrSignKeyScale3rd(CSemitones(1717), cMajor, 0));
  EXPECT_TRUE(F::_IsMatchingHarmCenterOrSignKeyScale3rd(CSemitones(1721), cMajor, 0));
  EXPECT_FALSE(F::_IsMatchingHarmCenterOrSignKeyScale3rd(CSemitones(1709), cMajor, 0));
  EXPECT_TRUE(F::_IsMatchingHarmCenterOrSignKeyScale3rd(CSemitones(1709), CSemitones(1453), 0));
  EXPECT_FALSE(F::_IsMatchingHarmCenterOrSignKeyScale3rd(CSemitones(1721), CSemitones(1453), 0));
}

}  // namespace
}  // namespace harmony
