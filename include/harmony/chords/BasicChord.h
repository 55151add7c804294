#pragma once
// The triad classification that every chord rule begins with, and the four tension groups
// above it.

#include <cstdint>

#include "harmony/pitch/Semitones.h"

namespace harmony {

// The triad a chord is heard as. The values are stored in files and must not change.
enum TBasicChord : std::uint8_t {
  kBasicChordNone = 0,
  kBasicChordMajor = 1,
  kBasicChordMinor = 2,
  kBasicChordAug = 3,
  kBasicChordMajorFlat5 = 4,
  kBasicChordDim = 5,
  kBasicChordSus4 = 6,
  kBasicChordSus2 = 7,
  kBasicChordPower = 8,
};

// A group of tensions, each with a small and a large interval: sevenths (10, 11), ninths
// (1, 2), elevenths (5, 6), thirteenths (8, 9).
enum TChordOption : std::uint8_t {
  kChordOption7 = 0,
  kChordOption9 = 1,
  kChordOption11 = 2,
  kChordOption13 = 3,
};

// The triad's tones: major 145, minor 137, aug 273, major flat 5 81, dim 73, sus4 161,
// sus2 133, power 129, none 0. An unknown value falls back to the major triad.
CSemitones SemitonesForBasicChord(TBasicChord basicChord);

}  // namespace harmony
