// The progressions the README analyses, each against the analysis result stored beside the
// tests. A change in how centers are found shows here as a changed file, reviewed on purpose:
// run with HARMONY_UPDATE_FIXTURES=1 to write the new results, then read the diff.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "TestPaths.h"
#include "harmony/analysis/ChordStringParser.h"
#include "harmony/analysis/HarmonicAnalyse.h"

namespace {

using harmony::CHarmonicAnalyse;

struct TExample {
  const char* file;
  const char* chords;
  CHarmonicAnalyse::TAnalyse method;
};

// The same chord lists as the README's examples of `harmony analyse`.
const TExample kExamples[] = {
    {"two-five-one-major.json", "Dm7 . G7 . | Cmaj7 . . .",
     CHarmonicAnalyse::kAnalyseTonicProgressions},
    {"two-five-one-minor.json", "Bm7b5 . E7 . | Am . . .",
     CHarmonicAnalyse::kAnalyseTonicProgressions},
    {"modulation.json",
     "Cmaj7 . . . | Dm7 . G7 . | Cmaj7 . . . | F#m7 . B7 . | Emaj7 . . . | Dm7 . G7 . | Cmaj7",
     CHarmonicAnalyse::kAnalyseTonicProgressions},
    {"turnaround-by-cadences.json", "C . . . | Em7 . A7 . | Dm7 . G7 . | C . . .",
     CHarmonicAnalyse::kAnalyseCadenceProgressions},
    {"blues-by-weights.json",
     "F7 . . . | Bb7 . . . | F7 . . . | F7 . . . | Bb7 . . . | Bb7 . . . | F7 . . . | "
     "D7 . . . | Gm7 . . . | C7 . . . | F7 . D7 . | Gm7 . C7 . | F7",
     CHarmonicAnalyse::kAnalyseCenterWeights},
    {"blues-by-tonic-progressions.json",
     "F7 . . . | Bb7 . . . | F7 . . . | F7 . . . | Bb7 . . . | Bb7 . . . | F7 . . . | "
     "D7 . . . | Gm7 . . . | C7 . . . | F7 . D7 . | Gm7 . C7 . | F7",
     CHarmonicAnalyse::kAnalyseTonicProgressions},
};

std::string Analysed(const TExample& example) {
  CHarmonicAnalyse analyse;
  analyse.AnalyseFromChordString(example.chords, {}, example.method, harmony::TChordStringParse());
  std::ostringstream json;
  analyse.AppendJSONString(json);
  return json.str();
}

TEST(AnalysisExamples, ResultsEqualTheStoredOnes) {
  const bool update = std::getenv("HARMONY_UPDATE_FIXTURES") != nullptr;
  for (const TExample& example : kExamples) {
    const std::string path = std::string(HARMONY_FIXTURES_DIR) + "/analysis/" + example.file;
    const std::string result = Analysed(example);
    if (update) std::ofstream(path, std::ios::binary) << result;
    std::ifstream in(path, std::ios::binary);
    ASSERT_TRUE(in) << path;
    std::ostringstream stored;
    stored << in.rdbuf();
    EXPECT_EQ(result, stored.str()) << example.file;
  }
}

}  // namespace
