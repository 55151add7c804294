#pragma once
// The one way files from outside come in: read whole, but only regular files (or standard
// input when asked for), never more than a limit for their kind, with the path and the
// system's reason when they cannot be read. Text is checked for UTF-8; UTF-16 with a
// byte-order mark is turned into UTF-8.
//
//   const TBoundedRead read = ReadBounded(path, TReadKind::kMusicXml);
//   if (!read) report(read.error->Message());   // "cannot read "x.xml": Permission denied"
//   use(read.bytes);
//
// Failure is a value: nothing here throws (short of running out of memory).

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace harmony::platform {

// What a file holds, for its size limit.
enum class TReadKind {
  kChordList,    // chord lists, chord-string files, annotations: 16 MiB
  kMusicXml,     // plain or compressed MusicXML: 64 MiB
  kGridLibrary,  // guitar grid library files and the package's "GChInfo": 16 MiB
  kMarkovModel,  // Markov model files (the bundled one is 2 MB): 256 MiB
  kNetFile,      // the net's property and weight text files: 16 MiB
};

constexpr std::size_t kMiB = std::size_t{1} << 20;
constexpr std::size_t kMaxChordListBytes = 16 * kMiB;
constexpr std::size_t kMaxMusicXmlBytes = 64 * kMiB;
constexpr std::size_t kMaxGridLibraryBytes = 16 * kMiB;
constexpr std::size_t kMaxMarkovModelBytes = 256 * kMiB;
constexpr std::size_t kMaxNetFileBytes = 16 * kMiB;

std::size_t DefaultReadLimit(TReadKind kind);

struct TReadError {
  std::string path;    // as given; "standard input" for the tool's "-"
  std::string reason;  // the system's words ("No such file or directory") or ours
  int code = 0;        // the errno value: the system's, EFBIG past the limit, EINVAL for no file
  // "cannot read "PATH": REASON"
  std::string Message() const;
};

struct TBoundedRead {
  std::string bytes;
  std::optional<TReadError> error;
  explicit operator bool() const { return !error.has_value(); }
};

// The whole regular file at `path`, refused when it holds more than `limit` bytes. Devices,
// FIFOs, sockets and folders are refused by their type before a byte is read.
TBoundedRead ReadBounded(const std::filesystem::path& path, std::size_t limit);
TBoundedRead ReadBounded(const std::filesystem::path& path, TReadKind kind);
// Everything an open descriptor gives until its end (standard input: a pipe or a terminal
// is fine), refused past `limit` bytes. `label` names it in errors.
TBoundedRead ReadBoundedDescriptor(int fd, const std::string& label, std::size_t limit);

// --- Text

// The length of the well-formed UTF-8 sequence at `at` (1..4), or 0 for a stray continuation
// byte, a cut sequence, an overlong form, a surrogate or a value beyond U+10FFFF.
std::size_t Utf8SequenceLength(std::string_view text, std::size_t at);
// The offset of the first byte that does not begin a well-formed sequence, or nothing.
std::optional<std::size_t> FirstNonUtf8Byte(std::string_view bytes);
// `bytes` as UTF-8 text: UTF-16 behind its byte-order mark is converted, a UTF-8 byte-order
// mark is dropped, anything else that is not UTF-8 is an error naming the byte offset.
TBoundedRead TextFromBytes(std::string bytes, const std::string& label);
// ReadBounded followed by TextFromBytes.
TBoundedRead ReadBoundedText(const std::filesystem::path& path, TReadKind kind);

}  // namespace harmony::platform
