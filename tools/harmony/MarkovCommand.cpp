// harmony markov: the Markov chord model from the command line. learn reads chord lists,
// positioned chord strings and Billboard annotations into a model file; generate draws a
// progression of so many bars in a key (and, with --midi, as a MIDI file to hear); fill proposes chords for the gaps of a chord list;
// rate prints how well a chord list fits the model; convert shows what learn reads from a
// file; holdout measures how often real progressions outrank their chords shuffled.

#include <algorithm>
#include <array>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <limits>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "ChordMidi.h"
#include "Command.h"
#include "KeyCommandSupport.h"
#include "MarkovHoldout.h"
#include "MarkovPieces.h"
#include "MarkovSupport.h"
#include "harmony/chords/SignKey.h"
#include "harmony/chords/Voicing.h"
#include "harmony/markov/MarkovHarmChords.h"
#include "platform/Clock.h"
#include "platform/Random.h"

namespace harmony::tool {

namespace {

using nlohmann::json;

struct MarkovOptions {
  std::vector<std::string> inputs;
  std::string output;
  std::string model;
  std::string text;
  std::string file;
  std::string key = "C";
  std::string method = "weights";
  std::uint64_t history = 3;
  int bars = 0;
  std::uint64_t samples = 20;
  double variety = 0.0;
  std::uint32_t seed = 0;
  int every = 10;
  bool seeded = false;
  bool one = false;
  bool json = false;
  bool ascii = false;
  std::string midi;
};

struct TMethodName {
  const char* name;
  CHarmonicAnalyse::TAnalyse analyse;
};

constexpr std::array<TMethodName, 4> kMethods{{
    {"none", CHarmonicAnalyse::kAnalyseNone},
    {"tonic", CHarmonicAnalyse::kAnalyseTonicProgressions},
    {"cadence", CHarmonicAnalyse::kAnalyseCadenceProgressions},
    {"weights", CHarmonicAnalyse::kAnalyseCenterWeights},
}};

CHarmonicAnalyse::TAnalyse Method(const MarkovOptions& options) {
  for (const TMethodName& method : kMethods) {
    if (options.method == method.name) return method.analyse;
  }
  return CHarmonicAnalyse::kAnalyseCenterWeights;
}

CChordNamePrefs Prefs(const MarkovOptions& options) {
  CChordNamePrefs prefs;
  prefs.AsciiAccidentals = options.ascii ? 1 : 0;
  return prefs;
}

void Seed(const MarkovOptions& options) {
  if (options.seeded) platform::SeedRandom(options.seed);
}

std::string Fixed(double value, int decimals) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(decimals) << value;
  return text.str();
}

json Distance(std::int32_t distance) {
  return distance >= 0 && distance <= 11 ? json(distance) : json(nullptr);
}

json ChordJson(const CHarmAnlsChord& chord, double position, double length,
               const CChordNamePrefs& prefs) {
  return {{"position", position},
          {"length", length},
          {"chord", chord.IsUndef() ? json(nullptr) : json(ChordToken(chord, prefs, ""))},
          {"root_distance", Distance(chord.RootDistToHarmCenter)},
          {"bass_distance", Distance(chord.BassDistToHarmCenter)}};
}

json ChordsJson(const CHarmAnlsChords& chords, const CChordNamePrefs& prefs) {
  json list = json::array();
  for (std::size_t i = 0; i + 1 < chords.size(); ++i) {
    list.push_back(ChordJson(chords[i], chords[i].Position,
                             chords[i + 1].Position - chords[i].Position, prefs));
  }
  return list;
}

// --- learn

void RunLearn(const MarkovOptions& options) {
  const std::vector<std::filesystem::path> files = MarkovInputFiles(options.inputs);
  VariableLengthMarkovModel model(options.history);
  std::size_t sequences = 0;
  std::size_t chords = 0;
  const std::uint64_t start = platform::MonotonicTicks();
  std::uint64_t lastReport = start;
  constexpr std::uint64_t kReportEvery = 1000000000;  // nanoseconds
  for (std::size_t i = 0; i < files.size(); ++i) {
    const TAnalysedPiece piece = AnalysePiece(ReadMarkovPiece(files[i]), Method(options));
    for (const std::vector<CMarkovObject>& run : MarkovChordRuns(piece.Chords, 2)) {
      model.StartSequence();
      for (const CMarkovObject& object : run) model.LearnAddSymbol(object);
      model.EndSequence();
      ++sequences;
      chords += run.size();
    }
    if (const std::uint64_t now = platform::MonotonicTicks(); now - lastReport >= kReportEvery) {
      std::cerr << "learned " << i + 1 << " of " << files.size() << " files\n";
      lastReport = now;
    }
  }
  if (!model.SaveToFile(options.output)) {
    throw InputError("cannot write the model file \"" + options.output + "\"");
  }
  if (options.json) {
    std::cout << json{{"model", options.output},
                      {"files", files.size()},
                      {"sequences", sequences},
                      {"chords", chords},
                      {"symbols", model.Objects().size()},
                      {"histories", model.TransitionMap().size()},
                      {"max_history", model.MaxHistoryLength()}}
                     .dump(2)
              << '\n';
    return;
  }
  std::cout << "Learned " << files.size() << " files (" << sequences << " sequences, " << chords
            << " chords) into " << options.output << ": " << model.Objects().size() << " symbols, "
            << model.TransitionMap().size() << " histories up to length "
            << model.MaxHistoryLength() << '\n';
}

// --- generate

CHarmCenterLite CenterOfKey(const std::string& text, const CChordNamePrefs& prefs) {
  const CSignKeyLite signKey = ReadSignKey(text, prefs);
  const CHarmCenterLite center(signKey);
  if (signKey.IsUndef() || center.RootKeyEnh.IsUndef()) {
    throw InputError("\"" + text + "\" is not a key (a root with major or minor, e.g. Eb, F#m)");
  }
  return center;
}

// The progression voiced and led smoothly, each chord until the next one starts (the last
// entry of the chords only closes the progression).
void WriteChordsMidi(const CHarmAnlsChords& chords, const std::string& path) {
  TMidiSong song = ChordSong();
  int top = -1;
  for (std::size_t i = 0; i + 1 < chords.size(); ++i) {
    std::vector<unsigned char> notes = chords[i].VoicingNotesNrs(TChordVoicingPrefs{});
    if (notes.empty()) continue;
    if (top >= 0) TransposeChordBasedOnPreviousChords(notes, top);
    top = notes.back();
    AddChordNotes(song, notes, chords[i].Position, chords[i + 1].Position - chords[i].Position);
  }
  std::string error;
  if (!WriteMidiFile(song, path, error)) throw InputError(error);
}

void RunGenerate(const MarkovOptions& options) {
  const CChordNamePrefs prefs = Prefs(options);
  const CHarmCenterLite center = CenterOfKey(options.key, prefs);
  std::unique_ptr<VariableLengthMarkovModel> model = LoadMarkovModel(options.model);
  Seed(options);
  const TMarkovBars generated =
      GenerateMarkovBars(*model, options.bars, center, options.samples, options.variety);
  if (generated.Chords.empty()) {
    throw InputError("the model found no progression of exactly " + std::to_string(options.bars) +
                     " bars that ends as its pieces end");
  }
  const TMarkovSampledSequence& result = generated.Sequence;
  const CHarmAnlsChords& chords = generated.Chords;
  const std::string list = ChordListText(chords, prefs, "N.C.");
  if (!options.midi.empty()) WriteChordsMidi(chords, options.midi);
  if (options.json) {
    std::cout << json{{"key", center.NameLong(prefs)},
                      {"bars", options.bars},
                      {"seed", options.seeded ? json(options.seed) : json(nullptr)},
                      {"chord_list", list},
                      {"chords", ChordsJson(chords, prefs)},
                      {"log_weight", result.LogWeight},
                      {"drawn", result.Count},
                      {"candidates", generated.Candidates},
                      {"tries", model->LastSamplingRun().Tries}}
                     .dump(2)
              << '\n';
    return;
  }
  std::cout << list << '\n';
}

// --- fill

std::string TextOrFile(const MarkovOptions& options) {
  if (options.file.empty()) return options.text;
  const TMarkovPiece piece = ReadMarkovPiece(options.file);
  if (piece.Kind == TMarkovPieceKind::kPositioned) {
    throw InputError("\"" + options.file + "\" holds positioned chords; give a chord list");
  }
  return piece.Text;
}

// Strictly, every chord symbol of the list is read whole; the gaps ("?", "N.C.") are none.
void CheckChordsAroundGaps(const std::string& text) {
  std::istringstream words(text);
  std::string symbols;
  for (std::string word; words >> word;) {
    if (word != "?" && word != "N.C.") symbols += word + ' ';
  }
  CheckChordList(symbols, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs());
}

TAnalysedPiece PieceOfText(const std::string& text, const MarkovOptions& options) {
  CheckChordsAroundGaps(text);
  TAnalysedPiece piece = AnalyseChordList(text, Method(options));
  if (piece.Chords.empty()) throw InputError("no chords in \"" + text + "\"");
  return piece;
}

CHarmAnlsChords PieceChords(const TAnalysedPiece& piece) {
  CHarmAnlsChords chords;
  for (std::size_t i = 0; i < piece.Chords.size(); ++i) {
    chords.emplace_back(static_cast<const CHarmAnlsChord&>(piece.Chords[i]), piece.Positions[i]);
  }
  chords.emplace_back(CHarmAnlsChord_Undef, piece.Positions.back() + piece.Chords.back().Length);
  return chords;
}

// What the model is shown for the gap at `gap`: the chords of the longest history before it,
// with start symbols in front where the piece begins closer than that, then the gap and the
// rest. The model fills the first gap it is shown and reads the history in front of it, so
// the gap stands right behind a whole history. No value while a gap in that history is
// still unfilled.
std::optional<TMarkovHistory> GapContext(VariableLengthMarkovModel& model,
                                         const TMarkovHistory& symbols, std::size_t gap) {
  const std::size_t history = model.MaxHistoryLength();
  const std::size_t first = gap > history ? gap - history : 0;
  for (std::size_t i = first; i < gap; ++i) {
    if (symbols[i]->IsGap()) return std::nullopt;
  }
  TMarkovHistory context(history - (gap - first),
                         model.Objects().insertObjectIfUnique(CMarkovObject::Start()));
  context.insert(context.end(), symbols.begin() + static_cast<long>(first), symbols.end());
  return context;
}

// One chord per gap, proposed by what comes before it.
void FillOneChordPerGap(VariableLengthMarkovModel& model, const TAnalysedPiece& piece,
                        const std::vector<CMarkovObject>& objects, TMarkovHistory& symbols,
                        const MarkovOptions& options) {
  const CChordNamePrefs prefs = Prefs(options);
  CHarmAnlsChords chords = PieceChords(piece);
  json gaps = json::array();
  for (std::size_t i = 0; i < objects.size(); ++i) {
    if (!objects[i].IsGap()) continue;
    json gap = {{"position", piece.Positions[i]}, {"length", piece.Chords[i].Length}};
    const std::optional<TMarkovHistory> before = GapContext(model, symbols, i);
    const TMarkovSymbol chosen = before ? model.FillGapInSequence(*before) : model.NullSymbol();
    if (!model.IsNull(chosen) && chosen->IsChord()) {
      symbols[i] = chosen;
      chords[i] = HarmChordForMarkovObject(*chosen, piece.Centers[i], piece.Positions[i]);
      gap["chord"] = ChordToken(chords[i], prefs, "?");
    } else {
      const std::string why = !before ? "a gap just before it has no chord"
                              : model.IsNull(chosen)
                                  ? "the model knows no chord after the chords before it"
                                  : "the model would end the piece here";
      gap["chord"] = nullptr;
      gap["reason"] = why;
      if (!options.json) {
        std::cerr << "no chord for the gap at beat " << Fixed(piece.Positions[i], 0) << ": " << why
                  << '\n';
      }
    }
    gaps.push_back(gap);
  }
  const std::string list = ChordListText(chords, prefs, "?");
  if (options.json) {
    std::cout << json{{"chord_list", list}, {"gaps", gaps}}.dump(2) << '\n';
    return;
  }
  std::cout << list << '\n';
}

// The center of the piece at a position: that of the chord or gap sounding there.
const CHarmCenterLite& CenterAt(const TAnalysedPiece& piece, double position) {
  std::size_t i = 0;
  while (i + 1 < piece.Positions.size() && piece.Positions[i + 1] <= position) ++i;
  return piece.Centers[i];
}

// Each gap filled with chords that take exactly its beats and lead into the chord after it,
// found by the model's search with the piece as template.
void FillBySearch(VariableLengthMarkovModel& model, const TAnalysedPiece& piece,
                  const TMarkovHistory& symbols, const MarkovOptions& options) {
  const CChordNamePrefs prefs = Prefs(options);
  TMarkovGenerateOptions search = ToolGenerateOptions(model, options.samples, options.variety);
  search.Objects = symbols;
  // A fixed chord may follow what the model heard after the last chord alone.
  search.EvidenceHistory = 1;
  TMarkovSampledSequence result;
  std::vector<TMarkovSampledSequence> candidates;
  model.SampleSequenceWithLength(result, candidates, true, search);
  if (result.empty()) {
    throw InputError(
        "the model found no chords that fill the gaps and lead into the chords after them "
        "(--one proposes a chord for each gap by what comes before it)");
  }
  CHarmAnlsChords chords;
  double position = piece.Positions.front();
  for (const TMarkovSymbol& symbol : result.Objects) {
    chords.push_back(HarmChordForMarkovObject(*symbol, CenterAt(piece, position), position));
    position += symbol->Length();
  }
  chords.emplace_back(CHarmAnlsChord_Undef, position);
  const std::string list = ChordListText(chords, prefs, "N.C.");
  if (!options.midi.empty()) WriteChordsMidi(chords, options.midi);
  if (options.json) {
    std::cout << json{{"chord_list", list},
                      {"chords", ChordsJson(chords, prefs)},
                      {"log_weight", result.LogWeight},
                      {"drawn", result.Count},
                      {"candidates", candidates.size()}}
                     .dump(2)
              << '\n';
    return;
  }
  std::cout << list << '\n';
}

void RunFill(const MarkovOptions& options) {
  const std::string text = TextOrFile(options);
  const TAnalysedPiece piece = PieceOfText(text, options);
  std::vector<CMarkovObject> objects;
  MarkovObjectsVectorForHarmChords(piece.Chords, objects);
  if (std::none_of(objects.begin(), objects.end(), [](const auto& o) { return o.IsGap(); })) {
    throw InputError("no gap (? or N.C.) to fill in \"" + text + "\"");
  }
  std::unique_ptr<VariableLengthMarkovModel> model = LoadMarkovModel(options.model);
  Seed(options);
  TMarkovHistory symbols;
  model->IteratorSequenceForObjects(objects, symbols);
  if (options.one) {
    FillOneChordPerGap(*model, piece, objects, symbols, options);
  } else {
    FillBySearch(*model, piece, symbols, options);
  }
}

// --- rate

void RunRate(const MarkovOptions& options) {
  const CChordNamePrefs prefs = Prefs(options);
  const TAnalysedPiece piece = PieceOfText(TextOrFile(options), options);
  std::unique_ptr<VariableLengthMarkovModel> model = LoadMarkovModel(options.model);
  std::vector<CMarkovObject> objects;
  MarkovObjectsVectorForHarmChords(piece.Chords, objects);
  const TMarkovRating rating = RateMarkovObjects(*model, objects);
  const double perChord = rating.Evidence / static_cast<double>(objects.size());
  if (options.json) {
    json chords = json::array();
    for (std::size_t i = 0; i < objects.size(); ++i) {
      json chord = ChordJson(piece.Chords[i], piece.Positions[i], piece.Chords[i].Length, prefs);
      chord["probability"] = rating.Probabilities[i];
      chord["history"] = rating.HistoryLengths[i];
      chords.push_back(chord);
    }
    std::cout << json{{"evidence", rating.Evidence},
                      {"per_chord", perChord},
                      {"unknown_windows", rating.UnknownWindows},
                      {"chords", chords}}
                     .dump(2)
              << '\n';
    return;
  }
  std::cout << "Evidence " << Fixed(rating.Evidence, 2) << " (natural logarithm) for "
            << objects.size() << " chords, " << Fixed(perChord, 2) << " a chord; "
            << rating.UnknownWindows << " windows the model never heard\n";
  KeyTextTable table({"   ", "position", "chord", "center", "probability", "after"},
                     {false, true, false, false, true, false});
  for (std::size_t i = 0; i < objects.size(); ++i) {
    const std::uint64_t history = rating.HistoryLengths[i];
    table.AddRow({"", Fixed(piece.Positions[i], 2), ChordToken(piece.Chords[i], prefs, "-"),
                  piece.Centers[i].RootKeyEnh.IsUndef() ? "-" : piece.Centers[i].NameShort(prefs),
                  Fixed(rating.Probabilities[i], 3),
                  history == 0
                      ? std::string("nothing known")
                      : std::to_string(history) + (history == 1 ? " symbol" : " symbols")});
  }
  table.Print(std::cout);
}

// --- convert

void RunConvert(const MarkovOptions& options) {
  for (const std::filesystem::path& file : MarkovInputFiles(options.inputs)) {
    const TMarkovPiece piece = ReadMarkovPiece(file);
    std::cout << "# " << piece.Source << '\n' << piece.Text;
    if (!piece.Text.empty() && piece.Text.back() != '\n') std::cout << '\n';
  }
}

// --- the command

void AddModelOptions(CLI::App* cmd, MarkovOptions& options) {
  cmd->add_option("--model", options.model, "Model file (default: the bundled model)");
}

void AddSearchOptions(CLI::App* cmd, MarkovOptions& options) {
  AddIntegerOption(cmd, "--samples", options.samples, 1, 10000,
                   "Candidates drawn before one is chosen by weight (default 20)");
  AddDecimalOption(cmd, "--variety", options.variety, 0.0, 1.0,
                   "0..1: how uncertain a history must be to be kept; above 0 the generator "
                   "leaves near-certain histories for shorter ones (default 0)");
}

void AddSeedOption(CLI::App* cmd, MarkovOptions& options) {
  AddIntegerOption(cmd, "--seed", options.seed, 0, std::numeric_limits<std::uint32_t>::max(),
                   "Seed of the random source: a seed repeats a result")
      ->each([&options](const std::string&) { options.seeded = true; });
}

void AddMethodOption(CLI::App* cmd, MarkovOptions& options) {
  cmd->add_option("--method", options.method,
                  "How the analysis finds the harmonic centers (default weights: the key whose "
                  "scale the chords fit, which leaves no chord outside a center)")
      ->check(CLI::IsMember({"none", "tonic", "cadence", "weights"}));
}

void AddTextOptions(CLI::App* cmd, MarkovOptions& options, const char* what) {
  CLI::Option* text = cmd->add_option("TEXT", options.text, what);
  CLI::Option* file = cmd->add_option("--file", options.file, "Read the chord list from a file");
  text->excludes(file);
}

void RequireTextOrFile(const MarkovOptions& options) {
  if (options.text.empty() && options.file.empty()) throw CLI::RequiredError("TEXT or --file");
}

const CommandRegistration kRegistration{
    85, [](CLI::App& app) {
      auto options = std::make_shared<MarkovOptions>();
      CLI::App* markov = app.add_subcommand(
          "markov", "Learn chord progressions, generate them, fill gaps and rate progressions");
      markov->require_subcommand(1, 1);
      markov->footer(
          "The model learns chords relative to their harmonic center, with their length in\n"
          "beats, so what it learned in one key serves in every key. Without --model the\n"
          "bundled model is used (learned from the Billboard corpus, see README).");

      CLI::App* learn = markov->add_subcommand("learn", "Learn a model from chord files");
      learn
          ->add_option("FILE", options->inputs,
                       "Chord lists, positioned chord strings or Billboard annotations, or "
                       "folders of them (*.txt, *.chords)")
          ->required();
      learn->add_option("-o,--output", options->output, "Model file to write")->required();
      AddIntegerOption(learn, "--history", options->history, 1, 8,
                       "Longest history learned (default 3)");
      AddMethodOption(learn, *options);
      learn->add_flag("--json", options->json, "Print the summary as JSON");
      learn->callback([options] { RunLearn(*options); });

      CLI::App* generate =
          markov->add_subcommand("generate", "Generate a progression of so many bars");
      AddIntegerOption(generate, "--bars", options->bars, 1, 256, "Bars of four beats")
          ->required();
      generate->add_option("--key", options->key,
                           "Key of the progression (default C), e.g. Eb, F#m");
      AddSearchOptions(generate, *options);
      AddModelOptions(generate, *options);
      AddSeedOption(generate, *options);
      generate->add_flag("--json", options->json, "Print the result as JSON");
      generate->add_flag("--ascii", options->ascii, "Write accidentals as # and b");
      generate->add_option("--midi", options->midi,
                           "Also write the progression, voiced, as a standard MIDI file");
      AddLenientFlag(generate);
      AddParserOption(generate);
      generate->callback([options] { RunGenerate(*options); });

      CLI::App* fill = markov->add_subcommand(
          "fill", "Fill the gaps (? or N.C.) of a chord list with chords that lead on");
      AddTextOptions(fill, *options,
                     "Chord list with gaps, e.g. \"Dm7 . G7 . | ? | C . . . | ? |\"");
      fill->add_flag("--one", options->one,
                     "One chord for each gap, proposed by the chords before it, instead of "
                     "chords that take the gap's beats and lead into the chord after it");
      AddSearchOptions(fill, *options);
      AddModelOptions(fill, *options);
      AddSeedOption(fill, *options);
      AddMethodOption(fill, *options);
      fill->add_flag("--json", options->json, "Print the result as JSON");
      fill->add_flag("--ascii", options->ascii, "Write accidentals as # and b");
      AddLenientFlag(fill);
      AddParserOption(fill);
      fill->callback([options] {
        RequireTextOrFile(*options);
        RunFill(*options);
      });

      CLI::App* rate = markov->add_subcommand("rate", "How well a chord list fits the model");
      AddTextOptions(rate, *options, "Chord list, e.g. \"C . . . | Am . . . | F . G . | C\"");
      AddModelOptions(rate, *options);
      AddMethodOption(rate, *options);
      rate->add_flag("--json", options->json, "Print the result as JSON");
      rate->add_flag("--ascii", options->ascii, "Write accidentals as # and b");
      AddLenientFlag(rate);
      AddParserOption(rate);
      rate->callback([options] {
        RequireTextOrFile(*options);
        RunRate(*options);
      });

      CLI::App* convert =
          markov->add_subcommand("convert", "Show the chord lists learn reads from files");
      convert->add_option("FILE", options->inputs, "Files or folders")->required();
      convert->callback([options] { RunConvert(*options); });

      CLI::App* holdout = markov->add_subcommand(
          "holdout",
          "Learn all but every tenth file, then rate those against their chords shuffled");
      holdout->add_option("FILE", options->inputs, "Files or folders")->required();
      AddIntegerOption(holdout, "--history", options->history, 1, 8,
                       "Longest history learned (default 3)");
      AddIntegerOption(holdout, "--every", options->every, 2, 1000,
                       "Hold out every so many files (default 10)");
      AddMethodOption(holdout, *options);
      AddSeedOption(holdout, *options);
      holdout->add_flag("--json", options->json, "Print the result as JSON");
      holdout->callback([options] {
        THoldoutSettings settings{options->inputs,
                                  options->history,
                                  options->every,
                                  Method(*options),
                                  options->seeded ? options->seed : 1u,
                                  options->json};
        RunMarkovHoldout(settings);
      });
    }};

}  // namespace

}  // namespace harmony::tool
