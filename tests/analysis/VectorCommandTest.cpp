// The vector command of the harmony tool, run as a user would.

#include <gtest/gtest.h>

#include <string>

#include "TestPaths.h"
#include "ToolRun.h"

namespace {

using harmony::testing::Contains;
using harmony::testing::RunTool;
using harmony::testing::TRun;

class VectorCommand : public testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "harmony tool not built";
  }
};

TEST_F(VectorCommand, ExportNameChromaAndOneHot) {
  const TRun run = RunTool("vector C7/E Dbmaj9 '*' eadgbe undef");
  EXPECT_EQ(run.status, 0) << run.output;
  EXPECT_TRUE(Contains(run.output, "C7/E    C7 / E              100010010010  3 15 32 38  yes"))
      << run.output;
  EXPECT_TRUE(Contains(run.output, "C#(ma7,9)")) << run.output;
  EXPECT_TRUE(Contains(run.output, "110101001000  4 15 24 33  no")) << run.output;
  EXPECT_TRUE(Contains(run.output, "*       *                   111111111111  2")) << run.output;
  EXPECT_TRUE(Contains(run.output, "eadgbe  EADGBE              111111111111  1")) << run.output;
  EXPECT_TRUE(Contains(run.output, "undef   Undef ('No Chord')  000000000000  0")) << run.output;

  const TRun simplified = RunTool("vector --simplify recognized --drop-bass C13/E");
  EXPECT_TRUE(Contains(simplified.output, "C13/E  C7      100010010010  3 15 32"))
      << simplified.output;
}

TEST_F(VectorCommand, WireFormsAndReadingBack) {
  const TRun json = RunTool("vector --json C7/E");
  EXPECT_EQ(json.status, 0) << json.output;
  EXPECT_EQ(json.output,
            "{\"VectorRep\":[0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, "
            "0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0]}\n");
  const TRun back = RunTool("vector --read '" + json.output.substr(0, json.output.size() - 1) +
                            "' --read '{\"RootKeyNr\":9,\"Semitones\":137}'");
  EXPECT_EQ(back.status, 0) << back.output;
  EXPECT_TRUE(Contains(back.output, "json 1  C7 / E  100010010010  3 15 32 38")) << back.output;
  EXPECT_TRUE(Contains(back.output, "json 2  Am      100010000100  12 16")) << back.output;
  const TRun keys = RunTool("vector --json --keys Am/G");
  EXPECT_TRUE(Contains(keys.output, "\"Semitones\":137}")) << keys.output;
}

TEST_F(VectorCommand, RefusesBadInput) {
  EXPECT_EQ(RunTool("vector C xyz").status, 1);
  EXPECT_EQ(RunTool("vector --read '{\"VectorRep\":[0, 1]}'").status, 1);
  EXPECT_EQ(RunTool("vector --read '[1, 2]'").status, 1);
  EXPECT_EQ(RunTool("vector --read '{\"Semitones\":145}'").status, 1);
  const TRun notJson = RunTool("vector --read '{\"RootKeyNr\":0,}'");
  EXPECT_EQ(notJson.status, 1);
  EXPECT_TRUE(Contains(notJson.output, "not a JSON object")) << notJson.output;
  EXPECT_EQ(RunTool("vector").status, 2);
  EXPECT_EQ(RunTool("vector C --simplify sometimes").status, 2);
}

}  // namespace
