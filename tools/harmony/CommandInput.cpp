// The tool's strict readers of chord symbols, keys, scales, notes and numbers, and standard
// input (see the rule in Command.h). Each reader first lets the library read the text as it
// always does, then checks that nothing was stepped over.

#include <unistd.h>

#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <sstream>

#include "Command.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/chords/LeadSheetChordReader.h"
#include "harmony/chords/ScaleNameReader.h"
#include "harmony/pitch/KeyNames.h"
#include "harmony/pitch/SetFromStringHelper.h"
#include "platform/BoundedRead.h"

namespace harmony::tool {

namespace {

bool gLenient = false;
TSymbolReader gSymbolReader = TSymbolReader::kLeadSheet;

const char* const kLenientHint = " (--lenient reads it as the library does)";

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

bool IsBlank(const std::string& text, std::size_t from) {
  return text.find_first_not_of(' ', from) == std::string::npos;
}

// The place in `text` of each character of its form with Unicode sharps and flats turned
// into "#" and "b", plus the end: the readers count positions in that form.
std::vector<std::size_t> ConvertedPlaces(const std::string& text) {
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < text.size();) {
    places.push_back(i);
    const bool sign = text.compare(i, 3, kUtf8Sharp) == 0 || text.compare(i, 3, kUtf8Flat) == 0;
    i += sign ? 3 : 1;
  }
  places.push_back(text.size());
  return places;
}

// The parts of the text that the chord-symbol reader stepped over, as the user wrote them.
std::vector<std::string> UnreadParts(const std::string& text, const std::vector<bool>& read) {
  const std::vector<std::size_t> places = ConvertedPlaces(text);
  std::vector<std::string> parts;
  for (std::size_t i = 0; i < read.size() && i + 1 < places.size(); ++i) {
    if (read[i]) continue;
    std::size_t end = i;
    while (end < read.size() && !read[end]) ++end;
    parts.push_back(text.substr(places[i], places[std::min(end, places.size() - 1)] - places[i]));
    i = end;
  }
  return parts;
}

void MarkRead(std::vector<bool>& read, int from, int to) {
  for (int i = std::max(from, 0); i < to && i < static_cast<int>(read.size()); ++i) read[i] = true;
}

// Which characters of the lowered text the passes of the chord-symbol reader use: the root,
// the basic chord, every option keyword, and the bass behind the last slash. What is left
// was stepped over. Blanks, parentheses, commas and slashes only separate the parts.
std::vector<bool> ReadCharacters(const std::string& text, CChordSetFromStringHelper helper,
                                 const CChordNamePrefs& namePrefs) {
  const std::string lowered = helper.LoweredText;
  std::vector<bool> read(lowered.size(), false);
  for (std::size_t i = 0; i < lowered.size(); ++i) {
    read[i] = lowered[i] == ' ' || lowered[i] == '(' || lowered[i] == ')' || lowered[i] == ',' ||
              lowered[i] == '/';
  }
  int pos = 0;
  CKeyEnh root;
  root.SetFromString(text, &pos, namePrefs);
  MarkRead(read, 0, pos);
  int basic = pos;
  helper._BasicChordSemitonesFromString(basic);
  MarkRead(read, pos, basic);
  const std::size_t slash = namePrefs.SlashString.empty()
                                ? std::string::npos
                                : lowered.find_last_of(namePrefs.SlashString);
  // The bass as read, before a simplification may have turned it into a chord tone.
  if (slash != std::string::npos &&
      helper._BassKeyNrAndEnhFromString(namePrefs).KeyNr != kKeyNrUndef) {
    int consumed = 0;
    CKeyEnh bass;
    bass.SetFromString(std::string_view(lowered).substr(slash + 1), &consumed, namePrefs);
    MarkRead(read, static_cast<int>(slash), static_cast<int>(slash) + 1 + consumed);
  }
  for (pos = basic; pos < static_cast<int>(lowered.size());) {
    const int before = pos;
    CIntvlSet add, erase;
    add.SetWrapIntvl(CIntvlSet::kDefaultWrapIntvl);
    erase.SetWrapIntvl(CIntvlSet::kDefaultWrapIntvl);
    helper._AddAndEraseIntvlsForSingleOptionFromString(pos, add, erase);
    // Every option keyword adds or erases a tone; a step over unread text does neither.
    if (!add.empty() || !erase.empty()) MarkRead(read, before, pos);
    if (pos <= before) break;
  }
  return read;
}

bool IsNoChordWord(const std::string& lowered) {
  for (const char* word : {"undef", "-", "nochordyield", "nochordforce", "nochord"}) {
    if (lowered == word) return true;
  }
  return false;
}

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

std::string InputLabel(const std::string& path) {
  return path == "-" ? std::string("standard input") : Quoted(path);
}

std::string ReadFailure(const platform::TReadError& error) {
  return "cannot read " + InputLabel(error.path) + ": " + error.reason;
}

// Standard input, read once, with the limit of the kind of its first reader.
const std::string& StandardInput(platform::TReadKind kind = platform::TReadKind::kChordList) {
  static const platform::TBoundedRead read =
      platform::ReadBoundedDescriptor(STDIN_FILENO, "-", platform::DefaultReadLimit(kind));
  if (!read) throw InputError(ReadFailure(*read.error));
  return read.bytes;
}

// An octave number as a note name ends: "4", "-1".
bool IsOctaveNumber(const std::string& text) {
  const std::size_t digits = text.rfind('-', 0) == 0 ? 1 : 0;
  return text.size() > digits && text.find_first_not_of("0123456789", digits) == std::string::npos;
}

}  // namespace

void AddLenientFlag(CLI::App* cmd) {
  cmd->add_flag_callback(
      "--lenient", [] { gLenient = true; },
      "Read text as the library does, stepping over what it does not understand, instead of "
      "refusing it");
}

bool Lenient() { return gLenient; }
void SetLenient(bool lenient) { gLenient = lenient; }

void AddJsonOption(CLI::App* cmd, JsonMode& mode, bool native) {
  auto value = std::make_shared<std::string>();
  CLI::Option* option =
      cmd->add_flag("--json{strict}", *value,
                    native ? "Print strict JSON; --json=native prints the library's own JSON form"
                           : "Print strict JSON");
  option->check(native ? CLI::IsMember({"strict", "native"}) : CLI::IsMember({"strict"}));
  option->each([&mode, value](const std::string& given) {
    mode = given == "native" ? JsonMode::kNative : JsonMode::kStrict;
  });
}

void AddParserOption(CLI::App* cmd) {
  cmd->add_option_function<std::string>(
         "--parser",
         [](const std::string& name) {
           SetSymbolReader(name == "seed" ? TSymbolReader::kSeed : TSymbolReader::kLeadSheet);
         },
         "The chord-symbol reader: leadsheet (the default, the notation of lead sheets) or seed "
         "(the library's forgiving parser)")
      ->check(CLI::IsMember({"leadsheet", "seed"}));
}

TSymbolReader SymbolReader() { return gSymbolReader; }
void SetSymbolReader(TSymbolReader reader) { gSymbolReader = reader; }
const char* SymbolReaderName() {
  return gSymbolReader == TSymbolReader::kSeed ? "seed" : "lead-sheet";
}

TChordStringParse ChordListParse() {
  TChordStringParse parse;
  if (gSymbolReader == TSymbolReader::kLeadSheet) {
    parse.SymbolReader = &ParseStringIntoHarmAnlsChords::ReadLeadSheetToken;
  }
  return parse;
}

namespace {

// The lead-sheet reader's reading of a symbol, with the tool's rule: the unread rest is
// refused unless --lenient.
CChordLite ReadLeadSheetSymbol(const std::string& text, const ChordSetFromStringPrefs& prefs,
                               const CChordNamePrefs& namePrefs, const CChordLite* previous) {
  const TLeadSheetChordRead read =
      ReadLeadSheetChord(text, namePrefs, previous != nullptr ? *previous : CChordLite());
  if (Trimmed(text).empty()) throw InputError("an empty chord symbol");
  if (read.Kind == TLeadSheetSymbolKind::kRepeat && previous == nullptr) {
    throw InputError(Quoted(text) + ": \"%\" repeats the previous chord, and there is none");
  }
  if (read.Kind == TLeadSheetSymbolKind::kNothing && !gLenient) {
    throw InputError(Quoted(text) + " is not a chord symbol: it starts with a note name (e.g. " +
                     "Dm7, Bbmaj7, F#m7b5/C#, Es7, Sol7) or is N.C. or %");
  }
  if (!read.ReadWhole() && !gLenient) {
    throw InputError("chord symbol " + Quoted(text) + ": could not read " +
                     Quoted(std::string(read.Unread(text))) + " (from byte " +
                     std::to_string(read.UnreadOffset) + ")" + kLenientHint);
  }
  TChordStringParse parse;
  parse.ChordPrefs = prefs;
  parse.NamePrefs = namePrefs;
  return ParseStringIntoHarmAnlsChords::ChordOfLeadSheetRead(read, text, parse);
}

}  // namespace

CChordLite ReadChordSymbol(const std::string& text, const ChordSetFromStringPrefs& prefs,
                           const CChordNamePrefs& namePrefs, const CChordLite* previous) {
  std::string folded = text;
  for (char& c : folded) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  // The library's own words for no chord keep their meaning with either reader.
  if (gSymbolReader == TSymbolReader::kLeadSheet && !IsNoChordWord(Trimmed(folded))) {
    return ReadLeadSheetSymbol(text, prefs, namePrefs, previous);
  }
  CChordLite chord;
  CChordSetFromStringHelper helper;
  helper.SetFromString(text, chord, prefs, namePrefs);
  if (gLenient) return chord;
  const std::string symbol = Trimmed(text);
  if (symbol.empty()) throw InputError("an empty chord symbol");
  std::string lowered = Trimmed(helper.LoweredText);
  if (helper._StringShouldSetUndefOrNoChord(chord)) {
    if (IsNoChordWord(lowered)) return chord;
    throw InputError(Quoted(text) + " is not a chord symbol: only the whole words nochord, " +
                     "nochordyield, nochordforce, undef and - stand for no chord" + kLenientHint);
  }
  if (chord.RootKeyEnh.KeyNr == kKeyNrUndef) {
    throw InputError(Quoted(text) + " is not a chord symbol: it starts with a note letter A..H" +
                     " (e.g. Dm7, Bbmaj7, F#m7b5/C#)");
  }
  // The reader's passes run again on a copy, which keeps what the parse above left behind.
  const std::vector<std::string> parts = UnreadParts(text, ReadCharacters(text, helper, namePrefs));
  if (parts.empty()) return chord;
  std::string list;
  for (const std::string& part : parts) list += (list.empty() ? "" : ", ") + Quoted(part);
  throw InputError("chord symbol " + Quoted(text) + ": could not read " + list + kLenientHint);
}

void CheckChordList(const std::string& text, const ChordSetFromStringPrefs& prefs,
                    const CChordNamePrefs& namePrefs) {
  if (gLenient) return;
  std::istringstream words(text);
  std::vector<std::string> tokens{std::istream_iterator<std::string>(words),
                                  std::istream_iterator<std::string>()};
  // The lead-sheet reader is handed the hyphens (C-7); the seed parser's list drops them.
  const char* const dropped = gSymbolReader == TSymbolReader::kSeed ? "{}-" : "{}";
  for (std::string& token : tokens) {
    if (token.find_first_of(dropped) == std::string::npos && token != "-") continue;
    if (token == "-") {
      throw InputError(
          "the chord list reader drops \"-\": write \".\" for a beat without a new "
          "chord" +
          std::string(kLenientHint));
    }
    throw InputError("the chord list reader drops \"-\", \"{\" and \"}\" from " + Quoted(token) +
                     ": write the symbol without them (Cm7, not C-7)" + kLenientHint);
  }
  ParseStringIntoHarmAnlsChords::_CorrectTokenizationOf(tokens);
  CChordLite previous;
  bool first = true;
  for (const std::string& token : tokens) {
    if (token.empty() || token == "|" || token == ".") continue;
    previous = ReadChordSymbol(token, prefs, namePrefs, first ? nullptr : &previous);
    first = false;
  }
}

CKeyEnh ReadKeyName(const std::string& text, const CChordNamePrefs& prefs) {
  CKeyEnh key;
  int consumed = 0;
  key.SetFromString(text, &consumed, prefs);
  std::string converted = text;
  ConvertUtf8SharpAndFlatToAscii(converted);
  const bool whole = IsBlank(converted, static_cast<std::size_t>(consumed));
  if (key.KeyNr == kKeyNrUndef || (!whole && !gLenient)) {
    throw InputError(Quoted(text) + " is not a key name (a letter A..H with #, b, bb, x or is)" +
                     (key.KeyNr == kKeyNrUndef ? "" : kLenientHint));
  }
  return key;
}

// What a scale name leaves unread behind its root and scale word; throws `failure` with the
// reason when the text has no root.
std::string UnreadScaleWord(const std::string& text, const CChordNamePrefs& prefs,
                            const std::string& failure) {
  std::string converted = text;
  ConvertUtf8SharpAndFlatToAscii(converted);
  int pos = 0;
  CKeyEnh root;
  root.SetFromString(converted, &pos, prefs);
  if (root.KeyNr == kKeyNrUndef) throw InputError(failure + ": it starts with a key letter A..H");
  _SemitonesScaleFromString(converted, pos);
  return Trimmed(converted.substr(static_cast<std::size_t>(std::max(pos, 0))));
}

CScaleHeavy ReadScaleName(const std::string& text, const CChordNamePrefs& prefs) {
  const std::string failure = Quoted(text) + " is not a scale (e.g. D dorian, Eb melodic minor)";
  const std::string unread = UnreadScaleWord(text, prefs, failure);
  if (!gLenient && !unread.empty()) {
    throw InputError(failure + ": unknown scale word " + Quoted(unread) + kLenientHint);
  }
  CScaleHeavy scale;
  SetFromString(text, scale, prefs);
  return scale;
}

CSignKeyLite ReadSignKey(const std::string& text, const CChordNamePrefs& prefs) {
  const std::string failure = Quoted(text) + " is not a major or minor key (e.g. G, Em, Bb minor)";
  const std::string unread = UnreadScaleWord(text, prefs, failure);
  if (!gLenient && !unread.empty()) {
    throw InputError(failure + ": unknown word " + Quoted(unread) + kLenientHint);
  }
  const CSignKeyLite signKey(text, prefs);
  if (signKey.IsUndef()) throw InputError(failure);
  return signKey;
}

CNote ReadNote(const std::string& text) {
  if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos) {
    return CNote(static_cast<long>(ReadInteger(text, 0, 127, "MIDI note number")), TEnh_n);
  }
  CChordNamePrefs prefs = GetCurrentChordNamePrefs();
  prefs.OctaveNumbering = 1;
  std::string converted = text;
  ConvertUtf8SharpAndFlatToAscii(converted);
  int consumed = 0;
  CKeyEnh key;
  key.SetFromString(converted, &consumed, prefs);
  const std::string octave = converted.substr(static_cast<std::size_t>(consumed));
  CNote note;
  const bool known = key.KeyNr != kKeyNrUndef && note.SetFromString(text, prefs) && !note.IsUndef();
  if (!known || (!IsOctaveNumber(octave) && !gLenient)) {
    throw InputError(Quoted(text) +
                     " is not a note: give a MIDI number 0..127 or a name with its octave, "
                     "middle C being C4 (e.g. Bb3, F#5)");
  }
  if (note.NoteNr() < 0 || note.NoteNr() > 127) {
    throw InputError(Quoted(text) + " lies outside the MIDI notes C-1..G9");
  }
  return note;
}

long long ReadInteger(const std::string& text, long long min, long long max,
                      const std::string& what) {
  long long value = 0;
  const char* begin = text.data();
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(begin + (text.rfind('+', 0) == 0 ? 1 : 0), end, value);
  if (text.empty() || ec == std::errc::invalid_argument || ptr != end) {
    throw InputError(what + " " + Quoted(text) + " is not a whole number");
  }
  if (ec == std::errc::result_out_of_range || value < min || value > max) {
    throw InputError(what + " " + Quoted(text) + " lies outside " + std::to_string(min) + ".." +
                     std::to_string(max));
  }
  return value;
}

double ReadDecimal(const std::string& text, double min, double max, const std::string& what) {
  double value = 0.0;
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, value, std::chars_format::fixed);
  if (text.empty() || ec != std::errc() || ptr != end || !std::isfinite(value)) {
    throw InputError(what + " " + Quoted(text) + " is not a decimal number (e.g. 0.25)");
  }
  if (value < min || value > max) {
    std::ostringstream range;
    range << min << ".." << max;
    throw InputError(what + " " + Quoted(text) + " lies outside " + range.str());
  }
  return value;
}

CLI::Option* AddDecimalOption(CLI::App* cmd, const std::string& name, double& value, double min,
                              double max, const std::string& help) {
  return cmd->add_option_function<std::string>(
      name,
      [&value, min, max, name](const std::string& text) {
        value = ReadDecimal(text, min, max, name);
      },
      help);
}

std::vector<std::string> WithStandardInput(const std::vector<std::string>& arguments,
                                           TSplit split) {
  std::vector<std::string> result;
  for (const std::string& argument : arguments) {
    if (argument != "-") {
      result.push_back(argument);
      continue;
    }
    if (Trimmed(StandardInput()).empty()) throw InputError("standard input holds nothing to read");
    std::istringstream in(StandardInput());
    if (split == TSplit::kWords) {
      result.insert(result.end(), std::istream_iterator<std::string>(in),
                    std::istream_iterator<std::string>());
      continue;
    }
    for (std::string line; std::getline(in, line);) {
      if (!Trimmed(line).empty()) result.push_back(Trimmed(line));
    }
  }
  return result;
}

std::string WithStandardInput(const std::string& argument) {
  if (argument != "-") return argument;
  const std::string text = Trimmed(StandardInput());
  if (text.empty()) throw InputError("standard input holds nothing to read");
  return text;
}

std::string ReadInputBytes(const std::string& path, platform::TReadKind kind) {
  if (path != "-") {
    platform::TBoundedRead read = platform::ReadBounded(path, kind);
    if (!read) throw InputError(ReadFailure(*read.error));
    return std::move(read.bytes);
  }
  const std::string& input = StandardInput(kind);
  CheckInputSize(path, input.size(), kind);
  return input;
}

void CheckInputSize(const std::string& path, std::size_t size, platform::TReadKind kind) {
  const std::size_t limit = platform::DefaultReadLimit(kind);
  if (size > limit) {
    throw InputError(InputLabel(path) + " holds " + std::to_string(size) + " bytes, more than " +
                     std::to_string(limit) + " for this kind of input");
  }
}

std::string ReadInputText(const std::string& path) {
  std::string text = ReadInputBytes(path, platform::TReadKind::kChordList);
  CheckInputText(path, text);
  return text;
}

void CheckInputText(const std::string& path, std::string& text) {
  // Text is UTF-8 without NUL bytes, what a text editor writes; UTF-16 behind its byte-order
  // mark is turned into UTF-8 first.
  platform::TBoundedRead decoded = platform::TextFromBytes(text, path);
  if (decoded) {
    text = std::move(decoded.bytes);
  } else if (!gLenient) {
    throw InputError(InputLabel(path) + " is no text file: " + decoded.error->reason +
                     kLenientHint);
  }
  const std::size_t nul = text.find('\0');
  if (!gLenient && nul != std::string::npos) {
    throw InputError(InputLabel(path) + " is no text file: a NUL byte at byte " +
                     std::to_string(nul) + kLenientHint);
  }
}

}  // namespace harmony::tool
