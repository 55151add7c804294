// The vector command of the harmony tool, run as a user would.

#include <gtest/gtest.h>

#include <string>

#include "TestPaths.h"
#include "ToolRun.h"
#include "platform/JsonReader.h"

namespace {

using harmony::JsonDict;
namespace platform = harmony::platform;
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
  const TRun json = RunTool("vector --json=native C7/E");
  EXPECT_EQ(json.status, 0) << json.output;
  EXPECT_EQ(json.output,
            "{\"VectorRep\":[0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, "
            "0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0]}\n");
  const TRun back = RunTool("vector --read '" + json.output.substr(0, json.output.size() - 1) +
                            "' --read '{\"RootKeyNr\":9,\"Semitones\":137}'");
  EXPECT_EQ(back.status, 0) << back.output;
  EXPECT_TRUE(Contains(back.output, "json 1  C7 / E  100010010010  3 15 32 38")) << back.output;
  EXPECT_TRUE(Contains(back.output, "json 2  Am      100010000100  12 16")) << back.output;
  const TRun keys = RunTool("vector --json=native --keys Am/G");
  EXPECT_TRUE(Contains(keys.output, "\"Semitones\":137}")) << keys.output;
  // The key form reads back, key numbers written as text included.
  const TRun keysBack =
      RunTool("vector --read '" + keys.output.substr(0, keys.output.size() - 1) + "'");
  EXPECT_TRUE(Contains(keysBack.output, "json 1  Am / G  100010010100  12 16 41"))
      << keysBack.output;

  // Strict JSON: one document with the chord, its chroma and its one-hot elements as numbers.
  const TRun strict = RunTool("vector --json C7/E '*'");
  EXPECT_EQ(strict.status, 0) << strict.output;
  const auto dict = platform::ParseJson(strict.output);
  ASSERT_TRUE(dict.has_value()) << strict.output;
  const JsonDict& c7 = (*dict)["chords"][0];
  EXPECT_EQ(c7["export"], "C7 / E");
  EXPECT_EQ(c7["chord"]["bass"]["key"], 4);
  EXPECT_EQ(c7["chroma"], JsonDict::parse("[1,0,0,0,1,0,0,1,0,0,1,0]"));
  EXPECT_EQ(c7["oneHot"], JsonDict::parse("[3,15,32,38]"));
  EXPECT_EQ((*dict)["chords"][1]["oneHot"], JsonDict::parse("[2]"));
}

TEST_F(VectorCommand, RefusesBadInput) {
  EXPECT_EQ(RunTool("vector C xyz").status, 1);
  EXPECT_EQ(RunTool("vector --read '{\"VectorRep\":[0, 1]}'").status, 1);
  EXPECT_EQ(RunTool("vector --read '[1, 2]'").status, 1);
  EXPECT_EQ(RunTool("vector --read '{\"Semitones\":145}'").status, 1);
  // Values no chord holds: a key beyond 0..11 (15 is none) and a mask beyond twelve semitones.
  for (const char* form :
       {"{\"RootKeyNr\":99999999999}", "{\"RootKeyNr\":12}", "{\"RootKeyEnh\":{\"KeyNr\":\" x\"}}",
        "{\"RootKeyNr\":0,\"Semitones\":4096}", "{\"RootKeyNr\":0,\"BassKeyNr\":-1}",
        "{\"RootKeyEnh\":5}", "{\"RootKeyEnh\":{}}"}) {
    const TRun run = RunTool(std::string("vector --read '") + form + "'");
    EXPECT_EQ(run.status, 1) << form << "\n" << run.output;
  }
  EXPECT_EQ(RunTool("vector --lenient --read '{\"RootKeyNr\":12}'").status, 0);
  const TRun notJson = RunTool("vector --read '{\"RootKeyNr\":0,}'");
  EXPECT_EQ(notJson.status, 1);
  EXPECT_TRUE(Contains(notJson.output, "not a JSON object")) << notJson.output;
  EXPECT_EQ(RunTool("vector").status, 2);
  EXPECT_EQ(RunTool("vector C --simplify sometimes").status, 2);
}

}  // namespace
