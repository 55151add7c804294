// harmony diatonic SCALE: the chords a scale of seven degrees builds on each degree, triads
// and seventh chords stacked in thirds from its own tones, with their function in the key.

#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "AnalyseSupport.h"
#include "Command.h"
#include "KeyCommandSupport.h"
#include "ScaleCommandSupport.h"
#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/SignKeyHeavy.h"

namespace harmony::tool {

namespace {

struct DiatonicOptions {
  std::string scale;
  std::string functions = "roman";
  bool ascii = false;
  JsonMode json = JsonMode::kNone;
};

constexpr const char* kDegreeNumbers[] = {"1", "2", "3", "4", "5", "6", "7"};

// Functions are told in a major or a minor key: the scale's own, or for a mode the key of its
// kind on the same root (D dorian is told in D minor).
TSignKeyTypeNoUndef KeyKind(const CScaleHeavy& scale) {
  switch (scale.ScaleType()) {
    case st_min:
    case st_min_harm:
    case st_min_melo:
    case st_dorian:
    case st_phrygian:
    case st_locrian:
      return TSignKeyTypeNoUndef::Minor;
    default:
      return TSignKeyTypeNoUndef::Major;
  }
}

CChordLite StackedChord(const CScaleHeavy& scale, int degree, int tones) {
  std::set<int> steps;
  for (int i = 0; i < tones; ++i) steps.insert(degree + 2 * i);
  CChordLite chord;
  chord.SetFromChordHeavy(scale.ChordFromScaleStepSet(steps));
  return chord;
}

std::string ChordName(const CChordLite& chord, const CChordNamePrefs& prefs) {
  return chord.ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).Name(prefs);
}

void RunDiatonic(const DiatonicOptions& options) {
  CChordNamePrefs prefs;
  prefs.AsciiAccidentals = options.ascii ? 1 : 0;
  prefs.FunctionLetters = options.functions == "letters" ? 1 : 0;
  const CScaleHeavy scale = ReadScaleName(WithStandardInput(options.scale), prefs);
  if (scale.DegreesPerOctave() != 7) {
    throw InputError(CScaleLite(scale).Name(prefs) +
                     " has no seven degrees to stack thirds from (e.g. major, dorian, "
                     "harmonic minor)");
  }
  const CSignKeyHeavy key(scale.RootKeyEnh(), KeyKind(scale));
  KeyTextTable table({"degree", "triad", "seventh", "function"});
  Json chords = Json::Array();
  for (int degree = 0; degree < 7; ++degree) {
    const CChordLite triad = StackedChord(scale, degree, 3);
    const CChordLite seventh = StackedChord(scale, degree, 4);
    const std::string function = FunctionDisplayName(triad.HarmFuncNameIn(key, prefs));
    table.AddRow(
        {kDegreeNumbers[degree], ChordName(triad, prefs), ChordName(seventh, prefs), function});
    chords.Push(Json::Object()
                    .Add("degree", degree + 1)
                    .Add("triad", ChordJson(triad, prefs))
                    .Add("seventh", ChordJson(seventh, prefs))
                    .Add("function", function == "undef" ? Json() : Json(function)));
  }
  if (options.json != JsonMode::kNone) {
    return PrintJson(Json::Object()
                         .Add("scale", ScaleJson(scale, prefs))
                         .Add("key", SignKeyJson(CSignKeyLite(key), prefs))
                         .Add("chords", std::move(chords)));
  }
  std::cout << CScaleLite(scale).Name(prefs) << ": " << SpelledDegrees(scale, prefs)
            << "\nfunctions in " << CSignKeyLite(key).NameLong(prefs) << '\n';
  table.Print(std::cout);
}

const CommandRegistration kRegistration{
    48, [](CLI::App& app) {
      auto options = std::make_shared<DiatonicOptions>();
      CLI::App* cmd = app.add_subcommand(
          "diatonic", "The triads and seventh chords of a scale with their functions");
      cmd->add_option("SCALE", options->scale,
                      "A scale of seven degrees, e.g. \"Eb major\", \"A harmonic minor\", \"D "
                      "dorian\" (- reads standard input)")
          ->required();
      cmd->add_option("--functions", options->functions,
                      "Name functions as roman numerals or by function letters (default roman)")
          ->check(CLI::IsMember({"roman", "letters"}));
      cmd->add_flag("--ascii", options->ascii, "Write accidentals as # and b");
      AddLenientFlag(cmd);
      AddJsonOption(cmd, options->json, false);
      cmd->footer(
          "Each chord stacks thirds of the scale on its degree. Functions are told in the major\n"
          "or minor key of the scale's kind; undef marks a chord the key gives no function.");
      cmd->callback([options] { RunDiatonic(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
