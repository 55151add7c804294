#include "harmony/guitar/GChSimpleDatabase.h"

#include "platform/FileWrapper.h"

namespace harmony {

std::unique_ptr<GChSimpleDatabase> GChSimpleDatabase::initWithFactoryDatabase(
    const GChDatabase* factoryDatabase, const GChDatabase* andUserDatabase) {
  std::unique_ptr<GChSimpleDatabase> view(new GChSimpleDatabase());
  view->mFactoryDatabase = factoryDatabase;
  view->mUserDatabase = andUserDatabase;
  return view;
}

std::unique_ptr<GChSimpleDatabase> GChSimpleDatabase::initWithLibraryFileAtPath(
    const std::filesystem::path& path, const std::string& defaultTuningName) {
  const auto bytes = platform::ReadFileBytes(path);
  if (!bytes) return nullptr;
  auto database = std::make_unique<GChDatabase>();
  database->setLocalizedDefaultTuningName(defaultTuningName);
  if (!database->readOneRegularFile(bytes->data(), bytes->size(), path.string())) return nullptr;
  const auto libraries = database->allLibrariesForAnyTuning();
  if (libraries.empty()) return nullptr;
  database->setActiveTuning(libraries.front()->tuning());
  std::unique_ptr<GChSimpleDatabase> view(new GChSimpleDatabase());
  view->mOwnDatabase = std::move(database);
  view->mFactoryDatabase = view->mOwnDatabase.get();
  return view;
}

std::vector<GChChord> GChSimpleDatabase::allChordsFilteringLibrary(
    const GChLibrary* library, bool createRanges, const GChFilterParameter* filter) const {
  std::vector<GChChord> chords;
  for (const GChDatabase* database : {mFactoryDatabase, mUserDatabase}) {
    if (database == nullptr) continue;
    auto part = database->allChordsFilteringLibrary(library, createRanges, filter);
    chords.insert(chords.end(), std::make_move_iterator(part.begin()),
                  std::make_move_iterator(part.end()));
  }
  return chords;
}

}  // namespace harmony
