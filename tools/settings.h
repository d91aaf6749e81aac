#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal settings`. `status` becomes the exit status of the program when it has run.
void addSettingsCommand(CLI::App& app, int& status);

}  // namespace tools
