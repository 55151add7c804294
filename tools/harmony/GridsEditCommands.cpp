// harmony grids add | remove | export | import: the subcommands that change the user package
// or write grids out. The package is made by the first grid saved into it.

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "../make-factory-grids/GridFromFrets.h"
#include "Command.h"
#include "GridsSupport.h"
#include "harmony/guitar/GChLibrary.h"
#include "harmony/guitar/GChTuning.h"
#include "platform/AtomicWrite.h"
#include "platform/PropertyList.h"

namespace harmony::tool {

namespace {

void Save(GChDatabase& db) {
  if (!db.updateDatabaseFiles()) {
    throw InputError("cannot write the user package " + db.defaultUserPackagePath().string() +
                     ": " + db.writeProblem());
  }
}

// A library the user's change may go to: neither marked read-only nor read from a damaged
// file, which would be written over with the part that was read.
void CheckWritable(const GChLibrary& library) {
  if (library.isReadOnlyLibrary()) {
    throw InputError("library '" + library.libraryName() + "' is read-only");
  }
  if (library.isReadInPart()) {
    throw InputError("library '" + library.libraryName() + "' was read only in part from " +
                     library.libraryPath() + "; it is not changed until the file is repaired " +
                     "('harmony grids --lenient export FILE' saves what was read)");
  }
}

// The id a grid has once saved: read the package again and find it at its place.
long SavedId(const GridsOptions& options, const GChLibrary* library, size_t index) {
  const std::string path = library->libraryPath();
  const auto reread = LoadDatabase(options, false);
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
      CheckWritable(*library);
      return library.get();
    }
  }
  CheckUtf8Name(name, "library name");
  return tuning->createLibraryWithPath("", name);
}

std::shared_ptr<GChBasicChord> GridToAdd(const GridsOptions& options, GChTuning* tuning) {
  const std::vector<int> frets = ReadGridFrets(WithStandardInput(options.frets));
  std::vector<int> fingers;
  if (!options.fingers.empty()) {
    auto parsed = grid_tools::ParseFingers(options.fingers);
    if (!parsed) throw InputError("bad fingers '" + options.fingers + "': use digits 0..5");
    fingers = *parsed;
  }
  std::string error;
  auto grid = grid_tools::GridFromFrets(tuning->shortTuning2(), frets, fingers, &error);
  if (!grid) throw InputError(error);
  if (grid->isEmpty()) throw InputError("a grid needs at least one pressed string");
  if (!options.root.empty()) grid->setRootNote(ReadGridKey(options.root, "root"));
  if (!options.bass.empty()) grid->setBassNote(ReadGridKey(options.bass, "bass"));
  if (!options.type.empty()) grid->setChordType(ReadGridType(options.type));
  if (const int difficulty = ReadDifficulty(options); difficulty >= 0) {
    grid->setDifficultyLevel(difficulty);
  }
  if (options.favorites) grid->setIsFavorite(true, 0);
  CheckUtf8Name(options.name, "grid name");
  grid->setUserName(options.name);
  return grid;
}

void AddGrid(const GridsOptions& options) {
  auto db = LoadDatabase(options);
  GChTuning* tuning = db->activeTuning();
  auto grid = GridToAdd(options, tuning);
  GChLibrary* library =
      UserLibrary(tuning, options.library.empty() ? "My Chords" : options.library);
  library->addBasicChord(grid);
  Save(*db);
  const long id = SavedId(options, library, library->basicChords().size() - 1);
  if (options.json != JsonMode::kNone) {
    return PrintJson(Json::Object().Add("added", id).Add("library", library->libraryName()));
  }
  std::cout << "added chord " << id << " to '" << library->libraryName() << "'\n";
}

void RemoveGrid(const GridsOptions& options) {
  auto db = LoadDatabase(options);
  const long id = ReadGridId(options.id);
  const auto basic = ChordWithID(*db, id);
  GChLibrary* library = basic->library();
  CheckWritable(*library);
  library->deleteChordRange(basic.get());
  Save(*db);
  if (options.json != JsonMode::kNone) return PrintJson(Json::Object().Add("removed", id));
  std::cout << "removed chord " << id << '\n';
}

std::vector<std::shared_ptr<GChBasicChord>> GridsToExport(const GChDatabase& db,
                                                          const GridsOptions& options) {
  std::vector<std::shared_ptr<GChBasicChord>> chords;
  if (!options.ids.empty()) {
    for (const std::string& id : options.ids) chords.push_back(ChordWithID(db, ReadGridId(id)));
    return chords;
  }
  bool named = false;
  for (const GChLibrary* library : db.allLibrariesForAnyTuning()) {
    named = named || library->libraryName() == options.library;
    const bool wanted = options.library.empty() ? !library->isReadOnlyLibrary()
                                                : library->libraryName() == options.library;
    if (wanted) {
      chords.insert(chords.end(), library->basicChords().begin(), library->basicChords().end());
    }
  }
  if (!named && !options.library.empty()) {
    throw InputError("no library named '" + options.library + "'");
  }
  return chords;
}

void ExportGrids(const GridsOptions& options) {
  if (options.file == "-" && options.json != JsonMode::kNone) {
    throw CLI::ValidationError("--json", "the property list itself goes to standard output");
  }
  const auto db = LoadDatabase(options);
  const auto chords = GridsToExport(*db, options);
  GChPropertyList list = GChPropertyList::Array();
  for (const auto& chord : chords) list.append(chord->propertyList());
  const std::string xml = platform::PropertyListToXml(list);
  if (options.file == "-") {
    std::cout << xml;
    return;
  }
  std::string why;
  if (!platform::WriteFileAtomically(options.file, reinterpret_cast<const uint8_t*>(xml.data()),
                                     xml.size(), &why)) {
    throw InputError("cannot write " + options.file + ": " + why);
  }
  if (options.json != JsonMode::kNone) {
    return PrintJson(Json::Object().Add("exported", chords.size()).Add("file", options.file));
  }
  std::cout << "exported " << chords.size() << " chord grid" << (chords.size() == 1 ? "" : "s")
            << " to " << options.file << '\n';
}

std::vector<std::shared_ptr<GChBasicChord>> GridsToImport(const std::string& file) {
  const std::string bytes = ReadInputBytes(file, platform::TReadKind::kGridLibrary);
  const auto plist = platform::PropertyListFromBytes(bytes.data(), bytes.size());
  if (!plist) throw InputError(file + " is no property list");
  const std::vector<GChPropertyList> entries =
      plist->isArray() ? plist->items() : std::vector<GChPropertyList>{*plist};
  std::vector<std::shared_ptr<GChBasicChord>> grids;
  for (size_t i = 0; i < entries.size(); ++i) {
    std::shared_ptr<GChBasicChord> grid = GChBasicChord::fromPropertyList(entries[i]);
    const std::string entry = "entry " + std::to_string(i + 1);
    if (!grid) throw InputError(entry + " is no chord grid");
    if (!GChIsValidShortTuning(grid->shortTuning()))
      throw InputError(entry + " has no valid tuning");
    if (grid->isEmpty()) throw InputError(entry + " has no pressed string");
    CheckUtf8Name(grid->userName(), ("name of " + entry).c_str());
    grids.push_back(std::move(grid));
  }
  return grids;
}

void ImportGrids(const GridsOptions& options) {
  auto grids = GridsToImport(options.file);
  auto db = LoadDatabase(options);
  const std::string libraryName = options.library.empty() ? "Imported Chords" : options.library;
  for (auto& grid : grids) {
    GChTuning* tuning = db->tuningWithShortTuning(grid->shortTuning(), "");
    UserLibrary(tuning, libraryName)->addBasicChord(std::move(grid));
  }
  Save(*db);
  if (options.json != JsonMode::kNone) {
    return PrintJson(Json::Object().Add("imported", grids.size()).Add("library", libraryName));
  }
  std::cout << "imported " << grids.size() << " chord grid" << (grids.size() == 1 ? "" : "s")
            << " into '" << libraryName << "'\n";
}

}  // namespace

void AddGridsEditingCommands(CLI::App* grids, const std::shared_ptr<GridsOptions>& options) {
  auto* add = grids->add_subcommand("add", "Add a grid to a user library");
  add->add_option("FRETS", options->frets,
                  "Frets from the lowest string: x32010 or x,3,2,0,1,0 (- reads standard input)")
      ->required();
  add->add_option("--fingers", options->fingers, "Fingers per string, e.g. 032010");
  add->add_option("--name", options->name, "Name of the grid");
  add->add_option("--root", options->root, "Root: a note name (C, F#, Bb), 0..11, or none");
  add->add_option("--bass", options->bass, "Bass: a note name, 0..11, or none");
  add->add_option("--type", options->type,
                  "Chord type: a name such as 'minor 7', a symbol's ending such as m7, or an id");
  add->add_option("--difficulty", options->difficulty, "Difficulty 0..7");
  add->add_flag("--favorite", options->favorites, "Mark as favourite");
  add->add_option("--library", options->library, "User library (default 'My Chords')");
  add->callback([options] { AddGrid(*options); });

  auto* remove = grids->add_subcommand("remove", "Remove a grid from a user library");
  remove->add_option("ID", options->id, "Chord id as listed")->required();
  remove->callback([options] { RemoveGrid(*options); });

  auto* exportCmd = grids->add_subcommand("export", "Write grids as a property list");
  exportCmd->add_option("FILE", options->file, "Output file, - for standard output")->required();
  exportCmd->add_option("--id", options->ids, "Chord ids (default: every user grid)");
  exportCmd->add_option("--library", options->library, "Every grid of this library");
  exportCmd->callback([options] { ExportGrids(*options); });

  auto* importCmd = grids->add_subcommand("import", "Read grids from a property list");
  importCmd->add_option("FILE", options->file, "Property list of grids, - for standard input")
      ->required();
  importCmd->add_option("--library", options->library, "User library (default 'Imported Chords')");
  importCmd->callback([options] { ImportGrids(*options); });
}

}  // namespace harmony::tool
