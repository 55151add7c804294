#pragma once
// The function of a chord in a key: a code by scale degree and triad, named as a roman
// numeral or as a function letter of German harmony theory (T, S, D and their relatives).

#include <cstdint>
#include <string>

#include "harmony/chords/BasicChord.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony {

// 0 "I" .. 14 "VIIdim"; -1 when the chord has no function in the key.
using CHarmFunc = std::int32_t;
inline constexpr CHarmFunc kHarmFuncNone = -1;

// The code of a triad on a scale degree (counted from 0); -1 for the pairs without one.
// Sus chords count as dominants on the fifth degree only.
CHarmFunc HarmFuncForDegreeNrAndBasicChord(int degreeNr, TBasicChord basicChord);
// The roman numeral, or with FunctionLetters 1 the function letters of a key of major or of
// minor kind. Codes without a name give "undef". A "##" inside a name marks a text the host
// shows in its own way.
std::string HarmFuncNameForCode(CHarmFunc code, bool minorKind, const CChordNamePrefs& prefs);

}  // namespace harmony
