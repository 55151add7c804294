#pragma once
// The places of the user's data and of the library's bundled resources.

#include <filesystem>
#include <string>
#include <vector>

namespace harmony::platform {

// $XDG_DATA_HOME, or ~/.local/share when it is unset or empty.
std::filesystem::path UserDataFolder();
// The library's data folder (DataFolder in harmony/DataFolder.h) when it exists.
std::vector<std::filesystem::path> ResourceFolders();
// A leading "~" or "~/" stands for the home folder.
std::filesystem::path ExpandTilde(const std::string& path);

}  // namespace harmony::platform
