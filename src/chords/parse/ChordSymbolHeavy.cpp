// Chord symbols read into heavy chords, and chord-and-scale texts written back: the parts of the
// symbol reader that need the chord as notes and its name.

#include "harmony/chords/ChordHeavy.h"
#include "harmony/chords/ChordSymbolParser.h"

namespace harmony {

void SetFromString(const std::string& text, CChordHeavy& chord,
                   const ChordSetFromStringPrefs& prefs, const CChordNamePrefs& namePrefs) {
  CChordLite lite;
  SetFromString(text, lite, prefs, namePrefs);
  chord = lite.ToChordHeavy(chord.IntvlSet().WrapIntvl());
}

CChordHeavy::CChordHeavy(const std::string& text, const ChordSetFromStringPrefs& prefs,
                         const CChordNamePrefs& namePrefs, int wrapIntvl)
    : CChordHeavy(wrapIntvl) {
  SetFromString(text, prefs, namePrefs);
}

CChordHeavy::CChordHeavy(const char* text, const ChordSetFromStringPrefs& prefs,
                         const CChordNamePrefs& namePrefs, int wrapIntvl)
    : CChordHeavy(std::string(text != nullptr ? text : ""), prefs, namePrefs, wrapIntvl) {}

void CChordHeavy::SetFromString(const std::string& text, const ChordSetFromStringPrefs& prefs,
                                const CChordNamePrefs& namePrefs) {
  harmony::SetFromString(text, *this, prefs, namePrefs);
}

std::string ChordAndScaleToString(const CChordLite& chord, const CScaleLite& scale,
                                  const CChordNamePrefs& namePrefs) {
  std::string text = chord.ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).Name(namePrefs);
  if (scale.RootKeyEnh.KeyNr != kKeyNrUndef) text += "; " + scale.Name(namePrefs);
  return text;
}

}  // namespace harmony
