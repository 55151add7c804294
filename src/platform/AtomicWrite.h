#pragma once
// Atomic replacement of files and directories: the new content goes to a temporary name in
// the same directory, is flushed to disk and then renamed over the target, so that a reader
// sees either the old or the new content, never a part.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace harmony::platform {

bool WriteFileAtomically(const std::filesystem::path& path, const uint8_t* bytes, size_t length);

// Writes a directory of regular files. An existing target is replaced as a whole.
bool WriteDirectoryAtomically(
    const std::filesystem::path& path,
    const std::vector<std::pair<std::string, std::vector<uint8_t>>>& members);

}  // namespace harmony::platform
