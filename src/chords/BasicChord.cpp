#include "harmony/chords/BasicChord.h"

#include <array>

namespace harmony {

namespace {
// Indexed by TBasicChord: none, major, minor, aug, major flat 5, dim, sus4, sus2, power.
constexpr std::array<std::uint64_t, 9> kBasicChordMasks{0, 145, 137, 273, 81, 73, 161, 133, 129};
constexpr std::uint64_t kMajorTriad = 145;
}  // namespace

CSemitones SemitonesForBasicChord(TBasicChord basicChord) {
  if (basicChord >= kBasicChordMasks.size()) return CSemitones(kMajorTriad);
  return CSemitones(kBasicChordMasks[basicChord]);
}

}  // namespace harmony
