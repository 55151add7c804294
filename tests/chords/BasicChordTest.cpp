#include "harmony/chords/BasicChord.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace harmony {
namespace {

constexpr int kUndef = -129;

TEST(BasicChord, NamesAndDominance) {
  const std::array<const char*, 9> normal{"no3", "", "m", "aug", "b5", "dim", "sus4", "sus2", "5"};
  const std::array<const char*, 9> spoken{
      "no3", " major", "minor", "augmented", "major flat 5", "diminished", "sus4", "sus2", "5"};
  const std::array<bool, 9> dominant{false, true, false, true, true, false, true, true, true};
  CChordNamePrefs speech;
  speech.AccessibilitySpoken = 1;
  for (int value = 0; value < 9; ++value) {
    const auto basicChord = static_cast<TBasicChord>(value);
    EXPECT_EQ(BasicChordName(basicChord, GetCurrentChordNamePrefs()), normal[value]) << value;
    EXPECT_EQ(BasicChordName(basicChord, speech), spoken[value]) << value;
    EXPECT_EQ(IsDominantBasicChord(basicChord), dominant[value]) << value;
  }
  const auto unknown = static_cast<TBasicChord>(9);
  EXPECT_EQ(BasicChordName(unknown, GetCurrentChordNamePrefs()), "no3");
  EXPECT_EQ(BasicChordName(unknown, speech), "no3");
  EXPECT_FALSE(IsDominantBasicChord(unknown));

  CChordNamePrefs prefs;
  prefs.MinorNaming = 1;
  EXPECT_EQ(BasicChordName(kBasicChordMinor, prefs), "m");
  prefs.MinorNaming = 2;  // the small root letter already says minor
  EXPECT_EQ(BasicChordName(kBasicChordMinor, prefs), "");
  EXPECT_EQ(BasicChordName(kBasicChordDim, prefs), "dim");
  prefs.AccessibilitySpoken = 2;  // only 1 means speech
  EXPECT_EQ(BasicChordName(kBasicChordMajor, prefs), "");
  prefs.AccessibilitySpoken = 1;
  EXPECT_EQ(BasicChordName(kBasicChordMinor, prefs), "minor");
}

TEST(ChordOption, SmallAndLargeIntvls) {
  const auto intvls = [](TChordOption option, std::uint64_t mask) {
    return SmallAndLargeIntvlsForSemitones(option, CSemitones(mask));
  };
  using P = std::pair<int, int>;
  EXPECT_EQ(intvls(kChordOption11, 145), P(5, 6));
  EXPECT_EQ(intvls(static_cast<TChordOption>(4), 145), P(kUndef, kUndef));
  // The flat fifth of a diminished triad (mask & 216 == 72) is no eleventh ...
  EXPECT_EQ(intvls(kChordOption11, 73 | 1024), P(5, kUndef));
  EXPECT_EQ(intvls(kChordOption11, 73 | 128), P(5, 6));
  EXPECT_EQ(intvls(kChordOption11, 81), P(5, 6));
  // ... and the sharp fifth of an augmented one (mask & 400 == 272) no flat thirteenth.
  EXPECT_EQ(intvls(kChordOption13, 273), P(kUndef, 9));
  EXPECT_EQ(intvls(kChordOption13, 273 | 128), P(8, 9));
  EXPECT_EQ(intvls(kChordOption13, 1 | 8 | 256), P(8, 9));

  // The option test on masks must agree with these pairs everywhere.
  for (std::uint64_t word = 0; word < 4096; ++word) {
    const CSemitones semitones(word);
    for (int value = 0; value < 5; ++value) {
      const auto option = static_cast<TChordOption>(value);
      const auto [small, large] = SmallAndLargeIntvlsForSemitones(option, semitones);
      ASSERT_EQ(semitones.HasChordOption(option),
                semitones.HasIntvl(small) || semitones.HasIntvl(large))
          << word << " option " << value;
    }
  }
}

}  // namespace
}  // namespace harmony
