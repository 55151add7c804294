#pragma once
// UTF-16 text with a byte-order mark, through iconv. Written texts are little-endian behind
// the mark FF FE; read texts may carry either mark and count as big-endian without one.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace harmony::platform {

// Nothing for text that is not valid UTF-8.
std::optional<std::vector<uint8_t>> Utf16WithBomFromUtf8(std::string_view text);
// Nothing for an odd byte count or broken UTF-16.
std::optional<std::string> Utf8FromUtf16WithBom(const uint8_t* bytes, size_t length);

}  // namespace harmony::platform
