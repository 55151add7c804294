#pragma once
// Chord lists written as text, such as a lead sheet reduced to a line of symbols with bar
// lines ("C . . . | F . G7 . | C"), read into analysis chords with positions in quarter
// notes. Each chord symbol goes to the chord-symbol parser; this layer decides where tokens
// end, what a bar line or a beat without a new chord is, and where the next chord falls.

#include <optional>
#include <ostream>
#include <regex>
#include <string>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony {

// How a chord list is cut into tokens and placed in time. The default reads lists such as
// "C . . . F . G ." with a lone "|" as bar line.
struct TChordStringParse : public TraceFamily<TChordStringParse> {
  // What lies between two tokens (ECMAScript grammar).
  std::regex Tokenizer{R"(\s+)"};
  // Quarter notes in one bar, and taken by one chord or one beat token.
  double BarLength = 4.0;
  double BeatLength = 1.0;
  // Tokens that move the position to the next bar line (a position on a bar line stays).
  std::vector<std::string> BarTokens{"|"};
  // Tokens that take one beat and start no chord.
  std::vector<std::string> BeatTokens{"."};
  // Kept for callers; the parser reads "/" as a chord symbol.
  std::vector<std::string> SlashTokens{"/"};
  ChordSetFromStringPrefs ChordPrefs;
  CChordNamePrefs NamePrefs;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

namespace ParseStringIntoHarmAnlsChords {

// The chords of the text at their positions, closed by an undefined chord at the end of the
// piece. A text without any chord symbol gives an empty list. Never fails: a token that is
// no chord symbol still gives a chord and takes a beat.
CHarmAnlsChords ParseIntoChords(const std::string& text, const TChordStringParse& parse);

// Joins a token that begins with "ma" to the token before it ("C maj7" is one chord). The
// token that slides into its place is not looked at, so of "C maj7 maj9" only the first
// joins.
void _CorrectTokenizationOf(std::vector<std::string>& tokens);

}  // namespace ParseStringIntoHarmAnlsChords

// The simpler form with explicit positions: "(0.0,C);(4.0,G7);(8.0,U)", "U" for an
// undefined chord. The distances of each chord are its root and bass key numbers (counted
// from C, not from a center); the list is neither sorted nor closed. An item without a comma
// gives no chord.
CHarmAnlsChords HarmChordsFromChordString(const std::string& text);

// The whole content of a chord-string file; empty when it can't be read.
std::optional<std::string> ReadChordStringFile(const std::string& path);

}  // namespace harmony
