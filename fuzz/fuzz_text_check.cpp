// Arbitrary bytes through the text check of the bounded reader: what it accepts is UTF-8,
// UTF-8 input without a byte-order mark comes back unchanged, and a refusal names a byte
// before which everything was well-formed.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/BoundedRead.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace harmony::platform;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const TBoundedRead text = TextFromBytes(bytes, "fuzz");
  const bool marked = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") ||
                      bytes.starts_with("\xEF\xBB\xBF");
  const auto offset = FirstNonUtf8Byte(bytes);
  if (text) {
    if (FirstNonUtf8Byte(text.bytes)) std::abort();
    if (!marked && text.bytes != bytes) std::abort();
  } else if (!marked) {
    if (!offset || FirstNonUtf8Byte(bytes.substr(0, *offset)) ||
        Utf8SequenceLength(bytes, *offset) != 0) {
      std::abort();
    }
  }
  if (!marked && static_cast<bool>(text) == offset.has_value()) std::abort();
  return 0;
}
