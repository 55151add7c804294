#include <gtest/gtest.h>

#include "harmony/guitar/GChChordFunctions.h"

namespace harmony {
namespace {

TEST(GChChordFunctions, PitchStringsParse) {
  EXPECT_EQ(GChMidiPitchForPitchString("C-2"), 0);
  EXPECT_EQ(GChMidiPitchForPitchString("C-1"), 12);
  EXPECT_EQ(GChMidiPitchForPitchString("C3"), 60);
  EXPECT_EQ(GChMidiPitchForPitchString("  e2"), 52);
  EXPECT_EQ(GChMidiPitchForPitchString("G8"), 127);
  EXPECT_EQ(GChMidiPitchForPitchString("G#8"), -1);  // 128
  EXPECT_EQ(GChMidiPitchForPitchString("Bb2"), 58);
  EXPECT_EQ(GChMidiPitchForPitchString("F#4"), 78);
  // The accidental wraps within the octave: C flat is B of the same octave number, B sharp C.
  EXPECT_EQ(GChMidiPitchForPitchString("Cb3"), 71);
  EXPECT_EQ(GChMidiPitchForPitchString("B#3"), 60);
  // An accidental needs something behind it; other letters and octaves are refused.
  EXPECT_EQ(GChMidiPitchForPitchString("C#"), -1);
  EXPECT_EQ(GChMidiPitchForPitchString("Cb"), -1);
  EXPECT_EQ(GChMidiPitchForPitchString(""), -1);
  EXPECT_EQ(GChMidiPitchForPitchString("   "), -1);
  EXPECT_EQ(GChMidiPitchForPitchString("H3"), -1);
  EXPECT_EQ(GChMidiPitchForPitchString("C"), -1);
  EXPECT_EQ(GChMidiPitchForPitchString("C-3"), -1);
  EXPECT_EQ(GChMidiPitchForPitchString("C10"), -1);
  // Every name written reads back as its pitch.
  for (int pitch = 0; pitch < 128; ++pitch) {
    EXPECT_EQ(GChMidiPitchForPitchString(GChMidiPitchDefaultName(pitch)), pitch) << pitch;
  }
}

TEST(GChChordFunctions, PitchNames) {
  EXPECT_EQ(GChMidiPitchDefaultName(60), "C3");
  EXPECT_EQ(GChMidiPitchDefaultName(0), "C-2");
  EXPECT_EQ(GChMidiPitchDefaultName(127), "G8");
  EXPECT_EQ(GChMidiPitchDefaultName(56), "G#2");
  EXPECT_EQ(GChOctPitchDefaultName(10), "A#");
  EXPECT_EQ(GChOctPitchDefaultName(12), "");
  const std::vector<std::string> spelled{"C",  "C#", "Db", "D",  "D#", "Eb", "E",  "F", "F#",
                                         "Gb", "G",  "G#", "Ab", "A",  "A#", "Bb", "B"};
  for (int i = 0; i < 17; ++i) EXPECT_EQ(GChEnhPitchName(i), spelled[i]);
  EXPECT_EQ(GChEnhPitchName(17), "");
  EXPECT_EQ(GChEnhPitchName(-1), "");
}

TEST(GChChordFunctions, ChordTypesByIndex) {
  ASSERT_EQ(GChNumberOfChordTypes(), 30);
  EXPECT_EQ(GChChordTypeIdForIndex(0), 1);
  EXPECT_EQ(GChChordTypeNameForIndex(0), "major");
  EXPECT_EQ(GChChordTypeIdForIndex(17), 101);
  EXPECT_EQ(GChChordTypeNameForIndex(17), "maj7 b5 #9");
  EXPECT_EQ(GChChordTypeIdForIndex(29), 30);
  EXPECT_EQ(GChChordTypeNameForIndex(29), "aug 7");
  // Indexes are clamped into the table.
  EXPECT_EQ(GChChordTypeIdForIndex(-4), 1);
  EXPECT_EQ(GChChordTypeNameForIndex(99), "aug 7");
  EXPECT_EQ(GChChordTypeNameForId(104), "minor 6 add9");
  EXPECT_EQ(GChChordTypeNameForId(4), "");
  // Ids are distinct and every one names its own row.
  for (int i = 0; i < GChNumberOfChordTypes(); ++i) {
    EXPECT_EQ(GChChordTypeNameForId(GChChordTypeIdForIndex(i)), GChChordTypeNameForIndex(i));
  }
}

TEST(GChChordFunctions, MusicalSymbols) {
  EXPECT_EQ(stringByConvertingMusicalSymbols(""), "");
  EXPECT_EQ(stringByConvertingMusicalSymbols("Bb7 #9"), "B\u266D7 \u266F9");
  // The letter b inside a word changes too.
  EXPECT_EQ(stringByConvertingMusicalSymbols("dim b"), "dim \u266D");
  EXPECT_EQ(stringByConvertingMusicalSymbols("sub"), "su\u266D");
}

}  // namespace
}  // namespace harmony
