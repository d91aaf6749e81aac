#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal format`. `status` becomes the exit status of the program when it has run.
void addFormatCommand(CLI::App& app, int& status);

}  // namespace tools
