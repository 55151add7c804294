#pragma once
// Time for the few places that need it: a monotonic clock reading (seeds, durations) and the
// local date and time in the fixed form of the C library's asctime (reports and logs).

#include <cstdint>
#include <string>

namespace harmony::platform {

// The monotonic clock's reading in its native count (nanoseconds here); it never goes back.
std::uint64_t MonotonicTicks();

// The local date and time as asctime writes it, line feed included:
// "Wed Jun 30 21:49:08 1993\n".
std::string AsctimeNow();

}  // namespace harmony::platform
