#include "platform/Clock.h"

#include <chrono>
#include <ctime>

namespace harmony::platform {

std::uint64_t MonotonicTicks() {
  return static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
}

std::string AsctimeNow() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char text[64] = {};  // asctime_r needs at least 26 bytes
  if (asctime_r(&local, text) == nullptr) return "\n";
  return text;
}

}  // namespace harmony::platform
