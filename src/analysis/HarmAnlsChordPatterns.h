#pragma once
// The five kinds of chord that the progression tables speak of. Each is a pattern of
// required and forbidden semitones above the chord's root; all other semitones are free, so
// a chord may carry tensions on top.

#include <cstdint>

#include "harmony/pitch/SemitonesMatch.h"

namespace harmony::harmanls {

enum class TChordPattern : std::uint8_t {
  kMajor,            // 0 4 7 required
  kMinor,            // 0 3 7 required, major third forbidden
  kDominant7,        // 0 4 7 10 required, major seventh forbidden
  kDiminished,       // 0 3 6 required, major third and fifth forbidden
  kHalfDiminished7,  // 0 3 6 10 required, major third and fifth forbidden
};

const CSemitonesMatch& ChordPatternMatch(TChordPattern pattern);

}  // namespace harmony::harmanls
