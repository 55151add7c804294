#include "platform/AtomicWrite.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
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

void SetReason(std::string* why, const std::string& reason) {
  if (why != nullptr) *why = reason;
}

std::string SystemReason(int error) { return std::generic_category().message(error); }

// What stands at a path, by its file type (links are not followed).
std::string KindOfNonRegular(mode_t mode) {
  const char* kind = S_ISLNK(mode)                    ? "a symbolic link"
                     : S_ISDIR(mode)                  ? "a directory"
                     : S_ISFIFO(mode)                 ? "a FIFO"
                     : S_ISSOCK(mode)                 ? "a socket"
                     : S_ISCHR(mode) || S_ISBLK(mode) ? "a device"
                                                      : "something unknown";
  return std::string("is ") + kind + ", not a regular file";
}

// Whether the writer may change the file as its permissions say. The super-user counts as
// the owner, so that a file its owner made read-only stays so for an administrator too.
bool PermitsWriting(const struct stat& info) {
  if (::geteuid() == 0 || ::geteuid() == info.st_uid) return (info.st_mode & S_IWUSR) != 0;
  if (::getegid() == info.st_gid) return (info.st_mode & S_IWGRP) != 0;
  return (info.st_mode & S_IWOTH) != 0;
}

// Writes `bytes` to a new file at `path`. It takes the permissions and, when allowed, the
// owner of `like`; without one, the permissions the umask leaves of 0666.
bool WriteAndSync(const fs::path& path, const uint8_t* bytes, size_t length,
                  const struct stat* like, std::string* why) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fd < 0) {
    SetReason(why, SystemReason(errno));
    return false;
  }
  bool ok = true;
  while (ok && length > 0) {
    const ssize_t written = ::write(fd, bytes, length);
    if (written < 0) {
      if (errno == EINTR) continue;
      SetReason(why, SystemReason(errno));
      ok = false;
      break;
    }
    bytes += written;
    length -= static_cast<size_t>(written);
  }
  // The owner can only be given away by the super-user: elsewhere the file stays the writer's.
  if (ok && like != nullptr && (like->st_uid != ::geteuid() || like->st_gid != ::getegid())) {
    [[maybe_unused]] const int ignored = ::fchown(fd, like->st_uid, like->st_gid);
  }
  if (ok && like != nullptr && ::fchmod(fd, like->st_mode & 07777) != 0) {
    SetReason(why, SystemReason(errno));
    ok = false;
  }
  if (ok && ::fsync(fd) != 0) {
    SetReason(why, SystemReason(errno));
    ok = false;
  }
  if (::close(fd) != 0 && ok) {
    SetReason(why, SystemReason(errno));
    ok = false;
  }
  return ok;
}

}  // namespace

std::string ReasonNotToReplaceFile(const fs::path& path) {
  struct stat info {};
  if (::lstat(path.c_str(), &info) != 0) {
    return errno == ENOENT ? std::string() : SystemReason(errno);
  }
  if (!S_ISREG(info.st_mode)) return KindOfNonRegular(info.st_mode);
  if (!PermitsWriting(info)) {
    char mode[8];
    std::snprintf(mode, sizeof mode, "%04o", static_cast<unsigned>(info.st_mode & 07777));
    return std::string("is read-only (mode ") + mode + ")";
  }
  return {};
}

bool WriteFileAtomically(const fs::path& path, const uint8_t* bytes, size_t length,
                         std::string* why) {
  if (const std::string reason = ReasonNotToReplaceFile(path); !reason.empty()) {
    SetReason(why, reason);
    return false;
  }
  struct stat old {};
  const bool replaces = ::lstat(path.c_str(), &old) == 0;
  const fs::path temporary = TemporarySibling(path);
  std::error_code ec;
  if (!WriteAndSync(temporary, bytes, length, replaces ? &old : nullptr, why)) {
    fs::remove(temporary, ec);
    return false;
  }
  fs::rename(temporary, path, ec);
  if (ec) {
    SetReason(why, ec.message());
    fs::remove(temporary, ec);
    return false;
  }
  return true;
}

bool WriteDirectoryAtomically(
    const fs::path& path, const std::vector<std::pair<std::string, std::vector<uint8_t>>>& members,
    std::string* why) {
  std::error_code ec;
  const fs::path target = path.has_filename() ? path : path.parent_path();
  const fs::file_status status = fs::symlink_status(target, ec);
  if (fs::exists(status) && !fs::is_directory(status)) {
    struct stat info {};
    ::lstat(target.c_str(), &info);
    SetReason(why, KindOfNonRegular(info.st_mode));
    return false;
  }
  if (!target.parent_path().empty()) fs::create_directories(target.parent_path(), ec);
  const fs::path temporary = TemporarySibling(target);
  if (!fs::create_directory(temporary, ec)) {
    SetReason(why, ec ? ec.message() : "cannot make a folder beside it");
    return false;
  }
  for (const auto& [name, bytes] : members) {
    if (name.empty() || name.find('/') != std::string::npos) {
      SetReason(why, "a member has no usable name");
      fs::remove_all(temporary, ec);
      return false;
    }
    if (!WriteAndSync(temporary / name, bytes.data(), bytes.size(), nullptr, why)) {
      fs::remove_all(temporary, ec);
      return false;
    }
  }
  // A directory cannot be renamed over a non-empty one: the old one steps aside first.
  fs::path old;
  if (fs::exists(status)) {
    old = TemporarySibling(target);
    fs::rename(target, old, ec);
    if (ec) {
      SetReason(why, ec.message());
      fs::remove_all(temporary, ec);
      return false;
    }
  }
  fs::rename(temporary, target, ec);
  if (ec) {
    SetReason(why, ec.message());
    if (!old.empty()) fs::rename(old, target, ec);
    fs::remove_all(temporary, ec);
    return false;
  }
  if (!old.empty()) fs::remove_all(old, ec);
  return true;
}

}  // namespace harmony::platform
