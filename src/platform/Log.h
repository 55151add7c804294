#pragma once
// The platform log: the few diagnostic lines the library writes outside of traces (an
// evidence window the Markov model has never seen). Nothing is written until a host installs
// a handler, so normal operation stays silent.

#include <functional>
#include <string_view>

namespace harmony::platform {

using LogHandler = std::function<void(std::string_view line)>;

// Hands the line to the installed handler, if any.
void LogLine(std::string_view line);

// Installs `handler` (an empty one stops logging) and returns the one before.
LogHandler SetLogHandler(LogHandler handler);

}  // namespace harmony::platform
