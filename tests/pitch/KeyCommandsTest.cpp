// The key commands of the harmony tool, run as a user would.

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

class KeyCommands : public testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "harmony tool not built";
  }
};

TEST_F(KeyCommands, KeyShowsWhatWasRead) {
  const TRun run = RunTool("key Bbb Cis H");
  EXPECT_EQ(run.status, 0) << run.output;
  EXPECT_NE(run.output.find(R"({"KeyNr":" 9","Enh":"double flat"})"), std::string::npos);
  // Text behind the key is refused, unless read as the library reads it.
  const TRun partial = RunTool("key 'Cbb5'");
  EXPECT_EQ(partial.status, 1) << partial.output;
  EXPECT_TRUE(Contains(partial.output, "--lenient")) << partial.output;
  const TRun lenient = RunTool("key --lenient 'Cbb5'");
  EXPECT_EQ(lenient.status, 0) << lenient.output;
  EXPECT_NE(lenient.output.find(R"(2  {"KeyNr":"11","Enh":"flat"})"), std::string::npos)
      << lenient.output;
  const TRun bad = RunTool("key C Qb");
  EXPECT_EQ(bad.status, 1);
  EXPECT_NE(bad.output.find("\"Qb\""), std::string::npos) << bad.output;
  EXPECT_NE(RunTool("key --b-is-bflat B").output.find(R"("KeyNr":"10")"), std::string::npos);
}

TEST_F(KeyCommands, TransposeAcceptsNegativeIntervals) {
  const TRun down = RunTool("transpose C -2");
  EXPECT_EQ(down.status, 0) << down.output;
  EXPECT_NE(down.output.find("B\u266D"), std::string::npos) << down.output;
  EXPECT_EQ(RunTool("transpose Cm7 2").status, 1);
  EXPECT_EQ(RunTool("transpose C").status, 2);
}

TEST_F(KeyCommands, NamesInEveryStyle) {
  const TRun run = RunTool("names Bb");
  EXPECT_EQ(run.status, 0) << run.output;
  for (const char* name : {"B\u266D", "Bb", "Bes", "Ti\u266D", "Si\u266D", "b flat"}) {
    EXPECT_NE(run.output.find(name), std::string::npos) << name << "\n" << run.output;
  }
}

}  // namespace
