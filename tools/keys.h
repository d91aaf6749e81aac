#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal keys`. `status` becomes the exit status of the program when it has run.
void addKeysCommand(CLI::App& app, int& status);

}  // namespace tools
