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

struct Case {
  const char* text;
  CKeyEnh root;
  std::uint64_t mask;
  CKeyEnh bass = kNoKey;
};

void ExpectParses(std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    const CChordLite chord = Parse(c.text);
    EXPECT_EQ(chord.RootKeyEnh, c.root) << c.text;
    EXPECT_EQ(chord.Semitones.Word(), c.mask) << c.text << " gives " << chord.Semitones.Word();
    EXPECT_EQ(chord.BassKeyEnh, c.bass) << c.text;
  }
}

TEST(ChordSymbolParser, BasicChords) {
  ExpectParses({
      {"C", kC, 145},
      {"Cm", kC, 137},
      {"Cmin", kC, 137},
      {"Cmi", kC, 137},
      {"Cmoll", kC, 137},
      {"C-", kC, 137},
      {"C M", kC, 137},  // lowered first: M is minor
      {"Cma", kC, 137},  // "m", then a stepped-over "a"
      {"Caug", kC, Bits({0, 4, 8})},
      {"Cdim", kC, Bits({0, 3, 6})},
      {"Csus2", kC, Bits({0, 2, 7})},
      {"Csus 2", kC, Bits({0, 2, 7})},
      {"Cs2", kC, Bits({0, 2, 7})},
      {"Csus4", kC, Bits({0, 5, 7})},
      {"Csus", kC, Bits({0, 5, 7})},
      {"Cdrone", kC, Bits({0, 7})},
      {"C5", kC, Bits({0, 7})},
      {"C+", kC, 145},                     // no keyword: stepped over
      {"Cxyz", CKeyEnh(2, TEnh_ss), 145},  // "x" is the double sharp
      {"  F  ", kF, 145},
  });
}

TEST(ChordSymbolParser, SeventhsAndTheMajorSeventhSpellings) {
  ExpectParses({
      {"C7", kC, Bits({0, 4, 7, 10})},
      {"Cseventh", kC, Bits({0, 4, 7, 10})},
      {"Cm7", kC, Bits({0, 3, 7, 10})},
      {"CM7", kC, Bits({0, 3, 7, 10})},   // the same as Cm7
      {"Cmm7", kC, Bits({0, 3, 7, 10})},  // "m", a stepped-over "m", "7"
      {"C-7", kC, Bits({0, 3, 7, 10})},
      {"Cdim7", kC, Bits({0, 3, 6, 9})},
      {"Cm7b5", kC, Bits({0, 3, 6, 10})},
      {"Caug7", kC, Bits({0, 4, 8, 10})},
      {"Cmaj", kC, Bits({0, 4, 7, 11})},
      {"Cmaj7", kC, Bits({0, 4, 7, 11})},
      {"Cmaj 7", kC, Bits({0, 4, 7, 11})},
      {"Cma7", kC, Bits({0, 4, 7, 11})},
      {"Cma 7", kC, Bits({0, 4, 7, 11})},
      {"Cj7", kC, Bits({0, 4, 7, 11})},
      {"C\u25B3", kC, Bits({0, 4, 7, 11})},
      {"C\u25B5", kC, Bits({0, 4, 7, 11})},
      // The triangle alone is the keyword; a 7 behind it adds the minor seventh as well.
      {"C\u25B37", kC, Bits({0, 4, 7, 10, 11})},
      {"Cmmaj7", kC, Bits({0, 3, 7, 11})},
      {"Cm(maj7)", kC, Bits({0, 3, 7, 11})},
      {"C7sus4", kC, Bits({0, 5, 7, 10})},
      {"C7sus2", kC, Bits({0, 2, 7, 10})},
  });
}

TEST(ChordSymbolParser, TensionsAndTheirImpliedSevenths) {
  ExpectParses({
      {"C9", kC, Bits({0, 2, 4, 7, 10})},
      {"C11", kC, Bits({0, 2, 4, 5, 7, 10})},
      {"C13", kC, Bits({0, 2, 4, 7, 9, 10})},
      {"C6", kC, Bits({0, 4, 7, 9})},
      {"Cm6", kC, Bits({0, 3, 7, 9})},
      {"C6/9", kC, Bits({0, 2, 4, 7, 9})},  // the ninth after the sixth brings no seventh
      {"F 6 add9", kF, Bits({0, 2, 4, 7, 9})},
      {"Cadd9", kC, Bits({0, 2, 4, 7})},
      {"Cadd 2", kC, Bits({0, 2, 4, 7})},
      {"Cm add9", kC, Bits({0, 2, 3, 7})},
      {"Cadd#11", kC, Bits({0, 4, 6, 7})},
      {"Cadd4", kC, Bits({0, 4, 5, 7})},
      {"C7#5", kC, Bits({0, 4, 8, 10})},
      {"C7b5", kC, Bits({0, 4, 6, 10})},
      {"C7b9", kC, Bits({0, 1, 4, 7, 10})},
      {"C7(b9)", kC, Bits({0, 1, 4, 7, 10})},
      {"C7,b9", kC, Bits({0, 1, 4, 7, 10})},
      {"Cb9", kCFlat, Bits({0, 2, 4, 7, 10})},  // "Cb" is the root
      {"C7#9", kC, Bits({0, 3, 4, 7, 10})},
      {"C#9", kCSharp, Bits({0, 2, 4, 7, 10})},
      {"C7#11", kC, Bits({0, 4, 6, 7, 10})},
      {"C13b9", kC, Bits({0, 1, 2, 4, 7, 9, 10})},
      {"Cm11", kC, Bits({0, 2, 3, 5, 7, 10})},
      {"C9sus4", kC, Bits({0, 2, 5, 7, 10})},
      // "maj" is found before "maj9" could be, and the ninth then comes without a seventh;
      // "ma9" and "j9" reach the major-ninth entry. All three give the same mask.
      {"Cmaj9", kC, Bits({0, 2, 4, 7, 11})},
      {"Cma9", kC, Bits({0, 2, 4, 7, 11})},
      {"Cj9", kC, Bits({0, 2, 4, 7, 11})},
      // "b13" adds the flat sixth, not the interval 20: a 7b13 is a 7 with a flat sixth.
      {"C7b13", kC, Bits({0, 4, 7, 8, 10})},
      {"C7 b6", kC, Bits({0, 4, 7, 8, 10})},
      {"Cno3", kC, Bits({0, 7})},
      {"Comit3", kC, Bits({0, 7})},
      {"C no 3", kC, Bits({0, 7})},
      // Erasing wins, wherever the option stands.
      {"Cno3 b3", kC, Bits({0, 7})},
      {"C3 no3", kC, Bits({0, 7})},
      {"C7sus4 3", kC, Bits({0, 5, 7, 10})},
      {"Csus4 3", kC, Bits({0, 4, 5, 7})},  // the sus word of the basic chord erases nothing
      {"C7alt", kC, Bits({0, 4, 7, 10})},
  });
}

TEST(ChordSymbolParser, RootsAccidentalsAndBasses) {
  ExpectParses({
      {"C/E", kC, 145, kE},
      {"C/e", kC, 145, kE},
      {"C / E", kC, 145, kE},
      {"Am/C", kA, 137, kC},
      {"C#m7b5/G#", kCSharp, Bits({0, 3, 6, 10}), kGSharp},
      {"Cis7", kCSharp, Bits({0, 4, 7, 10})},
      {"H7", kB, Bits({0, 4, 7, 10})},
      {"Bb7", kBFlat, Bits({0, 4, 7, 10})},
      {"C/Bb", kC, 145, kBFlat},
      {"Gsus4/C", kG, Bits({0, 5, 7}), kC},
      // Unicode signs read like "#" and "b" in root, options and bass.
      {"C\u266Fm7", kCSharp, Bits({0, 3, 7, 10})},
      {"D\u266Dmaj7/A\u266D", kDFlat, Bits({0, 4, 7, 11}), kAFlat},
      {"C7\u266D9", kC, Bits({0, 1, 4, 7, 10})},
      {"C7\u266F5", kC, Bits({0, 4, 8, 10})},
      {"C/B\u266D", kC, 145, kBFlat},
      // "bb" before "5" is a flat and a flat fifth.
      {"Cbb5", kCFlat, Bits({0, 4, 6})},
      {"Bb5", kBFlat, Bits({0, 7})},
      // A digit behind the slash means no bass, and the bass letters then read as options.
      {"C/Bb5", kC, Bits({0, 4, 6})},
      {"C/", kC, 145},
      {"Cmaj7/", kC, Bits({0, 4, 7, 11})},
      {"C/X", kC, 145},
      // Only the last slash counts.
      {"C/E/G", kC, 145, kG},
  });
}

TEST(ChordSymbolParser, UndefinedAndNoChordWords) {
  for (const char* text : {"-", "-7", "Undef", "undefined", "UNDEF C"}) {
    const CChordLite chord = Parse(text);
    EXPECT_EQ(chord, CChordLite()) << text;
  }
  EXPECT_EQ(Parse("nochord"), CChordLite_NoChordForce);
  EXPECT_EQ(Parse("NoChord"), CChordLite_NoChordForce);
  EXPECT_EQ(Parse("NoChordForce"), CChordLite_NoChordForce);
  EXPECT_EQ(Parse("NoChordYield"), CChordLite_NoChordYield);
  EXPECT_TRUE(Parse("NoChordYield").IsNoChordYield());
  // Only at the very start: a leading blank makes "-" the minor sign of a missing root.
  const CChordLite blankMinus = Parse(" -");
  EXPECT_TRUE(blankMinus.IsUndef());
  EXPECT_EQ(blankMinus.Semitones.Word(), 137u);
  // Text without a note letter keeps what it says: an undefined root over a major triad.
  for (const char* text : {"", "   ", "xyz", "7"}) {
    const CChordLite chord = Parse(text);
    EXPECT_TRUE(chord.IsUndef()) << text;
    EXPECT_EQ(chord.RootKeyEnh.Enh, TEnh_Undef) << text;
  }
  EXPECT_EQ(Parse("").Semitones.Word(), 145u);
  EXPECT_EQ(Parse("7").Semitones.Word(), Bits({0, 4, 7, 10}));
  EXPECT_EQ(Parse("/E").BassKeyEnh, kE);
}

TEST(ChordSymbolParser, NamePreferencesChangeBAndTheSlash) {
  CChordNamePrefs bFlat;
  bFlat.BIsBFlat = 1;
  EXPECT_EQ(Parse("B7", bFlat).RootKeyEnh, kBFlat);
  EXPECT_EQ(Parse("C/B", bFlat).BassKeyEnh, kBFlat);
  EXPECT_EQ(Parse("H7", bFlat).RootKeyEnh, kB);

  CChordNamePrefs noSlash;
  noSlash.SlashString.clear();
  const CChordLite withoutBass = Parse("C/E", noSlash);
  EXPECT_FALSE(withoutBass.HasBassNote());
  EXPECT_EQ(withoutBass.Semitones.Word(), 145u);

  CChordNamePrefs barOrSlash;
  barOrSlash.SlashString = "|/";
  EXPECT_EQ(Parse("C|E", barOrSlash).BassKeyEnh, kE);
  EXPECT_EQ(Parse("C|E/G", barOrSlash).BassKeyEnh, kG);
  EXPECT_FALSE(Parse("C|E").HasBassNote());
}

TEST(ChordSymbolParser, HelperPassesAndLoweredText) {
  CChordSetFromStringHelper helper;
  CChordLite chord;
  const ChordSetFromStringPrefs prefs;
  struct CodeCase {
    const char* text;
    int code;
  };
  for (const CodeCase& c :
       {CodeCase{"C", 0}, CodeCase{"Cmaj7", 0}, CodeCase{"Cm7", 2}, CodeCase{"Caug", 3},
        CodeCase{"Cdim7", 5}, CodeCase{"Csus", 6}, CodeCase{"Csus2", 7}, CodeCase{"Cdrone", 8},
        CodeCase{"C5", 0}, CodeCase{"nochord", 0}}) {
    helper.SetFromString(c.text, chord, prefs, GetCurrentChordNamePrefs());
    EXPECT_EQ(helper.BasicChordCode, c.code) << c.text;
  }
  helper.SetFromString("D\u266D\u25B3 ADD\u266F11", chord, prefs, GetCurrentChordNamePrefs());
  EXPECT_EQ(helper.LoweredText, "db\u25B3 add#11");
  EXPECT_EQ(chord, CChordLite(kDFlat, CSemitones(Bits({0, 4, 6, 7, 11}))));

  // A run of digits that is no keyword is stepped over as a whole: "1" does not become "13".
  helper.LoweredText = "c1138";
  int pos = 1;
  helper._SkipLetterOrAllSequentialNumbers(pos);
  EXPECT_EQ(pos, 5);
  helper._SkipLetterOrAllSequentialNumbers(pos);
  EXPECT_EQ(pos, 5);
  helper.LoweredText = "c/e";
  pos = 1;
  helper._SkipLetterOrAllSequentialNumbers(pos);
  EXPECT_EQ(pos, 2);
  EXPECT_EQ(Parse("C7 123").Semitones.Word(), Bits({0, 4, 7, 10}));
}

TEST(ChordSymbolParser, ChordLiteConstructorsAndReset) {
  const ChordSetFromStringPrefs prefs;
  const CChordNamePrefs& names = GetCurrentChordNamePrefs();
  const CChordLite expected(kC, CSemitones(Bits({0, 3, 7, 10})), kE);
  EXPECT_EQ(CChordLite(std::string("Cm7/E"), prefs, names), expected);
  EXPECT_EQ(CChordLite("Cm7/E", prefs, names), expected);
  EXPECT_TRUE(CChordLite(static_cast<const char*>(nullptr), prefs, names).IsUndef());
  // Reading again replaces everything, including a bass and the directions.
  CChordLite chord = expected;
  chord.RootDir = 3;
  chord.SetFromString("F", prefs, names);
  EXPECT_TRUE(chord.EqualIncludingDir(CChordLite(kF, CSemitones(145))));
  chord.SetFromString("undef", prefs, names);
  EXPECT_EQ(chord, CChordLite());
}

TEST(ChordSymbolParser, ChordAndScale) {
  const auto [chord, scale] = ChordAndScaleFromString("Cmaj7;C lydian");
  EXPECT_EQ(chord, CChordLite(kC, CSemitones(Bits({0, 4, 7, 11}))));
  EXPECT_EQ(scale, CScaleLite(kC, CSemitones(2773)));
  // The scale reader finds no root in "Lydian" but still the mode.
  const auto noRoot = ChordAndScaleFromString("Cmaj7;Lydian");
  EXPECT_TRUE(noRoot.second.IsUndef());
  EXPECT_EQ(noRoot.second.Semitones.Word(), 2773u);
  const auto withoutScale = ChordAndScaleFromString("Dm7");
  EXPECT_EQ(withoutScale.first, CChordLite(CKeyEnh(2, TEnh_n), CSemitones(Bits({0, 3, 7, 10}))));
  EXPECT_EQ(withoutScale.second, CScaleLite());
  const auto third = ChordAndScaleFromString("Dm7; D dorian; E phrygian");
  EXPECT_EQ(third.second, CScaleLite(CKeyEnh(2, TEnh_n), CSemitones(1709)));
  // An empty text is one empty part: an undefined root over the major triad.
  const auto empty = ChordAndScaleFromString("");
  EXPECT_TRUE(empty.first.IsUndef());
  EXPECT_EQ(empty.first.Semitones.Word(), 145u);
  EXPECT_EQ(ChordAndScaleFromString(";").first.Semitones.Word(), 145u);
}

}  // namespace
}  // namespace harmony
