#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal notify`. `status` becomes the exit status of the program when it has run.
void addNotifyCommand(CLI::App& app, int& status);

}  // namespace tools
