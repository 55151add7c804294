#pragma once
// The layers of a chord name for a basic chord read once. Naming asks for the basic chord in
// nearly every layer; the members of CChordHeavy read it and hand it to these.

#include <string>

#include "harmony/chords/ChordHeavy.h"

namespace harmony::chords_detail {

// CChordHeavy::OptionsMap for the chord's basic chord `basic`.
CChordHeavy::COptionsMap OptionsMapFor(const CChordHeavy& chord, TBasicChord basic,
                                       const CChordNamePrefs& prefs);

// CChordHeavy::OptionName, appended to `text`.
void AppendOptionName(std::string& text, CChordHeavy::TChordOption option,
                      const CChordNamePrefs& prefs);

}  // namespace harmony::chords_detail
