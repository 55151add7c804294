#pragma once
// The analysis tree printed for a person: sign keys, centers with their ranges, and each chord
// with its position, length and distances to the center. Shared by analyse and the demo.

#include <string>

#include "harmony/analysis/HarmonicAnalyse.h"
#include "harmony/pitch/ChordNamePrefs.h"

namespace harmony::tool {

void PrintAnalysisTree(const CHarmonicAnalyse& analyse, const CChordNamePrefs& prefs);

// A functional name as the tool shows it: the library marks a remark for the host's own
// display with "##", shown here in parentheses ("VIIdim##in minor" is "VIIdim (in minor)").
inline std::string FunctionDisplayName(const std::string& name) {
  const std::size_t mark = name.find("##");
  if (mark == std::string::npos) return name;
  const std::string remark = name.substr(mark + 2);
  return name.substr(0, mark) + (remark.empty() ? "" : " (" + remark + ")");
}

}  // namespace harmony::tool
