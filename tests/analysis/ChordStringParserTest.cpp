#include "harmony/analysis/ChordStringParser.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace harmony {
namespace {

using ParseStringIntoHarmAnlsChords::_CorrectTokenizationOf;
using ParseStringIntoHarmAnlsChords::ParseIntoChords;

CChordLite Symbol(const std::string& text) {
  return CChordLite(text, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs());
}

// (position, symbol) of each chord; "U" for an undefined one.
using TPlaced = std::vector<std::pair<double, std::string>>;

TPlaced Placed(const CHarmAnlsChords& chords) {
  TPlaced placed;
  for (const CHarmAnlsChordWithPos& chord : chords) {
    placed.emplace_back(chord.Position,
                        chord.IsUndef() ? "U" : chord.TraceName(GetChordNamePrefsNonUTF8()));
  }
  return placed;
}

TPlaced Parse(const std::string& text, const TChordStringParse& parse = TChordStringParse()) {
  return Placed(ParseIntoChords(text, parse));
}

TEST(ChordStringParser, BarLinesAndBeatsPlaceTheChords) {
  EXPECT_EQ(Parse("C G"), (TPlaced{{0, "C"}, {1, "G"}, {2, "U"}}));
  EXPECT_EQ(Parse("C | G |"), (TPlaced{{0, "C"}, {4, "G"}, {8, "U"}}));
  // A bar line on a bar line stays there; a bar line right at the start too.
  EXPECT_EQ(Parse("| C"), (TPlaced{{0, "C"}, {1, "U"}}));
  EXPECT_EQ(Parse("C . . . | | G"), (TPlaced{{0, "C"}, {4, "G"}, {5, "U"}}));
  EXPECT_EQ(Parse("C . . G"), (TPlaced{{0, "C"}, {3, "G"}, {4, "U"}}));
  // Three chords in a bar, then a bar too long for its bar length, which is no error.
  EXPECT_EQ(Parse("C F G | Am . . . . . | Dm7"),
            (TPlaced{{0, "C"}, {1, "F"}, {2, "G"}, {4, "Am"}, {12, "Dm7"}, {13, "U"}}));
  // Line ends and tabs are blanks like any other, and a long run of them is one separator.
  EXPECT_EQ(Parse("C" + std::string(300000, '\n') + "G"), (TPlaced{{0, "C"}, {1, "G"}, {2, "U"}}));
  EXPECT_EQ(Parse("C\t.\n|\r\nF"), (TPlaced{{0, "C"}, {4, "F"}, {5, "U"}}));
  // "/" is a chord symbol of the default parse, and unreadable tokens still take a beat.
  const CHarmAnlsChords odd = ParseIntoChords("C / ### G", TChordStringParse());
  ASSERT_EQ(odd.size(), 5U);
  EXPECT_EQ(odd[3].Position, 3.0);
  EXPECT_EQ(odd[3].RootKeyEnh.KeyNr, 7);
}

TEST(ChordStringParser, TextsWithoutChordSymbolsGiveNoList) {
  for (const char* text : {"", " ", "   \n ", "|", "| | |", ". . |"}) {
    EXPECT_TRUE(ParseIntoChords(text, TChordStringParse()).empty()) << '"' << text << '"';
  }
}

TEST(ChordStringParser, SymbolsSplitOrMarkedUpAreMended) {
  EXPECT_EQ(ParseIntoChords("Am-7", TChordStringParse())[0], CHarmAnlsChord(Symbol("Am7")));
  EXPECT_EQ(Parse("{C} {G7}"), (TPlaced{{0, "C"}, {1, "G7"}, {2, "U"}}));
  const CHarmAnlsChords cmaj7 = ParseIntoChords("C maj7", TChordStringParse());
  ASSERT_EQ(cmaj7.size(), 2U);
  EXPECT_EQ(cmaj7[0], CHarmAnlsChord(Symbol("Cmaj7")));
  EXPECT_EQ(cmaj7[1].Position, 1.0);
  // Only the first of two following "ma" tokens joins; a leading one stays alone.
  const CHarmAnlsChords twice = ParseIntoChords("C maj7 maj9 G", TChordStringParse());
  ASSERT_EQ(twice.size(), 4U);
  EXPECT_EQ(twice[0], CHarmAnlsChord(Symbol("Cmaj7")));
  EXPECT_EQ(twice[1], CHarmAnlsChord(Symbol("maj9")));
  EXPECT_EQ(twice[2].Position, 2.0);
  EXPECT_EQ(ParseIntoChords(" maj7 C", TChordStringParse())[0], CHarmAnlsChord(Symbol("maj7")));

  std::vector<std::string> tokens{"C", "maj7", "maj9", "G", "ma", "Ma7"};
  _CorrectTokenizationOf(tokens);
  EXPECT_EQ(tokens, (std::vector<std::string>{"Cmaj7", "maj9", "Gma", "Ma7"}));
  std::vector<std::string> first{"maj7"};
  _CorrectTokenizationOf(first);
  EXPECT_EQ(first, (std::vector<std::string>{"maj7"}));
}

TEST(ChordStringParser, ACallerChoosesTokensAndLengths) {
  TChordStringParse waltz;
  waltz.Tokenizer = std::regex("[\\s,]+");
  waltz.BarLength = 3.0;
  waltz.BeatLength = 0.5;
  waltz.BeatTokens = {".", "/"};
  waltz.BarTokens = {"||", "bar"};
  EXPECT_EQ(Parse("C,/ / || G,D bar Am", waltz),
            (TPlaced{{0, "C"}, {3, "G"}, {3.5, "D"}, {6, "Am"}, {6.5, "U"}}));
  // A pattern with a back-reference still tokenizes ("C;;G" splits at the doubled ";").
  TChordStringParse doubled;
  doubled.Tokenizer = ChordListTokenizer("(;)\\1");
  EXPECT_EQ(Parse("C;;G", doubled), (TPlaced{{0, "C"}, {1, "G"}, {2, "U"}}));
  // The list and its constructor read the same.
  CHarmAnlsChords chords{CHarmAnlsChordWithPos(Symbol("F"), 9)};
  chords.ParseStringIntoChords("C G", TChordStringParse());
  EXPECT_EQ(Placed(chords), Parse("C G"));
  EXPECT_EQ(Placed(CHarmAnlsChords("C,D", waltz)), (TPlaced{{0, "C"}, {0.5, "D"}, {1, "U"}}));
}

// The usual separator is cut by its white-space class, not by the expression engine; every
// byte must split, or not, as the expression "\s+" splits it, and a tokenizer changed through
// std::regex's members must go back to the engine.
TEST(ChordStringParser, WhiteSpaceRunCutsAsTheExpressionDoes) {
  TChordStringParse byEngine;
  byEngine.Tokenizer = std::regex(R"(\s+)", std::regex::ECMAScript);
  ASSERT_FALSE(byEngine.Tokenizer.IsWhiteSpaceRun());
  ASSERT_TRUE(TChordStringParse().Tokenizer.IsWhiteSpaceRun());
  const auto json = [](const CHarmAnlsChords& chords) {
    std::ostringstream out;
    chords.AppendJSONString(out);
    return out.str();
  };
  const std::string pieces[] = {"C", "maj7", "Dm7", "|", ".", "G7", "ma", "-", "{A}", "\u266D"};
  std::uint64_t seed = 5;
  const auto next = [&seed](std::uint64_t count) {
    seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
    return (seed >> 33) % count;
  };
  for (int byte = 0; byte < 256; ++byte) {
    for (int text = 0; text < 4; ++text) {
      std::string line;
      for (int token = 0; token < 8; ++token) {
        if (next(3) == 0) line += static_cast<char>(byte);
        line += pieces[next(std::size(pieces))];
        line += std::string(1 + next(3), next(2) == 0 ? ' ' : static_cast<char>(byte));
      }
      ASSERT_EQ(json(ParseIntoChords(line, TChordStringParse())),
                json(ParseIntoChords(line, byEngine)))
          << "byte " << byte << ": " << line;
    }
  }
  TChordStringParse changed;
  changed.Tokenizer.assign(",");
  EXPECT_FALSE(changed.Tokenizer.IsWhiteSpaceRun());
  EXPECT_EQ(Parse("C G A,F", changed).size(), 3U);  // "C G A" and "F", then the closing chord
  changed.Tokenizer = ChordListTokenizer(R"(\s+)");
  EXPECT_TRUE(changed.Tokenizer.IsWhiteSpaceRun());
  changed.Tokenizer = "[,]";
  EXPECT_EQ(Parse("C,G", changed), Parse("C G"));
}

TEST(ChordStringParser, PositionedFormCountsDistancesFromC) {
  const CHarmAnlsChords chords = HarmChordsFromChordString("(8.0,U);(0.0,G7);(4,C/E);x,F;(2.5);");
  ASSERT_EQ(chords.size(), 4U);
  EXPECT_TRUE(chords[0].IsUndef());
  EXPECT_EQ(chords[0].Position, 8.0);
  EXPECT_EQ(chords[0].RootDistToHarmCenter, -1);
  EXPECT_EQ(chords[1], CHarmAnlsChord(Symbol("G7"), 7, -1));
  EXPECT_EQ(chords[1].Position, 0.0);
  EXPECT_EQ(chords[2].RootDistToHarmCenter, 0);
  EXPECT_EQ(chords[2].BassDistToHarmCenter, 4);
  EXPECT_EQ(chords[2].Position, 4.0);
  // A position that is no number reads as 0; no closing chord is added.
  EXPECT_EQ(chords[3].Position, 0.0);
  EXPECT_EQ(chords[3].RootDistToHarmCenter, 5);
  EXPECT_TRUE(HarmChordsFromChordString("").empty());
}

}  // namespace
}  // namespace harmony
