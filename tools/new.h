#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal new`. `status` becomes the exit status of the program when it has run.
void addNewCommand(CLI::App& app, int& status);

}  // namespace tools
