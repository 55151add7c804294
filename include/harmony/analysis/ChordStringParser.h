#pragma once
// Chord lists written as text, such as a lead sheet reduced to a line of symbols with bar
// lines ("C . . . | F . G7 . | C"), read into analysis chords with positions in quarter
// notes. Each chord symbol goes to the chord-symbol parser; this layer decides where tokens
// end, what a bar line or a beat without a new chord is, and where the next chord falls.

#include <bitset>
#include <locale>
#include <optional>
#include <ostream>
#include <regex>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/analysis/HarmAnlsChord.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/chords/LeadSheetChordReader.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony {

// A tokenizer: a regular expression in the ECMAScript grammar. Where the standard library
// offers it, the matcher walks the text breadth-first, so that a long run of separators (a
// file of blank lines) can't exhaust the stack as backtracking does; a pattern with
// back-references keeps the backtracking matcher. For separators such as "\s+" both find the
// same matches.
//
// A tokenizer made from the pattern "\s+", the usual one, also remembers the white-space class
// of its locale: a run of white space is then found by that class directly, with the same
// pieces as the expression gives, and without the cost of the expression engine for every
// token. Any other expression put in, or a change through assign, imbue or swap, is matched
// by the expression engine.
class CChordListTokenizer : public std::regex {
 public:
  // The usual separator "\s+", compiled once and shared by the copies.
  CChordListTokenizer();
  explicit CChordListTokenizer(const std::string& pattern);
  // Any expression; matched by the expression engine.
  CChordListTokenizer(const std::regex& regex) : std::regex(regex) {}
  CChordListTokenizer(std::regex&& regex) : std::regex(std::move(regex)) {}
  CChordListTokenizer& operator=(const std::regex& regex);
  CChordListTokenizer& operator=(std::regex&& regex);
  // A pattern as text, as std::regex takes it.
  template <class TPattern>
  requires(!std::is_base_of_v<std::regex, std::decay_t<TPattern>>) CChordListTokenizer& operator=(
      TPattern&& pattern) {
    std::regex::operator=(std::forward<TPattern>(pattern));
    _isWhiteSpaceRun = false;
    return *this;
  }

  // The members of std::regex that change the expression forget the white-space run.
  template <class... TArgs>
  CChordListTokenizer& assign(TArgs&&... args) {
    std::regex::assign(std::forward<TArgs>(args)...);
    _isWhiteSpaceRun = false;
    return *this;
  }
  std::locale imbue(std::locale locale);
  void swap(std::regex& other);

  // Whether this is the run of white space, and then the white-space class by byte.
  bool IsWhiteSpaceRun() const { return _isWhiteSpaceRun; }
  const std::bitset<256>& WhiteSpace() const { return _whiteSpace; }

 private:
  bool _isWhiteSpaceRun = false;
  std::bitset<256> _whiteSpace;
};

// The tokenizer of `pattern`, as TChordStringParse keeps it.
CChordListTokenizer ChordListTokenizer(const std::string& pattern);

// How a chord list is cut into tokens and placed in time. The default reads lists such as
// "C . . . F . G ." with a lone "|" as bar line.
struct TChordStringParse : public TraceFamily<TChordStringParse> {
  // What lies between two tokens (ECMAScript grammar).
  CChordListTokenizer Tokenizer;
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
  // Reads one token into a chord, told the chord before it (for "%"). While none is set, the
  // forgiving chord-symbol parser reads each token and braces and hyphens are dropped from the
  // text first; a reader that is set gets hyphens inside tokens (C-7), and a lone "-" is still
  // no token. ParseStringIntoHarmAnlsChords::ReadLeadSheetToken is the lead-sheet reader.
  using TSymbolReader = CChordLite (*)(std::string_view token, const CChordLite& previous,
                                       const TChordStringParse& parse);
  TSymbolReader SymbolReader = nullptr;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

namespace ParseStringIntoHarmAnlsChords {

// The chords of the text at their positions, closed by an undefined chord at the end of the
// piece. A text without any chord symbol gives an empty list. Never fails: a token that is
// no chord symbol still gives a chord and takes a beat.
CHarmAnlsChords ParseIntoChords(const std::string& text, const TChordStringParse& parse);

// A token read by the lead-sheet reader (harmony/chords/LeadSheetChordReader.h): what it reads,
// "%" as the previous chord, and with the parse's chord preference the simplification of a
// bass note as the forgiving parser does it. A token it finds no root in (the forgiving
// parser's words "nochord" and "undef" among them) goes to the forgiving parser.
CChordLite ReadLeadSheetToken(std::string_view token, const CChordLite& previous,
                              const TChordStringParse& parse);
// The same for a token the lead-sheet reader has already read into `read`.
CChordLite ChordOfLeadSheetRead(const TLeadSheetChordRead& read, std::string_view token,
                                const TChordStringParse& parse);

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
