// Reads arbitrary text as JSON and then as each form of a sign key (light, without spelling,
// heavy). Whatever a reader makes of the input, the form it writes reads back as the same
// sign key.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string_view>

#include "harmony/chords/SignKey.h"
#include "harmony/chords/SignKeyHeavy.h"
#include "platform/JsonReader.h"

namespace {

using namespace harmony;

template <class TSignKey>
void CheckRoundTrip(const JsonDict& dict) {
  const TSignKey first = TSignKey::FromJSONDict(dict);
  std::ostringstream written;
  first.AppendJSONString(written);
  const auto again = platform::ParseJson(written.str());
  if (!again) std::abort();  // our own form must be JSON
  if (!(TSignKey::FromJSONDict(*again) == first)) std::abort();
  (void)first.TraceString();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto dict =
      platform::ParseJson(std::string_view(reinterpret_cast<const char*>(data), size));
  if (!dict) return 0;
  CheckRoundTrip<CSignKeyLite>(*dict);
  CheckRoundTrip<CSignKeyNoEnh>(*dict);
  CheckRoundTrip<CSignKeyHeavy>(*dict);
  return 0;
}
