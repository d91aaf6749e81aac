#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check.h"
#include "command_line/model.h"
#include "completion.h"
#include "convert.h"
#include "exit_status.h"
#include "explain.h"
#include "format.h"
#include "host/plist/description.h"
#include "install.h"
#include "keys.h"
#include "list.h"
#include "names.h"
#include "new.h"
#include "notify.h"
#include "render.h"
#include "replay.h"
#include "settings.h"
#include "suggestion.h"
#include "uninstall.h"
#include "watch.h"

namespace {

/// An empty value is a variable that was not set, not a wish to do without the option.
void refuseEmptyValues(CLI::App& app) {
  const auto notEmpty = [](const std::string& value) {
    return value.empty() ? std::string("its value is empty") : std::string();
  };
  for (CLI::App* const command : app.get_subcommands({})) {
    for (CLI::Option* const option : command->get_options()) {
      if (option->get_items_expected_max() > 0) option->check(notEmpty);
    }
  }
}

/// What stands where a command should and is none.
std::optional<std::string> unknownCommand(const CLI::App& app, int argc, char** argv) {
  const std::string word = argc > 1 ? argv[1] : "-";
  const auto isIt = [&](const CLI::App* command) { return command->check_name(word); };
  if (word.starts_with('-') || !app.get_subcommands(isIt).empty()) return std::nullopt;
  return word;
}

int refuseCommand(const CLI::App& app, const std::string& word) {
  const auto commands = tools::command_line::commandsOf(app);
  std::vector<std::string_view> names;
  for (const auto& command : commands) names.push_back(command.name);
  const auto meant = tools::nearest(word, names);
  const std::string advice =
      meant ? "did you mean " + std::string(*meant) + "?" : "--help lists them all";
  std::fprintf(stderr, "prismal: no command %s; %s\n", host::plist::escapeControls(word).c_str(),
               advice.c_str());
  return tools::kTrouble;
}

int run(int argc, char** argv) {
  int status = tools::kDone;
  CLI::App app("Prismal: keyboard themes on the desk", "prismal");
  app.require_subcommand(0, 1);
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return std::string("prismal: ") + error.what() + "; --help says more\n";
  });
  app.set_version_flag("--version", "prismal " PRISMAL_VERSION);
  tools::addRenderCommand(app, status);
  tools::addCheckCommand(app, status);
  tools::addExplainCommand(app, status);
  tools::addInstallCommand(app, status);
  tools::addUninstallCommand(app, status);
  tools::addListCommand(app, status);
  tools::addSettingsCommand(app, status);
  tools::addNotifyCommand(app, status);
  tools::addWatchCommand(app, status);
  tools::addKeysCommand(app, status);
  tools::addNamesCommand(app, status);
  tools::addNewCommand(app, status);
  tools::addConvertCommand(app, status);
  tools::addFormatCommand(app, status);
  tools::addReplayCommand(app, status);
  tools::addCompletionCommands(app, status);
  refuseEmptyValues(app);
  if (const auto word = unknownCommand(app, argc, argv)) return refuseCommand(app, *word);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? tools::kDone : tools::kTrouble;
  }
  if (app.get_subcommands().empty()) {
    std::fputs(app.help().c_str(), stderr);
    return tools::kTrouble;
  }
  return status;
}

/// What was printed in passing, such as a help text, is told to be lost like any other result.
int afterPrinting(int status) {
  const bool isWhole = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
  if (isWhole || status == tools::kTrouble) return status;
  std::fputs("prismal: standard output can't be written\n", stderr);
  return tools::kTrouble;
}

/// Ways to make the libraries that draw draw otherwise, for those who work on them. A picture
/// follows from what is drawn alone.
void forgetDrawingPreferences() {
  for (const char* name : {"FREETYPE_PROPERTIES", "HB_OPTIONS", "HB_SHAPER_LIST", "PIXMAN_DISABLE",
                           "FC_DEBUG", "FONTCONFIG_FILE", "FONTCONFIG_PATH"}) {
    unsetenv(name);
  }
}

}  // namespace

int main(int argc, char** argv) {
  forgetDrawingPreferences();
  // Whoever reads our output may go; that is an error of writing, not a reason to die untidily.
  std::signal(SIGPIPE, SIG_IGN);
  // So is a limit on the size of files.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return afterPrinting(run(argc, argv));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "prismal: %s\n", error.what());
  } catch (...) {
    std::fputs("prismal: failed for an unknown reason\n", stderr);
  }
  return tools::kTrouble;
}
