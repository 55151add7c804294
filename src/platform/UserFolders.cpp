#include "platform/UserFolders.h"

#include <dlfcn.h>
#include <link.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <system_error>

#include "harmony/DataFolder.h"

namespace harmony {

namespace fs = std::filesystem;

namespace {

fs::path HomeFolder() {
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') return home;
  if (const passwd* entry = ::getpwuid(::getuid()); entry != nullptr && entry->pw_dir != nullptr) {
    return entry->pw_dir;
  }
  return fs::path("/");
}

std::mutex gDataFolderMutex;
fs::path gHostDataFolder;

// The file that holds this code: the shared library, or the program it is linked into (whose
// entry in the loader's list has no name).
fs::path ModuleFile() {
  std::error_code ec;
  const fs::path program = fs::read_symlink("/proc/self/exe", ec);
  Dl_info info{};
  link_map* map = nullptr;
  if (::dladdr1(reinterpret_cast<void*>(&DataFolder), &info, reinterpret_cast<void**>(&map),
                RTLD_DL_LINKMAP) == 0 ||
      map == nullptr || map->l_name == nullptr || *map->l_name == '\0') {
    return program;
  }
  const fs::path module = fs::weakly_canonical(map->l_name, ec);
  return ec ? program : module;
}

bool IsInside(const fs::path& path, const fs::path& folder) {
  const auto [end, _] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
  return end == folder.end();
}

// The installed data beside the module: the install layout's relative path from the library
// folder (for a shared library) or from the program folder (for a static one). Inside the
// build tree, where nothing is installed yet, the source tree's data stands in.
fs::path FoundDataFolder() {
  std::error_code ec;
  const fs::path module = ModuleFile();
  const fs::path folder = module.parent_path();
  for (const char* relative : {HARMONY_DATA_FROM_LIBDIR, HARMONY_DATA_FROM_BINDIR}) {
    const fs::path candidate = (folder / relative).lexically_normal();
    if (fs::is_directory(candidate, ec)) return candidate;
  }
  if (IsInside(module, fs::weakly_canonical(HARMONY_BUILD_DIR, ec)) &&
      fs::is_directory(HARMONY_SOURCE_DATA_DIR, ec)) {
    return HARMONY_SOURCE_DATA_DIR;
  }
  return {};
}

}  // namespace

fs::path DataFolder() {
  {
    const std::lock_guard<std::mutex> lock(gDataFolderMutex);
    if (!gHostDataFolder.empty()) return gHostDataFolder;
  }
  static const fs::path found = FoundDataFolder();
  return found;
}

void SetDataFolder(const fs::path& folder) {
  const std::lock_guard<std::mutex> lock(gDataFolderMutex);
  gHostDataFolder = folder;
}

namespace platform {

fs::path UserDataFolder() {
  if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg != nullptr && *xdg == '/') return xdg;
  return HomeFolder() / ".local" / "share";
}

std::vector<fs::path> ResourceFolders() {
  std::error_code ec;
  const fs::path folder = DataFolder();
  if (folder.empty() || !fs::is_directory(folder, ec)) return {};
  return {folder};
}

fs::path ExpandTilde(const std::string& path) {
  if (path == "~") return HomeFolder();
  if (path.rfind("~/", 0) == 0) return HomeFolder() / path.substr(2);
  return path;
}

}  // namespace platform

}  // namespace harmony
