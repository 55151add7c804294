#pragma once
// Runs the harmony tool as a user would, for the tests of its commands.

#include <stdlib.h>
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

// The same with `input` on standard input.
inline TRun RunToolWithInput(const std::string& input, const std::string& arguments) {
  char path[] = "/tmp/harmony-tool-input-XXXXXX";
  const int fd = mkstemp(path);
  if (fd < 0) return {-1, {}};
  FILE* file = fdopen(fd, "w");
  fwrite(input.data(), 1, input.size(), file);
  fclose(file);
  TRun run = RunTool(arguments + " < '" + path + "'");
  std::remove(path);
  return run;
}

inline bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace harmony::testing
