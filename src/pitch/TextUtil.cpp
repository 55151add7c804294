#include "harmony/pitch/TextUtil.h"

namespace harmony {

const char* _BoolStr(bool value) { return value ? "true" : "false"; }

const char* _EnabledBoolStr(bool value, bool enabled) {
  return enabled ? _BoolStr(value) : "disabled";
}

std::size_t _UTF8StringLength(const std::string& text) {
  std::size_t count = 0;
  for (const char c : text) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++count;
  }
  return count;
}

}  // namespace harmony
