#pragma once
// What the commands that analyse a chord list read from the command line: the way of finding
// centers by its name, and the sign key a user may give.

#include <array>
#include <string>

#include "Command.h"
#include "harmony/analysis/HarmAnlsSignKey.h"
#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/chords/SignKey.h"

namespace harmony::tool {

struct TMethodName {
  const char* name;
  CHarmonicAnalyse::TAnalyse analyse;
};

inline constexpr std::array<TMethodName, 4> kAnalyseMethods{{
    {"none", CHarmonicAnalyse::kAnalyseNone},
    {"tonic", CHarmonicAnalyse::kAnalyseTonicProgressions},
    {"cadence", CHarmonicAnalyse::kAnalyseCadenceProgressions},
    {"weights", CHarmonicAnalyse::kAnalyseCenterWeights},
}};

inline CHarmonicAnalyse::TAnalyse AnalyseMethodFromName(const std::string& name) {
  for (const TMethodName& method : kAnalyseMethods) {
    if (name == method.name) return method.analyse;
  }
  return CHarmonicAnalyse::kAnalyseNone;
}

// The sign key the text names ("G", "Em", "Bb minor"), starting at the beginning of the piece;
// none for an empty text, InputError for anything else.
inline CHarmAnlsSignKeys GivenSignKeys(const std::string& text, const CChordNamePrefs& prefs) {
  if (text.empty()) return {};
  const CSignKeyLite signKey(text, prefs);
  if (signKey.IsUndef()) {
    throw InputError("\"" + text + "\" is not a key (a root with major or minor, e.g. G, Em)");
  }
  return {CHarmAnlsSignKey(kHarmAnlsUndefDouble, 0.0, signKey)};
}

}  // namespace harmony::tool
