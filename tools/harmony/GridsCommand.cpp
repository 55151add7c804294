// harmony grids: the guitar chord database from the command line. Lists and shows the grids
// of the factory and user packages, and adds, removes, exports and imports grids of the user
// package. The user package is taken from --db, else from HARMONY_GUITAR_DB, else from the
// user's data folder.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "../make-factory-grids/GridFromFrets.h"
#include "Command.h"
#include "GridDiagram.h"
#include "harmony/guitar/GChChord.h"
#include "harmony/guitar/GChChordFunctions.h"
#include "harmony/guitar/GChDatabase.h"
#include "harmony/guitar/GChHarmony.h"
#include "platform/AtomicWrite.h"
#include "platform/FileWrapper.h"
#include "platform/PropertyList.h"

namespace harmony::tool {

namespace {

struct GridsOptions {
  std::string db;
  // filters and fields
  std::string root, bass, type, library, name, frets, fingers, file;
  int difficulty = -1;
  bool favorites = false;
  long id = -1;
  std::vector<long> ids;
};

std::filesystem::path UserPackagePath(const GridsOptions& options) {
  if (!options.db.empty()) return options.db;
  if (const char* env = std::getenv("HARMONY_GUITAR_DB"); env != nullptr && *env != '\0') {
    return env;
  }
  return GChDatabase::defaultUserPackageLocation();
}

std::unique_ptr<GChDatabase> LoadDatabase(const GridsOptions& options) {
  return GChDatabase::initWithDiskData(kGChDefaultGuitarTuningName, UserPackagePath(options),
                                       GChDatabase::factoryPackageLocation());
}

// "A", "Bb", "F#" or 0..11; "none" for a grid without root (-1).
int ParseKey(const std::string& text, const char* what) {
  if (text == "none") return -1;
  if (!text.empty() && std::all_of(text.begin(), text.end(), ::isdigit)) {
    const int key = std::stoi(text);
    if (key <= 11) return key;
  } else if (const int pitch = GChMidiPitchForPitchString(text + "3"); pitch >= 0) {
    return pitch % 12;
  }
  throw InputError(std::string("bad ") + what + " '" + text + "': use a note name or 0..11");
}

// A name first ("9" is the ninth chord), then an id ("9" would be minor).
GChChordTypeId ParseType(const std::string& text) {
  for (int i = 0; i < GChNumberOfChordTypes(); ++i) {
    if (GChChordTypeNameForIndex(i) == text) return GChChordTypeIdForIndex(i);
  }
  for (int i = 0; i < GChNumberOfChordTypes(); ++i) {
    if (std::to_string(GChChordTypeIdForIndex(i)) == text) return GChChordTypeIdForIndex(i);
  }
  std::string known;
  for (int i = 0; i < GChNumberOfChordTypes(); ++i)
    known += " '" + GChChordTypeNameForIndex(i) + "'";
  throw InputError("unknown chord type '" + text + "'; known:" + known);
}

GChLibrary* LibraryNamed(const GChDatabase& db, const std::string& name, bool userOnly) {
  const auto libraries =
      userOnly ? db.allUserLibrariesForAnyTuning() : db.allLibrariesForAnyTuning();
  for (GChLibrary* library : libraries) {
    if (library->libraryName() == name) return library;
  }
  return nullptr;
}

std::shared_ptr<GChBasicChord> ChordWithID(const GChDatabase& db, long id) {
  for (GChLibrary* library : db.allLibrariesForAnyTuning()) {
    for (const auto& chord : library->basicChords()) {
      if (chord->dbChordID() == id) return chord;
    }
  }
  throw InputError("no chord grid with id " + std::to_string(id));
}

// The frets as a guitarist writes them: "x02210", or separated when a fret has two digits.
std::string FretsText(const GChBasicChord& grid) {
  std::vector<std::string> parts;
  bool wide = false;
  for (int s = 0; s < grid.numberOfStrings(); ++s) {
    const int fret = grid.maxAbsFretIndexPlusOneForStringIndex(s);
    parts.push_back(fret < 0 ? "x" : std::to_string(fret));
    wide = wide || fret >= 10;
  }
  std::string text;
  for (size_t i = 0; i < parts.size(); ++i) text += (wide && i > 0 ? "," : "") + parts[i];
  return text;
}

// The user's name behind the root for a grid the user named; otherwise the name its notes give
// on its stored root; the stored type's name where neither exists.
std::string GridTitle(const GChChord& chord, int capo) {
  if (!chord.userName().empty()) return chord.basicChord()->chordName(capo);
  if (std::string name = chord.chordName(capo); !name.empty()) return name;
  const int root = chord.rootNote(capo);
  const std::string type = GChChordTypeNameForId(chord.chordType());
  return (root < 0 ? std::string("?") : GChOctPitchDefaultName(root)) + " " +
         (type.empty() ? "(no type)" : type);
}

void ListGrids(const GridsOptions& options) {
  auto db = LoadDatabase(options);
  GChFilterParameter filter;
  if (!options.root.empty()) filter.setRootNoteToFilter(ParseKey(options.root, "root"));
  if (!options.bass.empty()) filter.setBassNoteToFilter(ParseKey(options.bass, "bass"));
  if (!options.type.empty()) filter.setChordTypeToFilter(ParseType(options.type));
  if (options.difficulty >= 0) filter.setDifficultyToFilter(options.difficulty);
  if (options.favorites) filter.setIsFavoriteToFilter(1);
  const GChLibrary* library = nullptr;
  if (!options.library.empty()) {
    library = LibraryNamed(*db, options.library, false);
    if (library == nullptr) throw InputError("no library named '" + options.library + "'");
  }
  const int capo = db->activeTuning()->capodasterOffset();
  const auto chords = db->allChordsFilteringLibrary(library, true, &filter);
  for (const auto& chord : chords) {
    std::cout << std::setw(5) << chord.dbChordID() << "  " << std::left << std::setw(20)
              << GridTitle(chord, capo) << std::setw(18) << FretsText(*chord.basicChord())
              << chord.difficultyLevel() << (chord.isFavorite() ? " *" : "  ") << "  "
              << chord.basicChord()->library()->libraryName() << std::right << '\n';
  }
  std::cout << chords.size() << " grid" << (chords.size() == 1 ? "" : "s") << '\n';
}

void ShowGrid(const GridsOptions& options) {
  auto db = LoadDatabase(options);
  const auto basic = ChordWithID(*db, options.id);
  const GChChord chord(basic, 0);
  const GChTuning* tuning = basic->library()->tuning();
  const int capo = tuning->capodasterOffset();
  std::cout << "Chord " << options.id << ": " << GridTitle(chord, capo) << '\n';
  std::cout << "Library: " << basic->library()->libraryName()
            << (basic->library()->isReadOnlyLibrary() ? " (read-only)" : "") << '\n';
  std::cout << "Tuning: " << tuning->tuningName() << " (" << tuning->tuningPitchesString() << ")\n";
  std::cout << "Difficulty: " << basic->difficultyLevel()
            << (basic->isFavoriteForTransposeIndex(0) ? ", favorite" : "") << "\n\n";

  PrintGridDiagram(*basic, std::cout);
  std::cout << "\nPitches: " << chord.stringFromPitches(capo) << '\n';
}

// Saves the user package; the ids of a library's chords are only known after reading it again.
long SaveAndFindID(GChDatabase& db, const GChLibrary* library, size_t index,
                   const GridsOptions& options) {
  if (!db.updateDatabaseFiles()) throw InputError("cannot write the user package");
  const std::string path = library->libraryPath();
  auto reread = LoadDatabase(options);
  for (GChLibrary* candidate : reread->allLibrariesForAnyTuning()) {
    if (candidate->libraryPath() == path && index < candidate->basicChords().size()) {
      return candidate->basicChords()[index]->dbChordID();
    }
  }
  return -1;
}

GChLibrary* UserLibrary(GChTuning* tuning, const std::string& name) {
  for (const auto& library : tuning->tuningLibraries()) {
    if (library->libraryName() == name) {
      if (library->isReadOnlyLibrary()) throw InputError("library '" + name + "' is read-only");
      return library.get();
    }
  }
  return tuning->createLibraryWithPath("", name);
}

void AddGrid(const GridsOptions& options) {
  const auto frets = grid_tools::ParseFrets(options.frets);
  if (!frets) throw InputError("bad frets '" + options.frets + "': use e.g. x32010 or x,3,2,0,1,0");
  std::vector<int> fingers;
  if (!options.fingers.empty()) {
    auto parsed = grid_tools::ParseFingers(options.fingers);
    if (!parsed) throw InputError("bad fingers '" + options.fingers + "': use digits 0..5");
    fingers = *parsed;
  }
  auto db = LoadDatabase(options);
  GChTuning* tuning = db->activeTuning();
  std::string error;
  auto grid = grid_tools::GridFromFrets(tuning->shortTuning2(), *frets, fingers, &error);
  if (!grid) throw InputError(error);
  if (grid->isEmpty()) throw InputError("a grid needs at least one pressed string");
  if (!options.root.empty()) grid->setRootNote(ParseKey(options.root, "root"));
  if (!options.bass.empty()) grid->setBassNote(ParseKey(options.bass, "bass"));
  if (!options.type.empty()) grid->setChordType(ParseType(options.type));
  if (options.difficulty >= 0) grid->setDifficultyLevel(std::min(options.difficulty, 7));
  if (options.favorites) grid->setIsFavorite(true, 0);
  grid->setUserName(options.name);
  GChLibrary* library =
      UserLibrary(tuning, options.library.empty() ? "My Chords" : options.library);
  grid->setDbChordID(db->takeNextDbChordID());
  library->addBasicChord(grid);
  const long id = SaveAndFindID(*db, library, library->basicChords().size() - 1, options);
  std::cout << "added chord " << id << " to '" << library->libraryName() << "'\n";
}

void RemoveGrid(const GridsOptions& options) {
  auto db = LoadDatabase(options);
  const auto basic = ChordWithID(*db, options.id);
  GChLibrary* library = basic->library();
  if (library->isReadOnlyLibrary()) {
    throw InputError("chord " + std::to_string(options.id) + " belongs to the read-only library '" +
                     library->libraryName() + "'");
  }
  library->deleteChordRange(basic.get());
  if (!db->updateDatabaseFiles()) throw InputError("cannot write the user package");
  std::cout << "removed chord " << options.id << '\n';
}

void ExportGrids(const GridsOptions& options) {
  auto db = LoadDatabase(options);
  std::vector<std::shared_ptr<GChBasicChord>> chords;
  if (!options.ids.empty()) {
    for (long id : options.ids) chords.push_back(ChordWithID(*db, id));
  } else if (!options.library.empty()) {
    const GChLibrary* library = LibraryNamed(*db, options.library, false);
    if (library == nullptr) throw InputError("no library named '" + options.library + "'");
    chords = library->basicChords();
  } else {
    for (const GChLibrary* library : db->allUserLibrariesForAnyTuning()) {
      chords.insert(chords.end(), library->basicChords().begin(), library->basicChords().end());
    }
  }
  GChPropertyList list = GChPropertyList::Array();
  for (const auto& chord : chords) list.append(chord->propertyList());
  const std::string xml = platform::PropertyListToXml(list);
  if (options.file == "-") {
    std::cout << xml;
    return;
  }
  if (!platform::WriteFileAtomically(options.file, reinterpret_cast<const uint8_t*>(xml.data()),
                                     xml.size())) {
    throw InputError("cannot write " + options.file);
  }
  std::cout << "exported " << chords.size() << " chord grid" << (chords.size() == 1 ? "" : "s")
            << " to " << options.file << '\n';
}

void ImportGrids(const GridsOptions& options) {
  const auto bytes = platform::ReadFileBytes(options.file);
  if (!bytes) throw InputError("cannot read " + options.file);
  const auto plist =
      platform::PropertyListFromBytes(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  if (!plist) throw InputError(options.file + " is no property list");
  std::vector<GChPropertyList> entries;
  if (plist->isArray()) {
    entries = plist->items();
  } else {
    entries.push_back(*plist);
  }
  auto db = LoadDatabase(options);
  const std::string libraryName = options.library.empty() ? "Imported Chords" : options.library;
  std::vector<std::shared_ptr<GChBasicChord>> grids;
  for (size_t i = 0; i < entries.size(); ++i) {
    std::shared_ptr<GChBasicChord> grid = GChBasicChord::fromPropertyList(entries[i]);
    if (!grid) throw InputError("entry " + std::to_string(i + 1) + " is no chord grid");
    if (!GChIsValidShortTuning(grid->shortTuning())) {
      throw InputError("entry " + std::to_string(i + 1) + " has no valid tuning");
    }
    if (grid->isEmpty())
      throw InputError("entry " + std::to_string(i + 1) + " has no pressed string");
    grids.push_back(std::move(grid));
  }
  for (auto& grid : grids) {
    GChTuning* tuning = db->tuningWithShortTuning(grid->shortTuning(), "");
    GChLibrary* library = UserLibrary(tuning, libraryName);
    grid->setDbChordID(db->takeNextDbChordID());
    library->addBasicChord(std::move(grid));
  }
  if (!db->updateDatabaseFiles()) throw InputError("cannot write the user package");
  std::cout << "imported " << grids.size() << " chord grid" << (grids.size() == 1 ? "" : "s")
            << " into '" << libraryName << "'\n";
}

// Names a grid given by its frets on the standard tuning: the root that gives the plainest
// name is proposed, and the grid is drawn with its pitches.
void NameGrid(const GridsOptions& options) {
  const auto frets = grid_tools::ParseFrets(options.frets);
  if (!frets) throw InputError("'" + options.frets + "' is no grid: write x32010 or x,3,2,0,1,0");
  std::string error;
  const auto basic = grid_tools::GridFromFrets(GChDefaultGuitarShortTuning(), *frets, {}, &error);
  if (basic == nullptr) throw InputError("'" + options.frets + "': " + error);
  const GChChord chord(basic, 0);
  if (chord.stringFromPitches(0).empty())
    throw InputError("'" + options.frets + "' sounds no note");
  const int root = GChProposedRootNoteFromChord(chord, 0);
  std::cout << options.frets << ": " << GChHarmonyStringFromChord(chord, root, -1, 0).value_or("")
            << "  (proposed root " << GChOctPitchDefaultName(root) << ")\n\n";
  PrintGridDiagram(*basic, std::cout);
  std::cout << "\nPitches: " << chord.stringFromPitches(0) << '\n';
}

void AddFilterOptions(CLI::App* cmd, GridsOptions& o) {
  cmd->add_option("--root", o.root, "Root: a note name (C, F#, Bb), 0..11, or none");
  cmd->add_option("--bass", o.bass, "Bass: a note name, 0..11, or none");
  cmd->add_option("--type", o.type, "Chord type: a name such as 'minor 7', or its id");
  cmd->add_option("--difficulty", o.difficulty, "Difficulty 0..7");
}

const CommandRegistration kRegistration{
    80, [](CLI::App& app) {
      auto options = std::make_shared<GridsOptions>();
      auto* grids = app.add_subcommand(
          "grids", "Guitar chord grids: list, show, name, add, remove, export, import");
      grids->require_subcommand(1, 1);
      grids->fallthrough();
      grids->add_option("--db", options->db,
                        "User package (default: $HARMONY_GUITAR_DB, else the user data folder)");

      auto* list = grids->add_subcommand("list", "List the grids of the factory and user packages");
      AddFilterOptions(list, *options);
      list->add_flag("--favorites", options->favorites, "Only favourites");
      list->add_option("--library", options->library, "Only this library");
      list->callback([options] { ListGrids(*options); });

      auto* show = grids->add_subcommand("show", "Draw a grid with its fingers and pitches");
      show->add_option("ID", options->id, "Chord id as listed")->required();
      show->callback([options] { ShowGrid(*options); });

      auto* name = grids->add_subcommand("name", "Name a grid given by its frets");
      name->add_option("FRETS", options->frets,
                       "Frets from the lowest string: x32010 or 8,10,10,9,8,8")
          ->required();
      name->callback([options] { NameGrid(*options); });

      auto* add = grids->add_subcommand("add", "Add a grid to a user library");
      add->add_option("FRETS", options->frets,
                      "Frets from the lowest string: x32010 or x,3,2,0,1,0")
          ->required();
      add->add_option("--fingers", options->fingers, "Fingers per string, e.g. 032010");
      add->add_option("--name", options->name, "Name of the grid");
      AddFilterOptions(add, *options);
      add->add_flag("--favorite", options->favorites, "Mark as favourite");
      add->add_option("--library", options->library, "User library (default 'My Chords')");
      add->callback([options] { AddGrid(*options); });

      auto* remove = grids->add_subcommand("remove", "Remove a grid from a user library");
      remove->add_option("ID", options->id, "Chord id as listed")->required();
      remove->callback([options] { RemoveGrid(*options); });

      auto* exportCmd = grids->add_subcommand("export", "Write grids as a property list");
      exportCmd->add_option("FILE", options->file, "Output file, - for standard output")
          ->required();
      exportCmd->add_option("--id", options->ids, "Chord ids (default: every user grid)");
      exportCmd->add_option("--library", options->library, "Every grid of this library");
      exportCmd->callback([options] { ExportGrids(*options); });

      auto* importCmd = grids->add_subcommand("import", "Read grids from a property list");
      importCmd->add_option("FILE", options->file, "Property list of grids")->required();
      importCmd->add_option("--library", options->library,
                            "User library (default 'Imported Chords')");
      importCmd->callback([options] { ImportGrids(*options); });
    }};

}  // namespace

}  // namespace harmony::tool
