#include "harmony/chords/LeadSheetChordReader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "TestPaths.h"
#include "harmony/chords/ChordSymbolParser.h"

namespace harmony {
namespace {

std::uint64_t MaskOf(const std::string& semitones) {
  std::istringstream in(semitones);
  std::uint64_t mask = 0;
  for (int intvl = 0; in >> intvl;) mask |= std::uint64_t{1} << (intvl % 12);
  return mask;
}

TEnh EnhOf(const std::string& sign) {
  if (sign == "bb") return TEnh_bb;
  if (sign == "b") return TEnh_b;
  if (sign == "s") return TEnh_s;
  if (sign == "ss") return TEnh_ss;
  return TEnh_n;
}

struct TRow {
  std::string symbol, root, semitones, bass;
};

std::vector<TRow> TableRows() {
  std::ifstream in(std::string(HARMONY_FIXTURES_DIR) + "/leadsheet-chords.txt");
  std::vector<TRow> rows;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    TRow row;
    std::getline(fields, row.symbol, '\t');
    std::getline(fields, row.root, '\t');
    std::getline(fields, row.semitones, '\t');
    std::getline(fields, row.bass, '\t');
    rows.push_back(row);
  }
  return rows;
}

// Symbols of fake books and chord books on many roots, with and without a bass: the tones
// chord books give them.
TEST(LeadSheetChordReader, ReadsTheTonesOfTheChordBookTable) {
  const std::vector<TRow> rows = TableRows();
  ASSERT_GE(rows.size(), 400u) << "tests/data/leadsheet-chords.txt is missing or short";
  for (const TRow& row : rows) {
    const TLeadSheetChordRead read = ReadLeadSheetChord(row.symbol);
    EXPECT_TRUE(read.ReadWhole()) << row.symbol << " leaves " << read.Unread(row.symbol);
    const std::size_t split = row.root.find_first_not_of("0123456789");
    const CKeyEnh root(std::stoi(row.root.substr(0, split)), EnhOf(row.root.substr(split)));
    EXPECT_EQ(read.Chord.RootKeyEnh, root) << row.symbol;
    EXPECT_EQ(read.Chord.Semitones.Word(), MaskOf(row.semitones))
        << row.symbol << " should be " << row.semitones;
    const int bass = row.bass == "-" ? kKeyNrUndef : std::stoi(row.bass);
    EXPECT_EQ(read.Chord.BassKeyEnh.KeyNr, bass) << row.symbol;
  }
}

// What is not understood is told with its offset, and the chord keeps what came before it.
TEST(LeadSheetChordReader, ReportsTheUnreadRest) {
  struct TCase {
    const char* text;
    TLeadSheetSymbolKind kind;
    const char* unread;
    std::uint32_t offset;
  };
  for (const TCase& c : {
           TCase{"Cmaj7 foo", TLeadSheetSymbolKind::kChord, "foo", 6},
           TCase{"  Dm7  ", TLeadSheetSymbolKind::kChord, "", 7},
           TCase{"C/", TLeadSheetSymbolKind::kChord, "/", 1},
           TCase{"C7(b9))", TLeadSheetSymbolKind::kChord, ")", 6},
           TCase{"C/E7", TLeadSheetSymbolKind::kChord, "7", 3},
           TCase{"C15", TLeadSheetSymbolKind::kChord, "15", 1},
           TCase{"Xm7", TLeadSheetSymbolKind::kNothing, "Xm7", 0},
           TCase{"", TLeadSheetSymbolKind::kNothing, "", 0},
           TCase{"N.C.", TLeadSheetSymbolKind::kNoChord, "", 4},
           TCase{"nc", TLeadSheetSymbolKind::kNoChord, "", 2},
           TCase{"N.C. G", TLeadSheetSymbolKind::kNoChord, "G", 5},
           TCase{"% x", TLeadSheetSymbolKind::kRepeat, "x", 2},
       }) {
    const TLeadSheetChordRead read = ReadLeadSheetChord(c.text);
    EXPECT_EQ(read.Kind, c.kind) << c.text;
    EXPECT_EQ(read.Unread(c.text), c.unread) << c.text;
    EXPECT_EQ(read.UnreadOffset, c.offset) << c.text;
    EXPECT_EQ(read.ReadWhole(),
              std::string(c.unread).empty() && c.kind != TLeadSheetSymbolKind::kNothing)
        << c.text;
  }
  EXPECT_EQ(ReadLeadSheetChord("Cmaj7 foo").Chord.Semitones.Word(), MaskOf("0 4 7 11"));
  EXPECT_TRUE(ReadLeadSheetChord("N.C.").Chord.IsNoChordForce());
  const CChordLite previous = ReadLeadSheetChord("Bb7").Chord;
  EXPECT_EQ(ReadLeadSheetChord(" % ", GetCurrentChordNamePrefs(), previous).Chord, previous);
}

// The symbols that read two ways, and the preference for the German B.
TEST(LeadSheetChordReader, DecidesAmbiguousSymbolsAsMusiciansDo) {
  const CKeyEnh kD(2, TEnh_n), kBFlat(10, TEnh_b), kB(11, TEnh_n);
  EXPECT_EQ(ReadLeadSheetChord("D\u00B07").Chord, CChordLite(kD, CSemitones(MaskOf("0 3 6 9"))));
  EXPECT_EQ(ReadLeadSheetChord("Do7").Chord.RootKeyEnh.KeyNr, 0);
  EXPECT_EQ(ReadLeadSheetChord("B").Chord.RootKeyEnh, kB);
  CChordNamePrefs german = GetCurrentChordNamePrefs();
  german.BIsBFlat = 1;
  EXPECT_EQ(ReadLeadSheetChord("B7", german).Chord.RootKeyEnh, kBFlat);
  EXPECT_EQ(ReadLeadSheetChord("H7", german).Chord.RootKeyEnh, kB);
  EXPECT_EQ(ReadLeadSheetChord("F/B", german).Chord.BassKeyEnh, kBFlat);
  // The sign right behind the letter is the root's.
  EXPECT_EQ(ReadLeadSheetChord("C#5").Chord, CChordLite(CKeyEnh(1, TEnh_s), CSemitones(129)));
  // The heavy chord keeps its wrap interval.
  CChordHeavy heavy(36);
  EXPECT_TRUE(ReadLeadSheetChord("Es7/G", heavy).ReadWhole());
  EXPECT_EQ(heavy.IntvlSet().WrapIntvl(), 36);
  EXPECT_EQ(heavy, ReadLeadSheetChord("Eb7/G").Chord.ToChordHeavy(36));
}

// Where both readers know the notation they give the same chord, so that hosts and the tool
// can switch to this reader without changing their everyday results.
TEST(LeadSheetChordReader, AgreesWithTheForgivingParserOnEverydaySymbols) {
  for (const char* text :
       {"C",     "Cm",       "C7",     "Cm7",     "Cmaj7", "Cma7",     "Cj7",    "Cdim",
        "Cdim7", "Cm7b5",    "Caug",   "Csus4",   "Csus2", "C7sus4",   "Csus",   "C5",
        "C6",    "Cm6",      "C6/9",   "C9",      "Cm9",   "C11",      "C13",    "Cadd9",
        "C7b9",  "C7#9",     "C7#11",  "C7b5",    "C7#5",  "Cm(maj7)", "Cno3",   "G7/B",
        "Am/G",  "Bbmaj7",   "F#m7b5", "Ebm7/Db", "C/E",   "Abmaj9",   "D7(b9)", "E7(#9)",
        "Bb13",  "F\u266F7", "Cmin7",  "Cmi7"}) {
    CChordLite seed;
    SetFromString(text, seed);
    const TLeadSheetChordRead read = ReadLeadSheetChord(text);
    EXPECT_TRUE(read.ReadWhole()) << text;
    EXPECT_EQ(read.Chord, seed) << text << ": " << read.Chord.Semitones.Word() << " vs "
                                << seed.Semitones.Word();
  }
}

}  // namespace
}  // namespace harmony
