// harmony musicxml as a user runs it: the event lines, strict JSON, one part, the refusals, and
// a standard MIDI file that reads back to the notes the import delivers.

#include <gtest/gtest.h>
#include <smf.h>

#include <algorithm>
#include <deque>
#include <fstream>
#include <filesystem>
#include <map>
#include <set>
#include <nlohmann/json.hpp>
#include <sstream>
#include <tuple>

#include "MusicXmlImportRecorder.h"
#include "TempFolder.h"
#include "ToolRun.h"

namespace harmony {
namespace {

using testing::Contains;
using testing::RunTool;
namespace fs = std::filesystem;

const fs::path kSuite = fs::path(HARMONY_TESTDATA_DIR) / "musicxml" / "lilypond-testsuite";
const fs::path kSamples = fs::path(HARMONY_TESTDATA_DIR) / "musicxml" / "sample-scores";

// (tick, length, note number, velocity), the way a MIDI file can hold a note.
using MidiNote = std::tuple<long, long, int, int>;

class MusicXmlCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "the tool is not built";
    if (!fs::exists(kSuite) || !fs::exists(kSamples)) GTEST_SKIP() << "no MusicXML test data";
  }
  // A folder of each test's own: the tests run side by side in processes of their own.
  testing::TempFolder _temp;
  const fs::path _midi = _temp.path() / "test.mid";
};

TEST_F(MusicXmlCommand, EventLinesJsonAndOnePart) {
  const auto text = RunTool("musicxml '" + (kSuite / "21a-Chord-Basic.xml").string() + "'");
  ASSERT_EQ(text.status, 0) << text.output;
  EXPECT_TRUE(Contains(text.output, "note      P0  tick 0  length 960  65 F4  velocity 90  "
                                    "voice 1  staff 0  chord"))
      << text.output;

  const auto json = RunTool("musicxml --json '" + (kSuite / "43a-PianoStaff.xml").string() + "'");
  ASSERT_EQ(json.status, 0) << json.output;
  std::istringstream lines(json.output);
  std::string line;
  int notes = 0;
  while (std::getline(lines, line)) {
    const nlohmann::json event = nlohmann::json::parse(line);  // throws on anything not strict
    if (event.at("event") == "note") {
      ++notes;
      EXPECT_EQ(event.at("length"), 3840);
    }
  }
  EXPECT_EQ(notes, 2);

  // Of a score in four parts, the notes of the last one only.
  const fs::path parts = kSuite / "41a-MultiParts-Partorder.xml";
  const auto all = RunTool("musicxml '" + parts.string() + "'");
  const auto one = RunTool("musicxml --part P3 '" + parts.string() + "'");
  ASSERT_EQ(one.status, 0) << one.output;
  EXPECT_TRUE(Contains(all.output, "note      P1"));
  EXPECT_FALSE(Contains(one.output, "note      P1"));
  EXPECT_TRUE(Contains(one.output, "note      P3"));

  // A compressed score from standard input is recognised by its bytes.
  const auto piped = RunTool("musicxml - < '" + (kSamples / "Telemann.mxl").string() + "' --lenient");
  ASSERT_EQ(piped.status, 0) << piped.output;
  const auto named = RunTool("musicxml --lenient '" + (kSamples / "Telemann.mxl").string() + "'");
  EXPECT_EQ(piped.output, named.output);
}

TEST_F(MusicXmlCommand, RefusalsAreMessagesNotCrashes) {
  const auto fragment = RunTool("musicxml '" + (fs::path(HARMONY_TESTDATA_DIR) / "musicxml" /
                                                "w3c-examples" / "examples" /
                                                "musicxml__staff-element.xml")
                                                   .string() +
                                "'");
  EXPECT_EQ(fragment.status, 1);
  EXPECT_TRUE(Contains(fragment.output, "File is not a MusicXML File")) << fragment.output;

  const auto missing = RunTool("musicxml /no/such/score.musicxml");
  EXPECT_EQ(missing.status, 1);
  // The path is named once, with the system's reason.
  EXPECT_TRUE(
      Contains(missing.output, "harmony: /no/such/score.musicxml: No such file or directory"))
      << missing.output;

  // Zero divisions are alerted and the import goes on: the tool refuses what it could not
  // read fully, unless --lenient.
  const fs::path zero = fs::temp_directory_path() / "harmony-zero-divisions.musicxml";
  std::ofstream(zero) << "<score-partwise><part-list><score-part id=\"P1\"/></part-list>"
                         "<part id=\"P1\"><measure><attributes><divisions>0</divisions>"
                         "</attributes><note><pitch><step>C</step><octave>4</octave></pitch>"
                         "<duration>1</duration></note></measure></part></score-partwise>";
  const auto strict = RunTool("musicxml '" + zero.string() + "'");
  const auto lenient = RunTool("musicxml --lenient '" + zero.string() + "'");
  fs::remove(zero);
  EXPECT_EQ(strict.status, 1);
  EXPECT_TRUE(Contains(strict.output, "divisions")) << strict.output;
  EXPECT_EQ(lenient.status, 0) << lenient.output;
  EXPECT_TRUE(Contains(lenient.output, "note      P1  tick 0  length 0")) << lenient.output;
}

// The notes of each track of a MIDI file, pairing each note-off with the oldest sounding note
// of its pitch.
std::vector<std::vector<MidiNote>> ReadMidiNotes(const fs::path& path, int& ticksPerQuarter) {
  std::vector<std::vector<MidiNote>> tracks;
  smf_t* smf = smf_load(path.c_str());
  if (smf == nullptr) return tracks;
  ticksPerQuarter = smf->ppqn;
  for (int t = 1; t <= smf->number_of_tracks; ++t) {
    smf_track_t* track = smf_get_track_by_number(smf, t);
    std::map<int, std::deque<std::pair<long, int>>> sounding;
    std::vector<MidiNote> notes;
    while (smf_event_t* event = smf_track_get_next_event(track)) {
      if (smf_event_is_metadata(event) || event->midi_buffer_length < 3) continue;
      const int status = event->midi_buffer[0] & 0xF0;
      const int noteNr = event->midi_buffer[1];
      const int velocity = event->midi_buffer[2];
      if (status == 0x90 && velocity > 0) {
        sounding[noteNr].emplace_back(event->time_pulses, velocity);
      } else if ((status == 0x80 || status == 0x90) && !sounding[noteNr].empty()) {
        const auto [start, startVelocity] = sounding[noteNr].front();
        sounding[noteNr].pop_front();
        notes.emplace_back(start, event->time_pulses - start, noteNr, startVelocity);
      }
    }
    std::sort(notes.begin(), notes.end());
    tracks.push_back(notes);
  }
  smf_delete(smf);
  return tracks;
}

TEST_F(MusicXmlCommand, MidiFileReadsBackToTheImportedNotes) {
  const fs::path score = kSamples / "Telemann.xml";
  const auto run =
      RunTool("musicxml --lenient --midi '" + _midi.string() + "' '" + score.string() + "'");
  ASSERT_EQ(run.status, 0) << run.output;

  testing::ImportRecorder recorder;
  ASSERT_TRUE(testing::ImportFile(score.string(), recorder, false).ok);
  std::map<std::string, std::vector<MidiNote>> imported;
  std::vector<std::string> order;
  for (const CMuxmlPart& part : recorder.parts) order.push_back(part.mPartID);
  // Notes arrive part by part; a part's notes follow its start event.
  std::size_t part = 0;
  std::size_t noteIndex = 0;
  for (const std::string& event : recorder.events) {
    if (event == "part end") ++part;
    if (event != "note") continue;
    const CMuxmlNote& note = recorder.notes[noteIndex++];
    if (note.mNoteNr < 0) continue;
    const long length = note.mLengthAsMidiTicks == kMuxmlUndef32 ? 0 : note.mLengthAsMidiTicks;
    imported[order.at(part)].emplace_back(note.mPositionAsMidiTicks, length,
                                          static_cast<int>(note.mNoteNr), note.mVelocity);
  }

  int ticksPerQuarter = 0;
  const auto tracks = ReadMidiNotes(_midi, ticksPerQuarter);
  EXPECT_EQ(ticksPerQuarter, 960);
  // A first track of tempo and time signatures, then one per part.
  ASSERT_EQ(tracks.size(), order.size() + 1);
  EXPECT_TRUE(tracks[0].empty());
  std::size_t total = 0;
  for (std::size_t i = 0; i < order.size(); ++i) {
    std::vector<MidiNote> expected = imported[order[i]];
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(tracks[i + 1], expected) << "part " << order[i];
    total += expected.size();
  }
  EXPECT_GT(total, 100u);
}

// The same writer serves the voicings of a chord list: one chord after the other, each for the
// beats asked, with the notes the text shows.
TEST_F(MusicXmlCommand, VoicedChordsAsMidi) {
  const auto run = RunTool("voice Dm7 G7 Cmaj7 --lead 72 --beats 2 --midi '" + _midi.string() + "'");
  ASSERT_EQ(run.status, 0) << run.output;
  int ticksPerQuarter = 0;
  const auto tracks = ReadMidiNotes(_midi, ticksPerQuarter);
  ASSERT_EQ(tracks.size(), 2u);
  std::vector<MidiNote> expected;
  const std::vector<std::vector<int>> chords = {{62, 65, 69, 72}, {62, 65, 67, 71}, {60, 64, 67, 71}};
  for (std::size_t i = 0; i < chords.size(); ++i) {
    for (const int noteNr : chords[i]) {
      expected.emplace_back(static_cast<long>(i) * 1920, 1920, noteNr, 90);
    }
  }
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(tracks[1], expected);
  EXPECT_TRUE(Contains(run.output, "G7     62 65 67 71  D4 F4 G4 B4")) << run.output;
}

// A generated progression is heard the same way: its chords in the bars asked for.
TEST_F(MusicXmlCommand, GeneratedProgressionAsMidi) {
  const auto run =
      RunTool("markov generate --bars 4 --seed 3 --midi '" + _midi.string() + "'");
  ASSERT_EQ(run.status, 0) << run.output;
  int ticksPerQuarter = 0;
  const auto tracks = ReadMidiNotes(_midi, ticksPerQuarter);
  ASSERT_EQ(tracks.size(), 2u);
  std::set<long> starts;
  for (const MidiNote& note : tracks[1]) {
    starts.insert(std::get<0>(note));
    EXPECT_LE(std::get<0>(note) + std::get<1>(note), 16 * 960);
    EXPECT_GT(std::get<1>(note), 0);
  }
  // At least a chord a bar, every chord of three notes or more.
  EXPECT_GE(starts.size(), 4u);
  EXPECT_GE(tracks[1].size(), 3 * starts.size());
}

}  // namespace
}  // namespace harmony
