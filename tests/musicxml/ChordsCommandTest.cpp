// The tool on MusicXML files: the chord list of a lead sheet as text and strict JSON, the
// analysis of a compressed file with its repeated passages, and clear refusals.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "MusicXmlTestScores.h"
#include "ToolRun.h"

namespace harmony {
namespace {

using testing::Contains;
using testing::RunTool;
namespace fs = std::filesystem;

const fs::path kLeadSheet = fs::path(HARMONY_TESTDATA_DIR) / "musicxml" / "leadsheets" / "dataset" /
                            "Bert_Kalmar-Harry_Ruby-Herbert_Stothart" / "I_Wanna_Be_Loved_by_You" /
                            "I_Wanna_Be_Loved_by_You.mxl";

class ChordsCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "the tool is not built";
  }
  // A file in the temporary folder, removed with the test.
  std::string Write(const std::string& name, const std::string& content) {
    const fs::path path = fs::temp_directory_path() / ("harmony-chords-" + name);
    std::ofstream(path, std::ios::binary) << content;
    _written.push_back(path);
    return path.string();
  }
  void TearDown() override {
    for (const fs::path& path : _written) fs::remove(path);
  }

 private:
  std::vector<fs::path> _written;
};

TEST_F(ChordsCommand, ListsTheChordsOfACompressedLeadSheetAsTextAndStrictJson) {
  if (!fs::exists(kLeadSheet)) GTEST_SKIP() << "test data not found";
  const auto text = RunTool("chords '" + kLeadSheet.string() + "'");
  EXPECT_EQ(text.status, 0) << text.output;
  EXPECT_TRUE(Contains(text.output, "title  I Wanna Be Loved By You")) << text.output;
  EXPECT_TRUE(Contains(text.output, "40 chords"));
  EXPECT_TRUE(Contains(text.output, "again  at 12.25, 8 bars back"));

  const auto json = RunTool("chords --json '" + kLeadSheet.string() + "'");
  ASSERT_EQ(json.status, 0);
  const nlohmann::json doc = nlohmann::json::parse(json.output);  // throws if not strict
  ASSERT_EQ(doc["chords"].size(), 40u);
  EXPECT_EQ(doc["chords"][1]["name"], "Caug");
  EXPECT_EQ(doc["chords"][1]["semitones"], 273);
  EXPECT_EQ(doc["keys"][0]["name"], "C Major");
}

TEST_F(ChordsCommand, AnalysesAMusicXmlFileToldByItsContentAndFindsItsRepeats) {
  using namespace musicxml_scores;
  const std::string score =
      Score(FirstBar("<attributes><key><fifths>-1</fifths><mode>major</mode></key></attributes>" +
                     Chord("G", "minor-seventh")) +
            Bar(Chord("C", "dominant")) + Bar(Chord("F")) + Bar(Chord("G", "minor-seventh")) +
            Bar(Chord("C", "dominant")) + Bar(Chord("F")));
  // No extension to go by: the content tells MusicXML from a chord list.
  const std::string path = Write("tune", score);
  const auto result = RunTool("analyse --repeats --file '" + path + "'");
  EXPECT_EQ(result.status, 0) << result.output;
  EXPECT_TRUE(Contains(result.output, "Sign key F Major")) << result.output;
  EXPECT_TRUE(Contains(result.output, "IIm")) << result.output;
  EXPECT_TRUE(Contains(result.output, "Repeated passages")) << result.output;
  // The last chord has no length in the input list (MusicXML gives no closing chord), so
  // only Gm7 C7 come again.
  EXPECT_TRUE(Contains(result.output, "12.00     2  3 bars back")) << result.output;

  // The scale suggestions read the same files.
  const auto scales = RunTool("scales --at 2 --top 1 --file '" + path + "'");
  EXPECT_EQ(scales.status, 0) << scales.output;
  EXPECT_TRUE(Contains(scales.output, "C Mixolydian: C D E F G A B")) << scales.output;

  // From standard input, and with a key that replaces the file's.
  const auto keyed = RunTool("analyse --key D --file - < '" + path + "'");
  EXPECT_TRUE(Contains(keyed.output, "Sign key D Major")) << keyed.output;
}

TEST_F(ChordsCommand, RefusesWhatItCannotReadWithThePlaceOfTheError) {
  const std::string broken =
      Write("broken.musicxml", "<score-partwise>\n<part>\n</score-partwise>");
  const auto parse = RunTool("chords '" + broken + "'");
  EXPECT_EQ(parse.status, 1);
  EXPECT_TRUE(Contains(parse.output, broken + ":3:")) << parse.output;

  const auto missing = RunTool("chords /nonexistent/score.mxl");
  EXPECT_EQ(missing.status, 1);
  EXPECT_TRUE(Contains(missing.output, "cannot read")) << missing.output;

  const std::string notZip = Write("bad.mxl", std::string("PK\x03\x04garbage", 11));
  const auto zip = RunTool("chords '" + notZip + "'");
  EXPECT_EQ(zip.status, 1);
  EXPECT_TRUE(Contains(zip.output, "not a readable compressed MusicXML file")) << zip.output;
}

TEST_F(ChordsCommand, AChordSymbolThatNamesNoChordIsRefusedUnlessLenient) {
  using namespace musicxml_scores;
  // A kind MusicXML does not define and a root that is no note letter; "no chord" is read.
  const std::string path =
      Write("odd.musicxml", Score(FirstBar(Chord("C", "tristan")) + Bar(Chord("X")) +
                                  Bar(Chord("N.C.", "none")) + Bar(Chord("G", "dominant"))));
  for (const std::string command : {"chords", "analyse", "scales"}) {
    const std::string file = (command == "chords" ? " '" : " --file '") + path + "'";
    const auto strict = RunTool(command + file);
    EXPECT_EQ(strict.status, 1) << command << "\n" << strict.output;
    EXPECT_TRUE(Contains(strict.output,
                         "2 chord symbols cannot be read, the first with root "
                         "\"C\" and kind \"tristan\""))
        << command << "\n"
        << strict.output;
    EXPECT_EQ(RunTool(command + " --lenient" + file).status, 0) << command;
  }
  const auto lenient = RunTool("chords --lenient '" + path + "'");
  // Read as the import reads it: an unknown kind is its root alone.
  EXPECT_TRUE(Contains(lenient.output, "C      C     tristan\n")) << lenient.output;
  EXPECT_TRUE(Contains(lenient.output, "?      X     major\n")) << lenient.output;
  // A degree the chord steps over: G7 with its ninth altered would be a plain G7; an added
  // ninth and a lowered fifth are read.
  const auto degree = [](const std::string& value, const std::string& type) {
    return "<degree><degree-value>" + value + "</degree-value><degree-alter>-1</degree-alter>" +
           "<degree-type>" + type + "</degree-type></degree>";
  };
  const auto symbol = [&](const std::string& degrees) {
    return "<harmony><root><root-step>G</root-step></root><kind>dominant</kind>" + degrees +
           "</harmony><note><pitch><step>G</step><octave>4</octave></pitch>"
           "<duration>4</duration></note>";
  };
  const std::string altered =
      Write("altered.musicxml", Score(FirstBar(symbol(degree("9", "alter")))));
  const auto refused = RunTool("chords '" + altered + "'");
  EXPECT_EQ(refused.status, 1) << refused.output;
  EXPECT_TRUE(Contains(refused.output, "and degree \"alter 9\"")) << refused.output;
  const std::string read =
      Write("read.musicxml", Score(FirstBar(symbol(degree("9", "add") + degree("5", "alter")))));
  EXPECT_EQ(RunTool("chords '" + read + "'").status, 0);

  // Standard input given as the chord list may be MusicXML too.
  const auto piped = RunTool("analyse --lenient - < '" + path + "'");
  EXPECT_TRUE(Contains(piped.output, "G7")) << piped.output;
}

}  // namespace
}  // namespace harmony
