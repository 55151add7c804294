// The database on disk: library files, packages of them, and the user's and factory packages.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <set>
#include <system_error>

#include "guitar/GChBytes.h"
#include "harmony/guitar/GChDatabase.h"
#include "platform/AtomicWrite.h"
#include "platform/BoundedRead.h"
#include "platform/FileWrapper.h"
#include "platform/Localize.h"
#include "platform/PropertyList.h"
#include "platform/UserFolders.h"

namespace harmony {

namespace fs = std::filesystem;

namespace {

constexpr const char* kFactoryLibraryName = "6-String Guitar Normal Tuning";
// The text that the key "GChStr_6StrgsGuitarRegTuning" stands for.
constexpr const char* kFactoryLibraryDisplayName = "6-String Guitar Standard Tuning";

std::vector<uint8_t> InfoFileContent() {
  GChPropertyList info;
  info.set(kGChInfoVersionKey, GChPropertyList::Integer(kGChInfoVersion));
  const std::string xml = platform::PropertyListToXml(info);
  return std::vector<uint8_t>(xml.begin(), xml.end());
}

std::string LibraryFileName(unsigned long number) {
  char name[32];
  std::snprintf(name, sizeof name, "0x%lx", number);
  return name;
}

bool IsInside(const fs::path& file, const fs::path& folder) {
  return !folder.empty() && file.parent_path().lexically_normal() == folder.lexically_normal();
}

// The one place a library file or "GChInfo" is read; `why` receives the system's reason.
std::optional<std::vector<uint8_t>> ReadMemberBytes(const fs::path& path, std::string* why) {
  const platform::TBoundedRead read =
      platform::ReadBounded(path, platform::TReadKind::kGridLibrary);
  if (!read) {
    *why = read.error->reason;
    return std::nullopt;
  }
  return std::vector<uint8_t>(read.bytes.begin(), read.bytes.end());
}

// What is wrong with the bytes of "GChInfo", or nothing.
std::string InfoFileProblem(const std::vector<uint8_t>& bytes) {
  const auto info =
      platform::PropertyListFromBytes(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const GChPropertyList* version = info ? info->find(kGChInfoVersionKey) : nullptr;
  if (version == nullptr || !version->isInteger()) {
    return "is no property list with the key \"" + std::string(kGChInfoVersionKey) + "\"";
  }
  if (version->integerValue() != kGChInfoVersion) {
    return "gives the version " + std::to_string(version->integerValue()) + ", not " +
           std::to_string(kGChInfoVersion);
  }
  return {};
}

std::string FileLabel(const std::string& libraryPath) {
  return libraryPath.empty() ? std::string("the library file") : libraryPath;
}

}  // namespace

bool GChCreateDbPackageAtPath(const std::string& path, std::string* why) {
  const fs::path package = platform::ExpandTilde(path);
  std::error_code ec;
  // Never replaces what stands there: a package holds the user's libraries.
  if (package.empty() || fs::exists(fs::symlink_status(package, ec))) {
    if (why != nullptr) *why = package.empty() ? "no path" : "something else stands there";
    return false;
  }
  return platform::WriteDirectoryAtomically(package, {{kGChInfoFileName, InfoFileContent()}}, why);
}

// --- reading ---

bool GChDatabase::readOneRegularFile(const uint8_t* data, size_t length,
                                     const std::string& libraryPath) {
  using guitar_detail::DecodeTextField;
  const auto refuse = [&](const std::string& what) {
    mReadProblems.push_back(FileLabel(libraryPath) + " " + what);
    return false;
  };
  // The length in whole words must reach behind the header. The rest is counted in bytes:
  // a file ends where its last text ends, which need not be a word boundary, and a library
  // without chords must read back.
  const size_t rounded = length & ~size_t{3};
  if (data == nullptr || rounded < kGChLibraryHeaderSize ||
      std::memcmp(data, kGChLibraryMagic, 4) != 0) {
    return refuse("is no guitar library (it does not start with \"gchT\" and a header)");
  }
  const size_t rest = length - kGChLibraryHeaderSize;
  if (rest < 4) return refuse("ends before its tuning record");
  const uint8_t* chunk = data + kGChLibraryHeaderSize;
  const size_t chunkSize = guitar_detail::ReadBE32(chunk);
  if (chunkSize > rest) {
    return refuse("gives the size of its tuning record as " + std::to_string(chunkSize) +
                  ", but only " + std::to_string(rest) + " bytes follow");
  }
  // A chunk too short to hold its header length, a header length of 0 or one beyond the chunk:
  // there is no tuning to read, which is no error; but nothing of the file is taken in.
  const size_t headerLength = chunkSize < 8 ? 0 : chunk[4];
  if (headerLength == 0 || headerLength > chunkSize - 4) {
    refuse("has no tuning in its tuning record; nothing was read from it");
    return true;
  }

  const size_t strings = (chunk[5] & 0x0F) + 1u;
  if (8 + strings > chunkSize) return refuse("has a tuning record too short for its strings");
  GChShortTuning shortTuning{};
  std::memcpy(shortTuning.data(), chunk + 8, strings);

  size_t offset = 4 + headerLength;
  const auto tuningName = DecodeTextField(chunk + offset, chunkSize - offset);
  if (!tuningName) return refuse("has a tuning name that cannot be read");
  std::string name = tuningName->text;
  if (!mLocalizedDefaultTuningName.empty() && name == kGChDefaultGuitarTuningName) {
    name = mLocalizedDefaultTuningName;
  }
  GChTuning* tuning = tuningWithShortTuning(shortTuning, name);

  offset += tuningName->fieldSize;
  const auto libraryName = DecodeTextField(chunk + offset, chunkSize - offset);
  if (!libraryName) return refuse("has a library name that cannot be read");
  GChLibrary* library = tuning->createLibraryWithPath(libraryPath, libraryName->text);

  bool ok = true;
  const size_t chordsStart = kGChLibraryHeaderSize + chunkSize;
  if (chordsStart < length) {
    ok = library->readChordChunksFromBuffer(data + chordsStart, length - chordsStart,
                                            &mDbChordCount, chordsStart);
    library->setIsReadOnlyLibrary((data[7] & 1) != 0);
  }
  if (library->libraryName() == kFactoryLibraryName) {
    library->setLibraryName(platform::Localized(kFactoryLibraryDisplayName));
  }
  if (library->isReadInPart()) {
    const long count = library->numberOfBasicChords();
    mReadProblems.push_back(FileLabel(libraryPath) + " was read only in part (" +
                            std::to_string(count) + " grid" + (count == 1 ? "" : "s") +
                            "): " + library->readProblem());
  }
  library->markSaved();
  return ok;
}

bool GChDatabase::readFromDbPackageWrapper(const GChPackageContents& contents,
                                           const fs::path& packagePath) {
  bool hasInfo = false;
  for (const auto& [name, bytes] : contents) {
    if (name == kGChInfoFileName) {
      hasInfo = true;
      if (const std::string problem = InfoFileProblem(bytes); !problem.empty()) {
        mReadProblems.push_back((packagePath / name).string() + " " + problem);
      }
      continue;
    }
    readOneRegularFile(bytes.data(), bytes.size(), (packagePath / name).string());
  }
  if (!hasInfo) {
    mReadProblems.push_back(packagePath.string() + " has no \"" + kGChInfoFileName + "\"");
  }
  return true;
}

bool GChDatabase::readLibraryFromFileWrapper(const fs::path& path) {
  std::error_code ec;
  std::string why;
  if (fs::is_directory(path, ec)) {
    const auto members = platform::DirectoryMembers(path);
    if (!members) return false;
    GChPackageContents contents;
    for (const auto& member : *members) {
      if (auto bytes = ReadMemberBytes(member, &why)) {
        contents.emplace_back(member.filename().string(), std::move(*bytes));
      } else {
        mReadProblems.push_back(member.string() + " cannot be read: " + why);
      }
    }
    return readFromDbPackageWrapper(contents, path);
  }
  if (!fs::is_regular_file(path, ec)) return false;
  const auto bytes = ReadMemberBytes(path, &why);
  if (!bytes) mReadProblems.push_back(path.string() + " cannot be read: " + why);
  return bytes && readOneRegularFile(bytes->data(), bytes->size(), std::string());
}

bool GChDatabase::readFromDbPackageAtPath(const fs::path& packagePath) {
  std::error_code ec;
  if (!fs::is_directory(packagePath, ec)) return false;
  return readLibraryFromFileWrapper(packagePath);
}

bool GChDatabase::importFromDbPackagesAtPaths(const std::vector<fs::path>& packagePaths) {
  bool ok = true;
  for (const auto& path : packagePaths) {
    const auto before = allLibrariesForAnyTuning();
    const std::set<GChLibrary*> known(before.begin(), before.end());
    if (!readFromDbPackageAtPath(path)) {
      ok = false;
      continue;
    }
    // What came in belongs to the user now and is saved in the user's package.
    for (GChLibrary* library : allLibrariesForAnyTuning()) {
      if (known.count(library) != 0) continue;
      library->setLibraryPath(std::string());
      library->setIsReadOnlyLibrary(false);
    }
  }
  return ok;
}

// --- writing ---

std::optional<GChPackageContents> GChDatabase::writeLibrariesToDbPackageWrapper(
    const std::vector<GChLibrary*>& libraries) const {
  GChPackageContents contents;
  contents.emplace_back(kGChInfoFileName, InfoFileContent());
  unsigned long number = 0;
  for (const GChLibrary* library : libraries) {
    auto bytes = library->wholeLibraryFileContent();
    if (!bytes) return std::nullopt;
    contents.emplace_back(LibraryFileName(++number), std::move(*bytes));
  }
  return contents;
}

bool GChDatabase::writeLibraries(const std::vector<GChLibrary*>& libraries,
                                 const fs::path& toNewDbPackagePath) const {
  mWriteProblem.clear();
  const auto fail = [&](const std::string& what) {
    mWriteProblem = toNewDbPackagePath.string() + ": " + what;
    return false;
  };
  // Only a package is replaced, never another folder that happens to stand there.
  std::error_code ec;
  const fs::file_status status = fs::symlink_status(toNewDbPackagePath, ec);
  if (fs::is_directory(status) &&
      !fs::exists(fs::symlink_status(toNewDbPackagePath / kGChInfoFileName, ec))) {
    return fail("is a folder but no package; it is not replaced");
  }
  const auto contents = writeLibrariesToDbPackageWrapper(libraries);
  if (!contents) return fail("a library cannot be written");
  std::string why;
  return platform::WriteDirectoryAtomically(toNewDbPackagePath, *contents, &why) || fail(why);
}

bool GChDatabase::updateDatabaseFiles() {
  mWriteProblem.clear();
  if (mDefaultUserPackagePath.empty()) {
    mWriteProblem = "no user package is set";
    return false;
  }
  std::error_code ec;
  std::string why;
  if (!fs::is_directory(mDefaultUserPackagePath, ec) &&
      !GChCreateDbPackageAtPath(mDefaultUserPackagePath.string(), &why)) {
    mWriteProblem = mDefaultUserPackagePath.string() + ": " + why;
    return false;
  }
  bool ok = true;
  for (GChLibrary* library : allUserLibrariesForAnyTuning()) {
    if (!library->libraryPath().empty() &&
        !IsInside(library->libraryPath(), mDefaultUserPackagePath)) {
      library->setLibraryPath(std::string());
    }
    // A library whose file holds what it holds is left alone, keeping the file as it is.
    const bool onDisk = !library->libraryPath().empty() &&
                        fs::exists(fs::symlink_status(library->libraryPath(), ec));
    if (onDisk && !library->hasUnsavedChanges()) continue;
    if (!library->updateLibraryFile(mDefaultUserPackagePath, &why)) {
      if (ok) mWriteProblem = why;
      ok = false;
    }
  }
  // Only files of the user's own package are ever removed.
  for (const auto& path : mPathsToDelete) {
    if (IsInside(path, mDefaultUserPackagePath)) fs::remove(path, ec);
  }
  mPathsToDelete.clear();
  return ok;
}

// --- the packages of a user ---

fs::path GChDatabase::defaultUserPackageLocation() {
  return platform::UserDataFolder() / "Quillon" / "Chord Grids" / kGChPackageName;
}

fs::path GChDatabase::factoryPackageLocation() {
  std::error_code ec;
  for (const auto& folder : platform::ResourceFolders()) {
    const fs::path candidate = folder / "Chord Grids" / kGChPackageName;
    if (fs::is_directory(candidate, ec)) return candidate;
  }
  return {};
}

std::unique_ptr<GChDatabase> GChDatabase::initWithDiskData(const std::string& defaultTuningName) {
  return initWithDiskData(defaultTuningName, defaultUserPackageLocation(),
                          factoryPackageLocation());
}

std::unique_ptr<GChDatabase> GChDatabase::initWithDiskData(const std::string& defaultTuningName,
                                                           const fs::path& userPackagePath,
                                                           const fs::path& factoryPackagePath) {
  auto database = std::make_unique<GChDatabase>();
  database->setLocalizedDefaultTuningName(defaultTuningName);
  // The factory package comes first, so that its chords keep their ids whatever the user adds.
  if (!factoryPackagePath.empty()) database->readFromDbPackageAtPath(factoryPackagePath);
  if (!database->readFromDbPackageAtPath(userPackagePath) &&
      GChCreateDbPackageAtPath(userPackagePath.string())) {
    database->readFromDbPackageAtPath(userPackagePath);
  }
  database->setDefaultUserPackagePath(userPackagePath);
  database->setActiveTuning(database->tuningWithDefaultGuitarTuning());
  return database;
}

}  // namespace harmony
