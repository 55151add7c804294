// What the tool reads from outside: regular files only (or standard input), within a size
// limit, with the path and the system's reason when they cannot be read; chord lists as
// UTF-8 or UTF-16 text; numbers checked before they are used.

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

using ToolInput = testing::ToolTest;

TEST_F(ToolInput, FilesThatCannotBeReadAreToldWithTheirReason) {
  const struct {
    std::string arguments;
    std::string message;
  } cases[] = {
      // Refused by its type before a byte is read: the command returns at once.
      {"analyse --file /dev/zero",
       "cannot read \"/dev/zero\": a character device, not a regular file"},
      {"musicxml /dev/zero", "a character device, not a regular file"},
      {"markov convert /dev/zero", "a character device, not a regular file"},
      {"markov generate --bars 2 --model /dev/zero", "a character device, not a regular file"},
      {"analyse --file '" + mTemp.path().string() + "'", "a folder, not a regular file"},
      {"analyse --file /proc/self/mem", "cannot read \"/proc/self/mem\": Input/output error"},
      {"grids import /proc/self/mem", "cannot read \"/proc/self/mem\": Input/output error"},
      {"key-of --file '" + (mTemp.path() / "none.txt").string() + "'",
       "none.txt\": No such file or directory"},
  };
  for (const auto& entry : cases) {
    const TRun run = RunTool(entry.arguments);
    EXPECT_EQ(run.status, 1) << entry.arguments << "\n" << run.output;
    EXPECT_TRUE(Contains(run.output, entry.message)) << entry.arguments << "\n" << run.output;
  }
}

TEST_F(ToolInput, ChordListsAreUtf8OrUtf16Text) {
  const std::string tune = "C . . . | F . G7 . | C";
  std::string utf16 = "\xFF\xFE";
  for (const char c : tune) utf16 += std::string{c, '\0'};
  const std::filesystem::path wide = mTemp.path() / "wide.txt";
  std::ofstream(wide, std::ios::binary) << utf16;

  const TRun expected = RunTool("analyse '" + tune + "'");
  ASSERT_EQ(expected.status, 0) << expected.output;
  EXPECT_TRUE(Contains(expected.output, "G7")) << expected.output;
  EXPECT_EQ(RunTool("analyse --file '" + wide.string() + "'").output, expected.output);
  EXPECT_EQ(RunToolWithInput(utf16, "analyse --file -").output, expected.output);
  const TRun learned = RunTool("markov convert '" + wide.string() + "'");
  EXPECT_TRUE(Contains(learned.output, "G7")) << learned.output;

  // Latin-1 is no UTF-8: the byte is named, --lenient reads it as the library does.
  const std::filesystem::path latin = mTemp.path() / "latin.txt";
  std::ofstream(latin, std::ios::binary) << "C . F . | G7 \xE9t\xE9 C";
  const TRun refused = RunTool("analyse --file '" + latin.string() + "'");
  EXPECT_EQ(refused.status, 1) << refused.output;
  EXPECT_TRUE(Contains(refused.output, "is no text file: no UTF-8 text (byte 13)"))
      << refused.output;
  EXPECT_EQ(RunTool("analyse --lenient --file '" + latin.string() + "'").status, 0);
}

TEST_F(ToolInput, NumberOptionsAreCheckedBeforeUse) {
  const struct {
    const char* arguments;
    const char* message;
  } cases[] = {
      {"musicxml x.xml --ticks 99999999999", "--ticks \"99999999999\" lies outside 1..32767"},
      {"musicxml x.xml --ticks 1e3", "--ticks \"1e3\" is not a whole number"},
      {"voice C --beats 0", "--beats \"0\" lies outside 1..64"},
      {"markov generate --bars 99999999999999999999", "--bars \"99999999999999999999\" lies"},
      {"markov generate --bars 2 --seed -1", "--seed \"-1\" lies outside 0..4294967295"},
      {"markov generate --bars 2 --seed 4294967296", "--seed \"4294967296\" lies outside"},
      {"markov generate --bars 2 --samples 0x10", "--samples \"0x10\" is not a whole number"},
      {"markov generate --bars 2 --variety nan", "--variety \"nan\" is not a decimal number"},
      {"markov generate --bars 2 --variety 1.5", "--variety \"1.5\" lies outside 0..1"},
      {"markov holdout x --every 1", "--every \"1\" lies outside 2..1000"},
      {"markov learn x -o y --history 9", "--history \"9\" lies outside 1..8"},
  };
  for (const auto& entry : cases) {
    const TRun run = RunTool(entry.arguments);
    EXPECT_EQ(run.status, 1) << entry.arguments << "\n" << run.output;
    EXPECT_TRUE(Contains(run.output, entry.message)) << entry.arguments << "\n" << run.output;
  }
  const TRun edge = RunTool("markov generate --bars 1 --seed 4294967295 --variety .5");
  EXPECT_EQ(edge.status, 0) << edge.output;
}

}  // namespace
}  // namespace harmony
