#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "harmony/analysis/HarmonicAnalyse.h"

namespace harmony {
namespace {

using A = CHarmonicAnalyse;
constexpr double kUndef = kHarmAnlsUndefDouble;
constexpr std::uint64_t kMajorScale = 2741, kMinorScale = 1453;

CHarmAnlsChords Chords(const std::string& text) {
  return CHarmAnlsChords(text, TChordStringParse());
}

CHarmonicAnalyse Analysed(const std::string& text, A::TAnalyse method,
                          const CHarmAnlsSignKeys& signKeys = {}) {
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString(text, signKeys, method, TChordStringParse());
  return analyse;
}

CHarmCenterLite Major(int keyNr, TEnh enh = TEnh_n) {
  return CHarmCenterLite(CKeyEnh(keyNr, enh), CSemitones(kMajorScale));
}
CHarmCenterLite Minor(int keyNr, TEnh enh = TEnh_n) {
  return CHarmCenterLite(CKeyEnh(keyNr, enh), CSemitones(kMinorScale));
}

std::vector<double> Positions(const CHarmAnlsChords& chords) {
  std::vector<double> positions;
  for (const auto& chord : chords) positions.push_back(chord.Position);
  return positions;
}

std::vector<int> RootDists(const CHarmAnlsChords& chords) {
  std::vector<int> dists;
  for (const auto& chord : chords) dists.push_back(chord.RootDistToHarmCenter);
  return dists;
}

const CHarmAnlsCenters& Centers(const CHarmonicAnalyse& analyse) {
  EXPECT_EQ(analyse.HarmSignKeys().size(), 1U);
  return analyse.HarmSignKeys().at(0).HarmCenters;
}

TEST(HarmonicAnalyseProgressions, TwoFiveOnesGiveTheirTonic) {
  const CHarmonicAnalyse major = Analysed("Dm7 G7 Cmaj7", A::kAnalyseTonicProgressions);
  const CHarmAnlsSignKey& key = major.HarmSignKeys().at(0);
  EXPECT_EQ(key.SignKey, CSignKeyLite(CKeyEnh(0, TEnh_n), TSignKeyType::Major));
  ASSERT_EQ(Centers(major).size(), 1U);
  const CHarmAnlsCenter& c = Centers(major)[0];
  EXPECT_EQ(c.HarmCenter, Major(0));
  EXPECT_EQ(RootDists(c.HarmChords), (std::vector<int>{2, 7, 0}));
  // Found as ii V I at Dm7 and again as V7 I at G7; the equal readings add up to 2.0 where
  // a musician would call the key simply sure (1.0).
  EXPECT_EQ(c.Probability, 2.0);
  // No reading takes in the closing chord, so it is in no center of the result.
  CHarmAnlsChords all;
  major.ListAllHarmChords(all);
  EXPECT_EQ(Positions(all), (std::vector<double>{0, 1, 2}));

  const CHarmonicAnalyse minor = Analysed("Bm7b5 E7 Am", A::kAnalyseTonicProgressions);
  ASSERT_EQ(Centers(minor).size(), 1U);
  EXPECT_EQ(Centers(minor)[0].HarmCenter, Minor(9));
  EXPECT_EQ(RootDists(Centers(minor)[0].HarmChords), (std::vector<int>{2, 7, 0}));

  // A chord that no reading covers drops out: A flat seven fits no center of C.
  const CHarmonicAnalyse tail = Analysed("Dm7 G7 C Ab7", A::kAnalyseTonicProgressions);
  tail.ListAllHarmChords(all);
  EXPECT_EQ(Positions(all), (std::vector<double>{0, 1, 2}));
}

TEST(HarmonicAnalyseProgressions, AModulationSplitsIntoTwoCenters) {
  // ii V I in C, then ii V I a major third up: nothing of the one key fits the other.
  const CHarmonicAnalyse tune = Analysed("Dm7 . G7 . | Cmaj7 . . . | F#m7 . B7 . | Emaj7 . . .",
                                         A::kAnalyseTonicProgressions);
  ASSERT_EQ(Centers(tune).size(), 2U);
  const CHarmAnlsCenter& second = Centers(tune)[1];
  EXPECT_EQ(Centers(tune)[0].HarmCenter, Major(0));
  EXPECT_EQ(Positions(Centers(tune)[0].HarmChords), (std::vector<double>{0, 2, 4}));
  EXPECT_EQ(second.HarmCenter, Major(4));
  EXPECT_EQ(second.Position, 8.0);
  EXPECT_EQ(RootDists(second.HarmChords), (std::vector<int>{2, 7, 0}));
  // The sign key is the first center's.
  EXPECT_EQ(tune.HarmSignKeys()[0].SignKey.RootKeyEnh, CKeyEnh(0, TEnh_n));
}

TEST(HarmonicAnalyseProgressions, TwelveBarBluesInF) {
  // A musician hears the whole blues in F, with F7 as a bluesy tonic. The rules hear
  // F7 Bb7 as V7 I in B flat twice (bars 1-4 and 3-5; a Bb7 stops each range, it is no
  // chord of B flat major), the two readings overlap without containing each other, and
  // the merge of equal neighbours appends the second to the first, bars 3 and 4 twice.
  // Bars 6 to 8 fit no reading and are in no center; Gm7 C7 F7 C7 is F major.
  const CHarmonicAnalyse blues = Analysed(
      "F7 . . . | Bb7 . . . | F7 . . . | F7 . . . | Bb7 . . . | Bb7 . . . | "
      "F7 . . . | F7 . . . | Gm7 . . . | C7 . . . | F7 . . . | C7 . . .",
      A::kAnalyseTonicProgressions);
  ASSERT_EQ(Centers(blues).size(), 2U);
  const CHarmAnlsCenter& bflat = Centers(blues)[0];
  const CHarmAnlsCenter& f = Centers(blues)[1];
  EXPECT_EQ(bflat.HarmCenter, Major(10, TEnh_b));
  EXPECT_EQ(bflat.Probability, 1.0);
  EXPECT_EQ(Positions(bflat.HarmChords), (std::vector<double>{0, 4, 8, 12, 8, 12, 16}));
  EXPECT_EQ(f.HarmCenter, Major(5));
  EXPECT_EQ(f.Probability, 2.0);
  EXPECT_EQ(RootDists(f.HarmChords), (std::vector<int>{2, 7, 0, 7}));
  EXPECT_EQ(blues.HarmSignKeys()[0].SignKey.RootKeyEnh, CKeyEnh(10, TEnh_b));
}

TEST(HarmonicAnalyseProgressions, AmbiguousReadingsStandSideBySideAndGivenKeysStay) {
  const CHarmonicAnalyse ambiguous = Analysed("G C", A::kAnalyseTonicProgressions);
  ASSERT_EQ(Centers(ambiguous).size(), 2U);
  EXPECT_EQ(Centers(ambiguous)[0].HarmCenter, Major(0));
  EXPECT_EQ(Centers(ambiguous)[1].HarmCenter, Major(7));
  EXPECT_EQ(Centers(ambiguous)[1].Probability, 0.5);
  EXPECT_EQ(RootDists(Centers(ambiguous)[1].HarmChords), (std::vector<int>{0, 5}));

  // A sign key the caller gave stays as it is, whatever the centers turn out to be.
  const CHarmAnlsSignKeys g{
      CHarmAnlsSignKey(kUndef, kUndef, CSignKeyLite(CKeyEnh(7, TEnh_n), TSignKeyType::Major))};
  for (A::TAnalyse method : {A::kAnalyseTonicProgressions, A::kAnalyseCadenceProgressions}) {
    const CHarmonicAnalyse given = Analysed("Dm7 G7 Cmaj7", method, g);
    EXPECT_EQ(given.HarmSignKeys().at(0).SignKey, g[0].SignKey) << method;
    EXPECT_EQ(given.HarmSignKeys()[0].Position, kUndef) << method;
    EXPECT_EQ(Centers(given).at(0).HarmCenter, Major(0)) << method;
  }
}

TEST(HarmonicAnalyseProgressions, ACadenceClaimsTheRestOfItsCenter) {
  const CHarmonicAnalyse twoFive = Analysed("Dm7 G7 Cmaj7", A::kAnalyseCadenceProgressions);
  ASSERT_EQ(Centers(twoFive).size(), 1U);
  EXPECT_EQ(Centers(twoFive)[0].HarmCenter, Major(0));
  EXPECT_EQ(Centers(twoFive)[0].Probability, kUndef);
  EXPECT_EQ(Centers(twoFive)[0].HarmChords.size(), 4U);  // with the closing chord

  // The first cadence reaches to the end: F and B flat stay in D major, and nothing is
  // looked for behind it.
  const CHarmonicAnalyse walk = Analysed("Em A7 D F Bb", A::kAnalyseCadenceProgressions);
  ASSERT_EQ(Centers(walk).size(), 1U);
  EXPECT_EQ(Centers(walk)[0].HarmCenter, Major(2));
  EXPECT_EQ(RootDists(Centers(walk)[0].HarmChords), (std::vector<int>{2, 7, 0, 3, 8, -1}));

  // A cadence center is spelled as in C major, not after its chords; the tonic readings
  // take the spelling of the chords.
  EXPECT_EQ(Centers(Analysed("G#m7 C#7 F#", A::kAnalyseCadenceProgressions))[0].HarmCenter,
            Major(6, TEnh_b));
  EXPECT_EQ(Centers(Analysed("G#m7 C#7 F#", A::kAnalyseTonicProgressions))[0].HarmCenter,
            Major(6, TEnh_s));

  // The unplaced center takes the position of the cadence's first chord before its range
  // is set, so the change of range finds nothing ahead of its start to move: C and E7 stay
  // in the center, which starts at 2.
  const CHarmonicAnalyse unplaced = Analysed("C E7 Dm7 G7 C", A::kAnalyseCadenceProgressions);
  ASSERT_EQ(Centers(unplaced).size(), 1U);
  EXPECT_EQ(Centers(unplaced)[0].Position, 2.0);
  EXPECT_EQ(Positions(Centers(unplaced)[0].HarmChords), (std::vector<double>{0, 1, 2, 3, 4, 5}));
  // Placed by its sign key, the center gives C E7 to a new center in front, which the walk
  // leaves undefined. The weights then fill that one (C major) and, taking every chord from
  // its first on, leave the cadence center empty; the merge of equal neighbours joins them.
  const CHarmonicAnalyse placed = Analysed("C E7 Dm7 G7 C", A::kAnalyseCadenceProgressions,
                                           {CHarmAnlsSignKey(kUndef, 0.0, CSignKeyLite::Undef)});
  ASSERT_EQ(Centers(placed).size(), 1U);
  EXPECT_EQ(Centers(placed)[0].HarmCenter, Major(0));
  EXPECT_EQ(Centers(placed)[0].Position, 0.0);
  EXPECT_EQ(Positions(Centers(placed)[0].HarmChords), (std::vector<double>{0, 1, 2, 3, 4, 5}));
}

TEST(HarmonicAnalyseProgressions, WithoutReadingsEachSignKeyIsWalked) {
  // No input chords, so no readings: the walk runs over the centers the caller gave. G7 C
  // is C major; F#m7 does not fit it, so the center ends there and the rest goes to a new
  // center, which the walk finds to be E major.
  const CHarmAnlsCenter given(kUndef, 0.0, CHarmCenterLite(), Chords("G7 C F#m7 B7 E"));
  const CHarmAnlsSignKeys keys{CHarmAnlsSignKey(kUndef, 0.0, CSignKeyLite::Undef, {given}),
                               CHarmAnlsSignKey()};
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChords({}, keys, A::kAnalyseTonicProgressions);
  const CHarmAnlsSignKey& first = analyse.HarmSignKeys().at(0);
  EXPECT_EQ(first.SignKey, CSignKeyLite(CKeyEnh(0, TEnh_n), TSignKeyType::Major));
  ASSERT_EQ(first.HarmCenters.size(), 2U);
  EXPECT_EQ(first.HarmCenters[0].HarmCenter, Major(0));
  EXPECT_EQ(Positions(first.HarmCenters[0].HarmChords), (std::vector<double>{0, 1}));
  EXPECT_EQ(first.HarmCenters[1].HarmCenter, Major(4));
  EXPECT_EQ(first.HarmCenters[1].Position, 2.0);
  // The closing chord travels with the range that ends on it.
  EXPECT_EQ(Positions(first.HarmCenters[1].HarmChords), (std::vector<double>{2, 3, 4, 5}));
  EXPECT_TRUE(analyse.HarmSignKeys().at(1).IsUndef());

  // When no progression fits anywhere, the weights alone decide.
  EXPECT_EQ(Analysed("C F#", A::kAnalyseTonicProgressions).TraceString(),
            Analysed("C F#", A::kAnalyseCenterWeights).TraceString());

  // The single looks, on the table the analysis left in the object.
  const CHarmAnlsChords run = Chords("Am Dm7 G7 C F E7");
  const A::TFoundHarmCenter found =
      analyse._FindHarmCenterViaTonicProgression(run.begin() + 2, run, analyse.HarmSignKeys()[0]);
  EXPECT_TRUE(found.Found);
  EXPECT_EQ(found.HarmCenter, Major(0));
  auto begin = run.begin() + 2, end = run.begin() + 3;
  analyse._ExtendRangeOfHarmCenter(Major(0), run, begin, end);
  EXPECT_EQ(begin, run.begin());
  EXPECT_EQ(end, run.begin() + 5);  // behind F, at E7
}

}  // namespace
}  // namespace harmony
