// The analysis, chord naming and root detection of many varied inputs against the results
// kept in tests/data/golden-results.txt (written by tests/MakeGoldenResults.cpp). Faster code
// for these paths must give the same bytes.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "GoldenResults.h"
#include "TestPaths.h"

namespace {

TEST(GoldenResults, AFreshRunGivesTheKeptBytes) {
  const std::string path = std::string(HARMONY_FIXTURES_DIR) + "/golden-results.txt";
  std::ifstream in(path, std::ios::binary);
  ASSERT_TRUE(in) << path;
  std::ostringstream fresh;
  harmony::golden::WriteGoldenResults(fresh);
  // Line by line, so that a change shows where it is; the input stands in the last "==" line.
  std::istringstream kept(std::string(std::istreambuf_iterator<char>(in), {}));
  std::istringstream now(fresh.str());
  std::string keptLine, nowLine, heading;
  int differences = 0;
  for (int line = 1; std::getline(kept, keptLine); ++line) {
    if (!std::getline(now, nowLine)) {
      ADD_FAILURE() << "the fresh run ends before line " << line;
      return;
    }
    if (keptLine.rfind("==", 0) == 0) heading = keptLine;
    if (keptLine != nowLine && ++differences <= 5) {
      ADD_FAILURE() << "line " << line << " under \"" << heading << "\"\n  kept:  " << keptLine
                    << "\n  fresh: " << nowLine;
    }
  }
  EXPECT_FALSE(std::getline(now, nowLine)) << "the fresh run goes on past the kept results";
  EXPECT_EQ(differences, 0);
  EXPECT_EQ(fresh.str().size(), kept.str().size());
}

}  // namespace
