#pragma once
// Rewrites a slash chord whose bass completes a chord of stacked thirds as that chord: C/A is
// Am7 written another way, Cm/Ab is Abmaj7. The analysis handles the stacked form best.

#include <ostream>
#include <utility>

#include "harmony/Trace.h"
#include "harmony/chords/ChordLite.h"
#include "harmony/chords/HarmCenter.h"
#include "harmony/chords/SignKey.h"

namespace harmony {

class ChordSimplifier : public TraceFamily<ChordSimplifier> {
 public:
  // The simplified chord, or the chord as given. Missing arguments count as undefined.
  CChordLite Simplify(const CChordLite& chord) const;
  CChordLite Simplify(const CChordLite& chord, const CHarmCenterLite& center) const;
  CChordLite Simplify(const CChordLite& chord, const CSignKeyLite& signKey) const;
  CChordLite Simplify(const CChordLite& chord, const CHarmCenterLite& center,
                      const CSignKeyLite& signKey) const;

  // (true, the stacked chord) when the bass fits: a major triad over its sixth, a minor
  // triad over its flat sixth, an augmented or diminished triad over one of its symmetric
  // neighbours. For augmented and diminished chords a known center (or, failing that, the
  // sign key's scale) must hold the bass. (false, the chord unchanged) otherwise.
  std::pair<bool, CChordLite> _SimplifyBassNoteToStackedThirdChord(
      const CChordLite& chord, const CHarmCenterLite& center, const CSignKeyLite& signKey) const;

  // Spells the root as the center's scale spells it; an undefined center changes nothing.
  CChordLite _AdjustRootKeyEnhToHarmCenterIfDef(const CChordLite& chord,
                                                const CHarmCenterLite& center) const;

  // Makes the chord-symbol parser use this simplifier when its preferences ask for it. It is
  // the parser's default; this restores it after a host replaced or cleared the hook.
  static void InstallAsChordSymbolParserHook();

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
