#include <gtest/gtest.h>

#include <array>
#include <string_view>

#include "harmony/pitch/SetFromStringHelper.h"

namespace harmony {
namespace {

using namespace SetFromStringHelper;

TEST(SetFromStringHelper, PrefixMatchingTakesTheFirstKeywordInOrder) {
  const TKeywords longestFirst = {"maj7", "maj", "ma"};
  EXPECT_EQ(CompareLowercaseStrs(TSpaces_Prefix, longestFirst, "cmaj7#11", 1),
            std::make_pair(true, 4));
  const TKeywords shortestFirst = {"ma", "maj7"};
  EXPECT_EQ(CompareLowercaseStrs(TSpaces_Prefix, shortestFirst, "cmaj7#11", 1),
            std::make_pair(true, 2));
  EXPECT_FALSE(CompareLowercaseStrs(TSpaces_Prefix, longestFirst, "cmaj7", -1).first);
  EXPECT_FALSE(CompareLowercaseStrs(TSpaces_Prefix, longestFirst, "cmaj7", 9).first);
  EXPECT_FALSE(CompareLowercaseStrs(TSpaces_Prefix, TKeywords{}, "maj", 0).first);
  constexpr std::array<std::string_view, 2> views = {"sus4", "sus"};
  EXPECT_EQ(CompareLowercaseStrs(TSpaces_Prefix, views, "sus2", 0), std::make_pair(true, 3));
}

TEST(SetFromStringHelper, WholeRestMatchingIgnoresBlanks) {
  const TKeywords keywords = {"maj", "major"};
  EXPECT_FALSE(CompareLowercaseStrs(TSpaces_WholeRest, keywords, "maj7", 0).first);
  EXPECT_EQ(CompareLowercaseStrs(TSpaces_WholeRest, keywords, "major", 0), std::make_pair(true, 5));
  EXPECT_EQ(CompareLowercaseStrs(TSpaces_WholeRest, keywords, "maj  ", 0), std::make_pair(true, 3));
  // The blank count test alone would accept "m aj"; the text must still begin with the keyword.
  EXPECT_FALSE(CompareLowercaseStrs(TSpaces_WholeRest, keywords, "m aj", 0).first);
  EXPECT_FALSE(_RemainingLengthWithoutSpacesDiffers("maj", "x maj ", 1));
  EXPECT_TRUE(_RemainingLengthWithoutSpacesDiffers("maj", "x maj7", 1));
  EXPECT_TRUE(_RemainingLengthWithoutSpacesDiffers("maj", "maj", -1));
}

TEST(SetFromStringHelper, AdvancingSkippingAndLowering) {
  int pos = 0;
  SkipLeadingBlanks("  dim", pos);
  EXPECT_EQ(pos, 2);
  EXPECT_TRUE(
      CompareLowercaseStrsAndOnMatchAdvanceStringPos(TSpaces_Prefix, {"dim"}, "  dim7", pos).first);
  EXPECT_EQ(pos, 5);
  EXPECT_FALSE(
      CompareLowercaseStrsAndOnMatchAdvanceStringPos(TSpaces_Prefix, {"dim"}, "  dim7", pos).first);
  EXPECT_EQ(pos, 5);
  EXPECT_EQ(CompareStrs(TSpaces_WholeRest, {"dorian"}, "Dorian"), std::make_pair(true, 6));

  const CKeywordsAndNames names = {CKeywordsAndName({"mixolydian", "mixo"}, "Mixolydian"),
                                   CKeywordsAndName({"minor", "min", "m"}, "Minor")};
  int length = -1;
  const CKeywordsAndName* found = names.FindFirstMatching(TSpaces_Prefix, "a mixo", 2, &length);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->Name, "Mixolydian");
  EXPECT_EQ(length, 4);
  found = names.FindFirstMatching(TSpaces_WholeRest, "a mi", 2, &length);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(length, 0);
  EXPECT_EQ(names[1].MatchesKeywords(TSpaces_Prefix, "min7", 0), std::make_pair(true, 3));
}

TEST(SetFromStringHelper, KeywordListCheck) {
  EXPECT_TRUE(_AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(
      TKeywords{"sus 4", "sus4", "sus", "s 4", "s4"}));
  EXPECT_TRUE(_AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(TKeywords{}));
  // A prefix before its longer spelling, an empty keyword, a capital letter.
  for (const TKeywords& bad :
       {TKeywords{"m", "min"}, TKeywords{"maj", ""}, TKeywords{"Maj7", "maj"}}) {
    EXPECT_FALSE(_AssertStringsAreNotEmptyAndSortedBySizeAndLowerCase(bad)) << bad.front();
  }
}

}  // namespace
}  // namespace harmony
