// harmony names KEY...: a key's name in every naming style side by side.

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "Command.h"
#include "KeyCommandSupport.h"

namespace harmony::tool {

namespace {

struct NamingStyle {
  const char* title;
  const char* jsonKey;
  CChordNamePrefs prefs;
};

std::vector<NamingStyle> NamingStyles() {
  CChordNamePrefs letters;
  CChordNamePrefs ascii;
  ascii.AsciiAccidentals = 1;
  CChordNamePrefs german;
  german.GermanAccidentals = 1;
  CChordNamePrefs germanBH = german;
  germanBH.BIsH = 1;
  germanBH.BIsBFlat = 1;
  CChordNamePrefs solfegeTi;
  solfegeTi.Solfege = 1;
  CChordNamePrefs solfegeSi;
  solfegeSi.Solfege = 2;
  CChordNamePrefs spoken;
  spoken.AccessibilitySpoken = 1;
  return {{"letters", "letters", letters},
          {"ascii", "ascii", ascii},
          {"German", "german", german},
          {"German B/H", "germanBH", germanBH},
          {"solfege Ti", "solfegeTi", solfegeTi},
          {"solfege Si", "solfegeSi", solfegeSi},
          {"spoken", "spoken", spoken}};
}

struct NamesOptions {
  std::vector<std::string> keys;
  JsonMode json = JsonMode::kNone;
};

void RunNames(const NamesOptions& options) {
  const std::vector<NamingStyle> styles = NamingStyles();
  std::vector<std::string> header = {"key"};
  for (const NamingStyle& style : styles) header.emplace_back(style.title);
  KeyTextTable table(header);
  Json array = Json::Array();
  for (const std::string& text : WithStandardInput(options.keys, TSplit::kWords)) {
    const CKeyEnh key = ReadKeyName(text, GetCurrentChordNamePrefs());
    std::vector<std::string> row = {text};
    Json names = Json::Object();
    names.Add("text", text).Add("key", key.KeyNr);
    for (const NamingStyle& style : styles) {
      row.push_back(KeyNrAndEnhToName(key.KeyNr, key.Enh, style.prefs));
      names.Add(style.jsonKey, row.back());
    }
    table.AddRow(row);
    array.Push(std::move(names));
  }
  if (options.json != JsonMode::kNone) return PrintJson(array);
  table.Print(std::cout);
}

const CommandRegistration kRegistration{
    15, [](CLI::App& app) {
      auto options = std::make_shared<NamesOptions>();
      CLI::App* cmd = app.add_subcommand("names", "Show a key's name in every naming style");
      cmd->add_option("KEY", options->keys, "Key names, e.g. Bb Fx Cis (- reads standard input)")
          ->required();
      AddLenientFlag(cmd);
      AddJsonOption(cmd, options->json, false);
      cmd->footer("German B/H names B natural H and B flat B.");
      cmd->callback([options] { RunNames(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
