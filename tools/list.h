#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal list`. `status` becomes the exit status of the program when it has run.
void addListCommand(CLI::App& app, int& status);

}  // namespace tools
