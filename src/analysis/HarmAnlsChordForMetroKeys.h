#pragma once
// Keys as the chord vector form knows them: a key number and nothing else, spelled back as
// in C major (black keys C#, Eb, F#, G#, Bb).

#include "harmony/pitch/KeyEnh.h"

namespace harmony::metro {

// A pitch class the vector can hold; the undefined key 15, and anything outside 0..11 that
// a dictionary may carry, are none.
constexpr bool IsRealKeyNr(int keyNr) { return keyNr >= 0 && keyNr < 12; }

inline CKeyEnh KeyAsInCMajor(int keyNr) {
  return CKeyEnh(keyNr, MakeSensefulEnhForKeyNrAssumingCMajor(keyNr, TEnh_Undef));
}

}  // namespace harmony::metro
