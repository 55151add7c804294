// harmony analyse "TEXT" | --file PATH: runs the harmonic analysis on a chord list and shows
// the tree of sign keys, harmonic centers and chords, or its JSON with --json.

#include <algorithm>
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
#include "KeyEstimateSupport.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/SignKeyHeavy.h"

namespace harmony::tool {

namespace {

struct AnalyseOptions {
  std::vector<std::string> text;
  std::string file;
  std::string method = "tonic";
  std::string key;
  std::string functions = "roman";
  JsonMode json = JsonMode::kNone;
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
  return FunctionDisplayName(chord.HarmFuncNameIn(*key, prefs));
}

// A chord lasts until the next chord of the piece; the closing chord marks the end. Readings
// may leave chords out of every center or show the same chords twice, so lengths come from
// the chords as they were read.
std::optional<double> Length(const CHarmAnlsChords& input, const CHarmAnlsChordWithPos& chord) {
  const auto next = std::upper_bound(input.begin(), input.end(), chord.Position,
                                     [](double position, const CHarmAnlsChordWithPos& other) {
                                       return position < other.Position;
                                     });
  if (next == input.end()) return std::nullopt;
  return next->Position - chord.Position;
}

std::string LengthText(const CHarmAnlsChords& input, const CHarmAnlsChordWithPos& chord) {
  const std::optional<double> length = Length(input, chord);
  return length ? PositionText(*length) : "";
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

Json PositionJson(double position) { return IsHarmAnlsUndef(position) ? Json() : Json(position); }
Json DistJson(int dist) { return dist < 0 ? Json() : Json(dist); }

Json CenterJson(const CHarmAnlsCenter& center, const CHarmAnlsChords& input,
                const CChordNamePrefs& prefs) {
  const std::optional<CSignKeyHeavy> key = CenterKey(center);
  Json chords = Json::Array();
  for (const CHarmAnlsChordWithPos& chord : center.HarmChords) {
    const std::optional<double> length = Length(input, chord);
    const std::string function = FunctionText(chord, key, prefs);
    chords.Push(
        Json::Object()
            .Add("position", PositionJson(chord.Position))
            .Add("length", length ? Json(*length) : Json())
            .Add("chord", ChordJson(chord, prefs))
            .Add("rootDist", DistJson(chord.RootDistToHarmCenter))
            .Add("bassDist", DistJson(chord.BassDistToHarmCenter))
            .Add("function", function == "-" || function == "undef" ? Json() : Json(function)));
  }
  Json harmCenter;
  if (!center.IsUndef()) {
    harmCenter = Json::Object()
                     .Add("name", center.HarmCenter.NameLong(prefs))
                     .Add("root", KeyJson(center.HarmCenter.RootKeyEnh, prefs))
                     .Add("scale", SemitonesJson(center.HarmCenter.Semitones));
  }
  return Json::Object()
      .Add("center", std::move(harmCenter))
      .Add("position", PositionJson(center.Position))
      .Add("probability", PositionJson(center.Probability))
      .Add("chords", std::move(chords));
}

// The analysis tree in strict JSON, with the names and functions the text shows.
Json AnalysisJson(const CHarmonicAnalyse& analyse, const CChordNamePrefs& prefs) {
  Json signKeys = Json::Array();
  for (const CHarmAnlsSignKey& signKey : analyse.HarmSignKeys()) {
    Json centers = Json::Array();
    for (const CHarmAnlsCenter& center : signKey.HarmCenters) {
      centers.Push(CenterJson(center, analyse.InputChords(), prefs));
    }
    signKeys.Push(Json::Object()
                      .Add("signKey", SignKeyJson(signKey.SignKey, prefs))
                      .Add("position", PositionJson(signKey.Position))
                      .Add("probability", PositionJson(signKey.Probability))
                      .Add("centers", std::move(centers)));
  }
  return Json::Object().Add("signKeys", std::move(signKeys));
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

Json CopiesJson(const CHarmCopies& copies) {
  Json array = Json::Array();
  for (const CHarmCopy& copy : copies) {
    array.Push(Json::Object()
                   .Add("position", copy.TargetPos)
                   .Add("bars", copy.LengthBars)
                   .Add("sourceOffsetBars", copy.SourceOffsetBars));
  }
  return array;
}

void RunAnalyse(const AnalyseOptions& options) {
  CChordNamePrefs prefs;
  prefs.AsciiAccidentals = options.ascii ? 1 : 0;
  prefs.FunctionLetters = options.functions == "letters" ? 1 : 0;
  const bool estimateKey = options.key == "auto";
  const CHarmonicAnalyse::TAnalyse method = AnalyseMethodFromName(options.method);
  CHarmonicAnalyse analyse;
  AnalyseChords(analyse, ReadChordsArguments(options.text, options.file),
                GivenSignKeys(estimateKey ? "" : options.key, prefs), method);
  if (estimateKey) ReanalyseFromEstimatedKey(analyse, method);
  CHarmCopies copies;
  if (options.repeats) analyse.FindHarmCopies(copies);
  if (options.json == JsonMode::kNative) {
    PrintNativeJson(analyse);
    if (options.repeats) PrintCopiesJson(copies);
    return;
  }
  if (options.json == JsonMode::kStrict) {
    Json json = AnalysisJson(analyse, prefs);
    if (options.repeats) json.Add("repeats", CopiesJson(copies));
    return PrintJson(json);
  }
  PrintTree(analyse, prefs);
  if (options.repeats) PrintCopies(copies);
}

const CommandRegistration kRegistration{
    60, [](CLI::App& app) {
      auto options = std::make_shared<AnalyseOptions>();
      CLI::App* cmd = app.add_subcommand(
          "analyse", "Analyse a chord list: sign keys, harmonic centers and each chord's place");
      const auto given =
          AddChordsOptions(cmd, options->text, options->file, "C . . . | F . G7 . | C");
      cmd->add_option("--method", options->method, "How centers are found (default tonic)")
          ->check(CLI::IsMember({"none", "tonic", "cadence", "weights"}));
      cmd->add_option("--functions", options->functions,
                      "Name each chord's function as a roman numeral or by function letters "
                      "(default roman)")
          ->check(CLI::IsMember({"roman", "letters"}));
      cmd->add_option(
          "--key", options->key,
          "Sign key of the piece, e.g. G, Em, \"Bb minor\", or auto for the key the chords "
          "suggest (see key-of)");
      AddJsonOption(cmd, options->json, true);
      AddLenientFlag(cmd);
      AddParserOption(cmd);
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
      cmd->callback([options, given] {
        given();
        RunAnalyse(*options);
      });
    }};

}  // namespace

void PrintAnalysisTree(const CHarmonicAnalyse& analyse, const CChordNamePrefs& prefs) {
  PrintTree(analyse, prefs);
}

}  // namespace harmony::tool
