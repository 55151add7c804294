#pragma once
// Chords, scales and contexts for the scale alternatives tests, written as a musician would.

#include <sstream>
#include <string>
#include <vector>

#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordSymbolParser.h"
#include "harmony/chords/ScaleLite.h"
#include "harmony/scalealternatives/ScaleAlternative.h"
#include "harmony/scalealternatives/ScaleSuggestions.h"

namespace harmony::testing {

inline CChordLite Chord(const std::string& symbol) {
  return CChordLite(symbol, ChordSetFromStringPrefs(), GetCurrentChordNamePrefs());
}

// "C", "C minor", "D dorian".
inline CScaleLite Scale(const std::string& name) { return CScaleLite(name); }

// The contexts of a progression ("Ab Bb C") whose chords all sound in one scale.
inline std::vector<CScaleAlternativesContext> InScale(const std::string& symbols,
                                                      const CScaleLite& scale) {
  std::vector<CChordLite> chords;
  std::istringstream words(symbols);
  for (std::string symbol; words >> symbol;) chords.push_back(Chord(symbol));
  return ScaleSuggestions::ContextsForChords(chords, std::vector<CScaleLite>(chords.size(), scale));
}

// The masks of a list of alternatives, in order.
inline std::vector<unsigned long long> Masks(const TScaleAlternatives& alternatives) {
  std::vector<unsigned long long> masks;
  for (const TScaleAlternative& alternative : alternatives) {
    masks.push_back(alternative.Scale.Semitones.Word());
  }
  return masks;
}

// The names of a list of alternatives, in order ("D Dorian").
inline std::vector<std::string> Names(const TScaleAlternatives& alternatives) {
  std::vector<std::string> names;
  for (const TScaleAlternative& alternative : alternatives) {
    names.push_back(alternative.Scale.Name());
  }
  return names;
}

}  // namespace harmony::testing
