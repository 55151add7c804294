// The rule every command of the tool follows: text read strictly unless --lenient, bad input
// told with exit status 1 and never a crash, wrong usage 2, "-" for standard input, --version
// and the nearest name for an unknown command. Inputs are those users met.

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "ToolTest.h"

namespace harmony {
namespace {

using testing::Contains;
using testing::RunTool;
using testing::RunToolWithInput;
using testing::TRun;

using ToolRule = testing::ToolTest;

TEST_F(ToolRule, NumbersOutOfRangeAreToldNotAborted) {
  for (const char* args :
       {"grids list --root 99999999999999999999", "grids list --bass 99999999999999999999",
        "grids list --root 4294967296", "grids add x32010 --root 99999999999999999999",
        "grids add x32010 --bass 4294967296", "grids list --difficulty 99999999999",
        "transpose C 99999999999999999999", "semitones 99999999999999999999", "name 128",
        "grids show --id 99999999999999999999"}) {
    const TRun run = RunTool(args);
    EXPECT_EQ(run.status, 1) << args << "\n" << run.output;
    EXPECT_TRUE(Contains(run.output, "harmony: ")) << args << "\n" << run.output;
  }
  // Nothing was saved by the refused additions.
  EXPECT_FALSE(std::filesystem::exists(mTemp.path() / "user.gchdb"));
}

TEST_F(ToolRule, TextThatIsNotReadWholeIsRefusedUnlessLenient) {
  const TRun garbage = RunTool("chord garbage");
  EXPECT_EQ(garbage.status, 1) << garbage.output;
  EXPECT_TRUE(Contains(garbage.output, "\"arbage\"")) << garbage.output;
  const TRun lenient = RunTool("chord --lenient garbage");
  EXPECT_EQ(lenient.status, 0) << lenient.output;
  EXPECT_TRUE(Contains(lenient.output, "name       G\n")) << lenient.output;

  // To the forgiving parser C+ would silently be plain C; the separators of tensions are read.
  EXPECT_EQ(RunTool("chord --parser seed C+").status, 1);
  EXPECT_EQ(RunTool("--parser seed chord Cma").status, 1);  // "a" stepped over: a minor triad
  // The lead-sheet reader means what lead sheets mean by them.
  EXPECT_TRUE(Contains(RunTool("chord C+ Cma").output, "name       Caug\n  root       C (0)\n"));
  EXPECT_TRUE(Contains(RunTool("chord Cma").output, "mask       145  "));
  EXPECT_EQ(RunTool("rename 'C7(b9,#11)' F#m7b5/C# 'F 6 add9' C6/9 Bbmaj7 nochord Ebm7/Db").status,
            0);
  EXPECT_EQ(RunTool("rename C/X").status, 1);
  // A bass the simplifier folds into the chord was read all the same.
  EXPECT_TRUE(Contains(RunTool("chord --simplify C/A").output, "name       Am7\n"));

  const TRun key = RunTool("analyse --key garbage 'C F G C'");
  EXPECT_EQ(key.status, 1) << key.output;
  EXPECT_TRUE(Contains(key.output, "\"garbage\"")) << key.output;
  EXPECT_EQ(RunTool("analyse --key 'D dorian' C").status, 1);  // a key is major or minor
  EXPECT_EQ(RunTool("analyse --lenient --key garbage C").status, 0);
  EXPECT_EQ(RunTool("analyse 'C - - - | G'").status, 1);  // the list reader drops "-"
  EXPECT_EQ(RunTool("scale 'C foo'").status, 1);
  EXPECT_EQ(RunTool("scale --lenient 'C foo'").status, 0);

  const TRun lead = RunTool("voice --lead garbage C");
  EXPECT_EQ(lead.status, 1) << lead.output;
  EXPECT_EQ(RunTool("voice --lead C4x C").status, 1);
  EXPECT_EQ(RunTool("voice --lead C4 C").status, 0);
  EXPECT_EQ(RunTool("name C4 E G4").status, 1);  // a name needs its octave
}

TEST_F(ToolRule, LowNotesAndBinaryFilesAreHandled) {
  // Notes 0..11 share the octave a chord keeps for its root; they are named all the same.
  const TRun low = RunTool("name 0 4 7");
  EXPECT_EQ(low.status, 0) << low.output;
  EXPECT_EQ(low.output, "C\n  notes      (C) C-1 E-1 G-1\n");
  EXPECT_EQ(RunTool("name 0 127").status, 1);

  const std::filesystem::path binary = mTemp.path() / "tune.bin";
  std::ofstream(binary, std::ios::binary) << std::string("C\0G\xff\xfe F", 8);
  const TRun run = RunTool("analyse --file '" + binary.string() + "'");
  EXPECT_EQ(run.status, 1) << run.output;
  EXPECT_TRUE(Contains(run.output, "no text file")) << run.output;
}

TEST_F(ToolRule, DataFolderFromTheEnvironment) {
  const TRun elsewhere = RunTool("grids list");
  EXPECT_TRUE(Contains(elsewhere.output, "\n762 grids\n")) << elsewhere.output;
  ::setenv("HARMONY_DATA_DIR", (mTemp.path() / "no data").c_str(), 1);
  const TRun none = RunTool("grids list");
  EXPECT_EQ(none.status, 0) << none.output;
  EXPECT_EQ(none.output, "0 grids\n");
  ::setenv("HARMONY_DATA_DIR", HARMONY_DATA_DIR, 1);
  EXPECT_EQ(RunTool("grids list").output, elsewhere.output);
  ::unsetenv("HARMONY_DATA_DIR");
}

TEST_F(ToolRule, VersionUnknownCommandsAndUsage) {
  const TRun version = RunTool("--version");
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.output.rfind("harmony ", 0), 0u) << version.output;

  const TRun typo = RunTool("anlyse 'C G'");
  EXPECT_EQ(typo.status, 2);
  EXPECT_TRUE(Contains(typo.output, "unknown command \"anlyse\"; did you mean \"analyse\"?"))
      << typo.output;
  const TRun nested = RunTool("grids lst");
  EXPECT_EQ(nested.status, 2);
  EXPECT_TRUE(Contains(nested.output, "did you mean \"list\"")) << nested.output;
  const TRun far = RunTool("frobnicate");
  EXPECT_EQ(far.status, 2);
  EXPECT_TRUE(Contains(far.output, "unknown command \"frobnicate\"\n")) << far.output;
  EXPECT_EQ(RunTool("--db x grids").status, 2);
  EXPECT_EQ(RunTool("analyse --method nonsense C").status, 2);
  EXPECT_EQ(RunTool("chord --json=pretty C").status, 2);
  // The help tells the rule.
  EXPECT_TRUE(Contains(RunTool("--help").output, "--lenient"));
}

TEST_F(ToolRule, StandardInputAndProgressionsOfSeveralArguments) {
  const TRun rename = RunToolWithInput("Dm7 G7\nCmaj7\n", "rename -");
  EXPECT_EQ(rename.status, 0) << rename.output;
  EXPECT_TRUE(Contains(rename.output, "Cmaj7   Cma7\n")) << rename.output;

  const TRun words = RunTool("analyse Dm7 . G7 . '|' Cmaj7");
  const TRun piped = RunToolWithInput("Dm7 . G7 .\n| Cmaj7\n", "analyse -");
  const TRun file = RunToolWithInput("Dm7 . G7 . | Cmaj7", "analyse --file -");
  EXPECT_EQ(words.status, 0) << words.output;
  EXPECT_TRUE(Contains(words.output, "4.00    1.00  Cma7      0     -  I\n")) << words.output;
  EXPECT_EQ(words.output, piped.output);
  EXPECT_EQ(words.output, file.output);

  EXPECT_TRUE(Contains(RunToolWithInput("60 64 67", "name -").output, "(C) C4 E4 G4"));
  EXPECT_TRUE(Contains(RunToolWithInput("D dorian\nEb major\n", "scale -").output, "root     E♭"));
  EXPECT_TRUE(Contains(RunToolWithInput("x32010", "grids name -").output, "x32010: C "));
  EXPECT_EQ(RunToolWithInput("Am7\n", "grids list -").output, RunTool("grids list Am7").output);
  EXPECT_EQ(RunToolWithInput("Am7", "grids show -").output, RunTool("grids show Am7").output);
  EXPECT_EQ(RunToolWithInput("", "chord -").status, 1);
}

TEST_F(ToolRule, ScalesDialogVectorAndChordsFollowTheRule) {
  const TRun scales = RunTool("scales 'Dm7 G7 | Cmaj7xyz'");
  EXPECT_EQ(scales.status, 1) << scales.output;
  EXPECT_TRUE(Contains(scales.output, "\"xyz\"")) << scales.output;
  EXPECT_EQ(RunTool("scales --lenient 'Dm7 G7 | Cmaj7xyz'").status, 0);
  EXPECT_EQ(RunTool("scales --lenient 'xyz C'").status, 1);  // gives no chord at all
  EXPECT_EQ(RunTool("scales --key garbage 'Dm7 G7 C'").status, 1);
  EXPECT_EQ(RunTool("scales --at 99999999999999 C").status, 1);
  EXPECT_EQ(RunTool("scales --top 99999999999999999999 C").status, 1);
  EXPECT_EQ(RunTool("dialog Cmaj7xyz").status, 1);
  EXPECT_EQ(RunTool("dialog --lenient Cmaj7xyz").status, 0);
  EXPECT_EQ(RunTool("vector C Cxyz").status, 1);
  EXPECT_EQ(RunTool("chords --json=native x.musicxml").status, 2);  // no library form

  // Standard input for the chord list, the symbols and the wire forms, as given directly.
  const TRun words = RunTool("scales --top 1 Dm7 G7 '|' Cmaj7");
  EXPECT_EQ(words.status, 0) << words.output;
  EXPECT_EQ(RunToolWithInput("Dm7 G7\n| Cmaj7\n", "scales --top 1 -").output, words.output);
  EXPECT_EQ(RunToolWithInput("Cm7", "dialog -").output, RunTool("dialog Cm7").output);
  EXPECT_EQ(RunToolWithInput("Cm7 F7\n", "vector -").output, RunTool("vector Cm7 F7").output);
  const TRun wire = RunToolWithInput("{\"RootKeyNr\":9,\"Semitones\":137}\n{\"RootKeyNr\":0}\n",
                                     "vector --read -");
  EXPECT_TRUE(Contains(wire.output, "json 2  C")) << wire.output;
  const std::string leadSheet = std::string(HARMONY_DATA_DIR) + "/examples/after-youve-gone.mxl";
  EXPECT_EQ(RunTool("chords - < '" + leadSheet + "'").output,
            RunTool("chords '" + leadSheet + "'").output);
}

}  // namespace
}  // namespace harmony
