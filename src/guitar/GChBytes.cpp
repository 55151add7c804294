#include "guitar/GChBytes.h"

#include <cstring>

#include "platform/Utf16.h"

namespace harmony::guitar_detail {

std::optional<std::vector<uint8_t>> EncodeTextField(const std::string& text) {
  std::vector<uint8_t> field(4, 0);
  if (!text.empty()) {
    auto utf16 = platform::Utf16WithBomFromUtf8(text);
    if (!utf16) return std::nullopt;
    field.insert(field.end(), utf16->begin(), utf16->end());
  }
  WriteBE32(field.data(), static_cast<uint32_t>(field.size()));
  return field;
}

size_t TextFieldSize(const std::string& text) {
  if (text.empty()) return 4;
  bool ascii = true;
  for (unsigned char c : text) ascii = ascii && c < 0x80;
  if (ascii) return 4 + 2 + 2 * text.size();
  auto field = EncodeTextField(text);
  return field ? field->size() : 0;
}

std::optional<DecodedTextField> DecodeTextField(const uint8_t* p, size_t available) {
  if (available < 4) return std::nullopt;
  const uint32_t length = ReadBE32(p);
  if (length < 4 || length > available) return std::nullopt;
  if (length == 4) return DecodedTextField{std::string(), 4};
  auto text = platform::Utf8FromUtf16WithBom(p + 4, length - 4);
  if (!text) return std::nullopt;
  return DecodedTextField{std::move(*text), length};
}

}  // namespace harmony::guitar_detail
