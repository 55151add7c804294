// harmony transpose KEY INTERVAL: moves a spelled key by an interval in semitones.

#include <iostream>
#include <memory>
#include <string>

#include "Command.h"
#include "KeyCommandSupport.h"

namespace harmony::tool {

namespace {

struct TransposeOptions {
  std::string key;
  int intvl = 0;
};

void RunTranspose(const TransposeOptions& options) {
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  const CKeyEnh from = ReadWholeKey(options.key, prefs);
  CKeyEnh to = from;
  to.TranposeThis(options.intvl);
  KeyTextTable table({"", "key", "spelling", "name"}, {false, true, false, false});
  table.AddRow({"from", std::to_string(from.KeyNr), EnhText(from.Enh),
                KeyNrAndEnhToName(from.KeyNr, from.Enh, prefs)});
  table.AddRow({"to", std::to_string(to.KeyNr), EnhText(to.Enh),
                KeyNrAndEnhToName(to.KeyNr, to.Enh, prefs)});
  std::cout << "interval " << options.intvl << '\n';
  table.Print(std::cout);
}

const CommandRegistration kRegistration{
    20, [](CLI::App& app) {
      auto options = std::make_shared<TransposeOptions>();
      CLI::App* cmd = app.add_subcommand(
          "transpose", "Transpose a spelled key by an interval in semitones, keeping its spelling");
      cmd->add_option("KEY", options->key, "Key name, e.g. Db or F#")->required();
      cmd->add_option("INTERVAL", options->intvl, "Semitones, negative downwards (e.g. -2)")
          ->required();
      cmd->footer("Negative intervals are accepted as they stand: harmony transpose C -2");
      cmd->callback([options] { RunTranspose(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
