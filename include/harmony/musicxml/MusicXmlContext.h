#pragma once
// The running state of one event import of a MusicXML file: where in time the reading
// stands (in MIDI ticks and in the file's divisions), the signs in force, the cursors into
// the document tree that let the import look ahead of the events, the ties under way, and
// what is learned about the current part. The import owns one for each file it reads.

#include <cstdint>

#include "harmony/musicxml/MuxmlEnum.h"
#include "harmony/musicxml/MuxmlMeasure.h"
#include "harmony/musicxml/MuxmlNote.h"
#include "harmony/musicxml/MuxmlPartGatheredInfo.h"
#include "harmony/musicxml/MuxmlSigns.h"
#include "harmony/musicxml/TiePendingInfo.h"
#include "harmony/musicxml/VelocityFromDynamics.h"
#include "harmony/musicxml/XMLElement.h"

namespace harmony {

class MusicXmlContext {
 public:
  // No tick resolution yet (0 ticks per quarter note: every duration converts to 0).
  MusicXmlContext() = default;
  explicit MusicXmlContext(std::int32_t ticksPerQuarter) : mTicksPerQuarter(ticksPerQuarter) {}

  void init();
  void initWithTicksPerQuarter(std::int32_t ticksPerQuarter);
  // Everything back to the state before a part, except the tick resolution; at the start
  // and at the end of every part. A tie still under way is dropped with it.
  void resetCurrentPartMembers();

  // --- The records in force
  CMuxmlPartGatheredInfo& CurrentPartGatheredInfo() { return mCurrentPartGatheredInfo; }
  const CMuxmlPartGatheredInfo& CurrentPartGatheredInfo() const { return mCurrentPartGatheredInfo; }
  void SetCurrentPartGatheredInfo(const CMuxmlPartGatheredInfo& info) {
    mCurrentPartGatheredInfo = info;
  }
  // The last finished measure.
  CMuxmlMeasure& CurrentMeasure() { return mCurrentMeasure; }
  const CMuxmlMeasure& CurrentMeasure() const { return mCurrentMeasure; }
  void SetCurrentMeasure(const CMuxmlMeasure& measure) { mCurrentMeasure = measure; }
  CMuxmlSignTime& CurrentSignTime() { return mCurrentSignTime; }
  const CMuxmlSignTime& CurrentSignTime() const { return mCurrentSignTime; }
  void SetCurrentSignTime(const CMuxmlSignTime& signTime) { mCurrentSignTime = signTime; }
  CMuxmlSignKey& CurrentSignKey() { return mCurrentSignKey; }
  const CMuxmlSignKey& CurrentSignKey() const { return mCurrentSignKey; }
  void SetCurrentSignKey(const CMuxmlSignKey& signKey) { mCurrentSignKey = signKey; }
  // The last clef, of whichever staff.
  CMuxmlClef& CurrentClef() { return mCurrentClef; }
  const CMuxmlClef& CurrentClef() const { return mCurrentClef; }
  void SetCurrentClef(const CMuxmlClef& clef) { mCurrentClef = clef; }
  CMuxmlTranspose& CurrentTranspose() { return mCurrentTranspose; }
  const CMuxmlTranspose& CurrentTranspose() const { return mCurrentTranspose; }
  void SetCurrentTranspose(const CMuxmlTranspose& transpose) { mCurrentTranspose = transpose; }
  // The last note that wasn't a chord note: the first note of the chord being read.
  CMuxmlNote& CurrentFirstChordNote() { return mCurrentFirstChordNote; }
  const CMuxmlNote& CurrentFirstChordNote() const { return mCurrentFirstChordNote; }
  void SetCurrentFirstChordNote(const CMuxmlNote& note) { mCurrentFirstChordNote = note; }
  CTiePendingInfos& TiePendingInfos() { return mTiePendingInfos; }
  const CTiePendingInfos& TiePendingInfos() const { return mTiePendingInfos; }
  void SetTiePendingInfos(const CTiePendingInfos& infos) { mTiePendingInfos = infos; }
  CVelocityFromDynamics& VelocityFromDynamics() { return mVelocityFromDynamics; }
  const CVelocityFromDynamics& VelocityFromDynamics() const { return mVelocityFromDynamics; }
  void SetVelocityFromDynamics(const CVelocityFromDynamics& velocities) {
    mVelocityFromDynamics = velocities;
  }

  // --- Plain values
  bool InXMLElementBackup() const { return mInXMLElementBackup; }
  void setInXMLElementBackup(bool inside) { mInXMLElementBackup = inside; }
  bool InXMLElementForward() const { return mInXMLElementForward; }
  void setInXMLElementForward(bool inside) { mInXMLElementForward = inside; }
  // Nothing in the import sets this one.
  bool InXMLElementSound() const { return mInXMLElementSound; }
  void setInXMLElementSound(bool inside) { mInXMLElementSound = inside; }
  // The channel the notes get; the import leaves it at 0, a host may set it.
  std::uint8_t CurrentMidiChannel() const { return mCurrentMidiChannel; }
  void setCurrentMidiChannel(std::uint8_t channel) { mCurrentMidiChannel = channel; }
  std::int32_t TicksPerQuarter() const { return mTicksPerQuarter; }
  void setTicksPerQuarter(std::int32_t ticks) { mTicksPerQuarter = ticks; }
  std::int32_t CurrentPartMeasuresXMLIx() const { return mCurrentPartMeasuresXMLIx; }
  void setCurrentPartMeasuresXMLIx(std::int32_t ix) { mCurrentPartMeasuresXMLIx = ix; }
  std::int32_t CurrentPartMeasureNotesXMLIx() const { return mCurrentPartMeasureNotesXMLIx; }
  void setCurrentPartMeasureNotesXMLIx(std::int32_t ix) { mCurrentPartMeasureNotesXMLIx = ix; }
  std::int32_t CurrentPartMeasureDirectionsXMLIx() const {
    return mCurrentPartMeasureDirectionsXMLIx;
  }
  void setCurrentPartMeasureDirectionsXMLIx(std::int32_t ix) {
    mCurrentPartMeasureDirectionsXMLIx = ix;
  }
  std::int32_t CurrentPosAsMidiTicks() const { return mCurrentPosAsMidiTicks; }
  void setCurrentPosAsMidiTicks(std::int32_t ticks) { mCurrentPosAsMidiTicks = ticks; }
  // How much a pickup bar lacks, in divisions: its notes' positions in the bar move by it.
  std::int32_t ShiftNotePosInIncompleteFirstBarAsDuration() const {
    return mShiftNotePosInIncompleteFirstBarAsDuration;
  }
  void setShiftNotePosInIncompleteFirstBarAsDuration(std::int32_t duration) {
    mShiftNotePosInIncompleteFirstBarAsDuration = duration;
  }
  // The position before the last advance: where the chord being read starts.
  std::int32_t LastPosAsMidiTicks() const { return mLastPosAsMidiTicks; }
  void setLastPosAsMidiTicks(std::int32_t ticks) { mLastPosAsMidiTicks = ticks; }
  std::int32_t MaxCurrentPosAsMidiTicks() const { return mMaxCurrentPosAsMidiTicks; }
  void setMaxCurrentPosAsMidiTicks(std::int32_t ticks) { mMaxCurrentPosAsMidiTicks = ticks; }
  std::int32_t CurrentBarStartAsMidiTicks() const { return mCurrentBarStartAsMidiTicks; }
  void setCurrentBarStartAsMidiTicks(std::int32_t ticks) { mCurrentBarStartAsMidiTicks = ticks; }
  // Kept for a host; the import doesn't count with it.
  std::int32_t CurrentPartMeasureCount() const { return mCurrentPartMeasureCount; }
  void setCurrentPartMeasureCount(std::int32_t count) { mCurrentPartMeasureCount = count; }
  std::uint64_t CurrentDivisionsPQN() const { return mCurrentDivisionsPQN; }
  void setCurrentDivisionsPQN(std::uint64_t divisions) { mCurrentDivisionsPQN = divisions; }
  const CXMLElement& CurrentPartXML() const { return mCurrentPartXML; }
  void setCurrentPartXML(CXMLElement part) { mCurrentPartXML = std::move(part); }
  const CXMLElements& CurrentPartMeasuresXMLs() const { return mCurrentPartMeasuresXMLs; }
  void setCurrentPartMeasuresXMLs(CXMLElements measures) {
    mCurrentPartMeasuresXMLs = std::move(measures);
  }
  const CXMLElements& CurrentPartMeasureNotesXMLs() const { return mCurrentPartMeasureNotesXMLs; }
  void setCurrentPartMeasureNotesXMLs(CXMLElements notes) {
    mCurrentPartMeasureNotesXMLs = std::move(notes);
  }
  const CXMLElements& CurrentPartMeasureDirectionsXMLs() const {
    return mCurrentPartMeasureDirectionsXMLs;
  }
  void setCurrentPartMeasureDirectionsXMLs(CXMLElements directions) {
    mCurrentPartMeasureDirectionsXMLs = std::move(directions);
  }
  // The position in the bar in divisions. It is unsigned: going back before the bar's
  // start wraps round.
  std::uint64_t CurrentPosInBarAsDuration() const { return mCurrentPosInBarAsDuration; }
  void setCurrentPosInBarAsDuration(std::uint64_t duration) {
    mCurrentPosInBarAsDuration = duration;
  }

  // --- The elements at the cursors; none when a cursor stands before or past its list.
  CXMLElement CurrentPartMeasureXML() const;
  // The current `note` (one element, despite the plural of the name).
  CXMLElement CurrentPartMeasureNoteXMLs() const;
  CXMLElement CurrentPartMeasureDirectionXML() const;

  // --- Time
  // Takes the first `divisions` below the element, if there is one; a negative number
  // counts as 0.
  void UpdateCurrentDivisionsPQNFromXmlElement(const CXMLElement& element);
  // Divisions to ticks, truncated, so each note of a tuplet loses its fraction of a tick.
  // 0 without a tick resolution or divisions; the undefined value stays undefined.
  std::int32_t ConvertMuxmlDurationToMidiTicks(std::int32_t duration) const;
  // Moves the position by `ticks` (never below 0) and the position in the bar by
  // `duration`; the position before the move is kept as the last position.
  void AdvanceCurrentPosEvenBeforeBarStartByMidiTicks(std::int32_t ticks, std::int32_t duration);
  // The same, but never back before the start of the current bar.
  void AdvanceCurrentPosByMidiTicks(std::int32_t ticks, std::int32_t duration);

  // --- Velocity from the percentages of "dynamics" (100 is a forte's velocity of 90)
  // 255 (no value) for a negative percentage, 1 for 0 and 1, at most 127.
  static std::uint8_t ConvertMuxmlDynamicsToMidiVelocity(std::int32_t dynamics);
  // The release velocity: 255 for a negative percentage, at most 129.
  static std::uint8_t ConvertMuxmlDynamicsToMidiRelVelocity(std::int32_t dynamics);

  // Adds a note of the current part, rests included, to what is learned about the part:
  // its voice, its position and length as fractions of a whole note (plain notes and
  // triplets only), the transposition it was written under, and the note range. A rest
  // takes the lowest note back to -1, so the lowest is the lowest since the last rest.
  // Throws boost::bad_rational when the divisions are 0 and the note counts for the
  // fractions.
  void encounteredNote_updateMusicXmlContextCurrentPartInfo(const CMuxmlNote& note);

 private:
  CMuxmlPartGatheredInfo mCurrentPartGatheredInfo;
  CMuxmlMeasure mCurrentMeasure;
  CMuxmlSignTime mCurrentSignTime;
  CMuxmlSignKey mCurrentSignKey;
  CMuxmlClef mCurrentClef;
  CMuxmlTranspose mCurrentTranspose;
  CMuxmlNote mCurrentFirstChordNote;
  CTiePendingInfos mTiePendingInfos;
  CVelocityFromDynamics mVelocityFromDynamics;
  bool mInXMLElementBackup = false;
  bool mInXMLElementForward = false;
  bool mInXMLElementSound = false;
  std::uint8_t mCurrentMidiChannel = 0;
  std::int32_t mTicksPerQuarter = 0;
  std::int32_t mCurrentPartMeasuresXMLIx = -1;
  std::int32_t mCurrentPartMeasureNotesXMLIx = -1;
  std::int32_t mCurrentPartMeasureDirectionsXMLIx = -1;
  std::int32_t mCurrentPosAsMidiTicks = 0;
  std::int32_t mShiftNotePosInIncompleteFirstBarAsDuration = 0;
  std::int32_t mLastPosAsMidiTicks = 0;
  std::int32_t mMaxCurrentPosAsMidiTicks = 0;
  std::int32_t mCurrentBarStartAsMidiTicks = 0;
  std::int32_t mCurrentPartMeasureCount = 0;
  std::uint64_t mCurrentDivisionsPQN = 1;
  CXMLElement mCurrentPartXML;
  CXMLElements mCurrentPartMeasuresXMLs;
  CXMLElements mCurrentPartMeasureNotesXMLs;
  CXMLElements mCurrentPartMeasureDirectionsXMLs;
  std::uint64_t mCurrentPosInBarAsDuration = 0;
};

}  // namespace harmony
