#include "harmony/analysis/ChordStringParser.h"

#include "harmony/chords/LeadSheetChordReader.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>

#include "platform/BoundedRead.h"

namespace harmony {

namespace {

bool IsOneOf(std::string_view token, const std::vector<std::string>& list) {
  return std::find(list.begin(), list.end(), token) != list.end();
}

// Braces and hyphens carry no meaning in a chord list; a hyphen goes even where it would be
// a minus sign in a symbol (Am-7 reads as Am7).
// A symbol reader of the parse keeps the hyphens, which it reads as minus signs (C-7).
std::string WithoutBracesAndHyphens(const std::string& text, bool keepHyphens) {
  std::string copy;
  copy.reserve(text.size());
  std::copy_if(text.begin(), text.end(), std::back_inserter(copy),
               [keepHyphens](char c) { return c != '{' && c != '}' && (c != '-' || keepHyphens); });
  return copy;
}

// Joins a token that begins with "ma" to the token before it, as the tokens arrive. After a
// join the next token is not looked at: it slid into the joined one's place in the list.
// Tokens are views of text that outlives the mender; only a joined token is copied.
class TTokenMender {
 public:
  // Hands each finished token to `emit`.
  template <class TEmit>
  void Push(std::string_view token, TEmit&& emit) {
    if (_hasPending && !_skipNext && token.substr(0, 2) == "ma") {
      _joined.assign(_pending);
      _joined.append(token);
      _pending = _joined;
      _skipNext = true;
      return;
    }
    if (_hasPending) emit(_pending);
    _pending = token;
    _hasPending = true;
    _skipNext = false;
  }
  template <class TEmit>
  void Finish(TEmit&& emit) {
    if (_hasPending) emit(_pending);
    _hasPending = false;
  }

 private:
  std::string_view _pending;
  bool _hasPending = false;
  bool _skipNext = false;
  std::string _joined;
};

// The pieces of `text` between the tokenizer's matches, as std::regex_token_iterator gives
// them with -1: a match at the very start gives an empty first piece, text after the last
// match a last one. The run of white space is cut by its class without the engine.
template <class TPiece>
void ForEachPiece(std::string_view text, const CChordListTokenizer& tokenizer, TPiece&& piece) {
  if (!tokenizer.IsWhiteSpaceRun()) {
    for (std::cregex_token_iterator it(text.data(), text.data() + text.size(), tokenizer, -1), end;
         it != end; ++it) {
      piece(std::string_view(it->first, static_cast<std::size_t>(it->second - it->first)));
    }
    return;
  }
  const std::bitset<256>& space = tokenizer.WhiteSpace();
  const auto isSpace = [&](char c) { return space[static_cast<unsigned char>(c)]; };
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size();) {
    if (!isSpace(text[i])) {
      ++i;
      continue;
    }
    piece(text.substr(start, i - start));
    while (i < text.size() && isSpace(text[i])) ++i;
    start = i;
  }
  if (start < text.size()) piece(text.substr(start));
}

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

namespace {

constexpr const char* kWhiteSpaceRun = R"(\s+)";

std::regex Compiled(const std::string& pattern) {
#if defined(__GLIBCXX__)
  try {
    return std::regex(pattern, std::regex::ECMAScript | std::regex_constants::__polynomial);
  } catch (const std::regex_error&) {
    // Back-references need the backtracking matcher.
  }
#endif
  return std::regex(pattern, std::regex::ECMAScript);
}

// What "\s" matches in an expression of this locale: the space class of its character type.
std::bitset<256> WhiteSpaceOf(const std::locale& locale) {
  const auto& ctype = std::use_facet<std::ctype<char>>(locale);
  std::bitset<256> space;
  for (int c = 0; c < 256; ++c) {
    space[static_cast<std::size_t>(c)] = ctype.is(std::ctype_base::space, static_cast<char>(c));
  }
  return space;
}

}  // namespace

CChordListTokenizer::CChordListTokenizer() {
  // Compiled once; copies of an expression share its compiled form. An expression takes the
  // global locale of its making, so a host that changes it gets one made anew.
  static const CChordListTokenizer usual(kWhiteSpaceRun);
  *this = usual.getloc() == std::locale() ? usual : CChordListTokenizer(kWhiteSpaceRun);
}

CChordListTokenizer::CChordListTokenizer(const std::string& pattern)
    : std::regex(Compiled(pattern)), _isWhiteSpaceRun(pattern == kWhiteSpaceRun) {
  if (_isWhiteSpaceRun) _whiteSpace = WhiteSpaceOf(getloc());
}

CChordListTokenizer& CChordListTokenizer::operator=(const std::regex& regex) {
  std::regex::operator=(regex);
  _isWhiteSpaceRun = false;
  return *this;
}

CChordListTokenizer& CChordListTokenizer::operator=(std::regex&& regex) {
  std::regex::operator=(std::move(regex));
  _isWhiteSpaceRun = false;
  return *this;
}

std::locale CChordListTokenizer::imbue(std::locale locale) {
  _isWhiteSpaceRun = false;
  return std::regex::imbue(std::move(locale));
}

void CChordListTokenizer::swap(std::regex& other) {
  std::regex::swap(other);
  _isWhiteSpaceRun = false;
}

CChordListTokenizer ChordListTokenizer(const std::string& pattern) {
  return CChordListTokenizer(pattern);
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
  const auto keep = [&mended](std::string_view token) { mended.emplace_back(token); };
  TTokenMender mender;
  for (const std::string& token : tokens) mender.Push(token, keep);
  mender.Finish(keep);
  tokens = std::move(mended);
}

// The tokens are mended as the tokenizer finds them, so that a long piece never holds all
// of its tokens at once; they stay views of the text until a chord symbol is read.
CHarmAnlsChords ParseStringIntoHarmAnlsChords::ParseIntoChords(const std::string& text,
                                                               const TChordStringParse& parse) {
  CHarmAnlsChords chords;
  if (text.empty()) return chords;
  double position = 0.0;
  std::string symbol;  // one buffer for all chord symbols
  const auto place = [&](std::string_view token) {
    if (token.empty()) return;
    if (IsOneOf(token, parse.BarTokens)) {
      position = NextBarLine(position, parse.BarLength);
    } else if (IsOneOf(token, parse.BeatTokens)) {
      position += parse.BeatLength;
    } else if (parse.SymbolReader != nullptr) {
      if (token == "-") return;  // as if dropped, like every hyphen without a reader
      CChordLite previous;
      if (!chords.empty()) previous = chords.back();
      chords.emplace_back(parse.SymbolReader(token, previous, parse), position);
      position += parse.BeatLength;
    } else {
      CChordLite chord;
      symbol.assign(token);
      SetFromString(symbol, chord, parse.ChordPrefs, parse.NamePrefs);
      chords.emplace_back(chord, position);
      position += parse.BeatLength;
    }
  };
  const std::string copy = WithoutBracesAndHyphens(text, parse.SymbolReader != nullptr);
  // Every chord stands in a token of its own, and tokens are parted by at least one
  // character: room for all chords at once, so that a long piece isn't copied while the list
  // grows. Room that no chord takes is never touched.
  chords.reserve(copy.size() / 2 + 2);
  TTokenMender mender;
  ForEachPiece(copy, parse.Tokenizer, [&](std::string_view token) { mender.Push(token, place); });
  mender.Finish(place);
  // The end of the piece, told by an undefined chord; only a list with chords has one.
  if (!chords.empty()) chords.emplace_back(CChordLite(), position);
  return chords;
}

CChordLite ParseStringIntoHarmAnlsChords::ReadLeadSheetToken(std::string_view token,
                                                             const CChordLite& previous,
                                                             const TChordStringParse& parse) {
  return ChordOfLeadSheetRead(ReadLeadSheetChord(token, parse.NamePrefs, previous), token, parse);
}

CChordLite ParseStringIntoHarmAnlsChords::ChordOfLeadSheetRead(const TLeadSheetChordRead& read,
                                                               std::string_view token,
                                                               const TChordStringParse& parse) {
  CChordLite chord = read.Chord;
  if (read.Kind == TLeadSheetSymbolKind::kNothing) {
    SetFromString(std::string(token), chord, parse.ChordPrefs, parse.NamePrefs);
    return chord;
  }
  const auto simplify = CChordSetFromStringHelper::SimplifyBassNoteHook();
  if (read.Kind == TLeadSheetSymbolKind::kChord && parse.ChordPrefs.SimplifiesBassNote() &&
      simplify != nullptr) {
    const auto [simplified, result] = simplify(chord, CHarmCenterLite(), CSignKeyLite());
    if (simplified) chord = result;
  }
  return chord;
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
  platform::TBoundedRead read = platform::ReadBounded(path, platform::TReadKind::kChordList);
  if (!read) return std::nullopt;
  return std::move(read.bytes);
}

}  // namespace harmony
