// Reads arbitrary bytes as JSON and then as the dictionary of a spelled key.

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string_view>

#include "harmony/pitch/KeyEnh.h"
#include "platform/JsonReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto dict = harmony::platform::ParseJson(text);
  if (!dict) return 0;
  const harmony::CKeyEnh key =
      harmony::CKeyEnh::JSONDeserializer_Helper::CKeyEnhFromJSONDictionary(*dict);
  std::ostringstream out;
  key.AppendJSONString(out);
  (void)key.TraceString();
  return 0;
}
