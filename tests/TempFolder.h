#pragma once
// A temporary folder of a test, removed at the end.

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <system_error>

namespace harmony::testing {

class TempFolder {
 public:
  TempFolder() {
    static std::atomic<int> counter{0};
    mPath = std::filesystem::temp_directory_path() /
            ("harmony-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(mPath);
    std::filesystem::create_directories(mPath);
  }
  ~TempFolder() {
    std::error_code ec;
    std::filesystem::remove_all(mPath, ec);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  const std::filesystem::path& path() const { return mPath; }

 private:
  std::filesystem::path mPath;
};

}  // namespace harmony::testing
