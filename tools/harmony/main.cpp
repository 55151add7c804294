// harmony: music theory from the command line. Each command lives in its own file and
// registers itself (Command.h); this file only parses, names an unknown command, and maps
// failures to exit statuses: 1 for bad input and anything unforeseen, 2 for wrong usage.

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Command.h"
#include "harmony/DataFolder.h"

namespace harmony::tool {

namespace {

std::vector<std::pair<int, std::function<void(CLI::App&)>>>& Registry() {
  static std::vector<std::pair<int, std::function<void(CLI::App&)>>> registry;
  return registry;
}

constexpr const char* kRule =
    "Every command reads its text strictly: a chord symbol, key, scale, note or number that\n"
    "cannot be read whole is reported on standard error with exit status 1 (wrong usage: 2).\n"
    "--lenient reads text as the library does, stepping over what it does not understand.\n"
    "Chord symbols are read as lead sheets write them; --parser seed reads them with the\n"
    "library's forgiving parser instead (before the command, or after it).\n"
    "--json prints strict JSON; --json=native the library's own form where it has one.\n"
    "\"-\" in place of a text or a file reads standard input.\n"
    "HARMONY_DATA_DIR names another folder of the bundled data (chord grids, tables).";

std::size_t EditDistance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

// Whether the option named by `arg` ("--db", "--db=x", "-k") takes the next argument.
bool TakesNextArgument(CLI::App* app, const std::string& arg) {
  if (arg.find('=') != std::string::npos) return false;
  for (CLI::App* level = app; level != nullptr; level = level->get_parent()) {
    const CLI::Option* option = level->get_option_no_throw(arg);
    if (option != nullptr) return option->get_expected_min() > 0;
  }
  return false;
}

// The first word that should name a command and names none, with the command it was given to.
std::optional<std::pair<CLI::App*, std::string>> UnknownCommand(CLI::App& app, int argc,
                                                                char** argv) {
  CLI::App* level = &app;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--") return std::nullopt;
    if (arg.size() > 1 && arg[0] == '-') {
      if (TakesNextArgument(level, arg)) ++i;
      continue;
    }
    const std::vector<CLI::App*> commands = level->get_subcommands({});
    if (commands.empty()) return std::nullopt;
    const auto named = std::find_if(commands.begin(), commands.end(),
                                    [&arg](const CLI::App* sub) { return sub->check_name(arg); });
    if (named == commands.end()) return std::make_pair(level, arg);
    level = *named;
  }
  return std::nullopt;
}

int ReportUnknownCommand(CLI::App* level, const std::string& word) {
  const std::string prefix =
      level->get_parent() == nullptr ? "harmony" : "harmony " + level->get_name();
  std::string nearest;
  std::size_t best = std::max<std::size_t>(3, word.size() / 2) + 1;
  for (const CLI::App* sub : level->get_subcommands({})) {
    const std::size_t distance = EditDistance(word, sub->get_name());
    if (distance < best) {
      best = distance;
      nearest = sub->get_name();
    }
  }
  std::cerr << prefix << ": unknown command \"" << word << "\"";
  if (!nearest.empty()) std::cerr << "; did you mean \"" << nearest << "\"?";
  std::cerr << "\nRun " << prefix << " --help for the list of commands.\n";
  return 2;
}

// The data folder a user names for the tool; otherwise the library finds its own.
void TakeDataFolderFromEnvironment() {
  if (const char* folder = std::getenv("HARMONY_DATA_DIR"); folder != nullptr && *folder != '\0') {
    SetDataFolder(folder);
  }
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

int Run(int argc, char** argv) {
  CLI::App app{"harmony: chord symbols, keys, scales and harmonic analysis", "harmony"};
  app.require_subcommand(1, 1);
  app.set_help_all_flag("--help-all", "Show the help of every command");
  app.set_version_flag("--version", std::string("harmony ") + HARMONY_VERSION);
  app.footer(kRule);
  AddParserOption(&app);
  AddAllCommands(app);
  TakeDataFolderFromEnvironment();
  if (const auto unknown = UnknownCommand(app, argc, argv)) {
    return ReportUnknownCommand(unknown->first, unknown->second);
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    const int status = app.exit(e);
    return status == 0 ? 0 : 2;
  } catch (const InputError& e) {
    std::cerr << "harmony: " << e.what() << '\n';
    return 1;
  }
  return 0;
}

}  // namespace harmony::tool

int main(int argc, char** argv) {
  // The last catch: whatever escapes a command is told, never an abort.
  try {
    return harmony::tool::Run(argc, argv);
  } catch (const std::exception& e) {
    std::cerr << "harmony: " << e.what() << '\n';
  } catch (...) {
    std::cerr << "harmony: an unexpected failure\n";
  }
  return 1;
}
