#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include "harmony/analysis/AnalyseHarmCenterAlternatives.h"
#include "harmony/analysis/ChordStringParser.h"

namespace harmony {
namespace {

constexpr std::uint64_t kMajorScale = 2741, kMinorScale = 1453;
constexpr std::size_t kNone = CHarmAnlsCenterInChords::kNoChord;

CHarmAnlsChords Chords(const std::string& text) {
  return CHarmAnlsChords(text, TChordStringParse());
}

CHarmCenterLite Major(int keyNr, TEnh enh = TEnh_n) {
  return CHarmCenterLite(CKeyEnh(keyNr, enh), CSemitones(kMajorScale));
}

CHarmAnlsCenterAlternative Reading(double probability, const CHarmCenterLite& center,
                                   std::size_t begin, std::size_t end) {
  return CHarmAnlsCenterAlternative(probability, {CHarmAnlsCenterInChords(center, begin, end)});
}

std::vector<double> Probabilities(const CHarmAnlsCenterAlternatives& alternatives) {
  std::vector<double> probabilities;
  for (const auto& alternative : alternatives) probabilities.push_back(alternative.Probability);
  return probabilities;
}

TEST(HarmCenterAlternatives, OneChordIsItsOwnTonicAndNoChordIsNoReading) {
  EXPECT_TRUE(CAnalyseHarmCenterAlternatives(CHarmAnlsChords()).Result().empty());
  EXPECT_TRUE(CAnalyseHarmCenterAlternatives(CHarmAnlsChords()).BestResults().empty());

  // A repeated chord: one sure reading over the first chord alone.
  const CAnalyseHarmCenterAlternatives vamp(Chords("C C C C"));
  ASSERT_EQ(vamp.Result().size(), 1U);
  const CHarmAnlsCenterAlternative& only = vamp.Result()[0];
  EXPECT_EQ(only.Probability, 1.0);
  EXPECT_EQ(only.Centers, CHarmAnlsCentersInChords{CHarmAnlsCenterInChords(Major(0), 0, 1)});
  const CHarmAnlsCenters centers = vamp.BestResults();
  ASSERT_EQ(centers.size(), 1U);
  EXPECT_EQ(centers[0].Position, 0.0);
  EXPECT_EQ(centers[0].HarmChords.size(), 1U);

  // Minor and diminished chords read as minor centers.
  for (const char* text : {"Bdim Bdim", "Bm7"}) {
    const CAnalyseHarmCenterAlternatives minor{Chords(text)};
    ASSERT_EQ(minor.Result().size(), 1U) << text;
    const CHarmCenterLite& center = minor.Result()[0].Centers[0].HarmCenter;
    EXPECT_EQ(center.RootKeyEnh.KeyNr, 11) << text;
    EXPECT_EQ(center.Semitones.Word(), kMinorScale) << text;
  }
}

TEST(HarmCenterAlternatives, EqualRankedProgressionsShareTheProbability) {
  const CAnalyseHarmCenterAlternatives dominant(Chords("G7 C"));
  ASSERT_EQ(dominant.Result().size(), 1U);
  EXPECT_EQ(dominant.Result()[0].Probability, 1.0);
  EXPECT_EQ(dominant.Result()[0].Centers[0], CHarmAnlsCenterInChords(Major(0), 0, 2));

  // G C is V I in C or I IV in G, and nothing tells which: two readings, half each, over
  // the same chords.
  const CAnalyseHarmCenterAlternatives ambiguous(Chords("G C"));
  ASSERT_EQ(ambiguous.Result().size(), 2U);
  EXPECT_EQ(Probabilities(ambiguous.Result()), (std::vector<double>{0.5, 0.5}));
  EXPECT_EQ(ambiguous.Result()[0].Centers[0], CHarmAnlsCenterInChords(Major(0), 0, 2));
  EXPECT_EQ(ambiguous.Result()[1].Centers[0], CHarmAnlsCenterInChords(Major(7), 0, 2));

  // A musician calls the ii V I sure. The rules find it twice, as ii V I at Dm7 and as V7 I
  // at G7 grown back over Dm7; the two equal readings are summed to 2.0, and with no
  // partner to share with, the sum stands.
  const CAnalyseHarmCenterAlternatives twoFive(Chords("Dm7 G7 Cmaj7"));
  ASSERT_EQ(twoFive.Result().size(), 1U);
  EXPECT_EQ(twoFive.Result()[0].Probability, 2.0);
  // The range never takes in the closing chord.
  EXPECT_EQ(twoFive.Result()[0].Centers[0], CHarmAnlsCenterInChords(Major(0), 0, 3));
  EXPECT_EQ(twoFive.BestResults()[0].HarmChords.size(), 3U);
}

TEST(HarmCenterAlternatives, RangesGrowOverChordsThatFitTheCenter) {
  // Am Dm7 are diatonic, F too; E7 (with G sharp) is no chord of C major.
  const CHarmAnlsChords chords = Chords("Am Dm7 G7 C F E7");
  CHarmAnlsCenterInChords c(Major(0), 2, 4);
  c.ExtendForAdjacentDiatonicOrAllowedOutlierChords(chords);
  EXPECT_EQ(c.Begin, 0U);
  EXPECT_EQ(c.End, 5U);
  // The usual guests of a major key: the flat-seventh chord Bb.
  const CHarmAnlsChords guest = Chords("G7 C Bb");
  CHarmAnlsCenterInChords withGuest(Major(0), 0, 2);
  withGuest.ExtendForAdjacentDiatonicOrAllowedOutlierChords(guest);
  EXPECT_EQ(withGuest.End, 3U);

  const CHarmAnlsCenter center = c.ToHarmAnlsCenter(chords);
  EXPECT_EQ(center.Position, 0.0);
  EXPECT_EQ(center.HarmChords.size(), 5U);
  EXPECT_TRUE(CHarmAnlsCenterInChords(CHarmCenterLite(), 0, 2).ToHarmAnlsCenter(chords).IsUndef());
  const CHarmAnlsCenter beyond = CHarmAnlsCenterInChords(Major(0), 7, 7).ToHarmAnlsCenter(chords);
  EXPECT_TRUE(beyond.IsUndef());
  EXPECT_EQ(beyond.Position, kHarmAnlsUndefDouble);
  EXPECT_TRUE(beyond.HarmChords.empty());
}

TEST(HarmCenterAlternatives, ContainmentAsksForMoreChords) {
  const CHarmAnlsCenterInChords wide(Major(0), 0, 4), narrow(Major(7), 1, 3);
  CHarmAnlsCentersInChords list{narrow, wide, CHarmAnlsCenterInChords(Major(5), 3, 6)};
  EXPECT_EQ(list.OverallBeginAndEndInputChord(), (std::pair<std::size_t, std::size_t>{0, 6}));
  // "Same or longer" asks, despite its name, for strictly more chords.
  EXPECT_TRUE(
      list.ContainsSameCenterWithSameOrLongerChords(CHarmAnlsCenterInChords(Major(0), 1, 2)));
  EXPECT_FALSE(list.ContainsSameCenterWithSameOrLongerChords(wide));
  list.RemoveShorterContainedHarmCenters();
  EXPECT_EQ(list, (CHarmAnlsCentersInChords{wide, CHarmAnlsCenterInChords(Major(5), 3, 6)}));
  EXPECT_EQ(CHarmAnlsCentersInChords().OverallBeginAndEndInputChord(),
            (std::pair<std::size_t, std::size_t>{kNone, kNone}));
}

TEST(HarmCenterAlternatives, CleanUpDropsOutlastedRepeatedAndContradictedReadings) {
  // A reading outlasted by another goes; its simultaneous partner that stays gets the share
  // of the partners left.
  CHarmAnlsCenterAlternatives outlasted{Reading(0.5, Major(0), 0, 2), Reading(0.5, Major(7), 0, 2),
                                        Reading(1.0, Major(5), 0, 4), Reading(1.0, Major(2), 5, 7),
                                        Reading(1.0, Major(9), 5, 7)};
  outlasted.RemoveShorterContainedAlternatives();
  ASSERT_EQ(outlasted.size(), 3U);
  EXPECT_EQ(outlasted[0].Centers[0].HarmCenter, Major(5));
  EXPECT_EQ(Probabilities(outlasted), (std::vector<double>{1.0, 0.5, 0.5}));
  EXPECT_EQ(outlasted.FindSimultaneousAlternatives(1), (std::vector<std::size_t>{2}));

  // Equal readings are summed, then simultaneous partners overwrite the sums with shares.
  CHarmAnlsCenterAlternatives repeated{Reading(1.0, Major(0), 0, 3), Reading(0.5, Major(7), 0, 3),
                                       Reading(1.0, Major(0), 0, 3), Reading(1.0, Major(2), 4, 6),
                                       Reading(0.5, Major(2), 4, 6)};
  repeated.Deduplication();
  EXPECT_EQ(Probabilities(repeated), (std::vector<double>{0.5, 0.5, 1.5}));

  // A sure reading removes the later readings of its range, whatever their centers; an
  // earlier unsure one and other ranges stay.
  CHarmAnlsCenterAlternatives sure{Reading(0.5, Major(7), 0, 3), Reading(1.0, Major(0), 0, 3),
                                   Reading(0.5, Major(5), 0, 3), Reading(0.5, Major(9), 1, 3)};
  sure.RemoveNonSureAlternativesWithSameRangeAsSureAlternative();
  ASSERT_EQ(sure.size(), 3U);
  EXPECT_EQ(sure[0].Centers[0].HarmCenter, Major(7));
  EXPECT_EQ(sure[2].Centers[0].HarmCenter, Major(9));
}

// The search remembers how far each center reaches; its readings must be those of growing
// every found range on its own and cleaning up as the analyser does, on pieces where ranges
// of different lengths start and end all over.
TEST(HarmCenterAlternatives, RememberedReachGivesTheRangesOfAPlainWalk) {
  const char* const vocabulary[] = {"Cmaj7", "Dm7", "Em7", "Fmaj7", "G7",  "Am7", "Bm7b5",
                                    "C",     "F",   "G",   "Am",    "Dm",  "E7",  "A7",
                                    "D7",    "Bb7", "Ab",  "Gsus4", "C#m", "Eb"};
  std::uint64_t seed = 7;
  for (int piece = 0; piece < 200; ++piece) {
    std::string text;
    for (int c = 0; c < 40; ++c) {
      seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
      text += std::string(vocabulary[(seed >> 33) % std::size(vocabulary)]) + " ";
    }
    const CHarmAnlsChords chords = Chords(text);
    CHarmAnlsCenterAlternatives plain;
    std::vector<const CHarmAnlsProgression*> best;
    const CHarmAnlsProgressions& table = CHarmAnlsProgressions::TonicProgressions();
    for (auto it = chords.cbegin(); it != chords.cend(); ++it) {
      table.FindBestForwardMatchingProgressions(it, chords, best);
      const auto i = static_cast<std::size_t>(it - chords.cbegin());
      for (const CHarmAnlsProgression* progression : best) {
        CHarmAnlsCenterInChords entry(
            progression->HarmCenterCalculatedFromFoundProgressionLastChord(it, chords), i,
            i + progression->size());
        entry.ExtendForAdjacentDiatonicOrAllowedOutlierChords(chords);
        plain.emplace_back(1.0 / static_cast<double>(best.size()), CHarmAnlsCentersInChords{entry});
      }
    }
    plain.RemoveShorterContainedAlternatives();
    plain.Deduplication();
    plain.RemoveNonSureAlternativesWithSameRangeAsSureAlternative();
    ASSERT_EQ(CAnalyseHarmCenterAlternatives(chords).Result(), plain) << text;
  }
}

}  // namespace
}  // namespace harmony
