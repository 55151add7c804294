#pragma once
// The member names of TBasicChord, as the tool prints them.

#include "harmony/chords/BasicChord.h"

namespace harmony::tool {

inline const char* BasicChordMemberName(TBasicChord basicChord) {
  constexpr const char* kNames[] = {"kBasicChordNone", "kBasicChordMajor",      "kBasicChordMinor",
                                    "kBasicChordAug",  "kBasicChordMajorFlat5", "kBasicChordDim",
                                    "kBasicChordSus4", "kBasicChordSus2",       "kBasicChordPower"};
  return basicChord <= kBasicChordPower ? kNames[basicChord] : "kBasicChordNone";
}

}  // namespace harmony::tool
