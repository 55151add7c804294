#pragma once
// Reading a file or a directory of files as bytes: the directory wrapper of the database
// package.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace harmony::platform {

// A regular file of at most kMaxGridLibraryBytes (BoundedRead.h, which also tells why a read
// failed); nothing otherwise.
std::optional<std::vector<uint8_t>> ReadFileBytes(const std::filesystem::path& path);

// The regular files directly inside a directory, ordered by name length and then by name (so
// "0x2" comes before "0x10"); nothing when the path is no readable directory.
std::optional<std::vector<std::filesystem::path>> DirectoryMembers(
    const std::filesystem::path& path);

}  // namespace harmony::platform
