#pragma once

#include "cli_app.h"

namespace tools {

/// Adds the subcommand `check`. When it is chosen, `status` becomes its exit status.
void addCheckCommand(CLI::App& app, int& status);

}  // namespace tools
