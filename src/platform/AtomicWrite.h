#pragma once
// Atomic replacement of files and directories: the new content goes to a temporary name in
// the same directory, is flushed to disk and then renamed over the target, so that a reader
// sees either the old or the new content, never a part.
//
// Only what the writer made is ever replaced: a file replaces a regular file (keeping its
// permissions and, where the system allows, its owner), never a symbolic link, FIFO, device
// or directory, and never a file that nobody may write. When a write fails, `why` (if given)
// receives the reason, e.g. "is a symbolic link" or the system's "Permission denied".

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace harmony::platform {

bool WriteFileAtomically(const std::filesystem::path& path, const uint8_t* bytes, size_t length,
                         std::string* why = nullptr);

// Writes a directory of regular files. An existing target (a real directory, not a link to
// one) is replaced as a whole.
bool WriteDirectoryAtomically(
    const std::filesystem::path& path,
    const std::vector<std::pair<std::string, std::vector<uint8_t>>>& members,
    std::string* why = nullptr);

// Why `path` may not be replaced by a regular file ("is a directory", "is read-only (mode
// 0444)", ...), or nothing when it may: it is a writable regular file or does not exist.
std::string ReasonNotToReplaceFile(const std::filesystem::path& path);

}  // namespace harmony::platform
