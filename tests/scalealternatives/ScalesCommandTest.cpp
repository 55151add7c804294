// The scales command of the harmony tool, run as a user would.

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

#include <nlohmann/json.hpp>

#include "TestPaths.h"
#include "ToolRun.h"

namespace {

using harmony::testing::Contains;
using harmony::testing::RunTool;
using harmony::testing::TRun;

class ScalesCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "harmony tool not built";
  }
};

TEST_F(ScalesCommand, EachChordWithItsCenterAndSpelledScales) {
  const TRun run = RunTool("scales 'Dm7 . G7 . | Cmaj7 . . .'");
  ASSERT_EQ(run.status, 0) << run.output;
  EXPECT_TRUE(Contains(run.output,
                       "1. Dm7 at 0.00: center C Major, diatonic\n"
                       "   D Dorian: D E F G A B C\n"))
      << run.output;
  EXPECT_TRUE(Contains(run.output,
                       "2. G7 at 2.00: center C Major, diatonic\n"
                       "   G Mixolydian: G A B C D E F\n"))
      << run.output;
  // One letter per degree: the flat nine of G is A flat, not G sharp.
  EXPECT_TRUE(Contains(run.output, "   G Mixolydian b9: G A♭ B C D E F\n")) << run.output;
  EXPECT_TRUE(Contains(run.output,
                       "3. Cma7 at 4.00: center C Major, diatonic\n"
                       "   C Major (Ionian): C D E F G A B\n"))
      << run.output;

  // A given key explains the borrowed chords; --top keeps the best scales only.
  const TRun borrowed = RunTool("scales --key C --method none --top 1 'Ab Bb C | Db C'");
  ASSERT_EQ(borrowed.status, 0) << borrowed.output;
  EXPECT_EQ(borrowed.output,
            "1. A♭ at 0.00: center C Major, flat 6 to flat 7, scales of C Natural Minor "
            "(Aeolian)\n   A♭ Lydian: A♭ B♭ C D E♭ F G\n\n"
            "2. B♭ at 1.00: center C Major, flat 7 after flat 6, scales of C Natural Minor "
            "(Aeolian)\n   B♭ Mixolydian: B♭ C D E♭ F G A♭\n\n"
            "3. C at 2.00: center C Major, diatonic\n   C Major (Ionian): C D E F G A B\n\n"
            "4. D♭ at 4.00: center C Major, Neapolitan, scales of C Phrygian\n"
            "   D♭ Lydian: D♭ E♭ F G A♭ B♭ C\n\n"
            "5. C at 5.00: center C Major, diatonic\n   C Major (Ionian): C D E F G A B\n");
}

TEST_F(ScalesCommand, UnplacedChordsGetTheFallbackWithItsReasons) {
  const TRun run = RunTool("scales --method none --debug 'F#m C | nochord'");
  ASSERT_EQ(run.status, 0) << run.output;
  EXPECT_TRUE(Contains(run.output,
                       "1. F♯m at 0.00: no center, fallback\n"
                       "   F♯ Natural Minor (Aeolian): F♯ G♯ A B C♯ D E  FALLBACK: "
                       "Similarity measure: 1,5\n"))
      << run.output;
  EXPECT_TRUE(Contains(run.output, "   F♯ Harmonic Minor: F♯ G♯ A B C♯ D E♯  FALLBACK:"))
      << run.output;
  EXPECT_TRUE(Contains(run.output,
                       "   C Major Blues: C D E♭ E G A  FALLBACK: Similarity measure: "
                       "3,6\n"))
      << run.output;
  EXPECT_TRUE(Contains(run.output, "3. no chord at 4.00\n")) << run.output;
  EXPECT_EQ(RunTool("scales --method none --ascii --at 1 F#m").output.rfind("1. F#m at 0.00", 0),
            0U);
}

TEST_F(ScalesCommand, JsonIsStrictAndTellsEverything) {
  const TRun run = RunTool("scales --json --debug --method none --key C 'Dm7 G7 | Ab nochord'");
  ASSERT_EQ(run.status, 0) << run.output;
  const nlohmann::json json = nlohmann::json::parse(run.output);  // throws on anything loose
  const nlohmann::json& chords = json.at("chords");
  ASSERT_EQ(chords.size(), 4U);
  const nlohmann::json& dm7 = chords[0];
  EXPECT_EQ(dm7.at("number"), 1);
  EXPECT_EQ(dm7.at("position"), 0.0);
  EXPECT_EQ(dm7.at("chord"), "Dm7");
  EXPECT_EQ(dm7.at("center"), "C Major");
  EXPECT_EQ(dm7.at("special_case"), 0);
  EXPECT_EQ(dm7.at("special_case_name"), "diatonic");
  EXPECT_EQ(dm7.at("fallback"), false);
  const nlohmann::json& dorian = dm7.at("scales").at(0);
  EXPECT_EQ(dorian.at("name"), "D Dorian");
  EXPECT_EQ(dorian.at("root"), "D");
  EXPECT_EQ(dorian.at("mask"), 1709);
  EXPECT_EQ(dorian.at("tones"), nlohmann::json({"D", "E", "F", "G", "A", "B", "C"}));
  EXPECT_EQ(dorian.at("debug"), "");
  EXPECT_EQ(chords[2].at("special_case_name"), "flat 6");
  EXPECT_EQ(chords[2].at("reference"), "C Natural Minor (Aeolian)");
  const nlohmann::json& noChord = chords[3];
  EXPECT_TRUE(noChord.at("chord").is_null());
  EXPECT_TRUE(noChord.at("center").is_null());
  EXPECT_EQ(noChord.at("special_case"), -1);
  EXPECT_TRUE(noChord.at("scales").empty());

  const TRun one = RunTool("scales --json --at 2 'Dm7 G7 C'");
  ASSERT_EQ(one.status, 0) << one.output;
  const nlohmann::json single = nlohmann::json::parse(one.output).at("chords");
  ASSERT_EQ(single.size(), 1U);
  EXPECT_EQ(single[0].at("chord"), "G7");
  EXPECT_FALSE(single[0].at("scales").at(0).contains("debug"));
}

TEST_F(ScalesCommand, ReadsAChordStringFile) {
  const std::string path = ::testing::TempDir() + "scales-command-test.txt";
  std::ofstream(path) << "Dm7b5 . G7b9 . |\nCm6 . . . |\n";
  const TRun run = RunTool("scales --at 2 --top 1 --file '" + path + "'");
  std::remove(path.c_str());
  ASSERT_EQ(run.status, 0) << run.output;
  EXPECT_EQ(run.output,
            "2. G7(♭9) at 2.00: center C Minor, none\n   G Phrygian Dominant: G A♭ B C D E♭ F\n");
}

TEST_F(ScalesCommand, BadInputIsToldAndFails) {
  const TRun unreadable = RunTool("scales 'Dm7 Xq7 | C zz'");
  EXPECT_EQ(unreadable.status, 1);
  EXPECT_TRUE(Contains(unreadable.output, "harmony: not a chord symbol: \"Xq7\", \"zz\""))
      << unreadable.output;
  const TRun outside = RunTool("scales --at 4 'Dm7 G7 C'");
  EXPECT_EQ(outside.status, 1);
  EXPECT_TRUE(Contains(outside.output, "--at 4 is not a chord of the list: it has 3 chords"))
      << outside.output;
  EXPECT_EQ(RunTool("scales --at 0 'Dm7 G7 C'").status, 1);
  EXPECT_EQ(RunTool("scales '| . |'").status, 1);
  EXPECT_EQ(RunTool("scales --file /nonexistent/list.txt").status, 1);
  EXPECT_EQ(RunTool("scales --key Q C").status, 1);
  // Wrong usage: no list at all, or an unknown method.
  EXPECT_EQ(RunTool("scales").status, 2);
  EXPECT_EQ(RunTool("scales --method guess C").status, 2);
}

TEST_F(ScalesCommand, TheDemoShowsScalesForTwoFiveOneInMajorAndMinor) {
  const TRun run = RunTool("demo");
  ASSERT_EQ(run.status, 0) << run.output;
  EXPECT_TRUE(Contains(run.output,
                       "== Scales to play over Dm7 . G7 . | Cmaj7 . . . ==\n"
                       "1. Dm7 at 0.00: center C Major, diatonic\n"
                       "   D Dorian: D E F G A B C\n"))
      << run.output;
  EXPECT_TRUE(Contains(run.output,
                       "2. G7(♭9) at 2.00: center C Minor, none\n"
                       "   G Phrygian Dominant: G A♭ B C D E♭ F\n"))
      << run.output;
}

}  // namespace
