#pragma once
// Shared by the scale and sign key commands: a sign count in words and a scale's degrees
// spelled.

#include <string>
#include <vector>

#include "harmony/chords/ScaleHeavy.h"
#include "harmony/pitch/KeyNames.h"

namespace harmony::tool {

// "3 (3 sharps)", "-1 (1 flat)", "0 (none)".
inline std::string SignsText(int signs) {
  if (signs == 0) return "0 (none)";
  const int count = signs > 0 ? signs : -signs;
  return std::to_string(signs) + " (" + std::to_string(count) + (signs > 0 ? " sharp" : " flat") +
         (count > 1 ? "s)" : ")");
}

// The degrees as the scale spells them; keys it leaves unspelled are written as C major would.
inline std::vector<std::string> SpelledDegreeNames(const CScaleHeavy& scale,
                                                   const CChordNamePrefs& prefs) {
  std::vector<std::string> names;
  for (int degree = 0; degree < scale.DegreesPerOctave(); ++degree) {
    const CKeyEnh key = scale.DegreeNrToKeyEnh(degree);
    const TEnh enh =
        key.Enh == TEnh_Undef ? MakeSensefulEnhForKeyNrAssumingCMajor(key.KeyNr, key.Enh) : key.Enh;
    names.push_back(KeyNrAndEnhToName(key.KeyNr, enh, prefs));
  }
  return names;
}

inline std::string SpelledDegrees(const CScaleHeavy& scale, const CChordNamePrefs& prefs) {
  std::string names;
  for (const std::string& name : SpelledDegreeNames(scale, prefs)) {
    names += (names.empty() ? "" : " ") + name;
  }
  return names;
}

}  // namespace harmony::tool
