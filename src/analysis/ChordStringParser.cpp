#include "harmony/analysis/ChordStringParser.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "HarmAnlsText.h"

namespace harmony {

namespace {

bool IsOneOf(const std::string& token, const std::vector<std::string>& list) {
  return std::find(list.begin(), list.end(), token) != list.end();
}

// Braces and hyphens carry no meaning in a chord list; a hyphen goes even where it would be
// a minus sign in a symbol (Am-7 reads as Am7).
std::string WithoutBracesAndHyphens(const std::string& text) {
  std::string copy;
  copy.reserve(text.size());
  std::copy_if(text.begin(), text.end(), std::back_inserter(copy),
               [](char c) { return c != '{' && c != '}' && c != '-'; });
  return copy;
}

// The pieces between the matches of the tokenizer; a match at the very start gives an
// empty first piece.
std::vector<std::string> Tokens(const std::string& text, const std::regex& tokenizer) {
  std::vector<std::string> tokens;
  std::sregex_token_iterator it(text.begin(), text.end(), tokenizer, -1);
  for (; it != std::sregex_token_iterator(); ++it) tokens.push_back(it->str());
  return tokens;
}

// The next bar line at or after the position. A bar that isn't full is padded; one that
// is too long is no error. Without a bar length there are no bar lines to move to.
double NextBarLine(double position, double barLength) {
  if (!(barLength > 0.0)) return position;
  return barLength * std::ceil(position / barLength);
}

void WriteTokenList(std::ostream& out, const std::vector<std::string>& tokens) {
  out << '{';
  for (std::size_t i = 0; i < tokens.size(); ++i)
    out << (i == 0 ? "\"" : ", \"") << tokens[i] << '"';
  out << '}';
}

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> pieces;
  std::string piece;
  std::istringstream in(text);
  while (std::getline(in, piece, separator)) pieces.push_back(piece);
  return pieces;
}

}  // namespace

// --- TChordStringParse

void TChordStringParse::WriteTrace(std::ostream& out) const {
  out << "TChordStringParse: BarLength ";
  AppendHarmAnlsFixedDouble(out, BarLength);
  out << ", BeatLength ";
  AppendHarmAnlsFixedDouble(out, BeatLength);
  out << ", BarTokens ";
  WriteTokenList(out, BarTokens);
  out << ", BeatTokens ";
  WriteTokenList(out, BeatTokens);
  out << ", SlashTokens ";
  WriteTokenList(out, SlashTokens);
}

void TChordStringParse::WriteTraceBrief(std::ostream& out) const { WriteTrace(out); }

void TChordStringParse::WriteInitializerList(std::ostream& out) const {
  out << "TChordStringParse(" << BarLength << ", " << BeatLength << ", ";
  WriteTokenList(out, BarTokens);
  out << ", ";
  WriteTokenList(out, BeatTokens);
  out << ", ";
  WriteTokenList(out, SlashTokens);
  out << ')';
}

// --- The parser

void ParseStringIntoHarmAnlsChords::_CorrectTokenizationOf(std::vector<std::string>& tokens) {
  for (std::size_t i = 1; i < tokens.size(); ++i) {
    if (tokens[i].compare(0, 2, "ma") == 0) {
      tokens[i - 1] += tokens[i];
      tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(i));
    }
  }
}

CHarmAnlsChords ParseStringIntoHarmAnlsChords::ParseIntoChords(const std::string& text,
                                                               const TChordStringParse& parse) {
  CHarmAnlsChords chords;
  if (text.empty()) return chords;
  std::vector<std::string> tokens = Tokens(WithoutBracesAndHyphens(text), parse.Tokenizer);
  _CorrectTokenizationOf(tokens);

  double position = 0.0;
  for (const std::string& token : tokens) {
    if (token.empty()) continue;
    if (IsOneOf(token, parse.BarTokens)) {
      position = NextBarLine(position, parse.BarLength);
    } else if (IsOneOf(token, parse.BeatTokens)) {
      position += parse.BeatLength;
    } else {
      CChordLite chord;
      SetFromString(token, chord, parse.ChordPrefs, parse.NamePrefs);
      chords.emplace_back(chord, position);
      position += parse.BeatLength;
    }
  }
  // The end of the piece, told by an undefined chord; only a list with chords has one.
  if (!chords.empty()) chords.emplace_back(CChordLite(), position);
  return chords;
}

CHarmAnlsChords::CHarmAnlsChords(const std::string& text, const TChordStringParse& parse)
    : CHarmAnlsChords(ParseStringIntoHarmAnlsChords::ParseIntoChords(text, parse)) {}

void CHarmAnlsChords::ParseStringIntoChords(const std::string& text,
                                            const TChordStringParse& parse) {
  *this = ParseStringIntoHarmAnlsChords::ParseIntoChords(text, parse);
}

CHarmAnlsChords HarmChordsFromChordString(const std::string& text) {
  CHarmAnlsChords chords;
  for (std::string item : Split(text, ';')) {
    std::erase(item, '(');
    std::erase(item, ')');
    const std::vector<std::string> pieces = Split(item, ',');
    if (pieces.size() < 2) continue;
    const double position = std::strtod(pieces[0].c_str(), nullptr);
    if (pieces[1] == "U") {
      chords.emplace_back(CChordLite(), position);
      continue;
    }
    CChordLite chord;
    SetFromString(pieces[1], chord, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs());
    // Distances from C: the form names keys, not functions.
    const int bassDist = chord.HasBassNote() ? chord.BassKeyEnh.KeyNr : -1;
    chords.emplace_back(CHarmAnlsChord(chord, chord.RootKeyEnh.KeyNr, bassDist), position);
  }
  return chords;
}

std::optional<std::string> ReadChordStringFile(const std::string& path) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) return std::nullopt;
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::ostringstream content;
  content << in.rdbuf();
  if (in.bad()) return std::nullopt;
  return content.str();
}

}  // namespace harmony
