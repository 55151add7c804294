// The running state of the event import: divisions to ticks, dynamics to velocities, the
// time line with its bar start, the cursors into the tree, the reset between parts, and
// what is learned about a part from its notes.

#include "harmony/musicxml/MusicXmlContext.h"

#include <gtest/gtest.h>

#include <boost/rational.hpp>
#include <limits>
#include <memory>
#include <string>

#include "platform/XmlDocument.h"

namespace harmony {
namespace {

using TDurDiv = CMuxmlPartGatheredInfo::TDurDiv;

CXMLElement Parse(const std::string& xml) {
  platform::XmlError error;
  const std::shared_ptr<platform::XmlDocument> document =
      platform::XmlDocument::Parse(xml, {}, error);
  EXPECT_TRUE(document) << error.description;
  return document ? CXMLElement(document, document->Root()) : CXMLElement();
}

TEST(MusicXmlContext, DurationsBecomeTicksTruncated) {
  MusicXmlContext context(960);
  EXPECT_EQ(context.TicksPerQuarter(), 960);
  EXPECT_EQ(context.CurrentDivisionsPQN(), 1u);
  EXPECT_EQ(context.ConvertMuxmlDurationToMidiTicks(3), 2880);
  context.setCurrentDivisionsPQN(3);
  EXPECT_EQ(context.ConvertMuxmlDurationToMidiTicks(1), 320);
  context.setCurrentDivisionsPQN(7);
  EXPECT_EQ(context.ConvertMuxmlDurationToMidiTicks(1), 137) << "a septuplet loses 1/7 tick";
  EXPECT_EQ(context.ConvertMuxmlDurationToMidiTicks(-1), -137) << "toward zero";
  EXPECT_EQ(context.ConvertMuxmlDurationToMidiTicks(kMuxmlUndef32), kMuxmlUndef32);
  context.setCurrentDivisionsPQN(1);
  EXPECT_EQ(context.ConvertMuxmlDurationToMidiTicks(std::numeric_limits<std::int32_t>::max()),
            std::numeric_limits<std::int32_t>::max());

  context.setCurrentDivisionsPQN(0);
  EXPECT_EQ(context.ConvertMuxmlDurationToMidiTicks(4), 0);
  EXPECT_EQ(context.ConvertMuxmlDurationToMidiTicks(kMuxmlUndef32), 0);
  MusicXmlContext noResolution;
  EXPECT_EQ(noResolution.ConvertMuxmlDurationToMidiTicks(4), 0);
  context.initWithTicksPerQuarter(480);
  EXPECT_EQ(context.ConvertMuxmlDurationToMidiTicks(2), 960) << "divisions back to 1";
  context.init();
  EXPECT_EQ(context.TicksPerQuarter(), 0);
}

TEST(MusicXmlContext, DynamicsBecomeVelocities) {
  using C = MusicXmlContext;
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiVelocity(100), 90);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiVelocity(141), 126);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiVelocity(142), 127);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiVelocity(100000), 127);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiVelocity(0), 1);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiVelocity(1), 1);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiVelocity(2), 1);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiVelocity(-1), 255) << "no value";
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiRelVelocity(1), 0);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiRelVelocity(0), 0);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiRelVelocity(143), 128);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiRelVelocity(200), 129);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiRelVelocity(std::numeric_limits<std::int32_t>::max()),
            129);
  EXPECT_EQ(C::ConvertMuxmlDynamicsToMidiRelVelocity(-3), 255);

  const CVelocityFromDynamics velocities;
  EXPECT_EQ(velocities.VelocityForNote(CMuxmlNote()), 90);
}

TEST(MusicXmlContext, AdvancesStopAtTheBarStartOrAtZero) {
  MusicXmlContext context(960);
  context.AdvanceCurrentPosByMidiTicks(1920, 8);
  EXPECT_EQ(context.CurrentPosAsMidiTicks(), 1920);
  EXPECT_EQ(context.LastPosAsMidiTicks(), 0);
  EXPECT_EQ(context.MaxCurrentPosAsMidiTicks(), 1920);
  EXPECT_EQ(context.CurrentPosInBarAsDuration(), 8u);

  // A backup longer than the bar so far stops at the bar's start; the duration grows on.
  context.setCurrentBarStartAsMidiTicks(1920);
  context.AdvanceCurrentPosByMidiTicks(-960, 2);
  EXPECT_EQ(context.CurrentPosAsMidiTicks(), 1920);
  EXPECT_EQ(context.LastPosAsMidiTicks(), 1920);
  EXPECT_EQ(context.CurrentPosInBarAsDuration(), 10u);

  // The rewind of a tie goes back over the bar line, but not below 0.
  context.AdvanceCurrentPosEvenBeforeBarStartByMidiTicks(-960, -2);
  EXPECT_EQ(context.CurrentPosAsMidiTicks(), 960);
  EXPECT_EQ(context.LastPosAsMidiTicks(), 1920);
  EXPECT_EQ(context.MaxCurrentPosAsMidiTicks(), 1920);
  EXPECT_EQ(context.CurrentPosInBarAsDuration(), 8u);
  context.AdvanceCurrentPosEvenBeforeBarStartByMidiTicks(-5000, -10);
  EXPECT_EQ(context.CurrentPosAsMidiTicks(), 0);
  EXPECT_EQ(context.CurrentPosInBarAsDuration(), std::numeric_limits<std::uint64_t>::max() - 1)
      << "the position in the bar wraps round";

  context.AdvanceCurrentPosByMidiTicks(3000, 0);
  EXPECT_EQ(context.CurrentPosAsMidiTicks(), 3000);
  EXPECT_EQ(context.MaxCurrentPosAsMidiTicks(), 3000);
  context.AdvanceCurrentPosByMidiTicks(std::numeric_limits<std::int32_t>::max(), 0);
  EXPECT_EQ(context.CurrentPosAsMidiTicks(), std::numeric_limits<std::int32_t>::max());
}

TEST(MusicXmlContext, CursorsDivisionsAndTheResetOfAPart) {
  const CXMLElement part = Parse(
      "<part id=\"P1\"><measure number=\"1\"><note/><direction/><note/></measure>"
      "<measure number=\"2\"><attributes><divisions>480</divisions></attributes></measure>"
      "</part>");
  MusicXmlContext context(960);
  context.setCurrentPartXML(part);
  context.setCurrentPartMeasuresXMLs(part.NodesForXPath(".//measure"));
  EXPECT_TRUE(context.CurrentPartMeasureXML().IsNone()) << "before the first measure";
  context.setCurrentPartMeasuresXMLIx(1);
  EXPECT_EQ(context.CurrentPartMeasureXML(), context.CurrentPartMeasuresXMLs()[1]);
  context.setCurrentPartMeasuresXMLIx(2);
  EXPECT_TRUE(context.CurrentPartMeasureXML().IsNone());

  const CXMLElement first = context.CurrentPartMeasuresXMLs()[0];
  context.setCurrentPartMeasureNotesXMLs(first.NodesForXPath(".//note"));
  context.setCurrentPartMeasureDirectionsXMLs(first.NodesForXPath(".//direction"));
  context.setCurrentPartMeasureNotesXMLIx(1);
  EXPECT_EQ(context.CurrentPartMeasureNoteXMLs().Name(), "note");
  EXPECT_EQ(context.CurrentPartMeasureNoteXMLs(), context.CurrentPartMeasureNotesXMLs()[1]);
  EXPECT_TRUE(context.CurrentPartMeasureDirectionXML().IsNone());
  context.setCurrentPartMeasureDirectionsXMLIx(0);
  EXPECT_EQ(context.CurrentPartMeasureDirectionXML().Name(), "direction");

  context.UpdateCurrentDivisionsPQNFromXmlElement(first);
  EXPECT_EQ(context.CurrentDivisionsPQN(), 1u) << "no divisions below the first measure";
  context.UpdateCurrentDivisionsPQNFromXmlElement(part);
  EXPECT_EQ(context.CurrentDivisionsPQN(), 480u);
  context.UpdateCurrentDivisionsPQNFromXmlElement(
      Parse("<attributes><divisions>-4</divisions></attributes>"));
  EXPECT_EQ(context.CurrentDivisionsPQN(), 0u);

  // Everything of the part goes, a tie under way included; the tick resolution stays.
  context.AdvanceCurrentPosByMidiTicks(960, 1);
  context.CurrentSignTime().mNomAkaBeats = 3;
  context.CurrentTranspose().mChromatic = -2;
  context.TiePendingInfos().StartEncounteredFor(CMuxmlNote(), 960);
  context.CurrentPartGatheredInfo().mFoundVoices.insert(1);
  context.setCurrentMidiChannel(3);
  context.setInXMLElementBackup(true);
  context.resetCurrentPartMembers();
  EXPECT_EQ(context.TicksPerQuarter(), 960);
  EXPECT_EQ(context.CurrentPosAsMidiTicks(), 0);
  EXPECT_EQ(context.MaxCurrentPosAsMidiTicks(), 0);
  EXPECT_EQ(context.CurrentPosInBarAsDuration(), 0u);
  EXPECT_EQ(context.CurrentDivisionsPQN(), 1u);
  EXPECT_EQ(context.CurrentPartMeasuresXMLIx(), -1);
  EXPECT_TRUE(context.CurrentPartXML().IsNone());
  EXPECT_TRUE(context.CurrentPartMeasuresXMLs().empty());
  EXPECT_EQ(context.CurrentSignTime().mNomAkaBeats, 4);
  EXPECT_FLOAT_EQ(context.CurrentTranspose().mChromatic, 0.0f);
  EXPECT_TRUE(context.TiePendingInfos().empty());
  EXPECT_TRUE(context.CurrentPartGatheredInfo().mFoundVoices.empty());
  EXPECT_EQ(context.CurrentPartGatheredInfo().mLowestNoteNr, -1);
  EXPECT_EQ(context.CurrentMidiChannel(), 0);
  EXPECT_FALSE(context.InXMLElementBackup());
}

CMuxmlNote Note(long noteNr, std::int32_t duration, std::int32_t voice = 1) {
  CMuxmlNote note;
  note.mNoteType = noteNr < 0 ? TMuxmlEnum_NoteType::kRest : TMuxmlEnum_NoteType::kPitched;
  note.mNoteNr = noteNr;
  note.mLengthAsDuration = duration;
  note.mVoice = voice;
  return note;
}

TEST(MusicXmlContext, NotesTellVoicesGridTranspositionsAndRange) {
  MusicXmlContext context(960);
  context.setCurrentDivisionsPQN(2);
  const CMuxmlPartGatheredInfo& info = context.CurrentPartGatheredInfo();

  context.setCurrentPosInBarAsDuration(3);
  context.encounteredNote_updateMusicXmlContextCurrentPartInfo(Note(60, 1));
  EXPECT_EQ(info.mFoundBinaryAndTripletNotePosInBarAsDurDiv, (std::set<TDurDiv>{TDurDiv(3, 8)}));
  EXPECT_EQ(info.mFoundBinaryAndTripletNoteLengthsAsDurDiv, (std::set<TDurDiv>{TDurDiv(1, 8)}));

  // A plain triplet counts; a quintuplet and a triplet of eighths written out don't.
  context.setCurrentDivisionsPQN(3);
  context.setCurrentPosInBarAsDuration(4);
  CMuxmlNote triplet = Note(55, 1, 2);
  triplet.mTimeModification.mActualNotes = 3;
  triplet.mTimeModification.mNormalNotes = 2;
  context.encounteredNote_updateMusicXmlContextCurrentPartInfo(triplet);
  CMuxmlNote quintuplet = Note(67, 2, 2);
  quintuplet.mTimeModification.mActualNotes = 5;
  quintuplet.mTimeModification.mNormalNotes = 4;
  context.encounteredNote_updateMusicXmlContextCurrentPartInfo(quintuplet);
  CMuxmlNote typed = triplet;
  typed.mLengthAsDuration = 5;
  typed.mTimeModification.mNormalNoteType = TMuxmlEnum_NoteTypeValue::kEighth;
  context.encounteredNote_updateMusicXmlContextCurrentPartInfo(typed);
  EXPECT_EQ(info.mFoundBinaryAndTripletNotePosInBarAsDurDiv,
            (std::set<TDurDiv>{TDurDiv(3, 8), TDurDiv(1, 3)}));
  EXPECT_EQ(info.mFoundBinaryAndTripletNoteLengthsAsDurDiv,
            (std::set<TDurDiv>{TDurDiv(1, 8), TDurDiv(1, 12)}));
  EXPECT_EQ(info.mFoundVoices, (std::set<int>{1, 2}));

  // Every note counts under the transposition in force, rests too.
  EXPECT_EQ(info.mFoundTransposeNoteCounts.size(), 1u);
  EXPECT_EQ(info.mFoundTransposeNoteCounts.begin()->second, 4);
  context.CurrentTranspose().mChromatic = -2;
  context.CurrentPartGatheredInfo().mFoundTransposeNoteCounts.EnsureEntry(
      context.CurrentTranspose());
  EXPECT_EQ(info.mFoundTransposeNoteCounts.at(context.CurrentTranspose()), 0);
  context.encounteredNote_updateMusicXmlContextCurrentPartInfo(Note(-1, 2, 0));
  EXPECT_EQ(info.mFoundTransposeNoteCounts.at(context.CurrentTranspose()), 1);
  EXPECT_EQ(info.mFoundVoices, (std::set<int>{0, 1, 2}));

  // The rest took the lowest note back; the next note is the lowest since.
  EXPECT_EQ(info.mLowestNoteNr, -1);
  EXPECT_EQ(info.mHighestNoteNr, 67);
  context.encounteredNote_updateMusicXmlContextCurrentPartInfo(Note(64, 1));
  EXPECT_EQ(info.mLowestNoteNr, 64);
  EXPECT_EQ(info.mHighestNoteNr, 67);
  context.encounteredNote_updateMusicXmlContextCurrentPartInfo(Note(72, 1));
  EXPECT_EQ(info.mLowestNoteNr, 64);
  EXPECT_EQ(info.mHighestNoteNr, 72);

  // Without divisions there is no whole note to divide by.
  context.setCurrentDivisionsPQN(0);
  EXPECT_THROW(context.encounteredNote_updateMusicXmlContextCurrentPartInfo(Note(60, 1)),
               boost::bad_rational);
}

CMuxmlClef Clef(TMuxmlEnum_ClefSign::TType sign, std::int32_t line, std::int32_t position = 0) {
  CMuxmlClef clef;
  clef.mSign = sign;
  clef.mStaffLine = line;
  clef.mPositionAsMidiTicks = position;
  return clef;
}

TEST(MuxmlPartGatheredInfo, APianoPartStartsWithTrebleAndBassOnTwoStaves) {
  using Sign = TMuxmlEnum_ClefSign;
  CMuxmlPartGatheredInfo info;
  info.mPositionedStaves.AppendIfValueChanges(0, 2);
  info.mPositionedStaves.AppendIfValueChanges(1920, 2);
  EXPECT_EQ(info.mPositionedStaves.size(), 1u);
  info.mClefs = {Clef(Sign::kG, 2), Clef(Sign::kF, 4)};
  EXPECT_TRUE(info.IsPianoPartAtBegin());
  info.mClefs = {Clef(Sign::kF, 4), Clef(Sign::kG, 2), Clef(Sign::kC, 3)};
  EXPECT_TRUE(info.IsPianoPartAtBegin());

  info.mClefs = {Clef(Sign::kG, 2), Clef(Sign::kF, 4, 1920)};
  EXPECT_FALSE(info.IsPianoPartAtBegin()) << "the bass clef comes later";
  info.mClefs = {Clef(Sign::kG, 1), Clef(Sign::kF, 4)};
  EXPECT_FALSE(info.IsPianoPartAtBegin()) << "a French violin clef";
  info.mClefs = {Clef(Sign::kG, 2), Clef(Sign::kG, 2)};
  EXPECT_FALSE(info.IsPianoPartAtBegin());
  info.mClefs = {Clef(Sign::kG, 2)};
  EXPECT_FALSE(info.IsPianoPartAtBegin());

  info.mClefs = {Clef(Sign::kG, 2), Clef(Sign::kF, 4)};
  info.mPositionedStaves.clear();
  info.mPositionedStaves.AppendIfValueChanges(0, 1);
  info.mPositionedStaves.AppendIfValueChanges(1920, 2);
  EXPECT_EQ(info.mPositionedStaves.size(), 2u);
  EXPECT_FALSE(info.IsPianoPartAtBegin()) << "one staff at the start";
}

}  // namespace
}  // namespace harmony
