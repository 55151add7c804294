#pragma once
// The guitar chord database: every tuning with its libraries, the package on disk they come
// from, the list of chords of the active tuning, and the state of a grid being edited.
//
// A package is a directory (usually "GuitarChords.gchdb") holding a property list "GChInfo"
// and one file per library.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/guitar/GChChord.h"
#include "harmony/guitar/GChLibrary.h"
#include "harmony/guitar/GChTuning.h"

namespace harmony {

constexpr const char* kGChInfoFileName = "GChInfo";
constexpr const char* kGChInfoVersionKey = "GChInfoVersion";
constexpr int kGChInfoVersion = 100;
constexpr const char* kGChPackageName = "GuitarChords.gchdb";

// The members of a package by name with their bytes, in the order they are read or written.
using GChPackageContents = std::vector<std::pair<std::string, std::vector<uint8_t>>>;

// Writes a package holding only "GChInfo" (a leading "~/" stands for the home folder). Never
// replaces anything; on failure `why` (if given) receives the reason.
bool GChCreateDbPackageAtPath(const std::string& path, std::string* why = nullptr);

// Which chords a list keeps. Each setter folds its argument as the comments say.
struct GChFilterParameter : TraceFamily<GChFilterParameter> {
  int64_t rootEnhType = 0;
  int64_t bassEnhType = 0;
  int64_t rootNoteToFilter = -2;    // -2 any, -1 only chords without root, 0..11 that root
  int64_t bassNoteToFilter = -2;    // the same for the bass
  int64_t chordTypeToFilter = -1;   // -1 any, otherwise that chord type id
  int64_t difficultyToFilter = -1;  // -1 any, otherwise that difficulty
  int64_t isFavoriteToFilter = -1;  // -1 any, 0 only chords that are no favourite, 1 favourites

  void setNoRestrictions() { *this = GChFilterParameter(); }
  void setRootEnhType(int64_t type) { rootEnhType = type; }
  void setBassEnhType(int64_t type) { bassEnhType = type; }
  void setRootNoteToFilter(int64_t note);     // below -1: -2; -1 stays; above 11: 0
  void setBassNoteToFilter(int64_t note);     // likewise
  void setChordTypeToFilter(int64_t type);    // below -1: -1; -1: 0; others stay
  void setDifficultyToFilter(int64_t level);  // likewise
  void setIsFavoriteToFilter(int64_t flag);   // below -1: -1; -1 and 0: 0; others 1

  bool hasNoRestrictions() const;
  // The chord's root and bass count with the capodaster offset.
  bool chordPassesFilter(const GChChord& chord, int capodasterOffset) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

// How a host draws grids; -1 leaves the choice to it.
struct GChDisplayOptions {
  int numberOfFrets = -1;
  int mirrorStrings = -1;
  int barreType = -1;
};

class GChDatabase : public TraceFamily<GChDatabase> {
 public:
  GChDatabase();  // init: an empty database
  ~GChDatabase();
  GChDatabase(const GChDatabase&) = delete;
  GChDatabase& operator=(const GChDatabase&) = delete;

  // Reads the user package (creating it when it cannot be read) and the bundled factory
  // package; the user package becomes the place for new libraries. The default tuning is
  // made active.
  static std::unique_ptr<GChDatabase> initWithDiskData(const std::string& defaultTuningName);
  // The same with explicit locations; an empty factory path reads no factory package.
  static std::unique_ptr<GChDatabase> initWithDiskData(
      const std::string& defaultTuningName, const std::filesystem::path& userPackagePath,
      const std::filesystem::path& factoryPackagePath);
  // "<user data folder>/Quillon/Chord Grids/GuitarChords.gchdb".
  static std::filesystem::path defaultUserPackageLocation();
  // "Chord Grids/GuitarChords.gchdb" in the first resource folder that has it; empty if none.
  static std::filesystem::path factoryPackageLocation();

  // --- tunings and libraries ---
  GChTuning* activeTuning() const { return mActiveTuning.get(); }
  void setActiveTuning(GChTuning* tuning);
  std::vector<GChTuning*> allTunings() const;
  GChTuning* tuningWithDefaultGuitarTuning();
  // The first equal tuning (named now if it had no name), or a new one.
  GChTuning* tuningWithShortTuning(const GChShortTuning& shortTuning,
                                   const std::string& tuningName);
  GChTuning* tuningWithRuntimeID(long runTimeID) const;
  bool removeLibrary(GChLibrary* library);
  bool removeTuning(GChTuning* tuning);
  std::vector<GChLibrary*> allLibrariesForAnyTuning() const;
  std::vector<GChLibrary*> allUserLibrariesForAnyTuning() const;  // those not read-only
  // Files that updateDatabaseFiles removes from the user package.
  const std::vector<std::string>& pathsToDelete() const { return mPathsToDelete; }

  // --- chords ---
  // One chord at transpose index 0 per stored grid of the active tuning (or only of
  // `library`, which must be one of its libraries), in library order, passing `filter` when
  // one is given. Chords always come as ranges of one stored grid, whatever `createRanges`.
  std::vector<GChChord> allChordsFilteringLibrary(const GChLibrary* library, bool createRanges,
                                                  const GChFilterParameter* filter = nullptr) const;
  long numberOfActiveChords() const;
  long numberOfActiveBasicChords() const;
  bool deleteChord1Range(const GChChord& chord);
  bool replaceChord1Range1(const GChChord& chord, std::shared_ptr<GChBasicChord> withChord);
  // Hands out the next chord id, as reading does.
  long takeNextDbChordID() { return mDbChordCount++; }
  const GChBasicChord* chordWithDbChordID(long dbChordID) const;

  // --- editing state ---
  const std::shared_ptr<GChBasicChord>& editedChord() const { return mEditedChord; }
  void setEditedChord(std::shared_ptr<GChBasicChord> chord) { mEditedChord = std::move(chord); }
  const std::shared_ptr<GChBasicChord>& undoChord() const { return mUndoChord; }
  void setUndoChord(std::shared_ptr<GChBasicChord> chord) { mUndoChord = std::move(chord); }
  const std::shared_ptr<GChBasicChord>& originalChord() const { return mOriginalChord; }
  void setOriginalChord(std::shared_ptr<GChBasicChord> chord) { mOriginalChord = std::move(chord); }
  const std::shared_ptr<GChBasicChord>& additionalChordToDisplay() const {
    return mAdditionalChordToDisplay;
  }
  void setAdditionalChordToDisplay(std::shared_ptr<GChBasicChord> chord) {
    mAdditionalChordToDisplay = std::move(chord);
  }
  GChLibrary* sourceLibrary() const { return mSourceLibrary; }
  void setSourceLibrary(GChLibrary* library) { mSourceLibrary = library; }
  bool chordNotInLibrary() const { return mChordNotInLibrary; }
  void setChordNotInLibrary(bool flag) { mChordNotInLibrary = flag; }
  // The edited grid differs from the original (favourites and name included).
  bool editedChordHasChanges() const;
  // The edited grid differs from the undo state.
  bool basicChordWasChanged() const;
  bool editedChordIsEmpty() const;

  // --- files and packages ---
  // Reads one library file: creates (or finds) its tuning and creates its library.
  bool readOneRegularFile(const uint8_t* data, size_t length, const std::string& libraryPath);
  // A package directory (every member but "GChInfo" is a library), or a single library
  // file, read with no path. False when nothing could be read there.
  bool readLibraryFromFileWrapper(const std::filesystem::path& path);
  bool readFromDbPackageAtPath(const std::filesystem::path& packagePath);
  bool readFromDbPackageWrapper(const GChPackageContents& contents,
                                const std::filesystem::path& packagePath);
  // Reads other packages; their libraries become user libraries saved in the user package.
  bool importFromDbPackagesAtPaths(const std::vector<std::filesystem::path>& packagePaths);
  // "GChInfo" and the libraries as files "0x1", "0x2", ...; nothing when a library fails.
  std::optional<GChPackageContents> writeLibrariesToDbPackageWrapper(
      const std::vector<GChLibrary*>& libraries) const;
  bool writeLibraries(const std::vector<GChLibrary*>& libraries,
                      const std::filesystem::path& toNewDbPackagePath) const;
  void setDefaultUserPackagePath(const std::filesystem::path& path) {
    mDefaultUserPackagePath = path;
  }
  const std::filesystem::path& defaultUserPackagePath() const { return mDefaultUserPackagePath; }
  // Writes the user libraries that changed since they were read or written (and those not
  // yet in the user package) into the user package, made when missing, and removes the files
  // of removed libraries there. A library read in part is never written.
  bool updateDatabaseFiles();

  // What reading did not take in whole, one text per file or package, naming its path: a
  // file that is no library, a library read only in part, an unreadable member, a missing or
  // broken "GChInfo". Libraries read in part are marked (GChLibrary::isReadInPart).
  const std::vector<std::string>& readProblems() const { return mReadProblems; }
  // Why the last write (updateDatabaseFiles, writeLibraries) failed, naming the path.
  const std::string& writeProblem() const { return mWriteProblem; }

  const std::string& localizedDefaultTuningName() const { return mLocalizedDefaultTuningName; }
  void setLocalizedDefaultTuningName(const std::string& name) {
    mLocalizedDefaultTuningName = name;
  }

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;

 private:
  std::vector<std::shared_ptr<GChTuning>> mAllTunings;
  // Strong: a removed tuning may stay active (see removeTuning).
  std::shared_ptr<GChTuning> mActiveTuning;
  std::string mLocalizedDefaultTuningName;
  std::filesystem::path mDefaultUserPackagePath;
  std::vector<std::string> mPathsToDelete;
  long mDbChordCount = 0;
  std::vector<std::string> mReadProblems;
  mutable std::string mWriteProblem;

  std::shared_ptr<GChBasicChord> mEditedChord;
  std::shared_ptr<GChBasicChord> mUndoChord;
  std::shared_ptr<GChBasicChord> mOriginalChord;
  std::shared_ptr<GChBasicChord> mAdditionalChordToDisplay;
  GChLibrary* mSourceLibrary = nullptr;
  bool mChordNotInLibrary = false;
};

}  // namespace harmony
