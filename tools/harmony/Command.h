#pragma once
// Every command of the harmony tool registers itself from its own file, so that adding a
// command never touches main.cpp:
//
//   static const harmony::tool::CommandRegistration kRegistration{
//       30, [](CLI::App& app) { auto* cmd = app.add_subcommand("key", "..."); ... }};
//
// Bad input raises InputError: main prints its text on one line of standard error and exits
// with status 1. Wrong usage (unknown options, missing arguments) exits with status 2.

#include <functional>
#include <stdexcept>
#include <string>

#include <CLI/CLI.hpp>

namespace harmony::tool {

class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct CommandRegistration {
  // `order` sorts the commands in the help text.
  CommandRegistration(int order, std::function<void(CLI::App&)> add);
};

// Runs every registered `add` in order; used by main.
void AddAllCommands(CLI::App& app);

}  // namespace harmony::tool
