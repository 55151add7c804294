// harmony: music theory from the command line. Each command lives in its own file and
// registers itself (Command.h); this file only parses and maps failures to exit statuses.

#include <algorithm>
#include <iostream>
#include <utility>
#include <vector>

#include "Command.h"

namespace harmony::tool {

namespace {
std::vector<std::pair<int, std::function<void(CLI::App&)>>>& Registry() {
  static std::vector<std::pair<int, std::function<void(CLI::App&)>>> registry;
  return registry;
}
}  // namespace

CommandRegistration::CommandRegistration(int order, std::function<void(CLI::App&)> add) {
  Registry().emplace_back(order, std::move(add));
}

void AddAllCommands(CLI::App& app) {
  auto& registry = Registry();
  std::stable_sort(registry.begin(), registry.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& entry : registry) entry.second(app);
}

}  // namespace harmony::tool

int main(int argc, char** argv) {
  CLI::App app{"harmony: chord symbols, keys, scales and harmonic analysis", "harmony"};
  app.require_subcommand(1, 1);
  app.set_help_all_flag("--help-all", "Show the help of every command");
  harmony::tool::AddAllCommands(app);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    const int status = app.exit(e);
    return status == 0 ? 0 : 2;
  } catch (const harmony::tool::InputError& e) {
    std::cerr << "harmony: " << e.what() << '\n';
    return 1;
  }
  return 0;
}
