#include "platform/Log.h"

#include <mutex>
#include <utility>

namespace harmony::platform {
namespace {

struct SharedLog {
  std::mutex lock;
  LogHandler handler;
};

SharedLog& Shared() {
  static SharedLog shared;
  return shared;
}

}  // namespace

void LogLine(std::string_view line) {
  SharedLog& shared = Shared();
  std::lock_guard<std::mutex> guard(shared.lock);
  if (shared.handler) shared.handler(line);
}

LogHandler SetLogHandler(LogHandler handler) {
  SharedLog& shared = Shared();
  std::lock_guard<std::mutex> guard(shared.lock);
  return std::exchange(shared.handler, std::move(handler));
}

}  // namespace harmony::platform
