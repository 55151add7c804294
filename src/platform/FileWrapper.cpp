#include "platform/FileWrapper.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>

namespace harmony::platform {

namespace fs = std::filesystem;

std::optional<std::vector<uint8_t>> ReadFileBytes(const fs::path& path) {
  std::error_code ec;
  if (!fs::is_regular_file(path, ec)) return std::nullopt;
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)),
                             std::istreambuf_iterator<char>());
  if (in.bad()) return std::nullopt;
  return bytes;
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
