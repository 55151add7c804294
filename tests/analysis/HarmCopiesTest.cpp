// Repeated passages of a piece: runs of equal chords of equal length found again, the
// longest first, copies pointing back to the first occurrence, and nested repeats inside it.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "harmony/analysis/HarmonicAnalyse.h"

namespace harmony {
namespace {

CHarmCopies CopiesOf(const std::string& chordList) {
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString(chordList, {}, CHarmonicAnalyse::kAnalyseNone,
                                 TChordStringParse());
  CHarmCopies copies{CHarmCopy(99.0, 9, 9)};  // emptied first
  analyse.FindHarmCopies(copies);
  return copies;
}

TEST(HarmCopies, ARepeatedRunIsOneCopyOfItsFirstOccurrence) {
  EXPECT_EQ(
      CopiesOf("C . . . | F . . . | G . . . | Am . . . | C . . . | F . . . | G . . . | Am . . . |"),
      (CHarmCopies{CHarmCopy(16.0, -4, 4)}));
  // Three times: both copies point back to the first.
  EXPECT_EQ(CopiesOf("C . . . | G . . . | C . . . | G . . . | C . . . | G . . . |"),
            (CHarmCopies{CHarmCopy(8.0, -2, 2), CHarmCopy(16.0, -4, 2)}));
  // One chord held: runs of two from the first and the third bar.
  EXPECT_EQ(CopiesOf("C . . . | C . . . | C . . . | C . . . |"),
            (CHarmCopies{CHarmCopy(8.0, -2, 2)}));
  // Bars are four quarter notes and counted down: six quarters are one bar, and the source
  // lies one bar back.
  EXPECT_EQ(CopiesOf("C . . F . . C . . F . . |"), (CHarmCopies{CHarmCopy(6.0, -1, 1)}));
}

TEST(HarmCopies, SameChordsInOtherLengthsAndSingleChordsAreNoRepeat) {
  EXPECT_TRUE(CopiesOf("C . F . | C . . . | F . . . |").empty());
  EXPECT_TRUE(CopiesOf("C . . . | F . . . | G . . . |").empty());
  EXPECT_TRUE(CopiesOf("").empty());
}

TEST(HarmCopies, RepeatsNestInsideTheFirstOccurrence) {
  // (C F C F G) twice: the whole five-chord run once again, and inside its first occurrence
  // C F once again.
  EXPECT_EQ(CopiesOf("C . . . | F . . . | C . . . | F . . . | G . . . | "
                     "C . . . | F . . . | C . . . | F . . . | G . . . |"),
            (CHarmCopies{CHarmCopy(8.0, -2, 2), CHarmCopy(20.0, -5, 5)}));
  // Ahead of the repeated passage: positions inside it count from the song's start.
  EXPECT_EQ(CopiesOf("Em . . . | Am . . . | D7 . . . | Am . . . | D7 . . . | G . . . | "
                     "Am . . . | D7 . . . | Am . . . | D7 . . . | G . . . |"),
            (CHarmCopies{CHarmCopy(12.0, -2, 2), CHarmCopy(24.0, -5, 5)}));
}

TEST(HarmCopies, SequencesListLongerRunsFirstAndCollidingStartsOnce) {
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString(
      "C . . . | F . . . | C . . . | F . . . | G . . . | "
      "C . . . | F . . . | C . . . | F . . . | G . . . |",
      {}, CHarmonicAnalyse::kAnalyseNone, TChordStringParse());
  CHarmAnlsChordsWithLength chords;
  analyse.ListAllHarmChordsWithLength(chords);
  CHarmonicAnalyse::TRepeatingSequences sequences;
  analyse.GenerateVectorWithRepeatingSequenceIndices(sequences, chords);
  const CHarmonicAnalyse::TRepeatingSequences expected = {
      {{0, 5}, 5}, {{1, 6}, 4}, {{2, 7}, 3}, {{0, 2, 5, 7}, 2}, {{3, 8}, 2}};
  EXPECT_EQ(sequences, expected);

  // A range already listed that reaches the new start collides; one lying within the new
  // range does not.
  std::vector<std::size_t> starts = {4};
  CHarmonicAnalyse::InsertRangeStartIfNoCollision(starts, 5, 2);
  CHarmonicAnalyse::InsertRangeStartIfNoCollision(starts, 4, 2);
  CHarmonicAnalyse::InsertRangeStartIfNoCollision(starts, 2, 3);
  CHarmonicAnalyse::InsertRangeStartIfNoCollision(starts, 6, 2);
  EXPECT_EQ(starts, (std::vector<std::size_t>{4, 2, 6}));

  // A run longer than half the part is not looked at.
  CHarmCopies copies;
  const CHarmAnlsChordsWithLength five(chords.begin(), chords.begin() + 5);
  analyse.RecursiveFillWithSequences(five, {{{0, 2}, 3}}, 0, 0.0, copies);
  EXPECT_TRUE(copies.empty());
  analyse.RecursiveFillWithSequences(five, {{{0, 2}, 2}}, 0, 0.0, copies);
  EXPECT_EQ(copies, (CHarmCopies{CHarmCopy(8.0, -2, 2)}));
}

}  // namespace
}  // namespace harmony
