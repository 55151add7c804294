#include "platform/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <system_error>

namespace harmony::platform {

namespace fs = std::filesystem;

namespace {
fs::path HomeFolder() {
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') return home;
  if (const passwd* entry = ::getpwuid(::getuid()); entry != nullptr && entry->pw_dir != nullptr) {
    return entry->pw_dir;
  }
  return fs::path("/");
}
}  // namespace

fs::path UserDataFolder() {
  if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg != nullptr && *xdg == '/') return xdg;
  return HomeFolder() / ".local" / "share";
}

std::vector<fs::path> ResourceFolders() {
  std::vector<fs::path> folders;
  std::error_code ec;
  for (const char* candidate : {HARMONY_INSTALLED_DATA_DIR, HARMONY_DATA_DIR}) {
    if (fs::is_directory(candidate, ec)) folders.emplace_back(candidate);
  }
  return folders;
}

fs::path ExpandTilde(const std::string& path) {
  if (path == "~") return HomeFolder();
  if (path.rfind("~/", 0) == 0) return HomeFolder() / path.substr(2);
  return path;
}

}  // namespace harmony::platform
