// harmony key-of "CHORDS" | --file FILE: the key the chords suggest, the five best of the 24
// major and minor keys with their scores, and the key of each section where the piece
// modulates; --json for the same as JSON.

#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "Command.h"
#include "KeyCommandSupport.h"
#include "KeyEstimateSupport.h"
#include "harmony/analysis/HarmKeyEstimator.h"

namespace harmony::tool {

namespace {

constexpr int kShownKeys = 5;

struct KeyOfOptions {
  std::string text;
  std::string file;
  bool json = false;
  bool ascii = false;
};

std::string Fixed(double value, int decimals) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(decimals) << value;
  return text.str();
}

void PrintText(const THarmKeyRanking& ranking, const std::vector<THarmKeySection>& sections,
               const CChordNamePrefs& prefs) {
  std::cout << "Key " << ranking[0].Key.NameLong(prefs) << '\n';
  KeyTextTable keys({"  rank", "key", "score", "behind"}, {true, false, true, true});
  for (int i = 0; i < kShownKeys; ++i) {
    keys.AddRow({"  " + std::to_string(i + 1), ranking[i].Key.NameLong(prefs),
                 Fixed(ranking[i].Score, 3), Fixed(ranking[0].Score - ranking[i].Score, 3)});
  }
  keys.Print(std::cout);
  std::cout << "Sections\n";
  KeyTextTable table({"  from", "key"}, {true, false});
  for (const THarmKeySection& section : sections) {
    table.AddRow({"  " + Fixed(section.Position, 2), section.Key.NameLong(prefs)});
  }
  table.Print(std::cout);
}

void PrintJson(const THarmKeyRanking& ranking, const std::vector<THarmKeySection>& sections) {
  CChordNamePrefs ascii;
  ascii.AsciiAccidentals = 1;
  std::cout << "{\"key\":\"" << ranking[0].Key.NameLong(ascii) << "\",\"ranking\":[";
  for (int i = 0; i < kShownKeys; ++i) {
    std::cout << (i > 0 ? "," : "") << "{\"key\":\"" << ranking[i].Key.NameLong(ascii)
              << "\",\"score\":" << Fixed(ranking[i].Score, 4) << "}";
  }
  std::cout << "],\"sections\":[";
  for (std::size_t i = 0; i < sections.size(); ++i) {
    std::cout << (i > 0 ? "," : "") << "{\"position\":" << Fixed(sections[i].Position, 2)
              << ",\"key\":\"" << sections[i].Key.NameLong(ascii) << "\"}";
  }
  std::cout << "]}\n";
}

void RunKeyOf(const KeyOfOptions& options) {
  CChordNamePrefs prefs;
  prefs.AsciiAccidentals = options.ascii ? 1 : 0;
  const CHarmAnlsChords chords = ChordsForKeyEstimate(options.text, options.file);
  const CHarmKeyEstimator estimator;
  const THarmKeyEvidence evidence = CHarmKeyEstimator::Gather(chords);
  if (evidence.Duration <= 0.0) {
    throw InputError("no chord with a root: the key can't be told");
  }
  const THarmKeyRanking ranking = estimator.Rank(evidence);
  const std::vector<THarmKeySection> sections = estimator.Sections(chords);
  if (options.json) {
    PrintJson(ranking, sections);
  } else {
    PrintText(ranking, sections, prefs);
  }
}

const CommandRegistration kRegistration{
    62, [](CLI::App& app) {
      auto options = std::make_shared<KeyOfOptions>();
      CLI::App* cmd =
          app.add_subcommand("key-of", "The key a chord list suggests: the five best keys");
      CLI::Option* text = cmd->add_option(
          "TEXT", options->text, "Chord list, e.g. \"C . . . | F . G7 . | C\" (or use --file)");
      CLI::Option* file = cmd->add_option(
          "--file", options->file,
          "Read the chords from a file: a chord list, a Billboard annotation or MusicXML "
          "(.musicxml, .xml, .mxl); - for standard input");
      text->excludes(file);
      cmd->add_flag("--json", options->json, "Print the keys as JSON");
      cmd->add_flag("--ascii", options->ascii, "Write accidentals as # and b");
      AddLenientFlag(cmd);
      AddParserOption(cmd);
      cmd->footer(
          "Scores weigh the chord tones against the Krumhansl-Kessler key profiles, the\n"
          "chords as degrees of each key, cadences into its tonic and the first chord; higher\n"
          "is better and only differences count. Sections: the best key of eight bars of 4/4\n"
          "sliding by a bar; a new key takes over when it leads the current one in two\n"
          "windows running, from the middle of the first of them.");
      cmd->callback([options, text, file] {
        if (text->count() == 0 && file->count() == 0) {
          throw CLI::RequiredError("TEXT or --file");
        }
        RunKeyOf(*options);
      });
    }};

}  // namespace

}  // namespace harmony::tool
