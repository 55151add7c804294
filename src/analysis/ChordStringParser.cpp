#include "harmony/analysis/ChordStringParser.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <utility>

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

// Joins a token that begins with "ma" to the token before it, as the tokens arrive. After a
// join the next token is not looked at: it slid into the joined one's place in the list.
class TTokenMender {
 public:
  // Hands each finished token to `emit`.
  template <class TEmit>
  void Push(std::string token, TEmit&& emit) {
    if (_pending && !_skipNext && token.compare(0, 2, "ma") == 0) {
      *_pending += token;
      _skipNext = true;
      return;
    }
    if (_pending) emit(*_pending);
    _pending = std::move(token);
    _skipNext = false;
  }
  template <class TEmit>
  void Finish(TEmit&& emit) {
    if (_pending) emit(*_pending);
    _pending.reset();
  }

 private:
  std::optional<std::string> _pending;
  bool _skipNext = false;
};

// The next bar line at or after the position. A bar that isn't full is padded; one that
// is too long is no error. Without a bar length there are no bar lines to move to.
double NextBarLine(double position, double barLength) {
  if (!(barLength > 0.0)) return position;
  return barLength * std::ceil(position / barLength);
}

void WriteTokenList(std::ostream& out, const std::vector<std::string>& tokens) {
  out << '{';
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    out << (i == 0 ? "\"" : ", \"") << tokens[i] << '"';
  }
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

std::regex ChordListTokenizer(const std::string& pattern) {
#if defined(__GLIBCXX__)
  try {
    return std::regex(pattern, std::regex::ECMAScript | std::regex_constants::__polynomial);
  } catch (const std::regex_error&) {
    // Back-references need the backtracking matcher.
  }
#endif
  return std::regex(pattern, std::regex::ECMAScript);
}

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
  std::vector<std::string> mended;
  mended.reserve(tokens.size());
  const auto keep = [&mended](std::string& token) { mended.push_back(std::move(token)); };
  TTokenMender mender;
  for (std::string& token : tokens) mender.Push(std::move(token), keep);
  mender.Finish(keep);
  tokens = std::move(mended);
}

// The tokens are mended as the tokenizer finds them, so that a long piece never holds all
// of its tokens at once.
CHarmAnlsChords ParseStringIntoHarmAnlsChords::ParseIntoChords(const std::string& text,
                                                               const TChordStringParse& parse) {
  CHarmAnlsChords chords;
  if (text.empty()) return chords;
  double position = 0.0;
  const auto place = [&](const std::string& token) {
    if (token.empty()) return;
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
  };
  // The pieces between the tokenizer's matches; a match at the very start gives an empty
  // first piece.
  const std::string copy = WithoutBracesAndHyphens(text);
  TTokenMender mender;
  for (std::sregex_token_iterator it(copy.begin(), copy.end(), parse.Tokenizer, -1), end; it != end;
       ++it) {
    mender.Push(it->str(), place);
  }
  mender.Finish(place);
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
