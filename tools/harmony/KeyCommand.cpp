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
  JsonMode json = JsonMode::kNone;
};

struct TReadKey {
  std::string text;
  CKeyEnh key;
  int consumed = 0;
};

// The key as the library reads it; strictly, the whole text must be the key.
TReadKey ReadKey(const std::string& text, const CChordNamePrefs& prefs) {
  TReadKey read{text, ReadKeyName(text, prefs), 0};
  CKeyEnh key;
  key.SetFromString(text, &read.consumed, prefs);
  return read;
}

void PrintKeysJson(const std::vector<TReadKey>& keys, JsonMode mode) {
  Json array = Json::Array();
  for (const TReadKey& read : keys) {
    if (mode == JsonMode::kNative) {
      PrintNativeJson(read.key);
      continue;
    }
    array.Push(Json::Object()
                   .Add("text", read.text)
                   .Add("key", KeyJson(read.key, GetCurrentChordNamePrefs()))
                   .Add("consumed", read.consumed));
  }
  if (mode == JsonMode::kStrict) PrintJson(array);
}

void RunKey(const KeyOptions& options) {
  CChordNamePrefs prefs;
  prefs.BIsH = options.bIsH ? 1 : 0;
  prefs.BIsBFlat = options.bIsBFlat ? 1 : 0;
  std::vector<TReadKey> keys;
  for (const std::string& text : WithStandardInput(options.texts, TSplit::kWords)) {
    keys.push_back(ReadKey(text, prefs));
  }
  if (options.json != JsonMode::kNone) return PrintKeysJson(keys, options.json);
  KeyTextTable table({"text", "key", "spelling", "name", "consumed", "json"},
                     {false, true, false, false, true, false});
  for (const TReadKey& read : keys) {
    std::ostringstream json;
    read.key.AppendJSONString(json);
    table.AddRow({read.text, std::to_string(read.key.KeyNr), EnhText(read.key.Enh),
                  KeyNrAndEnhToName(read.key.KeyNr, read.key.Enh, GetCurrentChordNamePrefs()),
                  std::to_string(read.consumed), json.str()});
  }
  table.Print(std::cout);
}

const CommandRegistration kRegistration{
    10, [](CLI::App& app) {
      auto options = std::make_shared<KeyOptions>();
      CLI::App* cmd = app.add_subcommand(
          "key", "Read key names (C, F#, Bbb, Cis, H, ...) as the start of a chord symbol");
      cmd->add_option("TEXT", options->texts,
                      "Texts to read, e.g. Bbb Cis H (- reads them from "
                      "standard input)")
          ->required();
      cmd->add_flag("--b-is-h", options->bIsH,
                    "Read with the B-is-H preference (H reads as B natural either way)");
      cmd->add_flag("--b-is-bflat", options->bIsBFlat, "A plain B reads as B flat");
      AddLenientFlag(cmd);
      AddJsonOption(cmd, options->json, true);
      cmd->footer(
          "consumed counts characters after Unicode sharp and flat signs became # and b; with\n"
          "--lenient a text may go on behind the key. The name is written with the default\n"
          "naming preferences.");
      cmd->callback([options] { RunKey(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
