// Ties under way: pieces gathered by staff and pitch, and the last piece standing for the
// whole tie with the first piece's notations and lyrics, on elements of a parsed score.

#include "harmony/musicxml/TiePendingInfo.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/XmlDocument.h"

namespace harmony {
namespace {

CMuxmlNote Note(std::int32_t step, std::int32_t octave, std::int32_t duration,
                std::int32_t staff = 1, std::int32_t voice = 1) {
  CMuxmlNote note;
  note.mNoteType = TMuxmlEnum_NoteType::kPitched;
  note.mPitch.mStep = step;
  note.mPitch.mOctave = octave;
  note.mLengthAsDuration = duration;
  note.mStaff = staff;
  note.mVoice = voice;
  return note;
}

TEST(TiePendingInfos, PiecesGatherByStaffAndPitchNotByVoice) {
  CTiePendingInfos ties;
  const CMuxmlNote c4 = Note(TMuxmlEnum_Step::kC, 4, 4);
  ties.StartEncounteredFor(c4, 960);
  ASSERT_EQ(ties.size(), 1u);
  EXPECT_EQ(ties[0].mPendingDuration, 4);
  EXPECT_EQ(ties[0].mPendingMidiTicks, 960);
  EXPECT_TRUE(ties[0].mNoteXMLs.empty()) << "the note has no element";
  EXPECT_EQ(ties[0].mNotes.size(), 1u);

  // Another voice on the same staff continues the same tie; another staff or another
  // alteration doesn't.
  ties.ContinueEncounteredFor(Note(TMuxmlEnum_Step::kC, 4, 2, 1, 2), 480);
  EXPECT_EQ(ties[0].mPendingDuration, 6);
  EXPECT_EQ(ties[0].mPendingMidiTicks, 1440);
  EXPECT_EQ(ties[0].mNotes.size(), 2u);
  EXPECT_EQ(ties.PendingDurationFor(Note(TMuxmlEnum_Step::kC, 4, 1, 2)), ties.end());
  CMuxmlNote cSharp = c4;
  cSharp.mPitch.mAlteration = 1;
  EXPECT_EQ(ties.PendingDurationFor(cSharp), ties.end());
  ties.ContinueEncounteredFor(cSharp, 480);
  EXPECT_EQ(ties.size(), 1u) << "a middle piece without a tie is lost";
  EXPECT_EQ(ties[0].mPendingMidiTicks, 1440);

  // A second start of the same pitch stands behind the first, which the search finds.
  ties.StartEncounteredFor(Note(TMuxmlEnum_Step::kE, 4, 8), 1920);
  ties.StartEncounteredFor(Note(TMuxmlEnum_Step::kC, 4, 1), 240);
  ASSERT_EQ(ties.size(), 3u);
  EXPECT_EQ(ties.PendingDurationFor(c4), ties.begin());
  ties.StopEncounteredFor(c4);
  ASSERT_EQ(ties.size(), 2u);
  EXPECT_EQ(ties[0].mStep, TMuxmlEnum_Step::kE) << "the others keep their order";
  EXPECT_EQ(ties.PendingDurationFor(c4), ties.begin() + 1);
  EXPECT_EQ(ties.PendingDurationFor(c4)->mPendingMidiTicks, 240);
  ties.StopEncounteredFor(Note(TMuxmlEnum_Step::kG, 4, 1));
  EXPECT_EQ(ties.size(), 2u);
}

// Three quarter notes C4 tied together, with lyrics on the first two and the last.
class TiedPieces : public ::testing::Test {
 protected:
  void SetUp() override {
    platform::XmlError error;
    _document = platform::XmlDocument::Parse(
        "<measure>"
        "<note><pitch><step>C</step><octave>4</octave></pitch><duration>1</duration>"
        "<tie type=\"start\"/><type>quarter</type><lyric><text>Love</text></lyric></note>"
        "<note><pitch><step>C</step><octave>4</octave></pitch><duration>1</duration>"
        "<tie type=\"stop\"/><tie type=\"start\"/><type>half</type>"
        "<lyric><text>me</text></lyric></note>"
        "<note><pitch><step>C</step><octave>4</octave></pitch><duration>1</duration>"
        "<tie type=\"stop\"/><type>eighth</type><lyric><text>do</text></lyric></note>"
        "</measure>",
        {}, error);
    ASSERT_TRUE(_document) << error.description;
    const CXMLElement measure(_document, _document->Root());
    const CXMLElements xmls = measure.NodesForXPath(".//note");
    ASSERT_EQ(xmls.size(), 3u);
    const TMuxmlEnum_NoteTypeValue::TType types[] = {TMuxmlEnum_NoteTypeValue::kQuarter,
                                                     TMuxmlEnum_NoteTypeValue::kHalf,
                                                     TMuxmlEnum_NoteTypeValue::kEighth};
    for (std::size_t i = 0; i < 3; ++i) {
      CMuxmlNote& note = _notes[i];
      note = Note(TMuxmlEnum_Step::kC, 4, 1);
      note.mPositionAsMidiTicks = static_cast<std::int32_t>(960 * i);
      note.mNoteXML = xmls[i];
      note.mLyricXMLs = xmls[i].NodesForXPath(".//lyric");
      note.mGraphicalNoteType.mValue = types[i];
    }
    _notes[0].mAccent.mExists = true;
    _notes[0].mVelocity = 110;
  }

  static std::string Lyrics(const CXMLElement& note) {
    std::string texts;
    for (const CXMLElement& lyric : note.NodesForXPath(".//lyric")) {
      texts += lyric.StringValue() + " ";
    }
    return texts;
  }

  std::shared_ptr<platform::XmlDocument> _document;
  CMuxmlNote _notes[3];
};

TEST_F(TiedPieces, TheLastOfTwoPiecesTakesTheFirstPiecesNotationsAndElement) {
  CTiePendingInfos ties;
  ties.StartEncounteredFor(_notes[0], 960);
  CMuxmlNote last = _notes[2];
  last.mLengthAsMidiTicks = 1920;
  last.mLengthAsDuration = 2;
  ties.PendingDurationFor(last)->TransferRelevantObjectsToLastNote(last);

  EXPECT_EQ(Lyrics(_notes[2].mNoteXML), "do Love ") << "the first lyric copied below the last";
  EXPECT_EQ(last.mNoteXML, _notes[0].mNoteXML);
  ASSERT_EQ(last.mLyricXMLs.size(), 1u);
  EXPECT_EQ(last.mLyricXMLs[0].StringValue(), "Love");
  EXPECT_TRUE(last.mAccent.mExists);
  EXPECT_EQ(last.mVelocity, 110);
  EXPECT_EQ(last.mPositionAsMidiTicks, 1920) << "its own position and lengths stay";
  EXPECT_EQ(last.mLengthAsMidiTicks, 1920);
  EXPECT_EQ(last.mLengthAsDuration, 2);
  EXPECT_EQ(last.mGraphicalNoteType.mValue, TMuxmlEnum_NoteTypeValue::kQuarter)
      << "the larger drawn value";
}

TEST_F(TiedPieces, AMiddlePiecesLyricsGoBelowTheFirstPiecesElement) {
  CTiePendingInfos ties;
  ties.StartEncounteredFor(_notes[0], 960);
  ties.ContinueEncounteredFor(_notes[1], 960);
  ASSERT_EQ(ties[0].mNoteXMLs.size(), 2u);
  CMuxmlNote last = _notes[2];
  ties[0].TransferRelevantObjectsToLastNote(last);

  EXPECT_EQ(Lyrics(_notes[2].mNoteXML), "do Love ");
  EXPECT_EQ(Lyrics(_notes[0].mNoteXML), "Love me ")
      << "after the first round the note's element is the first piece's";
  EXPECT_EQ(Lyrics(_notes[1].mNoteXML), "me ");
  EXPECT_EQ(last.mNoteXML, _notes[0].mNoteXML);
  EXPECT_EQ(last.mLyricXMLs.size(), 1u) << "the first piece's own lyrics, as it was stored";
  EXPECT_EQ(last.mGraphicalNoteType.mValue, TMuxmlEnum_NoteTypeValue::kQuarter);
  EXPECT_EQ(last.mPositionAsMidiTicks, 1920);

  // A tie whose pieces had no elements leaves the lyrics alone and still merges.
  CTiePendingInfo bare;
  bare.mNotes.push_back(_notes[0]);
  CMuxmlNote untouched = _notes[2];
  bare.TransferRelevantObjectsToLastNote(untouched);
  EXPECT_EQ(untouched.mNoteXML, _notes[2].mNoteXML) << "the merge runs once per element";
}

}  // namespace
}  // namespace harmony
