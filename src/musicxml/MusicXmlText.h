#pragma once
// Reading numbers from the text of MusicXML elements and attributes the forgiving way a
// notation program reads them: leading blanks skipped, an optional sign, then digits up to
// the first other character; 0 when there are none, and the limits of a 32-bit integer for
// numbers beyond them.

#include <cstdint>
#include <limits>
#include <string_view>

namespace harmony::musicxml {

inline std::int32_t IntValueOfText(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || text[i] == '\n' ||
                             text[i] == '\r' || text[i] == '\f' || text[i] == '\v')) {
    ++i;
  }
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  long long value = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
    value = value * 10 + (text[i] - '0');
    if (value > std::numeric_limits<std::int32_t>::max()) {
      return negative ? std::numeric_limits<std::int32_t>::min()
                      : std::numeric_limits<std::int32_t>::max();
    }
  }
  return static_cast<std::int32_t>(negative ? -value : value);
}

}  // namespace harmony::musicxml
