#pragma once
// Small text helpers for trace output.

#include <cstddef>
#include <string>

namespace harmony {

// "true" or "false".
const char* _BoolStr(bool value);
// "disabled" when the setting is off, otherwise _BoolStr of its value.
const char* _EnabledBoolStr(bool value, bool enabled);
// The number of code points of a UTF-8 text (bytes that don't continue a sequence).
std::size_t _UTF8StringLength(const std::string& text);

}  // namespace harmony
