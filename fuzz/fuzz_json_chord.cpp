// Reads arbitrary text as a chord's JSON, writes the chord's JSON and reads that back: the
// chord must survive its own form unchanged, whatever the first reading made of the input.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string_view>

#include "harmony/chords/ChordLite.h"
#include "platform/JsonReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace harmony;
  const auto dict =
      platform::ParseJson(std::string_view(reinterpret_cast<const char*>(data), size));
  if (!dict) return 0;
  const CChordLite first = CChordLite::FromDictionary(*dict);

  std::ostringstream written;
  first.AppendJSONString(written);
  const auto again = platform::ParseJson(written.str());
  if (!again) std::abort();  // our own form must be JSON
  const CChordLite second = CChordLite::FromDictionary(*again);
  if (!(second == first) || (second <=> first) != 0) std::abort();

  // The other readers of the fields must cope with whatever keys were read.
  CChordLite decoded;
  decoded.SetFromChordHashCode(first.GetChordHashCode());
  (void)first.TraceString();
  (void)first.KeyNrSet();
  (void)first.BasicChordForNaming();
  return 0;
}
