#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal serve`. `status` becomes the exit status of the program when it has run.
void addServeCommand(CLI::App& app, int& status);

}  // namespace tools
