// The dialog command of the harmony tool, run as a user would.

#include <gtest/gtest.h>

#include <string>

#include "TestPaths.h"
#include "ToolRun.h"
#include "platform/JsonReader.h"

namespace {

using harmony::testing::Contains;
using harmony::testing::RunTool;
using harmony::testing::TRun;

class DialogCommand : public testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "harmony tool not built";
  }
};

TEST_F(DialogCommand, DrawsBothRows) {
  const TRun run = RunTool("dialog Cdim");
  EXPECT_EQ(run.status, 0) << run.output;
  EXPECT_TRUE(Contains(run.output, "mask 73 (0-3-6), type 4 (diminished)")) << run.output;
  EXPECT_TRUE(Contains(run.output, "4     diminished  on     1\n")) << run.output;
  EXPECT_TRUE(Contains(run.output, "     3  sixth                   9  off       2\n"))
      << run.output;
  EXPECT_TRUE(Contains(run.output, "    10  sharp eleventh          6  disabled  1\n"))
      << run.output;

  const TRun json = RunTool("dialog Caug --json");
  EXPECT_EQ(json.status, 0) << json.output;
  const auto dict = harmony::platform::ParseJson(json.output);
  ASSERT_TRUE(dict.has_value()) << json.output;
  EXPECT_EQ((*dict)["type"], 3);
  EXPECT_EQ((*dict)["types"].size(), 8u);
  EXPECT_EQ((*dict)["options"][1]["status"], 4);
  EXPECT_EQ((*dict)["options"][10]["state"], "disabled");
  EXPECT_EQ((*dict)["options"][10]["semitone"], 8);

  const TRun empty = RunTool("dialog C --mask 0 --json");
  const auto emptyDict = harmony::platform::ParseJson(empty.output);
  ASSERT_TRUE(emptyDict.has_value()) << empty.output;
  EXPECT_EQ((*emptyDict)["type"], 0);
  EXPECT_EQ((*emptyDict)["types"][7]["state"], "off");
}

TEST_F(DialogCommand, PressesRunInTurnAndClicksToggle) {
  const TRun run = RunTool(
      "dialog D/A --press option:7 --press option:12 --press option:7 --press type:2 --ascii");
  EXPECT_EQ(run.status, 0) << run.output;
  // The bass stays through every press.
  EXPECT_TRUE(Contains(run.output, "(start)                    D/A          145  0-4-7\n"))
      << run.output;
  EXPECT_TRUE(Contains(run.output, "option 7 (ninth) on        D7(9)/A     1173")) << run.output;
  EXPECT_TRUE(Contains(run.output, "option 12 (thirteenth) on  D7(9,13)/A  1685")) << run.output;
  EXPECT_TRUE(Contains(run.output, "option 7 (ninth) off       D7(13)/A    1681")) << run.output;
  EXPECT_TRUE(Contains(run.output, "type 2 (minor)             Dm/A         137")) << run.output;

  const TRun json = RunTool("dialog C --press option:1:on --press option:1:off --json");
  EXPECT_EQ(json.status, 0) << json.output;
  const auto dict = harmony::platform::ParseJson(json.output);
  ASSERT_TRUE(dict.has_value()) << json.output;
  EXPECT_EQ((*dict)["steps"].size(), 3u);
  EXPECT_EQ((*dict)["steps"][1]["mask"], 81);
  EXPECT_EQ((*dict)["steps"][2]["mask"], 145);
  // A disabled button can be forced.
  EXPECT_EQ(RunTool("dialog Cm --press option:2:on").status, 0);
}

TEST_F(DialogCommand, RefusesBadInput) {
  const TRun disabled = RunTool("dialog Cm --press option:2");
  EXPECT_EQ(disabled.status, 1);
  EXPECT_TRUE(Contains(disabled.output, "option 2 (sharp fifth) is disabled on Cm"))
      << disabled.output;
  for (const char* press : {"option:13", "option:0", "type:9", "type:0"}) {
    const TRun run = RunTool(std::string("dialog C --press ") + press);
    EXPECT_EQ(run.status, 1) << press;
    EXPECT_TRUE(Contains(run.output, "out of range")) << run.output;
  }
  for (const char* press : {"type:3:on", "option:7:maybe", "chord:1", "option:", "option:x",
                            "option:7:on:off", "type:-1"}) {
    const TRun run = RunTool(std::string("dialog C --press ") + press);
    EXPECT_EQ(run.status, 1) << press;
    EXPECT_TRUE(Contains(run.output, "bad press")) << run.output;
  }
  EXPECT_EQ(RunTool("dialog xyz").status, 1);
  EXPECT_EQ(RunTool("dialog C --mask 4096").status, 1);
  EXPECT_EQ(RunTool("dialog C --mask -1").status, 1);
  EXPECT_EQ(RunTool("dialog").status, 2);
}

}  // namespace
