#include "harmony/pitch/IntvlSet.h"

#include <gtest/gtest.h>

#include <vector>

#include "harmony/pitch/Semitones.h"

namespace harmony {
namespace {

std::vector<int> Elements(const CMySet<int>& set) { return {set.begin(), set.end()}; }

#define HARMONY_R4(n) (n), (n) + 1, (n) + 2, (n) + 3
#define HARMONY_R16(n) HARMONY_R4(n), HARMONY_R4(n + 4), HARMONY_R4(n + 8), HARMONY_R4(n + 12)
#define HARMONY_R64(n) HARMONY_R16(n), HARMONY_R16(n + 16), HARMONY_R16(n + 32), HARMONY_R16(n + 48)

TEST(IntvlSet, VariadicListsEndAtTheirTerminators) {
  EXPECT_EQ(Elements(CIntvlSet(7, 0, 4, -1)), (std::vector<int>{0, 4, 7}));
  // 128 ends the list like a negative value, and what follows it is not read.
  EXPECT_EQ(Elements(CIntvlSet(0, 4, 128, 7, -1)), (std::vector<int>{0, 4}));
  EXPECT_TRUE(CIntvlSet(130, 4, -1).empty());
  EXPECT_EQ(CIntvlSet(HARMONY_R64(0), HARMONY_R64(64), -1).size(), 128u);

  CIntvlSet set(0, 4, 7, -1);
  set.SetWrapIntvl(36);
  set.SetIntvls(2, 14, 200, 5, -1);
  EXPECT_EQ(Elements(set), (std::vector<int>{2, 14}));
  EXPECT_EQ(set.WrapIntvl(), 36);

  // The list form takes every value, whatever its range.
  EXPECT_EQ(Elements(CIntvlSet{-3, 130, 0}), (std::vector<int>{-3, 0, 130}));
}

TEST(IntvlSet, HasIntvlsTerminatorsAndEmptyCases) {
  const CIntvlSet triad(0, 4, 7, -1);
  const CIntvlSet empty;
  EXPECT_FALSE(triad.HasIntvls(0, 2, -1));
  EXPECT_TRUE(empty.HasIntvls(-1));  // nothing asked
  EXPECT_FALSE(empty.HasIntvls(0, -1));
  EXPECT_TRUE(triad.HasIntvls(4, 128, 2, -1));  // 2 is behind the terminator
  EXPECT_FALSE(triad.HasIntvls({4, 2}));
  EXPECT_FALSE(triad.HasIntvl(16));
}

TEST(IntvlSet, HasExactTheseIntvlsCountsTheListAsWritten) {
  const CIntvlSet triad(0, 4, 7, -1);
  EXPECT_TRUE(triad.HasExactTheseIntvls(7, 4, 0, -1));
  EXPECT_FALSE(triad.HasExactTheseIntvls(0, 4, -1));
  // A repeat makes four listed values for three elements, although all are present.
  EXPECT_FALSE(triad.HasExactTheseIntvls(0, 4, 7, 7, -1));
  EXPECT_FALSE(CIntvlSet(0, 4, 7, 9, -1).HasExactTheseIntvls(0, 4, 7, 7, -1));
  // Only a negative value ends these lists, so 130 is an interval here.
  EXPECT_TRUE((CIntvlSet{0, 130}.HasExactTheseIntvls(0, 130, -1)));
  EXPECT_FALSE(triad.HasExactTheseIntvls({0, 4, 4, 7}));

  const CIntvlSet ninth(0, 4, 7, 14, -1);
  EXPECT_TRUE(ninth.HasExactlyTheseIntvlsInAnyOctave(0, 4, 7, 2, -1));
  EXPECT_TRUE(ninth.HasExactlyTheseIntvlsInAnyOctave(12, 16, 19, 26, -1));
  // 2 and 14 are one tone of the set but two different listed values.
  EXPECT_FALSE(ninth.HasExactlyTheseIntvlsInAnyOctave(0, 4, 7, 2, 14, -1));
  EXPECT_FALSE(ninth.HasExactlyTheseIntvlsInAnyOctave(0, 4, 7, -1));
}

TEST(IntvlSet, AnyOctaveTestAndEraseDifferOnPurpose) {
  EXPECT_TRUE(CIntvlSet(2, -1).HasIntvlInAnyOctave(14));
  EXPECT_TRUE(CIntvlSet(14, -1).HasIntvlInAnyOctave(2));
  EXPECT_FALSE(CIntvlSet(26, -1).HasIntvlInAnyOctave(2));
  EXPECT_TRUE(CIntvlSet(2, -1).HasIntvlInAnyOctave(-10));  // remainder -10 climbs to 2

  // The test stops below the wrap interval, the erase includes it.
  CIntvlSet atWrap(24, -1);
  EXPECT_FALSE(atWrap.HasIntvlInAnyOctave(0));
  atWrap.EraseIntvlInAnyOct(0);
  EXPECT_TRUE(atWrap.empty());

  // The erase starts at the argument itself: 14 leaves the 2 below it.
  CIntvlSet ninths(2, 14, 26, -1);
  ninths.EraseIntvlInAnyOct(14);
  EXPECT_EQ(Elements(ninths), (std::vector<int>{2, 26}));
  ninths.EraseIntvlInAnyOct(-10);
  EXPECT_EQ(Elements(ninths), std::vector<int>{26});
}

TEST(IntvlSet, StackedThirdsOptions) {
  EXPECT_FALSE(CIntvlSet(0, 3, 4, 7, 12, 19, -1).HasOtherStackedThirdsOptionThan(2));
  EXPECT_FALSE(CIntvlSet(0, 4, 7, 14, -1).HasOtherStackedThirdsOptionThan(2));  // 14 folds
  EXPECT_TRUE(CIntvlSet(0, 4, 7, 10, 14, -1).HasOtherStackedThirdsOptionThan(2));
}

TEST(IntvlSet, Inversions) {
  const CIntvlSet triad(0, 4, 7, -1);
  EXPECT_EQ(Elements(triad.Inversion(1)), (std::vector<int>{0, 3, 8}));
  EXPECT_EQ(triad.Inversion(0), triad);
  EXPECT_EQ(triad.Inversion(3), triad.Inversion(0));
  EXPECT_EQ(Elements(CIntvlSet(0, 4, 7, 14, -1).Inversion(1)), (std::vector<int>{0, 3, 10, 20}));
  EXPECT_EQ(Elements(CIntvlSet(0, 4, 7, 12, -1).Inversion(1)), (std::vector<int>{0, 3, 8}));

  CIntvlSet wide(0, 4, 7, -1);
  wide.SetWrapIntvl(36);
  EXPECT_EQ(wide.Inversion(1).WrapIntvl(), 24);
  CIntvlSet single(5, -1);
  single.SetWrapIntvl(36);
  EXPECT_EQ(single.Inversion(1).WrapIntvl(), 36);

  wide.Invert();
  EXPECT_EQ(Elements(wide), (std::vector<int>{0, 3, 8}));
  EXPECT_EQ(wide.WrapIntvl(), 24);
}

TEST(IntvlSet, ConvertsToAndFromSemitonesAndKeys) {
  CIntvlSet set(0, 4, 7, 14, -1);
  EXPECT_EQ(set.ToSemitones(), CSemitones(149));
  EXPECT_EQ(CIntvlSet{-1}.ToSemitones(), CSemitones(8));  // unsigned fold: -1 is bit 3
  set.SetFromSemitones(CSemitones(137));
  EXPECT_EQ(Elements(set), (std::vector<int>{0, 3, 7}));
  EXPECT_EQ(set.WrapIntvl(), 12);

  // D F# A seen from D, and back on E.
  EXPECT_EQ(Elements(ConvertKeyNrSetToIntvlSet(CMySet<int>{0, 11}, 2)), (std::vector<int>{9, 10}));
  EXPECT_EQ(ConvertKeyNrSetToIntvlSet(CMySet<int>{0, 11}, 2).WrapIntvl(), 24);
  EXPECT_TRUE(ConvertKeyNrSetToIntvlSet(CMySet<int>{0}, 15).empty());
  EXPECT_EQ(Elements(ConvertIntvlSetToKeyNrSet(CIntvlSet(0, 4, 7, 14, -1), 9)),
            (std::vector<int>{1, 4, 9, 11}));
  EXPECT_TRUE(ConvertIntvlSetToKeyNrSet(CIntvlSet(0, -1), 15).empty());
}

TEST(IntvlSet, EqualityIgnoresTheWrapIntervalAndTextForms) {
  CIntvlSet a(0, 4, 7, -1);
  CIntvlSet b(0, 4, 7, -1);
  b.SetWrapIntvl(12);
  EXPECT_EQ(a, b);
  EXPECT_NE(a, CIntvlSet(0, 4, -1));

  EXPECT_EQ(a.TraceString(), "CIntvlSet: (0, 4, 7 )");
  EXPECT_EQ(CIntvlSet().TraceString(), "CIntvlSet: ( )");
  EXPECT_EQ((CIntvlSet{-3, 14}.StringForInitializerList()), "CIntvlSet{-3, 14}");
  EXPECT_TRUE(CIntvlSet::AutoTest());
}

}  // namespace
}  // namespace harmony
