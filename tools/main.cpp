#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>

#include "exit_status.h"
#include "install.h"
#include "keys.h"
#include "list.h"
#include "names.h"
#include "notify.h"
#include "render.h"
#include "replay.h"
#include "settings.h"
#include "uninstall.h"
#include "watch.h"

namespace {

int run(int argc, char** argv) {
  int status = tools::kDone;
  CLI::App app("Prismal: keyboard themes on the desk", "prismal");
  app.require_subcommand(0, 1);
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return std::string("prismal: ") + error.what() + "; --help says more\n";
  });
  app.set_version_flag("--version", "prismal " PRISMAL_VERSION);
  tools::addRenderCommand(app, status);
  tools::addInstallCommand(app, status);
  tools::addUninstallCommand(app, status);
  tools::addListCommand(app, status);
  tools::addSettingsCommand(app, status);
  tools::addNotifyCommand(app, status);
  tools::addWatchCommand(app, status);
  tools::addKeysCommand(app, status);
  tools::addNamesCommand(app, status);
  tools::addReplayCommand(app, status);
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

}  // namespace

int main(int argc, char** argv) {
  // Whoever reads our output may go; that is an error of writing, not a reason to die untidily.
  std::signal(SIGPIPE, SIG_IGN);
  // So is a limit on the size of files.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "prismal: %s\n", error.what());
  } catch (...) {
    std::fputs("prismal: failed for an unknown reason\n", stderr);
  }
  return tools::kTrouble;
}
