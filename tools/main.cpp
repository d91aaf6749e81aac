#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "check.h"
#include "completion.h"
#include "convert.h"
#include "exit_status.h"
#include "explain.h"
#include "format.h"
#include "install.h"
#include "keys.h"
#include "list.h"
#include "names.h"
#include "new.h"
#include "notify.h"
#include "render.h"
#include "replay.h"
#include "serve.h"
#include "settings.h"
#include "tidy_end.h"
#include "uninstall.h"
#include "usage_error.h"
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

/// What stands behind the program's name; `help X` asks for `X --help`.
std::vector<std::string> argumentsOf(int argc, char** argv) {
  std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
  if (!arguments.empty() && arguments.front() == "help") {
    std::rotate(arguments.begin(), arguments.begin() + 1, arguments.end());
    arguments.back() = "--help";
  }
  return arguments;
}

int run(int argc, char** argv) {
  int status = tools::kDone;
  CLI::App app("Prismal: keyboard themes on the desk", "prismal");
  app.require_subcommand(0, 1);
  app.failure_message([](const CLI::App* used, const CLI::Error& error) {
    return tools::usageError(*used, error);
  });
  app.footer(
      "Examples:\n"
      "  prismal new Evening\n"
      "  prismal render Evening.theme -o evening.png\n"
      "  prismal check Evening.theme");
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
  tools::addServeCommand(app, status);
  tools::addKeysCommand(app, status);
  tools::addNamesCommand(app, status);
  tools::addNewCommand(app, status);
  tools::addConvertCommand(app, status);
  tools::addFormatCommand(app, status);
  tools::addReplayCommand(app, status);
  tools::addCompletionCommands(app, status);
  refuseEmptyValues(app);
  auto arguments = argumentsOf(argc, argv);
  if (const auto refusal = tools::unknownCommand(app, arguments)) {
    std::fputs(refusal->c_str(), stderr);
    return tools::kTrouble;
  }
  try {
    std::ranges::reverse(arguments);  // the parser takes them from the end
    app.parse(std::move(arguments));
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
  tools::endTidily();
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
