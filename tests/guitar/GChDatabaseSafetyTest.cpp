// What the database does with packages that do not read back whole, and how its writes treat
// the files that stand where they write.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "GuitarTestSupport.h"
#include "harmony/guitar/GChDatabase.h"
#include "harmony/guitar/GChLibrary.h"
#include "platform/AtomicWrite.h"

namespace harmony {
namespace {

namespace fs = std::filesystem;
using testing::Grid;
using testing::TempFolder;

std::vector<uint8_t> FileBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

void WriteBytes(const fs::path& path, const std::vector<uint8_t>& bytes) {
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
}

unsigned Mode(const fs::path& path) {
  struct stat info {};
  ::lstat(path.c_str(), &info);
  return info.st_mode & 07777;
}

ino_t Inode(const fs::path& path) {
  struct stat info {};
  ::lstat(path.c_str(), &info);
  return info.st_ino;
}

uint32_t BE32(const std::vector<uint8_t>& bytes, size_t at) {
  return uint32_t{bytes[at]} << 24 | uint32_t{bytes[at + 1]} << 16 | uint32_t{bytes[at + 2]} << 8 |
         bytes[at + 3];
}

// A user package with "seven" (seven grids, one byte of its second grid's size field raised so
// that the record runs past the end) and "other" (one grid), read into a database.
struct DamagedPackage {
  TempFolder temp;
  fs::path package = temp.path() / "GuitarChords.gchdb";
  fs::path damaged, other;
  std::vector<uint8_t> damagedBytes;
  GChDatabase db;

  DamagedPackage() {
    GChDatabase writer;
    GChTuning* tuning = writer.tuningWithShortTuning(GChDefaultGuitarShortTuning(), "Guitar");
    GChLibrary* seven = tuning->createLibraryWithPath("", "seven");
    for (int fret = 0; fret < 7; ++fret) seven->addChordRangePriv(Grid({{1, fret, 2}}));
    tuning->createLibraryWithPath("", "other")->addChordRangePriv(Grid({{2, 3, 4}}));
    writer.writeLibraries(writer.allLibrariesForAnyTuning(), package);
    damaged = package / "0x1";
    other = package / "0x2";
    damagedBytes = FileBytes(damaged);
    const size_t firstRecord = 12 + BE32(damagedBytes, 12);
    const size_t secondRecord = firstRecord + BE32(damagedBytes, firstRecord);
    damagedBytes[secondRecord + 2] += 1;
    WriteBytes(damaged, damagedBytes);
    db.readFromDbPackageAtPath(package);
    db.setDefaultUserPackagePath(package);
  }
  GChLibrary* Library(const std::string& name) {
    for (GChLibrary* library : db.allLibrariesForAnyTuning()) {
      if (library->libraryName() == name) return library;
    }
    return nullptr;
  }
};

TEST(GChDatabaseSafety, LibraryReadInPartIsReportedAndNeverWrittenOver) {
  DamagedPackage p;
  ASSERT_EQ(p.db.readProblems().size(), 1u);
  const std::string& problem = p.db.readProblems()[0];
  EXPECT_NE(problem.find(p.damaged.string() + " was read only in part (1 grid)"), std::string::npos)
      << problem;
  EXPECT_NE(problem.find("grid record 2 at byte"), std::string::npos) << problem;
  EXPECT_NE(problem.find("gives its size as"), std::string::npos) << problem;
  GChLibrary* seven = p.Library("seven");
  ASSERT_NE(seven, nullptr);
  EXPECT_TRUE(seven->isReadInPart());
  EXPECT_EQ(seven->numberOfBasicChords(), 1);

  // A change elsewhere writes only the changed library.
  const ino_t damagedInode = Inode(p.damaged);
  p.Library("other")->addBasicChord(Grid({{3, 5, 1}}));
  ASSERT_TRUE(p.db.updateDatabaseFiles()) << p.db.writeProblem();
  EXPECT_EQ(FileBytes(p.damaged), p.damagedBytes);
  EXPECT_EQ(Inode(p.damaged), damagedInode);
  GChDatabase reread;
  reread.readFromDbPackageAtPath(p.package);
  EXPECT_EQ(reread.allLibrariesForAnyTuning()[1]->numberOfBasicChords(), 2);

  // Nothing changed: nothing is written at all.
  const ino_t otherInode = Inode(p.other);
  ASSERT_TRUE(p.db.updateDatabaseFiles());
  EXPECT_EQ(Inode(p.other), otherInode);

  // A change to the damaged library itself is refused, naming the file.
  seven->addBasicChord(Grid({{4, 9, 0}}));
  EXPECT_FALSE(p.db.updateDatabaseFiles());
  EXPECT_NE(p.db.writeProblem().find(p.damaged.string() + " was read only in part"),
            std::string::npos)
      << p.db.writeProblem();
  EXPECT_EQ(FileBytes(p.damaged), p.damagedBytes);
}

TEST(GChDatabaseSafety, PackageProblemsAreReported) {
  DamagedPackage p;
  // A member that is no library, one cut inside its tuning record, a broken version record.
  std::ofstream(p.package / "notes.txt") << "not a library";
  std::vector<uint8_t> cut = FileBytes(p.other);
  cut.resize(20);
  WriteBytes(p.package / "0x3", cut);
  std::ofstream(p.package / "GChInfo") << "garbage";
  GChDatabase db;
  ASSERT_TRUE(db.readFromDbPackageAtPath(p.package));
  std::string all;
  for (const std::string& problem : db.readProblems()) all += problem + "\n";
  EXPECT_EQ(db.readProblems().size(), 4u) << all;
  for (const std::string& expected :
       {(p.package / "notes.txt").string() + " is no guitar library",
        (p.package / "0x3").string() + " gives the size of its tuning record as",
        (p.package / "GChInfo").string() + " is no property list", p.damaged.string()}) {
    EXPECT_NE(all.find(expected), std::string::npos) << expected << "\n" << all;
  }
  fs::remove(p.package / "GChInfo");
  GChDatabase withoutInfo;
  withoutInfo.readFromDbPackageAtPath(p.package);
  EXPECT_NE(withoutInfo.readProblems().back().find("has no \"GChInfo\""), std::string::npos);

  // Permissions do not bind the super-user, who reads every file.
  if (::geteuid() != 0) {
    fs::permissions(p.other, fs::perms::none);
    GChDatabase unreadable;
    unreadable.readFromDbPackageAtPath(p.package);
    all.clear();
    for (const std::string& problem : unreadable.readProblems()) all += problem + "\n";
    EXPECT_NE(all.find(p.other.string() + " cannot be read: Permission denied"), std::string::npos)
        << all;
  }
}

TEST(GChDatabaseSafety, WritesKeepModesAndReplaceOnlyRegularFiles) {
  TempFolder temp;
  const uint8_t bytes[] = {'n', 'e', 'w'};
  std::string why;
  // A new file is made; an existing one keeps its permissions.
  const fs::path file = temp.path() / "file";
  ASSERT_TRUE(platform::WriteFileAtomically(file, bytes, 3, &why)) << why;
  fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  ASSERT_TRUE(platform::WriteFileAtomically(file, bytes, 2, &why)) << why;
  EXPECT_EQ(Mode(file), 0640u);
  EXPECT_EQ(FileBytes(file).size(), 2u);

  // A read-only file, a link, a FIFO and a folder stay as they are.
  fs::permissions(file, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  EXPECT_FALSE(platform::WriteFileAtomically(file, bytes, 3, &why));
  EXPECT_EQ(why, "is read-only (mode 0444)");
  EXPECT_EQ(Mode(file), 0444u);
  EXPECT_EQ(FileBytes(file).size(), 2u);
  const fs::path link = temp.path() / "link";
  fs::create_symlink("elsewhere", link);
  EXPECT_FALSE(platform::WriteFileAtomically(link, bytes, 3, &why));
  EXPECT_EQ(why, "is a symbolic link, not a regular file");
  EXPECT_TRUE(fs::is_symlink(link));
  const fs::path fifo = temp.path() / "fifo";
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0644), 0);
  EXPECT_FALSE(platform::WriteFileAtomically(fifo, bytes, 3, &why));
  EXPECT_EQ(why, "is a FIFO, not a regular file");
  EXPECT_TRUE(fs::is_fifo(fifo));
  EXPECT_FALSE(platform::WriteFileAtomically(temp.path(), bytes, 3, &why));
  EXPECT_FALSE(platform::WriteDirectoryAtomically(link, {{"a", {1}}}, &why));
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_FALSE(fs::exists(temp.path() / "elsewhere"));
  // No temporary file is left behind by the refusals.
  EXPECT_EQ(std::distance(fs::directory_iterator(temp.path()), fs::directory_iterator()), 3);

  // A library in a read-only file is not written, and says so.
  DamagedPackage p;
  fs::permissions(p.other, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  p.Library("other")->addBasicChord(Grid({{3, 5, 1}}));
  EXPECT_FALSE(p.db.updateDatabaseFiles());
  EXPECT_EQ(p.db.writeProblem(), p.other.string() + ": is read-only (mode 0444)");
  EXPECT_EQ(Mode(p.other), 0444u);
  // A folder that is no package is never replaced by a package.
  GChDatabase db;
  EXPECT_FALSE(db.writeLibraries({}, temp.path()));
  EXPECT_NE(db.writeProblem().find("is a folder but no package"), std::string::npos);
  EXPECT_TRUE(fs::exists(temp.path() / "file"));
}

}  // namespace
}  // namespace harmony
