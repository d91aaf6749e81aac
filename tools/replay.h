#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal replay`. `status` becomes the exit status of the program when it has run.
void addReplayCommand(CLI::App& app, int& status);

}  // namespace tools
