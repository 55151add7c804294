// harmony key TEXT...: reads key names the way chord symbols begin, and shows what was read.

#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "Command.h"
#include "KeyCommandSupport.h"
#include "harmony/pitch/KeyEnh.h"
#include "harmony/pitch/KeyNames.h"

namespace harmony::tool {

namespace {

struct KeyOptions {
  std::vector<std::string> texts;
  bool bIsH = false;
  bool bIsBFlat = false;
};

void RunKey(const KeyOptions& options) {
  CChordNamePrefs prefs;
  prefs.BIsH = options.bIsH ? 1 : 0;
  prefs.BIsBFlat = options.bIsBFlat ? 1 : 0;
  KeyTextTable table({"text", "key", "spelling", "name", "consumed", "json"},
                     {false, true, false, false, true, false});
  for (const std::string& text : options.texts) {
    CKeyEnh key;
    int consumed = 0;
    key.SetFromString(text, &consumed, prefs);
    if (key.KeyNr == kKeyNrUndef) {
      throw InputError("no key in \"" + text + "\": a key name starts with a letter A..H");
    }
    std::ostringstream json;
    key.AppendJSONString(json);
    table.AddRow({text, std::to_string(key.KeyNr), EnhText(key.Enh),
                  KeyNrAndEnhToName(key.KeyNr, key.Enh, GetCurrentChordNamePrefs()),
                  std::to_string(consumed), json.str()});
  }
  table.Print(std::cout);
}

const CommandRegistration kRegistration{
    10, [](CLI::App& app) {
      auto options = std::make_shared<KeyOptions>();
      CLI::App* cmd = app.add_subcommand(
          "key", "Read key names (C, F#, Bbb, Cis, H, ...) as the start of a chord symbol");
      cmd->add_option("TEXT", options->texts, "Texts to read, e.g. Bbb Cis H")->required();
      cmd->add_flag("--b-is-h", options->bIsH,
                    "Read with the B-is-H preference (H reads as B natural either way)");
      cmd->add_flag("--b-is-bflat", options->bIsBFlat, "A plain B reads as B flat");
      cmd->footer(
          "consumed counts characters after Unicode sharp and flat signs became # and b.\n"
          "The name is written with the default naming preferences.");
      cmd->callback([options] { RunKey(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
