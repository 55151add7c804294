#pragma once
// Chord symbols of the dialog and vector commands: read by the tool's strict reader
// (ReadChordSymbol in Command.h), named here as the chord command writes them.

#include <string>

#include "ChordCommandSupport.h"
#include "Command.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordSymbolParser.h"

namespace harmony::tool {

// The chord's name as the chord command writes it; "-" for the undefined chord.
inline std::string ChordSymbolName(const CChordLite& chord, const CChordNamePrefs& prefs) {
  if (chord.IsUndef() && !chord.IsNoChordYield() && !chord.IsNoChordForce()) return "-";
  return chord.ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).Name(prefs);
}

}  // namespace harmony::tool
