#include "platform/BoundedRead.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "platform/Utf16.h"

namespace harmony::platform {

namespace {

struct TKindLimit {
  TReadKind kind;
  std::size_t limit;
  const char* name;
};

constexpr std::array<TKindLimit, 5> kKindLimits{{
    {TReadKind::kChordList, kMaxChordListBytes, "chord lists"},
    {TReadKind::kMusicXml, kMaxMusicXmlBytes, "MusicXML files"},
    {TReadKind::kGridLibrary, kMaxGridLibraryBytes, "grid libraries"},
    {TReadKind::kMarkovModel, kMaxMarkovModelBytes, "Markov models"},
    {TReadKind::kNetFile, kMaxNetFileBytes, "net files"},
}};

const TKindLimit& KindLimit(TReadKind kind) {
  for (const TKindLimit& entry : kKindLimits) {
    if (entry.kind == kind) return entry;
  }
  return kKindLimits.front();
}

TBoundedRead Failure(const std::string& path, int code, std::string reason) {
  return {{}, TReadError{path, std::move(reason), code}};
}

TBoundedRead SystemFailure(const std::string& path, int code) {
  return Failure(path, code, std::strerror(code));
}

std::string SizeText(std::size_t bytes) {
  if (bytes % kMiB == 0) return std::to_string(bytes / kMiB) + " MiB";
  return std::to_string(bytes) + " bytes";
}

std::string TooLarge(std::size_t limit, const char* kindName) {
  std::string reason = "larger than " + SizeText(limit);
  if (kindName != nullptr) reason += std::string(", the limit for ") + kindName;
  return reason;
}

const char* FileTypeName(mode_t mode) {
  if (S_ISDIR(mode)) return "a folder";
  if (S_ISCHR(mode)) return "a character device";
  if (S_ISBLK(mode)) return "a block device";
  if (S_ISFIFO(mode)) return "a FIFO";
  if (S_ISSOCK(mode)) return "a socket";
  return "no regular file";
}

// Reads to the end of `fd`, at most limit + 1 bytes, so that a file past the limit is told
// from one that just reaches it.
TBoundedRead ReadAll(int fd, const std::string& label, std::size_t limit, const char* kindName) {
  TBoundedRead result;
  std::array<char, 65536> buffer{};
  for (;;) {
    const ssize_t got = ::read(fd, buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return SystemFailure(label, errno);
    if (got == 0) return result;
    result.bytes.append(buffer.data(), static_cast<std::size_t>(got));
    if (result.bytes.size() > limit) return Failure(label, EFBIG, TooLarge(limit, kindName));
  }
}

// Closes the descriptor it holds on every way out.
class Descriptor {
 public:
  explicit Descriptor(int fd) : _fd(fd) {}
  ~Descriptor() {
    if (_fd >= 0) ::close(_fd);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const { return _fd; }

 private:
  int _fd;
};

TBoundedRead ReadRegularFile(const std::filesystem::path& path, std::size_t limit,
                             const char* kindName) {
  const std::string label = path.string();
  // Non-blocking, so that opening a FIFO without a writer does not wait; the type check
  // below refuses it anyway.
  const Descriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
  if (fd.get() < 0) return SystemFailure(label, errno);
  struct stat status {};
  if (::fstat(fd.get(), &status) != 0) return SystemFailure(label, errno);
  if (!S_ISREG(status.st_mode)) {
    return Failure(label, EINVAL,
                   std::string(FileTypeName(status.st_mode)) + ", not a regular file");
  }
  if (static_cast<unsigned long long>(status.st_size) > limit) {
    return Failure(label, EFBIG, TooLarge(limit, kindName));
  }
  return ReadAll(fd.get(), label, limit, kindName);
}

}  // namespace

std::size_t DefaultReadLimit(TReadKind kind) { return KindLimit(kind).limit; }

std::string TReadError::Message() const { return "cannot read \"" + path + "\": " + reason; }

TBoundedRead ReadBounded(const std::filesystem::path& path, std::size_t limit) {
  return ReadRegularFile(path, limit, nullptr);
}

TBoundedRead ReadBounded(const std::filesystem::path& path, TReadKind kind) {
  return ReadRegularFile(path, KindLimit(kind).limit, KindLimit(kind).name);
}

TBoundedRead ReadBoundedDescriptor(int fd, const std::string& label, std::size_t limit) {
  return ReadAll(fd, label, limit, nullptr);
}

std::size_t Utf8SequenceLength(std::string_view text, std::size_t at) {
  const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(at);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
  if (length == 0 || lead > 0xF4 || at + length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return 0;
  }
  const unsigned char second = byte(at + 1);
  if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0) ||
      (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90)) {
    return 0;
  }
  return length;
}

std::optional<std::size_t> FirstNonUtf8Byte(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const std::size_t length = Utf8SequenceLength(bytes, i);
    if (length == 0) return i;
    i += length;
  }
  return std::nullopt;
}

TBoundedRead TextFromBytes(std::string bytes, const std::string& label) {
  const auto starts = [&bytes](std::string_view mark) { return bytes.starts_with(mark); };
  if (starts("\xFF\xFE") || starts("\xFE\xFF")) {
    std::optional<std::string> text =
        Utf8FromUtf16WithBom(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    if (!text) return Failure(label, EILSEQ, "broken UTF-16 text behind its byte-order mark");
    return {std::move(*text), std::nullopt};
  }
  const std::size_t mark = starts("\xEF\xBB\xBF") ? 3 : 0;
  bytes.erase(0, mark);
  if (const std::optional<std::size_t> offset = FirstNonUtf8Byte(bytes)) {
    return Failure(label, EILSEQ, "no UTF-8 text (byte " + std::to_string(*offset + mark) + ")");
  }
  return {std::move(bytes), std::nullopt};
}

TBoundedRead ReadBoundedText(const std::filesystem::path& path, TReadKind kind) {
  TBoundedRead read = ReadBounded(path, kind);
  if (!read) return read;
  return TextFromBytes(std::move(read.bytes), path.string());
}

}  // namespace harmony::platform
