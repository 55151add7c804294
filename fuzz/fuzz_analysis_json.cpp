// Reads arbitrary text as an analysis result file. Whatever the first reading makes of it,
// the tree must come back unchanged from its own form once that form has settled (the first
// writing rounds positions to two decimals and turns odd probabilities into "Undef").

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>

#include "harmony/analysis/HarmAnlsSignKey.h"

namespace {

std::string Written(const harmony::CHarmAnlsSignKeys& signKeys) {
  std::ostringstream out;
  signKeys.AppendJSONString(out);
  return out.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace harmony;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const CHarmAnlsSignKeys first = CHarmAnlsSignKeys::FromAnalysisJSONString(text);
  const CHarmAnlsSignKeys second = CHarmAnlsSignKeys::FromAnalysisJSONString(Written(first));
  const std::string settled = Written(second);
  if (Written(CHarmAnlsSignKeys::FromAnalysisJSONString(settled)) != settled) std::abort();

  CHarmAnlsSignKeys merged = second;
  merged.MergeAdjacentSameSignKeys();
  merged.MergeAdjacentSameHarmCenters();
  for (CHarmAnlsSignKey& signKey : merged) {
    (void)signKey.HarmCenters.FindMostOccurentHarmCenter();
    for (CHarmAnlsCenter& center : signKey.HarmCenters) center.AnalyseHarmFunctionsOfChords();
  }
  return 0;
}
