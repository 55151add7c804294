#pragma once
// The music knowledge behind a host's chord editor: the one implementation of
// DialogChordHarmonyKnowHowInterface. It holds no state.

#include <ostream>
#include <utility>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/chords/BasicChord.h"
#include "harmony/dialog/DialogChordHarmonyKnowHowInterface.h"

namespace harmony {

class DialogChordHarmonyKnowHow : public DialogChordHarmonyKnowHowInterface,
                                  public TraceFamily<DialogChordHarmonyKnowHow> {
 public:
  std::vector<TDialogButton> DialogChordTypesFor(const CChordLite& chord,
                                                 const CScaleLite& scale) const override;
  CChordLite SetChordFomChangedDialogChordType(TDialogChordType type, const CChordLite& chord,
                                               const CScaleLite& scale) const override;
  std::vector<TDialogButton> DialogChordOptionsFor(const CChordLite& chord,
                                                   const CScaleLite& scale) const override;
  CChordLite SetChordFomChangedDialogChordOption(TDialogChordOption option, bool on,
                                                 const CChordLite& chord,
                                                 const CScaleLite& scale) const override;

  // --- The steps, reachable for tests.
  // The eight type buttons of the chord.
  static std::vector<TDialogButton> _DialogChordTypesWithStatusForBasicChord(
      const CChordLite& chord);
  // The type a mask lights: 0 for no tones, 8 for what is none of the six triads; never 7.
  static TDialogChordType _DialogChordTypeForBasicChord(const CSemitones& semitones);
  // The triad a type button sets and whether it stands for "other" (the tensions of such a
  // chord are erased too, as they are for every type). A type outside 1..8 gives
  // (kBasicChordNone, true), a chord without tones.
  static std::pair<TBasicChord, bool> _BasicChordAndEraseTensionsForDialogChordType(
      TDialogChordType type);
  // Title 2 only for the sixth button of a diminished chord (there it reads as a diminished
  // seventh).
  static std::uint8_t _OptionButtonTitleIDForOptionAndChord(TDialogChordOption option,
                                                            const CChordLite& chord);
  // Title 2 only for the "other" button of a chord with neither third nor fifth.
  static std::uint8_t _TypeButtonTitleIDForTypeAndChord(TDialogChordType type,
                                                        const CChordLite& chord);

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
