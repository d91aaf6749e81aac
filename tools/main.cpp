#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "exit_status.h"
#include "render.h"
#include "replay.h"

int main(int argc, char** argv) {
  int status = tools::kDone;
  CLI::App app("Prismal: keyboard themes on the desk", "prismal");
  app.require_subcommand(1);
  app.set_version_flag("--version", "prismal " PRISMAL_VERSION);
  tools::addRenderCommand(app, status);
  tools::addReplayCommand(app, status);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? tools::kDone : tools::kTrouble;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "prismal: %s\n", error.what());
    return tools::kTrouble;
  }
  return status;
}
