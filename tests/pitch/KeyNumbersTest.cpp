#include <gtest/gtest.h>

#include <climits>

#include "harmony/pitch/KeyNumbers.h"
#include "harmony/pitch/Note.h"

namespace harmony {
namespace {

TEST(KeyNumbers, BlackKeysByRemainderKeepingSign) {
  for (int key : {1, 3, 6, 8, 10, 13, 22}) EXPECT_TRUE(IsBlackKey(key)) << key;
  for (int key : {0, 2, 4, 5, 7, 9, 11, 12}) EXPECT_TRUE(IsWhiteKey(key)) << key;
  // Negative key numbers are never black; the undefined key 15 reads as black.
  EXPECT_FALSE(IsBlackKey(-11));
  EXPECT_FALSE(IsBlackKey(-1));
  EXPECT_TRUE(IsBlackKey(kKeyNrUndef));
  EXPECT_TRUE(CNote().IsBlackKey());
}

TEST(KeyNumbers, IntervalsAndUndefinedNotes) {
  EXPECT_EQ(IntvlFromTo(60, 67), 7);
  EXPECT_EQ(IntvlFromTo(67, 60), -7);
  EXPECT_EQ(IntvlFromTo(-1, 60), kIntvlUndef);
  EXPECT_EQ(IntvlFromTo(60, 255), kIntvlUndef);
  EXPECT_EQ(IntvlFromTo(LONG_MIN, 0), kIntvlUndef);
  EXPECT_EQ(IntvlFromToTolerateNoteNrSmallUndef(255, 260), 5);
  EXPECT_EQ(IntvlFromToTolerateNoteNrSmallUndef(-1, 5), kIntvlUndef);
  EXPECT_EQ(KeyIntvlFromTo(11, 1), -10);
  EXPECT_EQ(AbsKeyIntvlFromTo(11, 1), 2);
  EXPECT_EQ(KeyIntvlFromTo(15, 1), kIntvlUndef);
  EXPECT_EQ(KeyDistanceBetween(0, 7), 5);
  EXPECT_EQ(KeyDistanceBetween(0, 6), 6);
  EXPECT_EQ(KeyDistanceBetween(11, 0), 1);
  EXPECT_EQ(KeyDirectionFrom(60, 60), 1);
  EXPECT_EQ(KeyDirectionFrom(60, 59), 2);
  EXPECT_EQ(KeyDirectionFrom(-1, 59), 0);
  EXPECT_EQ(DistanceBetween(CNote(67, TEnh_n), CNote(60, TEnh_n)), 7);
  EXPECT_EQ(DistanceBetween(CNote(), CNote(60, TEnh_n)), kIntvlUndef);
}

// The folded interval is -6..5: a tritone always reads downwards.
TEST(KeyNumbers, SmallestKeyIntervalIsAsymmetric) {
  EXPECT_EQ(SmallestKeyIntvl(6), -6);
  EXPECT_EQ(SmallestKeyIntvl(-6), -6);
  EXPECT_EQ(SmallestKeyIntvl(5), 5);
  EXPECT_EQ(SmallestKeyIntvl(-7), 5);
  EXPECT_EQ(SmallestKeyIntvl(11), -1);
  EXPECT_EQ(SmallestKeyIntvl(kIntvlUndef), kIntvlUndef);
  EXPECT_EQ(SmallestKeyIntvlBetween(0, 6), -6);
  EXPECT_EQ(SmallestKeyIntvlBetween(6, 0), -6);
  EXPECT_EQ(SmallestKeyIntvlBetween(CNote(61, TEnh_n), CNote(48, TEnh_n)), -1);
  for (int from = 0; from < 12; ++from) {
    for (int to = 0; to < 12; ++to) {
      const int folded = SmallestKeyIntvlBetween(from, to);
      EXPECT_GE(folded, -6);
      EXPECT_LE(folded, 5);
      EXPECT_EQ(((from + folded) % 12 + 12) % 12, to);
    }
  }
}

TEST(KeyNumbers, NearestNoteOfAKey) {
  EXPECT_EQ(NoteNrOfKeyNrLargerOrEqualTo(0, 60), 60);
  EXPECT_EQ(NoteNrOfKeyNrLargerOrEqualTo(11, 60), 71);
  EXPECT_EQ(NoteNrOfKeyNrLargerThan(0, 60), 72);
  EXPECT_EQ(NoteNrOfKeyNrLargerThan(0, 61), 72);
  EXPECT_EQ(NoteNrOfKeyNrSmallerOrEqualTo(11, 60), 59);
  EXPECT_EQ(NoteNrOfKeyNrSmallerThan(0, 60), 48);
  // Clamped to 0..127; the strict forms step past the clamp without clamping again.
  EXPECT_EQ(NoteNrOfKeyNrLargerOrEqualTo(0, 125), 127);
  EXPECT_EQ(NoteNrOfKeyNrLargerThan(7, 127), 139);
  EXPECT_EQ(NoteNrOfKeyNrSmallerOrEqualTo(5, 2), 0);
  EXPECT_EQ(NoteNrOfKeyNrSmallerThan(0, 0), -12);
  EXPECT_EQ(NoteNrOfKeyNrLargerOrEqualTo(0, LONG_MAX), 127);
  EXPECT_EQ(NoteNrOfKeyNrLargerOrEqualTo(15, 60), -1);
  EXPECT_EQ(NoteNrOfKeyNrSmallerThan(0, 255), -1);
  EXPECT_EQ(NoteNrWithSameKeyNrLargerOrEqualTo(62, 70), 74);
  EXPECT_EQ(NoteNrWithSameKeyNrLargerThan(62, 74), 86);
  EXPECT_EQ(NoteNrWithSameKeyNrLargerThan(-1, 74), -1);
}

TEST(KeyNumbers, CompingRangeWrap) {
  EXPECT_EQ(KeyNrAddIntvlToCompingPlusWrapIntvlRange(0, 0, 12), 60);
  EXPECT_EQ(KeyNrAddIntvlToCompingPlusWrapIntvlRange(5, 0, 12), 53);
  EXPECT_EQ(KeyNrAddIntvlToCompingPlusWrapIntvlRange(0, 65, 12), 65);
  EXPECT_EQ(KeyNrAddIntvlToCompingPlusWrapIntvlRange(0, 66, 12), 54);
  EXPECT_EQ(KeyNrAddIntvlToCompingPlusWrapIntvlRange(0, 0, 24), 72);
  EXPECT_EQ(KeyNrAddIntvlToCompingPlusWrapIntvlRange(7, -100, 24), 75);
  EXPECT_EQ(KeyNrAddIntvlToCompingPlusWrapIntvlRange(15, 0, 12), -1);
  EXPECT_EQ(KeyNrAddIntvlToCompingPlusWrapIntvlRange(0, kIntvlUndef, 12), -1);
}

}  // namespace
}  // namespace harmony
