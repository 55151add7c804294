#include "platform/BoundedRead.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>

#include <gtest/gtest.h>

#include "TempFolder.h"

namespace harmony::platform {
namespace {

using testing::TempFolder;

void Write(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

TEST(BoundedRead, OnlyRegularFilesAreRead) {
  TempFolder temp;
  const std::filesystem::path fifo = temp.path() / "fifo";
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  // None of these is read: a device without end, a FIFO without writer (opening it must not
  // wait), a folder.
  const struct {
    std::filesystem::path path;
    const char* reason;
  } refused[] = {{"/dev/zero", "a character device, not a regular file"},
                 {fifo, "a FIFO, not a regular file"},
                 {temp.path(), "a folder, not a regular file"}};
  for (const auto& entry : refused) {
    const TBoundedRead read = ReadBounded(entry.path, TReadKind::kChordList);
    ASSERT_FALSE(read) << entry.path;
    EXPECT_EQ(read.error->reason, entry.reason);
    EXPECT_EQ(read.error->code, EINVAL);
  }

  const TBoundedRead missing = ReadBounded(temp.path() / "none.txt", TReadKind::kChordList);
  ASSERT_FALSE(missing);
  EXPECT_EQ(missing.error->code, ENOENT);
  EXPECT_EQ(missing.error->Message(), "cannot read \"" + (temp.path() / "none.txt").string() +
                                          "\": No such file or directory");

  // The kernel's memory file stands as a regular file but gives an error on the first read.
  const TBoundedRead memory = ReadBounded("/proc/self/mem", TReadKind::kChordList);
  ASSERT_FALSE(memory);
  EXPECT_EQ(memory.error->code, EIO);
  EXPECT_EQ(memory.error->Message(), "cannot read \"/proc/self/mem\": Input/output error");
}

TEST(BoundedRead, LimitsHoldForStatedAndUnstatedSizes) {
  TempFolder temp;
  const std::filesystem::path file = temp.path() / "ten.txt";
  Write(file, "C . G7 . |");
  EXPECT_EQ(ReadBounded(file, 10).bytes, "C . G7 . |");
  const TBoundedRead over = ReadBounded(file, 9);
  ASSERT_FALSE(over);
  EXPECT_EQ(over.error->code, EFBIG);
  EXPECT_EQ(over.error->reason, "larger than 9 bytes");
  EXPECT_TRUE(over.bytes.empty());

  // Files of /proc state no size: the limit holds while reading.
  const TBoundedRead status = ReadBounded("/proc/self/status", 16);
  ASSERT_FALSE(status);
  EXPECT_EQ(status.error->code, EFBIG);
  EXPECT_TRUE(ReadBounded("/proc/self/status", TReadKind::kChordList));

  // So it does for a pipe, as standard input may be.
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ASSERT_EQ(::write(ends[1], "Dm7 G7 C", 8), 8);
  ::close(ends[1]);
  const TBoundedRead piped = ReadBoundedDescriptor(ends[0], "-", 7);
  ::close(ends[0]);
  ASSERT_FALSE(piped);
  EXPECT_EQ(piped.error->Message(), "cannot read \"-\": larger than 7 bytes");

  EXPECT_EQ(DefaultReadLimit(TReadKind::kMusicXml), std::size_t{64} << 20);
  EXPECT_EQ(ReadBounded(file, TReadKind::kMusicXml).bytes, "C . G7 . |");
}

TEST(BoundedRead, TextIsUtf8OrConvertedUtf16) {
  // "B♭7 E♭" in UTF-16 both ways round and behind a UTF-8 byte-order mark.
  const std::string utf8 =
      "B\xE2\x99\xAD"
      "7 E\xE2\x99\xAD";
  const std::string little(
      "\xFF\xFE"
      "B\0\x6D\x26"
      "7\0 \0E\0\x6D\x26",
      14);
  const std::string big(
      "\xFE\xFF\0B\x26\x6D\0"
      "7\0 \0E\x26\x6D",
      14);
  EXPECT_EQ(TextFromBytes(little, "x").bytes, utf8);
  EXPECT_EQ(TextFromBytes(big, "x").bytes, utf8);
  EXPECT_EQ(TextFromBytes("\xEF\xBB\xBF" + utf8, "x").bytes, utf8);
  EXPECT_EQ(TextFromBytes(utf8, "x").bytes, utf8);

  const TBoundedRead cut = TextFromBytes(little.substr(0, 13), "tune.txt");
  ASSERT_FALSE(cut);
  EXPECT_EQ(cut.error->reason, "broken UTF-16 text behind its byte-order mark");

  // The offset counts in the file, byte-order mark included. Latin-1, a stray continuation
  // byte, an overlong slash, a surrogate, a sequence cut by the end.
  const struct {
    std::string bytes;
    std::size_t offset;
  } bad[] = {{"Dm7 G7 C\xE9", 8},
             {"\xEF\xBB\xBF"
              "C \xB0",
              5},
             {"C/\xC0\xAF"
              "E",
              2},
             {"C \xED\xA0\x80", 2},
             {"C \xE2\x99", 2}};
  for (const auto& entry : bad) {
    const TBoundedRead read = TextFromBytes(entry.bytes, "tune.txt");
    ASSERT_FALSE(read) << entry.bytes;
    EXPECT_EQ(read.error->reason, "no UTF-8 text (byte " + std::to_string(entry.offset) + ")");
  }

  TempFolder temp;
  Write(temp.path() / "tune.txt", little);
  EXPECT_EQ(ReadBoundedText(temp.path() / "tune.txt", TReadKind::kChordList).bytes, utf8);
}

}  // namespace
}  // namespace harmony::platform
