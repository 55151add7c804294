// The scale and sign key commands of the harmony tool, run as a user would.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

#include "TestPaths.h"
#include "ToolRun.h"

namespace {

using harmony::testing::Contains;
using harmony::testing::RunTool;
using harmony::testing::TRun;

class ScaleCommands : public testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "harmony tool not built";
  }
};

TEST_F(ScaleCommands, ScaleSpellsDegreesAndCountsSigns) {
  const TRun run = RunTool("scale --ascii 'C# lydian' 'Bb bebop dominant' 'C wt'");
  EXPECT_EQ(run.status, 0) << run.output;
  EXPECT_TRUE(Contains(run.output, "C# D# E# Fx G# A# B#")) << run.output;
  EXPECT_TRUE(Contains(run.output, "8 (8 sharps)")) << run.output;
  EXPECT_TRUE(Contains(run.output, "Bb C D Eb F G Ab A")) << run.output;
  EXPECT_TRUE(Contains(run.output, "st_majaddb7")) << run.output;
  EXPECT_TRUE(Contains(run.output, "st_custom (Whole Tone)")) << run.output;

  const TRun json = RunTool("scale --json=native 'D dorian' 'F# hm5'");
  EXPECT_EQ(json.status, 0) << json.output;
  EXPECT_EQ(json.output,
            "{\"root\":{\"name\":\"D3\",\"nr\":62,\"enh\":\"neutral\"},\"type\":\"dori\"}\n"
            "{\"root\":{\"name\":\"F\u266F3\",\"nr\":66,\"enh\":\"sharp\"},\"type\":\"klez\"}\n");

  const TRun noRoot = RunTool("scale 'D dorian' 'xyz lydian'");
  EXPECT_EQ(noRoot.status, 1);
  EXPECT_TRUE(Contains(noRoot.output, "\"xyz lydian\"")) << noRoot.output;
  EXPECT_EQ(RunTool("scale").status, 2);
}

TEST_F(ScaleCommands, SignKeyShowsSignsByteAndNames) {
  const TRun run = RunTool("signkey F# minor");
  EXPECT_EQ(run.status, 0) << run.output;
  EXPECT_TRUE(Contains(run.output, "3 (3 sharps)")) << run.output;
  EXPECT_TRUE(Contains(run.output, "event      26")) << run.output;
  EXPECT_TRUE(Contains(run.output, "parallel   A Major")) << run.output;
  EXPECT_TRUE(Contains(run.output, "Fism")) << run.output;
  EXPECT_TRUE(Contains(run.output, "Fa\u266Fm")) << run.output;
  // A sharp major has no byte of its own: it is written as B flat major.
  const TRun altered = RunTool("signkey A# major");
  EXPECT_TRUE(Contains(altered.output, "event      5  (deprecated form 255)")) << altered.output;
  EXPECT_EQ(RunTool("signkey Q major").status, 1);
  EXPECT_EQ(RunTool("signkey C dorian").status, 2);
}

}  // namespace
