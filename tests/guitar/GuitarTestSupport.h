#pragma once
// Helpers of the guitar tests: a temporary folder removed at the end, and small grids.

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

#include "harmony/guitar/GChDatabase.h"

namespace harmony::testing {

class TempFolder {
 public:
  TempFolder() {
    static std::atomic<int> counter{0};
    mPath = std::filesystem::temp_directory_path() /
            ("harmony-guitar-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(mPath);
    std::filesystem::create_directories(mPath);
  }
  ~TempFolder() {
    std::error_code ec;
    std::filesystem::remove_all(mPath, ec);
  }
  const std::filesystem::path& path() const { return mPath; }

 private:
  std::filesystem::path mPath;
};

// A grid of the default tuning with one finger per listed (finger, fret, string).
struct Spot {
  int finger, fret, string;
};
inline std::shared_ptr<GChBasicChord> Grid(const std::vector<Spot>& spots) {
  auto chord = std::make_shared<GChBasicChord>(GChDefaultGuitarShortTuning());
  for (const auto& spot : spots) chord->addChordElem(spot.finger, spot.fret, spot.string);
  return chord;
}

inline std::vector<uint8_t> Bytes(std::initializer_list<int> values) {
  std::vector<uint8_t> bytes;
  for (int v : values) bytes.push_back(static_cast<uint8_t>(v));
  return bytes;
}

}  // namespace harmony::testing
