#pragma once

#include "cli_app.h"

namespace tools {

/// Adds the subcommand that tells why a key looks as it does. `status` becomes its exit status.
void addExplainCommand(CLI::App& app, int& status);

}  // namespace tools
