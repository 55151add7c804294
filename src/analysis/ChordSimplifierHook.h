#pragma once
// The simplification the chord-symbol parser's last pass calls by default: a bass note that
// makes a slash chord a plain stacked-third chord (C/A is Am7). The parser names it in its
// default hook, so every program that parses symbols links it.

#include <utility>

#include "harmony/chords/ChordLite.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/chords/SignKey.h"

namespace harmony::analysis_detail {

std::pair<bool, CChordLite> SimplifyBassNoteForParser(const CChordLite& chord,
                                                      const CHarmCenterLite& center,
                                                      const CSignKeyLite& signKey);

}  // namespace harmony::analysis_detail
