#pragma once
// A chord symbol given on the command line to the dialog and vector commands. The parser
// is forgiving and steps over what it doesn't know; only a text that gives no root and is
// none of the words for "no chord" ("undef", "-", "nochord", "nochordyield") is refused.

#include <string>

#include "ChordCommandSupport.h"
#include "Command.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/ChordSymbolParser.h"

namespace harmony::tool {

inline CChordLite ReadChordSymbol(
    const std::string& text, const ChordSetFromStringPrefs& prefs = ChordSetFromStringPrefs()) {
  CChordSetFromStringHelper helper;
  CChordLite chord;
  helper.SetFromString(text, chord, prefs, ReadingPrefs());
  CChordLite noChord;
  if (chord.IsUndef() && !helper._StringShouldSetUndefOrNoChord(noChord)) {
    throw InputError("\"" + text +
                     "\" is not a chord symbol (a root A..H, then e.g. m7, 7#9, maj9, /E; or "
                     "nochord, undef)");
  }
  return chord;
}

// The chord's name as the chord command writes it; "-" for the undefined chord.
inline std::string ChordSymbolName(const CChordLite& chord, const CChordNamePrefs& prefs) {
  if (chord.IsUndef() && !chord.IsNoChordYield() && !chord.IsNoChordForce()) return "-";
  return chord.ToChordHeavy(CIntvlSet::kDefaultWrapIntvl).Name(prefs);
}

}  // namespace harmony::tool
