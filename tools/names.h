#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal names`. `status` becomes the exit status of the program when it has run.
void addNamesCommand(CLI::App& app, int& status);

}  // namespace tools
