#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal install`. `status` becomes the exit status of the program when it has run.
void addInstallCommand(CLI::App& app, int& status);

}  // namespace tools
