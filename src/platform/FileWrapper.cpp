#include "platform/FileWrapper.h"

#include <algorithm>
#include <system_error>

#include "platform/BoundedRead.h"

namespace harmony::platform {

namespace fs = std::filesystem;

std::optional<std::vector<uint8_t>> ReadFileBytes(const fs::path& path) {
  const TBoundedRead read = ReadBounded(path, TReadKind::kGridLibrary);
  if (!read) return std::nullopt;
  return std::vector<uint8_t>(read.bytes.begin(), read.bytes.end());
}

std::optional<std::vector<fs::path>> DirectoryMembers(const fs::path& path) {
  std::error_code ec;
  if (!fs::is_directory(path, ec)) return std::nullopt;
  std::vector<fs::path> members;
  for (fs::directory_iterator it(path, ec), end; !ec && it != end; it.increment(ec)) {
    if (it->is_regular_file(ec)) members.push_back(it->path());
  }
  if (ec) return std::nullopt;
  std::sort(members.begin(), members.end(), [](const fs::path& a, const fs::path& b) {
    const std::string na = a.filename().string(), nb = b.filename().string();
    return na.size() != nb.size() ? na.size() < nb.size() : na < nb;
  });
  return members;
}

}  // namespace harmony::platform
