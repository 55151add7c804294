#pragma once
// A note as the event import hands it to a host: where it lies and how long it lasts in
// MIDI ticks, its note number and velocity, and what the score draws with it. Tied notes
// reach the host once, merged into one record.

#include <cstdint>
#include <ostream>
#include <vector>

#include "harmony/Trace.h"
#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/MuxmlNotations.h"
#include "harmony/musicxml/MuxmlPitch.h"
#include "harmony/musicxml/MuxmlSigns.h"
#include "harmony/musicxml/MuxmlTuplet.h"
#include "harmony/musicxml/XMLElement.h"

namespace harmony {

class CMuxmlNote : public TraceFamily<CMuxmlNote> {
 public:
  std::int32_t mPositionAsMidiTicks = kMuxmlUndef32;
  std::int32_t mLengthAsMidiTicks = kMuxmlUndef32;
  // The `duration` in divisions of a quarter note.
  std::int32_t mLengthAsDuration = kMuxmlUndef32;
  std::int32_t mPositionDisplayOffsetAsMidiTicks = kMuxmlUndef32;
  std::int32_t mLengthDisplayOffsetAsMidiTicks = kMuxmlUndef32;
  std::uint8_t mMidiChannel = 255;
  long mNoteNr = -1;
  CMuxmlPitch mPitch;
  CMuxmlUnpitched mUnpitched;
  CMuxmlAccidental mAccidental;
  std::uint8_t mVelocity = 255;
  // The "dynamics" attribute, percent of a forte's velocity; -1 when absent.
  float mVelocityAsDynamics = -1.0f;
  std::uint8_t mRelVelocity = 255;
  float mRelVelocityAsEndDynamics = -1.0f;
  std::int32_t mStaff = 0;
  std::int32_t mVoice = 0;
  bool mIsGraceNote = false;
  bool mIsCueNote = false;
  bool mIsChordNote = false;
  TMuxmlEnum_NoteType::TType mNoteType = TMuxmlEnum_NoteType::kUndefined;
  CMuxmlGraphicalNoteType mGraphicalNoteType;
  std::int32_t mDots = 0;
  CMuxmlTimeModification mTimeModification;
  CMuxmlFermata mFermata;
  CMuxmlTuplet mTuplet;
  CMuxmlStem mStem;
  // The `tie` elements of the note in order, start and stop.
  std::vector<TMuxmlEnum_StartStop::TType> mNoteTies;
  CMuxmlAccent mAccent;
  CMuxmlBreathMark mBreathMark;
  CMuxmlCeasura mCaesura;
  CMuxmlDetachedLegato mDetachedLegato;
  CMuxmlDoit mDoit;
  CMuxmlFallOff mFallOff;
  CMuxmlPlop mPlop;
  CMuxmlScoop mScoop;
  CMuxmlStrongAccent mStrongAccent;
  CMuxmlTenuto mTenuto;
  CMuxmlStaccato mStaccato;
  CMuxmlStaccatissimo mStaccatissimo;
  CXMLElement mNoteXML;
  CXMLElements mLyricXMLs;
  CXMLElements mNotationsXMLs;
  CXMLElement mNoteheadXML;
  CXMLElement mNoteheadTextXML;

  // The note number of a pitched note from its pitch, of an unpitched note or a rest from
  // where it is drawn; -1 for a note of no known kind.
  long ConvertToNoteNrLarge(const CMuxmlSignKey& signKey) const;

  void WriteTrace(std::ostream& out) const;
  void WriteTraceBrief(std::ostream& out) const;
  void WriteInitializerList(std::ostream& out) const;
};

}  // namespace harmony
