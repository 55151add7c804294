#include "harmony/musicxml/MusicXmlContext.h"

#include <algorithm>
#include <limits>

#include "harmony/musicxml/MusicXmlXPath.h"
#include "musicxml/MuxmlRead.h"

namespace harmony {

using namespace musicxml;

namespace {

CXMLElement ElementAt(const CXMLElements& elements, std::int32_t ix) {
  if (ix < 0 || static_cast<std::size_t>(ix) >= elements.size()) return {};
  return elements[static_cast<std::size_t>(ix)];
}

std::uint8_t PercentOfForte(std::int32_t dynamics, std::int64_t limit) {
  return static_cast<std::uint8_t>(
      std::min<std::int64_t>(std::int64_t{dynamics} * 90 / 100, limit));
}

}  // namespace

void MusicXmlContext::init() {
  resetCurrentPartMembers();
  mTicksPerQuarter = 0;
}

void MusicXmlContext::initWithTicksPerQuarter(std::int32_t ticksPerQuarter) {
  init();
  mTicksPerQuarter = ticksPerQuarter;
}

void MusicXmlContext::resetCurrentPartMembers() { *this = MusicXmlContext(mTicksPerQuarter); }

CXMLElement MusicXmlContext::CurrentPartMeasureXML() const {
  return ElementAt(mCurrentPartMeasuresXMLs, mCurrentPartMeasuresXMLIx);
}

CXMLElement MusicXmlContext::CurrentPartMeasureNoteXMLs() const {
  return ElementAt(mCurrentPartMeasureNotesXMLs, mCurrentPartMeasureNotesXMLIx);
}

CXMLElement MusicXmlContext::CurrentPartMeasureDirectionXML() const {
  return ElementAt(mCurrentPartMeasureDirectionsXMLs, mCurrentPartMeasureDirectionsXMLIx);
}

void MusicXmlContext::UpdateCurrentDivisionsPQNFromXmlElement(const CXMLElement& element) {
  if (const auto divisions = StringObjectForXPath(element, ".//divisions")) {
    mCurrentDivisionsPQN = UnsignedValueOfText(*divisions);
  }
}

std::int32_t MusicXmlContext::ConvertMuxmlDurationToMidiTicks(std::int32_t duration) const {
  if (mTicksPerQuarter < 1 || mCurrentDivisionsPQN == 0) return 0;
  if (duration == kMuxmlUndef32) return kMuxmlUndef32;
  const auto divisions = static_cast<std::int64_t>(
      std::min<std::uint64_t>(mCurrentDivisionsPQN, std::numeric_limits<std::int64_t>::max()));
  return ClampToInt32(std::int64_t{mTicksPerQuarter} * duration / divisions);
}

void MusicXmlContext::AdvanceCurrentPosEvenBeforeBarStartByMidiTicks(std::int32_t ticks,
                                                                     std::int32_t duration) {
  mLastPosAsMidiTicks = mCurrentPosAsMidiTicks;
  mCurrentPosAsMidiTicks = std::max(0, AddSaturated32(mCurrentPosAsMidiTicks, ticks));
  mMaxCurrentPosAsMidiTicks = std::max(mMaxCurrentPosAsMidiTicks, mCurrentPosAsMidiTicks);
  // Unsigned on purpose: a negative duration wraps round.
  mCurrentPosInBarAsDuration += static_cast<std::uint64_t>(std::int64_t{duration});
}

void MusicXmlContext::AdvanceCurrentPosByMidiTicks(std::int32_t ticks, std::int32_t duration) {
  AdvanceCurrentPosEvenBeforeBarStartByMidiTicks(ticks, duration);
  mCurrentPosAsMidiTicks = std::max(mCurrentPosAsMidiTicks, mCurrentBarStartAsMidiTicks);
  mMaxCurrentPosAsMidiTicks = std::max(mMaxCurrentPosAsMidiTicks, mCurrentPosAsMidiTicks);
}

std::uint8_t MusicXmlContext::ConvertMuxmlDynamicsToMidiVelocity(std::int32_t dynamics) {
  if (dynamics < 0) return 255;
  if (dynamics <= 1) return 1;
  return PercentOfForte(dynamics, 127);
}

std::uint8_t MusicXmlContext::ConvertMuxmlDynamicsToMidiRelVelocity(std::int32_t dynamics) {
  if (dynamics < 0) return 255;
  return PercentOfForte(dynamics, 129);
}

void MusicXmlContext::encounteredNote_updateMusicXmlContextCurrentPartInfo(const CMuxmlNote& note) {
  CMuxmlPartGatheredInfo& info = mCurrentPartGatheredInfo;
  info.mFoundVoices.insert(note.mVoice);
  // Other tuplets (quintuplets, triplets of dotted values) would only blur what the
  // fractions tell: how fine the binary and the triplet grid of the part are.
  if (note.mTimeModification.IsNoneOrPlainTriplet()) {
    using TDurDiv = CMuxmlPartGatheredInfo::TDurDiv;
    const unsigned long wholeNote = mCurrentDivisionsPQN * 4;
    info.mFoundBinaryAndTripletNotePosInBarAsDurDiv.insert(
        TDurDiv(mCurrentPosInBarAsDuration, wholeNote));
    info.mFoundBinaryAndTripletNoteLengthsAsDurDiv.insert(
        TDurDiv(static_cast<unsigned long>(std::int64_t{note.mLengthAsDuration}), wholeNote));
  }
  info.mFoundTransposeNoteCounts.CountNote(mCurrentTranspose);
  if (info.mLowestNoteNr == -1 || info.mLowestNoteNr > note.mNoteNr) {
    info.mLowestNoteNr = note.mNoteNr;
  }
  if (info.mHighestNoteNr == -1 || info.mHighestNoteNr < note.mNoteNr) {
    info.mHighestNoteNr = note.mNoteNr;
  }
}

}  // namespace harmony
