// harmony scales "TEXT" | --file PATH: analyses a chord list and suggests for each chord the
// scales that suit it in its context: the center the chord was placed in, its special case
// and the sorted scales, each spelled on the chord's root. --at N shows one chord, --json
// all of them as JSON, --debug adds the fallback's reasons.

#include <algorithm>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <limits>
#include <memory>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "AnalyseInput.h"
#include "Command.h"
#include "ScaleLetterSpelling.h"
#include "ScalesSupport.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmCenterOfInputChords.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/LeadSheetChordReader.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/scalealternatives/ScaleSuggestions.h"

namespace harmony::tool {

namespace {

struct ScalesOptions {
  std::vector<std::string> text;
  std::string file;
  std::string method = "tonic";
  std::string key;
  std::string at;
  std::string top;
  JsonMode json = JsonMode::kNone;
  bool debug = false;
  bool ascii = false;
  bool blues = false;
};

bool IsOneOf(const std::string& token, const std::vector<std::string>& list) {
  return std::find(list.begin(), list.end(), token) != list.end();
}

// The tokens the chord-symbol reader finds no root in, apart from the words that mean "no
// chord" on purpose. The list is cut as the analysis cuts it: braces and hyphens go first.
std::vector<std::string> UnreadableSymbols(const std::string& text,
                                           const TChordStringParse& parse) {
  std::string plain = text;
  const bool hyphens = parse.SymbolReader != nullptr;  // the lead-sheet reader reads them
  std::erase_if(plain,
                [hyphens](char c) { return c == '{' || c == '}' || (c == '-' && !hyphens); });
  std::vector<std::string> tokens(
      std::sregex_token_iterator(plain.begin(), plain.end(), parse.Tokenizer, -1),
      std::sregex_token_iterator());
  ParseStringIntoHarmAnlsChords::_CorrectTokenizationOf(tokens);
  std::vector<std::string> unreadable;
  for (const std::string& token : tokens) {
    if (token.empty() || token == "-" || IsOneOf(token, parse.BarTokens) ||
        IsOneOf(token, parse.BeatTokens)) {
      continue;
    }
    if (parse.SymbolReader != nullptr &&
        ReadLeadSheetChord(token, parse.NamePrefs).Kind != TLeadSheetSymbolKind::kNothing) {
      continue;
    }
    CChordSetFromStringHelper helper;
    CChordLite chord;
    helper.SetFromString(token, chord, parse.ChordPrefs, parse.NamePrefs);
    CChordLite marker;
    if (chord.IsUndef() && !helper._StringShouldSetUndefOrNoChord(marker)) {
      unreadable.push_back(token);
    }
  }
  return unreadable;
}

void CheckSymbols(const std::string& text, const TChordStringParse& parse) {
  const std::vector<std::string> unreadable = UnreadableSymbols(text, parse);
  if (unreadable.empty()) return;
  std::string list;
  for (const std::string& token : unreadable) list += (list.empty() ? "\"" : ", \"") + token + '"';
  throw InputError(
      "not a chord symbol: " + list +
      " (a chord symbol starts with a root A..H, e.g. Dm7, Bb7#11, F#m7b5; \"nochord\" "
      "marks a place without chord)");
}

std::string PositionText(double position) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(2) << position;
  return text.str();
}

std::string ChordName(const TChordSuggestions& entry, const CChordNamePrefs& prefs) {
  return entry.chord.IsUndef() ? std::string("no chord") : entry.chord.TraceName(prefs);
}

// "center C Major, diatonic", with the scale the chord is measured against where it is not the
// center, and whether the fallback answered.
std::string PlaceText(const TChordSuggestions& entry, const CChordNamePrefs& prefs) {
  if (entry.center.IsUndef()) return "no center, fallback";
  std::string text = "center " + entry.center.NameLong(prefs) + ", " +
                     ScaleAlternativesSpecialCaseName(entry.context.SpecialCase);
  const CScaleLite& reference = entry.suggestions.Reference;
  if (!(reference == entry.center)) text += ", scales of " + reference.Name(prefs);
  if (entry.suggestions.FromFallback) text += ", fallback";
  return text;
}

nlohmann::json ScaleJson(const TScaleAlternative& alternative, const CChordNamePrefs& prefs,
                         bool debug) {
  const CScaleLite& scale = alternative.Scale;
  nlohmann::json json = {
      {"name", scale.Name(prefs)},
      {"root", KeyNrAndEnhToName(scale.RootKeyEnh.KeyNr, scale.RootKeyEnh.Enh, prefs)},
      {"mask", scale.Semitones.Word()},
      {"tones", SpelledTones(scale, prefs)},
  };
  if (debug) json["debug"] = alternative.Debug;
  return json;
}

nlohmann::json TextOrNull(bool defined, const std::string& text) {
  return defined ? nlohmann::json(text) : nlohmann::json(nullptr);
}

nlohmann::json ChordJson(const TChordSuggestions& entry, const CChordNamePrefs& prefs, bool debug) {
  const bool placed = !entry.chord.IsUndef() && !entry.center.IsUndef();
  const CScaleLite& reference = entry.suggestions.Reference;
  nlohmann::json scales = nlohmann::json::array();
  for (const TScaleAlternative& alternative : entry.suggestions.Scales) {
    scales.push_back(ScaleJson(alternative, prefs, debug));
  }
  return {
      {"number", entry.number},
      {"position", entry.chord.Position},
      {"chord", TextOrNull(!entry.chord.IsUndef(), ChordName(entry, prefs))},
      {"center", TextOrNull(placed, entry.center.NameLong(prefs))},
      {"special_case", entry.context.SpecialCase},
      {"special_case_name", ScaleAlternativesSpecialCaseName(entry.context.SpecialCase)},
      {"reference", TextOrNull(!reference.IsUndef(), reference.Name(prefs))},
      {"fallback", entry.suggestions.FromFallback},
      {"scales", scales},
  };
}

void PrintJson(const std::vector<TChordSuggestions>& entries, const CChordNamePrefs& prefs,
               bool debug) {
  nlohmann::json chords = nlohmann::json::array();
  for (const TChordSuggestions& entry : entries) chords.push_back(ChordJson(entry, prefs, debug));
  std::cout << nlohmann::json{{"chords", chords}}.dump() << '\n';
}

void RunScales(const ScalesOptions& options) {
  CChordNamePrefs prefs;
  prefs.AsciiAccidentals = options.ascii ? 1 : 0;
  const CHarmAnlsSignKeys givenKeys = GivenSignKeys(options.key, prefs);
  const std::optional<int> at = options.at.empty()
                                    ? std::nullopt
                                    : std::optional<int>(static_cast<int>(ReadInteger(
                                          options.at, 1, std::numeric_limits<int>::max(), "--at")));
  const std::size_t top = options.top.empty()
                              ? 0
                              : static_cast<std::size_t>(ReadInteger(
                                    options.top, 1, std::numeric_limits<int>::max(), "--top"));
  TChordsFile chords = ReadChordsArguments(options.text, options.file);
  // A token without a root gives no chord to suggest scales for, even read leniently; all
  // of them are told at once.
  if (!chords.musicXml) CheckSymbols(chords.chordList, ChordListParse());
  CHarmonicAnalyse analyse;
  AnalyseChords(analyse, std::move(chords), givenKeys, AnalyseMethodFromName(options.method));
  std::vector<TChordSuggestions> entries =
      SuggestScalesForAnalysis(analyse, {options.blues, options.debug}, at);
  if (top > 0) KeepFirstScales(entries, top);
  if (options.json != JsonMode::kNone) {
    PrintJson(entries, prefs, options.debug);
  } else {
    PrintScaleSuggestions(entries, prefs);
  }
}

const CommandRegistration kRegistration{
    65, [](CLI::App& app) {
      auto options = std::make_shared<ScalesOptions>();
      CLI::App* cmd = app.add_subcommand(
          "scales", "Suggest scales for each chord of a chord list, in the key it is analysed in");
      const auto given =
          AddChordsOptions(cmd, options->text, options->file, "Dm7 G7 | Cmaj7 . . .");
      cmd->add_option("--at", options->at, "Show only chord N of the list (counted from 1)");
      cmd->add_option("--top", options->top, "Show only the first N scales of each chord");
      cmd->add_option("--method", options->method, "How centers are found (default tonic)")
          ->check(CLI::IsMember({"none", "tonic", "cadence", "weights"}));
      cmd->add_option("--key", options->key, "Sign key of the piece, e.g. G, Em, \"Bb minor\"");
      AddJsonOption(cmd, options->json, false);
      AddLenientFlag(cmd);
      AddParserOption(cmd);
      cmd->add_flag("--debug", options->debug,
                    "Show how the fallback ranked its scales (size class, similarity)");
      cmd->add_flag("--blues", options->blues,
                    "Offer major blues over major chords and minor blues over minor ones");
      cmd->add_flag("--ascii", options->ascii, "Write accidentals as # and b");
      cmd->footer(
          "A chord list has one token per beat: a chord symbol, \".\" for a beat without a new\n"
          "chord, or \"|\" for a bar line. The list is analysed first (see analyse); each chord\n"
          "is then measured against the scale of its center, or, when it is a borrowed or\n"
          "passing chord, against the scale it comes from. Scales that hold the chord and stay\n"
          "close to that scale come first, seven-tone scales before eight-tone ones before the\n"
          "rest. When no scale passes, or the analysis placed the chord in no center, the\n"
          "fallback offers every table scale that holds the chord.");
      cmd->callback([options, given] {
        given();
        RunScales(*options);
      });
    }};

}  // namespace

std::vector<TChordSuggestions> SuggestScalesForChordList(const std::string& text,
                                                         const CHarmAnlsSignKeys& signKeys,
                                                         CHarmonicAnalyse::TAnalyse method,
                                                         const TScaleSuggestionOptions& options,
                                                         std::optional<int> at) {
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString(text, signKeys, method, ChordListParse());
  return SuggestScalesForAnalysis(analyse, options, at);
}

std::vector<TChordSuggestions> SuggestScalesForAnalysis(const CHarmonicAnalyse& analyse,
                                                        const TScaleSuggestionOptions& options,
                                                        std::optional<int> at) {
  const CHarmAnlsChords& input = analyse.InputChords();
  const std::vector<CHarmCenterLite> centers = HarmCenterOfEachInputChord(analyse);
  const std::vector<CChordLite> chords(input.begin(), input.end());
  const std::vector<CScaleLite> scales(centers.begin(), centers.end());
  const std::vector<CScaleAlternativesContext> contexts =
      ScaleSuggestions::ContextsForChords(chords, scales);
  // A chord list ends in a chord without root that closes it; a MusicXML import does not.
  const int count =
      static_cast<int>(input.size()) - (!input.empty() && input.back().IsUndef() ? 1 : 0);
  if (count == 0) throw InputError("the chord list holds no chord symbol");
  if (at && (*at < 1 || *at > count)) {
    throw InputError("--at " + std::to_string(*at) + " is not a chord of the list: it has " +
                     std::to_string(count) + (count == 1 ? " chord" : " chords"));
  }
  std::vector<TChordSuggestions> result;
  for (int i = 0; i < count; ++i) {
    if (at && i + 1 != *at) continue;
    const auto index = static_cast<std::size_t>(i);
    result.push_back({i + 1, input[index], centers[index], contexts[index],
                      ScaleSuggestions::ForContext(contexts[index], options)});
  }
  return result;
}

void PrintScaleSuggestions(const std::vector<TChordSuggestions>& entries,
                           const CChordNamePrefs& prefs) {
  bool first = true;
  for (const TChordSuggestions& entry : entries) {
    if (!first) std::cout << '\n';
    first = false;
    std::cout << entry.number << ". " << ChordName(entry, prefs) << " at "
              << PositionText(entry.chord.Position);
    if (entry.chord.IsUndef()) {
      std::cout << '\n';
      continue;
    }
    std::cout << ": " << PlaceText(entry, prefs) << '\n';
    for (const TScaleAlternative& alternative : entry.suggestions.Scales) {
      std::string tones;
      for (const std::string& tone : SpelledTones(alternative.Scale, prefs)) {
        tones += (tones.empty() ? "" : " ") + tone;
      }
      std::cout << "   " << alternative.Scale.Name(prefs) << ": " << tones << alternative.Debug
                << '\n';
    }
  }
}

}  // namespace harmony::tool
