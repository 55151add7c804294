#pragma once
// The pitch of a note as MusicXML writes it: a letter (step), an alteration in semitones
// that may be fractional, and an octave in which C4 is middle C. Unpitched notes (drums)
// only have the place on the staff where they are drawn.

#include <cstdint>
#include <ostream>
#include <string>

#include "harmony/Trace.h"
#include "harmony/musicxml/MuxmlSigns.h"
#include "harmony/pitch/ChordNamePrefs.h"
#include "harmony/pitch/Enh.h"

namespace harmony {

class CMuxmlPitch : public TraceFamily<CMuxmlPitch> {
 public:
  std::int32_t mStep = -1;  // TMuxmlEnum_Step: C 0 .. B 6, -1 unknown
  float mAlteration = 0.0f;
  std::int32_t mOctave = 0;

  // The note number, C4 = 60, not limited to 0..127; -1 for an unknown step. A fractional
  // alteration is added and the sum truncated, so a quarter tone goes toward zero. The
  // spelling needs no key, so the sign key is not read.
  long ToNoteNrLarge(const CMuxmlSignKey& signKey) const;
  // The alteration as a spelling: whole semitones -2..2 give double flat .. double sharp,
  // anything else TEnh_Undef.
  TEnh AlterationToEnh() const;
  // The note's name with its octave ("F#4"), spelled by the alteration as far as that fits
  // the key, else as C major would spell it.
  std::string ToString(const CMuxmlSignKey& signKey,
                       const CChordNamePrefs& prefs = GetCurrentChordNamePrefs()) const;

  // Written out: the trace base has no comparison to default to.
  bool operator==(const CMuxmlPitch& other) const {
    return mStep == other.mStep && mAlteration == other.mAlteration && mOctave == other.mOctave;
  }

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CMuxmlUnpitched {
 public:
  std::int32_t mDisplayStep = -1;  // TMuxmlEnum_Step
  std::int32_t mDisplayOctave = 0;

  // The note number of the place on the staff, read in the key signature: the steps are
  // walked in the key's scale from C of the octave, and the key's accidental for the pitch
  // reached is added. -1 for an unknown step.
  long ToNoteNrLarge(const CMuxmlSignKey& signKey) const;

  bool operator==(const CMuxmlUnpitched& other) const = default;
};

}  // namespace harmony
