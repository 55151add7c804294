// Bars and notes of the event import on the unit-test suite of an engraving project, whose
// files each state their intent, and on small scores for the cases the suite leaves out.

#include <gtest/gtest.h>

#include <filesystem>

#include "MusicXmlImportRecorder.h"
#include "TestPaths.h"

namespace harmony {
namespace {

using testing::ImportRecorder;
using testing::ImportText;
using Triples = std::vector<std::vector<long>>;

constexpr long kQuarter = 960;

// Imports a file of the suite; the test is skipped when the suite isn't there.
#define IMPORT_SUITE_FILE(recorder, name)                                                      \
  const std::string path_##recorder =                                                         \
      std::string(HARMONY_TESTDATA_DIR) + "/musicxml/lilypond-testsuite/" + (name);            \
  if (!std::filesystem::exists(path_##recorder)) GTEST_SKIP() << "missing " << path_##recorder; \
  ImportRecorder recorder;                                                                     \
  ASSERT_TRUE(testing::ImportFile(path_##recorder, recorder).ok)

std::vector<long> NoteNumbers(const ImportRecorder& recorder) {
  std::vector<long> numbers;
  for (const CMuxmlNote& note : recorder.notes) numbers.push_back(note.mNoteNr);
  return numbers;
}

TEST(MusicXmlNotes, PitchesFromGToHighC) {
  IMPORT_SUITE_FILE(recorder, "01a-Pitches-Pitches.xml");
  // The white keys from G2 to C7, then the same with a sharp, then with a flat.
  std::vector<long> whiteKeys;
  for (long note = 43; note <= 96; ++note) {
    const long pc = note % 12;
    if (pc != 1 && pc != 3 && pc != 6 && pc != 8 && pc != 10) whiteKeys.push_back(note);
  }
  ASSERT_EQ(whiteKeys.size(), 32u);
  std::vector<long> expected;
  for (const long alter : {0L, 1L, -1L}) {
    for (const long note : whiteKeys) expected.push_back(note + alter);
  }
  // Explicit naturals from E4 to E5, then C double sharp, C double flat, and two C sharps
  // with cautionary and editorial accidentals.
  for (const long note : {64L, 65L, 67L, 69L, 71L, 72L, 74L, 76L, 74L, 70L, 73L, 73L}) {
    expected.push_back(note);
  }
  EXPECT_EQ(NoteNumbers(recorder), expected);
  for (std::size_t i = 0; i < recorder.notes.size(); ++i) {
    EXPECT_EQ(recorder.notes[i].mPositionAsMidiTicks, static_cast<long>(i) * kQuarter);
    EXPECT_EQ(recorder.notes[i].mLengthAsMidiTicks, kQuarter);
  }
}

TEST(MusicXmlNotes, DurationsFromMaximaTo1024th) {
  IMPORT_SUITE_FILE(recorder, "03a-Rhythm-Durations.xml");
  // Three rows from maxima (32 quarters) down to the 1024th, the last value twice: plain,
  // dotted and double-dotted. Ticks are cut toward zero, so a 1024th of 3.75 ticks gets 3.
  std::vector<long> expected;
  for (const double dots : {1.0, 1.5, 1.75}) {
    double quarters = 32;
    for (int value = 0; value < 15; ++value) {
      expected.push_back(static_cast<long>(kQuarter * quarters * dots));
      if (value < 13) quarters /= 2;
    }
  }
  std::vector<long> lengths;
  for (const CMuxmlNote& note : recorder.notes) lengths.push_back(note.mLengthAsMidiTicks);
  EXPECT_EQ(lengths, expected);
  // Each row starts where the exact durations of the one before end.
  ASSERT_EQ(recorder.notes.size(), 45u);
  EXPECT_EQ(recorder.notes[15].mPositionAsMidiTicks, 64 * kQuarter);
  EXPECT_EQ(recorder.notes[30].mPositionAsMidiTicks, 64 * kQuarter + 96 * kQuarter);
}

TEST(MusicXmlNotes, KeySignaturesAroundTheCircle) {
  IMPORT_SUITE_FILE(recorder, "13a-KeySignatures.xml");
  ASSERT_EQ(recorder.keys.size(), 46u);
  for (int fifths = -11, i = 0; fifths <= 11; ++fifths, i += 2) {
    EXPECT_EQ(recorder.keys[i].mFifths, fifths);
    EXPECT_EQ(recorder.keys[i].mMode, TMuxmlEnum_SignKeyMode::kMajor);
    EXPECT_EQ(recorder.keys[i + 1].mFifths, fifths);
    EXPECT_EQ(recorder.keys[i + 1].mMode, TMuxmlEnum_SignKeyMode::kMinor);
    EXPECT_LT(recorder.keys[i].mPositionAsMidiTicks, recorder.keys[i + 1].mPositionAsMidiTicks);
  }
}

TEST(MusicXmlNotes, ChordsAndTies) {
  {
    IMPORT_SUITE_FILE(chord, "21a-Chord-Basic.xml");
    EXPECT_EQ(chord.NoteTriples(), (Triples{{0, kQuarter, 69}, {0, kQuarter, 65}}));
    EXPECT_FALSE(chord.notes[0].mIsChordNote);
    EXPECT_TRUE(chord.notes[1].mIsChordNote);
  }
  {
    // Two whole notes tied across the bar line: one note of two bars.
    IMPORT_SUITE_FILE(tie, "33b-Spanners-Tie.xml");
    EXPECT_EQ(tie.NoteTriples(), (Triples{{0, 8 * kQuarter, 65}}));
  }
  {
    // Ties without their ends. The first tie is closed by the next C all the same; the C of
    // bar 3 both stops and starts, finds nothing under way and is lost; bar 4 starts a tie
    // that bar 5 stops.
    IMPORT_SUITE_FILE(open, "33i-Ties-NotEnded.xml");
    EXPECT_EQ(open.NoteTriples(), (Triples{{0, 8 * kQuarter, 72}, {12 * kQuarter, 8 * kQuarter, 72}}));
  }
}

TEST(MusicXmlNotes, StavesVoicesBackupAndForward) {
  {
    IMPORT_SUITE_FILE(piano, "43a-PianoStaff.xml");
    EXPECT_EQ(piano.NoteTriples(), (Triples{{0, 3840, 65}, {0, 3840, 47}}));
    EXPECT_EQ(piano.notes[0].mStaff, 1);
    EXPECT_EQ(piano.notes[1].mStaff, 2);
    EXPECT_EQ(piano.notes[1].mVoice, 2);
    ASSERT_EQ(piano.partEnds.size(), 1u);
    EXPECT_TRUE(piano.partEnds[0].IsPianoPartAtBegin());
  }
  for (const char* name : {"43b-MultiStaff-DifferentKeys.xml",
                           "43c-MultiStaff-DifferentKeysAfterBackup.xml"}) {
    SCOPED_TRACE(name);
    IMPORT_SUITE_FILE(keys, name);
    EXPECT_EQ(keys.NoteTriples(), (Triples{{0, 3840, 65}, {0, 3840, 47}}));
    ASSERT_EQ(keys.keys.size(), 2u);
    EXPECT_EQ(keys.keys[0].mFifths, 0);
    EXPECT_EQ(keys.keys[1].mFifths, 2);
    EXPECT_EQ(keys.keys[1].mPositionAsMidiTicks, 0);
  }
  {
    // A voice of the lower staff with notes on the upper one: one line of eighths.
    IMPORT_SUITE_FILE(change, "43d-MultiStaff-StaffChange.xml");
    const std::vector<std::int32_t> staves = {2, 1, 2, 1, 1, 1, 2, 1};
    ASSERT_GE(change.notes.size(), staves.size());
    for (std::size_t i = 0; i < staves.size(); ++i) {
      EXPECT_EQ(change.notes[i].mPositionAsMidiTicks, static_cast<long>(i) * 480);
      EXPECT_EQ(change.notes[i].mStaff, staves[i]);
    }
  }
  {
    // The second voice comes back to the bar start; the bar ends where its time says.
    IMPORT_SUITE_FILE(twoVoices, "43e-Multistaff-ClefDynamics.xml");
    ASSERT_GE(twoVoices.notes.size(), 8u);
    EXPECT_EQ(twoVoices.notes[4].mPositionAsMidiTicks, 0);
    EXPECT_EQ(twoVoices.notes[4].mVoice, 2);
    EXPECT_EQ(twoVoices.measures[0].mEndPositionAsMidiTicks, 3840);
    EXPECT_EQ(twoVoices.measureStarts[1], 3840);
  }
  {
    // A backup to the second beat only.
    IMPORT_SUITE_FILE(backup, "03b-Rhythm-Backup.xml");
    EXPECT_EQ(backup.NoteTriples(),
              (Triples{{0, 960, 60}, {960, 960, 60}, {960, 960, 57}, {1920, 960, 57}}));
  }
  {
    IMPORT_SUITE_FILE(forward, "03f-Rhythm-Forward.xml");
    EXPECT_EQ(forward.NoteTriples(), (Triples{{960, 960, 60}, {2880, 240, 60}, {3840, 960, 60}}));
  }
}

std::string OneBarScore(const std::string& content) {
  return "<?xml version=\"1.0\"?><score-partwise><part-list><score-part id=\"P1\"/></part-list>"
         "<part id=\"P1\"><measure number=\"1\"><attributes><divisions>2</divisions><time>"
         "<beats>4</beats><beat-type>4</beat-type></time></attributes>" +
         content + "</measure></part></score-partwise>";
}

std::string Note(const std::string& step, int duration, const std::string& extra = "") {
  return "<note>" + extra + "<pitch><step>" + step + "</step><octave>4</octave></pitch>" +
         (duration > 0 ? "<duration>" + std::to_string(duration) + "</duration>" : "") + "</note>";
}

TEST(MusicXmlNotes, GraceCueAndUnmatchedTies) {
  ImportRecorder recorder;
  const std::string content = Note("D", 0, "<grace/>") + Note("C", 2) +
                              Note("E", 2, "<cue/>") + Note("F", 2) +
                              "<note><pitch><step>G</step><octave>4</octave></pitch>"
                              "<duration>2</duration><tie type=\"stop\"/></note>" +
                              "<note><pitch><step>A</step><octave>4</octave></pitch>"
                              "<duration>2</duration><tie type=\"start\"/></note>";
  ASSERT_TRUE(ImportText(OneBarScore(content), recorder).ok);
  // A grace note at the start keeps position 0 and gets a 32nd; a cue note doesn't move the
  // time line; a tie's stop without its start leaves the length undefined; a tie that never
  // ends is never reported.
  EXPECT_EQ(recorder.NoteTriples(), (Triples{{0, 120, 62},
                                             {0, 960, 60},
                                             {960, 960, 64},
                                             {960, 960, 65},
                                             {1920, kMuxmlUndef32, 67}}));
  EXPECT_TRUE(recorder.notes[0].mIsGraceNote);
  EXPECT_TRUE(recorder.notes[2].mIsCueNote);
}

TEST(MusicXmlNotes, TiedChordsAndLongBackups) {
  const auto chord = [](const std::string& tie) {
    std::string notes;
    for (const char* step : {"C", "E", "G"}) {
      notes += "<note>" + std::string(notes.empty() ? "" : "<chord/>") + "<pitch><step>" + step +
               "</step><octave>4</octave></pitch><duration>4</duration>" + tie + "</note>";
    }
    return notes;
  };
  ImportRecorder recorder;
  const std::string tied =
      chord("<tie type=\"start\"/>") + chord("<tie type=\"stop\"/>") +
      // A backup longer than what the bar holds stops at the bar start.
      "<backup><duration>20</duration></backup>" + Note("B", 2);
  ASSERT_TRUE(ImportText(OneBarScore(tied), recorder).ok);
  // Each pitch is reported once, at the first chord's place with both lengths.
  EXPECT_EQ(recorder.NoteTriples(),
            (Triples{{0, 3840, 60}, {0, 3840, 64}, {0, 3840, 67}, {0, 960, 71}}));
  EXPECT_EQ(recorder.measures.at(0).mEndPositionAsMidiTicks, 3840);
}

}  // namespace
}  // namespace harmony
