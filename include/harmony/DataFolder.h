#pragma once
// Where the library finds its bundled data: the factory chord grids, trained tables and default
// models. The folder is found at run time beside the installed library: <prefix>/share/harmony
// for a shared library in <prefix>/lib, or for a program in <prefix>/bin that holds a static
// one, so an install under any prefix finds its own data. A host may name another folder; the
// library itself reads no environment variable.

#include <filesystem>

namespace harmony {

// The folder set by SetDataFolder, else the installed one beside the library, else (for
// programs inside the build tree) the source tree's data folder; empty when none exists.
std::filesystem::path DataFolder();

// A host's own place of the data; an empty path returns to the search above.
void SetDataFolder(const std::filesystem::path& folder);

}  // namespace harmony
