// The analyse command of the harmony tool, run as a user would, on the bundled example.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

#include "TestPaths.h"
#include "harmony/analysis/HarmAnlsSignKey.h"

#include "ToolRun.h"

namespace {

using harmony::testing::Contains;
using harmony::testing::RunTool;
using harmony::testing::TRun;

const std::string kExample =
    std::string(HARMONY_DATA_DIR) + "/examples/when-the-saints-go-marching-in.txt";

class AnalyseCommand : public testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "harmony tool not built";
  }
};

TEST_F(AnalyseCommand, TheExampleShowsKeyCenterAndEachChord) {
  const TRun run = RunTool("analyse --method none --key C --file '" + kExample + "'");
  EXPECT_EQ(run.status, 0) << run.output;
  EXPECT_TRUE(Contains(run.output, "Sign key C Major, from 0.00\n  Center C Major, from 0.00\n"))
      << run.output;
  // Bar 11 is F, bar 12 F minor, both a fourth above the center; the piece ends at bar 17.
  EXPECT_TRUE(Contains(run.output, "40.00    4.00  F         5     -  IV\n")) << run.output;
  EXPECT_TRUE(Contains(run.output, "44.00    4.00  Fm        5     -  IVm\n")) << run.output;
  EXPECT_TRUE(Contains(run.output, "64.00          end       -     -  -\n")) << run.output;

  // Without a key nothing tells the center yet: the distances stay unknown.
  const TRun bare = RunTool("analyse --method none 'Am7 . | D7'");
  EXPECT_EQ(bare.status, 0) << bare.output;
  EXPECT_TRUE(Contains(bare.output, "Sign key undefined, from -\n  Center undefined, from -\n"));
  EXPECT_TRUE(Contains(bare.output, "4.00    1.00  D7        -     -  -\n")) << bare.output;
}

TEST_F(AnalyseCommand, JsonIsTheLibrarysResultFile) {
  const TRun run = RunTool("analyse --json=native --method none --key 'A minor' 'Am Dm E7 Am'");
  EXPECT_EQ(run.status, 0) << run.output;
  EXPECT_EQ(run.output.rfind("{\"HarmSignKeys\":\n[\n{\"Probability\":Undef, ", 0), 0U);
  const harmony::CHarmAnlsSignKeys keys =
      harmony::CHarmAnlsSignKeys::FromAnalysisJSONString(run.output);
  ASSERT_EQ(keys.size(), 1U);
  EXPECT_EQ(keys[0].SignKey.SignKeyType, harmony::TSignKeyType::Minor);
  const harmony::CHarmAnlsChords& chords = keys[0].HarmCenters.at(0).HarmChords;
  ASSERT_EQ(chords.size(), 5U);
  EXPECT_EQ(chords[2].RootDistToHarmCenter, 7);
  EXPECT_EQ(chords[4].Position, 4.0);
}

TEST_F(AnalyseCommand, FunctionsAreToldInTheCenterFound) {
  const TRun roman = RunTool("analyse --method weights 'Am . Dm . | E7 . . . | Am'");
  EXPECT_EQ(roman.status, 0) << roman.output;
  EXPECT_TRUE(Contains(roman.output, "Sign key A Minor, from 0.00\n  Center A Minor, from 0.00\n"))
      << roman.output;
  EXPECT_TRUE(Contains(roman.output, "2.00    2.00  Dm        5     -  IVm\n")) << roman.output;
  EXPECT_TRUE(Contains(roman.output, "4.00    4.00  E7        7     -  V\n")) << roman.output;

  const TRun letters =
      RunTool("analyse --method weights --functions letters 'Am . Dm . | E7 . . . | Am'");
  EXPECT_TRUE(Contains(letters.output, "0.00    2.00  Am        0     -  t\n")) << letters.output;
  EXPECT_TRUE(Contains(letters.output, "2.00    2.00  Dm        5     -  s\n")) << letters.output;
  EXPECT_TRUE(Contains(letters.output, "4.00    4.00  E7        7     -  D\n")) << letters.output;
  EXPECT_EQ(RunTool("analyse --functions greek C").status, 2);
}

TEST_F(AnalyseCommand, TheDemoAnalysesTheBundledTuneAndNamesPlayedChords) {
  const TRun run = RunTool("demo");
  EXPECT_EQ(run.status, 0) << run.output;
  // C7 leads to F in bar 11: the tune visits F major before it returns home.
  EXPECT_TRUE(Contains(run.output, "  Center F Major, from 32.00\n")) << run.output;
  EXPECT_TRUE(Contains(run.output, "36.00    4.00  C7        7     -  V\n")) << run.output;
  EXPECT_TRUE(Contains(run.output, "  Center C Major, from 40.00\n")) << run.output;
  EXPECT_TRUE(Contains(run.output, "2.00    2.00  E7          7     -  D\n")) << run.output;
  // A rootless-looking G13 voicing: the net hears G, the weight tables do not.
  EXPECT_TRUE(Contains(run.output, "G2 F3 B3 E4   G7(13)    Emadd ♭9/G\n")) << run.output;
}

TEST_F(AnalyseCommand, BadInputIsToldAndBadChordsAreBorne) {
  const TRun missing = RunTool("analyse --file /nonexistent/tune.txt");
  EXPECT_EQ(missing.status, 1);
  EXPECT_TRUE(Contains(missing.output, "\"/nonexistent/tune.txt\"")) << missing.output;
  EXPECT_EQ(RunTool("analyse --file '" + std::string(HARMONY_DATA_DIR) + "/examples'").status, 1);
  EXPECT_EQ(RunTool("analyse --key Q C").status, 1);
  EXPECT_EQ(RunTool("analyse").status, 2);
  EXPECT_EQ(RunTool("analyse C --file '" + kExample + "'").status, 2);
  // Nonsense is refused; read leniently it still gives chords, one beat each.
  EXPECT_EQ(RunTool("analyse --key G '### {} -- @@ | x'").status, 1);
  const TRun nonsense = RunTool("analyse --lenient --key G '### {} -- @@ | x'");
  EXPECT_EQ(nonsense.status, 0) << nonsense.output;
  EXPECT_TRUE(Contains(nonsense.output, "5.00          end")) << nonsense.output;
}

}  // namespace
