#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal convert`. `status` becomes the exit status of the program when it has run.
void addConvertCommand(CLI::App& app, int& status);

}  // namespace tools
