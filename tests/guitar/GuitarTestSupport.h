#pragma once
// Helpers of the guitar tests: small grids and the bytes of library files.

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

#include "TempFolder.h"
#include "harmony/guitar/GChDatabase.h"

namespace harmony::testing {

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
