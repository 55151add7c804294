// The census of keys that finds a harmonic center when no progression proves one, alone and
// as a method of the analyser.

#include "harmony/analysis/HarmCenterWeightAnalysis.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "harmony/analysis/HarmonicAnalyse.h"

namespace harmony {
namespace {

using W = CHarmCenterWeightAnalysis;
using A = CHarmonicAnalyse;
constexpr double kUndef = kHarmAnlsUndefDouble;
constexpr CKeyEnh kC(0, TEnh_n), kE(4, TEnh_n), kF(5, TEnh_n), kG(7, TEnh_n), kA(9, TEnh_n);
constexpr CKeyEnh kB(11, TEnh_n), kFSharp(6, TEnh_s), kCSharp(1, TEnh_s);
constexpr std::uint64_t kMajor = 145, kMinor = 137, kMaj7 = 2193;

CHarmAnlsChordWithPos At(double position, CKeyEnh root, std::uint64_t mask = kMajor) {
  return CHarmAnlsChordWithPos(CChordLite(root, CSemitones(mask)), position);
}
CHarmAnlsChordWithPos EndAt(double position) {
  return CHarmAnlsChordWithPos(CChordLite(), position);
}
CSignKeyLite Major(CKeyEnh root) { return CSignKeyLite(root, TSignKeyType::Major); }
CSignKeyLite Minor(CKeyEnh root) { return CSignKeyLite(root, TSignKeyType::Minor); }
CHarmCenterLite Center(const CSignKeyLite& key) { return CHarmCenterLite(key); }

// The one center the census gives.
CHarmCenterLite Detect(W& census, const CHarmAnlsChords& chords) {
  CHarmAnlsCenters results;
  census.DetectHarmCentersFromChords(chords, results);
  EXPECT_EQ(results.size(), 1U);
  return results.empty() ? CHarmCenterLite::Undef : results.front().HarmCenter;
}

TEST(HarmCenterWeightAnalysis, WeighsTheQuarterNotesOfFittingChords) {
  // Am for two quarters, an undefined chord (weighs nothing, but ends the Am), F for one,
  // E as the last element for one. Major chords fit a key by their root alone, minor chords
  // need third and fifth in it. By hand:
  //   A minor: Am 2 + tonic 0.2 + first chord 0.2, F 1, E 1   = 4.4
  //   F major: Am 2, F 1 + tonic 0.1, E 1                     = 4.1
  //   C major: Am 2, F 1, E 1                                 = 4.0
  //   E major: E 1 + tonic 0.1 + last element 0.1            = 1.2
  W census;
  EXPECT_EQ(Detect(census, {At(0, kA, kMinor), EndAt(2), At(3, kF), At(4, kE)}), Center(Minor(kA)));
  EXPECT_FALSE(census.ResultIsAmbiguous);
  const W::TWeights& weights = census.Weights();
  ASSERT_EQ(weights.size(), 24U);
  EXPECT_DOUBLE_EQ(weights.at(Minor(kA)), 4.4);
  EXPECT_DOUBLE_EQ(weights.at(Major(kF)), 4.1);
  EXPECT_DOUBLE_EQ(weights.at(Major(kC)), 4.0);
  EXPECT_DOUBLE_EQ(weights.at(Major(kE)), 1.2);

  // Keys are weighed with black keys as flats: an F sharp tune is found in G flat major, at
  // the place of its first chord.
  CHarmAnlsCenters results;
  census.DetectHarmCentersFromChords({At(8, kFSharp), At(12, kB), At(14, kCSharp), EndAt(16)},
                                     results);
  ASSERT_EQ(results.size(), 1U);
  EXPECT_EQ(results[0].HarmCenter, Center(Major(CKeyEnh(6, TEnh_b))));
  EXPECT_EQ(results[0].Position, 8.0);
}

TEST(HarmCenterWeightAnalysis, EdgesOfTheListAndTies) {
  // C F G and the closing chord: C major 3.2 beats A minor 3.0 by the tonic and the first
  // chord bonus. C minor ties at 3.2 with another signature: an ambiguous result, and the
  // major key stays by the order. Among major keys alone nothing ties.
  const CHarmAnlsChords cfg{At(0, kC), At(1, kF), At(2, kG), EndAt(3)};
  W census, majorOnly(false, W::kCandidatesMajor), none(false, 2), skip(true, 1);
  EXPECT_EQ(Detect(census, cfg), Center(Major(kC)));
  EXPECT_DOUBLE_EQ(census.Weights().at(Minor(kA)), 3.0);
  EXPECT_TRUE(census.ResultIsAmbiguous);
  EXPECT_EQ(Detect(majorOnly, cfg), Center(Major(kC)));
  EXPECT_FALSE(majorOnly.ResultIsAmbiguous);
  EXPECT_EQ(Detect(majorOnly, {At(0, kA, kMinor), At(4, kE), EndAt(8)}), Center(Major(kC)));

  // Relative keys share a signature, so their tie is none: B D F fits only C major and A
  // minor. A lone chord counts one quarter note; on the tonic it earns both bonuses.
  EXPECT_EQ(Detect(census, {At(0, kB, 73)}), Center(Major(kC)));
  EXPECT_DOUBLE_EQ(census.Weights().at(Minor(kA)), 1.0);
  EXPECT_FALSE(census.ResultIsAmbiguous);
  EXPECT_EQ(Detect(census, {At(100, kA, kMinor)}), Center(Minor(kA)));
  EXPECT_DOUBLE_EQ(census.Weights().at(Minor(kA)), 1.2);
  // Only undefined chords weigh nothing: the first key of the order answers.
  EXPECT_EQ(Detect(census, {EndAt(0), EndAt(4)}), Center(Major(kC)));

  // No candidates, weights only, no chords: no result.
  CHarmAnlsCenters results{CHarmAnlsCenter(kUndef, 0, Center(Major(kG)))};
  none.DetectHarmCentersFromChords(cfg, results);
  EXPECT_TRUE(results.empty());
  skip.DetectHarmCentersFromChords(cfg, results);
  EXPECT_TRUE(results.empty());
  EXPECT_DOUBLE_EQ(skip.Weights().at(Major(kC)), 3.2);
  census.DetectHarmCentersFromChords({}, results);
  EXPECT_TRUE(results.empty());
}

TEST(HarmCenterWeightAnalysis, ThePlayedTriadDecidesBetweenMajorAndMinorOnOneRoot) {
  // Am and Amaj7 weigh 1.1 each in A minor and A major; no other key has both C and C
  // sharp. A major comes first in the order, but only the A minor triad is played.
  W census;
  EXPECT_EQ(Detect(census, {EndAt(0), At(1, kA, kMinor), At(2, kA, kMaj7), EndAt(3)}),
            Center(Minor(kA)));
  EXPECT_FALSE(census.ResultIsAmbiguous);
  // Even against the weights: Amaj7 now lasts twice as long.
  EXPECT_EQ(Detect(census, {EndAt(0), At(1, kA, kMinor), At(2, kA, kMaj7), EndAt(4)}),
            Center(Minor(kA)));
  EXPECT_GT(census.Weights().at(Major(kA)), census.Weights().at(Minor(kA)));
  // With the plain A major triad played too, or with a bass under Am, the rule is silent.
  EXPECT_EQ(Detect(census, {EndAt(0), At(1, kA, kMinor), At(2, kA), At(3, kA, kMaj7), EndAt(4)}),
            Center(Major(kA)));
  const CHarmAnlsChordWithPos amOverE(CChordLite(kA, CSemitones(kMinor), kE), 1);
  EXPECT_EQ(Detect(census, {EndAt(0), amOverE, At(2, kA, kMaj7), EndAt(3)}), Center(Major(kA)));
}

TEST(HarmCenterWeightAnalysis, TheAnalyserGivesTheFoundCenterEveryChordFromItsFirstOn) {
  CHarmonicAnalyse tune;
  tune.AnalyseFromChordString("Dm7 G7 | Cmaj7 . Am7 . | Dm7 G7 | C", {}, A::kAnalyseCenterWeights,
                              TChordStringParse());
  const CHarmAnlsSignKey& signKey = tune.HarmSignKeys().at(0);
  EXPECT_EQ(signKey.SignKey, Major(kC));
  ASSERT_EQ(signKey.HarmCenters.size(), 1U);
  EXPECT_EQ(signKey.HarmCenters[0].HarmChords.size(), tune.InputChords().size());
  EXPECT_EQ(signKey.HarmCenters[0].HarmChords[1].RootDistToHarmCenter, 7);  // G7 on C

  // A center with a key, then one without, under an undefined sign key.
  CHarmAnlsSignKey given(kUndef, kUndef, CSignKeyLite::Undef);
  given.HarmCenters = {CHarmAnlsCenter(kUndef, 0, Center(Minor(kE)),
                                       {At(0, kA, kMinor), At(1, kE), At(2, kA, kMinor)}),
                       CHarmAnlsCenter(kUndef, kUndef, CHarmCenterLite::Undef,
                                       {At(4, kC), At(5, kF), At(6, kG), At(7, kC), EndAt(8)})};
  CHarmonicAnalyse undefOnly;
  undefOnly.FillManually_AppendSignKey(given);
  undefOnly._FindAndInsertHarmCentersUsingCenterWeightAnalysis({}, A::kOnlyUndefCenters);
  const CHarmAnlsSignKey& found = undefOnly.HarmSignKeys()[0];
  EXPECT_EQ(found.SignKey, Major(kC));
  ASSERT_EQ(found.HarmCenters.size(), 2U);
  EXPECT_EQ(found.HarmCenters[0].HarmCenter, Center(Minor(kE)));
  EXPECT_EQ(found.HarmCenters[0].HarmChords.size(), 3U);
  EXPECT_EQ(found.HarmCenters[1].HarmCenter, Center(Major(kC)));

  // All centers: the first is overwritten by the census of its own chords and then takes
  // every chord of the row, leaving the second empty. A given sign key stays.
  given.SignKey = Major(kG);
  CHarmonicAnalyse all;
  all.FillManually_AppendSignKey(given);
  all._FindAndInsertHarmCentersUsingCenterWeightAnalysis({}, A::kAllCenters);
  const CHarmAnlsSignKey& overwritten = all.HarmSignKeys()[0];
  EXPECT_EQ(overwritten.SignKey, Major(kG));
  ASSERT_EQ(overwritten.HarmCenters.size(), 2U);
  EXPECT_EQ(overwritten.HarmCenters[0].HarmCenter, Center(Minor(kA)));
  EXPECT_EQ(overwritten.HarmCenters[0].HarmChords.size(), 8U);
  EXPECT_TRUE(overwritten.HarmCenters[1].HarmChords.empty());
}

}  // namespace
}  // namespace harmony
