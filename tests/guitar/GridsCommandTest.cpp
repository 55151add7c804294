// The "harmony grids" command end to end, on a user package in a temporary folder.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <fstream>

#include "GuitarTestSupport.h"

namespace harmony {
namespace {

struct ToolRun {
  int status;
  std::string out;
};

class GridsCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "the tool is not built";
  }
  // Runs the tool with the user package of this test; standard error goes to the output too.
  ToolRun Tool(const std::string& args, bool viaEnv = true) {
    const std::string db = (mTemp.path() / "user.gchdb").string();
    const std::string command = (viaEnv ? "HARMONY_GUITAR_DB='" + db + "' " : std::string()) + "'" +
                                HARMONY_TOOL_PATH + "' grids " + args + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::string out;
    std::array<char, 4096> buffer;
    while (size_t n = fread(buffer.data(), 1, buffer.size(), pipe)) out.append(buffer.data(), n);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
  }
  testing::TempFolder mTemp;
};

TEST_F(GridsCommand, ListsAndShowsFactoryGrids) {
  ToolRun list = Tool("list --root A --type 'minor 7'");
  ASSERT_EQ(list.status, 0) << list.out;
  EXPECT_NE(list.out.find("A m 7"), std::string::npos);
  EXPECT_NE(list.out.find("x02010"), std::string::npos);
  EXPECT_NE(list.out.find("575555"), std::string::npos);
  EXPECT_NE(list.out.find("3 grids"), std::string::npos);
  // The user package was made where the variable says, not in the home folder.
  EXPECT_TRUE(std::filesystem::exists(mTemp.path() / "user.gchdb" / "GChInfo"));

  const std::string id = list.out.substr(0, list.out.find("A m 7"));
  ToolRun show = Tool("show " + id);
  ASSERT_EQ(show.status, 0) << show.out;
  EXPECT_NE(show.out.find("Chord " + std::to_string(std::stol(id)) + ": A m 7"),
            std::string::npos);
  EXPECT_NE(show.out.find("x  o     o     o"), std::string::npos);  // muted and open strings
  EXPECT_NE(show.out.find("================"), std::string::npos);  // the nut
  EXPECT_NE(show.out.find("  1  |  |  |  |  1  |"), std::string::npos);
  EXPECT_NE(show.out.find("  2  |  |  2  |  |  |"), std::string::npos);
  EXPECT_NE(show.out.find("Pitches: A2 E3 G3 C4 E4"), std::string::npos);

  ToolRun barre = Tool("list --root A --type 9 --difficulty 2");
  const std::string barreId = barre.out.substr(0, barre.out.find("A 7(9)"));
  ToolRun shown = Tool("show " + barreId);
  EXPECT_NE(shown.out.find("  5  1--1--1--1--1  |"), std::string::npos) << shown.out;

  EXPECT_EQ(Tool("show 99999").status, 1);
  EXPECT_EQ(Tool("list --root H").status, 1);
  EXPECT_EQ(Tool("list --type nonsense").status, 1);
  EXPECT_EQ(Tool("list --library nonsense").status, 1);
  EXPECT_EQ(Tool("frobnicate").status, 2);
}

TEST_F(GridsCommand, AddsRemovesExportsAndImports) {
  ToolRun add = Tool("add x,10,12,12,11,10 --fingers 013421 --name 'Jazz m7' --root G --favorite");
  ASSERT_EQ(add.status, 0) << add.out;
  const long id = std::stol(add.out.substr(std::string("added chord ").size()));
  ToolRun mine = Tool("list --library 'My Chords'");
  EXPECT_NE(mine.out.find("G Jazz m7"), std::string::npos) << mine.out;
  EXPECT_NE(mine.out.find("x,10,12,12,11,10"), std::string::npos);
  EXPECT_NE(mine.out.find("1 grid\n"), std::string::npos);
  EXPECT_NE(Tool("list --favorites").out.find("G Jazz m7"), std::string::npos);
  ToolRun show = Tool("show " + std::to_string(id));
  EXPECT_NE(show.out.find(" 10  |  1--1--1--1--1"), std::string::npos) << show.out;

  // A second package through --db holds nothing of the first.
  const std::string other = (mTemp.path() / "other.gchdb").string();
  EXPECT_EQ(Tool("--db '" + other + "' list --library 'My Chords'", false).status, 1);

  const std::string exported = (mTemp.path() / "grids.plist").string();
  ToolRun out = Tool("export '" + exported + "'");
  ASSERT_EQ(out.status, 0) << out.out;
  EXPECT_NE(out.out.find("exported 1 chord grid"), std::string::npos);

  EXPECT_EQ(Tool("add 000000").status, 1);  // nothing pressed
  EXPECT_EQ(Tool("add x3201").status, 1);   // five frets for six strings
  EXPECT_EQ(Tool("remove 0").status, 1);    // a factory grid
  ASSERT_EQ(Tool("remove " + std::to_string(id)).status, 0);
  EXPECT_NE(Tool("list --library 'My Chords'").out.find("0 grids"), std::string::npos);

  ToolRun in = Tool("import '" + exported + "' --library Imported");
  ASSERT_EQ(in.status, 0) << in.out;
  ToolRun imported = Tool("list --library Imported --favorites");
  EXPECT_NE(imported.out.find("G Jazz m7"), std::string::npos) << imported.out;

  std::ofstream(mTemp.path() / "bad.plist") << "<plist><array><integer>3</integer></array></plist>";
  EXPECT_EQ(Tool("import '" + (mTemp.path() / "bad.plist").string() + "'").status, 1);
  EXPECT_EQ(Tool("import '" + (mTemp.path() / "missing").string() + "'").status, 1);
}

}  // namespace
}  // namespace harmony
