#include "harmony/chords/ChordSymbolParser.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace harmony {
namespace {

constexpr CKeyEnh kNoKey;
constexpr CKeyEnh kC(0, TEnh_n), kCSharp(1, TEnh_s), kDFlat(1, TEnh_b), kE(4, TEnh_n);
constexpr CKeyEnh kF(5, TEnh_n), kGSharp(8, TEnh_s), kAFlat(8, TEnh_b), kA(9, TEnh_n);
constexpr CKeyEnh kBFlat(10, TEnh_b), kB(11, TEnh_n), kCFlat(11, TEnh_b), kG(7, TEnh_n);

constexpr std::uint64_t Bits(std::initializer_list<int> intvls) {
  std::uint64_t word = 0;
  for (int intvl : intvls) word |= std::uint64_t{1} << intvl;
  return word;
}

CChordLite Parse(const std::string& text,
                 const CChordNamePrefs& namePrefs = GetCurrentChordNamePrefs()) {
  CChordLite chord;
  SetFromString(text, chord, ChordSetFromStringPrefs(), namePrefs);
  return chord;
}

// Spellings that must all read as the same chord.
struct Case {
  std::initializer_list<const char*> texts;
  CKeyEnh root;
  std::uint64_t mask;
  CKeyEnh bass = kNoKey;
};

void ExpectParses(std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    for (const char* text : c.texts) {
      const CChordLite chord = Parse(text);
      EXPECT_EQ(chord.RootKeyEnh, c.root) << text;
      EXPECT_EQ(chord.Semitones.Word(), c.mask) << text << " gives " << chord.Semitones.Word();
      EXPECT_EQ(chord.BassKeyEnh, c.bass) << text;
    }
  }
}

TEST(ChordSymbolParser, BasicChordsAndSevenths) {
  ExpectParses({
      {{"C", "C+", "  C  "}, kC, 145},  // "+" is no keyword and stepped over
      // The text is lowered first, so "M" is minor; "ma" is "m" and a stepped-over "a".
      {{"Cm", "Cmin", "Cmi", "Cmoll", "C-", "C M", "Cma"}, kC, 137},
      {{"Caug"}, kC, Bits({0, 4, 8})},
      {{"Cdim"}, kC, Bits({0, 3, 6})},
      {{"Csus2", "Csus 2", "Cs2"}, kC, Bits({0, 2, 7})},
      {{"Csus4", "Csus"}, kC, Bits({0, 5, 7})},
      {{"C5", "Cdrone", "Cno3", "Comit3", "C no 3"}, kC, Bits({0, 7})},
      {{"Cxyz"}, CKeyEnh(2, TEnh_ss), 145},  // "x" is the double sharp
      {{"C7", "Cseventh", "C7alt"}, kC, Bits({0, 4, 7, 10})},
      {{"Cm7", "CM7", "Cmm7", "C-7", "C M7"}, kC, Bits({0, 3, 7, 10})},
      {{"Cdim7"}, kC, Bits({0, 3, 6, 9})},
      {{"Cm7b5"}, kC, Bits({0, 3, 6, 10})},
      {{"Cmaj", "Cmaj7", "Cmaj 7", "Cma7", "Cma 7", "Cj7", "C\u25B3", "C\u25B5"},
       kC,
       Bits({0, 4, 7, 11})},
      // The triangle alone is the keyword; a 7 behind it adds the minor seventh as well.
      {{"C\u25B37"}, kC, Bits({0, 4, 7, 10, 11})},
      {{"Cmmaj7", "Cm(maj7)"}, kC, Bits({0, 3, 7, 11})},
      {{"C7sus4", "C7sus4 3"}, kC, Bits({0, 5, 7, 10})},  // the sus option erases the third
      {{"Csus4 3"}, kC, Bits({0, 4, 5, 7})},              // the sus triad does not
  });
}

TEST(ChordSymbolParser, TensionsInTheOrderOfTheKeywordTable) {
  ExpectParses({
      {{"C9"}, kC, Bits({0, 2, 4, 7, 10})},
      {{"C11"}, kC, Bits({0, 2, 4, 5, 7, 10})},
      {{"C13"}, kC, Bits({0, 2, 4, 7, 9, 10})},
      {{"C6"}, kC, Bits({0, 4, 7, 9})},
      // The ninth after the sixth brings no seventh; a digit behind the slash is no bass.
      {{"C6/9", "C 6 add9"}, kC, Bits({0, 2, 4, 7, 9})},
      {{"Cadd9", "Cadd 2"}, kC, Bits({0, 2, 4, 7})},
      {{"Cadd#11"}, kC, Bits({0, 4, 6, 7})},
      {{"C7#5", "C7\u266F5"}, kC, Bits({0, 4, 8, 10})},
      {{"C7b5"}, kC, Bits({0, 4, 6, 10})},
      // Parentheses and commas are stepped over.
      {{"C7b9", "C7(b9)", "C7,b9", "C7\u266D9"}, kC, Bits({0, 1, 4, 7, 10})},
      {{"C7#9"}, kC, Bits({0, 3, 4, 7, 10})},
      {{"C7#11"}, kC, Bits({0, 4, 6, 7, 10})},
      {{"C13b9"}, kC, Bits({0, 1, 2, 4, 7, 9, 10})},
      {{"Cm11"}, kC, Bits({0, 2, 3, 5, 7, 10})},
      {{"C9sus4"}, kC, Bits({0, 2, 5, 7, 10})},
      // "maj" is found before "maj9" can be, so its ninth comes without a seventh; "ma9" and
      // "j9" reach the major-ninth keywords. All give the same mask.
      {{"Cmaj9", "Cma9", "Cj9"}, kC, Bits({0, 2, 4, 7, 11})},
      // "b13" adds the flat sixth, not 20: a 7b13 is a 7 with a flat sixth.
      {{"C7b13", "C7 b6"}, kC, Bits({0, 4, 7, 8, 10})},
      {{"Cno3 b3", "C3 no3"}, kC, Bits({0, 7})},  // erasing wins wherever it stands
      {{"C7 123"}, kC, Bits({0, 4, 7, 10})},      // an unknown run of digits goes as a whole
  });
}

TEST(ChordSymbolParser, RootsAccidentalsAndBasses) {
  ExpectParses({
      {{"C/E", "C/e", "C / E"}, kC, 145, kE},
      {{"Am/C"}, kA, 137, kC},
      {{"C#m7b5/G#"}, kCSharp, Bits({0, 3, 6, 10}), kGSharp},
      {{"Cis7", "C\u266F7", "C#7"}, kCSharp, Bits({0, 4, 7, 10})},
      {{"H7"}, kB, Bits({0, 4, 7, 10})},
      {{"Cb9"}, kCFlat, Bits({0, 2, 4, 7, 10})},
      {{"C/Bb", "C/B\u266D"}, kC, 145, kBFlat},
      {{"D\u266Dmaj7/A\u266D"}, kDFlat, Bits({0, 4, 7, 11}), kAFlat},
      // "bb" before "5" is a flat and a flat fifth.
      {{"Cbb5"}, kCFlat, Bits({0, 4, 6})},
      {{"Bb5"}, kBFlat, Bits({0, 7})},
      // A digit behind the slash means no bass, and the bass letters read as options.
      {{"C/Bb5"}, kC, Bits({0, 4, 6})},
      {{"C/", "C/X"}, kC, 145},
      {{"C/E/G"}, kC, 145, kG},  // the last slash counts
      // Text without a note letter keeps what it says under an undefined root.
      {{"", "   ", "xyz"}, kNoKey, 145},
      {{" -"}, kNoKey, 137},  // "-" is undefined only at the very start
      {{"/E"}, kNoKey, 145, kE},
  });
}

TEST(ChordSymbolParser, UndefinedNoChordAndNamePreferences) {
  for (const char* text : {"-", "-7", "Undef", "undefined", "UNDEF C"}) {
    EXPECT_EQ(Parse(text), CChordLite()) << text;
  }
  for (const char* text : {"nochord", "NoChord", "NoChordForce"}) {
    EXPECT_EQ(Parse(text), CChordLite_NoChordForce) << text;
  }
  EXPECT_TRUE(Parse("NoChordYield").IsNoChordYield());

  CChordNamePrefs prefs;
  prefs.BIsBFlat = 1;
  EXPECT_EQ(Parse("B7", prefs).RootKeyEnh, kBFlat);
  EXPECT_EQ(Parse("C/B", prefs).BassKeyEnh, kBFlat);
  prefs.SlashString.clear();
  EXPECT_EQ(Parse("C/E", prefs), CChordLite(kC, CSemitones(145)));
  prefs.SlashString = "|/";
  EXPECT_EQ(Parse("C|E", prefs).BassKeyEnh, kE);
  EXPECT_FALSE(Parse("C|E").HasBassNote());
}

TEST(ChordSymbolParser, HelperStateConstructorsAndChordWithScale) {
  CChordSetFromStringHelper helper;
  CChordLite chord;
  const ChordSetFromStringPrefs prefs;
  const CChordNamePrefs& names = GetCurrentChordNamePrefs();
  const std::pair<const char*, int> codes[] = {{"Cmaj7", 0},  {"Cm7", 2},    {"Caug", 3},
                                               {"Cdim7", 5},  {"Csus", 6},   {"Csus2", 7},
                                               {"Cdrone", 8}, {"nochord", 0}};
  for (const auto& [text, code] : codes) {
    helper.SetFromString(text, chord, prefs, names);
    EXPECT_EQ(helper.BasicChordCode, code) << text;
  }
  helper.SetFromString("D\u266D\u25B3 ADD\u266F11", chord, prefs, names);
  EXPECT_EQ(helper.LoweredText, "db\u25B3 add#11");
  EXPECT_EQ(chord, CChordLite(kDFlat, CSemitones(Bits({0, 4, 6, 7, 11}))));

  // Reading again replaces everything, including a bass and the directions.
  const CChordLite cm7OverE(kC, CSemitones(Bits({0, 3, 7, 10})), kE);
  EXPECT_EQ(CChordLite(std::string("Cm7/E"), prefs, names), cm7OverE);
  EXPECT_EQ(CChordLite("Cm7/E", prefs, names), cm7OverE);
  chord = cm7OverE;
  chord.RootDir = 3;
  chord.SetFromString("F", prefs, names);
  EXPECT_TRUE(chord.EqualIncludingDir(CChordLite(kF, CSemitones(145))));

  const auto [major7, lydian] = ChordAndScaleFromString("Cmaj7;C lydian");
  EXPECT_EQ(major7, CChordLite(kC, CSemitones(Bits({0, 4, 7, 11}))));
  EXPECT_EQ(lydian, CScaleLite(kC, CSemitones(2773)));
  // The scale reader finds no root in "Lydian" but still the mode.
  EXPECT_EQ(ChordAndScaleFromString("Cmaj7;Lydian").second,
            CScaleLite(CKeyEnh(), CSemitones(2773)));
  EXPECT_EQ(ChordAndScaleFromString("Dm7").second, CScaleLite());
  EXPECT_EQ(ChordAndScaleFromString("Dm7; D dorian; E phrygian").second,
            CScaleLite(CKeyEnh(2, TEnh_n), CSemitones(1709)));
  // An empty text is one empty part: an undefined root over the major triad.
  EXPECT_EQ(ChordAndScaleFromString("").first.Semitones.Word(), 145u);
}

}  // namespace
}  // namespace harmony
