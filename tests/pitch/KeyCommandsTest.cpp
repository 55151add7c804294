// The key commands of the harmony tool, run as a user would.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace {

struct TRun {
  int status;
  std::string output;  // standard output and standard error
};

TRun RunTool(const std::string& arguments) {
  const std::string command = std::string(HARMONY_TOOL_PATH) + " " + arguments + " 2>&1";
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return {-1, {}};
  std::string output;
  std::array<char, 256> buffer{};
  while (fgets(buffer.data(), buffer.size(), pipe) != nullptr) output += buffer.data();
  const int status = pclose(pipe);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}

class KeyCommands : public testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "harmony tool not built";
  }
};

TEST_F(KeyCommands, KeyShowsWhatWasRead) {
  const TRun run = RunTool("key Bbb Cis H 'Cbb5'");
  EXPECT_EQ(run.status, 0) << run.output;
  EXPECT_NE(run.output.find(R"({"KeyNr":" 9","Enh":"double flat"})"), std::string::npos);
  EXPECT_NE(run.output.find(R"({"KeyNr":"11","Enh":"flat"})"), std::string::npos);
  const TRun bad = RunTool("key C Qb");
  EXPECT_EQ(bad.status, 1);
  EXPECT_NE(bad.output.find("\"Qb\""), std::string::npos) << bad.output;
  const TRun bFlat = RunTool("key --b-is-bflat B");
  EXPECT_EQ(bFlat.status, 0);
  EXPECT_NE(bFlat.output.find(R"({"KeyNr":"10","Enh":"flat"})"), std::string::npos);
}

TEST_F(KeyCommands, TransposeAcceptsNegativeIntervals) {
  const TRun down = RunTool("transpose C -2");
  EXPECT_EQ(down.status, 0) << down.output;
  EXPECT_NE(down.output.find("B\u266D"), std::string::npos) << down.output;
  const TRun up = RunTool("transpose C 10");
  EXPECT_NE(up.output.find("A\u266F"), std::string::npos) << up.output;
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
