#pragma once
// The fixture of the tool's tests: skipped when the tool is not built, and with a user package
// of guitar grids in a temporary folder of its own.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "TempFolder.h"
#include "TestPaths.h"
#include "ToolRun.h"

namespace harmony::testing {

class ToolTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::string(HARMONY_TOOL_PATH).empty()) GTEST_SKIP() << "the tool is not built";
    ::setenv("HARMONY_GUITAR_DB", Package().c_str(), 1);
  }
  void TearDown() override { ::unsetenv("HARMONY_GUITAR_DB"); }
  std::string Package() const { return (mTemp.path() / "user.gchdb").string(); }
  TempFolder mTemp;
};

}  // namespace harmony::testing
