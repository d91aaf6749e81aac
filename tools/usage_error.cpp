#include "usage_error.h"

#include <CLI/App.hpp>
#include <algorithm>
#include <string_view>

#include "host/plist/description.h"
#include "suggestion.h"

namespace tools {

namespace {

/// Shorter words are near to everything.
constexpr std::size_t kShortestSlip = 3;

/// A command of `app` and the ones around it, as they are typed.
struct Called {
  const CLI::App* command;
  std::string name;
};

Called calledIn(const CLI::App& app) {
  Called called{&app, app.get_name()};
  while (!called.command->get_subcommands().empty()) {
    called.command = called.command->get_subcommands().back();
    called.name += " " + called.command->get_name();
  }
  return called;
}

std::vector<std::string> commandsIn(const CLI::App& app) {
  std::vector<std::string> names;
  const auto isListed = [](const CLI::App* command) { return !command->get_group().empty(); };
  for (const CLI::App* const command : app.get_subcommands(isListed)) {
    names.push_back(command->get_name());
  }
  return names;
}

std::vector<std::string> optionsIn(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* const option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

/// "prismal: no command rendr; did you mean render?"
std::string noSuch(const Called& called, std::string_view kind, const std::string& word,
                   const std::vector<std::string>& names) {
  const std::vector<std::string_view> views(names.begin(), names.end());
  const auto meant = word.size() < kShortestSlip ? std::nullopt : nearest(word, views);
  const std::string advice = meant ? "did you mean " + std::string(*meant) + "?"
                                   : "`" + called.name + " --help` lists them all";
  return called.name + ": no " + std::string(kind) + " " + host::plist::escapeControls(word) +
         "; " + advice + "\n";
}

/// Of a command line with words that nothing takes, the first.
std::string superfluous(const Called& called, const std::string& word) {
  if (word.starts_with('-') && word != "-" && word != "--") {
    const std::string option = word.substr(0, word.find('='));
    return noSuch(called, "option", option, optionsIn(*called.command));
  }
  const auto commands = commandsIn(*called.command);
  if (!commands.empty()) return noSuch(called, "command", word, commands);
  return called.name + ": " + host::plist::escapeControls(word) + ": one argument too many; `" +
         called.name + " --help` says more\n";
}

}  // namespace

std::optional<std::string> unknownCommand(const CLI::App& app,
                                          const std::vector<std::string>& arguments) {
  const std::string word = arguments.empty() ? "-" : arguments.front();
  const auto isIt = [&](const CLI::App* command) { return command->check_name(word); };
  if (word.starts_with('-') || !app.get_subcommands(isIt).empty()) return std::nullopt;
  return noSuch({&app, app.get_name()}, "command", word, commandsIn(app));
}

std::string usageError(const CLI::App& app, const CLI::Error& error) {
  const Called called = calledIn(app);
  const auto left = app.remaining(true);
  const bool isExtra = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError);
  if (isExtra && !left.empty()) return superfluous(called, left.front());
  return called.name + ": " + host::plist::escapeControls(error.what()) + "; `" + called.name +
         " --help` says more\n";
}

}  // namespace tools
