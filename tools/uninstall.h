#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal uninstall`. `status` becomes the exit status of the program when it has run.
void addUninstallCommand(CLI::App& app, int& status);

}  // namespace tools
