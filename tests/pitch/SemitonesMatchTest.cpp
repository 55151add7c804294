#include "harmony/pitch/SemitonesMatch.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "TestText.h"

namespace harmony {
namespace {

using testing::Json;

TEST(SemitonesMatch, ConstructorsSetAllTwelveSlots) {
  EXPECT_EQ(Json(CSemitonesMatch()), "[0,0,0,0,0,0,0,0,0,0,0,0]");
  // 12 is the octave, that is the root; 13 and above are ignored.
  EXPECT_EQ(Json(CSemitonesMatch({12, 4, 7, 13, 99})), "[1,0,0,0,1,0,0,1,0,0,0,0]");
  // A semitone both required and free ends free.
  EXPECT_EQ(Json(CSemitonesMatch({0, 4, 7}, {4, 10, 11})), "[1,0,0,0,x,0,0,1,0,0,x,x]");
  EXPECT_EQ(Json(CSemitonesMatch(CSemitones(137))), "[1,0,0,1,0,0,0,1,0,0,0,0]");
}

TEST(SemitonesMatch, SlotIndexing) {
  CSemitonesMatch match;
  match.SetSemitone(12, kSemiMatch_Required);
  match.SetSemitone(13, kSemiMatch_Required);  // ignored
  match.SetSemitone(11, kSemiMatch_Free);
  EXPECT_EQ(match.Semitone(0), kSemiMatch_Required);
  EXPECT_EQ(match.Semitone(12), kSemiMatch_Required);
  EXPECT_EQ(match.Semitone(13), kSemiMatch_Free);
  EXPECT_EQ(Json(match), "[1,0,0,0,0,0,0,0,0,0,0,x]");

  // Intervals fold as CSemitones folds them: 14 is the ninth, -1 lands on 3.
  match.SetFromIntvlSet(CIntvlSet{0, 14, -1});
  EXPECT_EQ(Json(match), "[1,0,1,1,0,0,0,0,0,0,0,0]");
}

TEST(SemitonesMatch, Matches) {
  // A major triad with anything on top, but no minor third.
  const CSemitonesMatch majorWithTensions({0, 4, 7}, {1, 2, 5, 6, 8, 9, 10, 11});
  EXPECT_TRUE(majorWithTensions.Matches(CSemitones(145)));
  EXPECT_TRUE(majorWithTensions.Matches(CSemitones(145 | 1024 | 4)));
  EXPECT_FALSE(majorWithTensions.Matches(CSemitones(145 | 8)));
  EXPECT_FALSE(majorWithTensions.Matches(CSemitones(17)));

  CSemitonesMatch anything;
  anything.ResetToValue(kSemiMatch_Free);
  EXPECT_TRUE(anything.Matches(CSemitones(0)));
  EXPECT_TRUE(anything.Matches(CSemitones(4095)));
  EXPECT_FALSE(CSemitonesMatch(CSemitones(2741)).Matches(CSemitones(2741 - 1)));
}

TEST(SemitonesMatch, TextForms) {
  const CSemitonesMatch triad({0, 4, 7}, {2});
  EXPECT_EQ(triad.TraceString(), "CSemitonesMatch: [1,0,x,0,1,0,0,1,0,0,0,0]");
  EXPECT_EQ(triad.TraceBriefString(), "10x010010000");
  EXPECT_EQ(testing::Streamed(static_cast<TSemiMatch>(7)), "unknown TSemiMatch: 7");
  CSemitonesMatch odd;
  odd.SetSemitone(0, static_cast<TSemiMatch>(5));
  EXPECT_EQ(Json(odd), "[unknown TSemiMatch: 5,0,0,0,0,0,0,0,0,0,0,0]");
  EXPECT_EQ(odd.StringForInitializerList().rfind(
                "CSemitonesMatch(TSemiMatch(5), kSemiMatch_Forbidden", 0),
            0u);
}

TEST(SemitonesMatches, AnyMemberMatches) {
  CSemitonesMatches none;
  EXPECT_FALSE(none.Matches(CSemitones(0)));
  const CSemitonesMatches majorOrMinor{CSemitonesMatch({0, 4, 7}), CSemitonesMatch({0, 3, 7})};
  EXPECT_TRUE(majorOrMinor.Matches(CSemitones(137)));
  EXPECT_TRUE(majorOrMinor.Matches(CSemitones(145)));
  EXPECT_FALSE(majorOrMinor.Matches(CSemitones(153)));

  EXPECT_EQ(Json(majorOrMinor), "[\n[1,0,0,0,1,0,0,1,0,0,0,0],\n[1,0,0,1,0,0,0,1,0,0,0,0],\n]");
  EXPECT_EQ(Json(none), "[\n]");
  EXPECT_EQ(none.TraceString(), "CSemitonesMatches: [\n]");
}

}  // namespace
}  // namespace harmony
