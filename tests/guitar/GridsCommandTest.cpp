// The "harmony grids" command end to end, on a user package in a temporary folder.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "GuitarTestSupport.h"
#include "TestPaths.h"
#include "ToolRun.h"

namespace harmony {
namespace {

// Runs the tool with the user package of this test; standard error goes to the output too.
class GridsCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "the tool is not built";
    ::setenv("HARMONY_GUITAR_DB", (mTemp.path() / "user.gchdb").c_str(), 1);
  }
  void TearDown() override { ::unsetenv("HARMONY_GUITAR_DB"); }
  static testing::TRun Tool(const std::string& args) { return testing::RunTool("grids " + args); }
  // The id of the first grid a list shows, below the header.
  static std::string FirstId(const std::string& list) {
    const std::size_t row = list.find('\n') + 1;
    return std::to_string(std::stol(list.substr(row)));
  }
  testing::TempFolder mTemp;
};

TEST_F(GridsCommand, ListsAndShowsFactoryGrids) {
  testing::TRun list = Tool("list --root A --type 'minor 7'");
  ASSERT_EQ(list.status, 0) << list.output;
  EXPECT_NE(list.output.find("A m 7"), std::string::npos);
  EXPECT_NE(list.output.find("x02010"), std::string::npos);
  EXPECT_NE(list.output.find("575555"), std::string::npos);
  EXPECT_NE(list.output.find("3 grids"), std::string::npos);
  // Reading makes no user package, neither where the variable says nor in the home folder.
  EXPECT_FALSE(std::filesystem::exists(mTemp.path() / "user.gchdb"));

  const std::string id = FirstId(list.output);
  testing::TRun show = Tool("show --id " + id);
  ASSERT_EQ(show.status, 0) << show.output;
  EXPECT_NE(show.output.find("Chord " + id + ": A m 7"), std::string::npos);
  EXPECT_NE(show.output.find("x  o     o     o"), std::string::npos);  // muted and open strings
  EXPECT_NE(show.output.find("================"), std::string::npos);  // the nut
  EXPECT_NE(show.output.find("  1  |  |  |  |  1  |"), std::string::npos);
  EXPECT_NE(show.output.find("  2  |  |  2  |  |  |"), std::string::npos);
  EXPECT_NE(show.output.find("Pitches: A2 E3 G3 C4 E4"), std::string::npos);

  testing::TRun barre = Tool("list --root A --type 9 --difficulty 2");
  testing::TRun shown = Tool("show --id " + FirstId(barre.output));
  EXPECT_NE(shown.output.find("  5  1--1--1--1--1  |"), std::string::npos) << shown.output;

  EXPECT_EQ(Tool("show --id 99999").status, 1);
  EXPECT_EQ(Tool("list --root Q").status, 1);
  EXPECT_EQ(Tool("list --type nonsense").status, 1);
  EXPECT_EQ(Tool("list --library nonsense").status, 1);
  EXPECT_EQ(Tool("frobnicate").status, 2);
}

TEST_F(GridsCommand, AddsRemovesExportsAndImports) {
  testing::TRun add =
      Tool("add x,10,12,12,11,10 --fingers 013421 --name 'Jazz m7' --root G --favorite");
  ASSERT_EQ(add.status, 0) << add.output;
  const long id = std::stol(add.output.substr(std::string("added chord ").size()));
  testing::TRun mine = Tool("list --library 'My Chords'");
  EXPECT_NE(mine.output.find("G Jazz m7"), std::string::npos) << mine.output;
  EXPECT_NE(mine.output.find("x,10,12,12,11,10"), std::string::npos);
  EXPECT_NE(mine.output.find("1 grid\n"), std::string::npos);
  EXPECT_NE(Tool("list --favorites").output.find("G Jazz m7"), std::string::npos);
  testing::TRun show = Tool("show --id " + std::to_string(id));
  EXPECT_NE(show.output.find(" 10  |  1--1--1--1--1"), std::string::npos) << show.output;

  // A second package through --db holds nothing of the first.
  const std::string other = (mTemp.path() / "other.gchdb").string();
  ::unsetenv("HARMONY_GUITAR_DB");
  EXPECT_EQ(Tool("--db '" + other + "' list --library 'My Chords'").status, 1);
  ::setenv("HARMONY_GUITAR_DB", (mTemp.path() / "user.gchdb").c_str(), 1);

  const std::string exported = (mTemp.path() / "grids.plist").string();
  testing::TRun out = Tool("export '" + exported + "'");
  ASSERT_EQ(out.status, 0) << out.output;
  EXPECT_NE(out.output.find("exported 1 chord grid"), std::string::npos);

  EXPECT_EQ(Tool("add 000000").status, 1);  // nothing pressed
  EXPECT_EQ(Tool("add x3201").status, 1);   // five frets for six strings
  EXPECT_EQ(Tool("remove 0").status, 1);    // a factory grid
  ASSERT_EQ(Tool("remove " + std::to_string(id)).status, 0);
  EXPECT_NE(Tool("list --library 'My Chords'").output.find("0 grids"), std::string::npos);

  testing::TRun in = Tool("import '" + exported + "' --library Imported");
  ASSERT_EQ(in.status, 0) << in.output;
  testing::TRun imported = Tool("list --library Imported --favorites");
  EXPECT_NE(imported.output.find("G Jazz m7"), std::string::npos) << imported.output;

  std::ofstream(mTemp.path() / "bad.plist") << "<plist><array><integer>3</integer></array></plist>";
  EXPECT_EQ(Tool("import '" + (mTemp.path() / "bad.plist").string() + "'").status, 1);
  EXPECT_EQ(Tool("import '" + (mTemp.path() / "missing").string() + "'").status, 1);
}

}  // namespace
}  // namespace harmony
