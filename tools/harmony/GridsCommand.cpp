// harmony grids: the guitar chord database from the command line. Lists, shows and names the
// grids of the factory and user packages, never writing anything; adds, removes, exports and
// imports grids of the user package (GridsEditCommands.cpp). The user package is taken from
// --db, else from HARMONY_GUITAR_DB, else from the user's data folder.

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "../make-factory-grids/GridFromFrets.h"
#include "Command.h"
#include "GridDiagram.h"
#include "GridsSupport.h"
#include "KeyCommandSupport.h"
#include "harmony/guitar/GChChordFunctions.h"
#include "harmony/guitar/GChHarmony.h"
#include "harmony/guitar/GChLibrary.h"
#include "harmony/guitar/GChTuning.h"
#include "harmony/pitch/KeyNames.h"

namespace harmony::tool {

namespace {

std::vector<GChChord> FilteredChords(const GChDatabase& db, const GridsOptions& options) {
  const GChFilterParameter filter = GridFilter(options);
  const GChLibrary* library = nullptr;
  if (!options.library.empty()) {
    for (const GChLibrary* candidate : db.allLibrariesForAnyTuning()) {
      if (candidate->libraryName() == options.library) library = candidate;
    }
    if (library == nullptr) throw InputError("no library named '" + options.library + "'");
  }
  return db.allChordsFilteringLibrary(library, true, &filter);
}

void ListGrids(const GridsOptions& options) {
  const auto db = LoadDatabase(options);
  const int capo = db->activeTuning()->capodasterOffset();
  const std::vector<GChChord> chords = FilteredChords(*db, options);
  if (options.json != JsonMode::kNone) {
    Json grids = Json::Array();
    for (const GChChord& chord : chords) grids.Push(GridJson(chord, capo));
    return PrintJson(Json::Object().Add("grids", std::move(grids)).Add("count", chords.size()));
  }
  KeyTextTable table({"id", "name", "frets", "difficulty", "library"}, {true});
  for (const GChChord& chord : chords) {
    table.AddRow({std::to_string(chord.dbChordID()), GridTitle(chord, capo),
                  FretsText(*chord.basicChord()),
                  std::to_string(chord.difficultyLevel()) + (chord.isFavorite() ? " *" : ""),
                  chord.basicChord()->library()->libraryName()});
  }
  if (!chords.empty()) table.Print(std::cout);
  std::cout << chords.size() << " grid" << (chords.size() == 1 ? "" : "s") << '\n';
}

void PrintGrid(const std::shared_ptr<GChBasicChord>& basic) {
  const GChChord chord(basic, 0);
  const GChTuning* tuning = basic->library()->tuning();
  const int capo = tuning->capodasterOffset();
  std::cout << "Chord " << basic->dbChordID() << ": " << GridTitle(chord, capo) << '\n';
  std::cout << "Library: " << basic->library()->libraryName()
            << (basic->library()->isReadOnlyLibrary() ? " (read-only)" : "") << '\n';
  std::cout << "Tuning: " << tuning->tuningName() << " (" << tuning->tuningPitchesString() << ")\n";
  std::cout << "Difficulty: " << basic->difficultyLevel()
            << (basic->isFavoriteForTransposeIndex(0) ? ", favorite" : "") << "\n\n";
  PrintGridDiagram(*basic, std::cout);
  std::cout << "\nPitches: " << chord.stringFromPitches(capo) << '\n';
}

// The grid of --id, or every grid of the chord symbol.
void ShowGrids(const GridsOptions& options) {
  const auto db = LoadDatabase(options);
  std::vector<std::shared_ptr<GChBasicChord>> grids;
  if (!options.id.empty()) {
    grids.push_back(ChordWithID(*db, ReadGridId(options.id)));
  } else {
    ReadChordSymbol(options.chord);  // an empty symbol would list every grid
    for (const GChChord& chord : FilteredChords(*db, options)) grids.push_back(chord.basicChord());
    if (grids.empty()) throw InputError("no grid of " + options.chord);
  }
  if (options.json != JsonMode::kNone) {
    Json array = Json::Array();
    for (const auto& grid : grids) {
      array.Push(GridJson(GChChord(grid, 0), grid->library()->tuning()->capodasterOffset()));
    }
    return PrintJson(Json::Object().Add("grids", std::move(array)));
  }
  for (std::size_t i = 0; i < grids.size(); ++i) {
    if (i > 0) std::cout << '\n';
    PrintGrid(grids[i]);
  }
}

// Names a grid given by its frets on the standard tuning: the root that gives the plainest
// name is proposed, and the grid is drawn with its pitches.
void NameGrid(const GridsOptions& options) {
  const std::string frets = WithStandardInput(options.frets);
  const std::vector<int> parsed = ReadGridFrets(frets);
  std::string error;
  const auto basic = grid_tools::GridFromFrets(GChDefaultGuitarShortTuning(), parsed, {}, &error);
  if (basic == nullptr) throw InputError("'" + frets + "': " + error);
  const GChChord chord(basic, 0);
  if (chord.stringFromPitches(0).empty()) throw InputError("'" + frets + "' sounds no note");
  const int root = GChProposedRootNoteFromChord(chord, 0);
  const std::string name = GChHarmonyStringFromChord(chord, root, -1, 0).value_or("");
  // The root spelled as the key with the fewest signs, as the name spells it.
  const CKeyEnh rootKey =
      root < 0
          ? CKeyEnh()
          : CKeyEnh(root, MakeSensefulEnhForKeyNrMajorScaleRootWithLeastSigns(root, TEnh_Undef));
  const CChordNamePrefs& prefs = GetCurrentChordNamePrefs();
  if (options.json != JsonMode::kNone) {
    Json pitches = Json::Array();
    for (int string = 0; string < chord.numberOfStrings(); ++string) {
      const int pitch = chord.pitchForStringIndex(string, 0);
      pitches.Push(pitch < 0 ? Json() : Json(GChMidiPitchDefaultName(pitch)));
    }
    return PrintJson(Json::Object()
                         .Add("frets", frets)
                         .Add("name", name)
                         .Add("proposedRoot", KeyJson(rootKey, prefs))
                         .Add("pitches", std::move(pitches)));
  }
  std::cout << frets << ": " << name << "  (proposed root "
            << (root < 0 ? std::string("-") : KeyNrAndEnhToName(rootKey.KeyNr, rootKey.Enh, prefs))
            << ")\n\n";
  PrintGridDiagram(*basic, std::cout);
  std::cout << "\nPitches: " << chord.stringFromPitches(0) << '\n';
}

void AddFilterOptions(CLI::App* cmd, GridsOptions& o) {
  cmd->add_option("--root", o.root, "Root: a note name (C, F#, Bb), 0..11, or none");
  cmd->add_option("--bass", o.bass, "Bass: a note name, 0..11, or none");
  cmd->add_option("--type", o.type,
                  "Chord type: a name such as 'minor 7', a symbol's ending such as m7, or an id");
  cmd->add_option("--difficulty", o.difficulty, "Difficulty 0..7");
}

}  // namespace

void AddGridsReadingCommands(CLI::App* grids, const std::shared_ptr<GridsOptions>& options) {
  auto* list = grids->add_subcommand("list", "List the grids of the factory and user packages");
  list->add_option("CHORD", options->chord,
                   "Only the grids of this chord, e.g. Am7 or D/F# (- reads standard input)");
  AddFilterOptions(list, *options);
  list->add_flag("--favorites", options->favorites, "Only favourites");
  list->add_option("--library", options->library, "Only this library");
  list->callback([options] {
    options->chord = options->chord.empty() ? "" : WithStandardInput(options->chord);
    ListGrids(*options);
  });

  auto* show = grids->add_subcommand("show", "Draw the grids of a chord, or one grid by its id");
  CLI::Option* chord = show->add_option("CHORD", options->chord,
                                        "A chord symbol, e.g. Am7 (- reads standard input)");
  CLI::Option* id = show->add_option("--id", options->id, "The id of one grid, as listed");
  chord->excludes(id);
  show->callback([options, chord, id] {
    if (chord->count() == 0 && id->count() == 0) throw CLI::RequiredError("CHORD or --id");
    if (chord->count() > 0) options->chord = WithStandardInput(options->chord);
    ShowGrids(*options);
  });

  auto* name = grids->add_subcommand("name", "Name a grid given by its frets");
  name->add_option("FRETS", options->frets,
                   "Frets from the lowest string: x32010 or 8,10,10,9,8,8 (- reads standard input)")
      ->required();
  name->callback([options] { NameGrid(*options); });
}

namespace {

const CommandRegistration kRegistration{
    80, [](CLI::App& app) {
      auto options = std::make_shared<GridsOptions>();
      auto* grids = app.add_subcommand(
          "grids", "Guitar chord grids: list, show, name, add, remove, export, import");
      grids->require_subcommand(1, 1);
      grids->fallthrough();
      grids->add_option("--db", options->db,
                        "User package (default: $HARMONY_GUITAR_DB, else the user data folder)");
      AddLenientFlag(grids);
      AddJsonOption(grids, options->json, false);
      grids->footer(
          "Factory grids keep the ids of their order; your own grids have ids of 100000 and\n"
          "more, made from the grid itself, so adding or removing grids never changes an id.\n"
          "list, show and name never write: the user package is made by the first add or "
          "import.");
      AddGridsReadingCommands(grids, options);
      AddGridsEditingCommands(grids, options);
    }};

}  // namespace

}  // namespace harmony::tool
