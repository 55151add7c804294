// Reads arbitrary text as JSON and then as a chord with its length, by the model file's reader
// and by the analysis readers of chords with a length or a position. The model file's form
// that a read chord writes reads back as the same chord, its length to two decimals.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string_view>

#include "harmony/analysis/HarmAnlsChord.h"
#include "platform/JsonReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace harmony;
  using Helper = CHarmAnlsChordWithLength::JSONDeserializer_Helper;
  const auto dict =
      platform::ParseJson(std::string_view(reinterpret_cast<const char*>(data), size));
  if (!dict) return 0;
  const CHarmAnlsChordWithLength model = Helper::CHarmAnlsChordWithLengthFromJSONDictionary(*dict);
  std::ostringstream written;
  model.AppendJSONString(written);
  // The form is the model file's, which is read relaxed.
  const auto again = platform::ParseRelaxedJson(written.str());
  if (!again) std::abort();
  const JsonDict* inner = platform::JsonMember(*again, "CHarmAnlsChordWithLength");
  const CHarmAnlsChordWithLength back =
      Helper::CHarmAnlsChordWithLengthFromJSONDictionary(inner != nullptr ? *inner : *again);
  // Lengths are written with two decimals.
  const double drift = back.Length - model.Length;
  if (!(static_cast<const CHarmAnlsChord&>(back) == model) ||
      (std::isfinite(model.Length) && std::fabs(model.Length) < 1e12 && std::fabs(drift) > 0.006)) {
    std::abort();
  }

  (void)CHarmAnls::ChordWithLength::FromDictionary(*dict).TraceString();
  (void)CHarmAnls::ChordWithPos::FromDictionary(*dict).TraceString();
  (void)CHarmAnls::Chord::FromDictionary(*dict).TraceString();
  (void)model.TraceString();
  return 0;
}
