// harmony scale TEXT...: reads scale names ("D dorian", "Eb melodic minor", "F# hm5") and
// shows root, type, mask, the spelled degrees and the key signature, or the JSON of the
// heavy scale with --json.

#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "Command.h"
#include "ScaleCommandSupport.h"
#include "harmony/chords/ScaleHeavy.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/chords/ScaleNameReader.h"

namespace harmony::tool {

namespace {

struct ScaleOptions {
  std::vector<std::string> texts;
  JsonMode json = JsonMode::kNone;
  bool ascii = false;
};

void Describe(const std::string& text, const CScaleHeavy& scale, const CChordNamePrefs& prefs,
              std::ostream& out) {
  const CScaleLite lite(scale);
  std::ostringstream type;
  type << scale.ScaleType();
  out << text << '\n';
  out << "  root     " << KeyNrAndEnhToName(lite.RootKeyEnh.KeyNr, lite.RootKeyEnh.Enh, prefs)
      << '\n';
  out << "  type     " << type.str() << " (" << lite.ScaleName() << ")\n";
  out << "  mask     " << lite.Semitones.Word() << "  " << lite.Semitones.GenericName() << '\n';
  out << "  degrees  " << SpelledDegrees(scale, prefs) << '\n';
  out << "  signs    " << SignsText(scale.SignsCount()) << '\n';
}

void RunScale(const ScaleOptions& options) {
  CChordNamePrefs prefs;
  prefs.AsciiAccidentals = options.ascii ? 1 : 0;
  const std::vector<std::string> texts = WithStandardInput(options.texts, TSplit::kLines);
  std::vector<CScaleHeavy> scales;
  for (const std::string& text : texts) scales.push_back(ReadScaleName(text, prefs));
  Json array = Json::Array();
  for (std::size_t i = 0; i < scales.size(); ++i) {
    if (options.json == JsonMode::kNative) {
      PrintNativeJson(scales[i]);
    } else if (options.json == JsonMode::kStrict) {
      array.Push(Json::Object().Add("text", texts[i]).Add("scale", ScaleJson(scales[i], prefs)));
    } else {
      if (i > 0) std::cout << '\n';
      Describe(texts[i], scales[i], prefs, std::cout);
    }
  }
  if (options.json == JsonMode::kStrict) PrintJson(array);
}

const CommandRegistration kRegistration{
    40, [](CLI::App& app) {
      auto options = std::make_shared<ScaleOptions>();
      CLI::App* cmd = app.add_subcommand(
          "scale", "Read scale names (D dorian, Eb melodic minor, F# hm5) and spell their degrees");
      cmd->add_option("TEXT", options->texts,
                      "Scale names, e.g. \"C# lydian\" \"Bb bebop dominant\" (- reads one per "
                      "line from standard input)")
          ->required();
      AddLenientFlag(cmd);
      AddJsonOption(cmd, options->json, true);
      cmd->add_flag("--ascii", options->ascii, "Write accidentals as # and b");
      cmd->footer(
          "A root alone means major; with --lenient a scale word that is not known also reads\n"
          "as major.\n"
          "Custom scales have no key signature of their own: their degrees are written as C\n"
          "major would write them.");
      cmd->callback([options] { RunScale(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
