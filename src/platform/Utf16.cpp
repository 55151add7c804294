#include "platform/Utf16.h"

#include <iconv.h>

#include <cerrno>

namespace harmony::platform {

namespace {

// One iconv conversion, opened per call: the converters are cached by the C library, and the
// common ASCII texts never get here.
std::optional<std::string> Convert(const char* to, const char* from, const char* in, size_t size) {
  iconv_t cd = iconv_open(to, from);
  if (cd == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
  std::string out(size * 2 + 16, '\0');
  char* inPtr = const_cast<char*>(in);
  size_t inLeft = size;
  char* outPtr = out.data();
  size_t outLeft = out.size();
  bool ok = true;
  while (inLeft > 0) {
    if (iconv(cd, &inPtr, &inLeft, &outPtr, &outLeft) != static_cast<size_t>(-1)) continue;
    if (errno != E2BIG) {
      ok = false;
      break;
    }
    const size_t used = static_cast<size_t>(outPtr - out.data());
    out.resize(out.size() * 2);
    outPtr = out.data() + used;
    outLeft = out.size() - used;
  }
  if (ok && iconv(cd, nullptr, nullptr, &outPtr, &outLeft) == static_cast<size_t>(-1)) ok = false;
  iconv_close(cd);
  if (!ok) return std::nullopt;
  out.resize(static_cast<size_t>(outPtr - out.data()));
  return out;
}

bool IsAscii(std::string_view text) {
  for (unsigned char c : text) {
    if (c >= 0x80) return false;
  }
  return true;
}

}  // namespace

std::optional<std::vector<uint8_t>> Utf16WithBomFromUtf8(std::string_view text) {
  std::vector<uint8_t> out{0xFF, 0xFE};
  if (IsAscii(text)) {
    out.reserve(2 + text.size() * 2);
    for (unsigned char c : text) {
      out.push_back(c);
      out.push_back(0);
    }
    return out;
  }
  auto converted = Convert("UTF-16LE", "UTF-8", text.data(), text.size());
  if (!converted) return std::nullopt;
  out.insert(out.end(), converted->begin(), converted->end());
  return out;
}

std::optional<std::string> Utf8FromUtf16WithBom(const uint8_t* bytes, size_t length) {
  if (length % 2 != 0) return std::nullopt;
  bool bigEndian = true;
  if (length >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE) {
    bigEndian = false;
    bytes += 2;
    length -= 2;
  } else if (length >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF) {
    bytes += 2;
    length -= 2;
  }
  std::string ascii;
  ascii.reserve(length / 2);
  for (size_t i = 0; i < length; i += 2) {
    const unsigned unit =
        bigEndian ? (bytes[i] << 8 | bytes[i + 1]) : (bytes[i + 1] << 8 | bytes[i]);
    if (unit >= 0x80) {
      return Convert("UTF-8", bigEndian ? "UTF-16BE" : "UTF-16LE",
                     reinterpret_cast<const char*>(bytes), length);
    }
    ascii.push_back(static_cast<char>(unit));
  }
  return ascii;
}

}  // namespace harmony::platform
