// Reads arbitrary bytes as a package folder of the guitar database. The input is cut at each
// "@@@@" into members: the first is "GChInfo", the others are the library files "0x1", "0x2",
// ... The members are written into a temporary folder, which is read as a package and as the
// same members from memory; both must agree. Then the folder is saved as the user package
// after a grid was added to a new library: no file that was there may change, since nothing
// of it changed (and a file read only in part must never be written over).

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include "harmony/guitar/GChDatabase.h"
#include "harmony/guitar/GChLibrary.h"

namespace {

namespace fs = std::filesystem;

harmony::GChPackageContents Members(const uint8_t* data, size_t size) {
  harmony::GChPackageContents members;
  const std::string input(reinterpret_cast<const char*>(data), size);
  size_t start = 0;
  for (unsigned long number = 0; members.size() < 64; ++number) {
    const size_t end = std::min(input.find("@@@@", start), input.size());
    const std::string name =
        number == 0 ? harmony::kGChInfoFileName : "0x" + std::to_string(number);
    members.emplace_back(name, std::vector<uint8_t>(input.begin() + start, input.begin() + end));
    if (end == input.size()) break;
    start = end + 4;
  }
  return members;
}

// A folder in memory where there is one, removed when the run ends.
class Folder {
 public:
  Folder() {
    char name[] = "/dev/shm/harmony-fuzz-package-XXXXXX";
    char fallback[] = "/tmp/harmony-fuzz-package-XXXXXX";
    const char* made = ::mkdtemp(name);
    mPath = made != nullptr ? made : ::mkdtemp(fallback);
  }
  ~Folder() {
    std::error_code ec;
    fs::remove_all(mPath, ec);
  }
  const fs::path& path() const { return mPath; }

 private:
  fs::path mPath;
};

std::vector<uint8_t> FileBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto members = Members(data, size);
  static const Folder folder;
  const fs::path package = folder.path() / "GuitarChords.gchdb";
  std::error_code ec;
  fs::remove_all(package, ec);
  fs::create_directories(package, ec);
  for (const auto& [name, bytes] : members) {
    std::ofstream(package / name, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  }

  harmony::GChDatabase fromDisk, fromMemory;
  if (!fromDisk.readFromDbPackageAtPath(package)) __builtin_trap();
  fromMemory.readFromDbPackageWrapper(members, package);
  const auto disk = fromDisk.allLibrariesForAnyTuning();
  const auto memory = fromMemory.allLibrariesForAnyTuning();
  // The folder lists "GChInfo" among the libraries by the length of the names.
  auto diskProblems = fromDisk.readProblems(), memoryProblems = fromMemory.readProblems();
  std::sort(diskProblems.begin(), diskProblems.end());
  std::sort(memoryProblems.begin(), memoryProblems.end());
  if (disk.size() != memory.size() || diskProblems != memoryProblems) {
    __builtin_trap();
  }
  for (size_t i = 0; i < disk.size(); ++i) {
    if (disk[i]->wholeLibraryFileContent() != memory[i]->wholeLibraryFileContent())
      __builtin_trap();
  }

  fromDisk.setDefaultUserPackagePath(package);
  fromDisk.setActiveTuning(fromDisk.tuningWithDefaultGuitarTuning());
  auto grid = std::make_shared<harmony::GChBasicChord>(harmony::GChDefaultGuitarShortTuning());
  grid->addChordElem(1, 1, 3);
  fromDisk.activeTuning()->createLibraryWithPath("", "added")->addBasicChord(grid);
  fromDisk.updateDatabaseFiles();
  for (const auto& [name, bytes] : members) {
    if (FileBytes(package / name) != bytes) __builtin_trap();
  }
  return 0;
}
