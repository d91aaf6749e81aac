#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal completion` and `prismal manual`, which an installation is made with and --help
/// doesn't list. `status` becomes the exit status of the program when one has run. To be called
/// last: they tell what `app` has by then.
void addCompletionCommands(CLI::App& app, int& status);

}  // namespace tools
