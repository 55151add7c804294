#pragma once
// Ties under way in the event import. A tied note sounds once, from the start of its first
// piece for the length of all pieces together, so the pieces are gathered here until the
// last one comes; that one is reported in place of the whole. A tie belongs to a pitch on a
// staff: the voice is kept but doesn't count in the search.

#include <cstdint>
#include <ostream>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/musicxml/MuxmlNote.h"
#include "harmony/musicxml/XMLElement.h"

namespace harmony {

class CTiePendingInfo : public TraceFamily<CTiePendingInfo> {
 public:
  std::int32_t mStaff = 0;
  std::int32_t mVoice = 0;
  std::int32_t mStep = -1;
  float mAlteration = 0.0f;
  std::int32_t mOctave = 0;
  // The pieces so far, in divisions and in ticks.
  std::int32_t mPendingDuration = 0;
  std::int32_t mPendingMidiTicks = 0;
  // The `note` elements of the pieces so far, and the pieces' records.
  CXMLElements mNoteXMLs;
  std::vector<CMuxmlNote> mNotes;

  // The same staff and the same pitch (step, alteration, octave).
  bool IsFor(const CMuxmlNote& note) const;

  // Makes the last piece `note` stand for the whole tie. For each gathered piece: its
  // lyrics are copied below the note's element and added to the note's lyrics; then the
  // note takes every field of the first piece (its notations, velocity, accidental, element
  // and lyrics), keeping its own position and lengths and the longer drawn note value.
  void TransferRelevantObjectsToLastNote(CMuxmlNote& note) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

class CTiePendingInfos : public std::vector<CTiePendingInfo> {
 public:
  // A tie starts at `note`, `ticks` long. An older tie of the same pitch stays before it
  // and is the one the search finds.
  void StartEncounteredFor(const CMuxmlNote& note, std::int32_t ticks);
  // A middle piece: added to the tie of its pitch; without one nothing happens.
  void ContinueEncounteredFor(const CMuxmlNote& note, std::int32_t ticks);
  // The tie of the note's pitch, or end().
  iterator PendingDurationFor(const CMuxmlNote& note);
  const_iterator PendingDurationFor(const CMuxmlNote& note) const;
  // Ends the tie of the note's pitch; the others keep their order.
  void StopEncounteredFor(const CMuxmlNote& note);
};

}  // namespace harmony
