// make-factory-grids: writes the bundled package of factory chord grids, or checks that the
// package on disk is exactly what the shape tables give.
//
//   make-factory-grids --out "data/Chord Grids/GuitarChords.gchdb"
//   make-factory-grids --check "data/Chord Grids/GuitarChords.gchdb"

#include <cstring>
#include <filesystem>
#include <iostream>

#include "FactoryGrids.h"
#include "platform/AtomicWrite.h"
#include "platform/FileWrapper.h"

namespace {

int Check(const std::filesystem::path& package, const harmony::GChPackageContents& contents) {
  const auto members = harmony::platform::DirectoryMembers(package);
  if (!members) {
    std::cerr << "make-factory-grids: no package at " << package << '\n';
    return 1;
  }
  if (members->size() != contents.size()) {
    std::cerr << "make-factory-grids: " << members->size() << " files, expected " << contents.size()
              << '\n';
    return 1;
  }
  for (const auto& [name, bytes] : contents) {
    const auto onDisk = harmony::platform::ReadFileBytes(package / name);
    if (!onDisk || *onDisk != bytes) {
      std::cerr << "make-factory-grids: " << name << " differs\n";
      return 1;
    }
  }
  std::cout << "up to date: " << package.string() << '\n';
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3 || (std::strcmp(argv[1], "--out") != 0 && std::strcmp(argv[1], "--check") != 0)) {
    std::cerr << "usage: make-factory-grids --out|--check PACKAGE\n";
    return 2;
  }
  std::string error;
  const auto contents = harmony::factory_grids::BuildFactoryPackage(&error);
  if (!contents) {
    std::cerr << "make-factory-grids: " << error << '\n';
    return 1;
  }
  const std::filesystem::path package = argv[2];
  if (std::strcmp(argv[1], "--check") == 0) return Check(package, *contents);
  if (!harmony::platform::WriteDirectoryAtomically(package, *contents)) {
    std::cerr << "make-factory-grids: cannot write " << package << '\n';
    return 1;
  }
  std::cout << "wrote " << contents->size() - 1 << " library file(s) to " << package.string()
            << '\n';
  return 0;
}
