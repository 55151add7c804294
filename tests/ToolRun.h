#pragma once
// Runs the harmony tool as a user would, for the tests of its commands.

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

#include "TestPaths.h"

namespace harmony::testing {

struct TRun {
  int status;
  std::string output;  // standard output and standard error
};

// `arguments` are read by the shell, so quote them as on a command line.
inline TRun RunTool(const std::string& arguments) {
  const std::string command = "'" + std::string(HARMONY_TOOL_PATH) + "' " + arguments + " 2>&1";
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return {-1, {}};
  std::string output;
  std::array<char, 256> buffer{};
  while (fgets(buffer.data(), buffer.size(), pipe) != nullptr) output += buffer.data();
  const int status = pclose(pipe);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}

inline bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace harmony::testing
