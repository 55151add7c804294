#pragma once
// Byte helpers of the library file format: big-endian integers and text fields (a four-byte
// big-endian length that counts itself, then UTF-16 with a byte-order mark; 4 alone means no
// text).

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace harmony::guitar_detail {

inline uint32_t ReadBE32(const uint8_t* p) {
  return uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | uint32_t{p[3]};
}
inline uint16_t ReadBE16(const uint8_t* p) { return static_cast<uint16_t>(p[0] << 8 | p[1]); }
inline void WriteBE32(uint8_t* p, uint32_t v) {
  p[0] = static_cast<uint8_t>(v >> 24);
  p[1] = static_cast<uint8_t>(v >> 16);
  p[2] = static_cast<uint8_t>(v >> 8);
  p[3] = static_cast<uint8_t>(v);
}
inline void WriteBE16(uint8_t* p, uint16_t v) {
  p[0] = static_cast<uint8_t>(v >> 8);
  p[1] = static_cast<uint8_t>(v);
}

// The encoded field of a text, or nothing when it cannot be encoded.
std::optional<std::vector<uint8_t>> EncodeTextField(const std::string& text);
// The size of the field of a text, 0 when it cannot be encoded.
size_t TextFieldSize(const std::string& text);

struct DecodedTextField {
  std::string text;
  size_t fieldSize;
};
// Reads a field at `p` with `available` bytes behind it. Nothing when fewer than 4 bytes are
// there, the length is below 4 or above `available`, or the text cannot be decoded.
std::optional<DecodedTextField> DecodeTextField(const uint8_t* p, size_t available);

}  // namespace harmony::guitar_detail
