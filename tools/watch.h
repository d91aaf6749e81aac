#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal watch`. `status` becomes the exit status of the program when it has run.
void addWatchCommand(CLI::App& app, int& status);

}  // namespace tools
