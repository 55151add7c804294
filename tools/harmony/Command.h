#pragma once
// Every command of the harmony tool registers itself from its own file, so that adding a
// command never touches main.cpp:
//
//   const CommandRegistration kRegistration{
//       30, [](CLI::App& app) {
//         auto options = std::make_shared<MyOptions>();
//         CLI::App* cmd = app.add_subcommand("mine", "What it does");
//         cmd->add_option("SYMBOL", options->symbols, "...")->required();
//         AddLenientFlag(cmd);                         // it reads text
//         AddJsonOption(cmd, options->json, true);     // true: the library has its own form
//         cmd->callback([options] { RunMine(*options); });
//       }};
//
// The rule every command follows (the tool's help repeats it for users):
//
// 1. Text is read strictly. A chord symbol, key, scale, note or number that is not read whole
//    is bad input: throw InputError (or let a Read... function below throw it), which prints
//    "harmony: MESSAGE" on standard error and exits with status 1. `--lenient` asks for the
//    library's forgiving reading instead: the Read... functions then never complain about
//    characters they step over, only about text that gives nothing at all.
// 2. `--json` prints one strict JSON document on standard output: build it as a Json value
//    (JsonOut.h) from the library's values, never by editing the library's own JSON text.
//    Undefined values are null, numbers are numbers, names are included. `--json=native`
//    prints the library's own (sometimes non-strict) form, one value per line, where the
//    library has one.
// 3. "-" in place of a text or a file means standard input (WithStandardInput, ReadInputText).
// 4. Wrong usage (unknown options, missing arguments, a value outside the offered choices)
//    exits with status 2, through CLI11. An exception of any other kind is caught in main,
//    printed, and exits with status 1: never let the library's values reach std::stoi or the
//    like unchecked, use ReadInteger.

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "JsonOut.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/SignKey.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/Note.h"
#include "platform/BoundedRead.h"

namespace harmony::tool {

class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct CommandRegistration {
  // `order` sorts the commands in the help text.
  CommandRegistration(int order, std::function<void(CLI::App&)> add);
};

// Runs every registered `add` in order; used by main.
void AddAllCommands(CLI::App& app);

// --- Options every command offers the same way.

// --lenient: read text as the library does, stepping over what it does not understand.
void AddLenientFlag(CLI::App* cmd);
bool Lenient();
// For tests of the readers and for commands that read in both ways.
void SetLenient(bool lenient);

// --parser leadsheet|seed: which reader reads chord symbols. The lead-sheet reader
// (harmony/chords/LeadSheetChordReader.h) is the default; `seed` selects the library's
// forgiving parser (harmony/chords/ChordSymbolParser.h), to see exactly what it does. Offered
// by every command that takes chords, and before the command for all of them.
enum class TSymbolReader { kLeadSheet, kSeed };
void AddParserOption(CLI::App* cmd);
TSymbolReader SymbolReader();
void SetSymbolReader(TSymbolReader reader);
// "lead-sheet" or "seed", as the chord command shows it.
const char* SymbolReaderName();
// The chord-list parse with the symbol reader in use.
TChordStringParse ChordListParse();

enum class JsonMode { kNone, kStrict, kNative };
// --json (strict) and, with `native`, --json=native (the library's own form).
void AddJsonOption(CLI::App* cmd, JsonMode& mode, bool native);

// --- Readers: strict unless --lenient; InputError for what cannot be read.

// A chord symbol ("C#m7b5/G#", "Bbmaj7", "F 6 add9", "nochord"), read by the reader in use.
// With the seed parser parentheses, commas and blanks between the parts are read as separators
// and any other character the library steps over is refused; the lead-sheet reader refuses
// the rest it does not read, telling where it starts. "%" is `previous`, refused without one.
CChordLite ReadChordSymbol(const std::string& text,
                           const ChordSetFromStringPrefs& prefs = ChordSetFromStringPrefs(),
                           const CChordNamePrefs& namePrefs = GetCurrentChordNamePrefs(),
                           const CChordLite* previous = nullptr);
// Every chord symbol of a chord list ("Dm7 . G7 . | C"), as the chord-list reader cuts it.
void CheckChordList(const std::string& text, const ChordSetFromStringPrefs& prefs,
                    const CChordNamePrefs& namePrefs);
// A key name alone: "F#", "Bbb", "Cis", "H".
CKeyEnh ReadKeyName(const std::string& text,
                    const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());
// A scale name: a key and a scale word ("D dorian", "Eb melodic minor"); a key alone is major.
CScaleHeavy ReadScaleName(const std::string& text,
                          const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());
// A major or minor key: "G", "Em", "Bb minor", "F# major".
CSignKeyLite ReadSignKey(const std::string& text,
                         const CChordNamePrefs& prefs = GetCurrentChordNamePrefs());
// A MIDI note number 0..127 or a note name with its octave, middle C being C4 (60).
CNote ReadNote(const std::string& text);
// A whole decimal number within min..max; `what` names it in the message.
long long ReadInteger(const std::string& text, long long min, long long max,
                      const std::string& what);
// A finite decimal number ("0.25", "1", ".5") within min..max.
double ReadDecimal(const std::string& text, double min, double max, const std::string& what);

// A number option taken as text and checked by ReadInteger (ReadDecimal) while the command
// line is read, so that "--ticks 99999999999" or "--seed -1" is bad input with exit status 1
// and the option's name, never a wrapped or clamped value.
template <class T>
CLI::Option* AddIntegerOption(CLI::App* cmd, const std::string& name, T& value, long long min,
                              long long max, const std::string& help) {
  return cmd->add_option_function<std::string>(
      name,
      [&value, min, max, name](const std::string& text) {
        value = static_cast<T>(ReadInteger(text, min, max, name));
      },
      help);
}
CLI::Option* AddDecimalOption(CLI::App* cmd, const std::string& name, double& value, double min,
                              double max, const std::string& help);

// --- Standard input.

enum class TSplit { kWords, kLines };
// The arguments with each "-" replaced by the words (or the non-empty lines) of standard
// input, which is read once.
std::vector<std::string> WithStandardInput(const std::vector<std::string>& arguments, TSplit split);
// The argument, or for "-" the text of standard input without the blanks around it.
std::string WithStandardInput(const std::string& argument);
// The whole content of a regular file, or of standard input for "-", within the size limit
// of its kind (platform/BoundedRead.h); InputError with the path and the system's reason when
// it can't be read.
std::string ReadInputBytes(const std::string& path,
                           platform::TReadKind kind = platform::TReadKind::kChordList);
// InputError when `size` bytes read from `path` exceed the limit of `kind`.
void CheckInputSize(const std::string& path, std::size_t size, platform::TReadKind kind);
// A chord list's text: UTF-16 with a byte-order mark is converted to UTF-8, and content that
// is no text (a NUL byte, or bytes that are no UTF-8) is InputError unless --lenient.
std::string ReadInputText(const std::string& path);
// The check and conversion of ReadInputText on content already read from `path`.
void CheckInputText(const std::string& path, std::string& text);

}  // namespace harmony::tool
