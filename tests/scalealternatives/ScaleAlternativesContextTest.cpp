// The context of a chord: what its scale says about it, and which kind of guest it is there.

#include <gtest/gtest.h>

#include "ScaleAlternativesTestSupport.h"
#include "harmony/scalealternatives/ScaleAlternativesContext.h"

namespace harmony {
namespace {

using testing::Chord;
using testing::InScale;
using testing::Scale;
using TContext = CScaleAlternativesContext;

CScaleAlternativesChordContext ChordIn(const std::string& symbol, const CScaleLite& scale) {
  CScaleAlternativesChordContext context;
  context.FillFrom(Chord(symbol), scale);
  return context;
}

int SpecialCaseAt(const std::string& progression, const CScaleLite& scale, std::size_t index) {
  return InScale(progression, scale).at(index).SpecialCase;
}

TEST(ScaleAlternativesChordContext, FillFromReadsTheChordInItsScale) {
  const CScaleLite cMajor = Scale("C");
  // C7 in C: the triad belongs to the key, the flat seventh does not.
  const CScaleAlternativesChordContext c7 = ChordIn("C7", cMajor);
  EXPECT_EQ(c7.BasicChord, kBasicChordMajor);
  EXPECT_FALSE(c7.ChordIncludingOptionsIsDiatonic);
  EXPECT_TRUE(c7.ChordExcludingOptionsIsDiatonic);
  EXPECT_FALSE(c7.ChordIsCompatible);
  EXPECT_EQ(c7.Degree, 0);
  EXPECT_EQ(c7.Scale, cMajor);
  EXPECT_EQ(c7.HarmCenter.RootKeyEnh, cMajor.RootKeyEnh);
  EXPECT_EQ(c7.HarmCenter.Semitones, cMajor.Semitones);

  const CScaleAlternativesChordContext g7 = ChordIn("G7", cMajor);
  EXPECT_TRUE(g7.ChordIncludingOptionsIsDiatonic);
  EXPECT_TRUE(g7.ChordIsCompatible);
  EXPECT_EQ(g7.Degree, 7);
  // B flat is a usual guest of C major: compatible, though foreign.
  const CScaleAlternativesChordContext bFlat = ChordIn("Bb", cMajor);
  EXPECT_FALSE(bFlat.ChordIncludingOptionsIsDiatonic);
  EXPECT_TRUE(bFlat.ChordIsCompatible);
  EXPECT_EQ(bFlat.Degree, 10);
  const CScaleAlternativesChordContext d7 = ChordIn("D7", cMajor);
  EXPECT_FALSE(d7.ChordExcludingOptionsIsDiatonic);
  EXPECT_FALSE(d7.ChordIsCompatible);
  // The degree is counted from the scale's root, whatever its mode.
  EXPECT_EQ(ChordIn("F", Scale("A minor")).Degree, 8);

  const CScaleAlternativesChordContext noScale = ChordIn("Dm7", CScaleLite());
  EXPECT_TRUE(noScale.Exists());
  EXPECT_EQ(noScale.Degree, -1);
  EXPECT_FALSE(noScale.ChordIncludingOptionsIsDiatonic);
  const CScaleAlternativesChordContext noChord = ChordIn("nochord", cMajor);
  EXPECT_FALSE(noChord.Exists());
  EXPECT_EQ(noChord.Degree, -1);
}

TEST(ScaleAlternativesContext, EachSpecialCaseOnAProgressionThatMakesIt) {
  const CScaleLite c = Scale("C");
  EXPECT_EQ(SpecialCaseAt("Dm7 G7 C", c, 0), TContext::kSpecialCaseDiatonic);
  // A diatonic chord stays diatonic among borrowed neighbours.
  EXPECT_EQ(SpecialCaseAt("Db Dm7 Ab", c, 1), TContext::kSpecialCaseDiatonic);
  EXPECT_EQ(SpecialCaseAt("Db G7 C", c, 0), TContext::kSpecialCaseNeapolitan);
  EXPECT_EQ(SpecialCaseAt("Ab Bb C", c, 0), TContext::kSpecialCaseFlat6ToFlat7);
  EXPECT_EQ(SpecialCaseAt("Ab Bb C", c, 1), TContext::kSpecialCaseFlat7AfterFlat6);
  EXPECT_EQ(SpecialCaseAt("Ab G7 C", c, 0), TContext::kSpecialCaseFlat6);
  EXPECT_EQ(SpecialCaseAt("C Bb F", c, 1), TContext::kSpecialCaseFlat7);
  EXPECT_EQ(SpecialCaseAt("Eb F G", c, 0), TContext::kSpecialCaseFlat3);
  EXPECT_EQ(SpecialCaseAt("Ebsus2 F G", c, 0), TContext::kSpecialCaseFlat3);
  // A sus chord held into the chord on its root is that, before it is a flat three.
  EXPECT_EQ(SpecialCaseAt("Ebsus4 Eb", c, 0), TContext::kSpecialCaseSusToSameRoot);
  EXPECT_EQ(SpecialCaseAt("Bb7sus4 Bb7 C", c, 0), TContext::kSpecialCaseSusToSameRoot);
  EXPECT_EQ(SpecialCaseAt("Fm C", c, 0), TContext::kSpecialCaseMinorIV);
  EXPECT_EQ(SpecialCaseAt("Gm C7 F", c, 0), TContext::kSpecialCaseMinorV);
  EXPECT_EQ(SpecialCaseAt("C C#dim7 Dm7", c, 1), TContext::kSpecialCasePassingDim);
  EXPECT_EQ(SpecialCaseAt("C C#dim Dm", c, 1), TContext::kSpecialCasePassingDim);
  EXPECT_EQ(SpecialCaseAt("C Ebm", c, 1), TContext::kSpecialCaseChromaticMediant);
  EXPECT_EQ(SpecialCaseAt("C Abm", c, 1), TContext::kSpecialCaseChromaticMediant);
  // A chord that fits no case keeps the value it had.
  EXPECT_EQ(SpecialCaseAt("C D7 G", c, 1), TContext::kSpecialCaseNone);
  // Leading into a chord foreign to the key, the diminished chord is no passing chord.
  EXPECT_EQ(SpecialCaseAt("C C#dim7 D", c, 1), TContext::kSpecialCaseNone);
}

TEST(ScaleAlternativesContext, BorrowedChordsStandOutOnlyInMajorTypeScales) {
  EXPECT_EQ(SpecialCaseAt("Ab G7", Scale("C lydian"), 0), TContext::kSpecialCaseFlat6);
  EXPECT_EQ(SpecialCaseAt("Fm C", Scale("C mixolydian"), 0), TContext::kSpecialCaseMinorIV);
  // In C Dorian the same chords are foreign but no borrowed chords of a major key.
  const CScaleLite dorian = Scale("C dorian");
  EXPECT_EQ(SpecialCaseAt("Ab Bb", dorian, 0), TContext::kSpecialCaseNone);
  EXPECT_EQ(SpecialCaseAt("Fm C", dorian, 0), TContext::kSpecialCaseNone);
  // The Neapolitan, the sus chord, the passing diminished chord and the mediant need no
  // major key.
  const CScaleLite minor = Scale("C minor");
  EXPECT_EQ(SpecialCaseAt("E Cm", minor, 0), TContext::kSpecialCaseNone);
  EXPECT_EQ(SpecialCaseAt("Db Cm", minor, 0), TContext::kSpecialCaseNeapolitan);
  EXPECT_EQ(SpecialCaseAt("F#sus4 F#", minor, 0), TContext::kSpecialCaseSusToSameRoot);
  EXPECT_EQ(SpecialCaseAt("Bdim7 Cm", minor, 0), TContext::kSpecialCasePassingDim);
  EXPECT_EQ(SpecialCaseAt("Ebm Cm", minor, 0), TContext::kSpecialCaseChromaticMediant);
}

TEST(ScaleAlternativesContext, NeighboursBeyondThePieceDoNotExist) {
  const CScaleLite c = Scale("C");
  const TContext alone = InScale("Ab", c).at(0);
  EXPECT_TRUE(alone.CurrentChord.Exists());
  EXPECT_FALSE(alone.NextChord.Exists());
  EXPECT_FALSE(alone.NextNextChord.Exists());
  EXPECT_FALSE(alone.PreviousChord.Exists());
  // Without a following B flat the A flat is a plain flat six, and a closing sus chord
  // resolves nowhere.
  EXPECT_EQ(alone.SpecialCase, TContext::kSpecialCaseFlat6);
  EXPECT_EQ(SpecialCaseAt("C Bbsus4", c, 1), TContext::kSpecialCaseNone);
  EXPECT_EQ(SpecialCaseAt("C C#dim7", c, 1), TContext::kSpecialCaseNone);

  const std::vector<TContext> contexts = InScale("Dm7 G7 C", c);
  EXPECT_EQ(contexts[1].PreviousChord.Chord, Chord("Dm7"));
  EXPECT_EQ(contexts[0].NextNextChord.Chord, Chord("C"));
  EXPECT_FALSE(contexts[1].NextNextChord.Exists());
}

TEST(ScaleAlternativesContext, NeighboursSharingTheCenter) {
  const std::vector<CChordLite> chords{Chord("Dm7"), Chord("G7"), Chord("C"), Chord("Am7")};
  const std::vector<CScaleLite> scales{Scale("C"), Scale("C"), Scale("C"), Scale("G")};
  const std::vector<TContext> contexts = ScaleSuggestions::ContextsForChords(chords, scales);
  EXPECT_TRUE(contexts[0].NextChordHasSameHarmonicCenter());
  EXPECT_TRUE(contexts[0].NextTwoChordsHaveSameHarmonicCenter());
  EXPECT_TRUE(contexts[1].NextChordHasSameHarmonicCenter());
  EXPECT_FALSE(contexts[1].NextTwoChordsHaveSameHarmonicCenter());
  EXPECT_FALSE(contexts[2].NextChordHasSameHarmonicCenter());
  EXPECT_FALSE(contexts[3].NextChordHasSameHarmonicCenter());
  // The same keys spelled otherwise are another center.
  const std::vector<TContext> spelled = ScaleSuggestions::ContextsForChords(
      {Chord("C#"), Chord("Db")}, {Scale("C# major"), Scale("Db major")});
  EXPECT_FALSE(spelled[0].NextChordHasSameHarmonicCenter());
}

TEST(ScaleAlternativesContext, SecondaryDominantsAndTwosLeadingToAChord) {
  const auto pair = [](const std::string& progression) {
    const std::vector<TContext> contexts = InScale(progression, Scale("C"));
    return std::make_pair(contexts[0].CurrentChord, contexts[1].CurrentChord);
  };
  const auto isSecondaryV = [&](const std::string& progression) {
    const auto [a, b] = pair(progression);
    return TContext::_IsSecondaryVToOtherChord(a, b);
  };
  EXPECT_TRUE(isSecondaryV("A7 Dm"));
  EXPECT_TRUE(isSecondaryV("A Dm"));   // foreign to the key without its seventh
  EXPECT_TRUE(isSecondaryV("G7 C"));   // diatonic, but a dominant seventh
  EXPECT_FALSE(isSecondaryV("G C"));   // a diatonic triad is just the fifth degree
  EXPECT_FALSE(isSecondaryV("A7 D"));  // D major is foreign to C
  EXPECT_FALSE(isSecondaryV("Am7 Dm"));

  const auto isTwo = [&](const std::string& progression) {
    const auto [a, b] = pair(progression);
    return TContext::_IsIImToOtherChord(a, b);
  };
  EXPECT_TRUE(isTwo("Em7 Dm"));
  EXPECT_TRUE(isTwo("Bm7b5 Am"));
  EXPECT_FALSE(isTwo("E7 Dm"));
  EXPECT_FALSE(isTwo("Em7 D"));

  const std::vector<TContext> twoFive = InScale("Em7 A7 Dm", Scale("C"));
  EXPECT_TRUE(TContext::_AreSecondaryIImAndSecondaryVToOtherChord(
      twoFive[0].CurrentChord, twoFive[1].CurrentChord, twoFive[2].CurrentChord));
  EXPECT_FALSE(TContext::_AreSecondaryIImAndSecondaryVToOtherChord(
      twoFive[1].CurrentChord, twoFive[0].CurrentChord, twoFive[2].CurrentChord));

  const auto isPassing = [&](const std::string& progression) {
    const auto [a, b] = pair(progression);
    return TContext::_IsPassingDimChordToOtherChord(a, b);
  };
  EXPECT_TRUE(isPassing("Bdim7 C"));
  EXPECT_FALSE(isPassing("Cdim7 Dm"));  // no tone a semitone below a tone of D minor
  EXPECT_FALSE(isPassing("Bm7b5 C"));   // half-diminished: the seventh is no sixth
  EXPECT_FALSE(isPassing("Bdim7 nochord"));
}

}  // namespace
}  // namespace harmony
