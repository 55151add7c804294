// The grids command on a user package that was damaged or protected, and on output files that
// are no regular files: nothing a user stored is lost.

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "ToolTest.h"

namespace harmony {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::RunTool;
using testing::TRun;

std::vector<char> FileBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::vector<char>(std::istreambuf_iterator<char>(in), {});
}

unsigned Mode(const fs::path& path) {
  struct stat info {};
  ::lstat(path.c_str(), &info);
  return info.st_mode & 07777;
}

class GridsSafety : public testing::ToolTest {
 protected:
  // "Mine" with seven grids in 0x1, "Other" with one in 0x2.
  void MakePackage() {
    for (const char* frets :
         {"x02010", "x32010", "320003", "022000", "x24442", "133211", "x02210"}) {
      ASSERT_EQ(RunTool(std::string("grids add ") + frets + " --library Mine").status, 0);
    }
    ASSERT_EQ(RunTool("grids add 022100 --library Other").status, 0);
  }
  fs::path Member(const char* name) const { return fs::path(Package()) / name; }
};

TEST_F(GridsSafety, DamagedLibraryIsReportedAndKeepsItsBytes) {
  MakePackage();
  // One byte of the size field of the second grid's record: the record runs past the end.
  std::vector<char> bytes = FileBytes(Member("0x1"));
  const auto be32 = [&](size_t at) {
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<uint8_t>(bytes[at + i]);
    return value;
  };
  const size_t first = 12 + be32(12);
  bytes[first + be32(first) + 2] += 1;
  std::ofstream(Member("0x1"), std::ios::binary).write(bytes.data(), std::ssize(bytes));

  TRun list = RunTool("grids list --library Mine");
  EXPECT_EQ(list.status, 1);
  EXPECT_TRUE(Contains(list.output, Member("0x1").string() + " was read only in part (1 grid)"))
      << list.output;
  EXPECT_FALSE(Contains(list.output, "x02010"));
  TRun add = RunTool("grids add 002220 --library Other");
  EXPECT_EQ(add.status, 1) << add.output;
  EXPECT_EQ(FileBytes(Member("0x1")), bytes);

  // Leniently the grid that was read is listed, with the warning, and other libraries change.
  TRun lenient = RunTool("grids --lenient list --library Mine");
  EXPECT_EQ(lenient.status, 0);
  EXPECT_TRUE(Contains(lenient.output, "harmony: warning: " + Member("0x1").string()));
  EXPECT_TRUE(Contains(lenient.output, "x02010\n") || Contains(lenient.output, "x02010 "));
  EXPECT_TRUE(Contains(lenient.output, "1 grid\n"));
  EXPECT_EQ(RunTool("grids --lenient add 002220 --library Other").status, 0);
  EXPECT_TRUE(Contains(RunTool("grids --lenient list --library Other").output, "2 grids"));
  TRun mine = RunTool("grids --lenient add 002220 --library Mine");
  EXPECT_EQ(mine.status, 1);
  EXPECT_TRUE(Contains(mine.output, "library 'Mine' was read only in part")) << mine.output;
  const size_t row = lenient.output.find('\n', lenient.output.find("id  name")) + 1;
  TRun remove = RunTool("grids --lenient remove " + lenient.output.substr(row, 8));
  EXPECT_EQ(remove.status, 1);
  EXPECT_TRUE(Contains(remove.output, "library 'Mine' was read only in part")) << remove.output;
  EXPECT_EQ(FileBytes(Member("0x1")), bytes);
  EXPECT_EQ(RunTool("grids --lenient export " + (mTemp.path() / "saved.plist").string()).status, 0);
}

TEST_F(GridsSafety, ReadOnlyFilesAndNonRegularTargetsAreKept) {
  MakePackage();
  fs::permissions(Member("0x2"),
                  fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  const std::vector<char> before = FileBytes(Member("0x2"));
  TRun refused = RunTool("grids add 002220 --library Other");
  EXPECT_EQ(refused.status, 1);
  EXPECT_TRUE(Contains(refused.output, "cannot write the user package " + Package() + ": " +
                                           Member("0x2").string() + ": is read-only (mode 0444)"))
      << refused.output;
  ASSERT_EQ(RunTool("grids add 002220 --library Mine").status, 0);
  EXPECT_EQ(Mode(Member("0x2")), 0444u);
  EXPECT_EQ(FileBytes(Member("0x2")), before);
  EXPECT_EQ(Mode(Member("0x1")), 0644u & ~0022u);

  const fs::path link = mTemp.path() / "link";
  fs::create_symlink("target", link);
  TRun toLink = RunTool("grids export " + link.string());
  EXPECT_EQ(toLink.status, 1);
  EXPECT_TRUE(Contains(toLink.output, "cannot write " + link.string() + ": is a symbolic link"));
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_FALSE(fs::exists(mTemp.path() / "target"));
  const fs::path fifo = mTemp.path() / "fifo";
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0644), 0);
  EXPECT_EQ(RunTool("grids export " + fifo.string()).status, 1);
  EXPECT_TRUE(fs::is_fifo(fifo));
  EXPECT_EQ(RunTool("grids export " + mTemp.path().string()).status, 1);
  EXPECT_EQ(RunTool("grids export " + (mTemp.path() / "new.plist").string()).status, 0);
  EXPECT_TRUE(fs::is_regular_file(mTemp.path() / "new.plist"));
}

TEST_F(GridsSafety, NumbersAreCheckedBeforeTheyAreUsed) {
  const auto refused = [](const std::string& args, const std::string& message) {
    TRun run = RunTool("grids " + args);
    EXPECT_EQ(run.status, 1) << args;
    EXPECT_TRUE(Contains(run.output, message)) << args << "\n" << run.output;
  };
  refused("add 4294967296,1,1,1,1,1", "fret \"4294967296\" lies outside 0..32");
  refused("add 99999999999999999999,1,1,1,1,1", "lies outside 0..32");
  refused("name 1,2,3,4,5,33", "fret \"33\" lies outside 0..32");
  refused("add x02210 --difficulty 2147483647", "difficulty \"2147483647\" lies outside 0..7");
  refused("show --id 9223372036854775808", "lies outside 0..1000000");
  refused("remove -1", "lies outside");
  refused("add x02210 --fingers 0,1,2,3,4,9", "bad fingers");
  refused("add x02210 --name \"$(printf '\\377\\376')\"", "the grid name is no valid UTF-8 text");
  // None of them made a package.
  EXPECT_FALSE(fs::exists(Package()));
}

}  // namespace
}  // namespace harmony
