// The center each input chord of an analysis was placed in.

#include <gtest/gtest.h>

#include <vector>

#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmCenterOfInputChords.h"
#include "harmony/analysis/HarmonicAnalyse.h"

namespace harmony {
namespace {

CHarmCenterLite Center(int keyNr, std::uint64_t mask) {
  return CHarmCenterLite(CKeyEnh(keyNr, TEnh_n), CSemitones(mask));
}

TEST(HarmCenterOfInputChords, LikeliestReadingAtTheChordsPosition) {
  // C G Am F E, one chord every two quarters, and the closing chord at 9.
  const CHarmAnlsChords chords("C . G . Am . F . E", TChordStringParse());
  ASSERT_EQ(chords.size(), 6U);
  CHarmonicAnalyse analyse;
  // Without center finding the chords wait in one undefined center, which places nothing.
  analyse.AnalyseFromChords(chords, {}, CHarmonicAnalyse::kAnalyseNone);
  const CHarmCenterLite cMajor = Center(0, 2741), gMajor = Center(7, 2741),
                        aMinor = Center(9, 1453), fMajor = Center(5, 2741),
                        dMajor = Center(2, 2741);
  const auto signKey = analyse.FillManually_AppendSignKey(CHarmAnlsSignKey());
  const auto add = [&](double probability, const CHarmCenterLite& center,
                       std::vector<std::size_t> held) {
    const auto it = analyse.FillManually_AppendHarmCenterInSignKey(
        signKey, CHarmAnlsCenter(probability, chords[held.front()].Position, center));
    for (std::size_t index : held) analyse.FillManually_AppendChordInHarmCenter(it, chords[index]);
  };
  // Two equally likely readings of C G: the first wins.
  add(0.5, cMajor, {0, 1});
  add(0.5, gMajor, {0, 1});
  // A minor is the less likely reading of Am.
  add(0.25, aMinor, {2});
  add(0.75, fMajor, {2, 3});
  // A center that holds another chord at the E's place does not hold the E.
  const auto other = analyse.FillManually_AppendHarmCenterInSignKey(
      signKey, CHarmAnlsCenter(kHarmAnlsUndefDouble, 8.0, dMajor));
  analyse.FillManually_AppendChordInHarmCenter(
      other, CHarmAnlsChordWithPos(CChordLite(CKeyEnh(4, TEnh_n), CSemitones(137)), 8.0));

  const std::vector<CHarmCenterLite> centers = HarmCenterOfEachInputChord(analyse);
  ASSERT_EQ(centers.size(), chords.size());
  EXPECT_EQ(centers[0], cMajor);
  EXPECT_EQ(centers[1], cMajor);
  EXPECT_EQ(centers[2], fMajor);
  EXPECT_EQ(centers[3], fMajor);
  EXPECT_TRUE(centers[4].IsUndef());
  EXPECT_TRUE(centers[5].IsUndef());  // the closing chord has no root

  // A reading without probability is the only one: it beats any with a probability.
  add(kHarmAnlsUndefDouble, aMinor, {2});
  EXPECT_EQ(HarmCenterOfEachInputChord(analyse)[2], aMinor);
}

TEST(HarmCenterOfInputChords, EveryChordOfAGivenKey) {
  CHarmonicAnalyse analyse;
  const CHarmAnlsSignKeys key{CHarmAnlsSignKey(
      kHarmAnlsUndefDouble, 0.0, CSignKeyLite(CKeyEnh(9, TEnh_n), TSignKeyType::Minor))};
  analyse.AnalyseFromChordString("Am Dm E7 Am", key, CHarmonicAnalyse::kAnalyseNone,
                                 TChordStringParse());
  const std::vector<CHarmCenterLite> centers = HarmCenterOfEachInputChord(analyse);
  ASSERT_EQ(centers.size(), 5U);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(centers[i], Center(9, 1453)) << i;
  EXPECT_TRUE(centers[4].IsUndef());
  EXPECT_TRUE(HarmCenterOfEachInputChord(CHarmonicAnalyse()).empty());
}

}  // namespace
}  // namespace harmony
