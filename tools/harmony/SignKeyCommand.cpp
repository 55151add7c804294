// harmony signkey ROOT major|minor: a key signature with its tonic: its sign count, the byte
// of the host's events, the relative key and its names.

#include <iostream>
#include <memory>
#include <string>

#include "Command.h"
#include "KeyCommandSupport.h"
#include "ScaleCommandSupport.h"
#include "harmony/chords/SignKey.h"
#include "harmony/chords/SignKeyHeavy.h"
#include "harmony/chords/SignKeyInEv.h"

namespace harmony::tool {

namespace {

struct SignKeyOptions {
  std::string root;
  std::string type;
  JsonMode json = JsonMode::kNone;
};

Json SignKeyDetailsJson(const CSignKeyLite& signKey, const CKeyEnh& root, TSignKeyType type,
                        const CChordNamePrefs& prefs) {
  return SignKeyJson(signKey, prefs)
      .Add("scale", Json::ArrayOf(SpelledDegreeNames(signKey.ToSignKeyHeavy(), prefs)))
      .Add("event", static_cast<int>(ToSignKeyInEv(root, type)))
      .Add("deprecatedEvent", static_cast<int>(ToSignKeyInEvDeprecated(signKey)))
      .Add("parallel", SignKeyJson(signKey.ParallelSignKey(), prefs));
}

void RunSignKey(const SignKeyOptions& options) {
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  const CKeyEnh root = ReadKeyName(WithStandardInput(options.root), prefs);
  const TSignKeyType type = options.type == "minor" ? TSignKeyType::Minor : TSignKeyType::Major;
  const CSignKeyLite signKey(CKeyEnh(NormalizedKeyNr(root.KeyNr), root.Enh), type);
  if (options.json == JsonMode::kNative) return PrintNativeJson(signKey);
  if (options.json == JsonMode::kStrict) {
    return PrintJson(SignKeyDetailsJson(signKey, root, type, prefs));
  }

  CChordNamePrefs german;
  german.GermanAccidentals = 1;
  CChordNamePrefs solfege;
  solfege.Solfege = 1;

  std::cout << signKey.NameLong(prefs) << '\n';
  std::cout << "  signs      " << SignsText(signKey.SignsCount()) << '\n';
  std::cout << "  scale      " << SpelledDegrees(signKey.ToSignKeyHeavy(), prefs) << '\n';
  std::cout << "  event      " << static_cast<int>(ToSignKeyInEv(root, type))
            << "  (deprecated form " << static_cast<int>(ToSignKeyInEvDeprecated(signKey)) << ")\n";
  std::cout << "  parallel   " << signKey.ParallelSignKey().NameLong(prefs) << '\n';
  KeyTextTable names({"  names", "short", "long"});
  names.AddRow({"  letters", signKey.NameShort(prefs), signKey.NameLong(prefs)});
  names.AddRow({"  German", signKey.NameShort(german), signKey.NameLong(german)});
  names.AddRow({"  solfege", signKey.NameShort(solfege), signKey.NameLong(solfege)});
  names.Print(std::cout);
}

const CommandRegistration kRegistration{
    45, [](CLI::App& app) {
      auto options = std::make_shared<SignKeyOptions>();
      CLI::App* cmd = app.add_subcommand(
          "signkey", "A key signature with its tonic: signs, event byte, relative key and names");
      cmd->add_option("ROOT", options->root,
                      "Key name of the tonic, e.g. F# or Eb (- reads standard input)")
          ->required();
      cmd->add_option("TYPE", options->type, "major or minor")
          ->required()
          ->check(CLI::IsMember({"major", "minor"}));
      AddLenientFlag(cmd);
      AddJsonOption(cmd, options->json, true);
      cmd->footer(
          "The event byte is 7 + signs for a major key and 23 + signs for a minor key; a\n"
          "spelling it can't hold is written as its enharmonic neighbour (A# major as Bb).");
      cmd->callback([options] { RunSignKey(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
