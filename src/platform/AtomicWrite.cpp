#include "platform/AtomicWrite.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <system_error>

namespace harmony::platform {

namespace fs = std::filesystem;

namespace {

// A name beside `path` that no other writer of this process or another one picks.
fs::path TemporarySibling(const fs::path& path) {
  static std::atomic<unsigned long> counter{0};
  const std::string suffix =
      ".tmp." + std::to_string(::getpid()) + "." + std::to_string(counter.fetch_add(1));
  return path.parent_path() / (path.filename().string() + suffix);
}

bool WriteAndSync(const fs::path& path, const uint8_t* bytes, size_t length) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (fd < 0) return false;
  bool ok = true;
  while (length > 0) {
    const ssize_t written = ::write(fd, bytes, length);
    if (written < 0) {
      if (errno == EINTR) continue;
      ok = false;
      break;
    }
    bytes += written;
    length -= static_cast<size_t>(written);
  }
  if (ok && ::fsync(fd) != 0) ok = false;
  if (::close(fd) != 0) ok = false;
  return ok;
}

}  // namespace

bool WriteFileAtomically(const fs::path& path, const uint8_t* bytes, size_t length) {
  const fs::path temporary = TemporarySibling(path);
  std::error_code ec;
  if (!WriteAndSync(temporary, bytes, length)) {
    fs::remove(temporary, ec);
    return false;
  }
  fs::rename(temporary, path, ec);
  if (ec) {
    fs::remove(temporary, ec);
    return false;
  }
  return true;
}

bool WriteDirectoryAtomically(
    const fs::path& path,
    const std::vector<std::pair<std::string, std::vector<uint8_t>>>& members) {
  std::error_code ec;
  const fs::path target = path.has_filename() ? path : path.parent_path();
  if (!target.parent_path().empty()) fs::create_directories(target.parent_path(), ec);
  const fs::path temporary = TemporarySibling(target);
  if (!fs::create_directory(temporary, ec)) return false;
  for (const auto& [name, bytes] : members) {
    if (name.empty() || name.find('/') != std::string::npos ||
        !WriteAndSync(temporary / name, bytes.data(), bytes.size())) {
      fs::remove_all(temporary, ec);
      return false;
    }
  }
  // A directory cannot be renamed over a non-empty one: the old one steps aside first.
  fs::path old;
  if (fs::exists(target, ec)) {
    old = TemporarySibling(target);
    fs::rename(target, old, ec);
    if (ec) {
      fs::remove_all(temporary, ec);
      return false;
    }
  }
  fs::rename(temporary, target, ec);
  if (ec) {
    if (!old.empty()) fs::rename(old, target, ec);
    fs::remove_all(temporary, ec);
    return false;
  }
  if (!old.empty()) fs::remove_all(old, ec);
  return true;
}

}  // namespace harmony::platform
