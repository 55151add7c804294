// harmony analyse "TEXT" | --file PATH: runs the harmonic analysis on a chord list and shows
// the tree of sign keys, harmonic centers and chords, or its JSON with --json.

#include <algorithm>
#include <array>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

#include "AnalyseInput.h"
#include "AnalyseSupport.h"
#include "Command.h"
#include "KeyCommandSupport.h"
#include "MusicXmlInput.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/SignKeyHeavy.h"

namespace harmony::tool {

namespace {

struct AnalyseOptions {
  std::string text;
  std::string file;
  std::string method = "tonic";
  std::string key;
  std::string functions = "roman";
  bool json = false;
  bool ascii = false;
  bool repeats = false;
};

std::string PositionText(double position) {
  if (IsHarmAnlsUndef(position)) return "-";
  std::ostringstream text;
  text << std::fixed << std::setprecision(2) << position;
  return text.str();
}

std::string DistText(int dist) { return dist < 0 ? "-" : std::to_string(dist); }

std::string SignKeyText(const CHarmAnlsSignKey& signKey, const CChordNamePrefs& prefs) {
  const std::string name =
      signKey.IsUndef() ? std::string("undefined") : signKey.SignKey.NameLong(prefs);
  return "Sign key " + name + ", from " + PositionText(signKey.Position);
}

std::string CenterText(const CHarmAnlsCenter& center, const CChordNamePrefs& prefs) {
  const std::string name =
      center.IsUndef() ? std::string("undefined") : center.HarmCenter.NameLong(prefs);
  std::string text = "Center " + name + ", from " + PositionText(center.Position);
  // Simultaneous readings of the same chords share a probability below 1. A reading found
  // at several chords adds up past 1: for a person that is simply a sure reading.
  if (!IsHarmAnlsUndef(center.Probability) && center.Probability < 1.0) {
    std::ostringstream probability;
    probability << std::setprecision(3) << center.Probability;
    text += ", probability " + probability.str();
  }
  return text;
}

// The key a center stands for, when it is a major or minor one: functions are told in keys.
std::optional<CSignKeyHeavy> CenterKey(const CHarmAnlsCenter& center) {
  const TSignKeyType type = SignKeyTypeFromSemitones(center.HarmCenter.Semitones);
  if (center.IsUndef() || type == TSignKeyType::Undef) return std::nullopt;
  return CSignKeyHeavy(center.HarmCenter.RootKeyEnh, type == TSignKeyType::Minor
                                                         ? TSignKeyTypeNoUndef::Minor
                                                         : TSignKeyTypeNoUndef::Major);
}

std::string FunctionText(const CHarmAnlsChord& chord, const std::optional<CSignKeyHeavy>& key,
                         const CChordNamePrefs& prefs) {
  if (!key || chord.IsUndef()) return "-";
  return chord.HarmFuncNameIn(*key, prefs);
}

// A chord lasts until the next chord of the piece; the closing chord marks the end. Readings
// may leave chords out of every center or show the same chords twice, so lengths come from
// the chords as they were read.
std::string LengthText(const CHarmAnlsChords& input, const CHarmAnlsChordWithPos& chord) {
  const auto next = std::upper_bound(input.begin(), input.end(), chord.Position,
                                     [](double position, const CHarmAnlsChordWithPos& other) {
                                       return position < other.Position;
                                     });
  return next == input.end() ? "" : PositionText(next->Position - chord.Position);
}

void PrintCenter(const CHarmAnlsCenter& center, const CHarmAnlsChords& input,
                 const CChordNamePrefs& prefs) {
  std::cout << "  " << CenterText(center, prefs) << '\n';
  if (center.HarmChords.empty()) return;
  const std::optional<CSignKeyHeavy> key = CenterKey(center);
  KeyTextTable table({"   ", "position", "length", "chord", "root", "bass", "function"},
                     {false, true, true, false, true, true, false});
  for (const CHarmAnlsChordWithPos& chord : center.HarmChords) {
    const std::string length = LengthText(input, chord);
    const std::string name =
        chord.IsUndef() ? (length.empty() ? "end" : "-") : chord.TraceName(prefs);
    table.AddRow({"", PositionText(chord.Position), length, name,
                  DistText(chord.RootDistToHarmCenter), DistText(chord.BassDistToHarmCenter),
                  FunctionText(chord, key, prefs)});
  }
  table.Print(std::cout);
}

void PrintTree(const CHarmonicAnalyse& analyse, const CChordNamePrefs& prefs) {
  for (const CHarmAnlsSignKey& signKey : analyse.HarmSignKeys()) {
    std::cout << SignKeyText(signKey, prefs) << '\n';
    for (const CHarmAnlsCenter& center : signKey.HarmCenters) {
      PrintCenter(center, analyse.InputChords(), prefs);
    }
  }
}

// The passages that come again, each pointing back to its first occurrence.
void PrintCopies(const CHarmCopies& copies) {
  std::cout << (copies.empty() ? "No repeated passages\n" : "Repeated passages\n");
  if (copies.empty()) return;
  KeyTextTable table({"   ", "position", "bars", "source"}, {false, true, true, false});
  for (const CHarmCopy& copy : copies) {
    table.AddRow({"", PositionText(copy.TargetPos), std::to_string(copy.LengthBars),
                  copy.SourceOffsetBars == 0
                      ? std::string("same bar")
                      : std::to_string(-copy.SourceOffsetBars) + " bars back"});
  }
  table.Print(std::cout);
}

void PrintCopiesJson(const CHarmCopies& copies) {
  std::cout << "{\"HarmCopies\":[";
  for (std::size_t i = 0; i < copies.size(); ++i) {
    std::cout << (i > 0 ? "," : "") << "{\"TargetPos\":" << copies[i].TargetPos
              << ",\"SourceOffsetBars\":" << copies[i].SourceOffsetBars
              << ",\"LengthBars\":" << copies[i].LengthBars << "}";
  }
  std::cout << "]}\n";
}

void RunAnalyse(const AnalyseOptions& options) {
  CChordNamePrefs prefs;
  prefs.AsciiAccidentals = options.ascii ? 1 : 0;
  prefs.FunctionLetters = options.functions == "letters" ? 1 : 0;
  const CHarmAnlsSignKeys givenKeys = GivenSignKeys(options.key, prefs);
  const CHarmonicAnalyse::TAnalyse method = AnalyseMethodFromName(options.method);
  CHarmonicAnalyse analyse;
  if (!options.file.empty()) {
    TChordsFile file = ReadChordsFile(options.file);
    if (file.musicXml) {
      AnalyseMusicXml(analyse, std::move(*file.musicXml), givenKeys, method);
    } else {
      analyse.AnalyseFromChordString(file.chordList, givenKeys, method, TChordStringParse());
    }
  } else {
    analyse.AnalyseFromChordString(options.text, givenKeys, method, TChordStringParse());
  }
  CHarmCopies copies;
  if (options.repeats) analyse.FindHarmCopies(copies);
  if (options.json) {
    analyse.AppendJSONString(std::cout);
    std::cout << '\n';
    if (options.repeats) PrintCopiesJson(copies);
    return;
  }
  PrintTree(analyse, prefs);
  if (options.repeats) PrintCopies(copies);
}

const CommandRegistration kRegistration{
    60, [](CLI::App& app) {
      auto options = std::make_shared<AnalyseOptions>();
      CLI::App* cmd = app.add_subcommand(
          "analyse", "Analyse a chord list: sign keys, harmonic centers and each chord's place");
      CLI::Option* text = cmd->add_option(
          "TEXT", options->text, "Chord list, e.g. \"C . . . | F . G7 . | C\" (or use --file)");
      CLI::Option* file = cmd->add_option(
          "--file", options->file,
          "Read the chords from a file: a chord-string file or MusicXML (.musicxml, .xml, .mxl); "
          "- for standard input");
      text->excludes(file);
      cmd->add_option("--method", options->method, "How centers are found (default tonic)")
          ->check(CLI::IsMember({"none", "tonic", "cadence", "weights"}));
      cmd->add_option("--functions", options->functions,
                      "Name each chord's function as a roman numeral or by function letters "
                      "(default roman)")
          ->check(CLI::IsMember({"roman", "letters"}));
      cmd->add_option("--key", options->key, "Sign key of the piece, e.g. G, Em, \"Bb minor\"");
      cmd->add_flag("--json", options->json, "Print the analysis result as the library writes it");
      cmd->add_flag("--ascii", options->ascii, "Write accidentals as # and b");
      cmd->add_flag("--repeats", options->repeats,
                    "Also list the passages that come again (in bars of four quarter notes)");
      cmd->footer(
          "A chord list has one token per beat, separated by blanks: a chord symbol, \".\" for a\n"
          "beat without a new chord, or \"|\" for a bar line (bars of four quarter notes).\n"
          "Positions and lengths are in quarter notes; root and bass are the semitones from\n"
          "the center up to the chord's root and bass. Methods: tonic and cadence find centers\n"
          "by progressions that prove them, weights by the chords that fit a key; none keeps\n"
          "the keys given. A MusicXML file gives its chord symbols with the repeats played\n"
          "out, and its keys (--key replaces them).");
      cmd->callback([options, text, file] {
        if (text->count() == 0 && file->count() == 0) {
          throw CLI::RequiredError("TEXT or --file");
        }
        RunAnalyse(*options);
      });
    }};

}  // namespace

void PrintAnalysisTree(const CHarmonicAnalyse& analyse, const CChordNamePrefs& prefs) {
  PrintTree(analyse, prefs);
}

}  // namespace harmony::tool
