#include "harmony/chords/BasicChord.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace harmony {
namespace {

constexpr int kUndef = -129;

TEST(BasicChordName, NormalAndSpokenSymbols) {
  const std::array<const char*, 9> normal{"no3", "", "m", "aug", "b5", "dim", "sus4", "sus2", "5"};
  const std::array<const char*, 9> spoken{
      "no3", " major", "minor", "augmented", "major flat 5", "diminished", "sus4", "sus2", "5"};
  CChordNamePrefs speech;
  speech.AccessibilitySpoken = 1;
  for (int value = 0; value < 9; ++value) {
    const auto basicChord = static_cast<TBasicChord>(value);
    EXPECT_EQ(BasicChordName(basicChord, GetCurrentChordNamePrefs()), normal[value]) << value;
    EXPECT_EQ(BasicChordName(basicChord, speech), spoken[value]) << value;
  }
  // Anything beyond the nine triads is told as no triad, in both namings.
  EXPECT_EQ(BasicChordName(static_cast<TBasicChord>(9), GetCurrentChordNamePrefs()), "no3");
  EXPECT_EQ(BasicChordName(static_cast<TBasicChord>(200), speech), "no3");
  // Only the value 1 means speech.
  speech.AccessibilitySpoken = 2;
  EXPECT_EQ(BasicChordName(kBasicChordMajor, speech), "");
}

TEST(BasicChordName, MinorSymbolDroppedForSmallLetterNamingTwo) {
  CChordNamePrefs prefs;
  prefs.MinorNaming = 1;
  EXPECT_EQ(BasicChordName(kBasicChordMinor, prefs), "m");
  prefs.MinorNaming = 2;
  EXPECT_EQ(BasicChordName(kBasicChordMinor, prefs), "");
  EXPECT_EQ(BasicChordName(kBasicChordDim, prefs), "dim");  // only minor loses its symbol
  prefs.AccessibilitySpoken = 1;
  EXPECT_EQ(BasicChordName(kBasicChordMinor, prefs), "minor");  // speech always says it
}

TEST(BasicChord, DominantTriads) {
  const std::array<bool, 9> dominant{false, true, false, true, true, false, true, true, true};
  for (int value = 0; value < 9; ++value) {
    EXPECT_EQ(IsDominantBasicChord(static_cast<TBasicChord>(value)), dominant[value]) << value;
  }
  EXPECT_FALSE(IsDominantBasicChord(static_cast<TBasicChord>(9)));
  EXPECT_FALSE(IsDominantBasicChord(static_cast<TBasicChord>(255)));
}

TEST(ChordOption, SmallAndLargeIntvls) {
  const CSemitones major(145);
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(kChordOption7, major), std::make_pair(10, 11));
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(kChordOption9, major), std::make_pair(1, 2));
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(kChordOption11, major), std::make_pair(5, 6));
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(kChordOption13, major), std::make_pair(8, 9));
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(static_cast<TChordOption>(4), major),
            std::make_pair(kUndef, kUndef));

  // The flat fifth of a diminished triad is no eleventh: mask & 216 must be exactly 72.
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(kChordOption11, CSemitones(73)),
            std::make_pair(5, kUndef));
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(kChordOption11, CSemitones(73 | 1024)),
            std::make_pair(5, kUndef));
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(kChordOption11, CSemitones(73 | 128)),
            std::make_pair(5, 6));  // with a perfect fifth the 6 is a tension again
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(kChordOption11, CSemitones(81)),
            std::make_pair(5, 6));  // major flat 5 has a major third
  // The sharp fifth of an augmented triad is no flat thirteenth: mask & 400 must be 272.
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(kChordOption13, CSemitones(273)),
            std::make_pair(kUndef, 9));
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(kChordOption13, CSemitones(273 | 128)),
            std::make_pair(8, 9));
  EXPECT_EQ(SmallAndLargeIntvlsForSemitones(kChordOption13, CSemitones(1 | 8 | 256)),
            std::make_pair(8, 9));  // no major third: the 8 is a tension
}

// The option test on masks must agree with the interval pairs for every mask and option.
TEST(ChordOption, AgreesWithSemitonesHasChordOption) {
  for (std::uint64_t word = 0; word < 4096; ++word) {
    const CSemitones semitones(word);
    for (int value = 0; value < 5; ++value) {
      const auto option = static_cast<TChordOption>(value);
      const auto [small, large] = SmallAndLargeIntvlsForSemitones(option, semitones);
      EXPECT_EQ(semitones.HasChordOption(option),
                semitones.HasIntvl(small) || semitones.HasIntvl(large))
          << word << " option " << value;
    }
  }
}

}  // namespace
}  // namespace harmony
