#include "harmony/guitar/GChDatabase.h"

#include <algorithm>

namespace harmony {

// --- GChFilterParameter ---

namespace {
int64_t FoldNote(int64_t note) {
  if (note < -1) return -2;
  if (note > 11) return 0;
  return note;
}
int64_t FoldChoice(int64_t value) {
  if (value < -1) return -1;
  if (value == -1) return 0;
  return value;
}
}  // namespace

void GChFilterParameter::setRootNoteToFilter(int64_t note) { rootNoteToFilter = FoldNote(note); }
void GChFilterParameter::setBassNoteToFilter(int64_t note) { bassNoteToFilter = FoldNote(note); }
void GChFilterParameter::setChordTypeToFilter(int64_t type) {
  chordTypeToFilter = FoldChoice(type);
}
void GChFilterParameter::setDifficultyToFilter(int64_t level) {
  difficultyToFilter = FoldChoice(level);
}
void GChFilterParameter::setIsFavoriteToFilter(int64_t flag) {
  isFavoriteToFilter = flag < -1 ? -1 : (flag <= 0 ? 0 : 1);
}

bool GChFilterParameter::hasNoRestrictions() const {
  return rootNoteToFilter == -2 && bassNoteToFilter == -2 && chordTypeToFilter == -1 &&
         difficultyToFilter == -1 && isFavoriteToFilter == -1;
}

bool GChFilterParameter::chordPassesFilter(const GChChord& chord, int capodasterOffset) const {
  if (rootNoteToFilter != -2 && chord.rootNote(capodasterOffset) != rootNoteToFilter) return false;
  if (bassNoteToFilter != -2 && chord.bassNote(capodasterOffset) != bassNoteToFilter) return false;
  if (chordTypeToFilter != -1 && chord.chordType() != chordTypeToFilter) return false;
  if (difficultyToFilter != -1 && chord.difficultyLevel() != difficultyToFilter) return false;
  if (isFavoriteToFilter != -1 && chord.isFavorite() != (isFavoriteToFilter == 1)) return false;
  return true;
}

void GChFilterParameter::WriteTrace(std::ostream& out) const {
  out << "GChFilterParameter: root " << rootNoteToFilter << ", bass " << bassNoteToFilter
      << ", type " << chordTypeToFilter << ", difficulty " << difficultyToFilter << ", favorite "
      << isFavoriteToFilter << ", root enh " << rootEnhType << ", bass enh " << bassEnhType;
}

void GChFilterParameter::WriteTraceBrief(std::ostream& out) const {
  out << rootNoteToFilter << '/' << bassNoteToFilter << '/' << chordTypeToFilter << '/'
      << difficultyToFilter << '/' << isFavoriteToFilter;
}

void GChFilterParameter::WriteInitializerList(std::ostream& out) const {
  out << "GChFilterParameter{" << rootEnhType << ", " << bassEnhType << ", " << rootNoteToFilter
      << ", " << bassNoteToFilter << ", " << chordTypeToFilter << ", " << difficultyToFilter << ", "
      << isFavoriteToFilter << "}";
}

// --- GChDatabase: tunings and libraries ---

GChDatabase::GChDatabase() = default;
GChDatabase::~GChDatabase() = default;

void GChDatabase::setActiveTuning(GChTuning* tuning) {
  const auto it = std::find_if(mAllTunings.begin(), mAllTunings.end(),
                               [tuning](const auto& owned) { return owned.get() == tuning; });
  if (it != mAllTunings.end()) {
    mActiveTuning = *it;
  } else if (tuning == nullptr) {
    mActiveTuning.reset();
  }
}

std::vector<GChTuning*> GChDatabase::allTunings() const {
  std::vector<GChTuning*> tunings;
  for (const auto& tuning : mAllTunings) tunings.push_back(tuning.get());
  return tunings;
}

GChTuning* GChDatabase::tuningWithDefaultGuitarTuning() {
  const std::string name = mLocalizedDefaultTuningName.empty() ? kGChDefaultGuitarTuningName
                                                               : mLocalizedDefaultTuningName;
  return tuningWithShortTuning(GChDefaultGuitarShortTuning(), name);
}

GChTuning* GChDatabase::tuningWithShortTuning(const GChShortTuning& shortTuning,
                                              const std::string& tuningName) {
  for (const auto& tuning : mAllTunings) {
    if (GChIsEqualShortTuning(tuning->shortTuning2(), shortTuning)) {
      if (tuning->storedTuningName().empty()) tuning->setTuningName(tuningName);
      return tuning.get();
    }
  }
  std::shared_ptr<GChTuning> tuning = GChTuning::initWithShortTuning1(shortTuning);
  tuning->setTuningName(tuningName);
  mAllTunings.push_back(tuning);
  return tuning.get();
}

GChTuning* GChDatabase::tuningWithRuntimeID(long runTimeID) const {
  for (const auto& tuning : mAllTunings) {
    if (tuning->runTimeID() == runTimeID) return tuning.get();
  }
  return nullptr;
}

bool GChDatabase::removeLibrary(GChLibrary* library) {
  if (library == nullptr || library->tuning() == nullptr) return false;
  const std::string path = library->libraryPath();
  if (mSourceLibrary == library) mSourceLibrary = nullptr;
  if (!library->tuning()->removeLibrary1(library)) return false;
  if (!path.empty()) mPathsToDelete.push_back(path);
  return true;
}

bool GChDatabase::removeTuning(GChTuning* tuning) {
  if (tuning == nullptr) return false;
  // Keeps the tuning alive to the end, also when it leaves the active place.
  const std::shared_ptr<GChTuning> keepAlive =
      mActiveTuning.get() == tuning ? mActiveTuning : nullptr;
  // The first entry becomes active while the removed tuning still stands in the list, so a
  // removed first tuning stays the active one.
  if (mActiveTuning.get() == tuning) {
    mActiveTuning = mAllTunings.empty() ? nullptr : mAllTunings.front();
  }
  for (const auto& library : tuning->tuningLibraries()) {
    if (!library->libraryPath().empty()) mPathsToDelete.push_back(library->libraryPath());
  }
  std::erase_if(mAllTunings, [tuning](const auto& owned) { return owned.get() == tuning; });
  return true;
}

std::vector<GChLibrary*> GChDatabase::allLibrariesForAnyTuning() const {
  std::vector<GChLibrary*> libraries;
  for (const auto& tuning : mAllTunings) {
    for (const auto& library : tuning->tuningLibraries()) libraries.push_back(library.get());
  }
  return libraries;
}

std::vector<GChLibrary*> GChDatabase::allUserLibrariesForAnyTuning() const {
  std::vector<GChLibrary*> libraries = allLibrariesForAnyTuning();
  std::erase_if(libraries, [](const GChLibrary* library) { return library->isReadOnlyLibrary(); });
  return libraries;
}

// --- chords ---

std::vector<GChChord> GChDatabase::allChordsFilteringLibrary(
    const GChLibrary* library, bool /*createRanges*/, const GChFilterParameter* filter) const {
  std::vector<GChChord> chords;
  if (!mActiveTuning || mActiveTuning->tuningLibraries().empty()) return chords;
  const auto& libraries = mActiveTuning->tuningLibraries();
  if (library != nullptr &&
      std::none_of(libraries.begin(), libraries.end(),
                   [library](const auto& owned) { return owned.get() == library; })) {
    return chords;
  }
  const int capodaster = mActiveTuning->capodasterOffset();
  for (const auto& owned : libraries) {
    if (library != nullptr && owned.get() != library) continue;
    for (const auto& basicChord : owned->basicChords()) {
      GChChord chord(basicChord, 0);
      if (filter == nullptr || filter->chordPassesFilter(chord, capodaster)) {
        chords.push_back(std::move(chord));
      }
    }
  }
  return chords;
}

long GChDatabase::numberOfActiveChords() const {
  return mActiveTuning ? mActiveTuning->numberOfChords() : 0;
}

long GChDatabase::numberOfActiveBasicChords() const {
  return mActiveTuning ? mActiveTuning->numberOfBasicChords() : 0;
}

bool GChDatabase::deleteChord1Range(const GChChord& chord) {
  GChLibrary* library = chord.basicChord()->library();
  return library != nullptr && library->deleteChordRange(chord.basicChord().get());
}

bool GChDatabase::replaceChord1Range1(const GChChord& chord,
                                      std::shared_ptr<GChBasicChord> withChord) {
  GChLibrary* library = chord.basicChord()->library();
  if (library == nullptr || !withChord) return false;
  if (withChord->dbChordID() < 0) withChord->setDbChordID(chord.basicChord()->dbChordID());
  return library->replaceChordRange2withChord(chord.basicChord().get(), std::move(withChord));
}

const GChBasicChord* GChDatabase::chordWithDbChordID(long dbChordID) const {
  for (const auto& tuning : mAllTunings) {
    for (const auto& library : tuning->tuningLibraries()) {
      for (const auto& chord : library->basicChords()) {
        if (chord->dbChordID() == dbChordID) return chord.get();
      }
    }
  }
  return nullptr;
}

// --- editing state ---

namespace {
bool SameGrid(const std::shared_ptr<GChBasicChord>& a, const std::shared_ptr<GChBasicChord>& b) {
  if (!a || !b) return a == b;
  return a->isEqualToChordRange(*b, true) && a->userName() == b->userName();
}
}  // namespace

bool GChDatabase::editedChordHasChanges() const { return !SameGrid(mEditedChord, mOriginalChord); }

bool GChDatabase::basicChordWasChanged() const { return !SameGrid(mEditedChord, mUndoChord); }

bool GChDatabase::editedChordIsEmpty() const { return !mEditedChord || mEditedChord->isEmpty(); }

void GChDatabase::WriteTrace(std::ostream& out) const {
  out << "GChDatabase: tunings " << mAllTunings.size() << ", active "
      << (mActiveTuning ? mActiveTuning->tuningName() : std::string("none")) << ", user package \""
      << mDefaultUserPackagePath.string() << "\"";
  for (const auto& tuning : mAllTunings) {
    out << "\n  ";
    tuning->WriteTrace(out);
    for (const auto& library : tuning->tuningLibraries()) {
      out << "\n    ";
      library->WriteTrace(out);
    }
  }
}

void GChDatabase::WriteTraceBrief(std::ostream& out) const {
  out << mAllTunings.size() << " tunings, " << allLibrariesForAnyTuning().size() << " libraries";
}

void GChDatabase::WriteInitializerList(std::ostream& out) const { out << "GChDatabase()"; }

}  // namespace harmony
