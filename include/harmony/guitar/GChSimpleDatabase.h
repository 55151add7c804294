#pragma once
// A read-only view on chord grids: a factory database and a user database side by side, or
// a database of its own read from one library file.

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "harmony/guitar/GChDatabase.h"

namespace harmony {

class GChSimpleDatabase {
 public:
  // Neither database is owned; either may be null.
  static std::unique_ptr<GChSimpleDatabase> initWithFactoryDatabase(
      const GChDatabase* factoryDatabase, const GChDatabase* andUserDatabase);
  // Null when the file cannot be read as a library.
  static std::unique_ptr<GChSimpleDatabase> initWithLibraryFileAtPath(
      const std::filesystem::path& path, const std::string& defaultTuningName);

  // The factory chords, then the user chords, each as GChDatabase lists them.
  std::vector<GChChord> allChordsFilteringLibrary(const GChLibrary* library, bool createRanges,
                                                  const GChFilterParameter* filter = nullptr) const;

 private:
  GChSimpleDatabase() = default;

  std::unique_ptr<GChDatabase> mOwnDatabase;
  const GChDatabase* mFactoryDatabase = nullptr;
  const GChDatabase* mUserDatabase = nullptr;
};

}  // namespace harmony
