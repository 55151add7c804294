// The guitar chord database as the grids command sees it (see GridsSupport.h).

#include "GridsSupport.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <set>
#include <sstream>
#include <system_error>

#include "../make-factory-grids/GridFromFrets.h"
#include "guitar/GChChordTypeTable.h"
#include "harmony/guitar/GChChordFunctions.h"
#include "harmony/guitar/GChLibrary.h"
#include "harmony/guitar/GChTuning.h"

namespace harmony::tool {

namespace {

namespace fs = std::filesystem;

constexpr long kFirstUserId = 100000;
constexpr long kUserIdCount = 900000;

// FNV-1a over the bytes that make a grid what it is: its library, tuning, fingers, mutes,
// root, bass, type and name. Favourites and difficulty are left out, being marks on a grid.
class GridHash {
 public:
  void Add(const void* data, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
      mValue = (mValue ^ static_cast<const unsigned char*>(data)[i]) * 1099511628211ull;
    }
  }
  void Add(const std::string& text) { Add(text.c_str(), text.size() + 1); }
  void Add(int value) { Add(&value, sizeof value); }
  std::uint64_t Value() const { return mValue; }

 private:
  std::uint64_t mValue = 14695981039346656037ull;
};

long StableId(const GChLibrary& library, const GChBasicChord& grid) {
  GridHash hash;
  hash.Add(library.libraryName());
  hash.Add(grid.shortTuning().data(), grid.shortTuning().size());
  for (const GChChordElem& elem : grid.chordElems()) {
    for (int field : {elem.fingerNumber(), elem.absFretIndex(), elem.coveredMinStr(),
                      elem.coveredMaxStr(), elem.fingerPointType()}) {
      hash.Add(field);
    }
  }
  for (int field :
       {int{grid.isMutedMask()}, grid.rootNote(), grid.bassNote(), int{grid.chordType()}}) {
    hash.Add(field);
  }
  hash.Add(grid.userName());
  return kFirstUserId + static_cast<long>(hash.Value() % kUserIdCount);
}

// Two grids with the same id (the same grid twice, or a rare clash) take the next free ones,
// in the order they are read.
void AssignStableIds(GChDatabase& db) {
  std::set<long> taken;
  for (const GChLibrary* library : db.allUserLibrariesForAnyTuning()) {
    for (const auto& grid : library->basicChords()) {
      long id = StableId(*library, *grid);
      while (!taken.insert(id).second) id = kFirstUserId + (id - kFirstUserId + 1) % kUserIdCount;
      grid->setDbChordID(id);
    }
  }
}

int TypeIdOfChordSymbol(const CChordLite& chord) {
  for (int i = 0; i < GChNumberOfChordTypes(); ++i) {
    const auto* row = guitar_detail::ChordTypeRowForId(GChChordTypeIdForIndex(i));
    if (row != nullptr && guitar_detail::ChordTypePitchClassMask(*row) == chord.Semitones.Word()) {
      return GChChordTypeIdForIndex(i);
    }
  }
  return -1;
}

std::string KnownTypes() {
  std::string known;
  for (int i = 0; i < GChNumberOfChordTypes(); ++i) {
    known += " '" + GChChordTypeNameForIndex(i) + "'";
  }
  return known;
}

}  // namespace

fs::path UserPackagePath(const GridsOptions& options) {
  if (!options.db.empty()) return options.db;
  if (const char* env = std::getenv("HARMONY_GUITAR_DB"); env != nullptr && *env != '\0') {
    return env;
  }
  return GChDatabase::defaultUserPackageLocation();
}

// A package that was not read whole is told: an error, so that nothing is done on a part of
// the user's grids, or with --lenient a warning before working on what was read. Libraries
// read in part are never written either way.
void ReportReadProblems(const GChDatabase& db) {
  if (db.readProblems().empty()) return;
  std::string text;
  for (const std::string& problem : db.readProblems()) {
    text += (text.empty() ? "" : "\n") + problem;
  }
  if (!Lenient()) {
    throw InputError(text +
                     "\nnothing was done; 'harmony grids --lenient ...' works on what was read, " +
                     "never writing over a library read in part");
  }
  std::cerr << "harmony: warning: " << text << '\n';
}

std::unique_ptr<GChDatabase> LoadDatabase(const GridsOptions& options, bool report) {
  auto db = std::make_unique<GChDatabase>();
  db->setLocalizedDefaultTuningName(kGChDefaultGuitarTuningName);
  const fs::path factory = GChDatabase::factoryPackageLocation();
  if (!factory.empty()) db->readFromDbPackageAtPath(factory);
  const fs::path user = UserPackagePath(options);
  std::error_code ec;
  if (fs::exists(user, ec) && !db->readFromDbPackageAtPath(user)) {
    throw InputError("cannot read the user package " + user.string());
  }
  db->setDefaultUserPackagePath(user);
  db->setActiveTuning(db->tuningWithDefaultGuitarTuning());
  AssignStableIds(*db);
  if (report) ReportReadProblems(*db);
  return db;
}

std::shared_ptr<GChBasicChord> ChordWithID(const GChDatabase& db, long id) {
  for (GChLibrary* library : db.allLibrariesForAnyTuning()) {
    for (const auto& chord : library->basicChords()) {
      if (chord->dbChordID() == id) return chord;
    }
  }
  throw InputError("no chord grid with id " + std::to_string(id));
}

std::vector<int> ReadGridFrets(const std::string& text) {
  if (auto frets = grid_tools::ParseFrets(text)) return *frets;
  // Tell which fret is wrong: in the separated form a number may be out of range.
  if (text.find_first_of(", ") != std::string::npos) {
    std::string words = text;
    std::replace(words.begin(), words.end(), ',', ' ');
    std::istringstream in(words);
    for (std::string fret; in >> fret;) {
      if (fret.find_first_not_of("0123456789") != std::string::npos) continue;
      ReadInteger(fret, 0, kGChMaxAbsFretIndex + 1, "fret");
    }
  }
  throw InputError("bad frets '" + text + "': use e.g. x32010 or x,3,2,0,1,0 (frets 0.." +
                   std::to_string(kGChMaxAbsFretIndex + 1) + ")");
}

void CheckUtf8Name(const std::string& name, const char* what) {
  if (!IsUtf8(name)) throw InputError(std::string("the ") + what + " is no valid UTF-8 text");
}

long ReadGridId(const std::string& text) {
  return static_cast<long>(ReadInteger(text, 0, kFirstUserId + kUserIdCount, "grid id"));
}

int ReadDifficulty(const GridsOptions& options) {
  if (options.difficulty.empty()) return -1;
  return static_cast<int>(ReadInteger(options.difficulty, 0, 7, "difficulty"));
}

int ReadGridKey(const std::string& text, const char* what) {
  if (text == "none") return -1;
  if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos) {
    return static_cast<int>(ReadInteger(text, 0, 11, what));
  }
  const CKeyEnh key = ReadKeyName(text);
  return key.KeyNr;
}

GChChordTypeId ReadGridType(const std::string& text) {
  for (int i = 0; i < GChNumberOfChordTypes(); ++i) {
    if (GChChordTypeNameForIndex(i) == text) return GChChordTypeIdForIndex(i);
  }
  if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos) {
    const long long id = ReadInteger(text, 0, 0xFFF, "chord type id");
    for (int i = 0; i < GChNumberOfChordTypes(); ++i) {
      if (GChChordTypeIdForIndex(i) == id) return GChChordTypeIdForIndex(i);
    }
  } else if (!text.empty()) {
    const CChordLite chord(std::string("C") + text, ChordSetFromStringPrefs(),
                           GetCurrentChordNamePrefs());
    const int type = TypeIdOfChordSymbol(chord);
    if (type >= 0 && chord.BassKeyEnh.KeyNr == kKeyNrUndef) {
      ReadChordSymbol("C" + text);  // the ending must be read whole
      return static_cast<GChChordTypeId>(type);
    }
  }
  throw InputError("unknown chord type '" + text + "'; a symbol's ending such as m7 or maj7, " +
                   "or one of:" + KnownTypes());
}

GChFilterParameter GridFilter(const GridsOptions& options) {
  GChFilterParameter filter;
  if (!options.chord.empty()) {
    const CChordLite chord = ReadChordSymbol(options.chord);
    const int type = TypeIdOfChordSymbol(chord);
    if (chord.RootKeyEnh.KeyNr == kKeyNrUndef || type < 0) {
      throw InputError("no chord type of the guitar grids has the tones of '" + options.chord +
                       "'");
    }
    filter.setRootNoteToFilter(chord.RootKeyEnh.KeyNr);
    filter.setChordTypeToFilter(type);
    if (chord.BassKeyEnh.KeyNr != kKeyNrUndef) filter.setBassNoteToFilter(chord.BassKeyEnh.KeyNr);
  }
  if (!options.root.empty()) filter.setRootNoteToFilter(ReadGridKey(options.root, "root"));
  if (!options.bass.empty()) filter.setBassNoteToFilter(ReadGridKey(options.bass, "bass"));
  if (!options.type.empty()) filter.setChordTypeToFilter(ReadGridType(options.type));
  if (const int difficulty = ReadDifficulty(options); difficulty >= 0) {
    filter.setDifficultyToFilter(difficulty);
  }
  if (options.favorites) filter.setIsFavoriteToFilter(1);
  return filter;
}

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

std::string GridTitle(const GChChord& chord, int capo) {
  if (!chord.userName().empty()) return chord.basicChord()->chordName(capo);
  if (std::string name = chord.chordName(capo); !name.empty()) return name;
  const int root = chord.rootNote(capo);
  const std::string type = GChChordTypeNameForId(chord.chordType());
  return (root < 0 ? std::string("?") : GChOctPitchDefaultName(root)) + " " +
         (type.empty() ? "(no type)" : type);
}

Json GridJson(const GChChord& chord, int capo) {
  const GChBasicChord& grid = *chord.basicChord();
  Json frets = Json::Array();
  Json fingers = Json::Array();
  Json pitches = Json::Array();
  for (int s = 0; s < grid.numberOfStrings(); ++s) {
    const int fret = grid.maxAbsFretIndexPlusOneForStringIndex(s);
    frets.Push(fret < 0 ? Json() : Json(fret));
    const GChChordElem* spot = fret > 0 ? grid.spotAtAbsFretIndex(fret - 1, s) : nullptr;
    fingers.Push(spot == nullptr ? 0 : spot->fingerNumber());
    const int pitch = chord.pitchForStringIndex(s, capo);
    pitches.Push(pitch < 0 ? Json() : Json(GChMidiPitchDefaultName(pitch)));
  }
  const int root = chord.rootNote(capo);
  const std::string type = GChChordTypeNameForId(chord.chordType());
  return Json::Object()
      .Add("id", grid.dbChordID())
      .Add("name", GridTitle(chord, capo))
      .Add("frets", std::move(frets))
      .Add("fingers", std::move(fingers))
      .Add("pitches", std::move(pitches))
      .Add("root", root < 0 ? Json() : Json(GChOctPitchDefaultName(root)))
      .Add("type", type.empty() ? Json() : Json(type))
      .Add("difficulty", grid.difficultyLevel())
      .Add("favorite", chord.isFavorite())
      .Add("library", grid.library() != nullptr ? Json(grid.library()->libraryName()) : Json());
}

}  // namespace harmony::tool
