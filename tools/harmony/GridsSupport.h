#pragma once
// The guitar chord database as the grids command sees it: the packages it reads, the stable
// ids of the grids, what a user types for roots, chord types and chords, and a grid as text
// and as JSON. Shared by the reading (GridsCommand.cpp) and the editing subcommands
// (GridsEditCommands.cpp).

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "Command.h"
#include "harmony/guitar/GChChord.h"
#include "harmony/guitar/GChDatabase.h"

namespace harmony::tool {

struct GridsOptions {
  std::string db;
  std::string chord;  // a chord symbol: root, bass and type at once
  std::string root, bass, type, library, name, frets, fingers, file, id, difficulty;
  bool favorites = false;
  std::vector<std::string> ids;
  JsonMode json = JsonMode::kNone;
};

// --db, else $HARMONY_GUITAR_DB, else the user's data folder.
std::filesystem::path UserPackagePath(const GridsOptions& options);

// The factory package and the user package, when it exists; nothing is written. Factory grids
// keep the ids of their order; a user's grid has an id made from the grid itself (100000 and
// above), so adding or removing other grids never changes it. What was not read whole is an
// InputError, or with --lenient a warning on standard error (`report` false: not told).
std::unique_ptr<GChDatabase> LoadDatabase(const GridsOptions& options, bool report = true);

// The stored grid with this id; InputError when there is none.
std::shared_ptr<GChBasicChord> ChordWithID(const GChDatabase& db, long id);
long ReadGridId(const std::string& text);
// Frets from the lowest string as ParseFrets reads them; InputError naming a fret out of
// range or the form to use.
std::vector<int> ReadGridFrets(const std::string& text);
// InputError for a grid or library name that is no UTF-8 (a library file cannot store it).
void CheckUtf8Name(const std::string& name, const char* what);

// What a list is filtered by: the options, or the root, bass and type of a chord symbol.
GChFilterParameter GridFilter(const GridsOptions& options);
// --difficulty: 0..7, or -1 when not given.
int ReadDifficulty(const GridsOptions& options);
// "A", "Bb", "F#" or 0..11; "none" for a grid without root (-1).
int ReadGridKey(const std::string& text, const char* what);
// A chord type of the grids by its name ("minor 7"), a chord symbol's ending ("m7", "maj7") or
// its id.
GChChordTypeId ReadGridType(const std::string& text);

// "x02210", or separated when a fret has two digits: "x,10,12,12,11,10".
std::string FretsText(const GChBasicChord& grid);
// The user's name behind the root, or the name its notes give on its stored root.
std::string GridTitle(const GChChord& chord, int capo);
// Id, name, frets (null for a muted string), fingers, root, type, library and more.
Json GridJson(const GChChord& chord, int capo);

// The read-only commands: list, show, name; and the editing ones: add, remove, export, import.
void AddGridsReadingCommands(CLI::App* grids, const std::shared_ptr<GridsOptions>& options);
void AddGridsEditingCommands(CLI::App* grids, const std::shared_ptr<GridsOptions>& options);

}  // namespace harmony::tool
