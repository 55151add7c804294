#include "harmony/analysis/HarmAnlsProgressions.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "TestText.h"
#include "harmony/analysis/ChordStringParser.h"

namespace harmony {
namespace {

using testing::Json;

using P = CHarmAnlsProgressions;
constexpr std::uint64_t kMajorScale = 2741, kMinorScale = 1453;

// One chord a beat, closed by the undefined chord.
CHarmAnlsChords Chords(const std::string& text) {
  return CHarmAnlsChords(text, TChordStringParse());
}

CHarmAnlsChords::const_iterator At(const CHarmAnlsChords& chords, std::ptrdiff_t index) {
  return chords.begin() + index;
}

// The center a progression proves by its last chord from a match at the first chord.
CHarmCenterLite Proven(const CHarmAnlsProgression& progression, const std::string& text) {
  const CHarmAnlsChords chords = Chords(text);
  return progression.HarmCenterCalculatedFromFoundProgressionLastChord(chords.begin(), chords);
}

// The rows of a table that fit at `index`, as indices into the table.
std::vector<std::size_t> MatchingRows(const P& table, const CHarmAnlsChords& chords,
                                      std::ptrdiff_t index) {
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < table.size(); ++row) {
    if (table[row].MatchesHarmChordsFrom(chords, At(chords, index))) rows.push_back(row);
  }
  return rows;
}

TEST(HarmAnlsProgressions, TablesKeepTheirRowsPrioritiesAndOddEntries) {
  const P& tonic = P::TonicProgressions();
  const P& cadence = P::CadenceProgressions();
  ASSERT_EQ(tonic.size(), 15U);
  ASSERT_EQ(cadence.size(), 8U);

  // V7 I, written out; priority and mode are not part of the JSON.
  EXPECT_EQ(Json(tonic[0]),
            "[\n{\"RootDistToHarmCenter\": 7, \"BassDistToHarmCenter\": 7, "
            "\"SemitonesMatch\":[1,x,x,x,1,x,x,1,x,x,1,0]},\n"
            "{\"RootDistToHarmCenter\": 0, \"BassDistToHarmCenter\": 0, "
            "\"SemitonesMatch\":[1,x,x,x,1,x,x,1,x,x,x,x]},\n]\n");
  EXPECT_EQ(tonic[0].Priority, 9U);
  EXPECT_EQ(tonic[0].SignKeyType, TSignKeyType::Major);
  // IV ii-half-diminished I has the highest priority of all.
  EXPECT_EQ(tonic[9].Priority, 10U);
  EXPECT_EQ(tonic[9][1].SemitonesMatch.Semitone(6), kSemiMatch_Required);
  // IV V vi ends off the center.
  ASSERT_EQ(tonic[10].size(), 3U);
  EXPECT_EQ(tonic[10][2].RootDistToHarmCenter, 9);
  EXPECT_EQ(tonic[14].SignKeyType, TSignKeyType::Minor);
  EXPECT_EQ(cadence[4].Priority, 2U);
  EXPECT_EQ(cadence[4].back().RootDistToHarmCenter, 7);
  for (const P* table : {&tonic, &cadence}) {
    for (const CHarmAnlsProgression& row : *table) {
      for (const CHarmAnlsProgressionEl& el : row) {
        EXPECT_EQ(el.BassDistToHarmCenter, el.RootDistToHarmCenter);
      }
    }
  }
}

TEST(HarmAnlsProgressions, ChordKindsAndRootMotionDecideAMatch) {
  const P& tonic = P::TonicProgressions();
  const P& cadence = P::CadenceProgressions();
  // V7 I in C, also with tensions on both chords; a major seventh is no dominant.
  for (const char* text : {"G7 C", "G13 Cmaj9", "G7(b9) C6"}) {
    EXPECT_EQ(MatchingRows(tonic, Chords(text), 0).front(), 0U) << text;
    EXPECT_EQ(Proven(tonic[0], text), CHarmCenterLite(CKeyEnh(0, TEnh_n), CSemitones(kMajorScale)));
  }
  EXPECT_EQ(MatchingRows(tonic, Chords("Gmaj7 C"), 0), (std::vector<std::size_t>{1, 2}));
  // The tritone substitute.
  EXPECT_EQ(MatchingRows(tonic, Chords("Db7 C"), 0), (std::vector<std::size_t>{4}));
  EXPECT_EQ(Proven(tonic[4], "Db7 C").RootKeyEnh.KeyNr, 0);
  // ii V at Dm, V vi at G; neither the other way round.
  const CHarmAnlsChords deceptive = Chords("Dm G Am");
  EXPECT_EQ(MatchingRows(cadence, deceptive, 0), (std::vector<std::size_t>{4}));
  EXPECT_EQ(MatchingRows(cadence, deceptive, 1), (std::vector<std::size_t>{3}));
  // IV V vi proves C major from its last chord: 9 (A) minus 9.
  EXPECT_EQ(Proven(tonic[10], "F G Am"),
            CHarmCenterLite(CKeyEnh(0, TEnh_n), CSemitones(kMajorScale)));
  EXPECT_EQ(Proven(tonic[13], "Bm7b5 E7 Am").Semitones.Word(), kMinorScale);

  // The closing chord is no chord a progression may use: a lone C at the end fits nothing.
  const CHarmAnlsChords lone = Chords("G7 C");
  EXPECT_TRUE(MatchingRows(tonic, lone, 1).empty());
  EXPECT_TRUE(MatchingRows(tonic, lone, 2).empty());
  // A start at the very end passes the count test by unsigned wrap-around and counts as a
  // fit with nothing to compare.
  EXPECT_TRUE(tonic[0].MatchesHarmChordsFrom(lone, lone.end()));
}

TEST(HarmAnlsProgressions, TheCenterIsSpelledAfterTheChordsOfTheRun) {
  // Judged from Ab, a fourth above the center; the spelling comes from the Eb of the run.
  EXPECT_EQ(Proven(P::TonicProgressions()[2], "Eb Ab").RootKeyEnh, CKeyEnh(3, TEnh_b));
  EXPECT_EQ(Proven(P::TonicProgressions()[2], "D# G#").RootKeyEnh, CKeyEnh(3, TEnh_s));
  // IV V vi without a chord on the center: the fewest signs decide (D flat, not C sharp).
  EXPECT_EQ(Proven(P::TonicProgressions()[10], "Gb Ab Bbm").RootKeyEnh, CKeyEnh(1, TEnh_b));
  // A run cut short by the end of the list keeps the natural it started with.
  const CHarmAnlsChords toCSharp = Chords("Ab7 C#");
  EXPECT_EQ(Proven(P::TonicProgressions()[0], "Ab7 C#").RootKeyEnh, CKeyEnh(1, TEnh_s));
  const CHarmAnlsChords cut(toCSharp.begin(), toCSharp.begin() + 1);
  EXPECT_EQ(P::TonicProgressions()[0]
                .HarmCenterCalculatedFromFoundProgressionFirstChord(cut.begin(), cut)
                .RootKeyEnh,
            CKeyEnh(1, TEnh_n));
}

TEST(HarmAnlsProgressions, BackwardMatchingEndsOnTheGivenChord) {
  const CHarmAnlsProgression& v7I = P::TonicProgressions()[0];
  const CHarmAnlsChords chords = Chords("Dm7 G7 C");
  const auto c = At(chords, 2);
  EXPECT_TRUE(v7I.MatchesHarmChordsBackwardsFrom(chords, c));
  EXPECT_FALSE(v7I.MatchesHarmChordsBackwardsFrom(chords, chords.begin()));
  EXPECT_EQ(v7I.HarmCenterChordsBegin(c, chords, kMatchDirection_Backward), At(chords, 1));
  EXPECT_EQ(v7I.HarmCenterChordsBegin(chords.begin(), chords, kMatchDirection_Backward),
            chords.begin());
  // Backward the center is judged at the chord given, read as the first element.
  EXPECT_EQ(v7I.HarmCenterFromProgressionAndChord(At(chords, 1), chords, kMatchDirection_Backward)
                .RootKeyEnh.KeyNr,
            0);
  EXPECT_TRUE(
      v7I.HarmCenterFromProgressionAndChord(At(chords, 1), chords, static_cast<TMatchDirection>(2))
          .IsUndef());
  const P found = P::TonicProgressions().FindAndSortBackwardMatchingProgressions(c, chords);
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found.front().size(), 3U);  // ii V I before V7 I
}

TEST(HarmAnlsProgressions, LongerProgressionsRankFirstThenPriority) {
  P sorted = P::TonicProgressions();
  sorted.SortBySizeAndPriority();
  // The four-chord rows (priorities 8 and 4) go ahead of the three-chord row of priority 10.
  EXPECT_EQ(sorted[0].Priority, 8U);
  EXPECT_EQ(sorted[1].Priority, 4U);
  EXPECT_EQ(sorted[1].size(), 4U);
  EXPECT_EQ(sorted[2].Priority, 10U);
  EXPECT_EQ(sorted.back().SignKeyType, TSignKeyType::Minor);

  // G C is V I in C as well as I IV in G: two best readings of equal rank.
  const P& tonic = P::TonicProgressions();
  const CHarmAnlsChords gc = Chords("G C");
  P ambiguous = tonic.FindAndSortForwardMatchingProgressions(gc.begin(), gc);
  EXPECT_TRUE(ambiguous.HasSeveralBestMatchingProgressions());
  const P best = ambiguous.SortAndGetBestMatchingProgressions();
  ASSERT_EQ(best.size(), 2U);
  std::vector<const CHarmAnlsProgression*> fast;
  tonic.FindBestForwardMatchingProgressions(gc.begin(), gc, fast);
  ASSERT_EQ(fast.size(), 2U);
  EXPECT_EQ(fast[0], &tonic[1]);
  EXPECT_EQ(fast[1], &tonic[2]);
  EXPECT_EQ(tonic.FindBestForwardMatchingProgression(gc.begin(), gc), &tonic[1]);

  // With G7 the dominant row outranks both.
  const CHarmAnlsChords g7c = Chords("G7 C");
  const P sure = tonic.FindAndSortForwardMatchingProgressions(g7c.begin(), g7c);
  EXPECT_EQ(sure.size(), 3U);
  EXPECT_FALSE(sure.HasSeveralBestMatchingProgressions());
  EXPECT_EQ(sure.GetBestMatchingProgressions().size(), 1U);
  EXPECT_EQ(tonic.FindBestForwardMatchingProgression(g7c.begin(), g7c), &tonic[0]);
  EXPECT_EQ(tonic.FindBestForwardMatchingProgression(At(g7c, 1), g7c), nullptr);
}

}  // namespace
}  // namespace harmony
