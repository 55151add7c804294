#pragma once
// Reading numbers from the text of MusicXML elements and attributes the forgiving way a
// notation program reads them: leading blanks skipped, an optional sign, then digits up to
// the first other character; 0 when there are none, and the limits of a 32-bit integer for
// numbers beyond them.

#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
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

// The same for decimal numbers ("1.5", "-0.25", "3e2"); 0.0 when no number begins the text.
inline double DoubleValueOfText(std::string_view text) {
  std::size_t i = text.find_first_not_of(" \t\n\r\f\v");
  if (i == std::string_view::npos) return 0.0;
  if (text[i] == '+') ++i;
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data() + i, text.data() + text.size(), value,
                                            std::chars_format::general);
  (void)end;
  return error == std::errc() ? value : 0.0;
}

// ASCII letters lowered; other characters stay as they are.
inline std::string LowercaseText(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lowered;
}

}  // namespace harmony::musicxml
