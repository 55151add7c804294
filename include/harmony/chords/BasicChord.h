#pragma once
// The triad classification that every chord rule begins with, and the four tension groups
// above it.

#include <cstdint>
#include <string>
#include <utility>

#include "harmony/pitch/ChordNamePrefs.h"
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

// The small and the large interval of a tension group on a chord with these tones. The flat
// fifth of a diminished triad (mask & 216 == 72) and the sharp fifth of an augmented one
// (mask & 400 == 272) belong to the triad, so there the large eleventh (6) and the small
// thirteenth (8) are undefined (-129). An unknown group gives (-129, -129).
std::pair<int, int> SmallAndLargeIntvlsForSemitones(TChordOption option,
                                                    const CSemitones& semitones);

// The symbol of the triad inside a chord name: "" for major, "m", "aug", "b5", "dim", "sus4",
// "sus2", "5", and "no3" for none or an unknown value. Spoken naming spells them out.
std::string BasicChordName(TBasicChord basicChord, const CChordNamePrefs& prefs);
// The written symbols; minor is empty when MinorNaming is 2, since the small root letter
// already says minor.
std::string _BasicChordName_ChordNaming_Normal(TBasicChord basicChord,
                                               const CChordNamePrefs& prefs);
// The words for speech: " major" (with its blank), "minor", "augmented", ...
std::string _BasicChordName_ChordNaming_AccessibilitySpoken(TBasicChord basicChord);

// The symbol as it follows the root: a major triad has none (" major" when spoken), the
// others stand behind a blank when the name parts are spaced or spoken.
std::string BasicChordNameWithPreceedingOptionalSpace(TBasicChord basicChord,
                                                      const CChordNamePrefs& prefs);

// Triads that can carry a dominant function: major, aug, major flat 5, sus4, sus2 and power.
bool IsDominantBasicChord(TBasicChord basicChord);

}  // namespace harmony
