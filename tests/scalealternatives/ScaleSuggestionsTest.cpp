// Scale suggestions as a player expects them: the chord measured against its key, or against
// the scale a borrowed or passing chord comes from, with the fallback where nothing fits.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "ScaleAlternativesTestSupport.h"
#include "harmony/scalealternatives/ScaleSuggestions.h"

namespace harmony {
namespace {

using testing::Chord;
using testing::InScale;
using testing::Names;
using testing::Scale;

// The suggestions for chord `index` of a progression in one scale.
TScaleSuggestions At(const std::string& progression, const std::string& scale, std::size_t index,
                     const TScaleSuggestionOptions& options = {}) {
  return ScaleSuggestions::ForContext(InScale(progression, Scale(scale)).at(index), options);
}

std::string First(const std::string& progression, const std::string& scale, std::size_t index) {
  const TScaleSuggestions suggestions = At(progression, scale, index);
  return suggestions.Scales.empty() ? std::string() : suggestions.Scales.front().Scale.Name();
}

bool Offers(const TScaleSuggestions& suggestions, const std::string& name) {
  const std::vector<std::string> names = Names(suggestions.Scales);
  return std::find(names.begin(), names.end(), name) != names.end();
}

TEST(ScaleSuggestions, ReferenceScaleOfEachKindOfChord) {
  const auto reference = [](const std::string& progression, std::size_t index) {
    return ScaleSuggestions::ReferenceScale(InScale(progression, Scale("C")).at(index));
  };
  EXPECT_EQ(reference("Dm7 G7", 0), Scale("C"));
  EXPECT_EQ(reference("Ab G7 C", 0), Scale("C minor"));
  EXPECT_EQ(reference("Ab Bb C", 1), Scale("C minor"));
  EXPECT_EQ(reference("Fm C", 0), Scale("C minor"));
  EXPECT_EQ(reference("Db C", 0), Scale("C phrygian"));
  EXPECT_EQ(reference("Gm C7", 0), Scale("C mixolydian"));
  EXPECT_EQ(reference("C C#dim7 Dm7", 1), CScaleLite(CKeyEnh(1, TEnh_s), CSemitones(2925)));
  EXPECT_EQ(reference("C Ebm", 1), Scale("C"));
  const std::vector<CScaleAlternativesContext> unplaced =
      ScaleSuggestions::ContextsForChords({Chord("Dm7")}, {CScaleLite()});
  EXPECT_TRUE(ScaleSuggestions::ReferenceScale(unplaced[0]).IsUndef());
}

TEST(ScaleSuggestions, TwoFiveOneInMajorAndMinor) {
  EXPECT_EQ(First("Dm7 G7 Cmaj7", "C", 0), "D Dorian");
  EXPECT_EQ(First("Dm7 G7 Cmaj7", "C", 1), "G Mixolydian");
  EXPECT_EQ(First("Dm7 G7 Cmaj7", "C", 2), "C Major (Ionian)");
  EXPECT_EQ(First("Dm7b5 G7b9 Cm6", "C minor", 0), "D Locrian");
  EXPECT_EQ(First("Dm7b5 G7b9 Cm6", "C minor", 1), "G Phrygian Dominant");
  const TScaleSuggestions tonic = At("Dm7b5 G7b9 Cm6", "C minor", 2);
  EXPECT_EQ(tonic.Scales.at(0).Scale.Name(), "C Dorian");
  EXPECT_TRUE(Offers(tonic, "C Melodic Minor"));
  EXPECT_FALSE(tonic.FromFallback);

  // The dominant of C offers the altered scale; a plain major triad does not.
  EXPECT_TRUE(Offers(At("Dm7 G7 Cmaj7", "C", 1), "G Super Locrian (Altered)"));
  EXPECT_FALSE(Offers(At("Dm7 G C", "C", 1), "G Super Locrian (Altered)"));
  // A plain C in C major is heard as C major 7: no Mixolydian.
  EXPECT_FALSE(Offers(At("G7 C", "C", 1), "C Mixolydian"));
}

TEST(ScaleSuggestions, BorrowedAndPassingChords) {
  EXPECT_EQ(First("Ab G7 C", "C", 0), "A♭ Lydian");
  EXPECT_EQ(First("Ab Bb C", "C", 1), "B♭ Mixolydian");
  EXPECT_EQ(First("Eb F G", "C", 0), "E♭ Major (Ionian)");
  EXPECT_EQ(First("Db C", "C", 0), "D♭ Lydian");
  EXPECT_EQ(First("Fm C", "C", 0), "F Dorian");
  EXPECT_EQ(First("Gm C7 F", "C", 0), "G Dorian");
  // Secondary dominants are measured against the key they stand in.
  EXPECT_EQ(First("A7 Dm", "C", 0), "A Mixolydian ♭13 (MM5)");
  EXPECT_EQ(First("E7 Am", "C", 0), "E Phrygian Dominant");
  // A passing diminished chord takes the two diminished scales, whole step first.
  EXPECT_EQ(Names(At("C C#dim7 Dm7", "C", 1).Scales),
            (std::vector<std::string>{"C♯ Whole-Half Diminished", "C♯ Half-Whole Diminished"}));
}

TEST(ScaleSuggestions, FallbackWhereNothingFits) {
  // A power chord has no third, and every scale of the table but a few has one: the rules
  // keep none of them, so the fallback offers what holds C and G.
  const TScaleSuggestions power = At("C5", "C", 0);
  EXPECT_TRUE(power.FromFallback);
  EXPECT_EQ(power.Reference, Scale("C"));
  EXPECT_EQ(power.Scales.at(0).Scale.Name(), "C Major (Ionian)");

  const std::vector<CScaleAlternativesContext> unplaced =
      ScaleSuggestions::ContextsForChords({Chord("Dm7"), Chord("G7")}, {CScaleLite(), Scale("C")});
  const TScaleSuggestions noCenter = ScaleSuggestions::ForContext(unplaced[0], {false, true});
  EXPECT_TRUE(noCenter.FromFallback);
  EXPECT_TRUE(noCenter.Reference.IsUndef());
  EXPECT_EQ(noCenter.Scales.at(0).Debug, "  FALLBACK: Similarity measure: 1,5");
  EXPECT_FALSE(ScaleSuggestions::ForContext(unplaced[1]).FromFallback);

  // A place without chord gets nothing at all.
  const TScaleSuggestions noChord = At("C nochord", "C", 1);
  EXPECT_TRUE(noChord.Scales.empty());
  EXPECT_FALSE(noChord.FromFallback);
}

TEST(ScaleSuggestions, BluesOnlyWhenAsked) {
  EXPECT_FALSE(Offers(At("C7 F7", "C", 0), "C Major Blues"));
  EXPECT_TRUE(Offers(At("C7 F7", "C", 0, {true, false}), "C Major Blues"));
  EXPECT_TRUE(Offers(At("Cm7 F7", "C minor", 0, {true, false}), "C Minor Blues"));
}

TEST(ScaleSuggestions, ContextsOfAPiece) {
  const std::vector<CScaleAlternativesContext> contexts = ScaleSuggestions::ContextsForChords(
      {Chord("C"), Chord("Ab"), Chord("Bb"), Chord("C")}, std::vector<CScaleLite>(4, Scale("C")));
  ASSERT_EQ(contexts.size(), 4U);
  EXPECT_EQ(contexts[1].SpecialCase, CScaleAlternativesContext::kSpecialCaseFlat6ToFlat7);
  EXPECT_EQ(contexts[2].SpecialCase, CScaleAlternativesContext::kSpecialCaseFlat7AfterFlat6);
  EXPECT_EQ(contexts[2].PreviousChord.Chord, Chord("Ab"));
  EXPECT_EQ(contexts[3].CurrentChord.Degree, 0);
  // Scales missing at the end count as undefined.
  const std::vector<CScaleAlternativesContext> short_ =
      ScaleSuggestions::ContextsForChords({Chord("C"), Chord("G")}, {Scale("C")});
  EXPECT_TRUE(short_[1].CurrentChord.Scale.IsUndef());
}

}  // namespace
}  // namespace harmony
