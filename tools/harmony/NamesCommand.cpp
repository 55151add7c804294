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
  return {{"letters", letters},     {"ascii", ascii},          {"German", german},
          {"German B/H", germanBH}, {"solfege Ti", solfegeTi}, {"solfege Si", solfegeSi},
          {"spoken", spoken}};
}

void RunNames(const std::vector<std::string>& keys) {
  const std::vector<NamingStyle> styles = NamingStyles();
  std::vector<std::string> header = {"key"};
  for (const NamingStyle& style : styles) header.emplace_back(style.title);
  KeyTextTable table(header);
  for (const std::string& text : keys) {
    const CKeyEnh key = ReadWholeKey(text, GetCurrentChordNamePrefs());
    std::vector<std::string> row = {text};
    for (const NamingStyle& style : styles) {
      row.push_back(KeyNrAndEnhToName(key.KeyNr, key.Enh, style.prefs));
    }
    table.AddRow(row);
  }
  table.Print(std::cout);
}

const CommandRegistration kRegistration{
    15, [](CLI::App& app) {
      auto keys = std::make_shared<std::vector<std::string>>();
      CLI::App* cmd = app.add_subcommand("names", "Show a key's name in every naming style");
      cmd->add_option("KEY", *keys, "Key names, e.g. Bb F## Cisis")->required();
      cmd->footer("German B/H names B natural H and B flat B.");
      cmd->callback([keys] { RunNames(*keys); });
    }};

}  // namespace

}  // namespace harmony::tool
