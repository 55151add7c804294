// A host of the installed library: reads the factory chord grids wherever the library finds
// them and prints the folder and how many grids it holds. With --package-data it names the
// package's data folder itself, as a host that links a static library outside the prefix must.

#include <cstring>
#include <iostream>

#include "harmony/DataFolder.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/guitar/GChDatabase.h"
#include "harmony/guitar/GChLibrary.h"

int main(int argc, char** argv) {
  if (argc > 1 && std::strcmp(argv[1], "--package-data") == 0) {
    harmony::SetDataFolder(HARMONY_PACKAGE_DATA_DIR);
  }
  harmony::GChDatabase db;
  const auto package = harmony::GChDatabase::factoryPackageLocation();
  std::size_t grids = 0;
  if (!package.empty() && db.readFromDbPackageAtPath(package)) {
    for (const harmony::GChLibrary* library : db.allLibrariesForAnyTuning()) {
      grids += library->basicChords().size();
    }
  }
  harmony::CChordLite chord;
  harmony::SetFromString("Dm7", chord);
  std::cout << "data folder: " << harmony::DataFolder().string() << '\n'
            << "factory grids: " << grids << '\n'
            << "Dm7 mask: " << chord.Semitones.Word() << '\n';
  return 0;
}
