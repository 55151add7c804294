#include "platform/TraceOut.h"

#include <mutex>

namespace harmony::platform {

namespace {
std::recursive_mutex& TraceLock() {
  static std::recursive_mutex lock;
  return lock;
}
}  // namespace

void TraceOutContainerBegin(std::ostream& out) { out << "{ "; }
void TraceOutContainerBeginEndl(std::ostream& out) { out << "{\n"; }
void TraceOutContainerEnd(std::ostream& out) { out << " }"; }
void TraceOutContainerEndl(std::ostream& out) { out << '\n'; }
void TraceOutContainerEndEndl(std::ostream& out) { out << "}\n"; }

void TraceOutContainerBeginThreadSafe(std::ostream& out) {
  TraceLock().lock();
  TraceOutContainerBegin(out);
}

void TraceOutContainerEndThreadSafe(std::ostream& out) {
  TraceOutContainerEnd(out);
  TraceLock().unlock();
}

}  // namespace harmony::platform
